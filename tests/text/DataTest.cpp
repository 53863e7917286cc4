#include "text/Data.h"

#include <gtest/gtest.h>

#include <string>
#include <type_traits>
#include <vector>

namespace {

std::vector<std::string> Strings(std::vector<ConstData> const& pieces) {
    std::vector<std::string> texts;
    for (ConstData const piece : pieces) texts.push_back(MakeString(piece));
    return texts;
}

using Texts = std::vector<std::string>;

} // namespace

TEST(ConstData, IsTwoPointersPassedByValue) {
    static_assert(sizeof(ConstData) == 2 * sizeof(void*));
    static_assert(sizeof(Data) == 2 * sizeof(void*));
    static_assert(std::is_trivially_copyable_v<ConstData>);
    static_assert(std::is_convertible_v<Data, ConstData>);
}

TEST(ConstData, TakesAnEndBeforeTheBeginAsEmpty) {
    unsigned char const bytes[] = {1, 2, 3};
    ConstData const reversed(bytes + 2, bytes);
    EXPECT_TRUE(reversed.empty());
    EXPECT_EQ(reversed.Size(), 0u);
    EXPECT_EQ(reversed.begin(), reversed.end());
    EXPECT_TRUE(ConstData() == reversed);
}

TEST(ConstData, KnowsItsFirstAndLastBytes) {
    EXPECT_TRUE("abc"_data.StartsWith("ab"_data));
    EXPECT_TRUE("abc"_data.StartsWith("abc"_data));
    EXPECT_FALSE("abc"_data.StartsWith("abcd"_data));
    EXPECT_FALSE("abc"_data.StartsWith("b"_data));
    EXPECT_TRUE("abc"_data.StartsWith(ConstData()));
    EXPECT_TRUE("abc"_data.EndsWith("bc"_data));
    EXPECT_FALSE("abc"_data.EndsWith("ab"_data));
    EXPECT_FALSE("abc"_data.EndsWith("zabc"_data));
    EXPECT_TRUE("abc"_data.EndsWith(ConstData()));
    EXPECT_FALSE(ConstData().StartsWith("a"_data));
}

TEST(ConstData, FindsTheFirstPosition) {
    EXPECT_EQ("banana"_data.PositionOf('a'), 1u);
    EXPECT_EQ("banana"_data.PositionOf('b'), 0u);
    EXPECT_EQ("banana"_data.PositionOf('x'), cAllOnes);
    EXPECT_EQ(ConstData().PositionOf('x'), cAllOnes);
    EXPECT_EQ("banana"_data.PositionOf("nan"_data), 2u);
    EXPECT_EQ("banana"_data.PositionOf("nab"_data), cAllOnes);
    EXPECT_EQ("banana"_data.PositionOf(ConstData()), cAllOnes);
    EXPECT_EQ(ConstData().PositionOf(ConstData()), cAllOnes);
    EXPECT_EQ("a"_data.PositionOf("aa"_data), cAllOnes);
    EXPECT_EQ("a\0b"_data.PositionOf("\0b"_data), 1u);
}

TEST(ConstData, ContainsWhatItFinds) {
    EXPECT_TRUE("banana"_data.Contains('n'));
    EXPECT_FALSE("banana"_data.Contains('N'));
    EXPECT_TRUE("banana"_data.Contains("ana"_data));
    EXPECT_FALSE("banana"_data.Contains(ConstData()));
}

TEST(ConstData, FindsPositionsThatDoNotOverlap) {
    EXPECT_EQ("banana"_data.PositionsOf("an"_data), (std::vector<std::size_t>{1, 3}));
    EXPECT_EQ("banana"_data.PositionsOf("ana"_data), (std::vector<std::size_t>{1}));
    EXPECT_EQ("aaaa"_data.PositionsOf("aa"_data), (std::vector<std::size_t>{0, 2}));
    EXPECT_TRUE("banana"_data.PositionsOf(ConstData()).empty());
    EXPECT_TRUE(ConstData().PositionsOf("a"_data).empty());
}

