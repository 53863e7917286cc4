#include "files/TemporaryLocations.h"

#include "files/DeletingFiles.h"
#include "files/FileErrors.h"
#include "files/FileStats.h"

#include "tests/files/ChildProcess.h"
#include "tests/files/FileTestSupport.h"
#include "tests/support/LocaleScope.h"
#include "tests/support/TemporaryFolder.h"

#include <functional>
#include <gtest/gtest.h>
#include <set>
#include <sys/stat.h>

namespace {

std::string PathOf(FileLocation const& location) {
    return MakeString(location.Text());
}

mode_t ModeOf(FileLocation const& location) {
    struct stat status = {};
    EXPECT_EQ(lstat(location.LibPath().c_str(), &status), 0);
    return status.st_mode;
}

// Whether it stands directly in the folder, by the hint and six characters.
bool IsUnique(FileLocation const& location, std::string const& folder, std::string const& hint) {
    std::string const path = PathOf(location);
    return path.starts_with(folder + "/" + hint) && path.size() == folder.size() + 1 + hint.size() + 6 &&
           path.find('/', folder.size() + 1) == std::string::npos && !path.ends_with("XXXXXX");
}

// Deletes what a test makes in the folder of the system.
class Deleting {
public:
    explicit Deleting(FileLocation const& location) : m_location(location) {}
    Deleting(Deleting const&) = delete;
    Deleting& operator=(Deleting const&) = delete;
    ~Deleting() { ForceNonexistence(m_location); }

private:
    FileLocation m_location;
};

// Makes the folder the root directory of this process. Whether that is allowed. For a child process.
bool EnterAsRoot(TemporaryFolder const& folder) {
    auto const changeRoot = [&] { return chroot(folder.Path().c_str()) == 0; };
    return (changeRoot() || (SeparateMounts() && changeRoot())) && chdir("/") == 0;
}

// Called in front of each mkfifo of the library, as another process would come in between.
std::function<void(std::string const& path)> beforePipe;

// For its scope.
class BeforePipe {
public:
    explicit BeforePipe(std::function<void(std::string const& path)> act) { beforePipe = std::move(act); }
    BeforePipe(BeforePipe const&) = delete;
    BeforePipe& operator=(BeforePipe const&) = delete;
    ~BeforePipe() { beforePipe = nullptr; }
};

struct Date {
    unsigned int year = 1;
    unsigned int month = 2;
    unsigned int day = 3;
    friend bool operator==(Date const&, Date const&) = default;
};

Date DateOf(FileLocation const& location) {
    Date date;
    GetDateFromNameInFileLocation(location, date.year, date.month, date.day);
    return date;
}

} // namespace

// The linker puts the first of these in the place of the second.
extern "C" int __wrap_mkfifo(char const* path, mode_t mode);
extern "C" int __real_mkfifo(char const* path, mode_t mode);

int __wrap_mkfifo(char const* path, mode_t mode) {
    if (beforePipe) beforePipe(path);
    return __real_mkfifo(path, mode);
}

TEST(TemporaryFileDirLocation, IsOneDirectoryForTheProcess) {
    InitializeTemporaryFileDirLocation();
    EXPECT_EQ(PathOf(TemporaryFileDirLocation()), "/tmp");
    EXPECT_EQ(&TemporaryFileDirLocation(), &TemporaryFileDirLocation());
    EXPECT_TRUE(TemporaryFileDirLocation().IsDirectory());
}

TEST(TemporaryFileDirLocation, IsMadeWhenItIsFirstAskedFor) {
    // In a new run of the test program, which has not asked yet, with a folder of the test as its root.
    std::string const style = GTEST_FLAG_GET(death_test_style);
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    auto const whatHappens = [] {
        TemporaryFolder const folder;
        return InChild([&] {
            if (!EnterAsRoot(folder)) return std::string(cNotAllowed);
            std::string const before = FileLocation("/tmp"_utf8).Exists() ? "there, " : "missing, ";
            std::string const failure = FailureOf([] { InitializeTemporaryFileDirLocation(); });
            return before + failure + (FileLocation("/tmp"_utf8).IsDirectory() ? ", there" : ", missing");
        });
    };
    auto const exitAsExpected = [&] {
        std::string const result = whatHappens();
        _exit(result == "missing, nothing, there" || result == cNotAllowed ? 0 : 1);
    };
    EXPECT_EXIT(exitAsExpected(), testing::ExitedWithCode(0), "");
    GTEST_FLAG_SET(death_test_style, style);
}

