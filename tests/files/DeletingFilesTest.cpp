#include "files/DeletingFiles.h"

#include "files/FileErrors.h"

#include "tests/files/ChildProcess.h"
#include "tests/files/DisappearingFile.h"
#include "tests/files/FileTestSupport.h"
#include "tests/files/QuickFolder.h"
#include "tests/support/LocaleScope.h"
#include "tests/support/TemporaryFolder.h"

#include <cerrno>
#include <fcntl.h>
#include <functional>
#include <gtest/gtest.h>
#include <sys/resource.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>
#include <vector>

namespace {

// Called behind each unlinkat of the library, as another process would come in between.
std::function<void(std::string const& name)> behindUnlink;

// For its scope.
class BehindUnlink {
public:
    explicit BehindUnlink(std::function<void(std::string const& name)> act) { behindUnlink = std::move(act); }
    BehindUnlink(BehindUnlink const&) = delete;
    BehindUnlink& operator=(BehindUnlink const&) = delete;
    ~BehindUnlink() { behindUnlink = nullptr; }
};

// Called in front of each rmdir of the library.
std::function<void(std::string const& path)> beforeRemoval;

// For its scope.
class BeforeRemoval {
public:
    explicit BeforeRemoval(std::function<void(std::string const& path)> act) {
        beforeRemoval = std::move(act);
    }
    BeforeRemoval(BeforeRemoval const&) = delete;
    BeforeRemoval& operator=(BeforeRemoval const&) = delete;
    ~BeforeRemoval() { beforeRemoval = nullptr; }
};

} // namespace

// The linker puts what begins with "__wrap" in the place of what begins with "__real".
extern "C" int __wrap_unlinkat(int directory, char const* name, int flags);
extern "C" int __real_unlinkat(int directory, char const* name, int flags);
extern "C" int __wrap_rmdir(char const* path);
extern "C" int __real_rmdir(char const* path);

int __wrap_unlinkat(int directory, char const* name, int flags) {
    int const result = __real_unlinkat(directory, name, flags);
    int const code = errno;
    if (behindUnlink) behindUnlink(name);
    errno = code;
    return result;
}

int __wrap_rmdir(char const* path) {
    if (beforeRemoval) beforeRemoval(path);
    return __real_rmdir(path);
}

namespace {

// A folder with everything in it that a folder can hold, and what its links lead to outside of it.
class FullFolder {
public:
    FullFolder() {
        m_folder.MakeFolder("outside");
        m_folder.Write("outside/file", "kept");
        m_folder.MakeFolder("tree");
        m_folder.Write("tree/file", "x");
        m_folder.Write("tree/.hidden", "x");
        m_folder.Write("tree/read-only", "x");
        EXPECT_EQ(chmod(m_folder.Path("tree/read-only").c_str(), 0), 0);
        m_folder.Write("tree/no text \xE4\xFF\n", "x");
        m_folder.MakeFolder("tree/empty");
        m_folder.MakeFolder("tree/full");
        m_folder.Write("tree/full/file", "x");
        m_folder.MakeFolder("tree/full/deeper");
        m_folder.Write("tree/full/deeper/file", "x");
        m_folder.MakeFolder("tree/full/empty");
        m_folder.MakeLink(m_folder.Path("outside"), "tree/absolute");
        m_folder.MakeLink("../outside", "tree/relative");
        m_folder.MakeLink("../outside/file", "tree/to-file");
        m_folder.MakeLink("..", "tree/up");
        m_folder.MakeLink("../..", "tree/full/up");
        m_folder.MakeLink("missing", "tree/dangling");
        m_folder.MakeLink("circle", "tree/circle");
        EXPECT_EQ(link(m_folder.Path("outside/file").c_str(), m_folder.Path("tree/hard").c_str()), 0);
        EXPECT_EQ(mkfifo(m_folder.Path("tree/fifo").c_str(), 0600), 0);
        MakeSocket(m_folder.Path("tree/socket"));
    }

    TemporaryFolder const& Folder() const { return m_folder; }
    FileLocation Tree() const { return m_folder.Location("tree"); }
    bool TreeIsEmpty() const {
        return m_folder.Has("tree") && std::filesystem::is_empty(m_folder.Path("tree"));
    }
    bool OutsideIsWhole() const { return m_folder.Read("outside/file") == "kept"; }

private:
    static void MakeSocket(std::string const& path) {
        sockaddr_un address = {};
        address.sun_family = AF_UNIX;
        ASSERT_LT(path.size(), sizeof address.sun_path);
        path.copy(address.sun_path, path.size());
        int const descriptor = socket(AF_UNIX, SOCK_STREAM, 0);
        EXPECT_EQ(bind(descriptor, reinterpret_cast<sockaddr const*>(&address), sizeof address), 0);
        close(descriptor);
    }

