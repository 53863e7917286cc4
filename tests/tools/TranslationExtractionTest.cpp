#include "tools/translation-checker/CppTokens.h"
#include "tools/translation-checker/TextExtraction.h"

#include <gmock/gmock.h>

using namespace TranslationChecker;
using testing::ElementsAre;
using testing::IsEmpty;

namespace {

using Texts = std::vector<std::string>;

Extraction Extract(std::string const& source, std::vector<KnownArgument> const& known = {}) {
    return ExtractTexts({{"room/File.cpp", source}}, known);
}

Texts TextsOf(Extraction const& extraction) {
    Texts texts = extraction.problems;
    for (FoundText const& text : extraction.texts) texts.push_back(text.text);
    return texts;
}

// What was found; the problems stand in front, so that none goes unseen.
Texts Found(std::string const& source, std::vector<KnownArgument> const& known = {}) {
    return TextsOf(Extract(source, known));
}

Texts ProblemsOf(std::string const& source, std::vector<KnownArgument> const& known = {}) {
    return Extract(source, known).problems;
}

std::string const cNoLiteral = "; write it as one, or tell in KnownArguments.cpp where its texts come from";

std::vector<KnownArgument> Known(std::string_view expression, std::vector<TextVariable> variables) {
    return {{"room/File.cpp", expression, std::move(variables)}};
}

Texts WordsOf(std::string const& source) {
    Texts words;
    for (CppToken const& token : ReadCppTokens(source)) words.push_back(token.text);
    return words;
}

std::string LiteralOf(std::string const& source) {
    std::vector<CppToken> const tokens = ReadCppTokens(source);
    if (tokens.size() != 1 || tokens[0].kind != CppToken::Kind::Literal) return "not one literal";
    return tokens[0].text;
}

std::string ErrorOf(std::string const& source) {
    try {
        ReadCppTokens(source);
    } catch (SourceError const& error) {
        return std::to_string(error.Line()) + ": " + error.what();
    }
    return "no error";
}

} // namespace

TEST(CppTokens, AreWordsNumbersAndSigns) {
    EXPECT_THAT(
        WordsOf("a1::b_->c(1'000.5f, x == y && z);"),
        ElementsAre("a1", "::", "b_", "->", "c", "(", "1'000.5f", ",", "x", "==", "y", "&&", "z", ")", ";"));
}

TEST(CppTokens, LeaveCommentsAndDirectivesOutButTheBodiesOfMacros) {
    EXPECT_THAT(WordsOf("a // b \"\n/* c\n' */ d /**/ e"), ElementsAre("a", "d", "e"));
    EXPECT_THAT(WordsOf("#include \"text.h\"\n  # if it's\na\n#define X f(1) \\\n g"),
                ElementsAre("a", "define", "X", "f", "(", "1", ")", "g"));
    EXPECT_THAT(WordsOf("a#b"), ElementsAre("a", "#", "b"));
    EXPECT_THAT(WordsOf("a /* that does not end"), ElementsAre("a"));
}

TEST(CppTokens, KnowTheirLines) {
    std::vector<CppToken> const tokens = ReadCppTokens("a\n\n/*\n*/ b // c\nR\"(1\n2)\" d");
    ASSERT_EQ(tokens.size(), 4u);
    EXPECT_EQ(tokens[0].line, 1u);
    EXPECT_EQ(tokens[1].line, 4u);
    EXPECT_EQ(tokens[2].line, 5u);
    EXPECT_EQ(tokens[3].line, 6u);
}

