#pragma once

#include "text/LocalText.h"

// Paths and names as the system gives them: in the encoding of the locale, or in none.

// The bytes of a local text, which must outlive them.
inline UStringRef<Binary8Bit> BytesOf(UStringRef<Local8Bit> const& text) {
    auto const* first = reinterpret_cast<unsigned char const*>(text.begin());
    return UStringRef<Binary8Bit>(Binary8Bit(), first, first + text.SizeInUnits());
}

// The name as the locale reads it; the empty text for bytes that are no text to it.
AutoUString<UTF8> ReadByLocale(UStringRef<Local8Bit> const& name);

// Whether the text, which may be empty for none, is UTF-8 that the locale spells with just these bytes. Only
// such a text names the file that these bytes name.
bool LeadsBackTo(UStringRef<Local8Bit> const& name, UStringRef<UTF8> const& text);

// The name as the locale reads it if that leads back to the same bytes; otherwise the empty text.
AutoUString<UTF8> FaithfulTextOf(UStringRef<Local8Bit> const& name);