    TemporaryFolder m_folder;
};

// Directories one in the other, further than any path leads, with a file in each.
void MakeDeepTree(std::string const& path, int depth) {
    int directory = open(path.c_str(), O_RDONLY | O_DIRECTORY);
    for (int level = 0; level < depth; ++level) {
        close(openat(directory, "file", O_CREAT | O_WRONLY, 0600));
        ASSERT_EQ(mkdirat(directory, "a-directory", 0700), 0);
        int const next = openat(directory, "a-directory", O_RDONLY | O_DIRECTORY);
        close(directory);
        directory = next;
    }
    close(directory);
}

FileLocation Binary(std::string const& path) {
    return FileLocation(UStringRef<Binary8Bit>(Binary8Bit(), MakeConstData(path)));
}

struct Operation {
    char const* name;
    void (*call)(FileLocation const&);
};

Operation const cEmptying[] = {
    {"DeleteContents", DeleteContents},
    {"ForceDeleteContents", static_cast<void (*)(FileLocation const&)>(ForceDeleteContents)},
};
Operation const cDeletingTrees[] = {
    {"DeleteRecursive", DeleteRecursive},
    {"ForceDeleteRecursive", ForceDeleteRecursive},
};

// Of everything that deletes.
std::vector<Operation> AllOperations() {
    std::vector<Operation> all{{"DeleteFile", DeleteFile},
                               {"DeleteDirectory", DeleteDirectory},
                               {"ForceNonexistence", ForceNonexistence}};
    all.insert(all.end(), std::begin(cEmptying), std::end(cEmptying));
    all.insert(all.end(), std::begin(cDeletingTrees), std::end(cDeletingTrees));
    return all;
}

} // namespace

TEST(DeletingFiles, RefusesTheEmptyLocation) {
    for (Operation const& operation : AllOperations())
        EXPECT_EQ(FailureOf([&] { operation.call(FileLocation()); }), "EmptyFileLocationError 0")
            << operation.name;
}

TEST(DeleteFile, DeletesWhatIsNoDirectory) {
    TemporaryFolder const folder;
    folder.Write("file", "x");
    folder.Write("kept", "kept");
    folder.MakeLink("kept", "link");
    folder.MakeLink("missing", "dangling");
    ASSERT_EQ(mkfifo(folder.Path("fifo").c_str(), 0600), 0);
    for (char const* const name : {"file", "link", "dangling", "fifo"}) {
        DeleteFile(folder.Location(name));
        EXPECT_FALSE(folder.Has(name)) << name;
    }
    EXPECT_EQ(folder.Read("kept"), "kept");
}

TEST(DeleteFile, ReportsFailures) {
    TemporaryFolder const folder;
    folder.Write("file", "x");
    folder.MakeFolder("directory");
    EXPECT_EQ(FailureOf([&] { DeleteFile(folder.Location("missing")); }), "FileNotFoundError 2");
    EXPECT_EQ(FailureOf([&] { DeleteFile(folder.Location("file/x")); }), "DirectoryNotFoundError 20");
    EXPECT_EQ(FailureOf([&] { DeleteFile(folder.Location("directory")); }), "FileIOError 21");
    EXPECT_TRUE(folder.Has("directory"));
    ModeScope const noWriting(folder.Path(), 0555);
    EXPECT_EQ(InChild([&] {
                  if (!BecomeOrdinaryUser()) return std::string(cNotAllowed);
                  return FailureOf([&] { DeleteFile(folder.Location("file")); });
              }),
              "FilePermissionError 13");
}

TEST(DeleteFile, LeavesALinkThatIsNamedAsTheDirectoryThatItLeadsTo) {
    TemporaryFolder const folder;
    folder.MakeFolder("directory");
    folder.Write("directory/file", "kept");
    folder.MakeLink("directory", "link");
    EXPECT_EQ(FailureOf([&] { DeleteFile(Binary(folder.Path("link/"))); }), "DirectoryNotFoundError 20");
    EXPECT_EQ(FailureOf([&] { DeleteFile(Binary(folder.Path("link/."))); }), "FileIOError 21");
    EXPECT_TRUE(folder.Has("link"));
    // As text the path loses its "/".
    DeleteFile(folder.Location("link/"));
    EXPECT_FALSE(folder.Has("link"));
    EXPECT_EQ(folder.Read("directory/file"), "kept");
}

