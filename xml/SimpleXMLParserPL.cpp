#include "xml/SimpleXMLParserPL.h"

#include "xml/ByteScan.h"

#include <cstdlib>

// A state machine without lookahead. Each state has one reader, which takes as many bytes as the state lasts
// and moves on through TransitionState: the exit action of the state that is left, then the entry action of
// the next one. What lies whole in one piece of the input, and is of the plainest form, is delivered without
// going through the states; the calls are the same.
//
// Invariants: m_text, m_escape and m_name hold what the current construct has given so far, across calls of
// Parse; attribute slots below m_attributeCount are complete, and the slot at m_attributeCount is the one
// being filled while a tag is read. In CDATA the last two bytes stand in m_previousByte2 and m_previousByte,
// zero meaning none, so that "]]>" can be held back.
//
// Everything that grows doubles, so the cost is linear in the input. The counters cannot overflow: each step
// takes a byte, and their types hold more than a frame has bytes; dashes saturate.

namespace {

constexpr std::int32_t cDashesOfComment = 2;
constexpr long cLargestByte = 255;

UStringRef<UTF8> Between(unsigned char const* first, unsigned char const* last) {
    return UStringRef<UTF8>(UTF8(), first, last);
}

// Takes everything up to `end` from the cursor.
ConstData TakeUpTo(ConstBuffer& in, unsigned char const* end) {
    ConstData const taken(in.Next(), end);
    in.Skip(taken.Size());
    return taken;
}

// Where the first "]]>" begins; null when there is none.
unsigned char const* FindEndOfCData(ConstData data) {
    unsigned char const* next = data.begin();
    while (true) {
        next = FindByte(ConstData(next, data.end()), '>');
        if (next == data.end()) return nullptr;
        if (next - data.begin() >= 2 && next[-1] == ']' && next[-2] == ']') return next - 2;
        ++next;
    }
}

} // namespace

SimpleXMLParserPL::Reader const SimpleXMLParserPL::cReaders[] = {
    &SimpleXMLParserPL::ReadText,
    &SimpleXMLParserPL::ReadTextEntity,
    &SimpleXMLParserPL::ReadTagName,
    &SimpleXMLParserPL::ReadEndTag,
    &SimpleXMLParserPL::ReadBetweenAttributes,
    &SimpleXMLParserPL::ReadAttributeName,
    &SimpleXMLParserPL::ReadBeforeAttributeValue,
    &SimpleXMLParserPL::ReadAttributeValue,
    &SimpleXMLParserPL::ReadAttributeEntity,
    &SimpleXMLParserPL::ReadComment,
    &SimpleXMLParserPL::ReadCData,
};

SimpleXMLParserPL::SimpleXMLParserPL(XMLHandler& handler) : m_handler(&handler) {
}

SimpleXMLParserPL::SimpleXMLParserPL() : m_handler(this) {
}

void SimpleXMLParserPL::Parse(UStringRef<UTF8> const& text) {
    ConstBuffer in(text);
    while (!in.empty()) {
        Reader const reader = cReaders[m_state];
        (this->*reader)(in);
    }
}

void SimpleXMLParserPL::ReadText(ConstBuffer& in) {
    ConstData const run = TakeUpTo(in, FindEither(in.Rest(), '<', '&'));
    bool const ends = !in.empty();
    if (ends && m_text.empty()) {
        // The whole text lies in this piece: it is delivered from where it is.
        if (!run.empty()) m_handler->Characters(MakeUTF8Ref(run));
    } else {
        m_text += MakeUTF8Ref(run);
    }
    if (!ends) return;
    DeliverText();
    if (in.Take() == '&')
        TransitionState(InTextEntity);
    else if (!ReadWholeMarkup(in))
        TransitionState(InTagName);
}

bool SimpleXMLParserPL::ReadWholeMarkup(ConstBuffer& in) {
    if (in.empty()) return false;
    switch (*in.Next()) {
    case '/': return ReadWholeEndTag(in);
    case '!': return ReadWholeCData(in);
    default: return ReadWholePlainTag(in);
    }
}

bool SimpleXMLParserPL::ReadWholeEndTag(ConstBuffer& in) {
    unsigned char const* const name = in.Next() + 1;
    unsigned char const* const end = FindByte(ConstData(name, in.Rest().end()), '>');
    if (end == in.Rest().end()) return false;
    TakeUpTo(in, end + 1);
    m_handler->EndElement(Between(name, end));
    return true;
}

// A start tag with nothing in it that a tag's name is looked through for, and no attributes.
bool SimpleXMLParserPL::ReadWholePlainTag(ConstBuffer& in) {
    static constexpr ByteSet cNotPlain(" />-[?");
    unsigned char const* const name = in.Next();
    unsigned char const* const end = cNotPlain.FindIn(in.Rest());
    if (end == in.Rest().end() || *end != '>') return false;
    TakeUpTo(in, end + 1);
    m_attributePointers.clear();
    m_handler->StartElement(Between(name, end), m_attributePointers);
    return true;
}