TEST(ConstData, SplitsAtEverySeparator) {
    EXPECT_EQ(Strings("a,,b"_data.Split(","_data, false, false)), (Texts{"a", "b"}));
    EXPECT_EQ(Strings("a,,b"_data.Split(","_data, false, true)), (Texts{"a", "", "b"}));
    EXPECT_EQ(Strings("a,b,"_data.Split(","_data, false, true)), (Texts{"a", "b", ""}));
    EXPECT_EQ(Strings(" a , b "_data.Split(","_data, true, false)), (Texts{"a", "b"}));
    EXPECT_EQ(Strings(" a , b "_data.Split(","_data, false, false)), (Texts{" a ", " b "}));
    EXPECT_EQ(Strings("a,  ,b"_data.Split(","_data, true, false)), (Texts{"a", "b"}));
    EXPECT_EQ(Strings("a,  ,b"_data.Split(","_data, true, true)), (Texts{"a", "", "b"}));
    EXPECT_EQ(Strings("a--b-c"_data.Split("--"_data, false, false)), (Texts{"a", "b-c"}));
    EXPECT_EQ(Strings("a,b"_data.Split(ConstData(), false, false)), (Texts{"a,b"}));
    EXPECT_EQ(Strings(ConstData().Split(","_data, false, true)), (Texts{""}));
}

TEST(ConstData, CopiesToARangeWhatBothHold) {
    unsigned char room[4] = {'#', '#', '#', '#'};
    EXPECT_EQ(MakeString("abcdef"_data >> Data(room, room + 3)), "def");
    EXPECT_EQ(MakeString(ConstData(room, room + 4)), "abc#");
    EXPECT_TRUE(("xy"_data >> Data(room, room + 4)).empty());
    EXPECT_EQ(MakeString(ConstData(room, room + 4)), "xyc#");
    EXPECT_TRUE((ConstData() >> Data()).empty());
}

TEST(Compare, GivesTheDifferenceOfTheFirstBytesThatDiffer) {
    EXPECT_EQ(Compare("abd"_data, "abc"_data), 1);
    EXPECT_EQ(Compare("a\xff"_data, "a\x01"_data), 254);
    EXPECT_EQ(Compare("ab"_data, "abc"_data), -1);
    EXPECT_EQ(Compare("abc"_data, "ab"_data), 1);
    EXPECT_EQ(Compare("abc"_data, "abc"_data), 0);
    EXPECT_EQ(Compare(ConstData(), ""_data), 0);
}

TEST(CompareReversed, LooksFromTheLastByteBackwards) {
    EXPECT_EQ(CompareReversed("zbc"_data, "abc"_data), 'z' - 'a');
    EXPECT_EQ(CompareReversed("abd"_data, "zbc"_data), 1);
    EXPECT_EQ(CompareReversed("bc"_data, "abc"_data), -1);
    EXPECT_EQ(CompareReversed("abc"_data, "bc"_data), 1);
    EXPECT_EQ(CompareReversed("abc"_data, "abc"_data), 0);
}

TEST(ConstData, IsEqualAndOrderedByItsBytes) {
    EXPECT_TRUE("abc"_data == "abc"_data);
    EXPECT_FALSE("abc"_data == "ab"_data);
    EXPECT_TRUE("abc"_data < "abd"_data);
    EXPECT_TRUE("ab"_data < "abc"_data);
    EXPECT_TRUE("z"_data < "\x80"_data);
    EXPECT_FALSE("abc"_data < "abc"_data);
}

TEST(ConstDataTrimming, RemovesAsciiWhiteSpaceOnly) {
    EXPECT_EQ(MakeString(TrimLeadingAsciiWhitespace(" \t\r\n\v\fab "_data)), "ab ");
    EXPECT_EQ(MakeString(TrimAsciiWhitespace(" \t a b \n "_data)), "a b");
    EXPECT_TRUE(TrimAsciiWhitespace(" \t\n"_data).empty());
    EXPECT_TRUE(TrimAsciiWhitespace(ConstData()).empty());
    EXPECT_EQ(MakeString(TrimAsciiWhitespace(" \xa0 "_data)), "\xa0");
}

TEST(MakeString, CopiesBytesWithZerosAmongThem) {
    EXPECT_EQ(MakeString("a\0b"_data), std::string("a\0b", 3));
    EXPECT_EQ(MakeString(ConstData()), "");
}
