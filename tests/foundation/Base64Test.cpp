#include "foundation/Base64.h"
#include "foundation/Base64Decoder.h"
#include "foundation/Base64DecodingDataMaker.h"
#include "foundation/Base64Encoder.h"
#include "foundation/Base64EncodingLineMaker.h"
#include "foundation/Exceptions.h"
#include "foundation/LineFlattener.h"
#include "foundation/LineMaker.h"
#include "foundation/StartReceiveAndEnd.h"
#include "text/UString.h"

#include "tests/foundation/StreamSupport.h"
#include "tests/support/UStringPrinting.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>

namespace {

struct Base64Case {
    char const* bytes;
    char const* text;
};

Base64Case const cCases[] = {
    {"", ""},
    {"f", "Zg=="},
    {"fo", "Zm8="},
    {"foo", "Zm9v"},
    {"foob", "Zm9vYg=="},
    {"fooba", "Zm9vYmE="},
    {"foobar", "Zm9vYmFy"},
    {"\xff\xff\xff", "////"},
    {"\xfb\xef\xbe", "++++"},
    {"\x01", "AQ=="},
    {"The quick brown fox", "VGhlIHF1aWNrIGJyb3duIGZveA=="},
};

ConstData Bytes(char const* text) {
    return MakeUTF8Ref(text);
}

std::string Text(std::vector<unsigned char> const& bytes) {
    return std::string(bytes.begin(), bytes.end());
}

std::string Decoded(std::string const& text) {
    return Text(Base64Decode(MakeConstData(text)));
}

std::string Encoded(std::string const& bytes) {
    return MakeString(Base64Encode(MakeConstData(bytes)));
}

// Throws at the call number `last`, of Receive and ReceiveLineBreak together.
class FailingLineReceiver : public RecordingLineReceiver {
public:
    explicit FailingLineReceiver(int last) : m_left(last) {}
    void Receive(ConstData text) override {
        Count();
        RecordingLineReceiver::Receive(text);
    }
    void ReceiveLineBreak(Range<unsigned long> lineBreak) override {
        Count();
        RecordingLineReceiver::ReceiveLineBreak(lineBreak);
    }

private:
    void Count() {
        if (--m_left == 0) throw NotANumeral();
    }

    int m_left;
};

// Encodes with no more than `room` bytes of output at a time.
std::string EncodedThroughRoom(ConstData data, std::size_t room) {
    std::string text;
    std::vector<unsigned char> bytes(room);
    Base64Encoder encoder;
    ConstBuffer in(data);
    while (true) {
        ConstData const written = encoder(in, Data(bytes.data(), bytes.data() + room));
        text += MakeString(written);
        if (in.empty() && written.Size() < room) break;
    }
    unsigned char last[4];
    Buffer out(Data(last, last + 4));
    encoder.Flush(out);
    return text + MakeString(out.Written());
}

} // namespace

TEST(Base64Encode, PadsTheLastGroup) {
    for (Base64Case const& each : cCases) {
        EXPECT_EQ(Base64Encode(Bytes(each.bytes)), MakeUTF8Ref(each.text));
    }
    EXPECT_EQ(Base64Encode("\0"_data), "AA=="_utf8);
    EXPECT_EQ(Base64Encode("\0\0\0"_data), "AAAA"_utf8);
}

TEST(Base64Encode, KnowsEveryCharacterOfTheAlphabet) {
    std::string bytes;
    for (unsigned int value = 0; value < 64; value += 4) {
        unsigned int const group = value << 18 | (value + 1) << 12 | (value + 2) << 6 | (value + 3);
        bytes += static_cast<char>(group >> 16);
        bytes += static_cast<char>(group >> 8 & 0xff);
        bytes += static_cast<char>(group & 0xff);
    }
    EXPECT_EQ(Encoded(bytes), "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/");
    EXPECT_EQ(Decoded("ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/"), bytes);
}

TEST(Base64Decode, GivesTheBytesBack) {
    for (Base64Case const& each : cCases)
        EXPECT_EQ(Text(Base64Decode(Bytes(each.text))), each.bytes) << each.text;
}

TEST(Base64Decode, DoesNotNeedThePadding) {
    EXPECT_EQ(Decoded("Zg"), "f");
    EXPECT_EQ(Decoded("Zm8"), "fo");
    EXPECT_EQ(Decoded("Zm9vYg"), "foob");
}

TEST(Base64Decode, GivesFewerBytesForATruncatedText) {
    EXPECT_EQ(Decoded("Zm9vY"), "foo");
    EXPECT_EQ(Decoded("Z"), "");
}

