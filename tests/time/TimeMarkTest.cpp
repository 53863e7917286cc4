#include "time/TimeMark.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <thread>
#include <vector>

namespace {

TimeMark Mark(long long microseconds) {
    return TimeMark::FromMicroseconds(microseconds);
}

// Starts of the time line need a process of their own: the whole test runs again in the child.
class TimeMarkStart : public testing::Test {
protected:
    TimeMarkStart() { GTEST_FLAG_SET(death_test_style, "threadsafe"); }
};

int FirstCallIsZeroAndLaterOnesAreNot() {
    if (TimeMark::Now() != Mark(0)) return 1;
    std::this_thread::sleep_for(std::chrono::milliseconds(2));
    TimeMark const later = TimeMark::Now();
    return later >= Mark(2000) && later < Mark(60000000) ? 0 : 2;
}

int RacingFirstCallsAgreeOnOneStart() {
    std::vector<TimeMark> marks(8, Mark(-1));
    std::vector<std::thread> threads;
    for (TimeMark& mark : marks) threads.emplace_back([&mark] { mark = TimeMark::Now(); });
    for (std::thread& thread : threads) thread.join();
    int atStart = 0;
    for (TimeMark const& mark : marks) {
        if (mark < Mark(0) || mark > Mark(60000000)) return 1;
        if (mark == Mark(0)) ++atStart;
    }
    return atStart >= 1 ? 0 : 2;
}

} // namespace

TEST_F(TimeMarkStart, TheFirstCallReturnsZero) {
    EXPECT_EXIT(std::_Exit(FirstCallIsZeroAndLaterOnesAreNot()), testing::ExitedWithCode(0), "");
}

TEST_F(TimeMarkStart, RacingFirstCallsAgreeOnOneStart) {
    EXPECT_EXIT(std::_Exit(RacingFirstCallsAgreeOnOneStart()), testing::ExitedWithCode(0), "");
}

TEST(TimeMark, ComparesMovesAndSubtracts) {
    EXPECT_LT(Mark(1), Mark(2));
    EXPECT_EQ(Mark(5) - Mark(7), TimeInterval::FromMicroseconds(-2));
    EXPECT_EQ(Mark(5) + TimeInterval::FromMicroseconds(2), Mark(7));
    EXPECT_EQ(Mark(5) - TimeInterval::FromMicroseconds(2), Mark(3));
}
