#include "files/CopyingFiles.h"

#include "files/DeletingFiles.h"
#include "files/FileErrors.h"
#include "foundation/Exceptions.h"

#include "tests/files/ChildProcess.h"
#include "tests/files/DisappearingFile.h"
#include "tests/files/FileTestSupport.h"
#include "tests/files/QuickFolder.h"
#include "tests/files/RecordedWaits.h"
#include "tests/files/SystemCalls.h"
#include "tests/support/LocaleScope.h"
#include "tests/support/TemporaryFolder.h"

#include <climits>
#include <csignal>
#include <fcntl.h>
#include <functional>
#include <gtest/gtest.h>
#include <memory>
#include <sys/resource.h>
#include <sys/stat.h>
#include <thread>

namespace {

struct stat LinkStatusOf(std::string const& path) {
    struct stat status = {};
    EXPECT_EQ(lstat(path.c_str(), &status), 0) << path;
    return status;
}

// Bytes that show where they stand.
std::string Contents(std::size_t size) {
    std::string contents;
    while (contents.size() < size) contents += std::to_string(contents.size()) + '\0';
    contents.resize(size);
    return contents;
}

// A folder on another file system than the usual one; null when the machine has none.
std::unique_ptr<TemporaryFolder> FolderElsewhere(TemporaryFolder const& here) {
    std::error_code none;
    if (!std::filesystem::is_directory("/dev/shm", none)) return nullptr;
    auto elsewhere = std::make_unique<TemporaryFolder>("/dev/shm");
    bool const isElsewhere = LinkStatusOf(elsewhere->Path()).st_dev != LinkStatusOf(here.Path()).st_dev;
    return isElsewhere ? std::move(elsewhere) : nullptr;
}

constexpr char const* cOneFileSystem = "/dev/shm and the folder for temporary files are one file system.";

struct Operation {
    char const* name;
    void (*call)(FileLocation const&, FileLocation const&);
};

Operation const cOperations[] = {
    {"CopyFile", CopyFile},
    {"ForceCopyFile", ForceCopyFile},
    {"MoveFile", MoveFile},
    {"ForceMoveFile", ForceMoveFile},
    {"CopyDirectoryContents", CopyDirectoryContents},
};

// A tree of files and directories of all sizes.
void MakeTree(TemporaryFolder const& folder, std::string const& name) {
    std::filesystem::create_directories(folder.Path(name + "/a/b"));
    folder.MakeFolder(name + "/empty");
    folder.Write(name + "/file", "1");
    folder.Write(name + "/.hidden", "2");
    folder.Write(name + "/no text \xE4\xFF", "3");
    folder.Write(name + "/a/file", Contents(70000));
    folder.Write(name + "/a/b/file", "");
    folder.MakeLink("../file", name + "/a/link");
}

void ExpectTree(TemporaryFolder const& folder, std::string const& name) {
    EXPECT_EQ(folder.Read(name + "/file"), "1");
    EXPECT_EQ(folder.Read(name + "/.hidden"), "2");
    EXPECT_EQ(folder.Read(name + "/no text \xE4\xFF"), "3");
    EXPECT_EQ(folder.Read(name + "/a/file"), Contents(70000));
    EXPECT_TRUE(folder.Has(name + "/a/b/file"));
    EXPECT_EQ(folder.Read(name + "/a/b/file"), "");
    EXPECT_TRUE(std::filesystem::is_empty(folder.Path(name + "/empty")));
    EXPECT_EQ(folder.Read(name + "/a/link"), "1");
    EXPECT_TRUE(S_ISREG(LinkStatusOf(folder.Path(name + "/a/link")).st_mode));
}

// What a link says, be there something or not.
std::string LinkText(TemporaryFolder const& folder, std::string const& name) {
    return std::filesystem::read_symlink(folder.Path(name)).string();
}

FileLocation Binary(std::string const& path) {
    return FileLocation(UStringRef<Binary8Bit>(Binary8Bit(), MakeConstData(path)));
}

// "FileNotFoundError 2 on a" for a failure that names the file "a" of the folder; without the end for one
// that names no file, or more than one.
std::string FailureWithName(TemporaryFolder const& folder, std::function<void()> const& act) {
    std::string name;
    std::string const failure = FailureOf([&] {
        try {
            act();
        } catch (FileIOError const& thrown) {
            std::string const start = "\" on \"" + folder.Path("");
            std::string const sentence = MakeString(thrown.uwhat());
            std::size_t const found = sentence.find(start);
            std::size_t const end = sentence.find('"', found + start.size());
            bool const isOne = found != std::string::npos && sentence.find("and \"") == std::string::npos;
            if (isOne) name = " on " + sentence.substr(found + start.size(), end - found - start.size());
            throw;
        }
    });
    return failure + name;
}

} // namespace

TEST(CopyingFiles, RefusesEmptyLocations) {
    TemporaryFolder const folder;
    folder.Write("file", "kept");
    for (Operation const& operation : cOperations) {
        FileLocation const file = folder.Location("file");
        FileLocation const empty;
        EXPECT_EQ(FailureOf([&] { operation.call(empty, file); }), "EmptyFileLocationError 0")
            << operation.name;
        EXPECT_EQ(FailureOf([&] { operation.call(file, empty); }), "EmptyFileLocationError 0")
            << operation.name;
        EXPECT_EQ(FailureOf([&] { operation.call(empty, empty); }), "EmptyFileLocationError 0")
            << operation.name;
    }
    EXPECT_EQ(folder.Read("file"), "kept");
}

TEST(CopyingFiles, NamesWhatIsMissingAndWhatIsInTheWay) {
    TemporaryFolder const folder;
    folder.Write("file", "x");
    folder.Write("other", "x");
    folder.MakeFolder("directory");
    folder.MakeFolder("links");
    folder.MakeLink("..", "links/up");
    folder.MakeFolder("other-links");
    folder.MakeLink("..", "other-links/up");
    struct {
        Operation operation;
        char const* source;
        char const* target;
        char const* failure;
    } const cases[] = {
        {cOperations[0], "missing", "target", "FileNotFoundError 2 on missing"},
        {cOperations[0], "missing", "other", "FileNotFoundError 2 on missing"},
        {cOperations[0], "file", "other", "FileExistsError 17 on other"},
        {cOperations[0], "file", "missing/target", "FileNotFoundError 2 on missing/target"},
        {cOperations[1], "missing", "other", "FileNotFoundError 2 on missing"},
        {cOperations[1], "directory", "other", "FileNotFoundError 0 on directory"},
        {cOperations[1], "file", "missing/target", "FileNotFoundError 2 on missing/target"},
        {cOperations[2], "missing", "other", "FileNotFoundError 2 on missing"},
        {cOperations[2], "file", "other", "FileIOError 0 on other"},
        {cOperations[3], "missing", "other", "FileNotFoundError 2 on missing"},
        {cOperations[3], "missing", "target", "FileNotFoundError 2 on missing"},
        {cOperations[4], "missing", "target", "DirectoryNotFoundError 2 on missing"},
        {cOperations[4], "links", "other-links", "FileExistsError 17 on other-links/up"},
    };
    for (auto const& [operation, source, target, failure] : cases)
        EXPECT_EQ(
            FailureWithName(folder, [&, &call = operation.call, &from = source,
                                     &to = target] { call(folder.Location(from), folder.Location(to)); }),
            failure)
            << operation.name << ' ' << source << ' ' << target;
}

TEST(CopyFile, CopiesFilesOfAnySize) {
    TemporaryFolder const folder;
    for (std::size_t const size : {0UL, 1UL, 65535UL, 65536UL, 65537UL, 131072UL, 1000000UL}) {
        std::string const name = std::to_string(size);
        folder.Write("source", Contents(size));
        auto const descriptors = OpenDescriptors();
        CopyFile(folder.Location("source"), folder.Location(name));
        EXPECT_EQ(OpenDescriptors(), descriptors);
        EXPECT_TRUE(folder.Has(name));
        EXPECT_TRUE(folder.Read(name) == Contents(size)) << size;
        EXPECT_EQ(folder.Read("source").size(), size);
    }
}

TEST(CopyFile, ReadsAndWritesInChunksOfSixtyFourKibibytes) {
    TemporaryFolder const folder;
    folder.Write("source", Contents(200000));
    unsigned long const reads = CallCount(SystemCall::Read);
    unsigned long const writes = CallCount(SystemCall::Write);
    CopyFile(folder.Location("source"), folder.Location("target"));
    EXPECT_EQ(CallCount(SystemCall::Read) - reads, 4U);
    EXPECT_EQ(CallCount(SystemCall::Write) - writes, 4U);
}