TEST(Base64Decode, SkipsWhatIsOutsideTheAlphabet) {
    EXPECT_EQ(Decoded("===="), "");
    EXPECT_EQ(Decoded("Zm9v\r\nYmFy\r\n"), "foobar");
    EXPECT_EQ(Decoded("Z m\t9\nv"), "foo");
    EXPECT_EQ(Decoded("Z-m_9.v"), "foo");
    EXPECT_EQ(Decoded(std::string("Z\0m\x80\xff"
                                  "9v",
                                  7)),
              "foo");
    EXPECT_EQ(Decoded("=Zm9v"), "foo");
    EXPECT_EQ(Decoded(" \n\t"), "");
}

TEST(Base64Decode, SkipsEveryByteOutsideTheAlphabet) {
    std::string const alphabet = Base64Encoder::cAlphabet;
    for (int value = 0; value < 256; ++value) {
        auto const byte = static_cast<char>(value);
        if (alphabet.find(byte) != std::string::npos) continue;
        EXPECT_EQ(Decoded(std::string("Zm") + byte + "9v" + byte + "YmFy"), "foobar") << value;
    }
}

TEST(Base64Decode, GoesOnBehindPaddingWithTheBitsItHolds) {
    // Two characters leave four bits over; padding does not clear them.
    EXPECT_EQ(Decoded("Zg==Zg=="), "f\x06\x60");
}

TEST(Base64Decode, GivesTheSameBytesWithLineBreaksInside) {
    std::string const bytes = MakeNoise(500);
    std::string const text = Encoded(bytes);
    for (std::size_t width = 1; width < 80; ++width) {
        std::string wrapped;
        for (std::size_t offset = 0; offset < text.size(); offset += width)
            wrapped += text.substr(offset, width) + (width % 2 ? "\n" : "\r\n");
        EXPECT_TRUE(Decoded(wrapped) == bytes) << width;
    }
}

TEST(Base64, GivesBackEverySize) {
    for (std::size_t size = 0; size < 300; ++size) {
        std::string const bytes = MakeNoise(size);
        std::string const text = Encoded(bytes);
        EXPECT_EQ(text.size(), (size + 2) / 3 * 4);
        EXPECT_TRUE(Decoded(text) == bytes) << size;
    }
}

TEST(Base64, TakesLongInput) {
    for (std::size_t const size : {6143u, 6144u, 6145u, 8192u, 1000000u}) {
        std::string const bytes = MakeNoise(size);
        EXPECT_TRUE(Decoded(Encoded(bytes)) == bytes) << size;
    }
}

TEST(Base64Encoder, GivesTheSameTextHoweverTheStreamIsCut) {
    std::string const bytes = MakeNoise(100);
    std::string const expected = Encoded(bytes);
    ForEveryCut(MakeConstData(bytes), [&](Feed const& feed) {
        unsigned char room[200];
        Buffer out(Data(room, room + 200));
        Base64Encoder encoder;
        feed([&](ConstData piece) { EXPECT_TRUE(encoder(piece, out).empty()); });
        encoder.Flush(out);
        EXPECT_EQ(MakeString(out.Written()), expected);
    });
}

TEST(Base64Encoder, GivesTheSameTextThroughAnyRoom) {
    std::string const bytes = MakeNoise(100);
    std::string const expected = Encoded(bytes);
    for (std::size_t room = 1; room < 40; ++room)
        EXPECT_EQ(EncodedThroughRoom(MakeConstData(bytes), room), expected) << room;
}

TEST(Base64Encoder, HoldsNothingBackAfterWholeGroups) {
    unsigned char room[8];
    Base64Encoder encoder;
    EXPECT_TRUE(encoder.Flushed());
    EXPECT_EQ(MakeString(encoder("foo"_data, Data(room, room + 8))), "Zm9v");
    EXPECT_TRUE(encoder.Flushed());
    EXPECT_EQ(MakeString(encoder("b"_data, Data(room, room + 8))), "Y");
    EXPECT_FALSE(encoder.Flushed());
}

TEST(Base64Encoder, ConsumesNothingWithoutRoom) {
    Base64Encoder encoder;
    ConstBuffer in("foo"_data);
    encoder(in, Data());
    EXPECT_EQ(in.Size(), 3u);
}

