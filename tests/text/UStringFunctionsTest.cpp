#include "text/UStringFunctions.h"

#include "tests/support/UStringPrinting.h"
#include "text/UString.h"

#include <gtest/gtest.h>

#include <string>

namespace {

using Ref = UStringRef<UTF8>;
using Pieces = std::vector<std::string>;

Pieces Texts(std::vector<Ref> const& pieces) {
    Pieces texts;
    for (Ref const& piece : pieces) texts.push_back(MakeString(piece));
    return texts;
}

struct TextCase {
    Ref text;
    Ref expected;
};

} // namespace

TEST(MakeUString, CopiesTheView) {
    std::string source(100, 'x');
    AutoUString<UTF8> const whole = MakeUString(MakeUTF8Ref(source));
    AutoUString<UTF8> const part =
        MakeUString(MakeUTF8Ref(source).begin(), MakeUTF8Ref(source).begin() + 3, UTF8());
    source.assign(100, 'y');
    EXPECT_EQ(MakeString(whole), std::string(100, 'x'));
    EXPECT_EQ(part, "xxx"_utf8);
}

TEST(Concatenation, PutsTheTextsBehindOneAnother) {
    EXPECT_EQ("ab"_utf8 + "cd"_utf8, "abcd"_utf8);
    EXPECT_EQ(""_utf8 + ""_utf8, ""_utf8);
    EXPECT_EQ(CopiedUString<UTF8>("copied "_utf8) + SharedUString<UTF8>("shared"_utf8), "copied shared"_utf8);
    EXPECT_EQ("a"_utf8 + "b"_utf8 + "c"_utf8, "abc"_utf8);
}

TEST(Concatenation, TakesItsRoomAtOnce) {
    std::string const first(60, 'a');
    std::string const second(70, 'b');
    EXPECT_EQ((MakeUTF8Ref(first) + MakeUTF8Ref(second)).CapacityInUnits(), 130U);
}

TEST(Find, ReturnsTheFirstMatch) {
    auto const text = "abcabc"_utf8;
    EXPECT_EQ(Find(text, "bc"_utf8), text.begin() + 1);
    EXPECT_EQ(Find(text, "abcabc"_utf8), text.begin());
    EXPECT_EQ(Find(text, "c"_utf8), text.begin() + 2);
    EXPECT_EQ(Find(text, "ca"_utf8), text.begin() + 2);
}

TEST(Find, ReturnsTheEndWhenThereIsNoMatch) {
    auto const text = "abc"_utf8;
    EXPECT_EQ(Find(text, "x"_utf8), text.end());
    EXPECT_EQ(Find(text, "abcd"_utf8), text.end());
    EXPECT_EQ(Find(text, ""_utf8), text.end());
    EXPECT_EQ(Find(text, Ref()), text.end());
    EXPECT_EQ(Find(Ref(), "x"_utf8), Ref().end());
    EXPECT_EQ(Find(Ref(), Ref()), Ref().end());
}

TEST(Find, WorksOnStringsAndOtherEncodings) {
    CopiedUString<UTF8> const text("abc"_utf8);
    EXPECT_EQ(Find(text, "c"_utf8), text.begin() + 2);
    std::uint32_t const units[] = {5, 6, 7};
    UStringRef<UTF32> const wide(UTF32(), units, units + 3);
    EXPECT_EQ(Find(wide, UStringRef<UTF32>(UTF32(), units + 1, units + 2)), units + 1);
}

