#include "files/FileWriting.h"
#include "files/FileReading.h"
#include "files/FileRetry.h"
#include "text/UString.h"

#include "tests/files/ChildProcess.h"
#include "tests/files/FileTestSupport.h"
#include "tests/files/RecordedWaits.h"
#include "tests/files/SystemCalls.h"
#include "tests/support/TemporaryFolder.h"
#include "tests/support/UStringPrinting.h"

#include <cerrno>
#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/mount.h>
#include <sys/stat.h>
#include <unistd.h>
#include <vector>

namespace {

constexpr unsigned long cBeyondSigned = 9223372036854775808UL;

using OpenOperation = void (FileWritingPath::*)(FileLocation const&);
using PlatformOpenOperation = void (UnixPlatform::FileWritingPath::*)(FileLocation const&);

// What each way of opening does; `afterOpening` is what the file with "old" then holds.
struct WayToOpen {
    char const* name;
    OpenOperation open;
    PlatformOpenOperation platformOpen;
    char const* failureWhenMissing;
    char const* failureWhenThere;
    char const* afterOpening;
};

WayToOpen const cWaysToOpen[] = {
    {"OpenNew", &FileWritingPath::OpenNew, &UnixPlatform::FileWritingPath::OpenNew, "nothing",
     "FileExistsError 17", "old"},
    {"OpenNewOrAsNew", &FileWritingPath::OpenNewOrAsNew, &UnixPlatform::FileWritingPath::OpenNewOrAsNew,
     "nothing", "nothing", ""},
    {"OpenExistingOrNew", &FileWritingPath::OpenExistingOrNew,
     &UnixPlatform::FileWritingPath::OpenExistingOrNew, "nothing", "nothing", "old"},
    {"OpenExisting", &FileWritingPath::OpenExisting, &UnixPlatform::FileWritingPath::OpenExisting,
     "FileNotFoundError 2", "nothing", "old"},
};

class UmaskScope {
public:
    explicit UmaskScope(mode_t mask) : m_earlier(umask(mask)) {}
    UmaskScope(UmaskScope const&) = delete;
    UmaskScope& operator=(UmaskScope const&) = delete;
    ~UmaskScope() { umask(m_earlier); }

private:
    mode_t m_earlier;
};

class RecordingLog : public FileRetryLog {
public:
    void LogRetrySuccess(UStringRef<UTF8> const& word, FileLocation const* first, FileLocation const* second,
                         unsigned int attempts) const override {
        Record("success", word, first, second, attempts);
    }
    void LogRetryFailure(UStringRef<UTF8> const& word, FileLocation const* first, FileLocation const* second,
                         unsigned int attempts) const override {
        Record("failure", word, first, second, attempts);
    }

    std::vector<std::string> const& Entries() const { return m_entries; }

private:
    void Record(std::string const& end, UStringRef<UTF8> const& word, FileLocation const* first,
                FileLocation const* second, unsigned int attempts) const {
        m_entries.push_back(end + " " + MakeString(word) + " " + MakeString(first->Text()) +
                            (second ? " and another " : " ") + std::to_string(attempts));
    }

    mutable std::vector<std::string> m_entries;
};

// A file that holds `contents`, open for writing.
class OpenFile {
public:
    explicit OpenFile(std::string const& contents) {
        m_folder.Write("file", contents);
        m_path.OpenExisting(Location());
    }
    FileWritingPath& Path() { return m_path; }
    FileLocation Location() const { return m_folder.Location("file"); }
    std::string Contents() const { return m_folder.Read("file"); }

private:
    TemporaryFolder m_folder;
    FileWritingPath m_path;
};

} // namespace

TEST(FileWritingPath, OpensAMissingFileAsTold) {
    for (auto const& way : cWaysToOpen) {
        TemporaryFolder const folder;
        FileWritingPath path;
        EXPECT_EQ(FailureOf([&] { (path.*way.open)(folder.Location("file")); }), way.failureWhenMissing)
            << way.name;
        bool const opened = way.failureWhenMissing == std::string("nothing");
        EXPECT_EQ(path.IsOpen(), opened) << way.name;
        EXPECT_EQ(folder.Has("file"), opened) << way.name;
        EXPECT_EQ(path.Location().Compare(folder.Location("file")), 0) << way.name;
    }
}

