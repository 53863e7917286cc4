#include "app/SessionDirectory.h"

#include "files/FileErrors.h"
#include "files/FileReading.h"
#include "foundation/Exceptions.h"
#include "tests/support/BeforeStatus.h"
#include "tests/support/TemporaryFolder.h"
#include "tests/support/UStringPrinting.h"

#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {

FileTransfer File(UStringRef<UTF8> const& name, char const* content, char const* subFolder = "") {
    FileTransfer file;
    file.fileName = FileName(name);
    file.subFolder = FileName(MakeUTF8Ref(subFolder));
    file.content = CopiedUString<UTF8>(MakeUTF8Ref(content));
    return file;
}

FileLocation Location(std::string const& path) {
    return FileLocation(MakeUTF8Ref(path));
}

void Prepare(FileLocation const& location) {
    SessionDirectory const directory(location);
}

void Write(FileLocation const& location, std::vector<FileTransfer> const& files) {
    SessionDirectory const directory(location);
    directory.Write(files);
}

} // namespace

TEST(SessionDirectory, IsMadeWithItsAncestors) {
    TemporaryFolder const folder;
    Prepare(folder.Location("a/b/c"));
    EXPECT_TRUE(folder.Location("a/b/c").IsDirectory());
}

TEST(SessionDirectory, ThatIsMadeCanBeWrittenByItsOwnerOnly) {
    for (mode_t const mask : {mode_t(0), mode_t(002), mode_t(022)}) {
        TemporaryFolder const folder;
        mode_t const earlier = umask(mask);
        Prepare(folder.Location("a/b"));
        umask(earlier);
        for (char const* const name : {"a", "a/b"})
            EXPECT_EQ(std::filesystem::status(folder.Path(name)).permissions(), std::filesystem::perms(0755))
                << name << " under " << mask;
    }
}

TEST(SessionDirectory, MayHaveARelativePathIfItsFirstDirectoryStands) {
    TemporaryFolder const folder;
    std::filesystem::path const earlier = std::filesystem::current_path();
    std::filesystem::current_path(folder.Path());
    EXPECT_THROW(Prepare(Location("a/b")), InvalidFileLocation);
    EXPECT_FALSE(folder.Has("a"));
    folder.MakeFolder("a");
    Write(Location("a/b"), {File("file"_utf8, "QUJD")});
    std::filesystem::current_path(earlier);
    EXPECT_EQ(folder.Read("a/b/file"), "ABC");
}

TEST(SessionDirectory, IsEmptiedWhenItStands) {
    TemporaryFolder const folder;
    folder.MakeFolder("base");
    folder.MakeFolder("base/sub");
    folder.Write("base/sub/file", "x");
    folder.Write("base/.hidden", "x");
    Prepare(folder.Location("base"));
    EXPECT_TRUE(folder.Has("base"));
    EXPECT_TRUE(std::filesystem::is_empty(folder.Path("base")));
}

TEST(SessionDirectory, EmptyingFollowsNoLinkOutOfIt) {
    TemporaryFolder const folder;
    folder.MakeFolder("outside");
    folder.Write("outside/kept", "x");
    folder.MakeFolder("base");
    folder.MakeLink(folder.Path("outside"), "base/link");
    folder.MakeLink(folder.Path("outside/kept"), "base/file");
    folder.MakeLink("nowhere", "base/dangling");
    Prepare(folder.Location("base"));
    EXPECT_TRUE(std::filesystem::is_empty(folder.Path("base")));
    EXPECT_TRUE(folder.Has("outside/kept"));
}

TEST(SessionDirectory, TheRootIsRefusedByEveryName) {
    TemporaryFolder const folder;
    folder.MakeLink("/", "root");
    for (std::string const& path :
         {std::string("/"), std::string("//"), std::string("///"), std::string("/."), std::string("/tmp/.."),
          folder.Path("root"), folder.Path("root/")})
        EXPECT_THROW(Prepare(Location(path)), FilePermissionError) << path;
}

