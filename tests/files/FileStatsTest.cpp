#include "files/FileStats.h"

#include "files/FileErrors.h"

#include "tests/files/QuickFolder.h"
#include "tests/support/TemporaryFolder.h"

#include <cerrno>
#include <ctime>
#include <fcntl.h>
#include <gtest/gtest.h>
#include <limits>
#include <sys/stat.h>
#include <unistd.h>

namespace {

using UnixPlatform::FileTimeToInstant;
using UnixPlatform::InstantToFileTime;
using UnixPlatform::UnixFileInfo;

constexpr auto At = Instant::FromMicroseconds;

// Sets both times of a file, with parts of a second, without following a link.
void SetTimes(std::string const& path, time_t access, time_t modification) {
    timespec const times[] = {{access, 700000000}, {modification, 900000000}};
    ASSERT_EQ(utimensat(AT_FDCWD, path.c_str(), times, AT_SYMLINK_NOFOLLOW), 0);
}

bool IsAllZeros(struct stat const& status) {
    return status.st_mode == 0 && status.st_ino == 0 && status.st_nlink == 0 && status.st_size == 0 &&
           status.st_mtim.tv_sec == 0 && status.st_mtim.tv_nsec == 0 && status.st_ctim.tv_sec == 0;
}

UnixFileInfo InfoOf(FileLocation const& location) {
    UnixFileInfo info;
    EXPECT_EQ(info.Set(location), 0);
    return info;
}

} // namespace

TEST(FileStats, KnowNoFileAtFirst) {
    FileStats const stats;
    EXPECT_EQ(static_cast<int>(stats.state), 3);
    EXPECT_TRUE(IsAllZeros(stats.target));
    EXPECT_TRUE(IsAllZeros(stats.link));
    static_assert(sizeof(stats.state) == 4);
}

TEST(FileStats, HoldTheStatusOfAFileTwice) {
    TemporaryFolder const folder;
    folder.Write("file", "12345");
    FileStats stats;
    EXPECT_EQ(stats.get(folder.Path("file").c_str()), 0);
    EXPECT_EQ(static_cast<int>(stats.state), 0);
    EXPECT_TRUE(S_ISREG(stats.target.st_mode));
    EXPECT_TRUE(S_ISREG(stats.link.st_mode));
    EXPECT_EQ(stats.target.st_size, 5);
    EXPECT_EQ(stats.link.st_ino, stats.target.st_ino);
}

TEST(FileStats, HoldTheLinkAndItsTarget) {
    TemporaryFolder const folder;
    folder.Write("file", "12345");
    folder.MakeLink("file", "link");
    FileStats stats;
    EXPECT_EQ(stats.get(folder.Path("link").c_str()), 0);
    EXPECT_EQ(static_cast<int>(stats.state), 1);
    EXPECT_TRUE(S_ISREG(stats.target.st_mode));
    EXPECT_EQ(stats.target.st_size, 5);
    EXPECT_TRUE(S_ISLNK(stats.link.st_mode));
    EXPECT_EQ(stats.link.st_size, 4);
}

TEST(FileStats, TellADanglingLink) {
    TemporaryFolder const folder;
    folder.MakeLink("nowhere", "dangling");
    FileStats stats;
    EXPECT_EQ(stats.get(folder.Path("dangling").c_str()), ENOENT);
    EXPECT_EQ(static_cast<int>(stats.state), 2);
    EXPECT_TRUE(IsAllZeros(stats.target));
    EXPECT_TRUE(S_ISLNK(stats.link.st_mode));
}

TEST(FileStats, CountALinkThatLeadsInACircleAsDangling) {
    TemporaryFolder const folder;
    folder.MakeLink("circle", "circle");
    FileStats stats;
    EXPECT_EQ(stats.get(folder.Path("circle").c_str()), ELOOP);
    EXPECT_EQ(static_cast<int>(stats.state), 2);
    EXPECT_TRUE(S_ISLNK(stats.link.st_mode));
}

