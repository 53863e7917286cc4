#include "files/FileReading.h"
#include "files/FileWriting.h"
#include "foundation/Exceptions.h"
#include "foundation/ReadReader.h"
#include "text/UString.h"

#include "tests/files/FileTestSupport.h"
#include "tests/files/SystemCalls.h"
#include "tests/support/TemporaryFolder.h"
#include "tests/support/UStringPrinting.h"

#include <cerrno>
#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {

constexpr unsigned long cAllOnesLength = 18446744073709551615UL;
constexpr unsigned long cBeyondSigned = 9223372036854775808UL;

// Up to `size` bytes that the reader gives at once.
std::string ReadSome(UnixPlatform::FileReader& reader, std::size_t size) {
    std::string text(size, '?');
    auto* const first = reinterpret_cast<unsigned char*>(text.data());
    Buffer buffer(Data(first, first + size));
    reader >> buffer;
    return MakeString(buffer.Written());
}

// Exactly `size` bytes; marks that were not replaced show what was not read.
std::string ReadWhole(UnixPlatform::FileReader& reader, std::size_t size) {
    std::string text(size, '?');
    auto* const first = reinterpret_cast<unsigned char*>(text.data());
    reader >> Data(first, first + size);
    return text;
}

// A named pipe with an end of its own for writing, and bytes in it.
class Fifo {
public:
    explicit Fifo(TemporaryFolder const& folder, std::string const& contents = std::string())
        : m_path(folder.Path("fifo")), m_location(folder.Location("fifo")) {
        EXPECT_EQ(mkfifo(m_path.c_str(), 0600), 0);
        m_descriptor = open(m_path.c_str(), O_RDWR | O_CLOEXEC);
        Write(contents);
    }
    Fifo(Fifo const&) = delete;
    Fifo& operator=(Fifo const&) = delete;
    ~Fifo() { CloseWriter(); }

    void Write(std::string const& contents) const {
        EXPECT_EQ(write(m_descriptor, contents.data(), contents.size()),
                  static_cast<ssize_t>(contents.size()));
    }
    // A reader then comes to the end behind the last byte.
    void CloseWriter() {
        if (m_descriptor != -1) close(m_descriptor);
        m_descriptor = -1;
    }
    FileLocation const& Location() const { return m_location; }

private:
    std::string m_path;
    FileLocation m_location;
    int m_descriptor = -1;
};

// A file of the folder that is open and refuses to be sought to its end, as files below /proc do.
class EndlessFile {
public:
    EndlessFile(TemporaryFolder const& folder, std::string const& contents) {
        folder.Write("endless", contents);
        m_path.OpenExisting(folder.Location("endless"), false);
        FailingCall const refusal(SystemCall::Seek, EINVAL, 1, 1);
        EXPECT_EQ(m_path.Length(), cAllOnesLength);
    }
    FileReadingPath const& Path() const { return m_path; }

private:
    FileReadingPath m_path;
};

} // namespace

TEST(FileReadingPath, OpensAFileThatExists) {
    TemporaryFolder const folder;
    folder.Write("file", "12345");
    FileReadingPath const path(folder.Location("file"));
    EXPECT_TRUE(path.IsOpen());
    EXPECT_GE(path.Descriptor(), 0);
    EXPECT_EQ(path.Location().Compare(folder.Location("file")), 0);
    EXPECT_EQ(path.Length(), 5u);
    EXPECT_FALSE(path.Unseekable());
}

TEST(FileReadingPath, TheBooleanHasNoEffect) {
    TemporaryFolder const folder;
    folder.Write("file", "12345");
    FileReadingPath path;
    for (bool const shared : {false, true}) {
        path.OpenExisting(folder.Location("file"), shared);
        EXPECT_EQ(path.Length(), 5u);
    }
}

TEST(FileReadingPath, IsNotOpenAtFirst) {
    FileReadingPath path;
    EXPECT_FALSE(path.IsOpen());
    EXPECT_EQ(path.Descriptor(), -1);
    EXPECT_TRUE(path.Location().empty());
    path.Close();
}

TEST(FileReadingPath, OpensAFileWhoseNameIsInNoEncoding) {
    TemporaryFolder const folder;
    folder.Write("b\xff\xfe", "bytes");
    auto const name = "b\xff\xfe"_data;
    FileReadingPath const path(
        FileLocation(folder.Location(), UStringRef<Binary8Bit>(Binary8Bit(), name.begin(), name.end())));
    EXPECT_EQ(path.Length(), 5u);
}

// The test's locale is "C".
TEST(FileReadingPath, CannotOpenAPathThatTheLocaleCannotSpell) {
    TemporaryFolder const folder;
    folder.Write("file", "12345");
    FileReadingPath path(folder.Location("file"));
    auto const opens = CallCount(SystemCall::Open);
    EXPECT_EQ(FailureOf([&] { path.OpenExisting(folder.Location("\xc3\xa4"), false); }),
              "UnixPlatform::WideToMultiByteConvertError");
    EXPECT_EQ(CallCount(SystemCall::Open), opens);
    EXPECT_FALSE(path.IsOpen());
    EXPECT_EQ(path.Location().Compare(folder.Location("\xc3\xa4")), 0);
}

