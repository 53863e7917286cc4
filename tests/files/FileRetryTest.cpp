#include "files/FileRetry.h"

#include "files/FileOperations.h"
#include "files/FileWriting.h"

#include "tests/files/FileTestSupport.h"
#include "tests/files/RecordedRetries.h"
#include "tests/files/RecordedWaits.h"
#include "tests/support/TemporaryFolder.h"

#include <chrono>
#include <functional>
#include <gtest/gtest.h>

namespace {

using Lines = std::vector<std::string>;
using Milliseconds = std::vector<unsigned int>;

Milliseconds const cAllWaits{40, 80, 160, 320, 640, 1280, 2560, 5120};
Milliseconds const cAllShortWaits{16, 32, 64, 128, 256, 512, 1024};

// What is thrown by an operation without any base.
struct Mishap {
    unsigned int attempt;
};

// An operation that fails so many times.
class FailingOperation {
public:
    explicit FailingOperation(unsigned int failures) : m_failures(failures) {}

    void operator()() const {
        if (++m_attempts <= m_failures) throw Mishap{m_attempts};
    }
    unsigned int Attempts() const { return m_attempts; }

private:
    unsigned int m_failures;
    mutable unsigned int m_attempts = 0;
};

FileLocation const& Somewhere() {
    static FileLocation const location("/some/where"_utf8);
    return location;
}

template <class Operation>
void Retry(RetrySchedule const& schedule, FileRetryLog const& log, Operation const& operation) {
    RetryFileOperation(schedule, "Try"_utf8, &Somewhere(), nullptr, log, operation);
}

struct RetryingForm {
    char const* call; // As the log tells it; %1 and %2 are the locations.
    std::function<void(FileLocation const&, FileLocation const&, FileRetryLog const&)> operation;
};

// Each form fails for a file that is named as something below a file.
std::vector<RetryingForm> const& RetryingForms() {
    using Location = FileLocation const&;
    using Log = FileRetryLog const&;
    static std::vector<RetryingForm> const forms{
        {"ForceNonexistence(%1)", [](Location a, Location, Log log) { ForceNonexistenceWithRetry(a, log); }},
        {"DeleteFile(%1)", [](Location a, Location, Log log) { DeleteFileWithRetry(a, log); }},
        {"DeleteDirectory(%1)", [](Location a, Location, Log log) { DeleteDirectoryWithRetry(a, log); }},
        {"ForceCopyFile(%1, %2)", [](Location a, Location b, Log log) { ForceCopyFileWithRetry(a, b, log); }},
        {"ForceMoveFile(%1, %2)", [](Location a, Location b, Log log) { ForceMoveFileWithRetry(a, b, log); }},
        {"CopyFile(%1, %2)", [](Location a, Location b, Log log) { CopyFileWithRetry(a, b, log); }},
        {"MoveFile(%1, %2)", [](Location a, Location b, Log log) { MoveFileWithRetry(a, b, log); }},
        {"ForceDirectoryExistenceWithInfo(%1)",
         [](Location a, Location, Log log) {
             ForceDirectoryExistenceWithInfoWithRetry(a, DirectoryCreatingInfo(), log);
         }},
        {"ForceDirectoryExistence(%1)",
         [](Location a, Location, Log log) { ForceDirectoryExistenceWithRetry(a, log); }},
        {"CreateDirectory(%1)",
         [](Location a, Location, Log log) { CreateDirectoryWithRetry(a, DirectoryCreatingInfo(), log); }},
        {"DeleteRecursive(%1)", [](Location a, Location, Log log) { ForceDeleteRecursiveWithRetry(a, log); }},
        {"DeleteContents(%1)", [](Location a, Location, Log log) { ForceDeleteContents(a, log); }},
        {"CreateFile(%1)",
         [](Location a, Location, Log log) { CreateFileWithRetry(a, FileCreatingInfo(), log); }},
    };
    return forms;
}

std::string Call(RetryingForm const& form, FileLocation const& first, FileLocation const& second) {
    std::string call = form.call;
    call.replace(call.find("%1"), 2, MakeString(first.GetDisplayPath()));
    if (call.find("%2") != std::string::npos)
        call.replace(call.find("%2"), 2, MakeString(second.GetDisplayPath()));
    return call;
}

} // namespace

TEST(RetryFileOperation, LogsNothingAndWaitsForNothingWhenTheFirstAttemptSucceeds) {
    RecordedWaits const waits;
    RecordedRetries const log;
    FailingOperation const operation(0);
    Retry(cRetrySchedule, log, operation);
    EXPECT_EQ(operation.Attempts(), 1U);
    EXPECT_EQ(log.Lines(), Lines());
    EXPECT_EQ(waits.Waits(), Milliseconds());
}

TEST(RetryFileOperation, TriesAsOftenAsItTakesUpToNineTimes) {
    for (unsigned int failures = 1; failures <= 8; ++failures) {
        RecordedWaits const waits;
        RecordedRetries const log;
        FailingOperation const operation(failures);
        Retry(cRetrySchedule, log, operation);
        EXPECT_EQ(operation.Attempts(), failures + 1);
        EXPECT_EQ(log.Lines(), Lines{"Try(/some/where) succeeded at " + std::to_string(failures + 1)});
        EXPECT_EQ(waits.Waits(), Milliseconds(cAllWaits.begin(), cAllWaits.begin() + failures));
    }
}