TEST(CopyFile, WritesAllOfWhatTheSystemTakesInPieces) {
    TemporaryFolder const folder;
    folder.Write("source", Contents(100000));
    {
        ShortTransfers const transfers(777);
        CopyFile(folder.Location("source"), folder.Location("target"));
    }
    EXPECT_TRUE(folder.Read("target") == Contents(100000));
}

TEST(CopyFile, LeavesWhatIsThere) {
    TemporaryFolder const folder;
    folder.Write("source", "new");
    folder.Write("file", "kept");
    folder.MakeFolder("directory");
    folder.MakeLink("missing", "dangling");
    for (char const* const name : {"file", "directory", "dangling", "source"})
        EXPECT_EQ(FailureOf([&] { CopyFile(folder.Location("source"), folder.Location(name)); }),
                  "FileExistsError 17")
            << name;
    EXPECT_EQ(folder.Read("file"), "kept");
    EXPECT_EQ(folder.Read("source"), "new");
    EXPECT_FALSE(folder.Has("missing"));
}

TEST(CopyFile, NeedsASource) {
    TemporaryFolder const folder;
    folder.Write("file", "x");
    folder.MakeLink("missing", "dangling");
    auto const failure = [&](char const* name) {
        return FailureOf([&] { CopyFile(folder.Location(name), folder.Location("target")); });
    };
    EXPECT_EQ(failure("missing"), "FileNotFoundError 2");
    EXPECT_EQ(failure("dangling"), "FileNotFoundError 2");
    EXPECT_EQ(failure("file/below"), "FileNotFoundError 20");
    EXPECT_FALSE(folder.Has("target"));
    EXPECT_EQ(FailureOf([&] { CopyFile(folder.Location("file"), folder.Location("missing/target")); }),
              "FileNotFoundError 2");
}

TEST(CopyFile, LeavesNothingWhenTheSourceCannotBeOpened) {
    TemporaryFolder const folder;
    EXPECT_EQ(FailureOf([&] { CopyFile(FileLocation("/proc/kmsg"_utf8), folder.Location("target")); }),
              "FileIOError 0");
    EXPECT_FALSE(folder.Has("target"));
    folder.Write("file", "x");
    {
        FailingCall const failing(SystemCall::Open, EACCES);
        EXPECT_EQ(FailureOf([&] { CopyFile(folder.Location("file"), folder.Location("target")); }),
                  "FilePermissionError 13");
    }
    EXPECT_FALSE(folder.Has("target"));
}

TEST(CopyFile, LeavesThePartThatWasWritten) {
    TemporaryFolder const folder;
    folder.Write("source", Contents(200000));
    {
        FailingCall const failing(SystemCall::Write, ENOSPC, 1, 2);
        EXPECT_EQ(FailureOf([&] { CopyFile(folder.Location("source"), folder.Location("target")); }),
                  "FileDiskFullError 28");
    }
    EXPECT_TRUE(folder.Read("target") == Contents(131072));
    EXPECT_TRUE(folder.Read("source") == Contents(200000));
}

TEST(CopyFile, ReportsAFullFileSystem) {
    TemporaryFolder const folder;
    folder.Write("source", Contents(300000));
    folder.MakeFolder("small");
    std::string const result = InChild([&] {
        if (!MountMemoryForThisProcess(folder.Path("small"), 0, "size=262144"))
            return std::string(cNotAllowed);
        std::string const failure =
            FailureOf([&] { CopyFile(folder.Location("source"), folder.Location("small/target")); });
        bool const isPart =
            folder.Has("small/target") && Contents(300000).starts_with(folder.Read("small/target"));
        return failure + (isPart ? ", a part" : ", no part");
    });
    if (result == cNotAllowed) GTEST_SKIP() << "A process may not mount a file system of its own here.";
    EXPECT_EQ(result, "FileDiskFullError 28, a part");
}

TEST(CopyFile, ReportsAFileThatMayNotGrowAsLarge) {
    TemporaryFolder const folder;
    folder.Write("source", Contents(300000));
    EXPECT_EQ(InChild([&] {
                  rlimit const limit{100000, 100000};
                  std::signal(SIGXFSZ, SIG_IGN);
                  if (setrlimit(RLIMIT_FSIZE, &limit) != 0) return std::string(cNotAllowed);
                  return FailureOf([&] { CopyFile(folder.Location("source"), folder.Location("target")); });
              }),
              "FileIOError 27");
    EXPECT_TRUE(folder.Read("target") == Contents(100000));
    EXPECT_EQ(folder.Read("source").size(), 300000U);
}

TEST(CopyingFiles, ReportsAReadOnlyFileSystem) {
    TemporaryFolder const folder;
    folder.Write("file", "kept");
    folder.MakeFolder("directory");
    folder.Write("directory/file", "kept");
    folder.MakeFolder("mounted");
    std::string const result = InChild([&] {
        if (!MountMemoryForThisProcess(folder.Path("mounted"), MS_RDONLY)) return std::string(cNotAllowed);
        std::string failures;
        for (Operation const& operation : cOperations) {
            char const* const source = operation.call == &CopyDirectoryContents ? "directory" : "file";
            failures += FailureOf([&] {
                            operation.call(folder.Location(source), folder.Location("mounted/target"));
                        }) +
                        '\n';
        }
        return failures;
    });
    if (result == cNotAllowed) GTEST_SKIP() << "A process may not mount a file system of its own here.";
    EXPECT_EQ(result,
              "FileIOError 30\nFileIOError 30\nFileIOError 30\nFileIOError 30\nDirectoryCreateFailed 30\n");
    EXPECT_EQ(folder.Read("file"), "kept");
    EXPECT_EQ(folder.Read("directory/file"), "kept");
}

TEST(CopyFile, ReportsAFileThatCannotBeClosed) {
    TemporaryFolder const folder;
    folder.Write("source", "x");
    FailingCall const failing(SystemCall::Close, EIO);
    EXPECT_EQ(FailureOf([&] { CopyFile(folder.Location("source"), folder.Location("target")); }),
              "FileIOError 5");
}

TEST(CopyFile, FollowsALinkToItsFile) {
    TemporaryFolder const folder;
    folder.Write("file", "contents");
    folder.MakeLink("file", "link");
    CopyFile(folder.Location("link"), folder.Location("target"));
    EXPECT_EQ(folder.Read("target"), "contents");
    EXPECT_TRUE(S_ISREG(LinkStatusOf(folder.Path("target")).st_mode));
}

TEST(CopyFile, CopiesFilesWithoutALength) {
    TemporaryFolder const folder;
    CopyFile(FileLocation("/proc/self/status"_utf8), folder.Location("status"));
    EXPECT_EQ(folder.Read("status").substr(0, 17), "Name:\tfiles_tests");

    ASSERT_EQ(mkfifo(folder.Path("fifo").c_str(), 0600), 0);
    std::thread writer([&] { folder.Write("fifo", Contents(100000)); });
    CopyFile(folder.Location("fifo"), folder.Location("target"));
    writer.join();
    EXPECT_TRUE(folder.Read("target") == Contents(100000));
}

TEST(CopyFile, ReportsADirectory) {
    TemporaryFolder const folder;
    folder.MakeFolder("directory");
    folder.Write("directory/file", "x");
    EXPECT_THROW(CopyFile(folder.Location("directory"), folder.Location("target")), FileIOError);
}

TEST(CopyFile, MakesTheCopyAsAnyNewFile) {
    TemporaryFolder const folder;
    folder.Write("source", "x");
    ASSERT_EQ(chmod(folder.Path("source").c_str(), 0700), 0);
    mode_t const before = umask(0027);
    CopyFile(folder.Location("source"), folder.Location("target"));
    umask(before);
    EXPECT_EQ(LinkStatusOf(folder.Path("target")).st_mode & 07777, 0640U);
}

TEST(ForceCopyFile, ReplacesWhatIsThere) {
    TemporaryFolder const folder;
    folder.Write("source", "new");
    folder.Write("kept", "kept");
    folder.Write("file", "older and longer");
    folder.MakeFolder("empty");
    folder.MakeLink("kept", "link");
    folder.MakeLink("missing", "dangling");
    ASSERT_EQ(mkfifo(folder.Path("fifo").c_str(), 0600), 0);
    for (char const* const name : {"file", "empty", "link", "dangling", "fifo", "absent"}) {
        ForceCopyFile(folder.Location("source"), folder.Location(name));
        EXPECT_EQ(folder.Read(name), "new") << name;
        EXPECT_TRUE(S_ISREG(LinkStatusOf(folder.Path(name)).st_mode)) << name;
    }
    EXPECT_EQ(folder.Read("kept"), "kept");
    EXPECT_FALSE(folder.Has("missing"));
}