TEST(FileReadingPath, KeepsItsLocationWhenItIsClosed) {
    TemporaryFolder const folder;
    folder.Write("file", "12345");
    FileReadingPath path(folder.Location("file"));
    path.Close();
    EXPECT_EQ(path.Location().Compare(folder.Location("file")), 0);
}

TEST(FileReadingPath, FailsByTheNumberOfTheSystem) {
    TemporaryFolder const folder;
    folder.Write("file", "");
    folder.MakeLink("loop", "loop");
    EXPECT_EQ(FailureOf([&] { FileReadingPath(folder.Location("missing")); }), "FileNotFoundError 2");
    EXPECT_EQ(FailureOf([&] { FileReadingPath(folder.Location("file/x")); }), "DirectoryNotFoundError 20");
    EXPECT_EQ(FailureOf([&] { FileReadingPath(folder.Location(std::string(300, 'n'))); }),
              "DirectoryNotFoundError 36");
    EXPECT_EQ(FailureOf([&] { FileReadingPath(folder.Location("loop")); }), "FileIOError 40");
}

TEST(FileReadingPath, PermissionIsTheSystems) {
    TemporaryFolder const folder;
    folder.Write("file", "");
    FailingCall const refusal(SystemCall::Open, EACCES);
    EXPECT_EQ(FailureOf([&] { FileReadingPath(folder.Location("file")); }), "FilePermissionError 13");
}

TEST(FileReadingPath, AFailureNamesThePath) {
    TemporaryFolder const folder;
    try {
        FileReadingPath const path(folder.Location("missing"));
        FAIL();
    } catch (FileNotFoundError const& failure) {
        EXPECT_TRUE(failure.uwhat().Contains(MakeUTF8Ref(folder.Path("missing"))));
    }
}

TEST(FileReadingPath, AFailedOpenLeavesNothingOpen) {
    TemporaryFolder const folder;
    folder.Write("file", "12345");
    auto const before = OpenDescriptors();
    FileReadingPath path(folder.Location("file"));
    EXPECT_THROW(path.OpenExisting(folder.Location("missing"), false), FileNotFoundError);
    EXPECT_FALSE(path.IsOpen());
    EXPECT_EQ(path.Location().Compare(folder.Location("missing")), 0);
    EXPECT_EQ(OpenDescriptors(), before);
}

TEST(FileReadingPath, RefusesTheKernelLogWithoutTouchingIt) {
    auto const bytes = "/proc/kmsg"_data;
    FileLocation const locations[] = {
        FileLocation("/proc/kmsg"_utf8),
        FileLocation("/proc/kmsg/"_utf8),
        FileLocation(UStringRef<Binary8Bit>(Binary8Bit(), bytes.begin(), bytes.end())),
    };
    for (auto const& location : locations) {
        auto const opens = CallCount(SystemCall::Open);
        EXPECT_EQ(FailureOf([&] { FileReadingPath{location}; }), "FileIOError 0");
        UnixPlatform::FileReadingPath path;
        EXPECT_EQ(FailureOf([&] { path.OpenExisting(location, false); }), "FileIOError 0");
        EXPECT_EQ(path.Location().Compare(location), 0);
        EXPECT_EQ(CallCount(SystemCall::Open), opens);
    }
}

TEST(FileReadingPath, RefusingTheKernelLogNamesItAndClosesTheEarlierFile) {
    TemporaryFolder const folder;
    folder.Write("file", "12345");
    FileReadingPath path(folder.Location("file"));
    try {
        path.OpenExisting(FileLocation("/proc/kmsg"_utf8), false);
        FAIL();
    } catch (FileIOError const& failure) {
        EXPECT_EQ(failure.uwhat(), "File error \"11FileIOError\" on \"/proc/kmsg\""_utf8);
    }
    EXPECT_FALSE(path.IsOpen());
}

TEST(FileReadingPath, ThePortableFormRefusesTheEmptyLocation) {
    TemporaryFolder const folder;
    folder.Write("file", "12345");
    EXPECT_EQ(FailureOf([] { FileReadingPath{FileLocation()}; }), "EmptyFileLocationError 0");
    FileReadingPath path(folder.Location("file"));
    EXPECT_THROW(path.OpenExisting(FileLocation(), false), EmptyFileLocationError);
    EXPECT_EQ(path.Length(), 5u);
    UnixPlatform::FileReadingPath platform;
    EXPECT_EQ(FailureOf([&] { platform.OpenExisting(FileLocation(), false); }), "FileNotFoundError 2");
}

TEST(FileReadingPath, OpeningAnotherFileClosesTheFirst) {
    TemporaryFolder const folder;
    folder.Write("a", "1");
    folder.Write("b", "22");
    FileReadingPath path(folder.Location("a"));
    auto const open = OpenDescriptors();
    path.OpenExisting(folder.Location("b"), false);
    EXPECT_EQ(path.Length(), 2u);
    EXPECT_EQ(OpenDescriptors(), open);
}