TEST(UISessionDefaultDirectory, StandsBelowTheTemporaryDirectory) {
    EXPECT_EQ(PathOf(UISessionDefaultDirectory(""_utf8)), "/tmp/VRK/ClientUI");
    EXPECT_EQ(PathOf(UISessionDefaultDirectory(UStringRef<UTF8>())), "/tmp/VRK/ClientUI");
    EXPECT_EQ(PathOf(UISessionDefaultDirectory("name"_utf8)), "/tmp/VRK/ClientUI/.name");
}

TEST(UISessionDefaultDirectory, IsOneComponentForEveryName) {
    struct {
        char const* name;
        char const* path;
    } const cases[] = {{"..", "/tmp/VRK/ClientUI/..."},
                       {".name", "/tmp/VRK/ClientUI/..name"},
                       {" ", "/tmp/VRK/ClientUI/. "},
                       {"\xC3\xA4", "/tmp/VRK/ClientUI/.\xC3\xA4"}};
    for (auto const& [name, path] : cases)
        EXPECT_EQ(PathOf(UISessionDefaultDirectory(MakeUTF8Ref(name))), path);
    for (std::string const& name :
         {std::string("."), std::string("./../../etc"), std::string("../x"), std::string("/../x"),
          std::string("a/b"), std::string("a/"), std::string("/"), std::string("a\0b", 3),
          std::string(1, '\0'), std::string("\xC0\xAE"), std::string("a\xC0\xAF"), std::string("a\xFF")})
        EXPECT_EQ(FailureOf([&] { UISessionDefaultDirectory(MakeUTF8Ref(name)); }), "IllegalFileName")
            << name;
}

TEST(CreateUniqueFileLocation, MakesAnEmptyFileOfANewName) {
    TemporaryFolder const folder;
    auto const descriptors = OpenDescriptors();
    std::set<std::string> paths;
    for (int count = 0; count < 100; ++count) {
        FileLocation const location = CreateUniqueFileLocation(folder.Location(), "hint"_utf8);
        EXPECT_TRUE(IsUnique(location, folder.Path(), "hint")) << PathOf(location);
        EXPECT_EQ(ModeOf(location), S_IFREG | 0600U);
        EXPECT_TRUE(paths.insert(PathOf(location)).second);
    }
    EXPECT_EQ(OpenDescriptors(), descriptors);
    EXPECT_TRUE(IsUnique(CreateUniqueFileLocation(folder.Location(), ""_utf8), folder.Path(), ""));
}

TEST(CreateUniqueFileLocation, MakesAFileInTheRootWithOneSlash) {
    FileLocation const location = CreateUniqueFileLocation(FileLocation("/"_utf8), "tmp/vrk-hint"_utf8);
    Deleting const deleting(location);
    EXPECT_TRUE(IsUnique(location, "/tmp", "vrk-hint")) << PathOf(location);
}

TEST(CreateUniqueDirLocation, MakesADirectoryOfANewName) {
    TemporaryFolder const folder;
    FileLocation const first = CreateUniqueDirLocation(folder.Location(), "hint"_utf8);
    FileLocation const second = CreateUniqueDirLocation(folder.Location(), "hint"_utf8);
    EXPECT_TRUE(IsUnique(first, folder.Path(), "hint"));
    EXPECT_EQ(ModeOf(first), S_IFDIR | 0700U);
    EXPECT_NE(PathOf(first), PathOf(second));
}

TEST(CreateUniquePipeLocation, MakesANamedPipeOfANewName) {
    TemporaryFolder const folder;
    FileLocation const first = CreateUniquePipeLocation(folder.Location(), "hint"_utf8);
    FileLocation const second = CreateUniquePipeLocation(folder.Location(), "hint"_utf8);
    EXPECT_TRUE(IsUnique(first, folder.Path(), "hint"));
    EXPECT_EQ(ModeOf(first), S_IFIFO | 0600U);
    EXPECT_NE(PathOf(first), PathOf(second));
}

