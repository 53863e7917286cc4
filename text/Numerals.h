#pragma once

#include "text/AutoUString.h"
#include "text/FixedText.h"

// Integer numerals in ASCII. Readers accept digits only: no white space, no prefix, and a sign only in the
// signed forms.

// A numeral of at most 21 bytes.
using NumeralText = FixedText<21>;

enum NumeralResult : int { cNumeralRead = 0, cNotANumeral = 1, cNumeralTooLarge = 2 };

// Read into `value`: 0 for success, 1 when the text is empty or holds another byte than a digit, 2 when the
// value does not fit. `value` may be changed on failure. Which of 1 and 2 comes is decided from left to
// right.
int TryReadAsciiDecimalNumeral(ConstData text, unsigned long& value) noexcept;
int TryReadAsciiDecimalNumeral(ConstData text, unsigned int& value) noexcept;
// One leading "-" or "+" is taken.
int TryReadAsciiDecimalNumeral(ConstData text, long long& value) noexcept;
int TryReadAsciiDecimalNumeral(ConstData text, int& value) noexcept;
int TryReadAsciiHexNumeral(ConstData text, unsigned long& value) noexcept;
int TryReadAsciiHexNumeral(ConstData text, unsigned int& value) noexcept;

// Return the value; throw NotANumeral or NumeralTooLarge.
unsigned int ReadAsciiDecimalNumeral(ConstData text);
unsigned long ReadAsciiDecimalNumeral64(ConstData text);
int ReadAsciiSignedDecimalNumeral(ConstData text);
long long ReadAsciiSignedDecimalNumeral64(ConstData text);
unsigned int ReadAsciiHexNumeral(ConstData text);
unsigned long ReadAsciiHexNumeral64(ConstData text);

// Return `otherwise` for what cannot be read.
unsigned int ReadAsciiDecimalNumeral32WithDefault(ConstData text, unsigned int otherwise);
unsigned long ReadAsciiDecimalNumeral64WithDefault(ConstData text, unsigned long otherwise);
int ReadAsciiSignedDecimalNumeral32WithDefault(ConstData text, int otherwise);
long long ReadAsciiSignedDecimalNumeral64WithDefault(ConstData text, long long otherwise);

// Make a numeral of at least `minDigits` digits: 5 with 3 gives "005", 0 with 0 gives the empty text. More
// than 20 digits throw ConstDataCapacityExceeded. The signed forms put "-" in front of a negative value.
NumeralText MakeAsciiDecimalNumeral(unsigned int value, unsigned int minDigits);
NumeralText MakeAsciiDecimalNumeral64(unsigned long value, unsigned int minDigits);
NumeralText MakeAsciiSignedDecimalNumeral(int value, unsigned int minDigits);
NumeralText MakeAsciiSignedDecimalNumeral64(long long value, unsigned int minDigits);
// Lower-case digits.
NumeralText MakeAsciiHexNumeral(unsigned int value, unsigned int minDigits);
NumeralText MakeAsciiHexNumeral64(unsigned long value, unsigned int minDigits);

// The decimal numeral of an unsigned value of either width.
inline NumeralText MakeAsciiDecimal(unsigned int value, unsigned int minDigits) {
    return MakeAsciiDecimalNumeral(value, minDigits);
}
inline NumeralText MakeAsciiDecimal(unsigned long value, unsigned int minDigits) {
    return MakeAsciiDecimalNumeral64(value, minDigits);
}

// A numeral under construction: a sign and digits written from the right into a fixed buffer. Running out of
// the buffer throws ConstDataCapacityExceeded.
class Numeral {
public:
    Numeral() = default;
    Numeral(unsigned int value, unsigned int radix, unsigned int minDigits);
    Numeral(unsigned long value, unsigned int radix, unsigned int minDigits);
    Numeral(int value, unsigned int radix, unsigned int minDigits);
    Numeral(long long value, unsigned int radix, unsigned int minDigits);

    // Puts a "-" in front for a negative value, nothing otherwise.
    void Sign(bool negative);
    // Puts one digit of value `digit` in front.
    void Digit(unsigned int digit);
    // Puts the digits of `value` in front, at least `minDigits` of them. `radix` is 2 to 16; 20 digits at
    // the most.
    void MakeDigits(unsigned int value, unsigned int radix, unsigned int minDigits);
    void MakeDigits64(unsigned long value, unsigned int radix, unsigned int minDigits);
    // Puts zeros in front until there are `digits` bytes.
    void PadTo(unsigned int digits);

    ConstData Bytes() const { return ConstData(m_bytes + m_first, m_bytes + cCapacity); }
    operator ConstData() const { return Bytes(); }
    char const* NullTerminated() const { return reinterpret_cast<char const*>(m_bytes + m_first); }
    AutoUString<UTF8> MakeAutoUTF8String() const;

private:
    static constexpr std::size_t cCapacity = NumeralText::capacity;

    void PutInFront(unsigned char byte);

    std::size_t m_first = cCapacity;
    unsigned char m_bytes[cCapacity + 2] = {};
};

// Whether the operation on two values of one integer type stays within that type.
bool CanAdd(unsigned int a, unsigned int b);
bool CanAdd(unsigned long a, unsigned long b);
bool CanAddUnsigned(unsigned int a, unsigned int b);
bool CanAddUnsigned(unsigned long a, unsigned long b);
bool CanAddSigned(int a, int b);
bool CanAddSigned(long long a, long long b);
bool CanMultiply(unsigned int a, unsigned int b);
bool CanMultiply(unsigned long a, unsigned long b);
bool CanMultiply(int a, int b);
bool CanMultiply(long long a, long long b);
