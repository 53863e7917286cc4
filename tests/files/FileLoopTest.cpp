#include "files/FileLoop.h"

#include "files/FileErrors.h"
#include "text/CurrentEncodings.h"
#include "text/UString.h"

#include "tests/files/ChildProcess.h"
#include "tests/files/FileTestSupport.h"
#include "tests/files/QuickFolder.h"
#include "tests/support/Allocations.h"
#include "tests/support/LocaleScope.h"
#include "tests/support/TemporaryFolder.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <type_traits>
#include <unistd.h>

namespace {

using Names = std::vector<std::string>;

// The last component, with "b:" in front of one that comes as bytes.
std::string NameOf(FileItem const& item) {
    FileName const name = item.Location().Name();
    return name.IsBinary() ? "b:" + MakeString(name.Bytes()) : MakeString(name.Text());
}

template <class Loop>
Names NamesOf(Loop& loop) {
    Names names;
    for (; loop.Unfinished(); ++loop) names.push_back(NameOf(*loop));
    return names;
}

Names NamesIn(FileLocation const& directory, char const* pattern = "") {
    FileLoop loop(directory, MakeUTF8Ref(pattern), true);
    return NamesOf(loop);
}

TemporaryFolder const& WriteAll(TemporaryFolder const& folder, Names const& names) {
    for (std::string const& name : names) folder.Write(name, "x");
    return folder;
}

FileLocation Binary(std::string const& bytes) {
    return FileLocation(UStringRef<Binary8Bit>(Binary8Bit(), MakeConstData(bytes)));
}

bool CanBeOpened(FileLocation const& location) {
    return access(location.LibPath().c_str(), F_OK) == 0;
}

} // namespace

static_assert(!std::is_copy_constructible_v<FileLoop>);
static_assert(std::is_base_of_v<DebuggableException, UnixPlatform::FileLoop::Error>);
static_assert(std::is_base_of_v<UnixPlatform::FileLoop::Error, FileLoop::InvalidIteratorPosition>);

TEST(FileLoop, IsFinishedAtTheStartOfAnEmptyDirectory) {
    TemporaryFolder const folder;
    FileLoop loop(folder.Location(), ""_utf8, false);
    EXPECT_TRUE(loop.IsStarted());
    EXPECT_TRUE(loop.Finished());
    EXPECT_FALSE(loop.Unfinished());
    EXPECT_THROW(*loop, UnixPlatform::FileLoop::InvalidIteratorPosition);
    EXPECT_THROW(loop->Location(), UnixPlatform::FileLoop::InvalidIteratorPosition);
    EXPECT_NO_THROW(++loop);
}

TEST(FileLoop, IsNotStartedWithoutADirectory) {
    TemporaryFolder const folder;
    folder.Write("file", "x");
    folder.MakeLink("missing", "dangling");
    FileLocation const nowhere[] = {folder.Location("missing"),
                                    folder.Location("file"),
                                    folder.Location("dangling"),
                                    folder.Location("file/below"),
                                    folder.Location(std::string(5000, 'x')),
                                    FileLocation()};
    for (FileLocation const& location : nowhere) {
        FileLoop loop(location, ""_utf8, false);
        EXPECT_FALSE(loop.IsStarted());
        EXPECT_TRUE(loop.Finished());
        EXPECT_THROW(*loop, FileLoopUninitialized);
        EXPECT_THROW(loop->Location(), FileLoopUninitialized);
        EXPECT_THROW(++loop, FileLoopUninitialized);
        FileLoop byType(location, AdviceFileTypes::Log());
        EXPECT_THROW(*byType, FileLoopUninitialized);
    }
    FileLoop const loop;
    EXPECT_THROW(*loop, FileLoopUninitialized);
}

