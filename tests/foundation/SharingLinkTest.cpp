#include "foundation/SharingLink.h"

#include "text/SharedUString.h"

#include <gtest/gtest.h>

#include <atomic>
#include <memory>
#include <optional>
#include <string>
#include <thread>
#include <type_traits>
#include <vector>

namespace {

using Text = SharedUString<UTF8>;

std::string const cLong(100, 'l');

// Counts its destructions.
class Witness {
public:
    explicit Witness(std::atomic<int>& destroyed) : m_destroyed(destroyed) {}
    Witness(Witness const&) = delete;
    Witness& operator=(Witness const&) = delete;
    ~Witness() { ++m_destroyed; }

    int value = 7;

private:
    std::atomic<int>& m_destroyed;
};

} // namespace

TEST(SharingLink, IsAloneWhenMade) {
    SharingLink const link;
    EXPECT_TRUE(link.Alone());
}

TEST(SharingLink, CopiesAreNotAlone) {
    SharingLink const link;
    std::optional<SharingLink> copy(link);
    EXPECT_FALSE(link.Alone());
    EXPECT_FALSE(copy->Alone());
    copy.reset();
    EXPECT_TRUE(link.Alone());
}

TEST(SharingLink, CopiesOfCopiesShareWithAll) {
    std::optional<SharingLink> first(std::in_place);
    std::optional<SharingLink> second(*first);
    std::optional<SharingLink> third(*second);
    first.reset();
    EXPECT_FALSE(second->Alone());
    EXPECT_FALSE(third->Alone());
    second.reset();
    EXPECT_TRUE(third->Alone());
}

TEST(SharingLink, AssignmentLeavesTheOldHoldersAndJoinsTheNew) {
    SharingLink const oldPartner;
    SharingLink const newPartner;
    SharingLink link(oldPartner);
    link = newPartner;
    EXPECT_TRUE(oldPartner.Alone());
    EXPECT_FALSE(newPartner.Alone());
    EXPECT_FALSE(link.Alone());
}

TEST(SharingLink, AssigningItselfChangesNothing) {
    SharingLink link;
    SharingLink const& same = link;
    link = same;
    EXPECT_TRUE(link.Alone());
    SharingLink const partner(link);
    link = same;
    EXPECT_FALSE(link.Alone());
    EXPECT_FALSE(partner.Alone());
}

TEST(SharingLink, SwapExchangesTheHolders) {
    SharingLink const partner;
    SharingLink shared(partner);
    SharingLink lone;
    shared.swap(lone);
    EXPECT_TRUE(shared.Alone());
    EXPECT_FALSE(lone.Alone());
}

TEST(SharingLink, MovingHandsTheHoldOver) {
    static_assert(std::is_nothrow_move_constructible_v<SharingLink>);
    static_assert(std::is_nothrow_move_assignable_v<SharingLink>);
    SharingLink const partner;
    SharingLink source(partner);
    SharingLink const target(std::move(source));
    EXPECT_FALSE(target.Alone());
    EXPECT_FALSE(partner.Alone());
}

TEST(SharingLink, LeavingTellsWhetherNobodyWasLeft) {
    SharingLink first;
    SharingLink second(first);
    EXPECT_FALSE(first.Leave());
    EXPECT_TRUE(first.Alone());
    EXPECT_TRUE(second.Alone());
    EXPECT_TRUE(second.Leave());
    EXPECT_TRUE(second.Leave());
}

TEST(SharingLink, OfTwoThatLeaveAtOnceExactlyOneIsTheLast) {
    for (int round = 0; round < 300; ++round) {
        SharingLink first;
        SharingLink second(first);
        std::atomic<int> ready{0};
        std::atomic<int> last{0};
        auto const leave = [&](SharingLink& link) {
            ++ready;
            while (ready < 2) std::this_thread::yield();
            if (link.Leave()) ++last;
        };
        std::thread other([&] { leave(second); });
        leave(first);
        other.join();
        ASSERT_EQ(last, 1);
    }
}

TEST(SharingLink, CountsRightUnderManyThreads) {
    SharingLink const link;
    std::vector<std::unique_ptr<SharingLink>> copies;
    for (int i = 0; i < 4; ++i) copies.push_back(std::make_unique<SharingLink>(link));
    std::vector<std::thread> threads;
    for (auto& own : copies)
        threads.emplace_back([&own] {
            for (int i = 0; i < 2000; ++i) {
                SharingLink const copy(*own);
                EXPECT_FALSE(copy.Alone());
            }
            own.reset();
        });
    for (auto& thread : threads) thread.join();
    EXPECT_TRUE(link.Alone());
}

