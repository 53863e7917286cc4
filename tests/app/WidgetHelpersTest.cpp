// First: X.h defines names that the test framework uses.
#include <gtest/gtest.h>

#include "app/WidgetHelpers.h"
#include "foundation/Exceptions.h"
#include "tests/support/LocaleScope.h"
#include "text/LocalText.h"

#include <dlfcn.h>

TEST(ControlLiterals, AreConvertedToTheEncodingOfTheLocale) {
    LocaleScope const locale("de_DE.ISO-8859-1");
    EXPECT_EQ(*ControlLiteral("Schl\xC3\xBCssel"), "Schl\xFCssel");
    LocaleScope const modern("de_DE.UTF-8");
    EXPECT_EQ(*ControlLiteral("Schl\xC3\xBCssel"), "Schl\xC3\xBCssel");
}

TEST(ControlLiterals, ThrowForTextThatTheLocaleCannotSpell) {
    LocaleScope const locale("de_DE.ISO-8859-1");
    EXPECT_THROW(ControlLiteral("\xE2\x82\xAC"), UnixPlatform::WideToMultiByteConvertError);
    LocaleScope const plain("C");
    EXPECT_THROW(ControlLiteral("\xC3\xBC"), UnixPlatform::WideToMultiByteConvertError);
}

TEST(ControlLiterals, FollowTheRulesOfFormats) {
    EXPECT_EQ(*ControlLiteral("a{_tab}b"), "a\tb");
    EXPECT_EQ(*ControlLiteral("  --  "), "  --  ");
    EXPECT_EQ(*ControlLiteral(""), "");
    EXPECT_THROW(ControlLiteral("{name}"), TooManyFormatArguments);
    EXPECT_THROW(ControlLiteral("{name"), BadFormatStringError);
}

TEST(ControlLiterals, OfLocalTextStandAsTheyAre) {
    AutoUString<Local8Bit> text(MakeLocalRef("{name}\xFC"));
    EXPECT_EQ(*ControlLiteral(AutoNullTerminated<Local8Bit>(text)), "{name}\xFC");
    EXPECT_EQ(*ControlLiteral(AutoNullTerminated<Local8Bit>()), "");
}

TEST(ControlLiterals, OfTheFunkyKindAreNeitherTranslatedNorConverted) {
    LocaleScope const locale("de_DE.ISO-8859-1");
    EXPECT_EQ(*FunkyControlLiteral("{name\xC3\xBC\xFF"), "{name\xC3\xBC\xFF");
    EXPECT_EQ(*FunkyControlLiteral(""), "");
}

TEST(TextCutForWidget, IsWholeUpToTwoThousandCharacters) {
    EXPECT_EQ(CutForWidget(""), "");
    EXPECT_EQ(CutForWidget("a label"), "a label");
    EXPECT_EQ(CutForWidget(std::string(1999, 'a')), std::string(1999, 'a'));
    EXPECT_EQ(CutForWidget(std::string(2000, 'a')), std::string(2000, 'a'));
    EXPECT_EQ(CutForWidget(std::string(2001, 'a')), std::string(2000, 'a'));
    EXPECT_EQ(CutForWidget(std::string(1000000, 'a')), std::string(2000, 'a'));
}

TEST(TextCutForWidget, MayHaveItsShareOnly) {
    EXPECT_EQ(CutForWidget(std::string(501, 'a'), 500), std::string(500, 'a'));
    LocaleScope const locale("de_DE.UTF-8");
    EXPECT_EQ(CutForWidget("\xE2\x82\xAC\xE2\x82\xAC", 2), "\xE2\x82\xAC") << "four bytes at most";
}

TEST(TextCutForWidget, CountsCharactersAndNotTheirBytes) {
    LocaleScope const locale("de_DE.UTF-8");
    std::string twoThousand;
    for (int character = 0; character < 2000; ++character) twoThousand += "\xC3\xBC";
    EXPECT_EQ(CutForWidget(twoThousand), twoThousand);
    EXPECT_EQ(CutForWidget(twoThousand + "\xC3\xBC"), twoThousand);
    EXPECT_EQ(CutForWidget(twoThousand + "a"), twoThousand);
}

