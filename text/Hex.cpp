#include "text/Hex.h"

#include "text/Ascii.h"

namespace {

unsigned int Value(unsigned char digit) {
    if (!Ascii::HexDigits().Has(digit)) throw NotValidHEX();
    return Ascii::HexDigitValue(digit);
}

} // namespace

NotValidHEX::NotValidHEX(bool mark) : ExceptionPL("Input is not valid hexadecimal."_utf8), m_mark(mark) {
}

AutoUString<UTF8> MakeHexFromBinary8Bit(UStringRef<Binary8Bit> const& bytes) {
    std::size_t const size = bytes.SizeInUnits() * 2;
    AutoUString<UTF8> text(UTF8(), size, size);
    unsigned char* digit = text.begin();
    for (unsigned char const byte : bytes) {
        *digit++ = Ascii::HexDigit(byte >> 4);
        *digit++ = Ascii::HexDigit(byte & 15);
    }
    return text;
}

AutoUString<Binary8Bit> MakeBinary8BitFromHex(UStringRef<UTF8> const& text) {
    if (text.SizeInUnits() % 2 != 0) throw NotValidHEX();
    std::size_t const size = text.SizeInUnits() / 2;
    AutoUString<Binary8Bit> bytes(Binary8Bit(), size, size);
    unsigned char const* digit = text.begin();
    for (unsigned char& byte : bytes) {
        byte = static_cast<unsigned char>(Value(digit[0]) << 4 | Value(digit[1]));
        digit += 2;
    }
    return bytes;
}
