#pragma once

#include "text/SharedUString.h"
#include "text/UTextReceiver.h"
#include "xml/XMLElement.h"

#include <vector>

// Streams a document as UTF-8 into a receiver, in the form that the parser of this room reads: every element
// gets an end tag. It checks nothing; an attribute may be added only while its start tag is open, and names
// are written as they stand. A writer whose receiver has thrown is not to be used again.
class XMLWriter {
public:
    enum XMLFormatStyle : std::uint32_t {
        Indented = 0,   // each element on a line of its own, one tab a depth
        LineBreaks = 1, // each element on a line of its own
        Compact = 2     // no added white space
    };
    enum EncodingDeclaration : std::uint32_t { WithEncoding = 0, WithoutEncoding = 1 };
    enum EndDocumentStyle : std::uint32_t { FinalLineFeed = 0, NoFinalLineFeed = 1 };

    // The receiver must outlive the writer.
    XMLWriter(UTextReceiver<UTF8>& receiver, XMLFormatStyle style) : m_receiver(receiver), m_style(style) {}
    XMLWriter(XMLWriter const&) = delete;
    XMLWriter& operator=(XMLWriter const&) = delete;

    // With true, CR and LF in texts and attribute values are written as character references.
    void SetEscapeLineBreaks(bool escape) { m_escapeLineBreaks = escape; }
    bool EscapesLineBreaks() const { return m_escapeLineBreaks; }

    // Starts the receiver and writes the header, with no line break behind it. To be left out when the
    // receiver has been started for something around this document.
    void BeginDocument(EncodingDeclaration declaration);
    void BeginElement(UStringRef<UTF8> const& name);
    void BeginElement(char const* name) { BeginElement(MakeUTF8Ref(name)); }
    // The value is escaped; control bytes and the apostrophe pass as they are.
    void AddAttribute(UStringRef<UTF8> const& name, UStringRef<UTF8> const& value);
    void AddAttribute(char const* name, UStringRef<UTF8> const& value) {
        AddAttribute(MakeUTF8Ref(name), value);
    }
    // Escaped text. Behind a child element, and with a style that breaks lines, it starts with a line feed,
    // which is part of the text when it is read back. Control bytes other than tab, LF and CR are never
    // written as themselves; see the table of replacements in the source.
    void WriteString(UStringRef<UTF8> const& text);
    // The text as it stands in a CDATA section; it must not hold "]]>".
    void WriteCData(UStringRef<UTF8> const& text);
    // Ends the innermost open element. With none open it writes nothing, but counts as an end tag for the
    // line break before what follows.
    void EndElement();
    // Ends all open elements, writes a line feed if wanted, and ends the receiver.
    void EndDocument(EndDocumentStyle style);
    // A whole tree, however deep.
    void WriteXMLElement(XMLElement const& element);

private:
    enum WriteState : std::uint32_t {
        NothingWritten,
        StartTagOpen, // the ">" has not been written yet
        StartTagClosed,
        ContentWritten,
        EndTagWritten
    };

    void Write(UStringRef<UTF8> const& text) { m_receiver.Receive(text); }
    void WriteTabs(std::size_t count);
    void CloseStartTag();
    void BeginWritingTagContent();
    void AfterWritingTagContent() { m_writeState = ContentWritten; }
    void BeginTreeElement(XMLElement const& element);

    UTextReceiver<UTF8>& m_receiver;
    XMLFormatStyle m_style;
    bool m_escapeLineBreaks = false;
    std::vector<SharedUString<UTF8>> m_openElements;
    WriteState m_writeState = NothingWritten;
};

// The standard way to write a text as the content of the open element: as CDATA when it holds markup
// characters ("<", "&" or ">") but no "]]>" and line breaks are not escaped, as escaped text otherwise.
void XMLSave(XMLWriter& writer, UStringRef<UTF8> const& text);
