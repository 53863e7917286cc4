#include "app/LocaleNames.h"

#include <gtest/gtest.h>

TEST(IsRealLocale, RefusesOnlyTheEmptyNameCAndPOSIX) {
    for (char const* const name : {"", "C", "POSIX"}) EXPECT_FALSE(IsRealLocale(name)) << name;
    for (char const* const name : {"C.UTF-8", "de", "de_DE.UTF-8", "POSIX.UTF-8", "c"})
        EXPECT_TRUE(IsRealLocale(name)) << name;
}

TEST(NamesOfLocale, CutTheEncodingAndTellTheLanguage) {
    struct Case {
        char const* name;
        char const* full;
        char const* language;
    };
    constexpr Case cases[] = {
        {"de_DE.UTF-8", "de_DE", "de"}, {"de_DE", "de_DE", "de"}, {"de", "de", ""},
        {"de.UTF-8", "de", ""},         {"C.UTF-8", "C", ""},     {"sr_RS@latin", "sr_RS@latin", "sr"},
        {"a_b_c.d_e.f", "a_b_c", "a"},  {".UTF-8", "", ""},       {"_DE.UTF-8", "_DE", ""},
    };
    for (Case const& test : cases) {
        LocaleNames const names = NamesOfLocale(test.name);
        EXPECT_EQ(names.full, test.full) << test.name;
        EXPECT_EQ(names.language, test.language) << test.name;
    }
}
