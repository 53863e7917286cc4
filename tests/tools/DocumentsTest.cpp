#include "tools/client-simulator/Documents.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

using namespace ClientSimulator;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

namespace {

struct BadDocument {
    std::string_view text;
    std::size_t offset;
    std::string_view what;
};

} // namespace

TEST(FindProblem, PassesGoodDocuments) {
    for (std::string_view const text :
         {"<a></a>",
          "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<a>\n\t<b>1 &lt; 2 &amp;&quot; &#x41;&#xa;</b>\n</a>",
          "<a><!-- <b/> --><![CDATA[<c/> &apos; ]]></a>", "<a b=\"/\" c='>'>x</a>", "<a>-</a>"}) {
        std::optional<DocumentProblem> const problem = FindProblem(text);
        EXPECT_FALSE(problem.has_value()) << text << ": " << (problem ? problem->what : "");
    }
}

TEST(FindProblem, FindsWhatTheProcessReadsAsSomethingElse) {
    BadDocument const bad[] = {
        {"<a><b/></a>", 3, "the process knows no self-closing elements; expected <Name></Name>"},
        {"<a><b c=\"d\" /></a>", 3, "the process knows no self-closing elements; expected <Name></Name>"},
        {"<a\n b=\"c\"></a>", 0,
         "the process takes only spaces between the words of a tag; expected the tag on one line"},
        {"<a><b-c></b-c></a>", 3, "the process drops '-' from an element's name; expected a name without it"},
        {"<a>it&apos;s</a>", 5,
         "the process does not know &apos;; expected &lt; &gt; &amp; &quot;, a hexadecimal reference below "
         "&#x80;, or the character itself"},
        {"<a>&#65;</a>", 3,
         "the process does not know &#65;; expected &lt; &gt; &amp; &quot;, a hexadecimal reference below "
         "&#x80;, or the character itself"},
        {"<a>&#xe9;</a>", 3,
         "the process does not know &#xe9;; expected &lt; &gt; &amp; &quot;, a hexadecimal reference below "
         "&#x80;, or the character itself"}};
    for (BadDocument const& document : bad) {
        std::optional<DocumentProblem> const problem = FindProblem(document.text);
        ASSERT_TRUE(problem.has_value()) << document.text;
        EXPECT_EQ(problem->what, document.what) << document.text;
        EXPECT_EQ(problem->offset, document.offset) << document.text;
    }
}

TEST(FindProblem, FindsWhatIsNoXml) {
    for (std::string_view const text : {"", "text", "<a>", "<a></b>", "<a></a><b></b>", "<a><b></a></b>"})
        EXPECT_TRUE(FindProblem(text).has_value()) << '"' << text << '"';
}

TEST(ReadableDocument, IndentsAndWritesEmptyElementsOut) {
    EXPECT_EQ(ReadableDocument("<?xml version=\"1.0\"?><a><b>1</b><c></c><d><![CDATA[<&>]]></d></a>"),
              "<a>\n  <b>1</b>\n  <c></c>\n  <d><![CDATA[<&>]]></d>\n</a>");
}

TEST(ReadableDocument, CutsLongTextsShort) {
    std::string const text = ReadableDocument("<a>" + std::string(5000, 'x') + "</a>");
    EXPECT_EQ(text, "<a>" + std::string(100, 'x') + "... (5000 bytes)</a>");
}

TEST(ReadableDocument, ShowsWhatIsNoXmlOnOneLine) {
    EXPECT_EQ(ReadableDocument(std::string_view("a\nb\0\xff", 5)), "a\\nb\\x00\xff");
}

TEST(ReadableDocument, BearsAMillionOpenElements) {
    std::string text;
    for (int i = 0; i < 1000000; ++i) text += "<a>";
    for (int i = 0; i < 1000000; ++i) text += "</a>";
    EXPECT_LT(ReadableDocument(text).size(), 1000u);
}

TEST(MessageNames, NamesEveryMessage) {
    EXPECT_EQ(MessageNames("<R><A></A><B>1</B></R>"), "A, B");
    EXPECT_EQ(MessageNames("<R></R>"), "(no message)");
    EXPECT_EQ(MessageNames(""), "(an empty frame)");
    EXPECT_THAT(MessageNames("nonsense"), HasSubstr("no XML"));
}

TEST(DocumentDifferences, SeesThroughWhiteSpaceAndEscapes) {
    EXPECT_THAT(DocumentDifferences("<a>\n <b>1 &lt; 2</b>\n</a>",
                                    "<?xml version=\"1.0\"?><a><b><![CDATA[1 < 2]]></b></a>"),
                IsEmpty());
}

TEST(DocumentDifferences, TellsEachDifference) {
    EXPECT_THAT(DocumentDifferences("<a><b>1</b><c>2</c></a>", "<a><b>7</b><c> 2</c></a>"),
                ElementsAre("a/b is \"7\"; expected \"1\"", "a/c is \" 2\"; expected \"2\""));
    EXPECT_THAT(DocumentDifferences("<a><b></b><c></c></a>", "<a><c></c><b></b></a>"),
                ElementsAre("a holds c, b; expected b, c"));
    EXPECT_THAT(DocumentDifferences("<a><b></b></a>", "<a></a>"),
                ElementsAre("a holds no elements; expected b"));
    EXPECT_THAT(DocumentDifferences("<a></a>", "<b></b>"), ElementsAre("its root is b; expected a"));
    EXPECT_THAT(DocumentDifferences("<a></a>", "<a b=\"c\"></a>"),
                ElementsAre("a has the attributes b=\"c\" where expected are "));
}

TEST(TextDifferences, ShowsTheFirstOne) {
    EXPECT_THAT(TextDifferences("same", "same"), IsEmpty());
    EXPECT_THAT(TextDifferences("one\ntwo", "one\nto"),
                ElementsAre("it differs from byte 5 on: it has \"one\\nto\"; expected \"one\\ntwo\""));
}