TEST(FileLoop, AStartThatThrowsGivesUpTheEarlierOne) {
    TemporaryFolder const folder;
    folder.Write("file", "x");
    FileLoop loop(folder.Location(), ""_utf8, false);
    EXPECT_TRUE(loop.Unfinished());
    // The plain locale cannot spell it.
    EXPECT_THROW(loop.Start(folder.Location("\xc3\xa4"), ""_utf8, false),
                 UnixPlatform::WideToMultiByteConvertError);
    EXPECT_FALSE(loop.IsStarted());
    EXPECT_TRUE(loop.Finished());
    EXPECT_THROW(*loop, FileLoopUninitialized);
    EXPECT_TRUE(loop.Directory().empty());
}

TEST(FileLoop, IsStartedAndFinishedWhenItsFirstEntryFails) {
    TemporaryFolder const folder;
    folder.MakeLink("missing", "link");
    FileLoop loop;
    EXPECT_EQ(FailureOf([&] { loop.Start(folder.Location(), ""_utf8, false); }), "FileNotFoundError 2");
    EXPECT_TRUE(loop.IsStarted());
    EXPECT_TRUE(loop.Finished());
    EXPECT_THROW(*loop, FileLoop::InvalidIteratorPosition);
    EXPECT_THROW(loop->Location(), FileLoop::InvalidIteratorPosition);
    EXPECT_NO_THROW(++loop);
    EXPECT_EQ(loop.Directory().Compare(folder.Location()), 0);
}

TEST(FileLoop, KeepsNothingOfAnEarlierStartWhenItIsNotStarted) {
    TemporaryFolder const folder;
    folder.MakeFolder("closed");
    ModeScope const open(folder.Path(), 0777);
    ModeScope const noReading(folder.Path("closed"), 0333);
    // The plain locale cannot spell the last.
    for (std::string const name : {"missing", "", "\xc3\xa4"})
        EXPECT_EQ(InChild([&] {
                      if (!BecomeOrdinaryUser()) return std::string(cNotAllowed);
                      FileLoop loop;
                      loop.InspectorStart(folder.Location("closed"), ""_utf8, true, true);
                      std::string const code = std::to_string(loop.ScanCode());
                      FileLocation const next = name.empty() ? FileLocation() : folder.Location(name);
                      FailureOf([&] { loop.Start(next, ""_utf8, false); });
                      return code + (loop.IsStarted() ? ", started, " : ", not started, ") +
                             std::to_string(loop.ScanCode()) +
                             (loop.Directory().empty() ? ", nowhere" : ", somewhere") +
                             (loop.FirstInspectorFlag() ? ", first" : "") +
                             (loop.SecondInspectorFlag() ? ", second" : "");
                  }),
                  "13, not started, 0, nowhere")
            << name;
}

TEST(FileLoop, SaysByItsClassWhatIsWrong) {
    EXPECT_STREQ(UnixPlatform::FileLoop::InvalidIteratorPosition().what(),
                 "N12UnixPlatform8FileLoop23InvalidIteratorPositionE");
    EXPECT_STREQ(FileLoopUninitialized().what(), "21FileLoopUninitialized");
}

TEST(FileLoop, GivesAllEntriesInOrderHiddenOnesIncluded) {
    TemporaryFolder const folder;
    WriteAll(folder, {"b", ".hidden", "a", "..more", "...", "B", "1"});
    folder.MakeFolder("d");
    EXPECT_EQ(NamesIn(folder.Location()), (Names{"...", "..more", ".hidden", "1", "B", "a", "b", "d"}));
}

TEST(FileLoop, GivesEntriesInTheOrderOfTheLocale) {
    TemporaryFolder const folder;
    WriteAll(folder, {"B", "Z", "a", "c", "\xC3\xA4"});
    struct {
        char const* locale;
        Names names;
    } const cases[] = {
        {"C", {"B", "Z", "a", "c", "b:\xC3\xA4"}},
        {"C.UTF-8", {"B", "Z", "a", "c", "\xC3\xA4"}},
        {"de_DE.UTF-8", {"a", "\xC3\xA4", "B", "c", "Z"}},
    };
    for (auto const& [locale, names] : cases) {
        LocaleScope const scope(locale);
        EXPECT_EQ(NamesIn(folder.Location()), names) << locale;
    }
}

