#include "files/ReadFile.h"
#include "files/FileWriting.h"
#include "foundation/Exceptions.h"

#include "tests/files/FileTestSupport.h"
#include "tests/files/SystemCalls.h"
#include "tests/support/Allocations.h"
#include "tests/support/TemporaryFolder.h"

#include <cerrno>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <thread>
#include <utility>

namespace {

// Writes down what it is called with: "start", the size of each chunk, "end"; what it throws, on demand.
class Recorder : public DataReceiver {
public:
    using DataReceiver::Receive;
    void Start() override { Note("start"); }
    void Receive(ConstData data) override {
        Note(std::to_string(data.Size()));
        contents += MakeString(data);
        if (failing) throw NotANumeral();
    }
    void ReceiveEnd() override { Note("end"); }
    void Note(std::string const& call) { calls += call + " "; }

    std::string calls;
    std::string contents;
    bool failing = false;
};

class NotingBudget : public CpuBudget {
public:
    explicit NotingBudget(Recorder& recorder) : m_recorder(recorder) {}
    void Spend() override {
        m_recorder.Note("spend");
        if (failing) throw NotANumeral();
    }

    bool failing = false;

private:
    Recorder& m_recorder;
};

// "<0", each text, "/" with the range of each break, ">" with the last position.
class RecordingLines : public LineReceiver {
public:
    void Start(unsigned long position) override { record += "<" + std::to_string(position) + " "; }
    void Receive(ConstData text) override { record += MakeString(text); }
    void ReceiveLineBreak(Range<unsigned long> lineBreak) override {
        record += "/" + std::to_string(lineBreak.begin) + "-" + std::to_string(lineBreak.end) + " ";
    }
    void ReceiveEnd(unsigned long position) override { record += " >" + std::to_string(position); }

    std::string record;
};

// Each field's name and value, and the text of the body.
class RecordingMessage : public MessageReceiver {
public:
    DataReceiver& ReceiveField(ConstData name) override {
        record += MakeString(name) + "=";
        return m_value;
    }
    void ReceiveHeaderEnd(unsigned long position) override {
        record += m_value.contents + " header " + std::to_string(position) + " ";
    }
    void Receive(ConstData text) override { record += MakeString(text); }
    void ReceiveEnd(unsigned long position) override { record += " end " + std::to_string(position); }

    std::string record;

private:
    Recorder m_value;
};

class CountingReceiver : public DataReceiver {
public:
    using DataReceiver::Receive;
    void Receive(ConstData data) override { size += data.Size(); }

    unsigned long size = 0;
};

std::string Digits(std::size_t size) {
    std::string text;
    for (std::size_t i = 0; i < size; ++i) text += static_cast<char>('0' + i % 10);
    return text;
}

} // namespace

TEST(ReadFile, GivesAFileInChunksOf4096Bytes) {
    TemporaryFolder const folder;
    struct {
        std::size_t size;
        char const* calls;
    } const cases[] = {
        {1, "start 1 end "},
        {4095, "start 4095 end "},
        {4096, "start 4096 end "},
        {4097, "start 4096 1 end "},
        {10000, "start 4096 4096 1808 end "},
    };
    for (auto const& test : cases) {
        folder.Write("file", Digits(test.size));
        Recorder recorder;
        ReadFile(folder.Location("file"), recorder);
        EXPECT_EQ(recorder.calls, test.calls);
        EXPECT_EQ(recorder.contents, Digits(test.size)) << test.size;
    }
}

TEST(ReadFile, GivesAnEmptyFileAsAStartAndAnEnd) {
    TemporaryFolder const folder;
    folder.Write("file", "");
    Recorder recorder;
    ReadFile(folder.Location("file"), recorder);
    EXPECT_EQ(recorder.calls, "start end ");
}

TEST(ReadFile, StartsWhereItIsTold) {
    TemporaryFolder const folder;
    folder.Write("file", Digits(5000));
    Recorder recorder;
    ReadFile(folder.Location("file"), recorder, 4993);
    EXPECT_EQ(recorder.contents, "3456789");
    Recorder atEnd;
    ReadFile(folder.Location("file"), atEnd, 5000);
    EXPECT_EQ(atEnd.calls, "start end ");
    Recorder behindEnd;
    EXPECT_EQ(FailureOf([&] { ReadFile(folder.Location("file"), behindEnd, 5001); }),
              "FileReadingLoopEndOfFileError");
    EXPECT_EQ(behindEnd.calls, "start ");
}

TEST(ReadFile, EndsWhereItIsTold) {
    TemporaryFolder const folder;
    folder.Write("file", Digits(5000));
    Recorder recorder;
    ReadFile(folder.Location("file"), recorder, 10, 4110UL);
    EXPECT_EQ(recorder.calls, "start 4096 4 end ");
    EXPECT_EQ(recorder.contents, Digits(4100));
    Recorder empty;
    ReadFile(folder.Location("file"), empty, 10, 10UL);
    EXPECT_EQ(empty.calls, "start end ");
    Recorder tooLong;
    EXPECT_EQ(FailureOf([&] { ReadFile(folder.Location("file"), tooLong, 4990, 5001UL); }),
              "FileReadingLoopEndOfFileError");
    EXPECT_EQ(tooLong.calls, "start 10 ");
}

