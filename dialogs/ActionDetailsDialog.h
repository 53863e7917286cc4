#pragma once

// Shows the script of an action in front of the action request dialog, which is disabled meanwhile. Closing
// it queues the command that enables that dialog again. There is at most one, built afresh each time.

// A dialog that stands is left as it is, also for another ID. With no action of that ID it shows the text of
// its last opening. A text that cannot be shown ends the process.
void ShowActionDetailsDialog(unsigned long id);
// Nothing happens without a dialog.
void HideActionDetailsDialog();
// There is nothing in it that changes.
void UpdateActionDetailsDialog();
