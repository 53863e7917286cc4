#include "text/LocalText.h"
#include "text/Transcoder.h"

#include <benchmark/benchmark.h>
#include <unicode/ucnv.h>
#include <unicode/ustring.h>

#include <cstdlib>
#include <iconv.h>
#include <memory>
#include <random>
#include <string>
#include <vector>

// Transcoding between UTF-8, UTF-16 and UTF-32, next to ICU and iconv in the same run. Three kinds of text:
// plain ASCII, words with an accented letter in about every seventh place, and three-byte characters with a
// space now and then. The inputs come from a generator with a fixed seed. The sizes are those of the text in
// UTF-8: 1 KiB, 64 KiB and 4 MiB, so that linear cost shows; the rate counts these bytes in either direction.
//
// Two jobs are measured. "Stream" converts into memory that is there already; ICU and iconv do the same with
// an open converter. "Text" makes a new text of its own; ICU is first asked for the size, as its manual
// advises.

namespace {

enum class Kind { Ascii, Latin, CJK };

class TextMaker {
public:
    std::string Make(Kind kind, std::size_t size) {
        std::string text;
        while (text.size() + 3 <= size) Add(kind, text);
        text.resize(size, '.');
        return text;
    }

private:
    void Add(Kind kind, std::string& text) {
        std::uint_fast32_t const die = m_numbers() % 14;
        if (die == 0)
            text += ' ';
        else if (kind == Kind::CJK)
            AddCharacter(text, 0x4E00 + m_numbers() % 0x5000);
        else if (kind == Kind::Latin && die < 3)
            AddCharacter(text, 0xC0 + m_numbers() % 0x80);
        else
            text += static_cast<char>('a' + m_numbers() % 26);
    }
    static void AddCharacter(std::string& text, std::uint_fast32_t value) {
        if (value < 0x800) {
            text += static_cast<char>(0xC0 | (value >> 6));
        } else {
            text += static_cast<char>(0xE0 | (value >> 12));
            text += static_cast<char>(0x80 | ((value >> 6) & 0x3F));
        }
        text += static_cast<char>(0x80 | (value & 0x3F));
    }

    std::mt19937 m_numbers{20240229};
};

// The input in an encoding, and how many units a UTF-32 text of it has: no other encoding but UTF-8 takes
// more.
template <class E>
struct Input {
    explicit Input(benchmark::State const& state)
        : text(TextMaker().Make(static_cast<Kind>(state.range(0)), static_cast<std::size_t>(state.range(1)))),
          units(Converted(MakeUTF8Ref(text))) {}

    static AutoUString<E> Converted(UStringRef<UTF8> const& utf8) {
        if constexpr (std::is_same_v<E, UTF8>)
            return AutoUString<UTF8>(utf8);
        else
            return Transcode<E, UTF8>(utf8);
    }

    std::string text;
    AutoUString<E> units;
};

// Receiver that writes into memory that is there already.
template <class E>
class MemoryReceiver : public UTextReceiver<E> {
public:
    using Unit = typename E::Unit;

