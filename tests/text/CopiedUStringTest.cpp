#include "text/CopiedUString.h"

#include "tests/support/UStringPrinting.h"
#include "text/UString.h"

#include <gtest/gtest.h>

#include <string>
#include <type_traits>
#include <vector>

namespace {

using Text = CopiedUString<UTF8>;

Text Make(std::string const& text) {
    return Text(MakeUTF8Ref(text));
}

std::vector<std::string> const cContents = {"", "short", std::string(64, 'x'), std::string(65, 'x'),
                                            std::string(1000, 'x')};

} // namespace

TEST(CopiedUString, IsExactlyABody) {
    static_assert(sizeof(CopiedUString<UTF8>) == sizeof(UStringBody<UTF8>));
    static_assert(sizeof(CopiedUString<UTF32>) == sizeof(UStringBody<UTF32>));
}

TEST(CopiedUString, CopyIsDeep) {
    for (std::string const& content : cContents) {
        Text const source = Make(content);
        Text copy(source);
        EXPECT_EQ(MakeString(copy), content);
        EXPECT_NE(copy.begin(), source.begin());
        copy += "changed"_utf8;
        EXPECT_EQ(MakeString(source), content);
    }
}

TEST(CopiedUString, AssignmentIsDeep) {
    for (std::string const& content : cContents)
        for (std::string const& old : cContents) {
            Text const source = Make(content);
            Text copy = Make(old);
            copy = source;
            EXPECT_EQ(MakeString(copy), content);
            copy += "changed"_utf8;
            EXPECT_EQ(MakeString(source), content);
        }
}

TEST(CopiedUString, CopyHasRoomForExactlyItsText) {
    Text source = Make(std::string(100, 'x'));
    source += static_cast<unsigned char>('y');
    ASSERT_EQ(source.CapacityInUnits(), 200U);
    Text const copy(source);
    EXPECT_EQ(copy.CapacityInUnits(), 101U);
}

TEST(CopiedUString, AssigningItselfKeepsTheText) {
    for (std::string const& content : cContents) {
        Text text = Make(content);
        Text const& same = text;
        text = same;
        EXPECT_EQ(MakeString(text), content);
        text = text.Ref();
        EXPECT_EQ(MakeString(text), content);
    }
}

TEST(CopiedUString, TakesTheTextOfAnAutoUString) {
    AutoUString<UTF8> first(MakeUTF8Ref(std::string(80, 'x')));
    auto const* const firstBuffer = first.begin();
    Text constructed(first);
    EXPECT_EQ(constructed.begin(), firstBuffer);
    EXPECT_TRUE(first.empty());
    AutoUString<UTF8> second(MakeUTF8Ref(std::string(90, 'y')));
    auto const* const secondBuffer = second.begin();
    constructed = second;
    EXPECT_EQ(constructed.begin(), secondBuffer);
    EXPECT_TRUE(second.empty());
    constructed = AutoUString<UTF8>("temporary"_utf8);
    EXPECT_EQ(constructed, "temporary"_utf8);
}

TEST(CopiedUString, CopiesAView) {
    std::string content = "view";
    Text text(MakeUTF8Ref(content));
    content[0] = 'x';
    EXPECT_EQ(text, "view"_utf8);
    text = MakeUTF8Ref(content);
    content[1] = 'x';
    EXPECT_EQ(text, "xiew"_utf8);
    auto const view = "pointers"_utf8;
    EXPECT_EQ(Text(UTF8(), view.begin(), view.begin() + 5), "point"_utf8);
}

TEST(CopiedUString, AssignsAPartOfItself) {
    Text text = Make("abcdef");
    text = text.Ref().Middle(2, 4);
    EXPECT_EQ(text, "cd"_utf8);
}

TEST(CopiedUString, CopiesASharedText) {
    SharedUString<UTF8> const shared(MakeUTF8Ref(std::string(100, 'x')));
    Text text(shared);
    text += static_cast<unsigned char>('y');
    EXPECT_EQ(shared.SizeInUnits(), 100U);
    text = shared;
    EXPECT_EQ(text, shared);
    EXPECT_NE(text.begin(), shared.begin());
}

TEST(CopiedUString, MovingLeavesTheSourceEmpty) {
    static_assert(std::is_nothrow_move_constructible_v<Text>);
    static_assert(std::is_nothrow_move_assignable_v<Text>);
    for (std::string const& content : cContents) {
        Text source = Make(content);
        Text moved(std::move(source));
        EXPECT_EQ(MakeString(moved), content);
        EXPECT_TRUE(source.empty());
        source = std::move(moved);
        EXPECT_EQ(MakeString(source), content);
        EXPECT_TRUE(moved.empty());
    }
}

TEST(CopiedUString, SwapExchangesTheTexts) {
    for (std::string const& a : cContents)
        for (std::string const& b : cContents) {
            Text first = Make(a);
            Text second = Make(b + "!");
            first.swap(second);
            EXPECT_EQ(MakeString(first), b + "!");
            EXPECT_EQ(MakeString(second), a);
        }
}

TEST(CopiedUString, SwapWithItselfAndMoveToItselfKeepTheText) {
    for (std::string const& content : cContents) {
        Text text = Make(content);
        text.swap(text);
        EXPECT_EQ(MakeString(text), content);
        Text& same = text;
        text = std::move(same);
        EXPECT_EQ(MakeString(text), content);
    }
}

TEST(CopiedUString, IsEditedLikeAnAutoUString) {
    Text text = Make("abcdef");
    text += "ghi"_utf8;
    text += static_cast<unsigned char>('j');
    text.append("0123"_utf8, 1, 2);
    EXPECT_EQ(text, "abcdefghij12"_utf8);
    text.erase(std::size_t{1}, std::size_t{2});
    EXPECT_EQ(text, "adefghij12"_utf8);
    EXPECT_EQ(text.erase(text.begin(), text.begin() + 1), text.begin());
    EXPECT_EQ(text, "defghij12"_utf8);
    text.replace(1, 3, "X"_utf8);
    EXPECT_EQ(text, "dXhij12"_utf8);
    text[0] = 'D';
    EXPECT_EQ(text, "DXhij12"_utf8);
    text.clear();
    EXPECT_TRUE(text.empty());
    EXPECT_EQ(text.CapacityInUnits(), 64U);
}

TEST(CopiedUString, GrowsByTheSameRule) {
    Text text = Make(std::string(100, 'x'));
    text += text;
    EXPECT_EQ(MakeString(text), std::string(200, 'x'));
    EXPECT_EQ(text.CapacityInUnits(), 200U);
    text += static_cast<unsigned char>('y');
    EXPECT_EQ(text.CapacityInUnits(), 400U);
}

TEST(CopiedUString, ReleaseAndSeizeHandTheBodyOver) {
    Text text = Make("body");
    UStringBody<UTF8> body = text.Release();
    EXPECT_TRUE(text.empty());
    Text other;
    other.Seize(body);
    EXPECT_EQ(other, "body"_utf8);
}
