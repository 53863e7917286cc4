#pragma once

#include <X11/Intrinsic.h>

// What happens when X fails. None of these comes back, but for SystemMenuClose on another event; nothing is
// sent to the client.

// Any X protocol error ends the process with status -1.
int X_ErrorHandler(Display* connection, XErrorEvent* event);
// A lost connection is an orderly end: status 0.
int X_IOErrorHandler(Display* connection);
// A fatal error of the toolkit ends the process with status -1.
void Xt_ErrorHandler(String message);

// Action procedure: the window manager's close request ends the process with status 0.
void SystemMenuClose(Widget widget, XEvent* event, String* parameters, Cardinal* parameterCount);