TEST(FileWritingPath, OpensAFileThatStandsAsTold) {
    for (auto const& way : cWaysToOpen) {
        TemporaryFolder const folder;
        folder.Write("file", "old");
        FileWritingPath path;
        EXPECT_EQ(FailureOf([&] { (path.*way.open)(folder.Location("file")); }), way.failureWhenThere)
            << way.name;
        EXPECT_EQ(folder.Read("file"), way.afterOpening) << way.name;
    }
}

TEST(FileWritingPath, TakesALinkThatLeadsNowhereForSomethingThatStands) {
    TemporaryFolder const folder;
    folder.MakeLink(folder.Path("elsewhere"), "link");
    FileWritingPath path;
    EXPECT_EQ(FailureOf([&] { path.OpenNew(folder.Location("link")); }), "FileExistsError 17");
    EXPECT_FALSE(folder.Has("elsewhere"));
}

TEST(FileWritingPath, ReadsAndWritesHoweverItWasOpened) {
    for (auto const& way : cWaysToOpen) {
        TemporaryFolder const folder;
        if (way.open == &FileWritingPath::OpenExisting) folder.Write("file", "");
        FileWritingPath path;
        (path.*way.open)(folder.Location("file"));
        FileWriter writer(path);
        writer << "written"_data;
        unsigned char bytes[7] = {};
        FileReader reader(path);
        reader >> Data(bytes, bytes + 7);
        EXPECT_EQ(MakeString(ConstData(bytes, bytes + 7)), "written") << way.name;
    }
}

TEST(FileWritingPath, MakesFilesThatTheUmaskLimits) {
    for (auto const& way : cWaysToOpen) {
        if (way.open == &FileWritingPath::OpenExisting) continue;
        for (mode_t const mask : {mode_t{0}, mode_t{027}}) {
            TemporaryFolder const folder;
            UmaskScope const scope(mask);
            FileWritingPath path;
            (path.*way.open)(folder.Location("file"));
            struct stat status = {};
            ASSERT_EQ(stat(folder.Path("file").c_str(), &status), 0);
            EXPECT_EQ(status.st_mode & 0777, 0666 & ~mask) << way.name;
        }
    }
}

TEST(FileWritingPath, IsClosedOnExecHoweverItWasOpened) {
    for (auto const& way : cWaysToOpen) {
        TemporaryFolder const folder;
        if (way.open == &FileWritingPath::OpenExisting) folder.Write("file", "");
        FileWritingPath path;
        (path.*way.open)(folder.Location("file"));
        EXPECT_EQ(fcntl(path.Descriptor(), F_GETFD, 0), FD_CLOEXEC) << way.name;
    }
}

TEST(FileWritingPath, ClosesFirstWhatWasOpen) {
    for (auto const& way : cWaysToOpen) {
        TemporaryFolder const folder;
        if (way.open != &FileWritingPath::OpenNew) folder.Write("file", "");
        folder.Write("first", "");
        auto const before = OpenDescriptors();
        FileWritingPath path(folder.Location("first"));
        (path.*way.open)(folder.Location("file"));
        EXPECT_EQ(OpenDescriptors(), before + 1) << way.name;
        EXPECT_THROW((path.*way.open)(folder.Location("no/such")), FileIOError);
        EXPECT_EQ(OpenDescriptors(), before) << way.name;
        EXPECT_FALSE(path.IsOpen()) << way.name;
    }
}

TEST(FileWritingPath, ThePortableFormRefusesTheEmptyLocation) {
    for (auto const& way : cWaysToOpen) {
        OpenFile file("12345");
        EXPECT_EQ(FailureOf([&] { (file.Path().*way.open)(FileLocation()); }), "EmptyFileLocationError 0")
            << way.name;
        EXPECT_EQ(file.Path().Length(), 5u) << way.name << " closed what was open";
        UnixPlatform::FileWritingPath platform;
        EXPECT_EQ(FailureOf([&] { (platform.*way.platformOpen)(FileLocation()); }), "FileNotFoundError 2")
            << way.name;
    }
}

