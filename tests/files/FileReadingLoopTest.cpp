#include "files/FileReadingLoop.h"
#include "files/FileWriting.h"
#include "foundation/Exceptions.h"

#include "tests/files/FileTestSupport.h"
#include "tests/files/SystemCalls.h"
#include "tests/support/Allocations.h"
#include "tests/support/TemporaryFolder.h"

#include <cerrno>
#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <thread>
#include <unistd.h>

namespace {

// A file of the digits, open, and a loop with room for four bytes.
class FileReadingLoopTest : public ::testing::Test {
protected:
    FileReadingLoopTest() {
        folder.Write("file", "0123456789");
        path.OpenExisting(folder.Location("file"), false);
    }

    // The chunks that are left, each behind a bar.
    std::string Rest() {
        std::string chunks;
        for (; loop.Unfinished(); ++loop) chunks += "|" + MakeString(*loop);
        return chunks;
    }
    // What the chunks were before the loop threw; all of them when it did not.
    std::string RestUntilFailure() {
        std::string chunks;
        try {
            for (; loop.Unfinished(); ++loop) chunks += "|" + MakeString(*loop);
        } catch (FileReadingLoopEndOfFileError const&) {
            chunks += "|end of file";
        } catch (FileIOError const& failure) {
            chunks += "|code " + std::to_string(failure.GetCode());
        }
        return chunks;
    }

    TemporaryFolder folder;
    FileReadingPath path;
    unsigned char room[4] = {};
    FileReadingLoop loop{Data(room, room + sizeof room)};
};

} // namespace

TEST_F(FileReadingLoopTest, IsOverUntilItIsStarted) {
    EXPECT_TRUE(loop.Finished());
    EXPECT_TRUE((*loop).empty());
    EXPECT_EQ(FailureOf([&] { loop.Read(); }), "FileReadingLoopEndOfFileError");
}

TEST_F(FileReadingLoopTest, ReadsTheWholeFile) {
    loop.Start(path, 0);
    EXPECT_EQ(Rest(), "|0123|4567|89");
    EXPECT_TRUE(loop.Finished());
}

TEST_F(FileReadingLoopTest, ReadsFromAPositionOn) {
    loop.Start(path, 5);
    EXPECT_EQ(Rest(), "|5678|9");
    loop.Start(path, 10);
    EXPECT_EQ(Rest(), "");
}

TEST_F(FileReadingLoopTest, ReadsARange) {
    loop.Start(path, 2, 8);
    EXPECT_EQ(Rest(), "|2345|67");
    loop.Start(path, Range<unsigned long>{3, 4});
    EXPECT_EQ(Rest(), "|3");
    loop.Start(path, 6, 10);
    EXPECT_EQ(Rest(), "|6789");
}

TEST_F(FileReadingLoopTest, StartsInItsConstructor) {
    unsigned char bytes[8];
    FileReadingLoop made(Data(bytes, bytes + 8), path, Range<unsigned long>{1, 10});
    EXPECT_EQ(MakeString(*made), "12345678");
    ++made;
    EXPECT_EQ(MakeString(*made), "9");
    ++made;
    EXPECT_TRUE(made.Finished());
}

TEST_F(FileReadingLoopTest, AnEmptyRangeReadsNothing) {
    auto const reads = CallCount(SystemCall::Read);
    loop.Start(path, 4, 4);
    EXPECT_EQ(Rest(), "");
    loop.Start(path, 1000, 1000);
    EXPECT_EQ(Rest(), "");
    EXPECT_EQ(CallCount(SystemCall::Read), reads);
}

TEST_F(FileReadingLoopTest, AnEmptyFileReadsNothing) {
    folder.Write("file", "");
    auto const reads = CallCount(SystemCall::Read);
    loop.Start(path, 0);
    EXPECT_EQ(Rest(), "");
    EXPECT_EQ(CallCount(SystemCall::Read), reads);
}

TEST_F(FileReadingLoopTest, OneStepBehindTheEndChangesNothing) {
    loop.Start(path, 8);
    EXPECT_EQ(Rest(), "|89");
    ++loop;
    EXPECT_TRUE(loop.Finished());
}

TEST_F(FileReadingLoopTest, ARangeBehindTheEndThrowsAtTheEndOfTheFile) {
    loop.Start(path, 4, 15);
    EXPECT_EQ(RestUntilFailure(), "|4567|89|end of file");
    EXPECT_TRUE(loop.Finished());
}

