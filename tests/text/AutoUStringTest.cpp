#include "text/AutoUString.h"

#include "tests/support/UStringPrinting.h"
#include "text/UString.h"

#include <gtest/gtest.h>

#include <initializer_list>
#include <string>
#include <type_traits>

namespace {

using Text = AutoUString<UTF8>;

Text Make(std::string const& text) {
    return Text(MakeUTF8Ref(text));
}

template <class Operation>
std::string OutOfRange(Operation operation) {
    try {
        operation();
    } catch (std::out_of_range const& error) {
        return error.what();
    }
    return "nothing was thrown";
}

unsigned char* Wild(std::uintptr_t address) {
    return reinterpret_cast<unsigned char*>(address);
}

UStringRef<UTF16> Wide(std::initializer_list<std::uint16_t> units) {
    return UStringRef<UTF16>(UTF16(), units.begin(), units.end());
}

using Named = AutoUString<IANANamedTextEncoding>;

IANANamedTextEncoding const cGreek("ISO-8859-7"_data);

UStringRef<IANANamedTextEncoding> InGreek(std::string const& bytes) {
    return UStringRef<IANANamedTextEncoding>(cGreek, MakeConstData(bytes));
}

} // namespace

TEST(AutoUString, IsExactlyABody) {
    static_assert(sizeof(AutoUString<UTF8>) == sizeof(UStringBody<UTF8>));
    static_assert(sizeof(AutoUString<UTF16>) == sizeof(UStringBody<UTF16>));
    static_assert(sizeof(AutoUString<IANANamedTextEncoding>) == sizeof(UStringBody<IANANamedTextEncoding>));
}

TEST(AutoUString, IsEmptyAndInlineWhenMade) {
    Text const text;
    EXPECT_TRUE(text.empty());
    EXPECT_EQ(text.SizeInUnits(), 0U);
    EXPECT_EQ(text.CapacityInUnits(), 64U);
    EXPECT_EQ(text.begin(), text.end());
}

TEST(AutoUString, Of64UnitsIsInlineAndOf65OnTheHeapWithExactlyThatCapacity) {
    Text const inlineText = Make(std::string(64, 'x'));
    EXPECT_TRUE(inlineText.Get().IsInline());
    EXPECT_EQ(inlineText.CapacityInUnits(), 64U);
    Text const heapText = Make(std::string(65, 'x'));
    EXPECT_FALSE(heapText.Get().IsInline());
    EXPECT_EQ(heapText.CapacityInUnits(), 65U);
}

TEST(AutoUString, IsMadeFromAViewOrFromTwoPointers) {
    auto const view = "pointers"_utf8;
    EXPECT_EQ(Text(view), "pointers"_utf8);
    EXPECT_EQ(Text(UTF8(), view.begin(), view.begin() + 5), "point"_utf8);
    EXPECT_EQ(Text(UStringRef<UTF8>()), ""_utf8);
}

TEST(AutoUString, IsMadeWithStorageThatIsNotInitialised) {
    Text text(UTF8(), std::size_t{3}, std::size_t{100});
    EXPECT_EQ(text.SizeInUnits(), 3U);
    EXPECT_EQ(text.CapacityInUnits(), 100U);
    for (auto& unit : text) unit = 'z';
    EXPECT_EQ(text, "zzz"_utf8);
}

TEST(AutoUString, IsMadeWithStorageForNumbersEvenLiteralZeros) {
    EXPECT_EQ(Text(UTF8(), 0, 0).CapacityInUnits(), 64U);
    EXPECT_EQ(Text(UTF8(), 0, 100).CapacityInUnits(), 100U);
    EXPECT_EQ(Text(UTF8(), 3, 0).SizeInUnits(), 3U);
}

TEST(AutoUString, IsMadeByTakingOverABody) {
    Text source = Make(std::string(80, 'x'));
    auto const* const buffer = source.begin();
    Text const text(source.Get(), Seizing());
    EXPECT_EQ(text.begin(), buffer);
    EXPECT_TRUE(source.empty());
}