TEST(DeleteDirectory, DeletesAnEmptyDirectoryOrALinkToOne) {
    TemporaryFolder const folder;
    folder.MakeFolder("empty");
    folder.MakeFolder("full");
    folder.Write("full/file", "kept");
    folder.MakeLink("full", "link");
    DeleteDirectory(folder.Location("empty"));
    EXPECT_FALSE(folder.Has("empty"));
    DeleteDirectory(folder.Location("link"));
    EXPECT_FALSE(folder.Has("link"));
    EXPECT_EQ(folder.Read("full/file"), "kept");
    EXPECT_EQ(FailureOf([&] { DeleteDirectory(folder.Location("full")); }), "FileIOError 39");
    EXPECT_EQ(folder.Read("full/file"), "kept");
}

TEST(DeleteDirectory, LeavesWhatIsNoDirectory) {
    TemporaryFolder const folder;
    folder.Write("file", "x");
    folder.MakeLink("file", "link");
    folder.MakeLink("missing", "dangling");
    EXPECT_EQ(FailureOf([&] { DeleteDirectory(folder.Location("file")); }), "DirectoryNotFoundError 20");
    EXPECT_EQ(FailureOf([&] { DeleteDirectory(folder.Location("link")); }), "DirectoryNotFoundError 20");
    EXPECT_EQ(FailureOf([&] { DeleteDirectory(folder.Location("dangling")); }), "DirectoryNotFoundError 20");
    EXPECT_EQ(FailureOf([&] { DeleteDirectory(folder.Location("missing")); }), "DirectoryNotFoundError 2");
    EXPECT_EQ(FailureOf([&] { DeleteDirectory(folder.Location("file/x")); }), "DirectoryNotFoundError 20");
    EXPECT_TRUE(folder.Has("file") && folder.Has("link") && folder.Has("dangling"));
}

TEST(ForceNonexistence, DeletesWhateverIsThere) {
    TemporaryFolder const folder;
    folder.Write("kept", "kept");
    folder.MakeFolder("full");
    folder.Write("full/file", "kept");
    folder.Write("file", "x");
    folder.MakeFolder("empty");
    folder.MakeLink("kept", "link");
    folder.MakeLink("full", "link-to-directory");
    folder.MakeLink("missing", "dangling");
    folder.MakeLink("circle", "circle");
    ASSERT_EQ(mkfifo(folder.Path("fifo").c_str(), 0600), 0);
    for (char const* const name :
         {"file", "empty", "link", "link-to-directory", "dangling", "circle", "fifo", "missing"}) {
        ForceNonexistence(folder.Location(name));
        EXPECT_FALSE(folder.Has(name)) << name;
    }
    ForceNonexistence(folder.Location("kept/below"));
    EXPECT_EQ(folder.Read("kept"), "kept");
    EXPECT_EQ(folder.Read("full/file"), "kept");
}

TEST(ForceNonexistence, LeavesADirectoryThatIsNotEmpty) {
    TemporaryFolder const folder;
    folder.MakeFolder("full");
    folder.Write("full/file", "kept");
    EXPECT_EQ(FailureOf([&] { ForceNonexistence(folder.Location("full")); }), "FileIOError 39");
    EXPECT_EQ(folder.Read("full/file"), "kept");
}

TEST(ForceNonexistence, ReportsWhatItCannotTell) {
    TemporaryFolder const folder;
    folder.MakeFolder("closed");
    folder.Write("closed/file", "x");
    ModeScope const open(folder.Path(), 0777);
    ModeScope const closed(folder.Path("closed"), 0);
    EXPECT_EQ(InChild([&] {
                  if (!BecomeOrdinaryUser()) return std::string(cNotAllowed);
                  return FailureOf([&] { ForceNonexistence(folder.Location("closed/file")); });
              }),
              "FilePermissionError 13");
}

