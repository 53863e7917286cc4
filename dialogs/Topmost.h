#pragma once

// Asks the window manager to keep a window of ours above others, or no longer to do so. The window is shown:
// a window manager does not listen for one that it does not know. Without a window manager, or with one that
// has no such state, nothing happens.
void MakeItTopmost(unsigned long window, bool topmost);
