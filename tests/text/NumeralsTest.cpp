#include "text/Numerals.h"
#include "text/UString.h"

#include "tests/support/UStringPrinting.h"

#include <gtest/gtest.h>

#include <climits>
#include <random>
#include <string>
#include <utility>

namespace {

template <class T>
struct ReadCase {
    char const* text;
    int result;
    T value;
};

ConstData Bytes(char const* text) {
    return MakeUTF8Ref(text);
}

template <class T, std::size_t count>
void ExpectDecimal(ReadCase<T> const (&cases)[count]) {
    for (ReadCase<T> const& each : cases) {
        T value = 77;
        EXPECT_EQ(TryReadAsciiDecimalNumeral(Bytes(each.text), value), each.result) << each.text;
        if (each.result == 0) {
            EXPECT_EQ(value, each.value) << each.text;
        }
    }
}

template <class T, std::size_t count>
void ExpectHex(ReadCase<T> const (&cases)[count]) {
    for (ReadCase<T> const& each : cases) {
        T value = 77;
        EXPECT_EQ(TryReadAsciiHexNumeral(Bytes(each.text), value), each.result) << each.text;
        if (each.result == 0) {
            EXPECT_EQ(value, each.value) << each.text;
        }
    }
}

template <class T>
constexpr bool tryDecimalThrows = !noexcept(TryReadAsciiDecimalNumeral(ConstData(), std::declval<T&>()));
template <class T>
constexpr bool tryHexThrows = !noexcept(TryReadAsciiHexNumeral(ConstData(), std::declval<T&>()));

} // namespace

TEST(TryReadAsciiNumeral, NeverThrows) {
    EXPECT_FALSE(tryDecimalThrows<unsigned long>);
    EXPECT_FALSE(tryDecimalThrows<unsigned int>);
    EXPECT_FALSE(tryDecimalThrows<long long>);
    EXPECT_FALSE(tryDecimalThrows<int>);
    EXPECT_FALSE(tryHexThrows<unsigned long>);
    EXPECT_FALSE(tryHexThrows<unsigned int>);
}

TEST(TryReadAsciiDecimalNumeral, ReadsUnsignedLong) {
    ExpectDecimal<unsigned long>({
        {"0", 0, 0},
        {"7", 0, 7},
        {"007", 0, 7},
        {"0000000000000000000000000000001", 0, 1},
        {"18446744073709551615", 0, 18446744073709551615ul},
        {"18446744073709551616", 2, 0},
        {"18446744073709551620", 2, 0},
        {"99999999999999999999", 2, 0},
        {"100000000000000000000", 2, 0},
        {"", 1, 0},
        {" 1", 1, 0},
        {"1 ", 1, 0},
        {"+1", 1, 0},
        {"-1", 1, 0},
        {"0x1", 1, 0},
        {"1a", 1, 0},
        {"1.0", 1, 0},
        {"1\n", 1, 0},
        {"\xd9\xa1", 1, 0},
    });
}

TEST(TryReadAsciiDecimalNumeral, DecidesFromLeftToRightWhatIsWrong) {
    unsigned long value = 0;
    EXPECT_EQ(TryReadAsciiDecimalNumeral("99999999999999999999x"_data, value), 2);
    EXPECT_EQ(TryReadAsciiDecimalNumeral("9999999999999999x9999"_data, value), 1);
}

TEST(TryReadAsciiDecimalNumeral, DoesNotStopAtAZeroByte) {
    unsigned long value = 0;
    EXPECT_EQ(TryReadAsciiDecimalNumeral("12\0"_data, value), 1);
}

TEST(TryReadAsciiDecimalNumeral, ReadsUnsignedInt) {
    ExpectDecimal<unsigned int>({
        {"0", 0, 0},
        {"4294967295", 0, 4294967295u},
        {"4294967296", 2, 0},
        {"18446744073709551616", 2, 0},
        {"", 1, 0},
        {"12 34", 1, 0},
    });
}

TEST(TryReadAsciiDecimalNumeral, ReadsLongLong) {
    ExpectDecimal<long long>({
        {"0", 0, 0},
        {"-0", 0, 0},
        {"+5", 0, 5},
        {"-5", 0, -5},
        {"9223372036854775807", 0, LLONG_MAX},
        {"+9223372036854775807", 0, LLONG_MAX},
        {"9223372036854775808", 2, 0},
        {"-9223372036854775808", 0, LLONG_MIN},
        {"-9223372036854775809", 2, 0},
        {"-18446744073709551615", 2, 0},
        {"", 1, 0},
        {"-", 1, 0},
        {"+", 1, 0},
        {"+-5", 1, 0},
        {"--5", 1, 0},
        {"- 5", 1, 0},
        {" -5", 1, 0},
    });
}

