#include "foundation/DataFilter.h"
#include "foundation/ApplyFilter.h"
#include "foundation/Base64Decoder.h"
#include "foundation/Base64Encoder.h"
#include "foundation/DataFilterer.h"
#include "foundation/Exceptions.h"
#include "text/AsciiFilters.h"
#include "text/UString.h"

#include "tests/foundation/StreamSupport.h"
#include "tests/support/UStringPrinting.h"

#include <gtest/gtest.h>

namespace {

// Writes each byte twice, and hands out an exclamation mark at each flush until `flushes` are used up.
class DoublingFilter : public DataFilter {
public:
    explicit DoublingFilter(int flushes) : m_flushes(flushes) {}

    using DataFilter::operator();
    void operator()(ConstBuffer& in, Buffer& out) override {
        while (!in.empty() && out.Room() >= 2) {
            unsigned char const byte = in.Take();
            out << byte << byte;
        }
    }
    bool Flushed() const override { return m_flushes == 0; }
    void Flush(Buffer& out) override {
        out << '!';
        --m_flushes;
    }

private:
    int m_flushes;
};

// Stops working behind a number of bytes: takes nothing, writes nothing and is never flushed.
class StallingFilter : public DataFilter {
public:
    explicit StallingFilter(int bytes) : m_left(bytes) {}

    using DataFilter::operator();
    void operator()(ConstBuffer& in, Buffer& out) override {
        for (; !in.empty() && !out.Full() && m_left > 0; --m_left) out << in.Take();
    }
    bool Flushed() const override { return false; }
    void Flush(Buffer& out) override {
        if (m_left > 0) out << '!';
        m_left = 0;
    }

private:
    int m_left;
};

// Takes its input without a word, and hands out all of it by flushing.
class HoardingFilter : public DataFilter {
public:
    using DataFilter::operator();
    void operator()(ConstBuffer& in, Buffer&) override {
        m_held += MakeString(in.Rest());
        in.Skip(in.Size());
    }
    bool Flushed() const override { return m_flushed; }
    void Flush(Buffer& out) override {
        out << MakeConstData(m_held);
        m_held.clear();
        m_flushed = out.Written().empty();
    }

private:
    std::string m_held;
    bool m_flushed = false;
};

std::string Doubled(std::string const& text) {
    std::string doubled;
    for (char const character : text) doubled.append(2, character);
    return doubled;
}

// Throws at the call number `last`.
class FailingReceiver : public RecordingDataReceiver {
public:
    explicit FailingReceiver(int last) : m_left(last) {}
    void Receive(ConstData data) override {
        if (--m_left == 0) throw NoMoreData();
        RecordingDataReceiver::Receive(data);
    }

private:
    int m_left;
};

} // namespace

TEST(DataFilter, CopyCopiesBytes) {
    unsigned char room[4];
    ConstBuffer in("abcdef"_data);
    Buffer out(Data(room, room + 4));
    DataFilter::copy(in, out);
    EXPECT_TRUE(out.Written() == "abcd"_data);
    EXPECT_TRUE(in.Rest() == "ef"_data);
}

TEST(DataFilter, HoldsNothingBackByDefault) {
    unsigned char room[4];
    Buffer out(Data(room, room + 4));
    EXPECT_TRUE(DataFilter::copy.Flushed());
    DataFilter::copy.Flush(out);
    EXPECT_TRUE(out.Written().empty());
}

TEST(DataFilter, WorksOnPlainRanges) {
    unsigned char room[4];
    Buffer out(Data(room, room + 4));
    EXPECT_TRUE(DataFilter::copy("abcdef"_data, out) == "ef"_data);
    EXPECT_TRUE(out.Written() == "abcd"_data);

    ConstBuffer in("uvwxyz"_data);
    EXPECT_TRUE(DataFilter::copy(in, Data(room, room + 4)) == "uvwx"_data);
    EXPECT_TRUE(in.Rest() == "yz"_data);

    EXPECT_TRUE(DataFilter::copy("12"_data, Data(room, room + 4)) == "12"_data);
    EXPECT_TRUE(DataFilter::copy("123456"_data, Data(room, room + 4)) == "1234"_data);
}

TEST(DataFilterer, DropsWhatComesBeforeItIsBound) {
    DataFilterer filterer;
    filterer.Start();
    filterer.Receive("lost"_data);
    filterer.ReceiveEnd();
}

TEST(DataFilterer, FiltersOnTheWay) {
    RecordingDataReceiver receiver;
    Ascii::CaseRaisingFilter raising;
    DataFilterer filterer;
    DataReceiver& bound = filterer(receiver, raising);
    bound.Start();
    bound << "ab"_data
          << "cd"_data;
    bound.ReceiveEnd();
    EXPECT_EQ(receiver.record, "<ABCD>");
}

