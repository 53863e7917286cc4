// First: X.h defines names that the test framework uses.
#include <gtest/gtest.h>

#include "app/MainLoop.h"
#include "app/ProcessState.h"
#include "app/XHandlers.h"
#include "tests/session/ClientSession.h"
#include "tests/session/PrivateDisplay.h"

#include <X11/Shell.h>
#include <X11/StringDefs.h>
#include <functional>
#include <sys/wait.h>
#include <unistd.h>

// The ways out of the process that X brings about, each in a child process that has opened the display as the
// program does.

namespace {

void OpenDisplayAsTheProgramDoes() {
    XSetErrorHandler(X_ErrorHandler);
    XSetIOErrorHandler(X_IOErrorHandler);
    XtToolkitInitialize();
    app_context = XtCreateApplicationContext();
    int argumentCount = 0;
    display =
        XtOpenDisplay(app_context, nullptr, nullptr, "XVRKClientUI", nullptr, 0, &argumentCount, nullptr);
    if (!display) _exit(98);
    XtAppSetErrorHandler(app_context, Xt_ErrorHandler);
}

// The exit status of a child that runs `body` on `displayName`; nothing when it does not end.
std::optional<int> StatusOf(std::string const& displayName, std::function<void()> const& body) {
    pid_t const child = fork();
    if (child == 0) {
        setenv("DISPLAY", displayName.c_str(), 1);
        OpenDisplayAsTheProgramDoes();
        body();
        _exit(99);
    }
    int status = 0;
    bool const ended = WaitFor([&] { return waitpid(child, &status, WNOHANG) == child; });
    if (!ended) {
        kill(child, SIGKILL);
        waitpid(child, &status, 0);
        return std::nullopt;
    }
    return WIFEXITED(status) ? std::optional<int>(WEXITSTATUS(status)) : std::nullopt;
}

} // namespace

class XFailure : public testing::Test {
protected:
    PrivateDisplay m_display;
};

TEST_F(XFailure, ProtocolErrorNoticedInARoundTripEndsWithMinusOne) {
    EXPECT_EQ(StatusOf(m_display.Name(),
                       [] {
                           XMapWindow(display, 0x7FFFFFFF);
                           XSync(display, False);
                       }),
              255);
}

TEST_F(XFailure, ProtocolErrorOfARequestWithAReplyEndsWithMinusOne) {
    EXPECT_EQ(StatusOf(m_display.Name(),
                       [] {
                           XWindowAttributes attributes;
                           XGetWindowAttributes(display, 0x7FFFFFFF, &attributes);
                       }),
              255);
}

TEST_F(XFailure, ProtocolErrorNoticedWhileTheContextIsDestroyedKeepsTheFirstStatus) {
    EXPECT_EQ(StatusOf(m_display.Name(),
                       [] {
                           XMapWindow(display, 0x7FFFFFFF);
                           Xt_ErrorHandler(nullptr);
                       }),
              255);
}

TEST_F(XFailure, LostConnectionEndsOrderly) {
    EXPECT_EQ(StatusOf(m_display.Name(),
                       [this] {
                           m_display.Kill();
                           XSync(display, False);
                       }),
              0);
}

TEST_F(XFailure, LostConnectionDuringAFatalErrorKeepsTheFirstStatus) {
    EXPECT_EQ(StatusOf(m_display.Name(),
                       [this] {
                           m_display.Kill();
                           Xt_ErrorHandler(nullptr);
                       }),
              255);
}

TEST_F(XFailure, CloseRequestOfTheWindowManagerEndsOrderly) {
    EXPECT_EQ(StatusOf(m_display.Name(),
                       [] {
                           Widget const shell = XtAppCreateShell(
                               "shell", nullptr, applicationShellWidgetClass, display, nullptr, 0);
                           XtVaSetValues(shell, XtNwidth, 10, XtNheight, 10, nullptr);
                           XtRealizeWidget(shell);
                           XEvent event{};
                           event.xclient.type = ClientMessage;
                           event.xclient.message_type = XInternAtom(display, "WM_PROTOCOLS", False);
                           event.xclient.format = 32;
                           event.xclient.data.l[0] =
                               static_cast<long>(XInternAtom(display, "WM_DELETE_WINDOW", False));
                           SystemMenuClose(shell, &event, nullptr, nullptr);
                       }),
              0);
}

TEST_F(XFailure, OtherEventsDoNotClose) {
    EXPECT_EQ(StatusOf(m_display.Name(),
                       [] {
                           Widget const shell = XtAppCreateShell(
                               "shell", nullptr, applicationShellWidgetClass, display, nullptr, 0);
                           XtVaSetValues(shell, XtNwidth, 10, XtNheight, 10, nullptr);
                           XtRealizeWidget(shell);
                           XEvent event{};
                           event.xclient.type = ClientMessage;
                           event.xclient.message_type = XInternAtom(display, "WM_PROTOCOLS", False);
                           event.xclient.format = 32;
                           event.xclient.data.l[0] =
                               static_cast<long>(XInternAtom(display, "WM_TAKE_FOCUS", False));
                           SystemMenuClose(shell, &event, nullptr, nullptr);
                           event.xclient.type = KeyPress;
                           SystemMenuClose(shell, &event, nullptr, nullptr);
                           SystemMenuClose(shell, nullptr, nullptr, nullptr);
                           _exit(42);
                       }),
              42);
}
