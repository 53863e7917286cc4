#pragma once

#include "text/AutoNullTerminated.h"

// Text in the encoding of the process's locale (category LC_CTYPE). Each call asks for the encoding that is
// in force at that moment. The locale must not be changed by another thread meanwhile.
//
// In a UTF-8 locale, conversion between UTF-8 and local text copies the bytes without looking at them. All
// other conversions raise a failure for what they cannot convert, never a replacement character. Those that
// go through the C library end at the first NUL of the text.
namespace UnixPlatform {

// Name of the local encoding as the locale gives it, such as "UTF-8", "ISO-8859-1" or, in the "C" locale,
// "ANSI_X3.4-1968". Throws ConstDataCapacityExceeded for a name of more than 48 bytes.
IANANamedTextEncoding IANAEncodingName(Local8Bit);

// From local text. Throw MultiByteToWideConvertError for bytes that are no text of the local encoding; in a
// UTF-8 locale only the wider forms do. ToUTF8 throws what IANAEncodingName throws, too.
AutoUString<UTF8> ToUTF8(UStringRef<Local8Bit> const& text);
AutoUString<UTF16> ToUTF16(UStringRef<Local8Bit> const& text);
AutoUString<UTF32> ToUTF32(UStringRef<Local8Bit> const& text);

// To local text. Throw WideToMultiByteConvertError for what the local encoding does not have: characters, and
// in UTF-32 any unit that is no character. UTF-8 and UTF-16 that cannot be read raise InvalidTextEncoding; a
// surrogate or a value above 0x10FFFF in a UTF-8 form can be read, and raises WideToMultiByteConvertError.
// From UTF-8 also throws what IANAEncodingName throws.
AutoUString<Local8Bit> ToLocal8Bit(UStringRef<UTF8> const& text);
AutoUString<Local8Bit> ToLocal8Bit(UStringRef<UTF16> const& text);
AutoUString<Local8Bit> ToLocal8Bit(UStringRef<UTF32> const& text);

// The two steps to and from wchar_t, which is UTF-32 on this platform, by the C library alone.
AutoUString<UTF32> ToNativeUnicode(UStringRef<Local8Bit> const& text);
AutoUString<Local8Bit> FromNativeUnicode(UStringRef<UTF32> const& text);

} // namespace UnixPlatform

// View of a zero-terminated text in the local encoding; a null pointer gives the null view.
UStringRef<Local8Bit> MakeLocalRef(char const* text);
// View of a C++ text in the local encoding, which must outlive it.
UStringRef<Local8Bit> MakeLocalRef(std::string const& text);

// Local text for C interfaces, from UTF8, UTF16 or UTF32: ToLocal8Bit with a NUL behind. Throws as that does.
template <class E>
AutoNullTerminated<Local8Bit> MakeLocalString(UStringRef<E> const& text) {
    return AutoNullTerminated<Local8Bit>(UnixPlatform::ToLocal8Bit(text));
}

// Bytes of unknown meaning for C interfaces that take local text, as they are and with a NUL behind.
AutoNullTerminated<Local8Bit> MakeBinaryLocalString(UStringRef<Binary8Bit> const& bytes);
