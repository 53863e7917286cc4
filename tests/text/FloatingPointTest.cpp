#include "text/FloatingPoint.h"
#include "text/UString.h"

#include "tests/support/UStringPrinting.h"

#include <gtest/gtest.h>

#include <bit>
#include <cfloat>
#include <clocale>
#include <cmath>
#include <cstdlib>
#include <filesystem>
#include <limits>
#include <random>
#include <string>
#include <system_error>

namespace {

constexpr double cInfinity = std::numeric_limits<double>::infinity();
constexpr double cNaN = std::numeric_limits<double>::quiet_NaN();
constexpr double cSmallest = std::numeric_limits<double>::denorm_min();

// Distance to the neighbour towards zero.
double StepOf(double value) {
    return value == 0 ? cSmallest : std::fabs(value) - std::nextafter(std::fabs(value), 0.0);
}

std::string Make(double value, double precision) {
    return MakeString(MakeAsciiFloatingPoint(value, precision));
}

struct ReadCase {
    char const* text;
    double value;
    double precision;
};

void ExpectExactRoundTrip(double value) {
    FloatingPointText const text = MakeAsciiFloatingPoint(value, StepOf(value));
    FloatingPointReading const reading = ReadAsciiFloatingPoint(text);
    EXPECT_EQ(std::bit_cast<std::uint64_t>(reading.value), std::bit_cast<std::uint64_t>(value))
        << MakeString(text);
}

// What was read and is written by its own precision stays the same text and the same reading.
void ExpectStable(std::string const& text) {
    FloatingPointReading const reading = ReadAsciiFloatingPoint(MakeConstData(text));
    EXPECT_EQ(Make(reading.value, reading.precision), text);
}

// While it lives, numbers of the C library have a decimal comma, if localedef can make such a locale. It is
// made in a folder of its own, so that none needs to be installed.
class CommaLocale {
public:
    CommaLocale() {
        if (!mkdtemp(m_folder)) return;
        std::string const folder = m_folder;
        // Its exit code tells of mere warnings too; the test looks at the comma itself.
        [[maybe_unused]] int const code =
            std::system(("localedef -i de_DE -f ISO-8859-1 '" + folder + "/de_DE'").c_str());
        setenv("LOCPATH", m_folder, 1);
        std::setlocale(LC_NUMERIC, "de_DE");
    }
    CommaLocale(CommaLocale const&) = delete;
    CommaLocale& operator=(CommaLocale const&) = delete;
    ~CommaLocale() {
        std::setlocale(LC_NUMERIC, m_before.c_str());
        unsetenv("LOCPATH");
        std::error_code ignored;
        std::filesystem::remove_all(m_folder, ignored);
    }

private:
    std::string const m_before = std::setlocale(LC_NUMERIC, nullptr);
    char m_folder[32] = "/tmp/comma-locale-XXXXXX";
};

double RandomDouble(std::mt19937_64& random) {
    while (true) {
        auto const value = std::bit_cast<double>(random());
        if (std::isfinite(value) && value != 0) return value;
    }
}

} // namespace

TEST(ReadAsciiFloatingPoint, ReadsValueAndPrecision) {
    ReadCase const cases[] = {
        {"0", 0, 1},
        {"5", 5, 1},
        {"0.0", 0, 0.1},
        {"12.50", 12.5, 0.01},
        {"-12.50", -12.5, 0.01},
        {"+12.50", 12.5, 0.01},
        {"0.1", 0.1, 0.1},
        {".5", 0.5, 0.1},
        {"5.", 5, 1},
        {"1200", 1200, 100},
        {"1200.", 1200, 1},
        {"1000000", 1e6, 1e6},
        {"000", 0, 100},
        {"007", 7, 1},
        {"1e3", 1000, 1000},
        {"1E3", 1000, 1000},
        {"1e+3", 1000, 1000},
        {"1e-3", 0.001, 0.001},
        {"12e1", 120, 10},
        {"10e1", 100, 100},
        {"1.50e3", 1500, 10},
        {"3.e2", 300, 100},
        {"6.02e+23", 6.02e23, 1e21},
        {"1.5e-7", 1.5e-7, 1e-8},
        {"1e0", 1, 1},
        {"1e000000000000000000000000000002", 100, 100},
        {"0e999999999999999999999", 0, cInfinity},
    };
    for (ReadCase const& each : cases) {
        FloatingPointReading const reading = ReadAsciiFloatingPoint(MakeUTF8Ref(each.text));
        EXPECT_EQ(reading.value, each.value) << each.text;
        EXPECT_EQ(reading.precision, each.precision) << each.text;
        EXPECT_EQ(reading.flags, 0u) << each.text;
    }
}

