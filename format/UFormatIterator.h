#pragma once

#include "foundation/Exceptions.h"
#include "text/UStringRef.h"

#include <cstring>

// One piece of a format text. For an expression `text` is the variable's name, without its braces; otherwise
// it is the literal, which is never empty but behind the last piece.
struct UFormatSegment {
    bool isExpression = false;
    UStringRef<UTF8> text;
};

// Walks the segments of a format text, from left to right.
//
// A "{" begins an expression, which the first "}" behind it ends, whatever stands between; there is no escape
// and no nesting. Everything else is literal, a "}" on its own too. "{a{b} of }" is the variable "a{b" and
// the literal " of }". A literal "{" is written "{_obrace}".
//
// The text must outlive the iterator and its segments. Two iterators over one text are equal when they stand
// at the same segment.
class UFormatIterator {
public:
    // At the first segment; at the end when the text is empty. Throws BadFormatStringError when the text
    // begins with an expression that does not end.
    explicit UFormatIterator(UStringRef<UTF8> const& text) : UFormatIterator(text.begin(), text.end()) {
        GetNextSegment();
    }
    // Behind the last segment.
    static UFormatIterator EndOf(UStringRef<UTF8> const& text) {
        return UFormatIterator(text.end(), text.end());
    }

    // Goes on to the next segment; behind the last one the segment is an empty literal, and stays so. Throws
    // BadFormatStringError for an expression that does not end, and stays where it is.
    void GetNextSegment();

    UFormatSegment const& operator*() const { return m_segment; }
    UFormatSegment const* operator->() const { return &m_segment; }
    UFormatIterator& operator++() {
        GetNextSegment();
        return *this;
    }
    friend bool operator==(UFormatIterator const& a, UFormatIterator const& b) {
        return a.m_cursor == b.m_cursor;
    }

private:
    using Byte = unsigned char const*;

    UFormatIterator(Byte begin, Byte end) : m_end(end), m_cursor(begin), m_segmentEnd(begin) {}
    // Where the byte first stands from `begin` on; the end of the text when it does not.
    Byte Find(char byte, Byte begin) const {
        void const* const found = std::memchr(begin, byte, static_cast<std::size_t>(m_end - begin));
        return found ? static_cast<Byte>(found) : m_end;
    }
    void SetSegment(bool isExpression, Byte begin, Byte end);

    Byte m_end;
    // Where the segment begins, an expression with its "{", and where the next one does.
    Byte m_cursor;
    Byte m_segmentEnd;
    UFormatSegment m_segment;
};

inline void UFormatIterator::GetNextSegment() {
    Byte const begin = m_segmentEnd;
    if (begin == m_end) {
        SetSegment(false, m_end, m_end);
    } else if (*begin != '{') {
        SetSegment(false, begin, Find('{', begin));
    } else {
        Byte const close = Find('}', begin + 1);
        if (close == m_end) throw BadFormatStringError();
        SetSegment(true, begin, close + 1);
    }
}

inline void UFormatIterator::SetSegment(bool isExpression, Byte begin, Byte end) {
    m_cursor = begin;
    m_segmentEnd = end;
    m_segment.isExpression = isExpression;
    std::ptrdiff_t const brace = isExpression ? 1 : 0;
    m_segment.text = UStringRef<UTF8>(UTF8(), begin + brace, end - brace);
}
