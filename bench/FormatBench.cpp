#include "format/MakeUString.h"
#include "format/UFormat.h"

#include <benchmark/benchmark.h>
#include <fmt/format.h>

#include <clocale>
#include <cstdlib>
#include <iterator>
#include <libintl.h>
#include <string>
#include <string_view>

// Rendering of formats whose text is known only at run time, as that of a translation is, next to a library
// that takes arguments by name too; and next to the lookup of a translation, which is what a program pays
// before it renders anything.

namespace {

constexpr char cFormat[] = "{minutes} minutes, {seconds} seconds";

std::string_view View(UStringRef<UTF8> const& text) {
    return std::string_view(reinterpret_cast<char const*>(text.begin()), text.SizeInBytes());
}

AutoUString<UTF8> Ours(UStringRef<UTF8> const& toRender, std::string const& first,
                       std::string const& second) {
    return MakeUString(UFormat(MakeUTF8Ref(cFormat), toRender) % MakeUTF8Ref(first) % MakeUTF8Ref(second));
}

std::string Peer(std::string_view toRender, std::string const& first, std::string const& second) {
    return fmt::format(fmt::runtime(toRender), fmt::arg("minutes", std::string_view(first)),
                       fmt::arg("seconds", std::string_view(second)));
}

// The peer without memory for the result: into a buffer that begins on the stack.
void PeerIntoBuffer(fmt::memory_buffer& buffer, std::string_view toRender, std::string const& first,
                    std::string const& second) {
    fmt::format_to(std::back_inserter(buffer), fmt::runtime(toRender),
                   fmt::arg("minutes", std::string_view(first)),
                   fmt::arg("seconds", std::string_view(second)));
}

bool Agree(benchmark::State& state, std::string const& toRender, std::string const& argument) {
    if (View(Ours(MakeUTF8Ref(toRender), argument, argument)) == Peer(toRender, argument, argument))
        return true;
    state.SkipWithError("the peer disagrees");
    return false;
}

std::string Argument(benchmark::State const& state) {
    return std::string(static_cast<std::size_t>(state.range(0)), '5');
}

// Arguments of 2, 200 and 20000 bytes.
void ArgumentSizes(benchmark::internal::Benchmark* each) {
    each->Arg(2)->Arg(200)->Arg(20000);
}

void BM_UFormat_TwoArguments(benchmark::State& state) {
    std::string const argument = Argument(state);
    for (auto _ : state)
        benchmark::DoNotOptimize(
            MakeUString(UFormat(cFormat) % MakeUTF8Ref(argument) % MakeUTF8Ref(argument)));
}
BENCHMARK(BM_UFormat_TwoArguments)->Apply(ArgumentSizes);

void BM_UFormat_TwoArguments_Fmt(benchmark::State& state) {
    std::string const argument = Argument(state);
    if (!Agree(state, cFormat, argument)) return;
    for (auto _ : state) benchmark::DoNotOptimize(Peer(cFormat, argument, argument));
}
BENCHMARK(BM_UFormat_TwoArguments_Fmt)->Apply(ArgumentSizes);

void BM_UFormat_TwoArguments_FmtIntoBuffer(benchmark::State& state) {
    std::string const argument = Argument(state);
    for (auto _ : state) {
        fmt::memory_buffer buffer;
        PeerIntoBuffer(buffer, cFormat, argument, argument);
        benchmark::DoNotOptimize(buffer.data());
    }
}
BENCHMARK(BM_UFormat_TwoArguments_FmtIntoBuffer)->Apply(ArgumentSizes);

// A translation that uses both variables again and again.
std::string Repeated(benchmark::State const& state) {
    std::string text;
    for (long index = 0; index < state.range(0); ++index) text += "{seconds} and {minutes}, ";
    return text;
}

// 10, 1000 and 100000 times.
void Repetitions(benchmark::internal::Benchmark* each) {
    each->Arg(10)->Arg(1000)->Arg(100000);
}

void BM_MakeUString_Repeated(benchmark::State& state) {
    std::string const toRender = Repeated(state);
    for (auto _ : state) benchmark::DoNotOptimize(Ours(MakeUTF8Ref(toRender), "12", "34"));
    state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(toRender.size()));
}
BENCHMARK(BM_MakeUString_Repeated)->Apply(Repetitions);

void BM_MakeUString_Repeated_Fmt(benchmark::State& state) {
    std::string const toRender = Repeated(state);
    if (!Agree(state, toRender, "12")) return;
    for (auto _ : state) benchmark::DoNotOptimize(Peer(toRender, "12", "34"));
    state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(toRender.size()));
}
BENCHMARK(BM_MakeUString_Repeated_Fmt)->Apply(Repetitions);

// Choosing the text, without rendering it.
void BM_UFormat_Lookup(benchmark::State& state) {
    for (auto _ : state) benchmark::DoNotOptimize(UFormat(cFormat));
}
BENCHMARK(BM_UFormat_Lookup);

void BM_UFormat_Lookup_Gettext(benchmark::State& state) {
    setenv("LANGUAGE", "de", 1);
    std::setlocale(LC_ALL, "C.UTF-8");
    bindtextdomain("bench", VRK_CATALOGUE_FOLDER);
    if (std::string_view(dgettext("bench", cFormat)) != "{minutes} Minuten, {seconds} Sekunden") {
        state.SkipWithError("there is no catalogue");
        return;
    }
    for (auto _ : state) benchmark::DoNotOptimize(dgettext("bench", cFormat));
}
BENCHMARK(BM_UFormat_Lookup_Gettext);

} // namespace
