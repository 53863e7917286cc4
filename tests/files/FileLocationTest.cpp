#include "files/FileLocation.h"

#include "files/FileErrors.h"
#include "files/FileStats.h"

#include "tests/support/LocaleScope.h"
#include "tests/support/TemporaryFolder.h"
#include "tests/support/UStringPrinting.h"

#include <chrono>
#include <cstring>
#include <gtest/gtest.h>
#include <sched.h>
#include <sys/mount.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <type_traits>
#include <unistd.h>

namespace {

FileLocation Text(std::string const& path) {
    return FileLocation(MakeUTF8Ref(path));
}
UStringRef<Binary8Bit> Bytes(std::string const& bytes) {
    return UStringRef<Binary8Bit>(Binary8Bit(), MakeConstData(bytes));
}
FileLocation Binary(std::string const& bytes) {
    return FileLocation(Bytes(bytes));
}

std::string Plain(UStringRef<UTF8> const& text) {
    return MakeString(text);
}
std::string Plain(UStringRef<Binary8Bit> const& bytes) {
    return MakeString(bytes);
}

// What a location or name holds, with "b:" in front of bytes.
template <class Held>
std::string Holding(Held const& held) {
    return held.IsBinary() ? "b:" + Plain(held.Bytes()) : Plain(held.Text());
}

std::string ForSystemCalls(FileLocation const& location) {
    return location.LibPath().c_str();
}

// Which failure an operation ends with, and what it says of the location.
template <class Failure, class Operation>
std::string Sentence(Operation const& operation) {
    try {
        operation();
    } catch (Failure const& failure) {
        return Plain(failure.uwhat());
    } catch (...) {
        return "another failure";
    }
    return "no failure";
}

std::unique_ptr<CachedFileInformation> Information(int mark) {
    auto information = std::make_unique<CachedFileInformation>();
    std::memset(information->bytes, mark, sizeof(information->bytes));
    return information;
}

int Mark(FileLocation const& location) {
    return location.CachedInformation() ? static_cast<int>(location.CachedInformation()->bytes[63]) : -1;
}

// Lays a read-only file system over a folder, seen by this process alone. Whether that is allowed.
bool MountReadOnlyForThisProcess(std::string const& folder) {
    bool const hasNamespace = unshare(CLONE_NEWNS) == 0 || unshare(CLONE_NEWUSER | CLONE_NEWNS) == 0;
    return hasNamespace && mount(nullptr, "/", nullptr, MS_REC | MS_PRIVATE, nullptr) == 0 &&
           mount("none", folder.c_str(), "tmpfs", MS_RDONLY, nullptr) == 0;
}

constexpr char const* cBinaryMessage = "Operation not supported for Binary data.";

struct Case {
    char const* given;
    char const* expected;
};

} // namespace

static_assert(std::is_same_v<FileLocation, UnixPlatform::FileLocation>);
static_assert(std::is_same_v<FileName, UnixPlatform::FileName>);
static_assert(std::is_nothrow_move_constructible_v<FileLocation>);
static_assert(std::is_nothrow_move_assignable_v<FileLocation>);
static_assert(std::is_nothrow_move_constructible_v<FileName>);
static_assert(std::is_nothrow_move_assignable_v<FileName>);
static_assert(sizeof(CachedFileInformation) == 64);

TEST(FileLocation, IsEmptyByDefault) {
    FileLocation const location;
    EXPECT_TRUE(location.empty());
    EXPECT_FALSE(location.IsBinary());
    EXPECT_EQ(Holding(location), "");
    EXPECT_EQ(location.CachedInformation(), nullptr);
    EXPECT_TRUE(location.GetDisplayPath().empty());
    EXPECT_EQ(ForSystemCalls(location), "");
}

TEST(FileLocation, DropsOneTrailingSlashOfAText) {
    for (auto const& [given, expected] : {Case{"/a/b", "/a/b"},
                                          {"/a/b/", "/a/b"},
                                          {"/a//", "/a/"},
                                          {"/a///", "/a//"},
                                          {"/", "/"},
                                          {"//", "/"},
                                          {"///", "//"},
                                          {"a/", "a"},
                                          {"a", "a"},
                                          {"", ""}}) {
        EXPECT_EQ(Holding(FileLocation(MakeUTF8Ref(given))), expected) << given;
        AutoUString<UTF8> text(MakeUTF8Ref(given));
        EXPECT_EQ(Holding(FileLocation(text)), expected) << given;
        EXPECT_TRUE(text.empty()) << given;
        EXPECT_EQ(Holding(FileLocation(AutoUString<UTF8>(MakeUTF8Ref(given)))), expected) << given;
    }
}