TEST(ForcedDeletion, TakesItWellWhenWhatIsNamedDisappearsByItself) {
    Operation const operations[] = {
        {"ForceNonexistence", ForceNonexistence}, cEmptying[1], cDeletingTrees[1]};
    for (Operation const& operation : operations)
        for (int const time : {1, 2}) {
            TemporaryFolder const folder;
            folder.MakeFolder("directory");
            DisappearingFile const disappearing(folder.Path("directory"), time);
            EXPECT_EQ(FailureOf([&] { operation.call(folder.Location("directory")); }), "nothing")
                << operation.name << ' ' << time;
            EXPECT_FALSE(folder.Has("directory")) << operation.name << ' ' << time;
        }
    TemporaryFolder const folder;
    folder.MakeFolder("directory");
    BeforeRemoval const other([&](std::string const& path) { std::filesystem::remove(path); });
    EXPECT_EQ(FailureOf([&] { ForceNonexistence(folder.Location("directory")); }), "nothing");
    EXPECT_FALSE(folder.Has("directory"));
}

TEST(UnforcedDeletion, ReportsWhatDisappearsByItself) {
    for (Operation const& operation : {cEmptying[0], cDeletingTrees[0]}) {
        TemporaryFolder const folder;
        folder.MakeFolder("directory");
        DisappearingFile const disappearing(folder.Path("directory"), 1);
        EXPECT_EQ(FailureOf([&] { operation.call(folder.Location("directory")); }),
                  "DirectoryNotFoundError 2")
            << operation.name;
    }
}

TEST(DeleteContents, EmptiesTheDirectoryAndFollowsNoLinkInIt) {
    for (Operation const& operation : cEmptying) {
        FullFolder const full;
        auto const descriptors = OpenDescriptors();
        operation.call(full.Tree());
        EXPECT_TRUE(full.TreeIsEmpty()) << operation.name;
        EXPECT_TRUE(full.OutsideIsWhole()) << operation.name;
        EXPECT_EQ(OpenDescriptors(), descriptors) << operation.name;
        operation.call(full.Tree());
        EXPECT_TRUE(full.TreeIsEmpty()) << operation.name;
    }
}

TEST(DeleteContents, EmptiesTheDirectoryThatALinkLeadsTo) {
    for (Operation const& operation : cEmptying) {
        FullFolder const full;
        full.Folder().MakeLink("tree", "link");
        operation.call(full.Folder().Location("link"));
        EXPECT_TRUE(full.TreeIsEmpty()) << operation.name;
        EXPECT_TRUE(full.Folder().Has("link")) << operation.name;
        EXPECT_TRUE(full.OutsideIsWhole()) << operation.name;
    }
}

TEST(DeleteRecursive, DeletesTheDirectoryWithAllThatIsInIt) {
    for (Operation const& operation : cDeletingTrees) {
        FullFolder const full;
        operation.call(full.Tree());
        EXPECT_FALSE(full.Folder().Has("tree")) << operation.name;
        EXPECT_TRUE(full.OutsideIsWhole()) << operation.name;
    }
}

TEST(DeleteRecursive, DeletesOfALinkOnlyTheLink) {
    for (Operation const& operation : cDeletingTrees) {
        FullFolder const full;
        full.Folder().MakeLink("outside", "link");
        operation.call(full.Folder().Location("link"));
        EXPECT_FALSE(full.Folder().Has("link")) << operation.name;
        EXPECT_TRUE(full.OutsideIsWhole()) << operation.name;
    }
}

TEST(DeletingFiles, MeansALinkHoweverItsNameEnds) {
    Operation const operations[] = {{"DeleteDirectory", DeleteDirectory},
                                    {"ForceNonexistence", ForceNonexistence},
                                    cDeletingTrees[0],
                                    cDeletingTrees[1]};
    for (Operation const& operation : operations)
        for (char const* const end : {"", "/", "//", "/.", "/./", "/.//.", "/././"}) {
            FullFolder const full;
            full.Folder().MakeLink("outside", "link");
            std::string const path = full.Folder().Path("link") + end;
            // As text, which loses one "/"; from the system; and as bytes.
            FileLocation const spellings[] = {FileLocation(MakeUTF8Ref(path)), FileLocation(path.c_str()),
                                              Binary(path)};
            for (FileLocation const& spelling : spellings) {
                if (!full.Folder().Has("link")) full.Folder().MakeLink("outside", "link");
                EXPECT_EQ(FailureOf([&] { operation.call(spelling); }), "nothing")
                    << operation.name << ' ' << path;
                EXPECT_FALSE(full.Folder().Has("link")) << operation.name << ' ' << path;
                ASSERT_TRUE(full.OutsideIsWhole()) << operation.name << ' ' << path;
            }
        }
}

