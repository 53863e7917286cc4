#include "tools/translation-checker/TranslationCheck.h"

#include "format/FormatOverrideSet.h"
#include "tests/support/LocaleScope.h"
#include "tools/translation-checker/Texts.h"

#include <gmock/gmock.h>

using namespace TranslationChecker;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

namespace {

constexpr FormatText cTexts[] = {
    {"OK", "a.cpp"},
    {"Now", "a.cpp"},
    {"  --  ", "a.cpp"},
    {"{x} of {y}", "b.cpp"},
    {"Save first.  Then {x}.", "b.cpp"},
    {"{a}\n\n{b}", "b.cpp"},
};

std::string Line(Finding const& finding) {
    return std::to_string(finding.line) + (finding.isError ? " error: " : " warning: ") + finding.sentence;
}

std::vector<std::string> LinesOf(CheckResult const& result) {
    std::vector<std::string> lines;
    for (Finding const& finding : result.findings) lines.push_back(Line(finding));
    return lines;
}

// The findings about what is there.
std::vector<std::string> Check(std::string const& contents) {
    CheckOptions options;
    options.tellMissing = false;
    return LinesOf(CheckTranslation(contents, cTexts, options));
}

std::vector<std::string> CheckInLocale(char const* locale, std::string const& contents) {
    LocaleScope const scope(locale);
    CheckOptions options;
    options.tellMissing = false;
    options.checkLocale = true;
    return LinesOf(CheckTranslation(contents, cTexts, options));
}

} // namespace

TEST(CheckTranslation, FindsNothingInAGoodFile) {
    CheckResult const result = CheckTranslation("# Deutsch\n\n   \nOK\tGut\nNow\tjetzt\r\n  --  \t  ;  \r"
                                                "{x} of {y}\t{y}{_tab}{x}{_obrace}\n"
                                                "Save first.  Then {x}.\tErst sichern, dann {x} ({x}).",
                                                cTexts);
    EXPECT_THAT(LinesOf(result), IsEmpty());
    EXPECT_EQ(result.texts, 5u);
    EXPECT_EQ(result.translated, 5u);
}

TEST(CheckTranslation, TellsOfTextsWithoutATranslationBehindAllOthers) {
    CheckResult const result = CheckTranslation("OK\tOK\n  --  \t--\nNow\t\n", cTexts);
    EXPECT_THAT(LinesOf(result),
                ElementsAre("2 warning: the translation does not begin with the same blanks as the original",
                            "2 warning: the translation does not end with the same blanks as the original",
                            "3 warning: the translation is empty: nothing will be shown",
                            "0 warning: there is no translation of \"{x} of {y}\"",
                            "0 warning: there is no translation of \"Save first.  Then {x}.\""));
    EXPECT_EQ(result.translated, 3u);
    EXPECT_EQ(result.CountErrors(), 0u);
}

TEST(CheckTranslation, OfAnEmptyFileMissesEverything) {
    EXPECT_THAT(LinesOf(CheckTranslation("", cTexts)), SizeIs(5));
    EXPECT_THAT(Check(""), IsEmpty());
}

TEST(CheckTranslation, DoesNotMissWhatACompanionTranslates) {
    CheckOptions options;
    options.companions = {"OK\tGut\nNow\n", "{x} of {y}\t{x}\n"};
    CheckResult const result = CheckTranslation("  --  \t  --  \nOK\tGut\n", cTexts, options);
    EXPECT_THAT(LinesOf(result),
                ElementsAre("0 warning: there is no translation of \"Now\"",
                            "0 warning: there is no translation of \"Save first.  Then {x}.\""));
    EXPECT_EQ(result.translated, 2u);
}

TEST(CheckTranslation, TellsWhatACompanionThatComesFirstHides) {
    CheckOptions options;
    options.tellMissing = false;
    options.companions = {"Now\tjetzt\n", "OK\tGut\n"};
    options.companionsComeFirst = true;
    EXPECT_THAT(LinesOf(CheckTranslation("{x} of {y}\t{x}/{y}\n\nOK\tAlles klar\n", cTexts, options)),
                ElementsAre("3 warning: the general translation has this text, too, and is asked first"));
}

