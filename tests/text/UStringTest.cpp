#include "text/UString.h"

#include "foundation/Exceptions.h"
#include "tests/support/UStringPrinting.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <string>
#include <vector>

namespace {

template <class A, class B>
concept EqualityIsAsked = requires(A const& a, B const& b) {
    a == b;
};
template <class A, class B>
concept InequalityIsAsked = requires(A const& a, B const& b) {
    a != b;
};
template <class A, class B>
concept OrderIsAsked = requires(A const& a, B const& b) {
    a < b;
};

template <class A, class B>
constexpr bool cComparable = EqualityIsAsked<A, B> || InequalityIsAsked<A, B> || OrderIsAsked<A, B>;
template <class A, class B>
constexpr bool cFullyComparable = EqualityIsAsked<A, B>&& InequalityIsAsked<A, B>&& OrderIsAsked<A, B>;

using Units16 = std::vector<std::uint16_t>;
using Units32 = std::vector<std::uint32_t>;

UStringRef<UTF16> View(Units16 const& units) {
    return UStringRef<UTF16>(UTF16(), units.data(), units.data() + units.size());
}

UStringRef<UTF32> View(Units32 const& units) {
    return UStringRef<UTF32>(UTF32(), units.data(), units.data() + units.size());
}

// Offset of the first match, -1 for none.
template <class Units>
std::ptrdiff_t PositionIn(Units const& text, Units const& pattern) {
    auto const* const found = View(text).Position(View(pattern));
    return found == View(text).end() ? -1 : found - View(text).begin();
}

Units16 Repeated(Units16 const& units, std::size_t times) {
    Units16 text;
    for (std::size_t i = 0; i < times; ++i) text.insert(text.end(), units.begin(), units.end());
    return text;
}

// Every text of `size` units out of 1, 2 and 3.
std::vector<Units16> AllTexts(std::size_t size) {
    std::vector<Units16> texts{{}};
    for (std::size_t i = 0; i < size; ++i) {
        std::vector<Units16> longer;
        for (Units16 text : texts)
            for (std::uint16_t const unit : Units16{1, 2, 3}) {
                text.push_back(unit);
                longer.push_back(text);
                text.pop_back();
            }
        texts = longer;
    }
    return texts;
}

} // namespace

TEST(UStringRef, IsTwoPointers) {
    static_assert(sizeof(UStringRef<UTF8>) == 2 * sizeof(void*));
    static_assert(sizeof(UStringRef<UTF16>) == 2 * sizeof(void*));
    static_assert(sizeof(UStringRef<Local8Bit>) == 2 * sizeof(void*));
}

TEST(UStringRef, IsNullWhenMadeWithoutAText) {
    UStringRef<UTF8> const view;
    EXPECT_EQ(view.begin(), nullptr);
    EXPECT_EQ(view.end(), nullptr);
    EXPECT_TRUE(view.empty());
    EXPECT_EQ(view.SizeInUnits(), 0U);
    EXPECT_EQ(view.SizeInBytes(), 0U);
}

TEST(UStringRef, NullViewEqualsAnEmptyString) {
    EXPECT_EQ(UStringRef<UTF8>(), AutoUString<UTF8>());
    EXPECT_EQ(UStringRef<UTF8>(), ""_utf8);
    EXPECT_EQ(CopiedUString<UTF8>(), UStringRef<UTF8>());
    EXPECT_EQ(SharedUString<UTF8>(), UStringRef<UTF8>());
}

TEST(UStringRef, WhoseEndDoesNotLieBehindItsBeginIsEmpty) {
    auto const text = "abc"_utf8;
    UStringRef<UTF8> const reversed(UTF8(), text.begin() + 2, text.begin());
    EXPECT_TRUE(reversed.empty());
    EXPECT_EQ(reversed.SizeInUnits(), 0U);
    EXPECT_EQ(reversed.SizeInBytes(), 0U);
    EXPECT_EQ(reversed.begin(), reversed.end());
    EXPECT_EQ(reversed, UStringRef<UTF8>());
    EXPECT_FALSE(reversed.Contains('a'));
    EXPECT_EQ(MakeUString(reversed), ""_utf8);
}

TEST(UStringRef, PointsIntoItsText) {
    auto const text = "abc"_utf8;
    EXPECT_EQ(text.SizeInUnits(), 3U);
    EXPECT_EQ(text[0], 'a');
    EXPECT_EQ(text[2], 'c');
    EXPECT_EQ(text.end() - text.begin(), 3);
}

