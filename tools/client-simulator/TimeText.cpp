#include "tools/client-simulator/TimeText.h"

#include <algorithm>
#include <array>

namespace ClientSimulator {

namespace {

using namespace std::chrono;

constexpr std::array<std::string_view, 7> cDays{"Sun", "Mon", "Tue", "Wed", "Thu", "Fri", "Sat"};
constexpr std::array<std::string_view, 12> cMonths{"Jan", "Feb", "Mar", "Apr", "May", "Jun",
                                                   "Jul", "Aug", "Sep", "Oct", "Nov", "Dec"};
// 'D' stands for a digit, 'A' for a letter, 'S' for a sign; everything else for itself.
constexpr std::string_view cShape = "AAA, DD AAA DDDD DD:DD:DD SDDDD";

std::string Padded(long long value, std::size_t digits) {
    std::string const text = std::to_string(value);
    return std::string(digits - std::min(digits, text.size()), '0') + text;
}

bool Fits(char shape, char c) {
    switch (shape) {
    case 'D': return c >= '0' && c <= '9';
    case 'A': return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z');
    case 'S': return c == '+' || c == '-';
    default: return c == shape;
    }
}

int Number(std::string_view text) {
    int value = 0;
    for (char const c : text) value = value * 10 + (c - '0');
    return value;
}

template <std::size_t N>
unsigned IndexOf(std::array<std::string_view, N> const& names, std::string_view name) {
    return static_cast<unsigned>(std::find(names.begin(), names.end(), name) - names.begin());
}

std::string TimeOfDayText(seconds time) {
    long long const count = time.count();
    return Padded(count / 3600, 2) + ':' + Padded(count / 60 % 60, 2) + ':' + Padded(count % 60, 2);
}

} // namespace

std::string TimeText(sys_seconds time) {
    sys_days const day = floor<days>(time);
    year_month_day const date(day);
    std::string text(cDays[weekday(day).c_encoding()]);
    text += ", " + Padded(static_cast<unsigned>(date.day()), 2) + ' ';
    text += cMonths[static_cast<unsigned>(date.month()) - 1];
    text += ' ' + Padded(static_cast<int>(date.year()), 4) + ' ';
    return text + TimeOfDayText(time - day) + " +0000";
}

std::optional<sys_seconds> ParseTimeText(std::string_view text) {
    if (text.size() != cShape.size() || !std::equal(cShape.begin(), cShape.end(), text.begin(), Fits))
        return std::nullopt;
    unsigned const month = IndexOf(cMonths, text.substr(8, 3)) + 1;
    year_month_day const date(year(Number(text.substr(12, 4))), std::chrono::month(month),
                              day(static_cast<unsigned>(Number(text.substr(5, 2)))));
    if (month > 12 || !date.ok()) return std::nullopt;
    if (weekday(sys_days(date)).c_encoding() != IndexOf(cDays, text.substr(0, 3))) return std::nullopt;
    int const hour = Number(text.substr(17, 2));
    int const minute = Number(text.substr(20, 2));
    int const second = Number(text.substr(23, 2));
    if (hour > 23 || minute > 59 || second > 59) return std::nullopt;
    seconds const offset = hours(Number(text.substr(27, 2))) + minutes(Number(text.substr(29, 2)));
    return sys_days(date) + hours(hour) + minutes(minute) + seconds(second) +
           (text[26] == '-' ? offset : -offset);
}

std::string ClockText(system_clock::time_point time) {
    sys_days const day = floor<days>(time);
    milliseconds const inDay = floor<milliseconds>(time - day);
    return TimeOfDayText(floor<seconds>(inDay)) + '.' + Padded(inDay.count() % 1000, 3);
}

} // namespace ClientSimulator