TEST(FileReadingPath, OpensNoOtherFileWhenClosingTheFirstFails) {
    TemporaryFolder const folder;
    folder.Write("a", "1");
    folder.Write("b", "22");
    auto const before = OpenDescriptors();
    FileReadingPath path(folder.Location("a"));
    auto const opens = CallCount(SystemCall::Open);
    FailingCall const failure(SystemCall::Close, EIO);
    try {
        path.OpenExisting(folder.Location("b"), false);
        FAIL();
    } catch (FileIOError const& error) {
        EXPECT_EQ(error.GetCode(), EIO);
        EXPECT_TRUE(error.uwhat().Contains(MakeUTF8Ref(folder.Path("a")))) << "the file that failed to close";
    }
    EXPECT_FALSE(path.IsOpen());
    EXPECT_EQ(path.Location().Compare(folder.Location("a")), 0);
    EXPECT_EQ(CallCount(SystemCall::Open), opens);
    EXPECT_EQ(OpenDescriptors(), before);
    path.OpenExisting(folder.Location("b"), false);
    EXPECT_EQ(path.Length(), 2u);
}

TEST(FileReadingPath, OpensAgainByItsOwnLocation) {
    TemporaryFolder const folder;
    folder.Write("file", "12345");
    FileReadingPath path(folder.Location("file"));
    path.OpenExisting(path.Location(), false);
    EXPECT_EQ(path.Length(), 5u);
}

TEST(FileReadingPath, IsClosedOnExec) {
    TemporaryFolder const folder;
    folder.Write("file", "");
    FileReadingPath const path(folder.Location("file"));
    EXPECT_EQ(fcntl(path.Descriptor(), F_GETFD, 0), FD_CLOEXEC);
}

TEST(FileReadingPath, IsNotLeftOpenWhenItCannotBeMarked) {
    TemporaryFolder const folder;
    folder.Write("file", "");
    auto const before = OpenDescriptors();
    FileReadingPath path;
    FailingCall const refusal(SystemCall::Fcntl, EBADF);
    EXPECT_EQ(FailureOf([&] { path.OpenExisting(folder.Location("file"), false); }), "FileIOError 9");
    EXPECT_FALSE(path.IsOpen());
    EXPECT_EQ(OpenDescriptors(), before);
}

TEST(FileReadingPath, ClosesWhenItGoes) {
    TemporaryFolder const folder;
    folder.Write("file", "");
    auto const before = OpenDescriptors();
    { FileReadingPath const path(folder.Location("file")); }
    EXPECT_EQ(OpenDescriptors(), before);
    FileReadingPath path(folder.Location("file"));
    path.Close();
    EXPECT_EQ(OpenDescriptors(), before);
}

TEST(FileReadingPath, SaysNothingOfAFailureWhenItGoes) {
    TemporaryFolder const folder;
    folder.Write("file", "");
    auto const closes = CallCount(SystemCall::Close);
    FailingCall const failure(SystemCall::Close, EIO);
    { FileReadingPath const path(folder.Location("file")); }
    EXPECT_EQ(CallCount(SystemCall::Close), closes + 1);
}

TEST(FileReadingPath, ASecondCloseDoesNothing) {
    TemporaryFolder const folder;
    folder.Write("file", "");
    FileReadingPath path(folder.Location("file"));
    auto const closes = CallCount(SystemCall::Close);
    path.Close();
    EXPECT_EQ(CallCount(SystemCall::Close), closes + 1);
    path.Close();
    EXPECT_EQ(CallCount(SystemCall::Close), closes + 1);
}

TEST(FileReadingPath, IsClosedWhenClosingFails) {
    TemporaryFolder const folder;
    folder.Write("file", "");
    FileReadingPath path(folder.Location("file"));
    FailingCall const failure(SystemCall::Close, EIO);
    EXPECT_EQ(FailureOf([&] { path.Close(); }), "FileIOError 5");
    EXPECT_EQ(path.Descriptor(), -1);
    path.Close();
}

TEST(FileReadingPath, IsNotClosedTwiceAfterASignal) {
    TemporaryFolder const folder;
    folder.Write("file", "");
    FileReadingPath path(folder.Location("file"));
    auto const closes = CallCount(SystemCall::Close);
    FailingCall const interruption(SystemCall::Close, EINTR);
    EXPECT_EQ(FailureOf([&] { path.Close(); }), "FileIOError 4");
    EXPECT_EQ(CallCount(SystemCall::Close), closes + 1);
}

TEST(FileReadingPath, OpensAgainAfterSignals) {
    TemporaryFolder const folder;
    folder.Write("file", "12345");
    FailingCall const interruptions(SystemCall::Open, EINTR, 3);
    EXPECT_EQ(FileReadingPath(folder.Location("file")).Length(), 5u);
}

TEST(FileReadingPathLength, FollowsTheFile) {
    TemporaryFolder const folder;
    folder.Write("file", "");
    FileReadingPath const path(folder.Location("file"));
    EXPECT_EQ(path.Length(), 0u);
    folder.Write("file", "1234567");
    EXPECT_EQ(path.Length(), 7u);
}

TEST(FileReadingPathLength, LeavesTheOffsetWhereItWas) {
    TemporaryFolder const folder;
    folder.Write("file", "12345");
    FileReadingPath const path(folder.Location("file"));
    ASSERT_EQ(lseek(path.Descriptor(), 3, SEEK_SET), 3);
    EXPECT_EQ(path.Length(), 5u);
    EXPECT_EQ(lseek(path.Descriptor(), 0, SEEK_CUR), 3);
}

