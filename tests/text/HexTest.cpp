#include "text/Hex.h"
#include "text/UString.h"

#include "tests/support/UStringPrinting.h"

#include <gtest/gtest.h>

#include <string>
#include <type_traits>

namespace {

UStringRef<Binary8Bit> Binary(ConstData bytes) {
    return UStringRef<Binary8Bit>(Binary8Bit(), bytes);
}

} // namespace

TEST(MakeHexFromBinary8Bit, WritesTwoLowerCaseDigitsForEachByte) {
    EXPECT_EQ(MakeHexFromBinary8Bit(Binary("\x00\x01\x9a\xAB\xff"_data)), "00019aabff"_utf8);
    EXPECT_TRUE(MakeHexFromBinary8Bit(Binary(ConstData())).empty());
}

TEST(MakeBinary8BitFromHex, ReadsDigitsOfBothCases) {
    EXPECT_EQ(MakeBinary8BitFromHex("00019aABfF"_utf8), Binary("\x00\x01\x9a\xAB\xff"_data));
    EXPECT_TRUE(MakeBinary8BitFromHex(""_utf8).empty());
}

TEST(Hex, ReadsBackEveryByte) {
    std::string bytes;
    for (int value = 0; value < 256; ++value) bytes += static_cast<char>(value);
    AutoUString<UTF8> const text = MakeHexFromBinary8Bit(Binary(MakeConstData(bytes)));
    EXPECT_EQ(text.SizeInBytes(), 512u);
    EXPECT_EQ(MakeString(MakeBinary8BitFromHex(text)), bytes);
}

TEST(MakeBinary8BitFromHex, RefusesAnOddSize) {
    for (UStringRef<UTF8> const text : {"0"_utf8, "abc"_utf8, "00000"_utf8})
        EXPECT_THROW(MakeBinary8BitFromHex(text), NotValidHEX);
}

TEST(MakeBinary8BitFromHex, RefusesWhatIsNoDigit) {
    for (UStringRef<UTF8> const text : {"0g"_utf8, "g0"_utf8, "0x12"_utf8, "12 3"_utf8, "\xc3\xa4"_utf8})
        EXPECT_THROW(MakeBinary8BitFromHex(text), NotValidHEX);
}

TEST(NotValidHEX, CarriesItsMessageAndAMarkThatIsFalse) {
    static_assert(std::is_base_of_v<ExceptionPL, NotValidHEX>);
    try {
        MakeBinary8BitFromHex("0"_utf8);
        FAIL() << "an odd size was taken";
    } catch (NotValidHEX const& failure) {
        EXPECT_STREQ(failure.what(), "Input is not valid hexadecimal.");
        EXPECT_EQ(failure.uwhat(), "Input is not valid hexadecimal."_utf8);
        EXPECT_FALSE(failure.Mark());
    }
}