TEST(FileLocation, NormalisesNothingElse) {
    for (char const* const path : {"a/../b", "./a", "/a//b", "/a/./b", " /a ", "/.."})
        EXPECT_EQ(Holding(FileLocation(MakeUTF8Ref(path))), path);
}

TEST(FileLocation, TakesOverTheStorageOfATextThatIsGivenUp) {
    std::string const path = "/" + std::string(200, 'x');
    AutoUString<UTF8> text(MakeUTF8Ref(path));
    unsigned char const* const storage = text.begin();
    FileLocation const location(text);
    EXPECT_EQ(location.Text().begin(), storage);
    EXPECT_EQ(Holding(location), path);
}

TEST(FileLocation, KeepsTheSlashesOfAPathFromTheSystemAndOfBytes) {
    EXPECT_EQ(Holding(FileLocation("/a/b/")), "/a/b/");
    EXPECT_EQ(Holding(Binary("/a/b/")), "b:/a/b/");
    EXPECT_TRUE(Binary("").empty());
    EXPECT_TRUE(FileLocation("").empty());
    EXPECT_TRUE(FileLocation(static_cast<char const*>(nullptr)).empty());
}

TEST(FileLocation, ReadsAPathFromTheSystemInTheLocalEncoding) {
    LocaleScope const locale("de_DE.ISO-8859-1");
    FileLocation const location("/gr\xFC\xDF");
    EXPECT_EQ(Holding(location), "/gr\xC3\xBC\xC3\x9F");
    EXPECT_EQ(ForSystemCalls(location), "/gr\xFC\xDF");
}

TEST(FileLocation, KeepsThePathFromTheSystemThatIsNoLocalText) {
    LocaleScope const locale("ja_JP.EUC-JP");
    FileLocation const location("/a\xFFz");
    EXPECT_EQ(Holding(location), "b:/a\xFFz");
    EXPECT_TRUE(location.Text().empty());
    EXPECT_EQ(location.GetDisplayPath(), "2f61ff7a"_utf8);
    EXPECT_EQ(ForSystemCalls(location), "/a\xFFz");
}

TEST(FileLocation, KeepsThePathFromTheSystemThatTheCLocaleCannotRead) {
    FileLocation const location("/gr\xC3\xBC\xC3\x9F");
    EXPECT_EQ(Holding(location), "b:/gr\xC3\xBC\xC3\x9F");
    EXPECT_EQ(location.GetDisplayPath(), "2f6772c3bcc39f (UTF8: /gr\xC3\xBC\xC3\x9F)"_utf8);
}

TEST(FileLocation, KeepsThePathFromTheSystemThatIsNoUTF8InAUTF8Locale) {
    LocaleScope const locale("C.UTF-8");
    // The last ones are a "/" in two bytes and a surrogate.
    for (char const* const path : {"/a\xFFz", "/a\xC0\xAFz", "/a\xED\xA0\x80"}) {
        FileLocation const location(path);
        EXPECT_EQ(Holding(location), std::string("b:") + path);
        EXPECT_EQ(ForSystemCalls(location), path);
    }
    EXPECT_EQ(FileLocation("/a\xFFz").GetDisplayPath(), "2f61ff7a"_utf8);
    EXPECT_EQ(Holding(FileLocation("/\xC3\xA4")), "/\xC3\xA4");
}

TEST(FileLocation, KeepsThePathFromTheSystemThatWouldNotLeadBackAsText) {
    LocaleScope const locale("zh_TW.BIG5");
    // Two spellings of the character for ten, of which the locale writes the second.
    FileLocation const first("/\xA2\xCC");
    EXPECT_EQ(Holding(first), "b:/\xA2\xCC");
    EXPECT_EQ(ForSystemCalls(first), "/\xA2\xCC");
    FileLocation const second("/\xA4\x51");
    EXPECT_EQ(Holding(second), "/\xE5\x8D\x81");
    EXPECT_EQ(ForSystemCalls(second), "/\xA4\x51");
}

TEST(FileLocation, TellsWhatIsInUse) {
    EXPECT_TRUE(Text("/a").Raw() == "/a"_data);
    EXPECT_TRUE(Binary("/\xFF").Raw() == MakeConstData(std::string("/\xFF")));
    EXPECT_TRUE(FileLocation().Raw().empty());
    EXPECT_TRUE(FileName("a"_utf8).Raw() == "a"_data);
    EXPECT_TRUE(FileName(Bytes("\xFF")).Raw() == MakeConstData(std::string("\xFF")));
    EXPECT_TRUE(FileName().Raw().empty());
}

