#include "time/XMLDuration.h"

#include "text/Numerals.h"
#include "time/XMLDurationParser.h"

// The writer works on the unsigned magnitude, which the most negative interval has too.

namespace {

constexpr unsigned int cFractionDigits = 6;

unsigned long Magnitude(TimeInterval interval) {
    auto const bits = static_cast<unsigned long>(interval.Microseconds());
    return interval < TimeInterval() ? 0 - bits : bits;
}

void AppendNumber(AutoUString<UTF8>& text, unsigned long value, unsigned int minDigits) {
    text += MakeAsciiDecimalNumeral64(value, minDigits).Ref();
}

// Writes the whole units that `rest` holds, if there are any, and takes them off.
void AppendUnits(AutoUString<UTF8>& text, unsigned long& rest, long long unit, unsigned char designator) {
    auto const each = static_cast<unsigned long>(unit);
    if (rest < each) return;
    AppendNumber(text, rest / each, 1);
    text += designator;
    rest %= each;
}

void AppendSeconds(AutoUString<UTF8>& text, unsigned long rest) {
    constexpr unsigned long cSecond = cMicrosecondsPerSecond;
    if (rest == 0) return;
    AppendNumber(text, rest / cSecond, 1);
    if (rest % cSecond != 0) {
        text += static_cast<unsigned char>('.');
        AppendNumber(text, rest % cSecond, cFractionDigits);
    }
    text += static_cast<unsigned char>('S');
}

} // namespace

TimeInterval XMLDurationToTimeInterval(UStringRef<UTF8> const& text) {
    XMLDurationParser parser;
    for (unsigned char const byte : text) parser.HandleChar(static_cast<char>(byte));
    return parser.Result();
}

AutoUString<UTF8> TimeIntervalToXMLDuration(TimeInterval const& interval) {
    unsigned long rest = Magnitude(interval);
    if (rest == 0) return AutoUString<UTF8>("PT0S"_utf8);
    AutoUString<UTF8> text(interval < TimeInterval() ? "-P"_utf8 : "P"_utf8);
    AppendUnits(text, rest, cMicrosecondsPerDay, 'D');
    if (rest == 0) return text;
    text += static_cast<unsigned char>('T');
    AppendUnits(text, rest, cMicrosecondsPerHour, 'H');
    AppendUnits(text, rest, cMicrosecondsPerMinute, 'M');
    AppendSeconds(text, rest);
    return text;
}
