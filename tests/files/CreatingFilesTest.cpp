#include "files/CreatingFiles.h"

#include "files/DeletingFiles.h"
#include "files/FileErrors.h"

#include "tests/files/ChildProcess.h"
#include "tests/files/FileTestSupport.h"
#include "tests/files/QuickFolder.h"
#include "tests/files/SystemCalls.h"
#include "tests/support/TemporaryFolder.h"

#include <climits>
#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <sys/statvfs.h>

namespace {

// Puts the umask that the test wants in force.
class UmaskScope {
public:
    explicit UmaskScope(mode_t mask) : m_before(umask(mask)) {}
    UmaskScope(UmaskScope const&) = delete;
    UmaskScope& operator=(UmaskScope const&) = delete;
    ~UmaskScope() { umask(m_before); }

private:
    mode_t m_before;
};

struct stat StatusOf(std::string const& path) {
    struct stat status = {};
    EXPECT_EQ(stat(path.c_str(), &status), 0) << path;
    return status;
}

mode_t ModeOf(std::string const& path) {
    return StatusOf(path).st_mode & 07777;
}

// "a/a/a" or "aa/a/a", of so many bytes.
std::string PathOfSize(std::size_t size) {
    std::string path = size % 2 == 0 ? "aa" : "a";
    while (path.size() < size) path += "/a";
    return path;
}

std::ptrdiff_t EntriesIn(TemporaryFolder const& folder) {
    return std::distance(std::filesystem::directory_iterator(folder.Path()),
                         std::filesystem::directory_iterator());
}

} // namespace

TEST(CreateFile, MakesAnEmptyFileWithExactlyTheMode) {
    TemporaryFolder const folder;
    for (mode_t const mode : {0600U, 0666U, 0777U, 0000U, 0640U}) {
        UmaskScope const scope(0077);
        std::string const name = "file" + std::to_string(mode);
        CreateFile(folder.Location(name), FileCreatingInfo{.mode = mode});
        EXPECT_EQ(ModeOf(folder.Path(name)), mode);
        EXPECT_TRUE(S_ISREG(StatusOf(folder.Path(name)).st_mode));
        EXPECT_EQ(StatusOf(folder.Path(name)).st_size, 0);
    }
    CreateFile(folder.Location("default"));
    EXPECT_EQ(ModeOf(folder.Path("default")), 0644U);
}

TEST(CreateFile, LeavesWhatIsThere) {
    TemporaryFolder const folder;
    folder.Write("file", "kept");
    folder.MakeFolder("directory");
    folder.MakeLink("missing", "dangling");
    for (char const* const name : {"file", "directory", "dangling"})
        EXPECT_EQ(FailureOf([&] { CreateFile(folder.Location(name)); }), "FileFoundError 17") << name;
    EXPECT_EQ(folder.Read("file"), "kept");
    EXPECT_FALSE(folder.Has("missing"));
}

TEST(CreateFile, ReportsOtherFailures) {
    TemporaryFolder const folder;
    folder.Write("file", "x");
    EXPECT_EQ(FailureOf([&] { CreateFile(folder.Location("missing/file")); }), "FileCreateFailed 2");
    EXPECT_EQ(FailureOf([&] { CreateFile(folder.Location("file/file")); }), "FileCreateFailed 20");
    EXPECT_EQ(FailureOf([&] { CreateFile(folder.Location(std::string(256, 'x'))); }), "FileCreateFailed 36");
    EXPECT_EQ(FailureOf([] { CreateFile(FileLocation()); }), "EmptyFileLocationError 0");
}

TEST(CreateFile, LeavesNoDescriptorOpen) {
    TemporaryFolder const folder;
    auto const descriptors = OpenDescriptors();
    CreateFile(folder.Location("file"));
    EXPECT_THROW(CreateFile(folder.Location("file")), FileFoundError);
    EXPECT_EQ(OpenDescriptors(), descriptors);
}

TEST(CreateFile, LeavesNothingWhenTheModeCannotBeSet) {
    TemporaryFolder const folder;
    auto const descriptors = OpenDescriptors();
    for (auto const& [code, failure] :
         {std::pair{EPERM, "FileCreateFailed 1"}, {EIO, "FileCreateFailed 5"}}) {
        FailingCall const failing(SystemCall::ChangeMode, code);
        EXPECT_EQ(FailureOf([&] { CreateFile(folder.Location("file")); }), failure);
        EXPECT_FALSE(folder.Has("file")) << failure;
    }
    EXPECT_EQ(OpenDescriptors(), descriptors);
}