TEST(CheckTranslation, KnowsTheKeys) {
    EXPECT_THAT(Check("OK!\tGut\n"), ElementsAre("1 error: the program has no text \"OK!\""));
    EXPECT_THAT(Check("{a}\n\n{b}\tx\n"),
                ElementsAre("1 error: the line has no tab, so that the program passes over "
                            "it: \"{a}\"; begin a comment with #",
                            "3 error: the program has no text \"{b}\""));
    EXPECT_THAT(Check("#OK\tGut"), ElementsAre("1 error: the program has no text \"#OK\""));
}

TEST(CheckTranslation, TellsHowAKeyIsWrittenInTheProgram) {
    EXPECT_THAT(Check("ok\tGut\nSave first. Then {x}.\t{x}\nNow \tjetzt "),
                ElementsAre("1 error: the program has no text \"ok\"; it writes it \"OK\"",
                            "2 error: the program has no text \"Save first. Then {x}.\"; it writes it \"Save "
                            "first.  Then {x}.\"",
                            "3 error: the program has no text \"Now \"; it writes it \"Now\""));
}

TEST(CheckTranslation, TellsWhichOfSeveralTranslationsCounts) {
    EXPECT_THAT(
        Check("OK\tb\nNow\tx\nOK\tc\nOK\ta\n"),
        ElementsAre("3 error: line 1 translates this text already; the program takes the translation that "
                    "sorts first, \"a\" in line 4",
                    "4 error: line 1 translates this text already; the program takes the translation that "
                    "sorts first, \"a\" in line 4"));
    EXPECT_THAT(Check("OK\ta\nOK\tb\n"),
                ElementsAre("2 error: line 1 translates this text already; the program takes "
                            "the translation that sorts first, \"a\" in line 1"));
    EXPECT_THAT(
        Check("OK\ta\nOK\t\n"),
        ElementsAre("2 error: line 1 translates this text already; the program takes the translation that "
                    "sorts first, \"\" in line 2",
                    "2 warning: the translation is empty: nothing will be shown"));
    EXPECT_THAT(Check("OK\ta\nOK\ta\n"),
                ElementsAre("2 warning: line 1 translates this text already, and in the same way"));
}

// For every order of three translations, the line that is named is the one that the program looks up.
TEST(CheckTranslation, AgreesWithTheProgramOnWhichCounts) {
    std::vector<std::string> values = {"", "A", "AA", "\xC3\xA4", "{x}"};
    std::sort(values.begin(), values.end());
    do {
        std::string contents;
        for (std::string const& value : values) contents += "OK\t" + value + "\n";
        FormatOverrideSet const set(MakeUTF8Ref(contents), ""_utf8);
        std::string const winner(ViewOf(set.GetOverride("OK"_utf8)));
        auto const line = std::find(values.begin(), values.end(), winner) - values.begin() + 1;
        EXPECT_THAT(Check(contents), testing::Contains(testing::EndsWith("\"" + winner + "\" in line " +
                                                                         std::to_string(line))));
    } while (std::next_permutation(values.begin(), values.end()));
}

TEST(CheckTranslation, KnowsTheVariablesOfTheOriginal) {
    EXPECT_THAT(
        Check("{x} of {y}\t{x} {z} {y}\n"),
        ElementsAre("1 error: the original has no variable \"{z}\", so that the text cannot be shown"));
    EXPECT_THAT(
        Check("OK\t{OK}\n"),
        ElementsAre("1 error: the original has no variable \"{OK}\", so that the text cannot be shown"));
    EXPECT_THAT(Check("{x} of {y}\t{x}\n"), ElementsAre("1 warning: the translation leaves out {y}"));
    EXPECT_THAT(Check("OK\t{_cbrace}{_cr}{_crlf}{_lf}{_obrace}{_tab}\n"), IsEmpty());
    EXPECT_THAT(Check("OK\t{_nope}\n"),
                ElementsAre("1 error: there is no variable \"{_nope}\", so that the text cannot be shown"));
    EXPECT_THAT(Check("OK\t{}\n"),
                ElementsAre("1 error: a variable has no name, {}, so that the text cannot be shown"));
}