TEST(Base64Encoder, FlushNeedsRoomForTheRestOfTheGroup) {
    unsigned char room[4];
    for (std::size_t size = 0; size < 3; ++size) {
        Base64Encoder encoder;
        encoder("f"_data, Data(room, room + 4));
        Buffer tight(Data(room, room + size));
        EXPECT_THROW(encoder.Flush(tight), DataOverflow) << size;
        EXPECT_TRUE(tight.Written().empty());
        EXPECT_FALSE(encoder.Flushed());

        Buffer out(Data(room, room + 4));
        encoder.Flush(out);
        EXPECT_EQ(MakeString(out.Written()), "g==");
        EXPECT_TRUE(encoder.Flushed());
    }
}

TEST(Base64Encoder, FlushWritesWhatFoundNoRoomBefore) {
    unsigned char room[1];
    Base64Encoder encoder;
    ConstBuffer in("fo"_data);
    EXPECT_EQ(MakeString(encoder(in, Data(room, room + 1))), "Z");
    EXPECT_EQ(in.Size(), 1u);

    unsigned char more[4];
    Buffer out(Data(more, more + 4));
    encoder(in, out);
    encoder.Flush(out);
    EXPECT_EQ(MakeString(out.Written()), "m8=");
}

TEST(Base64Encoder, FlushFillsExactlyTheRoomItNeeds) {
    struct FlushCase {
        char const* bytes;
        char const* written;
        char const* flushed;
    };
    for (FlushCase const& each : {FlushCase{"f", "Z", "g=="}, FlushCase{"fo", "Zm", "8="}}) {
        std::size_t const needed = std::strlen(each.flushed);
        unsigned char room[4];
        Base64Encoder encoder;
        EXPECT_EQ(MakeString(encoder(Bytes(each.bytes), Data(room, room + 4))), each.written);
        Buffer tight(Data(room, room + needed - 1));
        EXPECT_THROW(encoder.Flush(tight), DataOverflow) << each.bytes;
        EXPECT_TRUE(tight.Written().empty()) << each.bytes;
        Buffer enough(Data(room, room + needed));
        encoder.Flush(enough);
        EXPECT_EQ(MakeString(enough.Written()), each.flushed);
        EXPECT_TRUE(encoder.Flushed()) << each.bytes;
    }
}

TEST(Base64Encoder, FlushKeepsAWholeCharacterThatFindsNoRoom) {
    unsigned char room[3];
    Base64Encoder encoder;
    ConstBuffer in("foo"_data);
    EXPECT_EQ(MakeString(encoder(in, Data(room, room + 3))), "Zm9");
    EXPECT_TRUE(in.empty());
    EXPECT_FALSE(encoder.Flushed());
    Buffer none;
    EXPECT_THROW(encoder.Flush(none), DataOverflow);
    EXPECT_FALSE(encoder.Flushed());
    Buffer enough(Data(room, room + 1));
    encoder.Flush(enough);
    EXPECT_EQ(MakeString(enough.Written()), "v") << "a whole group has no padding";
    EXPECT_TRUE(encoder.Flushed());
}

TEST(Base64Encoder, FlushDoesNothingWhenNothingIsHeld) {
    Base64Encoder encoder;
    Buffer none;
    EXPECT_NO_THROW(encoder.Flush(none));
}

TEST(Base64Decoder, GivesTheSameBytesHoweverTheStreamIsCut) {
    std::string const text = "VGhl\r\nIHF1aWNr IGJyb3du\n=IGZveA==\n";
    ForEveryCut(MakeConstData(text), [&](Feed const& feed) {
        unsigned char room[50];
        Buffer out(Data(room, room + 50));
        Base64Decoder decoder;
        feed([&](ConstData piece) { EXPECT_TRUE(decoder(piece, out).empty()); });
        EXPECT_EQ(MakeString(out.Written()), "The quick brown fox");
        EXPECT_TRUE(decoder.Flushed());
    });
}

TEST(Base64Decoder, ThrowsWhenAByteFindsNoRoom) {
    std::string const text = "Zm9vYmFy";
    for (std::size_t size = 0; size < 6; ++size) {
        unsigned char room[6];
        Buffer tight(Data(room, room + size));
        ConstBuffer in(MakeConstData(text));
        Base64Decoder decoder;
        EXPECT_THROW(decoder(in, tight), DataOverflow) << size;
        EXPECT_EQ(MakeString(tight.Written()), std::string("foobar", 0, size));

        Buffer rest(Data(room, room + 6));
        decoder(in, rest);
        EXPECT_EQ(MakeString(rest.Written()), std::string("foobar").substr(size)) << "nothing may get lost";
    }
}

