#include "app/UserCommands.h"

#include "tests/app/ProcessStateFixture.h"
#include "tests/app/RecordingDialogs.h"
#include "tests/support/ExpectedDocuments.h"
#include "time/TimeText.h"

#include <climits>

namespace {

using IDs = std::vector<unsigned long>;
using Texts = std::vector<std::string>;

std::string RemindTimeAt(Instant time) {
    return RemindTimeDocument(MakeString(TimeToText(time, TimeZone()).Ref()));
}

} // namespace

class UserCommands : public ProcessStateTest {
protected:
    static void Pend(unsigned long id, bool asks = false) {
        ActionRequest request;
        request.id = id;
        if (asks) request.preActionMessage = SharedUString<UTF8>("Sure?"_utf8);
        actions.push_back(std::move(request));
    }

    static void Carry(UICommandType type, unsigned long id = 0, int minutes = 0, long long seconds = 0) {
        QueueCommand(type, id, minutes, seconds);
        ProcessMessagesFromUI();
    }

    static Texts Calls() { return recordingDialogs.TakeCalls(); }
};

TEST_F(UserCommands, AreCarriedOutInTheOrderQueued) {
    Pend(1);
    Pend(2);
    QueueCommand(TakeAction, 2, 0, 0);
    QueueCommand(CancelAction, 1, 0, 0);
    EXPECT_TRUE(Sent().empty()) << "nothing happens before the tick";
    ProcessMessagesFromUI();
    EXPECT_EQ(Sent(), (Texts{TakenDocument(2), TakenDocument(1, true)}));
    EXPECT_EQ(Calls(), (Texts{"Update 1", "Enable", "Update", "Enable"}));
}

TEST_F(UserCommands, AreDestroyedOnceCarriedOut) {
    Pend(1);
    Carry(CancelAction, 1);
    Sent();
    Calls();
    ProcessMessagesFromUI();
    EXPECT_TRUE(Sent().empty());
    EXPECT_TRUE(Calls().empty());
}

TEST_F(UserCommands, UnknownTypesAreDropped) {
    Pend(1);
    for (int const type : {10, 11, -1, INT_MAX, INT_MIN}) Carry(static_cast<UICommandType>(type), 1, 10);
    EXPECT_TRUE(Sent().empty());
    EXPECT_TRUE(Calls().empty());
    EXPECT_EQ(PendingIDs(), (IDs{1}));
}

TEST_F(UserCommands, ThatFailCostThemselvesAlone) {
    Pend(1);
    Pend(2);
    recordingDialogs.failing = "Details";
    QueueCommand(ShowDetails, 1, 0, 0);
    QueueCommand(CancelAction, 2, 0, 0);
    ProcessMessagesFromUI();
    EXPECT_EQ(Sent(), (Texts{TakenDocument(2, true)}));
    EXPECT_EQ(Calls(), (Texts{"Details 1", "Update 1", "Enable"}));
}

TEST_F(UserCommands, DetailsAreShownForAnyIDAndEnableWhenClosed) {
    Carry(ShowDetails, 77);
    EXPECT_EQ(Calls(), (Texts{"Details 77"}));
    Carry(DetailsClosed);
    EXPECT_EQ(Calls(), (Texts{"Enable"}));
    Carry(QuietModeClosed);
    EXPECT_EQ(Calls(), (Texts{"Enable"}));
    EXPECT_TRUE(Sent().empty());
}

TEST_F(UserCommands, CancelNeverAsks) {
    Pend(1, true);
    Carry(CancelAction, 1);
    EXPECT_EQ(Sent(), (Texts{TakenDocument(1, true)}));
    EXPECT_EQ(Calls(), (Texts{"Update", "Enable"}));
    EXPECT_TRUE(actions.empty());
}