TEST(FileLocation, JoinsAChildToItsParent) {
    struct {
        char const* parent;
        char const* child;
        char const* expected;
    } const cases[] = {
        {"/a", "x", "/a/x"},       {"/a", "/x/", "/a/x"}, {"/a", "///x///", "/a/x"}, {"/a", "///", "/a"},
        {"/a", "", "/a"},          {"/", "x", "/x"},      {"/", "/x", "/x"},         {"/", "///", "/"},
        {"/a//", "x", "/a/x"},     {"/a//", "", "/a/"},   {"/a///", "x", "/a//x"},   {"a", "b/c", "a/b/c"},
        {"/a", "b//c", "/a/b//c"}, {"/a", "..", "/a/.."},
    };
    for (auto const& [parent, child, expected] : cases)
        EXPECT_EQ(Holding(FileLocation(Text(parent), MakeUTF8Ref(child))), expected)
            << parent << ", " << child;
}

TEST(FileLocation, JoinsAChildInBytesToItsParent) {
    EXPECT_EQ(Holding(FileLocation(Text("/a"), Bytes("/\xFF/"))), "b:/a/\xFF");
    EXPECT_EQ(Holding(FileLocation(Text("/"), Bytes("\xFF"))), "b:/\xFF");
    EXPECT_EQ(Holding(FileLocation(Text("/a"), Bytes("//"))), "b:/a");
    EXPECT_EQ(Holding(FileLocation(Binary("/\xFE"), Bytes("\xFF"))), "b:/\xFE/\xFF");
    EXPECT_EQ(Holding(CreateBinaryLocation(Binary("/\xFE/"), Bytes("\xFF"))), "b:/\xFE/\xFF");
}

TEST(FileLocation, MakesTheChildOfABinaryParentBinary) {
    EXPECT_EQ(Holding(FileLocation(Binary("/\xFE"), "/x/"_utf8)), "b:/\xFE/x");
    EXPECT_EQ(Holding(FileLocation(Binary("/"), "x"_utf8)), "b:/x");
}

TEST(FileLocation, RefusesAChildOfTheEmptyLocation) {
    FileLocation const empty;
    EXPECT_EQ(Sentence<EmptyFileLocationError>([&] { FileLocation(empty, "x"_utf8); }),
              "File error \"22EmptyFileLocationError\"");
    EXPECT_EQ(Sentence<EmptyFileLocationError>([&] { FileLocation(empty, Bytes("x")); }),
              "File error \"22EmptyFileLocationError\"");
    EXPECT_THROW(CreateBinaryLocation(empty, Bytes("x")), EmptyFileLocationError);
    EXPECT_THROW(FileLocation(empty, ""_utf8), EmptyFileLocationError);
}

TEST(FileLocation, GivesItsParent) {
    for (auto const& [given, expected] : {Case{"/a", "/"},
                                          {"/a/b", "/a"},
                                          {"a/b", "a"},
                                          {"/a/b/c", "/a/b"},
                                          {"//x", "/"},
                                          {"a//b", "a/"},
                                          {"/a//b", "/a/"}}) {
        EXPECT_EQ(Holding(Text(given).Parent()), expected) << given;
        EXPECT_EQ(Holding(Binary(given).Parent()), std::string("b:") + expected) << given;
    }
}

TEST(FileLocation, GivesThePathWithoutItsTrailingSlashAsItsParent) {
    EXPECT_EQ(Holding(Text("/a//").Parent()), "/a");
    EXPECT_EQ(Holding(Text("/a///").Parent()), "/a/");
    EXPECT_EQ(Holding(Text("///").Parent()), "/");
    EXPECT_EQ(Holding(FileLocation("/a/").Parent()), "/a");
    EXPECT_EQ(Holding(Binary("a/").Parent()), "b:a");
}

TEST(FileLocation, HasNoParentAsTheRoot) {
    EXPECT_EQ(Sentence<RootHasNoParent>([] { Text("/").Parent(); }),
              "File error \"15RootHasNoParent\" on \"/\"");
    EXPECT_EQ(Sentence<RootHasNoParent>([] { Binary("/").Parent(); }),
              "File error \"15RootHasNoParent\" on \"2f (UTF8: /)\"");
}

TEST(FileLocation, HasNoParentAsARelativePathOfOneComponent) {
    EXPECT_EQ(Sentence<InvalidFileLocation>([] { Text("a").Parent(); }),
              "File error \"19InvalidFileLocation\" on \"a\"");
    EXPECT_EQ(Sentence<InvalidFileLocation>([] { Binary("\xFF").Parent(); }),
              "File error \"19InvalidFileLocation\" on \"ff\"");
    EXPECT_THROW(FileLocation().Parent(), EmptyFileLocationError);
}