TEST(EqualIgnoringCase, FoldsAsciiLettersOnly) {
    EXPECT_TRUE(EqualIgnoringCase("Yes"_utf8, "yES"_utf8));
    EXPECT_TRUE(EqualIgnoringCase(""_utf8, Ref()));
    EXPECT_FALSE(EqualIgnoringCase("yes"_utf8, ""_utf8));
    EXPECT_FALSE(EqualIgnoringCase(""_utf8, "yes"_utf8));
    EXPECT_FALSE(EqualIgnoringCase("yes"_utf8, "yess"_utf8));
    EXPECT_FALSE(EqualIgnoringCase("yes"_utf8, "yet"_utf8));
    EXPECT_FALSE(EqualIgnoringCase("["_utf8, "{"_utf8));
    EXPECT_FALSE(EqualIgnoringCase("\xC3\x84"_utf8, "\xC3\xA4"_utf8));
}

TEST(Replace, ReplacesEveryOccurrenceFromTheLeft) {
    EXPECT_EQ(Replace("a-b-c"_utf8, "-"_utf8, "+"_utf8), "a+b+c"_utf8);
    EXPECT_EQ(Replace("aaa"_utf8, "aa"_utf8, "b"_utf8), "ba"_utf8);
    EXPECT_EQ(Replace("aaaa"_utf8, "aa"_utf8, "aaa"_utf8), "aaaaaa"_utf8);
    EXPECT_EQ(Replace("-a-"_utf8, "-"_utf8, ""_utf8), "a"_utf8);
    EXPECT_EQ(Replace("abc"_utf8, "x"_utf8, "y"_utf8), "abc"_utf8);
    EXPECT_EQ(Replace("abc"_utf8, "abc"_utf8, ""_utf8), ""_utf8);
    EXPECT_EQ(Replace(""_utf8, "x"_utf8, "y"_utf8), ""_utf8);
}

TEST(Replace, OfNothingCopiesTheText) {
    EXPECT_EQ(Replace("abc"_utf8, ""_utf8, "x"_utf8), "abc"_utf8);
    EXPECT_EQ(Replace("abc"_utf8, Ref(), "x"_utf8), "abc"_utf8);
}

TEST(Replace, HasRoomFor256UnitsFromTheStart) {
    EXPECT_EQ(Replace("abc"_utf8, "b"_utf8, "x"_utf8).CapacityInUnits(), 256U);
}

TEST(Split, KeepsEmptyPiecesOnlyWhenAskedTo) {
    EXPECT_EQ(Texts(Split("a,,b"_utf8, ","_utf8, false, false)), (Pieces{"a", "b"}));
    EXPECT_EQ(Texts(Split("a,,b"_utf8, ","_utf8, false, true)), (Pieces{"a", "", "b"}));
}

TEST(Split, CountsThePieceBehindTheLastSeparator) {
    EXPECT_EQ(Texts(Split("a,b"_utf8, ","_utf8, false, true)), (Pieces{"a", "b"}));
    EXPECT_EQ(Texts(Split("a,"_utf8, ","_utf8, false, true)), (Pieces{"a", ""}));
    EXPECT_EQ(Texts(Split("a,"_utf8, ","_utf8, false, false)), (Pieces{"a"}));
    EXPECT_EQ(Texts(Split(","_utf8, ","_utf8, false, true)), (Pieces{"", ""}));
    EXPECT_EQ(Texts(Split(""_utf8, ","_utf8, false, true)), (Pieces{""}));
    EXPECT_EQ(Texts(Split(""_utf8, ","_utf8, false, false)), Pieces());
}

TEST(Split, TrimsPiecesBeforeItAsksWhetherTheyAreEmpty) {
    EXPECT_EQ(Texts(Split(" a , \t, b"_utf8, ","_utf8, true, false)), (Pieces{"a", "b"}));
    EXPECT_EQ(Texts(Split(" a , \t, b"_utf8, ","_utf8, true, true)), (Pieces{"a", "", "b"}));
    EXPECT_EQ(Texts(Split(" a , \t, b"_utf8, ","_utf8, false, false)), (Pieces{" a ", " \t", " b"}));
}

TEST(Split, TakesSeparatorsOfSeveralBytes) {
    EXPECT_EQ(Texts(Split("a::b:::c"_utf8, "::"_utf8, false, true)), (Pieces{"a", "b", ":c"}));
}

