#include "files/FileItem.h"

#include "files/FileErrors.h"

#include "tests/files/FileTestSupport.h"
#include "tests/files/RecordedRetries.h"
#include "tests/files/RecordedWaits.h"
#include "tests/support/TemporaryFolder.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/stat.h>

namespace {

using Lines = std::vector<std::string>;

FileItem ItemAt(FileLocation const& location) {
    FileItem item;
    item.Get(location, true);
    return item;
}

Instant Microseconds(long long microseconds) {
    return Instant::FromMicroseconds(microseconds);
}

struct stat StatusOf(std::string const& path) {
    struct stat status = {};
    EXPECT_EQ(stat(path.c_str(), &status), 0) << path;
    return status;
}

void SetTimes(std::string const& path, timespec const& accessed, timespec const& modified) {
    timespec const times[] = {accessed, modified};
    ASSERT_EQ(utimensat(AT_FDCWD, path.c_str(), times, 0), 0) << path;
}

} // namespace

TEST(FileItem, KnowsOfNoFileByDefault) {
    FileItem const item;
    EXPECT_TRUE(item.Location().empty());
    EXPECT_EQ(item.Info().State(), cNoFile);
}

TEST(FileItem, HasTheLocationAndTheStatusOfItsFile) {
    TemporaryFolder const folder;
    folder.Write("file", "12345");
    folder.MakeLink("file", "link");
    FileItem const file = ItemAt(folder.Location("file"));
    EXPECT_EQ(file.Location().Compare(folder.Location("file")), 0);
    EXPECT_EQ(file.Info().State(), cFileExists);
    EXPECT_EQ(file.Info().Stats().target.st_size, 5);
    FileItem const link = ItemAt(folder.Location("link"));
    EXPECT_EQ(link.Info().State(), cLinkToFile);
    EXPECT_EQ(link.Info().Stats().target.st_size, 5);
    EXPECT_EQ(ItemAt(folder.Location()).Info().IsDirectory(), true);
}

TEST(FileItem, DoesNotKeepTheStatusOfAnotherFileWhenItThrows) {
    TemporaryFolder const folder;
    folder.Write("file", "12345");
    FileItem item = ItemAt(folder.Location("file"));
    // The plain locale cannot spell it.
    EXPECT_THROW(item.Get(folder.Location("\xc3\xa4"), true), UnixPlatform::WideToMultiByteConvertError);
    EXPECT_EQ(item.Info().State(), cNoFile);
}

TEST(FileItem, ReportsWhatIsNotThere) {
    TemporaryFolder const folder;
    folder.Write("file", "x");
    FileItem item;
    for (bool const tolerated : {false, true}) {
        EXPECT_EQ(FailureOf([&] { item.Get(folder.Location("missing"), tolerated); }), "FileNotFoundError 2");
        EXPECT_EQ(FailureOf([&] { item.Get(folder.Location("file/x"), tolerated); }),
                  "DirectoryNotFoundError 20");
        EXPECT_EQ(FailureOf([&] { item.Get(FileLocation(), tolerated); }), "EmptyFileLocationError 0");
    }
}

TEST(FileItem, GetsItsOwnLocationAgain) {
    TemporaryFolder const folder;
    // Longer than a text keeps within itself.
    std::string const name(80, 'f');
    folder.Write(name, "x");
    FileItem item = ItemAt(folder.Location(name));
    folder.Write(name, "12345");
    item.Get(item.Location(), false);
    EXPECT_EQ(item.Location().Compare(folder.Location(name)), 0);
    EXPECT_EQ(item.Info().Stats().target.st_size, 5);
}

TEST(FileItem, CannotSetTheTimeOfADanglingLink) {
    TemporaryFolder const folder;
    folder.MakeLink("missing", "link");
    FileItem item = ItemAt(folder.Location("link"));
    EXPECT_EQ(FailureOf([&] { item.SetModificationTime(Microseconds(5000000)); }), "FileNotFoundError 2");
    EXPECT_EQ(item.Info().ModificationTime(), Microseconds(0));
}

TEST(FileItem, ReportsADanglingLinkUnlessItIsTolerated) {
    TemporaryFolder const folder;
    folder.MakeLink("missing", "link");
    FileItem item;
    EXPECT_EQ(FailureOf([&] { item.Get(folder.Location("link"), false); }), "FileNotFoundError 2");
    EXPECT_EQ(item.Info().State(), cDanglingLink);
    item.Get(folder.Location("link"), true);
    EXPECT_EQ(item.Info().State(), cDanglingLink);
    EXPECT_EQ(item.Location().Compare(folder.Location("link")), 0);
}

TEST(FileItem, MustReportAllErrorsButThoseOfToleratedDanglingLinks) {
    TemporaryFolder const folder;
    folder.Write("file", "x");
    folder.MakeLink("file", "link");
    folder.MakeLink("missing", "dangling");
    FileItem const file = ItemAt(folder.Location("file"));
    FileItem const link = ItemAt(folder.Location("link"));
    FileItem const dangling = ItemAt(folder.Location("dangling"));
    for (FileItem const& item : {FileItem(), file, link}) {
        EXPECT_TRUE(item.MustReportError(false));
        EXPECT_TRUE(item.MustReportError(true));
        EXPECT_FALSE(item.HandleTryToGetError(false));
        EXPECT_FALSE(item.HandleTryToGetError(true));
    }
    EXPECT_TRUE(dangling.MustReportError(false));
    EXPECT_FALSE(dangling.MustReportError(true));
    EXPECT_FALSE(dangling.HandleTryToGetError(false));
    EXPECT_TRUE(dangling.HandleTryToGetError(true));

    EXPECT_EQ(FailureOf([&] { dangling.HandleGetError(2, false); }), "FileNotFoundError 2");
    EXPECT_EQ(FailureOf([&] { dangling.HandleGetError(13, false); }), "FilePermissionError 13");
    EXPECT_EQ(FailureOf([&] { dangling.HandleGetError(2, true); }), "nothing");
    EXPECT_EQ(FailureOf([&] { file.HandleGetError(0, false); }), "nothing");
    EXPECT_EQ(FailureOf([&] { file.HandleGetError(13, true); }), "FilePermissionError 13");
}

