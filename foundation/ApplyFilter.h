#pragma once

#include "foundation/DataFilter.h"
#include "text/AutoUString.h"

#include <vector>

// What the filter makes of the whole input, what it flushes at the end included.
std::vector<unsigned char> ApplyFilter(ConstData data, DataFilter& filter);
AutoUString<UTF8> ApplyFilter(UStringRef<UTF8> const& text, DataFilter& filter);