TEST_F(FileReadingLoopTest, AStartBehindTheEndThrows) {
    EXPECT_EQ(FailureOf([&] { loop.Start(path, 11); }), "FileReadingLoopEndOfFileError");
    EXPECT_EQ(FailureOf([&] { loop.Start(path, 10, 11); }), "FileReadingLoopEndOfFileError");
    EXPECT_EQ(FailureOf([&] { loop.Start(path, 18446744073709551615UL); }), "FileReadingLoopEndOfFileError");
}

TEST_F(FileReadingLoopTest, ARangeThatEndsBeforeItBeginsThrowsInTheEnd) {
    loop.Start(path, 8, 3);
    EXPECT_EQ(RestUntilFailure(), "|89|end of file");
}

TEST_F(FileReadingLoopTest, ReadThrowsAtTheEndOfTheFile) {
    loop.Start(path, 0);
    loop.Read();
    EXPECT_EQ(MakeString(*loop), "4567");
    loop.Read();
    EXPECT_EQ(MakeString(*loop), "89");
    EXPECT_EQ(FailureOf([&] { loop.Read(); }), "FileReadingLoopEndOfFileError");
    EXPECT_TRUE((*loop).empty());
}

TEST_F(FileReadingLoopTest, ReadThrowsAtTheEndOfTheRange) {
    loop.Start(path, 0, 4);
    EXPECT_EQ(Rest(), "|0123");
    EXPECT_EQ(FailureOf([&] { loop.Read(); }), "FileReadingLoopEndOfFileError");
}

TEST_F(FileReadingLoopTest, ReadByHandStaysWithinTheRange) {
    loop.Start(path, 1, 7);
    EXPECT_EQ(MakeString(*loop), "1234");
    loop.Read();
    EXPECT_EQ(MakeString(*loop), "56");
    EXPECT_EQ(FailureOf([&] { loop.Read(); }), "FileReadingLoopEndOfFileError");
    EXPECT_TRUE(loop.Finished());
    loop.Start(path, 1, 7);
    loop.Read();
    ++loop;
    EXPECT_TRUE(loop.Finished()) << "the range has been read";
}

TEST_F(FileReadingLoopTest, AStartThatFailsLeavesNothingOfTheOneBefore) {
    FileReadingPath const closed;
    loop.Start(path, 0);
    EXPECT_EQ(FailureOf([&] { loop.Start(closed, 0); }), "FileNotOpenError 0");
    ++loop;
    EXPECT_TRUE(loop.Finished());
}

TEST_F(FileReadingLoopTest, DoesNotReadWhatAFileGrewBy) {
    loop.Start(path, 0);
    folder.Write("file", "0123456789abc");
    EXPECT_EQ(Rest(), "|0123|4567|89");
}

TEST_F(FileReadingLoopTest, AFileThatBecameShorterThrowsInsteadOfTurningForever) {
    loop.Start(path, 0);
    folder.Write("file", "01234");
    EXPECT_EQ(RestUntilFailure(), "|0123|4|end of file");
}

TEST_F(FileReadingLoopTest, GoesOnAfterAShortRead) {
    ShortTransfers const threeAtOnce(3);
    loop.Start(path, 0);
    EXPECT_EQ(Rest(), "|012|345|678|9");
}

TEST_F(FileReadingLoopTest, ThrowsWhatTheReaderThrows) {
    FailingCall const failure(SystemCall::Read, EIO, 1, 1);
    loop.Start(path, 0);
    EXPECT_EQ(RestUntilFailure(), "|0123|code 5");
    EXPECT_TRUE((*loop).empty());
}

TEST_F(FileReadingLoopTest, NeedsAnOpenFile) {
    loop.Start(path, 0);
    path.Close();
    EXPECT_EQ(FailureOf([&] { loop.Start(path, 0); }), "FileNotOpenError 0");
    EXPECT_EQ(FailureOf([&] { loop.Start(path, 0, 1); }), "FileNotOpenError 0");
    EXPECT_TRUE(loop.Finished());
}

