#pragma once

#include "tools/translation-checker/FormatTexts.h"

#include <iosfwd>
#include <span>
#include <string>
#include <vector>

namespace TranslationChecker {

// The variables of a format that get their values from the program, each once, in their order: without the
// reserved ones, which begin with an underscore. Throws what walking the format throws.
std::vector<std::string_view> VariablesOf(std::string_view format);

// Whether the text can be the key of an entry: it holds neither a tab nor a line's end.
bool IsKey(std::string_view text);

// Writes a translation file with an entry for each of the texts, which gives the text itself, and comments:
// lines without a tab, which the program passes over, a "#" in front.
void WriteTemplate(std::ostream& out, std::span<FormatText const> texts);

} // namespace TranslationChecker