TEST(AutoUString, CopyingTakesTheTextAndLeavesTheSourceEmpty) {
    for (std::string const& content : {std::string("short"), std::string(100, 'x')}) {
        Text source = Make(content);
        Text copied(source);
        EXPECT_EQ(MakeString(copied), content);
        EXPECT_TRUE(source.empty());
        EXPECT_EQ(source.CapacityInUnits(), 64U);
        Text assigned = Make("old");
        assigned = copied;
        EXPECT_EQ(MakeString(assigned), content);
        EXPECT_TRUE(copied.empty());
        Text moved(std::move(assigned));
        EXPECT_EQ(MakeString(moved), content);
        Text moveAssigned;
        moveAssigned = std::move(moved);
        EXPECT_EQ(MakeString(moveAssigned), content);
    }
}

TEST(AutoUString, CopyingNeitherThrowsNorHappensUnaskedOnAConstSource) {
    static_assert(std::is_nothrow_move_constructible_v<Text>);
    static_assert(std::is_nothrow_move_assignable_v<Text>);
    static_assert(!std::is_convertible_v<Text const&, Text>);
    static_assert(!std::is_assignable_v<Text&, Text const&>);
}

TEST(AutoUString, MovingALongTextKeepsItsBuffer) {
    Text source = Make(std::string(65, 'x'));
    auto const* const buffer = source.begin();
    Text const target(source);
    EXPECT_EQ(target.begin(), buffer);
}

TEST(AutoUString, AssigningItselfKeepsTheText) {
    for (std::string const& content : {std::string("short"), std::string(100, 'x')}) {
        Text text = Make(content);
        Text& same = text;
        text = same;
        EXPECT_EQ(MakeString(text), content);
    }
}

TEST(AutoUString, EmptySourceIsReusable) {
    Text source = Make("first");
    Text const target(source);
    source += "second"_utf8;
    EXPECT_EQ(source, "second"_utf8);
    EXPECT_EQ(target, "first"_utf8);
}

TEST(AutoUString, ReleaseHandsTheBodyOut) {
    Text text = Make(std::string(70, 'x'));
    UStringBody<UTF8> body = text.Release();
    EXPECT_EQ(body.SizeInUnits(), 70U);
    EXPECT_TRUE(text.empty());
    text.Seize(body);
    EXPECT_EQ(text.SizeInUnits(), 70U);
    EXPECT_TRUE(body.empty());
}

TEST(AutoUString, SwapExchangesTextsOfAllSizes) {
    for (std::size_t const a : {0U, 5U, 64U, 65U, 200U})
        for (std::size_t const b : {0U, 7U, 64U, 66U, 300U}) {
            Text first = Make(std::string(a, 'a'));
            Text second = Make(std::string(b, 'b'));
            first.swap(second);
            EXPECT_EQ(MakeString(first), std::string(b, 'b'));
            EXPECT_EQ(MakeString(second), std::string(a, 'a'));
        }
}

TEST(AutoUString, SizeInBytesIsUnitsTimesTheirWidth) {
    EXPECT_EQ(Make("four").SizeInBytes(), 4U);
    EXPECT_EQ(AutoUString<UTF16>(UTF16(), std::size_t{5}, std::size_t{0}).SizeInBytes(), 10U);
    EXPECT_EQ(AutoUString<UTF32>(UTF32(), std::size_t{5}, std::size_t{0}).SizeInBytes(), 20U);
}

TEST(AutoUString, IndexIsChecked) {
    Text text = Make("abc");
    Text const& constText = text;
    text[1] = 'x';
    EXPECT_EQ(constText[0], 'a');
    EXPECT_EQ(constText[1], 'x');
    EXPECT_EQ(OutOfRange([&] { static_cast<void>(text[3]); }), "operator[] range error");
    EXPECT_EQ(OutOfRange([&] { static_cast<void>(constText[cAllOnes]); }), "operator[] range error");
    EXPECT_EQ(OutOfRange([] { static_cast<void>(Text()[0]); }), "operator[] range error");
}