TEST(DataFilterer, FlushesUntilNothingIsHeldBack) {
    RecordingDataReceiver receiver;
    DoublingFilter doubling(3);
    DataFilterer filterer(receiver, doubling);
    filterer.Start();
    filterer.Receive("ab"_data);
    filterer.ReceiveEnd();
    EXPECT_EQ(receiver.record, "<aabb!!!>");
}

TEST(DataFilterer, SendsNoEmptyChunks) {
    RecordingDataReceiver receiver;
    Base64Decoder decoder;
    DataFilterer filterer(receiver, decoder);
    filterer.Start();
    filterer.Receive(ConstData());
    filterer.Receive("===="_data);
    filterer.ReceiveEnd();
    EXPECT_EQ(receiver.record, "<>");
    EXPECT_TRUE(receiver.chunks.empty());
}

TEST(DataFilterer, TakesChunksOfAnySize) {
    for (std::size_t const size : {1u, 4095u, 4096u, 8191u, 8192u, 8193u, 16384u, 100001u}) {
        std::string const input = MakeNoise(size);
        RecordingDataReceiver receiver;
        DoublingFilter doubling(1);
        DataFilterer filterer(receiver, doubling);
        filterer.Receive(MakeConstData(input));
        filterer.ReceiveEnd();
        EXPECT_TRUE(receiver.record == Doubled(input) + "!>") << size;
    }
}

TEST(DataFilterer, FeedsSlicesThatAFilterWithoutPatienceCanTake) {
    std::string const text(100000, 'A');
    RecordingDataReceiver receiver;
    Base64Decoder decoder;
    DataFilterer filterer(receiver, decoder);
    filterer.Receive(MakeConstData(text));
    EXPECT_TRUE(receiver.record == std::string(75000, '\0'));
}

TEST(DataFilterer, LetsTheFailureOfItsReceiverThrough) {
    FailingReceiver receiver(1);
    DataFilterer filterer(receiver, DataFilter::copy);
    filterer.Start();
    EXPECT_THROW(filterer.Receive("abc"_data), NoMoreData);
    EXPECT_EQ(receiver.record, "<");
}

TEST(DataFilterer, DoesNotWaitForAFilterThatStandsStill) {
    RecordingDataReceiver receiver;
    StallingFilter stalling(2);
    DataFilterer filterer(receiver, stalling);
    filterer.Start();
    EXPECT_THROW(filterer.Receive("abc"_data), DataOverflow);
    EXPECT_EQ(receiver.record, "<ab");
    EXPECT_THROW(filterer.ReceiveEnd(), DataOverflow);
    EXPECT_EQ(receiver.record, "<ab");
}

TEST(DataFilterer, DoesNotWaitForAFlushThatStandsStill) {
    RecordingDataReceiver receiver;
    StallingFilter stalling(3);
    DataFilterer filterer(receiver, stalling);
    filterer.Start();
    filterer.Receive("ab"_data);
    EXPECT_THROW(filterer.ReceiveEnd(), DataOverflow);
    EXPECT_EQ(receiver.record, "<ab!");
}

TEST(DataFilterer, TakesSilenceWithConsumptionAsProgress) {
    RecordingDataReceiver receiver;
    HoardingFilter hoarding;
    DataFilterer filterer(receiver, hoarding);
    filterer.Start();
    filterer.Receive("ab"_data);
    filterer.Receive("cd"_data);
    filterer.ReceiveEnd();
    EXPECT_EQ(receiver.record, "<abcd>");
}

TEST(ApplyFilter, GivesTheWholeResult) {
    DoublingFilter doubling(2);
    std::vector<unsigned char> const bytes = ApplyFilter("ab"_data, doubling);
    EXPECT_EQ(std::string(bytes.begin(), bytes.end()), "aabb!!");

    DoublingFilter again(1);
    EXPECT_EQ(ApplyFilter("xyz"_utf8, again), "xxyyzz!"_utf8);
}

TEST(ApplyFilter, GivesNothingForNothing) {
    Base64Encoder encoder;
    Base64Decoder decoder;
    EXPECT_TRUE(ApplyFilter(ConstData(), DataFilter::copy).empty());
    EXPECT_TRUE(ApplyFilter(ConstData(), encoder).empty());
    EXPECT_TRUE(ApplyFilter(UStringRef<UTF8>(), decoder).empty());
}

TEST(ApplyFilter, TakesLongInput) {
    std::string const input = MakeNoise(300000);
    std::vector<unsigned char> const bytes = ApplyFilter(MakeConstData(input), DataFilter::copy);
    EXPECT_TRUE(std::string(bytes.begin(), bytes.end()) == input);
}