TEST(UStringRef, SizeInBytesIsUnitsTimesTheirWidth) {
    std::uint32_t const units[] = {1, 2, 3};
    UStringRef<UTF32> const view(UTF32(), units, units + 3);
    EXPECT_EQ(view.SizeInUnits(), 3U);
    EXPECT_EQ(view.SizeInBytes(), 12U);
    EXPECT_EQ(UStringRef<UTF16>::max_size(), UStringRef<UTF32>::max_size() * 2 + 1);
}

TEST(UStringRef, MiddleTakesTwoOffsets) {
    auto const text = "abcdef"_utf8;
    EXPECT_EQ(text.Middle(1, 3), "bc"_utf8);
    EXPECT_EQ(text.Middle(0, 6), "abcdef"_utf8);
    EXPECT_EQ(text.Middle(1, 3).begin(), text.begin() + 1);
    EXPECT_EQ(text.Middle(4, 4).begin(), text.begin() + 4);
    EXPECT_EQ(text.Middle(6, 6).begin(), text.end());
}

TEST(UStringRef, MiddleOutsideOfTheTextIsTheNullView) {
    auto const text = "abcdef"_utf8;
    EXPECT_EQ(text.Middle(3, 2).begin(), nullptr);
    EXPECT_EQ(text.Middle(0, 7).begin(), nullptr);
    EXPECT_EQ(text.Middle(7, 7).begin(), nullptr);
    EXPECT_EQ(text.Middle(cAllOnes, cAllOnes).begin(), nullptr);
    EXPECT_EQ(text.Middle(1, cAllOnes).begin(), nullptr);
    EXPECT_EQ(UStringRef<UTF8>().Middle(0, 0).begin(), nullptr);
}

TEST(UStringRef, ContainsUnitsAndTexts) {
    auto const text = "one two"_utf8;
    EXPECT_TRUE(text.Contains('o'));
    EXPECT_FALSE(text.Contains('x'));
    EXPECT_TRUE(text.Contains("e t"_utf8));
    EXPECT_TRUE(text.Contains("one two"_utf8));
    EXPECT_FALSE(text.Contains("one two "_utf8));
    EXPECT_FALSE(text.Contains("two one"_utf8));
    EXPECT_FALSE(text.Contains(""_utf8));
    EXPECT_FALSE(UStringRef<UTF8>().Contains("x"_utf8));
    EXPECT_FALSE(UStringRef<UTF8>().Contains('x'));
}

TEST(UStringRef, FindsWideUnitsOnlyWhereAWholeUnitBegins) {
    std::uint16_t const units[] = {0x0102, 0x0203, 0x0304};
    std::uint16_t const straddling[] = {0x0301};
    UStringRef<UTF16> const view(UTF16(), units, units + 3);
    EXPECT_TRUE(view.Contains(UStringRef<UTF16>(UTF16(), units + 1, units + 3)));
    EXPECT_FALSE(view.Contains(UStringRef<UTF16>(UTF16(), straddling, straddling + 1)));
}

TEST(UStringRef, SearchTakesNoTimeBeyondTheTextsLengthOnRepetitions) {
    std::string const text(400000, 'a');
    std::string const pattern = std::string(200000, 'a') + "b";
    EXPECT_FALSE(MakeUTF8Ref(text).Contains(MakeUTF8Ref(pattern)));
    EXPECT_EQ(Find(MakeUTF8Ref(text), MakeUTF8Ref(pattern)), MakeUTF8Ref(text).end());
}

TEST(UStringRef, FindsWideUnitsBehindMatchesThatBeginWithinAUnit) {
    EXPECT_EQ(PositionIn(Units16{0x0102, 0x0102, 0x0201}, Units16{0x0201}), 2);
    EXPECT_EQ(PositionIn(Units16{0x0102, 0x0102, 0x0102}, Units16{0x0201}), -1);
    EXPECT_EQ(PositionIn(Units32{0x01020102, 0x01020102, 0x02010201}, Units32{0x02010201}), 2);
    EXPECT_EQ(PositionIn(Units32{0x00010000, 1}, Units32{1}), 1);
}

