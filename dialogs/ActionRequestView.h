#pragma once

#include "dialogs/ActionRequestList.h"
#include "text/AutoUString.h"

#include <cstddef>
#include <string>
#include <vector>

// What the action request dialog shows, as a function of the pending actions: without widgets.

// One row of the action list, in the encoding of the locale.
struct ActionRow {
    std::string text;
    unsigned long id;
};

// The rows, in the order of the actions: the title, and behind it the deadline in local time when there is
// one. An action without a visible title has no row. Throws when a title cannot be converted.
std::vector<ActionRow> MakeActionRows(ActionRequestList const& pending);

// Texts and states of the controls around the lists. The literals are keys of translations.
struct ActionRequestView {
    AutoUString<UTF8> title;
    AutoUString<UTF8> description;
    char const* takeLabel = "Take Actions";
    char const* cancelLabel = "Cancel Actions";
    char const* snoozeLabel = "Snooze";
    bool takeAllEnabled = true;
    bool takeEnabled = false;
    bool cancelEnabled = false;
    bool detailsEnabled = false;
    bool detailsMapped = false;
    bool snoozeButtonEnabled = true;
    bool snoozeListEnabled = true;
};

// Which of the pending actions is selected, and what else the view depends on.
struct ActionRequestSelection {
    // Row of the selected action; -1 for none.
    int row = -1;
    // ID of that row; not looked at without one.
    unsigned long id = 0;
    // How many rows the list has.
    int rows = 0;
    // Snoozing is allowed by the client and by the clock.
    bool snoozeAvailable = true;
};

// For a dialog with nothing pending: it says so, and can only be closed.
ActionRequestView MakeEmptyView(int rows);
// For pending actions. An ID that is not among them throws NoSelectedAction; of several actions of one ID the
// first one is shown.
ActionRequestView MakePendingView(ActionRequestList const& pending, ActionRequestSelection const& selection);

// "There are 3 pending actions." and its likes: the count is that of the rows. A selection, by its row, is
// told instead.
AutoUString<UTF8> CountText(int selectedRow, int rows);