TEST(ReadFile, CallsTheBudgetOncePerChunk) {
    TemporaryFolder const folder;
    folder.Write("file", Digits(4097));
    Recorder recorder;
    NotingBudget budget(recorder);
    ReadFile(folder.Location("file"), recorder, 0, &budget);
    EXPECT_EQ(recorder.calls, "start 4096 spend 1 spend end ");
    recorder.calls.clear();
    ReadFile(folder.Location("file"), recorder, 0, 10, &budget);
    EXPECT_EQ(recorder.calls, "start 10 spend end ");
}

TEST(ReadFile, StartsTheReceiverBeforeItOpensTheFile) {
    TemporaryFolder const folder;
    Recorder recorder;
    EXPECT_EQ(FailureOf([&] { ReadFile(folder.Location("missing"), recorder); }), "FileNotFoundError 2");
    EXPECT_EQ(recorder.calls, "start ");
    EXPECT_EQ(FailureOf([&] { ReadFile(FileLocation(), recorder); }), "EmptyFileLocationError 0");
    EXPECT_EQ(FailureOf([&] { ReadFile(FileLocation("/proc/kmsg"_utf8), recorder); }), "FileIOError 0");
}

TEST(ReadFile, ClosesTheFileBeforeTheEnd) {
    TemporaryFolder const folder;
    folder.Write("file", Digits(10));
    Recorder recorder;
    auto const before = OpenDescriptors();
    FailingCall const failure(SystemCall::Close, EIO);
    EXPECT_EQ(FailureOf([&] { ReadFile(folder.Location("file"), recorder); }), "FileIOError 5");
    EXPECT_EQ(recorder.calls, "start 10 ");
    EXPECT_EQ(OpenDescriptors(), before);
}

TEST(ReadFile, AFailureClosesTheFileAndGivesNoEnd) {
    TemporaryFolder const folder;
    folder.Write("file", Digits(5000));
    auto const before = OpenDescriptors();
    Recorder failing;
    failing.failing = true;
    EXPECT_EQ(FailureOf([&] { ReadFile(folder.Location("file"), failing); }), "NotANumeral");
    EXPECT_EQ(failing.calls, "start 4096 ");
    Recorder recorder;
    {
        FailingCall const failure(SystemCall::Read, EIO, 1, 1);
        EXPECT_EQ(FailureOf([&] { ReadFile(folder.Location("file"), recorder); }), "FileIOError 5");
        EXPECT_EQ(recorder.calls, "start 4096 ");
    }
    Recorder slowed;
    NotingBudget budget(slowed);
    budget.failing = true;
    EXPECT_EQ(FailureOf([&] { ReadFile(folder.Location("file"), slowed, 0, &budget); }), "NotANumeral");
    EXPECT_EQ(slowed.calls, "start 4096 spend ");
    EXPECT_EQ(OpenDescriptors(), before);
}

TEST(ReadFile, ReadsWhatTheSystemMakesUp) {
    std::string const version = FileContents("/proc/version");
    ASSERT_FALSE(version.empty());
    Recorder recorder;
    ReadFile(FileLocation("/proc/version"_utf8), recorder);
    EXPECT_EQ(recorder.contents, version);
    EXPECT_EQ(recorder.calls, "start " + std::to_string(version.size()) + " end ");
}

// The system makes the contents of these up and tells a length that is none.
TEST(ReadFile, TakesALengthOfNothingForAnEmptyFile) {
    ASSERT_FALSE(FileContents("/proc/self/cmdline").empty());
    Recorder recorder;
    ReadFile(FileLocation("/proc/self/cmdline"_utf8), recorder);
    EXPECT_EQ(recorder.calls, "start end ");
}

TEST(ReadFile, ThrowsBehindTheContentsOfAFileThatTellsTooGreatALength) {
    TemporaryFolder const folder;
    folder.Write("file", Digits(18));
    Recorder recorder;
    // As many below /sys do: the seek to the end gives a page.
    FailingCall const page(SystemCall::Seek, 0, 1, 1, 4096);
    EXPECT_EQ(FailureOf([&] { ReadFile(folder.Location("file"), recorder); }),
              "FileReadingLoopEndOfFileError");
    EXPECT_EQ(recorder.calls, "start 18 ");
    EXPECT_EQ(recorder.contents, Digits(18));
}

TEST(ReadFile, CannotReadAFolder) {
    TemporaryFolder const folder;
    auto const before = OpenDescriptors();
    Recorder recorder;
    EXPECT_EQ(FailureOf([&] { ReadFile(folder.Location(), recorder); }), "FileIOError 21");
    EXPECT_EQ(recorder.calls, "start ");
    EXPECT_EQ(OpenDescriptors(), before);
}