TEST(RetryFileOperation, PassesTheNinthFailureOn) {
    RecordedWaits const waits;
    RecordedRetries const log;
    FailingOperation const operation(100);
    unsigned int thrownAt = 0;
    try {
        Retry(cRetrySchedule, log, operation);
    } catch (Mishap const& mishap) {
        thrownAt = mishap.attempt;
    }
    EXPECT_EQ(thrownAt, 9U);
    EXPECT_EQ(operation.Attempts(), 9U);
    EXPECT_EQ(log.Lines(), Lines{"Try(/some/where) failed at 9"});
    EXPECT_EQ(waits.Waits(), cAllWaits);
}

TEST(RetryFileOperation, TriesEightTimesOnTheShortSchedule) {
    for (unsigned int failures = 1; failures <= 7; ++failures) {
        RecordedWaits const waits;
        RecordedRetries const log;
        Retry(cShortRetrySchedule, log, FailingOperation(failures));
        EXPECT_EQ(log.Lines(), Lines{"Try(/some/where) succeeded at " + std::to_string(failures + 1)});
        EXPECT_EQ(waits.Waits(), Milliseconds(cAllShortWaits.begin(), cAllShortWaits.begin() + failures));
    }
    RecordedWaits const waits;
    RecordedRetries const log;
    FailingOperation const operation(8);
    EXPECT_THROW(Retry(cShortRetrySchedule, log, operation), Mishap);
    EXPECT_EQ(operation.Attempts(), 8U);
    EXPECT_EQ(log.Lines(), Lines{"Try(/some/where) failed at 8"});
    EXPECT_EQ(waits.Waits(), cAllShortWaits);
}

TEST(RetryFileOperation, TakesTwoSecondsOnTheShortSchedule) {
    RecordedRetries const log;
    auto const start = std::chrono::steady_clock::now();
    EXPECT_THROW(Retry(cShortRetrySchedule, log, FailingOperation(8)), Mishap);
    auto const passed = std::chrono::steady_clock::now() - start;
    EXPECT_GE(passed, std::chrono::milliseconds(2032));
    EXPECT_LT(passed, std::chrono::milliseconds(10000));
}

TEST(RetryFileOperation, PassesAnEmptyLocationOnAtOnceUnlessTheScheduleIsShort) {
    auto const fail = [] { throw EmptyFileLocationError(0); };
    {
        RecordedWaits const waits;
        RecordedRetries const log;
        EXPECT_EQ(FailureOf([&] { Retry(cRetrySchedule, log, fail); }), "EmptyFileLocationError 0");
        EXPECT_EQ(log.Lines(), Lines());
        EXPECT_EQ(waits.Waits(), Milliseconds());
    }
    RecordedWaits const waits;
    RecordedRetries const log;
    EXPECT_EQ(FailureOf([&] { Retry(cShortRetrySchedule, log, fail); }), "EmptyFileLocationError 0");
    EXPECT_EQ(log.Lines(), Lines{"Try(/some/where) failed at 8"});
    EXPECT_EQ(waits.Waits(), cAllShortWaits);
}

TEST(RetryFileOperation, PassesAnEmptyLocationOnAlsoBehindOtherFailures) {
    RecordedWaits const waits;
    RecordedRetries const log;
    unsigned int attempts = 0;
    auto const fail = [&] {
        if (++attempts < 3) throw Mishap{attempts};
        throw EmptyFileLocationError(0);
    };
    EXPECT_EQ(FailureOf([&] { Retry(cRetrySchedule, log, fail); }), "EmptyFileLocationError 0");
    EXPECT_EQ(log.Lines(), Lines());
    EXPECT_EQ(waits.Waits(), (Milliseconds{40, 80}));
}

TEST(RetryFileOperation, HandsBothLocationsToTheLog) {
    RecordedWaits const waits;
    RecordedRetries const log;
    FileLocation const other("/else/where"_utf8);
    RetryFileOperation(cRetrySchedule, "Try"_utf8, &Somewhere(), &other, log, FailingOperation(1));
    RetryFileOperation(cRetrySchedule, "Try"_utf8, nullptr, nullptr, log, FailingOperation(1));
    EXPECT_EQ(log.Lines(), (Lines{"Try(/some/where, /else/where) succeeded at 2", "Try() succeeded at 2"}));
}

TEST(RetryFileOperation, LetsFailuresOfTheLogOut) {
    class BrokenLog : public FileRetryLog {
        void LogRetrySuccess(UStringRef<UTF8> const&, FileLocation const*, FileLocation const*,
                             unsigned int) const override {
            throw 1;
        }
        void LogRetryFailure(UStringRef<UTF8> const&, FileLocation const*, FileLocation const*,
                             unsigned int) const override {
            throw 2.0;
        }
    };
    RecordedWaits const waits;
    EXPECT_THROW(Retry(cRetrySchedule, BrokenLog(), FailingOperation(1)), int);
    EXPECT_THROW(Retry(cRetrySchedule, BrokenLog(), FailingOperation(9)), double);
}

