#pragma once

#include "text/Numerals.h"

#include <cstdint>

// Numbers that stand at fixed positions of a text. A field that the text ends before, or within, is 0; one
// that is no decimal numeral throws NotANumeral.

inline unsigned int NumberAt(ConstData text, std::size_t offset, std::size_t digits) {
    if (offset + digits > text.Size()) return 0;
    return ReadAsciiDecimalNumeral(ConstData(text.begin() + offset, text.begin() + offset + digits));
}

inline std::uint8_t TwoDigitsAt(ConstData text, std::size_t offset) {
    return static_cast<std::uint8_t>(NumberAt(text, offset, 2));
}
