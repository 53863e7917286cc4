#pragma once

#include "format/UFormat.h"
#include "text/AutoNullTerminated.h"

// The rendered format in the encoding of the locale, for widgets and C interfaces. A text that the locale
// cannot spell becomes "<Invalid String>", or its translation: such a text is no reason to fail.
//
// Throws what rendering throws. When the marker cannot be converted either, throws what its conversion
// throws.
AutoNullTerminated<Local8Bit> MakePlatformString(FormatPlusArguments<0> const& format);
AutoNullTerminated<Local8Bit> MakePlatformString(FormatPlusArguments<1> const& format);
AutoNullTerminated<Local8Bit> MakePlatformString(FormatPlusArguments<2> const& format);