TEST(FileLocation, KnowsTheParentOfABinaryChild) {
    FileLocation const child(Binary("/\xFE"), Bytes("b/c"));
    EXPECT_EQ(Holding(child), "b:/\xFE/b/c");
    EXPECT_EQ(Holding(child.Parent()), "b:/\xFE");
    EXPECT_EQ(Holding(child.Name()), "b:b/c");
    EXPECT_EQ(Holding(child.Parent().Parent()), "b:/");
    FileLocation const relative(Text("a"), Bytes("\xFF"));
    EXPECT_EQ(Holding(relative.Parent()), "b:a");
    EXPECT_EQ(Holding(relative.Name()), "b:\xFF");
}

TEST(FileLocation, KnowsTheRootAsTheParentOfABinaryChild) {
    for (FileLocation const& child :
         {FileLocation(Text("/"), Bytes("b/c")), FileLocation(Binary("/"), Bytes("/b/c/")),
          FileLocation(Binary("/"), "b/c"_utf8), CreateBinaryLocation(Text("/"), Bytes("b/c"))}) {
        EXPECT_EQ(Holding(child), "b:/b/c");
        EXPECT_EQ(Holding(child.Parent()), "b:/");
        EXPECT_EQ(Holding(child.Name()), "b:b/c");
        EXPECT_TRUE(EqualOrDescendant(Text("/"), child));
        EXPECT_FALSE(EqualOrDescendant(Text("/b"), child));
        FileLocation const copy(child);
        EXPECT_EQ(Holding(copy.Name()), "b:b/c");
    }
    // "/" is the parent here as well, but another "/" joins.
    FileLocation const doubled(Binary("//"), Bytes("b/c"));
    EXPECT_EQ(Holding(doubled), "b://b/c");
    EXPECT_EQ(Holding(doubled.Parent()), "b:/");
    EXPECT_EQ(Holding(doubled.Name()), "b:b/c");
}

TEST(FileLocation, IsTheRootAndHasNoNameAsItsEmptyBinaryChild) {
    for (FileLocation const& root :
         {FileLocation(Text("/"), Bytes("")), FileLocation(Binary("/"), "/"_utf8)}) {
        EXPECT_EQ(Holding(root), "b:/");
        EXPECT_TRUE(root.IsRoot());
        EXPECT_THROW(root.Parent(), RootHasNoParent);
        EXPECT_THROW(root.Name(), BinaryManipulationNotSupported);
        EXPECT_TRUE(EqualOrDescendant(Text("/"), root));
    }
    EXPECT_TRUE(Binary("/").Name().empty());
}

TEST(FileLocation, CutsABinaryChildOfAParentThatEndsInASlash) {
    FileLocation const inRoot(Text("/"), Bytes("\xFF"));
    EXPECT_EQ(Holding(inRoot.Parent()), "b:/");
    EXPECT_EQ(Holding(inRoot.Name()), "b:\xFF");
    FileLocation const behindSlash(Binary("/a/"), Bytes("\xFF"));
    EXPECT_EQ(Holding(behindSlash.Parent()), "b:/a");
    EXPECT_EQ(Holding(behindSlash.Name()), "b:\xFF");
}

TEST(FileLocation, CannotCutABinaryChildOfWhichNothingRemained) {
    for (FileLocation const& child :
         {FileLocation(Binary("/a"), Bytes("///")), FileLocation(Binary("/a"), "/"_utf8),
          FileLocation(Text("/a"), Bytes(""))}) {
        EXPECT_EQ(Holding(child), "b:/a");
        EXPECT_EQ(Sentence<BinaryManipulationNotSupported>([&] { child.Parent(); }), cBinaryMessage);
        EXPECT_EQ(Sentence<BinaryManipulationNotSupported>([&] { child.Name(); }), cBinaryMessage);
    }
}

TEST(FileLocation, CannotCutABinaryChildOfWhichASlashRemained) {
    FileLocation const child(Binary("/a/"), Bytes("/"));
    EXPECT_EQ(Holding(child), "b:/a/");
    EXPECT_THROW(child.Parent(), BinaryManipulationNotSupported);
    EXPECT_THROW(child.Name(), BinaryManipulationNotSupported);
}

TEST(FileLocation, GivesItsName) {
    for (auto const& [given, expected] :
         {Case{"/a/b", "b"}, {"/a", "a"}, {"a", "a"}, {"/", ""}, {"/a//", ""}, {"", ""}})
        EXPECT_EQ(Holding(Text(given).Name()), expected) << given;
    EXPECT_EQ(Holding(Binary("/a/\xFF").Name()), "b:\xFF");
    EXPECT_TRUE(Binary("/a/").Name().empty());
    EXPECT_TRUE(Binary("/a/\xFF").Name().Text().empty());
    EXPECT_TRUE(Text("/a/b").Name().Bytes().empty());
}