TEST(UStringRef, FindsWideUnitsWhereverTheyFirstBegin) {
    EXPECT_EQ(PositionIn(Units16{1, 2, 3}, Units16{1, 2, 3}), 0);
    EXPECT_EQ(PositionIn(Units16{1, 2}, Units16{1, 2, 3}), -1);
    EXPECT_EQ(PositionIn(Units16{1, 1, 2, 1, 1, 2, 1, 1, 3}, Units16{1, 1, 2, 1, 1, 3}), 3);
    EXPECT_EQ(PositionIn(Units16{1, 2, 1, 2, 1, 3}, Units16{1, 2, 1, 3}), 2);
    EXPECT_EQ(PositionIn(Units16{1, 2}, Units16{}), -1);
    EXPECT_EQ(PositionIn(Units16{}, Units16{1}), -1);
    for (Units16 const& text : AllTexts(7))
        for (std::size_t size = 1; size <= 4; ++size)
            for (Units16 const& pattern : AllTexts(size)) {
                auto const first = std::search(text.begin(), text.end(), pattern.begin(), pattern.end());
                ASSERT_EQ(PositionIn(text, pattern), first == text.end() ? -1 : first - text.begin());
            }
}

TEST(UStringRef, SearchOfWideUnitsTakesNoTimeBeyondTheTextsLengthOnRepetitions) {
    Units16 pattern(200000, 'a');
    pattern.push_back('b');
    EXPECT_EQ(PositionIn(Units16(400000, 'a'), pattern), -1);
    // Each byte but the first of each unit begins a match of the bytes.
    EXPECT_EQ(PositionIn(Repeated({0x0102}, 400000), Repeated({0x0201}, 200000)), -1);
}

TEST(UStringComparison, LooksAtSizeAndUnits) {
    EXPECT_EQ("abc"_utf8, AutoUString<UTF8>("abc"_utf8));
    EXPECT_EQ(CopiedUString<UTF8>("abc"_utf8), SharedUString<UTF8>("abc"_utf8));
    EXPECT_FALSE("abc"_utf8 == "abd"_utf8);
    EXPECT_FALSE("abc"_utf8 == "ab"_utf8);
    EXPECT_FALSE("abc"_utf8 == ""_utf8);
    EXPECT_FALSE(""_utf8 == "abc"_utf8);
    EXPECT_TRUE("abc"_utf8 != "abC"_utf8);
    EXPECT_FALSE("a\0b"_utf8 == "a\0c"_utf8);
}

TEST(UStringComparison, OrdersByBytesTheShorterFirst) {
    EXPECT_TRUE("a"_utf8 < "b"_utf8);
    EXPECT_TRUE("a"_utf8 < "aa"_utf8);
    EXPECT_TRUE(""_utf8 < "a"_utf8);
    EXPECT_FALSE("a"_utf8 < "a"_utf8);
    EXPECT_FALSE(""_utf8 < UStringRef<UTF8>());
    EXPECT_TRUE("z"_utf8 < "\x80"_utf8);
}

TEST(UStringComparison, LooksAtAllBytesOfWideUnits) {
    EXPECT_TRUE(View(Units16{1, 2}) == View(Units16{1, 2}));
    EXPECT_FALSE(View(Units16{1, 2}) == View(Units16{1, 3}));
    EXPECT_FALSE(View(Units16{1, 2}) == View(Units16{1, 0x0102}));
    EXPECT_FALSE(View(Units16{1, 2}) == View(Units16{1, 2, 3}));
    EXPECT_TRUE(View(Units32{1, 2}) == View(Units32{1, 2}));
    EXPECT_FALSE(View(Units32{1, 2}) == View(Units32{1, 3}));
    EXPECT_FALSE(View(Units32{1, 2}) == View(Units32{1, 0x01000002}));
}

TEST(UStringComparison, OrdersWideUnitsByTheirValues) {
    EXPECT_TRUE(View(Units16{0x00FF}) < View(Units16{0x0100}));
    EXPECT_FALSE(View(Units16{0x0100}) < View(Units16{0x00FF}));
    EXPECT_TRUE(View(Units16{1, 2}) < View(Units16{1, 3}));
    EXPECT_FALSE(View(Units16{1, 3}) < View(Units16{1, 2}));
    EXPECT_TRUE(View(Units16{1}) < View(Units16{1, 0}));
    EXPECT_FALSE(View(Units16{1, 2}) < View(Units16{1, 2}));
    EXPECT_TRUE(View(Units32{0x00FF}) < View(Units32{0x0100}));
    EXPECT_FALSE(View(Units32{0x0100}) < View(Units32{0x00FF}));
    EXPECT_TRUE(View(Units32{0x7FFFFFFF}) < View(Units32{0x80000000}));
}

