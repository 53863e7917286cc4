#pragma once

#include "text/UStringRef.h"

#include <string>
#include <string_view>

namespace TranslationChecker {

// The same bytes as another kind of view. Nothing is checked.
UStringRef<UTF8> ViewOf(std::string_view text);
std::string_view ViewOf(UStringRef<UTF8> const& text);

// For people to read: in double quotes; control characters and, in what is not UTF-8, all other bytes but
// ASCII as \xNN.
std::string Quoted(std::string_view text);
// The same of the beginning of a long text, cut behind a whole character, with "..." behind.
std::string QuotedShort(std::string_view text);

} // namespace TranslationChecker