TEST_F(UserCommands, UnknownIDsOnlyEnable) {
    Pend(1);
    for (UICommandType const type : {CancelAction, TakeAction, ConfirmAccepted}) {
        Carry(type, 9);
        EXPECT_EQ(Calls(), (Texts{"Enable"})) << type;
    }
    EXPECT_TRUE(Sent().empty());
    EXPECT_EQ(PendingIDs(), (IDs{1}));
}

TEST_F(UserCommands, OfSeveralActionsOfOneIDTheFirstIsMeant) {
    Pend(1, true);
    Pend(1);
    Carry(TakeAction, 1);
    EXPECT_EQ(Calls(), (Texts{"Confirm 1"}));
    Carry(CancelAction, 1);
    ASSERT_EQ(actions.size(), 1u);
    EXPECT_TRUE(actions.front().preActionMessage.IsNull());
}

TEST_F(UserCommands, TakeSendsAtOnceWhenNothingIsToBeConfirmed) {
    Pend(1);
    Pend(2);
    Carry(TakeAction, 1);
    EXPECT_EQ(Sent(), (Texts{TakenDocument(1)}));
    EXPECT_EQ(Calls(), (Texts{"Update 2", "Enable"}));
}

TEST_F(UserCommands, TakeWaitsForItsConfirmation) {
    Pend(1, true);
    Pend(2);
    Carry(TakeAction, 1);
    EXPECT_TRUE(Sent().empty());
    EXPECT_EQ(Calls(), (Texts{"Confirm 1"})) << "the dialog stays disabled";
    Carry(ConfirmAccepted, 1);
    EXPECT_EQ(Sent(), (Texts{TakenDocument(1)}));
    EXPECT_EQ(Calls(), (Texts{"Update 2", "Enable"}));
}

TEST_F(UserCommands, RefusedActionStays) {
    Pend(1, true);
    Carry(TakeAction, 1);
    Calls();
    Carry(ConfirmRefused, 1);
    EXPECT_TRUE(Sent().empty());
    EXPECT_EQ(Calls(), (Texts{"Enable"}));
    EXPECT_EQ(PendingIDs(), (IDs{1}));
}

TEST_F(UserCommands, TakeAllOfNothingUpdatesAndEnables) {
    Carry(TakeAll);
    EXPECT_TRUE(Sent().empty());
    EXPECT_EQ(Calls(), (Texts{"Update", "Enable"}));
}

TEST_F(UserCommands, TakeAllSendsInTheOrderOfTheActions) {
    for (unsigned long const id : {5ul, 1ul, 9ul, 1ul}) Pend(id);
    Carry(TakeAll);
    EXPECT_EQ(Sent(), (Texts{TakenDocument(5), TakenDocument(1), TakenDocument(9), TakenDocument(1)}));
    EXPECT_EQ(Calls(), (Texts{"Update", "Enable"}));
    EXPECT_TRUE(actions.empty());
}

TEST_F(UserCommands, TakeAllAsksOnceForTheOneThatWantsIt) {
    Pend(1);
    Pend(2, true);
    Pend(3);
    Carry(TakeAll);
    EXPECT_EQ(Calls(), (Texts{"Confirm 2"}));
    EXPECT_TRUE(Sent().empty());
    Carry(ConfirmAccepted, 2);
    EXPECT_EQ(Sent(), (Texts{TakenDocument(1), TakenDocument(2), TakenDocument(3)}));
    EXPECT_EQ(Calls(), (Texts{"Update", "Enable", "Enable"}));
    EXPECT_TRUE(actions.empty());
}

TEST_F(UserCommands, TakeAllAsksOneAfterTheOther) {
    for (unsigned long const id : {1ul, 2ul, 3ul}) Pend(id, true);
    Carry(TakeAll);
    EXPECT_EQ(Calls(), (Texts{"Confirm 1"}));
    Carry(ConfirmAccepted, 1);
    EXPECT_EQ(Calls(), (Texts{"Confirm 2"}));
    Carry(ConfirmAccepted, 2);
    EXPECT_EQ(Calls(), (Texts{"Confirm 3"}));
    EXPECT_TRUE(Sent().empty());
    Carry(ConfirmAccepted, 3);
    EXPECT_EQ(Sent(), (Texts{TakenDocument(1), TakenDocument(2), TakenDocument(3)}));
}