// A CDATA section without NUL bytes.
bool SimpleXMLParserPL::ReadWholeCData(ConstBuffer& in) {
    ConstData const opening = "![CDATA["_data;
    if (in.Size() < opening.Size() || std::memcmp(in.Next(), opening.begin(), opening.Size()) != 0)
        return false;
    ConstData const rest(in.Next() + opening.Size(), in.Rest().end());
    unsigned char const* const end = FindEndOfCData(rest);
    if (!end) return false;
    ConstData const text(rest.begin(), end);
    if (FindByte(text, '\0') != text.end()) return false;
    TakeUpTo(in, end + 3);
    if (!text.empty()) m_handler->Characters(MakeUTF8Ref(text));
    return true;
}

void SimpleXMLParserPL::ReadTextEntity(ConstBuffer& in) {
    ReadEntity(in, InText);
}

void SimpleXMLParserPL::ReadAttributeEntity(ConstBuffer& in) {
    ReadEntity(in, InAttributeValue);
}

void SimpleXMLParserPL::ReadEntity(ConstBuffer& in, State next) {
    m_escape += MakeUTF8Ref(TakeUpTo(in, FindByte(in.Rest(), ';')));
    if (in.empty()) return;
    in.Skip(1);
    TransitionState(next);
}

void SimpleXMLParserPL::ReadTagName(ConstBuffer& in) {
    static constexpr ByteSet cSpecial(" />-[");
    m_name += MakeUTF8Ref(TakeUpTo(in, cSpecial.FindIn(in.Rest())));
    if (in.empty()) return;
    switch (unsigned char const byte = in.Take()) {
    case ' ':
        if (!m_name.empty()) TransitionState(BetweenAttributes);
        break;
    case '/': TransitionState(InEndTag); break;
    case '>': TransitionState(InText); break;
    case '-':
        if (++m_dashCount >= cDashesOfComment) TransitionState(InComment);
        break;
    default:
        m_name += byte;
        if (m_name == "![CDATA["_utf8) {
            m_name.clear();
            m_previousByte = m_previousByte2 = 0;
            TransitionState(InCData);
        }
    }
}

void SimpleXMLParserPL::ReadEndTag(ConstBuffer& in) {
    m_name += MakeUTF8Ref(TakeUpTo(in, FindByte(in.Rest(), '>')));
    if (in.empty()) return;
    in.Skip(1);
    TransitionState(InText);
}

void SimpleXMLParserPL::ReadBetweenAttributes(ConstBuffer& in) {
    m_currentByte = in.Take();
    if (m_currentByte == ' ' || m_currentByte == '?') return;
    TransitionState(m_currentByte == '>' ? InText : InAttributeName);
}

void SimpleXMLParserPL::ReadAttributeName(ConstBuffer& in) {
    m_attributeText += MakeUTF8Ref(TakeUpTo(in, FindByte(in.Rest(), '=')));
    if (in.empty()) return;
    in.Skip(1);
    TransitionState(BeforeAttributeValue);
}

void SimpleXMLParserPL::ReadBeforeAttributeValue(ConstBuffer& in) {
    TakeUpTo(in, FindEither(in.Rest(), '\'', '"'));
    if (in.empty()) return;
    m_quoteByte = in.Take();
    TransitionState(InAttributeValue);
}

void SimpleXMLParserPL::ReadAttributeValue(ConstBuffer& in) {
    m_attributeText += MakeUTF8Ref(TakeUpTo(in, FindEither(in.Rest(), m_quoteByte, '&')));
    if (in.empty()) return;
    TransitionState(in.Take() == m_quoteByte ? BetweenAttributes : InAttributeEntity);
}

void SimpleXMLParserPL::ReadComment(ConstBuffer& in) {
    switch (in.Take()) {
    case '-':
        if (m_dashCount < cDashesOfComment) ++m_dashCount;
        break;
    case '>':
        if (m_dashCount >= cDashesOfComment) {
            TransitionState(InText);
            break;
        }
        [[fallthrough]];
    default: m_dashCount = 0;
    }
}

void SimpleXMLParserPL::ReadCData(ConstBuffer& in) {
    AppendCData(TakeUpTo(in, FindByte(in.Rest(), '>')));
    if (in.empty()) return;
    in.Skip(1);
    if (m_previousByte == ']' && m_previousByte2 == ']')
        TransitionState(InText);
    else
        AppendCData(">"_data);
}

