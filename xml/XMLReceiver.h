#pragma once

#include "text/SharedUString.h"

#include <map>

// Attributes by name, in byte order.
using XMLAttributeMap = std::map<SharedUString<UTF8>, SharedUString<UTF8>>;

// The simpler view of a document: end tags come without their name, attributes as a map. Names and texts are
// valid during the call only.
class XMLReceiver {
public:
    XMLReceiver() = default;
    XMLReceiver(XMLReceiver const&) = delete;
    XMLReceiver& operator=(XMLReceiver const&) = delete;
    virtual ~XMLReceiver() = default;

    virtual void StartElement(UStringRef<UTF8> const&, XMLAttributeMap const&) {}
    virtual void EndElement() {}
    virtual void Characters(UStringRef<UTF8> const&) {}
};
