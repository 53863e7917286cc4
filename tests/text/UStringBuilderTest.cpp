#include "text/UStringBuilder.h"

#include "tests/support/UStringPrinting.h"
#include "text/UString.h"

#include <gtest/gtest.h>

#include <string>
#include <sys/mman.h>

namespace {

// Addresses that hold nothing and may not be read.
class ReservedAddresses {
public:
    explicit ReservedAddresses(std::size_t size)
        : m_size(size),
          m_begin(mmap(nullptr, size, PROT_NONE, MAP_PRIVATE | MAP_ANONYMOUS | MAP_NORESERVE, -1, 0)) {}
    ReservedAddresses(ReservedAddresses const&) = delete;
    ReservedAddresses& operator=(ReservedAddresses const&) = delete;
    ~ReservedAddresses() {
        if (AreThere()) munmap(m_begin, m_size);
    }

    bool AreThere() const { return m_begin != MAP_FAILED; }
    template <class Unit>
    ConstArrayOf<Unit> Units() const {
        auto const* const first = static_cast<Unit const*>(m_begin);
        return ConstArrayOf<Unit>(first, first + m_size / sizeof(Unit));
    }

private:
    std::size_t m_size;
    void* m_begin;
};

} // namespace

TEST(UTextReceiver, DropsEverythingAndHoldsNothing) {
    UTextReceiver<UTF8> receiver;
    receiver.Start(UTF8());
    receiver.Receive("text"_data);
    receiver.ReceiveEnd();
    EXPECT_EQ(receiver.SizeOfReceivedBytes("text"_data), 0U);
}

TEST(UStringBuilder, CollectsThePieces) {
    UStringBuilder<UTF8> builder;
    UTextReceiver<UTF8>& receiver = builder;
    receiver.Start(UTF8());
    receiver.Receive("one "_data);
    receiver.Receive(ConstData());
    receiver.Receive("two"_data);
    receiver.ReceiveEnd();
    EXPECT_EQ(builder.Ref(), "one two"_utf8);
    EXPECT_EQ(builder.Take(), "one two"_utf8);
    EXPECT_TRUE(builder.Ref().empty());
}

TEST(UStringBuilder, StartsWithRoomForItsHintAndAtLeast64Units) {
    struct Case {
        std::size_t hint;
        std::size_t expected;
    };
    for (Case const& c : {Case{0, 64}, Case{63, 64}, Case{64, 64}, Case{65, 65}, Case{256, 256}}) {
        UStringBuilder<UTF8> builder(c.hint);
        builder.Start(UTF8());
        EXPECT_EQ(builder.Take().CapacityInUnits(), c.expected);
    }
}

TEST(UStringBuilder, StartDropsWhatWasCollected) {
    UStringBuilder<UTF8> builder;
    builder.Start(UTF8());
    builder.Receive("old"_data);
    builder.Start(UTF8());
    builder.Receive("new"_data);
    EXPECT_EQ(builder.Take(), "new"_utf8);
}

TEST(UStringBuilder, GrowsAsTheStringsDo) {
    std::string const text(100, 'x');
    UStringBuilder<UTF8> builder(100);
    builder.Start(UTF8());
    builder.Receive(MakeConstData(text));
    EXPECT_EQ(builder.Ref().SizeInUnits(), 100U);
    builder.Receive("y"_data);
    AutoUString<UTF8> const built = builder.Take();
    EXPECT_EQ(built.CapacityInUnits(), 200U);
    EXPECT_EQ(MakeString(built), text + "y");
}

TEST(UStringBuilder, ReceivesItsOwnText) {
    UStringBuilder<UTF8> builder;
    builder.Start(UTF8());
    builder.Receive("0123456789012345678901234567890123456789"_data);
    builder.Receive(builder.Ref());
    EXPECT_EQ(builder.Take(),
              "01234567890123456789012345678901234567890123456789012345678901234567890123456789"_utf8);
}

TEST(UStringBuilder, TellsTheSizeWithFurtherData) {
    UStringBuilder<UTF8> builder;
    builder.Start(UTF8());
    builder.Receive("abc"_data);
    EXPECT_EQ(builder.SizeOfReceivedBytes("de"_data), 5U);
    EXPECT_EQ(builder.SizeOfReceivedBytes(ConstData()), 3U);
}

TEST(UStringBuilder, CountsTheBytesOfWideUnits) {
    std::uint16_t const units[] = {1, 2, 3};
    UStringBuilder<UTF16> builder;
    builder.Start(UTF16());
    builder.Receive(ConstArrayOf<std::uint16_t>(units, units + 3));
    EXPECT_EQ(builder.SizeOfReceivedBytes(ConstArrayOf<std::uint16_t>(units, units + 1)), 8U);
}

