#include "xml/SimpleXMLParserPL.h"

#include "tests/xml/Recording.h"
#include "tests/xml/ReferenceParser.h"

#include <gtest/gtest.h>

#include <random>
#include <stdexcept>

namespace {

using namespace std::string_literals;

struct Case {
    std::string document;
    Calls calls;
};

// Documents and the calls that they give in one piece. Each set is used whole, cut and truncated.

std::vector<Case> const cTexts = {
    {"", {}},
    {"text", {}},
    {"<a>x</a>", {"<a", "\"x", ">a"}},
    {"before<a></a>after", {"\"before", "<a", ">a"}},
    {"<a>x>y]]>z</a>", {"<a", "\"x>y]]>z", ">a"}},
    {"<a>\t\r\n \x80\xFF</a>", {"<a", "\"\t\r\n \x80\xFF", ">a"}},
    {"<a>\0\0</a>"s, {"<a", "\"\0\0"s, ">a"}},
    {"<a>x<b></b>y</a>", {"<a", "\"x", "<b", ">b", "\"y", ">a"}},
    {"<a>\xC3\xA9</a>", {"<a", "\"\xC3\xA9", ">a"}},
};

std::vector<Case> const cEntities = {
    {"<a>x&lt;y</a>", {"<a", "\"x", "\"<", "\"y", ">a"}},
    {"<a>&lt;&gt;&amp;&quot;</a>", {"<a", "\"<", "\">", "\"&", "\"\"", ">a"}},
    {"<a>&apos;</a>", {"<a", "\"&apos;", ">a"}},
    {"<a>&;</a>", {"<a", "\"&;", ">a"}},
    {"<a>&LT;&lt ;</a>", {"<a", "\"&LT;", "\"&lt ;", ">a"}},
    {"<a>&nbsp;</a>", {"<a", "\"&nbsp;", ">a"}},
    {"<a>&a<b>&c;</a>", {"<a", "\"&a<b>&c;", ">a"}},
    {"<a>&\0;</a>"s, {"<a", "\"&\0;"s, ">a"}},
    {"<a>&#65;</a>", {"<a", "\"&#65;", ">a"}},
    {"<a>&#X41;</a>", {"<a", "\"&#X41;", ">a"}},
    {"<a>&#;</a>", {"<a", "\"&#;", ">a"}},
    {"<a>&#x41;</a>", {"<a", "\"A", ">a"}},
    {"<a>&#xe9;&#xE9;</a>", {"<a", "\"\xE9", "\"\xE9", ">a"}},
    {"<a>&#x0;&#x;</a>", {"<a", "\"\0"s, "\"\0"s, ">a"}},
    {"<a>&#xff;&#x100;</a>", {"<a", "\"\xFF", "\"&#x100;", ">a"}},
    {"<a>&#x41zz;&#x z;</a>", {"<a", "\"A", "\"\0"s, ">a"}},
    {"<a>&#x 41;&#x\t+41;&#x0x41;</a>", {"<a", "\"A", "\"A", "\"A", ">a"}},
    {"<a>&#x4\0001;</a>"s, {"<a", "\"\4", ">a"}},
    // Below zero the low eight bits count.
    {"<a>&#x-1;&#x-100;&#x-bf;</a>", {"<a", "\"\xFF", "\"\0"s, "\"A", ">a"}},
    // The value counts in 32 bits, and one beyond 64 bits is all ones before that.
    {"<a>&#x100000041;</a>", {"<a", "\"A", ">a"}},
    {"<a>&#x7fffffff;&#x80000000;</a>", {"<a", "\"&#x7fffffff;", "\"\0"s, ">a"}},
    {"<a>&#xffffffffffffffffff;</a>", {"<a", "\"\xFF", ">a"}},
    {"<a>&#x-ffffffffffffffffff;</a>", {"<a", "\"\0"s, ">a"}},
    {"<a b='&lt;&gt;&amp;&quot;'></a>", {"<a|b=<>&\"", ">a"}},
    {"<a b='1&#x41;2&apos;3&;'></a>", {"<a|b=1A2&apos;3&;", ">a"}},
    {"<a b='&quot;' c=\"&'\"\";\"></a>", {"<a|b=\"|c=&'\"\";", ">a"}},
};

std::vector<Case> const cTags = {
    {"<>", {"<"}},
    {"<></>", {"<", ">"}},
    {"<a>", {"<a"}},
    {"<  a></a>", {"<a", ">a"}},
    {"< >", {"<"}},
    {"<a ></a >", {"<a", ">a "}},
    {"<a></b>", {"<a", ">b"}},
    {"</x>", {">x"}},
    {"<a><b></a></b>", {"<a", "<b", ">a", ">b"}},
    {"<a/>", {">a"}},
    {"<a/b>", {">ab"}},
    {"</a/b c='d'>", {">a/b c='d'"}},
    {"<a b=\"c\"/><d e=\"f\">", {"<a|b=c|/><d e=f"}},
    {"<a b=\"c\"/>", {}},
    {"<a<b>", {"<a<b"}},
    {"<a&lt;b>", {"<a&lt;b"}},
    {"<a\tb=\"c\">", {"<a\tb=\"c\""}},
    {"<a\nb>", {"<a\nb"}},
    {"<\0>"s, {"<\0"s}},
    {"<a=\"x>y\"><b>", {"<a=\"x", "\"y\">", "<b"}},
    {"<!DOCTYPE a>", {}},
    {"<!DOCTYPE>", {"<!DOCTYPE"}},
    {"<!DOCTYPE a='b'>", {"<!DOCTYPE|a=b"}},
    {"<![CDATA>", {"<![CDATA"}},
    {"<![CDATA [>x='y'>", {"<![CDATA|[>x=y"}},
    {"<![cdata[x]]>", {"<![cdata[x]]"}},
};

std::vector<Case> const cDashes = {
    {"<a-b>", {"<ab"}},
    {"<-a>", {"<a"}},
    {"<->", {"<"}},
    {"<a-b-c>", {}},
    {"<a-b-c-->x<d>", {"\"x", "<d"}},
    {"<--><d>", {}},
    {"</a-b-c>", {">a-b-c"}},
    {"<a/-b-->", {">a-b--"}},
    {"<a b-c--d='e-f--g'>", {"<a|b-c--d=e-f--g"}},
    {"<?a-b->", {}},
    // The dropped dash does not keep a section from being one.
    {"<!-[CDATA[x]]>", {"\"x"}},
};

std::vector<Case> const cComments = {
    {"<!-- a - b -- c --><d>", {"<d"}},
    {"<!----><d>", {"<d"}},
    {"<!--><d>", {}},
    {"<!---><d>", {}},
    {"<!--->->x<d>", {}},
    {"<!--><d>--><e>", {"<e"}},
    {"<!-----><d>", {"<d"}},
    {"<!-- > -> -- > -->x<d>", {"\"x", "<d"}},
    {"<!-- <a> &lt; <![CDATA[ -->x<d>", {"\"x", "<d"}},
    {"<!--\0--><d>"s, {"<d"}},
};

std::vector<Case> const cSections = {
    {"<![CDATA[a]b]]><c>", {"\"a]b", "<c"}},
    {"<![CDATA[]]>", {}},
    {"<![CDATA[]]]>", {"\"]"}},
    {"<![CDATA[]]]]>", {"\"]]"}},
    {"<![CDATA[>]]>", {"\">"}},
    {"<![CDATA[]>]]>", {"\"]>"}},
    {"<![CDATA[x]>y]]>", {"\"x]>y"}},
    {"<![CDATA[] ]>]]>", {"\"] ]>"}},
    {"<![CDATA[a&lt;<b>&]]>", {"\"a&lt;<b>&"}},
    {"<![CDATA[<![CDATA[x]]>y]]><c>", {"\"<![CDATA[x", "\"y]]>", "<c"}},
    {"<![CDATA[a]]><![CDATA[b]]>", {"\"a", "\"b"}},
    {"x<![CDATA[a]]>y<c>", {"\"x", "\"a", "\"y", "<c"}},
    {"<![CDATA[a\0b]]>"s, {"\"ab"}},
    {"<![CDATA[\0]]>"s, {}},
    {"<![CDATA[\0\0\0a\0\0\0]]>"s, {"\"a"}},
    // A NUL byte is lost, and yet it stands between its neighbours.
    {"<![CDATA[]\0]>x]]>"s, {"\"]]>x"}},
    {"<![CDATA[a]]\0>]]>"s, {"\"a]]>"}},
    {"<![CDATA[\n\xC3\xA9\n]]>", {"\"\n\xC3\xA9\n"}},
};

std::vector<Case> const cAttributes = {
    {"<a b='1' c=\"2\"></a>", {"<a|b=1|c=2", ">a"}},
    {"<a b=\"it's\" c='say \"x\"'>", {"<a|b=it's|c=say \"x\""}},
    {"<a b='' c=\"\">", {"<a|b=|c="}},
    {"<a b='1'c='2'>", {"<a|b=1|c=2"}},
    {"<a   b='1'   >", {"<a|b=1"}},
    {"<a ? b='1' ? >", {"<a|b=1"}},
    {"<a b =\"c\">", {"<a|b =c"}},
    {"<a b=  x  \"c\">", {"<a|b=c"}},
    {"<a\t b='c'>", {"<a\t|b=c"}},
    {"<a \tb='c'>", {"<a|\tb=c"}},
    {"<a \nb='c'>", {"<a|\nb=c"}},
    {"<a b='1'\n c='2'>", {"<a|b=1|\n c=2"}},
    {"<a =b='c'>", {"<a|=b=c"}},
    {"<a =='c'>", {"<a|==c"}},
    {"<a b c='d'>", {"<a|b c=d"}},
    {"<a b><c d='e'>", {"<a|b><c d=e"}},
    {"<a b='x>y</a>z'>", {"<a|b=x>y</a>z"}},
    {"<a b='1' b='2'>", {"<a|b=1|b=2"}},
    {"<a b='\0'>"s, {"<a|b=\0"s}},
    {"<a b='1'><c><d e='2' f='3'><g h='4'>", {"<a|b=1", "<c", "<d|e=2|f=3", "<g|h=4"}},
    {"<a b=\"1\">-</a>", {"<a|b=1", "\"-", ">a"}},
};

std::vector<Case> const cInstructions = {
    {"<?xml version=\"1.0\"?><a>", {"??xml|version=1.0", "<a"}},
    {"<?xml version=\"1.0\" encoding=\"UTF-8\"?>", {"??xml|version=1.0|encoding=UTF-8"}},
    {"<?xml?>", {"??xml?"}},
    {"<?xml ?>", {"??xml"}},
    {"<?>", {"??"}},
    {"<?", {}},
    {"< ?a>", {"??a"}},
    {"<a?>", {"<a?"}},
    {"<?a b='?'>", {"??a|b=?"}},
};

std::vector<Case> AllCases() {
    std::vector<Case> all;
    for (std::vector<Case> const& cases :
         {cTexts, cEntities, cTags, cDashes, cComments, cSections, cAttributes, cInstructions})
        all.insert(all.end(), cases.begin(), cases.end());
    return all;
}

void ExpectCalls(std::vector<Case> const& cases) {
    for (Case const& each : cases) EXPECT_EQ(CallsFor(each.document), each.calls) << each.document;
}

TEST(SimpleXMLParser, DeliversTextBetweenTagsAndDropsWhatFollowsTheLastTag) {
    ExpectCalls(cTexts);
}

TEST(SimpleXMLParser, DecodesTheKnownEntitiesAndKeepsTheOthers) {
    ExpectCalls(cEntities);
}

TEST(SimpleXMLParser, TakesEveryTagAsAStartOrAnEnd) {
    ExpectCalls(cTags);
}

TEST(SimpleXMLParser, DropsOneDashOfANameAndTakesTheSecondForAComment) {
    ExpectCalls(cDashes);
}

TEST(SimpleXMLParser, ReportsNothingForAComment) {
    ExpectCalls(cComments);
}

TEST(SimpleXMLParser, PassesSectionsOnButForTheirNulBytes) {
    ExpectCalls(cSections);
}

TEST(SimpleXMLParser, ReadsAttributesInTheirOrder) {
    ExpectCalls(cAttributes);
}

TEST(SimpleXMLParser, ReportsProcessingInstructionsApart) {
    ExpectCalls(cInstructions);
}

TEST(SimpleXMLParser, DecodesEveryHexadecimalByte) {
    for (unsigned int value = 0; value < 256; ++value) {
        std::string const digits = {"0123456789abcdef"[value / 16], "0123456789abcdef"[value % 16]};
        Calls const expected = {"\""s + static_cast<char>(value), "<"};
        EXPECT_EQ(CallsFor("&#x" + digits + ";<>"), expected) << value;
    }
}

TEST(SimpleXMLParser, PassesEveryByteOfTextButTheTwoThatEndIt) {
    for (int value = 0; value < 256; ++value) {
        if (value == '<' || value == '&') continue;
        std::string const text(3, static_cast<char>(value));
        EXPECT_EQ(CallsFor(text + "<>"), (Calls{'"' + text, "<"})) << value;
    }
}

TEST(SimpleXMLParser, FindsTheEndOfATextWhereverItLies) {
    for (std::size_t before = 0; before < 40; ++before)
        for (std::size_t after = 0; after < 20; ++after) {
            std::string const text(before, 'x');
            EXPECT_EQ(Joined(CallsFor("<>" + text + "<" + std::string(after, 'y') + ">")),
                      before == 0 ? (Calls{"<", "<" + std::string(after, 'y')})
                                  : (Calls{"<", '"' + text, "<" + std::string(after, 'y')}));
            EXPECT_EQ(Joined(CallsFor(text + "&amp;" + std::string(after, 'y') + "<>")),
                      (Calls{'"' + text + "&" + std::string(after, 'y'), "<"}));
        }
}

TEST(SimpleXMLParser, GivesTheSameCallsByteByByte) {
    for (Case const& each : AllCases()) {
        std::vector<std::string> bytes;
        for (char const byte : each.document) bytes.emplace_back(1, byte);
        EXPECT_EQ(Joined(CallsForPieces(bytes)), Joined(each.calls)) << each.document;
    }
}

TEST(SimpleXMLParser, GivesTheSameCallsWhereverTheDocumentIsCut) {
    for (Case const& each : AllCases())
        for (std::size_t cut = 0; cut <= each.document.size(); ++cut) {
            auto const calls = CallsForPieces({each.document.substr(0, cut), each.document.substr(cut)});
            EXPECT_EQ(Joined(calls), Joined(each.calls)) << each.document << " cut at " << cut;
        }
}

TEST(SimpleXMLParser, GivesTheSameCallsWhereverTheDocumentIsCutTwice) {
    for (Case const& each : AllCases())
        for (std::size_t first = 0; first <= each.document.size(); ++first)
            for (std::size_t second = first; second <= each.document.size(); ++second) {
                auto const calls = CallsForPieces({each.document.substr(0, first),
                                                   each.document.substr(first, second - first),
                                                   each.document.substr(second)});
                ASSERT_EQ(Joined(calls), Joined(each.calls))
                    << each.document << " cut at " << first << " and " << second;
            }
}

TEST(SimpleXMLParser, DeliversWhatWasCompleteWhenTheInputEndsAnywhere) {
    for (Case const& each : AllCases())
        for (std::size_t size = 0; size < each.document.size(); ++size) {
            std::string const truncated = each.document.substr(0, size);
            EXPECT_EQ(CallsFor(truncated), ReferenceCallsFor(truncated)) << truncated;
        }
}

TEST(SimpleXMLParser, DeliversNothingOfAConstructThatIsCutShort) {
    for (std::string const cut :
         {"<",          "<b",          "<b ",          "<b c",     "<b c=",     "<b c='",   "<b c='d",
          "<b c='d'",   "<b c='&",     "<b c='&lt",    "</",       "</b",       "&",        "&lt",
          "&#x41",      "<!-",         "<!--",         "<!-- x -", "<!-- x --", "<![CDATA", "<![CDATA[",
          "<![CDATA[x", "<![CDATA[x]", "<![CDATA[x]]", "<?",       "<?x",       "<?x ?",    "x"})
        EXPECT_EQ(CallsFor("<a>" + cut), (Calls{"<a"})) << cut;
    EXPECT_EQ(CallsFor("<a>text&lt"), (Calls{"<a", "\"text"}));
    EXPECT_EQ(CallsFor("<a>text<b"), (Calls{"<a", "\"text"}));
}

TEST(SimpleXMLParser, GoesOnInTheStateThatItReached) {
    EXPECT_EQ(CallsForPieces({"<a>x", "y</a>", "", "<b>z", "</b>"}),
              (Calls{"<a", "\"xy", ">a", "<b", "\"z", ">b"}));
}

// Seeded random documents over the bytes that mean something.
class RandomDocuments {
public:
    std::string Next() {
        std::string document;
        std::size_t const pieces = Below(24);
        for (std::size_t piece = 0; piece < pieces; ++piece) document += Piece();
        return document;
    }
    std::vector<std::string> Cut(std::string const& document) {
        std::vector<std::string> pieces;
        std::size_t position = 0;
        while (position < document.size()) {
            std::size_t const size = 1 + Below(document.size());
            pieces.push_back(document.substr(position, size));
            position += size;
        }
        return pieces;
    }

private:
    std::size_t Below(std::size_t limit) { return m_engine() % limit; }
    std::string Piece() {
        static std::string const bytes = "<>/&;#x'\"=- ?![CDATA]\0ab\n<>]-"s;
        static std::vector<std::string> const wholes = {
            "<a>",   "</a>",     "<![CDATA[", "]]>",    "<!--", "-->",      "&lt;", "&#x41;",
            "b='c'", " d=\"e\"", "<?x ",      "<a b='", "text", "\xC3\xA9", "]]",   "--"};
        if (Below(3) == 0) return wholes[Below(wholes.size())];
        return std::string(1, bytes[Below(bytes.size())]);
    }

