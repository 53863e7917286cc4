#include "tools/client-simulator/Scenario.h"

#include "tools/client-simulator/Documents.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

using namespace ClientSimulator;
using testing::IsEmpty;
using testing::SizeIs;
using testing::StartsWith;

namespace {

Scenario Parsed(std::string_view text) {
    return ParseScenario(text, "my.scenario");
}

template <typename Action>
Action Only(std::string_view text) {
    Scenario const scenario = Parsed(text);
    EXPECT_THAT(scenario.steps, SizeIs(1));
    return std::get<Action>(scenario.steps.at(0).action);
}

std::string Rendered(Template const& text) {
    return text.Render(RenderContext{});
}

std::string ErrorOf(std::string_view text) {
    try {
        Parsed(text);
    } catch (ScenarioError const& error) {
        return error.what();
    }
    return "no error";
}

struct BadScenario {
    std::string_view text;
    std::string_view error;
};

} // namespace

TEST(Scenario, EmptyLinesAndCommentsSayNothing) {
    EXPECT_THAT(Parsed("").steps, IsEmpty());
    EXPECT_THAT(Parsed("\n# a comment\n   \t\n   # another\r\n").steps, IsEmpty());
}

TEST(Scenario, StepsKnowTheirLines) {
    Scenario const scenario =
        Parsed("# head\nsend <<END\n<R>\n</R>\nEND\n\nexpect A\n  ID = 1\n\n  B = 2\npause 1s");
    ASSERT_THAT(scenario.steps, SizeIs(3));
    EXPECT_EQ(scenario.steps[0].line, 2);
    EXPECT_EQ(scenario.steps[1].line, 7);
    EXPECT_EQ(scenario.steps[2].line, 11);
    EXPECT_THAT(std::get<ExpectMessage>(scenario.steps[1].action).pattern.fields, SizeIs(2));
}

TEST(Scenario, SendTakesABlockAsItStands) {
    Send const send = Only<Send>("send <<EOT\n<R>\n\t<A>1</A>  \n\n</R>\n  EOT  \n");
    ASSERT_THAT(send.items, SizeIs(1));
    EXPECT_TRUE(send.items[0].framed);
    EXPECT_EQ(Rendered(send.items[0].bytes), "<R>\n\t<A>1</A>  \n\n</R>");
}

TEST(Scenario, SendTakesADocumentOnItsLine) {
    EXPECT_EQ(Rendered(Only<Send>("send <R><A>{duration 1s}</A></R>\n").items.at(0).bytes),
              "<R><A>PT1S</A></R>");
}

TEST(Scenario, SendBuildsADocumentFromFields) {
    EXPECT_EQ(
        Rendered(
            Only<Send>("send ActionRequest\n  ID = 7\n  Title = \" a < b \"\n  Empty =\n").items.at(0).bytes),
        "<ClientToUI>\n\t<ActionRequest>\n\t\t<ID>7</ID>\n\t\t<Title> a &lt; b "
        "</Title>\n\t\t<Empty></Empty>\n\t</ActionRequest>\n</ClientToUI>");
    EXPECT_EQ(Rendered(Only<Send>("send QuietModeEnd in Root").items.at(0).bytes),
              "<Root>\n\t<QuietModeEnd>\n\t</QuietModeEnd>\n</Root>");
}

TEST(Scenario, SendBuildsGroupsFromPaths) {
    EXPECT_EQ(
        Rendered(Only<Send>("send M in R\n A = 1\n G/B = 2\n G/C = 3\n H/I/J = 4\n D = 5").items.at(0).bytes),
        "<R>\n\t<M>\n\t\t<A>1</A>\n\t\t<G>\n\t\t\t<B>2</B>\n\t\t\t<C>3</C>\n\t\t</G>\n\t\t<H>\n\t\t\t<I>"
        "\n\t\t\t\t<J>4</J>\n\t\t\t</I>\n\t\t</H>\n\t\t<D>5</D>\n\t</M>\n</R>");
}

TEST(Scenario, BuiltDocumentsAreGoodOnes) {
    std::string const text = Rendered(Only<Send>("send M\n A = <&>\n G/B = \"\\\"\"\n").items.at(0).bytes);
    EXPECT_FALSE(FindProblem(text).has_value()) << text;
}

