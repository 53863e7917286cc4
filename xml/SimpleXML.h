#pragma once

#include "xml/SimpleXMLParserPL.h"
#include "xml/XMLElement.h"

#include <memory>

namespace SimpleXML {

// Parser that reports to the simpler XMLReceiver: attributes as a map, in which the later of two of one name
// wins, end tags without their name, and no processing instructions.
class SAXParser : private SimpleXMLParserPL {
public:
    // The receiver must outlive the parser.
    explicit SAXParser(XMLReceiver& receiver) : m_receiver(&receiver) {}

    void Parse(UStringRef<UTF8> const& text) { SimpleXMLParserPL::Parse(text); }

    // True when the first attribute named "encoding", in any case, has the value "utf-8", in any case.
    static bool HasUTF8Encoding(XMLAttributePointers const& attributes);

private:
    void StartElement(UStringRef<UTF8> const& name, XMLAttributePointers const& attributes) override;
    void EndElement(UStringRef<UTF8> const& name) override;
    void Characters(UStringRef<UTF8> const& text) override;

    XMLReceiver* m_receiver;
};

// The tree of a whole document. Anything that starts an element is a document; a text that starts none throws
// FormatError. Time and memory are linear in the size of the text.
std::unique_ptr<XMLElement> ParseXMLToTree(UStringRef<UTF8> const& text);

} // namespace SimpleXML