TEST(CheckTranslation, SeesUnbalancedBraces) {
    EXPECT_THAT(Check("OK\ta{b\n"),
                ElementsAre("1 error: a { has no } behind it, so that the text cannot be shown"));
    EXPECT_THAT(Check("OK\t{\n"),
                ElementsAre("1 error: a { has no } behind it, so that the text cannot be shown"));
    EXPECT_THAT(Check("OK\ta}b\n"),
                ElementsAre("1 warning: a } has no { in front of it and will be shown as it stands"));
    EXPECT_THAT(
        Check("{x} of {y}\t{x} {{y}\n"),
        ElementsAre("1 error: the original has no variable \"{{y}\", so that the text cannot be shown",
                    "1 warning: the translation leaves out {y}"));
    EXPECT_THAT(Check("{x} of {y}\t{z} {x\n"),
                ElementsAre("1 error: the original has no variable \"{z}\", so that the text cannot be shown",
                            "1 error: a { has no } behind it, so that the text cannot be shown"));
}

TEST(CheckTranslation, SeesWhatIsNotUTF8) {
    EXPECT_THAT(Check("OK\tGut\nNow\tsp\xE4t\n"), ElementsAre("2 error: the line is not UTF-8"));
    EXPECT_THAT(Check("# sp\xE4t\n"), ElementsAre("1 error: the line is not UTF-8"));
    EXPECT_THAT(Check("N\xC3w\tx\n"), ElementsAre("1 error: the line is not UTF-8",
                                                  "1 error: the program has no text \"N\\xC3w\""));
    EXPECT_THAT(Check("Now\t\xED\xA0\x80\n"), ElementsAre("1 error: the line is not UTF-8"));
}

TEST(CheckTranslation, SeesAByteOrderMark) {
    std::string const sentence =
        "1 error: the file begins with a byte order mark, which the program takes for a part "
        "of the first key; save it as UTF-8 without one";
    EXPECT_THAT(Check("\xEF\xBB\xBFOK\tGut\nNow\tjetzt\n"), ElementsAre(sentence));
    EXPECT_THAT(Check("\xEF\xBB\xBF"), ElementsAre(sentence));
    CheckResult const result = CheckTranslation("\xEF\xBB\xBFOK\tGut\nNow\tjetzt\n", cTexts);
    EXPECT_THAT(LinesOf(result), testing::Contains("0 warning: there is no translation of \"OK\""));
    EXPECT_EQ(result.translated, 1u);
}

TEST(CheckTranslation, SeesTextThatIsLostBetweenTabs) {
    EXPECT_THAT(
        Check("OK\tGut\tBesser\n"),
        ElementsAre("1 error: the line has several tabs, and what stands between them is lost: \"Gut\""));
    EXPECT_THAT(Check("OK\ta\t\tb\tc\n"),
                ElementsAre("1 error: the line has several tabs, and what stands between them is lost: "
                            "\"a\\x09\\x09b\""));
    EXPECT_THAT(
        Check("OK\tGut\t\n"),
        ElementsAre("1 error: the line has several tabs, and what stands between them is lost: \"Gut\"",
                    "1 warning: the translation is empty: nothing will be shown"));
    EXPECT_THAT(Check("OK\t\t\tGut\n"), IsEmpty());
}

TEST(CheckTranslation, SeesLinesThatTheProgramPassesOver) {
    EXPECT_THAT(Check("OK    Gut\n"),
                ElementsAre("1 error: the line has no tab, so that the program passes over it: "
                            "\"OK    Gut\"; begin a comment with #"));
    EXPECT_THAT(Check("\tGut\n\t\n"),
                ElementsAre("1 error: the line begins with a tab, so that the program passes over it",
                            "2 error: the line begins with a tab, so that the program passes over it"));
}