TEST(CppTokens, ResolveEscapes) {
    EXPECT_EQ(LiteralOf(R"("a\n\t\r\a\b\f\v\\\'\"\?z")"), "a\n\t\r\a\b\f\v\\'\"?z");
    EXPECT_EQ(LiteralOf(R"("\101\1012\x41\xC3\xa4")"), "AA2A\xC3\xA4");
    EXPECT_EQ(LiteralOf(R"("\0")"), std::string(1, '\0'));
    EXPECT_EQ(LiteralOf(R"("\u00e4\u20AC\U0001F600")"), "\xC3\xA4\xE2\x82\xAC\xF0\x9F\x98\x80");
    EXPECT_EQ(LiteralOf("\"one \\\ntwo\""), "one two");
}

TEST(CppTokens, ReadLiteralsOfEveryForm) {
    EXPECT_EQ(LiteralOf("\"\""), "");
    EXPECT_EQ(LiteralOf("u8\"text\""), "text");
    EXPECT_EQ(LiteralOf("L\"text\""), "text");
    EXPECT_EQ(LiteralOf("\"text\"_utf8"), "text");
    EXPECT_EQ(LiteralOf("\"// /* '\""), "// /* '");
    EXPECT_EQ(LiteralOf("R\"(a\\n\"\n)\""), "a\\n\"\n");
    EXPECT_EQ(LiteralOf("R\"end(a)\" )end\"_utf8"), "a)\" ");
    EXPECT_EQ(LiteralOf("u8R\"(a)\""), "a");
    EXPECT_THAT(WordsOf("'\"' L'\\'' x"), ElementsAre("", "", "x"));
    EXPECT_THAT(WordsOf("u R L8"), ElementsAre("u", "R", "L8"));
}

TEST(CppTokens, RefuseWhatNoCompilerTakes) {
    EXPECT_EQ(ErrorOf("\n\"text"), "2: a literal does not end");
    EXPECT_EQ(ErrorOf("\"text\n\""), "1: a literal does not end");
    EXPECT_EQ(ErrorOf("\"text\\"), "1: a literal does not end");
    EXPECT_EQ(ErrorOf("R\"x(text)\""), "1: a literal does not end");
    EXPECT_EQ(ErrorOf("'"), "1: a literal does not end");
    EXPECT_EQ(ErrorOf("\"\\q\""), "1: a literal has the unknown escape \\q");
    EXPECT_EQ(ErrorOf("\"\\x100\""), "1: a literal has an escape that is no character");
    EXPECT_EQ(ErrorOf("\"\\777\""), "1: a literal has an escape that is no character");
    EXPECT_EQ(ErrorOf("\"\\xg\""), "1: a literal has an escape that is no character");
    EXPECT_EQ(ErrorOf("\"\\u\""), "1: a literal has an escape that is no character");
}

TEST(ExtractTexts, FindsTheLiteralsOfCalls) {
    EXPECT_THAT(Found("x = MakeUString(UFormat(\"{a} of {b}\") % a % b); *ControlLiteral(\"OK\");"),
                ElementsAre("{a} of {b}", "OK"));
    EXPECT_THAT(Found("::UFormat(\"key\"_utf8, \"default\"_utf8, context)"), ElementsAre("key"));
    EXPECT_THAT(Found("UFormat(\n    \"one \"\n    // a comment\n    \"two\\n\")"), ElementsAre("one two\n"));
    EXPECT_THAT(Found("#define GREETING UFormat(\"Hello\")"), ElementsAre("Hello"));
}

TEST(ExtractTexts, FindsBothTextsOfAChoice) {
    EXPECT_THAT(Found("UFormat(n == 1 ? \"one\" : \"many\")"), ElementsAre("one", "many"));
    EXPECT_THAT(Found("UFormat(A::b(x ? y : z) ? \"one\" : C::d ? \"two\" : \"th\" \"ree\")"),
                ElementsAre("one", "two", "three"));
    EXPECT_THAT(ProblemsOf("UFormat(a ? \"one\" : b)"),
                ElementsAre("room/File.cpp:1: the text of UFormat is no literal: a?\"one\":b" + cNoLiteral));
    EXPECT_THAT(ProblemsOf("UFormat(a ? b ? \"1\" : \"2\" : \"3\")"), testing::SizeIs(1));
}

TEST(ExtractTexts, GivesEachTextOnceInTheOrderOfTheSources) {
    Extraction const extraction = ExtractTexts({{"b.cpp", "Text(\"later\"); UFormat(\"b\"); UFormat(\"\");"},
                                                {"a.cpp", "UFormat(\"a\"), UFormat(\"b\")"}},
                                               {});
    EXPECT_THAT(extraction.problems, IsEmpty());
    EXPECT_THAT(extraction.texts, ElementsAre(FoundText{"b", "b.cpp"}, FoundText{"a", "a.cpp"}));
}

TEST(ExtractTexts, PassesDeclarationsOver) {
    EXPECT_THAT(Found("FormatPlusArguments<0> UFormat(char const* text);"
                      "FormatPlusArguments<0> UFormat(UStringRef<UTF8> const& key, UStringRef<UTF8> const&);"
                      "void UFormat(Key&& key); void UFormat(char const*); void UFormat(Local<Bit> text);"
                      "template <class T> void ControlLiteral(T text);"),
                IsEmpty());
}

TEST(ExtractTexts, PassesOverWhatWasMadeBefore) {
    EXPECT_THAT(Found("ControlLiteral(LocalizedStrings::OK()); ControlLiteral(MakeLocalString<UTF8>(x));"
                      "ControlLiteral(std::move(text));"),
                IsEmpty());
    EXPECT_THAT(ProblemsOf("ControlLiteral(LocalizedStrings); ControlLiteral(std::string(text));"),
                testing::SizeIs(2));
}

TEST(ExtractTexts, FollowsAParameterToTheCallsOfItsFunction) {
    EXPECT_THAT(Found("namespace {\n"
                      "AutoUString<UTF8> Text(char const* text) { return MakeUString(UFormat(text)); }\n"
                      "} // namespace\n"
                      "AutoUString<UTF8> Progress() { return Text(\"Progress\"); }\n"
                      "void f() { widget.Text(other); widget->Text(other); }"),
                ElementsAre("Progress"));
}

TEST(ExtractTexts, FollowsParametersThroughSeveralFunctionsAtAnyPlace) {
    EXPECT_THAT(
        Found("namespace Room { namespace {\n"
              "void Many(int n, char const* many) noexcept { if (n) { UFormat(many) % n; } }\n"
              "void OneOrMany(char const* one, char const* many, Map<int> n)\n"
              "{ return n == 1 ? Text(one) : Many(n, many); }\n"
              "void Text(char const* text) { return UFormat(text); }\n"
              "}\n"
              "void f() { OneOrMany(\"1 day\", \"{n} days\", (1, 2)); Many(f(1, 2), \"{n} hours\"); }\n"
              "}"),
        ElementsAre("1 day", "{n} days", "{n} hours"));
}

TEST(ExtractTexts, SeesThatAWrapperIsGivenNoLiteral) {
    EXPECT_THAT(
        ProblemsOf("namespace { void Text(char const* text) { UFormat(text); } }\n"
                   "void f(std::string text) {\n    Text(text.c_str());\n    Text();\n    g(Text);\n}"),
        ElementsAre("room/File.cpp:3: the text of Text is no literal: text.c_str()" + cNoLiteral,
                    "room/File.cpp:4: a call of Text lacks its text",
                    "room/File.cpp:5: Text is named here and not called"));
}

TEST(ExtractTexts, KeepsFunctionsOfUnnamedNamespacesToTheirFiles) {
    std::string const wrapper = "void Text(char const* text) { UFormat(text); }";
    EXPECT_THAT(
        TextsOf(ExtractTexts({{"a.cpp", "namespace { " + wrapper + " }"}, {"b.cpp", "Text(\"b\")"}}, {})),
        IsEmpty());
    EXPECT_THAT(TextsOf(ExtractTexts(
                    {{"a.cpp", "namespace A::B { " + wrapper + " }"}, {"b.cpp", "Text(\"b\")"}}, {})),
                ElementsAre("b"));
}

// By their names alone, calls of members cannot be told from others.
TEST(ExtractTexts, DoesNotFollowMembersAndLambdas) {
    for (std::string const source : {"void Row::Show(char const* text) { UFormat(text); }",
                                     "struct Row { void Show(char const* text) { UFormat(text); } };",
                                     "auto const show = [](char const* text) { UFormat(text); };",
                                     "void f(std::string text) { UFormat(text); }",
                                     "void g(char const* text) {} void f() { UFormat(text); }"})
        EXPECT_THAT(ProblemsOf(source),
                    ElementsAre("room/File.cpp:1: the text of UFormat is no literal: text" + cNoLiteral));
}

TEST(ExtractTexts, TakesKnownArgumentsFromTables) {
    std::string const source = "Row const cRows[2] = {{\"a\", 1}, {\"b \" \"c\", 2}}; int x = \"no\";\n"
                               "std::array<Row, 1> const cMore = {{\"d\"}};\n"
                               "for (Row const& row : cRows) UFormat(row . text);";
    EXPECT_THAT(Found(source, Known("row.text", {{"cRows"}, {"cMore", "room/File.cpp"}})),
                ElementsAre("a", "b c", "d"));
    EXPECT_THAT(ProblemsOf(source, Known("row.text", {{"cRows"}, {"cMore", "room/Other.cpp"}})),
                ElementsAre("no text is assigned to cMore, from which room/File.cpp takes its texts"));
}

TEST(ExtractTexts, TakesKnownArgumentsFromAssignments) {
    std::vector<KnownArgument> const known = Known("view.label", {{"label"}});
    EXPECT_THAT(
        Found("struct View { char const* label = \"Snooze\"; };\n"
              "View const view{.label = pending ? \"Wait\" : \"Go\", .size = 1};\n"
              "void f() { view.label = \"Close\"; if (view.label == other) ControlLiteral(view.label); }",
              known),
        ElementsAre("Snooze", "Wait", "Go", "Close"));
    EXPECT_THAT(
        ProblemsOf("label = \"a\"; label = other; label = {other}; ControlLiteral(view.label)", known),
        ElementsAre("room/File.cpp:1: label is assigned what is no literal: other",
                    "room/File.cpp:1: label is assigned what is no literal: {other}"));
}

TEST(ExtractTexts, TellsOfKnownArgumentsThatAreThereNoMore) {
    EXPECT_THAT(
        ProblemsOf("UFormat(\"a\")", Known("row.text", {})),
        ElementsAre("nothing in room/File.cpp takes its text from row.text any more; take that line out of "
                    "KnownArguments.cpp"));
}

TEST(ExtractTexts, TellsThePlaceOfWhatItCannotRead) {
    EXPECT_THAT(ProblemsOf("\n\nUFormat(row.text)"),
                ElementsAre("room/File.cpp:3: the text of UFormat is no literal: row.text" + cNoLiteral));
    EXPECT_THAT(ProblemsOf("\nUFormat(\"a\" NAME)"),
                ElementsAre("room/File.cpp:2: the text of UFormat is no literal: \"a\"NAME" + cNoLiteral));
    EXPECT_THAT(ProblemsOf("auto f = UFormat;"),
                ElementsAre("room/File.cpp:1: UFormat is named here and not called"));
    EXPECT_THAT(ProblemsOf("UFormat()"), ElementsAre("room/File.cpp:1: a call of UFormat lacks its text"));
    EXPECT_THAT(ProblemsOf("f(\n)\n}"), ElementsAre("room/File.cpp:3: a bracket closes nothing"));
    EXPECT_THAT(ProblemsOf("f(\n"), ElementsAre("room/File.cpp:1: a bracket is not closed"));
    EXPECT_THAT(ProblemsOf("\n\""), ElementsAre("room/File.cpp:2: a literal does not end"));
}