TEST_F(UserCommands, OneRefusalCancelsTheWholeTakeAll) {
    Pend(1);
    Pend(2, true);
    Pend(3, true);
    Carry(TakeAll);
    Carry(ConfirmAccepted, 2);
    Calls();
    Carry(ConfirmRefused, 3);
    EXPECT_TRUE(Sent().empty());
    EXPECT_EQ(Calls(), (Texts{"Enable"}));
    EXPECT_EQ(PendingIDs(), (IDs{1, 2, 3}));
    Carry(ConfirmAccepted, 2);
    EXPECT_EQ(Sent(), (Texts{TakenDocument(2)})) << "the walk is over: an acceptance means one action again";
    EXPECT_EQ(PendingIDs(), (IDs{1, 3}));
}

TEST_F(UserCommands, TakeAllAnewStartsAtTheFirstAction) {
    Pend(1, true);
    Pend(2, true);
    Carry(TakeAll);
    Carry(ConfirmAccepted, 1);
    Calls();
    Carry(TakeAll);
    EXPECT_EQ(Calls(), (Texts{"Confirm 1"}));
}

TEST_F(UserCommands, FinishedWalkDoesNotTurnALaterConfirmationIntoTakeAll) {
    Pend(1, true);
    Carry(TakeAll);
    Carry(ConfirmAccepted, 1);
    Sent();
    Pend(2, true);
    Pend(3);
    Carry(TakeAction, 2);
    Carry(ConfirmAccepted, 2);
    EXPECT_EQ(Sent(), (Texts{TakenDocument(2)}));
    EXPECT_EQ(PendingIDs(), (IDs{3}));
}

TEST_F(UserCommands, WalkEndsWellWhenTheClientWithdrawsActionsMeanwhile) {
    for (unsigned long const id : {1ul, 2ul, 3ul}) Pend(id, true);
    Carry(TakeAll);
    Carry(ConfirmAccepted, 1);
    Carry(ConfirmAccepted, 2);
    actions.erase(actions.FindFirst(1));
    actions.erase(actions.FindFirst(2));
    Calls();
    Carry(ConfirmAccepted, 3);
    EXPECT_EQ(Sent(), (Texts{TakenDocument(3)}));
    EXPECT_EQ(Calls(), (Texts{"Update", "Enable", "Enable"}));
}

TEST_F(UserCommands, WalkKeepsItsPlaceWhenAnEarlierActionGoes) {
    for (unsigned long const id : {1ul, 2ul, 3ul}) Pend(id, true);
    Carry(TakeAll);
    actions.erase(actions.FindFirst(1));
    Calls();
    Carry(ConfirmAccepted, 1);
    EXPECT_EQ(Calls(), (Texts{"Confirm 3"})) << "the place is not moved back, so that 2 is not asked about";
}

TEST_F(UserCommands, WalkOverAnEmptiedListTakesNothing) {
    Pend(1, true);
    Carry(TakeAll);
    actions.clear();
    Calls();
    Carry(ConfirmAccepted, 1);
    EXPECT_TRUE(Sent().empty());
    EXPECT_EQ(Calls(), (Texts{"Update", "Enable", "Enable"}));
}

TEST_F(UserCommands, WalkAsksForWhatArrivesBehindItsCursor) {
    Pend(1, true);
    Carry(TakeAll);
    Pend(2, true);
    Calls();
    Carry(ConfirmAccepted, 1);
    EXPECT_EQ(Calls(), (Texts{"Confirm 2"}));
}

