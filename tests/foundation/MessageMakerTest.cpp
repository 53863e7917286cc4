#include "foundation/MessageMaker.h"
#include "foundation/HeaderMaker.h"
#include "foundation/LineMaker.h"
#include "foundation/StartReceiveAndEnd.h"
#include "text/UString.h"

#include "tests/foundation/StreamSupport.h"

#include <gtest/gtest.h>

namespace {

// Writes down a message: "{name:" and the value and "}" for a field, "|5|" for the end of the header,
// "[6,7]" for a line break of the body. Fields named "secret" are dropped.
class RecordingMessageReceiver : public MessageReceiver {
public:
    void Start(unsigned long position) override { record += '<' + std::to_string(position) + ' '; }
    DataReceiver& ReceiveField(ConstData name) override {
        if (name == "secret"_data) return DataReceiver::Ignore();
        record += '{' + MakeString(name) + ':';
        return m_value;
    }
    void ReceiveHeaderEnd(unsigned long position) override { record += '|' + std::to_string(position) + '|'; }
    void Receive(ConstData text) override { record += MakeString(text); }
    void ReceiveLineBreak(Range<unsigned long> lineBreak) override {
        record += '[' + std::to_string(lineBreak.begin) + ',' + std::to_string(lineBreak.end) + ']';
    }
    void ReceiveEnd(unsigned long position) override { record += ' ' + std::to_string(position) + '>'; }

    std::string record;

private:
    class Value : public DataReceiver {
    public:
        explicit Value(std::string& record) : m_record(record) {}
        void Start() override { m_record += '('; }
        void Receive(ConstData data) override { m_record += MakeString(data); }
        void ReceiveEnd() override { m_record += ")}"; }

    private:
        std::string& m_record;
    };

    Value m_value{record};
};

struct MessageCase {
    std::string stream;
    std::string record;
};

void ExpectMessage(MessageCase const& message) {
    ForEveryCut(MakeConstData(message.stream), [&](Feed const& feed) {
        RecordingMessageReceiver receiver;
        MessageMaker messages(receiver);
        LineMaker lines(messages);
        lines.Start();
        feed([&](ConstData piece) { lines.Receive(piece); });
        lines.ReceiveEnd();
        EXPECT_EQ(receiver.record, message.record) << message.stream;
    });
}

// The record of `stream` after another stream that broke off behind `begun`.
std::string RecordAfterAbort(ConstData begun, ConstData stream) {
    RecordingMessageReceiver receiver;
    MessageMaker messages(receiver);
    LineMaker lines(messages);
    lines.Start();
    lines.Receive(begun);
    receiver.record.clear();
    StartReceiveAndEnd(lines, stream);
    return receiver.record;
}

std::string const cLongestName(64, 'N');
std::string const cLongestNameLowered(64, 'n');

} // namespace

TEST(MessageMaker, SplitsHeaderAndBodyAtTheFirstEmptyLine) {
    ExpectMessage({"A: 1\nB: 2\n\nbody\n\nmore\n", "<0 {a:(1)}{b:(2)}|11|body[15,16][16,17]more[21,22] 22>"});
    ExpectMessage({"A: 1\r\n\r\nbody", "<0 {a:(1)}|8|body 12>"});
    ExpectMessage({"A: 1\n\n", "<0 {a:(1)}|6| 6>"});
    ExpectMessage({"A: 1\n\nB: 2", "<0 {a:(1)}|6|B: 2 10>"});
}

TEST(MessageMaker, TakesAnEmptyFirstLineAsAHeaderWithoutFields) {
    ExpectMessage({"\nbody: text", "<0 |1|body: text 11>"});
    ExpectMessage({"\n", "<0 |1| 1>"});
}

TEST(MessageMaker, EndsTheHeaderWithTheStream) {
    ExpectMessage({"A: 1\nB: 2\n", "<0 {a:(1)}{b:(2)}|10| 10>"});
    ExpectMessage({"A: 1", "<0 {a:(1)}|4| 4>"});
    ExpectMessage({"", "<0 |0| 0>"});
}

TEST(MessageMaker, DoesNotTakeALineOfWhiteSpaceAsEmpty) {
    ExpectMessage({"A: 1\n \t\nB: 2\n\nx", "<0 {a:(1)}{b:(2)}|14|x 15>"});
}

TEST(HeaderMaker, LowersTheNameAndLeavesTheValue) {
    ExpectMessage({"Content-TYPE: Text/Plain; A=B", "<0 {content-type:(Text/Plain; A=B)}|29| 29>"});
}

TEST(HeaderMaker, EatsWhiteSpaceAroundTheColon) {
    ExpectMessage({"A:1", "<0 {a:(1)}|3| 3>"});
    ExpectMessage({"A \t: \t 1 ", "<0 {a:(1 )}|9| 9>"});
    ExpectMessage({"A:", "<0 {a:()}|2| 2>"});
    ExpectMessage({"A:  \n", "<0 {a:()}|5| 5>"});
}

TEST(HeaderMaker, SplitsAtTheFirstColon) {
    ExpectMessage({"Time: 12:30:00", "<0 {time:(12:30:00)}|14| 14>"});
}

