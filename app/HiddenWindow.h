#pragma once

#include <X11/Intrinsic.h>

// Creates vrkHidden, the window "VRKClientUIHiddenWindow": realized and never mapped. Other programs ask for
// the actions by sending it a client message that begins with "open". Needs the display.
void CreateHiddenWindow();

// Event handler of vrkHidden: queues OpenRequested for a client message whose first four data bytes are
// "open", whatever stands behind them. Everything else is ignored.
void HiddenWindowEventHandler(Widget widget, XtPointer clientData, XEvent* event, Boolean* continueDispatch);
