#include "format/PlatformString.h"

#include "foundation/Exceptions.h"

#include "tests/support/Allocations.h"
#include "tests/support/LocaleScope.h"
#include "tests/support/UStringPrinting.h"

#include <gtest/gtest.h>

#include <new>
#include <string>

namespace {

// Too long to do without allocations: the first is for rendering, the others are for converting.
std::string const cLongText(200, 'x');

// The long text, made while so many allocations succeed and so many of those behind them fail.
AutoNullTerminated<Local8Bit> MadeWithFailures(std::size_t successes, std::size_t failures) {
    FailingAllocation const failing(successes, failures);
    return MakePlatformString(UFormat(cLongText.c_str()));
}

std::size_t CountAllocations() {
    unsigned long const before = AllocationCount();
    MakePlatformString(UFormat(cLongText.c_str()));
    return AllocationCount() - before;
}

} // namespace

TEST(MakePlatformString, GivesTheRenderedTextWithATerminator) {
    EXPECT_STREQ(MakePlatformString(UFormat("&Paste{_tab}Ctrl-V")).c_str(), "&Paste\tCtrl-V");
    EXPECT_STREQ(MakePlatformString(UFormat("{a}!") % "one"_utf8).c_str(), "one!");
    EXPECT_STREQ(MakePlatformString(UFormat("{a} to {b}") % "1"_utf8 % "2"_utf8).c_str(), "1 to 2");
    EXPECT_STREQ(MakePlatformString(UFormat("")).c_str(), "");
}

TEST(MakePlatformString, KeepsWhatTheLocaleCanSpell) {
    LocaleScope const locale("C.UTF-8");
    EXPECT_STREQ(MakePlatformString(UFormat("\xC3\xA4\xE2\x82\xAC")).c_str(), "\xC3\xA4\xE2\x82\xAC");
}

TEST(MakePlatformString, ConvertsToTheEncodingOfTheLocale) {
    LocaleScope const locale("de_DE.ISO-8859-1");
    EXPECT_STREQ(MakePlatformString(UFormat("\xC3\xA4 {a}") % "\xC3\xBC"_utf8).c_str(), "\xE4 \xFC");
    EXPECT_STREQ(MakePlatformString(UFormat("\xE2\x82\xAC")).c_str(), "<Invalid String>");
}

TEST(MakePlatformString, MarksWhatTheLocaleCannotSpell) {
    LocaleScope const locale("C");
    EXPECT_STREQ(MakePlatformString(UFormat("\xC3\xA4")).c_str(), "<Invalid String>");
    EXPECT_STREQ(MakePlatformString(UFormat("{a}") % "\xE2\x82\xAC"_utf8).c_str(), "<Invalid String>");
    EXPECT_STREQ(MakePlatformString(UFormat("{a}{b}") % "a"_utf8 % "\xC3\xA4"_utf8).c_str(),
                 "<Invalid String>");
}

TEST(MakePlatformString, MarksWhatIsNoText) {
    LocaleScope const locale("C");
    EXPECT_STREQ(MakePlatformString(UFormat("\xFF")).c_str(), "<Invalid String>");
}

TEST(MakePlatformString, MarksATextForWhoseConversionMemoryRunsOut) {
    LocaleScope const locale("C");
    std::size_t const allocations = CountAllocations();
    ASSERT_GT(allocations, 1u);
    for (std::size_t successes = 1; successes < allocations; ++successes)
        EXPECT_STREQ(MadeWithFailures(successes, 1).c_str(), "<Invalid String>") << successes;
    EXPECT_STREQ(MadeWithFailures(allocations, 1).c_str(), cLongText.c_str());
}

TEST(MakePlatformString, LetsWantOfMemoryForRenderingPass) {
    LocaleScope const locale("C");
    EXPECT_THROW(MadeWithFailures(0, 1), std::bad_alloc);
}

TEST(MakePlatformString, LetsAFailureOfTheMarkerPass) {
    LocaleScope const locale("C");
    std::size_t const allocations = CountAllocations();
    ASSERT_GT(allocations, 1u);
    for (std::size_t successes = 1; successes < allocations; ++successes)
        EXPECT_THROW(MadeWithFailures(successes, FailingAllocation::cAll), std::bad_alloc) << successes;
}

TEST(MakePlatformString, LetsFailuresOfRenderingPass) {
    EXPECT_THROW(MakePlatformString(UFormat("{a")), BadFormatStringError);
    EXPECT_THROW(MakePlatformString(UFormat("{a}")), TooManyFormatArguments);
    EXPECT_THROW(MakePlatformString(UFormat("a") % "1"_utf8), TooFewFormatArguments);
    EXPECT_THROW(MakePlatformString(UFormat("{a}"_utf8, "{b}"_utf8) % "1"_utf8), UndefinedFormatVariable);
}
