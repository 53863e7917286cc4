#include "time/XMLDurationParser.h"

#include "foundation/ExceptionPL.h"
#include "text/Numerals.h"

// Each character narrows the set of those that may follow, which keeps the fields in their order and each of
// them single. Numbers are tested before they grow; the sum at the end is made in wrapping 64-bit arithmetic.

namespace {

// Digits after the point beyond these would be finer than a microsecond.
constexpr unsigned int cMostScale = 1000000;

constexpr Bits SetOf(char const* bytes) {
    Bits set;
    for (; *bytes; ++bytes) set.Set(static_cast<unsigned char>(*bytes));
    return set;
}

constexpr Bits cAtStart = SetOf("-P");
constexpr Bits cAfterPeriod = SetOf("DT");
constexpr Bits cAfterTime = SetOf("HM.S");

long long Scaled(NullOr<unsigned int> const& number, long long microsecondsEach) {
    return number ? WrappingProduct(*number, microsecondsEach) : 0;
}

} // namespace

XMLDurationParser::XMLDurationParser() : m_allowed(cAtStart) {
}

void XMLDurationParser::Fail() {
    throw ExceptionPL("Could not convert XMLDuration to TimeInterval"_utf8);
}

void XMLDurationParser::HandleChar(char character) {
    auto const byte = static_cast<unsigned char>(character);
    if (m_digitsAllowed && Ascii::Numeric().Has(byte)) return HandleDigit(byte - '0');
    if (!m_allowed.Has(byte)) Fail();
    switch (character) {
    case '-': return HandleMinus();
    case 'P': return HandlePeriod();
    case 'D': return HandleDays();
    case 'T': return HandleTime();
    case 'H': return HandleHours();
    case 'M': return HandleMinutes();
    case '.': return HandlePoint();
    default: return HandleSeconds();
    }
}

void XMLDurationParser::HandleDigit(unsigned int digit) {
    m_digitsSeen = true;
    if (!CanMultiply(m_accumulator, 10U) || !CanAdd(m_accumulator * 10, digit))
        throw ExceptionPL("Could not convert XMLDuration to TimeInterval due to integer overflow."_utf8);
    m_accumulator = m_accumulator * 10 + digit;
    // Behind the greatest that a fraction may have, the scale stands still.
    if (m_scale <= cMostScale) m_scale *= 10;
}

void XMLDurationParser::HandleMinus() {
    m_negative = true;
    m_allowed.Clear('-');
}

void XMLDurationParser::HandlePeriod() {
    m_allowed = cAfterPeriod;
    m_digitsAllowed = true;
    ResetNumber();
}

void XMLDurationParser::HandleDays() {
    RequireNumber();
    m_days = m_accumulator;
    m_allowed.Clear('D');
    m_digitsAllowed = false;
    CloseField();
}

void XMLDurationParser::HandleTime() {
    if (m_digitsSeen) Fail();
    // At least one field must follow, also behind days.
    m_designatorSeen = false;
    m_allowed = cAfterTime;
    m_digitsAllowed = true;
    ResetNumber();
}

void XMLDurationParser::HandleHours() {
    RequireNumber();
    m_hours = m_accumulator;
    m_allowed.Clear('H');
    CloseField();
}

void XMLDurationParser::HandleMinutes() {
    RequireNumber();
    m_minutes = m_accumulator;
    m_allowed.Clear('H').Clear('M');
    CloseField();
}

void XMLDurationParser::HandlePoint() {
    RequireNumber();
    m_wholeSeconds = m_accumulator;
    m_inFraction = true;
    m_allowed.Clear('H').Clear('M').Clear('.');
    ResetNumber();
}

void XMLDurationParser::HandleSeconds() {
    RequireNumber();
    m_seconds = m_inFraction ? m_wholeSeconds : m_accumulator;
    if (m_inFraction) {
        if (m_scale > cMostScale)
            throw ExceptionPL(
                "Could not convert XMLDuration to TimeInterval: cannot handle more than microsecond precision."_utf8);
        m_microseconds = m_accumulator * (cMostScale / m_scale);
    }
    m_inFraction = false;
    m_allowed = Bits();
    m_digitsAllowed = false;
    CloseField();
}

void XMLDurationParser::RequireNumber() const {
    if (!m_digitsSeen) Fail();
}

void XMLDurationParser::ResetNumber() {
    m_digitsSeen = false;
    m_accumulator = 0;
    m_scale = 1;
}

void XMLDurationParser::CloseField() {
    m_designatorSeen = true;
    ResetNumber();
}

TimeInterval XMLDurationParser::Result() const {
    if (m_digitsSeen || m_inFraction || !m_designatorSeen) Fail();
    long long sum = Scaled(m_days, cMicrosecondsPerDay);
    sum = WrappingSum(sum, Scaled(m_hours, cMicrosecondsPerHour));
    sum = WrappingSum(sum, Scaled(m_minutes, cMicrosecondsPerMinute));
    sum = WrappingSum(sum, Scaled(m_seconds, cMicrosecondsPerSecond));
    sum = WrappingSum(sum, Scaled(m_microseconds, 1));
    return TimeInterval::FromMicroseconds(m_negative ? WrappingNegative(sum) : sum);
}