TEST(CreateFile, GoesOnBehindASignal) {
    TemporaryFolder const folder;
    FailingCall const interrupted(SystemCall::Open, EINTR, 2);
    CreateFile(folder.Location("file"));
    EXPECT_TRUE(folder.Has("file"));
}

TEST(CreateFifo, MakesANamedPipe) {
    TemporaryFolder const folder;
    UmaskScope const scope(0022);
    CreateFifo(folder.Location("fifo"), FileCreatingInfo{.mode = 0666});
    EXPECT_TRUE(S_ISFIFO(StatusOf(folder.Path("fifo")).st_mode));
    EXPECT_EQ(ModeOf(folder.Path("fifo")), 0644U);
    EXPECT_EQ(FailureOf([&] { CreateFifo(folder.Location("fifo")); }), "FileFoundError 17");
    EXPECT_EQ(FailureOf([&] { CreateFifo(folder.Location()); }), "FileFoundError 17");
    EXPECT_EQ(FailureOf([&] { CreateFifo(folder.Location("missing/fifo")); }), "FileCreateFailed 2");
    EXPECT_EQ(FailureOf([] { CreateFifo(FileLocation()); }), "EmptyFileLocationError 0");
}

TEST(CreateDirectory, MakesADirectoryWithTheModeLessTheUmask) {
    TemporaryFolder const folder;
    UmaskScope const scope(0027);
    CreateDirectory(folder.Location("directory"), DirectoryCreatingInfo{.mode = 0777});
    EXPECT_TRUE(S_ISDIR(StatusOf(folder.Path("directory")).st_mode));
    EXPECT_EQ(ModeOf(folder.Path("directory")), 0750U);
    CreateDirectory(folder.Location("default"));
    EXPECT_EQ(ModeOf(folder.Path("default")), 0750U);
}

TEST(CreateDirectory, LeavesWhatIsThere) {
    TemporaryFolder const folder;
    folder.Write("file", "kept");
    folder.MakeFolder("directory");
    folder.MakeLink("missing", "dangling");
    for (char const* const name : {"file", "directory", "dangling"})
        EXPECT_EQ(FailureOf([&] { CreateDirectory(folder.Location(name)); }), "DirectoryFoundError 17")
            << name;
    EXPECT_EQ(folder.Read("file"), "kept");
}

TEST(CreateDirectory, ReportsOtherFailures) {
    TemporaryFolder const folder;
    EXPECT_EQ(FailureOf([&] { CreateDirectory(folder.Location("missing/x")); }), "DirectoryCreateFailed 2");
    EXPECT_EQ(FailureOf([] { CreateDirectory(FileLocation()); }), "EmptyFileLocationError 0");
}

TEST(CreateDirectoryForUserAppAccess, LetsNobodyElseIn) {
    TemporaryFolder const folder;
    UmaskScope const scope(0);
    CreateDirectoryForUserAppAccess(folder.Location("directory"));
    EXPECT_EQ(ModeOf(folder.Path("directory")), 0700U);
    EXPECT_EQ(FailureOf([&] { CreateDirectoryForUserAppAccess(folder.Location("directory")); }),
              "DirectoryFoundError 17");
    EXPECT_EQ(FailureOf([] { CreateDirectoryForUserAppAccess(FileLocation()); }), "EmptyFileLocationError 0");
}

TEST(ForceDirectoryExistence, MakesTheDirectoryOrLeavesIt) {
    TemporaryFolder const folder;
    UmaskScope const scope(0);
    ForceDirectoryExistence(folder.Location("directory"), DirectoryCreatingInfo{.mode = 0711});
    EXPECT_EQ(ModeOf(folder.Path("directory")), 0711U);
    folder.Write("directory/file", "kept");
    ForceDirectoryExistence(folder.Location("directory"), DirectoryCreatingInfo{.mode = 0700});
    EXPECT_EQ(ModeOf(folder.Path("directory")), 0711U);
    EXPECT_EQ(folder.Read("directory/file"), "kept");
    folder.MakeLink("directory", "link");
    EXPECT_NO_THROW(ForceDirectoryExistence(folder.Location("link")));
    EXPECT_NO_THROW(ForceDirectoryExistence(FileLocation("/"_utf8)));
}

