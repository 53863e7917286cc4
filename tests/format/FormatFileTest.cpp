#include "format/FormatFile.h"

#include "files/FileErrors.h"
#include "format/FormatOverrideScope.h"
#include "format/MakeUString.h"
#include "format/UFormat.h"
#include "foundation/Exceptions.h"
#include "foundation/SharingLink.h"

#include "tests/support/TemporaryFolder.h"
#include "tests/support/UStringPrinting.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <fcntl.h>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <optional>
#include <set>
#include <string>
#include <sys/stat.h>
#include <type_traits>
#include <unistd.h>
#include <utility>

namespace {

UStringRef<UTF8> const cNoLanguage;

std::ptrdiff_t OpenDescriptors() {
    std::filesystem::directory_iterator const descriptors("/proc/self/fd");
    return std::distance(begin(descriptors), end(descriptors));
}

// How many bytes the process has read from anything, if the system counts them.
std::optional<unsigned long> BytesRead() {
    std::ifstream counts("/proc/self/io");
    std::string name;
    unsigned long bytes = 0;
    if (counts >> name >> bytes && name == "rchar:") return bytes;
    return std::nullopt;
}

} // namespace

TEST(FormatFile, HasTheBytesAndTheOverridesOfItsFile) {
    TemporaryFolder const folder;
    folder.Write("german", "Take\tNehmen\r\n{x} of {y}\t{y}: {x}");
    FormatFile const file(folder.Location("german"), "de"_utf8);
    EXPECT_EQ(MakeString(file.FileContents()), "Take\tNehmen\r\n{x} of {y}\t{y}: {x}");
    EXPECT_EQ(file.Overrides().GetOverride("Take"_utf8), "Nehmen"_utf8);
    EXPECT_EQ(file.Overrides().GetOverride("{x} of {y}"_utf8), "{y}: {x}"_utf8);
    EXPECT_EQ(file.Overrides().Overrides().Size(), 2u);
    EXPECT_EQ(file.Overrides().Language(), "de"_utf8);
}

TEST(FormatFile, HoldsViewsIntoItsContents) {
    TemporaryFolder const folder;
    folder.Write("german", "Take\tNehmen\n");
    FormatFile const file(folder.Location("german"), cNoLanguage);
    EXPECT_EQ(file.Overrides().GetOverride("Take"_utf8).begin(), file.FileContents().begin() + 5);
}

TEST(FormatFile, MayBeEmpty) {
    TemporaryFolder const folder;
    folder.Write("empty", "");
    FormatFile const file(folder.Location("empty"), cNoLanguage);
    EXPECT_TRUE(file.FileContents().empty());
    EXPECT_EQ(file.Overrides().Overrides().Size(), 0u);
}

TEST(FormatFile, TakesAByteOrderMarkAndBytesThatAreNoTextAsTheyAre) {
    TemporaryFolder const folder;
    folder.Write("marked", "\xef\xbb\xbfTake\tNehmen\nSnooze\t\xff\xfe\n");
    FormatFile const file(folder.Location("marked"), cNoLanguage);
    EXPECT_FALSE(file.Overrides().HasOverride("Take"_utf8));
    EXPECT_EQ(file.Overrides().GetOverride("\xef\xbb\xbfTake"_utf8), "Nehmen"_utf8);
    EXPECT_EQ(file.Overrides().GetOverride("Snooze"_utf8), "\xff\xfe"_utf8);
}

TEST(FormatFile, KeepsWhatItHasReadWhenTheFileChanges) {
    TemporaryFolder const folder;
    folder.Write("german", "Take\tNehmen\n");
    FormatFile const file(folder.Location("german"), cNoLanguage);
    folder.Write("german", "Take\tx\n");
    std::filesystem::remove(folder.Path("german"));
    EXPECT_EQ(file.Overrides().GetOverride("Take"_utf8), "Nehmen"_utf8);
}

TEST(FormatFile, ReadsSeveralMebibytes) {
    TemporaryFolder const folder;
    std::string text;
    for (int line = 0; line < 100000; ++line)
        text += "Sentence number " + std::to_string(line) + "\tSatz Nummer " + std::to_string(line) + "\n";
    folder.Write("large", text);
    FormatFile const file(folder.Location("large"), cNoLanguage);
    EXPECT_EQ(file.FileContents().Size(), text.size());
    EXPECT_EQ(file.Overrides().Overrides().Size(), 100000u);
    EXPECT_EQ(file.Overrides().GetOverride("Sentence number 99999"_utf8), "Satz Nummer 99999"_utf8);
}

