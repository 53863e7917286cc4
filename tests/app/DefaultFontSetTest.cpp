#include "app/DefaultFontSet.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <map>

using testing::ElementsAre;
using testing::IsEmpty;

namespace {

using Lines = std::vector<std::string>;

constexpr char cDefault[] = "-*-*-*-R-*-*-*-120-*-*-*-*,*";
constexpr char cDefaultLine[] = "Default Xt font type: -*-*-*-R-*-*-*-120-*-*-*-*,*";

// A font's name of the given family and character set, and the font set tried for it.
std::string FontName(std::string const& family, std::string const& characterSet = "iso8859-1") {
    return "-maker-" + family + "-medium-r-normal--12-120-75-75-c-60-" + characterSet;
}
std::string FontSetOf(std::string const& family) {
    return "-maker-" + family + "-medium-r-normal--12-120-75-75-c-60-*,*";
}

FontSetAttempt Made(unsigned int height, Lines missing = {}) {
    return {true, height, std::move(missing)};
}
FontSetAttempt NotMade(Lines missing = {}) {
    return {false, 0, std::move(missing)};
}

// Fonts by table. A font set that is not in the table can't be made and misses ten character sets.
class FontTable : public FontSource {
public:
    std::optional<std::string> ConfiguredFontSet() override { return configured; }
    FontSetAttempt TryFontSet(std::string const& baseFontList) override {
        tried.push_back(baseFontList);
        auto const entry = attempts.find(baseFontList);
        return entry == attempts.end() ? NotMade(Lines(10, "?")) : entry->second;
    }
    std::vector<std::string> ListFonts(std::string const& pattern, int most) override {
        ++listings;
        listedPattern = pattern;
        listedMost = most;
        return fonts;
    }

    std::optional<std::string> configured;
    std::map<std::string, FontSetAttempt> attempts;
    std::vector<std::string> fonts;

    std::vector<std::string> tried;
    int listings = 0;
    std::string listedPattern;
    int listedMost = 0;
};

} // namespace

TEST(DefaultFontSet, CompleteConfiguredSetStaysAndNoFontIsListed) {
    FontTable fonts;
    fonts.configured = "mine";
    fonts.attempts["mine"] = Made(20);
    FontSetChoice const choice = ChooseDefaultFontSet(fonts);
    EXPECT_EQ(choice.fontSet, std::nullopt);
    EXPECT_THAT(choice.missingCharSets, IsEmpty());
    EXPECT_THAT(fonts.tried, ElementsAre("mine"));
    EXPECT_EQ(fonts.listings, 0);
}

TEST(DefaultFontSet, CompleteToolkitDefaultStaysAndNoFontIsListed) {
    FontTable fonts;
    fonts.attempts[cDefault] = Made(20);
    FontSetChoice const choice = ChooseDefaultFontSet(fonts);
    EXPECT_EQ(choice.fontSet, std::nullopt);
    EXPECT_THAT(choice.missingCharSets, IsEmpty());
    EXPECT_THAT(fonts.tried, ElementsAre(cDefault));
    EXPECT_EQ(fonts.listings, 0);
}

TEST(DefaultFontSet, CompleteToolkitDefaultMakesUpForAnIncompleteConfiguredSet) {
    FontTable fonts;
    fonts.configured = "mine";
    fonts.attempts["mine"] = Made(20, {"A"});
    fonts.attempts[cDefault] = Made(20);
    FontSetChoice const choice = ChooseDefaultFontSet(fonts);
    EXPECT_EQ(choice.fontSet, std::nullopt);
    EXPECT_THAT(choice.missingCharSets, IsEmpty());
    EXPECT_EQ(fonts.listings, 0);
}

TEST(DefaultFontSet, SearchesAtMostAThousandFontsOfTwelvePoints) {
    FontTable fonts;
    ChooseDefaultFontSet(fonts);
    EXPECT_EQ(fonts.listings, 1);
    EXPECT_EQ(fonts.listedPattern, "-*-*-*-r-*-*-*-120-*-*-*-*");
    EXPECT_EQ(fonts.listedMost, 1000);
}

TEST(DefaultFontSet, WithoutAnyFontTheLinesOfTheDefaultStay) {
    FontTable fonts;
    fonts.attempts[cDefault] = NotMade({"A", "B"});
    FontSetChoice const choice = ChooseDefaultFontSet(fonts);
    EXPECT_EQ(choice.fontSet, std::nullopt);
    EXPECT_THAT(choice.missingCharSets, ElementsAre(cDefaultLine, "A", "B"));
}

TEST(DefaultFontSet, FewerMissingSetsThanTheConfiguredOneReplaceItsLines) {
    FontTable fonts;
    fonts.configured = "mine";
    fonts.attempts["mine"] = Made(20, {"A", "B"});
    fonts.attempts[cDefault] = Made(20, {"C"});
    EXPECT_THAT(ChooseDefaultFontSet(fonts).missingCharSets, ElementsAre(cDefaultLine, "C"));
}