TEST(AutoUString, AppendsViewsStringsAndUnits) {
    Text text;
    text += "view "_utf8;
    text += Make("auto ");
    text += CopiedUString<UTF8>("copied "_utf8);
    text += SharedUString<UTF8>("shared"_utf8);
    text += static_cast<unsigned char>('!');
    text += UStringRef<UTF8>();
    EXPECT_EQ(text, "view auto copied shared!"_utf8);
}

TEST(AutoUString, AppendingInPlaceKeepsTheBuffer) {
    Text text(UTF8(), std::size_t{0}, std::size_t{100});
    auto const* const buffer = text.begin();
    text += MakeUTF8Ref(std::string(100, 'x'));
    EXPECT_EQ(text.begin(), buffer);
    EXPECT_EQ(text.CapacityInUnits(), 100U);
}

TEST(AutoUString, AppendingPastTheCapacityOf100YieldsAtLeast200) {
    Text text = Make(std::string(100, 'x'));
    ASSERT_EQ(text.CapacityInUnits(), 100U);
    text += static_cast<unsigned char>('y');
    EXPECT_EQ(text.CapacityInUnits(), 200U);
    EXPECT_EQ(MakeString(text), std::string(100, 'x') + "y");
}

TEST(AutoUString, AppendingMuchYieldsExactlyTheNewSize) {
    Text text = Make(std::string(100, 'x'));
    text += MakeUTF8Ref(std::string(150, 'y'));
    EXPECT_EQ(text.CapacityInUnits(), 250U);
}

TEST(AutoUString, AppendsItself) {
    for (std::size_t const size : {0U, 5U, 32U, 33U, 64U, 65U, 100U}) {
        Text text = Make(std::string(size, 'x') + "y");
        text += text;
        EXPECT_EQ(MakeString(text), std::string(size, 'x') + "y" + std::string(size, 'x') + "y");
    }
}

TEST(AutoUString, AppendsItselfIntoSpareRoom) {
    Text text(UTF8(), std::size_t{0}, std::size_t{300});
    text += "abc"_utf8;
    text += text.Ref().Middle(1, 3);
    EXPECT_EQ(text, "abcbc"_utf8);
}

TEST(AutoUString, AppendsARangeOfAView) {
    struct Case {
        std::size_t offset;
        std::size_t count;
        UStringRef<UTF8> expected;
    };
    for (Case const& c : {Case{0, 2, "=ab"_utf8}, Case{2, 2, "=cd"_utf8}, Case{2, 100, "=cdef"_utf8},
                          Case{2, cAllOnes, "=cdef"_utf8}, Case{0, cAllOnes, "=abcdef"_utf8},
                          Case{1, cAllOnes - 1, "=bcdef"_utf8}, Case{6, 1, "="_utf8}, Case{7, 1, "="_utf8},
                          Case{cAllOnes, cAllOnes, "="_utf8}, Case{3, 0, "="_utf8}}) {
        Text text = Make("=");
        text.append("abcdef"_utf8, c.offset, c.count);
        EXPECT_EQ(text, c.expected) << c.offset << ", " << c.count;
    }
}

TEST(AutoUString, ErasesBetweenPointers) {
    struct Case {
        std::size_t first;
        std::size_t last;
        UStringRef<UTF8> expected;
    };
    for (Case const& c : {Case{0, 2, "cdef"_utf8}, Case{2, 4, "abef"_utf8}, Case{4, 6, "abcd"_utf8},
                          Case{3, 3, "abcdef"_utf8}, Case{0, 0, "abcdef"_utf8}, Case{6, 6, "abcdef"_utf8},
                          Case{0, 6, ""_utf8}}) {
        Text text = Make("abcdef");
        auto* const first = text.begin() + c.first;
        EXPECT_EQ(text.erase(first, text.begin() + c.last), first);
        EXPECT_EQ(text, c.expected) << c.first << ", " << c.last;
    }
}

