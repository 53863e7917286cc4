// What an InitializationInfo with support files costs the whole program: with one file and with 500, at a
// quarter, at half and at the whole of the largest frame. The files go out in Base64, in lines of 76
// characters. And the number of descriptors that the program has open before and after each kind of message.
//
// Without a display the program ends as soon as the message is applied, so that its end tells when that was,
// and its processor time, of all threads and in user and in kernel mode, is known to the microsecond. Both
// are printed less those of a message without files: the program looks for messages once a second. On a
// display its resident size is seen, and its answer to an action that was sent behind the message.
//
// Each file is flushed to its device, which may take most of the time with many of them. The session
// directory is made below TMPDIR: with that on a file system in memory the program's own work is seen alone.
//
// usage: bench_initialization [RUNS]

#include "bench/ProcessFigures.h"
#include "tests/session/ClientSession.h"
#include "tests/session/Documents.h"
#include "tests/session/PrivateDisplay.h"

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <optional>
#include <stdexcept>
#include <string>
#include <sys/resource.h>
#include <vector>

namespace {

using Clock = std::chrono::steady_clock;

constexpr std::size_t cLargestFrame = 2097152;
constexpr std::size_t cBase64Line = 76;

struct Shape {
    std::size_t files;
    std::size_t bytes;
};

constexpr Shape cShapes[] = {{1, cLargestFrame / 4},   {1, cLargestFrame / 2},   {1, cLargestFrame},
                             {500, cLargestFrame / 4}, {500, cLargestFrame / 2}, {500, cLargestFrame}};

// So many characters, line feeds included.
std::string Base64Lines(std::size_t size) {
    constexpr char cAlphabet[] = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
    std::string lines(size, '\n');
    std::uint32_t state = 1;
    for (std::size_t place = 0; place < size; ++place) {
        state = state * 1664525 + 1013904223;
        if (place % (cBase64Line + 1) != cBase64Line) lines[place] = cAlphabet[state >> 26];
    }
    return lines;
}

std::string SupportFile(std::size_t number, std::string const& content) {
    return "<SupportFiles><FileName>file" + std::to_string(number) +
           "</FileName><SubFolder></SubFolder><Content>" + content + "</Content></SupportFiles>";
}

std::string SessionDirectory() {
    return SessionFolder() + "/session";
}

std::string InitializationWith(std::string const& supportFiles) {
    return InitializationOf(SessionDirectory(), supportFiles, "<UseLocale>false</UseLocale>");
}

// Exactly as large as the shape says: the last file gets what is left.
std::string InitializationOfShape(Shape const& shape) {
    std::string names;
    for (std::size_t number = 1; number <= shape.files; ++number) names += SupportFile(number, "");
    std::size_t left = shape.bytes - InitializationWith(names).size();
    std::string supportFiles;
    for (std::size_t number = 1; number <= shape.files; ++number) {
        std::size_t const size = left / (shape.files - number + 1);
        supportFiles += SupportFile(number, Base64Lines(size));
        left -= size;
    }
    return InitializationWith(supportFiles);
}

// Of the processes that have ended.
double ChildrensMilliseconds() {
    rusage usage{};
    getrusage(RUSAGE_CHILDREN, &usage);
    double milliseconds = 0;
    for (timeval const& time : {usage.ru_utime, usage.ru_stime})
        milliseconds += 1e3 * static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_usec) / 1e3;
    return milliseconds;
}

double MillisecondsSince(Clock::time_point start) {
    return std::chrono::duration<double, std::milli>(Clock::now() - start).count();
}

[[noreturn]] void Fail(char const* what) {
    throw std::runtime_error(what);
}

struct Cost {
    double elapsed;
    double processor;
};

// The files of one message would have to be deleted for the next one.
void RemoveSessionDirectory() {
    std::filesystem::remove_all(SessionDirectory());
}