TEST(DeletingFiles, MeansADirectoryHoweverItsNameEnds) {
    TemporaryFolder const folder;
    for (char const* const end : {"/", "//", "/.", "/./"}) {
        FileLocation const spelling = Binary(folder.Path("directory") + end);
        for (Operation const& operation : cDeletingTrees) {
            folder.MakeFolder("directory");
            folder.Write("directory/file", "x");
            operation.call(spelling);
            EXPECT_FALSE(folder.Has("directory")) << operation.name << ' ' << end;
        }
        folder.MakeFolder("directory");
        DeleteDirectory(spelling);
        EXPECT_FALSE(folder.Has("directory")) << end;
    }
}

TEST(DeletingFiles, LeavesAFileThatIsNamedAsADirectory) {
    TemporaryFolder const folder;
    folder.Write("file", "kept");
    folder.MakeLink("file", "link");
    for (char const* const name : {"file/", "file/.", "link/", "link/."})
        for (Operation const& operation : AllOperations()) {
            FailureOf([&] { operation.call(Binary(folder.Path(name))); });
            EXPECT_EQ(folder.Read("file"), "kept") << operation.name << ' ' << name;
            EXPECT_TRUE(folder.Has("link")) << operation.name << ' ' << name;
        }
}

TEST(DeletingTrees, LeavesWhatIsNoDirectory) {
    TemporaryFolder const folder;
    folder.Write("file", "kept");
    folder.MakeLink("file", "link");
    folder.MakeLink("missing", "dangling");
    for (auto const& operations : {cEmptying, cDeletingTrees})
        for (Operation const* operation = operations; operation != operations + 2; ++operation) {
            auto const failure = [&](char const* name) {
                return FailureOf([&] { operation->call(folder.Location(name)); });
            };
            EXPECT_EQ(failure("file"), "DirectoryNotFoundError 20") << operation->name;
            EXPECT_EQ(failure("link"), "DirectoryNotFoundError 20") << operation->name;
            EXPECT_EQ(failure("dangling"), "DirectoryNotFoundError 20") << operation->name;
        }
    EXPECT_EQ(folder.Read("file"), "kept");
    EXPECT_TRUE(folder.Has("link") && folder.Has("dangling"));
}

TEST(DeletingTrees, TakesAbsenceForAFailureUnlessForced) {
    TemporaryFolder const folder;
    folder.Write("file", "kept");
    for (char const* const name : {"missing", "missing/below"}) {
        FileLocation const location = folder.Location(name);
        EXPECT_EQ(FailureOf([&] { DeleteContents(location); }), "DirectoryNotFoundError 2");
        EXPECT_EQ(FailureOf([&] { DeleteRecursive(location); }), "DirectoryNotFoundError 2");
        EXPECT_EQ(FailureOf([&] { ForceDeleteContents(location); }), "nothing");
        EXPECT_EQ(FailureOf([&] { ForceDeleteRecursive(location); }), "nothing");
    }
    EXPECT_EQ(FailureOf([&] { DeleteContents(folder.Location("file/below")); }), "DirectoryNotFoundError 20");
    EXPECT_EQ(FailureOf([&] { ForceDeleteContents(folder.Location("file/below")); }), "nothing");
}

TEST(DeletingTrees, TakesNamesInEveryLocale) {
    for (char const* const locale : {"C", "C.UTF-8", "de_DE.ISO-8859-1", "ja_JP.EUC-JP"}) {
        LocaleScope const scope(locale);
        FullFolder const full;
        DeleteContents(full.Tree());
        EXPECT_TRUE(full.TreeIsEmpty()) << locale;
    }
    TemporaryFolder const folder;
    folder.MakeFolder("\xE4");
    folder.Write("\xE4/file", "x");
    DeleteRecursive(Binary(folder.Path("\xE4")));
    EXPECT_FALSE(folder.Has("\xE4"));
}

