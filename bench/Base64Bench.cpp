#include "foundation/Base64Decoder.h"
#include "foundation/Base64DecodingDataMaker.h"
#include "foundation/LineMaker.h"

#include <benchmark/benchmark.h>
#include <openssl/evp.h>

#include <algorithm>
#include <cerrno>
#include <cstdint>
#include <cstdlib>
#include <fcntl.h>
#include <memory>
#include <poll.h>
#include <sys/wait.h>
#include <unistd.h>
#include <vector>

// Decoding Base64 text, clean and wrapped at 76 characters, next to OpenSSL's and to the program base64. The
// size is that of the bytes that come out. OpenSSL has two: EVP_DecodeBlock takes clean text only, in one
// piece; EVP_DecodeUpdate takes lines. "AsFile" is the way of a support file's content: through a maker of
// lines, into a receiver, a few kilobytes at a time.
//
// A process of base64 gets the text on one pipe and gives the bytes on another; its time is the time that
// passes from its start to its end.

namespace {

using Bytes = std::vector<unsigned char>;

constexpr std::int64_t cKiB = 1024;
constexpr std::size_t cLine = 76;

std::size_t SizeOf(benchmark::State const& state) {
    return static_cast<std::size_t>(state.range(0));
}

Bytes SomeBytes(std::size_t size) {
    Bytes bytes(size);
    std::uint32_t number = 1;
    for (unsigned char& byte : bytes) {
        number = number * 1664525 + 1013904223;
        byte = static_cast<unsigned char>(number >> 24);
    }
    return bytes;
}

// By OpenSSL, so that a mistake of ours could not hide.
Bytes Encoded(Bytes const& bytes) {
    Bytes text((bytes.size() + 2) / 3 * 4 + 1);
    int const size = EVP_EncodeBlock(text.data(), bytes.data(), static_cast<int>(bytes.size()));
    text.resize(static_cast<std::size_t>(size));
    return text;
}

Bytes Wrapped(Bytes const& text) {
    Bytes lines;
    for (std::size_t place = 0; place < text.size(); place += cLine) {
        auto const line = text.begin() + static_cast<std::ptrdiff_t>(place);
        lines.insert(lines.end(), line,
                     line + static_cast<std::ptrdiff_t>(std::min(cLine, text.size() - place)));
        lines.push_back('\n');
    }
    return lines;
}

Bytes CleanText(benchmark::State const& state) {
    return Encoded(SomeBytes(SizeOf(state)));
}

Bytes WrappedText(benchmark::State const& state) {
    return Wrapped(CleanText(state));
}

ConstData DataOf(Bytes const& bytes) {
    return ConstData(bytes.data(), bytes.data() + bytes.size());
}

// Runs `decode`, which fills the room and tells how many bytes it has made, and looks at the result once.
template <class Decode>
void Measure(benchmark::State& state, Bytes const& text, Decode decode) {
    Bytes const expected = SomeBytes(SizeOf(state));
    Bytes room(text.size());
    if (decode(text, room) < expected.size() || !std::equal(expected.begin(), expected.end(), room.begin()))
        return state.SkipWithError("the result is wrong");
    for (auto _ : state) {
        benchmark::DoNotOptimize(decode(text, room));
        benchmark::ClobberMemory();
    }
    state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(text.size()));
}

std::size_t Decode(Bytes const& text, Bytes& room) {
    Base64Decoder decoder;
    return decoder(DataOf(text), Data(room.data(), room.data() + room.size())).Size();
}

// Copies what it gets.
class Collector : public DataReceiver {
public:
    explicit Collector(Bytes& room) : m_room(room) {}

    using DataReceiver::Receive;
    void Receive(ConstData data) override {
        std::copy(data.begin(), data.end(), m_room.begin() + static_cast<std::ptrdiff_t>(m_size));
        m_size += data.Size();
    }
    std::size_t Size() const { return m_size; }

private:
    Bytes& m_room;
    std::size_t m_size = 0;
};

std::size_t DecodeAsFile(Bytes const& text, Bytes& room) {
    Collector collector(room);
    Base64DecodingDataMaker decoder(collector);
    LineMaker lines(decoder);
    lines.Start();
    lines.Receive(DataOf(text));
    lines.ReceiveEnd();
    return collector.Size();
}

// Counts the bytes that "=" stands for, too.
std::size_t DecodeBlock(Bytes const& text, Bytes& room) {
    int const size = EVP_DecodeBlock(room.data(), text.data(), static_cast<int>(text.size()));
    return size < 0 ? 0 : static_cast<std::size_t>(size);
}

std::size_t DecodeUpdate(Bytes const& text, Bytes& room) {
    std::unique_ptr<EVP_ENCODE_CTX, void (*)(EVP_ENCODE_CTX*)> const context(EVP_ENCODE_CTX_new(),
                                                                             EVP_ENCODE_CTX_free);
    EVP_DecodeInit(context.get());
    int size = 0;
    int rest = 0;
    if (EVP_DecodeUpdate(context.get(), room.data(), &size, text.data(), static_cast<int>(text.size())) < 0)
        return 0;
    if (EVP_DecodeFinal(context.get(), room.data() + size, &rest) < 0) return 0;
    return static_cast<std::size_t>(size) + static_cast<std::size_t>(rest);
}