TEST(FileLocation, IsTheRootAsOneSlashAlone) {
    EXPECT_TRUE(Text("/").IsRoot());
    EXPECT_TRUE(Text("//").IsRoot());
    EXPECT_TRUE(Binary("/").IsRoot());
    EXPECT_FALSE(Binary("//").IsRoot());
    EXPECT_FALSE(Text("/a").IsRoot());
    EXPECT_FALSE(Text("a").IsRoot());
    EXPECT_EQ(Sentence<EmptyFileLocationError>([] { FileLocation().IsRoot(); }),
              "File error \"22EmptyFileLocationError\"");
}

TEST(FileLocation, ComparesTheBytesOfThePath) {
    EXPECT_EQ(Text("/a").Compare(Text("/a")), 0);
    EXPECT_EQ(Text("/a").Compare(Binary("/a")), 0);
    EXPECT_EQ(Binary("/\xC3\xBC").Compare(Text("/\xC3\xBC")), 0);
    EXPECT_LT(Text("/a").Compare(Text("/b")), 0);
    EXPECT_GT(Text("/b").Compare(Text("/a")), 0);
    EXPECT_LT(Text("/A").Compare(Text("/a")), 0);
    EXPECT_LT(Text("/a").Compare(Text("/a/b")), 0);
    EXPECT_GT(Binary("/\xFF").Compare(Text("/a")), 0);
    EXPECT_EQ(FileLocation().Compare(FileLocation()), 0);
    EXPECT_LT(FileLocation().Compare(Text("/")), 0);
    EXPECT_GT(Binary("\x01").Compare(FileLocation()), 0);
}

TEST(FileLocation, IsShownAsTextOrInHexadecimal) {
    EXPECT_EQ(Text("/gr\xC3\xBC\xC3\x9F").GetDisplayPath(), "/gr\xC3\xBC\xC3\x9F"_utf8);
    EXPECT_EQ(Binary("/a").GetDisplayPath(), "2f61 (UTF8: /a)"_utf8);
    EXPECT_EQ(Binary("/\xE4").GetDisplayPath(), "2fe4"_utf8);
}

TEST(FileLocation, GoesToTheSystemInTheLocalEncoding) {
    EXPECT_EQ(ForSystemCalls(Text("/a b")), "/a b");
    EXPECT_EQ(ForSystemCalls(Binary("/\xE4\xFF")), "/\xE4\xFF");
    EXPECT_THROW(Text("/gr\xC3\xBC").LibPath(), UnixPlatform::WideToMultiByteConvertError);
    LocaleScope const locale("de_DE.ISO-8859-1");
    EXPECT_EQ(ForSystemCalls(Text("/gr\xC3\xBC")), "/gr\xFC");
    EXPECT_EQ(ForSystemCalls(Binary("/gr\xC3\xBC")), "/gr\xC3\xBC");
}

TEST(FileLocation, IsAValueOfItsOwn) {
    for (std::string const& path : {std::string("/short"), "/" + std::string(300, 'x')}) {
        FileLocation original = Text(path);
        original.SetCachedInformation(Information(7));
        FileLocation copy(original);
        EXPECT_EQ(Holding(copy), path);
        EXPECT_NE(copy.Text().begin(), original.Text().begin());
        EXPECT_EQ(Mark(copy), 7);
        EXPECT_NE(copy.CachedInformation(), original.CachedInformation());
        original = Text("/other");
        EXPECT_EQ(Mark(original), -1);
        EXPECT_EQ(Holding(copy), path);
        original = copy;
        EXPECT_EQ(Holding(original), path);
        EXPECT_EQ(Mark(original), 7);
        FileLocation const& self = copy;
        copy = self;
        EXPECT_EQ(Holding(copy), path);
        EXPECT_EQ(Mark(copy), 7);
    }
}

TEST(FileLocation, CopiesAndMovesWhatItKnowsOfItsParent) {
    FileLocation child(Binary("/\xFE"), Bytes("b/c"));
    FileLocation const copy(child);
    EXPECT_EQ(Holding(copy.Parent()), "b:/\xFE");
    FileLocation assigned = Text("/x");
    assigned = child;
    EXPECT_EQ(Holding(assigned.Parent()), "b:/\xFE");
    FileLocation moved(std::move(child));
    EXPECT_EQ(Holding(moved.Parent()), "b:/\xFE");
    EXPECT_TRUE(child.empty()); // NOLINT: what is left is the empty location
    assigned = Binary("/a/b/c");
    EXPECT_EQ(Holding(assigned.Parent()), "b:/a/b");
    assigned = std::move(moved);
    EXPECT_EQ(Holding(assigned.Parent()), "b:/\xFE");
    moved = Binary("/a/b/c"); // NOLINT: assigned anew
    EXPECT_EQ(Holding(moved.Parent()), "b:/a/b");
}

