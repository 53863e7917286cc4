#pragma once

#include "text/Data.h"

#include <array>

// Set of byte values: value `c` is bit `c & 31` of word `c >> 5`.
class Bits {
public:
    constexpr Bits() = default;

    constexpr bool Has(unsigned char value) const { return ((m_words[value >> 5] >> (value & 31)) & 1) != 0; }
    constexpr Bits& Set(unsigned char value) {
        m_words[value >> 5] |= std::uint32_t{1} << (value & 31);
        return *this;
    }
    constexpr Bits& Clear(unsigned char value) {
        m_words[value >> 5] &= ~(std::uint32_t{1} << (value & 31));
        return *this;
    }
    // Adds all values from `first` to `last`, both included.
    constexpr Bits& SetRange(unsigned char first, unsigned char last) {
        for (unsigned int value = first; value <= last; ++value) Set(static_cast<unsigned char>(value));
        return *this;
    }
    constexpr Bits operator|(Bits const& other) const {
        Bits result;
        for (std::size_t word = 0; word < m_words.size(); ++word)
            result.m_words[word] = m_words[word] | other.m_words[word];
        return result;
    }

    friend constexpr bool operator==(Bits const&, Bits const&) = default;

private:
    std::array<std::uint32_t, 8> m_words{};
};

// Byte-level text tools that know no locale.
namespace Ascii {

// Classes. Except for High() and Unprintable(), none holds a byte above 127. The forms ending in "_" hold the
// underscore too.
Bits const& Control();          // 0 to 31 and 127
Bits const& WhiteSpace();       // space, tab, line feed, vertical tab, form feed, carriage return
Bits const& LinearWhiteSpace(); // space and tab
Bits const& Newline();          // line feed and carriage return
Bits const& Numeric();
Bits const& Alphabetic();
Bits const& Alphabetic_();
Bits const& Alphanumeric();
Bits const& Alphanumeric_();
Bits const& UppercaseAlphabet();
Bits const& LowercaseAlphabet();
Bits const& HexDigits();
Bits const& Punctuation(); // everything from 33 to 126 that is not alphanumeric
Bits const& Low();         // 0 to 127
Bits const& High();        // 128 to 255
Bits const& PlainText();   // printable characters, tab, line feed and carriage return
Bits const& Printable();   // 32 to 126
Bits const& Unprintable(); // everything else

// Each byte's lower-case and upper-case form; bytes that are no letters stand for themselves.
extern std::array<unsigned char, 256> const lowercaseTable;
extern std::array<unsigned char, 256> const uppercaseTable;

// Checks the two tables against the alphabet.
bool CaseTablesAreCorrect();

// Whether all bytes that are letters are of that case; an empty text is both.
bool IsLowercase(ConstData data);
bool IsUppercase(ConstData data);

// Same size and the same bytes after folding case.
bool EqualIgnoringCase(ConstData a, ConstData b);

// As Compare, with both sides folded to one case. The forms on zero-terminated texts need non-null pointers.
int CompareLowercase(char const* a, char const* b);
int CompareLowercase(ConstData a, ConstData b);
int CompareUppercase(ConstData a, ConstData b);

// Writes the folded bytes of `source` to the front of `target`, as many as both hold.
void LowerCase(ConstData source, Data target);
void RaiseCase(ConstData source, Data target);

// Value of a hexadecimal digit: c - '0' up to '9', (c | 0x20) - 0x57 above. The argument is not checked.
constexpr unsigned int HexDigitValue(unsigned char c) {
    return c <= '9' ? static_cast<unsigned int>(c - '0') : static_cast<unsigned int>((c | 0x20) - 0x57);
}

// The lower-case digit of a value below 16.
constexpr unsigned char HexDigit(unsigned int value) {
    return static_cast<unsigned char>("0123456789abcdef"[value & 15]);
}

} // namespace Ascii