TEST(Split, ByAnEmptySeparatorGivesTheWholeText) {
    EXPECT_EQ(Texts(Split("a,b"_utf8, ""_utf8, false, true)), (Pieces{"a,b"}));
    EXPECT_EQ(Texts(Split(" a "_utf8, Ref(), true, false)), (Pieces{"a"}));
}

TEST(Split, GivesViewsIntoTheText) {
    auto const text = "ab,cd"_utf8;
    auto const pieces = Split(text, ","_utf8, false, false);
    ASSERT_EQ(pieces.size(), 2U);
    EXPECT_EQ(pieces[0].begin(), text.begin());
    EXPECT_EQ(pieces[1].begin(), text.begin() + 3);
}

TEST(SplitPair, SplitsAtTheFirstSeparator) {
    auto const text = "key=value=more"_utf8;
    auto const [before, after] = SplitPair(text, "="_utf8);
    EXPECT_EQ(before, "key"_utf8);
    EXPECT_EQ(after, "value=more"_utf8);
    EXPECT_EQ(before.begin(), text.begin());
    EXPECT_EQ(after.begin(), text.begin() + 4);
}

TEST(SplitPair, SeparatorAtAnEndLeavesAnEmptySide) {
    EXPECT_EQ(SplitPair("=value"_utf8, "="_utf8).first, ""_utf8);
    EXPECT_EQ(SplitPair("=value"_utf8, "="_utf8).second, "value"_utf8);
    EXPECT_EQ(SplitPair("key="_utf8, "="_utf8).first, "key"_utf8);
    EXPECT_EQ(SplitPair("key="_utf8, "="_utf8).second, ""_utf8);
    EXPECT_NE(SplitPair("key="_utf8, "="_utf8).second.begin(), nullptr);
}

TEST(SplitPair, WithoutASeparatorGivesTwoNullViews) {
    for (auto const& [text, separator] :
         {std::pair{"text"_utf8, "="_utf8}, std::pair{"text"_utf8, ""_utf8}, std::pair{""_utf8, "="_utf8}}) {
        auto const pieces = SplitPair(text, separator);
        EXPECT_EQ(pieces.first.begin(), nullptr);
        EXPECT_EQ(pieces.first.end(), nullptr);
        EXPECT_EQ(pieces.second.begin(), nullptr);
        EXPECT_EQ(pieces.second.end(), nullptr);
    }
}

TEST(Join, PutsTheSeparatorBetweenTheTexts) {
    EXPECT_EQ(Join(std::vector<Ref>{"a"_utf8, "bb"_utf8, ""_utf8, "c"_utf8}, ", "_utf8), "a, bb, , c"_utf8);
    EXPECT_EQ(
        Join(std::vector<CopiedUString<UTF8>>{CopiedUString<UTF8>("a"_utf8), CopiedUString<UTF8>("b"_utf8)},
             "-"_utf8),
        "a-b"_utf8);
    EXPECT_EQ(Join(std::vector<Ref>{"alone"_utf8}, ", "_utf8), "alone"_utf8);
    EXPECT_EQ(Join(std::vector<Ref>{"a"_utf8, "b"_utf8}, ""_utf8), "ab"_utf8);
    EXPECT_EQ(Join(std::vector<Ref>{Ref(), Ref()}, Ref()), ""_utf8);
}

TEST(Join, TakesTheOrderOfASet) {
    EXPECT_EQ(Join(std::set<Ref>{"b"_utf8, "a"_utf8, "b"_utf8}, ","_utf8), "a,b"_utf8);
    std::set<CopiedUString<UTF8>> texts;
    texts.insert(CopiedUString<UTF8>("z"_utf8));
    texts.insert(CopiedUString<UTF8>("y"_utf8));
    EXPECT_EQ(Join(texts, ","_utf8), "y,z"_utf8);
}

