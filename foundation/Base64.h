#pragma once

#include "text/AutoUString.h"

#include <vector>

// Base64 text of `data`, without line breaks: "QQ==" for "A", the empty text for no bytes.
AutoUString<UTF8> Base64Encode(ConstData data);

// Bytes of Base64 text. Bytes outside the alphabet are skipped and a group cut short gives what it holds, so
// no input is refused.
std::vector<unsigned char> Base64Decode(ConstData text);