TEST(AutoUString, EraseRefusesPointersOutsideOfTheText) {
    Text text = Make("abcdef");
    auto* const begin = text.begin();
    auto* const end = text.end();
    EXPECT_EQ(OutOfRange([&] { text.erase(begin - 1, end); }), "erase start pointer error");
    EXPECT_EQ(OutOfRange([&] { text.erase(end + 1, end); }), "erase start pointer error");
    EXPECT_EQ(OutOfRange([&] { text.erase(begin, end + 1); }), "erase end pointer error");
    EXPECT_EQ(OutOfRange([&] { text.erase(begin, begin - 1); }), "erase end pointer error");
    EXPECT_EQ(OutOfRange([&] { text.erase(begin + 2, begin + 1); }), "erase pointer overlap error");
    EXPECT_EQ(text, "abcdef"_utf8);
}

TEST(AutoUString, EraseOnAnEmptyTextLooksAtNothing) {
    Text text;
    EXPECT_NO_THROW(text.erase(Wild(1), Wild(0x1000)));
    EXPECT_NO_THROW(text.erase(Wild(0x1000), Wild(1)));
    EXPECT_NO_THROW(text.erase(std::size_t{5}, std::size_t{5}));
    EXPECT_NO_THROW(text.erase(cAllOnes, cAllOnes));
    EXPECT_TRUE(text.empty());
}

TEST(AutoUString, ErasesACountOfUnits) {
    struct Case {
        std::size_t offset;
        std::size_t count;
        UStringRef<UTF8> expected;
    };
    for (Case const& c :
         {Case{0, 2, "cdef"_utf8}, Case{1, 2, "adef"_utf8}, Case{4, 5, "abcd"_utf8},
          Case{2, cAllOnes, "ab"_utf8}, Case{2, cAllOnes - 1, "ab"_utf8}, Case{0, cAllOnes, ""_utf8},
          Case{2, 0, "abcdef"_utf8}, Case{6, 5, "abcdef"_utf8}, Case{6, cAllOnes, "abcdef"_utf8}}) {
        Text text = Make("abcdef");
        text.erase(c.offset, c.count);
        EXPECT_EQ(text, c.expected) << c.offset << ", " << c.count;
    }
}

TEST(AutoUString, EraseTakesLiteralsForNumbers) {
    Text text = Make("abcdef");
    text.erase(0, 0);
    EXPECT_EQ(text, "abcdef"_utf8);
    text.erase(0, 2);
    EXPECT_EQ(text, "cdef"_utf8);
    text.erase(2, 0);
    EXPECT_EQ(text, "cdef"_utf8);
}

TEST(AutoUString, EraseOfAWholeHeapTextKeepsItsBuffer) {
    Text text = Make(std::string(100, 'x'));
    auto const* const buffer = text.begin();
    text.erase(text.begin(), text.end());
    EXPECT_TRUE(text.empty());
    EXPECT_EQ(text.begin(), buffer);
    EXPECT_EQ(text.CapacityInUnits(), 100U);
    text += MakeUTF8Ref(std::string(100, 'y'));
    EXPECT_EQ(text.begin(), buffer);
    text.erase(0, cAllOnes);
    EXPECT_TRUE(text.empty());
    EXPECT_EQ(text.CapacityInUnits(), 100U);
}

TEST(AutoUString, EraseRefusesAnOffsetBehindTheSize) {
    Text text = Make("abcdef");
    EXPECT_EQ(OutOfRange([&] { text.erase(std::size_t{7}, std::size_t{5}); }), "erase first range error");
    EXPECT_EQ(OutOfRange([&] { text.erase(cAllOnes, cAllOnes); }), "erase first range error");
    EXPECT_EQ(text, "abcdef"_utf8);
}