TEST(ForceCopyFile, LeavesADirectoryThatIsNotEmpty) {
    TemporaryFolder const folder;
    folder.Write("source", "new");
    folder.MakeFolder("full");
    folder.Write("full/file", "kept");
    EXPECT_EQ(FailureOf([&] { ForceCopyFile(folder.Location("source"), folder.Location("full")); }),
              "FileIOError 39");
    EXPECT_EQ(folder.Read("full/file"), "kept");
}

TEST(ForceCopyFile, NeedsARegularFile) {
    TemporaryFolder const folder;
    folder.Write("target", "kept");
    folder.MakeFolder("directory");
    folder.MakeLink("missing", "dangling");
    ASSERT_EQ(mkfifo(folder.Path("fifo").c_str(), 0600), 0);
    auto const failure = [&](char const* name) {
        return FailureOf([&] { ForceCopyFile(folder.Location(name), folder.Location("target")); });
    };
    EXPECT_EQ(failure("missing"), "FileNotFoundError 2");
    EXPECT_EQ(failure("dangling"), "FileNotFoundError 2");
    EXPECT_EQ(failure("directory"), "FileNotFoundError 0");
    EXPECT_EQ(failure("fifo"), "FileNotFoundError 0");
    EXPECT_EQ(folder.Read("target"), "kept");
}

TEST(ForceCopyFile, LosesNothingWhenItCopiesAFileToItself) {
    TemporaryFolder const folder;
    folder.MakeFolder("directory");
    folder.Write("directory/file", "kept");
    folder.MakeLink("directory", "other-way");
    ForceCopyFile(folder.Location("directory/file"), folder.Location("directory/file"));
    EXPECT_EQ(folder.Read("directory/file"), "kept");
    auto const inode = LinkStatusOf(folder.Path("directory/file")).st_ino;
    ForceCopyFile(folder.Location("directory/file"), folder.Location("other-way/file"));
    EXPECT_EQ(folder.Read("directory/file"), "kept");
    EXPECT_EQ(LinkStatusOf(folder.Path("directory/file")).st_ino, inode);
    ASSERT_EQ(link(folder.Path("directory/file").c_str(), folder.Path("hard").c_str()), 0);
    ForceCopyFile(folder.Location("directory/file"), folder.Location("hard"));
    EXPECT_EQ(folder.Read("directory/file"), "kept");
    EXPECT_EQ(folder.Read("hard"), "kept");
    ASSERT_EQ(link(folder.Path("hard").c_str(), folder.Path("harder").c_str()), 0);
    ForceCopyFile(folder.Location("hard"), folder.Location("hard"));
    EXPECT_EQ(folder.Read("hard"), "kept");
    folder.MakeLink("hard", "link");
    ForceCopyFile(folder.Location("hard"), folder.Location("link"));
    EXPECT_EQ(folder.Read("hard"), "kept");
    EXPECT_EQ(folder.Read("link"), "kept");
}

TEST(ForceCopyFile, LeavesAFileOfSeveralNamesAsItIsHoweverOneOfThemIsSpelled) {
    TemporaryFolder const folder;
    folder.MakeFolder("directory");
    folder.Write("directory/file", "kept");
    folder.MakeLink("directory", "other-way");
    folder.MakeLink("directory/file", "link");
    ASSERT_EQ(link(folder.Path("directory/file").c_str(), folder.Path("directory/hard").c_str()), 0);
    FileLocation const file = folder.Location("directory/file");
    for (char const* const spelling : {"directory/file", "directory/./file", "directory//file",
                                       "other-way/file", "directory/../other-way/file"}) {
        // Nothing is written anew, so that no failure can lose anything.
        FailingCall const failing(SystemCall::Write, ENOSPC, 100);
        ForceCopyFile(file, folder.Location(spelling));
        ForceCopyFile(folder.Location(spelling), file);
        ForceCopyFile(folder.Location("link"), folder.Location(spelling));
        EXPECT_EQ(LinkStatusOf(folder.Path("directory/file")).st_nlink, 2U) << spelling;
        EXPECT_EQ(folder.Read("directory/file"), "kept") << spelling;
    }
}

TEST(ForceCopyFile, MakesOfTheOtherNameOfAFileAFileOfItsOwn) {
    TemporaryFolder const folder;
    folder.MakeFolder("directory");
    folder.Write("file", "kept");
    for (char const* const name : {"hard", "directory/file"}) {
        ASSERT_EQ(link(folder.Path("file").c_str(), folder.Path(name).c_str()), 0);
        ForceCopyFile(folder.Location("file"), folder.Location(name));
        EXPECT_EQ(folder.Read("file"), "kept") << name;
        EXPECT_EQ(folder.Read(name), "kept") << name;
        EXPECT_NE(LinkStatusOf(folder.Path(name)).st_ino, LinkStatusOf(folder.Path("file")).st_ino) << name;
    }
}

TEST(ForceCopyFile, LosesNothingWhenItCopiesALinkToItsFile) {
    TemporaryFolder const folder;
    folder.Write("file", "kept");
    folder.MakeLink("file", "link");
    FailingCall const failing(SystemCall::Write, ENOSPC, 100);
    ForceCopyFile(folder.Location("link"), folder.Location("file"));
    EXPECT_EQ(folder.Read("file"), "kept");
    EXPECT_EQ(LinkText(folder, "link"), "file");
}

TEST(ForceCopyFile, ReplacesALinkOrADirectoryHoweverItsNameEnds) {
    for (char const* const end : {"", "/", "//", "/.", "/./"}) {
        TemporaryFolder const folder;
        folder.Write("source", "new");
        folder.MakeFolder("directory");
        folder.Write("directory/file", "kept");
        folder.MakeLink("directory", "link");
        folder.MakeFolder("empty");
        folder.Write("file", "old");
        for (char const* const name : {"link", "empty", "file"}) {
            EXPECT_EQ(
                FailureOf([&] { ForceCopyFile(folder.Location("source"), Binary(folder.Path(name) + end)); }),
                "nothing")
                << name << end;
            EXPECT_TRUE(S_ISREG(LinkStatusOf(folder.Path(name)).st_mode)) << name << end;
            EXPECT_EQ(folder.Read(name), "new") << name << end;
        }
        EXPECT_EQ(folder.Read("directory/file"), "kept") << end;
    }
}

TEST(ForceCopyFile, LeavesAFileAsItIsHoweverItsNameEnds) {
    TemporaryFolder const folder;
    folder.Write("file", "kept");
    auto const inode = LinkStatusOf(folder.Path("file")).st_ino;
    ForceCopyFile(folder.Location("file"), Binary(folder.Path("file/.")));
    EXPECT_EQ(LinkStatusOf(folder.Path("file")).st_ino, inode);
    EXPECT_EQ(folder.Read("file"), "kept");
}

TEST(MoveFile, MovesFilesDirectoriesAndLinks) {
    TemporaryFolder const folder;
    folder.Write("file", "contents");
    folder.MakeFolder("directory");
    folder.Write("directory/file", "x");
    folder.MakeLink("file", "link");
    folder.MakeLink("missing", "dangling");
    ASSERT_EQ(mkfifo(folder.Path("fifo").c_str(), 0600), 0);
    for (char const* const name : {"link", "dangling", "file", "directory", "fifo"}) {
        std::string const moved = std::string("moved-") + name;
        auto const inode = LinkStatusOf(folder.Path(name)).st_ino;
        MoveFile(folder.Location(name), folder.Location(moved));
        EXPECT_FALSE(folder.Has(name)) << name;
        EXPECT_EQ(LinkStatusOf(folder.Path(moved)).st_ino, inode) << name;
    }
    EXPECT_EQ(folder.Read("moved-file"), "contents");
    EXPECT_EQ(folder.Read("moved-directory/file"), "x");
}

TEST(MovingFiles, MovesWhatStandsUnderTheNameHoweverItEnds) {
    for (Operation const& operation : {cOperations[2], cOperations[3]})
        for (char const* const end : {"", "/", "//", "/.", "/./"}) {
            TemporaryFolder const folder;
            folder.MakeFolder("directory");
            folder.Write("directory/file", "kept");
            folder.MakeLink("directory", "link");
            std::string const spelling = std::string(operation.name) + ' ' + end;
            auto const move = [&](char const* source, char const* target) {
                return FailureOf([&] {
                    operation.call(Binary(folder.Path(source) + end), Binary(folder.Path(target) + end));
                });
            };
            EXPECT_EQ(move("link", "moved-link"), "nothing") << spelling;
            EXPECT_FALSE(folder.Has("link")) << spelling;
            ASSERT_TRUE(S_ISLNK(LinkStatusOf(folder.Path("moved-link")).st_mode)) << spelling;
            EXPECT_EQ(LinkText(folder, "moved-link"), "directory") << spelling;
            EXPECT_EQ(move("directory", "moved"), "nothing") << spelling;
            EXPECT_EQ(folder.Read("moved/file"), "kept") << spelling;
        }
}