TEST(ReadFile, ReadsAPipe) {
    TemporaryFolder const folder;
    ASSERT_EQ(mkfifo(folder.Path("fifo").c_str(), 0600), 0);
    std::thread writer([&] { folder.Write("fifo", Digits(200000)); });
    Recorder recorder;
    ReadFile(folder.Location("fifo"), recorder);
    writer.join();
    EXPECT_EQ(recorder.contents, Digits(200000));
    EXPECT_TRUE(recorder.calls.ends_with(" end "));
}

TEST(ReadFile, AllocatesNothingPerChunk) {
    TemporaryFolder const folder;
    folder.Write("short", Digits(10));
    folder.Write("long", Digits(1000000));
    CountingReceiver receiver;
    auto const allocationsFor = [&](FileLocation const& location) {
        auto const before = AllocationCount();
        ReadFile(location, receiver);
        return AllocationCount() - before;
    };
    // The first one of a process looks at its locale.
    allocationsFor(folder.Location("short"));
    auto const forShort = allocationsFor(folder.Location("short"));
    EXPECT_EQ(allocationsFor(folder.Location("long")), forShort);
    EXPECT_EQ(receiver.size, 1000020u);
}

TEST(ReadFile, CutsAFileIntoLines) {
    TemporaryFolder const folder;
    folder.Write("file", "ab\r\ncd\n\nef");
    RecordingLines lines;
    ReadFile(folder.Location("file"), lines);
    EXPECT_EQ(lines.record, "<0 ab/2-4 cd/6-7 /7-8 ef >10");
    RecordingLines part;
    ReadFile(folder.Location("file"), part, 4, 7UL);
    EXPECT_EQ(part.record, "<0 cd/2-3  >3");
    RecordingLines rest;
    ReadFile(folder.Location("file"), rest, 8);
    EXPECT_EQ(rest.record, "<0 ef >2");
}

TEST(ReadFile, JoinsALineBreakThatIsCutBetweenChunks) {
    TemporaryFolder const folder;
    folder.Write("file", std::string(4095, 'x') + "\r\ny");
    RecordingLines lines;
    ReadFile(folder.Location("file"), lines);
    EXPECT_EQ(lines.record, "<0 " + std::string(4095, 'x') + "/4095-4097 y >4098");
}

TEST(ReadFile, CutsAFileIntoAMessage) {
    TemporaryFolder const folder;
    folder.Write("file", "Name: value\n\nbody");
    RecordingMessage message;
    ReadFile(folder.Location("file"), message);
    EXPECT_EQ(message.record, "name=value header 13 body end 17");
    RecordingMessage part;
    ReadFile(folder.Location("file"), part, 0, 15UL);
    EXPECT_EQ(part.record, "name=value header 13 bo end 15");
}

TEST(ReadFile, CallsTheBudgetForLinesAndMessages) {
    TemporaryFolder const folder;
    folder.Write("file", Digits(5000));
    Recorder recorder;
    NotingBudget budget(recorder);
    RecordingLines lines;
    RecordingMessage message;
    ReadFile(folder.Location("file"), lines, 0, &budget);
    EXPECT_EQ(std::exchange(recorder.calls, std::string()), "spend spend ");
    ReadFile(folder.Location("file"), lines, 0, 10, &budget);
    EXPECT_EQ(std::exchange(recorder.calls, std::string()), "spend ");
    ReadFile(folder.Location("file"), message, 0, &budget);
    EXPECT_EQ(std::exchange(recorder.calls, std::string()), "spend spend ");
    ReadFile(folder.Location("file"), message, 0, 10, &budget);
    EXPECT_EQ(std::exchange(recorder.calls, std::string()), "spend ");
}

TEST(ReadFileRange, GivesARangeOfAnOpenFile) {
    TemporaryFolder const folder;
    folder.Write("file", Digits(10000));
    FileReadingPath const path(folder.Location("file"));
    FileReader const reader(path, 3);
    Recorder recorder;
    ReadFileRange(reader, Range<unsigned long>{10, 4110}, recorder);
    EXPECT_EQ(recorder.calls, "start 4096 4 end ");
    EXPECT_EQ(recorder.contents, Digits(4100));
    EXPECT_EQ(reader.Position(), 3u);
    EXPECT_TRUE(path.IsOpen());
    Recorder empty;
    ReadFileRange(reader, Range<unsigned long>{5, 5}, empty);
    EXPECT_EQ(empty.calls, "start end ");
}

TEST(ReadFileRange, GivesNoEndWhenTheFileEndsBefore) {
    TemporaryFolder const folder;
    folder.Write("file", Digits(10));
    FileReadingPath const path(folder.Location("file"));
    FileReader reader(path);
    Recorder recorder;
    EXPECT_EQ(FailureOf([&] {
                  ReadFileRange(reader, Range<unsigned long>{5, 11}, recorder);
              }),
              "FileReadingLoopEndOfFileError");
    EXPECT_EQ(recorder.calls, "start 5 ");
}