TEST(TextCutForWidget, NeverExceedsFourThousandBytesNorSplitsACharacter) {
    LocaleScope const locale("de_DE.UTF-8");
    std::string euros;
    for (int character = 0; character < 1333; ++character) euros += "\xE2\x82\xAC";
    EXPECT_EQ(CutForWidget(euros + "a"), euros + "a") << "3,999 bytes and one more";
    EXPECT_EQ(CutForWidget(euros + "\xC3\xBC"), euros);
    EXPECT_EQ(CutForWidget(euros + "\xE2\x82\xAC"), euros);
}

TEST(TextCutForWidget, CountsEveryByteInALocaleOfSingleBytes) {
    LocaleScope const locale("de_DE.ISO-8859-1");
    EXPECT_EQ(CutForWidget(std::string(3000, '\xFC')), std::string(2000, '\xFC'));
    LocaleScope const plain("C");
    EXPECT_EQ(CutForWidget(std::string(3000, '\xFC')), std::string(2000, '\xFC'));
}

TEST(TextCutForWidget, CountsBytesThatAreNoTextOneByOne) {
    LocaleScope const locale("de_DE.UTF-8");
    EXPECT_EQ(CutForWidget(std::string(3000, '\xFF')), std::string(2000, '\xFF'));
    EXPECT_EQ(CutForWidget("a\xC3"), "a\xC3") << "a character that the text itself has cut";
    EXPECT_EQ(CutForWidget("\xE2\x82" + std::string(1999, 'a')), "\xE2\x82" + std::string(1998, 'a'));
    EXPECT_EQ(CutForWidget(std::string(3000, '\0')), std::string(2000, '\0'));
}

namespace {

using WordTest = int (*)(wchar_t);

// As a widget library that looks for it finds it: by its name among the exported symbols.
WordTest FindWordTest() {
    return reinterpret_cast<WordTest>(dlsym(RTLD_DEFAULT, "_Xaw_iswalnum"));
}

bool BelongsToWord(wchar_t character) {
    return FindWordTest()(character) != 0;
}

} // namespace

TEST(WordCharacter, IsExportedByTheProgramForALibraryThatLooksForIt) {
    Dl_info found{};
    Dl_info own{};
    ASSERT_TRUE(FindWordTest());
    ASSERT_NE(dladdr(reinterpret_cast<void*>(FindWordTest()), &found), 0);
    ASSERT_NE(dladdr(reinterpret_cast<void*>(&CutForWidget), &own), 0);
    EXPECT_EQ(found.dli_fbase, own.dli_fbase) << found.dli_fname;
}

TEST(WordCharacter, IsALetterOrADigitOfAscii) {
    for (wchar_t character = 0; character < 128; ++character) {
        bool const expected = (character >= L'0' && character <= L'9') ||
                              (character >= L'A' && character <= L'Z') ||
                              (character >= L'a' && character <= L'z');
        EXPECT_EQ(BelongsToWord(character), expected) << static_cast<int>(character);
    }
}

TEST(WordCharacter, IsALetterOfALocaleOfSingleBytes) {
    LocaleScope const locale("de_DE.ISO-8859-1");
    EXPECT_TRUE(BelongsToWord(L'\u00FC'));
    EXPECT_FALSE(BelongsToWord(L'\u00A7'));
}

TEST(WordCharacter, IsNeverOneOfSeveralBytes) {
    LocaleScope const locale("de_DE.UTF-8");
    EXPECT_FALSE(BelongsToWord(L'\u00FC'));
    EXPECT_FALSE(BelongsToWord(L'\u4E2D'));
}

TEST(WordCharacter, IsNoneThatTheLocaleCannotSpell) {
    LocaleScope const locale("de_DE.ISO-8859-1");
    EXPECT_FALSE(BelongsToWord(L'\u4E2D'));
    EXPECT_FALSE(BelongsToWord(static_cast<wchar_t>(-1)));
    LocaleScope const plain("C");
    EXPECT_FALSE(BelongsToWord(L'\u00FC'));
}