TEST(FileStats, ForgetAnEarlierFileWhenNothingIsThere) {
    TemporaryFolder const folder;
    folder.Write("file", "12345");
    struct {
        std::string path;
        int code;
    } const cases[] = {{folder.Path("missing"), ENOENT},
                       {folder.Path("file/below"), ENOTDIR},
                       {"/" + std::string(300, 'x'), ENAMETOOLONG},
                       {"", ENOENT}};
    for (auto const& [path, code] : cases) {
        FileStats stats;
        ASSERT_EQ(stats.get(folder.Path("file").c_str()), 0);
        EXPECT_EQ(stats.get(path.c_str()), code) << path;
        EXPECT_EQ(static_cast<int>(stats.state), 3) << path;
        EXPECT_TRUE(IsAllZeros(stats.target)) << path;
        EXPECT_TRUE(IsAllZeros(stats.link)) << path;
    }
}

TEST(FileStats, ForgetAnEarlierTargetAtADanglingLink) {
    TemporaryFolder const folder;
    folder.Write("file", "12345");
    folder.MakeLink("nowhere", "dangling");
    FileStats stats;
    ASSERT_EQ(stats.get(folder.Path("file").c_str()), 0);
    EXPECT_EQ(stats.get(folder.Path("dangling").c_str()), ENOENT);
    EXPECT_TRUE(IsAllZeros(stats.target));
}

TEST(UnixFileInfo, KnowsNoFileAtFirst) {
    UnixFileInfo const info;
    EXPECT_EQ(info.State(), cNoFile);
    EXPECT_FALSE(info.Exists());
    EXPECT_FALSE(info.IsLink());
    EXPECT_FALSE(info.IsDirectory());
    EXPECT_FALSE(info.IsRegularFile());
    EXPECT_EQ(info.ModificationTime(), At(0));
}

TEST(UnixFileInfo, TellsWhatStandsAtALocation) {
    TemporaryFolder const folder;
    folder.Write("file", "x");
    folder.MakeFolder("folder");
    folder.MakeLink("file", "link");
    folder.MakeLink("folder", "folder link");
    folder.MakeLink("nowhere", "dangling");
    ASSERT_EQ(mkfifo(folder.Path("pipe").c_str(), 0600), 0);
    struct {
        char const* name;
        int code;
        bool exists;
        bool isLink;
        bool isDirectory;
        bool isRegularFile;
    } const cases[] = {
        {"file", 0, true, false, false, true},          {"folder", 0, true, false, true, false},
        {"link", 0, true, true, false, true},           {"folder link", 0, true, true, true, false},
        {"dangling", ENOENT, true, true, false, false}, {"pipe", 0, true, false, false, false},
        {"missing", ENOENT, false, false, false, false}};
    for (auto const& [name, code, exists, isLink, isDirectory, isRegularFile] : cases) {
        UnixFileInfo info;
        EXPECT_EQ(info.Set(folder.Location(name)), code) << name;
        EXPECT_EQ(info.Exists(), exists) << name;
        EXPECT_EQ(info.IsLink(), isLink) << name;
        EXPECT_EQ(info.IsDirectory(), isDirectory) << name;
        EXPECT_EQ(info.IsRegularFile(), isRegularFile) << name;
    }
}

TEST(UnixFileInfo, KeepsItsStatusWhenTheLocationCannotBeSpelledLocally) {
    UnixFileInfo info = InfoOf(FileLocation("/"_utf8));
    EXPECT_THROW(info.Set(FileLocation("/gr\xC3\xBC"_utf8)), UnixPlatform::WideToMultiByteConvertError);
    EXPECT_TRUE(info.IsDirectory());
}

TEST(UnixFileInfo, GivesTimesInWholeSeconds) {
    TemporaryFolder const folder;
    folder.Write("file", "x");
    SetTimes(folder.Path("file"), 1000000001, 1234567890);
    UnixFileInfo const info = InfoOf(folder.Location("file"));
    EXPECT_EQ(info.AccessTime(), At(1000000001000000));
    EXPECT_EQ(info.ModificationTime(), At(1234567890000000));
}

TEST(UnixFileInfo, GivesTheTimesOfALinksTarget) {
    TemporaryFolder const folder;
    folder.Write("file", "x");
    folder.MakeLink("file", "link");
    SetTimes(folder.Path("file"), 100, 200);
    SetTimes(folder.Path("link"), 300, 400);
    EXPECT_EQ(InfoOf(folder.Location("link")).ModificationTime(), At(200000000));
    EXPECT_EQ(InfoOf(folder.Location("link")).AccessTime(), At(100000000));
}

