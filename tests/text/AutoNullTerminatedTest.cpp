#include "text/AutoNullTerminated.h"
#include "text/UString.h"

#include "tests/support/UStringPrinting.h"

#include <gtest/gtest.h>

#include <cstring>
#include <string>
#include <type_traits>

namespace {

using Terminated = AutoNullTerminated<Local8Bit>;

AutoUString<Local8Bit> Text(std::string const& text, std::size_t capacity = 0) {
    AutoUString<Local8Bit> result(Local8Bit(), std::size_t{0}, capacity);
    result += UStringRef<Local8Bit>(Local8Bit(), text.data(), text.data() + text.size());
    return result;
}

void ExpectHolds(Terminated const& terminated, std::string const& text) {
    EXPECT_EQ(terminated.SizeInUnits(), text.size());
    EXPECT_EQ(std::string(terminated.begin(), terminated.end()), text);
    EXPECT_EQ(terminated.empty(), text.empty());
    EXPECT_EQ(terminated.c_str(), terminated.begin());
    EXPECT_EQ(*terminated.end(), '\0');
}

} // namespace

TEST(AutoNullTerminated, HasANulBehindTextsOfEverySize) {
    for (std::size_t size = 0; size < 200; ++size) {
        std::string const text(size, 'x');
        ExpectHolds(Terminated(Text(text)), text);
        ExpectHolds(Terminated(Text(text, size)), text);
        ExpectHolds(Terminated(Text(text, size + 1)), text);
    }
}

TEST(AutoNullTerminated, IsEmptyWhenNothingIsGiven) {
    ExpectHolds(Terminated(), "");
    EXPECT_STREQ(Terminated().c_str(), "");
}

TEST(AutoNullTerminated, TakesOverStorageThatHasRoom) {
    AutoUString<Local8Bit> text = Text(std::string(100, 'x'), 101);
    char const* const storage = text.begin();
    Terminated const terminated(text);
    EXPECT_EQ(terminated.c_str(), storage);
    EXPECT_TRUE(text.empty());
}

TEST(AutoNullTerminated, CopiesToStorageOneUnitLargerWhenThereIsNoRoom) {
    AutoUString<Local8Bit> text = Text(std::string(100, 'x'), 100);
    ASSERT_EQ(text.CapacityInUnits(), 100U);
    char const* const storage = text.begin();
    Terminated const terminated(text);
    EXPECT_NE(terminated.c_str(), storage);
    ExpectHolds(terminated, std::string(100, 'x'));
}

TEST(AutoNullTerminated, KeepsItsTextAndItsNulWhenMoved) {
    static_assert(std::is_nothrow_move_constructible_v<Terminated>);
    static_assert(std::is_nothrow_move_assignable_v<Terminated>);
    for (std::size_t const size : {0U, 1U, 63U, 64U, 65U, 1000U}) {
        std::string const text(size, 'm');
        Terminated first(Text(text));
        Terminated second(std::move(first));
        ExpectHolds(second, text);
        Terminated third(Text("replaced"));
        third = std::move(second);
        ExpectHolds(third, text);
    }
}

TEST(AutoNullTerminated, IsAnEmptyTextWithItsNulWhenMovedFrom) {
    for (std::size_t const size : {1U, 63U, 64U, 1000U}) {
        Terminated first(Text(std::string(size, 'm')));
        Terminated second(std::move(first));
        ExpectHolds(first, ""); // NOLINT(bugprone-use-after-move)
        Terminated third;
        third = std::move(second);
        ExpectHolds(second, ""); // NOLINT(bugprone-use-after-move)
    }
}

TEST(AutoNullTerminated, KeepsItsTextWhenAssignedToItself) {
    Terminated terminated(Text("self"));
    Terminated& alias = terminated;
    terminated = std::move(alias);
    ExpectHolds(terminated, "self");
}

TEST(AutoNullTerminated, KeepsNulsWithinTheText) {
    std::string const text("a\0b", 3);
    ExpectHolds(Terminated(Text(text)), text);
    EXPECT_STREQ(Terminated(Text(text)).c_str(), "a");
}

TEST(AutoNullTerminated, EndsWideTextsWithAWideNul) {
    for (std::size_t const size : {1U, 63U, 64U, 65U}) {
        AutoUString<UTF32> text(UTF32(), size, std::size_t{0});
        for (UTF32::Unit& unit : text) unit = 0x1F600;
        AutoNullTerminated<UTF32> const terminated(text);
        EXPECT_EQ(terminated.SizeInUnits(), size);
        EXPECT_EQ(terminated.c_str()[size - 1], 0x1F600U);
        EXPECT_EQ(terminated.c_str()[size], 0U);
    }
}

TEST(AutoNullTerminated, IsATextOfTheFamily) {
    Terminated const terminated(Text("abc"));
    EXPECT_EQ(terminated, Text("abc"));
    EXPECT_EQ(terminated.Ref(), Text("abc"));
}