// From the start of the program to its end for want of a display.
Cost MeasureUntilApplied(std::string const& document) {
    constexpr int cStatusWithoutDisplay = 255;
    RemoveSessionDirectory();
    double const before = ChildrensMilliseconds();
    auto const start = Clock::now();
    ClientSession session;
    if (!session.ReadDocument() || !session.SendDocument(document)) Fail("the program takes no document");
    // Looks more often than ClientSession::WaitForEnd does.
    while (session.IsRunning()) std::this_thread::sleep_for(std::chrono::microseconds(100));
    Cost const cost{MillisecondsSince(start), ChildrensMilliseconds() - before};
    if (session.WaitForExitStatus() != cStatusWithoutDisplay) Fail("the message was not applied");
    return cost;
}

struct Costs {
    std::vector<double> elapsed;
    std::vector<double> processor;

    void Add(Cost const& cost) {
        elapsed.push_back(cost.elapsed);
        processor.push_back(cost.processor);
    }
};

// All shapes in turn, so that what else goes on at the machine meets all of them.
void MeasureTimes(int runs) {
    std::string const empty = InitializationWith("");
    std::vector<std::string> documents;
    for (Shape const& shape : cShapes) documents.push_back(InitializationOfShape(shape));
    Costs base;
    std::vector<Costs> costs(documents.size());
    for (int run = 0; run < runs; ++run) {
        base.Add(MeasureUntilApplied(empty));
        for (std::size_t index = 0; index < documents.size(); ++index)
            costs[index].Add(MeasureUntilApplied(documents[index]));
    }
    std::printf("Without files, median of %d: applied and ended after %.1f ms, %.1f ms of processor time; "
                "beyond that\n",
                runs, Median(base.elapsed), Median(base.processor));
    for (std::size_t index = 0; index < documents.size(); ++index)
        std::printf("%8zu bytes, %3zu files: applied after %6.1f ms, %6.1f ms of processor time\n",
                    documents[index].size(), cShapes[index].files,
                    Median(costs[index].elapsed) - Median(base.elapsed),
                    Median(costs[index].processor) - Median(base.processor));
    std::fflush(stdout);
}

ClientSession::Options OptionsOn(PrivateDisplay const& server) {
    ClientSession::Options options;
    options.display = server.Name();
    return options;
}

void WaitForAnswer(ClientSession& session, char const* message) {
    while (std::optional<std::string> const document = session.ReadDocument())
        if (document->find(message) != std::string::npos) return;
    Fail("there was no answer");
}

// Both frames go at once; the action is overdue and taken at the first tick on the display.
void MeasureResident(PrivateDisplay const& server, std::string const& document, std::size_t files) {
    RemoveSessionDirectory();
    ClientSession session(OptionsOn(server));
    WaitForAnswer(session, "<ReadyForData>");
    double const before = StatusValue(session.ProcessID(), "VmRSS");
    auto const start = Clock::now();
    if (!session.SendBytes(ClientSession::Frame(document) +
                           ClientSession::Frame(ForcedAction(1, TimeFromNow(-60)))))
        Fail("the program takes no document");
    WaitForAnswer(session, "<ActionTaken>");
    double const answered = MillisecondsSince(start);
    std::printf(
        "%8zu bytes, %3zu files: answer after %6.1f ms; resident %5.0f KiB while waiting for it, most "
        "%6.0f KiB, then %5.0f KiB (private %5.0f KiB)\n",
        document.size(), files, answered, before, StatusValue(session.ProcessID(), "VmHWM"),
        StatusValue(session.ProcessID(), "VmRSS"), StatusValue(session.ProcessID(), "RssAnon"));
    std::fflush(stdout);
}

struct Step {
    char const* name;
    std::string document;
};

std::string Message(std::string const& name, std::string const& fields) {
    return "<ClientToUI><" + name + ">" + fields + "</" + name + "></ClientToUI>";
}