    std::mt19937 m_engine{5041};
};

TEST(SimpleXMLParser, AgreesWithThePlainRulesOnRandomDocuments) {
    RandomDocuments random;
    for (int run = 0; run < 60000; ++run) {
        std::string const document = random.Next();
        Calls const expected = ReferenceCallsFor(document);
        ASSERT_EQ(CallsFor(document), expected) << ::testing::PrintToString(document);
        auto const pieces = random.Cut(document);
        ASSERT_EQ(Joined(CallsForPieces(pieces)), Joined(expected)) << ::testing::PrintToString(pieces);
    }
}

TEST(SimpleXMLParser, LetsTheHandlersExceptionOut) {
    class Throwing : public RecordingHandler {
        void EndElement(UStringRef<UTF8> const&) override { throw std::runtime_error("enough"); }
    };
    Throwing handler;
    SimpleXMLParserPL parser(handler);
    EXPECT_THROW(parser.Parse("<a>x</a><b>"_utf8), std::runtime_error);
    EXPECT_EQ(handler.calls, (Calls{"<a", "\"x"}));
}

TEST(SimpleXMLParser, CallsItselfWhenMadeWithoutAHandler) {
    class Counting : public SimpleXMLParserPL {
    public:
        int starts = 0;

    private:
        void StartElement(UStringRef<UTF8> const&, XMLAttributePointers const&) override { ++starts; }
    };
    Counting parser;
    parser.Parse("<a>x<b></b></a>"_utf8);
    EXPECT_EQ(parser.starts, 2);
    SimpleXMLParserPL().Parse("<?x y='z'?><a>x</a>"_utf8);
}

} // namespace
