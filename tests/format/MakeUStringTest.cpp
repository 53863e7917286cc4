#include "format/MakeUString.h"

#include "foundation/Exceptions.h"

#include "tests/support/Allocations.h"
#include "tests/support/UStringPrinting.h"

#include <gtest/gtest.h>

#include <atomic>
#include <latch>
#include <string>
#include <thread>
#include <vector>

namespace {

constexpr int cThreads = 8;
constexpr int cRounds = 2000;

template <class Iterator>
concept HasArrow = requires(Iterator const& segment) {
    segment->text;
};

// How many of a thread's renderings, each with arguments of its own, come out wrong.
int CountWrongTexts(int thread) {
    int wrong = 0;
    for (int round = 0; round < cRounds; ++round) {
        std::string const first = "thread " + std::to_string(thread);
        std::string const second = std::string(static_cast<std::size_t>(round % 100), 'x');
        AutoUString<UTF8> const text =
            MakeUString(UFormat("{a}{b}"_utf8, "{b}{_obrace}{_tab}{a}{_crlf}{b}"_utf8) % MakeUTF8Ref(first) %
                        MakeUTF8Ref(second));
        if (MakeString(text) != second + "{\t" + first + "\r\n" + second) ++wrong;
    }
    return wrong;
}

} // namespace

TEST(MakeUString, RendersATextWithoutVariablesAsItStands) {
    EXPECT_EQ(MakeUString(UFormat("a text")), "a text"_utf8);
    EXPECT_EQ(MakeUString(UFormat("a}b")), "a}b"_utf8);
    EXPECT_EQ(MakeUString(UFormat("\xC3\xA4")), "\xC3\xA4"_utf8);
}

TEST(MakeUString, RendersAnEmptyFormatAsTheEmptyText) {
    EXPECT_TRUE(MakeUString(UFormat("")).empty());
    EXPECT_TRUE(MakeUString(UFormat(UStringRef<UTF8>(), UStringRef<UTF8>())).empty());
}

TEST(MakeUString, PutsOneArgumentInItsPlace) {
    EXPECT_EQ(MakeUString(UFormat("{days} days") % "12"_utf8), "12 days"_utf8);
    EXPECT_EQ(MakeUString(UFormat("{a}") % ""_utf8), ""_utf8);
}

TEST(MakeUString, PutsTwoArgumentsInTheirPlaces) {
    EXPECT_EQ(MakeUString(UFormat("{minutes} minutes, {seconds} seconds") % "4"_utf8 % "59"_utf8),
              "4 minutes, 59 seconds"_utf8);
}

TEST(MakeUString, DoesNotLookForVariablesInArguments) {
    EXPECT_EQ(MakeUString(UFormat("{a}{b}") % "{b}"_utf8 % "{"_utf8), "{b}{"_utf8);
}

TEST(MakeUString, RendersReservedVariablesWithoutArguments) {
    EXPECT_EQ(MakeUString(UFormat("a{_tab}b")), "a\tb"_utf8);
    EXPECT_EQ(MakeUString(UFormat("{_obrace}{_cbrace}{_cr}{_lf}{_crlf}")), "{}\r\n\r\n"_utf8);
    EXPECT_EQ(MakeUString(UFormat("{_obrace}{a}{_cbrace}") % "x"_utf8), "{x}"_utf8);
}

TEST(MakeUString, BindsByTheOriginalAndRendersTheTranslation) {
    EXPECT_EQ(MakeUString(UFormat("{x} of {y}"_utf8, "{y}: {x}"_utf8) % "3"_utf8 % "10"_utf8), "10: 3"_utf8);
}

TEST(MakeUString, LetsATranslationRepeatAndDropVariables) {
    EXPECT_EQ(MakeUString(UFormat("{x}"_utf8, "{x}, {x}!"_utf8) % "hey"_utf8), "hey, hey!"_utf8);
    EXPECT_EQ(MakeUString(UFormat("{x}"_utf8, "nothing"_utf8) % "hey"_utf8), "nothing"_utf8);
    EXPECT_EQ(MakeUString(UFormat("{x}{y}"_utf8, "{_tab}{y}"_utf8) % "1"_utf8 % "2"_utf8), "\t2"_utf8);
    EXPECT_EQ(MakeUString(UFormat("{x}"_utf8, ""_utf8) % "hey"_utf8), ""_utf8);
}