TEST(Join, OfNothingIsEmpty) {
    EXPECT_TRUE(Join(std::vector<Ref>(), ","_utf8).empty());
    EXPECT_TRUE(Join(std::set<CopiedUString<UTF8>>(), ","_utf8).empty());
}

TEST(Join, HasRoomForExactlyItsText) {
    std::string const text(50, 'x');
    Ref const view = MakeUTF8Ref(text);
    EXPECT_EQ(Join(std::vector<Ref>{view, view, view}, "--"_utf8).CapacityInUnits(), 154U);
}

TEST(TrimAsciiWhitespace, DropsAllSixWhiteBytesInFront) {
    for (TextCase const& c :
         {TextCase{" \t\n\v\f\rtext "_utf8, "text "_utf8}, TextCase{"text"_utf8, "text"_utf8},
          TextCase{"  "_utf8, ""_utf8}, TextCase{""_utf8, ""_utf8},
          TextCase{" \xC2\xA0text"_utf8, "\xC2\xA0text"_utf8}, TextCase{" \x85 x"_utf8, "\x85 x"_utf8}})
        EXPECT_EQ(TrimLeadingAsciiWhitespace(c.text), c.expected);
}

TEST(TrimAsciiWhitespace, DropsAllSixWhiteBytesBehind) {
    for (TextCase const& c :
         {TextCase{" text \t\n\v\f\r"_utf8, " text"_utf8}, TextCase{"text"_utf8, "text"_utf8},
          TextCase{"  "_utf8, ""_utf8}, TextCase{"text\xC2\xA0 "_utf8, "text\xC2\xA0"_utf8}})
        EXPECT_EQ(TrimTrailingAsciiWhitespace(c.text), c.expected);
    EXPECT_EQ(TrimTrailingAsciiWhitespace("x"_utf8.Middle(0, 0)).begin(), nullptr);
}

TEST(TrimAsciiWhitespace, WorksAtBothEnds) {
    for (TextCase const& c : {TextCase{" \r\n a b\t "_utf8, "a b"_utf8}, TextCase{" "_utf8, ""_utf8},
                              TextCase{""_utf8, ""_utf8}, TextCase{"a"_utf8, "a"_utf8}})
        EXPECT_EQ(TrimAsciiWhitespace(c.text), c.expected);
    auto const text = " a "_utf8;
    EXPECT_EQ(TrimAsciiWhitespace(text).begin(), text.begin() + 1);
}

TEST(TrimToLeadingAsciiWhitespace, BeginsAtTheFirstWhiteByte) {
    for (TextCase const& c :
         {TextCase{"word rest"_utf8, " rest"_utf8}, TextCase{"word\trest of"_utf8, "\trest of"_utf8},
          TextCase{" rest"_utf8, " rest"_utf8}, TextCase{"word"_utf8, ""_utf8}, TextCase{""_utf8, ""_utf8}})
        EXPECT_EQ(TrimToLeadingAsciiWhitespace(c.text), c.expected);
}

TEST(TrimToLeadingAsciiWhitespace, StopsAtAByteWithTheHighBit) {
    EXPECT_EQ(TrimToLeadingAsciiWhitespace("w\xC3\xB6rd rest"_utf8), "\xC3\xB6rd rest"_utf8);
    EXPECT_EQ(TrimToLeadingAsciiWhitespace("a b\xC3\xB6"_utf8), " b\xC3\xB6"_utf8);
}

TEST(TrimTrailingAsciiNewline, DropsAllTrailingNewlineBytes) {
    for (TextCase const& c : {TextCase{"line\r\n"_utf8, "line"_utf8},
                              TextCase{"line\n\n\r"_utf8, "line"_utf8}, TextCase{"line"_utf8, "line"_utf8},
                              TextCase{"\nline \n"_utf8, "\nline "_utf8}, TextCase{"a\nb"_utf8, "a\nb"_utf8},
                              TextCase{"\r\n"_utf8, ""_utf8}, TextCase{"x\x85\n"_utf8, "x\x85"_utf8}})
        EXPECT_EQ(TrimTrailingAsciiNewline(c.text), c.expected);
    EXPECT_EQ(TrimTrailingAsciiNewline("x"_utf8.Middle(0, 0)).begin(), nullptr);
}