TEST(ReadAsciiFloatingPoint, SkipsSpacesAroundTheSignAndBetweenDigits) {
    ReadCase const cases[] = {
        {" 12.5", 12.5, 0.1},  {"12.5 ", 12.5, 0.1},  {" - 12.5", -12.5, 0.1},  {"1 2 . 5", 12.5, 0.1},
        {"1 000", 1000, 1000}, {"1 e 3", 1000, 1000}, {"1e - 3", 0.001, 0.001}, {"1e+ 1 2 ", 1e12, 1e12},
    };
    for (ReadCase const& each : cases) {
        FloatingPointReading const reading = ReadAsciiFloatingPoint(MakeUTF8Ref(each.text));
        EXPECT_EQ(reading.value, each.value) << each.text;
        EXPECT_EQ(reading.precision, each.precision) << each.text;
    }
}

TEST(ReadAsciiFloatingPoint, RefusesWhatIsNoNumber) {
    for (char const* const text : {"",    " ",   "-",   "+",    ".",     "-.",    "e",   "e5",    ".e5",
                                   "1e",  "1e+", "1e ", "1e- ", "1e5.0", "1e5e5", "1,5", "1.2.3", "--1",
                                   "+-1", "1-",  "1\t", "\t1",  "0x10",  "1f",    "x",   "1e+-5", "1\n"})
        EXPECT_THROW(ReadAsciiFloatingPoint(MakeUTF8Ref(text)), NotAFloatingPoint) << '"' << text << '"';
}

TEST(ReadAsciiFloatingPoint, ReadsTheFormsThatAreNotFinite) {
    ReadCase const cases[] = {
        {"inf", cInfinity, 1},        {"+inf", cInfinity, 1},        {"-inf", -cInfinity, 1},
        {"INF", cInfinity, 1},        {"infinity", cInfinity, 1},    {"+infinity", cInfinity, 1},
        {"-Infinity", -cInfinity, 1}, {"  -  inf  ", -cInfinity, 1}, {" infinity ", cInfinity, 1},
    };
    for (ReadCase const& each : cases) {
        FloatingPointReading const reading = ReadAsciiFloatingPoint(MakeUTF8Ref(each.text));
        EXPECT_EQ(reading.value, each.value) << each.text;
        EXPECT_EQ(reading.precision, 1.0) << each.text;
        EXPECT_EQ(reading.flags, 0u) << each.text;
    }
    for (char const* const text : {"nan", "NaN", "NAN", "+nan", "-nan", " - nan "}) {
        FloatingPointReading const reading = ReadAsciiFloatingPoint(MakeUTF8Ref(text));
        EXPECT_TRUE(std::isnan(reading.value)) << text;
        EXPECT_EQ(reading.precision, 1.0) << text;
        EXPECT_EQ(reading.flags, 0u) << text;
    }
}

TEST(ReadAsciiFloatingPoint, RefusesOtherTextsWithAnN) {
    for (char const* const text : {"n", "N", "1n", "infin", "infinit", "infinityy", "nano", "in f", "na n",
                                   "--inf", "one", "inf1", "1 nan", "\tinf"})
        EXPECT_THROW(ReadAsciiFloatingPoint(MakeUTF8Ref(text)), NotAFloatingPoint) << '"' << text << '"';
}

