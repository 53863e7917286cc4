#pragma once

#include "xml/SimpleXML.h"

#include <memory>
#include <string>

// The tree of a document given as a C++ text.
inline std::unique_ptr<XMLElement> ParsedElement(std::string const& document) {
    return SimpleXML::ParseXMLToTree(MakeUTF8Ref(document));
}

// A record filled from an element by XMLSerialize.
template <class Record>
Record ReadRecord(std::string const& document) {
    Record record;
    XMLSerialize(*ParsedElement(document), record);
    return record;
}
