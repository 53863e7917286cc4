#pragma once

#include <X11/Intrinsic.h>

// Opens the display and runs the toolkit's main loop; everything periodic hangs on one timer of a second.
// Does not return while the loop runs.
void InitXApp(int argumentCount, char** arguments);

// The first half of InitXApp: sets up the toolkit with its handlers and actions, and opens the display. A
// display that cannot be opened ends the process with status -1.
void OpenToolkit(int argumentCount, char** arguments);

// The tick: carries out what the client and then what the user wants, creates the hidden window the first
// time, reminds of pending actions when the reminder is due, and takes forced actions whose deadline has
// passed, unless a quiet period holds them back. Arms itself again, whatever happens.
void OnMainLoopTimer(XtPointer clientData, XtIntervalId* timer);
