#include "text/UString.h"

#include "tests/support/UStringPrinting.h"

#include <gtest/gtest.h>

TEST(UStringRef, NullViewEqualsAnEmptyString) {
    EXPECT_EQ(UStringRef<UTF8>(), AutoUString<UTF8>());
}
