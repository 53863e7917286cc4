#include "app/ForcedActions.h"

#include "tests/app/ProcessStateFixture.h"

using IDs = std::vector<unsigned long>;

class ForcedActions : public ProcessStateTest {
protected:
    static constexpr long long cNowInMicroseconds = 1293955509000000;

    static Instant At(long long microsecondsFromNow) {
        return Instant::FromMicroseconds(cNowInMicroseconds + microsecondsFromNow);
    }

    static void Pend(unsigned long id, NullOr<TimeObject> deadline, bool forced) {
        ActionRequest request;
        request.id = id;
        request.deadline = deadline;
        request.forceRun = forced;
        actions.push_back(std::move(request));
    }

    static void PendDue(unsigned long id, long long secondsFromNow, bool forced = true) {
        Pend(id, TimeObject(At(secondsFromNow * 1000000), TimeZone()), forced);
    }
};

TEST_F(ForcedActions, AnOverdueOneIsSentAndRemoved) {
    PendDue(18446744073709551615ul, -1);
    EXPECT_TRUE(TakeOverdueActions(At(0)));
    EXPECT_TRUE(actions.empty());
    std::vector<std::string> const sent = Sent();
    ASSERT_EQ(sent.size(), 1u);
    EXPECT_EQ(sent[0], "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
                       "<UIToClient>\n"
                       "\t<ActionTaken>\n"
                       "\t\t<IsCancel>false</IsCancel>\n"
                       "\t\t<IsOffer>false</IsOffer>\n"
                       "\t\t<ID>18446744073709551615</ID>\n"
                       "\t\t<Originator>ClientUI</Originator>\n"
                       "\t</ActionTaken>\n"
                       "</UIToClient>");
}

TEST_F(ForcedActions, ADeadlineEqualToNowIsNotYetDue) {
    PendDue(1, 0);
    EXPECT_TRUE(TakeOverdueActions(At(0))) << "its countdown moves";
    EXPECT_EQ(PendingIDs(), (IDs{1}));
    EXPECT_TRUE(Sent().empty());
    EXPECT_TRUE(TakeOverdueActions(At(1)));
    EXPECT_TRUE(actions.empty());
}

TEST_F(ForcedActions, CountdownMovesStrictlyWithinFiveMinutes) {
    PendDue(1, 300);
    EXPECT_FALSE(TakeOverdueActions(At(0)));
    EXPECT_TRUE(TakeOverdueActions(At(1)));
    EXPECT_EQ(PendingIDs(), (IDs{1}));
}

TEST_F(ForcedActions, OneThatIsNotForcedStaysAndChangesNothing) {
    PendDue(1, -3600, false);
    PendDue(2, 10, false);
    EXPECT_FALSE(TakeOverdueActions(At(0)));
    EXPECT_EQ(PendingIDs(), (IDs{1, 2}));
    EXPECT_TRUE(Sent().empty());
}

TEST_F(ForcedActions, ForcedOneWithoutDeadlineIsPassedOver) {
    Pend(1, NullOr<TimeObject>(), true);
    EXPECT_FALSE(TakeOverdueActions(At(0)));
    EXPECT_EQ(PendingIDs(), (IDs{1}));
}

TEST_F(ForcedActions, AllOverdueOnesLeaveInOrderAndTheOthersStay) {
    PendDue(1, -1);
    PendDue(2, 1000);
    PendDue(3, -2);
    PendDue(3, -3, false);
    PendDue(4, -4);
    EXPECT_TRUE(TakeOverdueActions(At(0)));
    EXPECT_EQ(PendingIDs(), (IDs{2, 3}));
    std::vector<std::string> const sent = Sent();
    ASSERT_EQ(sent.size(), 3u);
    EXPECT_NE(sent[0].find("<ID>1</ID>"), std::string::npos);
    EXPECT_NE(sent[1].find("<ID>3</ID>"), std::string::npos);
    EXPECT_NE(sent[2].find("<ID>4</ID>"), std::string::npos);
}

TEST_F(ForcedActions, DeadlineIsAPointInTimeWhateverItsZone) {
    TimeObject inOtherZone(At(-1000000), TimeZone::FromSeconds(-8 * 3600));
    Pend(1, inOtherZone, true);
    TakeOverdueActions(At(0));
    EXPECT_TRUE(actions.empty());
}

TEST_F(ForcedActions, NothingPendingChangesNothing) {
    EXPECT_FALSE(TakeOverdueActions(At(0)));
}
