#include "text/IsUTF8.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

// The bytes of a value by the scheme of UTF-8, in a form of `size` bytes.
std::string Form(unsigned int value, int size) {
    if (size == 1) return std::string(1, static_cast<char>(value));
    std::string bytes;
    for (int i = 1; i < size; ++i) {
        bytes.insert(bytes.begin(), static_cast<char>(0x80 | (value & 0x3F)));
        value >>= 6;
    }
    bytes.insert(bytes.begin(), static_cast<char>((0xF00 >> size) | value));
    return bytes;
}

int ShortestForm(unsigned int value) {
    if (value < 0x80) return 1;
    if (value < 0x800) return 2;
    return value < 0x10000 ? 3 : 4;
}

} // namespace

TEST(IsUTF8, HoldsForEveryCharacter) {
    for (unsigned int value = 0; value <= 0x10FFFF; ++value) {
        bool const isSurrogate = value >= 0xD800 && value <= 0xDFFF;
        ASSERT_EQ(IsUTF8(MakeConstData(Form(value, ShortestForm(value)))), !isSurrogate) << value;
    }
}

TEST(IsUTF8, RefusesValuesAboveTheHighest) {
    for (unsigned int value = 0x110000; value < 0x200000; ++value)
        ASSERT_FALSE(IsUTF8(MakeConstData(Form(value, 4)))) << value;
}

TEST(IsUTF8, RefusesFormsThatAreLongerThanNeeded) {
    for (unsigned int value = 0; value < 0x10000; ++value)
        for (int size = ShortestForm(value) + 1; size <= 4; ++size)
            ASSERT_FALSE(IsUTF8(MakeConstData(Form(value, size)))) << value << " in " << size;
}

TEST(IsUTF8, RefusesCharactersThatAreCutShort) {
    for (unsigned int const value : {0x80u, 0x7FFu, 0x800u, 0xFFFDu, 0x10000u, 0x10FFFFu}) {
        std::string const whole = Form(value, ShortestForm(value));
        for (std::size_t size = 1; size < whole.size(); ++size) {
            EXPECT_FALSE(IsUTF8(MakeConstData(whole.substr(0, size) + "\xC3\xBC\xC3\xBC")))
                << value << " cut at " << size;
            EXPECT_FALSE(IsUTF8(MakeConstData(whole.substr(0, size)))) << value << " cut at " << size;
            EXPECT_FALSE(IsUTF8(MakeConstData(whole.substr(0, size) + "abcd")))
                << value << " cut at " << size;
        }
    }
}

TEST(IsUTF8, RefusesBytesThatBeginNoCharacter) {
    for (int byte = 0x80; byte < 0x100; ++byte) {
        if (byte >= 0xC2 && byte <= 0xF4) continue;
        EXPECT_FALSE(IsUTF8(MakeConstData(static_cast<char>(byte) + std::string("\x80\x80\x80")))) << byte;
    }
}

TEST(IsUTF8, LooksAtTheWholeText) {
    EXPECT_TRUE(IsUTF8(ConstData()));
    EXPECT_TRUE(IsUTF8("plain"_data));
    EXPECT_TRUE(IsUTF8("gr\xC3\xBC\xC3\x9F \xE2\x82\xAC \xF0\x9F\x98\x80"_data));
    EXPECT_TRUE(IsUTF8("a\0b"_data));
    EXPECT_FALSE(IsUTF8("gr\xC3\xBC\xC3\x9F and Gr\xFC\xDF"_data));
    EXPECT_FALSE(IsUTF8("plain\xFF"_data));
}