TEST(ForceDirectoryExistence, ReportsWhatStandsInItsWay) {
    TemporaryFolder const folder;
    folder.Write("file", "kept");
    folder.MakeLink("missing", "dangling");
    EXPECT_EQ(FailureOf([&] { ForceDirectoryExistence(folder.Location("file")); }), "FileFoundError 17");
    EXPECT_EQ(FailureOf([&] { ForceDirectoryExistence(folder.Location("dangling")); }), "FileFoundError 17");
    EXPECT_EQ(FailureOf([&] { ForceDirectoryExistence(folder.Location("missing/x")); }),
              "FileNotFoundError 2");
    EXPECT_EQ(FailureOf([&] { ForceDirectoryExistence(folder.Location("file/x")); }),
              "DirectoryNotFoundError 20");
    EXPECT_EQ(FailureOf([] { ForceDirectoryExistence(FileLocation()); }), "EmptyFileLocationError 0");
}

TEST(CreateDirectoryTree, MakesAllThatIsMissing) {
    TemporaryFolder const folder;
    UmaskScope const scope(0);
    CreateDirectoryTree(folder.Location("a/b/c"));
    for (char const* const name : {"a", "a/b", "a/b/c"}) {
        EXPECT_TRUE(S_ISDIR(StatusOf(folder.Path(name)).st_mode)) << name;
        EXPECT_EQ(ModeOf(folder.Path(name)), 0755U) << name;
    }
    CreateDirectoryTree(folder.Location("a/b/c"));
    CreateDirectoryTree(folder.Location("a/x"));
    EXPECT_TRUE(folder.Has("a/x"));
    CreateDirectoryTree(FileLocation("/"_utf8));
}

TEST(CreateDirectoryTree, TakesPathsAsTheyAreWritten) {
    TemporaryFolder const folder;
    folder.MakeFolder("directory");
    folder.MakeLink("directory", "link");
    CreateDirectoryTree(folder.Location("link/a"));
    EXPECT_TRUE(folder.Has("directory/a"));
    CreateDirectoryTree(folder.Location("b/../c"));
    EXPECT_TRUE(folder.Has("b") && folder.Has("c"));
    CreateDirectoryTree(folder.Location("d//e/./f//"));
    EXPECT_TRUE(folder.Has("d/e/f"));
    std::string const bytes = folder.Path("g\xE4/h");
    CreateDirectoryTree(FileLocation(UStringRef<Binary8Bit>(Binary8Bit(), MakeConstData(bytes))));
    EXPECT_TRUE(folder.Has("g\xE4/h"));
}

TEST(CreateDirectoryTree, ReportsAFileOnTheWay) {
    TemporaryFolder const folder;
    folder.Write("file", "kept");
    folder.MakeLink("missing", "dangling");
    for (char const* const name : {"file", "file/a", "file/a/b/c", "dangling", "dangling/a"})
        EXPECT_EQ(FailureOf([&] { CreateDirectoryTree(folder.Location(name)); }), "FileFoundError 17")
            << name;
    try {
        CreateDirectoryTree(folder.Location("file/a/b"));
        ADD_FAILURE();
    } catch (FileFoundError const& failure) {
        EXPECT_EQ(MakeString(failure.uwhat()), "File error \"14FileFoundError\" on \"" + folder.Path("file") +
                                                   "\" : \"Error 0x17%: File exists\"");
    }
    EXPECT_EQ(EntriesIn(folder), 2);
}

TEST(CreateDirectoryTree, RefusesWhatIsTooLongBeforeItMakesAnything) {
    TemporaryFolder const folder;
    std::size_t const room = PATH_MAX - 1 - folder.Path("").size();
    EXPECT_EQ(FailureOf([&] { CreateDirectoryTree(folder.Location(PathOfSize(room + 1))); }),
              "DirectoryNotFoundError 36");
    EXPECT_EQ(FailureOf([&] { CreateDirectoryTree(folder.Location(PathOfSize(2000001))); }),
              "DirectoryNotFoundError 36");
    EXPECT_EQ(FailureOf([&] { CreateDirectoryTree(folder.Location("a/b/" + std::string(256, 'x') + "/c")); }),
              "DirectoryNotFoundError 36");
    EXPECT_EQ(FailureOf([&] { CreateDirectoryTree(folder.Location("a/" + std::string(256, 'x'))); }),
              "DirectoryNotFoundError 36");
    EXPECT_EQ(EntriesIn(folder), 0);
    CreateDirectoryTree(folder.Location("a/" + std::string(255, 'x')));
    EXPECT_TRUE(folder.Has("a/" + std::string(255, 'x')));
}

TEST(CreateDirectoryTree, MakesTheLongestPathThatTheSystemTakes) {
    TemporaryFolder const folder(QuickFolder());
    std::string const path = PathOfSize(PATH_MAX - 1 - folder.Path("").size());
    CreateDirectoryTree(folder.Location(path));
    EXPECT_TRUE(folder.Location(path).IsDirectory());
    DeleteContents(folder.Location());
}

