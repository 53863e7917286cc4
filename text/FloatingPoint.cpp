#include "text/FloatingPoint.h"

#include "text/Ascii.h"
#include "text/Buffers.h"
#include "text/Numerals.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <limits>
#include <system_error>

// All rounding is left to the exact conversions of <charconv>, which know no locale, allocate nothing and
// round an exact half to the even digit; in steps of double arithmetic the last digits would be lost, and
// with them the round trip.
//
// Reading gathers the significant digits in a fixed buffer. A double lies, at its very worst, on a decision
// that takes fewer than 770 digits; of what is behind the buffer it is enough to know whether it is zero.
// Exponents and digit counts are 64 bits wide, and exponents are cut off far outside the range of a double.
//
// Writing works on the digits of the magnitude from its first one down to a place, which is the power of ten
// that the last digit stands for. The place is never finer than the step to the neighbouring number, so
// there are 17 significant digits at the most, and the longest scientific text has 24 bytes.

namespace {

constexpr int cLargestExponent = std::numeric_limits<double>::max_exponent10;
constexpr int cSmallestExponent = std::numeric_limits<double>::min_exponent10 - 15; // of the denormal numbers

// The nearest double; infinite or 0 outside the range.
double PowerOfTen(std::int64_t exponent) {
    if (exponent > cLargestExponent) return std::numeric_limits<double>::infinity();
    if (exponent < cSmallestExponent) return 0;
    char text[8] = "1e";
    char const* const end = std::to_chars(text + 2, text + sizeof(text), exponent).ptr;
    double power = 0;
    std::from_chars(text, end, power);
    return power;
}

// Distance from a magnitude to its neighbour towards 0, which is the nearer one.
double SmallestStep(double magnitude) {
    if (magnitude == 0) return std::numeric_limits<double>::denorm_min();
    return magnitude - std::nextafter(magnitude, 0.0);
}

// ---- Reading ----

void SkipSpaces(ConstBuffer& in) {
    while (!in.empty() && *in.Next() == ' ') in.Skip(1);
}

// Takes a sign with the spaces around it; true for a minus.
bool TakeSign(ConstBuffer& in) {
    SkipSpaces(in);
    if (in.empty() || (*in.Next() != '-' && *in.Next() != '+')) return false;
    bool const negative = in.Take() == '-';
    SkipSpaces(in);
    return negative;
}

ConstData WithoutTrailingSpaces(ConstData text) {
    unsigned char const* end = text.end();
    while (end != text.begin() && end[-1] == ' ') --end;
    return ConstData(text.begin(), end);
}

// Calls `take` with the value of each digit; spaces may stand anywhere.
template <class Take>
void ReadDigits(ConstData text, Take take) {
    for (unsigned char const byte : text) {
        if (byte == ' ') continue;
        if (!Ascii::Numeric().Has(byte)) throw NotAFloatingPoint();
        take(byte);
    }
}

FloatingPointReading ReadNonFinite(ConstData text) {
    ConstBuffer in(text);
    bool const negative = TakeSign(in);
    ConstData const word = WithoutTrailingSpaces(in.Rest());
    double const infinity = std::numeric_limits<double>::infinity();
    if (Ascii::EqualIgnoringCase(word, "inf"_data) || Ascii::EqualIgnoringCase(word, "infinity"_data))
        return {negative ? -infinity : infinity, 1.0, 0};
    if (Ascii::EqualIgnoringCase(word, "nan"_data)) return {std::numeric_limits<double>::quiet_NaN(), 1.0, 0};
    throw NotAFloatingPoint();
}

std::int64_t ReadExponent(ConstData text) {
    constexpr std::int64_t cTop = std::int64_t{1} << 56;
    ConstBuffer in(text);
    bool const negative = TakeSign(in);
    bool hasDigit = false;
    std::int64_t exponent = 0;
    ReadDigits(in.Rest(), [&](unsigned char digit) {
        hasDigit = true;
        if (exponent < cTop) exponent = exponent * 10 + (digit - '0');
    });
    if (!hasDigit) throw NotAFloatingPoint();
    return negative ? -exponent : exponent;
}

// The digits of the whole and of the fraction part behind one another, as one integer.
class DigitCollector {
public:
    void Add(unsigned char digit) {
        ++m_count;
        m_trailingZeros = digit == '0' ? m_trailingZeros + 1 : 0;
        if (m_size == 0 && digit == '0') return;
        if (m_size < cCapacity) {
            m_digits[m_size++] = static_cast<char>(digit);
        } else {
            ++m_dropped;
            m_droppedNonZero = m_droppedNonZero || digit != '0';
        }
    }

