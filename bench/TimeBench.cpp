#include "time/TimeText.h"
#include "time/TimeTextParsing.h"
#include "time/XMLDuration.h"

#include <benchmark/benchmark.h>

#include <charconv>
#include <cstdio>
#include <ctime>
#include <string>
#include <vector>

// Each of ours stands next to what the C library offers for the same texts. The peers do less: they check
// neither the day of the week nor ranges, nor do they tell failures apart.

namespace {

// Times spread over the years 1970 to 2035.
std::vector<Instant> Instants(std::size_t count) {
    constexpr long long cSpan = 2051222399;
    long long const step = cSpan / static_cast<long long>(count) * cMicrosecondsPerSecond;
    std::vector<Instant> instants;
    for (std::size_t index = 0; index < count; ++index)
        instants.push_back(Instant::FromMicroseconds(static_cast<long long>(index) * step));
    return instants;
}

std::vector<TimeObject> Times(std::size_t count) {
    std::vector<TimeObject> times;
    for (Instant const instant : Instants(count)) times.emplace_back(instant, TimeZone());
    return times;
}

std::vector<std::string> TimeTexts(std::size_t count) {
    std::vector<std::string> texts;
    for (TimeObject const& time : Times(count)) texts.push_back(MakeString(TimeToText(time)));
    return texts;
}

// From seconds to some days; any sixteen in a row have every combination of fields.
std::vector<std::string> DurationTexts(std::size_t count) {
    std::vector<std::string> texts;
    for (std::size_t index = 0; index < count; ++index) {
        auto const days = index % 2 != 0 ? std::to_string(index % 7 + 1) + "D" : "";
        auto const hours = index / 2 % 2 != 0 ? std::to_string(index % 24) + "H" : "";
        auto const minutes = index / 4 % 2 != 0 ? std::to_string(index % 60) + "M" : "";
        auto const fraction = index / 8 % 2 != 0 ? "." + std::to_string(100000 + index) : "";
        texts.push_back("P" + days + "T" + hours + minutes + std::to_string(index % 60) + fraction + "S");
    }
    return texts;
}

std::vector<std::tm> BrokenDownTimes(std::size_t count) {
    std::vector<std::tm> times;
    for (Instant const instant : Instants(count)) {
        std::time_t const seconds = instant.Microseconds() / cMicrosecondsPerSecond;
        gmtime_r(&seconds, &times.emplace_back());
    }
    return times;
}

// Lists of 10, 100 and 1000 inputs.
void Sizes(benchmark::internal::Benchmark* each) {
    each->RangeMultiplier(10)->Range(10, 1000);
}

std::size_t Size(benchmark::State const& state) {
    return static_cast<std::size_t>(state.range(0));
}

// Runs `call` over the whole list in each iteration.
template <class Input, class Call>
void OverAll(benchmark::State& state, std::vector<Input> const& inputs, Call call) {
    for (auto _ : state)
        for (Input const& input : inputs) benchmark::DoNotOptimize(call(input));
    state.SetItemsProcessed(state.iterations() * state.range(0));
}

std::time_t ReadByStrptime(std::string const& text) {
    std::tm fields = {};
    strptime(text.c_str(), "%a, %d %b %Y %H:%M:%S %z", &fields);
    long const offset = fields.tm_gmtoff;
    return timegm(&fields) - offset;
}

// Ends a benchmark whose peer does not give what ours gives.
template <class Input, class Ours, class Peer>
bool Agree(benchmark::State& state, std::vector<Input> const& inputs, Ours ours, Peer peer) {
    for (Input const& input : inputs) {
        if (ours(input) == peer(input)) continue;
        state.SkipWithError("the peer disagrees");
        return false;
    }
    return true;
}

Instant ReadTime(std::string const& text) {
    return Instant(TextToTime(MakeUTF8Ref(text)));
}

void BM_TextToTime(benchmark::State& state) {
    OverAll(state, TimeTexts(Size(state)), ReadTime);
}
BENCHMARK(BM_TextToTime)->Apply(Sizes);

void BM_TextToTime_Strptime(benchmark::State& state) {
    auto const ours = [](std::string const& text) {
        return ReadTime(text).Microseconds() / cMicrosecondsPerSecond;
    };
    auto const texts = TimeTexts(Size(state));
    if (Agree(state, texts, ours, ReadByStrptime)) OverAll(state, texts, ReadByStrptime);
}
BENCHMARK(BM_TextToTime_Strptime)->Apply(Sizes);

// Reads one number at a time and the designator behind it.
long long ReadBySscanf(std::string const& text) {
    long long sum = 0;
    for (char const* next = text.c_str() + 1; *next != '\0';) {
        if (*next == 'T') ++next;
        unsigned int whole = 0;
        char designator = '\0';
        int used = 0;
        if (std::sscanf(next, "%u%c%n", &whole, &designator, &used) != 2) return -1;
        next += used;
        if (designator == '.') {
            unsigned int fraction = 0;
            if (std::sscanf(next, "%6u%c%n", &fraction, &designator, &used) != 2) return -1;
            next += used;
            sum += fraction;
        }
        sum += whole * (designator == 'D'   ? cMicrosecondsPerDay
                        : designator == 'H' ? cMicrosecondsPerHour
                        : designator == 'M' ? cMicrosecondsPerMinute
                                            : cMicrosecondsPerSecond);
    }
    return sum;
}

long long ReadByFromChars(std::string const& text) {
    long long sum = 0;
    char const* const end = text.data() + text.size();
    for (char const* next = text.data() + 1; next != end; ++next) {
        if (*next == 'T') ++next;
        unsigned int whole = 0;
        next = std::from_chars(next, end, whole).ptr;
        if (next == end) return -1;
        if (*next == '.') {
            unsigned int fraction = 0;
            next = std::from_chars(next + 1, end, fraction).ptr;
            if (next == end) return -1;
            sum += fraction;
        }
        sum += whole * (*next == 'D'   ? cMicrosecondsPerDay
                        : *next == 'H' ? cMicrosecondsPerHour
                        : *next == 'M' ? cMicrosecondsPerMinute
                                       : cMicrosecondsPerSecond);
    }
    return sum;
}

long long ReadDuration(std::string const& text) {
    return XMLDurationToTimeInterval(MakeUTF8Ref(text)).Microseconds();
}

void BM_XMLDurationToTimeInterval(benchmark::State& state) {
    OverAll(state, DurationTexts(Size(state)), ReadDuration);
}
BENCHMARK(BM_XMLDurationToTimeInterval)->Apply(Sizes);

void BM_XMLDurationToTimeInterval_Sscanf(benchmark::State& state) {
    auto const texts = DurationTexts(Size(state));
    if (Agree(state, texts, ReadDuration, ReadBySscanf)) OverAll(state, texts, ReadBySscanf);
}
BENCHMARK(BM_XMLDurationToTimeInterval_Sscanf)->Apply(Sizes);

void BM_XMLDurationToTimeInterval_FromChars(benchmark::State& state) {
    auto const texts = DurationTexts(Size(state));
    if (Agree(state, texts, ReadDuration, ReadByFromChars)) OverAll(state, texts, ReadByFromChars);
}
BENCHMARK(BM_XMLDurationToTimeInterval_FromChars)->Apply(Sizes);

void BM_TimeToText(benchmark::State& state) {
    OverAll(state, Times(Size(state)), [](TimeObject const& time) { return TimeToText(time); });
}
BENCHMARK(BM_TimeToText)->Apply(Sizes);

struct StrftimeText {
    char text[32];
};

StrftimeText WriteByStrftime(std::tm const& time) {
    StrftimeText result;
    std::strftime(result.text, sizeof(result.text), "%a, %d %b %Y %H:%M:%S %z", &time);
    return result;
}

void BM_TimeToText_Strftime(benchmark::State& state) {
    auto const ours = [](std::tm time) {
        Instant const instant = Instant::FromMicroseconds(timegm(&time) * cMicrosecondsPerSecond);
        return MakeString(TimeToText(instant, TimeZone()));
    };
    auto const peer = [](std::tm const& time) { return std::string(WriteByStrftime(time).text); };
    auto const times = BrokenDownTimes(Size(state));
    if (Agree(state, times, ours, peer)) OverAll(state, times, WriteByStrftime);
}
BENCHMARK(BM_TimeToText_Strftime)->Apply(Sizes);

} // namespace
