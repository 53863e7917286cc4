#include "dialogs/ActionRequestStore.h"

#include "dialogs/ActionRequestList.h"
#include "foundation/Exceptions.h"

#include <gtest/gtest.h>

namespace {

constexpr long long cFiveMinutesInMicroseconds = 300000000;

ActionRequest Request(unsigned long id, UStringRef<UTF8> title) {
    ActionRequest request;
    request.id = id;
    request.SetTitle(title);
    return request;
}

ActionRequest RequestDue(unsigned long id, Instant deadline, bool forced) {
    ActionRequest request = Request(id, "due"_utf8);
    request.deadline = TimeObject(deadline, TimeZone());
    request.forceRun = forced;
    return request;
}

TimeInterval Microseconds(long long count) {
    return TimeInterval::FromMicroseconds(count);
}

} // namespace

TEST(ActionRequestStore, EmptyStoreHasNoAction) {
    ActionRequestStore store;
    EXPECT_FALSE(store.HasAction(0));
    EXPECT_THROW(store.GetAction(0), NoSuchActionRequestID);
    EXPECT_THROW(store.RemoveAction(0), NoSuchActionRequestID);
}

TEST(ActionRequestStore, RemovesTheActionOfAnID) {
    ActionRequestStore store;
    store.UpdateActions(std::vector<ActionRequest>{Request(1, "a"_utf8), Request(2, "b"_utf8)});
    store.RemoveAction(1);
    EXPECT_FALSE(store.HasAction(1));
    EXPECT_TRUE(store.HasAction(2));
    EXPECT_THROW(store.RemoveAction(1), NoSuchActionRequestID);
}

namespace {

// Has every field that another request may lack.
ActionRequest RequestWithEverything(unsigned long id) {
    NullOr<SharedUString<UTF8>> const text(SharedUString<UTF8>("text"_utf8));
    return ActionRequest(id, TimeObject(), "full"_utf8, "full"_utf8, true, true, true, true, text, true, true,
                         text, true, text, text);
}

void ExpectBare(ActionRequest const& request) {
    EXPECT_TRUE(request.title == "bare"_utf8);
    EXPECT_TRUE(request.description.empty());
    EXPECT_TRUE(request.deadline.IsNull());
    EXPECT_TRUE(request.preview.IsNull());
    EXPECT_TRUE(request.preActionMessage.IsNull());
    EXPECT_TRUE(request.sourceActionTitle.IsNull());
    EXPECT_TRUE(request.metaData.IsNull());
    EXPECT_FALSE(request.cancellable || request.shutdown || request.restart || request.includedCommand ||
                 request.forceRun || request.requestSave || request.useCannedStrings);
}

} // namespace

TEST(ActionRequestStore, LaterRequestOfAnIDReplacesAllFieldsOfTheEarlier) {
    ActionRequestStore store;
    store.UpdateActions(std::vector<ActionRequest>{RequestWithEverything(1), Request(1, "bare"_utf8)});
    EXPECT_EQ(store.Actions().size(), 1u);
    ExpectBare(store.GetAction(1));
}

TEST(ActionRequestStore, LaterUpdateReplacesAllFieldsOfAnID) {
    ActionRequestStore store;
    store.UpdateActions(std::vector<ActionRequest>{RequestWithEverything(1)});
    store.UpdateActions(std::vector<ActionRequest>{Request(1, "bare"_utf8)});
    EXPECT_EQ(store.Actions().size(), 1u);
    ExpectBare(store.GetAction(1));
}

TEST(ActionRequestStore, IsMadeFromTheListOfPendingActions) {
    ActionRequestList list;
    list.push_back(Request(1, "a"_utf8));
    list.push_back(Request(1, "b"_utf8));
    list.push_back(Request(2, "c"_utf8));
    ActionRequestStore store;
    store.UpdateActions(list);
    EXPECT_EQ(store.Actions().size(), 2u);
    EXPECT_TRUE(store.GetAction(1).title == "b"_utf8);
}

TEST(ActionRequestStore, UpdatingAddsAndReplacesButNeverRemoves) {
    ActionRequestStore store;
    store.UpdateActions(std::vector<ActionRequest>{Request(1, "a"_utf8)});
    store.UpdateActions(std::vector<ActionRequest>{Request(2, "b"_utf8)});
    EXPECT_TRUE(store.HasAction(1));
    EXPECT_TRUE(store.HasAction(2));
    store.UpdateActions(std::vector<ActionRequest>());
    EXPECT_EQ(store.Actions().size(), 2u);
}