    explicit MemoryReceiver(std::size_t size) : m_units(size) {}
    void Start(E) override { m_size = 0; }
    void Receive(ConstArrayOf<Unit> units) override {
        std::memcpy(m_units.data() + m_size, units.begin(), units.Size() * sizeof(Unit));
        m_size += units.Size();
    }
    std::size_t Size() const { return m_size; }

private:
    std::vector<Unit> m_units;
    std::size_t m_size = 0;
};

void Report(benchmark::State& state) {
    state.SetBytesProcessed(state.iterations() * state.range(1));
    state.SetComplexityN(state.range(1));
}

std::size_t Room(benchmark::State const& state) {
    return static_cast<std::size_t>(state.range(1)) + 16;
}

template <class To, class From>
void BM_Stream_GenericTranscoder(benchmark::State& state) {
    Input<From> const input(state);
    MemoryReceiver<To> target(Room(state));
    for (auto _ : state) {
        GenericTranscoder<To, From> transcoder(target);
        transcoder.Start(From());
        transcoder.Receive(input.units.Ref());
        transcoder.ReceiveEnd();
        benchmark::DoNotOptimize(target.Size());
        benchmark::ClobberMemory();
    }
    Report(state);
}

template <class E>
char const* ConverterName() {
    if (std::is_same_v<E, UTF8>) return "UTF-8";
    return std::is_same_v<E, UTF16> ? "UTF-16LE" : "UTF-32LE";
}

class Converter {
public:
    explicit Converter(char const* name) : m_converter(ucnv_open(name, &m_error)) {
        if (U_FAILURE(m_error)) std::abort();
    }
    Converter(Converter const&) = delete;
    Converter& operator=(Converter const&) = delete;
    ~Converter() { ucnv_close(m_converter); }
    UConverter* Get() const { return m_converter; }

private:
    UErrorCode m_error = U_ZERO_ERROR;
    UConverter* m_converter;
};

// ucnv_convertEx by way of its UTF-16 pivot.
template <class To, class From>
void BM_Stream_ICUConverter(benchmark::State& state) {
    Input<From> const input(state);
    std::vector<typename To::Unit> room(Room(state));
    Converter const to(ConverterName<To>());
    Converter const from(ConverterName<From>());
    auto const* const first = reinterpret_cast<char const*>(input.units.begin());
    for (auto _ : state) {
        char* target = reinterpret_cast<char*>(room.data());
        char const* source = first;
        UErrorCode error = U_ZERO_ERROR;
        ucnv_convertEx(to.Get(), from.Get(), &target, reinterpret_cast<char*>(room.data() + room.size()),
                       &source, first + input.units.SizeInBytes(), nullptr, nullptr, nullptr, nullptr, true,
                       true, &error);
        if (U_FAILURE(error)) std::abort();
        benchmark::DoNotOptimize(target);
        benchmark::ClobberMemory();
    }
    Report(state);
}

template <class To, class From>
void BM_Stream_Iconv(benchmark::State& state) {
    Input<From> const input(state);
    std::vector<typename To::Unit> room(Room(state));
    iconv_t const converter = iconv_open(ConverterName<To>(), ConverterName<From>());
    for (auto _ : state) {
        char* source = const_cast<char*>(reinterpret_cast<char const*>(input.units.begin()));
        std::size_t sourceSize = input.units.SizeInBytes();
        char* target = reinterpret_cast<char*>(room.data());
        std::size_t targetSize = room.size() * sizeof(typename To::Unit);
        if (iconv(converter, &source, &sourceSize, &target, &targetSize) != 0) std::abort();
        benchmark::DoNotOptimize(target);
        benchmark::ClobberMemory();
    }
    iconv_close(converter);
    Report(state);
}

// ICU's functions for whole texts, which do without a converter.
int32_t ToICU(UTF16, char16_t* out, std::size_t room, UStringRef<UTF8> text, UErrorCode& error) {
    int32_t size = 0;
    u_strFromUTF8(out, static_cast<int32_t>(room), &size, reinterpret_cast<char const*>(text.begin()),
                  static_cast<int32_t>(text.SizeInUnits()), &error);
    return size;
}

int32_t ToICU(UTF8, char* out, std::size_t room, UStringRef<UTF16> text, UErrorCode& error) {
    int32_t size = 0;
    u_strToUTF8(out, static_cast<int32_t>(room), &size, reinterpret_cast<char16_t const*>(text.begin()),
                static_cast<int32_t>(text.SizeInUnits()), &error);
    return size;
}

template <class E>
using ICUUnit = std::conditional_t<std::is_same_v<E, UTF8>, char, char16_t>;

template <class To, class From>
void BM_Stream_ICUStrings(benchmark::State& state) {
    Input<From> const input(state);
    std::vector<ICUUnit<To>> room(Room(state));
    for (auto _ : state) {
        UErrorCode error = U_ZERO_ERROR;
        benchmark::DoNotOptimize(ToICU(To(), room.data(), room.size(), input.units, error));
        if (U_FAILURE(error)) std::abort();
        benchmark::ClobberMemory();
    }
    Report(state);
}

template <class To, class From>
void BM_Text_Transcode(benchmark::State& state) {
    Input<From> const input(state);
    for (auto _ : state) {
        AutoUString<To> text = Transcode<To, From>(input.units);
        benchmark::DoNotOptimize(text.begin());
        benchmark::ClobberMemory();
    }
    Report(state);
}

template <class To, class From>
void BM_Text_ICUStrings(benchmark::State& state) {
    Input<From> const input(state);
    for (auto _ : state) {
        UErrorCode error = U_ZERO_ERROR;
        auto const size = static_cast<std::size_t>(ToICU(To(), nullptr, 0, input.units, error));
        error = U_ZERO_ERROR;
        std::unique_ptr<ICUUnit<To>[]> const text(new ICUUnit<To>[size]);
        benchmark::DoNotOptimize(ToICU(To(), text.get(), size, input.units, error));
        if (U_FAILURE(error)) std::abort();
        benchmark::ClobberMemory();
    }
    Report(state);
}

void BM_LocalEncoding_Name(benchmark::State& state) {
    for (auto _ : state) {
        IANANamedTextEncoding name = UnixPlatform::IANAEncodingName(Local8Bit());
        benchmark::DoNotOptimize(name);
    }
}

// A short text that needs no conversion: what asking for the local encoding costs.
void BM_LocalEncoding_ShortTextInUTF8Locale(benchmark::State& state) {
    if (!setlocale(LC_CTYPE, "C.UTF-8")) state.SkipWithError("The locale C.UTF-8 is not there.");
    for (auto _ : state) {
        AutoUString<Local8Bit> text = UnixPlatform::ToLocal8Bit("Restart now"_utf8);
        benchmark::DoNotOptimize(text.begin());
    }
}

void Texts(benchmark::internal::Benchmark* benchmark) {
    benchmark->ArgNames({"kind", "size"});
    for (Kind const kind : {Kind::Ascii, Kind::Latin, Kind::CJK}) {
        for (int const size : {1 << 10, 1 << 16, 1 << 22}) benchmark->Args({static_cast<int>(kind), size});
    }
}

} // namespace