TEST(FileLocation, MovesItsStorage) {
    FileLocation original = Text("/" + std::string(300, 'x'));
    original.SetCachedInformation(Information(9));
    unsigned char const* const storage = original.Text().begin();
    FileLocation moved(std::move(original));
    EXPECT_EQ(moved.Text().begin(), storage);
    EXPECT_EQ(Mark(moved), 9);
    EXPECT_EQ(Mark(original), -1); // NOLINT: what is left is the empty location
    FileLocation& self = moved;
    moved = std::move(self);
    EXPECT_EQ(moved.Text().begin(), storage);
    EXPECT_EQ(Mark(moved), 9);
}

TEST(FileLocation, HandsItsCachedInformationToItsChildren) {
    FileLocation parent = Text("/a");
    parent.SetCachedInformation(Information(5));
    EXPECT_EQ(Mark(FileLocation(parent, "x"_utf8)), 5);
    EXPECT_EQ(Mark(FileLocation(parent, ""_utf8)), 5);
    EXPECT_EQ(Mark(FileLocation(parent, Bytes("\xFF"))), 5);
    EXPECT_EQ(Mark(parent), 5);
    FileLocation binary = Binary("/\xFF");
    binary.SetCachedInformation(Information(6));
    EXPECT_EQ(Mark(FileLocation(binary, "x"_utf8)), 6);
}

TEST(FileLocation, ExistsUnderItsNameAlone) {
    TemporaryFolder const folder;
    folder.Write("file", "x");
    folder.MakeFolder("folder");
    folder.MakeLink("file", "link");
    folder.MakeLink("folder", "folder link");
    folder.MakeLink("nowhere", "dangling");
    struct {
        char const* name;
        bool exists;
        bool isDirectory;
    } const cases[] = {{"file", true, false},       {"folder", true, true},    {"link", true, false},
                       {"folder link", true, true}, {"dangling", true, false}, {"missing", false, false},
                       {"file/below", false, false}};
    for (auto const& [name, exists, isDirectory] : cases) {
        EXPECT_EQ(folder.Location(name).Exists(), exists) << name;
        EXPECT_EQ(folder.Location(name).IsDirectory(), isDirectory) << name;
        EXPECT_EQ(Binary(folder.Path(name)).Exists(), exists) << name;
    }
    EXPECT_FALSE(FileLocation().Exists());
    EXPECT_FALSE(FileLocation().IsDirectory());
    EXPECT_TRUE(Text("/").IsDirectory());
    EXPECT_FALSE(Text("/" + std::string(5000, 'x')).Exists());
}

TEST(FileLocation, FindsAFileWhoseNameIsInNoEncoding) {
    TemporaryFolder const folder;
    folder.Write("a\xFF", "x");
    LocaleScope const locale("ja_JP.EUC-JP");
    FileLocation const fromSystem(folder.Path("a\xFF").c_str());
    EXPECT_TRUE(fromSystem.IsBinary());
    EXPECT_TRUE(fromSystem.Exists());
    EXPECT_TRUE(FileLocation(folder.Location(), Bytes("a\xFF")).Exists());
    EXPECT_FALSE(FileLocation(folder.Location(), Bytes("b\xFF")).Exists());
}

TEST(FileLocation, TellsWhatIsKnownOfAFileThatExists) {
    TemporaryFolder const folder;
    folder.Write("file", "12345");
    UnixPlatform::UnixFileInfo const info = folder.Location("file").GetValidInfo();
    EXPECT_TRUE(info.IsRegularFile());
    EXPECT_EQ(info.Stats().target.st_size, 5);
    folder.MakeLink("nowhere", "dangling");
    EXPECT_EQ(folder.Location("dangling").GetValidInfo().State(), cDanglingLink);
    EXPECT_EQ(Sentence<InvalidStats>([&] { folder.Location("missing").GetValidInfo(); }),
              "File error \"12InvalidStats\" on \"" + folder.Path("missing") + "\"");
    EXPECT_THROW(FileLocation().GetValidInfo(), InvalidStats);
}

