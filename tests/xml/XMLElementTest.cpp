#include "xml/XMLElement.h"

#include "tests/support/UStringPrinting.h"
#include "tests/xml/SmallStack.h"

#include <gtest/gtest.h>

#include <type_traits>

namespace {

XMLAttributeMap TwoAttributes() {
    XMLAttributeMap attributes;
    attributes["b"_utf8] = "1"_utf8;
    attributes["c"_utf8] = "2"_utf8;
    return attributes;
}

// An element named `name` whose value and only attribute are its name.
XMLElement Named(char const* name) {
    XMLElement element(name, {});
    element.AppendCharacters(MakeUTF8Ref(name));
    element.SetAttribute(MakeUTF8Ref(name), MakeUTF8Ref(name));
    return element;
}

TEST(XMLElement, IsEmptyAtFirst) {
    XMLElement const element;
    EXPECT_TRUE(element.name.empty());
    EXPECT_TRUE(element.attributes.empty());
    EXPECT_TRUE(element.value.empty());
    EXPECT_TRUE(element.children.empty());
    EXPECT_FALSE(element.HasChildren());
}

TEST(XMLElement, TakesNameAndAttributes) {
    XMLElement const fromView("a"_utf8, TwoAttributes());
    XMLElement const fromLiteral("a", TwoAttributes());
    for (XMLElement const* const element : {&fromView, &fromLiteral}) {
        EXPECT_EQ(element->name, "a"_utf8);
        EXPECT_EQ(element->attributes.size(), 2u);
        EXPECT_EQ(element->GetAttribute("c"), "2"_utf8);
        EXPECT_FALSE(element->HasChildren());
        EXPECT_TRUE(element->GetValue().empty());
    }
}

TEST(XMLElement, KeepsItsAttributesWhenTheMapChanges) {
    XMLAttributeMap attributes = TwoAttributes();
    XMLElement const element("a", attributes);
    attributes["b"_utf8] = "changed"_utf8;
    EXPECT_EQ(element.GetAttribute("b"), "1"_utf8);
}

TEST(XMLElement, ReplacesItsName) {
    XMLElement element("a", {});
    element.SetName("b"_utf8);
    EXPECT_EQ(element.name, "b"_utf8);
}

TEST(XMLElement, GivesTheNullViewForNoValue) {
    XMLElement element;
    EXPECT_EQ(element.GetValue().begin(), nullptr);
    EXPECT_EQ(element.GetValue().end(), nullptr);
    EXPECT_EQ(element.GetValue(), ""_utf8);
    element.AppendCharacters(""_utf8);
    element.AppendCharacters(UStringRef<UTF8>());
    EXPECT_EQ(element.GetValue().begin(), nullptr);
}

TEST(XMLElement, AppendsCharactersToItsValue) {
    XMLElement element;
    element.AppendCharacters("ab"_utf8);
    element.AppendCharacters(UStringRef<UTF8>());
    element.AppendCharacters("\0c"_utf8);
    EXPECT_EQ(element.GetValue(), "ab\0c"_utf8);
}

TEST(XMLElement, AppendsManyPieces) {
    XMLElement element;
    std::string expected;
    int growths = 0;
    for (int piece = 0; piece < 10000; ++piece) {
        std::string const text = std::to_string(piece);
        std::size_t const capacity = element.value.capacity();
        element.AppendCharacters(MakeUTF8Ref(text));
        expected += text;
        if (element.value.capacity() != capacity) ++growths;
    }
    EXPECT_EQ(MakeString(element.GetValue()), expected);
    EXPECT_LE(growths, 20) << "the room has to double";
}

TEST(XMLElement, OneTextFitsExactly) {
    XMLElement element;
    element.AppendCharacters("seventeen letters"_utf8);
    EXPECT_EQ(element.value.capacity(), 17u);
}

TEST(XMLElement, FindsTheFirstChildOfAName) {
    XMLElement element;
    element.AddChildElement(Named("x"));
    element.AddChildElement(Named("y"))->AppendCharacters("first"_utf8);
    element.AddChildElement(Named("y"))->AppendCharacters("second"_utf8);
    EXPECT_TRUE(element.HasChildren());
    EXPECT_TRUE(element.HasChildElement("y"_utf8));
    EXPECT_EQ(element.GetChildElement("y"_utf8).GetValue(), "yfirst"_utf8);
    ASSERT_EQ(element.children.size(), 3u);
    EXPECT_EQ(element.children[2].GetValue(), "ysecond"_utf8);
}

TEST(XMLElement, ComparesNamesOfChildrenExactly) {
    XMLElement element;
    element.AddChildElement(Named("Name"));
    for (char const* const name : {"name", "Nam", "Name ", ""}) {
        EXPECT_FALSE(element.HasChildElement(MakeUTF8Ref(name))) << name;
        EXPECT_THROW(element.GetChildElement(MakeUTF8Ref(name)), NoSuchChildElement) << name;
    }
}

TEST(XMLElement, ReturnsTheStoredChild) {
    XMLElement element;
    XMLElement child = Named("x");
    XMLElement const* const first = element.AddChildElement(child);
    EXPECT_EQ(first, &element.children[0]);
    child.SetName("changed"_utf8);
    EXPECT_EQ(element.children[0].name, "x"_utf8);
    XMLElement const* const second = element.AddChildElement("y"_utf8, TwoAttributes());
    EXPECT_EQ(second, &element.children[1]);
    EXPECT_EQ(element.children[1].GetAttribute("b"), "1"_utf8);
}

TEST(XMLElement, TakesItselfOrAChildOfItsOwnForAChild) {
    XMLElement element = Named("a");
    element.AddChildElement(Named("b"));
    element.AddChildElement(element);
    element.AddChildElement(element.children[0]);
    ASSERT_EQ(element.children.size(), 3u);
    EXPECT_EQ(element.children[1].children.size(), 1u);
    EXPECT_EQ(element.children[2].GetValue(), "b"_utf8);
}

TEST(XMLElement, FindsAttributesExactly) {
    XMLElement const element("a", TwoAttributes());
    EXPECT_TRUE(element.HasAttribute("b"_utf8));
    EXPECT_TRUE(element.HasAttribute("b"));
    EXPECT_EQ(element.GetAttribute("b"_utf8), "1"_utf8);
    for (char const* const name : {"B", "", "b ", "d"}) {
        EXPECT_FALSE(element.HasAttribute(name)) << name;
        EXPECT_FALSE(element.HasAttribute(MakeUTF8Ref(name))) << name;
        EXPECT_THROW(element.GetAttribute(name), NoSuchAttribute) << name;
        EXPECT_THROW(element.GetAttribute(MakeUTF8Ref(name)), NoSuchAttribute) << name;
    }
}

TEST(XMLElement, InsertsAndOverwritesAttributes) {
    XMLElement element;
    element.SetAttribute("b"_utf8, "1"_utf8);
    element.SetAttribute("a"_utf8, "2"_utf8);
    element.SetAttribute("b"_utf8, "3"_utf8);
    ASSERT_EQ(element.attributes.size(), 2u);
    EXPECT_EQ(element.attributes.begin()->first, "a"_utf8);
    EXPECT_EQ(element.GetAttribute("b"), "3"_utf8);
}

TEST(XMLElement, GivesTheAttributesOwnText) {
    XMLElement element;
    element.SetAttribute("b"_utf8, "1"_utf8);
    EXPECT_EQ(element.GetAttribute("b").begin(), element.attributes.begin()->second.begin());
}

TEST(XMLElement, CopiesItsWholeSubtree) {
    XMLElement original = Named("a");
    original.AddChildElement(Named("b"))->AddChildElement(Named("c"));
    XMLElement const copy(original);
    XMLElement assigned = Named("z");
    assigned = original;
    original.AppendCharacters("changed"_utf8);
    original.children[0].SetAttribute("b"_utf8, "changed"_utf8);
    original.children[0].children[0].SetName("changed"_utf8);
    original.children[0].children.clear();
    for (XMLElement const* const element : {&copy, static_cast<XMLElement const*>(&assigned)}) {
        EXPECT_EQ(element->name, "a"_utf8);
        EXPECT_EQ(element->GetValue(), "a"_utf8);
        XMLElement const& child = element->GetChildElement("b"_utf8);
        EXPECT_EQ(child.GetAttribute("b"), "b"_utf8);
        EXPECT_EQ(child.GetChildElement("c"_utf8).GetValue(), "c"_utf8);
    }
}

TEST(XMLElement, MayBeAssignedAPartOfItself) {
    XMLElement element = Named("a");
    element.AddChildElement(Named("b"))->AddChildElement(Named("c"));
    element = static_cast<XMLElement const&>(element);
    EXPECT_EQ(element.children.size(), 1u);
    element = static_cast<XMLElement const&>(element.children[0]);
    EXPECT_EQ(element.name, "b"_utf8);
    EXPECT_EQ(element.GetChildElement("c"_utf8).GetValue(), "c"_utf8);
}

TEST(XMLElement, MovesWithoutThrowing) {
    static_assert(std::is_nothrow_move_constructible_v<XMLElement>);
    static_assert(std::is_nothrow_move_assignable_v<XMLElement>);
    XMLElement element = Named("a");
    XMLElement const* const child = element.AddChildElement(Named("b"));
    XMLElement const moved(std::move(element));
    EXPECT_EQ(&moved.children[0], child);
    EXPECT_EQ(moved.name, "a"_utf8);
}

TEST(XMLElement, NeedsNoStackForADeepTree) {
    RunOnSmallStack([] {
        constexpr std::size_t cLevels = 1000000;
        XMLElement root("root", {});
        XMLElement* innermost = &root;
        for (std::size_t level = 0; level < cLevels; ++level)
            innermost = innermost->AddChildElement("a"_utf8, {});
        XMLElement copy(root);
        root = XMLElement();
        std::size_t levels = 0;
        for (XMLElement const* element = &copy; element->HasChildren(); element = &element->children[0])
            ++levels;
        EXPECT_EQ(levels, cLevels);
    });
}

TEST(XMLElement, NeedsNoStackForManyDeepChildren) {
    RunOnSmallStack([] {
        XMLElement root;
        for (int branch = 0; branch < 10; ++branch) {
            XMLElement* innermost = root.AddChildElement("a"_utf8, {});
            for (int level = 0; level < 20000; ++level) {
                innermost->AddChildElement("leaf"_utf8, {});
                innermost = innermost->AddChildElement("a"_utf8, {});
            }
        }
        XMLElement const copy(root);
        EXPECT_EQ(copy.children[9].children[1].children[0].name, "leaf"_utf8);
        root.children.erase(root.children.begin());
        EXPECT_EQ(root.children.size(), 9u);
    });
}

} // namespace