TEST(MoveFile, LeavesALinkThatIsThereHoweverItsNameEnds) {
    TemporaryFolder const folder;
    folder.MakeFolder("source");
    folder.MakeLink("missing", "dangling");
    for (char const* const name : {"dangling", "dangling/", "dangling/."})
        EXPECT_EQ(FailureOf([&] { MoveFile(folder.Location("source"), Binary(folder.Path(name))); }),
                  "FileIOError 0")
            << name;
    EXPECT_TRUE(folder.Has("source"));
    EXPECT_FALSE(folder.Has("missing"));
}

TEST(MoveFile, LeavesWhatIsThere) {
    TemporaryFolder const folder;
    folder.Write("source", "new");
    folder.Write("file", "kept");
    folder.MakeFolder("directory");
    folder.MakeLink("missing", "dangling");
    for (char const* const name : {"file", "directory", "dangling", "source"}) {
        try {
            MoveFile(folder.Location("source"), folder.Location(name));
            ADD_FAILURE() << name;
        } catch (FileIOError const& failure) {
            EXPECT_EQ(MakeString(failure.uwhat()),
                      "File error \"11FileIOError\" on \"" + folder.Path(name) + "\"");
        }
    }
    EXPECT_EQ(folder.Read("file"), "kept");
    EXPECT_EQ(folder.Read("source"), "new");
}

TEST(MoveFile, ReportsFailures) {
    TemporaryFolder const folder;
    folder.Write("file", "x");
    folder.MakeFolder("directory");
    auto const failure = [&](char const* source, char const* target) {
        return FailureOf([&] { MoveFile(folder.Location(source), folder.Location(target)); });
    };
    EXPECT_EQ(failure("missing", "target"), "FileNotFoundError 2");
    EXPECT_EQ(failure("file/below", "target"), "FileNotFoundError 20");
    EXPECT_EQ(failure("file", "missing/target"), "FileMoveError 2");
    EXPECT_EQ(failure("directory", "directory/below"), "FileMoveError 22");
    try {
        MoveFile(folder.Location("file"), folder.Location("missing/target"));
        ADD_FAILURE();
    } catch (FileMoveError const& moved) {
        EXPECT_EQ(MakeString(moved.uwhat()), "File error \"13FileMoveError\" on \"" + folder.Path("file") +
                                                 "\" and \"" + folder.Path("missing/target") +
                                                 "\" : \"Error 0x2%: No such file or directory\"");
    }
    EXPECT_EQ(folder.Read("file"), "x");
}

TEST(MoveFile, CopiesAFileToAnotherFileSystemAndDeletesIt) {
    TemporaryFolder const here;
    auto const elsewhere = FolderElsewhere(here);
    if (!elsewhere) GTEST_SKIP() << cOneFileSystem;
    here.Write("file", Contents(200000));
    MoveFile(here.Location("file"), elsewhere->Location("file"));
    EXPECT_FALSE(here.Has("file"));
    EXPECT_TRUE(elsewhere->Read("file") == Contents(200000));
    MoveFile(elsewhere->Location("file"), here.Location("back"));
    EXPECT_FALSE(elsewhere->Has("file"));
    EXPECT_TRUE(here.Read("back") == Contents(200000));

    here.MakeLink("back", "link");
    MoveFile(here.Location("link"), elsewhere->Location("link"));
    EXPECT_FALSE(here.Has("link"));
    EXPECT_TRUE(here.Has("back"));
    EXPECT_EQ(elsewhere->Read("link").size(), 200000U);
}

TEST(MoveFile, CopiesADirectoryToAnotherFileSystemAndDeletesIt) {
    for (char const* const locale : {"C", "C.UTF-8", "de_DE.ISO-8859-1"}) {
        LocaleScope const scope(locale);
        TemporaryFolder const here;
        auto const elsewhere = FolderElsewhere(here);
        if (!elsewhere) GTEST_SKIP() << cOneFileSystem;
        MakeTree(here, "tree");
        MoveFile(here.Location("tree"), elsewhere->Location("moved"));
        EXPECT_FALSE(here.Has("tree")) << locale;
        ExpectTree(*elsewhere, "moved");
    }
}

TEST(MoveFile, LeavesWhatALinkToADirectoryLeadsTo) {
    TemporaryFolder const here;
    auto const elsewhere = FolderElsewhere(here);
    if (!elsewhere) GTEST_SKIP() << cOneFileSystem;
    MakeTree(here, "tree");
    here.MakeLink("tree", "link");
    MoveFile(here.Location("link"), elsewhere->Location("moved"));
    EXPECT_FALSE(here.Has("link"));
    EXPECT_EQ(here.Read("tree/file"), "1");
    ExpectTree(*elsewhere, "moved");
}

TEST(MoveFile, KeepsLinksToDirectoriesInATreeThatMovesToAnotherFileSystem) {
    TemporaryFolder const here;
    auto const elsewhere = FolderElsewhere(here);
    if (!elsewhere) GTEST_SKIP() << cOneFileSystem;
    here.MakeFolder("outside");
    here.Write("outside/file", "kept");
    MakeTree(here, "tree");
    here.MakeLink(here.Path("outside"), "tree/outside");
    here.MakeLink("../a", "tree/a/again");
    MoveFile(here.Location("tree"), elsewhere->Location("moved"));
    EXPECT_FALSE(here.Has("tree"));
    EXPECT_EQ(here.Read("outside/file"), "kept");
    ExpectTree(*elsewhere, "moved");
    EXPECT_EQ(LinkText(*elsewhere, "moved/outside"), here.Path("outside"));
    EXPECT_EQ(LinkText(*elsewhere, "moved/a/again"), "../a");
    EXPECT_EQ(elsewhere->Read("moved/a/again/again/link"), "1");
}

TEST(MoveFile, DeletesALinkHoweverItsNameEndsBehindACopyToAnotherFileSystem) {
    TemporaryFolder const here;
    auto const elsewhere = FolderElsewhere(here);
    if (!elsewhere) GTEST_SKIP() << cOneFileSystem;
    MakeTree(here, "tree");
    here.MakeLink("tree", "link");
    MoveFile(here.Location("link/."), elsewhere->Location("moved"));
    EXPECT_FALSE(here.Has("link"));
    EXPECT_EQ(here.Read("tree/file"), "1");
    ExpectTree(*elsewhere, "moved");
}

TEST(MoveFile, LeavesInPlaceWhatCannotBeCopiedToAnotherFileSystem) {
    TemporaryFolder const here;
    auto const elsewhere = FolderElsewhere(here);
    if (!elsewhere) GTEST_SKIP() << cOneFileSystem;
    ASSERT_EQ(mkfifo(here.Path("fifo").c_str(), 0600), 0);
    here.MakeLink("missing", "dangling");
    for (char const* const name : {"fifo", "dangling"}) {
        EXPECT_EQ(FailureOf([&] { MoveFile(here.Location(name), elsewhere->Location("target")); }),
                  "FileMoveError 18")
            << name;
        EXPECT_TRUE(here.Has(name)) << name;
        EXPECT_FALSE(elsewhere->Has("target")) << name;
    }
    here.MakeFolder("tree");
    here.Write("tree/a", "x");
    ASSERT_EQ(mkfifo(here.Path("tree/b").c_str(), 0600), 0);
    EXPECT_EQ(FailureOf([&] { MoveFile(here.Location("tree"), elsewhere->Location("target")); }),
              "FileItemError 95");
    EXPECT_TRUE(here.Has("tree/a") && here.Has("tree/b"));
}

TEST(MoveFile, LeavesBothWhenTheSourceCannotBeDeletedBehindTheCopy) {
    TemporaryFolder const here;
    auto const elsewhere = FolderElsewhere(here);
    if (!elsewhere) GTEST_SKIP() << cOneFileSystem;
    here.Write("file", "contents");
    ModeScope const noDeletion(here.Path(), 0555);
    ModeScope const open(elsewhere->Path(), 0777);
    EXPECT_EQ(InChild([&] {
                  if (!BecomeOrdinaryUser()) return std::string(cNotAllowed);
                  return FailureOf([&] { MoveFile(here.Location("file"), elsewhere->Location("file")); });
              }),
              "FilePermissionError 13");
    EXPECT_EQ(here.Read("file"), "contents");
    EXPECT_EQ(elsewhere->Read("file"), "contents");
}