std::vector<Step> BeforeTheDisplay() {
    return {{"InitializationInfo that fails",
             InitializationOf("/proc/none", SupportFile(1, "QUJD"), "<UseLocale>false</UseLocale>")},
            {"InitializationInfo that fails at a file",
             InitializationWith(SupportFile(1, "QUJD") + SupportFile(2, "QUJD") +
                                "<SupportFiles><FileName>a/b</FileName></SupportFiles>")},
            {"text that is no XML", "nothing of that kind"}};
}

std::vector<Step> OnTheDisplay() {
    std::string const action = "<Title>Update</Title><Preview>true</Preview>";
    std::string const note = "<Title>Note</Title><Message>Text</Message>";
    std::string const now = TimeFromNow(0);
    return {
        {"InitializationInfo for the second time", InitializationOfShape(cShapes[5])},
        {"ActionRequest", Message("ActionRequest", "<ID>1</ID>" + action)},
        {"ActionRequest, forced and overdue", ForcedAction(2, TimeFromNow(-60))},
        {"MessageRequest", Message("MessageRequest", "<ID>3</ID>" + note)},
        {"MessageRequest, the same again", Message("MessageRequest", "<ID>3</ID>" + note)},
        {"MessageRequest, of a completion",
         Message("MessageRequest", "<ID>4</ID>" + note + "<IsCompletionMessage>true</IsCompletionMessage>")},
        {"ActionRunningTopmost", Message("ActionRunningTopmost", "<Enabled>true</Enabled>")},
        {"QuietModeStart", Message("QuietModeStart", "<StartTime>" + now + "</StartTime><EndTime>" +
                                                         TimeFromNow(3600) + "</EndTime>")},
        {"QuietModeEnd", Message("QuietModeEnd", "")},
        {"RemoveRequest, of a message",
         Message("RemoveRequest", "<RemoveType>Message</RemoveType><ID>3</ID>")},
        {"RemoveRequest, of both", Message("RemoveRequest", "<RemoveType>All</RemoveType><ID>4</ID>")},
        {"RemoveRequest, of an action",
         Message("RemoveRequest", "<RemoveType>Action</RemoveType><ID>1</ID>")},
        {"unknown message", Message("Unknown", "<ID>1</ID>")},
        {"text that is no XML", "nothing of that kind"},
    };
}

void PrintDescriptors(ClientSession& session, Step const& step) {
    long const before = Descriptors(session.ProcessID());
    if (!session.SendDocument(step.document)) Fail("the program takes no document");
    WaitUntilIdle(session.ProcessID());
    std::printf("    %-42s %2ld before, %2ld after\n", step.name, before, Descriptors(session.ProcessID()));
    std::fflush(stdout);
}

void MeasureDescriptors(PrivateDisplay const& server) {
    std::printf("Open descriptors, while there is no display\n");
    ClientSession session(OptionsOn(server));
    WaitForAnswer(session, "<ReadyForData>");
    for (Step const& step : BeforeTheDisplay()) PrintDescriptors(session, step);
    PrintDescriptors(session, {"InitializationInfo; opens the display", InitializationOfShape(cShapes[5])});
    std::printf("Open descriptors, on the display\n");
    for (Step const& step : OnTheDisplay()) PrintDescriptors(session, step);
}

} // namespace

int main(int argumentCount, char** arguments) {
    int const runs = argumentCount > 1 ? std::atoi(arguments[1]) : 7;
    if (runs < 1) {
        std::fprintf(stderr, "usage: %s [RUNS]\n", arguments[0]);
        return 2;
    }
    try {
        MeasureTimes(runs);
        PrivateDisplay const server;
        MeasureResident(server, InitializationWith(""), 0);
        for (Shape const& shape : cShapes) MeasureResident(server, InitializationOfShape(shape), shape.files);
        MeasureDescriptors(server);
    } catch (std::exception const& error) {
        std::fprintf(stderr, "%s\n", error.what());
        return 1;
    }
    return 0;
}
