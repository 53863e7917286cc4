#pragma once

#include "xml/SimpleXMLParserPL.h"

#include <string>
#include <vector>

// One callback of the parser as a line of text:
//
//   <name|attribute=value|attribute=value   start of an element
//   ?name|attribute=value                   processing instruction
//   >name                                   end of an element
//   "text                                   characters
using Calls = std::vector<std::string>;

class RecordingHandler : public XMLHandler {
public:
    void StartElement(UStringRef<UTF8> const& name, XMLAttributePointers const& attributes) override {
        calls.push_back('<' + MakeString(name) + Listed(attributes));
    }
    void EndElement(UStringRef<UTF8> const& name) override { calls.push_back('>' + MakeString(name)); }
    void Characters(UStringRef<UTF8> const& text) override { calls.push_back('"' + MakeString(text)); }
    void DoProcessingInstructionElement(UStringRef<UTF8> const& name,
                                        XMLAttributePointers const& attributes) override {
        calls.push_back('?' + MakeString(name) + Listed(attributes));
    }

    Calls calls;

private:
    static std::string Listed(XMLAttributePointers const& attributes) {
        std::string text;
        for (XMLAttribute const* const attribute : attributes)
            text += '|' + MakeString(attribute->first) + '=' + MakeString(attribute->second);
        return text;
    }
};

// The callbacks for a document that comes in one piece.
inline Calls CallsFor(std::string const& document) {
    RecordingHandler handler;
    SimpleXMLParserPL(handler).Parse(MakeUTF8Ref(document));
    return handler.calls;
}

// The callbacks for a document that comes in several pieces.
inline Calls CallsForPieces(std::vector<std::string> const& pieces) {
    RecordingHandler handler;
    SimpleXMLParserPL parser(handler);
    for (std::string const& piece : pieces) parser.Parse(MakeUTF8Ref(piece));
    return handler.calls;
}

// The same callbacks with adjacent characters put together, which is what does not depend on the pieces.
inline Calls Joined(Calls const& calls) {
    Calls joined;
    for (std::string const& call : calls) {
        if (call[0] == '"' && !joined.empty() && joined.back()[0] == '"')
            joined.back() += call.substr(1);
        else
            joined.push_back(call);
    }
    return joined;
}