TEST(DeletingTrees, TakesTenThousandEntries) {
    TemporaryFolder const folder(QuickFolder());
    for (int number = 0; number < 10000; ++number)
        close(open(folder.Path("file" + std::to_string(number)).c_str(), O_CREAT | O_WRONLY, 0600));
    for (int number = 0; number < 1000; ++number) {
        std::string const name = "directory" + std::to_string(number);
        folder.MakeFolder(name);
        folder.Write(name + "/file", "x");
    }
    DeleteContents(folder.Location());
    EXPECT_TRUE(std::filesystem::is_empty(folder.Path()));
}

TEST(DeletingTrees, GoesDeeperThanAnyPathLeadsWithAHandfulOfDescriptors) {
    TemporaryFolder const folder(QuickFolder());
    folder.MakeFolder("deep");
    MakeDeepTree(folder.Path("deep"), 5000);
    EXPECT_EQ(InChild([&] {
                  rlim_t const descriptors = static_cast<rlim_t>(OpenDescriptors()) + 4;
                  rlimit const limit{descriptors, descriptors};
                  if (setrlimit(RLIMIT_NOFILE, &limit) != 0) return std::string(cNotAllowed);
                  return FailureOf([&] { DeleteContents(folder.Location("deep")); });
              }),
              "nothing");
    EXPECT_TRUE(std::filesystem::is_empty(folder.Path("deep")));

    MakeDeepTree(folder.Path("deep"), 5000);
    DeleteRecursive(folder.Location("deep"));
    EXPECT_FALSE(folder.Has("deep"));
}

TEST(DeletingTrees, NamesWhatCannotBeDeleted) {
    TemporaryFolder const folder;
    std::filesystem::create_directories(folder.Path("tree/a/b/closed"));
    folder.Write("tree/a/b/closed/file", "kept");
    ModeScope const open(folder.Path(), 0777);
    ModeScope const openTree(folder.Path("tree"), 0777);
    ModeScope const openBelow(folder.Path("tree/a"), 0777);
    ModeScope const openFurther(folder.Path("tree/a/b"), 0777);
    auto const reportAfter = [&](mode_t mode) {
        ModeScope const closed(folder.Path("tree/a/b/closed"), mode);
        return InChild([&] {
            if (!BecomeOrdinaryUser()) return std::string(cNotAllowed);
            try {
                DeleteContents(folder.Location("tree"));
            } catch (FilePermissionError const& failure) {
                return MakeString(failure.uwhat());
            }
            return std::string("nothing");
        });
    };
    std::string const start = "File error \"19FilePermissionError\" on \"" + folder.Path("tree/a/b/closed");
    std::string const end = "\" : \"Error 0x13%: Permission denied\"";
    EXPECT_EQ(reportAfter(0555), start + "/file" + end);
    EXPECT_EQ(reportAfter(0), start + end);
    EXPECT_EQ(folder.Read("tree/a/b/closed/file"), "kept");
}

TEST(DeletingTrees, DeletesAnEmptyDirectoryThatMayNotBeEntered) {
    TemporaryFolder const folder;
    std::filesystem::create_directories(folder.Path("tree/closed"));
    ModeScope const open(folder.Path(), 0777);
    ModeScope const openTree(folder.Path("tree"), 0777);
    ModeScope const closed(folder.Path("tree/closed"), 0);
    EXPECT_EQ(InChild([&] {
                  if (!BecomeOrdinaryUser()) return std::string(cNotAllowed);
                  return FailureOf([&] { DeleteContents(folder.Location("tree")); });
              }),
              "nothing");
    EXPECT_FALSE(folder.Has("tree/closed"));
}

TEST(DeleteRecursive, DeletesAnEmptyDirectoryThatMayNotBeRead) {
    for (Operation const& operation : cDeletingTrees) {
        TemporaryFolder const folder;
        folder.MakeFolder("empty");
        folder.MakeFolder("full");
        folder.Write("full/file", "kept");
        ModeScope const open(folder.Path(), 0777);
        ModeScope const closed(folder.Path("empty"), 0);
        ModeScope const closedFull(folder.Path("full"), 0);
        EXPECT_EQ(InChild([&] {
                      if (!BecomeOrdinaryUser()) return std::string(cNotAllowed);
                      return FailureOf([&] { operation.call(folder.Location("empty")); }) + ", " +
                             FailureOf([&] { operation.call(folder.Location("full")); });
                  }),
                  "nothing, FilePermissionError 13")
            << operation.name;
        EXPECT_FALSE(folder.Has("empty")) << operation.name;
        EXPECT_TRUE(folder.Has("full")) << operation.name;
    }
}

