#pragma once

#include "text/UString.h"

#include <iomanip>
#include <ostream>

// Lets a failing expectation show texts: quoted, with what is not printable ASCII as \xHH.
template <UText T>
void PrintTo(T const& text, std::ostream* out) {
    *out << '"';
    for (auto const unit : UStringRef<typename T::TextEncoding>(text)) {
        auto const value =
            static_cast<std::uint32_t>(static_cast<std::make_unsigned_t<decltype(unit)>>(unit));
        if (value >= 32 && value < 127)
            *out << static_cast<char>(value);
        else
            *out << "\\x" << std::hex << value << std::dec;
    }
    *out << '"';
}
