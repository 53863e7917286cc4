#pragma once

#include <string>

// Whether a locale's name, as setlocale gives it, is that of a real locale: not null, empty, "C" or "POSIX".
// "C.UTF-8" counts as real.
bool IsRealLocale(char const* name);

// What translations are named after, in the encoding of the locale.
struct LocaleNames {
    // Language and territory, "de_DE": the locale's name without its encoding.
    std::string full;
    // "de"; empty when the full name has no territory.
    std::string language;
};

// "de_DE.UTF-8" gives "de_DE" and "de"; "de" and "de.UTF-8" give "de" and no language.
LocaleNames NamesOfLocale(char const* name);
