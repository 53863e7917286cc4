#include "xml/XMLElement.h"

#include <algorithm>
#include <utility>

// A frame may nest elements as deep as it is long, so nothing here follows the tree by recursion: copying
// keeps a list of the work that is left, and destroying keeps it in the tree itself. Moving an element moves
// the buffer of its children and does not touch them.

namespace {

constexpr std::size_t cRoomForPieces = 64;

} // namespace

XMLElement::XMLElement(UStringRef<UTF8> const& elementName, XMLAttributeMap const& elementAttributes)
    : name(elementName), attributes(elementAttributes) {
}

XMLElement::XMLElement(char const* elementName, XMLAttributeMap const& elementAttributes)
    : XMLElement(MakeUTF8Ref(elementName), elementAttributes) {
}

XMLElement::XMLElement(XMLElement const& other, WithoutChildren)
    : name(other.name), attributes(other.attributes), value(other.value) {
}

XMLElement::XMLElement(XMLElement const& other) : XMLElement(other, WithoutChildren()) {
    CopyChildren(other);
}

XMLElement& XMLElement::operator=(XMLElement const& other) {
    XMLElement copy(other);
    return *this = std::move(copy);
}

// Needs no memory, since it also runs when there is none left: of several open lists of siblings, the ones
// that wait are kept as the children of an element of the next one, whose own children are taken out first.
XMLElement::~XMLElement() {
    std::vector<XMLElement> pending = std::move(children);
    while (!pending.empty()) {
        if (!pending.back().HasChildren()) {
            pending.pop_back();
            continue;
        }
        XMLElement last = std::move(pending.back());
        pending.pop_back();
        while (last.HasChildren()) {
            std::vector<XMLElement> inner = std::move(last.children);
            if (!pending.empty()) {
                last.children = std::move(pending);
                std::swap(last, inner.front());
            }
            pending = std::move(inner);
        }
    }
}

void XMLElement::CopyChildren(XMLElement const& other) {
    struct Work {
        XMLElement const* from;
        XMLElement* to;
    };
    std::vector<Work> pending;
    pending.push_back({&other, this});
    while (!pending.empty()) {
        Work const work = pending.back();
        pending.pop_back();
        work.to->children.reserve(work.from->children.size());
        for (XMLElement const& child : work.from->children) {
            work.to->children.push_back(XMLElement(child, WithoutChildren()));
            if (!child.children.empty()) pending.push_back({&child, &work.to->children.back()});
        }
    }
}

UStringRef<UTF8> XMLElement::GetValue() const {
    if (value.empty()) return UStringRef<UTF8>();
    return UStringRef<UTF8>(UTF8(), value.data(), value.data() + value.size());
}

void XMLElement::AppendCharacters(UStringRef<UTF8> const& text) {
    std::size_t const size = value.size() + text.SizeInUnits();
    // One text fits exactly; what comes in pieces gets room for more.
    if (size > value.capacity() && !value.empty())
        value.reserve(std::max({2 * value.size(), size, cRoomForPieces}));
    value.insert(value.end(), text.begin(), text.end());
}

XMLElement const* XMLElement::FindChild(UStringRef<UTF8> const& childName) const {
    for (XMLElement const& child : children)
        if (child.name == childName) return &child;
    return nullptr;
}

bool XMLElement::HasChildElement(UStringRef<UTF8> const& childName) const {
    return FindChild(childName) != nullptr;
}

XMLElement const& XMLElement::GetChildElement(UStringRef<UTF8> const& childName) const {
    XMLElement const* const child = FindChild(childName);
    if (!child) throw NoSuchChildElement();
    return *child;
}

XMLElement* XMLElement::AddChildElement(XMLElement const& child) {
    return AddChildElement(XMLElement(child));
}

XMLElement* XMLElement::AddChildElement(XMLElement&& child) {
    return &children.emplace_back(std::move(child));
}

XMLElement* XMLElement::AddChildElement(UStringRef<UTF8> const& childName,
                                        XMLAttributeMap const& childAttributes) {
    return &children.emplace_back(childName, childAttributes);
}

bool XMLElement::HasAttribute(UStringRef<UTF8> const& attributeName) const {
    return attributes.contains(SharedUString<UTF8>(attributeName));
}

bool XMLElement::HasAttribute(char const* attributeName) const {
    return HasAttribute(MakeUTF8Ref(attributeName));
}

UStringRef<UTF8> XMLElement::GetAttribute(UStringRef<UTF8> const& attributeName) const {
    auto const found = attributes.find(SharedUString<UTF8>(attributeName));
    if (found == attributes.end()) throw NoSuchAttribute();
    return found->second;
}

UStringRef<UTF8> XMLElement::GetAttribute(char const* attributeName) const {
    return GetAttribute(MakeUTF8Ref(attributeName));
}

void XMLElement::SetAttribute(UStringRef<UTF8> const& attributeName, UStringRef<UTF8> const& attributeValue) {
    attributes[SharedUString<UTF8>(attributeName)] = attributeValue;
}
