#pragma once

#include "foundation/Exceptions.h"
#include "xml/XMLReceiver.h"

#include <vector>

// One element of a parsed document: name, attributes, the character data of this element alone, and the
// child elements by value. Copies are deep; copying, moving and destroying need no stack however deep the
// tree is.
//
// Character data is joined without regard to where the children stood: <a>x<b></b>y</a> has the value "xy".
class XMLElement {
public:
    XMLElement() = default;
    XMLElement(UStringRef<UTF8> const& elementName, XMLAttributeMap const& elementAttributes);
    XMLElement(char const* elementName, XMLAttributeMap const& elementAttributes);
    XMLElement(XMLElement const& other);
    XMLElement(XMLElement&& other) noexcept = default;
    XMLElement& operator=(XMLElement const& other);
    XMLElement& operator=(XMLElement&& other) noexcept = default;
    ~XMLElement();

    void SetName(UStringRef<UTF8> const& newName) { name = newName; }

    // The character data; the null view when there is none. Valid until the element changes.
    UStringRef<UTF8> GetValue() const;
    // The text must not point into this element.
    void AppendCharacters(UStringRef<UTF8> const& text);

    bool HasChildren() const { return !children.empty(); }
    bool HasChildElement(UStringRef<UTF8> const& childName) const;
    // The first child of that name; throws NoSuchChildElement when there is none. Names compare exactly.
    XMLElement const& GetChildElement(UStringRef<UTF8> const& childName) const;
    // Appends a child and returns where it is stored, valid until the next child is added.
    XMLElement* AddChildElement(XMLElement const& child);
    XMLElement* AddChildElement(XMLElement&& child);
    // The same with a child made in place.
    XMLElement* AddChildElement(UStringRef<UTF8> const& childName, XMLAttributeMap const& childAttributes);

    bool HasAttribute(UStringRef<UTF8> const& attributeName) const;
    bool HasAttribute(char const* attributeName) const;
    // The attribute's value, valid until the element changes; throws NoSuchAttribute when there is none.
    UStringRef<UTF8> GetAttribute(UStringRef<UTF8> const& attributeName) const;
    UStringRef<UTF8> GetAttribute(char const* attributeName) const;
    // Inserts or overwrites.
    void SetAttribute(UStringRef<UTF8> const& attributeName, UStringRef<UTF8> const& attributeValue);

    SharedUString<UTF8> name;
    XMLAttributeMap attributes;
    // UTF-8 bytes.
    std::vector<unsigned char> value;
    std::vector<XMLElement> children;

private:
    struct WithoutChildren {};
    XMLElement(XMLElement const& other, WithoutChildren);
    void CopyChildren(XMLElement const& other);

    XMLElement const* FindChild(UStringRef<UTF8> const& childName) const;
};