TEST(CreateDirectoryTree, TakesBackWhatItMadeWhenItFails) {
    TemporaryFolder const folder;
    folder.MakeFolder("shared");
    ModeScope const open(folder.Path(), 0777);
    ModeScope const openBelow(folder.Path("shared"), 0777);
    // A directory that its maker may not enter stops the tree behind the first one.
    EXPECT_EQ(InChild([&] {
                  if (!BecomeOrdinaryUser()) return std::string(cNotAllowed);
                  umask(0777);
                  return FailureOf([&] { CreateDirectoryTree(folder.Location("shared/a/b/c")); });
              }),
              "DirectoryCreateFailed 13");
    EXPECT_TRUE(folder.Has("shared"));
    EXPECT_FALSE(folder.Has("shared/a"));
}

TEST(CreateDirectoryTree, ReportsWhatItMayNotLookAt) {
    TemporaryFolder const folder;
    folder.MakeFolder("closed");
    ModeScope const closed(folder.Path("closed"), 0);
    ModeScope const noWriting(folder.Path(), 0555);
    EXPECT_EQ(InChild([&] {
                  if (!BecomeOrdinaryUser()) return std::string(cNotAllowed);
                  return FailureOf([&] { CreateDirectoryTree(folder.Location("closed/a/b")); }) + ", " +
                         FailureOf([&] { CreateDirectoryTree(folder.Location("a/b")); });
              }),
              "FilePermissionError 13, DirectoryCreateFailed 13");
}

TEST(CreateDirectoryTree, ReportsAReadOnlyFileSystem) {
    TemporaryFolder const folder;
    std::string const result = InChild([&] {
        if (!MountMemoryForThisProcess(folder.Path(), MS_RDONLY)) return std::string(cNotAllowed);
        return FailureOf([&] { CreateDirectoryTree(folder.Location("a/b")); }) + ", " +
               FailureOf([&] { CreateFile(folder.Location("a")); });
    });
    if (result == cNotAllowed) GTEST_SKIP() << "A process may not mount a file system of its own here.";
    EXPECT_EQ(result, "DirectoryCreateFailed 30, FileCreateFailed 30");
}

TEST(CreateDirectoryTree, NeedsABeginningThatIsThere) {
    TemporaryFolder const folder;
    EXPECT_EQ(InChild([&] {
                  if (chdir(folder.Path().c_str()) != 0) return std::string(cNotAllowed);
                  std::string const missing =
                      FailureOf([] { CreateDirectoryTree(FileLocation("a/b"_utf8)); });
                  CreateDirectory(FileLocation("a"_utf8));
                  return missing + ", " + FailureOf([] { CreateDirectoryTree(FileLocation("a/b/c"_utf8)); });
              }),
              "InvalidFileLocation 0, nothing");
    EXPECT_TRUE(folder.Has("a/b/c"));
    EXPECT_EQ(FailureOf([] { CreateDirectoryTree(FileLocation()); }), "EmptyFileLocationError 0");
}

TEST(SetFileExecutable, GivesAndTakesTheBitsOfExecutionAndNoOthers) {
    TemporaryFolder const folder;
    folder.Write("file", "x");
    FileLocation const file = folder.Location("file");
    for (mode_t const mode : {0644U, 0600U, 0000U, 04755U, 0111U, 0100U}) {
        ASSERT_EQ(chmod(folder.Path("file").c_str(), mode), 0);
        SetFileExecutable(file, true);
        EXPECT_EQ(ModeOf(folder.Path("file")), mode | 0111U);
        SetFileExecutable(file, false);
        EXPECT_EQ(ModeOf(folder.Path("file")), mode & ~0111U);
    }
}

TEST(SetFileReadOnly, TakesAndGivesTheBitsOfWritingAndNoOthers) {
    TemporaryFolder const folder;
    folder.Write("file", "x");
    FileLocation const file = folder.Location("file");
    for (mode_t const mode : {0644U, 0600U, 0000U, 0755U, 0222U, 01777U}) {
        ASSERT_EQ(chmod(folder.Path("file").c_str(), mode), 0);
        SetFileReadOnly(file, true);
        EXPECT_EQ(ModeOf(folder.Path("file")), mode & ~0222U);
        SetFileReadOnly(file, false);
        EXPECT_EQ(ModeOf(folder.Path("file")), mode | 0222U);
    }
}

