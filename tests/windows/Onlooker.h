#pragma once

// First: X.h defines names that the test framework uses.
#include <gtest/gtest.h>

#include <X11/Xlib.h>
#include <vector>

// A second connection to a display, which hears what happens at the root window as a window manager does.
class Onlooker {
public:
    // `mask` is what it listens for at the root.
    Onlooker(char const* displayName, long mask);
    Onlooker(Onlooker const&) = delete;
    Onlooker& operator=(Onlooker const&) = delete;
    ~Onlooker();

    // Makes the atom known to everybody on the display.
    Atom MakeAtom(char const* name);
    // What has happened since the last call, everything included that the program has asked for.
    std::vector<XEvent> Events();

private:
    Display* m_connection;
};
