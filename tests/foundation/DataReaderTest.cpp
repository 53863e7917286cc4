#include "foundation/DataReader.h"
#include "foundation/EmptyDataReader.h"
#include "foundation/Exceptions.h"
#include "foundation/ReadReader.h"
#include "text/UString.h"

#include "tests/foundation/StreamSupport.h"
#include "tests/support/UStringPrinting.h"

#include <gtest/gtest.h>

namespace {

// Takes itself for unfinished for ever, and gives nothing behind its text.
class ShrunkReader : public StringReader {
public:
    using StringReader::StringReader;
    bool Unfinished() const override { return true; }
};

// Fails when it is asked for bytes a second time.
class FailingReader : public StringReader {
public:
    using StringReader::StringReader;
    using StringReader::operator>>;
    DataReader& operator>>(Buffer& target) override {
        if (m_asked) throw NotANumeral();
        m_asked = true;
        return StringReader::operator>>(target);
    }

private:
    bool m_asked = false;
};

class FailingReceiver : public RecordingDataReceiver {
public:
    using RecordingDataReceiver::Receive;
    void Receive(ConstData) override { throw NotANumeral(); }
};

class CountingReader : public StringReader {
public:
    using StringReader::StringReader;
    using StringReader::operator>>;
    DataReader& operator>>(Buffer& target) override {
        ++calls;
        return StringReader::operator>>(target);
    }

    int calls = 0;
};

class FieldsAndBody : public MessageReceiver {
public:
    DataReceiver& ReceiveField(ConstData name) override {
        m_record += MakeString(name) + "=";
        return m_value;
    }
    void Receive(ConstData text) override { m_record += MakeString(text); }

    std::string const& Record() const { return m_record; }

private:
    class Value : public DataReceiver {
    public:
        explicit Value(std::string& record) : m_record(record) {}
        void Receive(ConstData data) override { m_record += MakeString(data); }
        void ReceiveEnd() override { m_record += ';'; }

    private:
        std::string& m_record;
    };

    std::string m_record;
    Value m_value{m_record};
};

} // namespace

TEST(DataReader, FillsARangeFromSeveralReads) {
    StringReader reader("abcdefghijkl", 5);
    unsigned char room[11];
    reader >> Data(room, room + 11);
    EXPECT_TRUE(ConstData(room, room + 11) == "abcdefghijk"_data);
    EXPECT_TRUE(reader.Unfinished());
    EXPECT_FALSE(reader.Finished());
    reader >> Data(room, room + 1);
    EXPECT_EQ(room[0], 'l');
    EXPECT_TRUE(reader.Finished());
}

TEST(DataReader, ThrowsWhenTheBytesEndBeforeTheRange) {
    StringReader reader("abc");
    unsigned char room[4] = {};
    EXPECT_THROW(reader >> Data(room, room + 4), NoMoreData);
    EXPECT_TRUE(ConstData(room, room + 3) == "abc"_data);
}

TEST(DataReader, FillsAnEmptyRangeAtTheEnd) {
    StringReader reader("");
    EXPECT_NO_THROW(reader >> Data());
}

TEST(DataReader, ReadsAgainAfterAReset) {
    StringReader reader("abc");
    unsigned char room[3];
    reader >> Data(room, room + 3);
    reader.Reset();
    room[0] = 0;
    reader >> Data(room, room + 3);
    EXPECT_TRUE(ConstData(room, room + 3) == "abc"_data);
}

TEST(DataReader, DoesNotWaitForBytesThatNeverCome) {
    ShrunkReader reader("abc");
    unsigned char room[4];
    EXPECT_THROW(reader >> Data(room, room + 4), NoMoreData);
    EXPECT_TRUE(ConstData(room, room + 3) == "abc"_data);
}

TEST(DataReader, IsNotAskedForBytesThatHaveNoRoom) {
    CountingReader reader("abc", 2);
    reader >> Data();
    EXPECT_EQ(reader.calls, 0);
    unsigned char room[2];
    reader >> Data(room, room + 2);
    EXPECT_EQ(reader.calls, 1);
    EXPECT_TRUE(reader.Unfinished());
}

