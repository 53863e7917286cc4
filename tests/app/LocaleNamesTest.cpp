#include "app/LocaleNames.h"

#include <gtest/gtest.h>

TEST(IsRealLocale, RefusesOnlyTheEmptyNameCAndPOSIX) {
    for (char const* const name : {"", "C", "POSIX"}) EXPECT_FALSE(IsRealLocale(name)) << name;
    for (char const* const name : {"C.UTF-8", "de", "de_DE.UTF-8", "POSIX.UTF-8", "c"})
        EXPECT_TRUE(IsRealLocale(name)) << name;
}
