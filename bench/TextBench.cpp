#include "text/UString.h"

#include <benchmark/benchmark.h>

#include <random>
#include <string>
#include <string_view>

// Building texts and searching in them, next to the standard library in the same run. The inputs come from a
// generator with a fixed seed; the sizes are 1 KiB, 64 KiB and 4 MiB, so that linear cost shows.

namespace {

constexpr std::size_t cPieceInBytes = 37;

std::string RandomText(std::size_t size) {
    std::mt19937 generator(20240229);
    std::uniform_int_distribution<int> letter('a', 'z');
    std::string text(size, '\0');
    for (char& byte : text) byte = static_cast<char>(letter(generator));
    return text;
}

std::size_t Size(benchmark::State const& state) {
    return static_cast<std::size_t>(state.range(0));
}

void Report(benchmark::State& state) {
    state.SetBytesProcessed(state.iterations() * state.range(0));
    state.SetComplexityN(state.range(0));
}

UStringRef<UTF8> Piece(std::string const& text, std::size_t offset) {
    return MakeUTF8Ref(text).Middle(offset, std::min(offset + cPieceInBytes, text.size()));
}

template <class S>
void BM_Append_Bytes(benchmark::State& state) {
    std::string const text = RandomText(Size(state));
    for (auto _ : state) {
        S built;
        for (char const byte : text) built += static_cast<unsigned char>(byte);
        benchmark::DoNotOptimize(built);
    }
    Report(state);
}

template <class S>
void BM_Append_Pieces(benchmark::State& state) {
    std::string const text = RandomText(Size(state));
    for (auto _ : state) {
        S built;
        for (std::size_t at = 0; at < text.size(); at += cPieceInBytes) built += Piece(text, at);
        benchmark::DoNotOptimize(built);
    }
    Report(state);
}

void BM_Append_BytesToStdString(benchmark::State& state) {
    std::string const text = RandomText(Size(state));
    for (auto _ : state) {
        std::string built;
        for (char const byte : text) built += byte;
        benchmark::DoNotOptimize(built);
    }
    Report(state);
}

void BM_Append_PiecesToStdString(benchmark::State& state) {
    std::string const text = RandomText(Size(state));
    for (auto _ : state) {
        std::string built;
        for (std::size_t at = 0; at < text.size(); at += cPieceInBytes)
            built += std::string_view(text).substr(at, cPieceInBytes);
        benchmark::DoNotOptimize(built);
    }
    Report(state);
}

// The pattern stands at the very end.
constexpr std::string_view cPattern = "needle: 0123456789";

void BM_Search_ConstDataPositionOf(benchmark::State& state) {
    std::string const text = RandomText(Size(state)) + std::string(cPattern);
    std::string const pattern(cPattern);
    for (auto _ : state) {
        ConstData in = MakeConstData(text);
        benchmark::DoNotOptimize(in);
        benchmark::DoNotOptimize(in.PositionOf(MakeConstData(pattern)));
    }
    Report(state);
}

void BM_Search_StdStringViewFind(benchmark::State& state) {
    std::string const text = RandomText(Size(state)) + std::string(cPattern);
    for (auto _ : state) {
        std::string_view in = text;
        benchmark::DoNotOptimize(in);
        benchmark::DoNotOptimize(in.find(cPattern));
    }
    Report(state);
}

// A text that resembles the pattern everywhere. The sizes are small, since a search that begins anew at
// every byte takes the square of them.
std::string RepeatedText(std::size_t size) {
    return std::string(size, 'a');
}

std::string RepeatedPattern(std::size_t size) {
    return std::string(size / 2, 'a') + "b";
}

void BM_SearchRepetitions_ConstDataPositionOf(benchmark::State& state) {
    std::string const text = RepeatedText(Size(state));
    std::string const pattern = RepeatedPattern(Size(state));
    for (auto _ : state) {
        ConstData in = MakeConstData(text);
        benchmark::DoNotOptimize(in);
        benchmark::DoNotOptimize(in.PositionOf(MakeConstData(pattern)));
    }
    Report(state);
}

void BM_SearchRepetitions_StdStringViewFind(benchmark::State& state) {
    std::string const text = RepeatedText(Size(state));
    std::string const pattern = RepeatedPattern(Size(state));
    for (auto _ : state) {
        std::string_view in = text;
        benchmark::DoNotOptimize(in);
        benchmark::DoNotOptimize(in.find(pattern));
    }
    Report(state);
}

void Sizes(benchmark::internal::Benchmark* benchmark) {
    benchmark->Arg(1 << 10)->Arg(1 << 16)->Arg(1 << 22)->Complexity();
}

void SmallSizes(benchmark::internal::Benchmark* benchmark) {
    benchmark->Arg(1 << 10)->Arg(1 << 12)->Arg(1 << 14)->Complexity();
}

} // namespace

BENCHMARK(BM_Append_Bytes<AutoUString<UTF8>>)->Apply(Sizes);
BENCHMARK(BM_Append_Bytes<CopiedUString<UTF8>>)->Apply(Sizes);
BENCHMARK(BM_Append_Bytes<UTF8StringBuilder>)->Apply(Sizes);
BENCHMARK(BM_Append_BytesToStdString)->Apply(Sizes);
BENCHMARK(BM_Append_Pieces<AutoUString<UTF8>>)->Apply(Sizes);
BENCHMARK(BM_Append_Pieces<CopiedUString<UTF8>>)->Apply(Sizes);
BENCHMARK(BM_Append_Pieces<UTF8StringBuilder>)->Apply(Sizes);
BENCHMARK(BM_Append_PiecesToStdString)->Apply(Sizes);
BENCHMARK(BM_Search_ConstDataPositionOf)->Apply(Sizes);
BENCHMARK(BM_Search_StdStringViewFind)->Apply(Sizes);
BENCHMARK(BM_SearchRepetitions_ConstDataPositionOf)->Apply(SmallSizes);
BENCHMARK(BM_SearchRepetitions_StdStringViewFind)->Apply(SmallSizes);