TEST(HeaderMaker, FoldsContinuationsIntoOneSpace) {
    ExpectMessage({"A: one\n two\n\t  three\nB: 2\n", "<0 {a:(one two three)}{b:(2)}|26| 26>"});
    ExpectMessage({"A:\r\n one\r\n two", "<0 {a:(one two)}|14| 14>"});
    ExpectMessage({"A: one\n \n two", "<0 {a:(one two)}|13| 13>"});
    ExpectMessage({"A: one\n ", "<0 {a:(one)}|8| 8>"});
    ExpectMessage({"A: one\n b: two", "<0 {a:(one b: two)}|14| 14>"});
}

TEST(HeaderMaker, DropsContinuationsOfNothing) {
    ExpectMessage({" lost\nA: 1", "<0 {a:(1)}|10| 10>"});
}

TEST(HeaderMaker, DropsLinesWithoutAName) {
    ExpectMessage({"no colon\nA: 1", "<0 {a:(1)}|13| 13>"});
    ExpectMessage({"A: 1\nno colon\n lost\nB: 2", "<0 {a:(1)}{b:(2)}|24| 24>"});
    ExpectMessage({": lost\n lost\nA: 1", "<0 {a:(1)}|17| 17>"});
    ExpectMessage({"A: 1\n: lost\n lost\n", "<0 {a:(1)}|18| 18>"});
}

TEST(HeaderMaker, DropsLinesWhoseNameDoesNotFit) {
    ExpectMessage({cLongestName + ": v\n", "<0 {" + cLongestNameLowered + ":(v)}|68| 68>"});
    ExpectMessage({cLongestName + "N: v: w\n lost\nA: 1\n", "<0 {a:(1)}|83| 83>"});
}

TEST(HeaderMaker, CountsTheWhiteSpaceBehindTheName) {
    std::string const spaces(63, ' ');
    ExpectMessage({"N" + spaces + ": v\n", "<0 {n:(v)}|68| 68>"});
    ExpectMessage({"N" + spaces + "\t: v\nA: 1\n", "<0 {a:(1)}|74| 74>"});
    ExpectMessage({cLongestName + " : v\nA: 1\n", "<0 {a:(1)}|74| 74>"});
}

TEST(HeaderMaker, LetsTheReceiverDropAField) {
    ExpectMessage({"Secret: x\n y\nA: 1", "<0 {a:(1)}|17| 17>"});
}

TEST(HeaderMaker, WorksOnItsOwn) {
    RecordingMessageReceiver receiver;
    HeaderMaker header(receiver);
    LineMaker lines(header);
    StartReceiveAndEnd(lines, "A: 1\nB: 2\n"_data);
    StartReceiveAndEnd(lines, " lost\nC: 3"_data);
    EXPECT_EQ(receiver.record, "{a:(1)}{b:(2)}{c:(3)}");
}

TEST(MessageMaker, BeginsAnewAtEachStart) {
    RecordingMessageReceiver receiver;
    MessageMaker messages(receiver);
    LineMaker lines(messages);
    StartReceiveAndEnd(lines, "A: 1\n\nbody"_data);
    receiver.record.clear();
    StartReceiveAndEnd(lines, "B: 2\n\nbody"_data);
    EXPECT_EQ(receiver.record, "<0 {b:(2)}|6|body 10>");
}

TEST(MessageMaker, BeginsAnewAfterAStreamThatBrokeOff) {
    for (char const* const begun :
         {"A", "A ", "A:", "A: ", "A: 1", "A: 1\n", "A: 1\n ", "A: 1\n x", "A: 1\nB", " ", "A: 1\n\n",
          "A: 1\n\nbody", "no colon\n", ":", ": lost"}) {
        ConstData const before = MakeUTF8Ref(begun);
        EXPECT_EQ(RecordAfterAbort(before, "B: 2\n\nbody"_data), "<0 {b:(2)}|6|body 10>") << begun;
        EXPECT_EQ(RecordAfterAbort(before, " lost\nB: 2"_data), "<0 {b:(2)}|10| 10>") << begun;
        EXPECT_EQ(RecordAfterAbort(before, "\nbody"_data), "<0 |1|body 5>") << begun;
        EXPECT_EQ(RecordAfterAbort(before, ConstData()), "<0 |0| 0>") << begun;
    }
}

TEST(MessageMaker, TakesALineOfEmptyPiecesAsEmpty) {
    RecordingMessageReceiver receiver;
    MessageMaker messages(receiver);
    messages.Start(0);
    messages.Receive("A: 1"_data);
    messages.Receive(ConstData());
    messages.ReceiveLineBreak({4, 5});
    messages.Receive(ConstData());
    messages.ReceiveLineBreak({5, 6});
    messages.Receive("body"_data);
    messages.ReceiveEnd(10);
    EXPECT_EQ(receiver.record, "<0 {a:(1)}|6|body 10>");
}

TEST(MessageReceiver, DropsEverythingByDefault) {
    MessageReceiver receiver;
    MessageMaker messages(receiver);
    LineMaker lines(messages);
    EXPECT_NO_THROW(StartReceiveAndEnd(lines, "A: 1\n\nbody\nmore"_data));
    EXPECT_EQ(&receiver.ReceiveField("a"_data), &DataReceiver::Ignore());
}
