#pragma once

#include <X11/Intrinsic.h>

// The widgets of the action request dialog and how they are laid out.

// What the user can do, as callbacks of the toolkit.
struct ActionRequestCallbacks {
    XtCallbackProc takeAll;
    XtCallbackProc take;
    XtCallbackProc cancel;
    XtCallbackProc details;
    XtCallbackProc snooze;
    // Called with an XawListReturnStruct.
    XtCallbackProc snoozeChosen;
    // For the mouse button that comes up over the action list.
    XtActionProc actionChosen;
};

struct ActionRequestWidgets {
    Widget shell = nullptr;
    Widget form = nullptr;
    Widget actionTitle = nullptr;
    Widget actionDescription = nullptr;
    Widget viewport = nullptr;
    Widget actionList = nullptr;
    Widget takeAllActions = nullptr;
    Widget takeActions = nullptr;
    Widget cancelAction = nullptr;
    Widget actionDetails = nullptr;
    Widget snoozeViewport = nullptr;
    Widget snoozeList = nullptr;
    Widget snoozeButton = nullptr;
};

// Builds the dialog and shows it. A translated label that makes the row of buttons wider than the panes
// widens the panes. Throws when a text cannot be converted; widgets made by then stay as children of a shell
// that nobody knows of.
ActionRequestWidgets CreateActionRequestWidgets(ActionRequestCallbacks const& callbacks);
