#include "foundation/Exceptions.h"

#include <gtest/gtest.h>

TEST(DebuggableException, ReportsTheEncodedNameOfTheMostDerivedClass) {
    NoMoreData const failure;
    DebuggableException const& base = failure;
    EXPECT_STREQ(base.what(), "10NoMoreData");
    EXPECT_EQ(base.uwhat(), "10NoMoreData"_utf8);
}
