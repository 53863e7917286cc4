#include "files/FileDataSink.h"
#include "foundation/StartReceiveAndEnd.h"

#include "tests/files/FileTestSupport.h"
#include "tests/files/SystemCalls.h"
#include "tests/support/TemporaryFolder.h"

#include <cerrno>
#include <gtest/gtest.h>

namespace {

class FileDataSinkTest : public ::testing::Test {
protected:
    FileDataSinkTest() {
        folder.Write("file", "0123456789");
        path.OpenExisting(folder.Location("file"));
    }

    std::string Contents() const { return folder.Read("file"); }

    TemporaryFolder folder;
    FileWritingPath path;
};

} // namespace

TEST_F(FileDataSinkTest, WritesAStreamFromItsPositionOn) {
    FileDataSink sink;
    FileDataSink& bound = sink(path, 3);
    EXPECT_EQ(&bound, &sink);
    sink.Start();
    sink.Receive("ab"_data);
    sink.Receive(ConstData());
    sink.Receive("cd"_data);
    sink.ReceiveEnd();
    EXPECT_EQ(Contents(), "012abcd789");
}

TEST_F(FileDataSinkTest, EachStartGoesBackToItsPosition) {
    FileDataSink sink(path, 2);
    StartReceiveAndEnd(sink, "abcde"_data);
    StartReceiveAndEnd(sink, "XY"_data);
    EXPECT_EQ(Contents(), "01XYcde789");
}

TEST_F(FileDataSinkTest, AnotherBindingTakesItElsewhere) {
    folder.Write("other", "----");
    FileWritingPath const other(folder.Location("other"));
    FileDataSink sink(path, 2);
    sink.Start();
    sink.Receive("a"_data);
    sink(other, 1);
    sink.Receive("b"_data);
    sink.Start();
    sink.Receive("c"_data);
    EXPECT_EQ(Contents(), "01a3456789");
    EXPECT_EQ(folder.Read("other"), "-c--");
}

TEST_F(FileDataSinkTest, MakesAFileLonger) {
    FileDataSink sink(path, 8);
    StartReceiveAndEnd(sink, "abcd"_data);
    EXPECT_EQ(Contents(), "01234567abcd");
}

TEST_F(FileDataSinkTest, FlushesOnceAtTheEnd) {
    FileDataSink sink(path, 0);
    auto const flushes = CallCount(SystemCall::Flush);
    sink.Start();
    sink.Receive("abc"_data);
    EXPECT_EQ(CallCount(SystemCall::Flush), flushes);
    sink.ReceiveEnd();
    EXPECT_EQ(CallCount(SystemCall::Flush), flushes + 1);
    FileDataSink made;
    StartReceiveAndEnd(made(path, 0), "x"_data);
    EXPECT_EQ(CallCount(SystemCall::Flush), flushes + 2);
}

TEST_F(FileDataSinkTest, DoesNotFlushWithAnyOtherMode) {
    auto const flushes = CallCount(SystemCall::Flush);
    for (auto const mode : {FileDataSink::FlushMode::NoFlush, static_cast<FileDataSink::FlushMode>(2),
                            static_cast<FileDataSink::FlushMode>(-1)}) {
        FileDataSink sink(path, 0, mode);
        StartReceiveAndEnd(sink, "abc"_data);
        FileDataSink made(mode);
        StartReceiveAndEnd(made(path, 3), "def"_data);
    }
    EXPECT_EQ(CallCount(SystemCall::Flush), flushes);
    EXPECT_EQ(Contents(), "abcdef6789");
}

TEST_F(FileDataSinkTest, PassesFailuresOn) {
    FileDataSink sink(path, 0);
    {
        FailingCall const failure(SystemCall::Write, ENOSPC);
        EXPECT_EQ(FailureOf([&] { sink.Receive("abc"_data); }), "FileDiskFullError 28");
    }
    FailingCall const failure(SystemCall::Flush, EIO);
    EXPECT_EQ(FailureOf([&] { sink.ReceiveEnd(); }), "FileIOError 5");
}

TEST_F(FileDataSinkTest, ADeviceThatIsFullFailsTheStream) {
    FileWritingPath const full(FileLocation("/dev/full"_utf8));
    FileDataSink sink(full, 0);
    sink.Start();
    EXPECT_EQ(FailureOf([&] { sink.Receive("abc"_data); }), "FileDiskFullError 28");
}

TEST_F(FileDataSinkTest, ASystemThatTakesNothingDoesNotKeepItForever) {
    FileDataSink sink(path, 0);
    sink.Start();
    FailingCall const nothing(SystemCall::Write, 0, 1000000, 0, 0);
    EXPECT_EQ(FailureOf([&] { sink.Receive("abc"_data); }), "FileIOError 5");
}

TEST_F(FileDataSinkTest, BoundToNoFileFails) {
    FileDataSink sink;
    sink.Start();
    sink.Receive(ConstData());
    EXPECT_EQ(FailureOf([&] { sink.Receive("abc"_data); }), "FileIOError 9");
    EXPECT_EQ(FailureOf([&] { sink.ReceiveEnd(); }), "FileIOError 9");
}
