#pragma once

#include "text/AutoUString.h"

// The text with one space in the place of each line break: LF, CR, or CR with LF behind it.
AutoUString<UTF8> RemoveLineBreaks(UStringRef<UTF8> const& text);
