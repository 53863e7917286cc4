#include "app/XHandlers.h"

#include "app/ExitCleanup.h"
#include "app/ToolkitCall.h"

#include <array>
#include <cstdio>

namespace {

constexpr std::size_t cErrorTextCapacity = 2048;

} // namespace

int X_ErrorHandler(Display* connection, XErrorEvent* event) {
    std::array<char, cErrorTextCapacity> text{};
    int const prefix = std::snprintf(text.data(), text.size(), "XError: ");
    char* const description = text.data() + prefix;
    std::snprintf(description, text.size() - static_cast<std::size_t>(prefix), "Unknown XError");
    XGetErrorText(connection, event->error_code, description, static_cast<int>(text.size()) - prefix);
    NoteXFailure(connection);
    ExitCleanup(-1, text.data());
}

int X_IOErrorHandler(Display* connection) {
    NoteXFailure(connection);
    ExitCleanup(0, "CLOSED");
}

void Xt_ErrorHandler(String message) {
    std::array<char, cErrorTextCapacity> text{};
    std::snprintf(text.data(), text.size(), "XtError: %s", message ? message : "");
    ExitCleanup(-1, text.data());
}

void SystemMenuClose(Widget widget, XEvent* event, String*, Cardinal*) {
    ToolkitCall([=] {
        Atom const deleteWindow = XInternAtom(XtDisplay(widget), "WM_DELETE_WINDOW", True);
        Atom const protocols = XInternAtom(XtDisplay(widget), "WM_PROTOCOLS", True);
        if (!event || event->type != ClientMessage) return;
        XClientMessageEvent const& message = event->xclient;
        if (message.message_type == protocols && static_cast<Atom>(message.data.l[0]) == deleteWindow)
            ExitCleanup(0, "CLOSED");
    });
}