TEST(DefaultFontSet, AsManyMissingSetsAsTheConfiguredOneFollowItsLines) {
    FontTable fonts;
    fonts.configured = "mine";
    fonts.attempts["mine"] = Made(20, {"A"});
    fonts.attempts[cDefault] = NotMade({"B"});
    EXPECT_THAT(ChooseDefaultFontSet(fonts).missingCharSets,
                ElementsAre("Resource font type: mine", "A", cDefaultLine, "B"));
}

TEST(DefaultFontSet, MoreMissingSetsThanTheConfiguredOneAreIgnored) {
    FontTable fonts;
    fonts.configured = "mine";
    fonts.attempts["mine"] = Made(20, {"A"});
    fonts.attempts[cDefault] = Made(20, {"B", "C"});
    EXPECT_THAT(ChooseDefaultFontSet(fonts).missingCharSets, ElementsAre("Resource font type: mine", "A"));
}

TEST(DefaultFontSet, ConfiguredSetThatIsNotMadeCountsAllTheSame) {
    FontTable fonts;
    fonts.configured = "mine";
    fonts.attempts["mine"] = NotMade({"A"});
    fonts.attempts[cDefault] = Made(20, {"B", "C"});
    EXPECT_THAT(ChooseDefaultFontSet(fonts).missingCharSets, ElementsAre("Resource font type: mine", "A"));
}

TEST(DefaultFontSet, ConfiguredSetThatFailsWithoutMissingAnythingIsNoReasonToStop) {
    FontTable fonts;
    fonts.configured = "mine";
    fonts.attempts["mine"] = NotMade();
    fonts.attempts[cDefault] = NotMade({"A"});
    EXPECT_THAT(ChooseDefaultFontSet(fonts).missingCharSets, ElementsAre(cDefaultLine, "A"));
    EXPECT_EQ(fonts.listings, 1);
}

TEST(DefaultFontSet, DefaultThatFailsWithoutMissingAnythingIsToldByItsLineAlone) {
    FontTable fonts;
    fonts.attempts[cDefault] = NotMade();
    fonts.attempts[FontSetOf("any")] = Made(10, {"A"});
    fonts.fonts = {FontName("any")};
    FontSetChoice const choice = ChooseDefaultFontSet(fonts);
    EXPECT_EQ(choice.fontSet, std::nullopt);
    EXPECT_THAT(choice.missingCharSets, ElementsAre(cDefaultLine));
}

TEST(DefaultFontSet, FoundSetThatMissesFewerIsChosenAndNothingIsReported) {
    FontTable fonts;
    fonts.attempts[cDefault] = Made(10, {"A", "B"});
    fonts.attempts[FontSetOf("better")] = Made(50, {"C"});
    fonts.fonts = {FontName("better")};
    FontSetChoice const choice = ChooseDefaultFontSet(fonts);
    EXPECT_EQ(choice.fontSet, FontSetOf("better"));
    EXPECT_THAT(choice.missingCharSets, IsEmpty());
}

TEST(DefaultFontSet, FoundSetThatMissesAsManyAsTheDefaultIsChosen) {
    FontTable fonts;
    fonts.attempts[cDefault] = Made(10, {"A"});
    fonts.attempts[FontSetOf("equal")] = Made(50, {"C"});
    fonts.fonts = {FontName("equal")};
    FontSetChoice const choice = ChooseDefaultFontSet(fonts);
    EXPECT_EQ(choice.fontSet, FontSetOf("equal"));
    EXPECT_THAT(choice.missingCharSets, IsEmpty());
}

TEST(DefaultFontSet, FoundSetThatMissesMoreIsPassedOverAndTheLinesStay) {
    FontTable fonts;
    fonts.configured = "mine";
    fonts.attempts["mine"] = Made(10, {"A"});
    fonts.attempts[cDefault] = Made(10, {"B"});
    fonts.attempts[FontSetOf("worse")] = Made(5, {"C", "D"});
    fonts.fonts = {FontName("worse")};
    FontSetChoice const choice = ChooseDefaultFontSet(fonts);
    EXPECT_EQ(choice.fontSet, std::nullopt);
    EXPECT_THAT(choice.missingCharSets, ElementsAre("Resource font type: mine", "A", cDefaultLine, "B"));
}

TEST(DefaultFontSet, AmongEqualSetsTheSmallestLineHeightWins) {
    FontTable fonts;
    fonts.attempts[cDefault] = Made(10, {"A"});
    fonts.attempts[FontSetOf("tall")] = Made(30, {"B"});
    fonts.attempts[FontSetOf("small")] = Made(12, {"C"});
    fonts.attempts[FontSetOf("medium")] = Made(20, {"D"});
    fonts.fonts = {FontName("tall"), FontName("small"), FontName("medium")};
    EXPECT_EQ(ChooseDefaultFontSet(fonts).fontSet, FontSetOf("small"));
    fonts.fonts = {FontName("tall"), FontName("medium")};
    EXPECT_EQ(ChooseDefaultFontSet(fonts).fontSet, FontSetOf("medium"));
}