TEST(AutoUString, ReplacesACountOfUnits) {
    struct Case {
        std::size_t offset;
        std::size_t count;
        UStringRef<UTF8> with;
        UStringRef<UTF8> expected;
    };
    for (Case const& c :
         {Case{1, 1, "x"_utf8, "axcdef"_utf8}, Case{1, 2, "xy"_utf8, "axydef"_utf8},
          Case{1, 3, "x"_utf8, "axef"_utf8}, Case{1, 1, "xyz"_utf8, "axyzcdef"_utf8},
          Case{0, 6, "x"_utf8, "x"_utf8}, Case{0, 6, ""_utf8, ""_utf8}, Case{5, 1, "xy"_utf8, "abcdexy"_utf8},
          Case{4, 2, ""_utf8, "abcd"_utf8}, Case{0, 1, ""_utf8, "bcdef"_utf8}}) {
        Text text = Make("abcdef");
        text.replace(c.offset, c.count, c.with);
        EXPECT_EQ(text, c.expected) << c.offset << ", " << c.count;
    }
}

TEST(AutoUString, ReplaceOutsideOfTheTextDoesNothingWithoutAWord) {
    struct Case {
        std::size_t offset;
        std::size_t count;
    };
    for (Case const& c : {Case{2, 1}, Case{1, 2}, Case{0, 3}, Case{0, 0}, Case{1, 0}, Case{2, 0}, Case{3, 0},
                          Case{cAllOnes, 1}, Case{1, cAllOnes}, Case{cAllOnes, cAllOnes}}) {
        Text text = Make("ab");
        EXPECT_NO_THROW(text.replace(c.offset, c.count, "x"_utf8));
        EXPECT_EQ(text, "ab"_utf8) << c.offset << ", " << c.count;
    }
}

TEST(AutoUString, ReplaceGrowsByTheSameRule) {
    Text text = Make(std::string(100, 'a') + "b" + std::string(9, 'c'));
    text.replace(100, 1, "xyz"_utf8);
    EXPECT_EQ(MakeString(text), std::string(100, 'a') + "xyz" + std::string(9, 'c'));
    EXPECT_EQ(text.CapacityInUnits(), 220U);
    Text shortText = Make("abc");
    shortText.replace(1, 1, MakeUTF8Ref(std::string(200, 'x')));
    EXPECT_EQ(MakeString(shortText), "a" + std::string(200, 'x') + "c");
    EXPECT_EQ(shortText.CapacityInUnits(), 202U);
}

TEST(AutoUString, ReplaceUpTo64UnitsStaysInline) {
    Text text = Make(std::string(60, 'a') + "b");
    text.replace(60, 1, "wxyz"_utf8);
    EXPECT_EQ(MakeString(text), std::string(60, 'a') + "wxyz");
    EXPECT_EQ(text.CapacityInUnits(), 64U);
    EXPECT_TRUE(text.Get().IsInline());
    text.replace(0, 1, "AA"_utf8);
    EXPECT_EQ(MakeString(text), "AA" + std::string(59, 'a') + "wxyz");
    EXPECT_EQ(text.CapacityInUnits(), 128U);
}

TEST(AutoUString, EditsWideUnitsWhole) {
    AutoUString<UTF16> text(Wide({0x1110, 0x2221, 0x3332, 0x4443, 0x5554, 0x6665}));
    text.erase(1, 2);
    EXPECT_EQ(text, Wide({0x1110, 0x4443, 0x5554, 0x6665}));
    auto* const second = text.begin() + 1;
    EXPECT_EQ(text.erase(second, second + 1), second);
    EXPECT_EQ(text, Wide({0x1110, 0x5554, 0x6665}));
    text.replace(0, 1, Wide({0x7776, 0x8887, 0x9998}));
    EXPECT_EQ(text, Wide({0x7776, 0x8887, 0x9998, 0x5554, 0x6665}));
    text.replace(1, 3, Wide({0xAAA9}));
    EXPECT_EQ(text, Wide({0x7776, 0xAAA9, 0x6665}));
    text.replace(1, 1, Wide({0xBBBA}));
    EXPECT_EQ(text, Wide({0x7776, 0xBBBA, 0x6665}));
    text.append(Wide({0x1234, 0x5678, 0x9ABC, 0xDEF0}), 1, 2);
    EXPECT_EQ(text, Wide({0x7776, 0xBBBA, 0x6665, 0x5678, 0x9ABC}));
    text += Wide({0xCCCB, 0xDDDC});
    text += std::uint16_t{0xEEED};
    EXPECT_EQ(text, Wide({0x7776, 0xBBBA, 0x6665, 0x5678, 0x9ABC, 0xCCCB, 0xDDDC, 0xEEED}));
}