TEST(Scenario, UncheckedSendsAnything) {
    EXPECT_EQ(Rendered(Only<Send>("send unchecked <a/>").items.at(0).bytes), "<a/>");
    EXPECT_EQ(Rendered(Only<Send>("send unchecked <<E\nno xml\nE").items.at(0).bytes), "no xml");
    EXPECT_EQ(Rendered(Only<Send>("send unchecked <<E\nE").items.at(0).bytes), "");
}

TEST(Scenario, BytesAreHexNumbersAndTexts) {
    Send const send = Only<Send>("send bytes 00 fF u32:2097153 \"a b\\\"\\\\{repeat 2 x}\" 0A");
    ASSERT_THAT(send.items, SizeIs(1));
    EXPECT_FALSE(send.items[0].framed);
    std::uint32_t const number = 2097153;
    std::string const raw(reinterpret_cast<char const*>(&number), sizeof number);
    EXPECT_EQ(Rendered(send.items[0].bytes), std::string("\0\xff", 2) + raw + "a b\"\\xx\n");
}

TEST(Scenario, TogetherHoldsSeveralSends) {
    Send const send = Only<Send>(
        "together\n  send A\n    ID = 1\n  send <<E\n<R></R>\nE\n\n  # comment\n  send bytes 00\nend\n");
    ASSERT_THAT(send.items, SizeIs(3));
    EXPECT_EQ(Rendered(send.items[0].bytes), "<ClientToUI>\n\t<A>\n\t\t<ID>1</ID>\n\t</A>\n</ClientToUI>");
    EXPECT_EQ(Rendered(send.items[1].bytes), "<R></R>");
    EXPECT_FALSE(send.items[2].framed);
}

TEST(Scenario, ExpectTakesEveryForm) {
    ExpectMessage const message = Only<ExpectMessage>("expect ActionTaken in UIToClient within 5s");
    EXPECT_EQ(message.pattern.name, "ActionTaken");
    EXPECT_EQ(message.pattern.root, "UIToClient");
    EXPECT_EQ(message.within, Microseconds(5000000));
    EXPECT_FALSE(Only<ExpectMessage>("expect ActionTaken").within.has_value());
    EXPECT_EQ(Only<ExpectNothing>("expect nothing for 3s").duration, Microseconds(3000000));
    EXPECT_EQ(Only<ExpectEnd>("expect end within 3s").within, Microseconds(3000000));
    EXPECT_EQ(Only<ExpectExit>("expect exit 255").number, 255);
    EXPECT_TRUE(Only<ExpectExit>("expect signal PIPE within 1s").signal);
    EXPECT_EQ(Only<ExpectExit>("expect signal PIPE within 1s").number, 13);
    EXPECT_EQ(Only<ExpectExit>("expect signal 6").number, 6);
    EXPECT_FALSE(Only<ExpectDocument>("expect document <R></R>").exact);
    ExpectDocument const exact = Only<ExpectDocument>("expect exact within 2s <<E\n{{\n\t<x\nE");
    EXPECT_TRUE(exact.exact);
    EXPECT_EQ(exact.within, Microseconds(2000000));
    EXPECT_EQ(Rendered(exact.document), "{\n\t<x");
}

TEST(Scenario, ConditionsTakeEveryForm) {
    std::vector<FieldCheck> const checks =
        Only<ExpectMessage>(
            "expect A\n a = 1 2 \n b != \" x\"\n c contains y\n d/e near {now} within 5s\n f present\n"
            " g absent")
            .pattern.fields;
    ASSERT_THAT(checks, SizeIs(6));
    EXPECT_EQ(checks[0].kind, FieldCheck::Kind::Equal);
    EXPECT_EQ(Rendered(checks[0].value), "1 2");
    EXPECT_EQ(checks[1].kind, FieldCheck::Kind::NotEqual);
    EXPECT_EQ(Rendered(checks[1].value), " x");
    EXPECT_EQ(checks[2].kind, FieldCheck::Kind::Contains);
    EXPECT_EQ(checks[3].kind, FieldCheck::Kind::Near);
    EXPECT_EQ(checks[3].path, "d/e");
    EXPECT_EQ(checks[3].tolerance, Microseconds(5000000));
    EXPECT_EQ(checks[4].kind, FieldCheck::Kind::Present);
    EXPECT_EQ(checks[5].kind, FieldCheck::Kind::Absent);
}