TEST(FileWritingPath, HasAConstructorForEachWay) {
    TemporaryFolder const folder;
    auto const location = folder.Location("file");
    EXPECT_EQ(FailureOf([&] { FileWritingPath path(location, OpenExistingFile()); }), "FileNotFoundError 2");
    EXPECT_EQ(FailureOf([&] { FileWritingPath path(location); }), "FileNotFoundError 2");
    FileWritingPath(location, OpenNewFile());
    EXPECT_EQ(FailureOf([&] { FileWritingPath path(location, OpenNewFile()); }), "FileExistsError 17");
    folder.Write("file", "old");
    EXPECT_EQ(FileWritingPath(location).Length(), 3u);
    EXPECT_EQ(FileWritingPath(location, OpenExistingFile()).Length(), 3u);
    EXPECT_EQ(FileWritingPath(location, OpenExistingFileOrNewFile()).Length(), 3u);
    EXPECT_EQ(FileWritingPath(location, OpenNewFileOrAsNewFile()).Length(), 0u);
    FileWritingPath(folder.Location("new"), OpenExistingFileOrNewFile());
    FileWritingPath(folder.Location("newer"), OpenNewFileOrAsNewFile());
    EXPECT_TRUE(folder.Has("new"));
    EXPECT_TRUE(folder.Has("newer"));
}

TEST(FileWritingPath, CannotOpenAFolder) {
    TemporaryFolder const folder;
    EXPECT_EQ(FailureOf([&] { FileWritingPath{folder.Location()}; }), "FileIOError 21");
    EXPECT_EQ(FailureOf([&] { FileWritingPath(folder.Location(), OpenNewFile()); }), "FileExistsError 17");
}

TEST(FileWritingPath, CannotOpenAFileThatOthersMayOnlyRead) {
    TemporaryFolder const folder;
    folder.Write("file", "old");
    ModeScope const readOnlyFile(folder.Path("file"), 0444);
    ModeScope const readOnlyFolder(folder.Path(), 0555);
    EXPECT_EQ(InChild([&] {
                  if (!BecomeOrdinaryUser()) return std::string(cNotAllowed);
                  std::string failures;
                  for (auto const& way : cWaysToOpen) {
                      FileWritingPath path;
                      failures += FailureOf([&] { (path.*way.open)(folder.Location("file")); }) + ", ";
                  }
                  return failures +
                         FailureOf([&] { FileWritingPath(folder.Location("new"), OpenNewFile()); });
              }),
              "FileExistsError 17, FilePermissionError 13, FilePermissionError 13, FilePermissionError 13, "
              "FilePermissionError 13");
    EXPECT_EQ(folder.Read("file"), "old");
}

TEST(FileWritingPath, CannotOpenAnythingOfAReadOnlyFileSystem) {
    TemporaryFolder const folder;
    std::string const result = InChild([&] {
        if (!MountMemoryForThisProcess(folder.Path(), 0)) return std::string(cNotAllowed);
        folder.Write("file", "old");
        if (mount(nullptr, folder.Path().c_str(), nullptr, MS_REMOUNT | MS_RDONLY, nullptr) != 0)
            return std::string(cNotAllowed);
        std::string failures;
        for (auto const& way : cWaysToOpen) {
            FileWritingPath path;
            failures += FailureOf([&] { (path.*way.open)(folder.Location("file")); }) + ", ";
        }
        return failures + FailureOf([&] { FileWritingPath(folder.Location("new"), OpenNewFile()); }) + ", " +
               folder.Read("file");
    });
    if (result == cNotAllowed) GTEST_SKIP() << "A process may not mount a file system of its own here.";
    EXPECT_EQ(result,
              "FileExistsError 17, FileIOError 30, FileIOError 30, FileIOError 30, FileIOError 30, old");
}

TEST(FileWritingPath, OpensAgainAfterSignals) {
    TemporaryFolder const folder;
    FailingCall const interruptions(SystemCall::Open, EINTR, 3);
    FileWritingPath const path(folder.Location("file"), OpenNewFile());
    EXPECT_TRUE(path.IsOpen());
}