TEST(FileReadingPathLength, NeedsAnOpenFile) {
    TemporaryFolder const folder;
    folder.Write("file", "12345");
    FileReadingPath path;
    EXPECT_EQ(FailureOf([&] { path.Length(); }), "FileNotOpenError 0");
    path.OpenExisting(folder.Location("file"), false);
    path.Close();
    try {
        path.Length();
        FAIL();
    } catch (FileNotOpenError const& failure) {
        EXPECT_TRUE(failure.uwhat().Contains(MakeUTF8Ref(folder.Path("file"))));
    }
}

TEST(FileReadingPathLength, IsAllOnesForAPipe) {
    TemporaryFolder const folder;
    Fifo const fifo(folder, "12345");
    FileReadingPath const path(fifo.Location());
    EXPECT_FALSE(path.Unseekable());
    EXPECT_EQ(path.Length(), cAllOnesLength);
    EXPECT_TRUE(path.Unseekable());
}

TEST(FileReadingPathLength, IsAllOnesWhereTheEndCannotBeSought) {
    FileReadingPath const path(FileLocation("/proc/self/status"_utf8));
    EXPECT_EQ(path.Length(), cAllOnesLength);
    EXPECT_TRUE(path.Unseekable());
}

TEST(FileReadingPathLength, TakesBothNumbersForAnEndThatCannotBeSought) {
    TemporaryFolder const folder;
    folder.Write("file", "12345");
    for (int const code : {EINVAL, ESPIPE}) {
        for (unsigned int const successes : {0u, 1u}) {
            FileReadingPath const path(folder.Location("file"));
            FailingCall const refusal(SystemCall::Seek, code, 1, successes);
            EXPECT_EQ(path.Length(), cAllOnesLength) << code << " after " << successes;
            EXPECT_TRUE(path.Unseekable());
        }
    }
}

TEST(FileReadingPathLength, OfAnUnseekableFileIsAskedForOnce) {
    TemporaryFolder const folder;
    EndlessFile const file(folder, "12345");
    auto const seeks = CallCount(SystemCall::Seek);
    EXPECT_EQ(file.Path().Length(), cAllOnesLength);
    EXPECT_EQ(CallCount(SystemCall::Seek), seeks);
}

TEST(FileReadingPathLength, OfAnUnseekableFileIsKnownAlsoOnceItIsClosed) {
    TemporaryFolder const folder;
    Fifo const fifo(folder);
    FileReadingPath path(fifo.Location());
    EXPECT_EQ(path.Length(), cAllOnesLength);
    path.Close();
    EXPECT_EQ(path.Length(), cAllOnesLength);
    EXPECT_TRUE(path.Unseekable());
    FileReader reader(path);
    EXPECT_FALSE(reader.Unfinished());
    EXPECT_EQ(FailureOf([&] { ReadWhole(reader, 1); }), "FileIOError 9");
}

TEST(FileReadingPathLength, OfTheNextFileIsAskedForAnew) {
    TemporaryFolder const folder;
    folder.Write("file", "12345");
    FileReadingPath path(FileLocation("/proc/self/status"_utf8));
    EXPECT_EQ(path.Length(), cAllOnesLength);
    path.OpenExisting(folder.Location("file"), false);
    EXPECT_FALSE(path.Unseekable());
    EXPECT_EQ(path.Length(), 5u);
}

TEST(FileReadingPathLength, FailsWithAnyOtherFailureOfASeek) {
    TemporaryFolder const folder;
    folder.Write("file", "12345");
    FileReadingPath const path(folder.Location("file"));
    for (unsigned int const successes : {0u, 1u, 2u}) {
        FailingCall const failure(SystemCall::Seek, EIO, 1, successes);
        EXPECT_EQ(FailureOf([&] { path.Length(); }), "FileIOError 5") << "after " << successes;
        EXPECT_FALSE(path.Unseekable());
    }
    FailingCall const failure(SystemCall::Seek, EINVAL, 1, 2);
    EXPECT_EQ(FailureOf([&] { path.Length(); }), "FileIOError 22") << "on the way back";
}

TEST(FileReadingPath, ThrowsByTheCommonTable) {
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
        {17, "FileIOError 17"},
        {20, "DirectoryNotFoundError 20"},
        {22, "FileIOError 22"},
        {23, "FileResourceError 23"},
        {24, "FileResourceError 24"},
        {28, "FileIOError 28"},
        {36, "DirectoryNotFoundError 36"},
        {90, "FileIOError 90"},
        {9999, "FileIOError 9999"},
    };
    FileReadingPath const path;
    for (auto const& test : cases)
        EXPECT_EQ(FailureOf([&] { path.ThrowError(FileLocation("/x"_utf8), test.code); }), test.failure);
}

TEST(FileReader, ThrowsByATableOfItsOwn) {
    struct {
        int code;
        char const* failure;
    } const cases[] = {
        {0, "nothing"},         {1, "FilePermissionError 1"},   {2, "FileIOError 2"},
        {5, "FileIOError 5"},   {9, "FileIOError 9"},           {11, "FileIOError 11"},
        {12, "FileIOError 12"}, {13, "FilePermissionError 13"}, {17, "FileIOError 17"},
        {20, "FileIOError 20"}, {22, "FileSeekError 22"},       {24, "FileIOError 24"},
        {28, "FileIOError 28"}, {36, "FileIOError 36"},         {90, "EndOfFileError 90"},
        {91, "FileIOError 91"},
    };
    FileReader const reader;
    for (auto const& test : cases)
        EXPECT_EQ(FailureOf([&] { reader.ThrowError(FileLocation("/x"_utf8), test.code); }), test.failure);
}

