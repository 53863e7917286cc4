#include "xml/XMLWriter.h"

#include "tests/support/UStringPrinting.h"
#include "tests/xml/SmallStack.h"
#include "text/UStringBuilder.h"
#include "xml/SimpleXML.h"

#include <gtest/gtest.h>

#include <functional>
#include <random>
#include <stdexcept>
#include <string>
#include <vector>

namespace {

using namespace std::string_literals;
using Style = XMLWriter::XMLFormatStyle;

std::string const cHeader = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>";

// Styles behind 2 lay out as 2 does.
std::vector<Style> AllStyles() {
    return {XMLWriter::Indented, XMLWriter::LineBreaks, XMLWriter::Compact, static_cast<Style>(7)};
}

// What `write` puts into a receiver that was started beforehand.
std::string Written(Style style, std::function<void(XMLWriter&)> const& write,
                    bool escapeLineBreaks = false) {
    UStringBuilder<UTF8> text;
    text.Start(UTF8());
    XMLWriter writer(text, style);
    writer.SetEscapeLineBreaks(escapeLineBreaks);
    write(writer);
    return MakeString(text.Ref());
}

std::string WrittenString(std::string const& text, bool escapeLineBreaks = false) {
    return Written(
        XMLWriter::Compact, [&](XMLWriter& writer) { writer.WriteString(MakeUTF8Ref(text)); },
        escapeLineBreaks);
}

// <a>, <b>x</b>, <c></c>, </a>
void WriteSmallTree(XMLWriter& writer) {
    writer.BeginElement("a");
    writer.BeginElement("b");
    writer.WriteString("x"_utf8);
    writer.EndElement();
    writer.BeginElement("c");
    writer.EndElement();
    writer.EndElement();
}

std::string SmallDocument(Style style, XMLWriter::EndDocumentStyle end) {
    UStringBuilder<UTF8> text;
    XMLWriter writer(text, style);
    writer.BeginDocument(XMLWriter::WithEncoding);
    WriteSmallTree(writer);
    writer.EndDocument(end);
    return MakeString(text.Ref());
}

// Tells what reaches it.
class Receiver : public UTextReceiver<UTF8> {
public:
    void Start(UTF8) override { calls.emplace_back("start"); }
    void Receive(ConstArrayOf<unsigned char> data) override {
        calls.push_back(MakeString(ConstData(data.begin(), data.end())));
    }
    void ReceiveEnd() override { calls.emplace_back("end"); }