TEST(MoveFile, LeavesTheCopyWholeWhenADirectoryCannotBeDeletedBehindIt) {
    TemporaryFolder const here;
    auto const elsewhere = FolderElsewhere(here);
    if (!elsewhere) GTEST_SKIP() << cOneFileSystem;
    here.MakeFolder("tree");
    here.Write("tree/file", "1");
    here.MakeFolder("tree/closed");
    here.Write("tree/closed/file", "2");
    ModeScope const open(here.Path(), 0777);
    ModeScope const openTree(here.Path("tree"), 0777);
    ModeScope const noDeletion(here.Path("tree/closed"), 0555);
    ModeScope const openElsewhere(elsewhere->Path(), 0777);
    EXPECT_EQ(InChild([&] {
                  if (!BecomeOrdinaryUser()) return std::string(cNotAllowed);
                  return FailureWithName(
                      here, [&] { MoveFile(here.Location("tree"), elsewhere->Location("moved")); });
              }),
              "FilePermissionError 13 on tree/closed/file");
    EXPECT_EQ(elsewhere->Read("moved/file"), "1");
    EXPECT_EQ(elsewhere->Read("moved/closed/file"), "2");
    EXPECT_EQ(here.Read("tree/closed/file"), "2");
    EXPECT_FALSE(here.Has("tree/file"));
}

TEST(MovingFiles, CopiesNoDirectoryIntoItselfByALinkFromAnotherFileSystem) {
    TemporaryFolder const here;
    auto const elsewhere = FolderElsewhere(here);
    if (!elsewhere) GTEST_SKIP() << cOneFileSystem;
    elsewhere->MakeFolder("directory");
    elsewhere->Write("directory/file", "kept");
    elsewhere->MakeFolder("directory/empty");
    elsewhere->MakeLink("empty", "directory/link");
    here.MakeLink(elsewhere->Path("directory"), "link");
    struct {
        Operation operation;
        char const* target;
    } const cases[] = {{cOperations[2], "directory/new"},   {cOperations[3], "directory/new"},
                       {cOperations[3], "directory/empty"}, {cOperations[3], "directory/empty/."},
                       {cOperations[3], "directory/link"},  {cOperations[2], "directory/empty/new"}};
    for (auto const& [operation, target] : cases) {
        EXPECT_EQ(FailureOf([&, &call = operation.call, &to = target] {
                      call(here.Location("link"), Binary(elsewhere->Path(to)));
                  }),
                  "FileMoveError 22")
            << operation.name << ' ' << target;
        EXPECT_TRUE(here.Has("link")) << target;
        EXPECT_FALSE(elsewhere->Has("directory/new")) << target;
        ASSERT_TRUE(elsewhere->Has("directory/empty")) << target;
        EXPECT_FALSE(elsewhere->Has("directory/empty/new")) << target;
        EXPECT_EQ(LinkText(*elsewhere, "directory/link"), "empty");
    }
    EXPECT_EQ(elsewhere->Read("directory/file"), "kept");
    // Beside the directory, and at an empty one elsewhere, it becomes a copy of it.
    elsewhere->MakeFolder("directory-2");
    ForceMoveFile(here.Location("link"), elsewhere->Location("directory-2"));
    EXPECT_EQ(elsewhere->Read("directory-2/file"), "kept");
    EXPECT_FALSE(here.Has("link"));
}

TEST(MovingFiles, CopiesNoDirectoryToAFileSystemThatIsMountedInIt) {
    TemporaryFolder const folder;
    std::filesystem::create_directories(folder.Path("directory/mount"));
    folder.Write("directory/file", "kept");
    std::string const result = InChild([&] {
        if (!MountMemoryForThisProcess(folder.Path("directory/mount"), 0)) return std::string(cNotAllowed);
        folder.MakeFolder("directory/mount/empty");
        std::string failures;
        for (char const* const target : {"directory/mount/new", "directory/mount/empty"})
            failures +=
                FailureOf([&] { ForceMoveFile(folder.Location("directory"), folder.Location(target)); }) +
                ", ";
        bool const isAsBefore = !folder.Has("directory/mount/new") && folder.Has("directory/mount/empty") &&
                                folder.Read("directory/file") == "kept";
        return failures + (isAsBefore ? "left" : "changed");
    });
    if (result == cNotAllowed) GTEST_SKIP() << "A process may not mount a file system of its own here.";
    EXPECT_EQ(result, "FileMoveError 22, FileMoveError 22, left");
}

TEST(ForceMoveFile, ReplacesWhatIsThere) {
    TemporaryFolder const folder;
    auto const moved = [&](char const* target) {
        folder.Write("source", "new");
        ForceMoveFile(folder.Location("source"), folder.Location(target));
        return !folder.Has("source") && folder.Read(target) == "new" &&
               S_ISREG(LinkStatusOf(folder.Path(target)).st_mode);
    };
    folder.Write("kept", "kept");
    folder.Write("file", "older and longer");
    folder.MakeLink("kept", "link");
    EXPECT_TRUE(moved("absent"));
    EXPECT_TRUE(moved("file"));
    EXPECT_TRUE(moved("link"));
    EXPECT_EQ(folder.Read("kept"), "kept");

    folder.MakeFolder("directory");
    folder.Write("directory/file", "x");
    folder.MakeFolder("empty");
    ForceMoveFile(folder.Location("directory"), folder.Location("empty"));
    EXPECT_FALSE(folder.Has("directory"));
    EXPECT_EQ(folder.Read("empty/file"), "x");
    folder.MakeFolder("another");
    EXPECT_EQ(FailureOf([&] { ForceMoveFile(folder.Location("another"), folder.Location("empty")); }),
              "FileIOError 39");
    EXPECT_EQ(folder.Read("empty/file"), "x");
}

TEST(ForceMoveFile, TakesAFileAndADirectoryForDifferentThings) {
    TemporaryFolder const folder;
    folder.Write("file", "x");
    folder.MakeFolder("directory");
    folder.MakeLink("directory", "link");
    folder.MakeLink("missing", "dangling");
    ASSERT_EQ(mkfifo(folder.Path("fifo").c_str(), 0600), 0);
    auto const report = [&](char const* source, char const* target) {
        try {
            ForceMoveFile(folder.Location(source), folder.Location(target));
        } catch (DirectoryFoundError const& failure) {
            return MakeString(failure.uwhat());
        }
        return std::string("nothing");
    };
    auto const on = [&](char const* name) {
        return "File error \"19DirectoryFoundError\" on \"" + folder.Path(name) +
               "\" : \"Error 0x21%: Is a directory\"";
    };
    EXPECT_EQ(report("file", "directory"), on("directory"));
    EXPECT_EQ(report("directory", "file"), on("directory"));
    EXPECT_EQ(report("file", "link"), on("link"));
    EXPECT_EQ(report("file", "fifo"), on("fifo"));
    EXPECT_EQ(report("fifo", "file"), on("file"));
    EXPECT_EQ(report("file", "dangling"), on("dangling"));
    EXPECT_TRUE(folder.Has("file") && folder.Has("directory") && folder.Has("fifo"));
}

TEST(ForceMoveFile, NeedsASource) {
    TemporaryFolder const folder;
    folder.Write("target", "kept");
    EXPECT_EQ(FailureOf([&] { ForceMoveFile(folder.Location("missing"), folder.Location("target")); }),
              "FileNotFoundError 2");
    EXPECT_EQ(folder.Read("target"), "kept");
}

TEST(ForceMoveFile, LosesNothingWhenItMovesSomethingToItself) {
    TemporaryFolder const folder;
    folder.MakeFolder("directory");
    folder.Write("directory/file", "kept");
    folder.MakeFolder("directory/empty");
    folder.MakeLink("directory", "other-way");
    ForceMoveFile(folder.Location("directory/file"), folder.Location("directory/file"));
    ForceMoveFile(folder.Location("directory/file"), folder.Location("other-way/file"));
    EXPECT_EQ(folder.Read("directory/file"), "kept");
    ForceMoveFile(folder.Location("directory/empty"), folder.Location("other-way/empty"));
    EXPECT_TRUE(folder.Has("directory/empty"));
    ASSERT_EQ(link(folder.Path("directory/file").c_str(), folder.Path("hard").c_str()), 0);
    ForceMoveFile(folder.Location("hard"), folder.Location("hard"));
    EXPECT_EQ(folder.Read("hard"), "kept");
    ForceMoveFile(folder.Location("hard"), folder.Location("directory/file"));
    EXPECT_FALSE(folder.Has("hard"));
    EXPECT_EQ(folder.Read("directory/file"), "kept");
}

