#include "tests/session/InToolkit.h"

#include "app/MainLoop.h"
#include "app/ProcessState.h"
#include "tests/session/ClientSession.h"

#include <X11/Shell.h>
#include <X11/StringDefs.h>
#include <csignal>
#include <cstdlib>
#include <sys/wait.h>
#include <unistd.h>

void InToolkit::Finish(bool asExpected) {
    _exit(asExpected ? cAsExpected : cNotAsExpected);
}

pid_t InToolkit::Start(std::function<void()> const& body, std::vector<std::string> const& arguments) {
    pid_t const child = fork();
    if (child != 0) return child;
    // One that hangs is ended by a signal.
    alarm(static_cast<unsigned int>(cPatience.count()));
    setenv("DISPLAY", m_display.Name().c_str(), 1);
    for (auto const& [name, value] : m_environment) setenv(name.c_str(), value.c_str(), 1);
    std::string name = "VRKClientUI";
    std::vector<std::string> copies(arguments);
    std::vector<char*> pointers{name.data()};
    for (std::string& argument : copies) pointers.push_back(argument.data());
    pointers.push_back(nullptr);
    // An exception that came back to the test framework would let the child run the other tests as well.
    try {
        OpenToolkit(static_cast<int>(pointers.size()) - 1, pointers.data());
        body();
    } catch (...) {
        _exit(98);
    }
    _exit(99);
}

std::optional<int> InToolkit::StatusOf(pid_t child) {
    int status = 0;
    if (!WaitFor([&] { return waitpid(child, &status, WNOHANG) == child; })) {
        kill(child, SIGKILL);
        waitpid(child, &status, 0);
        return std::nullopt;
    }
    return WIFEXITED(status) ? std::optional<int>(WEXITSTATUS(status)) : std::nullopt;
}

std::string InToolkit::Report(std::function<std::string()> const& body,
                              std::vector<std::string> const& arguments) {
    int ends[2];
    if (pipe(ends) != 0) return "there is no pipe";
    pid_t const child = Start(
        [&] {
            std::string const text = body();
            Finish(write(ends[1], text.data(), text.size()) == static_cast<ssize_t>(text.size()));
        },
        arguments);
    close(ends[1]);
    std::string report;
    char buffer[4096];
    for (ssize_t size = 0; (size = read(ends[0], buffer, sizeof(buffer))) > 0;)
        report.append(buffer, static_cast<std::size_t>(size));
    close(ends[0]);
    std::optional<int> const status = StatusOf(child);
    if (status == cAsExpected) return report;
    return "the child ended with " + (status ? std::to_string(*status) : std::string("a signal"));
}

Widget MakeAppShell(int width, int height) {
    return XtVaAppCreateShell(nullptr, nullptr, applicationShellWidgetClass, display, XtNwidth, width,
                              XtNheight, height, nullptr);
}

void DispatchPendingEvents() {
    XSync(display, False);
    while (XtAppPending(app_context) & XtIMXEvent) XtAppProcessEvent(app_context, XtIMXEvent);
}

XEvent MakeProtocolMessage(char const* protocol) {
    XEvent event{};
    event.xclient.type = ClientMessage;
    event.xclient.message_type = XInternAtom(display, "WM_PROTOCOLS", False);
    event.xclient.format = 32;
    event.xclient.data.l[0] = static_cast<long>(XInternAtom(display, protocol, False));
    return event;
}