TEST(Scenario, SmallDirectives) {
    EXPECT_EQ(Only<Pause>("pause 250ms").duration, Microseconds(250000));
    EXPECT_FALSE(Only<Close>("close").output);
    EXPECT_TRUE(Only<Close>("close output").output);
    EXPECT_EQ(Rendered(Only<Say>("say Hello, you  there").text), "Hello, you  there");
    EXPECT_EQ(Only<Ignore>("ignore ClientUIErrorMessage\n  ErrorCode = 1").pattern.fields.size(), 1u);
    EXPECT_EQ(Only<Ignore>("ignore any").pattern.name, "");
    EXPECT_EQ(Only<Let>("let deadline = {now+3s}").name, "deadline");
}

TEST(Scenario, VariablesAreKnownBelowTheirLet) {
    EXPECT_THAT(Parsed("let a = 1\nlet b = {a}{a}\nsay {b}").steps, SizeIs(3));
    EXPECT_THAT(ErrorOf("say {a}\nlet a = 1"), StartsWith("my.scenario:1: {a} is no substitution"));
}

TEST(Scenario, TakesTheEnvironmentFirst) {
    Scenario const scenario =
        Parsed("environment LC_ALL=de_DE.UTF-8\nenvironment DISPLAY\nenvironment EMPTY=\npause 1s");
    ASSERT_THAT(scenario.environment, SizeIs(3));
    EXPECT_EQ(scenario.environment[0].name, "LC_ALL");
    EXPECT_EQ(scenario.environment[0].value, "de_DE.UTF-8");
    EXPECT_EQ(scenario.environment[1].name, "DISPLAY");
    EXPECT_FALSE(scenario.environment[1].value.has_value());
    EXPECT_EQ(scenario.environment[2].value, "");
}