TEST(FileWritingPath, ThrowsByTheTableWithTwoMoreRows) {
    struct {
        int code;
        char const* failure;
    } const cases[] = {
        {0, "nothing"},
        {1, "FilePermissionError 1"},
        {2, "FileNotFoundError 2"},
        {5, "FileIOError 5"},
        {9, "FileIOError 9"},
        {11, "FileLockError 11"},
        {12, "FileResourceError 12"},
        {13, "FilePermissionError 13"},
        {17, "FileExistsError 17"},
        {20, "DirectoryNotFoundError 20"},
        {22, "FileIOError 22"},
        {23, "FileResourceError 23"},
        {24, "FileResourceError 24"},
        {28, "FileDiskFullError 28"},
        {36, "DirectoryNotFoundError 36"},
        {90, "FileIOError 90"},
        {9999, "FileIOError 9999"},
    };
    FileWritingPath const path;
    FileWriter const writer;
    for (auto const& test : cases) {
        EXPECT_EQ(FailureOf([&] { path.ThrowError(FileLocation("/x"_utf8), test.code); }), test.failure);
        EXPECT_EQ(FailureOf([&] { writer.ThrowError(FileLocation("/x"_utf8), test.code); }),
                  test.code == 22 ? "FileSeekError 22" : test.failure);
    }
}

TEST(FileWritingPath, ThrowErrorIsTheObjectsOwnAlsoThroughItsBase) {
    FileWritingPath const path;
    UnixPlatform::FileReadingPath const& base = path;
    EXPECT_EQ(FailureOf([&] { base.ThrowError(FileLocation("/x"_utf8), 28); }), "FileDiskFullError 28");
}

TEST(FileWritingPath, AFailedCloseGoesByItsOwnTable) {
    OpenFile file("");
    FailingCall const failure(SystemCall::Close, ENOSPC);
    EXPECT_EQ(FailureOf([&] { file.Path().Close(); }), "FileDiskFullError 28");
    EXPECT_FALSE(file.Path().IsOpen());
}

TEST(FileWritingPath, FlushesOnce) {
    OpenFile file("");
    auto const flushes = CallCount(SystemCall::Flush);
    file.Path().Flush();
    EXPECT_EQ(CallCount(SystemCall::Flush), flushes + 1);
    file.Path().FlushOnBrokenFilesystems();
    EXPECT_EQ(CallCount(SystemCall::Flush), flushes + 2);
}

TEST(FileWritingPath, AFailedFlushThrows) {
    OpenFile file("");
    FailingCall const failure(SystemCall::Flush, EIO, 2);
    EXPECT_EQ(FailureOf([&] { file.Path().Flush(); }), "FileIOError 5");
    EXPECT_EQ(FailureOf([&] { file.Path().FlushOnBrokenFilesystems(); }), "FileIOError 5");
    EXPECT_EQ(FailureOf([] { FileWritingPath().Flush(); }), "FileIOError 9");
}

TEST(FileWritingPath, APipeHasNoDeviceToFlushTo) {
    TemporaryFolder const folder;
    ASSERT_EQ(mkfifo(folder.Path("fifo").c_str(), 0600), 0);
    FileWritingPath const path(folder.Location("fifo"));
    EXPECT_EQ(FailureOf([&] { path.Flush(); }), "FileIOError 22");
}

TEST(FileWritingPath, FlushesAgainAfterSignals) {
    OpenFile file("");
    FailingCall const interruptions(SystemCall::Flush, EINTR, 3);
    EXPECT_EQ(FailureOf([&] { file.Path().Flush(); }), "nothing");
}

TEST(FileWritingPath, TriesABrokenFlushAgainAndTellsTheLog) {
    OpenFile file("");
    RecordingLog const log;
    RecordedWaits const waits;
    FailingCall const failures(SystemCall::Flush, EIO, 2);
    auto const flushes = CallCount(SystemCall::Flush);
    file.Path().FlushOnBrokenFilesystemsWithRetry(FileLocation("/told"_utf8), log);
    EXPECT_EQ(CallCount(SystemCall::Flush), flushes + 3);
    EXPECT_EQ(log.Entries(), std::vector<std::string>{"success FlushOnBrokenFilesystems /told 3"});
    EXPECT_EQ(waits.Waits(), (std::vector<unsigned int>{16, 32}));
}