TEST(FileLoop, GivesTheLocationAndStatusOfEachEntry) {
    TemporaryFolder const folder;
    folder.MakeFolder("a");
    folder.Write("b", "12345");
    folder.MakeLink("b", "c");
    folder.MakeLink("missing", "d");
    FileLoop loop(folder.Location(), ""_utf8, true);
    EXPECT_EQ(loop->Location().Compare(folder.Location("a")), 0);
    EXPECT_TRUE(loop->Info().IsDirectory());
    ++loop;
    EXPECT_EQ((*loop).Location().Compare(folder.Location("b")), 0);
    EXPECT_EQ(loop->Info().State(), cFileExists);
    EXPECT_EQ(loop->Info().Stats().target.st_size, 5);
    EXPECT_EQ((++loop)->Info().State(), cLinkToFile);
    EXPECT_EQ((++loop)->Info().State(), cDanglingLink);
    EXPECT_TRUE((++loop).Finished());
    EXPECT_THROW(*loop, FileLoop::InvalidIteratorPosition);
    EXPECT_EQ(loop.Directory().Compare(folder.Location()), 0);
}

TEST(FileLoop, FollowsALinkToItsDirectory) {
    TemporaryFolder const folder;
    folder.MakeFolder("directory");
    folder.Write("directory/file", "x");
    folder.MakeLink("directory", "link");
    FileLoop const loop(folder.Location("link"), ""_utf8, false);
    EXPECT_EQ(loop->Location().Compare(folder.Location("link/file")), 0);
}

TEST(FileLoop, WalksTheRoot) {
    FileLoop loop(FileLocation("/"_utf8), "tmp"_utf8, false);
    EXPECT_EQ(loop->Location().Compare(FileLocation("/tmp"_utf8)), 0);
}

TEST(FileLoop, ReportsADanglingLinkThatIsNotTolerated) {
    TemporaryFolder const folder;
    folder.Write("a", "x");
    folder.MakeLink("missing", "b");
    folder.Write("c", "x");
    FileLoop loop(folder.Location(), ""_utf8, false);
    EXPECT_EQ(NameOf(*loop), "a");
    EXPECT_EQ(FailureOf([&] { ++loop; }), "FileNotFoundError 2");
    EXPECT_TRUE(loop.Finished());
    EXPECT_THROW(*loop, FileLoop::InvalidIteratorPosition);

    FileLoop another;
    EXPECT_EQ(FailureOf([&] { another.Start(folder.Location(), "b"_utf8, false); }), "FileNotFoundError 2");
    EXPECT_TRUE(another.Finished());
    EXPECT_TRUE(another.IsStarted());
    EXPECT_THROW(*another, FileLoop::InvalidIteratorPosition);
    EXPECT_EQ(FailureOf([&] { FileLoop(folder.Location(), "b"_utf8, false); }), "FileNotFoundError 2");
    EXPECT_EQ(NamesIn(folder.Location()), (Names{"a", "b", "c"}));
}

TEST(FileLoop, ReportsALinkThatLeadsInACircle) {
    TemporaryFolder const folder;
    folder.MakeLink("circle", "circle");
    EXPECT_EQ(FailureOf([&] { FileLoop(folder.Location(), ""_utf8, false); }), "FileIOError 40");
    EXPECT_EQ(NamesIn(folder.Location()), Names{"circle"});
}

