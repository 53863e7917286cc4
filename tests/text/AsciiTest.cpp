#include "text/AsciiFilters.h"
#include "text/UString.h"

#include "tests/support/UStringPrinting.h"

#include <gtest/gtest.h>

#include <functional>
#include <string>

namespace {

struct ClassCase {
    char const* name;
    Bits const& (*set)();
    std::function<bool(int)> holds;
};

bool IsUpper(int value) {
    return value >= 'A' && value <= 'Z';
}

bool IsLower(int value) {
    return value >= 'a' && value <= 'z';
}

bool IsDigit(int value) {
    return value >= '0' && value <= '9';
}

bool IsAlphanumeric(int value) {
    return IsUpper(value) || IsLower(value) || IsDigit(value);
}

bool IsOneOf(std::string const& values, int value) {
    return value < 256 && values.find(static_cast<char>(value)) != std::string::npos;
}

ClassCase const cClasses[] = {
    {"Control", Ascii::Control, [](int c) { return c < 32 || c == 127; }},
    {"WhiteSpace", Ascii::WhiteSpace, [](int c) { return IsOneOf(" \t\n\v\f\r", c); }},
    {"LinearWhiteSpace", Ascii::LinearWhiteSpace, [](int c) { return c == ' ' || c == '\t'; }},
    {"Newline", Ascii::Newline, [](int c) { return c == '\n' || c == '\r'; }},
    {"Numeric", Ascii::Numeric, IsDigit},
    {"Alphabetic", Ascii::Alphabetic, [](int c) { return IsUpper(c) || IsLower(c); }},
    {"Alphabetic_", Ascii::Alphabetic_, [](int c) { return IsUpper(c) || IsLower(c) || c == '_'; }},
    {"Alphanumeric", Ascii::Alphanumeric, IsAlphanumeric},
    {"Alphanumeric_", Ascii::Alphanumeric_, [](int c) { return IsAlphanumeric(c) || c == '_'; }},
    {"UppercaseAlphabet", Ascii::UppercaseAlphabet, IsUpper},
    {"LowercaseAlphabet", Ascii::LowercaseAlphabet, IsLower},
    {"HexDigits", Ascii::HexDigits, [](int c) { return IsOneOf("0123456789abcdefABCDEF", c); }},
    {"Punctuation", Ascii::Punctuation,
     [](int c) { return IsOneOf("!\"#$%&'()*+,-./:;<=>?@[\\]^_`{|}~", c); }},
    {"Low", Ascii::Low, [](int c) { return c < 128; }},
    {"High", Ascii::High, [](int c) { return c >= 128; }},
    {"PlainText", Ascii::PlainText, [](int c) { return (c >= 32 && c < 127) || IsOneOf("\t\n\r", c); }},
    {"Printable", Ascii::Printable, [](int c) { return c >= 32 && c < 127; }},
    {"Unprintable", Ascii::Unprintable, [](int c) { return c < 32 || c >= 127; }},
};

} // namespace

TEST(AsciiClasses, HoldExactlyTheirBytes) {
    for (ClassCase const& each : cClasses)
        for (int value = 0; value < 256; ++value)
            EXPECT_EQ(each.set().Has(static_cast<unsigned char>(value)), each.holds(value))
                << each.name << " and byte " << value;
}

TEST(AsciiClasses, AreTheSameObjectAtEveryCall) {
    for (ClassCase const& each : cClasses) EXPECT_EQ(&each.set(), &each.set()) << each.name;
}

TEST(Bits, StartsEmptyAndHoldsWhatIsSet) {
    Bits set;
    for (int value = 0; value < 256; ++value) EXPECT_FALSE(set.Has(static_cast<unsigned char>(value)));
    for (int const each : {0, 31, 32, 63, 64, 128, 255}) {
        auto const value = static_cast<unsigned char>(each);
        set.Set(value);
        EXPECT_TRUE(set.Has(value)) << each;
        set.Clear(value);
        EXPECT_EQ(set, Bits()) << each;
    }
}

