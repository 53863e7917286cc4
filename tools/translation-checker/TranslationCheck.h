#pragma once

#include "tools/translation-checker/FormatTexts.h"

#include <cstddef>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace TranslationChecker {

// Something about a translation file that its author should know.
struct Finding {
    // Counted from 1; 0 when it belongs to no line.
    std::size_t line;
    // The translation does not work as it is written; otherwise it works, but perhaps not as it was meant.
    bool isError;
    std::string sentence;

    friend bool operator==(Finding const&, Finding const&) = default;
};

struct CheckOptions {
    // Whether to tell of texts without an entry.
    bool tellMissing = true;
    // Whether to look for characters that the encoding of the locale in force (LC_CTYPE) does not have.
    bool checkLocale = false;
    // The contents of the files that are used along with this one. A text that one of them translates is not
    // missing here. They have to stay until the check is done.
    std::vector<std::string_view> companions;
    // The companions are asked before this file, so that its entries for their texts are of no use.
    bool companionsComeFirst = false;
};

struct CheckResult {
    // In the order of the lines, those without a line last.
    std::vector<Finding> findings;
    // How many texts of the program can have an entry, and how many of them have one.
    std::size_t texts = 0;
    std::size_t translated = 0;

    std::size_t CountErrors() const;
};

// Reads the contents of a translation file as the program does, by its own classes, and looks for everything
// that an author is likely not to have meant. Takes a time of n log n in the size of the contents, whatever
// they are.
CheckResult CheckTranslation(std::string_view contents, std::span<FormatText const> texts,
                             CheckOptions const& options = {});

} // namespace TranslationChecker
