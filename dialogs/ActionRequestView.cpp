#include "dialogs/ActionRequestView.h"

#include "dialogs/ActionRequestStore.h"
#include "dialogs/ActionSummary.h"
#include "dialogs/FormattedValues.h"
#include "dialogs/WidgetText.h"
#include "format/MakeUString.h"
#include "format/UFormat.h"
#include "foundation/Exceptions.h"

#include <algorithm>
#include <set>

namespace {

ActionRow MakeRow(ActionRequest const& action, std::string const& title, std::string const& separator) {
    ActionRow row{title, action.id};
    if (NullOr<Instant> const deadline = action.Deadline(); deadline)
        row.text += separator + WidgetText(UnixPlatform::FormattedLocalTime(*deadline).Ref());
    return row;
}

bool HasPreview(ActionRequest const& action) {
    return !action.preview.IsNull();
}

AutoUString<UTF8> DescriptionAndSummary(ActionRequest const& action) {
    AutoUString<UTF8> const summary = ActionSummary(action);
    return MakeUString(UFormat("{actionDescription}\n\n{actionSummary}") % action.description.Ref() %
                       summary.Ref());
}

// About all actions together. The store keeps forced deadlines at least five minutes ahead.
AutoUString<UTF8> PendingSummary(ActionRequestList const& pending) {
    ActionRequestStore store;
    store.UpdateActions(pending);
    std::set<unsigned long> ids;
    for (auto const& [id, action] : store.Actions()) ids.insert(ids.end(), id);
    return ActionSummary(ids, store, true);
}

void ShowSelected(ActionRequestView& view, ActionRequest const& action) {
    view.takeLabel = "Take Action";
    view.cancelLabel = "Cancel Action";
    view.title = AutoUString<UTF8>(action.title.Ref());
    view.description = DescriptionAndSummary(action);
    view.detailsEnabled = HasPreview(action);
    view.takeEnabled = true;
    view.cancelEnabled = action.cancellable;
}

} // namespace

std::vector<ActionRow> MakeActionRows(ActionRequestList const& pending) {
    std::string const separator = WidgetText(MakeUString(UFormat("  --  ")).Ref());
    std::vector<ActionRow> rows;
    rows.reserve(pending.CountRows());
    for (ActionRequest const& action : pending) {
        std::string const title = WidgetText(action.title.Ref());
        if (!title.empty()) rows.push_back(MakeRow(action, title, separator));
    }
    return rows;
}

ActionRequestView MakeEmptyView(int rows) {
    ActionRequestView view;
    view.title = CountText(-1, rows);
    view.takeLabel = "Take Action";
    view.cancelLabel = "Cancel Action";
    view.snoozeLabel = "Close";
    view.takeAllEnabled = false;
    view.snoozeListEnabled = false;
    return view;
}

ActionRequestView MakePendingView(ActionRequestList const& pending, ActionRequestSelection const& selection) {
    ActionRequestView view;
    view.snoozeButtonEnabled = view.snoozeListEnabled = selection.snoozeAvailable;
    view.detailsMapped = std::any_of(pending.begin(), pending.end(), HasPreview);
    if (selection.row == -1) {
        view.title = CountText(-1, selection.rows);
        view.description = PendingSummary(pending);
        return view;
    }
    auto const selected = pending.FindFirst(selection.id);
    if (selected == pending.end()) throw NoSelectedAction();
    ShowSelected(view, *selected);
    return view;
}

AutoUString<UTF8> CountText(int selectedRow, int rows) {
    if (selectedRow != -1) return MakeUString(UFormat("1 action selected"));
    if (rows == 0) return MakeUString(UFormat("There are no pending actions."));
    if (rows == 1) return MakeUString(UFormat("There is 1 pending action."));
    AutoUString<UTF8> const count = UnixPlatform::FormattedNumber(static_cast<unsigned long>(rows));
    return MakeUString(UFormat("There are {x} pending actions.") % count.Ref());
}
