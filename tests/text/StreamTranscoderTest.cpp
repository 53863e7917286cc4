#include "text/StreamTranscoder.h"

#include "foundation/Base64Decoder.h"
#include "foundation/DataFilterer.h"
#include "foundation/StartReceiveAndEnd.h"

#include "tests/text/TranscodingSupport.h"

#include <gtest/gtest.h>

#include <string>

namespace {

// The text that a stream makes of bytes given in two pieces, cut at `cut`.
template <class To, class From>
Outcome<To> Streamed(std::string const& bytes, std::size_t cut) {
    auto target = std::make_unique<RecordingTarget<To>>();
    RecordingTarget<To> const& result = *target;
    StreamTranscoder<To, From> stream(std::move(target));
    // Memory of its own for each piece; the second does not lie where a wider unit may.
    std::string const first = bytes.substr(0, cut);
    std::string const second = "." + bytes.substr(cut);
    try {
        stream.Start();
        stream.Receive(MakeConstData(first));
        ConstData const rest = MakeConstData(second);
        stream.Receive(ConstData(rest.begin() + 1, rest.end()));
        stream.ReceiveEnd();
    } catch (InvalidTextEncoding const&) {
        return std::nullopt;
    }
    EXPECT_EQ(result.starts, 1);
    EXPECT_EQ(result.ends, 1);
    return result.text;
}

template <class E>
std::string BytesOf(Units<E> const& units) {
    return std::string(reinterpret_cast<char const*>(units.data()), units.size() * sizeof(typename E::Unit));
}

Units<UTF16> const cInUTF16 = {'G', 'r', 0xFC, 'n', 0xD83D, 0xDE00, '.'};
Units<UTF32> const cInUTF32 = {'G', 'r', 0xFC, 'n', 0x1F600, '.'};
std::string const cInUTF8 = "Gr\xC3\xBCn\xF0\x9F\x98\x80.";

} // namespace

TEST(StreamTranscoder, TakesUTF8CutAnywhere) {
    for (std::size_t cut = 0; cut <= cInUTF8.size(); ++cut) {
        EXPECT_EQ((Streamed<UTF16, UTF8>(cInUTF8, cut)), cInUTF16) << cut;
        EXPECT_EQ((Streamed<UTF32, UTF8>(cInUTF8, cut)), cInUTF32) << cut;
    }
}

TEST(StreamTranscoder, TakesTheBytesOfWiderUnitsCutAnywhere) {
    std::string const utf16 = BytesOf<UTF16>(cInUTF16);
    for (std::size_t cut = 0; cut <= utf16.size(); ++cut) {
        EXPECT_EQ((Streamed<UTF8, UTF16>(utf16, cut)), InUTF8(cInUTF8)) << cut;
        EXPECT_EQ((Streamed<UTF32, UTF16>(utf16, cut)), cInUTF32) << cut;
    }
    std::string const utf32 = BytesOf<UTF32>(cInUTF32);
    for (std::size_t cut = 0; cut <= utf32.size(); ++cut) {
        EXPECT_EQ((Streamed<UTF8, UTF32>(utf32, cut)), InUTF8(cInUTF8)) << cut;
        EXPECT_EQ((Streamed<UTF16, UTF32>(utf32, cut)), cInUTF16) << cut;
    }
}

TEST(StreamTranscoder, TakesBytesOneByOne) {
    auto target = std::make_unique<RecordingTarget<UTF8>>();
    RecordingTarget<UTF8> const& result = *target;
    StreamTranscoder<UTF8, UTF32> stream(std::move(target));
    stream.Start();
    for (char const byte : BytesOf<UTF32>(cInUTF32)) stream.Receive(MakeConstData(std::string(1, byte)));
    stream.ReceiveEnd();
    EXPECT_EQ(result.text, InUTF8(cInUTF8));
}

TEST(StreamTranscoder, TakesLongStreams) {
    Units<UTF16> const units(5000, 0x20AC);
    std::string text;
    for (int i = 0; i < 5000; ++i) text += "\xE2\x82\xAC";
    for (std::size_t const cut : {0U, 1U, 1023U, 1024U, 1025U, 9999U})
        EXPECT_TRUE((Streamed<UTF8, UTF16>(BytesOf<UTF16>(units), cut)) == InUTF8(text)) << cut;
}

TEST(StreamTranscoder, RefusesBytesThatEndWithinAUnit) {
    std::string bytes = BytesOf<UTF16>(cInUTF16);
    bytes.pop_back();
    EXPECT_EQ((Streamed<UTF8, UTF16>(bytes, 0)), std::nullopt);
    for (std::size_t const missing : {1U, 2U, 3U}) {
        std::string const wide = BytesOf<UTF32>(cInUTF32);
        EXPECT_EQ((Streamed<UTF8, UTF32>(wide.substr(0, wide.size() - missing), 5)), std::nullopt);
    }
}

TEST(StreamTranscoder, RefusesWhatTheTranscoderRefuses) {
    EXPECT_EQ((Streamed<UTF16, UTF8>("a\xC3", 1)), std::nullopt);
    EXPECT_EQ((Streamed<UTF16, UTF8>("a\xFF", 1)), std::nullopt);
    EXPECT_EQ((Streamed<UTF8, USAscii>("a\x80", 1)), std::nullopt);
    EXPECT_EQ((Streamed<UTF8, UTF16>(BytesOf<UTF16>({0xD800}), 1)), std::nullopt);
}

TEST(StreamTranscoder, StandsAtTheEndOfAChain) {
    auto target = std::make_unique<RecordingTarget<UTF16>>();
    RecordingTarget<UTF16> const& result = *target;
    StreamTranscoder<UTF16, UTF8> stream(std::move(target));
    EXPECT_EQ(&stream.Target(), &result);
    Base64Decoder decoder;
    StartReceiveAndEnd(stream, "R3LDvG7wn5iALg=="_data, decoder);
    EXPECT_EQ(result.text, cInUTF16);
    EXPECT_EQ(result.ends, 1);
}

TEST(StreamTranscoder, BeginsANewTextAtEachStart) {
    auto target = std::make_unique<RecordingTarget<UTF8>>();
    RecordingTarget<UTF8> const& result = *target;
    StreamTranscoder<UTF8, UTF16> stream(std::move(target));
    stream.Start();
    stream.Receive(MakeConstData(std::string(1, 'x')));
    stream.Start();
    std::string const bytes = BytesOf<UTF16>({'o', 'k'});
    stream.Receive(MakeConstData(bytes));
    stream.ReceiveEnd();
    EXPECT_EQ(result.text, InUTF8("ok"));
}