TEST(FileReader, ReadsFromItsPositionOn) {
    TemporaryFolder const folder;
    folder.Write("file", "0123456789");
    FileReadingPath const path(folder.Location("file"));
    FileReader reader(path, 3);
    EXPECT_EQ(ReadWhole(reader, 4), "3456");
    EXPECT_EQ(reader.Position(), 7u);
    EXPECT_TRUE(reader.Unfinished());
    EXPECT_EQ(ReadSome(reader, 100), "789");
    EXPECT_EQ(reader.Position(), 10u);
    EXPECT_FALSE(reader.Unfinished());
    EXPECT_TRUE(reader.Finished());
}

TEST(FileReader, TwoOnOnePathDoNotDisturbEachOther) {
    TemporaryFolder const folder;
    folder.Write("file", "0123456789");
    FileReadingPath const path(folder.Location("file"));
    FileReader first(path);
    FileReader second(path, 5);
    EXPECT_EQ(ReadWhole(first, 2), "01");
    EXPECT_EQ(ReadWhole(second, 2), "56");
    EXPECT_EQ(ReadWhole(first, 2), "23");
    FileReader third(first);
    EXPECT_EQ(ReadWhole(second, 3), "789");
    EXPECT_EQ(ReadWhole(first, 1), "4");
    EXPECT_EQ(ReadWhole(third, 2), "45");
}

TEST(FileReader, ReadsAFileThatIsOpenForWriting) {
    TemporaryFolder const folder;
    FileWritingPath const path(folder.Location("file"), OpenNewFile());
    FileWriter writer(path);
    writer << "abcdef"_data;
    FileReader reader(path, 1);
    EXPECT_EQ(ReadWhole(reader, 2), "bc");
    writer << "ghi"_data;
    EXPECT_EQ(ReadWhole(reader, 3), "def");
    EXPECT_EQ(folder.Read("file"), "abcdefghi");
}

TEST(FileReader, FillsTheWholeRangeOrThrows) {
    TemporaryFolder const folder;
    folder.Write("file", "0123456789");
    FileReadingPath const path(folder.Location("file"));
    FileReader reader(path, 7);
    unsigned char bytes[] = {'?', '?', '?', '?', '?'};
    try {
        reader >> Data(bytes, bytes + 5);
        FAIL();
    } catch (EndOfFileError const& failure) {
        EXPECT_EQ(failure.GetCode(), 90);
        EXPECT_TRUE(failure.uwhat().Contains(MakeUTF8Ref(folder.Path("file"))));
    }
    EXPECT_EQ(MakeString(ConstData(bytes, bytes + 5)), "789??");
    EXPECT_EQ(reader.Position(), 10u);
    EXPECT_EQ(FailureOf([&] { ReadWhole(reader, 1); }), "EndOfFileError 90");
}

TEST(FileReader, GivesABufferWhatOneReadGives) {
    TemporaryFolder const folder;
    folder.Write("file", "0123456789");
    FileReadingPath const path(folder.Location("file"));
    FileReader reader(path);
    ShortTransfers const threeAtOnce(3);
    EXPECT_EQ(ReadSome(reader, 8), "012");
    EXPECT_EQ(ReadSome(reader, 2), "34");
    EXPECT_EQ(FailureOf([&] { ReadWhole(reader, 4); }), "EndOfFileError 90") << "not read in pieces";
    EXPECT_EQ(ReadSome(reader, 8), "89");
    EXPECT_EQ(ReadSome(reader, 8), "") << "no failure at the end";
}

TEST(FileReader, WritesBehindWhatABufferHolds) {
    TemporaryFolder const folder;
    folder.Write("file", "0123456789");
    FileReadingPath const path(folder.Location("file"));
    FileReader reader(path);
    unsigned char bytes[6] = {};
    Buffer buffer(Data(bytes, bytes + 6));
    buffer << "ab"_data;
    reader >> buffer;
    EXPECT_EQ(MakeString(buffer.Written()), "ab0123");
    EXPECT_TRUE(buffer.Full());
}

TEST(FileReader, AnEmptyRangeIsNoRead) {
    TemporaryFolder const folder;
    folder.Write("file", "");
    FileReadingPath path(folder.Location("file"));
    FileReader reader(path);
    path.Close();
    auto const seeks = CallCount(SystemCall::Seek);
    auto const reads = CallCount(SystemCall::Read);
    reader >> Data();
    Buffer full;
    reader >> full;
    EXPECT_EQ(CallCount(SystemCall::Seek), seeks);
    EXPECT_EQ(CallCount(SystemCall::Read), reads);
}

