#pragma once

class Instant;

// Tells in front of the action request dialog, which is disabled meanwhile, that the quiet period has begun.
// Closing it queues the command that enables that dialog again. There is at most one notice, built afresh
// each time; it stays when the period's end has passed.

// A notice that stands is left as it is, with the times that it tells. Only the times of day are told, in the
// process's zone. A text that cannot be shown ends the process.
void ShowQuietModeDialog(Instant const& start, Instant const& end);
// Nothing happens without a notice.
void RemoveQuietModeDialog();