TEST(ChangingModes, FollowsLinksAndReportsFailures) {
    TemporaryFolder const folder;
    folder.Write("file", "x");
    folder.MakeLink("file", "link");
    Chmod(folder.Location("link"), 0604);
    EXPECT_EQ(ModeOf(folder.Path("file")), 0604U);
    FileLocation const missing = folder.Location("missing");
    EXPECT_EQ(FailureOf([&] { SetFileExecutable(missing, true); }), "FileNotFoundError 2");
    EXPECT_EQ(FailureOf([&] { SetFileReadOnly(missing, true); }), "FileNotFoundError 2");
    EXPECT_EQ(FailureOf([&] { Chmod(missing, 0600); }), "FileNotFoundError 2");
    EXPECT_EQ(FailureOf([&] { Chown(missing, getuid(), getgid()); }), "FileNotFoundError 2");
    FileLocation const empty;
    EXPECT_EQ(FailureOf([&] { SetFileExecutable(empty, true); }), "EmptyFileLocationError 0");
    EXPECT_EQ(FailureOf([&] { SetFileReadOnly(empty, true); }), "EmptyFileLocationError 0");
    EXPECT_EQ(FailureOf([&] { Chmod(empty, 0600); }), "EmptyFileLocationError 0");
    EXPECT_EQ(FailureOf([&] { Chown(empty, 0, 0); }), "EmptyFileLocationError 0");
}

TEST(Chown, GivesTheFileToAnother) {
    TemporaryFolder const folder;
    folder.Write("file", "x");
    if (geteuid() == 0) {
        Chown(folder.Location("file"), 12, 34);
        EXPECT_EQ(StatusOf(folder.Path("file")).st_uid, 12U);
        EXPECT_EQ(StatusOf(folder.Path("file")).st_gid, 34U);
    }
    ModeScope const open(folder.Path(), 0777);
    EXPECT_EQ(InChild([&] {
                  if (!BecomeOrdinaryUser()) return std::string(cNotAllowed);
                  return FailureOf([&] { Chown(folder.Location("file"), 0, 0); }) + ", " +
                         FailureOf([&] { Chmod(FileLocation("/"_utf8), 0777); });
              }),
              "FilePermissionError 1, FilePermissionError 1");
}

TEST(CalculateFreeSpace, GivesWhatTheFileSystemHasForOrdinaryUsers) {
    TemporaryFolder const folder;
    std::string const result = InChild([&] {
        if (!MountMemoryForThisProcess(folder.Path(), 0, "size=1048576")) return std::string(cNotAllowed);
        return std::to_string(CalculateFreeSpace(folder.Location()));
    });
    if (result == cNotAllowed) GTEST_SKIP() << "A process may not mount a file system of its own here.";
    EXPECT_EQ(result, "1048576");
}

TEST(CalculateFreeSpace, GivesAllOnesWhenItCannotAsk) {
    TemporaryFolder const folder;
    EXPECT_EQ(CalculateFreeSpace(folder.Location("missing")), 18446744073709551615UL);
    EXPECT_LT(CalculateFreeSpace(folder.Location()), 9223372036854775808UL);
    EXPECT_EQ(FailureOf([] { CalculateFreeSpace(FileLocation()); }), "EmptyFileLocationError 0");
}

TEST(CalculateFreeSpace, GivesAllOnesForMoreThanASignedNumberHolds) {
    using UnixPlatform::BytesInBlocks;
    EXPECT_EQ(BytesInBlocks(0, 4096), 0U);
    EXPECT_EQ(BytesInBlocks(10, 0), 0U);
    EXPECT_EQ(BytesInBlocks(3, 4096), 12288U);
    EXPECT_EQ(BytesInBlocks(9223372036854775807UL, 1), 9223372036854775807UL);
    EXPECT_EQ(BytesInBlocks(9223372036854775808UL, 1), 18446744073709551615UL);
    EXPECT_EQ(BytesInBlocks(4503599627370495UL, 2048), 9223372036854773760UL);
    EXPECT_EQ(BytesInBlocks(4503599627370496UL, 2048), 18446744073709551615UL);
    EXPECT_EQ(BytesInBlocks(18446744073709551615UL, 18446744073709551615UL), 18446744073709551615UL);
    EXPECT_EQ(BytesInBlocks(4294967296UL, 4294967296UL), 18446744073709551615UL);
}

TEST(ForceRemoveInvalidFiles, DoesNothing) {
    TemporaryFolder const folder;
    folder.Write("file\n?*", "kept");
    ForceRemoveInvalidFiles(folder.Location(), 0);
    EXPECT_EQ(folder.Read("file\n?*"), "kept");
    EXPECT_EQ(FailureOf([] { ForceRemoveInvalidFiles(FileLocation(), 0); }), "EmptyFileLocationError 0");
}
