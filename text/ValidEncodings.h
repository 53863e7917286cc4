#pragma once

#include "text/UStringRef.h"

#include <string>
#include <string_view>

// The 16 encodings that a text from outside may be declared in: "UTF-8", "US-ASCII" and the windows code
// pages. The texts live for ever.
ConstArrayOf<std::string_view> GetValidEncodings();

// Whether `name` is one of them, in exactly that spelling: "UTF-8" is, "utf-8" is not.
bool IsValidEncoding(std::string const& name);
bool IsValidEncoding(UStringRef<UTF8> const& name);
