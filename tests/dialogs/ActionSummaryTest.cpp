#include "dialogs/ActionSummary.h"

#include "tests/dialogs/SummarySentences.h"
#include "tests/support/UStringPrinting.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <limits>
#include <vector>

namespace {

constexpr unsigned int cSave = 1, cDeadline = 2, cRestart = 4, cShutdown = 8, cNear = 16, cForced = 32;
constexpr long long cSecond = 1000000;
constexpr long long cMinute = 60 * cSecond;
constexpr long long cHour = 60 * cMinute;

// Midnight of the first of January 2100: later than any deadline that the store would put off.
constexpr Instant cNow = Instant::FromMicroseconds(4102444800000000);

Instant After(Instant instant, long long microseconds) {
    return instant + TimeInterval::FromMicroseconds(microseconds);
}

ActionRequest WithoutDeadline(unsigned int key, unsigned long id = 1) {
    ActionRequest action;
    action.id = id;
    action.requestSave = (key & cSave) != 0;
    action.restart = (key & cRestart) != 0;
    action.shutdown = (key & cShutdown) != 0;
    action.forceRun = (key & cForced) != 0;
    return action;
}

// With a deadline in whole seconds from `now`.
ActionRequest Due(long long microseconds, unsigned int key = 0, unsigned long id = 1, Instant now = cNow) {
    ActionRequest action = WithoutDeadline(key, id);
    action.deadline = TimeObject(After(now, microseconds), TimeZone());
    return action;
}

ActionRequest OfKey(unsigned int key, Instant now) {
    if ((key & cDeadline) == 0) return WithoutDeadline(key);
    return Due((key & cNear) != 0 ? 4 * cMinute + 30 * cSecond : 2 * cHour, key, 1, now);
}

ActionRequestStore StoreOf(std::vector<ActionRequest> const& actions) {
    ActionRequestStore store;
    store.UpdateActions(actions);
    return store;
}

AutoUString<UTF8> Pending(std::vector<ActionRequest> const& actions) {
    ActionRequestStore const store = StoreOf(actions);
    std::set<unsigned long> ids;
    for (ActionRequest const& action : actions) ids.insert(action.id);
    return ActionSummary(ids, store, true, cNow);
}

} // namespace

TEST(ActionSummary, OfOneActionHasTheSentenceOfItsKey) {
    for (unsigned int key = 0; key < 64; ++key)
        EXPECT_EQ(ActionSummary(OfKey(key, cNow), cNow), MakeUTF8Ref(cActionSentences[key])) << key;
}

TEST(ActionSummary, OfSeveralActionsHasTheSentenceOfItsKeyAndWording) {
    for (unsigned int key = 0; key < 64; ++key) {
        ActionRequestStore const store = StoreOf({OfKey(key, cNow)});
        EXPECT_EQ(ActionSummary({1}, store, true, cNow), MakeUTF8Ref(cPendingSentences[key])) << key;
        EXPECT_EQ(ActionSummary({1}, store, false, cNow), MakeUTF8Ref(cSelectedSentences[key])) << key;
    }
}

// The clock may pass a second between two readings, so only texts that leave room for it.
TEST(ActionSummary, ReadsTheClockItself) {
    Instant const now = Instant::Now();
    ActionRequest const later = Due(2 * cHour, cSave, 1, now);
    ActionRequest const soon = Due(4 * cMinute, 0, 1, now);
    ActionRequest const overdue = Due(-cHour, 0, 1, now);
    EXPECT_EQ(ActionSummary(later),
              "You should save your work before taking this action.  You must take this "
              "action within 2 hours."_utf8);
    EXPECT_EQ(ActionSummary(soon), "You must take this action now."_utf8);
    EXPECT_EQ(ActionSummary(overdue), "You must take this action now."_utf8);
    EXPECT_EQ(ActionSummary({1}, StoreOf({later}), true),
              "You should save your work before taking these actions.  There is at least one action you must "
              "take within 2 hours."_utf8);
    EXPECT_EQ(ActionSummary({1}, StoreOf({soon}), false),
              "There is at least one selected action you must take now."_utf8);
}

TEST(ActionSummary, IsEmptyWhenThereIsNothingToKnow) {
    EXPECT_TRUE(ActionSummary(ActionRequest(), cNow).empty());
    EXPECT_TRUE(Pending({ActionRequest()}).empty());
    EXPECT_TRUE(ActionSummary({}, ActionRequestStore(), true, cNow).empty());
    EXPECT_TRUE(ActionSummary({}, ActionRequestStore(), false, cNow).empty());
}