TEST(ReadAsciiFloatingPoint, FlagsWhatLeavesTheNormalRange) {
    struct FlagCase {
        char const* text;
        double value;
        std::uint32_t flags;
    };
    FlagCase const cases[] = {
        {"1.7976931348623157e308", DBL_MAX, 0},
        {"1e309", cInfinity, 8 + 32},
        {"-1e309", -cInfinity, 8 + 32},
        {"1e99999999999999999999999999", cInfinity, 8 + 32},
        {"2.2250738585072014e-308", DBL_MIN, 0},
        {"2e-308", 2e-308, 16 + 32},
        {"5e-324", cSmallest, 16 + 32},
        {"-5e-324", -cSmallest, 16 + 32},
        {"1e-400", 0, 16 + 32},
        {"1e-99999999999999999999999999", 0, 16 + 32},
        {"0e-400", 0, 0},
        {"0.000", 0, 0},
    };
    for (FlagCase const& each : cases) {
        FloatingPointReading const reading = ReadAsciiFloatingPoint(MakeUTF8Ref(each.text));
        EXPECT_EQ(reading.value, each.value) << each.text;
        EXPECT_EQ(reading.flags, each.flags) << each.text;
    }
}

TEST(ReadAsciiFloatingPoint, DoesNotPromiseMorePrecisionThanADoubleHas) {
    EXPECT_EQ(ReadAsciiFloatingPoint("1.000000000000000000000000000000"_data).precision, 0x1p-53);
    EXPECT_EQ(ReadAsciiFloatingPoint("1.5000000000000000000000000000000"_data).precision, 0x1p-52);
    EXPECT_EQ(ReadAsciiFloatingPoint("0e-400"_data).precision, cSmallest);
    EXPECT_EQ(ReadAsciiFloatingPoint("1e400"_data).precision, cInfinity);
}

TEST(ReadAsciiFloatingPoint, TakesExponentsFarBelowTheRange) {
    for (std::string const exponent : {"e-400", "e-4000", "e-999999999999", "e-99999999999999999999999999"}) {
        for (std::string const digits : {"1", "-1", "123.456", "-0.5", "100"}) {
            std::string const text = digits + exponent;
            FloatingPointReading const reading = ReadAsciiFloatingPoint(MakeConstData(text));
            EXPECT_EQ(reading.value, 0.0) << text;
            EXPECT_EQ(std::signbit(reading.value), digits[0] == '-') << text;
            EXPECT_EQ(reading.precision, cSmallest) << text;
            EXPECT_EQ(reading.flags, 16u + 32u) << text;
        }
        FloatingPointReading const zero = ReadAsciiFloatingPoint(MakeConstData("0" + exponent));
        EXPECT_EQ(zero.value, 0.0) << exponent;
        EXPECT_EQ(zero.precision, cSmallest) << exponent;
        EXPECT_EQ(zero.flags, 0u) << exponent;
    }
}

TEST(ReadAsciiFloatingPoint, TakesAnyNumberOfDigits) {
    std::string const zeros(100000, '0');
    EXPECT_EQ(ReadAsciiFloatingPoint(MakeConstData(zeros + "12." + zeros)).value, 12);
    EXPECT_EQ(ReadAsciiFloatingPoint(MakeConstData("0." + zeros + "1e100001")).value, 1);
    EXPECT_EQ(ReadAsciiFloatingPoint(MakeConstData("1" + zeros + "e-100000")).value, 1);
    EXPECT_EQ(ReadAsciiFloatingPoint(MakeConstData("1" + zeros)).value, cInfinity);
}

TEST(ReadAsciiFloatingPoint, RoundsByTheVeryLastDigit) {
    // 2^53 + 1 lies half-way between two doubles; any digit behind it decides.
    std::string const half = "9007199254740993.";
    std::string const zeros(5000, '0');
    EXPECT_EQ(ReadAsciiFloatingPoint(MakeConstData(half + zeros)).value, 9007199254740992.0);
    EXPECT_EQ(ReadAsciiFloatingPoint(MakeConstData(half + zeros + "1")).value, 9007199254740994.0);
}