    std::vector<std::string> calls;
};

TEST(XMLWriter, IndentsWithStyle0) {
    EXPECT_EQ(SmallDocument(XMLWriter::Indented, XMLWriter::NoFinalLineFeed),
              cHeader + "\n<a>\n\t<b>x</b>\n\t<c></c>\n</a>");
    EXPECT_EQ(SmallDocument(XMLWriter::Indented, XMLWriter::FinalLineFeed),
              cHeader + "\n<a>\n\t<b>x</b>\n\t<c></c>\n</a>\n");
}

TEST(XMLWriter, BreaksLinesWithStyle1) {
    EXPECT_EQ(SmallDocument(XMLWriter::LineBreaks, XMLWriter::FinalLineFeed),
              cHeader + "\n<a>\n<b>x</b>\n<c></c>\n</a>\n");
}

TEST(XMLWriter, AddsNoWhiteSpaceWithAnyOtherStyle) {
    for (Style const style : {XMLWriter::Compact, static_cast<Style>(7), static_cast<Style>(0xFFFFFFFF)})
        EXPECT_EQ(SmallDocument(style, XMLWriter::NoFinalLineFeed), cHeader + "<a><b>x</b><c></c></a>");
}

TEST(XMLWriter, NumbersItsStylesAsItsCallersDo) {
    static_assert(XMLWriter::Indented == 0 && XMLWriter::LineBreaks == 1);
    static_assert(XMLWriter::WithEncoding == 0 && XMLWriter::FinalLineFeed == 0);
}

TEST(XMLWriter, WritesTheHeaderWithoutTheEncoding) {
    for (Style const style : AllStyles()) {
        auto const header = [](XMLWriter& writer) { writer.BeginDocument(XMLWriter::WithoutEncoding); };
        EXPECT_EQ(Written(style, header), "<?xml version=\"1.0\"?>");
        auto const other = [](XMLWriter& writer) {
            writer.BeginDocument(static_cast<XMLWriter::EncodingDeclaration>(9));
        };
        EXPECT_EQ(Written(style, other), "<?xml version=\"1.0\"?>");
    }
}

TEST(XMLWriter, StartsAndEndsTheReceiver) {
    Receiver receiver;
    XMLWriter writer(receiver, XMLWriter::Compact);
    writer.BeginDocument(XMLWriter::WithEncoding);
    EXPECT_EQ(receiver.calls, (std::vector<std::string>{"start", cHeader}));
    writer.EndDocument(static_cast<XMLWriter::EndDocumentStyle>(5));
    EXPECT_EQ(receiver.calls, (std::vector<std::string>{"start", cHeader, "end"}));
}

TEST(XMLWriter, ClosesOpenElementsInnermostFirst) {
    auto const write = [](XMLWriter& writer) {
        writer.BeginElement("a");
        writer.BeginElement("b");
        writer.BeginElement("c");
        writer.EndDocument(XMLWriter::FinalLineFeed);
    };
    EXPECT_EQ(Written(XMLWriter::Compact, write), "<a><b><c></c></b></a>\n");
    EXPECT_EQ(Written(XMLWriter::Indented, write), "\n<a>\n\t<b>\n\t\t<c></c>\n\t</b>\n</a>\n");
}

TEST(XMLWriter, KeepsNamesWhoseTextHasGone) {
    auto const write = [](XMLWriter& writer) {
        {
            std::string name(100, 'n');
            writer.BeginElement(MakeUTF8Ref(name));
            name.assign(100, 'x');
        }
        writer.EndElement();
    };
    std::string const name(100, 'n');
    EXPECT_EQ(Written(XMLWriter::Compact, write), "<" + name + "></" + name + ">");
}

TEST(XMLWriter, NeverEscapesNames) {
    auto const write = [](XMLWriter& writer) {
        writer.BeginElement("a<&");
        writer.AddAttribute("b>\"", "c"_utf8);
        writer.EndElement();
    };
    EXPECT_EQ(Written(XMLWriter::Compact, write), "<a<& b>\"=\"c\"></a<&>");
}

TEST(XMLWriter, BreaksTheLineBehindAnEndTagOnly) {
    struct Layout {
        Style style;
        char const* text;
    };
    auto const write = [](XMLWriter& writer) {
        writer.BeginElement("a");
        writer.WriteString("1"_utf8);
        writer.BeginElement("b");
        writer.EndElement();
        writer.WriteString("2"_utf8);
        writer.WriteString("3"_utf8);
        writer.BeginElement("c");
        writer.WriteCData("4"_utf8);
        writer.EndElement();
        writer.WriteCData("5"_utf8);
        writer.EndElement();
    };
    for (Layout const& layout :
         {Layout{XMLWriter::Indented, "\n<a>1\n\t<b></b>\n23\n\t<c><![CDATA[4]]></c>\n<![CDATA[5]]></a>"},
          Layout{XMLWriter::LineBreaks, "\n<a>1\n<b></b>\n23\n<c><![CDATA[4]]></c>\n<![CDATA[5]]></a>"},
          Layout{XMLWriter::Compact, "<a>1<b></b>23<c><![CDATA[4]]></c><![CDATA[5]]></a>"},
          Layout{static_cast<Style>(7), "<a>1<b></b>23<c><![CDATA[4]]></c><![CDATA[5]]></a>"}})
        EXPECT_EQ(Written(layout.style, write), layout.text);
}

TEST(XMLWriter, IndentsAnyDepth) {
    auto const write = [](XMLWriter& writer) {
        for (int level = 0; level < 40; ++level) writer.BeginElement("a");
    };
    std::string expected;
    for (std::size_t level = 0; level < 40; ++level)
        expected += (level == 0 ? "\n" : ">\n") + std::string(level, '\t') + "<a";
    EXPECT_EQ(Written(XMLWriter::Indented, write), expected);
}

TEST(XMLWriter, WritesNothingForAnEndTooMany) {
    for (Style const style : AllStyles()) {
        auto const end = [](XMLWriter& writer) {
            writer.EndElement();
            writer.EndElement();
        };
        EXPECT_EQ(Written(style, end), "");
    }
    // It counts as an end tag all the same.
    auto const write = [](XMLWriter& writer) {
        writer.EndElement();
        writer.WriteString("x"_utf8);
    };
    EXPECT_EQ(Written(XMLWriter::Indented, write), "\nx");
    EXPECT_EQ(Written(XMLWriter::Compact, write), "x");
}

TEST(XMLWriter, WritesTextOutsideElements) {
    EXPECT_EQ(WrittenString("x"), "x");
    EXPECT_EQ(Written(XMLWriter::Indented, [](XMLWriter& writer) { writer.WriteString("x"_utf8); }), "x");
}

TEST(XMLWriter, WritesEveryByteOfTextAsTheTableSays) {
    std::string const tail = "?xml version=\"1.0\" encoding=\"UTF-8\"?>";
    for (unsigned int value = 0; value < 256; ++value) {
        std::string expected(1, static_cast<char>(value));
        if (value < 32 && value != '\t' && value != '\n' && value != '\r') expected = "";
        if (value == 0) expected = "\\";
        if (value == 2) expected = "\t";
        if (value == 4) expected = "</";
        if (value == 5) expected = "/";
        if (value == 7) expected = "<";
        if (value >= 14 && value <= 31) expected = tail.substr(value - 14);
        if (value == 127) expected = "";
        if (value == '&') expected = "&amp;";
        if (value == '<') expected = "&lt;";
        if (value == '>') expected = "&gt;";
        std::string const text = "l" + std::string(1, static_cast<char>(value)) + "r";
        EXPECT_EQ(WrittenString(text), "l" + expected + "r") << value;
        if (value == '\r') expected = "&#xd;";
        if (value == '\n') expected = "&#xa;";
        EXPECT_EQ(WrittenString(text, true), "l" + expected + "r") << value;
        EXPECT_EQ(WrittenString(std::string(2, static_cast<char>(value)), true), expected + expected)
            << value;
    }
}

TEST(XMLWriter, PutsTheTailOfTheHeaderInThePlaceOfHighControlBytes) {
    EXPECT_EQ(WrittenString("\x0E"), "?xml version=\"1.0\" encoding=\"UTF-8\"?>");
    EXPECT_EQ(WrittenString("\x0F"), "xml version=\"1.0\" encoding=\"UTF-8\"?>");
    EXPECT_EQ(WrittenString("\x13"), "version=\"1.0\" encoding=\"UTF-8\"?>");
    EXPECT_EQ(WrittenString("\x1F"), "\" encoding=\"UTF-8\"?>");
}

TEST(XMLWriter, WritesEveryByteOfAnAttributeAsTheTableSays) {
    for (unsigned int value = 0; value < 256; ++value) {
        std::string expected(1, static_cast<char>(value));
        if (value == '&') expected = "&amp;";
        if (value == '<') expected = "&lt;";
        if (value == '>') expected = "&gt;";
        if (value == '"') expected = "&quot;";
        std::string const text = "l" + std::string(1, static_cast<char>(value)) + "r";
        auto const write = [&text](XMLWriter& writer) { writer.AddAttribute("a"_utf8, MakeUTF8Ref(text)); };
        EXPECT_EQ(Written(XMLWriter::Compact, write), " a=\"l" + expected + "r\"") << value;
        if (value == '\r') expected = "&#xd;";
        if (value == '\n') expected = "&#xa;";
        EXPECT_EQ(Written(XMLWriter::Compact, write, true), " a=\"l" + expected + "r\"") << value;
    }
}

TEST(XMLWriter, WritesAttributesIntoTheStartTag) {
    auto const write = [](XMLWriter& writer) {
        writer.BeginElement("a"_utf8);
        writer.AddAttribute("b", ""_utf8);
        writer.AddAttribute("c"_utf8, "it's"_utf8);
        writer.WriteString(""_utf8);
        writer.EndElement();
    };
    for (Style const style : {XMLWriter::Compact, static_cast<Style>(7)})
        EXPECT_EQ(Written(style, write), "<a b=\"\" c=\"it's\"></a>");
}

TEST(XMLWriter, SendsPlainRunsInOnePiece) {
    Receiver receiver;
    XMLWriter writer(receiver, XMLWriter::Compact);
    writer.WriteString("some text\r\n\tand more & <less\0end"_utf8);
    EXPECT_EQ(receiver.calls, (std::vector<std::string>{"some text\r\n\tand more ", "&amp;", " ", "&lt;",
                                                        "less", "\\", "end"}));
}

TEST(XMLWriter, SendsNoEmptyRuns) {
    Receiver receiver;
    XMLWriter writer(receiver, XMLWriter::Compact);
    writer.WriteString("<&a\x01\x01>"_utf8);
    writer.WriteString(UStringRef<UTF8>());
    writer.WriteString("\x01"_utf8);
    EXPECT_EQ(receiver.calls, (std::vector<std::string>{"&lt;", "&amp;", "a", "&gt;"}));
}

TEST(XMLWriter, WritesSectionsAsTheyStand) {
    auto const write = [](XMLWriter& writer) {
        writer.BeginElement("a");
        writer.WriteCData("<&>\0\n\x0E"_utf8);
        writer.EndElement();
    };
    EXPECT_EQ(Written(XMLWriter::Compact, write), "<a><![CDATA[<&>\0\n\x0E]]></a>"s);
    EXPECT_EQ(Written(XMLWriter::Compact, write, true), "<a><![CDATA[<&>\0\n\x0E]]></a>"s);
}

TEST(XMLWriter, WritesAWholeTree) {
    auto const root =
        SimpleXML::ParseXMLToTree("<a z='1' b='\"2\"'>x<c>&lt;</c>y<d><e f='g'></e></d></a>"_utf8);
    auto const write = [&root](XMLWriter& writer) { writer.WriteXMLElement(*root); };
    EXPECT_EQ(Written(XMLWriter::Compact, write),
              "<a b=\"&quot;2&quot;\" z=\"1\">xy<c>&lt;</c><d><e f=\"g\"></e></d></a>");
    EXPECT_EQ(Written(XMLWriter::Indented, write), "\n<a b=\"&quot;2&quot;\" z=\"1\">xy\n\t<c>&lt;</c>\n\t<d>"
                                                   "\n\t\t<e f=\"g\"></e>\n\t</d>\n</a>");
}

TEST(XMLWriter, WritesATreeWhereverAnElementMayBegin) {
    XMLElement const element("b", {});
    auto const write = [&element](XMLWriter& writer) {
        writer.BeginElement("a");
        writer.WriteXMLElement(element);
        writer.WriteXMLElement(element);
        writer.EndElement();
    };
    EXPECT_EQ(Written(XMLWriter::Indented, write), "\n<a>\n\t<b></b>\n\t<b></b>\n</a>");
}

TEST(XMLWriter, NeedsNoStackForADeepTree) {
    RunOnSmallStack([] {
        constexpr std::size_t cLevels = 1000000;
        XMLElement root("a", {});
        XMLElement* innermost = &root;
        for (std::size_t level = 1; level < cLevels; ++level)
            innermost = innermost->AddChildElement("a"_utf8, {});
        std::string const text =
            Written(XMLWriter::Compact, [&root](XMLWriter& writer) { writer.WriteXMLElement(root); });
        ASSERT_EQ(text.size(), 7 * cLevels);
        EXPECT_EQ(text.substr(0, 6), "<a><a>");
        EXPECT_EQ(text.substr(3 * cLevels - 3, 7), "<a></a>");
    });
}

TEST(XMLWriter, LetsTheReceiversExceptionOut) {
    class Full : public UTextReceiver<UTF8> {
        void Receive(ConstArrayOf<unsigned char>) override { throw std::runtime_error("full"); }
    };
    Full receiver;
    XMLWriter writer(receiver, XMLWriter::Compact);
    EXPECT_THROW(writer.BeginElement("a"), std::runtime_error);
}

// XMLSave of a text

std::string Saved(std::string const& text, bool escapeLineBreaks = false) {
    return Written(
        XMLWriter::Compact, [&](XMLWriter& writer) { XMLSave(writer, MakeUTF8Ref(text)); }, escapeLineBreaks);
}

TEST(XMLSaveOfText, TakesASectionForMarkupCharacters) {
    for (char const* const text : {"<", "&", ">", "a<b", "R&D", "]] >", "]>", "]]&gt;"})
        EXPECT_EQ(Saved(text), "<![CDATA["s + text + "]]>") << text;
}

TEST(XMLSaveOfText, EscapesATextThatHoldsTheEndOfASection) {
    EXPECT_EQ(Saved("]]>"), "]]&gt;");
    EXPECT_EQ(Saved("a]]>b<c&"), "a]]&gt;b&lt;c&amp;");
}

TEST(XMLSaveOfText, WritesOtherTextsPlainly) {
    for (char const* const text : {"", "plain", "\"it's\"", "a\r\n\tb", "]]", "\xC3\xA9"})
        EXPECT_EQ(Saved(text), text);
    EXPECT_EQ(Saved("\4\0"s), "</\\");
}

TEST(XMLSaveOfText, TakesNoSectionWhenLineBreaksAreEscaped) {
    EXPECT_EQ(Saved("a<\r\n", true), "a&lt;&#xd;&#xa;");
}

TEST(XMLSaveOfText, CountsAnEmptyTextAsContent) {
    auto const write = [](XMLWriter& writer) {
        writer.BeginElement("a");
        writer.BeginElement("b");
        writer.EndElement();
        XMLSave(writer, ""_utf8);
        writer.EndElement();
    };
    EXPECT_EQ(Written(XMLWriter::Indented, write), "\n<a>\n\t<b></b>\n</a>");
    EXPECT_EQ(Saved(""), "");
}

// Back through the parser

std::string ReadBack(std::string const& document) {
    return MakeString(SimpleXML::ParseXMLToTree(MakeUTF8Ref(document))->GetValue());
}

std::vector<std::string> TextsOfOneAndTwoMarks() {
    std::vector<std::string> const marks = {"<", "&",  ">",  "]]>",  "]",   "\"",
                                            "'", "\r", "\n", "&lt;", "-->", "x"};
    std::vector<std::string> texts = {""};
    for (std::string const& first : marks) {
        texts.push_back(first);
        for (std::string const& second : marks) {
            texts.push_back(first + second);
            texts.push_back("a" + first + "b" + second + "c");
        }
    }
    return texts;
}

TEST(XMLWriter, IsReadBackByTheParser) {
    for (std::string const& text : TextsOfOneAndTwoMarks())
        for (bool const escapeLineBreaks : {false, true})
            for (Style const style : AllStyles()) {
                auto const save = [&text](XMLWriter& writer) {
                    writer.BeginElement("a");
                    writer.AddAttribute("b", MakeUTF8Ref(text));
                    XMLSave(writer, MakeUTF8Ref(text));
                    writer.EndElement();
                };
                std::string const document = Written(style, save, escapeLineBreaks);
                auto const root = SimpleXML::ParseXMLToTree(MakeUTF8Ref(document));
                EXPECT_EQ(MakeString(root->GetValue()), text) << document;
                EXPECT_EQ(MakeString(root->GetAttribute("b")), text) << document;
            }
}

TEST(XMLWriter, IsReadBackWithTheLineFeedBehindAChild) {
    auto const write = [](XMLWriter& writer) {
        writer.BeginElement("a");
        writer.BeginElement("b");
        writer.EndElement();
        writer.WriteString("x"_utf8);
        writer.EndElement();
    };
    EXPECT_EQ(ReadBack(Written(XMLWriter::Indented, write)), "\n\t\nx");
    EXPECT_EQ(ReadBack(Written(XMLWriter::LineBreaks, write)), "\n\nx");
    EXPECT_EQ(ReadBack(Written(XMLWriter::Compact, write)), "x");
}

// A random tree of names, attributes and values that hold every byte but the control bytes.
class RandomTrees {
public:
    XMLElement Next() {
        XMLElement root = Element();
        for (std::size_t count = Below(12); count > 0; --count) {
            XMLElement* place = &root;
            while (place->HasChildren() && Below(2) == 0)
                place = &place->children[Below(place->children.size())];
            place->AddChildElement(Element());
        }
        return root;
    }

private:
    std::size_t Below(std::size_t limit) { return m_engine() % limit; }
    std::string Text() {
        std::string text;
        for (std::size_t size = Below(100); size > 0; --size) {
            std::size_t const byte = Below(3) == 0 ? 32 + Below(224) : Below(8);
            if (byte != 127) text += byte < 8 ? "<&>]]>\"\n"[byte] : static_cast<char>(byte);
        }
        return text;
    }
    XMLElement Element() {
        XMLElement element(MakeUTF8Ref("n" + std::to_string(Below(1000))), {});
        for (std::size_t count = Below(4); count > 0; --count)
            element.SetAttribute(MakeUTF8Ref("a" + std::to_string(Below(9))), MakeUTF8Ref(Text()));
        element.AppendCharacters(MakeUTF8Ref(Text()));
        return element;
    }

    std::mt19937 m_engine{7};
};

void ExpectSame(XMLElement const& a, XMLElement const& b) {
    EXPECT_EQ(a.name, b.name);
    EXPECT_EQ(a.attributes, b.attributes);
    EXPECT_EQ(a.value, b.value);
    ASSERT_EQ(a.children.size(), b.children.size());
    for (std::size_t index = 0; index < a.children.size(); ++index)
        ExpectSame(a.children[index], b.children[index]);
}

TEST(XMLWriter, WritesTreesThatAreReadBackEqual) {
    RandomTrees trees;
    for (int run = 0; run < 500; ++run) {
        XMLElement const tree = trees.Next();
        std::string const text =
            Written(XMLWriter::Compact, [&tree](XMLWriter& writer) { writer.WriteXMLElement(tree); });
        ExpectSame(*SimpleXML::ParseXMLToTree(MakeUTF8Ref(text)), tree);
    }
}

} // namespace
