#include "text/FixedText.h"
#include "text/UString.h"

#include "tests/support/UStringPrinting.h"

#include <gtest/gtest.h>

TEST(FixedText, HoldsUpToItsCapacity) {
    EXPECT_EQ(FixedText<4>("abcd"_data).Ref(), "abcd"_utf8);
    EXPECT_EQ(FixedText<4>("abcd"_data).SizeInBytes(), 4u);
    EXPECT_THROW(FixedText<4>("abcde"_data), ConstDataCapacityExceeded);
    EXPECT_THROW(FixedText<21>("1234567890123456789012"_data), ConstDataCapacityExceeded);
}

TEST(FixedText, StartsEmpty) {
    FixedText<4> const text;
    EXPECT_TRUE(text.empty());
    EXPECT_STREQ(text.NullTerminated(), "");
    EXPECT_EQ(text, FixedText<4>(ConstData()));
}

TEST(FixedText, HasTwoZeroBytesBehindAFullText) {
    FixedText<4> const text("abcd"_data);
    EXPECT_STREQ(text.NullTerminated(), "abcd");
    EXPECT_EQ(text.NullTerminated()[5], '\0');
}

TEST(FixedText, KeepsItsOwnCopy) {
    unsigned char bytes[] = {'a', 'b'};
    FixedText<4> const text(ConstData(bytes, bytes + 2));
    FixedText<4> const copy = text;
    bytes[0] = 'z';
    EXPECT_EQ(text.Bytes(), "ab"_data);
    EXPECT_EQ(copy, text);
    EXPECT_FALSE(copy == FixedText<4>("ac"_data));
}