TEST(MakeAsciiFloatingPoint, WritesPlainDecimalsToTheirPrecision) {
    EXPECT_EQ(Make(12.5, 0.01), "12.50");
    EXPECT_EQ(Make(-12.5, 0.01), "-12.50");
    EXPECT_EQ(Make(12.5, 0.1), "12.5");
    EXPECT_EQ(Make(12.5, 0.03), "12.50");
    EXPECT_EQ(Make(1234.5, 1), "1234");
    EXPECT_EQ(Make(1234.6, 1), "1235");
    EXPECT_EQ(Make(1234, 100), "1200");
    EXPECT_EQ(Make(1250.5, 100), "1300");
    EXPECT_EQ(Make(0.999, 0.01), "1.00");
    EXPECT_EQ(Make(99.96, 0.1), "100.0");
    EXPECT_EQ(Make(0.001, 0.001), "0.001");
    EXPECT_EQ(Make(5, 1), "5");
    EXPECT_EQ(Make(5, 5), "5");
    EXPECT_EQ(Make(1.0, 0.1), "1.0");
    EXPECT_EQ(Make(123456789, 1), "123456789");
}

TEST(MakeAsciiFloatingPoint, WritesZeroWithOnePlace) {
    EXPECT_EQ(Make(0.0, 0.01), "0.0");
    EXPECT_EQ(Make(0.0, 100), "0.0");
    EXPECT_EQ(Make(0.0, 0), "0.0");
    EXPECT_EQ(Make(-0.0, 0.01), "0.0");
    EXPECT_EQ(MakeString(StandardNotation(0.0, 1)), "0.0");
    EXPECT_EQ(MakeString(ScientificNotation(0.0, 1)), "0.0");
}

TEST(MakeAsciiFloatingPoint, RoundsWhatIsSmallerThanThePrecision) {
    EXPECT_EQ(Make(0.004, 0.01), "0.00");
    EXPECT_EQ(Make(0.006, 0.01), "0.01");
    EXPECT_EQ(Make(-0.004, 0.01), "-0.00");
    EXPECT_EQ(Make(40, 100), "0");
    EXPECT_EQ(Make(60, 100), "100");
    EXPECT_EQ(Make(1e-300, 0.01), "0.00");
    EXPECT_EQ(Make(1, 1e30), "0");
}

TEST(MakeAsciiFloatingPoint, RoundsAnExactHalfToTheEvenDigit) {
    EXPECT_EQ(Make(0.5, 1), "0");
    EXPECT_EQ(Make(1.5, 1), "2");
    EXPECT_EQ(Make(2.5, 1), "2");
    EXPECT_EQ(Make(-0.5, 1), "-0");
    EXPECT_EQ(Make(-3.5, 1), "-4");
    EXPECT_EQ(Make(50, 100), "0");
    EXPECT_EQ(Make(150, 100), "200");
    EXPECT_EQ(Make(250, 100), "200");
    EXPECT_EQ(Make(0.125, 0.01), "0.12");
    EXPECT_EQ(Make(0.375, 0.01), "0.38");
    EXPECT_EQ(MakeString(ScientificNotation(50, 100)), "0e+2");
    EXPECT_EQ(MakeString(ScientificNotation(250, 100)), "2e+2");
}

TEST(MakeAsciiFloatingPoint, TakesTheExactValueForTheHalf) {
    EXPECT_EQ(Make(std::nextafter(0.5, 1.0), 1), "1");
    EXPECT_EQ(Make(std::nextafter(0.5, 0.0), 1), "0");
    EXPECT_EQ(Make(std::nextafter(50.0, 100.0), 100), "100");
    EXPECT_EQ(Make(2.675, 0.01), "2.67") << "which lies below the half";
    EXPECT_EQ(Make(0.05, 0.1), "0.1") << "which lies above the half";
    EXPECT_EQ(Make(5e-7, 1e-6), "0.000000") << "which lies below the half";
    // These lie so near to the half that 17 digits do not show the difference.
    EXPECT_EQ(Make(5e-15, 1e-14), "0.00000000000000");
    EXPECT_EQ(Make(5e79, 1e80), "1e+80");
    EXPECT_EQ(Make(5e-205, 1e-204), "1e-204");
}

