#pragma once

#include "text/Buffers.h"
#include "text/CopiedUString.h"
#include "text/UTF8StringBuilder.h"
#include "xml/XMLHandler.h"

// Forgiving, byte-driven parser for what XMLWriter writes. It refuses nothing: every byte moves the machine
// somewhere, and input that ends inside a construct delivers what was complete. Worth knowing:
//
// - There are no self-closing elements: <a/> is an end tag.
// - End tags are not compared with anything.
// - Only the space is white space inside a tag. A "-" in a start tag's name is dropped, and a second one
//   turns what follows into a comment.
// - &lt; &gt; &amp; &quot; are known, and hexadecimal references whose value, as strtol reads it into 32
// signed
//   bits, is at most 255: these give one single byte. Every other entity stays in the text as it is written.
// - The text before an entity, the entity and the text behind it come as separate Characters calls.
// - CDATA is passed on as it stands, but for NUL bytes, which are lost. DOCTYPE and its like are start tags.
//
// The state survives between calls of Parse, so a document may come in any pieces; only the cuts between
// Characters calls depend on them. A parser whose handler has thrown is not to be used again.
class SimpleXMLParserPL : public XMLHandler {
public:
    // Calls `handler`, which must outlive the parser.
    explicit SimpleXMLParserPL(XMLHandler& handler);
    // Calls itself: for classes that derive from the parser and override the callbacks.
    SimpleXMLParserPL();

    void Parse(UStringRef<UTF8> const& text);

    void StartElement(UStringRef<UTF8> const&, XMLAttributePointers const&) override {}
    void EndElement(UStringRef<UTF8> const&) override {}
    void Characters(UStringRef<UTF8> const&) override {}

private:
    enum State : std::uint32_t {
        InText,
        InTextEntity,
        InTagName,
        InEndTag,
        BetweenAttributes,
        InAttributeName,
        BeforeAttributeValue,
        InAttributeValue,
        InAttributeEntity,
        InComment,
        InCData
    };

    // Each reads at least one byte, and may go on while its state lasts.
    void ReadText(ConstBuffer& in);
    void ReadTextEntity(ConstBuffer& in);
    void ReadTagName(ConstBuffer& in);
    void ReadEndTag(ConstBuffer& in);
    void ReadBetweenAttributes(ConstBuffer& in);
    void ReadAttributeName(ConstBuffer& in);
    void ReadBeforeAttributeValue(ConstBuffer& in);
    void ReadAttributeValue(ConstBuffer& in);
    void ReadAttributeEntity(ConstBuffer& in);
    void ReadComment(ConstBuffer& in);
    void ReadCData(ConstBuffer& in);

    using Reader = void (SimpleXMLParserPL::*)(ConstBuffer& in);
    static Reader const cReaders[];

    // Shortcuts for what the writer writes most. Each reads something that lies whole in this piece and
    // delivers it from where it lies; otherwise it reads nothing and returns false.
    bool ReadWholeMarkup(ConstBuffer& in);
    bool ReadWholeEndTag(ConstBuffer& in);
    bool ReadWholePlainTag(ConstBuffer& in);
    bool ReadWholeCData(ConstBuffer& in);

    void TransitionState(State next);
    void LeaveState(State next);
    void EnterState(State next);
    void DeliverText();
    void DeliverTag();
    void BeginAttribute();
    void ReadEntity(ConstBuffer& in, State next);
    UStringRef<UTF8> DecodeEscapeString();
    void AppendCData(ConstData bytes);
    void AppendWithoutNul(ConstData bytes);

    State m_state = InText;
    unsigned char m_currentByte = 0;
    unsigned char m_previousByte = 0;
    unsigned char m_previousByte2 = 0;
    unsigned char m_quoteByte = 0;
    UTF8StringBuilder m_text;
    CopiedUString<UTF8> m_escape;
    CopiedUString<UTF8> m_name;
    XMLAttributePointers m_attributePointers;
    std::vector<XMLAttribute> m_attributePool;
    SharedUString<UTF8>* m_attributeName = nullptr;
    SharedUString<UTF8>* m_attributeValue = nullptr;
    // The attribute name or value being read; it goes to its slot in one piece when it is complete.
    UTF8StringBuilder m_attributeText;
    std::uint32_t m_attributeCount = 0;
    std::int32_t m_dashCount = 0;
    XMLHandler* m_handler;
};