TEST(SessionDirectory, SomebodyElsesIsRefused) {
    if (geteuid() != 0) GTEST_SKIP() << "only the superuser can give a directory away";
    TemporaryFolder const folder;
    folder.MakeFolder("theirs");
    folder.Write("theirs/kept", "x");
    folder.MakeFolder("ours");
    folder.Write("ours/kept", "x");
    folder.MakeLink("theirs", "our link");
    folder.MakeLink("ours", "their link");
    ASSERT_EQ(chown(folder.Path("theirs").c_str(), 4711, 4711), 0);
    ASSERT_EQ(lchown(folder.Path("their link").c_str(), 4711, 4711), 0);
    for (char const* const name : {"theirs", "our link", "their link", "their link//", "their link/.",
                                   "their link/./", "new/../theirs", "newer/.././theirs"})
        EXPECT_THROW(Prepare(folder.Location(name)), FilePermissionError) << name;
    EXPECT_TRUE(folder.Has("theirs/kept"));
    EXPECT_TRUE(folder.Has("ours/kept"));
}

TEST(SessionDirectory, OnesOwnThroughALinkIsEmptied) {
    TemporaryFolder const folder;
    folder.MakeFolder("base");
    folder.Write("base/file", "x");
    folder.MakeLink("base", "link");
    Prepare(folder.Location("link"));
    EXPECT_FALSE(folder.Has("base/file"));
    EXPECT_TRUE(folder.Has("base"));
}

// Whoever owns a directory above may do that between any two steps.
TEST(SessionDirectory, NeitherIsEmptiedWhenAnotherIsPutInItsPlaceMeanwhile) {
    TemporaryFolder const folder;
    folder.MakeFolder("base");
    folder.Write("base/file", "x");
    folder.MakeFolder("documents");
    folder.Write("documents/kept", "x");
    int asked = 0;
    BeforeStatus const before([&](std::string const& path) {
        if (path != folder.Path("base") || ++asked != 2) return;
        std::filesystem::rename(folder.Path("base"), folder.Path("moved"));
        std::filesystem::rename(folder.Path("documents"), folder.Path("base"));
    });
    EXPECT_THROW(Prepare(folder.Location("base")), FilePermissionError);
    EXPECT_TRUE(folder.Has("base/kept"));
    EXPECT_TRUE(folder.Has("moved/file"));
}

TEST(SessionDirectory, IsTheSameWhateverIsPutInItsPlaceMeanwhile) {
    TemporaryFolder const folder;
    SessionDirectory const directory(folder.Location("base"));
    std::filesystem::rename(folder.Path("base"), folder.Path("moved"));
    folder.MakeFolder("documents");
    folder.Write("documents/a", "kept");
    folder.MakeLink("documents", "base");
    directory.Write({File("a"_utf8, "QUJD")});
    EXPECT_EQ(folder.Read("documents/a"), "kept");
    EXPECT_EQ(folder.Read("moved/a"), "ABC");
    EXPECT_EQ(FileReadingPath(directory.LocationOf(FileName("a"_utf8))).Length(), 3u);
}

TEST(SessionDirectory, IsClosedAgain) {
    auto const count = [] { return std::distance(std::filesystem::directory_iterator("/proc/self/fd"), {}); };
    TemporaryFolder const folder;
    auto const before = count();
    Prepare(folder.Location("base"));
    EXPECT_THROW(Prepare(Location("/")), FilePermissionError);
    EXPECT_EQ(count(), before);
}

TEST(SessionDirectory, WhatIsNoDirectoryIsRefused) {
    TemporaryFolder const folder;
    folder.Write("file", "kept");
    folder.MakeLink("nowhere", "dangling");
    EXPECT_THROW(Prepare(folder.Location("file")), DirectoryNotFoundError);
    EXPECT_THROW(Prepare(folder.Location("file/below")), DirectoryNotFoundError);
    EXPECT_THROW(Prepare(folder.Location("dangling")), FileIOError);
    EXPECT_EQ(folder.Read("file"), "kept");
}