TEST(MakeAsciiFloatingPoint, TakesAnInfinitePrecisionAsTheLargestPlace) {
    EXPECT_EQ(Make(5, cInfinity), "0");
    EXPECT_EQ(Make(-5, cInfinity), "-0");
    EXPECT_EQ(Make(9e22, cInfinity), "0");
    EXPECT_EQ(Make(1e300, cInfinity), "0e+308");
    EXPECT_EQ(Make(-1e300, cInfinity), "-0e+308");
    EXPECT_EQ(Make(9e307, cInfinity), "1e+308");
    EXPECT_EQ(Make(1.25e308, cInfinity), "1e+308");
    EXPECT_EQ(Make(cSmallest, cInfinity), "0");
    EXPECT_EQ(MakeString(StandardNotation(5, cInfinity)), "0");
    EXPECT_EQ(MakeString(ScientificNotation(5, cInfinity)), "0e+308");
    EXPECT_EQ(Make(0.0, cInfinity), "0.0");
}

TEST(MakeAsciiFloatingPoint, WritesWhatIsNotFinite) {
    for (double const precision : {0.0, 0.01, 1e30, cInfinity}) {
        EXPECT_EQ(Make(cInfinity, precision), "+infinity");
        EXPECT_EQ(Make(-cInfinity, precision), "-infinity");
        EXPECT_EQ(Make(cNaN, precision), "NaN");
    }
    EXPECT_EQ(MakeString(StandardNotation(-cInfinity, 1)), "-infinity");
    EXPECT_EQ(MakeString(StandardNotation(cNaN, 1)), "NaN");
    EXPECT_EQ(MakeString(ScientificNotation(cInfinity, 1)), "+infinity");
    EXPECT_EQ(MakeString(ScientificNotation(cNaN, 1)), "NaN");
}

TEST(MakeAsciiFloatingPoint, ReadsBackWhatIsNotFinite) {
    EXPECT_EQ(ReadAsciiFloatingPoint(MakeAsciiFloatingPoint(cInfinity, 1)).value, cInfinity);
    EXPECT_EQ(ReadAsciiFloatingPoint(MakeAsciiFloatingPoint(-cInfinity, 1)).value, -cInfinity);
    EXPECT_TRUE(std::isnan(ReadAsciiFloatingPoint(MakeAsciiFloatingPoint(cNaN, 1)).value));
}

TEST(MakeAsciiFloatingPoint, ChoosesTheNotationByValueAndPlace) {
    EXPECT_EQ(Make(9e22, 1e22), "90000000000000000000000");
    EXPECT_EQ(Make(1e23, 1e23), "1e+23");
    EXPECT_EQ(Make(-2.5e23, 1e22), "-2.5e+23");
    EXPECT_EQ(Make(1e-22, 1e-22), "0.0000000000000000000001");
    EXPECT_EQ(Make(1e-23, 1e-23), "1e-23");
    EXPECT_EQ(Make(1e-10, 1e-23), "1.0000000000000e-10");
}

TEST(MakeAsciiFloatingPoint, TakesScientificNotationWhenThePlainFormHasNoRoom) {
    EXPECT_EQ(Make(-1.5e-10, 1e-22), "-1.500000000000e-10");
    EXPECT_EQ(Make(1.5e-10, 1e-22), "0.0000000001500000000000");
}

TEST(MakeAsciiFloatingPoint, IgnoresAPrecisionFinerThanTheNumber) {
    EXPECT_EQ(Make(0.1, 0), "0.10000000000000001");
    EXPECT_EQ(Make(0.1, 1e-300), "0.10000000000000001");
    EXPECT_EQ(Make(0.1, -1), "0.10000000000000001");
    EXPECT_EQ(Make(0.1, cNaN), "0.10000000000000001");
    EXPECT_EQ(Make(1e22, 1), "10000000000000000000000");
    EXPECT_EQ(Make(cSmallest, 0), "5e-324");
    EXPECT_EQ(Make(DBL_MAX, 0), "1.7976931348623157e+308");
    EXPECT_EQ(Make(-DBL_MAX, 0), "-1.7976931348623157e+308");
}

