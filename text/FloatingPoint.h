#pragma once

#include "text/FixedText.h"

#include <cstdint>

// Floating-point numbers in ASCII, each with its precision: the value of one unit of the last place that its
// text tells. Writing a number by its precision and reading the text gives the number back: exactly when the
// precision is at least as fine as the step between neighbouring numbers. No locale is asked. Nothing is
// allocated.

// A floating-point text of at most 24 bytes.
using FloatingPointText = FixedText<24>;

// Flags of a reading.
inline constexpr std::uint32_t cFloatingPointNotFinite = 8;
// Not 0, but nearer to 0 than the normal numbers, or rounded to 0.
inline constexpr std::uint32_t cFloatingPointOutsideNormalRange = 16;
// Comes with each of the two.
inline constexpr std::uint32_t cFloatingPointRangeError = 32;

struct FloatingPointReading {
    double value;
    // Unit of the last place of the text, but at least the step from the value to its next neighbour towards
    // 0; infinite when the value is.
    double precision;
    std::uint32_t flags;
};

// Reads a number such as "-12.50", "6.02e+23" or ".5". Spaces may stand around a sign and between digits.
// The value is the double nearest to the text. The unit of the last place is that of the last digit behind
// the point ("12.50": 0.01, "3.e2": 100); without a point it is that of the last digit that is not a zero
// ("1200": 100, "000": 100).
//
// "nan", "inf" and "infinity" in any case, with spaces around them and around a sign, give that value with a
// precision of 1 and no flags. A number too large for a double gives an infinity with flags.
//
// Throws NotAFloatingPoint for any other byte, for a text without a digit before the exponent, and for an
// exponent without a digit.
FloatingPointReading ReadAsciiFloatingPoint(ConstData text);

// Text of `value`, rounded to the place of the leading digit of `precision`. A precision that is finer than
// the step to the next number counts as that step. Of two texts equally near the one with the even last digit
// is taken; what counts is the exact value of the double: for a precision of 1, 0.5 gives "0", 1.5 and 2.5
// give "2"; 2.675 gives "2.67" for 0.01, since that double lies a little below the half. StandardNotation's
// form when the value is below 1e23, the place is less than 23 places behind the point and the text fits;
// ScientificNotation's otherwise. An infinite precision counts as the largest finite one. Numbers that are
// not finite give "NaN", "+infinity" or "-infinity". Never throws.
FloatingPointText MakeAsciiFloatingPoint(double value, double precision);

// Plain decimal: "-12.50" for (-12.5, 0.01), "1200" for (1234, 100), "0.0" for zero. A negative value keeps
// its sign when it is rounded to 0. Throws TooLargeForStandardNotation when the whole part does not fit and
// DataOverflow when the places behind the point do not.
FloatingPointText StandardNotation(double value, double precision);

// One digit before the point and an exponent unless that is 0: "6.02e+23", "1.5e-7", "3". A value of
// half a unit of its precision or less gives "0" with the exponent of the precision. "0.0" for zero.
FloatingPointText ScientificNotation(double value, double precision);