TEST(Base64Decoder, NeedsNoRoomForWhatGivesNoByte) {
    Base64Decoder decoder;
    EXPECT_TRUE(decoder("=\n Z"_data, Data()).empty());
    unsigned char room[3];
    EXPECT_EQ(MakeString(decoder("m9v"_data, Data(room, room + 3))), "foo");
}

TEST(Base64Decoder, FillsItsRoomToTheLastByte) {
    unsigned char room[6];
    Base64Decoder decoder;
    EXPECT_EQ(MakeString(decoder("Zm9vYmFy=="_data, Data(room, room + 6))), "foobar");
}

TEST(Base64Decoder, WritesNothingBehindItsRoom) {
    std::string const text = "VGhlIHF1aWNrIGJyb3duIGZveCBqdW1wcw==";
    std::string const bytes = "The quick brown fox jumps";
    for (std::size_t size = 0; size < bytes.size(); ++size) {
        unsigned char room[40];
        std::fill(std::begin(room), std::end(room), '#');
        Buffer tight(Data(room, room + size));
        ConstBuffer in(MakeConstData(text));
        EXPECT_THROW(Base64Decoder()(in, tight), DataOverflow) << size;
        EXPECT_EQ(MakeString(ConstData(room, room + 40)),
                  bytes.substr(0, size) + std::string(40 - size, '#'));
    }
}

TEST(Base64Decoder, NeverGivesMoreBytesThanCharacters) {
    std::string const text(97, 'x');
    for (std::size_t piece = 1; piece < 20; ++piece) {
        Base64Decoder decoder;
        std::vector<unsigned char> room(piece);
        FeedInPieces(MakeConstData(text), piece, [&](ConstData characters) {
            EXPECT_NO_THROW(decoder(characters, Data(room.data(), room.data() + characters.Size())));
        });
    }
}

TEST(Base64Decoder, HasACorrectTable) {
    EXPECT_TRUE(Base64Decoder::TableIsCorrect());
}

TEST(Base64EncodingLineMaker, MakesLinesOf64CharactersAndAShorterLastOne) {
    struct SizeCase {
        std::size_t bytes;
        char const* layout;
    };
    // 48 bytes make a line of 64 characters.
    SizeCase const cases[] = {
        {0, "<0  0>"},
        {1, "<0 4 4>"},
        {46, "<0 64 64>"},
        {47, "<0 64 64>"},
        {48, "<0 64[64,65] 65>"},
        {49, "<0 64[64,65]4 69>"},
        {96, "<0 64[64,65]64[129,130] 130>"},
        {100, "<0 64[64,65]64[129,130]8 138>"},
    };
    // Writes down the sizes of the pieces instead of the pieces.
    class LayoutReceiver : public RecordingLineReceiver {
    public:
        void Receive(ConstData text) override { record += std::to_string(text.Size()); }
    };
    for (SizeCase const& each : cases) {
        LayoutReceiver lines;
        Base64EncodingLineMaker maker(lines);
        StartReceiveAndEnd(maker, MakeConstData(MakeNoise(each.bytes)));
        EXPECT_EQ(lines.record, each.layout) << each.bytes;
    }
}

TEST(Base64EncodingLineMaker, GivesTheSameLinesHoweverTheStreamIsCut) {
    std::string const bytes = MakeNoise(130);
    std::string const text = Encoded(bytes);
    std::string const expected =
        '<' + text.substr(0, 64) + '\n' + text.substr(64, 64) + '\n' + text.substr(128) + '>';
    ForEveryCut(MakeConstData(bytes), [&](Feed const& feed) {
        RecordingDataReceiver receiver;
        LineFlattener flattener(receiver, LineFlattener::lf);
        Base64EncodingLineMaker maker(flattener);
        maker.Start();
        feed([&](ConstData piece) { maker.Receive(piece); });
        maker.ReceiveEnd();
        EXPECT_EQ(receiver.record, expected);
    });
}

TEST(Base64EncodingLineMaker, FlushesIntoALineThatIsAlmostFull) {
    for (std::size_t const size : {46u, 47u}) {
        std::string const bytes(size, 'f');
        std::string const group = size == 46 ? "Zg==" : "ZmY=";
        std::string expected;
        for (int groups = 0; groups < 15; ++groups) expected += "ZmZm";
        expected += group;
        for (std::size_t piece = 1; piece <= size; ++piece) {
            RecordingLineReceiver lines;
            Base64EncodingLineMaker maker(lines);
            maker.Start();
            FeedInPieces(MakeConstData(bytes), piece, [&](ConstData data) { maker.Receive(data); });
            EXPECT_EQ(lines.record, "<0 ");
            maker.ReceiveEnd();
            EXPECT_EQ(lines.record, "<0 " + expected + " 64>") << size << " by " << piece;
            EXPECT_EQ(lines.pieces, 1);
        }
    }
}