TEST(MakeUString, RendersAVariableThatIsBoundTwiceAsTheSmallerValue) {
    EXPECT_EQ(MakeUString(UFormat("{a} {a}") % "z"_utf8 % "b"_utf8), "b b"_utf8);
}

TEST(MakeUString, RefusesVariablesThatOnlyTheTranslationHas) {
    EXPECT_THROW(MakeUString(UFormat("{x}"_utf8, "{z}"_utf8) % "1"_utf8), UndefinedFormatVariable);
    EXPECT_THROW(MakeUString(UFormat("plain"_utf8, "{z}"_utf8)), UndefinedFormatVariable);
    EXPECT_THROW(MakeUString(UFormat("{x}"_utf8, "{_nope}"_utf8) % "1"_utf8), UndefinedFormatVariable);
}

TEST(MakeUString, OnlyLooksUpTheNamesOfATranslation) {
    EXPECT_THROW(MakeUString(UFormat("{x}"_utf8, "{x-y}"_utf8) % "1"_utf8), UndefinedFormatVariable);
    EXPECT_THROW(MakeUString(UFormat("{x}"_utf8, "{}"_utf8) % "1"_utf8), ImproperFormatVariableName);
}

TEST(MakeUString, DoesNotGoBackToTheDefaultWhenATranslationIsBroken) {
    EXPECT_THROW(MakeUString(UFormat("{x}"_utf8, "{x} {"_utf8) % "1"_utf8), BadFormatStringError);
    EXPECT_THROW(MakeUString(UFormat("{x}"_utf8, "{x"_utf8) % "1"_utf8), BadFormatStringError);
}

TEST(MakeUString, RefusesAnOriginalThatIsBroken) {
    EXPECT_THROW(MakeUString(UFormat("{a")), BadFormatStringError);
    EXPECT_THROW(MakeUString(UFormat("{a"_utf8, "fine"_utf8)), BadFormatStringError);
    EXPECT_THROW(MakeUString(UFormat("{}")), ImproperFormatVariableName);
    EXPECT_THROW(MakeUString(UFormat("{a-b}") % "1"_utf8), ImproperFormatVariableName);
    EXPECT_EQ(MakeUString(UFormat("{-ab}") % "1"_utf8), "1"_utf8);
    EXPECT_THROW(MakeUString(UFormat("{_nope}")), UndefinedFormatVariable);
}

TEST(MakeUString, RefusesAFormatThatDoesNotMatchItsArguments) {
    EXPECT_THROW(MakeUString(UFormat("{a}")), TooManyFormatArguments);
    EXPECT_THROW(MakeUString(UFormat("{a}{b}") % "1"_utf8), TooManyFormatArguments);
    EXPECT_THROW(MakeUString(UFormat("plain") % "1"_utf8), TooFewFormatArguments);
    EXPECT_THROW(MakeUString(UFormat("{a}") % "1"_utf8 % "2"_utf8), TooFewFormatArguments);
}

TEST(MakeUString, ConcatenatesTheSegmentsOfARange) {
    UStringRef<UTF8> const text = "a{x}b{y}c"_utf8;
    FormatBinding const bindings[] = {{"x"_utf8, "1"_utf8}, {"y"_utf8, "2"_utf8}};
    ConstArrayOf<FormatBinding> const bound(std::begin(bindings), std::end(bindings));
    FormattedStringIterator const first(text, bound);
    FormattedStringIterator const end = FormattedStringIterator::EndOf(text);
    EXPECT_EQ(MakeUString(first, end), "a1b2c"_utf8);
    FormattedStringIterator second = first;
    ++second;
    EXPECT_EQ(*second, "1"_utf8);
    EXPECT_EQ(MakeUString(second, end), "1b2c"_utf8);
    EXPECT_EQ(MakeUString(first, second), "a"_utf8);
    EXPECT_EQ(MakeUString(second, second), ""_utf8);
}

TEST(MakeUString, AllocatesNothingForAShortText) {
    unsigned long const before = AllocationCount();
    {
        AutoUString<UTF8> const text =
            MakeUString(UFormat("{a} and {b}{_cr}"_utf8, "{b}{_tab}{a}"_utf8) % "one"_utf8 % "two"_utf8);
        EXPECT_EQ(text.SizeInUnits(), 7u);
    }
    EXPECT_EQ(AllocationCount(), before);
}

