#include "format/UFormat.h"

#include "text/FixedText.h"
#include "text/UString.h"

#include "tests/support/UStringPrinting.h"

#include <gtest/gtest.h>

#include <type_traits>
#include <utility>

namespace {

template <class Format, class Argument>
concept CanAppend = requires(Format const& format, Argument&& argument) {
    format % std::forward<Argument>(argument);
};

template <class Key, class Text>
concept CanFormat = requires(Key&& key, Text&& text) {
    UFormat(std::forward<Key>(key), std::forward<Text>(text));
};

} // namespace

TEST(UFormat, TakesOneTextAsKeyAndDefault) {
    FormatPlusArguments<0> const format = UFormat("{days} days");
    EXPECT_EQ(format.format, "{days} days"_utf8);
    EXPECT_EQ(format.overrideFormat, "{days} days"_utf8);
}

TEST(UFormat, TakesAKeyWithADefaultOfItsOwn) {
    FormatPlusArguments<0> const format = UFormat("key {a}"_utf8, "text {a}"_utf8);
    EXPECT_EQ(format.format, "key {a}"_utf8);
    EXPECT_EQ(format.overrideFormat, "text {a}"_utf8);
}

TEST(UFormat, TakesANullPointerAsTheEmptyText) {
    FormatPlusArguments<0> const format = UFormat(static_cast<char const*>(nullptr));
    EXPECT_TRUE(format.format.empty());
    EXPECT_TRUE(format.overrideFormat.empty());
}

TEST(UFormat, ChecksNothing) {
    EXPECT_NO_THROW(UFormat("{"));
    EXPECT_NO_THROW(UFormat("plain") % "1"_utf8 % "2"_utf8);
}

TEST(FormatPlusArguments, PutsAFurtherArgumentAtTheEnd) {
    FormatPlusArguments<1> const one = UFormat("key {a}{b}"_utf8, "text {b}{a}"_utf8) % "1"_utf8;
    FormatPlusArguments<2> const two = one % "2"_utf8;
    EXPECT_EQ(one.format, "key {a}{b}"_utf8);
    EXPECT_EQ(one.overrideFormat, "text {b}{a}"_utf8);
    EXPECT_EQ(one.arguments[0], "1"_utf8);
    EXPECT_EQ(two.format, "key {a}{b}"_utf8);
    EXPECT_EQ(two.overrideFormat, "text {b}{a}"_utf8);
    EXPECT_EQ(two.arguments[0], "1"_utf8);
    EXPECT_EQ(two.arguments[1], "2"_utf8);
}

TEST(FormatPlusArguments, IsAlsoMadeByItsConstructor) {
    FormatPlusArguments<2> const two(FormatPlusArguments<1>(UFormat("{a}{b}"), "1"_utf8), "2"_utf8);
    EXPECT_EQ(two.format, "{a}{b}"_utf8);
    EXPECT_EQ(two.arguments[0], "1"_utf8);
    EXPECT_EQ(two.arguments[1], "2"_utf8);
}

TEST(FormatPlusArguments, HoldsViewsAndCopiesNothing) {
    AutoUString<UTF8> text("before"_utf8);
    FormatPlusArguments<1> const format = UFormat("{a}") % text;
    text.begin()[0] = 'B';
    EXPECT_EQ(format.arguments[0], "Before"_utf8);
    EXPECT_EQ(static_cast<void const*>(format.arguments[0].begin()), text.begin());
}

TEST(FormatPlusArguments, TakesOwnersThatOutliveItAndRefusesThoseThatDoNot) {
    using Format = FormatPlusArguments<0>;
    EXPECT_TRUE((CanAppend<Format, UStringRef<UTF8>>));
    EXPECT_TRUE((CanAppend<Format, UStringRef<UTF8> const&>));
    EXPECT_TRUE((CanAppend<Format, AutoUString<UTF8>&>));
    EXPECT_TRUE((CanAppend<Format, CopiedUString<UTF8> const&>));
    EXPECT_TRUE((CanAppend<Format, SharedUString<UTF8> const&>));
    EXPECT_TRUE((CanAppend<Format, FixedText<8> const&>));
    EXPECT_FALSE((CanAppend<Format, AutoUString<UTF8>>));
    EXPECT_FALSE((CanAppend<Format, AutoUString<UTF8> const>));
    EXPECT_FALSE((CanAppend<Format, CopiedUString<UTF8>>));
    EXPECT_FALSE((CanAppend<Format, SharedUString<UTF8>>));
    EXPECT_FALSE((CanAppend<Format, FixedText<8>>));
    EXPECT_TRUE((std::is_constructible_v<FormatPlusArguments<1>, Format, AutoUString<UTF8>&>));
    EXPECT_FALSE((std::is_constructible_v<FormatPlusArguments<1>, Format, AutoUString<UTF8>>));
}

TEST(FormatPlusArguments, RefusesTextsOfOtherEncodings) {
    EXPECT_FALSE((CanAppend<FormatPlusArguments<0>, UStringRef<USAscii>>));
    EXPECT_FALSE((CanAppend<FormatPlusArguments<0>, ConstData>));
}

TEST(FormatPlusArguments, RefusesKeysAndTextsThatDoNotOutliveIt) {
    using Format = FormatPlusArguments<0>;
    EXPECT_TRUE((std::is_constructible_v<Format, UStringRef<UTF8>, UStringRef<UTF8>>));
    EXPECT_TRUE((std::is_constructible_v<Format, AutoUString<UTF8>&, CopiedUString<UTF8> const&>));
    EXPECT_FALSE((std::is_constructible_v<Format, UStringRef<UTF8>, AutoUString<UTF8>>));
    EXPECT_FALSE((std::is_constructible_v<Format, SharedUString<UTF8>, UStringRef<UTF8>>));
    EXPECT_FALSE((std::is_constructible_v<Format, FixedText<8>, CopiedUString<UTF8> const>));
}

TEST(UFormat, RefusesKeysAndDefaultsThatDoNotOutliveIt) {
    EXPECT_TRUE((CanFormat<UStringRef<UTF8>, AutoUString<UTF8>&>));
    EXPECT_FALSE((CanFormat<UStringRef<UTF8>, AutoUString<UTF8>>));
    EXPECT_FALSE((CanFormat<CopiedUString<UTF8>, UStringRef<UTF8>>));
}