TEST(DeletingFiles, LeavesWhatIsOnAReadOnlyFileSystem) {
    TemporaryFolder const folder;
    std::string const result = InChild([&] {
        if (!MountMemoryForThisProcess(folder.Path(), 0)) return std::string(cNotAllowed);
        std::filesystem::create_directories(folder.Path("tree/empty"));
        folder.Write("tree/file", "kept");
        if (mount(nullptr, folder.Path().c_str(), nullptr, MS_REMOUNT | MS_RDONLY, nullptr) != 0)
            return std::string(cNotAllowed);
        std::string failures;
        for (Operation const& operation : AllOperations()) {
            bool const isForFiles = operation.call == &DeleteFile || operation.call == &ForceNonexistence;
            std::string const failure =
                FailureOf([&] { operation.call(folder.Location(isForFiles ? "tree/file" : "tree")); });
            if (failure != "FileIOError 30") failures += std::string(operation.name) + ": " + failure + '\n';
        }
        bool const isWhole = folder.Read("tree/file") == "kept" && folder.Has("tree/empty");
        return failures + (isWhole ? "left" : "damaged");
    });
    if (result == cNotAllowed) GTEST_SKIP() << "A process may not mount a file system of its own here.";
    EXPECT_EQ(result, "left");
}

TEST(DeletingTrees, RefusesTheRootHoweverItIsWritten) {
    // In a process whose root is a folder of the test, so that nothing else is at stake.
    TemporaryFolder const folder;
    folder.Write("file", "kept");
    folder.MakeFolder("a");
    folder.MakeLink("/", "link");
    folder.MakeLink("a/..", "a-link");
    std::string const result = InChild([&] {
        auto const changeRoot = [&] { return chroot(folder.Path().c_str()) == 0; };
        bool const isAllowed = changeRoot() || (SeparateMounts() && changeRoot());
        if (!isAllowed || chdir("/") != 0) return std::string(cNotAllowed);
        std::string failures;
        for (char const* const root : {"/", "//", "/.", "/..", "/a/..", "/link", "/a-link", "."})
            for (auto const& operations : {cEmptying, cDeletingTrees})
                for (Operation const* operation = operations; operation != operations + 2; ++operation) {
                    // Of a link this would delete the link alone.
                    bool const isLink = std::string(root).ends_with("link");
                    if (isLink && operations == cDeletingTrees) continue;
                    std::string const failure =
                        FailureOf([&] { operation->call(FileLocation(MakeUTF8Ref(root))); });
                    if (failure != "FilePermissionError 1")
                        failures += std::string(operation->name) + ' ' + root + ": " + failure + '\n';
                }
        return failures;
    });
    if (result == cNotAllowed) GTEST_SKIP() << "A process may not change its root directory here.";
    EXPECT_EQ(result, "");
    EXPECT_EQ(folder.Read("file"), "kept");
}

TEST(DeletingTrees, ReportsAFileSystemThatIsMountedWithin) {
    TemporaryFolder const folder;
    folder.MakeFolder("mounted");
    std::string const result = InChild([&] {
        if (!MountMemoryForThisProcess(folder.Path("mounted"), 0)) return std::string(cNotAllowed);
        folder.Write("mounted/file", "x");
        return FailureOf([&] { DeleteContents(folder.Location()); }) +
               (folder.Has("mounted/file") ? ", left" : ", emptied");
    });
    if (result == cNotAllowed) GTEST_SKIP() << "A process may not mount a file system of its own here.";
    EXPECT_EQ(result, "FileIOError 16, left");
}

TEST(DeletingTrees, DoesNotFollowADirectoryThatIsMovedOutOfTheTree) {
    FullFolder const full;
    TemporaryFolder const& folder = full.Folder();
    BehindUnlink const mover([&](std::string const& name) {
        if (name == "file" && folder.Has("tree/full/deeper") && !folder.Has("tree/full/deeper/file"))
            std::filesystem::rename(folder.Path("tree/full/deeper"), folder.Path("outside/deeper"));
    });
    EXPECT_EQ(FailureOf([&] { DeleteContents(full.Tree()); }), "FileIOError 116");
    EXPECT_TRUE(full.OutsideIsWhole());
    EXPECT_TRUE(folder.Has("outside/deeper"));
}