TEST_F(UserCommands, SnoozeOfMinutesCountsFromNow) {
    Pend(1);
    Instant const before = Instant::Now();
    Carry(Snooze, 0, 10, 123456);
    Instant const after = Instant::Now();
    TimeInterval const tenMinutes = TimeInterval::FromMicroseconds(600000000);
    EXPECT_GE(m_postponedTo, before + tenMinutes);
    EXPECT_LE(m_postponedTo, after + tenMinutes);
    EXPECT_EQ(m_remindInterval, tenMinutes);
    EXPECT_EQ(Sent(), (Texts{RemindTimeAt(m_postponedTo), RemindIntervalDocument("PT10M")}));
    EXPECT_TRUE(Calls().empty()) << "a snooze leaves the dialog as the callback has left it";
    EXPECT_EQ(PendingIDs(), (IDs{1}));
}

TEST_F(UserCommands, SnoozeWithoutMinutesTellsAFixedTime) {
    Pend(1);
    Carry(Snooze, 0, 0, 1293955509);
    EXPECT_EQ(m_postponedTo, Instant::FromMicroseconds(1293955509000000));
    EXPECT_EQ(m_remindInterval, TimeInterval());
    Texts const sent = Sent();
    ASSERT_EQ(sent.size(), 2u);
    EXPECT_NE(sent[0].find("<TimeObject>Sun, 02 Jan 2011 08:05:09 +0000</TimeObject>"), std::string::npos);
    EXPECT_EQ(sent[1], RemindIntervalDocument("PT0S"));
}

TEST_F(UserCommands, SnoozeOfNegativeMinutesCountsBackFromTheSeconds) {
    Pend(1);
    Carry(Snooze, 0, -15, 1293955509);
    EXPECT_EQ(m_postponedTo, Instant::FromMicroseconds(1293954609000000));
    EXPECT_EQ(m_remindInterval, TimeInterval::FromMicroseconds(-900000000));
    EXPECT_EQ(Sent()[1], RemindIntervalDocument("-PT15M"));
}

TEST_F(UserCommands, SnoozeReadsItsSecondsAsUnsigned32Bits) {
    Pend(1);
    Carry(Snooze, 0, 0, 4294967295);
    EXPECT_EQ(m_postponedTo, Instant::FromMicroseconds(4294967295000000));
    Carry(Snooze, 0, 0, 4294967296 + 5);
    EXPECT_EQ(m_postponedTo, Instant::FromMicroseconds(5000000));
    Carry(Snooze, 0, 0, -1);
    EXPECT_EQ(m_postponedTo, Instant::FromMicroseconds(4294967295000000));
}

TEST_F(UserCommands, SnoozeTakesTheWidestMinutes) {
    Pend(1);
    Carry(Snooze, 0, INT_MIN, 0);
    EXPECT_EQ(m_remindInterval, TimeInterval::FromMicroseconds(-2147483648ll * 60000000));
    EXPECT_EQ(m_postponedTo, Instant::FromMicroseconds(-2147483648ll * 60000000));
    Carry(Snooze, 0, INT_MAX, 0);
    EXPECT_EQ(m_remindInterval, TimeInterval::FromMicroseconds(2147483647ll * 60000000));
}

TEST_F(UserCommands, SnoozeOfNothingSendsNothing) {
    m_postponedTo = Instant::FromMicroseconds(7);
    Carry(Snooze, 0, 10, 0);
    EXPECT_TRUE(Sent().empty());
    EXPECT_EQ(m_postponedTo, Instant::FromMicroseconds(7));
    EXPECT_EQ(m_remindInterval, TimeInterval());
}

TEST_F(UserCommands, OpenRequestShowsTheDialogWithTheSettingsInForce) {
    m_remindInterval = TimeInterval::FromMicroseconds(-300000000);
    m_snoozable = false;
    Carry(OpenRequested);
    EXPECT_EQ(Calls(), (Texts{"Show -300000000 false"}));
}
