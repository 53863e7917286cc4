#include "xml/XMLSerialize.h"

#include "tests/support/UStringPrinting.h"
#include "text/UStringBuilder.h"
#include "xml/SimpleXML.h"

#include <gtest/gtest.h>

#include <functional>
#include <string>
#include <vector>

namespace {

using namespace std::string_literals;

std::unique_ptr<XMLElement> Parsed(std::string const& document) {
    return SimpleXML::ParseXMLToTree(MakeUTF8Ref(document));
}

// What `write` puts inside <r></r>.
std::string Written(std::function<void(XMLWriter&)> const& write) {
    UStringBuilder<UTF8> text;
    XMLWriter writer(text, XMLWriter::Compact);
    writer.BeginElement("r");
    write(writer);
    writer.EndElement();
    return MakeString(text.Ref());
}

template <class T>
std::string Saved(T const& value) {
    return Written([&value](XMLWriter& writer) { XMLSave(writer, value); });
}

template <class T>
std::string SavedField(T const& value) {
    return Written([&value](XMLWriter& writer) { XMLSerialize(writer, "F", value); });
}

// The field "F" of <r>fields</r>, read over `before`.
template <class T>
T Loaded(std::string const& fields, T before) {
    XMLSerialize(*Parsed("<r>" + fields + "</r>"), "F", before);
    return before;
}

template <class T>
class XMLSerializeText : public ::testing::Test {};
using Texts = ::testing::Types<AutoUString<UTF8>, CopiedUString<UTF8>, SharedUString<UTF8>>;
TYPED_TEST_SUITE(XMLSerializeText, Texts);

TYPED_TEST(XMLSerializeText, TravelsByteForByte) {
    for (std::string const text : {"", "plain", "R&D <tools>", "]]>", " \r\n\t ", "\xC3\xA9"}) {
        TypeParam read(MakeUTF8Ref("before"));
        XMLLoad(*Parsed(Saved(TypeParam(MakeUTF8Ref(text)))), read);
        EXPECT_EQ(MakeString(read.Ref()), text);
    }
}

TYPED_TEST(XMLSerializeText, IsSavedAndLoadedAsAnAttribute) {
    TypeParam const value("a \"b\""_utf8);
    std::string const document =
        Written([&value](XMLWriter& writer) { XMLSaveAttribute(writer, "n"_utf8, value); });
    EXPECT_EQ(document, "<r n=\"a &quot;b&quot;\"></r>");
    TypeParam read(MakeUTF8Ref("before"));
    XMLLoadAttribute(*Parsed(document), "n"_utf8, read);
    EXPECT_EQ(read, value);
}

TYPED_TEST(XMLSerializeText, NeedsItsAttribute) {
    TypeParam read(MakeUTF8Ref("before"));
    EXPECT_THROW(XMLLoadAttribute(*Parsed("<r N='x'>"), "n"_utf8, read), NoSuchAttribute);
    EXPECT_EQ(read, "before"_utf8);
}

TYPED_TEST(XMLSerializeText, IsACopyOfTheElementsText) {
    auto element = Parsed("<r n='attribute'>value</r>");
    TypeParam value;
    TypeParam attribute;
    XMLLoad(*element, value);
    XMLLoadAttribute(*element, "n"_utf8, attribute);
    element.reset();
    EXPECT_EQ(value, "value"_utf8);
    EXPECT_EQ(attribute, "attribute"_utf8);
}

TEST(XMLSerialize, SavesViewsAsAttributes) {
    EXPECT_EQ(Written([](XMLWriter& writer) { XMLSaveAttribute(writer, "n"_utf8, "<x>"_utf8); }),
              "<r n=\"&lt;x&gt;\"></r>");
}

TEST(XMLSerialize, SavesTextsByTheSectionRule) {
    EXPECT_EQ(Saved("plain"s), "<r>plain</r>");
    EXPECT_EQ(Saved("R&D"s), "<r><![CDATA[R&D]]></r>");
    EXPECT_EQ(Saved("]]>"s), "<r>]]&gt;</r>");
    EXPECT_EQ(Saved("R&D"_utf8), "<r><![CDATA[R&D]]></r>");
    EXPECT_EQ(SavedField("a<b"s), "<r><F><![CDATA[a<b]]></F></r>");
}

TEST(XMLSerialize, LoadsStrings) {
    std::string read = "before";
    XMLLoad(*Parsed("<r>a&amp;b</r>"), read);
    EXPECT_EQ(read, "a&b");
    XMLLoad(*Parsed("<r></r>"), read);
    EXPECT_EQ(read, "");
}

TEST(XMLSerialize, SavesBooleansAsWords) {
    EXPECT_EQ(Saved(true), "<r>true</r>");
    EXPECT_EQ(Saved(false), "<r>false</r>");
    EXPECT_EQ(SavedField(true), "<r><F>true</F></r>");
    EXPECT_EQ(Written([](XMLWriter& writer) {
                  XMLSaveAttribute(writer, "t"_utf8, true);
                  XMLSaveAttribute(writer, "f"_utf8, false);
              }),
              "<r t=\"true\" f=\"false\"></r>");
}

TEST(XMLSerialize, ReadsOnlyTwoTextsAsFalse) {
    for (char const* const text : {"0", "false"}) {
        EXPECT_FALSE(Loaded("<F>"s + text + "</F>", true)) << text;
        bool attribute = true;
        XMLLoadAttribute(*Parsed("<r n='"s + text + "'>"), "n"_utf8, attribute);
        EXPECT_FALSE(attribute) << text;
    }
    for (char const* const text :
         {"", "1", "true", "False", "FALSE", "00", " 0", "0 ", "false ", "\nfalse\n", "no", "f", "-0"}) {
        EXPECT_TRUE(Loaded("<F>"s + text + "</F>", false)) << text;
        bool attribute = false;
        XMLLoadAttribute(*Parsed("<r n='"s + text + "'>"), "n"_utf8, attribute);
        EXPECT_TRUE(attribute) << text;
    }
}

TEST(XMLSerialize, KeepsABooleanWhoseElementIsMissing) {
    EXPECT_TRUE(Loaded("<G>0</G>", true));
    EXPECT_FALSE(Loaded("<G>1</G>", false));
}

TEST(XMLSerialize, ReadsABooleanWhoseAttributeIsMissingAsFalse) {
    bool value = true;
    XMLLoadAttribute(*Parsed("<r N='true'>"), "n"_utf8, value);
    EXPECT_FALSE(value);
}

TEST(XMLSerialize, SavesNumeralsOfAtLeastOneDigit) {
    EXPECT_EQ(SavedField(0u), "<r><F>0</F></r>");
    EXPECT_EQ(SavedField(4294967295u), "<r><F>4294967295</F></r>");
    EXPECT_EQ(SavedField(0ul), "<r><F>0</F></r>");
    EXPECT_EQ(SavedField(18446744073709551615ul), "<r><F>18446744073709551615</F></r>");
    EXPECT_EQ(SavedField(-9223372036854775807l - 1), "<r><F>-9223372036854775808</F></r>");
    EXPECT_EQ(SavedField(42l), "<r><F>42</F></r>");
}

TEST(XMLSerialize, ReadsNumerals) {
    EXPECT_EQ(Loaded("<F>0</F>", 7ul), 0ul);
    EXPECT_EQ(Loaded("<F>18446744073709551615</F>", 7ul), 18446744073709551615ul);
    EXPECT_EQ(Loaded("<F>00042</F>", 7ul), 42ul);
    EXPECT_EQ(Loaded("<F>4294967295</F>", 7u), 4294967295u);
    EXPECT_EQ(Loaded("<G>1</G>", 7ul), 7ul);
    EXPECT_EQ(Loaded("<G>1</G>", 7u), 7u);
}

TEST(XMLSerialize, RefusesWhatIsNoNumeral) {
    for (char const* const text :
         {"", " ", "x", "-1", "+1", "0x1", "1.0", "\n1\n", " 1", "1 ", "1x", "99999999999x"}) {
        EXPECT_THROW(Loaded("<F>"s + text + "</F>", 7ul), NotANumeral) << text;
        EXPECT_THROW(Loaded("<F>"s + text + "</F>", 7u), NotANumeral) << text;
    }
}

TEST(XMLSerialize, RefusesNumeralsThatAreTooLarge) {
    EXPECT_THROW(Loaded("<F>4294967296</F>", 7u), NumeralTooLarge);
    EXPECT_THROW(Loaded("<F>18446744073709551616</F>", 7u), NumeralTooLarge);
    EXPECT_THROW(Loaded("<F>18446744073709551616</F>", 7ul), NumeralTooLarge);
}

TEST(XMLSerialize, LetsTheLastOfSeveralChildrenWin) {
    EXPECT_EQ(Loaded("<F>1</F><G>9</G><F>2</F>", 7ul), 2ul);
    EXPECT_FALSE(Loaded("<F>1</F><F>0</F>", true));
    EXPECT_EQ(Loaded("<F>x</F><F></F>", SharedUString<UTF8>("before"_utf8)), ""_utf8);
}

TEST(XMLSerialize, ReadsEveryChildOfTheName) {
    EXPECT_THROW(Loaded("<F>x</F><F>2</F>", 7ul), NotANumeral);
}

TEST(XMLSerialize, ComparesNamesExactlyAndLooksAtChildrenOnly) {
    EXPECT_EQ(Loaded("<f>1</f><FF>2</FF><G><F>3</F></G>", 7ul), 7ul);
}

TEST(XMLSerialize, KeepsWhatWasReadBeforeABadField) {
    auto const element = Parsed("<r><A>1</A><B>x</B></r>");
    unsigned long a = 0;
    unsigned long b = 5;
    XMLSerialize(*element, "A", a);
    EXPECT_THROW(XMLSerialize(*element, "B", b), NotANumeral);
    EXPECT_EQ(a, 1ul);
    EXPECT_EQ(b, 5ul);
}

TEST(XMLSerialize, TakesNamesAsViewsToo) {
    EXPECT_EQ(Written([](XMLWriter& writer) { XMLSave(writer, "F"_utf8, 5u); }), "<r><F>5</F></r>");
    unsigned int value = 0;
    XMLLoad(*Parsed("<r><F>5</F></r>"), "F"_utf8, value);
    EXPECT_EQ(value, 5u);
}

using Optional = NullOr<SharedUString<UTF8>>;

TEST(XMLSerializeOptional, WritesNothingForNull) {
    EXPECT_EQ(SavedField(Optional()), "<r></r>");
    EXPECT_EQ(SavedField(Optional(SharedUString<UTF8>("a<b"_utf8))), "<r><F><![CDATA[a<b]]></F></r>");
    EXPECT_EQ(SavedField(Optional(SharedUString<UTF8>())), "<r><F></F></r>");
    EXPECT_EQ(Written([](XMLWriter& writer) { XMLSerialize(writer, "F"_utf8, NullOr<unsigned long>(3)); }),
              "<r><F>3</F></r>");
}

TEST(XMLSerializeOptional, TellsAbsentFromEmpty) {
    Optional const absent = Loaded("", Optional());
    EXPECT_TRUE(absent.IsNull());
    Optional const empty = Loaded("<F></F>", Optional());
    ASSERT_FALSE(empty.IsNull());
    EXPECT_TRUE((*empty).empty());
}

TEST(XMLSerializeOptional, OverwritesWithNullWhenAbsent) {
    EXPECT_TRUE(Loaded("<G>x</G>", Optional(SharedUString<UTF8>("before"_utf8))).IsNull());
    EXPECT_TRUE(Loaded("", NullOr<CopiedUString<UTF8>>(CopiedUString<UTF8>("before"_utf8))).IsNull());
}

TEST(XMLSerializeOptional, LetsTheLastOfSeveralChildrenWin) {
    Optional const value = Loaded("<F>1</F><F>2</F>", Optional());
    ASSERT_FALSE(value.IsNull());
    EXPECT_EQ(*value, "2"_utf8);
}

TEST(XMLSerializeOptional, KeepsItsValueWhenTheReadingFails) {
    auto const element = Parsed("<r><F>x</F></r>");
    NullOr<unsigned long> value(7);
    EXPECT_THROW(XMLSerialize(*element, "F", value), NotANumeral);
    ASSERT_FALSE(value.IsNull());
    EXPECT_EQ(*value, 7ul);
}

TEST(XMLSerializeOptional, SurvivesTheRoundTrip) {
    for (Optional const& value :
         {Optional(), Optional(SharedUString<UTF8>()), Optional(SharedUString<UTF8>("]]>"_utf8))}) {
        Optional read(SharedUString<UTF8>("before"_utf8));
        XMLSerialize(*Parsed(SavedField(value)), "F", read);
        ASSERT_EQ(read.IsNull(), value.IsNull());
        if (!value.IsNull()) {
            EXPECT_EQ(*read, *value);
        }
    }
}

struct Item {
    unsigned long id = 9;
    bool flag = true;
};

void XMLLoad(XMLElement const& element, Item& item) {
    XMLSerialize(element, "ID", item.id);
    XMLSerialize(element, "Flag", item.flag);
}

TEST(XMLSerializeVector, AppendsARecordForEachChild) {
    std::vector<Item> items(1);
    items[0].id = 100;
    XMLLoad(*Parsed("<r><I><ID>1</ID></I><J><ID>5</ID></J><I><Flag>0</Flag></I><i></i></r>"), "I"_utf8,
            items);
    ASSERT_EQ(items.size(), 3u);
    EXPECT_EQ(items.capacity(), 3u) << "room is made once, for all";
    EXPECT_EQ(items[0].id, 100ul);
    EXPECT_EQ(items[1].id, 1ul);
    EXPECT_TRUE(items[1].flag);
    EXPECT_EQ(items[2].id, 9ul);
    EXPECT_FALSE(items[2].flag);
}

TEST(XMLSerializeVector, KeepsItsRecordsWithoutAChild) {
    std::vector<Item> items(2);
    XMLSerialize(*Parsed("<r></r>"), "I", items);
    EXPECT_EQ(items.size(), 2u);
}

TEST(XMLSerializeVector, KeepsTheRecordsBeforeABadOne) {
    std::vector<Item> items;
    auto const element = Parsed("<r><I><ID>1</ID></I><I><ID>x</ID></I></r>");
    EXPECT_THROW(XMLLoad(*element, "I"_utf8, items), NotANumeral);
    ASSERT_EQ(items.size(), 1u);
    EXPECT_EQ(items[0].id, 1ul);
}

} // namespace