TEST(Scenario, ErrorsTellFileLineCauseAndRemedy) {
    BadScenario const bad[] = {
        {"\nplay music",
         "my.scenario:2: 'play' is no directive; expected send, together, expect, ignore, pause, "
         "close, say, let or environment"},
        {"pause 1s\n  ID = 1",
         "my.scenario:2: an indented line belongs to no directive; expected fields only "
         "below 'send NAME', 'expect NAME' and 'ignore NAME'"},
        {"pause", "my.scenario:1: a length of time is missing; expected, for example, 10s, 250ms or 1h30m"},
        {"pause soon",
         "my.scenario:1: 'soon' is no length of time; expected, for example, 10s, 250ms or 1h30m"},
        {"pause 1s 2s", "my.scenario:1: '2s' is too much; expected the end of the line"},
        {"expect A within 5",
         "my.scenario:1: '5' is no length of time; expected, for example, 10s, 250ms or 1h30m"},
        {"expect A 5s", "my.scenario:1: '5s' is too much; expected the end of the line"},
        {"expect answer", "my.scenario:1: 'answer' cannot be waited for; expected a message's name like "
                          "ActionTaken, or one of any, document, exact, nothing, end, exit and signal"},
        {"expect A in", "my.scenario:1: 'in' names no root element; expected, for example, in UIToClient"},
        {"expect nothing",
         "my.scenario:1: 'expect nothing' has no time; expected, for example, expect nothing for "
         "3s"},
        {"expect exit 256", "my.scenario:1: '256' is no exit status; expected a number from 0 to 255"},
        {"expect exit", "my.scenario:1: '' is no exit status; expected a number from 0 to 255"},
        {"expect signal FOO",
         "my.scenario:1: 'FOO' is no signal; expected a number, or a name such as PIPE, TERM "
         "or SEGV"},
        {"expect document",
         "my.scenario:1: the expected document is missing; expected <<END, or a document that "
         "begins with '<'"},
        {"expect A\n\n ID is 5",
         "my.scenario:3: 'is' is no condition; expected =, !=, contains, near, present or "
         "absent behind ID"},
        {"expect A\n 5 = 5", "my.scenario:2: '5' is no field; expected a name like ID, or a path like A/B"},
        {"expect A\n A//B = 5",
         "my.scenario:2: 'A//B' is no field; expected a name like ID, or a path like A/B"},
        {"expect A\n T near {now}",
         "my.scenario:2: 'near' has no tolerance; expected, for example, T near {now+1h} "
         "within 5s"},
        {"expect A\n T = \"x",
         "my.scenario:2: the quoted text does not end; expected a '\"' on the same line"},
        {"expect A\n T = \"x\" y", "my.scenario:2: 'y' is too much; expected the end of the line"},
        {"send",
         "my.scenario:1: '' cannot be sent; expected a message's name like ActionRequest, <<END, a document "
         "that begins with '<', 'unchecked' or 'bytes'"},
        {"send A\n ID 5", "my.scenario:2: the field ID has no value; expected ID = VALUE"},
        {"send A\n ID = 5\n B = 1\n ID = 6", "my.scenario:4: the field ID stands twice, or its group was "
                                             "left before; expected each once (a <<END block "
                                             "can hold any document)"},
        {"send A\n G/B = 5\n C = 1\n G/D = 6", "my.scenario:4: the field G/D stands twice, or its group was "
                                               "left before; expected each once (a <<END "
                                               "block can hold any document)"},
        {"send <<", "my.scenario:1: '<<' opens no block; expected a word behind it, as in <<END"},
        {"\nsend <<END\n<R></R>",
         "my.scenario:2: the block does not end; expected a line with the one word END"},
        {"send <<END\n<R>\n <A/>\n</R>\nEND", "my.scenario:3: bad document: the process knows no "
                                              "self-closing elements; expected <Name></Name> ('send "
                                              "unchecked' sends it all the same)"},
        {"send <<END\n<R>\n <A>{soon}</A>\n</R>\nEND\n", "my.scenario:3: {soon} is no substitution"},
        {"send <<END\n<R>\n <A></B>\n</R>\nEND\n", "my.scenario:3: bad document: "},
        {"send unchecked",
         "my.scenario:1: 'send unchecked' has no text; expected <<END, or a text that begins with "
         "'<'"},
        {"send bytes",
         "my.scenario:1: 'send bytes' has no bytes; expected, for example, u32:5 \"text\" 0d 0a"},
        {"send bytes 0",
         "my.scenario:1: '0' are no bytes; expected two hexadecimal digits, u32:NUMBER or a text in "
         "double quotes"},
        {"send bytes u32:4294967296",
         "my.scenario:1: 'u32:4294967296' are no bytes; expected two hexadecimal "
         "digits, u32:NUMBER or a text in double quotes"},
        {"together\nsend A", "my.scenario:1: 'together' does not end; expected a line with the one word end"},
        {"together\nend", "my.scenario:1: 'together' has nothing to send; expected 'send' lines"},
        {"together\n pause 1s\nend", "my.scenario:2: 'pause 1s' cannot stand here; expected 'send' or 'end'"},
        {"let now = 5",
         "my.scenario:1: 'now' cannot be given a value; expected a name of your own, as in let "
         "deadline = {now+10s}"},
        {"let a 5", "my.scenario:1: 'let' gives no value; expected let a = VALUE"},
        {"pause 1s\nenvironment A=B",
         "my.scenario:2: 'environment' comes too late, the process has been started; "
         "expected it before every step"},
        {"environment",
         "my.scenario:1: 'environment' names no variable; expected NAME=VALUE, or NAME to take it "
         "out"}};
    for (BadScenario const& scenario : bad)
        EXPECT_THAT(ErrorOf(scenario.text), StartsWith(std::string(scenario.error))) << scenario.text;
}

TEST(Scenario, EveryTruncationIsReadOrRefused) {
    std::string_view const text =
        "environment A=B\nlet x = {now+1s}\ntogether\n send A\n  B = {x}\n send bytes 00 "
        "\"x\"\nend\nsend <<E\n<R>{x}</R>\nE\nexpect A in R within 1s\n B near {x} within "
        "1s\nexpect exit 0\n";
    for (std::size_t i = 0; i <= text.size(); ++i) {
        std::string const error = ErrorOf(text.substr(0, i));
        EXPECT_TRUE(error == "no error" || error.starts_with("my.scenario:")) << error;
    }
}

TEST(LoadScenario, TellsOfAFileThatCannotBeRead) {
    try {
        LoadScenario("no/such/file.scenario");
        FAIL() << "expected an error";
    } catch (ScenarioError const& error) {
        EXPECT_STREQ(error.what(),
                     "no/such/file.scenario: the scenario cannot be read; expected a readable file");
    }
    EXPECT_THROW(LoadScenario(testing::TempDir()), ScenarioError);
}
