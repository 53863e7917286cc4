#include "xml/SimpleXML.h"

#include "tests/support/UStringPrinting.h"
#include "xml/XMLReceiver.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

class RecordingReceiver : public XMLReceiver {
public:
    void StartElement(UStringRef<UTF8> const& name, XMLAttributeMap const& attributes) override {
        std::string call = '<' + MakeString(name);
        for (auto const& [key, value] : attributes) call += '|' + MakeString(key) + '=' + MakeString(value);
        calls.push_back(call);
    }
    void EndElement() override { calls.emplace_back(">"); }
    void Characters(UStringRef<UTF8> const& text) override { calls.push_back('"' + MakeString(text)); }

    std::vector<std::string> calls;
};

using Calls = std::vector<std::string>;

Calls CallsFor(std::string const& document) {
    RecordingReceiver receiver;
    SimpleXML::SAXParser(receiver).Parse(MakeUTF8Ref(document));
    return receiver.calls;
}

TEST(SAXParser, PassesElementsAndTextsOn) {
    EXPECT_EQ(CallsFor("<a>x&amp;y<b></c></a>"), (Calls{"<a", "\"x", "\"&", "\"y", "<b", ">", ">"}));
}

TEST(SAXParser, GivesAttributesInByteOrderTheShorterFirst) {
    EXPECT_EQ(CallsFor("<a c='1' ab='2' B='3' a='4' \x80='5'>"), (Calls{"<a|B=3|a=4|ab=2|c=1|\x80=5"}));
}

TEST(SAXParser, KeepsTheLaterOfTwoAttributesOfOneName) {
    EXPECT_EQ(CallsFor("<a b='1' c='2' b='3'>"), (Calls{"<a|b=3|c=2"}));
}

TEST(SAXParser, SwallowsTheDeclaration) {
    EXPECT_EQ(CallsFor("<?xml version=\"1.0\" encoding=\"UTF-8\"?><a>"), (Calls{"<a"}));
}

TEST(SAXParser, KeepsItsStateBetweenPieces) {
    RecordingReceiver receiver;
    SimpleXML::SAXParser parser(receiver);
    parser.Parse("<a b='"_utf8);
    parser.Parse("c'>x"_utf8);
    parser.Parse("y<"_utf8);
    EXPECT_EQ(receiver.calls, (Calls{"<a|b=c", "\"xy"}));
}

TEST(SAXParser, KeepsLongAttributesOfEarlierTagsApart) {
    std::string const first(100, 'x');
    std::string const second(100, 'y');
    class Keeping : public XMLReceiver {
    public:
        void StartElement(UStringRef<UTF8> const&, XMLAttributeMap const& attributes) override {
            kept.push_back(attributes);
        }
        std::vector<XMLAttributeMap> kept;
    };
    Keeping receiver;
    SimpleXML::SAXParser(receiver).Parse(MakeUTF8Ref("<a b='" + first + "'><a b='" + second + "'><a b='z'>"));
    ASSERT_EQ(receiver.kept.size(), 3u);
    EXPECT_EQ(MakeString(receiver.kept[0].begin()->second), first);
    EXPECT_EQ(MakeString(receiver.kept[1].begin()->second), second);
    EXPECT_EQ(MakeString(receiver.kept[2].begin()->second), "z");
}

TEST(XMLReceiver, DoesNothingByItself) {
    XMLReceiver receiver;
    SimpleXML::SAXParser(receiver).Parse("<a b='c'>x</a>"_utf8);
}

bool HasUTF8Encoding(std::vector<XMLAttribute> const& attributes) {
    XMLAttributePointers pointers;
    for (XMLAttribute const& attribute : attributes) pointers.push_back(&attribute);
    return SimpleXML::SAXParser::HasUTF8Encoding(pointers);
}

TEST(SAXParser, KnowsTheUTF8EncodingInAnyCase) {
    EXPECT_TRUE(HasUTF8Encoding({{"encoding"_utf8, "utf-8"_utf8}}));
    EXPECT_TRUE(HasUTF8Encoding({{"version"_utf8, "1.0"_utf8}, {"Encoding"_utf8, "UTF-8"_utf8}}));
    EXPECT_FALSE(HasUTF8Encoding({}));
    EXPECT_FALSE(HasUTF8Encoding({{"version"_utf8, "utf-8"_utf8}}));
    EXPECT_FALSE(HasUTF8Encoding({{"encoding"_utf8, "utf8"_utf8}}));
    EXPECT_FALSE(HasUTF8Encoding({{"encoding"_utf8, ""_utf8}}));
}

TEST(SAXParser, LooksAtTheFirstEncodingOnly) {
    EXPECT_FALSE(HasUTF8Encoding({{"encoding"_utf8, "latin1"_utf8}, {"encoding"_utf8, "utf-8"_utf8}}));
    EXPECT_TRUE(HasUTF8Encoding({{"encoding"_utf8, "utf-8"_utf8}, {"encoding"_utf8, "latin1"_utf8}}));
}

} // namespace
