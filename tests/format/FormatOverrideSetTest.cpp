#include "format/FormatOverrideSet.h"

#include "foundation/Exceptions.h"
#include "text/UString.h"

#include "tests/support/Allocations.h"
#include "tests/support/UStringPrinting.h"

#include <gtest/gtest.h>

#include <string>
#include <type_traits>
#include <utility>
#include <vector>

namespace {

using Entries = std::vector<std::pair<std::string, std::string>>;

std::string Text(UStringRef<UTF8> const& text) {
    return MakeString(ConstData(text));
}

FormatOverrideSet Set(char const* text) {
    return FormatOverrideSet(MakeUTF8Ref(text), UStringRef<UTF8>());
}
FormatOverrideSet Set(std::string const& text) {
    return FormatOverrideSet(MakeUTF8Ref(text), UStringRef<UTF8>());
}
// The set would point into a text that is gone.
FormatOverrideSet Set(std::string&& text) = delete;

Entries EntriesOf(std::string const& text) {
    FormatOverrideSet const set = Set(text);
    Entries entries;
    for (FormatOverride const& entry : set.Overrides())
        entries.emplace_back(Text(entry.first), Text(entry.second));
    return entries;
}

struct TableCase {
    std::string text;
    Entries entries;
};

class OverrideTable : public testing::TestWithParam<TableCase> {};

} // namespace

TEST_P(OverrideTable, HoldsWhatTheLinesSay) {
    EXPECT_EQ(EntriesOf(GetParam().text), GetParam().entries);
}

INSTANTIATE_TEST_SUITE_P(
    Lines, OverrideTable,
    testing::Values(
        TableCase{"", {}}, TableCase{"key\tvalue\n", {{"key", "value"}}},
        // Several tabs: only what stands in front of the first and behind the last counts.
        TableCase{"key\ta\tb\n", {{"key", "b"}}}, TableCase{"key\ta\tb\tc\n", {{"key", "c"}}},
        TableCase{"key\t\tb\n", {{"key", "b"}}}, TableCase{"key\ta\t\n", {{"key", ""}}},
        // Lines that say nothing.
        TableCase{"key value\n", {}}, TableCase{"\tvalue\n", {}}, TableCase{"\t\n", {}},
        TableCase{"\tkey\tvalue\n", {}}, TableCase{"\n\r\n\r\r\n\n", {}}, TableCase{"\t", {}},
        TableCase{"no tab\nkey\tvalue\nnone either", {{"key", "value"}}},
        TableCase{"\tx\nkey\tvalue\n\ty", {{"key", "value"}}},
        // An empty text is a text.
        TableCase{"key\t\n", {{"key", ""}}}, TableCase{"key\t", {{"key", ""}}},
        // The last line needs no end.
        TableCase{"key\tvalue", {{"key", "value"}}}, TableCase{"a\t1\nb\t2", {{"a", "1"}, {"b", "2"}}},
        // Line ends of all three kinds, and mixed.
        TableCase{"a\t1\nb\t2\n", {{"a", "1"}, {"b", "2"}}},
        TableCase{"a\t1\r\nb\t2\r\n", {{"a", "1"}, {"b", "2"}}},
        TableCase{"a\t1\rb\t2\r", {{"a", "1"}, {"b", "2"}}},
        TableCase{"a\t1\n\rb\t2\r\r\nc\t3", {{"a", "1"}, {"b", "2"}, {"c", "3"}}},
        // A line end leaves nothing of its line's tabs to the next.
        TableCase{"a\t1\nb 2\nc\t3\n", {{"a", "1"}, {"c", "3"}}},
        // Sorted by key, then by value, by unsigned bytes, the shorter first.
        TableCase{"b\t1\na\t2\nab\t3\nA\t4\n", {{"A", "4"}, {"a", "2"}, {"ab", "3"}, {"b", "1"}}},
        TableCase{"k\tb\nk\ta\nk\t\nk\tab\n", {{"k", ""}, {"k", "a"}, {"k", "ab"}, {"k", "b"}}},
        TableCase{"\xc3\xa4\t1\nz\t2\n\x01\t3\n", {{"\x01", "3"}, {"z", "2"}, {"\xc3\xa4", "1"}}},
        TableCase{"k\t\xc3\xa4\nk\tz\n", {{"k", "z"}, {"k", "\xc3\xa4"}}},
        // The same line twice is two entries.
        TableCase{"k\tv\nk\tv\n", {{"k", "v"}, {"k", "v"}}},
        // Nothing else has a meaning.
        TableCase{"# comment\tx\n", {{"# comment", "x"}}}, TableCase{" k \t v \n", {{" k ", " v "}}},
        TableCase{"\"k\"\t\\n\\t\n", {{"\"k\"", "\\n\\t"}}},
        TableCase{"\xef\xbb\xbfkey\tvalue\n", {{"\xef\xbb\xbfkey", "value"}}},
        TableCase{"\xff\xfe\t\x80\n", {{"\xff\xfe", "\x80"}}},
        TableCase{std::string("a\0b\tc\0d\n", 8), {{std::string("a\0b", 3), std::string("c\0d", 3)}}},
        TableCase{"a\vb\fc\xc2\x85\td\n", {{"a\vb\fc\xc2\x85", "d"}}},
        TableCase{"{b\t{}}{\n", {{"{b", "{}}{"}}}));

