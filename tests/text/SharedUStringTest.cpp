#include "text/SharedUString.h"

#include "tests/support/UStringPrinting.h"
#include "text/UString.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <type_traits>
#include <utility>

namespace {

using Text = SharedUString<UTF8>;

Text Make(std::string const& text) {
    return Text(MakeUTF8Ref(text));
}

std::string const cShort(10, 's');
std::string const cLong(100, 'l');

} // namespace

TEST(SharedUString, IsABodyAndALink) {
    static_assert(sizeof(SharedUString<UTF8>) == sizeof(UStringBody<UTF8>) + sizeof(void*));
    static_assert(sizeof(SharedUString<UTF16>) == sizeof(UStringBody<UTF16>) + sizeof(void*));
    static_assert(sizeof(SharedUString<UTF32>) == sizeof(UStringBody<UTF32>) + sizeof(void*));
}

TEST(SharedUString, IsEmptyAndAloneWhenMade) {
    Text const text;
    EXPECT_TRUE(text.empty());
    EXPECT_TRUE(text.Alone());
    EXPECT_EQ(text.CapacityInUnits(), 64U);
}

TEST(SharedUString, CopyOfALongTextSharesItsBuffer) {
    Text const source = Make(cLong);
    Text const copy(source);
    EXPECT_EQ(copy.begin(), source.begin());
    EXPECT_EQ(copy.CapacityInUnits(), 100U);
    EXPECT_FALSE(source.Alone());
    EXPECT_FALSE(copy.Alone());
}

TEST(SharedUString, CopyOfAShortTextHasUnitsOfItsOwnAndStillIsNotAlone) {
    Text const source = Make(cShort);
    Text const copy(source);
    EXPECT_NE(copy.begin(), source.begin());
    EXPECT_EQ(copy, source);
    EXPECT_FALSE(source.Alone());
    EXPECT_FALSE(copy.Alone());
}

TEST(SharedUString, Of64UnitsIsCopiedAndOf65Shared) {
    Text const inlineText = Make(std::string(64, 'x'));
    Text const copy(inlineText);
    EXPECT_NE(copy.begin(), inlineText.begin());
    Text const heapText = Make(std::string(65, 'x'));
    EXPECT_EQ(heapText.CapacityInUnits(), 65U);
    Text const sharer(heapText);
    EXPECT_EQ(sharer.begin(), heapText.begin());
}

TEST(SharedUString, ClearingOneCopyLeavesTheOtherIntact) {
    for (std::string const& content : {cShort, cLong}) {
        Text first = Make(content);
        Text second(first);
        first.clear();
        EXPECT_TRUE(first.empty());
        EXPECT_TRUE(first.Alone());
        EXPECT_EQ(MakeString(second), content);
        EXPECT_TRUE(second.Alone());
        second.clear();
        EXPECT_TRUE(second.empty());
    }
}

TEST(SharedUString, ClearingGivesTheBufferUpWhetherAloneOrNot) {
    Text alone = Make(cLong);
    alone.clear();
    EXPECT_TRUE(alone.empty());
    EXPECT_EQ(alone.CapacityInUnits(), 64U);
    Text shared = Make(cLong);
    Text const sharer(shared);
    shared.clear();
    EXPECT_TRUE(shared.empty());
    EXPECT_EQ(shared.CapacityInUnits(), 64U);
    EXPECT_EQ(sharer.CapacityInUnits(), 100U);
}

TEST(SharedUString, BufferStaysUntilTheLastHolderGoes) {
    auto first = std::make_unique<Text>(Make(cLong));
    auto second = std::make_unique<Text>(*first);
    auto third = std::make_unique<Text>(*second);
    first.reset();
    EXPECT_EQ(MakeString(*second), cLong);
    second.reset();
    EXPECT_EQ(MakeString(*third), cLong);
    EXPECT_TRUE(third->Alone());
}