TEST(FileWritingPath, GivesABrokenFlushUpAfterEightTries) {
    OpenFile file("");
    RecordingLog const log;
    RecordedWaits const waits;
    FailingCall const failures(SystemCall::Flush, EIO, 100);
    auto const flushes = CallCount(SystemCall::Flush);
    EXPECT_EQ(
        FailureOf([&] { file.Path().FlushOnBrokenFilesystemsWithRetry(FileLocation("/told"_utf8), log); }),
        "FileIOError 5");
    EXPECT_EQ(CallCount(SystemCall::Flush), flushes + 8);
    EXPECT_EQ(log.Entries(), std::vector<std::string>{"failure FlushOnBrokenFilesystems /told 8"});
    EXPECT_EQ(waits.Waits(), (std::vector<unsigned int>{16, 32, 64, 128, 256, 512, 1024}));
}

TEST(FileWritingPath, AFlushThatSucceedsAtOnceIsNotLogged) {
    OpenFile file("");
    RecordingLog const log;
    file.Path().FlushOnBrokenFilesystemsWithRetry(FileLocation(), log);
    EXPECT_TRUE(log.Entries().empty());
}

TEST(FileWritingPathSetLength, NeverCutsAFile) {
    OpenFile file("12345");
    for (unsigned long const length : {5UL, 4UL, 1UL, 0UL}) {
        auto const truncations = CallCount(SystemCall::Truncate);
        file.Path().SetLength(length);
        EXPECT_EQ(CallCount(SystemCall::Truncate), truncations + 1);
        EXPECT_EQ(file.Contents(), "12345") << length;
    }
}

TEST(FileWritingPathSetLength, TakesTheLengthForAnOrigin) {
    TemporaryFolder const folder;
    struct {
        char const* before;
        unsigned long length;
        off_t offset;
        std::string after;
    } const cases[] = {
        {"", 1, 0, std::string(1, '\0')},   {"a", 2, 0, std::string(1, '\0')},
        {"a", 2, 1, std::string("a\0", 2)}, {"ab", 3, 0, std::string("ab\0", 3)},
        {"", 3, 0, std::string(1, '\0')},
    };
    for (auto const& test : cases) {
        OpenFile file(test.before);
        ASSERT_EQ(lseek(file.Path().Descriptor(), test.offset, SEEK_SET), test.offset);
        file.Path().SetLength(test.length);
        EXPECT_EQ(file.Contents(), test.after) << "'" << test.before << "' to " << test.length;
    }
}

TEST(FileWritingPathSetLength, CannotMakeAFileMuchLonger) {
    for (unsigned long const length : {6UL, 100UL, 4096UL, 2147483648UL, 2147483649UL, 4294967297UL,
                                       cBeyondSigned, 18446744073709551615UL}) {
        OpenFile file("abcde");
        EXPECT_EQ(FailureOf([&] { file.Path().SetLength(length); }), "FileIOError 22") << length;
        EXPECT_EQ(file.Contents(), "abcde") << length;
    }
}

TEST(FileWritingPathSetLength, WritesItsByteInTheEndOrThrows) {
    {
        OpenFile file("");
        FailingCall const interruptions(SystemCall::Write, EINTR, 3);
        file.Path().SetLength(1);
        EXPECT_EQ(file.Contents(), std::string(1, '\0'));
    }
    {
        OpenFile file("");
        FailingCall const failure(SystemCall::Write, ENOSPC);
        EXPECT_EQ(FailureOf([&] { file.Path().SetLength(1); }), "FileDiskFullError 28");
    }
    {
        OpenFile file("");
        auto const writes = CallCount(SystemCall::Write);
        FailingCall const nothing(SystemCall::Write, 0, 1000, 0, 0);
        EXPECT_EQ(FailureOf([&] { file.Path().SetLength(1); }), "FileIOError 5");
        EXPECT_EQ(CallCount(SystemCall::Write), writes + 1);
    }
}

TEST(FileWritingPathSetLength, IsRefusedForAFileWithoutALength) {
    TemporaryFolder const folder;
    ASSERT_EQ(mkfifo(folder.Path("fifo").c_str(), 0600), 0);
    FileWritingPath path(folder.Location("fifo"));
    auto const writes = CallCount(SystemCall::Write);
    for (unsigned long const length : {0UL, 1UL, 18446744073709551615UL})
        EXPECT_EQ(FailureOf([&] { path.SetLength(length); }), "FileIOError 22") << length;
    EXPECT_EQ(CallCount(SystemCall::Write), writes);
}

