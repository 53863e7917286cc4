#pragma once

// Asks the user to acknowledge a message before an action is taken, in front of the action request dialog,
// which is disabled meanwhile. Either answer closes it and queues a command. There is at most one, built
// afresh each time.

// A dialog that stands is left as it is, also for another ID. Of several actions of that ID, the first one
// that has a message is shown; with no action of that ID the texts of the last opening are. A text that
// cannot be shown ends the process.
void ShowConfirmationRequestDialog(unsigned long id);
// Nothing happens without a dialog.
void HideConfirmationRequestDialog();
// There is nothing in it that changes.
void UpdateConfirmationRequestDialog();