// Moves bytes through the two that are held back into the text.
void SimpleXMLParserPL::AppendCData(ConstData bytes) {
    if (bytes.Size() < 2) {
        for (unsigned char const byte : bytes) {
            if (m_previousByte2 != 0) m_text += m_previousByte2;
            m_previousByte2 = std::exchange(m_previousByte, byte);
        }
        return;
    }
    if (m_previousByte2 != 0) m_text += m_previousByte2;
    if (m_previousByte != 0) m_text += m_previousByte;
    AppendWithoutNul(ConstData(bytes.begin(), bytes.end() - 2));
    m_previousByte2 = bytes.end()[-2];
    m_previousByte = bytes.end()[-1];
}

void SimpleXMLParserPL::AppendWithoutNul(ConstData bytes) {
    ConstBuffer rest(bytes);
    while (!rest.empty()) {
        m_text += MakeUTF8Ref(TakeUpTo(rest, FindByte(rest.Rest(), '\0')));
        if (!rest.empty()) rest.Skip(1);
    }
}

void SimpleXMLParserPL::TransitionState(State next) {
    LeaveState(next);
    EnterState(next);
    m_state = next;
}

void SimpleXMLParserPL::LeaveState(State next) {
    switch (m_state) {
    case InText:
    case InCData: DeliverText(); break;
    case InTextEntity:
        m_escape += static_cast<unsigned char>(';');
        m_handler->Characters(DecodeEscapeString());
        break;
    case InTagName:
    case BetweenAttributes:
        if (next == InText) DeliverTag();
        break;
    case InEndTag:
        if (next == InText) m_handler->EndElement(m_name);
        break;
    case InAttributeName: *m_attributeName = m_attributeText.Ref(); break;
    case InAttributeValue:
        if (next != InAttributeEntity) {
            *m_attributeValue = m_attributeText.Ref();
            ++m_attributeCount;
        }
        break;
    case InAttributeEntity:
        m_escape += static_cast<unsigned char>(';');
        m_attributeText += DecodeEscapeString();
        break;
    case BeforeAttributeValue:
    case InComment: break;
    }
}

void SimpleXMLParserPL::EnterState(State next) {
    switch (next) {
    case InTextEntity:
    case InAttributeEntity:
        m_escape.clear();
        m_escape += static_cast<unsigned char>('&');
        break;
    case InTagName:
        m_dashCount = 0;
        m_name.clear();
        m_attributeCount = 0;
        break;
    case BetweenAttributes: BeginAttribute(); break;
    case InAttributeName:
        m_attributeText.clear();
        m_attributeText += m_currentByte;
        break;
    case InAttributeValue:
        if (m_state != InAttributeEntity) m_attributeText.clear();
        break;
    case InComment: m_dashCount = 0; break;
    case InText:
    case InEndTag:
    case BeforeAttributeValue:
    case InCData: break;
    }
}

void SimpleXMLParserPL::DeliverText() {
    if (m_text.empty()) return;
    m_handler->Characters(m_text.Ref());
    m_text.clear();
}

void SimpleXMLParserPL::DeliverTag() {
    m_attributePointers.clear();
    for (std::uint32_t index = 0; index < m_attributeCount; ++index)
        m_attributePointers.push_back(&m_attributePool[index]);
    if (!m_name.empty() && m_name[0] == '?')
        m_handler->DoProcessingInstructionElement(m_name, m_attributePointers);
    else
        m_handler->StartElement(m_name, m_attributePointers);
}

// Both strings of the slot behind the completed attributes are assigned whole before anybody sees them.
void SimpleXMLParserPL::BeginAttribute() {
    if (m_attributePool.size() <= m_attributeCount) m_attributePool.emplace_back();
    XMLAttribute& slot = m_attributePool[m_attributeCount];
    m_attributeName = &slot.first;
    m_attributeValue = &slot.second;
}

// The text of the entity; it may point into m_escape.
//
// A hexadecimal reference gives one byte, without any encoding, so that a text of any encoding can be carried
// byte by byte. strtol takes what it can: white space, a sign and "0x" before the digits, anything behind
// them, and no digits at all, which is NUL.
UStringRef<UTF8> SimpleXMLParserPL::DecodeEscapeString() {
    UStringRef<UTF8> const escape = m_escape;
    if (escape == "&lt;"_utf8) return "<"_utf8;
    if (escape == "&gt;"_utf8) return ">"_utf8;
    if (escape == "&amp;"_utf8) return "&"_utf8;
    if (escape == "&quot;"_utf8) return "\""_utf8;
    if (escape.Middle(1, 3) == "#x"_utf8) {
        std::string const digits = MakeString(escape.Middle(3, escape.SizeInUnits()));
        auto const value = static_cast<std::int32_t>(std::strtol(digits.c_str(), nullptr, 16));
        if (value <= cLargestByte) {
            auto const byte = static_cast<unsigned char>(value & 0xFF);
            m_escape = Between(&byte, &byte + 1);
        }
    }
    return m_escape;
}