TEST(FileWritingPathSetLength, GoesByTheFailuresOfTheSystem) {
    EXPECT_EQ(FailureOf([] { FileWritingPath().SetLength(1); }), "FileNotOpenError 0");
    OpenFile file("abc");
    FailingCall const failure(SystemCall::Truncate, ENOSPC);
    EXPECT_EQ(FailureOf([&] { file.Path().SetLength(3); }), "FileDiskFullError 28");
}

TEST(FileWriter, WritesAtItsPositionAndMovesOn) {
    OpenFile file("0123456789");
    FileWriter writer(file.Path(), 3);
    EXPECT_EQ(writer.Position(), 3u);
    writer << "ab"_data
           << "c"_data;
    EXPECT_EQ(writer.Position(), 6u);
    writer.SetPosition(9);
    writer << "de"_data;
    EXPECT_EQ(writer.Position(), 11u);
    EXPECT_EQ(file.Contents(), "012abc678de");
    writer.Start(file.Path(), 0);
    writer << "x"_data;
    EXPECT_EQ(file.Contents(), "x12abc678de");
}

TEST(FileWriter, TwoOnOnePathDoNotDisturbEachOther) {
    OpenFile file("----------");
    FileWriter first(file.Path());
    FileWriter second(file.Path(), 5);
    first << "ab"_data;
    second << "xy"_data;
    first << "cd"_data;
    FileWriter third(second);
    second << "z"_data;
    third << "Z"_data;
    EXPECT_EQ(file.Contents(), "abcd-xyZ--");
}

TEST(FileWriter, WritesTexts) {
    OpenFile file("");
    FileWriter writer(file.Path());
    writer << "gr\xc3\xbc\xc3\x9f"_utf8
           << "!"_data << AutoUString<UTF8>("?"_utf8);
    EXPECT_EQ(file.Contents(), "gr\xc3\xbc\xc3\x9f!?");
}

TEST(FileWriter, IsAWriterOfData) {
    OpenFile file("");
    FileWriter writer(file.Path());
    static_cast<DataWriter&>(writer) << "abc"_data;
    EXPECT_EQ(file.Contents(), "abc");
}

TEST(FileWriter, CanStartAtTheEnd) {
    OpenFile file("0123");
    FileWriter writer(file.Path(), WritePositionEndOfFile());
    EXPECT_EQ(writer.Position(), 4u);
    writer << "45"_data;
    EXPECT_EQ(file.Contents(), "012345");
    FileWritingPath const closed;
    EXPECT_EQ(FailureOf([&] { FileWriter(closed, WritePositionEndOfFile()); }), "FileNotOpenError 0");
}

TEST(FileWriter, LeavesAGapOfZeros) {
    OpenFile file("ab");
    FileWriter writer(file.Path(), 4);
    writer << "c"_data;
    EXPECT_EQ(file.Contents(), std::string("ab\0\0c", 5));
}

TEST(FileWriter, AnEmptyRangeIsNoWrite) {
    FileWriter writer;
    auto const seeks = CallCount(SystemCall::Seek);
    auto const writes = CallCount(SystemCall::Write);
    writer << ConstData() << ""_utf8;
    EXPECT_EQ(CallCount(SystemCall::Seek), seeks);
    EXPECT_EQ(CallCount(SystemCall::Write), writes);
}

TEST(FileWriter, WritesOnUntilAllIsWritten) {
    OpenFile file("");
    FileWriter writer(file.Path());
    ShortTransfers const threeAtOnce(3);
    auto const seeks = CallCount(SystemCall::Seek);
    writer << "0123456789"_data;
    EXPECT_EQ(file.Contents(), "0123456789");
    EXPECT_EQ(CallCount(SystemCall::Seek), seeks + 4) << "one to the position before each write";
}

TEST(FileWriter, StandsBehindWhatWasWrittenBeforeAFailure) {
    OpenFile file("----------");
    FileWriter writer(file.Path(), 1);
    ShortTransfers const threeAtOnce(3);
    {
        FailingCall const failure(SystemCall::Write, ENOSPC, 1, 2);
        EXPECT_EQ(FailureOf([&] { writer << "abcdefgh"_data; }), "FileDiskFullError 28");
    }
    EXPECT_EQ(writer.Position(), 7u);
    writer << "!"_data;
    EXPECT_EQ(file.Contents(), "-abcdef!--");
}