TEST(SessionDirectory, APathThatNamesNothingIsRefused) {
    EXPECT_THROW(Prepare(FileLocation()), EmptyFileLocationError);
    TemporaryFolder const folder;
    folder.Write("kept", "x");
    std::string const withNUL = folder.Path() + std::string("\0/base", 6);
    EXPECT_THROW(Prepare(Location(withNUL)), IllegalFileName);
    EXPECT_TRUE(folder.Has("kept"));
}

TEST(SessionDirectory, APathThatIsNotStrictUTF8IsRefused) {
    TemporaryFolder const folder;
    folder.MakeFolder("base");
    folder.Write("kept", "x");
    // An overlong "..", an overlong NUL, a byte that begins nothing.
    for (std::string const name : {"base/\xc0\xae\xc0\xae", "base\xc0\x80", "base\xff"})
        EXPECT_THROW(Prepare(folder.Location(name)), IllegalFileName);
    EXPECT_TRUE(folder.Has("kept"));
}

TEST(SessionDirectory, APathBeyondTheSystemsLengthFailsAtOnce) {
    TemporaryFolder const folder;
    std::string path = folder.Path();
    while (path.size() < 1000000) path += "/a";
    try {
        Prepare(Location(path));
        ADD_FAILURE() << "nothing was thrown";
    } catch (FileIOError const& error) {
        EXPECT_EQ(error.GetCode(), ENAMETOOLONG);
    }
    EXPECT_FALSE(folder.Has("a"));
    EXPECT_THROW(Prepare(folder.Location("new/" + std::string(300, 'x'))), FileIOError);
}

TEST(SupportFilesOnDisk, StandDirectlyInTheDirectoryWhateverTheirSubFolder) {
    TemporaryFolder const folder;
    Write(folder.Location(), {File("a.txt"_utf8, "QUJD"), File("b.txt"_utf8, "QUI=", "sub/folder"),
                              File(".hidden"_utf8, ""), File("..."_utf8, "QQ==")});
    EXPECT_EQ(folder.Read("a.txt"), "ABC");
    EXPECT_EQ(folder.Read("b.txt"), "AB");
    EXPECT_TRUE(folder.Has(".hidden"));
    EXPECT_EQ(folder.Read("..."), "A");
    EXPECT_FALSE(folder.Has("sub"));
}

TEST(SupportFilesOnDisk, OfTwoOfOneNameTheLaterStays) {
    TemporaryFolder const folder;
    Write(folder.Location(), {File("a"_utf8, "QUJD"), File("a"_utf8, "QQ==")});
    EXPECT_EQ(folder.Read("a"), "A");
}

TEST(SupportFilesOnDisk, ANameThatLeadsElsewhereIsRefused) {
    TemporaryFolder const folder;
    SessionDirectory const directory(folder.Location("base"));
    folder.MakeFolder("base/sub");
    std::string const withNUL("a\0b", 3);
    for (std::string const& name :
         {std::string(), std::string("."), std::string(".."), std::string("/"), std::string("/etc"),
          std::string("../x"), std::string("sub/x"), std::string("x/"), std::string("/x"), std::string("//"),
          withNUL, std::string(1, '\0'), std::string("../"), std::string("./x"),
          std::string("\xc0\xae\xc0\xae\xc0\xafout"), std::string("a\xc0\x80"), std::string("\xe0\x80\xae"),
          std::string("a\xff")}) {
        EXPECT_THROW(directory.Write({File(MakeUTF8Ref(name), "QUJD")}), IllegalFileName) << name;
        EXPECT_EQ(std::distance(std::filesystem::recursive_directory_iterator(folder.Path()), {}), 2) << name;
    }
}

TEST(SupportFilesOnDisk, FilesBeforeTheOneThatFailsAreThere) {
    TemporaryFolder const folder;
    EXPECT_THROW(
        Write(folder.Location(), {File("a"_utf8, "QUJD"), File(".."_utf8, "QQ=="), File("b"_utf8, "QQ==")}),
        IllegalFileName);
    EXPECT_EQ(folder.Read("a"), "ABC");
    EXPECT_FALSE(folder.Has("b"));
}
