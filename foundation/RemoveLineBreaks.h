#pragma once

#include "text/AutoUString.h"

// The text with one space in the place of each line break: LF, CR, or CR with LF behind it.
AutoUString<UTF8> RemoveLineBreaks(UStringRef<UTF8> const& text);
// The same by way of UTF-8. Throw InvalidTextEncoding for units that are no text.
AutoUString<UTF16> RemoveLineBreaks(UStringRef<UTF16> const& text);
AutoUString<UTF32> RemoveLineBreaks(UStringRef<UTF32> const& text);