TEST(UStringComparison, IsForTextsOfOneEncodingOnly) {
    static_assert(cFullyComparable<UStringRef<UTF8>, AutoUString<UTF8>>);
    static_assert(cFullyComparable<CopiedUString<Binary8Bit>, UStringRef<Binary8Bit>>);
    static_assert(cFullyComparable<SharedUString<UTF16>, UStringRef<UTF16>>);
    static_assert(cFullyComparable<UStringRef<UTF8>, ConstData>);
    static_assert(!cComparable<UStringRef<UTF8>, UStringRef<Binary8Bit>>);
    static_assert(!cComparable<UStringRef<Binary8Bit>, UStringRef<UTF8>>);
    static_assert(!cComparable<UStringRef<USAscii>, UStringRef<UTF8>>);
    static_assert(!cComparable<UStringRef<IANANamedTextEncoding>, UStringRef<UTF8>>);
    static_assert(!cComparable<AutoUString<UTF8>, CopiedUString<Binary8Bit>>);
    static_assert(!cComparable<SharedUString<UTF8>, AutoUString<IANANamedTextEncoding>>);
    static_assert(!cComparable<UStringRef<UTF8>, UStringRef<UTF16>>);
    static_assert(!cComparable<UStringRef<Local8Bit>, UStringRef<UTF8>>);
}

TEST(UStringComparison, OrdersTheKeysOfAMap) {
    std::map<SharedUString<UTF8>, int> map;
    map[SharedUString<UTF8>("b"_utf8)] = 2;
    map[SharedUString<UTF8>("ab"_utf8)] = 1;
    map[SharedUString<UTF8>("a"_utf8)] = 0;
    int expected = 0;
    for (auto const& entry : map) EXPECT_EQ(entry.second, expected++);
}

TEST(UStringViews, OfNoTextAreNull) {
    EXPECT_EQ(MakeUTF8Ref(static_cast<char const*>(nullptr)).begin(), nullptr);
    EXPECT_EQ(MakeUTF8Ref("text"), "text"_utf8);
    EXPECT_EQ(MakeUTF8Ref(std::string("a\0b", 3)).SizeInUnits(), 3U);
}

TEST(IANANamedTextEncoding, HoldsANameOfUpTo48Bytes) {
    EXPECT_TRUE(IANANamedTextEncoding().Name().empty());
    EXPECT_TRUE(IANANamedTextEncoding(ConstData()).Name().empty());
    EXPECT_EQ(MakeString(IANANamedTextEncoding("ISO-8859-1"_data).Name()), "ISO-8859-1");
    EXPECT_STREQ(IANANamedTextEncoding("ISO-8859-1"_data).NullTerminatedName(), "ISO-8859-1");
    std::string const longest(48, 'n');
    IANANamedTextEncoding const full(MakeConstData(longest));
    EXPECT_EQ(MakeString(full.Name()), longest);
    EXPECT_STREQ(full.NullTerminatedName(), longest.c_str());
}

TEST(IANANamedTextEncoding, RefusesALongerName) {
    std::string const tooLong(49, 'n');
    EXPECT_THROW(IANANamedTextEncoding(MakeConstData(tooLong)), ConstDataCapacityExceeded);
}

TEST(IANANamedTextEncoding, IsLaidOutAsLengthNameAndTwoZeroBytes) {
    EXPECT_GE(sizeof(IANANamedTextEncoding), 8U + 48U + 2U);
    EXPECT_EQ(std::string(IANANamedTextEncoding("x"_data).NullTerminatedName(), 50).substr(1),
              std::string(49, '\0'));
}

TEST(IANANamedTextEncoding, IsCarriedByViewsAndStrings) {
    IANANamedTextEncoding const greek("ISO-8859-7"_data);
    auto const bytes = "\xC1\xE2"_data;
    UStringRef<IANANamedTextEncoding> const view(greek, bytes.begin(), bytes.end());
    EXPECT_EQ(view.Encoding(), greek);
    EXPECT_EQ(view.Middle(0, 1).Encoding(), greek);
    AutoUString<IANANamedTextEncoding> text(view);
    EXPECT_EQ(text.Encoding(), greek);
    AutoUString<IANANamedTextEncoding> const moved(text);
    EXPECT_EQ(moved.Encoding(), greek);
    EXPECT_EQ(moved.SizeInUnits(), 2U);
}