TEST(ForceMoveFile, LosesNoNameOfAFileHoweverItIsSpelled) {
    TemporaryFolder const folder;
    folder.MakeFolder("directory");
    folder.Write("directory/file", "kept");
    folder.MakeLink("directory", "other-way");
    ASSERT_EQ(link(folder.Path("directory/file").c_str(), folder.Path("directory/hard").c_str()), 0);
    FileLocation const file = folder.Location("directory/file");
    for (char const* const spelling : {"directory/file", "directory/./file", "directory//file",
                                       "other-way/file", "directory/../other-way/file"}) {
        ForceMoveFile(file, folder.Location(spelling));
        ForceMoveFile(folder.Location(spelling), file);
        EXPECT_EQ(folder.Read("directory/file"), "kept") << spelling;
        EXPECT_EQ(folder.Read("directory/hard"), "kept") << spelling;
    }
    // The same name in another directory is another one.
    ASSERT_EQ(link(folder.Path("directory/file").c_str(), folder.Path("file").c_str()), 0);
    ForceMoveFile(file, folder.Location("file"));
    EXPECT_FALSE(folder.Has("directory/file"));
    EXPECT_EQ(folder.Read("file"), "kept");
    EXPECT_EQ(LinkStatusOf(folder.Path("file")).st_nlink, 2U);
}

TEST(ForceMoveFile, TakesNamesWithoutADirectory) {
    TemporaryFolder const folder;
    folder.Write("file", "kept");
    ASSERT_EQ(link(folder.Path("file").c_str(), folder.Path("hard").c_str()), 0);
    EXPECT_EQ(InChild([&] {
                  if (chdir(folder.Path().c_str()) != 0) return std::string(cNotAllowed);
                  return FailureOf(
                      [] { ForceMoveFile(FileLocation("file"_utf8), FileLocation("./file"_utf8)); });
              }),
              "nothing");
    EXPECT_EQ(folder.Read("file"), "kept");
}

TEST(ForceMoveFile, LosesNothingWhenItMovesALinkToWhatItLeadsTo) {
    TemporaryFolder const folder;
    folder.Write("file", "kept");
    folder.MakeFolder("directory");
    folder.MakeLink("file", "link");
    folder.MakeLink("directory", "directory-link");
    ForceMoveFile(folder.Location("link"), folder.Location("file"));
    EXPECT_FALSE(folder.Has("link"));
    EXPECT_EQ(folder.Read("file"), "kept");
    EXPECT_EQ(
        FailureOf([&] { ForceMoveFile(folder.Location("directory-link"), folder.Location("directory")); }),
        "FileMoveError 22");
    EXPECT_TRUE(S_ISDIR(LinkStatusOf(folder.Path("directory")).st_mode));
    EXPECT_TRUE(folder.Has("directory-link"));
}

TEST(ForceMoveFile, MakesALinkOfTheOtherNameOfItsFile) {
    TemporaryFolder const folder;
    folder.MakeFolder("directory");
    folder.Write("a", "kept");
    for (char const* const name : {"b", "directory/a"}) {
        ASSERT_EQ(link(folder.Path("a").c_str(), folder.Path(name).c_str()), 0);
        folder.MakeLink(folder.Path("a"), "l");
        ForceMoveFile(folder.Location("l"), folder.Location(name));
        EXPECT_FALSE(folder.Has("l")) << name;
        ASSERT_TRUE(S_ISLNK(LinkStatusOf(folder.Path(name)).st_mode)) << name;
        EXPECT_EQ(LinkText(folder, name), folder.Path("a")) << name;
        EXPECT_EQ(folder.Read(name), "kept") << name;
    }
    ASSERT_EQ(link(folder.Path("a").c_str(), folder.Path("c").c_str()), 0);
    folder.MakeLink("directory/../a", "l");
    ForceMoveFile(folder.Location("l"), folder.Location("a"));
    EXPECT_FALSE(folder.Has("l"));
    EXPECT_TRUE(S_ISREG(LinkStatusOf(folder.Path("a")).st_mode));
}

TEST(ForceMoveFile, LeavesWhatTheWayToTheSourceLeadsThrough) {
    TemporaryFolder const folder;
    folder.MakeFolder("directory");
    folder.Write("directory/file", "kept");
    folder.MakeFolder("directory/below");
    folder.MakeFolder("empty");
    folder.Write("file", "kept");
    struct {
        char const* text;
        char const* name;
    } const links[] = {{"last", "first"},
                       {"file", "last"},
                       {"./directory/../second", "long"},
                       {"first", "second"},
                       {"way/below", "by-way"},
                       {"directory", "way"},
                       {"one", "other"},
                       {"other", "one"},
                       {"gone", "dangling"},
                       {"missing", "gone"},
                       {"last", "directory/far"},
                       {"../last", "directory/near"},
                       {"empty/../directory", "up"}};
    for (auto const& [text, name] : links) folder.MakeLink(text, name);
    folder.MakeLink(folder.Path("last"), "whole");
    struct {
        char const* source;
        char const* target;
    } const cases[] = {{"first", "last"},
                       {"second", "first"},
                       {"second", "last"},
                       {"long", "second"},
                       {"long", "last"},
                       {"long", "first"},
                       {"by-way", "way"},
                       {"one", "other"},
                       {"dangling", "gone"},
                       {"directory/near", "last"},
                       {"whole", "last"},
                       {"way/below", "way"},
                       {"way/near", "last"},
                       {"first", "way/../last"},
                       {"up", "empty"},
                       {"directory/near/.", "last/."},
                       {"empty/../directory", "empty"}};
    for (auto const& [source, target] : cases) {
        EXPECT_EQ(FailureOf([&, &from = source, &to = target] {
                      ForceMoveFile(Binary(folder.Path(from)), Binary(folder.Path(to)));
                  }),
                  "FileMoveError 22")
            << source << ' ' << target;
        for (auto const& [text, name] : links)
            ASSERT_EQ(LinkText(folder, name), text) << source << ' ' << target;
        EXPECT_EQ(LinkText(folder, "whole"), folder.Path("last"));
        ASSERT_TRUE(folder.Has("empty") && folder.Has("directory/below"));
        EXPECT_EQ(folder.Read("file"), "kept");
    }
    // The way does not lead by a name of the same sound elsewhere, nor by a link that leads to the same file.
    folder.MakeLink("../file", "directory/last");
    ForceMoveFile(folder.Location("first"), folder.Location("directory/last"));
    EXPECT_EQ(LinkText(folder, "directory/last"), "last");
    folder.MakeLink("file", "third");
    ForceMoveFile(folder.Location("third"), folder.Location("last"));
    EXPECT_EQ(folder.Read("last"), "kept");
    EXPECT_FALSE(folder.Has("third"));
}

TEST(ForceMoveFile, GoesTheWayOfARelativePathFromTheCurrentDirectory) {
    TemporaryFolder const folder;
    folder.Write("file", "kept");
    folder.MakeFolder("directory");
    folder.MakeLink("last", "first");
    folder.MakeLink("file", "last");
    EXPECT_EQ(InChild([&] {
                  if (chdir(folder.Path("directory").c_str()) != 0) return std::string(cNotAllowed);
                  FileLocation const last("../last"_utf8);
                  std::string const up =
                      FailureOf([&] { ForceMoveFile(FileLocation("../first"_utf8), last); });
                  if (chdir("..") != 0) return std::string(cNotAllowed);
                  return up + ", " + FailureOf([] {
                             ForceMoveFile(FileLocation("first"_utf8), FileLocation("last"_utf8));
                         });
              }),
              "FileMoveError 22, FileMoveError 22");
    EXPECT_EQ(LinkText(folder, "last"), "file");
}

TEST(ForceMoveFile, MovesLinksThatLeadNowhere) {
    TemporaryFolder const folder;
    folder.MakeLink("circle", "circle");
    folder.MakeLink("two/x", "one");
    folder.MakeLink("one/x", "two");
    folder.MakeLink(std::string(300, 'x'), "long");
    folder.Write("file", "x");
    folder.MakeLink("file/below", "below-a-file");
    auto const descriptors = OpenDescriptors();
    for (char const* const name : {"circle", "one", "long", "below-a-file"}) {
        folder.MakeLink("anything", "target");
        std::string const text = LinkText(folder, name);
        EXPECT_EQ(FailureOf([&] { ForceMoveFile(folder.Location(name), folder.Location("target")); }),
                  "nothing")
            << name;
        EXPECT_EQ(LinkText(folder, "target"), text);
        std::filesystem::remove(folder.Path("target"));
    }
    EXPECT_EQ(OpenDescriptors(), descriptors);
}

