#include "text/Numerals.h"

#include "text/Ascii.h"

#include <concepts>
#include <limits>

// Readers accumulate in 64 bits and test each step before it is made, so nothing ever wraps; the narrower and
// the signed forms test the range of the result.

namespace {

constexpr std::size_t cMostDigits = 20;

template <class T>
bool AddFits(T a, T b) {
    T sum;
    return !__builtin_add_overflow(a, b, &sum);
}

template <class T>
bool MultiplyFits(T a, T b) {
    T product;
    return !__builtin_mul_overflow(a, b, &product);
}

int ReadDigits(ConstData text, Bits const& digits, unsigned int radix, unsigned long& value) {
    if (text.empty()) return cNotANumeral;
    value = 0;
    for (unsigned char const byte : text) {
        if (!CanMultiply(value, static_cast<unsigned long>(radix))) return cNumeralTooLarge;
        if (!digits.Has(byte)) return cNotANumeral;
        value *= radix;
        unsigned long const digit = Ascii::HexDigitValue(byte);
        if (!CanAdd(value, digit)) return cNumeralTooLarge;
        value += digit;
    }
    return cNumeralRead;
}

int Narrow(int result, unsigned long wide, unsigned int& value) {
    if (result != cNumeralRead) return result;
    if (wide > std::numeric_limits<unsigned int>::max()) return cNumeralTooLarge;
    value = static_cast<unsigned int>(wide);
    return cNumeralRead;
}

template <std::signed_integral T>
int ReadSigned(ConstData text, T& value) {
    bool const negative = text.StartsWith("-"_data);
    bool const hasSign = negative || text.StartsWith("+"_data);
    unsigned long magnitude = 0;
    int const result =
        TryReadAsciiDecimalNumeral(hasSign ? ConstData(text.begin() + 1, text.end()) : text, magnitude);
    if (result != cNumeralRead) return result;
    auto const most = static_cast<unsigned long>(std::numeric_limits<T>::max());
    if (magnitude > most + (negative ? 1 : 0)) return cNumeralTooLarge;
    // Negated while unsigned, since the most negative value has no positive counterpart.
    value = static_cast<T>(negative ? 0 - magnitude : magnitude);
    return cNumeralRead;
}

template <class T>
T OrThrow(int (*read)(ConstData, T&), ConstData text) {
    T value = 0;
    switch (read(text, value)) {
    case cNumeralRead: return value;
    case cNumeralTooLarge: throw NumeralTooLarge();
    default: throw NotANumeral();
    }
}

template <class T>
T OrDefault(int (*read)(ConstData, T&), ConstData text, T otherwise) {
    T value = 0;
    return read(text, value) == cNumeralRead ? value : otherwise;
}

template <class T>
NumeralText MakeNumeral(T value, unsigned int radix, unsigned int minDigits) {
    return NumeralText(Numeral(value, radix, minDigits).Bytes());
}

unsigned long Magnitude(long long value) {
    auto const bits = static_cast<unsigned long>(value);
    return value < 0 ? 0 - bits : bits;
}

} // namespace

int TryReadAsciiDecimalNumeral(ConstData text, unsigned long& value) noexcept {
    return ReadDigits(text, Ascii::Numeric(), 10, value);
}

int TryReadAsciiDecimalNumeral(ConstData text, unsigned int& value) noexcept {
    unsigned long wide = 0;
    int const result = TryReadAsciiDecimalNumeral(text, wide);
    return Narrow(result, wide, value);
}

int TryReadAsciiDecimalNumeral(ConstData text, long long& value) noexcept {
    return ReadSigned(text, value);
}

int TryReadAsciiDecimalNumeral(ConstData text, int& value) noexcept {
    return ReadSigned(text, value);
}

int TryReadAsciiHexNumeral(ConstData text, unsigned long& value) noexcept {
    return ReadDigits(text, Ascii::HexDigits(), 16, value);
}

int TryReadAsciiHexNumeral(ConstData text, unsigned int& value) noexcept {
    unsigned long wide = 0;
    int const result = TryReadAsciiHexNumeral(text, wide);
    return Narrow(result, wide, value);
}

unsigned int ReadAsciiDecimalNumeral(ConstData text) {
    return OrThrow<unsigned int>(TryReadAsciiDecimalNumeral, text);
}

unsigned long ReadAsciiDecimalNumeral64(ConstData text) {
    return OrThrow<unsigned long>(TryReadAsciiDecimalNumeral, text);
}

int ReadAsciiSignedDecimalNumeral(ConstData text) {
    return OrThrow<int>(TryReadAsciiDecimalNumeral, text);
}

long long ReadAsciiSignedDecimalNumeral64(ConstData text) {
    return OrThrow<long long>(TryReadAsciiDecimalNumeral, text);
}