TEST(FormatOverrideSet, FindsWhatItHolds) {
    FormatOverrideSet const set = Set("{x} of {y}\t{y}: {x}\nTake\tNehmen\nzz\t\n");
    EXPECT_TRUE(set.HasOverride("Take"_utf8));
    EXPECT_EQ(set.GetOverride("Take"_utf8), "Nehmen"_utf8);
    EXPECT_EQ(set.GetOverride("{x} of {y}"_utf8), "{y}: {x}"_utf8);
    EXPECT_TRUE(set.HasOverride("zz"_utf8));
    EXPECT_EQ(set.GetOverride("zz"_utf8), ""_utf8);
}

TEST(FormatOverrideSet, ThrowsForWhatItDoesNotHold) {
    FormatOverrideSet const set = Set("bb\t1\ndd\t2\n");
    for (UStringRef<UTF8> const key : {""_utf8, "a"_utf8, "b"_utf8, "bbb"_utf8, "cc"_utf8, "d"_utf8,
                                       "ddd"_utf8, "e"_utf8, "BB"_utf8, " bb"_utf8, "bb\t1"_utf8}) {
        EXPECT_FALSE(set.HasOverride(key)) << Text(key);
        EXPECT_THROW(set.GetOverride(key), FormatOverrideNotFound) << Text(key);
        EXPECT_EQ(set.Find(key), nullptr) << Text(key);
    }
}

TEST(FormatOverrideSet, WithoutEntriesHoldsNothing) {
    FormatOverrideSet const empty;
    EXPECT_FALSE(empty.HasOverride("a"_utf8));
    EXPECT_FALSE(empty.HasOverride(""_utf8));
    EXPECT_EQ(empty.Overrides().Size(), 0u);
    EXPECT_TRUE(empty.Language().empty());
}

TEST(FormatOverrideSet, TakesTheSmallestTextOfAKeyWhereverItStands) {
    EXPECT_EQ(Set("k\tb\nk\ta\nk\tc\n").GetOverride("k"_utf8), "a"_utf8);
    EXPECT_EQ(Set("k\ta\nk\tb\n").GetOverride("k"_utf8), "a"_utf8);
    EXPECT_EQ(Set("k\tb\nk\t\n").GetOverride("k"_utf8), ""_utf8);
    EXPECT_EQ(Set("k\t\xc3\xa4\nk\tz\n").GetOverride("k"_utf8), "z"_utf8);
}

TEST(FormatOverrideSet, FindsEveryKeyOfManyAndNoneBetween) {
    std::string text;
    for (int number = 999; number >= 0; --number)
        text += "key " + std::to_string(number) + "\tvalue " + std::to_string(number) + "\n";
    FormatOverrideSet const set = Set(text);
    for (int number = 0; number < 1000; ++number) {
        std::string const key = "key " + std::to_string(number);
        std::string const value = "value " + std::to_string(number);
        ASSERT_EQ(set.GetOverride(MakeUTF8Ref(key)), MakeUTF8Ref(value));
        ASSERT_FALSE(set.HasOverride(MakeUTF8Ref(key + " ")));
    }
}

TEST(FormatOverrideSet, KeepsItsLanguage) {
    std::string language = "de_DE";
    FormatOverrideSet const set("k\tv"_utf8, MakeUTF8Ref(language));
    language = "xx_XX";
    EXPECT_EQ(set.Language(), "de_DE"_utf8);
}

TEST(FormatOverrideSet, HoldsViewsIntoItsText) {
    std::string const text = "key\tvalue\n";
    FormatOverrideSet const set = Set(text);
    UStringRef<UTF8> const view = MakeUTF8Ref(text);
    EXPECT_EQ(set.Overrides()[0].first.begin(), view.begin());
    EXPECT_EQ(set.GetOverride("key"_utf8).begin(), view.begin() + 4);
}