TEST(Bits, RangesIncludeBothEnds) {
    Bits const set = Bits().SetRange(250, 255);
    for (int value = 0; value < 256; ++value)
        EXPECT_EQ(set.Has(static_cast<unsigned char>(value)), value >= 250) << value;
}

TEST(AsciiCaseTables, ChangeLettersOnly) {
    EXPECT_TRUE(Ascii::CaseTablesAreCorrect());
    for (int value = 0; value < 256; ++value) {
        auto const index = static_cast<std::size_t>(value);
        EXPECT_EQ(Ascii::lowercaseTable[index], IsUpper(value) ? value + 32 : value) << value;
        EXPECT_EQ(Ascii::uppercaseTable[index], IsLower(value) ? value - 32 : value) << value;
    }
}

TEST(AsciiCase, MakesANewText) {
    EXPECT_EQ(Ascii::LowerCase("Hello, WORLD @[`{ 42 \xc3\x84"_data), "hello, world @[`{ 42 \xc3\x84"_utf8);
    EXPECT_EQ(Ascii::RaiseCase("Hello, world @[`{ 42 \xc3\xa4"_data), "HELLO, WORLD @[`{ 42 \xc3\xa4"_utf8);
    EXPECT_TRUE(Ascii::LowerCase(ConstData()).empty());
    EXPECT_TRUE(Ascii::RaiseCase(ConstData()).empty());
}

TEST(AsciiCase, FoldsLongTextsWhole) {
    std::string const many(1000, 'Q');
    EXPECT_EQ(MakeString(Ascii::LowerCase(MakeConstData(many))), std::string(1000, 'q'));
}

TEST(AsciiCase, WritesAsManyBytesAsBothRangesHold) {
    unsigned char target[4] = {'#', '#', '#', '#'};
    Ascii::LowerCase("ABCDEF"_data, Data(target, target + 3));
    EXPECT_EQ(ConstData(target, target + 4), "abc#"_data);
    Ascii::RaiseCase("xy"_data, Data(target, target + 4));
    EXPECT_EQ(ConstData(target, target + 4), "XYc#"_data);
}

TEST(AsciiCase, ConsumesFromTheCursorWhatFits) {
    unsigned char room[4];
    Buffer target(Data(room, room + 4));
    ConstBuffer source("ABCDEF"_data);
    Ascii::LowerCase(source, target);
    EXPECT_EQ(target.Written(), "abcd"_data);
    EXPECT_TRUE(target.Full());
    EXPECT_EQ(source.Rest(), "EF"_data);

    Buffer other(Data(room, room + 4));
    Ascii::RaiseCase(source, other);
    EXPECT_TRUE(source.empty());
    EXPECT_EQ(other.Written(), "EF"_data);
}

TEST(AsciiCaseFilters, FoldAndHoldNothingBack) {
    unsigned char room[8];
    Ascii::CaseRaisingFilter raising;
    Ascii::CaseLoweringFilter lowering;
    EXPECT_EQ(raising("ab-CD"_data, Data(room, room + 8)), "AB-CD"_data);
    EXPECT_EQ(lowering("ab-CD"_data, Data(room, room + 8)), "ab-cd"_data);
    EXPECT_TRUE(raising.Flushed());
    EXPECT_TRUE(lowering.Flushed());
}

TEST(AsciiCaseFilters, StopAtAFullOutput) {
    unsigned char room[2];
    ConstBuffer in("xyz"_data);
    Ascii::CaseRaisingFilter raising;
    EXPECT_EQ(raising(in, Data(room, room + 2)), "XY"_data);
    EXPECT_EQ(in.Rest(), "z"_data);
}

TEST(AsciiCase, IsDecidedByLettersAlone) {
    EXPECT_TRUE(Ascii::IsLowercase("abc 12 \xc3\x84"_data));
    EXPECT_FALSE(Ascii::IsLowercase("abC"_data));
    EXPECT_TRUE(Ascii::IsUppercase("ABC 12 \xc3\xa4"_data));
    EXPECT_FALSE(Ascii::IsUppercase("ABc"_data));
    EXPECT_TRUE(Ascii::IsLowercase(ConstData()));
    EXPECT_TRUE(Ascii::IsUppercase(ConstData()));
}