TEST(AutoUString, GrowsWideUnitsWhole) {
    AutoUString<UTF16> text(UTF16(), 64, 0);
    for (std::size_t i = 0; i < 64; ++i) text[i] = static_cast<std::uint16_t>(0x0100 + i);
    text.replace(1, 1, Wide({0xAAA9, 0xBBBA}));
    ASSERT_EQ(text.SizeInUnits(), 65U);
    EXPECT_EQ(text.CapacityInUnits(), 128U);
    EXPECT_EQ(text[0], 0x0100);
    EXPECT_EQ(text[1], 0xAAA9);
    EXPECT_EQ(text[2], 0xBBBA);
    for (std::size_t i = 3; i < 65; ++i) EXPECT_EQ(text[i], 0x0100 + i - 1);
    text += text;
    ASSERT_EQ(text.SizeInUnits(), 130U);
    EXPECT_EQ(text.CapacityInUnits(), 130U);
    for (std::size_t i = 0; i < 65; ++i) EXPECT_EQ(text[65 + i], text[i]);
    EXPECT_EQ(text[64], 0x013F);
}

TEST(AutoUString, KeepsATagThatHoldsDataAsItGrows) {
    Named text(InGreek(std::string(60, 'x')));
    text += InGreek(std::string(10, 'y'));
    EXPECT_EQ(text.CapacityInUnits(), 120U);
    EXPECT_EQ(text.Encoding(), cGreek);
    text.replace(0, 1, InGreek(std::string(100, 'z')));
    EXPECT_EQ(text.CapacityInUnits(), 169U);
    EXPECT_EQ(text.Encoding(), cGreek);
    EXPECT_EQ(text.Ref().Encoding(), cGreek);
    Named const sum = text + text;
    EXPECT_EQ(sum.SizeInUnits(), 338U);
    EXPECT_EQ(sum.Encoding(), cGreek);
}

TEST(AutoUString, SwapWithItselfKeepsTheText) {
    for (std::string const& content : {std::string(), std::string("short"), std::string(100, 'x')}) {
        Text text = Make(content);
        text.swap(text);
        EXPECT_EQ(MakeString(text), content);
    }
}

TEST(AutoUString, ClearGivesALargeBufferBack) {
    Text text = Make(std::string(1000, 'x'));
    text.clear();
    EXPECT_TRUE(text.empty());
    EXPECT_EQ(text.CapacityInUnits(), 64U);
    EXPECT_TRUE(text.Get().IsInline());
}

TEST(AutoUString, HoldsEveryEncodingThatItIsMadeFor) {
    AutoUString<UTF16> utf16;
    utf16 += std::uint16_t{0xD83D};
    EXPECT_EQ(utf16[0], 0xD83D);
    AutoUString<UTF32> utf32;
    utf32 += std::uint32_t{0x1F600};
    EXPECT_EQ(utf32[0], 0x1F600U);
    AutoUString<Local8Bit> local;
    local += 'x';
    EXPECT_EQ(local[0], 'x');
    AutoUString<Binary8Bit> binary;
    binary += static_cast<unsigned char>(0xFF);
    EXPECT_EQ(binary[0], 0xFF);
    AutoUString<IANANamedTextEncoding> named(IANANamedTextEncoding("KOI8-R"_data), std::size_t{0},
                                             std::size_t{0});
    named += static_cast<unsigned char>(0xC1);
    EXPECT_EQ(MakeString(named.Encoding().Name()), "KOI8-R");
}