TEST(StandardNotation, RefusesAWholePartThatDoesNotFit) {
    EXPECT_EQ(MakeString(StandardNotation(1e23, 1e23)), "100000000000000000000000");
    EXPECT_THROW(StandardNotation(1e24, 1e24), TooLargeForStandardNotation);
    EXPECT_THROW(StandardNotation(-1e23, 1e23), TooLargeForStandardNotation);
    EXPECT_THROW(StandardNotation(9.9e23, 1e23 * 10), TooLargeForStandardNotation);
    EXPECT_THROW(StandardNotation(DBL_MAX, 1), TooLargeForStandardNotation);
}

TEST(StandardNotation, RefusesPlacesThatDoNotFit) {
    EXPECT_EQ(MakeString(StandardNotation(1e-22, 1e-22)), "0.0000000000000000000001");
    EXPECT_THROW(StandardNotation(-1e-22, 1e-22), DataOverflow);
    EXPECT_THROW(StandardNotation(1e-23, 1e-23), DataOverflow);
    EXPECT_THROW(StandardNotation(cSmallest, 0), DataOverflow);
}

TEST(ScientificNotation, WritesAnExponentUnlessItIsZero) {
    struct ScientificCase {
        double value;
        double precision;
        char const* text;
    };
    ScientificCase const cases[] = {
        {3, 1, "3"},
        {3.25, 0.01, "3.25"},
        {-3.25, 0.01, "-3.25"},
        {12.5, 0.1, "1.25e+1"},
        {1500, 100, "1.5e+3"},
        {0.015, 0.001, "1.5e-2"},
        {6.02e23, 1e21, "6.02e+23"},
        {9.996e25, 1e23, "1.000e+26"},
        {9.99, 1, "1.0e+1"},
        {1e-30, 1e-25, "0e-25"},
        {6e-26, 1e-25, "1e-25"},
        {40, 100, "0e+2"},
        {0.2, 1, "0"},
        {1e100, 1e100, "1e+100"},
    };
    for (ScientificCase const& each : cases)
        EXPECT_EQ(MakeString(ScientificNotation(each.value, each.precision)), each.text);
}

TEST(FloatingPointRoundTrip, IsExactForPowersOfTen) {
    for (int exponent = -323; exponent <= 308; ++exponent) {
        double const power = std::strtod(("1e" + std::to_string(exponent)).c_str(), nullptr);
        for (double const value :
             {power, -power, std::nextafter(power, 0.0), std::nextafter(power, cInfinity)})
            if (std::isfinite(value) && value != 0) ExpectExactRoundTrip(value);
    }
}

TEST(FloatingPointRoundTrip, IsExactForPowersOfTwoAndTheirNeighbours) {
    for (int exponent = -1074; exponent <= 1023; ++exponent) {
        double const power = std::ldexp(1.0, exponent);
        for (double const value : {power, std::nextafter(power, 0.0), -std::nextafter(power, cInfinity)})
            if (value != 0) ExpectExactRoundTrip(value);
    }
}

TEST(FloatingPointRoundTrip, IsExactForTheExtremes) {
    for (double const value : {0.0, DBL_MAX, -DBL_MAX, DBL_MIN, -DBL_MIN, cSmallest, -cSmallest,
                               std::nextafter(DBL_MIN, 0.0), 9007199254740991.0, 9007199254740993.0})
        ExpectExactRoundTrip(value);
}

TEST(FloatingPointRoundTrip, IsExactWhereTheStepLiesJustBelowAPowerOfTen) {
    // Between 2^-1021 and 2^-1020 the step is 9.88e-324, and the shortest text of that step is "1e-323".
    EXPECT_EQ(Make(7.6253394097030295e-308, 0), "7.6253394097030295e-308");
    EXPECT_EQ(Make(7.6253394097030295e-308, 0x1p-1073), "7.6253394097030295e-308");
    EXPECT_EQ(Make(-7.6253394097030295e-308, 0), "-7.6253394097030295e-308") << "as long as a text can be";
    std::mt19937_64 random(1021);
    std::uniform_real_distribution<double> mantissas(1, 2);
    for (int round = 0; round < 50000; ++round) ExpectExactRoundTrip(std::ldexp(mantissas(random), -1021));
}