TEST(FormatFile, ThrowsTheErrorsOfFiles) {
    TemporaryFolder const folder;
    std::ptrdiff_t const before = OpenDescriptors();
    EXPECT_THROW(FormatFile(folder.Location("none"), cNoLanguage), FileNotFoundError);
    EXPECT_THROW(FormatFile(FileLocation(), cNoLanguage), EmptyFileLocationError);
    EXPECT_THROW(FormatFile(folder.Location("none/deeper"), cNoLanguage), FileIOError);
    // What length a directory has, and so what of it fails, is up to its file system.
    EXPECT_THROW(FormatFile(folder.Location(), cNoLanguage), DebuggableException);
    EXPECT_EQ(OpenDescriptors(), before);
}

TEST(FormatFile, ClosesTheFileOnceItIsRead) {
    TemporaryFolder const folder;
    folder.Write("german", "Take\tNehmen\n");
    std::ptrdiff_t const before = OpenDescriptors();
    FormatFile const file(folder.Location("german"), cNoLanguage);
    EXPECT_EQ(OpenDescriptors(), before);
}

// Without a byte on the disk: the file is one hole.
TEST(FormatFile, RefusesAFileLongerThan4294967295BytesBeforeItTakesMemory) {
    TemporaryFolder const folder;
    folder.Write("huge", "");
    std::filesystem::resize_file(folder.Path("huge"), 4294967296);
    EXPECT_THROW(FormatFile(folder.Location("huge"), cNoLanguage), RequiredValueWouldOverflow);
}

// One read gives no more than two gibibytes less a page.
TEST(FormatFile, RefusesAFileThatOneReadCannotGiveWithoutReadingIt) {
    TemporaryFolder const folder;
    folder.Write("huge", "");
    for (std::uintmax_t const size : {2147479553U, 4294967295U}) {
        std::filesystem::resize_file(folder.Path("huge"), size);
        std::optional<unsigned long> const before = BytesRead();
        try {
            FormatFile const file(folder.Location("huge"), cNoLanguage);
            FAIL() << "nothing was thrown";
        } catch (EndOfFileError const& failure) {
            EXPECT_EQ(failure.GetCode(), 90);
            EXPECT_TRUE(failure.uwhat().Contains(MakeUTF8Ref(folder.Path("huge"))));
        }
        if (before) {
            EXPECT_LT(BytesRead().value() - *before, 100000u) << size;
        }
    }
}

TEST(FormatFile, RefusesAPipeWhichHasNoLength) {
    TemporaryFolder const folder;
    ASSERT_EQ(mkfifo(folder.Path("pipe").c_str(), 0600), 0);
    int const writer = open(folder.Path("pipe").c_str(), O_RDWR | O_CLOEXEC);
    ASSERT_NE(writer, -1);
    EXPECT_THROW(FormatFile(folder.Location("pipe"), cNoLanguage), RequiredValueWouldOverflow);
    close(writer);
}

TEST(FormatFile, HandsItsContentsOverWithTheViewsIntact) {
    TemporaryFolder const folder;
    folder.Write("german", "Take\tNehmen\n");
    FormatFile first(folder.Location("german"), "de"_utf8);
    unsigned char const* const bytes = first.FileContents().begin();
    FormatFile const second(std::move(first));
    EXPECT_EQ(second.FileContents().begin(), bytes);
    EXPECT_EQ(second.Overrides().GetOverride("Take"_utf8), "Nehmen"_utf8);
    EXPECT_EQ(second.Overrides().Language(), "de"_utf8);
    EXPECT_TRUE(first.FileContents().empty());
    EXPECT_FALSE(first.Overrides().HasOverride("Take"_utf8));
    EXPECT_TRUE(std::is_nothrow_move_constructible_v<FormatFile>);
    EXPECT_FALSE(std::is_copy_constructible_v<FormatFile>);
}

// As the process keeps them: shared, in sets ordered by address, a scope gone before its file.
TEST(FormatFile, TranslatesThroughAScopeUntilBothAreDropped) {
    TemporaryFolder const folder;
    folder.Write("brand", "Take\tAnnehmen\n");
    folder.Write("general", "Take\tNehmen\nSnooze\tVerschieben\n");
    std::set<SharingPtr<FormatFile>> files;
    std::set<SharingPtr<FormatOverrideScope>> scopes;
    for (char const* name : {"general", "brand"}) {
        SharingPtr<FormatFile> const file(new FormatFile(folder.Location(name), cNoLanguage));
        SharingPtr<FormatOverrideScope> const scope(
            new FormatOverrideScope(file->Overrides(), GlobalFormatOverrideContext()));
        files.insert(file);
        scopes.insert(scope);
    }
    EXPECT_EQ(MakeUString(UFormat("Take")), "Annehmen"_utf8);
    EXPECT_EQ(MakeUString(UFormat("Snooze")), "Verschieben"_utf8);
    EXPECT_EQ(MakeUString(UFormat("Cancel")), "Cancel"_utf8);
    scopes.clear();
    files.clear();
    EXPECT_EQ(MakeUString(UFormat("Take")), "Take"_utf8);
}