    std::int64_t Count() const { return m_count; }
    std::int64_t TrailingZeros() const { return m_trailingZeros; }
    bool HasNonZero() const { return m_size != 0; }

    // The integer times 10 to `exponent`, rounded to the nearest double.
    double Value(std::int64_t exponent);

private:
    static constexpr int cCapacity = 800;
    static constexpr int cRoomForExponent = 24;

    std::int64_t m_count = 0;
    std::int64_t m_trailingZeros = 0;
    std::int64_t m_dropped = 0;
    bool m_droppedNonZero = false;
    int m_size = 0;
    char m_digits[cCapacity + cRoomForExponent];
};

double DigitCollector::Value(std::int64_t exponent) {
    if (!HasNonZero()) return 0;
    exponent += m_dropped;
    std::int64_t const leading = exponent + m_size - 1;
    double const beyond = leading > 0 ? std::numeric_limits<double>::infinity() : 0;
    if (std::llabs(leading) > 2 * -cSmallestExponent) return beyond;
    char* end = m_digits + m_size;
    if (m_droppedNonZero) {
        *end++ = '1';
        --exponent;
    }
    *end++ = 'e';
    end = std::to_chars(end, m_digits + sizeof(m_digits), exponent).ptr;
    double value = 0;
    bool const inRange = std::from_chars(m_digits, end, value).ec == std::errc();
    return inRange ? value : beyond;
}

std::uint32_t FlagsOf(double magnitude, bool hasNonZero) {
    if (!std::isfinite(magnitude)) return cFloatingPointNotFinite | cFloatingPointRangeError;
    if (hasNonZero && magnitude < std::numeric_limits<double>::min())
        return cFloatingPointOutsideNormalRange | cFloatingPointRangeError;
    return 0;
}

// ---- Writing ----

// The exponent of a text "d.ddde+xx" that ends at `end`.
int ExponentBefore(char const* end) {
    char const* digits = end;
    while (digits[-1] != 'e') --digits;
    int exponent = 0;
    std::from_chars(*digits == '+' ? digits + 1 : digits, end, exponent);
    return exponent;
}

// Power of ten of the first digit that the shortest text of `magnitude` has, so that the double nearest to
// 1e23 counts as 1e23, although it lies a little below. `magnitude` is finite and above 0.
int DecimalExponent(double magnitude) {
    char text[32];
    char const* const end =
        std::to_chars(text, text + sizeof(text), magnitude, std::chars_format::scientific).ptr;
    return ExponentBefore(end);
}

// The largest power of ten that does not exceed `step`, a power of two. A place at the shortest text of the
// step could be coarser than the step: that of 2^-1073, which is 9.88e-324, is "1e-323".
int FloorOfDecimalExponent(double step) {
    char text[32];
    constexpr int cDigitsBehindFirst = std::numeric_limits<double>::max_digits10 - 1;
    char const* const end =
        std::to_chars(text, text + sizeof(text), step, std::chars_format::scientific, cDigitsBehindFirst).ptr;
    return ExponentBefore(end);
}

// The place that a finite value with that precision is rounded to.
int PlaceOf(double value, double precision) {
    double const step = SmallestStep(std::fabs(value));
    if (precision > step) return DecimalExponent(std::min(precision, std::numeric_limits<double>::max()));
    return FloorOfDecimalExponent(step);
}

// Whether a magnitude whose first digit stands behind `place` is more than half a unit of that place. All
// its digits are asked, since it may come nearer to the half than any shorter text shows.
bool ExceedsHalfAUnit(double magnitude, int place) {
    constexpr int cMostDigits = 767;
    char text[cMostDigits + 16];
    char const* const end =
        std::to_chars(text, text + sizeof(text), magnitude, std::chars_format::scientific, cMostDigits - 1)
            .ptr;
    if (ExponentBefore(end) < place - 1 || text[0] < '5') return false;
    auto const isNotZero = [](char digit) { return digit != '0'; };
    return text[0] > '5' || std::any_of(text + 2, text + 1 + cMostDigits, isNotZero);
}

// The digits of a magnitude, rounded at a place.
class RoundedDigits {
public:
    RoundedDigits(double magnitude, int place);