TEST(TryReadAsciiDecimalNumeral, ReadsInt) {
    ExpectDecimal<int>({
        {"2147483647", 0, INT_MAX},
        {"2147483648", 2, 0},
        {"-2147483648", 0, INT_MIN},
        {"-2147483649", 2, 0},
        {"+12", 0, 12},
        {"", 1, 0},
        {"x", 1, 0},
    });
}

TEST(TryReadAsciiHexNumeral, ReadsUnsignedLong) {
    ExpectHex<unsigned long>({
        {"0", 0, 0},
        {"f", 0, 15},
        {"F", 0, 15},
        {"DeadBeef", 0, 0xdeadbeef},
        {"ffffffffffffffff", 0, ULONG_MAX},
        {"0ffffffffffffffff", 0, ULONG_MAX},
        {"10000000000000000", 2, 0},
        {"", 1, 0},
        {"g", 1, 0},
        {"0x1", 1, 0},
        {" 1", 1, 0},
        {"-1", 1, 0},
    });
}

TEST(TryReadAsciiHexNumeral, ReadsUnsignedInt) {
    ExpectHex<unsigned int>({
        {"ffffffff", 0, UINT_MAX},
        {"100000000", 2, 0},
        {"", 1, 0},
        {"@", 1, 0},
    });
}

TEST(ReadAsciiNumeral, ReturnsTheValue) {
    EXPECT_EQ(ReadAsciiDecimalNumeral("4294967295"_data), 4294967295u);
    EXPECT_EQ(ReadAsciiDecimalNumeral64("18446744073709551615"_data), ULONG_MAX);
    EXPECT_EQ(ReadAsciiSignedDecimalNumeral("-2147483648"_data), INT_MIN);
    EXPECT_EQ(ReadAsciiSignedDecimalNumeral64("-9223372036854775808"_data), LLONG_MIN);
    EXPECT_EQ(ReadAsciiHexNumeral("ffffffff"_data), UINT_MAX);
    EXPECT_EQ(ReadAsciiHexNumeral64("ffffffffffffffff"_data), ULONG_MAX);
}

TEST(ReadAsciiNumeral, ThrowsForWhatIsNoNumeral) {
    EXPECT_THROW(ReadAsciiDecimalNumeral(""_data), NotANumeral);
    EXPECT_THROW(ReadAsciiDecimalNumeral64(" 1"_data), NotANumeral);
    EXPECT_THROW(ReadAsciiSignedDecimalNumeral("-"_data), NotANumeral);
    EXPECT_THROW(ReadAsciiSignedDecimalNumeral64("1-"_data), NotANumeral);
    EXPECT_THROW(ReadAsciiHexNumeral("h"_data), NotANumeral);
    EXPECT_THROW(ReadAsciiHexNumeral64(""_data), NotANumeral);
}

TEST(ReadAsciiNumeral, ThrowsForWhatIsTooLarge) {
    EXPECT_THROW(ReadAsciiDecimalNumeral("4294967296"_data), NumeralTooLarge);
    EXPECT_THROW(ReadAsciiDecimalNumeral64("18446744073709551616"_data), NumeralTooLarge);
    EXPECT_THROW(ReadAsciiSignedDecimalNumeral("2147483648"_data), NumeralTooLarge);
    EXPECT_THROW(ReadAsciiSignedDecimalNumeral64("-9223372036854775809"_data), NumeralTooLarge);
    EXPECT_THROW(ReadAsciiHexNumeral("100000000"_data), NumeralTooLarge);
    EXPECT_THROW(ReadAsciiHexNumeral64("10000000000000000"_data), NumeralTooLarge);
}

TEST(ReadAsciiNumeralWithDefault, FallsBackForWhatCannotBeRead) {
    EXPECT_EQ(ReadAsciiDecimalNumeral32WithDefault("12"_data, 9), 12u);
    EXPECT_EQ(ReadAsciiDecimalNumeral32WithDefault("4294967296"_data, 9), 9u);
    EXPECT_EQ(ReadAsciiDecimalNumeral32WithDefault("x"_data, 9), 9u);
    EXPECT_EQ(ReadAsciiDecimalNumeral64WithDefault("4294967296"_data, 9), 4294967296ul);
    EXPECT_EQ(ReadAsciiDecimalNumeral64WithDefault(""_data, 9), 9ul);
    EXPECT_EQ(ReadAsciiSignedDecimalNumeral32WithDefault("-12"_data, 9), -12);
    EXPECT_EQ(ReadAsciiSignedDecimalNumeral32WithDefault("-2147483649"_data, 9), 9);
    EXPECT_EQ(ReadAsciiSignedDecimalNumeral64WithDefault("-2147483649"_data, 9), -2147483649ll);
    EXPECT_EQ(ReadAsciiSignedDecimalNumeral64WithDefault("-"_data, -3), -3);
}