TEST(SharedUString, AppendingToOneSharerLeavesTheOtherUnchanged) {
    for (std::string const& content : {cShort, cLong}) {
        Text first = Make(content);
        Text const second(first);
        first += "more"_utf8;
        first += static_cast<unsigned char>('!');
        EXPECT_EQ(MakeString(first), content + "more!");
        EXPECT_EQ(MakeString(second), content);
        EXPECT_TRUE(first.Alone());
        EXPECT_TRUE(second.Alone());
    }
}

TEST(SharedUString, AppendingBuildsANewBodyEvenWhenAloneWithRoom) {
    Text text(AutoUString<UTF8>(UTF8(), std::size_t{70}, std::size_t{500}));
    auto const* const buffer = text.begin();
    text += "x"_utf8;
    EXPECT_NE(text.begin(), buffer);
    EXPECT_EQ(text.SizeInUnits(), 71U);
    EXPECT_EQ(text.CapacityInUnits(), 140U);
}

TEST(SharedUString, AppendingNothingChangesNothing) {
    Text text = Make(cLong);
    Text const other(text);
    text += UStringRef<UTF8>();
    EXPECT_EQ(text.begin(), other.begin());
    EXPECT_FALSE(text.Alone());
}

TEST(SharedUString, AppendsItselfAndOtherStrings) {
    Text text = Make(cLong);
    text += text;
    EXPECT_EQ(MakeString(text), cLong + cLong);
    Text mixed;
    mixed += "view "_utf8;
    mixed += AutoUString<UTF8>("auto "_utf8);
    mixed += CopiedUString<UTF8>("copied"_utf8);
    EXPECT_EQ(mixed, "view auto copied"_utf8);
}

TEST(SharedUString, TakesTheTextOfAnAutoUString) {
    AutoUString<UTF8> source(MakeUTF8Ref(cLong));
    auto const* buffer = source.begin();
    Text text(source);
    EXPECT_EQ(text.begin(), buffer);
    EXPECT_TRUE(source.empty());
    Text const sharer(text);
    source = AutoUString<UTF8>(MakeUTF8Ref(cLong + "2"));
    buffer = source.begin();
    text = source;
    EXPECT_EQ(text.begin(), buffer);
    EXPECT_TRUE(text.Alone());
    EXPECT_EQ(MakeString(sharer), cLong);
    text = AutoUString<UTF8>("temporary"_utf8);
    EXPECT_EQ(text, "temporary"_utf8);
}

TEST(SharedUString, CopiesViewsAndCopiedUStrings) {
    CopiedUString<UTF8> const copied(MakeUTF8Ref(cLong));
    Text text;
    text = copied;
    EXPECT_EQ(text, copied);
    EXPECT_NE(text.begin(), copied.begin());
    text = "view"_utf8;
    EXPECT_EQ(text, "view"_utf8);
    text.RefToBody("other view"_utf8);
    EXPECT_EQ(text, "other view"_utf8);
    EXPECT_TRUE(text.Alone());
}

TEST(SharedUString, AssignmentOfAViewLeavesSharersAlone) {
    Text text = Make(cLong);
    Text const sharer(text);
    text.RefToBody("new"_utf8);
    EXPECT_EQ(text, "new"_utf8);
    EXPECT_EQ(MakeString(sharer), cLong);
    EXPECT_TRUE(sharer.Alone());
}

TEST(SharedUString, AssignmentOfAViewTakesAPartOfItself) {
    Text text = Make(cLong + "tail");
    text = text.Ref().Middle(98, 104);
    EXPECT_EQ(text, "lltail"_utf8);
}

TEST(SharedUString, AssignmentSharesWithTheSourceAndLeavesTheOldSharers) {
    for (std::string const& oldContent : {cShort, cLong})
        for (std::string const& newContent : {cShort + "2", cLong + "2"}) {
            Text text = Make(oldContent);
            Text const oldSharer(text);
            Text const source = Make(newContent);
            text = source;
            EXPECT_EQ(MakeString(text), newContent);
            EXPECT_EQ(MakeString(oldSharer), oldContent);
            EXPECT_TRUE(oldSharer.Alone());
            EXPECT_FALSE(source.Alone());
        }
}

