#include "link/ClientDocuments.h"

#include "text/UStringBuilder.h"
#include "xml/XMLWriter.h"

namespace {

using Ref = UStringRef<UTF8>;

// Room for a whole message of usual size.
constexpr std::size_t cDocumentSizeHint = 512;

template <class WriteMessage>
AutoUString<UTF8> MakeDocument(Ref const& root, WriteMessage const& writeMessage) {
    UStringBuilder<UTF8> builder(cDocumentSizeHint);
    XMLWriter writer(builder, XMLWriter::Indented);
    writer.BeginDocument(XMLWriter::WithEncoding);
    writer.BeginElement(root);
    writeMessage(writer);
    writer.EndElement();
    writer.EndDocument(XMLWriter::NoFinalLineFeed);
    return builder.Take();
}

// For records whose function writes only the children of the message.
template <class T>
AutoUString<UTF8> MakeDocumentOfFields(Ref const& root, Ref const& name, T const& message) {
    return MakeDocument(root, [&](XMLWriter& writer) {
        writer.BeginElement(name);
        XMLSerialize(writer, message);
        writer.EndElement();
    });
}

// For records whose function writes the whole message.
template <class T>
AutoUString<UTF8> MakeDocumentOfElement(Ref const& root, Ref const& name, T const& message) {
    return MakeDocument(root, [&](XMLWriter& writer) { XMLSave(writer, name, message); });
}

} // namespace

template <>
AutoUString<UTF8> ConvertToXML(ReadyForData const& message) {
    return MakeDocumentOfFields("ClientToUI"_utf8, "ReadyForData"_utf8, message);
}

template <>
AutoUString<UTF8> ConvertToXML(ClientUIErrorMessage const& message) {
    return MakeDocumentOfElement("ClientToUI"_utf8, "ClientUIErrorMessage"_utf8, message);
}

template <>
AutoUString<UTF8> ConvertToXML(ActionTaken const& message) {
    return MakeDocumentOfFields("UIToClient"_utf8, "ActionTaken"_utf8, message);
}

template <>
AutoUString<UTF8> ConvertToXML(RemindTime const& message) {
    return MakeDocumentOfElement("UIToClient"_utf8, "RemindTime"_utf8, message);
}

template <>
AutoUString<UTF8> ConvertToXML(RemindInterval const& message) {
    return MakeDocumentOfElement("UIToClient"_utf8, "RemindInterval"_utf8, message);
}
