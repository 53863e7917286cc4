// What the dialogs cost, on a virtual display of their own. The action request dialog: the resident size with
// the dialog open, next to xmessage with the same text; the time for a frame with many actions while the
// dialog is open; and the resident size before and after many refreshes and many openings. Notes: time,
// resident size and descriptors for many at once, next to as many processes of xmessage, and for many one
// after the other.
//
// Processor time is that of the main thread, in user and in kernel mode; the display's own is not counted.
//
// usage: bench_dialogs

#include "app/MainLoop.h"
#include "app/ProcessState.h"
#include "bench/ProcessFigures.h"
#include "dialogs/ActionRequestDialog.h"
#include "dialogs/MessageDialogs.h"
#include "link/ProtocolRecords.h"
#include "tests/session/ClientSession.h"
#include "tests/session/Documents.h"
#include "tests/session/PrivateDisplay.h"

#include <X11/Intrinsic.h>
#include <algorithm>
#include <clocale>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <sys/resource.h>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>
#include <vector>

namespace {

using Settling = std::chrono::milliseconds;

std::string const cLocale = "C.UTF-8";
std::string const cSummary = "You should save your work before taking these actions.";

void PrintResident(char const* what, pid_t process) {
    std::printf("%-44s resident %6.0f KiB, of it private %6.0f KiB\n", what, StatusValue(process, "VmRSS"),
                StatusValue(process, "RssAnon"));
    std::fflush(stdout);
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

std::string const cNote = "Your documents are being copied to the server. Please leave the computer on.";
constexpr int cRounds = 5;

std::string Note(int id) {
    return "<MessageRequest><ID>" + std::to_string(id) + "</ID><Title>Backup</Title><Message>" + cNote +
           "</Message></MessageRequest>";
}

std::string Withdrawal(int id) {
    return "<RemoveRequest><RemoveType>Message</RemoveType><ID>" + std::to_string(id) +
           "</ID></RemoveRequest>";
}

std::string Notes(int count) {
    std::string document = "<ClientToUI>";
    for (int id = 1; id <= count; ++id) document += Note(id);
    return document + "</ClientToUI>";
}

std::string Withdrawals(int count) {
    std::string document = "<ClientToUI>";
    for (int id = 1; id <= count; ++id) document += Withdrawal(id);
    return document + "</ClientToUI>";
}

// Each note is withdrawn before the next one opens.
std::string NotesInTurn(int count) {
    std::string document = "<ClientToUI>";
    for (int id = 1; id <= count; ++id) document += Note(id) + Withdrawal(id);
    return document + "</ClientToUI>";
}

// The processor time that the process takes for one frame.
double MillisecondsFor(ClientSession& session, std::string const& document) {
    double const before = CpuMilliseconds(session.ProcessID());
    session.SendDocument(document);
    WaitUntilIdle(session.ProcessID());
    return CpuMilliseconds(session.ProcessID()) - before;
}

struct Footprint {
    explicit Footprint(pid_t process)
        : resident(StatusValue(process, "VmRSS")),
          privateResident(StatusValue(process, "RssAnon")),
          descriptors(Descriptors(process)),
          milliseconds(CpuMilliseconds(process)) {}
    double resident;
    double privateResident;
    long descriptors;
    double milliseconds;
};

void PrintFootprint(char const* when, Footprint const& footprint) {
    std::printf("    %-18s resident %6.0f KiB, of it private %6.0f KiB; %ld descriptors\n", when,
                footprint.resident, footprint.privateResident, footprint.descriptors);
    std::fflush(stdout);
}

void PrintTurns(int count, Footprint const& before, Footprint const& now) {
    double const milliseconds = now.milliseconds - before.milliseconds;
    std::printf("%6d so far: %8.1f ms of processor time, %6.1f us a note\n", count, milliseconds,
                1000 * milliseconds / count);
    PrintFootprint("now", now);
}

void StartForNotes(ClientSession& session) {
    session.SendDocument(Initialization("<UseLocale>true</UseLocale>"));
    WaitUntilIdle(session.ProcessID());
}

void MeasureNotesAtOnce(PrivateDisplay const& server, int count) {
    ClientSession session(OptionsOn(server));
    StartForNotes(session);
    pid_t const process = session.ProcessID();
    std::vector<double> opening;
    std::vector<double> closing;
    std::vector<Footprint> footprints{Footprint(process)};
    for (int round = 0; round < cRounds; ++round) {
        opening.push_back(MillisecondsFor(session, Notes(count)));
        footprints.emplace_back(process);
        closing.push_back(MillisecondsFor(session, Withdrawals(count)));
        footprints.emplace_back(process);
    }
    std::printf(
        "%5d notes in one frame, median of %d: %7.1f ms of processor time to open, %7.1f ms to close\n",
        count, cRounds, Median(opening), Median(closing));
    PrintFootprint("before", footprints[0]);
    PrintFootprint("open", footprints[1]);
    PrintFootprint("closed", footprints[2]);
    PrintFootprint("open, last time", footprints[footprints.size() - 2]);
    PrintFootprint("closed, last time", footprints.back());
}

constexpr int cCheckpoints[] = {1000, 5000, 10000};

bool IsCheckpoint(int count) {
    return std::find(std::begin(cCheckpoints), std::end(cCheckpoints), count) != std::end(cCheckpoints);
}

// A hundred a frame, and a frame a tick.
void MeasureNotesInTurn(PrivateDisplay const& server) {
    constexpr int cNotesInFrame = 100;
    constexpr Settling cTick(1100);
    ClientSession session(OptionsOn(server));
    StartForNotes(session);
    pid_t const process = session.ProcessID();
    Footprint const before(process);
    std::printf("Notes opened and withdrawn one after the other, %d a frame\n", cNotesInFrame);
    PrintFootprint("before", before);
    for (int count = cNotesInFrame; count <= std::end(cCheckpoints)[-1]; count += cNotesInFrame) {
        session.SendDocument(NotesInTurn(cNotesInFrame));
        std::this_thread::sleep_for(cTick);
        if (!IsCheckpoint(count)) continue;
        WaitUntilIdle(process);
        PrintTurns(count, before, Footprint(process));
    }
}

struct XmessageRun {
    double milliseconds;
    double resident;
    double privateResident;
};

// From its start to its end: it closes by itself.
XmessageRun RunXmessage(PrivateDisplay const& server) {
    pid_t const process = fork();
    if (process == 0) {
        setenv("DISPLAY", server.Name().c_str(), 1);
        setenv("LC_ALL", cLocale.c_str(), 1);
        execlp("xmessage", "xmessage", "-buttons", "OK", "-timeout", "1", cNote.c_str(),
               static_cast<char*>(nullptr));
        _exit(127);
    }
    std::this_thread::sleep_for(Settling(700));
    XmessageRun run{0, StatusValue(process, "VmRSS"), StatusValue(process, "RssAnon")};
    rusage usage{};
    int status = 0;
    wait4(process, &status, 0, &usage);
    for (timeval const& time : {usage.ru_utime, usage.ru_stime})
        run.milliseconds += 1e3 * static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_usec) / 1e3;
    return run;
}

void MeasureXmessageForNotes(PrivateDisplay const& server) {
    std::vector<double> milliseconds;
    std::vector<double> resident;
    std::vector<double> privateResident;
    for (int run = 0; run < 2 * cRounds + 1; ++run) {
        XmessageRun const one = RunXmessage(server);
        milliseconds.push_back(one.milliseconds);
        resident.push_back(one.resident);
        privateResident.push_back(one.privateResident);
    }
    std::printf("One xmessage for a note, opened and closed, median of %d: %5.1f ms of processor time, "
                "resident %6.0f KiB, of it private %6.0f KiB\n",
                2 * cRounds + 1, Median(milliseconds), Median(resident), Median(privateResident));
    for (int const count : {75, 150, 300, 600})
        std::printf("%5d times that: %8.1f ms of processor time, private %8.0f KiB\n", count,
                    count * Median(milliseconds), count * Median(privateResident));
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

void ShowAndWithdraw(MessageRequest const& request) {
    ShowMessageDialog(request, false, false);
    ServeEvents();
    RemoveMessageDialog(request.id);
    ServeEvents();
}

void MeasureShownNotes() {
    MessageRequest request;
    request.title = SharedUString<UTF8>("Backup"_utf8);
    request.message = SharedUString<UTF8>(MakeUTF8Ref(cNote.c_str()));
    Footprint const before(getpid());
    std::printf("Notes opened and withdrawn one after the other, each one drawn before it goes\n");
    PrintFootprint("before", before);
    for (int count = 1; count <= std::end(cCheckpoints)[-1]; ++count) {
        ShowAndWithdraw(request);
        if (IsCheckpoint(count)) PrintTurns(count, before, Footprint(getpid()));
    }
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
    MeasureShownNotes();
}

} // namespace

int main() {
    PrivateDisplay const server;
    MeasureResident(server);
    MeasureXmessage(server);
    for (int const count : {500, 1000, 2000}) MeasureBatch(server, count);
    for (int const count : {75, 150, 300, 600}) MeasureNotesAtOnce(server, count);
    MeasureXmessageForNotes(server);
    MeasureNotesInTurn(server);
    MeasureInThisProcess(server);
    return 0;
}