TEST(UStringBuilder, TakesTheSizeOfFurtherDataIn32Bits) {
    ReservedAddresses const addresses((std::size_t{1} << 32) + 6);
    ASSERT_TRUE(addresses.AreThere());
    UStringBuilder<UTF8> builder;
    builder.Start(UTF8());
    EXPECT_EQ(builder.SizeOfReceivedBytes(addresses.Units<unsigned char>()), 6U);
    builder.Receive("abc"_data);
    EXPECT_EQ(builder.SizeOfReceivedBytes(addresses.Units<unsigned char>()), 9U);
    UStringBuilder<UTF16> wideBuilder;
    wideBuilder.Start(UTF16());
    EXPECT_EQ(wideBuilder.SizeOfReceivedBytes(addresses.Units<std::uint16_t>()), 6U);
}

TEST(UStringBuilder, KeepsTheEncodingThatItIsStartedWith) {
    IANANamedTextEncoding const greek("ISO-8859-7"_data);
    UStringBuilder<IANANamedTextEncoding> builder;
    builder.Start(greek);
    builder.Receive("\xC1"_data);
    EXPECT_EQ(builder.Take().Encoding(), greek);
}

template <class S>
class UStringReceiverTest : public ::testing::Test {};

using Targets = ::testing::Types<AutoUString<UTF8>, CopiedUString<UTF8>>;
TYPED_TEST_SUITE(UStringReceiverTest, Targets);

TYPED_TEST(UStringReceiverTest, TouchesItsTargetOnlyAtTheEnd) {
    TypeParam target("before"_utf8);
    UStringReceiver<TypeParam> receiver(target);
    UTextReceiver<UTF8>& base = receiver;
    base.Start(UTF8());
    base.Receive("one "_data);
    base.Receive("two"_data);
    EXPECT_EQ(target, "before"_utf8);
    base.ReceiveEnd();
    EXPECT_EQ(target, "one two"_utf8);
}

TYPED_TEST(UStringReceiverTest, MayBeUsedAgain) {
    TypeParam target;
    UStringReceiver<TypeParam> receiver(target);
    for (ConstData const text : {"first"_data, "second"_data}) {
        receiver.Start(UTF8());
        receiver.Receive(text);
        receiver.ReceiveEnd();
    }
    EXPECT_EQ(target, "second"_utf8);
}

TEST(UTF8StringBuilder, IsThreePointers) {
    static_assert(sizeof(UTF8StringBuilder) == 3 * sizeof(void*));
}

TEST(UTF8StringBuilder, IsEmptyWithANullViewWhenMade) {
    UTF8StringBuilder const builder;
    EXPECT_TRUE(builder.empty());
    EXPECT_EQ(builder.Ref().begin(), nullptr);
}

TEST(UTF8StringBuilder, IsMadeFromAView) {
    UTF8StringBuilder const builder("text"_utf8);
    EXPECT_EQ(builder.Ref(), "text"_utf8);
    EXPECT_EQ(builder.SizeInBytes(), 4U);
}

TEST(UTF8StringBuilder, AppendsAndReplaces) {
    UTF8StringBuilder builder;
    builder += "one "_utf8;
    builder += UStringRef<UTF8>();
    builder += "two"_utf8;
    builder += static_cast<unsigned char>('!');
    EXPECT_EQ(builder.Ref(), "one two!"_utf8);
    builder = "new"_utf8;
    EXPECT_EQ(builder.Ref(), "new"_utf8);
    builder = UStringRef<UTF8>();
    EXPECT_EQ(builder.Ref().begin(), nullptr);
}

TEST(UTF8StringBuilder, ClearKeepsItsMemory) {
    UTF8StringBuilder builder;
    builder += MakeUTF8Ref(std::string(1000, 'x'));
    builder.clear();
    EXPECT_TRUE(builder.empty());
    EXPECT_EQ(builder.Ref().begin(), nullptr);
    EXPECT_EQ(builder.CapacityInBytes(), 1000U);
}

TEST(UTF8StringBuilder, GrowsAsTheStringsDo) {
    UTF8StringBuilder builder;
    builder += static_cast<unsigned char>('x');
    EXPECT_EQ(builder.CapacityInBytes(), 64U);
    builder += MakeUTF8Ref(std::string(64, 'x'));
    EXPECT_EQ(builder.CapacityInBytes(), 65U);
    builder += static_cast<unsigned char>('x');
    EXPECT_EQ(builder.CapacityInBytes(), 130U);
}

TEST(UTF8StringBuilder, TakesViewsIntoItself) {
    UTF8StringBuilder builder("abc"_utf8);
    for (int round = 0; round < 6; ++round) builder += builder.Ref();
    EXPECT_EQ(builder.SizeInBytes(), 192U);
    EXPECT_EQ(builder.Ref().Middle(188, 192), "cabc"_utf8);
    builder = builder.Ref().Middle(1, 4);
    EXPECT_EQ(builder.Ref(), "bca"_utf8);
}
