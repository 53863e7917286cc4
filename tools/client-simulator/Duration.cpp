#include "tools/client-simulator/Duration.h"

#include <array>
#include <cstdint>

// The longest duration, 36500 days, is about 3.2e15 microseconds. A number is refused before it is multiplied
// when it alone would exceed that, so no sum or product here comes near the range of 64 bits.

namespace ClientSimulator {

namespace {

struct Unit {
    std::string_view name;
    std::int64_t microseconds;
};

constexpr std::array<Unit, 6> cUnits{
    {{"ms", 1000}, {"us", 1}, {"d", 86400000000}, {"h", 3600000000}, {"m", 60000000}, {"s", 1000000}}};
constexpr std::int64_t cLongest = 36500 * std::int64_t{86400000000};

struct Digits {
    std::int64_t value = 0;
    std::int64_t scale = 1;
    std::size_t count = 0;
};

Digits TakeDigits(std::string_view& text) {
    Digits digits;
    while (!text.empty() && text.front() >= '0' && text.front() <= '9') {
        if (digits.count < 10) {
            digits.value = digits.value * 10 + (text.front() - '0');
            digits.scale *= 10;
        }
        ++digits.count;
        text.remove_prefix(1);
    }
    return digits;
}

Unit const* TakeUnit(std::string_view& text) {
    for (Unit const& unit : cUnits)
        if (text.starts_with(unit.name)) {
            text.remove_prefix(unit.name.size());
            return &unit;
        }
    return nullptr;
}

// Takes one number with its unit.
std::optional<std::int64_t> TakeTerm(std::string_view& text) {
    Digits const whole = TakeDigits(text);
    if (whole.count == 0 || whole.count > 9) return std::nullopt;
    Digits fraction;
    if (text.starts_with('.')) {
        text.remove_prefix(1);
        fraction = TakeDigits(text);
        if (fraction.count == 0 || fraction.count > 6) return std::nullopt;
    }
    Unit const* const unit = TakeUnit(text);
    if (unit == nullptr || whole.value > cLongest / unit->microseconds) return std::nullopt;
    return whole.value * unit->microseconds + fraction.value * unit->microseconds / fraction.scale;
}

std::string Padded(std::int64_t value, std::size_t digits) {
    std::string const text = std::to_string(value);
    return std::string(digits - std::min(digits, text.size()), '0') + text;
}

// Writes the count of whole units with its letter, unless it is zero, and keeps the rest.
void TakeWhole(std::string& text, std::int64_t& rest, std::int64_t unit, char letter) {
    if (rest < unit) return;
    text += std::to_string(rest / unit);
    text += letter;
    rest %= unit;
}

} // namespace

std::optional<Microseconds> ParseDuration(std::string_view text) {
    if (text.empty()) return std::nullopt;
    std::int64_t sum = 0;
    while (!text.empty()) {
        std::optional<std::int64_t> const term = TakeTerm(text);
        if (!term) return std::nullopt;
        sum += *term;
        if (sum > cLongest) return std::nullopt;
    }
    return Microseconds(sum);
}

std::string DurationText(Microseconds duration) {
    std::int64_t rest = duration.count();
    if (rest == 0) return "0s";
    std::string text = rest < 0 ? "-" : "";
    if (rest < 0) rest = -rest;
    TakeWhole(text, rest, 86400000000, 'd');
    TakeWhole(text, rest, 3600000000, 'h');
    TakeWhole(text, rest, 60000000, 'm');
    if (rest == 0) return text;
    text += std::to_string(rest / 1000000);
    if (rest % 1000000 != 0) {
        text += '.' + Padded(rest % 1000000, 6);
        text.erase(text.find_last_not_of('0') + 1);
    }
    return text + 's';
}

std::string XmlDuration(Microseconds duration) {
    std::int64_t rest = duration.count();
    if (rest == 0) return "PT0S";
    std::string text = rest < 0 ? "-P" : "P";
    if (rest < 0) rest = -rest;
    TakeWhole(text, rest, 86400000000, 'D');
    if (rest == 0) return text;
    text += 'T';
    TakeWhole(text, rest, 3600000000, 'H');
    TakeWhole(text, rest, 60000000, 'M');
    if (rest == 0) return text;
    text += std::to_string(rest / 1000000);
    if (rest % 1000000 != 0) text += '.' + Padded(rest % 1000000, 6);
    return text + 'S';
}

} // namespace ClientSimulator
