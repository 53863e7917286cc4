#pragma once

#include "text/CopiedUString.h"
#include "text/UStringBuilder.h"

#include <set>
#include <vector>

// Free functions of the string family. Views that come back point into the argument.

// Copies into a string of its own.
template <class E>
AutoUString<E> MakeUString(UStringRef<E> const& view) {
    return AutoUString<E>(view);
}
template <class E>
AutoUString<E> MakeUString(typename E::Unit const* begin, typename E::Unit const* end, E encoding) {
    return AutoUString<E>(encoding, begin, end);
}

// Both texts behind one another.
template <class A, class B>
requires SameEncodingUTexts<A, B> AutoUString<typename A::TextEncoding>
operator+(A const& a, B const& b) {
    using E = typename A::TextEncoding;
    UStringRef<E> const first(a);
    UStringRef<E> const second(b);
    AutoUString<E> sum(first.Encoding(), 0, first.SizeInUnits() + second.SizeInUnits());
    sum += first;
    sum += second;
    return sum;
}

// First match of `pattern`; text.end() when there is none or when either is empty.
template <class A, class B>
requires SameEncodingUTexts<A, B>
typename A::Unit const* Find(A const& text, B const& pattern) {
    using Ref = UStringRef<typename A::TextEncoding>;
    return Ref(text).Position(Ref(pattern));
}

// Same size and the same bytes after folding ASCII case.
bool EqualIgnoringCase(UStringRef<UTF8> const& a, UStringRef<UTF8> const& b);

// `text` with every non-overlapping `from`, left to right, replaced by `to`. An empty `from` is found
// nowhere.
AutoUString<UTF8> Replace(UStringRef<UTF8> const& text, UStringRef<UTF8> const& from,
                          UStringRef<UTF8> const& to);

// Pieces between the separators, the one behind the last separator included. With `trim` each piece loses
// ASCII white space at both ends; a piece that is then empty is kept only with `keepEmpty`. An empty
// separator gives the whole text as one piece.
std::vector<UStringRef<UTF8>> Split(UStringRef<UTF8> const& text, UStringRef<UTF8> const& separator,
                                    bool trim, bool keepEmpty);

// What stands before and after the first separator; two null views when there is none.
std::pair<UStringRef<UTF8>, UStringRef<UTF8>> SplitPair(UStringRef<UTF8> const& text,
                                                        UStringRef<UTF8> const& separator);

// The texts with the separator between them; an empty container gives an empty string.
AutoUString<UTF8> Join(std::vector<UStringRef<UTF8>> const& texts, UStringRef<UTF8> const& separator);
AutoUString<UTF8> Join(std::vector<CopiedUString<UTF8>> const& texts, UStringRef<UTF8> const& separator);
AutoUString<UTF8> Join(std::set<UStringRef<UTF8>> const& texts, UStringRef<UTF8> const& separator);
AutoUString<UTF8> Join(std::set<CopiedUString<UTF8>> const& texts, UStringRef<UTF8> const& separator);

// Views without ASCII white space at the front, at the end, or both. Scanning also stops at the first byte
// above 127. The trailing form gives the null view for an empty text.
UStringRef<UTF8> TrimLeadingAsciiWhitespace(UStringRef<UTF8> const& text);
UStringRef<UTF8> TrimTrailingAsciiWhitespace(UStringRef<UTF8> const& text);
UStringRef<UTF8> TrimAsciiWhitespace(UStringRef<UTF8> const& text);

// The same for owners of UTF-8, which could be taken for plain bytes as well.
template <class T>
concept UTF8Owner = UText<T> && std::same_as<typename T::TextEncoding, UTF8> && requires(T const& text) {
    { text.Ref() } -> std::same_as<UStringRef<UTF8>>;
};
UStringRef<UTF8> TrimLeadingAsciiWhitespace(UTF8Owner auto const& text) {
    return TrimLeadingAsciiWhitespace(text.Ref());
}
UStringRef<UTF8> TrimAsciiWhitespace(UTF8Owner auto const& text) {
    return TrimAsciiWhitespace(text.Ref());
}

// View from the first white byte on; from the first byte above 127 if that comes earlier.
UStringRef<UTF8> TrimToLeadingAsciiWhitespace(UStringRef<UTF8> const& text);

// View without all its trailing line feeds and carriage returns; the null view for an empty text.
UStringRef<UTF8> TrimTrailingAsciiNewline(UStringRef<UTF8> const& text);

// Positions in UTF-8 by the lead bytes alone: below 0x80 one byte, below 0xE0 two, below 0xF0 three, else
// four. Continuation bytes are not checked.

// Byte offset of character number `count`. It may lie behind the size when the last character is cut short.
std::size_t CharBytePosition(UStringRef<UTF8> const& text, std::size_t count);

// Number of characters that cover the first `offset` bytes. `offset` must lie within the text.
std::size_t CharPosFromOffset(UStringRef<UTF8> const& text, std::size_t offset);