TEST(MakeAsciiDecimalNumeral, WritesAtLeastTheDigitsAskedFor) {
    EXPECT_EQ(MakeAsciiDecimalNumeral(5, 3).Ref(), "005"_utf8);
    EXPECT_EQ(MakeAsciiDecimalNumeral(0, 1).Ref(), "0"_utf8);
    EXPECT_EQ(MakeAsciiDecimalNumeral(1234, 2).Ref(), "1234"_utf8);
    EXPECT_EQ(MakeAsciiDecimalNumeral(1234, 0).Ref(), "1234"_utf8);
    EXPECT_EQ(MakeAsciiDecimalNumeral(UINT_MAX, 1).Ref(), "4294967295"_utf8);
    EXPECT_EQ(MakeAsciiDecimalNumeral64(ULONG_MAX, 1).Ref(), "18446744073709551615"_utf8);
    EXPECT_EQ(MakeAsciiDecimalNumeral64(1, 20).Ref(), "00000000000000000001"_utf8);
}

TEST(MakeAsciiDecimalNumeral, GivesTheEmptyTextForZeroWithNoDigits) {
    EXPECT_TRUE(MakeAsciiDecimalNumeral(0, 0).empty());
    EXPECT_TRUE(MakeAsciiDecimalNumeral64(0, 0).empty());
    EXPECT_TRUE(MakeAsciiSignedDecimalNumeral(0, 0).empty());
}

TEST(MakeAsciiDecimalNumeral, RefusesMoreThanTwentyDigits) {
    EXPECT_THROW(MakeAsciiDecimalNumeral(5, 21), ConstDataCapacityExceeded);
    EXPECT_THROW(MakeAsciiDecimalNumeral64(5, UINT_MAX), ConstDataCapacityExceeded);
    EXPECT_THROW(MakeAsciiSignedDecimalNumeral64(-5, 21), ConstDataCapacityExceeded);
    EXPECT_THROW(MakeAsciiHexNumeral64(5, 21), ConstDataCapacityExceeded);
}

TEST(MakeAsciiSignedDecimalNumeral, PutsTheSignInFrontOfTheDigits) {
    EXPECT_EQ(MakeAsciiSignedDecimalNumeral(-5, 3).Ref(), "-005"_utf8);
    EXPECT_EQ(MakeAsciiSignedDecimalNumeral(5, 3).Ref(), "005"_utf8);
    EXPECT_EQ(MakeAsciiSignedDecimalNumeral(INT_MIN, 1).Ref(), "-2147483648"_utf8);
    EXPECT_EQ(MakeAsciiSignedDecimalNumeral64(LLONG_MIN, 1).Ref(), "-9223372036854775808"_utf8);
    EXPECT_EQ(MakeAsciiSignedDecimalNumeral64(-1, 20).Ref(), "-00000000000000000001"_utf8);
}

TEST(MakeAsciiHexNumeral, WritesLowerCaseDigits) {
    EXPECT_EQ(MakeAsciiHexNumeral(0xABCDEF, 8).Ref(), "00abcdef"_utf8);
    EXPECT_EQ(MakeAsciiHexNumeral(0, 1).Ref(), "0"_utf8);
    EXPECT_EQ(MakeAsciiHexNumeral64(ULONG_MAX, 1).Ref(), "ffffffffffffffff"_utf8);
}

TEST(Numerals, ReadBackWhatWasMade) {
    std::mt19937_64 random(20240611);
    for (int round = 0; round < 20000; ++round) {
        unsigned long const value = random() >> (random() % 64);
        auto const least = static_cast<unsigned int>(random() % 20);
        EXPECT_EQ(ReadAsciiDecimalNumeral64(MakeAsciiDecimalNumeral64(value, least + 1)), value);
        EXPECT_EQ(ReadAsciiHexNumeral64(MakeAsciiHexNumeral64(value, least + 1)), value);
        auto const asSigned = static_cast<long long>(value);
        EXPECT_EQ(ReadAsciiSignedDecimalNumeral64(MakeAsciiSignedDecimalNumeral64(asSigned, 1)), asSigned);
    }
}