TEST(MakeUString, AllocatesOnceForALongText) {
    std::string const argument(1000, 'x');
    UStringRef<UTF8> const view = MakeUTF8Ref(argument);
    unsigned long const before = AllocationCount();
    AutoUString<UTF8> const text = MakeUString(UFormat("{a} and {b}") % view % view);
    EXPECT_EQ(AllocationCount() - before, 1u);
    EXPECT_EQ(text, MakeUTF8Ref(argument + " and " + argument));
}

TEST(MakeUString, HoldsAsMuchAsTheTextTakesThoughATranslationDropsAnArgument) {
    std::string const argument(2000000, 'x');
    unsigned long const before = AllocationCount();
    AutoUString<UTF8> const text = MakeUString(UFormat("{x}"_utf8, "ok"_utf8) % MakeUTF8Ref(argument));
    EXPECT_EQ(AllocationCount(), before);
    EXPECT_EQ(text.CapacityInUnits(), 64u);
    EXPECT_EQ(text, "ok"_utf8);
}

TEST(MakeUString, DoesNotCountTheNamesOfVariables) {
    std::string const description(31, 'd');
    unsigned long const before = AllocationCount();
    AutoUString<UTF8> const text =
        MakeUString(UFormat("{actionDescription}\n\n{actionSummary}") % MakeUTF8Ref(description) % "s"_utf8);
    EXPECT_EQ(AllocationCount(), before);
    EXPECT_EQ(text, MakeUTF8Ref(description + "\n\ns"));
}

// Two more segments each time, up to more than a sentence ever has.
TEST(MakeUString, HoldsAsMuchAsTheTextTakesThoughATranslationRepeatsAnArgument) {
    std::string const argument(65, 'x');
    std::string translation = "{x}";
    std::string expected = argument;
    for (int segments = 1; segments < 70; segments += 2) {
        unsigned long const before = AllocationCount();
        AutoUString<UTF8> const text =
            MakeUString(UFormat("{x}"_utf8, MakeUTF8Ref(translation)) % MakeUTF8Ref(argument));
        if (segments <= 32) {
            EXPECT_EQ(AllocationCount() - before, 1u) << segments;
        }
        EXPECT_EQ(text.CapacityInUnits(), expected.size()) << segments;
        EXPECT_EQ(text, MakeUTF8Ref(expected)) << segments;
        translation += ", {x}";
        expected += ", " + argument;
    }
}

TEST(MakeUString, FindsAMistakeBehindManySegmentsBeforeItAllocates) {
    std::string const argument(65, 'x');
    UStringRef<UTF8> const view = MakeUTF8Ref(argument);
    for (std::string const mistake : {"{", "{z}", "{}"}) {
        std::string translation;
        for (int segments = 0; segments < 20; ++segments) {
            std::string const broken = translation + mistake;
            unsigned long const before = AllocationCount();
            EXPECT_ANY_THROW(MakeUString(UFormat("{x}"_utf8, MakeUTF8Ref(broken)) % view)) << broken;
            EXPECT_EQ(AllocationCount(), before) << broken;
            translation += "{x}";
        }
    }
}

TEST(MakeUString, MayBeCalledByManyThreadsAtOnceAndForTheFirstTime) {
    std::latch start(cThreads);
    std::atomic<int> wrong = 0;
    std::vector<std::thread> threads;
    for (int thread = 0; thread < cThreads; ++thread)
        threads.emplace_back([&start, &wrong, thread] {
            start.arrive_and_wait();
            wrong += CountWrongTexts(thread);
        });
    for (std::thread& thread : threads) thread.join();
    EXPECT_EQ(wrong, 0);
}

TEST(FormattedStringIterator, GivesNoAccessToNamesInsteadOfValues) {
    EXPECT_TRUE(HasArrow<UFormatIterator>);
    EXPECT_FALSE(HasArrow<FormattedStringIterator>);
}

TEST(MakeUString, AllocatesNothingForAFormatThatDoesNotBind) {
    unsigned long const before = AllocationCount();
    EXPECT_THROW(MakeUString(UFormat("{a}{b") % "1"_utf8), BadFormatStringError);
    EXPECT_EQ(AllocationCount(), before);
}