TEST(EmptyDataReader, IsAlwaysFinished) {
    EmptyDataReader reader;
    unsigned char room[2];
    Buffer buffer(Data(room, room + 2));
    EXPECT_TRUE(reader.Finished());
    EXPECT_FALSE(reader.Unfinished());
    reader >> buffer;
    EXPECT_TRUE(buffer.Written().empty());
    reader.Reset();
    EXPECT_TRUE(reader.Finished());
    EXPECT_THROW(reader >> Data(room, room + 1), NoMoreData);
    EXPECT_NO_THROW(reader >> Data());
}

TEST(ReadReader, PumpsChunksBetweenStartAndEnd) {
    StringReader reader("abcdefg", 3);
    RecordingDataReceiver receiver;
    ReadReader(reader, receiver);
    EXPECT_EQ(receiver.record, "<abcdefg>");
    EXPECT_EQ(receiver.chunks, (std::vector<std::size_t>{3, 3, 1}));
}

TEST(ReadReader, StartsAndEndsForAnEmptyReader) {
    EmptyDataReader reader;
    RecordingDataReceiver receiver;
    ReadReader(reader, receiver);
    EXPECT_EQ(receiver.record, "<>");
    EXPECT_TRUE(receiver.chunks.empty());
}

TEST(ReadReader, DoesNotEndASourceThatIsCutShort) {
    ShrunkReader some("abcdefg", 3);
    RecordingDataReceiver receiver;
    EXPECT_THROW(ReadReader(some, receiver), NoMoreData);
    EXPECT_EQ(receiver.record, "<abcdefg");

    ShrunkReader none("");
    RecordingDataReceiver nothing;
    EXPECT_THROW(ReadReader(none, nothing), NoMoreData);
    EXPECT_EQ(nothing.record, "<");
    EXPECT_TRUE(nothing.chunks.empty());
}

TEST(ReadReader, TellsOfASourceThatIsCutShortInEveryForm) {
    RecordingLineReceiver lines;
    FieldsAndBody message;
    ShrunkReader reader("ab\ncd");
    EXPECT_THROW(ReadReader(reader, lines), NoMoreData);
    EXPECT_EQ(lines.record, "<0 ab[2,3]cd");
    reader.Reset();
    EXPECT_THROW(ReadReader(reader, message), NoMoreData);
    reader.Reset();
    EXPECT_THROW(ReadReader(reader), NoMoreData);
    reader.Reset();
    EXPECT_THROW(ReadUReader(reader), NoMoreData);
}

TEST(ReadReader, DoesNotEndWhatFailed) {
    FailingReader failingReader("abcdef", 3);
    RecordingDataReceiver receiver;
    EXPECT_THROW(ReadReader(failingReader, receiver), NotANumeral);
    EXPECT_EQ(receiver.record, "<abc");

    StringReader reader("abcdef", 3);
    FailingReceiver failingReceiver;
    EXPECT_THROW(ReadReader(reader, failingReceiver), NotANumeral);
    EXPECT_EQ(failingReceiver.record, "<");
}

TEST(ReadReader, CutsLines) {
    StringReader reader("ab\r\ncd\n", 3);
    RecordingLineReceiver lines;
    ReadReader(reader, lines);
    EXPECT_EQ(lines.record, "<0 ab[2,4]cd[6,7] 7>");
}

TEST(ReadReader, ReadsMessages) {
    StringReader reader("To: me\nSubject: hello\n\nbody", 4);
    FieldsAndBody message;
    ReadReader(reader, message);
    EXPECT_EQ(message.Record(), "to=me;subject=hello;body");
}

TEST(ReadReader, GivesTheWholeContent) {
    std::string const content = MakeNoise(20000);
    StringReader reader(content, 7777);
    std::vector<unsigned char> const bytes = ReadReader(reader);
    EXPECT_TRUE(std::string(bytes.begin(), bytes.end()) == content);
    EXPECT_TRUE(ReadReader(reader).empty());
}

TEST(ReadUReader, GivesTheWholeContentAsText) {
    StringReader reader("gr\xc3\xbc\xc3\x9f"
                        "e",
                        2);
    EXPECT_EQ(ReadUReader(reader), "gr\xc3\xbc\xc3\x9f"
                                   "e"_utf8);
    EmptyDataReader empty;
    EXPECT_TRUE(ReadUReader(empty).empty());
}