TEST(NumeralText, HasTwoZeroBytesBehindTheText) {
    NumeralText const text = MakeAsciiDecimalNumeral(42, 1);
    EXPECT_EQ(text.SizeInBytes(), 2u);
    EXPECT_EQ(text.NullTerminated()[2], '\0');
    EXPECT_EQ(text.NullTerminated()[3], '\0');
}

TEST(Numeral, IsWrittenFromTheRight) {
    Numeral numeral;
    EXPECT_TRUE(numeral.Bytes().empty());
    numeral.Digit(3);
    numeral.Digit(11);
    numeral.PadTo(4);
    numeral.Sign(false);
    EXPECT_EQ(numeral.Bytes(), "00b3"_data);
    numeral.Sign(true);
    EXPECT_STREQ(numeral.NullTerminated(), "-00b3");
    EXPECT_EQ(numeral.MakeAutoUTF8String(), "-00b3"_utf8);
}

TEST(Numeral, PadsOnlyWhatIsShorter) {
    Numeral numeral(12u, 10, 1);
    numeral.PadTo(2);
    EXPECT_EQ(numeral.Bytes(), "12"_data);
    numeral.PadTo(5);
    EXPECT_EQ(numeral.Bytes(), "00012"_data);
}

TEST(Numeral, TakesEveryWidthWithAMinimumOfDigits) {
    EXPECT_EQ(Numeral(7u, 10, 2).Bytes(), "07"_data);
    EXPECT_EQ(Numeral(7ul, 2, 4).Bytes(), "0111"_data);
    EXPECT_EQ(Numeral(-7, 10, 2).Bytes(), "-07"_data);
    EXPECT_EQ(Numeral(-255ll, 16, 1).Bytes(), "-ff"_data);
}

TEST(Numeral, RunsOutOfItsBufferLoudly) {
    Numeral numeral(ULONG_MAX, 10, 1);
    numeral.Sign(true);
    EXPECT_THROW(numeral.Digit(1), ConstDataCapacityExceeded);
    EXPECT_EQ(numeral.Bytes(), "-18446744073709551615"_data);
}

TEST(CanAdd, KnowsTheEdgesOfUnsignedTypes) {
    EXPECT_TRUE(CanAdd(UINT_MAX, 0u));
    EXPECT_TRUE(CanAdd(UINT_MAX - 1, 1u));
    EXPECT_FALSE(CanAdd(UINT_MAX, 1u));
    EXPECT_TRUE(CanAdd(ULONG_MAX - 1, 1ul));
    EXPECT_FALSE(CanAdd(ULONG_MAX, 1ul));
    EXPECT_TRUE(CanAddUnsigned(UINT_MAX, 0u));
    EXPECT_FALSE(CanAddUnsigned(UINT_MAX, 1u));
    EXPECT_TRUE(CanAddUnsigned(ULONG_MAX, 0ul));
    EXPECT_FALSE(CanAddUnsigned(1ul, ULONG_MAX));
}

TEST(CanAddSigned, KnowsBothEdges) {
    EXPECT_TRUE(CanAddSigned(INT_MAX, INT_MIN));
    EXPECT_FALSE(CanAddSigned(INT_MAX, 1));
    EXPECT_FALSE(CanAddSigned(INT_MIN, -1));
    EXPECT_TRUE(CanAddSigned(LLONG_MAX - 1, 1ll));
    EXPECT_FALSE(CanAddSigned(LLONG_MAX, 1ll));
    EXPECT_FALSE(CanAddSigned(LLONG_MIN, -1ll));
}

TEST(CanMultiply, KnowsTheEdgesOfEveryWidth) {
    EXPECT_TRUE(CanMultiply(0u, UINT_MAX));
    EXPECT_TRUE(CanMultiply(65536u, 65535u));
    EXPECT_FALSE(CanMultiply(65536u, 65536u));
    EXPECT_TRUE(CanMultiply(ULONG_MAX, 1ul));
    EXPECT_FALSE(CanMultiply(ULONG_MAX, 2ul));
    EXPECT_TRUE(CanMultiply(INT_MIN, 1));
    EXPECT_FALSE(CanMultiply(INT_MIN, -1));
    EXPECT_TRUE(CanMultiply(LLONG_MIN, 1ll));
    EXPECT_FALSE(CanMultiply(LLONG_MIN, -1ll));
    EXPECT_FALSE(CanMultiply(LLONG_MAX, 2ll));
}
