#pragma once

#include "xml/XMLElement.h"

#include <memory>

// Builds a tree from what a parser reports. An end closes the current element whatever its name was, a second
// top-level element replaces the first, and text outside the root is dropped.
class XMLTreeParser : public XMLReceiver {
public:
    void StartElement(UStringRef<UTF8> const& name, XMLAttributeMap const& attributes) override;
    void EndElement() override;
    void Characters(UStringRef<UTF8> const& text) override;

    // Gives up the root; null when no element was ever started.
    std::unique_ptr<XMLElement> TakeRoot();

private:
    // Gives the current element, when it gets its first child, room for as many children as the sibling
    // before it has: the elements of a list are mostly of one kind. Each element is followed by at most one
    // sibling, so all the room given in vain is less than what the tree holds.
    void ReserveLikeSibling();

    std::unique_ptr<XMLElement> m_root;
    // From the root to the current element. A pointer stays valid because the children of an element grow
    // only while it is the current one, when none of them is in this list.
    std::vector<XMLElement*> m_openElements;
};