TEST(CreateUniquePipeLocation, LeavesWhatTakesTheNameInBetween) {
    TemporaryFolder const folder;
    folder.Write("kept", "kept");
    std::string taken;
    BeforePipe const other([&](std::string const& path) {
        if (!taken.empty()) return;
        taken = path;
        EXPECT_FALSE(std::filesystem::exists(path));
        std::filesystem::create_symlink(folder.Path("kept"), path);
    });
    EXPECT_EQ(FailureOf([&] { CreateUniquePipeLocation(folder.Location(), "hint"_utf8); }),
              "FileFoundError 17");
    EXPECT_TRUE(taken.starts_with(folder.Path("hint")));
    ASSERT_EQ(ModeOf(FileLocation(MakeUTF8Ref(taken))) & S_IFMT, static_cast<mode_t>(S_IFLNK));
    EXPECT_EQ(folder.Read("kept"), "kept");
}

TEST(UniqueLocations, StandInTheTemporaryDirectoryByDefault) {
    FileLocation const file = CreateUniqueFileLocation("vrk-hint"_utf8);
    Deleting const deletingFile(file);
    EXPECT_TRUE(IsUnique(file, "/tmp", "vrk-hint"));
    EXPECT_EQ(ModeOf(file), S_IFREG | 0600U);
    FileLocation const pipe = CreateUniquePipeLocation("vrk-hint"_utf8);
    Deleting const deletingPipe(pipe);
    EXPECT_TRUE(IsUnique(pipe, "/tmp", "vrk-hint"));
    EXPECT_EQ(ModeOf(pipe), S_IFIFO | 0600U);
}

TEST(UniqueLocations, MakeTheTemporaryDirectoryAnew) {
    // In a process whose root is a folder of the test.
    TemporaryFolder const folder;
    std::string const result = InChild([&] {
        if (!EnterAsRoot(folder)) return std::string(cNotAllowed);
        return FailureOf([] {
            FileLocation location;
            MakeTemporaryFileLocation(location, "hint"_utf8);
            DeleteFile(location);
            DeleteDirectory(FileLocation("/tmp"_utf8));
            DeleteFile(CreateUniqueFileLocation("hint"_utf8));
            DeleteDirectory(FileLocation("/tmp"_utf8));
            CreateUniquePipeLocation("hint"_utf8);
        });
    });
    if (result == cNotAllowed) GTEST_SKIP() << "A process may not change its root directory here.";
    EXPECT_EQ(result, "nothing");
    ASSERT_TRUE(std::filesystem::is_directory(folder.Path("tmp")));
    EXPECT_EQ(std::distance(std::filesystem::directory_iterator(folder.Path("tmp")),
                            std::filesystem::directory_iterator()),
              1);
}

TEST(UniqueLocations, ReportFailures) {
    TemporaryFolder const folder;
    folder.Write("file", "x");
    struct {
        char const* name;
        FileLocation (*make)(FileLocation const&, UStringRef<UTF8> const&);
    } const makers[] = {{"file", CreateUniqueFileLocation},
                        {"directory", CreateUniqueDirLocation},
                        {"pipe", CreateUniquePipeLocation}};
    for (auto const& [name, make] : makers) {
        auto const failure = [&make = make](FileLocation const& directory, std::string const& hint) {
            return FailureOf([&] { make(directory, MakeUTF8Ref(hint)); });
        };
        EXPECT_EQ(failure(folder.Location("missing"), "hint"), "CreateUniqueFileLocationFailed 2") << name;
        EXPECT_EQ(failure(folder.Location("file"), "hint"), "CreateUniqueFileLocationFailed 20") << name;
        EXPECT_EQ(failure(folder.Location(), std::string(250, 'x')), "CreateUniqueFileLocationFailed 36")
            << name;
        EXPECT_EQ(failure(folder.Location(), std::string(5000, 'x')), "CreateUniqueFileLocationFailed 36")
            << name;
        EXPECT_EQ(failure(folder.Location(), std::string("a\0b", 3)), "CreateUniqueFileLocationFailed 22")
            << name;
        EXPECT_EQ(failure(FileLocation(), "hint"), "EmptyFileLocationError 0") << name;
    }
}

TEST(UniqueLocations, TakeAHintAsItIsWritten) {
    TemporaryFolder const folder;
    folder.MakeFolder("a");
    folder.MakeFolder("b");
    struct {
        char const* hint;
        std::string directory;
        char const* start;
    } const cases[] = {{"../hint", folder.Path(), "hint"},
                       {"../b/hint", folder.Path("b"), "hint"},
                       {"/hint", folder.Path("a"), "hint"},
                       {"..", folder.Path("a"), ".."},
                       {"../", folder.Path(), ""}};
    for (auto const& [hint, directory, start] : cases) {
        FileLocation const location = CreateUniqueFileLocation(folder.Location("a"), MakeUTF8Ref(hint));
        std::string const path = std::filesystem::canonical(PathOf(location)).string();
        EXPECT_TRUE(IsUnique(FileLocation(MakeUTF8Ref(path)), directory, start)) << path;
    }
}