TEST(FileReader, ReadsAGrownFileUpToTheLengthOfItsStart) {
    TemporaryFolder const folder;
    folder.Write("file", "0123");
    FileReadingPath const path(folder.Location("file"));
    FileReader reader(path);
    folder.Write("file", "0123456789");
    EXPECT_EQ(reader.Length(), 4u);
    EXPECT_EQ(ReadSome(reader, 3), "012");
    EXPECT_TRUE(reader.Unfinished());
    EXPECT_EQ(ReadSome(reader, 100), "3");
    EXPECT_FALSE(reader.Unfinished());
    EXPECT_EQ(ReadSome(reader, 100), "");
    reader.Reset();
    EXPECT_EQ(ReadReader(reader).size(), 4u);
    EXPECT_EQ(ReadWhole(reader, 2), "45") << "a range is given whatever the length was";
    reader.Start(path, 4);
    EXPECT_EQ(reader.Length(), 10u);
    EXPECT_TRUE(reader.Unfinished());
}

TEST(FileReader, AsksForTheLengthOnce) {
    TemporaryFolder const folder;
    folder.Write("file", "0123456789");
    FileReadingPath const path(folder.Location("file"));
    FileReader reader(path);
    auto const seeks = CallCount(SystemCall::Seek);
    for (int read = 0; read < 5; ++read) {
        EXPECT_TRUE(reader.Unfinished());
        ReadWhole(reader, 2);
    }
    EXPECT_EQ(CallCount(SystemCall::Seek), seeks + 5) << "one to the position before each read";
}

TEST(FileReader, StaysUnfinishedWhenAFileBecomesShorter) {
    TemporaryFolder const folder;
    folder.Write("file", "0123456789");
    FileReadingPath const path(folder.Location("file"));
    FileReader reader(path, 4);
    folder.Write("file", "01");
    EXPECT_TRUE(reader.Unfinished());
    EXPECT_EQ(ReadSome(reader, 4), "");
    EXPECT_THROW(ReadReader(reader), NoMoreData);
}

TEST(FileReader, ResetGoesBackToTheFirstByte) {
    TemporaryFolder const folder;
    folder.Write("file", "0123");
    FileReadingPath const path(folder.Location("file"));
    FileReader reader(path, 2);
    EXPECT_EQ(ReadWhole(reader, 2), "23");
    reader.Reset();
    EXPECT_EQ(reader.Position(), 0u);
    EXPECT_TRUE(reader.Unfinished());
    EXPECT_EQ(ReadWhole(reader, 4), "0123");
}

TEST(FileReader, GivesAllOfItselfToAReceiver) {
    TemporaryFolder const folder;
    std::string const contents(10000, 'x');
    folder.Write("file", contents);
    FileReadingPath const path(folder.Location("file"));
    FileReader reader(path);
    EXPECT_EQ(ReadReader(reader).size(), 10000u);
}

TEST(FileReader, FailsToSeekToAPositionBeyondTheSignedRange) {
    TemporaryFolder const folder;
    folder.Write("file", "0123");
    FileReadingPath const path(folder.Location("file"));
    FileReader reader(path, cBeyondSigned);
    EXPECT_FALSE(reader.Unfinished());
    EXPECT_EQ(FailureOf([&] { ReadWhole(reader, 1); }), "FileSeekError 22");
    EXPECT_EQ(reader.Position(), cBeyondSigned);
}

TEST(FileReader, AFailingReadThrowsAndMovesNothing) {
    TemporaryFolder const folder;
    folder.Write("file", "0123");
    FileReadingPath const path(folder.Location("file"));
    FileReader reader(path);
    FailingCall const failure(SystemCall::Read, EIO, 2);
    EXPECT_EQ(FailureOf([&] { ReadSome(reader, 2); }), "FileIOError 5");
    EXPECT_EQ(FailureOf([&] { ReadWhole(reader, 2); }), "FileIOError 5");
    EXPECT_EQ(ReadSome(reader, 2), "01");
}

TEST(FileReader, AFailingSeekThrowsAndReadsNothing) {
    TemporaryFolder const folder;
    folder.Write("file", "0123");
    FileReadingPath const path(folder.Location("file"));
    FileReader reader(path);
    FailingCall const failure(SystemCall::Seek, EIO, 2);
    EXPECT_EQ(FailureOf([&] { ReadSome(reader, 2); }), "FileIOError 5");
    EXPECT_EQ(FailureOf([&] { ReadWhole(reader, 2); }), "FileIOError 5");
    EXPECT_EQ(ReadSome(reader, 2), "01");
}

TEST(FileReader, ReadsAgainAfterSignals) {
    TemporaryFolder const folder;
    folder.Write("file", "0123");
    FileReadingPath const path(folder.Location("file"));
    FileReader reader(path);
    FailingCall const interruptions(SystemCall::Read, EINTR, 3);
    EXPECT_EQ(ReadWhole(reader, 4), "0123");
}

TEST(FileReader, AFolderCannotBeRead) {
    TemporaryFolder const folder;
    FileReadingPath const path(folder.Location());
    FileReader reader(path);
    EXPECT_EQ(FailureOf([&] { ReadWhole(reader, 1); }), "FileIOError 21");
}

TEST(FileReader, OfNoFileIsFinished) {
    FileReader reader;
    EXPECT_TRUE(reader.Finished());
    EXPECT_EQ(ReadSome(reader, 1), "");
    EXPECT_EQ(FailureOf([&] { ReadWhole(reader, 1); }), "FileIOError 9");
    reader.Reset();
    EXPECT_TRUE(reader.Finished());
}