TEST(ActionSummary, SaysNothingOfRunningAutomaticallyWithoutADeadline) {
    EXPECT_TRUE(ActionSummary(WithoutDeadline(cForced), cNow).empty());
    EXPECT_EQ(ActionSummary(WithoutDeadline(cForced | cRestart), cNow),
              "This action will require a system restart."_utf8);
}

TEST(ActionSummary, TellsTheTimeOfAForcedActionOnEitherSideOfFiveMinutes) {
    ActionRequest const action = Due(5 * cMinute, cForced);
    EXPECT_EQ(ActionSummary(action, After(cNow, -1)),
              "This action will run automatically in 5 minutes."_utf8);
    EXPECT_EQ(ActionSummary(action, cNow),
              "This action will run automatically in 5 minutes, 0 seconds."_utf8);
    EXPECT_EQ(ActionSummary(action, After(cNow, 1)),
              "This action will run automatically in 4 minutes, 59 seconds."_utf8);
    EXPECT_EQ(ActionSummary(action, After(cNow, 5 * cMinute)),
              "This action will run automatically in 0 seconds."_utf8);
    EXPECT_EQ(ActionSummary(action, After(cNow, 5 * cMinute + 1)),
              "This action will run automatically in 0 seconds."_utf8);
}

TEST(ActionSummary, CallsAnOrdinaryDeadlineNowOnceItIsLessThanFiveMinutesAway) {
    ActionRequest const action = Due(5 * cMinute);
    EXPECT_EQ(ActionSummary(action, After(cNow, -1)), "You must take this action within 5 minutes."_utf8);
    // At exactly five minutes the sentence is still the one with a time, and the time is "Now".
    EXPECT_EQ(ActionSummary(action, cNow), "You must take this action within Now."_utf8);
    EXPECT_EQ(ActionSummary(action, After(cNow, 1)), "You must take this action now."_utf8);
    EXPECT_EQ(ActionSummary(action, After(cNow, cMinute)), "You must take this action now."_utf8);
    EXPECT_EQ(ActionSummary(action, After(cNow, 100 * cHour)), "You must take this action now."_utf8);
}

TEST(ActionSummary, OfAllActionsChangesAtTheSameBorders) {
    ActionRequestStore const ordinary = StoreOf({Due(5 * cMinute)});
    EXPECT_EQ(ActionSummary({1}, ordinary, true, After(cNow, -1)),
              "There is at least one action you must take within 5 minutes."_utf8);
    EXPECT_EQ(ActionSummary({1}, ordinary, true, cNow),
              "There is at least one action you must take within Now."_utf8);
    EXPECT_EQ(ActionSummary({1}, ordinary, true, After(cNow, 1)),
              "There is at least one action you must take now."_utf8);
    ActionRequestStore const forced = StoreOf({Due(5 * cMinute, cForced)});
    EXPECT_EQ(ActionSummary({1}, forced, true, After(cNow, -1)),
              "At least one of these actions will run automatically in 5 minutes."_utf8);
    EXPECT_EQ(ActionSummary({1}, forced, true, cNow),
              "At least one of these actions will run automatically in 5 minutes, 0 seconds."_utf8);
}

TEST(ActionSummary, TellsTheRestartOfOneActionAndTheShutdownOfSeveral) {
    EXPECT_EQ(ActionSummary(WithoutDeadline(cRestart | cShutdown), cNow),
              "This action will require a system restart."_utf8);
    EXPECT_EQ(Pending({WithoutDeadline(cRestart, 1), WithoutDeadline(cShutdown, 2)}),
              "The pending actions will require a system shutdown when they are complete."_utf8);
    EXPECT_EQ(Pending({WithoutDeadline(cRestart | cShutdown)}),
              "The pending actions will require a system shutdown when they are complete."_utf8);
}

TEST(ActionSummary, GathersTheFlagsOfAllActions) {
    EXPECT_EQ(Pending({WithoutDeadline(0, 1), WithoutDeadline(cSave, 2), Due(2 * cHour, cRestart, 3)}),
              "You should save your work before taking these actions, as they will require a system restart "
              "when they are complete.  There is at least one action you must take within 2 hours."_utf8);
}

TEST(ActionSummary, GoesByTheEarliestDeadline) {
    char const* const inTwoHours = "There is at least one action you must take within 2 hours.";
    EXPECT_EQ(Pending({Due(2 * cHour, 0, 1), Due(9 * cHour, 0, 2)}), MakeUTF8Ref(inTwoHours));
    EXPECT_EQ(Pending({Due(9 * cHour, 0, 1), Due(2 * cHour, 0, 2)}), MakeUTF8Ref(inTwoHours));
    EXPECT_EQ(Pending({WithoutDeadline(0, 1), Due(2 * cHour, 0, 2), WithoutDeadline(0, 3)}),
              MakeUTF8Ref(inTwoHours));
}

