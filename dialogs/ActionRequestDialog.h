#pragma once

#include "time/TimeInterval.h"

// The window through which the user deals with pending actions: a description, the list of actions with their
// deadlines, buttons to take all, take, cancel and see details, and the choices of snoozing. It decides
// nothing: a button puts the dialog out of use and queues a command, and who carries the command out enables
// the dialog again.
//
// There is one dialog at a time. It is closed, or shown and enabled, or shown and disabled. What the user has
// selected outlives it. A dialog that cannot show its texts ends the process.

bool IsActionRequestDialogShown();
bool IsActionRequestDialogEnabled();

// Builds and shows the dialog. One that is shown already is left as it is, and before the display is open
// there is nothing to show it on. `remindInterval` preselects the nearest snooze choice; `snoozable` tells
// whether the client allows snoozing. The first argument is not used.
void UnixApp_ShowActionRequestDialog(bool, TimeInterval const& remindInterval, bool snoozable);

// Destroys the dialog; nothing happens without one.
void HideActionRequestDialog();

// Brings the dialog in line with the pending actions. Does nothing without a dialog or while it is disabled.
void UpdateActionRequestDialog();

// Puts the dialog out of use: no control can be pressed, and what it shows may fall behind.
void DisableActionRequestDialog();
// Puts it back into use and brings it in line.
void EnableActionRequestDialog();

// While one exists, updates of the dialog are put off to its end and then made in one: a batch of messages
// costs a few refreshes and not one a message. Rows, selection, snooze choices and what is enabled become
// what a refresh after each change would have left; a dialog that is disabled again and again in one batch,
// with changes in between, may fall behind until it is enabled. Texts that come and go within a batch are
// never shown, so that one of them that cannot be converted does no harm.
class ActionRequestDialogBatch {
public:
    ActionRequestDialogBatch();
    ActionRequestDialogBatch(ActionRequestDialogBatch const&) = delete;
    ActionRequestDialogBatch& operator=(ActionRequestDialogBatch const&) = delete;
    ~ActionRequestDialogBatch();
};
