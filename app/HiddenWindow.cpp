#include "app/HiddenWindow.h"

#include "app/ProcessState.h"
#include "app/ToolkitCall.h"

#include <X11/Shell.h>
#include <X11/StringDefs.h>
#include <cstring>

namespace {

constexpr char cOpen[] = {'o', 'p', 'e', 'n'};
constexpr XtArgVal cHiddenWindowSize = 32;

} // namespace

void CreateHiddenWindow() {
    Arg arguments[3];
    XtSetArg(arguments[0], XtNwidth, cHiddenWindowSize);
    XtSetArg(arguments[1], XtNheight, cHiddenWindowSize);
    XtSetArg(arguments[2], XtNmappedWhenManaged, False);
    vrkHidden = XtAppCreateShell("VRKClientUIHiddenWindow", nullptr, applicationShellWidgetClass, display,
                                 arguments, XtNumber(arguments));
    XtRealizeWidget(vrkHidden);
    // Client messages belong to no event mask: the handler asks for the events that cannot be masked alone.
    XtInsertEventHandler(vrkHidden, NoEventMask, True, HiddenWindowEventHandler, nullptr, XtListHead);
}

void HiddenWindowEventHandler(Widget, XtPointer, XEvent* event, Boolean*) {
    ToolkitCall([event] {
        if (!event || event->type != ClientMessage) return;
        if (std::memcmp(event->xclient.data.b, cOpen, sizeof(cOpen)) == 0)
            QueueCommand(OpenRequested, 0, 0, 0);
    });
}