TEST(FileWriter, AFullDeviceIsADiskThatIsFull) {
    FileWritingPath const path(FileLocation("/dev/full"_utf8));
    FileWriter writer(path);
    try {
        writer << "x"_data;
        FAIL();
    } catch (FileDiskFullError const& failure) {
        EXPECT_EQ(failure.GetCode(), 28);
        EXPECT_TRUE(failure.uwhat().Contains("/dev/full"_utf8));
    }
    EXPECT_EQ(writer.Position(), 0u);
}

TEST(FileWriter, ASystemThatTakesNothingDoesNotKeepItForever) {
    OpenFile file("");
    FileWriter writer(file.Path());
    auto const writes = CallCount(SystemCall::Write);
    FailingCall const nothing(SystemCall::Write, 0, 1000000, 1, 0);
    ShortTransfers const threeAtOnce(3);
    EXPECT_EQ(FailureOf([&] { writer << "abcdef"_data; }), "FileIOError 5");
    EXPECT_EQ(CallCount(SystemCall::Write), writes + 2);
    EXPECT_EQ(writer.Position(), 3u);
}

TEST(FileWriter, CannotWriteWhereThePathWasOpenedForReadingAlone) {
    OpenFile file("abc");
    file.Path().UnixPlatform::FileReadingPath::OpenExisting(file.Location(), false);
    FileWriter writer(file.Path());
    EXPECT_EQ(FailureOf([&] { writer << "x"_data; }), "FileIOError 9");
    EXPECT_EQ(writer.Position(), 0u);
    EXPECT_EQ(file.Contents(), "abc");
}

TEST(FileWriter, ADiskThatBecomesFullKeepsWhatHadRoom) {
    TemporaryFolder const folder;
    std::string const result = InChild([&] {
        if (!MountMemoryForThisProcess(folder.Path(), 0, "size=16384")) return std::string(cNotAllowed);
        FileWritingPath const path(folder.Location("file"), OpenNewFile());
        FileWriter writer(path);
        std::string const block(20000, 'x');
        std::string const failure = FailureOf([&] { writer << ConstData(MakeUTF8Ref(block)); });
        return failure + (writer.Position() == path.Length() ? ", " : ", not ") +
               std::to_string(writer.Position());
    });
    if (result == cNotAllowed) GTEST_SKIP() << "A process may not mount a file system of its own here.";
    EXPECT_EQ(result, "FileDiskFullError 28, 16384");
}

TEST(FileWriter, WritesAgainAfterSignals) {
    OpenFile file("");
    FileWriter writer(file.Path());
    FailingCall const interruptions(SystemCall::Write, EINTR, 3);
    writer << "abc"_data;
    EXPECT_EQ(file.Contents(), "abc");
}

TEST(FileWriter, FailsToSeekToAPositionBeyondTheSignedRange) {
    OpenFile file("abc");
    FileWriter writer(file.Path(), cBeyondSigned);
    EXPECT_EQ(FailureOf([&] { writer << "x"_data; }), "FileSeekError 22");
    EXPECT_EQ(writer.Position(), cBeyondSigned);
    EXPECT_EQ(file.Contents(), "abc");
}

TEST(FileWriter, CannotWriteIntoAPipe) {
    TemporaryFolder const folder;
    ASSERT_EQ(mkfifo(folder.Path("fifo").c_str(), 0600), 0);
    FileWritingPath const path(folder.Location("fifo"));
    FileWriter writer(path);
    EXPECT_EQ(FailureOf([&] { writer << "x"_data; }), "FileIOError 29");
}

TEST(FileWriter, OfNoFileFails) {
    FileWriter writer;
    EXPECT_EQ(FailureOf([&] { writer << "x"_data; }), "FileIOError 9");
    OpenFile file("");
    writer.Start(file.Path(), 0);
    file.Path().Close();
    EXPECT_EQ(FailureOf([&] { writer << "x"_data; }), "FileIOError 9");
}