TEST(FileLoop, LetsThroughTheNamesThatMatch) {
    TemporaryFolder const folder;
    WriteAll(folder, {"a.log", ".log", "a.LOG", "log", "a", "ab", "abc", "b.log.txt"});
    FileLocation const directory = folder.Location();
    EXPECT_EQ(NamesIn(directory, "*.log"), (Names{".log", "a.log"}));
    EXPECT_EQ(NamesIn(directory, "a?"), Names{"ab"});
    EXPECT_EQ(NamesIn(directory, "abc"), Names{"abc"});
    EXPECT_EQ(NamesIn(directory, "x*"), Names());
    EXPECT_EQ(NamesIn(directory, "*").size(), 8U);
    EXPECT_EQ(NamesIn(directory, ".*"), Names{".log"});
    FileLoop const none(directory, "x*"_utf8, false);
    EXPECT_TRUE(none.IsStarted());
    EXPECT_THROW(*none, FileLoop::InvalidIteratorPosition);
}

TEST(FileLoop, TakesAPathWithWildcardsApart) {
    TemporaryFolder const folder;
    WriteAll(folder, {"a.log", "b.txt", "c.log"});
    FileLocation directory;
    std::string const path = folder.Path("*.log");
    AutoUString<UTF8> const pattern = MakeFileLocationWithWildcard(MakeUTF8Ref(path), directory);
    FileLoop loop;
    loop.WildcardStart(directory, pattern);
    EXPECT_EQ(NamesOf(loop), (Names{"a.log", "c.log"}));

    folder.MakeLink("missing", "d.log");
    loop.WildcardStart(directory, pattern);
    EXPECT_EQ(FailureOf([&] { NamesOf(loop); }), "FileNotFoundError 2");
}

TEST(FileLoop, GivesTheFilesOfOneType) {
    TemporaryFolder const folder;
    WriteAll(folder, {"a.log", "b.txt", "c.html", "d.LOG", ".log", "e"});
    FileLoop logs(folder.Location(), AdviceFileTypes::Log());
    EXPECT_EQ(NamesOf(logs), (Names{".log", "a.log"}));
    FileLoop texts;
    texts.Start(folder.Location(), AdviceFileTypes::Text());
    EXPECT_EQ(NamesOf(texts), Names{"b.txt"});
    FileLoop all(folder.Location(), AdviceFileTypes::Miscellany());
    EXPECT_EQ(NamesOf(all).size(), 6U);
}

TEST(FileLoop, KeepsTheFlagsOfAnInspectionAndToleratesDanglingLinks) {
    TemporaryFolder const folder;
    folder.MakeLink("missing", "link");
    for (bool const first : {false, true})
        for (bool const second : {false, true}) {
            FileLoop loop;
            loop.InspectorStart(folder.Location(), "l*"_utf8, first, second);
            EXPECT_EQ(loop.FirstInspectorFlag(), first);
            EXPECT_EQ(loop.SecondInspectorFlag(), second);
            EXPECT_EQ(NamesOf(loop), Names{"link"});
        }
}

TEST(FileLoop, PassesOverWhatHasGoneAndDoesNotSeeWhatHasCome) {
    TemporaryFolder const folder;
    WriteAll(folder, {"a", "b", "c", "d"});
    FileLoop loop(folder.Location(), ""_utf8, false);
    std::filesystem::remove(folder.Path("b"));
    std::filesystem::remove(folder.Path("d"));
    WriteAll(folder, {"bb", "e"});
    EXPECT_EQ(NamesOf(loop), (Names{"a", "c"}));
}

TEST(FileLoop, StartsAgain) {
    TemporaryFolder const folder;
    WriteAll(folder, {"a", "b", "c"});
    TemporaryFolder const other;
    WriteAll(other, {"x", "y"});
    FileLoop loop(folder.Location(), ""_utf8, false);
    ++loop;
    loop.Start(other.Location(), ""_utf8, false);
    EXPECT_EQ(NamesOf(loop), (Names{"x", "y"}));
    loop.Start(folder.Location(), ""_utf8, false);
    ++loop;
    loop.Start(folder.Location("missing"), ""_utf8, false);
    EXPECT_TRUE(loop.Finished());
    EXPECT_THROW(*loop, FileLoopUninitialized);
    loop.Start(folder.Location(), "c"_utf8, false);
    EXPECT_EQ(NamesOf(loop), Names{"c"});
}

