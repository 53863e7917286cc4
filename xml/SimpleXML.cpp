#include "xml/SimpleXML.h"

#include "text/Ascii.h"
#include "xml/XMLTreeParser.h"

namespace SimpleXML {

bool SAXParser::HasUTF8Encoding(XMLAttributePointers const& attributes) {
    for (XMLAttribute const* const attribute : attributes)
        if (Ascii::EqualIgnoringCase(attribute->first, "encoding"_data))
            return Ascii::EqualIgnoringCase(attribute->second, "utf-8"_data);
    return false;
}

void SAXParser::StartElement(UStringRef<UTF8> const& name, XMLAttributePointers const& attributes) {
    XMLAttributeMap map;
    for (XMLAttribute const* const attribute : attributes) map[attribute->first] = attribute->second;
    m_receiver->StartElement(name, map);
}

void SAXParser::EndElement(UStringRef<UTF8> const&) {
    m_receiver->EndElement();
}

void SAXParser::Characters(UStringRef<UTF8> const& text) {
    m_receiver->Characters(text);
}

std::unique_ptr<XMLElement> ParseXMLToTree(UStringRef<UTF8> const& text) {
    XMLTreeParser tree;
    SAXParser(tree).Parse(text);
    std::unique_ptr<XMLElement> root = tree.TakeRoot();
    if (!root) throw FormatError();
    return root;
}

} // namespace SimpleXML
