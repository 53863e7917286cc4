#include "tools/client-simulator/Template.h"

#include <cstdlib>
#include <fstream>
#include <gtest/gtest.h>

using namespace ClientSimulator;

namespace {

RenderContext Context() {
    RenderContext context;
    context.now = std::chrono::sys_seconds(std::chrono::seconds(1293955509));
    context.temporaryDirectory = "/tmp/run";
    context.variables = {{"title", "Fish & Chips"}};
    return context;
}

std::string Rendered(std::string_view text, Template::Kind kind = Template::Kind::Plain) {
    return Template::Parse(text, kind, {"title"}).Render(Context());
}

struct Case {
    std::string_view source;
    std::string_view rendered;
};

std::string ErrorOf(std::string_view text, std::size_t* offset = nullptr) {
    try {
        Template::Parse(text, Template::Kind::Plain, {"title"});
    } catch (TemplateError const& error) {
        if (offset != nullptr) *offset = error.offset;
        return error.what();
    }
    return "no error";
}

} // namespace

TEST(Template, CarriesOutSubstitutions) {
    Case const cases[] = {{"", ""},
                          {"plain } text", "plain } text"},
                          {"{now}", "Sun, 02 Jan 2011 08:05:09 +0000"},
                          {"{now+10s}", "Sun, 02 Jan 2011 08:05:19 +0000"},
                          {"{now-90m}", "Sun, 02 Jan 2011 06:35:09 +0000"},
                          {"{now+16h}", "Mon, 03 Jan 2011 00:05:09 +0000"},
                          {"{now+500ms}", "Sun, 02 Jan 2011 08:05:09 +0000"},
                          {"{duration 90s}", "PT1M30S"},
                          {"{duration -5m}", "-PT5M"},
                          {"{tempdir}/session", "/tmp/run/session"},
                          {"{title}!", "Fish & Chips!"},
                          {"{base64 Hello}", "SGVsbG8="},
                          {"{base64 any}", "YW55"},
                          {"{base64 four}", "Zm91cg=="},
                          {"{repeat 3 ab}", "ababab"},
                          {"{repeat 2  x}", " x x"},
                          {"one{newline}two", "one\ntwo"},
                          {"{{now} {{{{", "{now} {{"},
                          {"<{duration 1s}><{title}>", "<PT1S><Fish & Chips>"}};
    for (Case const& example : cases) EXPECT_EQ(Rendered(example.source), example.rendered) << example.source;
}

TEST(Template, EscapesLateValuesInXmlButNotInCData) {
    EXPECT_EQ(Rendered("<a>{title}</a>", Template::Kind::Xml), "<a>Fish &amp; Chips</a>");
    EXPECT_EQ(Rendered("<![CDATA[{title}]]>{title}", Template::Kind::Xml),
              "<![CDATA[Fish & Chips]]>Fish &amp; Chips");
}

TEST(Template, AsXmlTextEscapesAllOfIt) {
    EXPECT_EQ(Template::Parse("<{title}>", Template::Kind::Plain, {"title"}).AsXmlText().Render(Context()),
              "&lt;Fish &amp; Chips&gt;");
}

TEST(Template, LiteralKeepsItsBraces) {
    EXPECT_EQ(Template::Literal("{now}").Render(Context()), "{now}");
}

TEST(Template, PlaceholdersStandForLateValuesOnly) {
    EXPECT_EQ(Template::Parse("{now}{newline}{duration 1s}{title}", Template::Kind::Plain, {"title"})
                  .WithPlaceholders(),
              "xxPT1Sx");
}

TEST(Template, ReadsTheEnvironment) {
    setenv("TEMPLATE_TEST_VARIABLE", "there", 1);
    EXPECT_EQ(Rendered("{env TEMPLATE_TEST_VARIABLE}"), "there");
    EXPECT_THROW(Rendered("{env TEMPLATE_TEST_NO_SUCH_VARIABLE}"), RenderError);
}

TEST(Template, ReadsFilesBesideTheScenario) {
    RenderContext context = Context();
    context.scenarioDirectory = testing::TempDir();
    std::ofstream(context.scenarioDirectory / "template-test.bin", std::ios::binary) << "Hello";
    Template const file = Template::Parse("{base64-file template-test.bin}", Template::Kind::Plain, {});
    EXPECT_EQ(file.Render(context), "SGVsbG8=");
    std::filesystem::remove(context.scenarioDirectory / "template-test.bin");
    EXPECT_THROW(file.Render(context), RenderError);
}

TEST(Template, TellsWhatIsWrongAndWhere) {
    std::size_t offset = 0;
    EXPECT_EQ(ErrorOf("ab{foo}", &offset).substr(0, 25), "{foo} is no substitution;");
    EXPECT_EQ(offset, 2u);
    EXPECT_EQ(ErrorOf("{now+soon}"),
              "'soon' is no length of time; expected, for example, {now+10s} or {now-1h30m}");
    EXPECT_EQ(ErrorOf("{duration x}"), "'x' is no length of time; expected, for example, {duration 1h30m}");
    EXPECT_EQ(ErrorOf("{now\n}"),
              "a substitution does not end; expected '}' on the same line (write {{ for a plain brace)");
    EXPECT_EQ(ErrorOf("{repeat x}"),
              "{repeat} needs a number and a text; expected, for example, {repeat 1000 x}");
    EXPECT_EQ(ErrorOf("{repeat 999999999 x}"), "{repeat} makes a text of more than 64 MiB; expected less");
    for (std::string_view const text :
         {"{", "{}", "{ now}", "{Now}", "{tempdir }", "{env}", "{repeat 3}", "{base64}"})
        EXPECT_NE(ErrorOf(text), "no error") << text;
}