TEST(FileLocation, IsReadOnlyWithoutThePermissionToWrite) {
    TemporaryFolder const folder;
    folder.Write("file", "x");
    ASSERT_EQ(chmod(folder.Path().c_str(), 0755), 0);
    ASSERT_EQ(chmod(folder.Path("file").c_str(), 0666), 0);
    FileLocation const location = folder.Location("file");
    EXPECT_FALSE(location.IsReadOnly());
    ASSERT_EQ(chmod(folder.Path("file").c_str(), 0444), 0);
    // The root user may write to any file: the question is asked by another user, in a process of its own.
    auto const isReadOnlyForAnotherUser = [&] {
        constexpr uid_t nobody = 65534;
        if (geteuid() == 0 && setuid(nobody) != 0) _exit(2);
        _exit(location.IsReadOnly() ? 0 : 1);
    };
    EXPECT_EXIT(isReadOnlyForAnotherUser(), testing::ExitedWithCode(0), "");
}

TEST(FileLocation, IsReadOnlyOnAReadOnlyFileSystem) {
    TemporaryFolder const folder;
    FileLocation const location = folder.Location();
    ASSERT_FALSE(location.IsReadOnly());
    pid_t const child = fork();
    ASSERT_GE(child, 0);
    if (child == 0) {
        if (!MountReadOnlyForThisProcess(folder.Path())) _exit(2);
        _exit(location.IsReadOnly() ? 0 : 1);
    }
    int status = 0;
    ASSERT_EQ(waitpid(child, &status, 0), child);
    ASSERT_TRUE(WIFEXITED(status));
    if (WEXITSTATUS(status) == 2) GTEST_SKIP() << "A process may not mount a file system of its own here.";
    EXPECT_EQ(WEXITSTATUS(status), 0);
}

TEST(FileLocation, ReportsWhenItCannotTellWhetherItIsReadOnly) {
    TemporaryFolder const folder;
    folder.Write("file", "x");
    EXPECT_EQ(Sentence<FileNotFoundError>([&] { folder.Location("missing").IsReadOnly(); }),
              "File error \"17FileNotFoundError\" on \"" + folder.Path("missing") +
                  "\" : \"Error 0x2%: No such file or directory\"");
    EXPECT_THROW(folder.Location("file/below").IsReadOnly(), DirectoryNotFoundError);
    EXPECT_THROW(Text("/" + std::string(5000, 'x')).IsReadOnly(), DirectoryNotFoundError);
    EXPECT_THROW(FileLocation().IsReadOnly(), FileNotFoundError);
}

TEST(EqualOrDescendant, FollowsTheParentsUpwards) {
    struct {
        char const* ancestor;
        char const* location;
        bool equalOrBelow;
        bool below;
    } const cases[] = {
        {"/a", "/a", true, false},     {"/a", "/a/b", true, true},  {"/a", "/a/b/c", true, true},
        {"/a/b", "/a", false, false},  {"/a", "/ab", false, false}, {"/a", "/b/a", false, false},
        {"/", "/", true, false},       {"/", "/a/b", true, true},   {"/a", "/", false, false},
        {"/a", "/A/b", false, false},  {"a", "a/b", true, true},    {"/a", "/a//b", true, true},
        {"/a", "/a/../b", true, true}, {"a", "a", true, false},
    };
    for (auto const& [ancestor, location, equalOrBelow, below] : cases) {
        EXPECT_EQ(EqualOrDescendant(Text(ancestor), Text(location)), equalOrBelow)
            << ancestor << ", " << location;
        EXPECT_EQ(IsDescendant(Text(ancestor), Text(location)), below) << ancestor << ", " << location;
        EXPECT_EQ(EqualOrDescendant(Binary(ancestor), Text(location)), equalOrBelow)
            << ancestor << ", " << location;
        EXPECT_EQ(IsDescendant(Text(ancestor), Binary(location)), below) << ancestor << ", " << location;
    }
}

TEST(EqualOrDescendant, CountsTheSlashesOfAnAncestor) {
    EXPECT_TRUE(EqualOrDescendant(Text("/a//"), Text("/a//b")));
    EXPECT_TRUE(EqualOrDescendant(Binary("/a/"), Text("/a//b")));
    EXPECT_FALSE(EqualOrDescendant(Binary("/a/"), Text("/a/b")));
    EXPECT_FALSE(EqualOrDescendant(Binary("/a//"), Text("/a//b")));
}

