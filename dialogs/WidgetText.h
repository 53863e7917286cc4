#pragma once

#include "text/UStringRef.h"

#include <string>

// `text` in the encoding of the locale, as widgets take it. A NUL ends it, since they read it as a C string.
// Throws UnixPlatform::WideToMultiByteConvertError for a text that the locale cannot spell.
std::string WidgetText(UStringRef<UTF8> const& text);