TEST(ForceMoveFile, MovesALinkThatThisUserCannotFollow) {
    TemporaryFolder const folder;
    folder.MakeFolder("closed");
    folder.Write("closed/file", "x");
    folder.MakeLink("closed/file", "link");
    folder.MakeLink("anything", "target");
    ModeScope const open(folder.Path(), 0777);
    ModeScope const closed(folder.Path("closed"), 0);
    EXPECT_EQ(InChild([&] {
                  if (!BecomeOrdinaryUser()) return std::string(cNotAllowed);
                  return FailureOf(
                      [&] { ForceMoveFile(folder.Location("link"), folder.Location("target")); });
              }),
              "nothing");
    EXPECT_EQ(LinkText(folder, "target"), "closed/file");
}

TEST(ForceMoveFile, LeavesBothWhenTheSystemCannotTellWhereTheyAre) {
    TemporaryFolder const folder;
    folder.Write("file", "x");
    folder.MakeLink("file", "link");
    folder.MakeLink("file", "other");
    {
        FailingCall const failing(SystemCall::ReadLink, EIO);
        EXPECT_EQ(FailureWithName(folder,
                                  [&] { ForceMoveFile(folder.Location("link"), folder.Location("other")); }),
                  "FileIOError 5 on link");
    }
    EXPECT_TRUE(folder.Has("link") && folder.Has("other"));
    // Deeper than any path leads.
    std::string const result = InChild([&] {
        if (chdir(folder.Path().c_str()) != 0) return std::string(cNotAllowed);
        std::string const name(200, 'd');
        for (int level = 0; level < PATH_MAX / 200 + 1; ++level)
            if (mkdir(name.c_str(), 0700) != 0 || chdir(name.c_str()) != 0) return std::string(cNotAllowed);
        std::filesystem::create_directory("source");
        std::filesystem::create_directory("target");
        std::string const failure =
            FailureOf([] { ForceMoveFile(FileLocation("source"_utf8), FileLocation("target"_utf8)); });
        bool const areThere = access("source", F_OK) == 0 && access("target", F_OK) == 0;
        return failure + (areThere ? ", left" : ", lost");
    });
    DeleteContents(folder.Location());
    EXPECT_EQ(result, "DirectoryNotFoundError 36, left");
}

TEST(ForceMoveFile, LeavesTheTargetOfAMoveIntoTheSource) {
    TemporaryFolder const folder;
    std::filesystem::create_directories(folder.Path("directory/a/empty"));
    folder.MakeFolder("outside");
    folder.MakeLink("../../outside", "directory/a/link");
    folder.MakeLink("directory", "link");
    for (char const* const target :
         {"directory/a/empty", "directory/a/empty/.", "directory/../link/a/empty", "link/a/empty",
          "directory/a/link", "directory/a/link/", "directory/a/link/.", "link/a/link/./"})
        for (char const* const source : {"directory", "directory/."}) {
            EXPECT_EQ(
                FailureOf([&] { ForceMoveFile(Binary(folder.Path(source)), Binary(folder.Path(target))); }),
                "FileMoveError 22")
                << source << ' ' << target;
            ASSERT_TRUE(folder.Has("directory/a/empty")) << source << ' ' << target;
            ASSERT_TRUE(folder.Has("directory/a/link")) << source << ' ' << target;
        }

    // A link to there stands elsewhere, and so does a directory whose name begins alike.
    folder.MakeLink("directory/a", "link-below");
    ForceMoveFile(folder.Location("directory"), folder.Location("link-below"));
    EXPECT_TRUE(folder.Has("link-below/a/empty"));
    std::filesystem::create_directories(folder.Path("link-below-2/room"));
    ForceMoveFile(folder.Location("link-below"), folder.Location("link-below-2/room"));
    EXPECT_TRUE(folder.Has("link-below-2/room/a/empty"));
    // A link may go into the directory that it leads to.
    folder.MakeFolder("link-below-2/more-room");
    folder.MakeLink("link-below-2", "short");
    ForceMoveFile(folder.Location("short"), folder.Location("link-below-2/more-room"));
    EXPECT_EQ(LinkText(folder, "link-below-2/more-room"), "link-below-2");
}

TEST(ForceMoveFile, ReportsWhatDisappearsBeforeItIsAskedAgain) {
    for (char const* const name : {"source", "target"}) {
        TemporaryFolder const folder;
        folder.Write("source", "new");
        folder.Write("target", "old");
        DisappearingFile const disappearing(folder.Path(name), 2);
        std::string report = "nothing";
        try {
            ForceMoveFile(folder.Location("source"), folder.Location("target"));
        } catch (InvalidStats const& failure) {
            report = MakeString(failure.uwhat());
        }
        EXPECT_EQ(report, "File error \"12InvalidStats\" on \"" + folder.Path(name) + "\"");
        EXPECT_EQ(folder.Read("source"), *name == 's' ? "" : "new");
        EXPECT_EQ(folder.Read("target"), *name == 't' ? "" : "old");
    }
}

TEST(ForceMoveFile, ReplacesWhatIsThereOnAnotherFileSystem) {
    TemporaryFolder const here;
    auto const elsewhere = FolderElsewhere(here);
    if (!elsewhere) GTEST_SKIP() << cOneFileSystem;
    here.Write("file", "new");
    elsewhere->Write("file", "older and longer");
    ForceMoveFile(here.Location("file"), elsewhere->Location("file"));
    EXPECT_FALSE(here.Has("file"));
    EXPECT_EQ(elsewhere->Read("file"), "new");
}

TEST(CopyDirectoryContents, CopiesAllFilesAndDirectories) {
    for (char const* const locale : {"C", "C.UTF-8", "de_DE.ISO-8859-1"}) {
        LocaleScope const scope(locale);
        TemporaryFolder const folder;
        MakeTree(folder, "tree");
        auto const descriptors = OpenDescriptors();
        CopyDirectoryContents(folder.Location("tree"), folder.Location("new/copy"));
        EXPECT_EQ(OpenDescriptors(), descriptors);
        ExpectTree(folder, "new/copy");
        EXPECT_TRUE(S_ISLNK(LinkStatusOf(folder.Path("tree/a/link")).st_mode));
    }
}

TEST(CopyDirectoryContents, TakesBinaryLocations) {
    // In this encoding names and their UTF-8 have different bytes.
    for (char const* const locale : {"C", "C.UTF-8", "de_DE.ISO-8859-1"}) {
        LocaleScope const scope(locale);
        TemporaryFolder const folder;
        MakeTree(folder, "\xE4");
        auto const binary = [&](char const* name) {
            std::string const path = folder.Path(name);
            return FileLocation(UStringRef<Binary8Bit>(Binary8Bit(), MakeConstData(path)));
        };
        CopyDirectoryContents(binary("\xE4"), binary("\xF6"));
        ExpectTree(folder, "\xF6");
        CopyDirectoryContents(binary("\xE4"), folder.Location("text"));
        ExpectTree(folder, "text");
        CopyDirectoryContents(folder.Location("text"), binary("\xFC"));
        ExpectTree(folder, "\xFC");
    }
}

TEST(CopyDirectoryContents, TakesNamesInNoEncodingBelowATextPathOfAnotherEncodingThanUTF8) {
    LocaleScope const scope("ja_JP.EUC-JP");
    TemporaryFolder const folder;
    // Hiragana "a" and "i"; the file has no name in this encoding.
    folder.MakeFolder("\xA4\xA2");
    folder.Write("\xA4\xA2/\xFF", "x");
    FileLocation const source(folder.Path("\xA4\xA2").c_str());
    FileLocation const target(folder.Path("\xA4\xA4").c_str());
    ASSERT_FALSE(source.IsBinary() || target.IsBinary());
    CopyDirectoryContents(source, target);
    EXPECT_EQ(folder.Read("\xA4\xA4/\xFF"), "x");
}

TEST(CopyDirectoryContents, AddsToWhatIsThereAndReplacesNothing) {
    TemporaryFolder const folder;
    std::filesystem::create_directories(folder.Path("source/a"));
    folder.Write("source/a/new", "new");
    std::filesystem::create_directories(folder.Path("target/a"));
    folder.Write("target/a/file", "kept");
    CopyDirectoryContents(folder.Location("source"), folder.Location("target"));
    EXPECT_EQ(folder.Read("target/a/new"), "new");
    EXPECT_EQ(folder.Read("target/a/file"), "kept");

    folder.Write("source/a/file", "new");
    std::filesystem::remove(folder.Path("target/a/new"));
    RecordedWaits const waits;
    EXPECT_EQ(FailureOf([&] { CopyDirectoryContents(folder.Location("source"), folder.Location("target")); }),
              "FileExistsError 17");
    EXPECT_EQ(waits.Waits().size(), 8U);
    EXPECT_EQ(folder.Read("target/a/file"), "kept");
}

