#pragma once

// Shows the script of an action in front of the action request dialog, which is disabled meanwhile. Closing
// it queues the command that enables that dialog again. There is at most one, built afresh each time.

// A dialog that stands is left as it is, also for another ID. Of several actions of that ID, the first one
// that has details is shown; with no action of that ID the text of the last opening is. A text that cannot be
// shown ends the process.
void ShowActionDetailsDialog(unsigned long id);
// Nothing happens without a dialog.
void HideActionDetailsDialog();
// There is nothing in it that changes.
void UpdateActionDetailsDialog();