TEST(ActionSummary, RunsAutomaticallyWhenTheActionOfTheEarliestDeadlineDoes) {
    EXPECT_EQ(Pending({Due(2 * cHour, cForced, 1), Due(9 * cHour, 0, 2)}),
              "At least one of these actions will run automatically in 2 hours."_utf8);
    EXPECT_EQ(Pending({Due(9 * cHour, 0, 1), Due(2 * cHour, cForced, 2)}),
              "At least one of these actions will run automatically in 2 hours."_utf8);
    EXPECT_EQ(Pending({Due(2 * cHour, 0, 1), Due(9 * cHour, cForced, 2)}),
              "There is at least one action you must take within 2 hours."_utf8);
    EXPECT_EQ(Pending({Due(9 * cHour, cForced, 1), Due(2 * cHour, 0, 2)}),
              "There is at least one action you must take within 2 hours."_utf8);
    EXPECT_EQ(Pending({WithoutDeadline(cForced, 1), Due(2 * cHour, 0, 2)}),
              "There is at least one action you must take within 2 hours."_utf8);
}

TEST(ActionSummary, LetsTheSmallestIDDecideAmongEqualDeadlines) {
    EXPECT_EQ(Pending({Due(2 * cHour, cForced, 1), Due(2 * cHour, 0, 2)}),
              "At least one of these actions will run automatically in 2 hours."_utf8);
    EXPECT_EQ(Pending({Due(2 * cHour, cForced, 2), Due(2 * cHour, 0, 1)}),
              "There is at least one action you must take within 2 hours."_utf8);
}

TEST(ActionSummary, LooksOnlyAtTheActionsThatItIsGiven) {
    ActionRequestStore const store = StoreOf({WithoutDeadline(cSave, 1), WithoutDeadline(cRestart, 2)});
    EXPECT_EQ(ActionSummary({2}, store, false, cNow),
              "The selected actions will require a system restart when they are complete."_utf8);
}

TEST(ActionSummary, RefusesAnIDThatTheStoreDoesNotHave) {
    ActionRequestStore const store = StoreOf({WithoutDeadline(0, 1)});
    EXPECT_THROW(ActionSummary({1, 2}, store, true, cNow), NoSuchActionRequestID);
    EXPECT_THROW(ActionSummary({2}, store, true), NoSuchActionRequestID);
}

TEST(ActionSummary, RefusesADeadlineOfNoMonth) {
    ActionRequest action;
    action.deadline = TimeObject(DateRecord{1, static_cast<Month>(13), 2100}, TimeOfDay(), TimeZone());
    EXPECT_THROW(ActionSummary(action, cNow), InvalidMonth);
    EXPECT_THROW(Pending({action}), InvalidMonth);
}

// The first of January of the last year that an instant reaches.
TEST(ActionSummary, GoesByADeadlineHoweverLateItIs) {
    ActionRequest action = WithoutDeadline(cForced);
    action.deadline = TimeObject(DateRecord{1, Month::January, 294247}, TimeOfDay(), TimeZone());
    EXPECT_EQ(Pending({action}),
              "At least one of these actions will run automatically in 106704500 days."_utf8);
    EXPECT_EQ(Pending({action, Due(2 * cHour, 0, 2)}),
              "There is at least one action you must take within 2 hours."_utf8);
}

// Year 0 is the first of the calendar; a time in the last year does not fit an instant and wraps around.
TEST(ActionSummary, TakesDeadlinesAndTimesAtTheEndsOfTheirRange) {
    Instant const ends[] = {Instant::FromMicroseconds(std::numeric_limits<long long>::min()), cNow,
                            Instant::FromMicroseconds(std::numeric_limits<long long>::max())};
    for (std::uint32_t const year : {0u, 294247u, 4294967295u}) {
        for (unsigned int const key : {0u, cForced}) {
            ActionRequest action = WithoutDeadline(key);
            action.deadline = TimeObject(DateRecord{1, Month::January, year}, TimeOfDay(), TimeZone());
            for (Instant const now : ends) {
                EXPECT_FALSE(ActionSummary(action, now).empty()) << year;
                EXPECT_FALSE(ActionSummary({1}, StoreOf({action}), true, now).empty()) << year;
            }
        }
    }
    ActionRequest first;
    first.deadline = TimeObject(DateRecord{1, Month::January, 0}, TimeOfDay(), TimeZone());
    EXPECT_EQ(ActionSummary(first, cNow), "You must take this action now."_utf8);
}