    bool IsZero() const { return m_size == 0; }
    int Place() const { return m_place; }
    // Power of ten of the first digit; of no meaning for zero.
    int First() const { return m_first; }
    unsigned char DigitAt(int place) const {
        int const index = m_first - place;
        return static_cast<unsigned char>(index >= 0 && index < m_size ? m_text[index] : '0');
    }

private:
    void Convert(double magnitude, int digitsBehindFirst);
    void SetToOneUnit();

    int m_place;
    int m_first = 0;
    int m_size = 0;
    char m_text[40];
};

RoundedDigits::RoundedDigits(double magnitude, int place) : m_place(place) {
    int const top = DecimalExponent(magnitude);
    if (top < place) {
        if (ExceedsHalfAUnit(magnitude, place)) SetToOneUnit();
        return;
    }
    Convert(magnitude, top - place);
    // The shortest text may lie above a power of ten that the number itself does not reach. Then its digits
    // start one place lower, and one of them is too many; a single digit is rounded up to that power.
    if (m_first < top) Convert(magnitude, top - place - 1);
}

// Digits of "d.ddde+xx". Places behind the last one read as zeros, which is what they are after a carry.
void RoundedDigits::Convert(double magnitude, int digitsBehindFirst) {
    char const* const end = std::to_chars(m_text, m_text + sizeof(m_text), magnitude,
                                          std::chars_format::scientific, digitsBehindFirst)
                                .ptr;
    m_size = 1 + digitsBehindFirst;
    char const* exponent = m_text + m_size + (digitsBehindFirst > 0 ? 2 : 1);
    if (*exponent == '+') ++exponent;
    std::from_chars(exponent, end, m_first);
    if (digitsBehindFirst > 0)
        std::memmove(m_text + 1, m_text + 2, static_cast<std::size_t>(digitsBehindFirst));
}

void RoundedDigits::SetToOneUnit() {
    m_text[0] = '1';
    m_size = 1;
    m_first = m_place;
}

FloatingPointText NonFiniteText(double value) {
    if (std::isnan(value)) return FloatingPointText("NaN"_data);
    return FloatingPointText(value < 0 ? "-infinity"_data : "+infinity"_data);
}

// A text under construction. It is written byte by byte, since a byte beyond its end throws DataOverflow,
// while a range would be cut off.
struct TextBuffer {
    unsigned char bytes[FloatingPointText::capacity];
    Buffer out{Data(bytes, bytes + sizeof(bytes))};

