#pragma once

// First: X.h defines names that the test framework uses.
#include <gtest/gtest.h>

#include "tests/session/PrivateDisplay.h"

#include <X11/Intrinsic.h>
#include <functional>
#include <map>
#include <optional>
#include <string>
#include <vector>

// What the program does inside the toolkit, each in a child process that has opened a private display as the
// program does. A child says by its exit status, or by a text, how it went.
class InToolkit : public testing::Test {
protected:
    static constexpr int cAsExpected = 42;
    static constexpr int cNotAsExpected = 43;

    explicit InToolkit(PrivateDisplay::Options const& options = {}) : m_display(options) {}

    // Ends a child.
    [[noreturn]] static void Finish(bool asExpected);

    // Starts a child that opens the toolkit with `arguments` behind its name and runs `body`.
    pid_t Start(std::function<void()> const& body, std::vector<std::string> const& arguments = {});
    // The exit status of a child; nothing when it does not end or is ended by a signal.
    static std::optional<int> StatusOf(pid_t child);
    // Both.
    std::optional<int> Run(std::function<void()> const& body,
                           std::vector<std::string> const& arguments = {}) {
        return StatusOf(Start(body, arguments));
    }

    // What `body` returns in a child; "the child ended with 255" or the like when it does not return.
    std::string Report(std::function<std::string()> const& body,
                       std::vector<std::string> const& arguments = {});

    // Variables of the children's environment.
    std::map<std::string, std::string> m_environment;
    PrivateDisplay m_display;
};

// For the children, which have `display` open.

// A shell of the application that is not realized yet.
Widget MakeAppShell(int width = 100, int height = 50);
// Handles everything that the server has sent so far.
void DispatchPendingEvents();
// A window manager's message of a protocol such as "WM_DELETE_WINDOW"; the window is left open.
XEvent MakeProtocolMessage(char const* protocol);