TEST(UnixFileInfo, GivesTimesBefore1970) {
    TemporaryFolder const folder;
    folder.Write("file", "x");
    SetTimes(folder.Path("file"), -5, -10);
    EXPECT_EQ(InfoOf(folder.Location("file")).ModificationTime(), At(-10000000));
}

TEST(UnixFileInfo, KnowsNoTimesOfADanglingLink) {
    TemporaryFolder const folder;
    folder.MakeLink("nowhere", "dangling");
    SetTimes(folder.Path("dangling"), 300, 400);
    UnixFileInfo info;
    EXPECT_EQ(info.Set(folder.Location("dangling")), ENOENT);
    EXPECT_EQ(info.Stats().link.st_mtim.tv_sec, 400);
    EXPECT_EQ(info.ModificationTime(), At(0));
    EXPECT_EQ(info.AccessTime(), At(0));
}

TEST(UnixFileInfo, WrapsTimesAroundThatNoInstantHolds) {
    TemporaryFolder const folder(QuickFolder());
    folder.Write("file", "x");
    struct {
        time_t seconds;
        long long microseconds;
    } const cases[] = {{9223372036854, 9223372036854000000},
                       {9223372036855, -9223372036854551616},
                       {-9223372036854, -9223372036854000000},
                       {-9223372036855, 9223372036854551616}};
    for (auto const& [seconds, microseconds] : cases) {
        SetTimes(folder.Path("file"), seconds, seconds);
        UnixFileInfo const info = InfoOf(folder.Location("file"));
        if (info.Stats().target.st_mtim.tv_sec != seconds)
            GTEST_SKIP() << "The file system keeps no such times.";
        EXPECT_EQ(info.ModificationTime(), At(microseconds)) << seconds;
        EXPECT_EQ(info.AccessTime(), At(microseconds)) << seconds;
    }
}

TEST(UnixFileInfo, SetsItsModificationTimeInSeconds) {
    TemporaryFolder const folder;
    folder.Write("file", "x");
    SetTimes(folder.Path("file"), 100, 200);
    UnixFileInfo info = InfoOf(folder.Location("file"));
    info.SetModificationTime(At(1234567890999999));
    EXPECT_EQ(info.ModificationTime(), At(1234567890000000));
    EXPECT_EQ(info.Stats().target.st_mtim.tv_nsec, 0);
    EXPECT_EQ(info.AccessTime(), At(100000000));
    EXPECT_EQ(InfoOf(folder.Location("file")).ModificationTime(), At(200000000));
    info.SetModificationTime(At(-1999999));
    EXPECT_EQ(info.ModificationTime(), At(-1000000));
    info.SetModificationTime(At(std::numeric_limits<long long>::min()));
    EXPECT_EQ(info.ModificationTime(), At(-9223372036854000000));
}

TEST(UnixFileInfo, EqualsTheSameStatus) {
    TemporaryFolder const folder;
    folder.Write("file", "x");
    folder.Write("other", "x");
    folder.MakeLink("file", "link");
    UnixFileInfo const info = InfoOf(folder.Location("file"));
    EXPECT_TRUE(info == InfoOf(folder.Location("file")));
    EXPECT_FALSE(info == InfoOf(folder.Location("other")));
    EXPECT_FALSE(info == InfoOf(folder.Location("link")));
    EXPECT_FALSE(info == UnixFileInfo());
    EXPECT_TRUE(UnixFileInfo() == UnixFileInfo());
    UnixFileInfo changed = info;
    changed.SetModificationTime(At(5000000));
    EXPECT_FALSE(changed == info);
    EXPECT_TRUE(changed != info);
}

TEST(UnixFileInfo, TellsADanglingLinkFromNothing) {
    TemporaryFolder const folder;
    folder.MakeLink("nowhere", "dangling");
    UnixFileInfo info;
    info.Set(folder.Location("dangling"));
    EXPECT_FALSE(info == UnixFileInfo());
}

TEST(FileTime, IsAnInstant) {
    EXPECT_EQ(FileTimeToInstant(At(1234567)), At(1234567));
    EXPECT_EQ(InstantToFileTime(At(-1234567)), At(-1234567));
}