TEST(CheckTranslation, ComparesBlanksAtTheEnds) {
    EXPECT_THAT(
        Check("OK\t Gut\n"),
        ElementsAre("1 warning: the translation does not begin with the same blanks as the original"));
    EXPECT_THAT(Check("OK\tGut \n"),
                ElementsAre("1 warning: the translation does not end with the same blanks as the original"));
    EXPECT_THAT(
        Check("  --  \t -  \n"),
        ElementsAre("1 warning: the translation does not begin with the same blanks as the original"));
}

TEST(CheckTranslation, SeesANUL) {
    EXPECT_THAT(Check(std::string("OK\ta\0b\n", 7)),
                ElementsAre("1 error: the translation holds a NUL, where the text will end on the screen"));
}

TEST(CheckTranslation, CountsLinesAsEditorsDo) {
    std::string const problem = " error: the program has no text \"x\"";
    EXPECT_THAT(Check("\r\n\r\nx\ty"), ElementsAre("3" + problem));
    EXPECT_THAT(Check("\r\rx\ty"), ElementsAre("3" + problem));
    EXPECT_THAT(Check("\n\nx\ty"), ElementsAre("3" + problem));
    EXPECT_THAT(
        Check("\n\rx\ty\r\n\nx\tz\n"),
        ElementsAre("3" + problem, "5" + problem,
                    "5 error: line 3 translates this text already; the program takes the translation that "
                    "sorts first, \"y\" in line 3"));
}

TEST(CheckTranslation, KnowsWhatALocaleCannotSpell) {
    std::string const contents = "OK\tSp\xC3\xA4t\nNow\t\xE2\x82\xAC\xE2\x82\xAC und \xE3\x81\x82\n";
    EXPECT_THAT(
        CheckInLocale("de_DE.ISO-8859-1", contents),
        ElementsAre("2 error: the locale's encoding, ISO-8859-1, cannot spell \"\xE2\x82\xAC\" (U+20AC), "
                    "\"\xE3\x81\x82\" (U+3042)"));
    EXPECT_THAT(
        CheckInLocale("C", contents),
        ElementsAre("1 error: the locale's encoding, ANSI_X3.4-1968, cannot spell \"\xC3\xA4\" (U+00E4)",
                    "2 error: the locale's encoding, ANSI_X3.4-1968, cannot spell \"\xE2\x82\xAC\" (U+20AC), "
                    "\"\xE3\x81\x82\" (U+3042)"));
    EXPECT_THAT(CheckInLocale("ja_JP.EUC-JP", "Now\t\xE3\x81\x82\n"), IsEmpty());
    EXPECT_THAT(CheckInLocale("de_DE.UTF-8", contents), IsEmpty());
    EXPECT_THAT(Check(contents), IsEmpty());
}

TEST(CheckTranslation, BearsWhatIsNoTextInAnyLocale) {
    EXPECT_THAT(CheckInLocale("de_DE.ISO-8859-1", "Now\tsp\xE4t\n"),
                ElementsAre("1 error: the line is not UTF-8"));
    EXPECT_THAT(CheckInLocale("de_DE.ISO-8859-1", std::string("OK\t\0\n", 5)), SizeIs(1));
}

// Ends within the time of a test only when no line costs more than the others.
TEST(CheckTranslation, TakesLargeFiles) {
    constexpr int cLines = 300000;
    std::string same, tabs(2000000, '\t'), braces = "{x} of {y}\t";
    for (int line = 0; line < cLines; ++line) {
        same += "OK\t" + std::to_string(line) + "\n";
        braces += "{z}";
    }
    EXPECT_THAT(Check(same), SizeIs(cLines - 1));
    EXPECT_THAT(Check(tabs), SizeIs(1));
    EXPECT_THAT(Check(braces), SizeIs(cLines + 2));
    EXPECT_THAT(Check(std::string(2000000, '\n')), IsEmpty());
}