TEST(FormatOverrideSet, CopiesItsViewsAndItsLanguage) {
    std::string const text = "b\t2\na\t1\n";
    FormatOverrideSet copy;
    {
        FormatOverrideSet const set(MakeUTF8Ref(text), "de"_utf8);
        copy = set;
        FormatOverrideSet const another(set);
        EXPECT_EQ(another.Overrides()[0].first.begin(), set.Overrides()[0].first.begin());
    }
    EXPECT_EQ(copy.GetOverride("a"_utf8), "1"_utf8);
    EXPECT_EQ(copy.GetOverride("b"_utf8), "2"_utf8);
    EXPECT_EQ(copy.Language(), "de"_utf8);
}

TEST(FormatOverrideSet, MovesWithoutAFailure) {
    EXPECT_TRUE(std::is_nothrow_move_constructible_v<FormatOverrideSet>);
    EXPECT_TRUE(std::is_nothrow_move_assignable_v<FormatOverrideSet>);
}

TEST(FormatOverrideSet, RefusesATextThatDoesNotOutliveIt) {
    using Language = UStringRef<UTF8>;
    EXPECT_TRUE((std::is_constructible_v<FormatOverrideSet, AutoUString<UTF8>&, Language>));
    EXPECT_TRUE((std::is_constructible_v<FormatOverrideSet, UStringRef<UTF8>, AutoUString<UTF8>>));
    EXPECT_FALSE((std::is_constructible_v<FormatOverrideSet, AutoUString<UTF8>, Language>));
    EXPECT_FALSE((std::is_constructible_v<FormatOverrideSet, CopiedUString<UTF8>, Language>));
}

TEST(FormatOverrideSet, AllocatesNothingForAnEntryOrALookup) {
    std::string text;
    for (int number = 0; number < 4096; ++number) text += "key " + std::to_string(number) + "\tvalue\n";
    unsigned long const before = AllocationCount();
    FormatOverrideSet const set = Set(text);
    // The vector, which doubles from one entry to 4,096, and no more.
    EXPECT_LE(AllocationCount() - before, 14u);
    unsigned long const made = AllocationCount();
    EXPECT_TRUE(set.HasOverride("key 4095"_utf8));
    EXPECT_FALSE(set.HasOverride("key"_utf8));
    EXPECT_EQ(AllocationCount(), made);
}

// Texts of 2 MiB that are made to be slow: a cost that grows with the square of their size would be felt
// here.
TEST(FormatOverrideSet, ReadsHostileTextsInLinearTime) {
    constexpr std::size_t cSize = 2097152;
    EXPECT_EQ(EntriesOf(std::string(cSize, '\t')), Entries());
    EXPECT_EQ(EntriesOf("k" + std::string(cSize, '\t')), (Entries{{"k", ""}}));
    EXPECT_EQ(EntriesOf(std::string(cSize, '\n')), Entries());
    EXPECT_EQ(EntriesOf(std::string(cSize, '\r')), Entries());
    EXPECT_EQ(EntriesOf(std::string(cSize, '\r') + "\n"), Entries());
    EXPECT_EQ(EntriesOf(std::string(cSize, '\n') + "\r"), Entries());
    EXPECT_EQ(EntriesOf(std::string(cSize, 'k')), Entries());
    std::string const longKey(cSize, 'k');
    EXPECT_EQ(EntriesOf(longKey + "\tv"), (Entries{{longKey, "v"}}));
}

TEST(FormatOverrideSet, SortsManyLinesOfOneKeyQuickly) {
    std::string same;
    for (int line = 0; line < 400000; ++line) same += "k\tv\n";
    std::string ups;
    std::string downs;
    for (int line = 0; line < 200000; ++line) {
        ups += "k\t" + std::to_string(1000000 + line) + "\n";
        downs += "k\t" + std::to_string(1999999 - line) + "\n";
    }
    std::string const upsAndDowns = ups + downs;
    EXPECT_EQ(Set(same).Overrides().Size(), 400000u);
    EXPECT_EQ(Set(same).GetOverride("k"_utf8), "v"_utf8);
    EXPECT_EQ(Set(downs).GetOverride("k"_utf8), "1800000"_utf8);
    EXPECT_EQ(Set(upsAndDowns).GetOverride("k"_utf8), "1000000"_utf8);
}

// Long keys that differ only at their ends cost no more than their size for each comparison.
TEST(FormatOverrideSet, SortsLongKeysThatBeginAlikeQuickly) {
    std::string const common(2000, 'k');
    std::string text;
    for (int line = 1047; line >= 0; --line) text += common + std::to_string(1000 + line) + "\tv\n";
    FormatOverrideSet const set = Set(text);
    EXPECT_EQ(set.Overrides().Size(), 1048u);
    std::string const first = common + "1000";
    EXPECT_EQ(set.Overrides()[0].first, MakeUTF8Ref(first));
}
