#include "foundation/ChecksumReceiver.h"
#include "foundation/StartReceiveAndEnd.h"

#include "tests/foundation/StreamSupport.h"

#include <gtest/gtest.h>

namespace {

std::uint32_t ChecksumOf(ConstData data) {
    ChecksumReceiver receiver;
    StartReceiveAndEnd(receiver, data);
    return receiver.Checksum();
}

} // namespace

TEST(ChecksumReceiver, HasTheRemaindersOfThePolynomialInItsTable) {
    ChecksumReceiver::Table const table = ChecksumReceiver::MakeTable();
    EXPECT_EQ(table[0], 0x00000000u);
    EXPECT_EQ(table[1], 0x04C11DB7u);
    EXPECT_EQ(table[2], 0x09823B6Eu);
    EXPECT_EQ(table[3], 0x0D4326D9u);
    EXPECT_EQ(table[128], 0x690CE0EEu);
    EXPECT_EQ(table[255], 0xB1F740B4u);
}

TEST(ChecksumReceiver, GivesTheKnownChecksum) {
    EXPECT_EQ(ChecksumOf("123456789"_data), 0xFC891918u);
    EXPECT_EQ(ChecksumOf(ConstData()), 0u);
}

TEST(ChecksumReceiver, CountsZerosAtTheFront) {
    EXPECT_NE(ChecksumOf("\0"_data), ChecksumOf("\0\0"_data));
}

TEST(ChecksumReceiver, DoesNotCareForTheChunks) {
    ForEveryCut("123456789"_data, [](Feed const& feed) {
        ChecksumReceiver receiver;
        receiver.Start();
        feed([&](ConstData piece) { receiver.Receive(piece); });
        receiver.ReceiveEnd();
        EXPECT_EQ(receiver.Checksum(), 0xFC891918u);
    });
}

TEST(ChecksumReceiver, BeginsAnewAtEachStart) {
    ChecksumReceiver receiver;
    receiver.Receive("garbage"_data);
    StartReceiveAndEnd(receiver, "123456789"_data);
    EXPECT_EQ(receiver.Checksum(), 0xFC891918u);
}
