#include "foundation/DataReceiver.h"
#include "foundation/ConstDataRope.h"
#include "foundation/IgnoreDataReceiver.h"
#include "foundation/StartReceiveAndEnd.h"
#include "foundation/StringReceiver.h"
#include "foundation/TextDataReceiver.h"
#include "foundation/VectorAppender.h"
#include "text/AsciiFilters.h"
#include "text/UString.h"

#include "tests/foundation/StreamSupport.h"
#include "tests/support/UStringPrinting.h"

#include <gtest/gtest.h>

namespace {

class BareReceiver : public DataReceiver {
public:
    void Receive(ConstData data) override { record += MakeString(data); }

    std::string record;
};

} // namespace

TEST(DataReceiver, DoesNothingAtStartAndEndByDefault) {
    BareReceiver receiver;
    receiver.Start();
    receiver.ReceiveEnd();
    EXPECT_EQ(receiver.record, "");
}

TEST(DataReceiver, TakesWhatIsWrittenToIt) {
    BareReceiver receiver;
    DataWriter& writer = receiver;
    writer << "ab"_data
           << "cd"_data;
    EXPECT_EQ(receiver.record, "abcd");
}

TEST(DataReceiver, ReceivesEachPieceOfARope) {
    ConstDataRope const last("ef"_data);
    ConstDataRope const middle(ConstData(), last);
    ConstDataRope const first("abcd"_data, middle);
    RecordingDataReceiver receiver;
    receiver.Receive(ConstDataRopeReference(first));
    EXPECT_EQ(receiver.record, "abcdef");
    EXPECT_EQ(receiver.chunks, (std::vector<std::size_t>{4, 0, 2}));
    receiver.Receive(ConstDataRopeReference());
    EXPECT_EQ(receiver.chunks.size(), 3u);
}

TEST(DataReceiver, IgnoreIsOneSharedReceiver) {
    DataReceiver& ignore = DataReceiver::Ignore();
    EXPECT_EQ(&ignore, &DataReceiver::Ignore());
    EXPECT_TRUE(dynamic_cast<IgnoreDataReceiver*>(&ignore));
    ignore.Start();
    ignore.Receive("lost"_data);
    ignore << "lost"_data;
    ignore.ReceiveEnd();
}

TEST(ConstDataRopeReference, WalksTheChain) {
    ConstDataRope const last("b"_data);
    ConstDataRope const first("a"_data, last);
    ConstDataRopeReference rope = first;
    EXPECT_FALSE(rope.empty());
    EXPECT_TRUE(rope.Piece() == "a"_data);
    rope = rope.Rest();
    EXPECT_TRUE(rope.Piece() == "b"_data);
    EXPECT_TRUE(rope.Rest().empty());
    EXPECT_TRUE(ConstDataRopeReference().empty());
}

TEST(StartReceiveAndEnd, MakesAWholeStream) {
    RecordingDataReceiver receiver;
    StartReceiveAndEnd(receiver, "abc"_data);
    EXPECT_EQ(receiver.record, "<abc>");
    EXPECT_EQ(receiver.chunks.size(), 1u);
}

TEST(StartReceiveAndEnd, ReceivesEvenNothingOnce) {
    RecordingDataReceiver receiver;
    StartReceiveAndEnd(receiver, ConstData());
    EXPECT_EQ(receiver.record, "<>");
    EXPECT_EQ(receiver.chunks.size(), 1u);
}

TEST(StartReceiveAndEnd, TakesARope) {
    ConstDataRope const last("def"_data);
    ConstDataRope const first("abc"_data, last);
    RecordingDataReceiver receiver;
    StartReceiveAndEnd(receiver, ConstDataRopeReference(first));
    EXPECT_EQ(receiver.record, "<abcdef>");
}

TEST(StartReceiveAndEnd, RunsThroughAFilter) {
    ConstDataRope const last("def"_data);
    ConstDataRope const first("abc"_data, last);
    Ascii::CaseRaisingFilter raising;
    RecordingDataReceiver receiver;
    StartReceiveAndEnd(receiver, "xyz"_data, raising);
    StartReceiveAndEnd(receiver, ConstDataRopeReference(first), raising);
    EXPECT_EQ(receiver.record, "<XYZ><ABCDEF>");
}

TEST(VectorAppender, AppendsBehindWhatIsThere) {
    std::vector<unsigned char> target = {'x'};
    VectorAppender appender;
    appender.Receive("dropped"_data);
    appender(target).Receive("ab"_data);
    appender.ReceiveEnd();
    appender.Start();
    appender << ConstData() << "c"_data;
    EXPECT_EQ(target, (std::vector<unsigned char>{'x', 'a', 'b', 'c'}));

    std::vector<unsigned char> other;
    appender(other);
    StartReceiveAndEnd(appender, "z"_data);
    EXPECT_EQ(other, (std::vector<unsigned char>{'z'}));
    EXPECT_EQ(target.size(), 4u);
}

TEST(StringReceiver, CollectsOneStream) {
    std::string target = "old";
    StringReceiver receiver(target);
    receiver.Start();
    EXPECT_EQ(target, "");
    receiver.Receive("ab"_data);
    receiver.Receive(ConstData());
    receiver.Receive("\0c"_data);
    receiver.ReceiveEnd();
    EXPECT_EQ(target, std::string("ab\0c", 4));
}

TEST(TextDataReceiver, HandsBytesToAReceiverOfText) {
    CopiedUString<UTF8> target("old"_utf8);
    UStringReceiver<CopiedUString<UTF8>> text(target);
    TextDataReceiver receiver(text);
    receiver.Start();
    receiver.Receive("ab"_data);
    receiver.Receive("\xc3\xa4"_data);
    EXPECT_EQ(target, "old"_utf8);
    receiver.ReceiveEnd();
    EXPECT_EQ(target, "ab\xc3\xa4"_utf8);
}
