#include "dialogs/SnoozeChoices.h"

#include "format/MakeUString.h"
#include "format/UFormat.h"

#include <cstdint>

namespace {

struct Row {
    char const* text;
    int minutes;
};

constexpr Row cRowsBeforeDeadline[] = {
    {"15 minutes before deadline", -15},
    {"5 minutes before deadline", -5},
};

constexpr Row cRowsFromNow[] = {
    {"in 1 minute", 1},    {"in 5 minutes", 5},   {"in 10 minutes", 10}, {"in 15 minutes", 15},
    {"in 30 minutes", 30}, {"in 45 minutes", 45}, {"in 1 hour", 60},     {"in 2 hours", 120},
    {"in 4 hours", 240},   {"in 6 hours", 360},   {"in 8 hours", 480},   {"in 16 hours", 960},
    {"in 1 day", 1440},    {"in 2 days", 2880},   {"in 3 days", 4320},   {"in 4 days", 5760},
    {"in 5 days", 7200},
};

SnoozeChoice MakeChoice(Row const& row) {
    return {SharedUString<UTF8>(MakeUString(UFormat(row.text)).Ref()), row.minutes};
}

// Exact for any two values, also where their difference does not fit 64 signed bits.
std::uint64_t Distance(TimeInterval a, TimeInterval b) {
    auto const first = static_cast<std::uint64_t>(a.Microseconds());
    auto const second = static_cast<std::uint64_t>(b.Microseconds());
    return a < b ? second - first : first - second;
}

TimeInterval IntervalOf(SnoozeChoice const& choice) {
    return TimeInterval::FromMicroseconds(choice.second * cMicrosecondsPerMinute);
}

} // namespace

std::vector<SnoozeChoice> MakeSnoozeChoices(bool anyDeadline) {
    std::vector<SnoozeChoice> choices;
    if (anyDeadline)
        for (Row const& row : cRowsBeforeDeadline) choices.push_back(MakeChoice(row));
    for (Row const& row : cRowsFromNow) choices.push_back(MakeChoice(row));
    return choices;
}

int NearestSnoozeChoice(std::vector<SnoozeChoice> const& choices, TimeInterval interval) {
    int nearest = -1;
    std::uint64_t smallest = 0;
    for (std::size_t row = 0; row < choices.size(); ++row) {
        std::uint64_t const distance = Distance(interval, IntervalOf(choices[row]));
        if (nearest >= 0 && distance >= smallest) continue;
        nearest = static_cast<int>(row);
        smallest = distance;
    }
    return nearest;
}