TEST(FloatingPointRoundTrip, IsExactForEveryExponent) {
    std::mt19937_64 random(1022);
    std::uniform_real_distribution<double> mantissas(1, 2);
    for (int exponent = -1022; exponent <= 1023; ++exponent)
        for (int round = 0; round < 40; ++round)
            ExpectExactRoundTrip(std::ldexp(mantissas(random), exponent));
}

TEST(FloatingPointRoundTrip, IsExactForRandomNumbers) {
    std::mt19937_64 random(987654321);
    for (int round = 0; round < 50000; ++round) ExpectExactRoundTrip(RandomDouble(random));
    std::uniform_real_distribution<double> near(-1e6, 1e6);
    for (int round = 0; round < 50000; ++round) ExpectExactRoundTrip(near(random));
    std::uniform_real_distribution<double> small(-1e-4, 1e-4);
    for (int round = 0; round < 50000; ++round) ExpectExactRoundTrip(small(random));
}

TEST(FloatingPointRoundTrip, KeepsEveryTextThatSaysItsPrecision) {
    for (char const* const text : {"0.0", "1.0", "12.50", "-12.50", "0.001", "1200", "5", "1000000",
                                   "90000000000000000000000", "1e+23", "6.02e+23", "-1.5e-30", "1.000e+26",
                                   "0.10000000000000001", "5e-324", "1.7976931348623157e+308"})
        ExpectStable(text);
    for (int places = 1; places <= 15; ++places)
        ExpectStable("3." + std::string("141592653589793", 0, static_cast<std::size_t>(places)));
    for (int exponent = 24; exponent <= 308; ++exponent) {
        ExpectStable("1e+" + std::to_string(exponent));
        ExpectStable("2.75e+" + std::to_string(exponent - 1));
        ExpectStable("7e-" + std::to_string(exponent));
        ExpectStable("-9.99e-" + std::to_string(exponent - 1));
    }
}

TEST(FloatingPointRoundTrip, StaysWithinThePrecisionAndSettlesAtOnce) {
    std::mt19937_64 random(13579);
    std::uniform_real_distribution<double> values(-1e9, 1e9);
    std::uniform_int_distribution<int> places(-9, 9);
    for (int round = 0; round < 50000; ++round) {
        double const value = values(random);
        double const precision = std::pow(10.0, places(random));
        std::string const text = Make(value, precision);
        FloatingPointReading const reading = ReadAsciiFloatingPoint(MakeConstData(text));
        EXPECT_LE(std::fabs(reading.value - value), 0.5 * precision + StepOf(value)) << text;
        if (reading.value != 0) {
            EXPECT_EQ(Make(reading.value, reading.precision), text);
        }
    }
}

TEST(FloatingPointText, NeverNeedsMoreRoomThanItHas) {
    std::mt19937_64 random(24680);
    for (int round = 0; round < 50000; ++round) {
        double const value = RandomDouble(random);
        double const precision = std::fabs(RandomDouble(random));
        EXPECT_NO_THROW(MakeAsciiFloatingPoint(value, precision)) << value << ' ' << precision;
        EXPECT_NO_THROW(ScientificNotation(value, 0)) << value;
    }
}

TEST(FloatingPoint, AsksNoLocale) {
    if (std::system("command -v localedef >/dev/null 2>&1") != 0) GTEST_SKIP() << "there is no localedef";
    CommaLocale const locale;
    ASSERT_STREQ(std::localeconv()->decimal_point, ",") << "localedef could not make a locale";
    EXPECT_EQ(Make(12.5, 0.01), "12.50");
    EXPECT_EQ(Make(-1.5e-30, 1e-31), "-1.5e-30");
    EXPECT_EQ(ReadAsciiFloatingPoint("12.5"_data).value, 12.5);
    EXPECT_EQ(ReadAsciiFloatingPoint("12.5"_data).precision, 0.1);
    EXPECT_EQ(ReadAsciiFloatingPoint("1.25e-1"_data).value, 0.125);
    EXPECT_THROW(ReadAsciiFloatingPoint("12,5"_data), NotAFloatingPoint);
}