TEST(UniqueLocations, ReadAHintUpToANUL) {
    for (char const* const locale : {"C", "C.UTF-8"}) {
        LocaleScope const scope(locale);
        TemporaryFolder const folder;
        auto const make = [&](std::string const& hint) {
            return CreateUniqueFileLocation(folder.Location(), MakeUTF8Ref(hint));
        };
        EXPECT_EQ(FailureOf([&] { make(std::string("a\0b", 3)); }), "CreateUniqueFileLocationFailed 22")
            << locale;
        EXPECT_EQ(FailureOf([&] { make(std::string(1, '\0')); }), "CreateUniqueFileLocationFailed 22")
            << locale;
        EXPECT_TRUE(std::filesystem::is_empty(folder.Path())) << locale;
        FileLocation const location = make(std::string("aXXXXXX\0/b", 10));
        EXPECT_TRUE(IsUnique(location, folder.Path(), "a")) << locale;
        EXPECT_TRUE(location.Exists()) << locale;
    }
}

TEST(UniqueLocations, KeepANameThatIsNoTextAsBytes) {
    LocaleScope const scope("C.UTF-8");
    TemporaryFolder const folder;
    FileLocation const location = CreateUniqueFileLocation(folder.Location(), MakeUTF8Ref("\xFF"));
    EXPECT_TRUE(MakeString(location.Bytes()).starts_with(folder.Path("\xFF")));
    EXPECT_TRUE(location.Exists());
}

TEST(UniqueLocations, TakeAPathOf4095BytesButNoLongerOne) {
    // The path leads nowhere, and that is found out only for one that is short enough.
    auto const failureOfSize = [](std::size_t size) {
        std::string directory = "/";
        while (directory.size() + 2 < size - 11) directory += "x/";
        directory += directory.size() + 1 < size - 11 ? "xx" : "x";
        std::string const hint(size - directory.size() - 1 - 6, 'h');
        return FailureOf(
            [&] { CreateUniqueFileLocation(FileLocation(MakeUTF8Ref(directory)), MakeUTF8Ref(hint)); });
    };
    EXPECT_EQ(failureOfSize(4095), "CreateUniqueFileLocationFailed 2");
    EXPECT_EQ(failureOfSize(4096), "CreateUniqueFileLocationFailed 36");
}

TEST(UniqueLocations, TakeNamesInTheEncodingOfTheLocale) {
    LocaleScope const scope("de_DE.ISO-8859-1");
    TemporaryFolder const folder;
    FileLocation const location = CreateUniqueFileLocation(folder.Location(), "\xC3\xA4"_utf8);
    EXPECT_TRUE(IsUnique(location, folder.Path(), "\xC3\xA4"));
    EXPECT_EQ(std::string(location.LibPath().c_str()).substr(folder.Path().size(), 2), "/\xE4");
    EXPECT_TRUE(location.Exists());
    EXPECT_THROW(CreateUniqueFileLocation(folder.Location(), "\xE2\x82\xAC"_utf8),
                 UnixPlatform::WideToMultiByteConvertError);
}

TEST(UniqueLocations, StandInBinaryDirectories) {
    LocaleScope const scope("C");
    TemporaryFolder const folder;
    folder.MakeFolder("\xE4");
    std::string const path = folder.Path("\xE4");
    FileLocation const directory(UStringRef<Binary8Bit>(Binary8Bit(), MakeConstData(path)));
    FileLocation const location = CreateUniqueFileLocation(directory, "hint"_utf8);
    EXPECT_TRUE(MakeString(location.Bytes()).starts_with(path + "/hint"));
    EXPECT_TRUE(location.Exists());

    LocaleScope const western("de_DE.ISO-8859-1");
    FileLocation const umlaut = CreateUniqueFileLocation(directory, "\xC3\xBC"_utf8);
    EXPECT_TRUE(std::string(umlaut.LibPath().c_str()).starts_with(path + "/\xFC"));
    EXPECT_TRUE(umlaut.Exists());
}

