#include "text/NullOr.h"

#include "tests/support/UStringPrinting.h"
#include "text/UString.h"

#include <gtest/gtest.h>

#include <type_traits>

namespace {

using Text = NullOr<CopiedUString<UTF8>>;

// Counts the living objects of its kind, and can refuse to be copied.
class Counted {
public:
    static inline int living = 0;
    static inline bool refusesCopies = false;

    explicit Counted(int number) : value(number) { ++living; }
    Counted(Counted const& other) : value(other.value) {
        if (refusesCopies) throw std::bad_alloc();
        ++living;
    }
    Counted& operator=(Counted const&) = default;
    ~Counted() { --living; }

    int value;
};

} // namespace

TEST(NullOr, IsNullWhenMadeWithoutAValue) {
    EXPECT_TRUE(Text().IsNull());
    EXPECT_TRUE(Text::Null().IsNull());
    EXPECT_FALSE(Text());
}

TEST(NullOr, HoldsAValueOfItsOwn) {
    CopiedUString<UTF8> source("text"_utf8);
    Text const value(source);
    source += "changed"_utf8;
    EXPECT_FALSE(value.IsNull());
    EXPECT_TRUE(static_cast<bool>(value));
    EXPECT_EQ(*value, "text"_utf8);
    EXPECT_EQ(value->SizeInUnits(), 4U);
}

TEST(NullOr, EmptyValueIsNotNull) {
    EXPECT_FALSE(Text(CopiedUString<UTF8>()).IsNull());
}

TEST(NullOr, CopiesAreDeep) {
    Text const source(CopiedUString<UTF8>("text"_utf8));
    Text copy(source);
    *copy += "!"_utf8;
    EXPECT_EQ(*copy, "text!"_utf8);
    EXPECT_EQ(*source, "text"_utf8);
    EXPECT_NE(&*copy, &*source);
}

TEST(NullOr, AssignsEveryCombinationOfNullAndValue) {
    Text const null;
    Text const value(CopiedUString<UTF8>("value"_utf8));
    Text target;
    target = null;
    EXPECT_TRUE(target.IsNull());
    target = value;
    EXPECT_EQ(*target, "value"_utf8);
    target = Text(CopiedUString<UTF8>("other"_utf8));
    EXPECT_EQ(*target, "other"_utf8);
    target = null;
    EXPECT_TRUE(target.IsNull());
}

TEST(NullOr, AssigningItselfChangesNothing) {
    Text value(CopiedUString<UTF8>("text"_utf8));
    auto const* const before = &*value;
    Text const& same = value;
    value = same;
    EXPECT_EQ(&*value, before);
    EXPECT_EQ(*value, "text"_utf8);
}

TEST(NullOr, DestroysItsValue) {
    {
        NullOr<Counted> first(Counted(1));
        NullOr<Counted> const second(first);
        EXPECT_EQ(Counted::living, 2);
        first = second;
        EXPECT_EQ(Counted::living, 2);
        first = NullOr<Counted>();
        EXPECT_EQ(Counted::living, 1);
    }
    EXPECT_EQ(Counted::living, 0);
}

TEST(NullOr, KeepsTheOldValueWhenTheNewOneCannotBeMade) {
    NullOr<Counted> target(Counted(1));
    NullOr<Counted> const source(Counted(2));
    Counted::refusesCopies = true;
    EXPECT_THROW(target = source, std::bad_alloc);
    Counted::refusesCopies = false;
    ASSERT_FALSE(target.IsNull());
    EXPECT_EQ(target->value, 1);
}

TEST(NullOr, MovingHandsTheValueOver) {
    static_assert(std::is_nothrow_move_constructible_v<Text>);
    static_assert(std::is_nothrow_move_assignable_v<Text>);
    Text source(CopiedUString<UTF8>("text"_utf8));
    auto const* const value = &*source;
    Text moved(std::move(source));
    EXPECT_EQ(&*moved, value);
    EXPECT_TRUE(source.IsNull());
    Text assigned(CopiedUString<UTF8>("old"_utf8));
    assigned = std::move(moved);
    EXPECT_EQ(&*assigned, value);
    EXPECT_TRUE(moved.IsNull());
}

TEST(NullOrConstRef, RefersWithoutOwning) {
    int value = 5;
    NullOrConstRef<int> const reference(value);
    EXPECT_FALSE(reference.IsNull());
    EXPECT_EQ(&*reference, &value);
    value = 6;
    EXPECT_EQ(*reference, 6);
    EXPECT_TRUE(NullOrConstRef<int>::Null().IsNull());
    EXPECT_FALSE(NullOrConstRef<int>::Null());
}
