#include "dialogs/Topmost.h"

#include "app/ProcessState.h"

#include <X11/Xlib.h>

namespace {

// What a client may ask of a state of its window.
constexpr long cRemoveState = 0;
constexpr long cAddState = 1;

} // namespace

// An atom that nobody has made yet is one that no window manager listens for.
void MakeItTopmost(unsigned long window, bool topmost) {
    Atom const above = XInternAtom(display, "_NET_WM_STATE_ABOVE", True);
    Atom const state = XInternAtom(display, "_NET_WM_STATE", True);
    if (above == None || state == None) return;
    XEvent event{};
    event.xclient.type = ClientMessage;
    event.xclient.window = window;
    event.xclient.message_type = state;
    event.xclient.format = 32;
    event.xclient.data.l[0] = topmost ? cAddState : cRemoveState;
    event.xclient.data.l[1] = static_cast<long>(above);
    XSendEvent(display, DefaultRootWindow(display), False, SubstructureRedirectMask | SubstructureNotifyMask,
               &event);
}
