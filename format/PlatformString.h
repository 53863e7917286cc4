#pragma once

#include "format/UFormat.h"
#include "text/AutoNullTerminated.h"

// The rendered format in the encoding of the locale, for widgets and C interfaces. A text whose conversion
// fails, be it that the locale cannot spell it or that memory runs out, becomes "<Invalid String>", or its
// translation: such a text is no reason to fail.
//
// Throws what rendering throws. When the marker is needed and cannot be made either, throws what making the
// marker throws.
template <std::size_t N>
requires(N <= 2) AutoNullTerminated<Local8Bit> MakePlatformString(FormatPlusArguments<N> const& format);

extern template AutoNullTerminated<Local8Bit> MakePlatformString(FormatPlusArguments<0> const&);
extern template AutoNullTerminated<Local8Bit> MakePlatformString(FormatPlusArguments<1> const&);
extern template AutoNullTerminated<Local8Bit> MakePlatformString(FormatPlusArguments<2> const&);