TEST(CreateUniqueFileLocationWithHint, ChoosesTheDirectoryOrTheOneAbove) {
    TemporaryFolder const folder;
    folder.Write("file", "x");
    auto const make = [&](FileLocation const& location) {
        return CreateUniqueFileLocationWithHint(location, "hint"_utf8);
    };
    EXPECT_TRUE(IsUnique(make(folder.Location()), folder.Path(), "hint"));
    EXPECT_TRUE(IsUnique(make(folder.Location("file")), folder.Path(), "hint"));
    EXPECT_TRUE(IsUnique(make(folder.Location("missing")), folder.Path(), "hint"));
    EXPECT_FALSE(folder.Has("missing"));
    FileLocation const deep = make(folder.Location("a/b/missing"));
    EXPECT_TRUE(IsUnique(deep, folder.Path("a/b"), "hint"));
    EXPECT_TRUE(deep.Exists());
    EXPECT_EQ(FailureOf([&] { make(folder.Location("file/missing")); }), "FileFoundError 17");
    EXPECT_EQ(FailureOf([&] { make(FileLocation()); }), "EmptyFileLocationError 0");
    EXPECT_EQ(FailureOf([&] { make(FileLocation("relative-and-missing"_utf8)); }), "InvalidFileLocation 0");
}

TEST(LocationForTemporaryFile, GivesANameThatIsFree) {
    TemporaryFolder const folder;
    folder.Write("file", "x");
    FileLocation const location = LocationForTemporaryFile();
    EXPECT_TRUE(IsUnique(location, "/tmp", "temp"));
    EXPECT_FALSE(location.Exists());
    for (FileLocation const& near :
         {folder.Location(), folder.Location("file"), folder.Location("missing")}) {
        FileLocation const found = LocationForTemporaryFile(near);
        EXPECT_TRUE(IsUnique(found, folder.Path(), "temp")) << PathOf(found);
        EXPECT_FALSE(found.Exists());
    }
    EXPECT_EQ(FailureOf([&] { LocationForTemporaryFile(folder.Location("a/b")); }),
              "CreateUniqueFileLocationFailed 2");
    EXPECT_EQ(FailureOf([] { LocationForTemporaryFile(FileLocation()); }), "EmptyFileLocationError 0");
}

TEST(MakeTemporaryFileLocation, MakesAFileByTheHintOrAnother) {
    FileLocation location;
    MakeTemporaryFileLocation(location, "vrk-hint"_utf8);
    Deleting const deleting(location);
    EXPECT_TRUE(IsUnique(location, "/tmp", "vrk-hint"));
    EXPECT_TRUE(location.Exists());
    for (UStringRef<UTF8> const& hint : {""_utf8, UStringRef<UTF8>()}) {
        FileLocation byDefault;
        MakeTemporaryFileLocation(byDefault, hint);
        Deleting const deletingDefault(byDefault);
        EXPECT_TRUE(IsUnique(byDefault, "/tmp", "varnik")) << PathOf(byDefault);
        EXPECT_TRUE(byDefault.Exists());
    }
}

TEST(GetDateFromNameInFileLocation, ReadsEightDigits) {
    EXPECT_EQ(DateOf(FileLocation("/logs/20240229"_utf8)), (Date{2024, 2, 29}));
    EXPECT_EQ(DateOf(FileLocation("/logs/19991231.log"_utf8)), (Date{1999, 12, 31}));
    EXPECT_EQ(DateOf(FileLocation("000102030405"_utf8)), (Date{1, 2, 3}));
    EXPECT_EQ(DateOf(FileLocation("99999999"_utf8)), (Date{9999, 99, 99}));
    std::string const bytes = "/x/20240102\xFF";
    EXPECT_EQ(DateOf(FileLocation(UStringRef<Binary8Bit>(Binary8Bit(), MakeConstData(bytes)))),
              (Date{2024, 1, 2}));
}

TEST(GetDateFromNameInFileLocation, RefusesEveryOtherShape) {
    for (char const* const path :
         {"/logs/2024022", "/logs/2024-02-29", "/logs/x20240229", "/20240229/x", "/", "/logs/2024022x",
          "/logs/x0240229", "/logs/ 20240229", "/logs/+2024022", "/logs/20240229//",
          "/logs/2024\xD9\xA0"
          "0229"}) {
        Date date;
        EXPECT_THROW(
            GetDateFromNameInFileLocation(FileLocation(MakeUTF8Ref(path)), date.year, date.month, date.day),
            IllegalFileName)
            << path;
        EXPECT_EQ(date, Date()) << path;
    }
}
