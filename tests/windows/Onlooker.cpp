#include "tests/windows/Onlooker.h"

#include "app/ProcessState.h"

#include <stdexcept>

Onlooker::Onlooker(char const* displayName, long mask) : m_connection(XOpenDisplay(displayName)) {
    if (!m_connection) throw std::runtime_error("cannot open the display a second time");
    XSelectInput(m_connection, DefaultRootWindow(m_connection), mask);
    XSync(m_connection, False);
}

Onlooker::~Onlooker() {
    XCloseDisplay(m_connection);
}

Atom Onlooker::MakeAtom(char const* name) {
    return XInternAtom(m_connection, name, False);
}

std::vector<XEvent> Onlooker::Events() {
    // The server has handled everything of the program first.
    XSync(display, False);
    XSync(m_connection, False);
    std::vector<XEvent> events;
    while (XPending(m_connection) > 0) XNextEvent(m_connection, &events.emplace_back());
    return events;
}