struct Pipe {
    int ends[2] = {-1, -1};
    Pipe() {
        if (pipe2(ends, O_CLOEXEC) != 0) std::abort();
    }
    ~Pipe() {
        CloseEnd(0);
        CloseEnd(1);
    }
    Pipe(Pipe const&) = delete;
    Pipe& operator=(Pipe const&) = delete;
    void CloseEnd(int end) {
        if (ends[end] != -1) close(ends[end]);
        ends[end] = -1;
    }
};

// Writes the text to one pipe and reads the bytes from the other, as each of them goes on.
std::size_t Converse(Bytes const& text, Bytes& room, Pipe& toProgram, Pipe& fromProgram) {
    fcntl(toProgram.ends[1], F_SETFL, O_NONBLOCK);
    std::size_t written = 0;
    std::size_t read = 0;
    while (true) {
        pollfd ends[] = {{fromProgram.ends[0], POLLIN, 0}, {toProgram.ends[1], POLLOUT, 0}};
        if (poll(ends, 2, -1) < 0) return 0;
        if (ends[1].revents != 0) {
            ssize_t const count = write(toProgram.ends[1], text.data() + written, text.size() - written);
            if (count < 0 && errno != EAGAIN) return 0;
            if (count > 0) written += static_cast<std::size_t>(count);
            if (written == text.size()) toProgram.CloseEnd(1);
        }
        if (ends[0].revents != 0) {
            ssize_t const count = ::read(fromProgram.ends[0], room.data() + read, room.size() - read);
            if (count <= 0) return read;
            read += static_cast<std::size_t>(count);
        }
    }
}

std::size_t DecodeByProcess(Bytes const& text, Bytes& room) {
    Pipe toProgram;
    Pipe fromProgram;
    pid_t const process = vfork();
    if (process == 0) {
        dup2(toProgram.ends[0], STDIN_FILENO);
        dup2(fromProgram.ends[1], STDOUT_FILENO);
        execlp("base64", "base64", "-d", static_cast<char*>(nullptr));
        _exit(127);
    }
    toProgram.CloseEnd(0);
    fromProgram.CloseEnd(1);
    std::size_t const size = Converse(text, room, toProgram, fromProgram);
    waitpid(process, nullptr, 0);
    return size;
}

void Sizes(benchmark::internal::Benchmark* each) {
    each->Arg(cKiB)->Arg(64 * cKiB)->Arg(16 * cKiB * cKiB);
}

void SizesOfProcess(benchmark::internal::Benchmark* each) {
    Sizes(each);
    each->UseRealTime();
}

void BM_Base64_Clean(benchmark::State& state) {
    Measure(state, CleanText(state), Decode);
}
BENCHMARK(BM_Base64_Clean)->Apply(Sizes);

void BM_Base64_Clean_AsFile(benchmark::State& state) {
    Measure(state, CleanText(state), DecodeAsFile);
}
BENCHMARK(BM_Base64_Clean_AsFile)->Apply(Sizes);

void BM_Base64_Clean_OpenSSLBlock(benchmark::State& state) {
    Measure(state, CleanText(state), DecodeBlock);
}
BENCHMARK(BM_Base64_Clean_OpenSSLBlock)->Apply(Sizes);

void BM_Base64_Clean_OpenSSLUpdate(benchmark::State& state) {
    Measure(state, CleanText(state), DecodeUpdate);
}
BENCHMARK(BM_Base64_Clean_OpenSSLUpdate)->Apply(Sizes);

void BM_Base64_Clean_Process(benchmark::State& state) {
    Measure(state, CleanText(state), DecodeByProcess);
}
BENCHMARK(BM_Base64_Clean_Process)->Apply(SizesOfProcess);

void BM_Base64_Wrapped(benchmark::State& state) {
    Measure(state, WrappedText(state), Decode);
}
BENCHMARK(BM_Base64_Wrapped)->Apply(Sizes);

void BM_Base64_Wrapped_AsFile(benchmark::State& state) {
    Measure(state, WrappedText(state), DecodeAsFile);
}
BENCHMARK(BM_Base64_Wrapped_AsFile)->Apply(Sizes);

void BM_Base64_Wrapped_OpenSSLUpdate(benchmark::State& state) {
    Measure(state, WrappedText(state), DecodeUpdate);
}
BENCHMARK(BM_Base64_Wrapped_OpenSSLUpdate)->Apply(Sizes);

void BM_Base64_Wrapped_Process(benchmark::State& state) {
    Measure(state, WrappedText(state), DecodeByProcess);
}
BENCHMARK(BM_Base64_Wrapped_Process)->Apply(SizesOfProcess);

} // namespace
