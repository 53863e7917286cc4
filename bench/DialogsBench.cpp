// What the action request dialog costs, on a virtual display of its own: the resident size with the dialog
// open, next to xmessage with the same text; the time for a frame with many actions while the dialog is open;
// and the resident size before and after many refreshes and many openings.
//
// usage: bench_dialogs

#include "app/MainLoop.h"
#include "app/ProcessState.h"
#include "dialogs/ActionRequestDialog.h"
#include "tests/session/ClientSession.h"
#include "tests/session/Documents.h"
#include "tests/session/PrivateDisplay.h"

#include <X11/Intrinsic.h>
#include <clocale>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>

namespace {

using Settling = std::chrono::milliseconds;

std::string const cLocale = "C.UTF-8";
std::string const cSummary = "You should save your work before taking these actions.";

std::string ProcFile(pid_t process, char const* name) {
    return "/proc/" + std::to_string(process) + "/" + name;
}

// The value of a "Name:   123 kB" line of /proc/PID/status.
double StatusValue(pid_t process, std::string const& name) {
    std::ifstream status(ProcFile(process, "status"));
    for (std::string line; std::getline(status, line);)
        if (line.starts_with(name)) return std::atof(line.c_str() + name.size() + 1);
    return 0;
}

void PrintResident(char const* what, pid_t process) {
    std::printf("%-44s resident %6.0f KiB, of it private %6.0f KiB\n", what, StatusValue(process, "VmRSS"),
                StatusValue(process, "RssAnon"));
    std::fflush(stdout);
}

// Time on a processor that the process's main thread has had so far.
double CpuMilliseconds(pid_t process) {
    std::ifstream statistics(ProcFile(process, "schedstat"));
    double nanoseconds = 0;
    statistics >> nanoseconds;
    return nanoseconds / 1e6;
}

std::string Actions(int first, int count) {
    std::string document = "<ClientToUI>";
    for (int number = first; number < first + count; ++number)
        document +=
            "<ActionRequest><ID>" + std::to_string(number) +
            "</ID><Title>Install the security updates of week " + std::to_string(number) +
            "</Title><ShortDescription>Brings the office suite to the current version. Open documents "
            "have to be closed first.</ShortDescription><Cancellable>true</Cancellable>"
            "<RequestSave>true</RequestSave></ActionRequest>";
    return document + "</ClientToUI>";
}

ClientSession::Options OptionsOn(PrivateDisplay const& server) {
    ClientSession::Options options;
    options.display = server.Name();
    options.environment["LC_ALL"] = cLocale;
    return options;
}

// Long enough for two ticks.
void WaitForTicks() {
    std::this_thread::sleep_for(Settling(2500));
}

void StartWithDialog(ClientSession& session) {
    session.SendDocument(Initialization("<UseLocale>true</UseLocale>"));
    WaitForTicks();
    session.SendDocument(Actions(1, 3));
    WaitForTicks();
}

void MeasureXmessage(PrivateDisplay const& server) {
    pid_t const process = fork();
    if (process == 0) {
        setenv("DISPLAY", server.Name().c_str(), 1);
        setenv("LC_ALL", cLocale.c_str(), 1);
        execlp("xmessage", "xmessage", "-buttons", "Take All Actions,Snooze", cSummary.c_str(),
               static_cast<char*>(nullptr));
        _exit(127);
    }
    WaitForTicks();
    PrintResident("xmessage with the same text", process);
    kill(process, SIGKILL);
    waitpid(process, nullptr, 0);
}

void MeasureResident(PrivateDisplay const& server) {
    ClientSession session(OptionsOn(server));
    session.SendDocument(Initialization("<UseLocale>true</UseLocale>"));
    WaitForTicks();
    PrintResident("VRKClientUI on the display, nothing pending", session.ProcessID());
    session.SendDocument(Actions(1, 3));
    WaitForTicks();
    PrintResident("VRKClientUI with the dialog open", session.ProcessID());
}

void MeasureBatch(PrivateDisplay const& server, int count) {
    ClientSession session(OptionsOn(server));
    StartWithDialog(session);
    double const before = CpuMilliseconds(session.ProcessID());
    session.SendDocument(Actions(4, count));
    WaitForTicks();
    std::printf("%5d actions in one frame, dialog open: %8.1f ms of processor time\n", count,
                CpuMilliseconds(session.ProcessID()) - before);
    std::fflush(stdout);
}

void ServeEvents() {
    XSync(display, False);
    while (XtAppPending(app_context) & XtIMXEvent) XtAppProcessEvent(app_context, XtIMXEvent);
}

void AddAction(unsigned long id) {
    ActionRequest request;
    request.id = id;
    request.SetTitle("Install the security updates"_utf8);
    request.requestSave = true;
    actions.push_back(request);
}

void OpenDialog() {
    UnixApp_ShowActionRequestDialog(false, TimeInterval(), true);
    ServeEvents();
}

void MeasureRefreshes(int count) {
    OpenDialog();
    PrintResident("Before the refreshes", getpid());
    for (int refresh = 0; refresh < count; ++refresh) {
        UpdateActionRequestDialog();
        ServeEvents();
    }
    PrintResident(("After " + std::to_string(count) + " refreshes").c_str(), getpid());
    HideActionRequestDialog();
    ServeEvents();
}

void MeasureOpenings(int count) {
    PrintResident("Before the openings", getpid());
    for (int opening = 0; opening < count; ++opening) {
        OpenDialog();
        HideActionRequestDialog();
        ServeEvents();
    }
    PrintResident(("After " + std::to_string(count) + " openings and closings").c_str(), getpid());
}

void MeasureInThisProcess(PrivateDisplay const& server) {
    setenv("DISPLAY", server.Name().c_str(), 1);
    setenv("LC_ALL", cLocale.c_str(), 1);
    setlocale(LC_CTYPE, "");
    international = true;
    std::string name = "VRKClientUI";
    char* arguments[] = {name.data(), nullptr};
    OpenToolkit(1, arguments);
    for (unsigned long const id : {1ul, 2ul, 3ul}) AddAction(id);
    MeasureRefreshes(10000);
    MeasureOpenings(1000);
}

} // namespace

int main() {
    PrivateDisplay const server;
    MeasureResident(server);
    MeasureXmessage(server);
    for (int const count : {500, 1000, 2000}) MeasureBatch(server, count);
    MeasureInThisProcess(server);
    return 0;
}