    FloatingPointText Text() const { return FloatingPointText(out.Written()); }
};

void PutDigits(Buffer& out, RoundedDigits const& digits, int from, int downTo) {
    for (int place = from; place >= downTo; --place) out << digits.DigitAt(place);
}

int WholeDigits(RoundedDigits const& digits) {
    return digits.IsZero() ? 1 : std::max(digits.First(), 0) + 1;
}

constexpr int cCapacity = static_cast<int>(FloatingPointText::capacity);

bool WholePartFits(bool negative, RoundedDigits const& digits) {
    return (negative ? 1 : 0) + WholeDigits(digits) <= cCapacity;
}

bool FitsStandardNotation(bool negative, RoundedDigits const& digits) {
    int const fraction = digits.Place() < 0 ? 1 - digits.Place() : 0;
    return (negative ? 1 : 0) + WholeDigits(digits) + fraction <= cCapacity;
}

FloatingPointText MakeStandard(bool negative, RoundedDigits const& digits) {
    if (!WholePartFits(negative, digits)) throw TooLargeForStandardNotation();
    TextBuffer text;
    if (negative) text.out << '-';
    PutDigits(text.out, digits, WholeDigits(digits) - 1, 0);
    if (digits.Place() < 0) {
        text.out << '.';
        PutDigits(text.out, digits, -1, digits.Place());
    }
    return text.Text();
}

FloatingPointText MakeScientific(bool negative, RoundedDigits const& digits) {
    TextBuffer text;
    int const exponent = digits.IsZero() ? digits.Place() : digits.First();
    if (negative) text.out << '-';
    text.out << digits.DigitAt(exponent);
    if (digits.Place() < exponent) {
        text.out << '.';
        PutDigits(text.out, digits, exponent - 1, digits.Place());
    }
    if (exponent != 0) {
        text.out << 'e' << (exponent < 0 ? '-' : '+');
        NumeralText const numeral = MakeAsciiDecimalNumeral(static_cast<unsigned int>(std::abs(exponent)), 1);
        for (unsigned char const digit : numeral.Bytes()) text.out << digit;
    }
    return text.Text();
}

FloatingPointText ZeroText() {
    return FloatingPointText("0.0"_data);
}

} // namespace

FloatingPointReading ReadAsciiFloatingPoint(ConstData text) {
    if (text.Contains('n') || text.Contains('N')) return ReadNonFinite(text);
    static constexpr auto isExponentMark = [](unsigned char byte) { return (byte | 0x20) == 'e'; };
    unsigned char const* const mark = std::find_if(text.begin(), text.end(), isExponentMark);
    std::int64_t const exponent = mark == text.end() ? 0 : ReadExponent(ConstData(mark + 1, text.end()));

    ConstBuffer in(ConstData(text.begin(), mark));
    bool const negative = TakeSign(in);
    ConstData const number = in.Rest();
    std::size_t const point = number.PositionOf('.');
    bool const hasFraction = point != cAllOnes;

    DigitCollector digits;
    auto const add = [&](unsigned char digit) { digits.Add(digit); };
    ReadDigits(hasFraction ? ConstData(number.begin(), number.begin() + point) : number, add);
    std::int64_t const wholeDigits = digits.Count();
    if (hasFraction) ReadDigits(ConstData(number.begin() + point + 1, number.end()), add);
    if (digits.Count() == 0) throw NotAFloatingPoint();

    std::int64_t const lastPlace = exponent - (digits.Count() - wholeDigits);
    std::int64_t const roundZeros = hasFraction ? 0 : std::min(digits.TrailingZeros(), digits.Count() - 1);
    double const magnitude = digits.Value(lastPlace);
    double const step = std::isfinite(magnitude) ? SmallestStep(magnitude) : magnitude;
    return {negative ? -magnitude : magnitude, std::max(PowerOfTen(lastPlace + roundZeros), step),
            FlagsOf(magnitude, digits.HasNonZero())};
}

FloatingPointText MakeAsciiFloatingPoint(double value, double precision) {
    if (!std::isfinite(value)) return NonFiniteText(value);
    if (value == 0) return ZeroText();
    RoundedDigits const digits(std::fabs(value), PlaceOf(value, precision));
    bool const plain = std::fabs(value) < 1e23 && -digits.Place() < 23;
    return plain && FitsStandardNotation(value < 0, digits) ? MakeStandard(value < 0, digits)
                                                            : MakeScientific(value < 0, digits);
}

FloatingPointText StandardNotation(double value, double precision) {
    if (!std::isfinite(value)) return NonFiniteText(value);
    if (value == 0) return ZeroText();
    return MakeStandard(value < 0, RoundedDigits(std::fabs(value), PlaceOf(value, precision)));
}

FloatingPointText ScientificNotation(double value, double precision) {
    if (!std::isfinite(value)) return NonFiniteText(value);
    if (value == 0) return ZeroText();
    return MakeScientific(value < 0, RoundedDigits(std::fabs(value), PlaceOf(value, precision)));
}
