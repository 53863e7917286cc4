#pragma once

#include "text/CopiedUString.h"
#include "text/NullOr.h"
#include "text/SharedUString.h"
#include "xml/XMLElement.h"
#include "xml/XMLWriter.h"

#include <algorithm>
#include <concepts>
#include <string>
#include <utility>
#include <vector>

// How records travel. A field is a child element of a fixed name. Writing is strict in order and always makes
// the element; reading forgives: a field that is missing keeps what the record's constructor gave it, a child
// that nobody asks for is ignored, and the last of several same-named children wins.
//
//   XMLSave(writer, value)            the value as content of the open element
//   XMLSave(writer, name, value)      a whole element
//   XMLLoad(element, value)           a value from the content of an element
//   XMLLoad(element, name, value)     a value from the children of that name
//   XMLSerialize(...)                 the named forms in either direction, and the name of the functions that
//                                     list the fields of a record in their order on the wire
//
// A bad value in a field that is present throws (NotANumeral, NumeralTooLarge and the errors of times and
// durations); fields read before it keep their new values. Values are never trimmed.

// Values

// XMLSave of a text is declared in XMLWriter.h.

// "true" or "false". Only for bool itself, so that no pointer is taken for one.
template <std::same_as<bool> Bool>
void XMLSave(XMLWriter& writer, Bool value) {
    writer.WriteString(value ? "true"_utf8 : "false"_utf8);
}
void XMLSave(XMLWriter& writer, std::string const& text);
// Decimal numerals of at least one digit.
void XMLSave(XMLWriter& writer, unsigned int value);
void XMLSave(XMLWriter& writer, unsigned long value);
void XMLSave(XMLWriter& writer, long value);

void XMLLoad(XMLElement const& element, AutoUString<UTF8>& text);
void XMLLoad(XMLElement const& element, CopiedUString<UTF8>& text);
void XMLLoad(XMLElement const& element, SharedUString<UTF8>& text);
void XMLLoad(XMLElement const& element, std::string& text);
// False for exactly "0" and "false"; every other text, the empty one included, is true.
void XMLLoad(XMLElement const& element, bool& value);
void XMLLoad(XMLElement const& element, unsigned int& value);
void XMLLoad(XMLElement const& element, unsigned long& value);

// Attributes

template <UText Text>
void XMLSaveAttribute(XMLWriter& writer, UStringRef<UTF8> const& name, Text const& value) {
    writer.AddAttribute(name, value);
}
template <std::same_as<bool> Bool>
void XMLSaveAttribute(XMLWriter& writer, UStringRef<UTF8> const& name, Bool value) {
    writer.AddAttribute(name, value ? "true"_utf8 : "false"_utf8);
}

// Throw NoSuchAttribute when the attribute is missing.
void XMLLoadAttribute(XMLElement const& element, UStringRef<UTF8> const& name, AutoUString<UTF8>& text);
void XMLLoadAttribute(XMLElement const& element, UStringRef<UTF8> const& name, CopiedUString<UTF8>& text);
void XMLLoadAttribute(XMLElement const& element, UStringRef<UTF8> const& name, SharedUString<UTF8>& text);
// A missing attribute is false.
void XMLLoadAttribute(XMLElement const& element, UStringRef<UTF8> const& name, bool& value);

// Named elements

template <class T>
void XMLSave(XMLWriter& writer, UStringRef<UTF8> const& name, T const& value) {
    writer.BeginElement(name);
    XMLSave(writer, value);
    writer.EndElement();
}

// A null value writes nothing.
template <class T>
void XMLSerialize(XMLWriter& writer, UStringRef<UTF8> const& name, NullOr<T> const& value) {
    if (value) XMLSave(writer, name, *value);
}

template <class T>
void XMLSerialize(XMLWriter& writer, char const* name, T const& value) {
    XMLSave(writer, MakeUTF8Ref(name), value);
}
template <class T>
void XMLSerialize(XMLWriter& writer, char const* name, NullOr<T> const& value) {
    XMLSerialize(writer, MakeUTF8Ref(name), value);
}

// Loads `value` from every child of that name in turn, so that the last one counts; without one `value`
// stays as it is.
template <class T>
void XMLLoad(XMLElement const& element, UStringRef<UTF8> const& name, T& value) {
    for (XMLElement const& child : element.children)
        if (child.name == name) XMLLoad(child, value);
}

// Appends one record for each child of that name, in order.
template <class T, class Allocator>
void XMLLoad(XMLElement const& element, UStringRef<UTF8> const& name, std::vector<T, Allocator>& records) {
    auto const matches = [&name](XMLElement const& child) { return child.name == name; };
    auto const count = std::count_if(element.children.begin(), element.children.end(), matches);
    records.reserve(records.size() + static_cast<std::size_t>(count));
    for (XMLElement const& child : element.children) {
        if (!matches(child)) continue;
        T record{};
        XMLLoad(child, record);
        records.push_back(std::move(record));
    }
}

template <class T>
void XMLSerialize(XMLElement const& element, char const* name, T& value) {
    XMLLoad(element, MakeUTF8Ref(name), value);
}

// Absent means null, whatever the target held before.
template <class T>
void XMLSerialize(XMLElement const& element, UStringRef<UTF8> const& name, NullOr<T>& value) {
    NullOr<T> read;
    if (element.HasChildElement(name)) {
        T temporary{};
        XMLLoad(element, name, temporary);
        read = NullOr<T>(std::move(temporary));
    }
    value = std::move(read);
}
template <class T>
void XMLSerialize(XMLElement const& element, char const* name, NullOr<T>& value) {
    XMLSerialize(element, MakeUTF8Ref(name), value);
}