unsigned int ReadAsciiHexNumeral(ConstData text) {
    return OrThrow<unsigned int>(TryReadAsciiHexNumeral, text);
}

unsigned long ReadAsciiHexNumeral64(ConstData text) {
    return OrThrow<unsigned long>(TryReadAsciiHexNumeral, text);
}

unsigned int ReadAsciiDecimalNumeral32WithDefault(ConstData text, unsigned int otherwise) {
    return OrDefault<unsigned int>(TryReadAsciiDecimalNumeral, text, otherwise);
}

unsigned long ReadAsciiDecimalNumeral64WithDefault(ConstData text, unsigned long otherwise) {
    return OrDefault<unsigned long>(TryReadAsciiDecimalNumeral, text, otherwise);
}

int ReadAsciiSignedDecimalNumeral32WithDefault(ConstData text, int otherwise) {
    return OrDefault<int>(TryReadAsciiDecimalNumeral, text, otherwise);
}

long long ReadAsciiSignedDecimalNumeral64WithDefault(ConstData text, long long otherwise) {
    return OrDefault<long long>(TryReadAsciiDecimalNumeral, text, otherwise);
}

NumeralText MakeAsciiDecimalNumeral(unsigned int value, unsigned int minDigits) {
    return MakeNumeral(value, 10, minDigits);
}

NumeralText MakeAsciiDecimalNumeral64(unsigned long value, unsigned int minDigits) {
    return MakeNumeral(value, 10, minDigits);
}

NumeralText MakeAsciiSignedDecimalNumeral(int value, unsigned int minDigits) {
    return MakeNumeral(value, 10, minDigits);
}

NumeralText MakeAsciiSignedDecimalNumeral64(long long value, unsigned int minDigits) {
    return MakeNumeral(value, 10, minDigits);
}

NumeralText MakeAsciiHexNumeral(unsigned int value, unsigned int minDigits) {
    return MakeNumeral(value, 16, minDigits);
}

NumeralText MakeAsciiHexNumeral64(unsigned long value, unsigned int minDigits) {
    return MakeNumeral(value, 16, minDigits);
}

Numeral::Numeral(unsigned int value, unsigned int radix, unsigned int minDigits) {
    MakeDigits(value, radix, minDigits);
}

Numeral::Numeral(unsigned long value, unsigned int radix, unsigned int minDigits) {
    MakeDigits64(value, radix, minDigits);
}

Numeral::Numeral(int value, unsigned int radix, unsigned int minDigits)
    : Numeral(static_cast<long long>(value), radix, minDigits) {
}

Numeral::Numeral(long long value, unsigned int radix, unsigned int minDigits) {
    MakeDigits64(Magnitude(value), radix, minDigits);
    Sign(value < 0);
}

void Numeral::PutInFront(unsigned char byte) {
    if (m_first == 0) throw ConstDataCapacityExceeded();
    m_bytes[--m_first] = byte;
}

void Numeral::Sign(bool negative) {
    if (negative) PutInFront('-');
}

void Numeral::Digit(unsigned int digit) {
    PutInFront(Ascii::HexDigit(digit));
}

void Numeral::MakeDigits(unsigned int value, unsigned int radix, unsigned int minDigits) {
    MakeDigits64(value, radix, minDigits);
}

void Numeral::MakeDigits64(unsigned long value, unsigned int radix, unsigned int minDigits) {
    std::size_t digits = 0;
    for (; value != 0 || digits < minDigits; value /= radix) {
        if (++digits > cMostDigits) throw ConstDataCapacityExceeded();
        Digit(static_cast<unsigned int>(value % radix));
    }
}

void Numeral::PadTo(unsigned int digits) {
    while (cCapacity - m_first < digits) PutInFront('0');
}

AutoUString<UTF8> Numeral::MakeAutoUTF8String() const {
    return AutoUString<UTF8>(MakeUTF8Ref(Bytes()));
}

bool CanAdd(unsigned int a, unsigned int b) {
    return AddFits(a, b);
}

bool CanAdd(unsigned long a, unsigned long b) {
    return AddFits(a, b);
}

bool CanAddUnsigned(unsigned int a, unsigned int b) {
    return AddFits(a, b);
}

bool CanAddUnsigned(unsigned long a, unsigned long b) {
    return AddFits(a, b);
}

bool CanAddSigned(int a, int b) {
    return AddFits(a, b);
}

bool CanAddSigned(long long a, long long b) {
    return AddFits(a, b);
}

bool CanMultiply(unsigned int a, unsigned int b) {
    return MultiplyFits(a, b);
}

bool CanMultiply(unsigned long a, unsigned long b) {
    return MultiplyFits(a, b);
}

bool CanMultiply(int a, int b) {
    return MultiplyFits(a, b);
}

bool CanMultiply(long long a, long long b) {
    return MultiplyFits(a, b);
}
