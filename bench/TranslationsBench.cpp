#include "format/FormatFile.h"
#include "format/FormatOverrideScope.h"
#include "format/UFormat.h"

#include <benchmark/benchmark.h>

#include <algorithm>
#include <clocale>
#include <cstdint>
#include <cstdlib>
#include <ctime>
#include <fstream>
#include <libintl.h>
#include <random>
#include <sstream>
#include <string>
#include <string_view>
#include <sys/wait.h>
#include <unistd.h>
#include <unordered_map>
#include <utility>
#include <vector>

// Loading a translation file and looking texts up in it, next to gettext with a catalogue of the same
// entries. A catalogue is compiled beforehand and mapped into memory as it is, while a translation file is
// read as the text that a translator wrote; so loading stands next to a hash table that is made from the same
// text, too.
//
// gettext keeps every catalogue and every translation that it has given out for the life of the process, so
// that one case would change the next. So each measurement, ours too, is made in a child process of its own;
// the column "Time" is the processor time that was spent there.

namespace {

std::string FolderOf(std::int64_t entries) {
    return VRK_TRANSLATIONS_FOLDER "/" + std::to_string(entries);
}

std::string FilePath(std::int64_t entries) {
    return FolderOf(entries) + "/translations.txt";
}

std::string ReadText(std::int64_t entries) {
    std::ifstream file(FilePath(entries), std::ios::binary);
    std::ostringstream text;
    text << file.rdbuf();
    return text.str();
}

using Entry = std::pair<std::string_view, std::string_view>;

std::vector<Entry> EntriesOf(std::string_view text) {
    std::vector<Entry> entries;
    while (!text.empty()) {
        std::size_t const end = text.find('\n');
        std::size_t const tab = text.find('\t');
        entries.emplace_back(text.substr(0, tab), text.substr(tab + 1, end - tab - 1));
        text.remove_prefix(end + 1);
    }
    return entries;
}

// All keys in an order of their own, so that a lookup does not find what the one before has left in the
// caches.
std::vector<std::string> ShuffledKeys(std::string const& text) {
    std::vector<std::string> keys;
    for (Entry const& entry : EntriesOf(text)) keys.emplace_back(entry.first);
    std::shuffle(keys.begin(), keys.end(), std::mt19937(1));
    return keys;
}

// The processor time that `work` takes in a child process, once `prepare` is done there; negative when one of
// them fails.
template <class Prepare, class Work>
double SecondsInChild(Prepare prepare, Work work) {
    int ends[2];
    if (pipe(ends) != 0) return -1;
    pid_t const child = fork();
    if (child == 0) {
        bool const ready = prepare();
        std::clock_t const start = std::clock();
        bool const done = ready && work();
        double const seconds =
            done ? static_cast<double>(std::clock() - start) / static_cast<double>(CLOCKS_PER_SEC) : -1;
        _exit(write(ends[1], &seconds, sizeof seconds) == sizeof seconds ? 0 : 1);
    }
    close(ends[1]);
    double seconds = -1;
    bool const received = child > 0 && read(ends[0], &seconds, sizeof seconds) == sizeof seconds;
    close(ends[0]);
    if (child > 0) waitpid(child, nullptr, 0);
    return received ? seconds : -1;
}

// Counts the work as so many iterations.
template <class Prepare, class Work>
void Measure(benchmark::State& state, std::size_t iterations, Prepare prepare, Work work) {
    while (state.KeepRunningBatch(static_cast<std::int64_t>(iterations))) {
        double const seconds = SecondsInChild(prepare, work);
        if (seconds < 0) {
            state.SkipWithError("there is no translation");
            return;
        }
        state.SetIterationTime(seconds);
    }
}

bool Nothing() {
    return true;
}

// Files of 1,000, 10,000 and 100,000 lines.
void Lookups(benchmark::internal::Benchmark* each) {
    each->Arg(1000)->Arg(10000)->Arg(100000)->UseManualTime();
}

void Loads(benchmark::internal::Benchmark* each) {
    Lookups(each);
    each->Iterations(10)->Unit(benchmark::kMicrosecond);
}

void UseGettext(std::int64_t entries) {
    setenv("LANGUAGE", "de", 1);
    std::setlocale(LC_ALL, "C.UTF-8");
    bindtextdomain("translations", FolderOf(entries).c_str());
}

bool IsTranslatedByGettext(std::string const& key) {
    return dgettext("translations", key.c_str()) != key.c_str();
}

bool IsTranslated(std::string const& key) {
    FormatPlusArguments<0> const format = UFormat(key.c_str());
    return format.overrideFormat.begin() != format.format.begin();
}

void BM_Translations_LoadFromMemory(benchmark::State& state) {
    std::string const text = ReadText(state.range(0));
    Measure(state, 1, Nothing, [&] {
        FormatOverrideSet const set(MakeUTF8Ref(text), UStringRef<UTF8>());
        return set.Overrides().Size() == static_cast<std::size_t>(state.range(0));
    });
    state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(text.size()));
}
BENCHMARK(BM_Translations_LoadFromMemory)->Apply(Loads);

