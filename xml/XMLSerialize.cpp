#include "xml/XMLSerialize.h"

#include "text/Numerals.h"

namespace {

bool IsTrue(UStringRef<UTF8> const& text) {
    return !(text == "0"_utf8 || text == "false"_utf8);
}

} // namespace

void XMLSave(XMLWriter& writer, std::string const& text) {
    XMLSave(writer, MakeUTF8Ref(text));
}

void XMLSave(XMLWriter& writer, unsigned int value) {
    writer.WriteString(MakeAsciiDecimal(value, 1).Ref());
}

void XMLSave(XMLWriter& writer, unsigned long value) {
    writer.WriteString(MakeAsciiDecimal(value, 1).Ref());
}

void XMLSave(XMLWriter& writer, long value) {
    writer.WriteString(MakeAsciiSignedDecimalNumeral64(value, 1).Ref());
}

void XMLLoad(XMLElement const& element, AutoUString<UTF8>& text) {
    text = AutoUString<UTF8>(element.GetValue());
}

void XMLLoad(XMLElement const& element, CopiedUString<UTF8>& text) {
    text = element.GetValue();
}

void XMLLoad(XMLElement const& element, SharedUString<UTF8>& text) {
    text = element.GetValue();
}

void XMLLoad(XMLElement const& element, std::string& text) {
    text = MakeString(element.GetValue());
}

void XMLLoad(XMLElement const& element, bool& value) {
    value = IsTrue(element.GetValue());
}

void XMLLoad(XMLElement const& element, unsigned int& value) {
    value = ReadAsciiDecimalNumeral(element.GetValue());
}

void XMLLoad(XMLElement const& element, unsigned long& value) {
    value = ReadAsciiDecimalNumeral64(element.GetValue());
}

void XMLLoadAttribute(XMLElement const& element, UStringRef<UTF8> const& name, AutoUString<UTF8>& text) {
    text = AutoUString<UTF8>(element.GetAttribute(name));
}

void XMLLoadAttribute(XMLElement const& element, UStringRef<UTF8> const& name, CopiedUString<UTF8>& text) {
    text = element.GetAttribute(name);
}

void XMLLoadAttribute(XMLElement const& element, UStringRef<UTF8> const& name, SharedUString<UTF8>& text) {
    text = element.GetAttribute(name);
}

void XMLLoadAttribute(XMLElement const& element, UStringRef<UTF8> const& name, bool& value) {
    value = element.HasAttribute(name) && IsTrue(element.GetAttribute(name));
}
