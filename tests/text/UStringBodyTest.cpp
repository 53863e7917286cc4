#include "text/UStringBody.h"

#include "tests/support/UStringPrinting.h"

#include <gtest/gtest.h>

#include <string>

namespace {

using Body = UStringBody<UTF8>;

void Fill(Body& body, std::string const& text) {
    body.Reset(UTF8(), 0, text.size());
    body.AppendInPlace(MakeUTF8Ref(text));
}

void ExpectEmptyAndInline(Body const& body) {
    EXPECT_TRUE(body.empty());
    EXPECT_TRUE(body.IsInline());
    EXPECT_EQ(body.begin(), body.end());
    EXPECT_EQ(body.CapacityInUnits(), 64U);
    EXPECT_FALSE(body.IsShared());
}

void ExpectSetEndFails(Body& body, unsigned char* end) {
    unsigned char* const before = body.end();
    try {
        body.SetEnd(end);
        FAIL() << "nothing was thrown";
    } catch (std::out_of_range const& error) {
        EXPECT_STREQ(error.what(), "SetEnd out of range");
    }
    EXPECT_EQ(body.end(), before);
}

} // namespace

TEST(UStringBody, IsEmptyAndInlineWhenMade) {
    ExpectEmptyAndInline(Body());
}

TEST(UStringBody, ResetTakesTheGreatestOf64CapacityAndSize) {
    struct Case {
        std::size_t size;
        std::size_t capacity;
        std::size_t expected;
    };
    for (Case const& c : {Case{0, 0, 64}, Case{1, 0, 64}, Case{64, 0, 64}, Case{0, 64, 64}, Case{65, 0, 65},
                          Case{0, 65, 65}, Case{10, 200, 200}, Case{200, 10, 200}}) {
        Body body;
        body.Reset(UTF8(), c.size, c.capacity);
        EXPECT_EQ(body.SizeInUnits(), c.size);
        EXPECT_EQ(body.CapacityInUnits(), c.expected);
        EXPECT_EQ(body.IsInline(), c.expected == 64);
        EXPECT_FALSE(body.IsShared());
    }
}

TEST(UStringBody, ResetGivesALargerBufferBack) {
    Body body;
    body.Reset(UTF8(), 100, 100);
    body.Reset(UTF8(), 3, 0);
    EXPECT_TRUE(body.IsInline());
    EXPECT_EQ(body.SizeInUnits(), 3U);
    EXPECT_EQ(body.CapacityInUnits(), 64U);
}

TEST(UStringBody, DisposeReturnsToTheEmptyInlineState) {
    for (std::size_t const size : {0U, 10U, 64U, 65U, 1000U}) {
        Body body;
        Fill(body, std::string(size, 'x'));
        body.Dispose();
        ExpectEmptyAndInline(body);
    }
}

TEST(UStringBody, DisposeLeavesASharedBufferToItsOtherHolders) {
    Body owner;
    Fill(owner, std::string(100, 'x'));
    Body other;
    other.ShareBufferOf(owner);
    EXPECT_EQ(other.begin(), owner.begin());
    EXPECT_EQ(other.CapacityInUnits(), 100U);
    EXPECT_TRUE(owner.IsShared());
    EXPECT_TRUE(other.IsShared());
    other.Dispose();
    ExpectEmptyAndInline(other);
    EXPECT_EQ(MakeString(owner.Ref()), std::string(100, 'x'));
    owner.SetShared(false);
}

TEST(UStringBody, SeizeTakesAHeapBufferByItsPointer) {
    Body source;
    Fill(source, std::string(70, 'x'));
    unsigned char const* const buffer = source.begin();
    Body target;
    Fill(target, std::string(90, 'y'));
    target.Seize(source);
    EXPECT_EQ(target.begin(), buffer);
    EXPECT_EQ(target.SizeInUnits(), 70U);
    EXPECT_EQ(target.CapacityInUnits(), 70U);
    ExpectEmptyAndInline(source);
}

TEST(UStringBody, SeizeCopiesAnInlineText) {
    Body source;
    Fill(source, "inline");
    Body target;
    target.Seize(source);
    EXPECT_EQ(target.Ref(), "inline"_utf8);
    EXPECT_TRUE(target.IsInline());
    ExpectEmptyAndInline(source);
}

TEST(UStringBody, SeizeOfItselfChangesNothing) {
    for (std::string const& text : {std::string("short"), std::string(100, 'x')}) {
        Body body;
        Fill(body, text);
        body.Seize(body);
        EXPECT_EQ(MakeString(body.Ref()), text);
    }
}

TEST(UStringBody, SeizedBufferCountsAsNotShared) {
    Body source;
    Fill(source, std::string(70, 'x'));
    source.SetShared(true);
    Body target;
    target.Seize(source);
    EXPECT_FALSE(target.IsShared());
    EXPECT_FALSE(source.IsShared());
}

