#pragma once

#include "text/UStringRef.h"

#include <string_view>

// View of a text of a constant table.
inline UStringRef<UTF8> MakeUTF8Ref(std::string_view text) {
    auto const* first = reinterpret_cast<unsigned char const*>(text.data());
    return UStringRef<UTF8>(UTF8(), first, first + text.size());
}