TEST(AsciiEqualIgnoringCase, NeedsTheSameSizeAndLetters) {
    EXPECT_TRUE(Ascii::EqualIgnoringCase("Content"_data, "cONTENT"_data));
    EXPECT_TRUE(Ascii::EqualIgnoringCase(ConstData(), ""_data));
    EXPECT_FALSE(Ascii::EqualIgnoringCase("Content"_data, "Conten"_data));
    EXPECT_FALSE(Ascii::EqualIgnoringCase("["_data, "{"_data));
    EXPECT_FALSE(Ascii::EqualIgnoringCase("\xc4"_data, "\xe4"_data));
}

TEST(AsciiCompare, OrdersByTheFoldedBytes) {
    EXPECT_EQ(Ascii::CompareLowercase("ABC"_data, "abc"_data), 0);
    EXPECT_LT(Ascii::CompareLowercase("ABC"_data, "abd"_data), 0);
    EXPECT_GT(Ascii::CompareLowercase("b"_data, "A"_data), 0);
    EXPECT_EQ(Ascii::CompareLowercase("Zone", "zONE"), 0);
    EXPECT_LT(Ascii::CompareLowercase("", "a"), 0);
    EXPECT_EQ(Ascii::CompareUppercase("abc"_data, "ABC"_data), 0);
}

TEST(AsciiCompare, GivesOneOrMinusOneWhereOnlyTheLengthsDiffer) {
    EXPECT_EQ(Ascii::CompareLowercase("ab"_data, "ABCDE"_data), -1);
    EXPECT_EQ(Ascii::CompareLowercase("ABCDE"_data, "ab"_data), 1);
    EXPECT_EQ(Ascii::CompareLowercase(ConstData(), "zz"_data), -1);
    EXPECT_EQ(Ascii::CompareLowercase("zz"_data, ConstData()), 1);
    EXPECT_EQ(Ascii::CompareLowercase("ab", "ABCDE"), -1);
    EXPECT_EQ(Ascii::CompareLowercase("ABCDE", "ab"), 1);
    EXPECT_EQ(Ascii::CompareUppercase("ab"_data, "ABCDE"_data), -1);
    EXPECT_EQ(Ascii::CompareUppercase("ABCDE"_data, "ab"_data), 1);
}

TEST(AsciiCompare, PlacesWhatStandsBetweenTheCasesByTheChosenCase) {
    EXPECT_LT(Ascii::CompareLowercase("_"_data, "A"_data), 0);
    EXPECT_GT(Ascii::CompareUppercase("_"_data, "a"_data), 0);
}

TEST(AsciiCompare, TakesBytesAsUnsigned) {
    EXPECT_GT(Ascii::CompareLowercase("\x80"_data, "z"_data), 0);
}

TEST(AsciiHexDigit, ValueAndDigitAgree) {
    char const digits[] = "0123456789abcdef";
    for (unsigned int value = 0; value < 16; ++value) {
        auto const digit = static_cast<unsigned char>(digits[value]);
        EXPECT_EQ(Ascii::HexDigit(value), digit);
        EXPECT_EQ(Ascii::HexDigitValue(digit), value);
        EXPECT_EQ(Ascii::HexDigitValue(Ascii::uppercaseTable[digit]), value);
    }
}

TEST(AsciiHexDigit, ValueOfAnotherCharacterFollowsTheSameRule) {
    EXPECT_EQ(Ascii::HexDigitValue('g'), 16u);
    EXPECT_EQ(Ascii::HexDigitValue(':'), static_cast<unsigned int>((':' | 0x20) - 0x57));
    EXPECT_EQ(Ascii::HexDigitValue('/'), static_cast<unsigned int>(-1));
}