TEST(ActionRequestStore, IsOrderedByUnsignedID) {
    ActionRequestStore store;
    store.UpdateActions(
        std::vector<ActionRequest>{Request(~0ul, "z"_utf8), Request(0, "a"_utf8), Request(5, "m"_utf8)});
    std::vector<unsigned long> ids;
    for (auto const& entry : store.Actions()) ids.push_back(entry.first);
    EXPECT_EQ(ids, (std::vector<unsigned long>{0, 5, ~0ul}));
}

TEST(ActionRequestStore, OverdueForcedDeadlineBecomesFiveMinutesFromNow) {
    Instant const before = Instant::Now();
    ActionRequestStore store;
    store.UpdateActions(std::vector<ActionRequest>{RequestDue(1, before + Microseconds(-3600000000), true)});
    Instant const after = Instant::Now();
    ActionRequest const& stored = store.GetAction(1);
    EXPECT_GE(*stored.Deadline(), before + Microseconds(cFiveMinutesInMicroseconds));
    EXPECT_LE(*stored.Deadline(), after + Microseconds(cFiveMinutesInMicroseconds));
    EXPECT_EQ(stored.deadline->Zone(), TimeZone());
}

TEST(ActionRequestStore, DeadlineThatIsNotForcedStaysInThePast) {
    Instant const past = Instant::Now() + Microseconds(-3600000000);
    ActionRequestStore store;
    store.UpdateActions(std::vector<ActionRequest>{RequestDue(1, past, false)});
    EXPECT_EQ(*store.GetAction(1).Deadline(), past);
}

TEST(ActionRequestStore, ForcedDeadlineBehindTheFloorIsNotMoved) {
    Instant const tomorrow = Instant::Now() + Microseconds(86400000000);
    ActionRequestStore store;
    store.UpdateActions(std::vector<ActionRequest>{RequestDue(1, tomorrow, true)});
    EXPECT_EQ(*store.GetAction(1).Deadline(), tomorrow);
}

TEST(ActionRequestStore, ForcedDeadlineAtTheFloorIsNotMoved) {
    // The clock counts whole seconds and may step between here and the update, which spoils an attempt. The
    // zone tells whether the deadline was replaced.
    for (int attempt = 0; attempt < 50; ++attempt) {
        Instant const before = Instant::Now();
        ActionRequest request = RequestDue(1, before + Microseconds(cFiveMinutesInMicroseconds), true);
        request.deadline->SetTimeZone(TimeZone::FromSeconds(3600));
        ActionRequestStore store;
        store.UpdateActions(std::vector<ActionRequest>{request});
        if (Instant::Now() != before) continue;
        EXPECT_EQ(store.GetAction(1).deadline->Zone(), TimeZone::FromSeconds(3600));
        return;
    }
    FAIL() << "the clock stepped in every attempt";
}

TEST(ActionRequestStore, ForcedDeadlineOneSecondBelowTheFloorIsMoved) {
    ActionRequest request =
        RequestDue(1, Instant::Now() + Microseconds(cFiveMinutesInMicroseconds - 1000000), true);
    request.deadline->SetTimeZone(TimeZone::FromSeconds(3600));
    ActionRequestStore store;
    store.UpdateActions(std::vector<ActionRequest>{request});
    EXPECT_EQ(store.GetAction(1).deadline->Zone(), TimeZone());
}

TEST(ActionRequestStore, TheListThatItWasMadeFromKeepsItsDeadline) {
    Instant const past = Instant::Now() + Microseconds(-1000000);
    std::vector<ActionRequest> const requests{RequestDue(1, past, true)};
    ActionRequestStore store;
    store.UpdateActions(requests);
    EXPECT_EQ(*requests[0].Deadline(), past);
}

TEST(ActionRequestStore, LooksAtTheDeadlineOfForcedActionsOnly) {
    ActionRequest request = Request(1, "a"_utf8);
    request.deadline = TimeObject(DateRecord{1, static_cast<Month>(13), 2100}, TimeOfDay(), TimeZone());
    ActionRequestStore store;
    EXPECT_NO_THROW(store.UpdateActions(std::vector<ActionRequest>{request}));
    request.forceRun = true;
    EXPECT_THROW(store.UpdateActions(std::vector<ActionRequest>{Request(2, "b"_utf8), request}),
                 InvalidMonth);
    EXPECT_TRUE(store.HasAction(2));
    EXPECT_TRUE(store.GetAction(1).forceRun);
}

TEST(ActionRequestStore, ForcedActionWithoutDeadlineGetsNone) {
    ActionRequest request = Request(1, "a"_utf8);
    request.forceRun = true;
    ActionRequestStore store;
    store.UpdateActions(std::vector<ActionRequest>{request});
    EXPECT_TRUE(store.GetAction(1).deadline.IsNull());
}