TEST(SharingPtr, IsNullWhenMadeWithoutAnObject) {
    SharingPtr<int> const pointer;
    EXPECT_FALSE(pointer);
    EXPECT_EQ(pointer.get(), nullptr);
    SharingPtr<int> const copy(pointer);
    EXPECT_FALSE(copy);
}

TEST(SharingPtr, LeadsToItsObject) {
    std::atomic<int> destroyed{0};
    SharingPtr<Witness> const pointer(new Witness(destroyed));
    EXPECT_TRUE(pointer);
    EXPECT_EQ(pointer->value, 7);
    EXPECT_EQ((*pointer).value, 7);
}

TEST(SharingPtr, LastHolderDeletesTheObject) {
    std::atomic<int> destroyed{0};
    {
        std::optional<SharingPtr<Witness>> first(new Witness(destroyed));
        SharingPtr<Witness> const second(*first);
        EXPECT_EQ(first->get(), second.get());
        EXPECT_EQ(*first, second);
        first.reset();
        EXPECT_EQ(destroyed, 0);
        EXPECT_EQ(second->value, 7);
    }
    EXPECT_EQ(destroyed, 1);
}

TEST(SharingPtr, AssignmentLetsGoOfTheOldObject) {
    std::atomic<int> firstDestroyed{0};
    std::atomic<int> secondDestroyed{0};
    SharingPtr<Witness> pointer(new Witness(firstDestroyed));
    SharingPtr<Witness> const other(new Witness(secondDestroyed));
    pointer = other;
    EXPECT_EQ(firstDestroyed, 1);
    EXPECT_EQ(secondDestroyed, 0);
    EXPECT_EQ(pointer.get(), other.get());
}

TEST(SharingPtr, AssigningItselfKeepsTheObject) {
    std::atomic<int> destroyed{0};
    SharingPtr<Witness> pointer(new Witness(destroyed));
    SharingPtr<Witness> const& same = pointer;
    pointer = same;
    EXPECT_EQ(destroyed, 0);
    EXPECT_EQ(pointer->value, 7);
}

TEST(SharingPtr, MovedFromIsNull) {
    std::atomic<int> destroyed{0};
    SharingPtr<Witness> source(new Witness(destroyed));
    SharingPtr<Witness> const target(std::move(source));
    EXPECT_FALSE(source);
    EXPECT_EQ(target->value, 7);
    EXPECT_EQ(destroyed, 0);
}

TEST(SharingPtr, IsDeletedOnceWhenTwoThreadsLetGoAtOnce) {
    for (int round = 0; round < 300; ++round) {
        std::atomic<int> destroyed{0};
        std::atomic<int> ready{0};
        auto first = std::make_unique<SharingPtr<Witness>>(new Witness(destroyed));
        auto second = std::make_unique<SharingPtr<Witness>>(*first);
        auto const drop = [&](std::unique_ptr<SharingPtr<Witness>>& pointer) {
            ++ready;
            while (ready < 2) std::this_thread::yield();
            pointer.reset();
        };
        std::thread other([&] { drop(second); });
        drop(first);
        other.join();
        ASSERT_EQ(destroyed, 1);
    }
}

TEST(SharedUString, TwoThreadsMayEachDropOneOfTwoSharers) {
    for (int round = 0; round < 300; ++round) {
        std::optional<Text> first(MakeUTF8Ref(cLong));
        std::optional<Text> second(*first);
        std::atomic<int> ready{0};
        auto const drop = [&](std::optional<Text>& text) {
            ++ready;
            while (ready < 2) std::this_thread::yield();
            EXPECT_EQ(text->SizeInUnits(), 100U);
            text.reset();
        };
        std::thread other([&] { drop(second); });
        drop(first);
        other.join();
    }
}

TEST(SharedUString, TwoThreadsMayEachChangeOneOfTwoSharers) {
    for (int round = 0; round < 100; ++round) {
        Text first(MakeUTF8Ref(cLong));
        Text second(first);
        std::thread other([&] {
            Text const copy(second);
            second += "2"_utf8;
            EXPECT_EQ(MakeString(copy), cLong);
        });
        first += "1"_utf8;
        other.join();
        EXPECT_EQ(MakeString(first), cLong + "1");
        EXPECT_EQ(MakeString(second), cLong + "2");
    }
}