TEST(DeletingTrees, DoesNotFollowALinkThatTakesTheNameOfADirectory) {
    FullFolder const full;
    TemporaryFolder const& folder = full.Folder();
    bool wasSwapped = false;
    BehindUnlink const swapper([&](std::string const& name) {
        if (name != "full" || wasSwapped) return;
        wasSwapped = true;
        std::filesystem::rename(folder.Path("tree/full"), folder.Path("away"));
        folder.MakeLink("../outside", "tree/full");
    });
    EXPECT_EQ(FailureOf([&] { DeleteContents(full.Tree()); }), "DirectoryNotFoundError 20");
    EXPECT_TRUE(wasSwapped);
    EXPECT_TRUE(full.OutsideIsWhole());
    EXPECT_TRUE(folder.Has("away/file"));
}

TEST(DeleteRecursive, DoesNotFollowALinkThatTakesItsOwnName) {
    for (Operation const& operation : cDeletingTrees) {
        FullFolder const full;
        TemporaryFolder const& folder = full.Folder();
        BeforeRemoval const swapper([&](std::string const&) {
            if (folder.Has("away")) return;
            std::filesystem::rename(folder.Path("tree"), folder.Path("away"));
            folder.MakeLink("outside", "tree");
        });
        EXPECT_EQ(FailureOf([&] { operation.call(full.Tree()); }), "DirectoryNotFoundError 20")
            << operation.name;
        EXPECT_TRUE(full.OutsideIsWhole()) << operation.name;
        EXPECT_TRUE(folder.Has("away/file")) << operation.name;
    }
}

TEST(DeletingTrees, TakesEntriesThatBecomeSomethingElse) {
    TemporaryFolder const folder;
    auto const swapOthers = [&](std::string const& first) {
        for (char const* const name : {"a", "b"})
            if (first != name) {
                bool const wasDirectory = std::filesystem::is_directory(folder.Path(name));
                std::filesystem::remove_all(folder.Path(name));
                if (wasDirectory)
                    folder.Write(name, "x");
                else
                    std::filesystem::create_directories(folder.Path(std::string(name) + "/below/it"));
            }
    };
    for (bool const areDirectories : {false, true}) {
        for (char const* const name : {"a", "b"})
            areDirectories ? folder.MakeFolder(name) : folder.Write(name, "x");
        bool wasSwapped = false;
        BehindUnlink const swapper([&](std::string const& name) {
            if (!wasSwapped) swapOthers(name);
            wasSwapped = true;
        });
        DeleteContents(folder.Location());
        EXPECT_TRUE(wasSwapped);
        EXPECT_TRUE(std::filesystem::is_empty(folder.Path())) << areDirectories;
    }
}

TEST(DeletingTrees, TakesItWellWhenEntriesDisappearByThemselves) {
    struct {
        char const* deleted;
        std::vector<char const*> disappearing;
    } const cases[] = {
        // Before anything was tried with them, before they are entered, and once they have been emptied.
        {"", {"tree/full/deeper", "tree/full", "tree/empty", "tree/fifo"}},
        {"full", {"tree/full"}},
        {"file", {"tree/full/deeper"}},
    };
    for (auto const& [deleted, disappearing] : cases) {
        FullFolder const full;
        TemporaryFolder const& folder = full.Folder();
        bool haveGone = false;
        BehindUnlink const other(
            [&, &deleted = deleted, &disappearing = disappearing](std::string const& name) {
                bool const isElsewhere = name == "file" && folder.Has("tree/full/deeper/file");
                bool const isTime = *deleted == '\0' || (name == deleted && !isElsewhere);
                if (haveGone || !isTime) return;
                haveGone = true;
                for (char const* const entry : disappearing) std::filesystem::remove_all(folder.Path(entry));
            });
        DeleteContents(full.Tree());
        EXPECT_TRUE(haveGone) << deleted;
        EXPECT_TRUE(full.TreeIsEmpty()) << deleted;
    }
}

TEST(DeletingTrees, ReportsADirectoryThatFillsUpAgain) {
    FullFolder const full;
    TemporaryFolder const& folder = full.Folder();
    BehindUnlink const other([&](std::string const& name) {
        if (name == "file" && folder.Has("tree/full/deeper") && !folder.Has("tree/full/deeper/file"))
            folder.Write("tree/full/deeper/new", "x");
    });
    EXPECT_EQ(FailureOf([&] { DeleteContents(full.Tree()); }), "FileIOError 39");
    EXPECT_TRUE(folder.Has("tree/full/deeper/new"));
}