TEST(Base64EncodingLineMaker, GoesOnBehindALineThatItsReceiverRefused) {
    FailingLineReceiver lines(1);
    Base64EncodingLineMaker maker(lines);
    maker.Start();
    std::string const bytes = MakeNoise(100);
    EXPECT_THROW(maker.Receive(MakeConstData(bytes)), NotANumeral);
    EXPECT_EQ(lines.record, "<0 ");
    maker.Receive("foo"_data);
    maker.ReceiveEnd();
    EXPECT_EQ(lines.record, "<0 Zm9v 68>") << "64 characters were sent before";
}

TEST(Base64EncodingLineMaker, GoesOnBehindALineBreakThatItsReceiverRefused) {
    FailingLineReceiver lines(2);
    Base64EncodingLineMaker maker(lines);
    maker.Start();
    std::string const line(48, '\0');
    EXPECT_THROW(maker.Receive(MakeConstData(line)), NotANumeral);
    maker.Receive(MakeConstData(line));
    maker.Receive("f"_data);
    maker.ReceiveEnd();
    std::string const text(64, 'A');
    EXPECT_EQ(lines.record, "<0 " + text + text + "[129,130]Zg== 134>");
}

TEST(Base64EncodingLineMaker, EndsAfterALastLineThatItsReceiverRefused) {
    FailingLineReceiver lines(1);
    Base64EncodingLineMaker maker(lines);
    maker.Start();
    maker.Receive("f"_data);
    EXPECT_THROW(maker.ReceiveEnd(), NotANumeral);
    EXPECT_EQ(lines.record, "<0 ");
    maker.ReceiveEnd();
    EXPECT_EQ(lines.record, "<0  4>");
}

TEST(Base64EncodingLineMaker, BeginsAnewAtEachStart) {
    RecordingLineReceiver lines;
    Base64EncodingLineMaker maker(lines);
    maker.Start();
    maker.Receive("lost"_data);
    lines.record.clear();
    StartReceiveAndEnd(maker, "foo"_data);
    EXPECT_EQ(lines.record, "<0 Zm9v 4>");

    RecordingLineReceiver other;
    StartReceiveAndEnd(maker(other), "f"_data);
    EXPECT_EQ(other.record, "<0 Zg== 4>");
}

TEST(Base64DecodingDataMaker, DecodesLinesToBytes) {
    std::string const text = "VGhl\r\nIHF1aWNr\nIGJyb3duIGZ\rveA==";
    ForEveryCut(MakeConstData(text), [&](Feed const& feed) {
        RecordingDataReceiver receiver;
        Base64DecodingDataMaker decoding(receiver);
        LineMaker lines(decoding);
        lines.Start();
        feed([&](ConstData piece) { lines.Receive(piece); });
        lines.ReceiveEnd();
        EXPECT_EQ(receiver.record, "<The quick brown fox>");
    });
}

TEST(Base64DecodingDataMaker, HandsEachPieceOnAtOnce) {
    RecordingDataReceiver receiver;
    Base64DecodingDataMaker decoding(receiver);
    decoding.Start(0);
    decoding.Receive("Zm9v"_data);
    EXPECT_EQ(receiver.record, "<foo");
    decoding.ReceiveLineBreak({4, 5});
    EXPECT_EQ(receiver.record, "<foo");
}

TEST(Base64DecodingDataMaker, BeginsAnewAtEachStart) {
    RecordingDataReceiver receiver;
    Base64DecodingDataMaker decoding(receiver);
    decoding.Start(0);
    decoding.Receive("Z"_data);
    decoding.Start(0);
    decoding.Receive("Zm9v"_data);
    decoding.ReceiveEnd(4);
    EXPECT_EQ(receiver.record, "<<foo>");

    RecordingDataReceiver other;
    decoding(other).Start(0);
    EXPECT_EQ(other.record, "<");
}

TEST(Base64DecodingDataMaker, TakesLongLines) {
    std::string const bytes = MakeNoise(50000);
    RecordingDataReceiver receiver;
    Base64DecodingDataMaker decoding(receiver);
    LineMaker lines(decoding);
    std::string const text = Encoded(bytes);
    StartReceiveAndEnd(lines, MakeConstData(text));
    EXPECT_TRUE(receiver.record == "<" + bytes + ">");
}
