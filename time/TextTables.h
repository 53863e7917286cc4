#pragma once

#include "text/UStringRef.h"

#include <string_view>

// View of an entry of a constant table of texts.
inline UStringRef<UTF8> TableText(std::string_view entry) {
    auto const* first = reinterpret_cast<unsigned char const*>(entry.data());
    return UStringRef<UTF8>(UTF8(), first, first + entry.size());
}
