#include "tools/translation-checker/Template.h"
#include "tools/translation-checker/Texts.h"
#include "tools/translation-checker/TranslationCheck.h"

#include "foundation/Exceptions.h"

#include <gmock/gmock.h>
#include <sstream>

using namespace TranslationChecker;
using testing::ElementsAre;
using testing::IsEmpty;

namespace {

std::string TemplateOf(std::span<FormatText const> texts) {
    std::ostringstream out;
    WriteTemplate(out, texts);
    return out.str();
}

} // namespace

TEST(VariablesOf, AreThoseThatTheProgramFillsIn) {
    EXPECT_THAT(VariablesOf("{x} of {y}{x}"), ElementsAre("x", "y"));
    EXPECT_THAT(VariablesOf("&Paste{_tab}Ctrl-V }"), IsEmpty());
    EXPECT_THAT(VariablesOf(""), IsEmpty());
    EXPECT_THROW(VariablesOf("{x"), BadFormatStringError);
}

TEST(WriteTemplate, WritesAnEntryForEachTextBelowItsFile) {
    FormatText const texts[] = {{"OK", "a.cpp"},
                                {"  --  ", "a.cpp"},
                                {"{minutes} minutes, {seconds} seconds", "b.cpp"},
                                {"&Cut{_tab}Ctrl-X", "b.cpp"},
                                {"{a}\n\n{b}", "b.cpp"}};
    std::string const written = TemplateOf(texts);
    std::size_t const introduction = written.find("\n\n") + 1;
    EXPECT_EQ(written.substr(introduction),
              "\n# a.cpp\n"
              "OK\tOK\n"
              "  --  \t  --  \n"
              "\n# b.cpp\n"
              "# with {minutes}, {seconds}\n"
              "{minutes} minutes, {seconds} seconds\t{minutes} minutes, {seconds} seconds\n"
              "&Cut{_tab}Ctrl-X\t&Cut{_tab}Ctrl-X\n"
              "# cannot be translated: \"{a}\\x0A\\x0A{b}\"\n");
    EXPECT_TRUE(written.starts_with("# A translation"));
    EXPECT_EQ(written.substr(0, introduction).find('\t'), std::string::npos);
}

TEST(WriteTemplate, OfTheProgramPassesTheCheck) {
    CheckResult const result = CheckTranslation(TemplateOf(FormatTexts()), FormatTexts());
    EXPECT_THAT(result.findings, IsEmpty());
    EXPECT_GT(result.texts, 100u);
    EXPECT_EQ(result.translated, result.texts);
}

TEST(Quoted, ShowsWhatCannotBeSeen) {
    EXPECT_EQ(Quoted("a\xC3\xA4\t\x7F"), "\"a\xC3\xA4\\x09\\x7F\"");
    EXPECT_EQ(Quoted("a\xC3"), "\"a\\xC3\"");
    EXPECT_EQ(QuotedShort(std::string(60, 'x')), '"' + std::string(60, 'x') + '"');
    EXPECT_EQ(QuotedShort(std::string(61, 'x')), '"' + std::string(60, 'x') + "\"...");
    EXPECT_EQ(QuotedShort(std::string(59, 'x') + "\xC3\xA4"), '"' + std::string(59, 'x') + "\"...");
    EXPECT_EQ(QuotedShort(std::string(100, '\xA4')), "\"\"...");
}
