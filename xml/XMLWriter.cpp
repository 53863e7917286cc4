#include "xml/XMLWriter.h"

#include "text/Ascii.h"

// Output goes out in runs: a scan finds the next byte that cannot be written as itself, and the run before it
// goes to the receiver in one piece.

namespace {

using Ref = UStringRef<UTF8>;

Ref HeaderWithEncoding() {
    return "<?xml version=\"1.0\" encoding=\"UTF-8\"?>"_utf8;
}

// Control bytes that are never written as themselves.
Bits ReplacedControlBytes() {
    Bits set = Ascii::Control();
    return set.Clear('\t').Clear('\n').Clear('\r');
}

constexpr unsigned char cFirstHeaderTail = 14;
constexpr unsigned char cLastHeaderTail = 31;

// What stands in the place of a control byte: single marks for a few of the low ones, nothing for the rest of
// them, and from 14 on the header's text behind its "<", from the character with that number on.
Ref ReplacementOfControlByte(unsigned char byte) {
    switch (byte) {
    case 0: return "\\"_utf8;
    case 2: return "\t"_utf8;
    case 4: return "</"_utf8;
    case 5: return "/"_utf8;
    case 7: return "<"_utf8;
    default: break;
    }
    if (byte < cFirstHeaderTail || byte > cLastHeaderTail) return Ref();
    Ref const header = HeaderWithEncoding();
    return header.Middle(1u + byte - cFirstHeaderTail, header.SizeInUnits());
}

Bits SpecialInText() {
    Bits set = ReplacedControlBytes();
    return set.Set('&').Set('<').Set('>').Set('\r').Set('\n');
}

Bits SpecialInAttribute() {
    return Bits().Set('&').Set('<').Set('>').Set('"').Set('\r').Set('\n');
}

// What is written for a special byte of text or attribute value.
Ref Replacement(unsigned char byte, bool escapeLineBreaks) {
    switch (byte) {
    case '&': return "&amp;"_utf8;
    case '<': return "&lt;"_utf8;
    case '>': return "&gt;"_utf8;
    case '"': return "&quot;"_utf8;
    case '\r': return escapeLineBreaks ? "&#xd;"_utf8 : "\r"_utf8;
    case '\n': return escapeLineBreaks ? "&#xa;"_utf8 : "\n"_utf8;
    default: return ReplacementOfControlByte(byte);
    }
}

// Hands `text` to the receiver with the bytes of `special` replaced.
void WriteEscaped(UTextReceiver<UTF8>& receiver, Ref const& text, Bits const& special,
                  bool escapeLineBreaks) {
    unsigned char const* run = text.begin();
    for (unsigned char const* next = run; next != text.end(); ++next) {
        if (!special.Has(*next)) continue;
        if (!escapeLineBreaks && (*next == '\r' || *next == '\n')) continue;
        if (next != run) receiver.Receive(Ref(UTF8(), run, next));
        Ref const replacement = Replacement(*next, escapeLineBreaks);
        if (!replacement.empty()) receiver.Receive(replacement);
        run = next + 1;
    }
    if (run != text.end()) receiver.Receive(Ref(UTF8(), run, text.end()));
}

bool HoldsMarkup(Ref const& text) {
    return text.Contains('<') || text.Contains('&') || text.Contains('>');
}

} // namespace

void XMLWriter::WriteTabs(std::size_t count) {
    constexpr std::size_t cTabsInOnePiece = 16;
    Ref const tabs = "\t\t\t\t\t\t\t\t\t\t\t\t\t\t\t\t"_utf8;
    for (; count > cTabsInOnePiece; count -= cTabsInOnePiece) Write(tabs);
    if (count != 0) Write(tabs.Middle(0, count));
}

void XMLWriter::CloseStartTag() {
    if (m_writeState != StartTagOpen) return;
    Write(">"_utf8);
    m_writeState = StartTagClosed;
}

void XMLWriter::BeginDocument(EncodingDeclaration declaration) {
    m_receiver.Start(UTF8());
    Write(declaration == WithEncoding ? HeaderWithEncoding() : "<?xml version=\"1.0\"?>"_utf8);
}

void XMLWriter::BeginElement(Ref const& name) {
    CloseStartTag();
    if (m_style == Indented || m_style == LineBreaks) Write("\n"_utf8);
    if (m_style == Indented) WriteTabs(m_openElements.size());
    Write("<"_utf8);
    Write(name);
    m_openElements.emplace_back(name);
    m_writeState = StartTagOpen;
}

void XMLWriter::AddAttribute(Ref const& name, Ref const& value) {
    static Bits const special = SpecialInAttribute();
    Write(" "_utf8);
    Write(name);
    Write("=\""_utf8);
    WriteEscaped(m_receiver, value, special, m_escapeLineBreaks);
    Write("\""_utf8);
}

void XMLWriter::BeginWritingTagContent() {
    CloseStartTag();
    // No tabs follow: text behind a child starts at the left margin.
    if ((m_style == Indented || m_style == LineBreaks) && m_writeState == EndTagWritten) Write("\n"_utf8);
}

void XMLWriter::WriteString(Ref const& text) {
    static Bits const special = SpecialInText();
    BeginWritingTagContent();
    WriteEscaped(m_receiver, text, special, m_escapeLineBreaks);
    AfterWritingTagContent();
}

void XMLWriter::WriteCData(Ref const& text) {
    BeginWritingTagContent();
    Write("<![CDATA["_utf8);
    Write(text);
    Write("]]>"_utf8);
    AfterWritingTagContent();
}

void XMLWriter::EndElement() {
    CloseStartTag();
    if (!m_openElements.empty()) {
        if (m_writeState == EndTagWritten) {
            if (m_style == Indented || m_style == LineBreaks) Write("\n"_utf8);
            if (m_style == Indented) WriteTabs(m_openElements.size() - 1);
        }
        Write("</"_utf8);
        Write(m_openElements.back());
        Write(">"_utf8);
        m_openElements.pop_back();
    }
    m_writeState = EndTagWritten;
}

void XMLWriter::EndDocument(EndDocumentStyle style) {
    while (!m_openElements.empty()) EndElement();
    if (style == FinalLineFeed) Write("\n"_utf8);
    m_receiver.ReceiveEnd();
}

void XMLWriter::BeginTreeElement(XMLElement const& element) {
    BeginElement(element.name);
    for (auto const& [name, value] : element.attributes) AddAttribute(name, value);
    WriteString(element.GetValue());
}

void XMLWriter::WriteXMLElement(XMLElement const& element) {
    struct Open {
        XMLElement const* element;
        std::size_t nextChild;
    };
    std::vector<Open> open;
    BeginTreeElement(element);
    open.push_back({&element, 0});
    while (!open.empty()) {
        Open& innermost = open.back();
        if (innermost.nextChild == innermost.element->children.size()) {
            EndElement();
            open.pop_back();
        } else {
            XMLElement const& child = innermost.element->children[innermost.nextChild++];
            BeginTreeElement(child);
            open.push_back({&child, 0});
        }
    }
}

void XMLSave(XMLWriter& writer, Ref const& text) {
    if (!writer.EscapesLineBreaks() && HoldsMarkup(text) && !text.Contains("]]>"_utf8))
        writer.WriteCData(text);
    else
        writer.WriteString(text);
}