TEST(UStringBody, SetEndAcceptsEverythingFromBeginToCapacity) {
    for (std::size_t const capacity : {64U, 100U}) {
        Body body;
        body.Reset(UTF8(), 10, capacity);
        body.SetEnd(body.begin());
        EXPECT_TRUE(body.empty());
        body.SetEnd(body.begin() + capacity);
        EXPECT_EQ(body.SizeInUnits(), capacity);
    }
}

TEST(UStringBody, SetEndRefusesEverythingElse) {
    Body body;
    body.Reset(UTF8(), 10, 100);
    ExpectSetEndFails(body, body.begin() + 101);
    ExpectSetEndFails(body, body.begin() - 1);
    ExpectSetEndFails(body, nullptr);
}

TEST(UStringBody, GrowsToTwiceTheOldSizeTheNewSizeOr64) {
    struct Case {
        std::size_t oldSize;
        std::size_t appended;
        std::size_t expected;
    };
    for (Case const& c : {Case{0, 1, 64}, Case{10, 54, 64}, Case{32, 32, 64}, Case{33, 1, 66},
                          Case{60, 10, 120}, Case{10, 55, 65}, Case{100, 1, 200}, Case{100, 300, 400}}) {
        Body body;
        Fill(body, std::string(c.oldSize, 'a'));
        Body const grown = body.Grown(MakeUTF8Ref(std::string(c.appended, 'b')));
        EXPECT_EQ(grown.CapacityInUnits(), c.expected) << c.oldSize << " and " << c.appended;
        EXPECT_EQ(MakeString(grown.Ref()), std::string(c.oldSize, 'a') + std::string(c.appended, 'b'));
        EXPECT_EQ(body.SizeInUnits(), c.oldSize);
    }
}

TEST(UStringBody, CountsUnitsAndNotBytes) {
    UStringBody<UTF32> body;
    body.Reset(UTF32(), 65, 0);
    EXPECT_EQ(body.SizeInUnits(), 65U);
    EXPECT_EQ(body.CapacityInUnits(), 65U);
    EXPECT_EQ(body.Ref().SizeInBytes(), 260U);
}

TEST(UStringBody, KeepsTheTagThatHoldsData) {
    IANANamedTextEncoding const latin("ISO-8859-1"_data);
    UStringBody<IANANamedTextEncoding> body;
    body.Reset(latin, 3, 0);
    UStringBody<IANANamedTextEncoding> target;
    target.Seize(body);
    EXPECT_EQ(MakeString(target.Encoding().Name()), "ISO-8859-1");
    EXPECT_EQ(MakeString(target.Ref().Encoding().Name()), "ISO-8859-1");
}

TEST(UStringBody, IsMadeAsACopyOfAView) {
    for (std::size_t const size : {0U, 10U, 64U, 65U}) {
        std::string const text(size, 'x');
        Body const body(MakeUTF8Ref(text));
        EXPECT_EQ(MakeString(body.Ref()), text);
        EXPECT_EQ(body.CapacityInUnits(), size == 65 ? 65U : 64U);
        EXPECT_EQ(body.IsInline(), size != 65);
    }
    IANANamedTextEncoding const greek("ISO-8859-7"_data);
    auto const bytes = "\xC1"_data;
    UStringRef<IANANamedTextEncoding> const view(greek, bytes.begin(), bytes.end());
    EXPECT_EQ(UStringBody<IANANamedTextEncoding>(view).Encoding(), greek);
}

TEST(UStringBody, GrownKeepsTheTagThatHoldsData) {
    IANANamedTextEncoding const greek("ISO-8859-7"_data);
    UStringBody<IANANamedTextEncoding> body;
    body.Reset(greek, 0, 0);
    std::string const bytes(65, 'x');
    UStringRef<IANANamedTextEncoding> const view(IANANamedTextEncoding(), MakeConstData(bytes));
    EXPECT_EQ(body.Grown(view).Encoding(), greek);
}

template <class E>
class WideUStringBodyTest : public ::testing::Test {};

using WideEncodings = ::testing::Types<UTF16, UTF32>;
TYPED_TEST_SUITE(WideUStringBodyTest, WideEncodings);

TYPED_TEST(WideUStringBodyTest, SeizeTakesAll64InlineUnits) {
    UStringBody<TypeParam> source;
    source.Reset(TypeParam(), 64, 0);
    for (std::size_t i = 0; i < 64; ++i)
        source.begin()[i] = static_cast<typename TypeParam::Unit>(0x0101 * i + 7);
    UStringBody<TypeParam> target;
    target.Seize(source);
    ASSERT_EQ(target.SizeInUnits(), 64U);
    EXPECT_TRUE(target.IsInline());
    for (std::size_t i = 0; i < 64; ++i) EXPECT_EQ(target.begin()[i], 0x0101 * i + 7);
    EXPECT_TRUE(source.empty());
}