TEST(FileItem, SetsTheTimeOfItsFileInWholeSecondsAndLeavesThatOfTheLastAccess) {
    TemporaryFolder const folder;
    folder.Write("file", "x");
    SetTimes(folder.Path("file"), {111, 222}, {333, 444});
    struct {
        long long microseconds;
        long long seconds;
    } const cases[] = {{1700000000000000, 1700000000},
                       {1700000000999999, 1700000000},
                       {0, 0},
                       {999999, 0},
                       {-999999, 0},
                       {-1000000, -1},
                       {-1999999, -1},
                       {86400000000, 86400}};
    for (auto const& [microseconds, seconds] : cases) {
        FileItem item = ItemAt(folder.Location("file"));
        item.SetModificationTime(Microseconds(microseconds));
        struct stat const status = StatusOf(folder.Path("file"));
        EXPECT_EQ(status.st_mtim.tv_sec, seconds) << microseconds;
        EXPECT_EQ(status.st_mtim.tv_nsec, 0) << microseconds;
        EXPECT_EQ(status.st_atim.tv_sec, 111) << microseconds;
        EXPECT_EQ(status.st_atim.tv_nsec, 222) << microseconds;
        EXPECT_EQ(item.Info().ModificationTime().Microseconds(), seconds * 1000000) << microseconds;
        EXPECT_EQ(FileItem::RoundToFileSystem(Microseconds(microseconds)).Microseconds(), seconds * 1000000);
    }
}

TEST(FileItem, SetsTheTimeOfTheFileBehindALink) {
    TemporaryFolder const folder;
    folder.Write("file", "x");
    folder.MakeLink("file", "link");
    ItemAt(folder.Location("link")).SetModificationTime(Microseconds(5000000));
    EXPECT_EQ(StatusOf(folder.Path("file")).st_mtim.tv_sec, 5);
}

TEST(FileItem, ReportsATimeThatCannotBeSet) {
    TemporaryFolder const folder;
    folder.Write("file", "x");
    FileItem item = ItemAt(folder.Location("file"));
    std::filesystem::remove(folder.Path("file"));
    Instant const before = item.Info().ModificationTime();
    EXPECT_EQ(FailureOf([&] { item.SetModificationTime(Instant()); }), "FileNotFoundError 2");
    EXPECT_EQ(item.Info().ModificationTime(), before);
    EXPECT_EQ(FailureOf([&] { FileItem().SetModificationTime(Instant()); }), "EmptyFileLocationError 0");
}

TEST(FileItem, TriesEightTimesToSetATime) {
    TemporaryFolder const folder;
    folder.Write("file", "x");
    FileItem item = ItemAt(folder.Location("file"));
    std::filesystem::rename(folder.Path("file"), folder.Path("away"));
    std::vector<unsigned int> const allWaits{16, 32, 64, 128, 256, 512, 1024};
    {
        RecordedWaits const waits;
        RecordedRetries const log;
        EXPECT_EQ(FailureOf([&] { item.SetModificationTimeWithRetry(Instant(), log); }),
                  "FileNotFoundError 2");
        EXPECT_EQ(log.Lines(), Lines{"SetModificationTime(" + folder.Path("file") + ") failed at 8"});
        EXPECT_EQ(waits.Waits(), allWaits);
    }
    {
        RecordedWaits const waits([&] { std::filesystem::rename(folder.Path("away"), folder.Path("file")); });
        RecordedRetries const log;
        item.SetModificationTimeWithRetry(Microseconds(7000000), log);
        EXPECT_EQ(log.Lines(), Lines{"SetModificationTime(" + folder.Path("file") + ") succeeded at 2"});
        EXPECT_EQ(StatusOf(folder.Path("file")).st_mtim.tv_sec, 7);
    }
    RecordedWaits const waits;
    RecordedRetries const log;
    FileItem nothing;
    EXPECT_EQ(FailureOf([&] { nothing.SetModificationTimeWithRetry(Instant(), log); }),
              "EmptyFileLocationError 0");
    EXPECT_EQ(log.Lines(), Lines{"SetModificationTime() failed at 8"});
    EXPECT_EQ(waits.Waits(), allWaits);
}

TEST(FileItem, HasTheTimeOfTheProcess) {
    EXPECT_EQ(FileItem::GetTimeBias().Microseconds(), 0);
}

TEST(FileItem, ComputesTheChecksumOfTheContents) {
    TemporaryFolder const folder;
    folder.Write("digits", "123456789");
    folder.Write("empty", "");
    EXPECT_EQ(ItemAt(folder.Location("digits")).Checksum(), 0xFC891918U);
    EXPECT_EQ(ItemAt(folder.Location("empty")).Checksum(), 0U);
    EXPECT_THROW(FileItem().Checksum(), EmptyFileLocationError);
}