TEST(CopyDirectoryContents, TriesAFileAgain) {
    TemporaryFolder const folder;
    folder.MakeFolder("source");
    folder.Write("source/file", "x");
    folder.MakeFolder("target");
    folder.Write("target/file", "in the way");
    RecordedWaits const waits([&] { std::filesystem::remove(folder.Path("target/file")); });
    CopyDirectoryContents(folder.Location("source"), folder.Location("target"));
    EXPECT_EQ(folder.Read("target/file"), "x");
    EXPECT_EQ(waits.Waits(), std::vector<unsigned int>{40});
}

TEST(CopyDirectoryContents, NeedsADirectoryAndAPlaceForIt) {
    TemporaryFolder const folder;
    folder.Write("file", "kept");
    folder.MakeFolder("directory");
    auto const failure = [&](char const* source, char const* target) {
        return FailureOf([&] { CopyDirectoryContents(folder.Location(source), folder.Location(target)); });
    };
    EXPECT_EQ(failure("missing", "target"), "DirectoryNotFoundError 2");
    EXPECT_EQ(failure("file", "target"), "DirectoryNotFoundError 20");
    EXPECT_FALSE(folder.Has("target"));
    EXPECT_EQ(failure("directory", "file"), "FileFoundError 17");
    EXPECT_EQ(failure("directory", "file/below"), "FileFoundError 17");
    EXPECT_EQ(folder.Read("file"), "kept");
}

TEST(CopyDirectoryContents, ReportsAnItemThatIsNeitherFileNorDirectory) {
    TemporaryFolder const folder;
    auto const reportWith = [&](char const* name) {
        std::string report = "nothing";
        try {
            CopyDirectoryContents(folder.Location("source"), folder.Location("target"));
        } catch (FileItemError const& failure) {
            report = MakeString(failure.uwhat());
        }
        std::filesystem::remove(folder.Path(std::string("source/") + name));
        std::filesystem::remove_all(folder.Path("target"));
        return report;
    };
    auto const on = [&](char const* name) {
        return "File error \"13FileItemError\" on \"" + folder.Path(std::string("source/") + name) +
               "\" : \"Error 0x95%: Operation not supported\"";
    };
    folder.MakeFolder("source");
    ASSERT_EQ(mkfifo(folder.Path("source/fifo").c_str(), 0600), 0);
    EXPECT_EQ(reportWith("fifo"), on("fifo"));
    folder.MakeLink("missing", "source/dangling");
    EXPECT_EQ(reportWith("dangling"), on("dangling"));
    folder.MakeLink("/dev/zero", "source/device");
    EXPECT_EQ(reportWith("device"), on("device"));
    EXPECT_EQ(reportWith("none"), "nothing");
}

TEST(CopyDirectoryContents, CopiesLinksToDirectoriesAsTheyAreWritten) {
    TemporaryFolder const folder;
    folder.MakeFolder("outside");
    folder.Write("outside/file", "kept");
    folder.MakeFolder("source");
    struct {
        char const* name;
        std::string text;
    } const links[] = {{"up", ".."},
                       {"self", "."},
                       {"relative", "../outside"},
                       {"absolute", folder.Path("outside")},
                       {"further", "up"},
                       {"b\xFF", "../outside/"}};
    for (auto const& [name, text] : links) folder.MakeLink(text, std::string("source/") + name);
    CopyDirectoryContents(folder.Location("source"), folder.Location("target"));
    for (auto const& [name, text] : links)
        EXPECT_EQ(LinkText(folder, std::string("target/") + name), text) << name;
    EXPECT_EQ(folder.Read("target/relative/file"), "kept");

    EXPECT_EQ(FailureOf([&] { CopyDirectoryContents(folder.Location("source"), folder.Location("target")); }),
              "FileExistsError 17");
    EXPECT_EQ(folder.Read("outside/file"), "kept");
}

TEST(CopyDirectoryContents, ReportsALinkThatCannotBeMade) {
    TemporaryFolder const folder;
    folder.MakeFolder("source");
    folder.MakeLink("..", "source/up");
    folder.MakeFolder("target");
    ModeScope const open(folder.Path(), 0777);
    ModeScope const openSource(folder.Path("source"), 0777);
    ModeScope const noWriting(folder.Path("target"), 0555);
    EXPECT_EQ(InChild([&] {
                  if (!BecomeOrdinaryUser()) return std::string(cNotAllowed);
                  return FailureOf(
                      [&] { CopyDirectoryContents(folder.Location("source"), folder.Location("target")); });
              }),
              "FilePermissionError 13");
}

TEST(CopyDirectoryContents, NamesTheLinkThatCannotBeRead) {
    TemporaryFolder const folder;
    folder.MakeFolder("source");
    folder.MakeLink("..", "source/up");
    FailingCall const failing(SystemCall::ReadLink, EIO);
    EXPECT_EQ(
        FailureWithName(folder,
                        [&] { CopyDirectoryContents(folder.Location("source"), folder.Location("target")); }),
        "FileIOError 5 on source/up");
    EXPECT_FALSE(folder.Has("target/up"));
}

TEST(CopyDirectoryContents, DoesNotCopyACopyIntoItself) {
    TemporaryFolder const folder;
    folder.MakeFolder("tree");
    folder.Write("tree/file", "kept");
    auto const failure = [&](char const* target) {
        return FailureOf([&] { CopyDirectoryContents(folder.Location("tree"), folder.Location(target)); });
    };
    EXPECT_EQ(failure("tree"), "FileItemError 22");
    EXPECT_EQ(failure("tree/below/deeper"), "FileItemError 22");
    EXPECT_FALSE(folder.Has("tree/below/deeper/below/deeper"));
    folder.MakeLink("tree", "link");
    EXPECT_EQ(failure("link"), "FileItemError 22");
    EXPECT_EQ(folder.Read("tree/file"), "kept");
}

TEST(CopyDirectoryContents, ReportsADirectoryThatCannotBeRead) {
    TemporaryFolder const folder;
    folder.MakeFolder("tree");
    folder.MakeFolder("tree/closed");
    folder.Write("tree/closed/file", "x");
    folder.MakeFolder("copies");
    ModeScope const open(folder.Path(), 0777);
    ModeScope const noReading(folder.Path("tree/closed"), 0333);
    ModeScope const openTarget(folder.Path("copies"), 0777);
    EXPECT_EQ(InChild([&] {
                  if (!BecomeOrdinaryUser()) return std::string(cNotAllowed);
                  return FailureOf([&] {
                      CopyDirectoryContents(folder.Location("tree"), folder.Location("copies/tree"));
                  });
              }),
              "FilePermissionError 13");
}

TEST(CopyDirectoryContents, GoesAsDeepAsPathsLead) {
    TemporaryFolder const folder(QuickFolder());
    folder.MakeFolder("from");
    std::string path;
    while (folder.Path("from" + path + "/file").size() + 3 < PATH_MAX) {
        path += "/d";
        ASSERT_EQ(mkdir(folder.Path("from" + path).c_str(), 0700), 0);
    }
    folder.Write("from" + path + "/file", "deep");
    CopyDirectoryContents(folder.Location("from"), folder.Location("to"));
    EXPECT_EQ(folder.Read("to" + path + "/file"), "deep");
    // Paths of the target may end earlier; nothing is lost without a word then.
    std::string const longer(50, 'x');
    EXPECT_EQ(FailureOf([&] { CopyDirectoryContents(folder.Location("from"), folder.Location(longer)); }),
              "DirectoryNotFoundError 36");
    DeleteContents(folder.Location());
}

TEST(CopyDirectoryContents, CopiesTenThousandEntries) {
    TemporaryFolder const folder(QuickFolder());
    folder.MakeFolder("many");
    for (int number = 0; number < 10000; ++number)
        close(open(folder.Path("many/" + std::to_string(number)).c_str(), O_CREAT | O_WRONLY, 0600));
    CopyDirectoryContents(folder.Location("many"), folder.Location("copy"));
    EXPECT_EQ(std::distance(std::filesystem::directory_iterator(folder.Path("copy")),
                            std::filesystem::directory_iterator()),
              10000);
}