TEST_F(FileReadingLoopTest, ReadsByACopyOfAReader) {
    FileReader const reader(path, 7);
    folder.Write("file", "0123456789abc");
    loop.Start(reader, Range<unsigned long>{1, 6});
    EXPECT_EQ(Rest(), "|1234|5");
    EXPECT_EQ(reader.Position(), 7u);
    loop.Start(reader, Range<unsigned long>{8, 12});
    EXPECT_EQ(RestUntilFailure(), "|89|end of file") << "the reader has seen ten bytes";
}

TEST_F(FileReadingLoopTest, RoomForNothingThrowsInsteadOfTurningForever) {
    FileReadingLoop narrow{Data()};
    EXPECT_EQ(FailureOf([&] { narrow.Start(path, 0); }), "FileReadingLoopEndOfFileError");
}

TEST_F(FileReadingLoopTest, AllocatesNothingForItsChunks) {
    loop.Start(path, 0);
    auto const allocations = AllocationCount();
    while (loop.Unfinished()) ++loop;
    EXPECT_EQ(AllocationCount(), allocations);
}

TEST_F(FileReadingLoopTest, ReadsAFileWithoutALengthToItsEnd) {
    FileReadingPath endless(folder.Location("file"));
    FailingCall const refusal(SystemCall::Seek, EINVAL, 1, 1);
    loop.Start(endless, 3);
    ASSERT_TRUE(endless.Unseekable());
    EXPECT_EQ(Rest(), "|3456|789");
    loop.Start(endless, 10);
    EXPECT_EQ(Rest(), "");
    loop.Start(endless, 10000);
    EXPECT_EQ(Rest(), "");
}

TEST_F(FileReadingLoopTest, ReadsARangeOfAFileWithoutALength) {
    FileReadingPath endless(folder.Location("file"));
    FailingCall const refusal(SystemCall::Seek, EINVAL, 1, 1);
    loop.Start(endless, 3, 8);
    ASSERT_TRUE(endless.Unseekable());
    EXPECT_EQ(Rest(), "|3456|7");
    loop.Start(endless, 8, 13);
    EXPECT_EQ(RestUntilFailure(), "|89|end of file");
}

TEST_F(FileReadingLoopTest, DoesNotTakeAFailureForTheEndOfAFileWithoutALength) {
    FileReadingPath endless(folder.Location("file"));
    FailingCall const refusal(SystemCall::Seek, EINVAL, 1, 1);
    FailingCall const failure(SystemCall::Read, EIO, 1, 1);
    loop.Start(endless, 3);
    EXPECT_EQ(RestUntilFailure(), "|3456|code 5");
}

TEST_F(FileReadingLoopTest, ReadThrowsWhereTheReaderIsFinishedForWantOfASeek) {
    ASSERT_EQ(mkfifo(folder.Path("fifo").c_str(), 0600), 0);
    FileWritingPath const bothEnds(folder.Location("fifo"));
    EXPECT_EQ(FailureOf([&] { loop.Start(bothEnds, 3, 5); }), "FileReadingLoopEndOfFileError");
    EXPECT_EQ(FailureOf([&] { loop.Start(bothEnds, 3); }), "FileIOError 29");
}

TEST_F(FileReadingLoopTest, DoesNotAskAPipeForMoreThanTheRange) {
    ASSERT_EQ(mkfifo(folder.Path("fifo").c_str(), 0600), 0);
    FileWritingPath const bothEnds(folder.Location("fifo"));
    ASSERT_EQ(fcntl(bothEnds.Descriptor(), F_SETFL, O_NONBLOCK), 0);
    ASSERT_EQ(write(bothEnds.Descriptor(), "abc", 3), 3);
    loop.Start(bothEnds, 0, 3);
    EXPECT_EQ(Rest(), "|abc");
    auto const reads = CallCount(SystemCall::Read);
    EXPECT_EQ(FailureOf([&] { loop.Read(); }), "FileReadingLoopEndOfFileError");
    EXPECT_EQ(CallCount(SystemCall::Read), reads) << "without O_NONBLOCK it would wait for the writer";
}

TEST_F(FileReadingLoopTest, ReadsAPipeToItsEnd) {
    ASSERT_EQ(mkfifo(folder.Path("fifo").c_str(), 0600), 0);
    std::thread writer([&] { folder.Write("fifo", "abcdefghij"); });
    FileReadingPath const pipe(folder.Location("fifo"));
    std::string all;
    for (loop.Start(pipe, 0); loop.Unfinished(); ++loop) all += MakeString(*loop);
    writer.join();
    EXPECT_EQ(all, "abcdefghij");
}
