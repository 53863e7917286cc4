#include "foundation/LineMaker.h"
#include "foundation/Exceptions.h"
#include "foundation/LineFlattener.h"
#include "foundation/RemoveLineBreaks.h"
#include "foundation/StartReceiveAndEnd.h"
#include "text/UString.h"

#include "tests/foundation/StreamSupport.h"
#include "tests/support/UStringPrinting.h"

#include <gtest/gtest.h>

#include <iterator>

namespace {

struct LineCase {
    char const* stream;
    char const* record;
};

// Throws at its first line break.
class FailingLineReceiver : public RecordingLineReceiver {
public:
    void ReceiveLineBreak(Range<unsigned long> lineBreak) override {
        if (!m_failed) {
            m_failed = true;
            throw NoMoreData();
        }
        RecordingLineReceiver::ReceiveLineBreak(lineBreak);
    }

private:
    bool m_failed = false;
};

std::string Flattened(ConstData stream, ConstData separator) {
    RecordingDataReceiver receiver;
    LineFlattener flattener(receiver, separator);
    LineMaker maker(flattener);
    StartReceiveAndEnd(maker, stream);
    return receiver.record;
}

} // namespace

TEST(LineMaker, CutsLinesHoweverTheStreamIsCut) {
    LineCase const cases[] = {
        {"", "<0  0>"},
        {"abc", "<0 abc 3>"},
        {"abc\n", "<0 abc[3,4] 4>"},
        {"abc\r", "<0 abc[3,4] 4>"},
        {"abc\r\n", "<0 abc[3,5] 5>"},
        {"\r\n", "<0 [0,2] 2>"},
        {"\n\r", "<0 [0,1][1,2] 2>"},
        {"\r\r", "<0 [0,1][1,2] 2>"},
        {"\n\n", "<0 [0,1][1,2] 2>"},
        {"\r\r\n", "<0 [0,1][1,3] 3>"},
        {"\r\n\r\n", "<0 [0,2][2,4] 4>"},
        {"\r\n\n", "<0 [0,2][2,3] 3>"},
        {"\n\r\n", "<0 [0,1][1,3] 3>"},
        {"a\nb\rc\r\nd\n\re", "<0 a[1,2]b[3,4]c[5,7]d[8,9][9,10]e 11>"},
        {"one\r\ntwo\nthree", "<0 one[3,5]two[8,9]three 14>"},
        {"\nabc", "<0 [0,1]abc 4>"},
    };
    for (LineCase const& each : cases) {
        ForEveryCut(MakeUTF8Ref(each.stream), [&](Feed const& feed) {
            RecordingLineReceiver lines;
            LineMaker maker(lines);
            maker.Start();
            feed([&](ConstData piece) { maker.Receive(piece); });
            maker.ReceiveEnd();
            EXPECT_EQ(lines.record, each.record);
        });
    }
}

TEST(LineMaker, GivesTextWithoutABreakInOnePiece) {
    RecordingLineReceiver lines;
    LineMaker maker(lines);
    StartReceiveAndEnd(maker, "no break here"_data);
    EXPECT_EQ(lines.record, "<0 no break here 13>");
    EXPECT_EQ(lines.pieces, 1);
}

TEST(LineMaker, GivesEachLineOfOneChunkInOnePiece) {
    RecordingLineReceiver lines;
    LineMaker maker(lines);
    StartReceiveAndEnd(maker, "ab\r\ncd\n\nef"_data);
    EXPECT_EQ(lines.pieces, 3);
}

TEST(LineMaker, KeepsABreakUntilTheByteBehindItComes) {
    RecordingLineReceiver lines;
    LineMaker maker(lines);
    maker.Start();
    maker.Receive("ab\r"_data);
    EXPECT_EQ(lines.record, "<0 ab");
    maker.Receive(ConstData());
    EXPECT_EQ(lines.record, "<0 ab");
    maker.Receive("\n"_data);
    EXPECT_EQ(lines.record, "<0 ab[2,4]");
    maker.Receive("\n"_data);
    EXPECT_EQ(lines.record, "<0 ab[2,4]");
    maker.ReceiveEnd();
    EXPECT_EQ(lines.record, "<0 ab[2,4][4,5] 5>");
}

TEST(LineMaker, BeginsAnewAtEachStart) {
    RecordingLineReceiver lines;
    LineMaker maker(lines);
    maker.Start();
    maker.Receive("ab\r"_data);
    lines.record.clear();
    StartReceiveAndEnd(maker, "\nx"_data);
    EXPECT_EQ(lines.record, "<0 [0,1]x 2>");
}

TEST(LineMaker, GoesToTheReceiverBoundLast) {
    RecordingLineReceiver first;
    RecordingLineReceiver second;
    LineMaker maker(first);
    StartReceiveAndEnd(maker(second), "ab"_data);
    EXPECT_EQ(first.record, "");
    EXPECT_EQ(second.record, "<0 ab 2>");
}

TEST(LineMaker, LetsTheFailureOfItsReceiverThrough) {
    FailingLineReceiver lines;
    LineMaker maker(lines);
    maker.Start();
    EXPECT_THROW(maker.Receive("a\nb"_data), NoMoreData);
    EXPECT_EQ(lines.record, "<0 a");
    // The break counts as reported; what stood behind it in the chunk is gone.
    maker.Receive("cd\n"_data);
    maker.ReceiveEnd();
    EXPECT_EQ(lines.record, "<0 acd[4,5] 5>");
}

