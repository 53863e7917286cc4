#pragma once

#include "text/SharedUString.h"

#include <vector>

template <class A, class B>
struct Pair {
    A first;
    B second;
};

// An attribute's name and value.
using XMLAttribute = Pair<SharedUString<UTF8>, SharedUString<UTF8>>;
// The attributes of one tag in the order of the document.
using XMLAttributePointers = std::vector<XMLAttribute const*>;

// What the parser calls. Names, texts and attributes are valid during the call only.
class XMLHandler {
public:
    XMLHandler() = default;
    XMLHandler(XMLHandler const&) = delete;
    XMLHandler& operator=(XMLHandler const&) = delete;
    virtual ~XMLHandler() = default;

    virtual void StartElement(UStringRef<UTF8> const& name, XMLAttributePointers const& attributes) = 0;
    virtual void EndElement(UStringRef<UTF8> const& name) = 0;
    // The text between two tags may come in several calls.
    virtual void Characters(UStringRef<UTF8> const& text) = 0;
    virtual void DoProcessingInstructionElement(UStringRef<UTF8> const&, XMLAttributePointers const&) {}
};