TEST(SharedUString, AssigningItselfKeepsTheText) {
    for (std::string const& content : {std::string(), cShort, cLong}) {
        Text text = Make(content);
        Text const& same = text;
        text = same;
        EXPECT_EQ(MakeString(text), content);
        EXPECT_TRUE(text.Alone());
    }
}

TEST(SharedUString, AssigningItselfKeepsItsSharers) {
    for (std::string const& content : {cShort, cLong}) {
        Text text = Make(content);
        Text const sharer(text);
        auto const* const buffer = sharer.begin();
        Text const& same = text;
        text = same;
        EXPECT_EQ(MakeString(text), content);
        EXPECT_EQ(MakeString(sharer), content);
        EXPECT_EQ(sharer.begin(), buffer);
        EXPECT_EQ(text.begin() == sharer.begin(), content == cLong);
        EXPECT_FALSE(text.Alone());
        EXPECT_FALSE(sharer.Alone());
    }
}

TEST(SharedUString, MovingToItselfKeepsTextAndSharers) {
    for (std::string const& content : {std::string(), cShort, cLong}) {
        Text text = Make(content);
        Text& same = text;
        text = std::move(same);
        EXPECT_EQ(MakeString(text), content);
        EXPECT_TRUE(text.Alone());
        Text const sharer(text);
        text = std::move(same);
        EXPECT_EQ(MakeString(text), content);
        EXPECT_EQ(MakeString(sharer), content);
        EXPECT_FALSE(text.Alone());
        EXPECT_FALSE(sharer.Alone());
    }
}

TEST(SharedUString, SwapWithItselfKeepsTextAndSharers) {
    for (std::string const& content : {cShort, cLong}) {
        Text text = Make(content);
        Text const sharer(text);
        std::swap(text, text);
        EXPECT_EQ(MakeString(text), content);
        EXPECT_EQ(MakeString(sharer), content);
        EXPECT_FALSE(text.Alone());
        EXPECT_FALSE(sharer.Alone());
    }
}

TEST(SharedUString, MovingAShortTextHandsItsLinkOver) {
    Text source = Make(cShort);
    Text const sharer(source);
    Text target(std::move(source));
    EXPECT_EQ(MakeString(target), cShort);
    EXPECT_FALSE(target.Alone());
    EXPECT_FALSE(sharer.Alone());
    EXPECT_TRUE(source.empty());
    EXPECT_TRUE(source.Alone());
    target.clear();
    EXPECT_TRUE(sharer.Alone());
}

TEST(SharedUString, MovingHandsBufferAndLinkOver) {
    static_assert(std::is_nothrow_move_constructible_v<Text>);
    static_assert(std::is_nothrow_move_assignable_v<Text>);
    Text source = Make(cLong);
    Text const sharer(source);
    Text target(std::move(source));
    EXPECT_EQ(target.begin(), sharer.begin());
    EXPECT_FALSE(target.Alone());
    EXPECT_TRUE(source.empty());
    EXPECT_TRUE(source.Alone());
    Text assigned = Make(cShort);
    assigned = std::move(target);
    EXPECT_EQ(assigned.begin(), sharer.begin());
    EXPECT_FALSE(sharer.Alone());
}

TEST(SharedUString, IndexAndSizes) {
    Text const text = Make("abc");
    EXPECT_EQ(text[2], 'c');
    EXPECT_EQ(text.SizeInUnits(), 3U);
    EXPECT_EQ(text.SizeInBytes(), 3U);
    EXPECT_EQ(text.Ref(), "abc"_utf8);
}

TEST(SharedUString, HoldsWideUnits) {
    std::uint16_t const units[] = {0x41, 0xD83D, 0xDE00};
    SharedUString<UTF16> const text(UStringRef<UTF16>(UTF16(), units, units + 3));
    SharedUString<UTF16> copy(text);
    copy += std::uint16_t{0x42};
    EXPECT_EQ(text.SizeInBytes(), 6U);
    EXPECT_EQ(copy.SizeInUnits(), 4U);
    EXPECT_EQ(copy[3], 0x42);
    SharedUString<UTF32> wide;
    wide += std::uint32_t{0x1F600};
    EXPECT_EQ(wide.SizeInBytes(), 4U);
}