TEST(LineMaker, CountsBothBytesOfABreakThatItsReceiverRefused) {
    FailingLineReceiver lines;
    LineMaker maker(lines);
    maker.Start();
    maker.Receive("a\r"_data);
    EXPECT_THROW(maker.Receive("\nb"_data), NoMoreData);
    maker.Receive("cd\r\n"_data);
    maker.ReceiveEnd();
    EXPECT_EQ(lines.record, "<0 acd[5,7] 7>");
}

TEST(LineMaker, CountsTextThatItsReceiverRefused) {
    class TextRefuser : public RecordingLineReceiver {
    public:
        void Receive(ConstData text) override {
            if (text == "abc"_data) throw NoMoreData();
            RecordingLineReceiver::Receive(text);
        }
    };
    TextRefuser lines;
    LineMaker maker(lines);
    maker.Start();
    EXPECT_THROW(maker.Receive("abc\nde"_data), NoMoreData);
    maker.Receive("f\n"_data);
    maker.ReceiveEnd();
    EXPECT_EQ(lines.record, "<0 f[4,5] 5>");
}

TEST(LineMaker, FindsTheBreaksOfLongStreams) {
    std::string stream;
    std::string expected;
    for (int line = 0; line < 5000; ++line) {
        std::string const text(static_cast<std::size_t>(line % 90), 'x');
        stream += text + (line % 3 == 0 ? "\r\n" : line % 3 == 1 ? "\n" : "\r");
        expected += text + "|";
        stream += "y";
        expected += "y";
    }
    EXPECT_TRUE(Flattened(MakeConstData(stream), "|"_data) == "<" + expected + ">");
}

TEST(LineFlattener, PutsASeparatorInThePlaceOfEachBreak) {
    EXPECT_EQ(Flattened("a\r\nb\n\nc"_data, LineFlattener::lf), "<a\nb\n\nc>");
    EXPECT_EQ(Flattened("a\r\nb\n\nc\r"_data, LineFlattener::space), "<a b  c >");
    EXPECT_EQ(Flattened("a\nb"_data, ConstData()), "<ab>");
    EXPECT_EQ(Flattened(ConstData(), LineFlattener::lf), "<>");
}

TEST(LineFlattener, GoesToTheReceiverBoundLast) {
    RecordingDataReceiver first;
    RecordingDataReceiver second;
    LineFlattener flattener(first, LineFlattener::lf);
    LineMaker maker(flattener(second, LineFlattener::space));
    StartReceiveAndEnd(maker, "a\nb"_data);
    EXPECT_EQ(first.record, "");
    EXPECT_EQ(second.record, "<a b>");
}

TEST(RemoveLineBreaks, PutsOneSpaceInThePlaceOfEachBreak) {
    EXPECT_EQ(RemoveLineBreaks("one\r\ntwo\nthree\rfour"_utf8), "one two three four"_utf8);
    EXPECT_EQ(RemoveLineBreaks("\n\n"_utf8), "  "_utf8);
    EXPECT_EQ(RemoveLineBreaks("\n\r"_utf8), "  "_utf8);
    EXPECT_EQ(RemoveLineBreaks("none"_utf8), "none"_utf8);
    EXPECT_EQ(RemoveLineBreaks("gr\xc3\xbc\n\xc3\x9f"_utf8), "gr\xc3\xbc \xc3\x9f"_utf8);
    EXPECT_TRUE(RemoveLineBreaks(UStringRef<UTF8>()).empty());
}

TEST(RemoveLineBreaks, DoesTheSameInTheWiderForms) {
    UTF16::Unit const utf16[] = {'a', '\r', '\n', 0xFC, '\n', '\r', 0xD83D, 0xDE00, '\n'};
    UTF16::Unit const flat16[] = {'a', ' ', 0xFC, ' ', ' ', 0xD83D, 0xDE00, ' '};
    EXPECT_EQ(RemoveLineBreaks(UStringRef<UTF16>(UTF16(), std::begin(utf16), std::end(utf16))),
              UStringRef<UTF16>(UTF16(), std::begin(flat16), std::end(flat16)));
    UTF32::Unit const utf32[] = {'\r', 0x1F600, '\r', '\n', 'z'};
    UTF32::Unit const flat32[] = {' ', 0x1F600, ' ', 'z'};
    EXPECT_EQ(RemoveLineBreaks(UStringRef<UTF32>(UTF32(), std::begin(utf32), std::end(utf32))),
              UStringRef<UTF32>(UTF32(), std::begin(flat32), std::end(flat32)));
    EXPECT_TRUE(RemoveLineBreaks(UStringRef<UTF16>()).empty());
    EXPECT_TRUE(RemoveLineBreaks(UStringRef<UTF32>()).empty());
}

TEST(RemoveLineBreaks, RefusesWiderUnitsThatAreNoText) {
    UTF16::Unit const half = 0xD800;
    EXPECT_THROW(RemoveLineBreaks(UStringRef<UTF16>(UTF16(), &half, &half + 1)), InvalidTextEncoding);
    UTF32::Unit const tooHigh = 0x110000;
    EXPECT_THROW(RemoveLineBreaks(UStringRef<UTF32>(UTF32(), &tooHigh, &tooHigh + 1)), InvalidTextEncoding);
}