TEST(FileLoop, StartsAgainByItsOwnValues) {
    TemporaryFolder const folder;
    // Longer than a text keeps within itself.
    std::string const inner(80, 'd');
    folder.MakeFolder(inner);
    WriteAll(folder, {inner + "/x", inner + "/y", "e"});
    FileLoop loop(folder.Location(), ""_utf8, false);
    EXPECT_EQ(NameOf(*loop), inner);
    loop.Start(loop.Directory(), ""_utf8, false);
    EXPECT_EQ(NameOf(*loop), inner);
    loop.Start(loop->Location(), ""_utf8, false);
    EXPECT_EQ(loop.Directory().Compare(folder.Location(inner)), 0);
    EXPECT_EQ(NamesOf(loop), (Names{"x", "y"}));
    loop.Start(loop.Directory(), "y"_utf8, false);
    EXPECT_EQ(NamesOf(loop), Names{"y"});

    UnixPlatform::FileLoop platform;
    platform.Start(folder.Location(), ""_utf8, false, false, false);
    platform.Start(platform.Directory(), ""_utf8, false, false, false);
    platform.Start(platform->Location(), ""_utf8, false, false, false);
    EXPECT_EQ(NamesOf(platform), (Names{"x", "y"}));
}

TEST(FileLoop, StartsAgainWithItsOwnDirectoryAsThePattern) {
    std::string const name(80, 'd');
    TemporaryFolder const folder;
    folder.MakeFolder(name);
    WriteAll(folder, {name + "/" + name, name + "/other"});
    EXPECT_EQ(InChild([&] {
                  if (chdir(folder.Path().c_str()) != 0) return std::string("no way there");
                  FileLoop loop(FileLocation(MakeUTF8Ref(name)), ""_utf8, false);
                  loop.Start(loop.Directory(), loop.Directory().Text(), false);
                  Names const names = NamesOf(loop);
                  return names.size() == 1 ? names.front() : std::to_string(names.size());
              }),
              name);
}