TEST(FileReader, OfAClosedPathFails) {
    TemporaryFolder const folder;
    folder.Write("file", "0123");
    FileReadingPath path(folder.Location("file"));
    FileReader reader(path);
    path.Close();
    EXPECT_EQ(FailureOf([&] { ReadSome(reader, 1); }), "FileIOError 9");
    EXPECT_EQ(FailureOf([&] { FileReader{path}; }), "FileNotOpenError 0");
}

TEST(FileReader, AFailedStartLeavesItAsItWas) {
    TemporaryFolder const folder;
    folder.Write("file", "0123");
    FileReadingPath const path(folder.Location("file"));
    FileReader reader(path, 2);
    FileReadingPath const closed;
    EXPECT_THROW(reader.Start(closed, 0), FileNotOpenError);
    EXPECT_EQ(ReadWhole(reader, 2), "23");
}

TEST(FileReaderOfUnseekableFiles, ReadsWhatTheSystemMakesUp) {
    FileReadingPath const path(FileLocation("/proc/version"_utf8));
    FileReader reader(path);
    ASSERT_TRUE(path.Unseekable());
    EXPECT_TRUE(reader.Unfinished());
    auto const bytes = ReadReader(reader);
    EXPECT_EQ(MakeString(ConstData(bytes.data(), bytes.data() + bytes.size())),
              FileContents("/proc/version"));
    EXPECT_FALSE(reader.Unfinished());
    FileReader later(path, 6);
    EXPECT_EQ(ReadSome(later, 7), FileContents("/proc/version").substr(6, 7));
}

TEST(FileReaderOfUnseekableFiles, LooksForOneByteAtThePosition) {
    TemporaryFolder const folder;
    EndlessFile const file(folder, "01");
    FileReader reader(file.Path());
    auto const reads = CallCount(SystemCall::Read);
    EXPECT_TRUE(reader.Unfinished());
    EXPECT_EQ(CallCount(SystemCall::Read), reads + 1);
    EXPECT_EQ(ReadSome(reader, 1), "0") << "the byte that was looked at comes once";
    EXPECT_TRUE(reader.Unfinished());
    EXPECT_EQ(ReadWhole(reader, 1), "1");
    EXPECT_FALSE(reader.Unfinished());
}

TEST(FileReaderOfUnseekableFiles, StaysFinishedUntilItIsMoved) {
    TemporaryFolder const folder;
    EndlessFile const file(folder, "01");
    FileReader reader(file.Path(), 2);
    EXPECT_FALSE(reader.Unfinished());
    folder.Write("endless", "01234");
    EXPECT_FALSE(reader.Unfinished());
    reader.SetPosition(2);
    EXPECT_TRUE(reader.Unfinished());
}

TEST(FileReaderOfUnseekableFiles, AByteThatWasSeenStillCountsOnce) {
    TemporaryFolder const folder;
    EndlessFile const file(folder, "0");
    FileReader reader(file.Path());
    EXPECT_TRUE(reader.Unfinished());
    folder.Write("endless", "");
    EXPECT_TRUE(reader.Unfinished()) << "the end is found, but a byte had been seen";
    EXPECT_FALSE(reader.Unfinished());
}

TEST(FileReaderOfUnseekableFiles, AReadForgetsTheByteThatWasSeen) {
    TemporaryFolder const folder;
    EndlessFile const file(folder, "0");
    FileReader reader(file.Path());
    EXPECT_TRUE(reader.Unfinished());
    EXPECT_EQ(ReadSome(reader, 1), "0");
    EXPECT_FALSE(reader.Unfinished());
}

TEST(FileReaderOfUnseekableFiles, AReadThatFailsForgetsTheByteThatWasSeenToo) {
    TemporaryFolder const folder;
    for (SystemCall const call : {SystemCall::Read, SystemCall::Seek}) {
        EndlessFile const file(folder, "0");
        FileReader reader(file.Path());
        EXPECT_TRUE(reader.Unfinished());
        {
            FailingCall const failure(call, EIO);
            EXPECT_EQ(FailureOf([&] { ReadSome(reader, 1); }), "FileIOError 5");
        }
        folder.Write("endless", "");
        EXPECT_FALSE(reader.Unfinished()) << "nothing is left that could count";
    }
}

TEST(FileReaderOfUnseekableFiles, IsFinishedWhereItCannotSeek) {
    TemporaryFolder const folder;
    EndlessFile const file(folder, "0123");
    FileReader reader(file.Path(), cBeyondSigned);
    auto const reads = CallCount(SystemCall::Read);
    EXPECT_FALSE(reader.Unfinished());
    EXPECT_EQ(CallCount(SystemCall::Read), reads);
    auto const seeks = CallCount(SystemCall::Seek);
    EXPECT_FALSE(reader.Unfinished());
    EXPECT_EQ(CallCount(SystemCall::Seek), seeks) << "it has ended for good";
}

TEST(FileReaderOfUnseekableFiles, IsFinishedWhenASeekFails) {
    TemporaryFolder const folder;
    EndlessFile const file(folder, "0123");
    FileReader reader(file.Path());
    FailingCall const failure(SystemCall::Seek, EIO);
    EXPECT_FALSE(reader.Unfinished());
}