BENCHMARK(BM_Stream_GenericTranscoder<UTF32, UTF8>)->Apply(Texts);
BENCHMARK(BM_Stream_ICUConverter<UTF32, UTF8>)->Apply(Texts);
BENCHMARK(BM_Stream_Iconv<UTF32, UTF8>)->Apply(Texts);
BENCHMARK(BM_Stream_GenericTranscoder<UTF8, UTF32>)->Apply(Texts);
BENCHMARK(BM_Stream_ICUConverter<UTF8, UTF32>)->Apply(Texts);
BENCHMARK(BM_Stream_Iconv<UTF8, UTF32>)->Apply(Texts);
BENCHMARK(BM_Stream_GenericTranscoder<UTF16, UTF8>)->Apply(Texts);
BENCHMARK(BM_Stream_ICUStrings<UTF16, UTF8>)->Apply(Texts);
BENCHMARK(BM_Stream_ICUConverter<UTF16, UTF8>)->Apply(Texts);
BENCHMARK(BM_Stream_Iconv<UTF16, UTF8>)->Apply(Texts);
BENCHMARK(BM_Stream_GenericTranscoder<UTF8, UTF16>)->Apply(Texts);
BENCHMARK(BM_Stream_ICUStrings<UTF8, UTF16>)->Apply(Texts);
BENCHMARK(BM_Stream_ICUConverter<UTF8, UTF16>)->Apply(Texts);
BENCHMARK(BM_Stream_Iconv<UTF8, UTF16>)->Apply(Texts);
BENCHMARK(BM_Text_Transcode<UTF16, UTF8>)->Apply(Texts);
BENCHMARK(BM_Text_ICUStrings<UTF16, UTF8>)->Apply(Texts);
BENCHMARK(BM_Text_Transcode<UTF8, UTF16>)->Apply(Texts);
BENCHMARK(BM_Text_ICUStrings<UTF8, UTF16>)->Apply(Texts);
BENCHMARK(BM_LocalEncoding_Name);
BENCHMARK(BM_LocalEncoding_ShortTextInUTF8Locale);