void BM_Translations_LoadFromMemory_HashTable(benchmark::State& state) {
    std::string const text = ReadText(state.range(0));
    Measure(state, 1, Nothing, [&] {
        std::unordered_map<std::string_view, std::string_view> table;
        for (Entry const& entry : EntriesOf(text)) table.insert(entry);
        return table.size() == static_cast<std::size_t>(state.range(0));
    });
    state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(text.size()));
}
BENCHMARK(BM_Translations_LoadFromMemory_HashTable)->Apply(Loads);

// The files of both are in the cache of the system. Each loads and looks one text up.
void BM_Translations_LoadFromDisk(benchmark::State& state) {
    std::string const path = FilePath(state.range(0));
    std::string const key = ShuffledKeys(ReadText(state.range(0))).front();
    Measure(state, 1, Nothing, [&] {
        FormatFile const file(FileLocation(MakeUTF8Ref(path)), UStringRef<UTF8>());
        return file.Overrides().HasOverride(MakeUTF8Ref(key));
    });
}
BENCHMARK(BM_Translations_LoadFromDisk)->Apply(Loads);

void BM_Translations_LoadFromDisk_Gettext(benchmark::State& state) {
    std::string const key = ShuffledKeys(ReadText(state.range(0))).front();
    auto const prepare = [&] {
        UseGettext(state.range(0));
        return true;
    };
    Measure(state, 1, prepare, [&] { return IsTranslatedByGettext(key); });
}
BENCHMARK(BM_Translations_LoadFromDisk_Gettext)->Apply(Loads);

// Lookups of `keys` through UFormat, with the file in force in the context of the process.
void MeasureLookups(benchmark::State& state, std::vector<std::string> const& keys,
                    bool areTranslated = true) {
    FormatFile const file(FileLocation(MakeUTF8Ref(FilePath(state.range(0)))), UStringRef<UTF8>());
    FormatOverrideScope const scope(file.Overrides(), GlobalFormatOverrideContext());
    auto const lookUp = [&] {
        return std::all_of(keys.begin(), keys.end(),
                           [&](std::string const& key) { return IsTranslated(key) == areTranslated; });
    };
    Measure(state, keys.size(), lookUp, lookUp);
}

// Each key has been asked for once before.
void MeasureGettextLookups(benchmark::State& state, std::vector<std::string> const& keys,
                           bool areTranslated = true) {
    auto const lookUp = [&] {
        return std::all_of(keys.begin(), keys.end(), [&](std::string const& key) {
            return IsTranslatedByGettext(key) == areTranslated;
        });
    };
    auto const prepare = [&] {
        UseGettext(state.range(0));
        return lookUp();
    };
    Measure(state, keys.size(), prepare, lookUp);
}

// At least 100,000, so that the clock can tell.
std::vector<std::string> Repeated(std::vector<std::string> const& keys) {
    std::vector<std::string> repeated;
    while (repeated.size() < 100000) repeated.insert(repeated.end(), keys.begin(), keys.end());
    return repeated;
}

// All texts, one after another.
void BM_Translations_Lookup(benchmark::State& state) {
    MeasureLookups(state, Repeated(ShuffledKeys(ReadText(state.range(0)))));
}
BENCHMARK(BM_Translations_Lookup)->Apply(Lookups);

void BM_Translations_Lookup_Gettext(benchmark::State& state) {
    MeasureGettextLookups(state, Repeated(ShuffledKeys(ReadText(state.range(0)))));
}
BENCHMARK(BM_Translations_Lookup_Gettext)->Apply(Lookups);

// One text again and again, as a dialog that counts down asks for it.
void BM_Translations_SameLookup(benchmark::State& state) {
    MeasureLookups(state, Repeated({ShuffledKeys(ReadText(state.range(0))).front()}));
}
BENCHMARK(BM_Translations_SameLookup)->Apply(Lookups);

void BM_Translations_SameLookup_Gettext(benchmark::State& state) {
    MeasureGettextLookups(state, Repeated({ShuffledKeys(ReadText(state.range(0))).front()}));
}
BENCHMARK(BM_Translations_SameLookup_Gettext)->Apply(Lookups);

// A text without a translation.
void BM_Translations_MissingLookup(benchmark::State& state) {
    MeasureLookups(state, Repeated({"{minutes} minutes, {seconds} seconds"}), false);
}
BENCHMARK(BM_Translations_MissingLookup)->Apply(Lookups);

void BM_Translations_MissingLookup_Gettext(benchmark::State& state) {
    MeasureGettextLookups(state, Repeated({"{minutes} minutes, {seconds} seconds"}), false);
}
BENCHMARK(BM_Translations_MissingLookup_Gettext)->Apply(Lookups);

} // namespace