TEST(FileReaderOfUnseekableFiles, IsFinishedWhenLookingFails) {
    TemporaryFolder const folder;
    EndlessFile const file(folder, "0123");
    FileReader reader(file.Path());
    FailingCall const failure(SystemCall::Read, EIO);
    EXPECT_FALSE(reader.Unfinished());
}

TEST(FileReaderOfUnseekableFiles, LooksAgainAfterASignal) {
    TemporaryFolder const folder;
    EndlessFile const file(folder, "0123");
    FileReader reader(file.Path());
    FailingCall const interruption(SystemCall::Read, EINTR, 2);
    EXPECT_TRUE(reader.Unfinished());
}

TEST(FileReaderOfPipes, GivesEachByteOnce) {
    TemporaryFolder const folder;
    Fifo fifo(folder, "0123456789");
    FileReadingPath const path(fifo.Location());
    FileReader reader(path);
    EXPECT_TRUE(reader.Unfinished());
    EXPECT_TRUE(reader.Unfinished());
    EXPECT_EQ(ReadWhole(reader, 1), "0");
    EXPECT_EQ(ReadWhole(reader, 3), "123");
    EXPECT_TRUE(reader.Unfinished());
    EXPECT_EQ(reader.Position(), 4u);
    EXPECT_EQ(ReadSome(reader, 100), "456789");
    EXPECT_EQ(reader.Position(), 10u);
    fifo.CloseWriter();
    EXPECT_FALSE(reader.Unfinished());
    EXPECT_EQ(ReadSome(reader, 100), "");
}

TEST(FileReaderOfPipes, GivesTheByteItHasSeenWithoutWaitingForMore) {
    TemporaryFolder const folder;
    Fifo const fifo(folder, "0");
    FileReadingPath const path(fifo.Location());
    FileReader reader(path);
    EXPECT_TRUE(reader.Unfinished());
    EXPECT_EQ(ReadSome(reader, 100), "0") << "the writer may be waiting for an answer";
    EXPECT_EQ(reader.Position(), 1u);
}

TEST(FileReaderOfPipes, GivesAllOfThemselvesToAReceiver) {
    TemporaryFolder const folder;
    std::string contents;
    for (int line = 0; line < 2000; ++line) contents += std::to_string(line) + "\n";
    Fifo fifo(folder, contents);
    FileReadingPath const path(fifo.Location());
    fifo.CloseWriter();
    FileReader reader(path);
    auto const bytes = ReadReader(reader);
    EXPECT_EQ(MakeString(ConstData(bytes.data(), bytes.data() + bytes.size())), contents);
}

TEST(FileReaderOfPipes, EndShortWhenThePipeDoes) {
    TemporaryFolder const folder;
    Fifo fifo(folder, "012");
    FileReadingPath const path(fifo.Location());
    fifo.CloseWriter();
    FileReader reader(path);
    EXPECT_TRUE(reader.Unfinished());
    EXPECT_EQ(FailureOf([&] { ReadWhole(reader, 5); }), "EndOfFileError 90");
    EXPECT_EQ(reader.Position(), 3u);
}

TEST(FileReaderOfPipes, AReadThatFailsKeepsTheByteThatWasSeen) {
    TemporaryFolder const folder;
    Fifo const fifo(folder, "0123");
    FileReadingPath const path(fifo.Location());
    FileReader reader(path);
    EXPECT_TRUE(reader.Unfinished());
    {
        FailingCall const failure(SystemCall::Read, EIO);
        EXPECT_EQ(FailureOf([&] { ReadWhole(reader, 4); }), "FileIOError 5");
    }
    EXPECT_EQ(reader.Position(), 0u);
    EXPECT_EQ(ReadWhole(reader, 4), "0123");
}

TEST(FileReaderOfPipes, CannotStartBehindTheFirstByte) {
    TemporaryFolder const folder;
    Fifo const fifo(folder, "0123");
    FileReadingPath const path(fifo.Location());
    FileReader reader(path, 2);
    EXPECT_FALSE(reader.Unfinished());
    EXPECT_EQ(FailureOf([&] { ReadSome(reader, 1); }), "FileIOError 29");
}

TEST(FileReaderOfPipes, CannotGoBack) {
    TemporaryFolder const folder;
    Fifo const fifo(folder, "0123");
    FileReadingPath const path(fifo.Location());
    FileReader reader(path);
    EXPECT_TRUE(reader.Unfinished());
    reader.Reset();
    EXPECT_EQ(ReadWhole(reader, 2), "01") << "nothing had been given yet";
    reader.Reset();
    EXPECT_FALSE(reader.Unfinished());
    EXPECT_EQ(FailureOf([&] { ReadSome(reader, 1); }), "FileIOError 29");
}

TEST(FileReaderOfPipes, ACopyGivesTheByteThatWasSeenToo) {
    TemporaryFolder const folder;
    Fifo const fifo(folder, "0123");
    FileReadingPath const path(fifo.Location());
    FileReader reader(path);
    EXPECT_TRUE(reader.Unfinished());
    FileReader copy(reader);
    EXPECT_EQ(ReadWhole(copy, 2), "01");
    EXPECT_EQ(ReadWhole(reader, 2), "02") << "the copy has taken what stood between";
}