// One, two, three and four bytes.
constexpr char cFourCharacters[] = "a\xC3\xB6\xE2\x82\xAC\xF0\x9F\x98\x80";

TEST(CharBytePosition, CountsByTheLeadBytes) {
    Ref const text = MakeUTF8Ref(cFourCharacters);
    ASSERT_EQ(text.SizeInUnits(), 10U);
    std::size_t const expected[] = {0, 1, 3, 6, 10, 10, 10};
    for (std::size_t count = 0; count < std::size(expected); ++count)
        EXPECT_EQ(CharBytePosition(text, count), expected[count]) << count;
    EXPECT_EQ(CharBytePosition(text, cAllOnes), 10U);
}

TEST(CharBytePosition, IsZeroForAnEmptyTextOrCount) {
    EXPECT_EQ(CharBytePosition(Ref(), 5), 0U);
    EXPECT_EQ(CharBytePosition(""_utf8, 5), 0U);
    EXPECT_EQ(CharBytePosition("abc"_utf8, 0), 0U);
}

TEST(CharBytePosition, MayOvershootATextThatEndsInsideACharacter) {
    EXPECT_EQ(CharBytePosition("a\xF0\x9F"_utf8, 2), 5U);
    EXPECT_EQ(CharBytePosition("a\xE2"_utf8, 2), 4U);
    EXPECT_EQ(CharBytePosition("a\xE2"_utf8, 100), 4U);
    EXPECT_EQ(CharBytePosition("\xC3"_utf8, 1), 2U);
}

TEST(CharBytePosition, TakesEveryByteForALead) {
    struct Case {
        unsigned char lead;
        std::size_t size;
    };
    for (Case const& c :
         {Case{0x00, 1}, Case{0x7F, 1}, Case{0x80, 2}, Case{0xBF, 2}, Case{0xC0, 2}, Case{0xDF, 2},
          Case{0xE0, 3}, Case{0xEF, 3}, Case{0xF0, 4}, Case{0xF7, 4}, Case{0xF8, 4}, Case{0xFF, 4}}) {
        Ref const text(UTF8(), &c.lead, &c.lead + 1);
        EXPECT_EQ(CharBytePosition(text, 1), c.size) << static_cast<unsigned int>(c.lead);
    }
}

TEST(CharPosFromOffset, CountsTheCharactersThatCoverTheBytes) {
    Ref const text = MakeUTF8Ref(cFourCharacters);
    std::size_t const expected[] = {0, 1, 2, 2, 3, 3, 3, 4, 4, 4, 4};
    for (std::size_t offset = 0; offset < std::size(expected); ++offset)
        EXPECT_EQ(CharPosFromOffset(text, offset), expected[offset]) << offset;
}

TEST(CharPosFromOffset, IsZeroForAnEmptyTextOrOffset) {
    EXPECT_EQ(CharPosFromOffset(Ref(), 5), 0U);
    EXPECT_EQ(CharPosFromOffset("abc"_utf8, 0), 0U);
}

TEST(TrimAsciiWhitespace, TakesEveryOwnerOfATextAsTextAndNotAsBytes) {
    CopiedUString<UTF8> const copied(" x "_utf8);
    SharedUString<UTF8> const shared(" y "_utf8);
    EXPECT_EQ(TrimAsciiWhitespace(copied), "x"_utf8);
    EXPECT_EQ(TrimAsciiWhitespace(shared), "y"_utf8);
    EXPECT_EQ(TrimLeadingAsciiWhitespace(copied), "x "_utf8);
}