TEST(FileLoop, ReportsAnEntryInTheMiddleWhosePathIsTooLong) {
    TemporaryFolder const folder;
    // A folder whose path leaves room for short names only below the limit of 4095 bytes.
    std::string deep;
    while (folder.Path(deep).size() < 3900) {
        deep += (deep.empty() ? "" : "/") + std::string(100, 'd');
        folder.MakeFolder(deep);
    }
    int const directory = open(folder.Path(deep).c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    ASSERT_NE(directory, -1);
    std::string const names[] = {"a", std::string(255, 'b'), "c"};
    for (std::string const& name : names)
        close(openat(directory, name.c_str(), O_CREAT | O_WRONLY | O_CLOEXEC, 0600));
    close(directory);
    folder.MakeFolder(deep + "/d");
    ASSERT_GT(folder.Path(deep).size() + 1 + 255, 4095U);

    FileLoop loop(folder.Location(deep), ""_utf8, true);
    EXPECT_EQ(NameOf(*loop), "a");
    EXPECT_EQ(FailureOf([&] { ++loop; }), "DirectoryNotFoundError 36");
    EXPECT_TRUE(loop.Finished());
    EXPECT_TRUE(loop.IsStarted());
    EXPECT_THROW(*loop, FileLoop::InvalidIteratorPosition);
    EXPECT_NO_THROW(++loop);
    EXPECT_EQ(NamesIn(folder.Location(deep), "?"), (Names{"a", "c", "d"}));
}

TEST(FileLoop, IsEmptyWithoutAFailureWhenTheDirectoryCannotBeRead) {
    TemporaryFolder const folder;
    folder.MakeFolder("closed");
    folder.Write("closed/file", "x");
    ModeScope const open(folder.Path(), 0777);
    ModeScope const noReading(folder.Path("closed"), 0333);
    EXPECT_EQ(InChild([&] {
                  if (!BecomeOrdinaryUser()) return std::string(cNotAllowed);
                  FileLoop const loop(folder.Location("closed"), ""_utf8, false);
                  return std::string(loop.IsStarted() ? "started" : "not started") +
                         (loop.Finished() ? ", finished, " : ", unfinished, ") +
                         std::to_string(loop.ScanCode()) + ", " + FailureOf([&] { *loop; });
              }),
              "started, finished, 13, UnixPlatform::FileLoop::InvalidIteratorPosition");
}

TEST(FileLoop, ReportsEntriesWhoseStatusItMayNotLearn) {
    TemporaryFolder const folder;
    folder.MakeFolder("closed");
    folder.Write("closed/file", "x");
    ModeScope const open(folder.Path(), 0777);
    ModeScope const noSearching(folder.Path("closed"), 0444);
    EXPECT_EQ(InChild([&] {
                  if (!BecomeOrdinaryUser()) return std::string(cNotAllowed);
                  FileLoop loop;
                  return FailureOf([&] { loop.Start(folder.Location("closed"), ""_utf8, true); });
              }),
              "FilePermissionError 13");
}

TEST(FileLoop, ShowsThatADirectoryCouldBeRead) {
    TemporaryFolder const folder;
    EXPECT_EQ(FileLoop(folder.Location(), ""_utf8, false).ScanCode(), 0);
}

// What becomes of names in various locales. All of them lead back to their files.
TEST(FileLoop, KeepsNamesInNoEncodingAsBytes) {
    struct {
        char const* locale;
        Names files;
        Names names;
    } const cases[] = {
        {"C", {"a", "\xE4"}, {"a", "b:\xE4"}},
        {"C.UTF-8", {"a", "\xC3\xA4", "\xE4"}, {"a", "\xC3\xA4", "b:\xE4"}},
        {"de_DE.UTF-8", {"a\xC3\xA4", "b\xE4", "c\xC3"}, {"a\xC3\xA4", "b:b\xE4", "b:c\xC3"}},
        // A surrogate and a form that is longer than it has to be are no UTF-8 either.
        {"C.UTF-8", {"a\xED\xA0\x80", "b\xC0\xAF"}, {"b:a\xED\xA0\x80", "b:b\xC0\xAF"}},
        {"de_DE.ISO-8859-1", {"a", "b\xE4", "c\xC3\xA4"}, {"a", "b\xC3\xA4", "c\xC3\x83\xC2\xA4"}},
        // Two spellings of one character, of which the locale writes the other.
        {"zh_TW.BIG5", {"\xA2\xCC", "\xA4\x51"}, {"b:\xA2\xCC", "\xE5\x8D\x81"}},
        // Hiragana "a", a byte that begins nothing, and a character cut short.
        {"ja_JP.EUC-JP", {"a\xA4\xA2", "b\xFF", "c\xA4"}, {"a\xE3\x81\x82", "b:b\xFF", "b:c\xA4"}},
    };
    for (auto const& [locale, files, names] : cases) {
        LocaleScope const scope(locale);
        TemporaryFolder const folder;
        WriteAll(folder, files);
        FileLoop loop(folder.Location(), ""_utf8, false);
        Names found;
        for (; loop.Unfinished(); ++loop) {
            found.push_back(NameOf(*loop));
            EXPECT_TRUE(CanBeOpened(loop->Location())) << locale << ' ' << found.back();
            EXPECT_EQ(loop->Location().Parent().Compare(folder.Location()), 0)
                << locale << ' ' << found.back();
        }
        EXPECT_EQ(found, names) << locale;
    }
}

// The locale joins the letter and its accent and spells the one character in another way; the converter of
// the same encoding leaves them two, which lead back.
TEST(FileLoop, ReadsNamesByTheConverterWhereTheLocaleDoesNotLeadBack) {
    TemporaryFolder const folder;
    WriteAll(folder, {"A\xCC", "E\xEC", "\xFA"});
    struct {
        char const* encoding;
        char const* names;
    } const cases[] = {
        {"CP1258", "A\xCC\x80 E\xCC\x81 \xC3\xBA "},
        // That one reads other letters, and this one is not known.
        {"ISO-8859-1", "b:A\xCC b:E\xEC \xC3\xBA "},
        {"no encoding", "b:A\xCC b:E\xEC \xC3\xBA "},
    };
    for (auto const& [encoding, names] : cases)
        EXPECT_EQ(InChild([&] {
                      LocaleScope const scope("vi_VN.CP1258");
                      InitializeEncoding(encoding, false);
                      std::string found;
                      FileLoop loop(folder.Location(), ""_utf8, false);
                      for (; loop.Unfinished(); ++loop)
                          found += NameOf(*loop) + (CanBeOpened(loop->Location()) ? " " : " lost ");
                      return found;
                  }),
                  names)
            << encoding;
}

TEST(FileLoop, OpensTheConverterOnceForAWalk) {
    TemporaryFolder const folder;
    WriteAll(folder, {"A\xCC", "E\xEC"});
    EXPECT_EQ(InChild([&] {
                  LocaleScope const scope("vi_VN.CP1258");
                  InitializeEncoding("CP1258", false);
                  FileLoop loop(folder.Location(), ""_utf8, false);
                  // Another converter than the one of the first name would not know the second.
                  InitializeEncoding("ISO-8859-1", false);
                  std::string const second = NameOf(*++loop);
                  loop.Start(folder.Location(), ""_utf8, false);
                  return second + ", started again: " + NameOf(*loop);
              }),
              "E\xCC\x81, started again: b:A\xCC");
}

TEST(FileLoop, KeepsTheWayToANameInNoEncodingInTheLocalesBytes) {
    LocaleScope const scope("ja_JP.EUC-JP");
    TemporaryFolder const folder;
    folder.MakeFolder("\xA4\xA2");
    folder.Write("\xA4\xA2/\xFF", "x");
    FileLoop const loop(FileLocation(folder.Path("\xA4\xA2").c_str()), ""_utf8, false);
    EXPECT_EQ(MakeString(loop->Location().Bytes()), folder.Path("\xA4\xA2/\xFF"));
    EXPECT_EQ(loop->Info().State(), cFileExists);
}

TEST(FileLoop, TakesAllNamesOfABinaryDirectoryAsBytes) {
    TemporaryFolder const folder;
    WriteAll(folder, {"a", "b\xE4"});
    FileLoop loop(Binary(folder.Path()), ""_utf8, false);
    EXPECT_EQ(NamesOf(loop), (Names{"b:a", "b:b\xE4"}));
    loop.Start(Binary(folder.Path()), "a"_utf8, false);
    EXPECT_EQ(MakeString(loop->Location().Bytes()), folder.Path("a"));
    loop.Start(folder.Location(), "a"_utf8, false);
    EXPECT_EQ(NamesOf(loop), Names{"a"});

    LocaleScope const scope("de_DE.ISO-8859-1");
    loop.Start(Binary(folder.Path()), ""_utf8, false);
    EXPECT_EQ(NamesOf(loop), (Names{"b:a", "b:b\xE4"}));
}

TEST(FileLoop, KeepsNamesAsBytesThatOnlyAnotherEncodingThanThatOfTheLocaleKnows) {
    TemporaryFolder const folder;
    WriteAll(folder, {"\xE4"});
    for (char const* const locale : {"C", "C.UTF-8"})
        EXPECT_EQ(InChild([&] {
                      LocaleScope const scope(locale);
                      // As text this name would be "\xC3\xA4" in the one locale, and nothing in the other.
                      InitializeEncoding("ISO-8859-1", false);
                      FileLoop const loop(folder.Location(), ""_utf8, false);
                      return NameOf(*loop) + (CanBeOpened(loop->Location()) ? ", found" : ", lost");
                  }),
                  "b:\xE4, found")
            << locale;
}

TEST(FileLoop, ComparesNamesAsTextWithThePatternAndOthersAsBytes) {
    {
        LocaleScope const scope("de_DE.ISO-8859-1");
        TemporaryFolder const folder;
        WriteAll(folder, {"\xE4", "a"});
        EXPECT_EQ(NamesIn(folder.Location(), "\xC3\xA4"), Names{"\xC3\xA4"});
        EXPECT_EQ(NamesIn(folder.Location(), "\xE4"), Names());
        // Two bytes of UTF-8.
        EXPECT_EQ(NamesIn(folder.Location(), "??"), Names{"\xC3\xA4"});
    }
    LocaleScope const scope("ja_JP.EUC-JP");
    TemporaryFolder const folder;
    WriteAll(folder, {"\xFF", "a"});
    EXPECT_EQ(NamesIn(folder.Location(), "\xFF"), Names{"b:\xFF"});
    // One byte each, in the order of that locale.
    EXPECT_EQ(NamesIn(folder.Location(), "?"), (Names{"b:\xFF", "a"}));
}

TEST(FileLoop, GivesFilesOfEveryKindWithoutOpeningThem) {
    TemporaryFolder const folder;
    ASSERT_EQ(mkfifo(folder.Path("fifo").c_str(), 0600), 0);
    folder.Write("file", "x");
    ASSERT_EQ(link(folder.Path("file").c_str(), folder.Path("hard").c_str()), 0);
    EXPECT_EQ(NamesIn(folder.Location()), (Names{"fifo", "file", "hard"}));
    FileLoop const loop(folder.Location(), "fifo"_utf8, false);
    EXPECT_TRUE(S_ISFIFO(loop->Info().Stats().target.st_mode));
    EXPECT_FALSE(loop->Info().IsRegularFile());
}

TEST(FileLoop, WalksTenThousandEntriesWithoutKeepingADescriptor) {
    TemporaryFolder const folder(QuickFolder());
    constexpr int cEntries = 10000;
    for (int number = 0; number < cEntries; ++number)
        close(open(folder.Path("file" + std::to_string(10000 + number)).c_str(), O_CREAT | O_WRONLY, 0600));
    auto const descriptors = OpenDescriptors();
    FileLoop loop(folder.Location(), "file*"_utf8, false);
    EXPECT_EQ(OpenDescriptors(), descriptors);
    int count = 0;
    for (; loop.Unfinished(); ++loop, ++count)
        ASSERT_EQ(NameOf(*loop), "file" + std::to_string(10000 + count));
    EXPECT_EQ(count, cEntries);
    EXPECT_EQ(NamesIn(folder.Location(), "*7").size(), 1000U);
    EXPECT_EQ(OpenDescriptors(), descriptors);
}

TEST(FileLoop, WalksProc) {
    std::string const self = std::to_string(getpid());
    FileLoop loop(FileLocation("/proc"_utf8), MakeUTF8Ref(self), true);
    EXPECT_EQ(NamesOf(loop), Names{self});
}

TEST(FileLoop, LosesNothingWhenMemoryRunsOut) {
    TemporaryFolder const folder;
    WriteAll(folder, {"a.log", "b.txt", "c.log", std::string(200, 'd') + ".log"});
    FileLocation const directory = folder.Location();
    bool succeeded = false;
    for (std::size_t successes = 0; !succeeded && successes < 1000; ++successes) {
        FileLoop loop;
        try {
            FailingAllocation const failing(successes);
            loop.Start(directory, "*.log"_utf8, false);
            while (loop.Unfinished()) ++loop;
            succeeded = true;
        } catch (std::bad_alloc const&) {
            EXPECT_TRUE(loop.Finished() || loop->Location().Exists());
        }
    }
    EXPECT_TRUE(succeeded);
}