TEST(EqualOrDescendant, StepsFromABinaryChildToTheParentItKnows) {
    FileLocation const child(Binary("/\xFE"), Bytes("b/c"));
    EXPECT_TRUE(EqualOrDescendant(Binary("/\xFE"), child));
    EXPECT_TRUE(EqualOrDescendant(Text("/"), child));
    EXPECT_FALSE(EqualOrDescendant(Binary("/\xFE/b"), child));
    FileLocation const nothing(Binary("/a"), Bytes(""));
    EXPECT_TRUE(EqualOrDescendant(Text("/a"), nothing));
    EXPECT_THROW(EqualOrDescendant(Text("/"), nothing), BinaryManipulationNotSupported);
}

TEST(EqualOrDescendant, RefusesEmptyLocations) {
    FileLocation const empty;
    EXPECT_THROW(EqualOrDescendant(empty, Text("/a")), EmptyFileLocationError);
    EXPECT_THROW(EqualOrDescendant(empty, empty), EmptyFileLocationError);
    EXPECT_THROW(EqualOrDescendant(Text("/a"), empty), EmptyFileLocationError);
    EXPECT_THROW(IsDescendant(empty, empty), EmptyFileLocationError);
    EXPECT_THROW(IsDescendant(empty, Text("/a")), EmptyFileLocationError);
}

TEST(EqualOrDescendant, RunsOutOfParentsInARelativeLocation) {
    EXPECT_EQ(Sentence<InvalidFileLocation>([] { EqualOrDescendant(Text("/a"), Text("b/c/d")); }),
              "File error \"19InvalidFileLocation\" on \"b\"");
    EXPECT_THROW(IsDescendant(Text("x"), Text("b/c")), InvalidFileLocation);
    EXPECT_THROW(EqualOrDescendant(Text("x"), Text("b")), InvalidFileLocation);
}

TEST(EqualOrDescendant, WalksALongPathInLinearTime) {
    std::string path;
    while (path.size() < 2000000) path += "/a";
    FileLocation const location = Text(path);
    auto const start = std::chrono::steady_clock::now();
    EXPECT_FALSE(EqualOrDescendant(Text("/b"), location));
    EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(5));
}

TEST(MakeFileLocationWithWildcard, SplitsOffALastComponentWithWildcards) {
    struct {
        char const* text;
        char const* location;
        char const* pattern;
    } const cases[] = {
        {"/tmp/*.log", "/tmp", "*.log"},
        {"*.log", "", "*.log"},
        {"/tmp/a?b", "/tmp", "a?b"},
        {"/*", "/", "*"},
        {"/tmp//?", "/tmp/", "?"},
        {"?", "", "?"},
        {"/tmp/a.log", "/tmp/a.log", ""},
        {"a.log", "a.log", ""},
        {"/t*p/a", "/t*p/a", ""},
        {"/tmp/", "/tmp", ""},
        {"/t?p/", "/t?p", ""},
        {"/", "/", ""},
        {"/t?p/*", "/t?p", "*"},
    };
    for (auto const& [text, expectedLocation, expectedPattern] : cases) {
        FileLocation location = Binary("/earlier");
        AutoUString<UTF8> const pattern = MakeFileLocationWithWildcard(MakeUTF8Ref(text), location);
        EXPECT_EQ(Holding(location), expectedLocation) << text;
        EXPECT_EQ(Plain(pattern), expectedPattern) << text;
    }
}

TEST(MakeFileLocationWithWildcard, RefusesTheEmptyText) {
    FileLocation location = Text("/earlier");
    EXPECT_THROW(MakeFileLocationWithWildcard(""_utf8, location), EmptyFileLocationError);
    EXPECT_EQ(Holding(location), "/earlier");
}

TEST(MakeFileLocationWithWildcard, TakesTheTextOfTheLocationItself) {
    for (std::string const& folder : {std::string("/a"), "/" + std::string(100, 'x')}) {
        FileLocation location = Text(folder + "/*.log");
        EXPECT_EQ(MakeFileLocationWithWildcard(location.Text(), location), "*.log"_utf8);
        EXPECT_EQ(Holding(location), folder);
    }
}

TEST(FileName, HoldsTextOrBytes) {
    FileName const text("a"_utf8);
    EXPECT_EQ(text.Text(), "a"_utf8);
    EXPECT_TRUE(text.Bytes().empty());
    EXPECT_FALSE(text.IsBinary());
    FileName const bytes(Bytes("\xFF"));
    EXPECT_TRUE(bytes.Text().empty());
    EXPECT_EQ(Plain(bytes.Bytes()), "\xFF");
    EXPECT_TRUE(bytes.IsBinary());
    EXPECT_FALSE(bytes.empty());
    EXPECT_TRUE(FileName().empty());
    FileName const copy(bytes);
    EXPECT_NE(copy.Bytes().begin(), bytes.Bytes().begin());
    EXPECT_EQ(Plain(copy.Bytes()), "\xFF");
}
