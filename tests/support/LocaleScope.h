#pragma once

#include "tests/support/TestLocales.h"

#include <clocale>
#include <cstdio>
#include <cstdlib>

// Puts this process into a locale (all categories), one of the test locales or of the C library's own, and
// back into "C" at the end. Ends the process when the locale is not there, so that no test passes for want of
// it.
class LocaleScope {
public:
    explicit LocaleScope(char const* name) {
        setenv("LOCPATH", TestLocales::Folder().c_str(), 1);
        if (std::setlocale(LC_ALL, name)) return;
        std::fprintf(stderr, "The locale %s is not there.\n", name);
        std::abort();
    }
    LocaleScope(LocaleScope const&) = delete;
    LocaleScope& operator=(LocaleScope const&) = delete;
    ~LocaleScope() { std::setlocale(LC_ALL, "C"); }
};
