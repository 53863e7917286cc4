#include "xml/XMLTreeParser.h"

#include "tests/support/Allocations.h"
#include "tests/support/UStringPrinting.h"
#include "tests/xml/SmallStack.h"
#include "xml/SimpleXML.h"

#include <gtest/gtest.h>

#include <new>
#include <random>
#include <string>

namespace {

using SimpleXML::ParseXMLToTree;

std::unique_ptr<XMLElement> Parsed(std::string const& document) {
    return ParseXMLToTree(MakeUTF8Ref(document));
}

std::string Repeated(std::string const& piece, std::size_t count) {
    std::string text;
    text.reserve(piece.size() * count);
    for (std::size_t index = 0; index < count; ++index) text += piece;
    return text;
}

TEST(XMLTreeParser, BuildsNothingAtFirst) {
    XMLTreeParser parser;
    EXPECT_EQ(parser.TakeRoot(), nullptr);
}

TEST(XMLTreeParser, BuildsElementsInDocumentOrder) {
    XMLTreeParser parser;
    parser.StartElement("a"_utf8, {});
    parser.Characters("x"_utf8);
    parser.StartElement("b"_utf8, {{"c"_utf8, "d"_utf8}});
    parser.Characters("y"_utf8);
    parser.EndElement();
    parser.StartElement("e"_utf8, {});
    parser.EndElement();
    parser.Characters("z"_utf8);
    parser.EndElement();
    std::unique_ptr<XMLElement> const root = parser.TakeRoot();
    ASSERT_NE(root, nullptr);
    EXPECT_EQ(root->name, "a"_utf8);
    EXPECT_EQ(root->GetValue(), "xz"_utf8);
    ASSERT_EQ(root->children.size(), 2u);
    EXPECT_EQ(root->children[0].name, "b"_utf8);
    EXPECT_EQ(root->children[0].GetAttribute("c"), "d"_utf8);
    EXPECT_EQ(root->children[0].GetValue(), "y"_utf8);
    EXPECT_EQ(root->children[1].name, "e"_utf8);
    EXPECT_EQ(parser.TakeRoot(), nullptr);
}

TEST(XMLTreeParser, StartsAnewWhenItsRootIsTakenWhileElementsAreOpen) {
    XMLTreeParser parser;
    parser.StartElement("a"_utf8, {});
    parser.StartElement("b"_utf8, {});
    std::unique_ptr<XMLElement> const first = parser.TakeRoot();
    parser.Characters("nowhere"_utf8);
    parser.StartElement("c"_utf8, {});
    std::unique_ptr<XMLElement> const second = parser.TakeRoot();
    ASSERT_TRUE(first && second);
    EXPECT_EQ(first->children.size(), 1u);
    EXPECT_TRUE(first->children[0].GetValue().empty());
    EXPECT_EQ(second->name, "c"_utf8);
}

TEST(XMLTreeParser, WantOfMemoryIsAnExceptionAndNeverTheEnd) {
    UStringRef<UTF8> const document =
        "<a b='c'>x<b><><></b>y</><b>a text of more than a few letters</b></><b><c></></></b></a>"_utf8;
    bool succeeded = false;
    std::size_t successes = 0;
    for (; !succeeded; ++successes) {
        FailingAllocation const failing(successes);
        try {
            ParseXMLToTree(document);
            succeeded = true;
        } catch (std::bad_alloc const&) {
            continue;
        }
    }
    EXPECT_GT(successes, 10u) << "each of them has been the last one";
}

TEST(XMLTreeParser, IgnoresWhatStandsOutsideTheRoot) {
    XMLTreeParser parser;
    parser.EndElement();
    parser.Characters("before"_utf8);
    parser.StartElement("a"_utf8, {});
    parser.EndElement();
    parser.EndElement();
    parser.Characters("after"_utf8);
    std::unique_ptr<XMLElement> const root = parser.TakeRoot();
    ASSERT_NE(root, nullptr);
    EXPECT_TRUE(root->GetValue().empty());
}

TEST(XMLTreeParser, DestroysARootThatNobodyTook) {
    XMLTreeParser parser;
    parser.StartElement("a"_utf8, {});
    parser.StartElement("b"_utf8, {});
}

TEST(XMLTreeParser, KeepsOpenElementsValidWhileTheTreeGrows) {
    XMLTreeParser parser;
    parser.StartElement("root"_utf8, {});
    for (int list = 0; list < 50; ++list) {
        parser.StartElement("list"_utf8, {});
        for (int item = 0; item < 1 + list % 7; ++item) {
            parser.StartElement("item"_utf8, {});
            parser.Characters("x"_utf8);
            parser.EndElement();
        }
        parser.Characters("y"_utf8);
        parser.EndElement();
    }
    std::unique_ptr<XMLElement> const root = parser.TakeRoot();
    ASSERT_EQ(root->children.size(), 50u);
    for (std::size_t list = 0; list < 50; ++list) {
        EXPECT_EQ(root->children[list].children.size(), 1 + list % 7);
        EXPECT_EQ(root->children[list].GetValue(), "y"_utf8);
        for (XMLElement const& item : root->children[list].children) EXPECT_EQ(item.GetValue(), "x"_utf8);
    }
}

TEST(ParseXMLToTree, ReadsAnElementWithoutValue) {
    EXPECT_EQ(Parsed("<a></a>")->GetValue().begin(), nullptr);
    EXPECT_EQ(Parsed("<a></a>")->GetValue(), ""_utf8);
}

TEST(ParseXMLToTree, JoinsTheTextAroundChildren) {
    auto const root = Parsed("<a>x<b></b>y<![CDATA[z]]>&lt;</a>");
    EXPECT_EQ(root->GetValue(), "xyz<"_utf8);
}

TEST(ParseXMLToTree, KeepsWhiteSpaceBetweenChildren) {
    EXPECT_EQ(Parsed("\n<a>\n\t<b>1</b>\n\t<c></c>\n</a>\n")->GetValue(), "\n\t\n\t\n"_utf8);
}

TEST(ParseXMLToTree, LetsAnyEndTagCloseTheCurrentElement) {
    auto const root = Parsed("</x><a></b>dropped");
    EXPECT_EQ(root->name, "a"_utf8);
    EXPECT_TRUE(root->GetValue().empty());
    EXPECT_EQ(Parsed("<a><b></a><c></c></b>")->children.size(), 2u);
    EXPECT_EQ(Parsed("<a><b><c/></b></a>")->children.size(), 1u);
}

TEST(ParseXMLToTree, LetsTheLastTopLevelElementBeTheRoot) {
    EXPECT_EQ(Parsed("<a></a><b></b>")->name, "b"_utf8);
    EXPECT_EQ(Parsed("<a><x></x></a><b><y>")->children[0].name, "y"_utf8);
}

TEST(ParseXMLToTree, LeavesOutWhatIsNoElement) {
    auto const root = Parsed("<?xml version=\"1.0\"?><!-- note --><a><!-- <b> --><?x?></a>");
    EXPECT_EQ(root->name, "a"_utf8);
    EXPECT_FALSE(root->HasChildren());
    EXPECT_TRUE(root->GetValue().empty());
}

TEST(ParseXMLToTree, TakesWhatWasCompleteOfADocumentThatIsCutShort) {
    auto const root = Parsed("<a><b c='d'>x<e>y");
    EXPECT_EQ(root->children[0].GetAttribute("c"), "d"_utf8);
    EXPECT_EQ(root->children[0].GetValue(), "x"_utf8);
    EXPECT_EQ(root->children[0].children[0].GetValue(), ""_utf8);
}

TEST(ParseXMLToTree, KeepsTheLaterOfTwoAttributesOfOneName) {
    EXPECT_EQ(Parsed("<a b='1' b='2'></a>")->GetAttribute("b"), "2"_utf8);
}

TEST(ParseXMLToTree, ThrowsFormatErrorWithoutAnElement) {
    for (char const* const document :
         {"", " ", "text", "<", "<a", "<a b='c'", "</a>", "<a/>", "<?xml version=\"1.0\"?>", "<!-- <a> -->",
          "<![CDATA[<a>]]>", "&lt;a&gt;"})
        EXPECT_THROW(Parsed(document), FormatError) << document;
    EXPECT_THROW(ParseXMLToTree(UStringRef<UTF8>()), FormatError);
}

TEST(ParseXMLToTree, SurvivesEveryTruncation) {
    std::string const document = "<?xml version=\"1.0\"?>\n<a b='c&lt;' d=\"e\">x&#x41;<!-- - -- --><f>"
                                 "<![CDATA[g]]h]]></f></a>\n";
    std::size_t const firstElement = document.find("d=\"e\">") + 6;
    for (std::size_t size = 0; size <= document.size(); ++size) {
        if (size < firstElement) {
            EXPECT_THROW(Parsed(document.substr(0, size)), FormatError) << size;
        } else {
            EXPECT_EQ(Parsed(document.substr(0, size))->GetAttribute("b"), "c<"_utf8) << size;
        }
    }
}

TEST(ParseXMLToTree, SurvivesRandomDocuments) {
    std::string const bytes("<>/&;#x'\"=- ?![CDATA]\0ab\n<<>>", 30);
    std::mt19937 random(527);
    for (int run = 0; run < 20000; ++run) {
        std::string document = "<r>";
        for (std::size_t size = random() % 60; size > 0; --size) document += bytes[random() % bytes.size()];
        EXPECT_NE(Parsed(document), nullptr);
    }
}

// Frames of the largest size that the pipe takes, in the shapes that cost most. All of them on a small stack.

TEST(ParseXMLToTree, ReadsAFrameOfNothingButOpenTags) {
    RunOnSmallStack([] {
        constexpr std::size_t cLevels = 1048576;
        auto const root = Parsed(Repeated("<>", cLevels));
        std::size_t levels = 1;
        for (XMLElement const* element = root.get(); element->HasChildren(); element = &element->children[0])
            ++levels;
        EXPECT_EQ(levels, cLevels);
    });
}

TEST(ParseXMLToTree, ReadsDeepNestingWithALateLeafOnEachLevel) {
    RunOnSmallStack([] {
        constexpr std::size_t cLevels = 170000;
        auto const root = Parsed(Repeated("<a>", cLevels) + Repeated("<b></b></a>", cLevels));
        std::size_t levels = 1;
        for (XMLElement const* element = root.get(); element->children.size() == 2;
             element = &element->children[0])
            ++levels;
        EXPECT_EQ(levels, cLevels);
    });
}

TEST(ParseXMLToTree, ReadsAFrameOfOneAttributeValue) {
    std::string const value(2 * 1024 * 1024, 'x');
    EXPECT_EQ(MakeString(Parsed("<a b='" + value + "'></a>")->GetAttribute("b")), value);
}

TEST(ParseXMLToTree, ReadsAnAttributeValueOfEntities) {
    EXPECT_EQ(MakeString(Parsed("<a b='" + Repeated("&lt;", 500000) + "'></a>")->GetAttribute("b")),
              std::string(500000, '<'));
}

TEST(ParseXMLToTree, ReadsATextOfEntities) {
    EXPECT_EQ(MakeString(Parsed("<a>" + Repeated("&lt;", 500000) + "</a>")->GetValue()),
              std::string(500000, '<'));
}

TEST(ParseXMLToTree, ReadsManyAttributes) {
    std::string document = "<a";
    for (int index = 0; index < 100000; ++index) {
        std::string const number = std::to_string(index);
        document += " n" + number + "='v" + number + "'";
    }
    auto const root = Parsed(document + "></a>");
    EXPECT_EQ(root->attributes.size(), 100000u);
    EXPECT_EQ(root->GetAttribute("n0"), "v0"_utf8);
    EXPECT_EQ(root->GetAttribute("n99999"), "v99999"_utf8);
}

TEST(ParseXMLToTree, ReadsManyChildrenOfOneElement) {
    auto const root = Parsed("<a>" + Repeated("<b></b>", 290000) + "</a>");
    EXPECT_EQ(root->children.size(), 290000u);
}

TEST(ParseXMLToTree, KeepsItsMemoryInBoundsForListsOfFallingLength) {
    // Each list has one item less than the one before.
    std::string document = "<a>";
    for (std::size_t items = 500; items > 0; --items) document += "<b>" + Repeated("<c></c>", items) + "</b>";
    auto const root = Parsed(document + "</a>");
    std::size_t room = 0;
    std::size_t elements = 0;
    for (XMLElement const& list : root->children) {
        room += list.children.capacity();
        elements += list.children.size();
    }
    EXPECT_EQ(elements, 125250u);
    EXPECT_LE(room, 2 * elements);
}

} // namespace
