#pragma once

#include <span>
#include <string_view>

namespace TranslationChecker {

// A text that the program can show: the key of its translation.
struct FormatText {
    std::string_view text;
    // Where it stands in the sources, from their root.
    std::string_view file;
};

// Those of the sources that this program was built from, each once, in the order of the sources. The views
// are valid for good.
std::span<FormatText const> FormatTexts();

} // namespace TranslationChecker