TEST(DefaultFontSet, AmongSetsOfOneHeightTheFirstStays) {
    FontTable fonts;
    fonts.attempts[cDefault] = Made(10, {"A"});
    fonts.attempts[FontSetOf("first")] = Made(12, {"B"});
    fonts.attempts[FontSetOf("second")] = Made(12, {"C"});
    fonts.fonts = {FontName("first"), FontName("second")};
    EXPECT_EQ(ChooseDefaultFontSet(fonts).fontSet, FontSetOf("first"));
}

TEST(DefaultFontSet, SmallerSetFoundEarlierStaysChosenBeforeABetterTallerOne) {
    FontTable fonts;
    fonts.attempts[cDefault] = Made(10, {"A", "B"});
    fonts.attempts[FontSetOf("small")] = Made(12, {"A", "B"});
    fonts.attempts[FontSetOf("better")] = Made(20, {"A"});
    fonts.fonts = {FontName("small"), FontName("better")};
    FontSetChoice const choice = ChooseDefaultFontSet(fonts);
    EXPECT_EQ(choice.fontSet, FontSetOf("small"));
    EXPECT_THAT(choice.missingCharSets, IsEmpty());
}

TEST(DefaultFontSet, FoundSetThatMissesNothingIsPassedOver) {
    FontTable fonts;
    fonts.attempts[cDefault] = Made(10, {"A"});
    fonts.attempts[FontSetOf("complete")] = Made(5);
    fonts.fonts = {FontName("complete")};
    FontSetChoice const choice = ChooseDefaultFontSet(fonts);
    EXPECT_EQ(choice.fontSet, std::nullopt);
    EXPECT_THAT(choice.missingCharSets, ElementsAre(cDefaultLine, "A"));
}

TEST(DefaultFontSet, FoundSetThatMissesNothingIsChosenWhereTheDefaultFailedWithoutMissingAnything) {
    FontTable fonts;
    fonts.attempts[cDefault] = NotMade();
    fonts.attempts[FontSetOf("incomplete")] = Made(5, {"A"});
    fonts.attempts[FontSetOf("complete")] = Made(12);
    fonts.fonts = {FontName("incomplete"), FontName("complete")};
    FontSetChoice const choice = ChooseDefaultFontSet(fonts);
    EXPECT_EQ(choice.fontSet, FontSetOf("complete"));
    EXPECT_THAT(choice.missingCharSets, IsEmpty());
}

TEST(DefaultFontSet, FoundSetThatIsNotMadeLowersTheCountAndLeavesItsLines) {
    FontTable fonts;
    fonts.attempts[cDefault] = Made(10, {"A", "B"});
    fonts.attempts[FontSetOf("broken")] = NotMade({"C"});
    fonts.attempts[FontSetOf("usable")] = Made(10, {"A", "B"});
    fonts.fonts = {FontName("broken"), FontName("usable")};
    FontSetChoice const choice = ChooseDefaultFontSet(fonts);
    EXPECT_EQ(choice.fontSet, std::nullopt);
    EXPECT_THAT(choice.missingCharSets, ElementsAre("Search font type: " + FontSetOf("broken"), "C"));
}

TEST(DefaultFontSet, LinesOfABrokenSetThatTiesFollowAChosenOne) {
    FontTable fonts;
    fonts.attempts[cDefault] = Made(10, {"A"});
    fonts.attempts[FontSetOf("usable")] = Made(10, {"B"});
    fonts.attempts[FontSetOf("broken")] = NotMade({"C"});
    fonts.fonts = {FontName("usable"), FontName("broken")};
    FontSetChoice const choice = ChooseDefaultFontSet(fonts);
    EXPECT_EQ(choice.fontSet, FontSetOf("usable"));
    EXPECT_THAT(choice.missingCharSets, ElementsAre("Search font type: " + FontSetOf("broken"), "C"));
}

TEST(DefaultFontSet, FamilyOfOneSizeIsTriedOnceWithItsCharacterSetOpen) {
    FontTable fonts;
    fonts.fonts = {FontName("one", "iso8859-1"), FontName("one", "iso8859-2"), FontName("two", "koi8-r"),
                   FontName("one", "iso10646-1")};
    ChooseDefaultFontSet(fonts);
    EXPECT_THAT(fonts.tried, ElementsAre(cDefault, "-maker-one-medium-r-normal--12-120-75-75-c-60-*,*",
                                         "-maker-two-medium-r-normal--12-120-75-75-c-60-*,*"));
}

TEST(DefaultFontSet, NameOfFewerThanThirteenHyphensIsPassedOver) {
    FontTable fonts;
    fonts.fonts = {"", "fixed", "------------", "-------------", "a-b-c-d-e-f-g-h-i-j-k-l-m-n-o"};
    ChooseDefaultFontSet(fonts);
    EXPECT_THAT(fonts.tried, ElementsAre(cDefault, "-------------*,*", "a-b-c-d-e-f-g-h-i-j-k-l-m-*,*"));
}
