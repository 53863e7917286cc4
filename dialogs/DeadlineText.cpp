#include "dialogs/DeadlineText.h"

#include "dialogs/FormattedValues.h"
#include "format/MakeUString.h"
#include "format/UFormat.h"

namespace {

AutoUString<UTF8> Text(char const* text) {
    return MakeUString(UFormat(text));
}

AutoUString<UTF8> WithNumber(char const* format, unsigned long number) {
    AutoUString<UTF8> const digits = UnixPlatform::FormattedNumber(number);
    return MakeUString(UFormat(format) % digits);
}

AutoUString<UTF8> OneOrMany(char const* one, char const* many, unsigned long number) {
    return number == 1 ? Text(one) : WithNumber(many, number);
}

// To the nearest whole unit, a half down. The time is at least one unit.
unsigned long Rounded(long long microseconds, long long unit) {
    long long const cut = microseconds / unit;
    return static_cast<unsigned long>(microseconds % unit > unit / 2 ? cut + 1 : cut);
}

unsigned long Whole(long long microseconds, long long unit) {
    return static_cast<unsigned long>(microseconds / unit);
}

AutoUString<UTF8> MinutesAndSeconds(unsigned long minutes, unsigned long seconds) {
    AutoUString<UTF8> const minuteDigits = UnixPlatform::FormattedNumber(minutes);
    AutoUString<UTF8> const secondDigits = UnixPlatform::FormattedNumber(seconds);
    return MakeUString(UFormat("{minutes} minutes, {seconds} seconds") % minuteDigits % secondDigits);
}

AutoUString<UTF8> Countdown(long long microseconds) {
    unsigned long const minutes = Whole(microseconds, cMicrosecondsPerMinute);
    unsigned long const seconds = Whole(microseconds % cMicrosecondsPerMinute, cMicrosecondsPerSecond);
    if (minutes == 0) return OneOrMany("1 second", "{seconds} seconds", seconds);
    if (minutes == 1) return OneOrMany("1 minute, 1 second", "1 minute, {seconds} seconds", seconds);
    if (seconds == 1) return WithNumber("{minutes} minutes, 1 second", minutes);
    return MinutesAndSeconds(minutes, seconds);
}

AutoUString<UTF8> TimeLeft(long long microseconds) {
    if (microseconds > cMicrosecondsPerDay)
        return OneOrMany("1 day", "{days} days", Rounded(microseconds, cMicrosecondsPerDay));
    if (microseconds > cMicrosecondsPerHour)
        return OneOrMany("1 hour", "{hours} hours", Rounded(microseconds, cMicrosecondsPerHour));
    if (microseconds > cDeadlineThreshold.Microseconds())
        return WithNumber("{minutes} minutes", Whole(microseconds, cMicrosecondsPerMinute));
    return Countdown(microseconds);
}

AutoUString<UTF8> Passed(bool exact, bool fromNow) {
    if (!exact) return Text("Overdue");
    return Text(fromNow ? "Running..." : "0 seconds");
}

} // namespace

AutoUString<UTF8> FormattedDeadline(TimeInterval const& remaining, bool exact, bool fromNow) {
    if (remaining < TimeInterval()) return Passed(exact, fromNow);
    if (remaining <= cDeadlineThreshold && !exact) return Text("Now");
    AutoUString<UTF8> time = TimeLeft(remaining.Microseconds());
    if (!fromNow) return time;
    return MakeUString(UFormat("{time} from now") % time);
}

AutoUString<UTF8> FormattedDeadline(Instant const& deadline, Instant const& now, bool exact, bool fromNow) {
    return FormattedDeadline(deadline - now, exact, fromNow);
}