TEST(FileRetryLog, DoesNothingOfItsOwn) {
    RecordedWaits const waits;
    EXPECT_NO_THROW(Retry(cRetrySchedule, FileRetryLog(), FailingOperation(1)));
    EXPECT_THROW(Retry(cRetrySchedule, FileRetryLog(), FailingOperation(9)), Mishap);
}

TEST(RetryingOperations, TryNineTimesAndLogTheirWord) {
    TemporaryFolder const folder;
    folder.MakeFolder("full");
    folder.MakeFolder("full/folder");
    folder.Write("full/folder/file", "x");
    folder.Write("file", "x");
    std::string const tooLong(300, 'x');
    for (RetryingForm const& form : RetryingForms()) {
        RecordedWaits const waits;
        RecordedRetries const log;
        // No operation can do with a name of that length, not even find out that nothing has it.
        FileLocation const first = folder.Location(tooLong);
        FileLocation const second = folder.Location("target");
        std::string const failure = FailureOf([&] { form.operation(first, second, log); });
        EXPECT_TRUE(failure.ends_with(" 36")) << form.call << ": " << failure;
        EXPECT_EQ(log.Lines(), Lines{Call(form, first, second) + " failed at 9"}) << form.call;
        EXPECT_EQ(waits.Waits(), cAllWaits) << form.call;
    }
}

TEST(RetryingOperations, RefuseAnEmptyLocationAtOnce) {
    TemporaryFolder const folder;
    folder.Write("file", "x");
    for (RetryingForm const& form : RetryingForms()) {
        RecordedWaits const waits;
        RecordedRetries const log;
        EXPECT_EQ(FailureOf([&] { form.operation(FileLocation(), folder.Location("target"), log); }),
                  "EmptyFileLocationError 0")
            << form.call;
        if (std::string(form.call).find("%2") != std::string::npos) {
            EXPECT_EQ(FailureOf([&] { form.operation(folder.Location("file"), FileLocation(), log); }),
                      "EmptyFileLocationError 0")
                << form.call;
        }
        EXPECT_EQ(log.Lines(), Lines()) << form.call;
        EXPECT_EQ(waits.Waits(), Milliseconds()) << form.call;
    }
    EXPECT_EQ(folder.Read("file"), "x");
}

TEST(RetryingOperations, SucceedOnceWhatHinderedThemHasGone) {
    TemporaryFolder const folder;
    folder.MakeFolder("directory");
    folder.Write("directory/file", "x");
    FileLocation const directory = folder.Location("directory");
    int waited = 0;
    RecordedWaits const waits([&] {
        if (++waited == 2) std::filesystem::remove(folder.Path("directory/file"));
    });
    RecordedRetries const log;
    DeleteDirectoryWithRetry(directory, log);
    EXPECT_FALSE(folder.Has("directory"));
    EXPECT_EQ(log.Lines(), Lines{"DeleteDirectory(" + folder.Path("directory") + ") succeeded at 3"});
    EXPECT_EQ(waits.Waits(), (Milliseconds{40, 80}));
}

TEST(RetryingOperations, DoWhatTheirPlainFormsDo) {
    TemporaryFolder const folder;
    RecordedWaits const waits;
    RecordedRetries const log;
    FileLocation const a = folder.Location("a");
    FileLocation const b = folder.Location("b");
    auto const is = [&](FileLocation const& location) { return location.Exists(); };

    CreateFileWithRetry(a, FileCreatingInfo{.mode = 0600}, log);
    EXPECT_TRUE(is(a));
    CopyFileWithRetry(a, b, log);
    EXPECT_TRUE(is(b));
    ForceCopyFileWithRetry(a, b, log);
    DeleteFileWithRetry(b, log);
    EXPECT_FALSE(is(b));
    MoveFileWithRetry(a, b, log);
    EXPECT_TRUE(is(b) && !is(a));
    ForceMoveFileWithRetry(b, a, log);
    EXPECT_TRUE(is(a) && !is(b));
    ForceNonexistenceWithRetry(a, log);
    EXPECT_FALSE(is(a));

    CreateDirectoryWithRetry(a, DirectoryCreatingInfo(), log);
    EXPECT_TRUE(a.IsDirectory());
    DeleteDirectoryWithRetry(a, log);
    EXPECT_FALSE(is(a));
    ForceDirectoryExistenceWithRetry(a, log);
    ForceDirectoryExistenceWithInfoWithRetry(b, DirectoryCreatingInfo{.mode = 0700}, log);
    EXPECT_TRUE(a.IsDirectory() && b.IsDirectory());
    folder.Write("a/file", "x");
    folder.Write("b/file", "x");
    ForceDeleteContents(a, log);
    EXPECT_TRUE(is(a) && !folder.Has("a/file"));
    ForceDeleteRecursiveWithRetry(b, log);
    EXPECT_FALSE(is(b));
    EXPECT_EQ(log.Lines(), Lines());
    EXPECT_EQ(waits.Waits(), Milliseconds());
}
