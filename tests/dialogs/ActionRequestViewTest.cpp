#include "dialogs/ActionRequestView.h"

#include "foundation/Exceptions.h"
#include "tests/support/UStringPrinting.h"

#include <gtest/gtest.h>

namespace {

ActionRequest Request(unsigned long id, UStringRef<UTF8> title) {
    ActionRequest request;
    request.id = id;
    request.SetTitle(title);
    return request;
}

ActionRequestSelection SelectedRow(int row, unsigned long id) {
    ActionRequestSelection selection;
    selection.row = row;
    selection.id = id;
    selection.rows = 2;
    return selection;
}

std::vector<std::string> Texts(std::vector<ActionRow> const& rows) {
    std::vector<std::string> texts;
    for (ActionRow const& row : rows) texts.push_back(row.text);
    return texts;
}

// For texts with a time: the clock may step by a second between two readings.
void ExpectEither(UStringRef<UTF8> const& text, UStringRef<UTF8> const& atOnce,
                  UStringRef<UTF8> const& aSecondLater) {
    EXPECT_TRUE(text == atOnce || text == aSecondLater) << MakeString(text);
}

} // namespace

TEST(CountText, CountsRows) {
    EXPECT_EQ(CountText(-1, 0), "There are no pending actions."_utf8);
    EXPECT_EQ(CountText(-1, 1), "There is 1 pending action."_utf8);
    EXPECT_EQ(CountText(-1, 2), "There are 2 pending actions."_utf8);
    EXPECT_EQ(CountText(-1, 2000), "There are 2000 pending actions."_utf8);
}

TEST(CountText, TellsOfASelectionInstead) {
    EXPECT_EQ(CountText(0, 5), "1 action selected"_utf8);
}

TEST(ActionRows, StandInTheOrderOfTheActionsWithTheirIDs) {
    ActionRequestList pending;
    pending.push_back(Request(7, "b"_utf8));
    pending.push_back(Request(3, "a"_utf8));
    pending.push_back(Request(7, "c"_utf8));
    std::vector<ActionRow> const rows = MakeActionRows(pending);
    EXPECT_EQ(Texts(rows), (std::vector<std::string>{"b", "a", "c"}));
    EXPECT_EQ(rows[0].id, 7u);
    EXPECT_EQ(rows[1].id, 3u);
    EXPECT_EQ(rows[2].id, 7u);
}

TEST(ActionRows, LeaveOutTitlesThatShowNothing) {
    ActionRequestList pending;
    pending.push_back(Request(1, ""_utf8));
    pending.push_back(Request(2, " "_utf8));
    pending.push_back(Request(3, MakeUTF8Ref(std::string("\0x", 2))));
    EXPECT_EQ(Texts(MakeActionRows(pending)), (std::vector<std::string>{" "}));
}

TEST(PendingView, WithoutSelectionSpeaksOfAll) {
    ActionRequestList pending;
    pending.push_back(Request(1, "a"_utf8));
    pending.push_back(Request(2, "b"_utf8));
    ActionRequestView const view = MakePendingView(pending, SelectedRow(-1, 0));
    EXPECT_EQ(view.title, "There are 2 pending actions."_utf8);
    EXPECT_EQ(view.description, ""_utf8);
    EXPECT_STREQ(view.takeLabel, "Take Actions");
    EXPECT_STREQ(view.cancelLabel, "Cancel Actions");
    EXPECT_STREQ(view.snoozeLabel, "Snooze");
    EXPECT_TRUE(view.takeAllEnabled);
    EXPECT_FALSE(view.takeEnabled);
    EXPECT_FALSE(view.cancelEnabled);
    EXPECT_FALSE(view.detailsEnabled);
    EXPECT_FALSE(view.detailsMapped);
}

TEST(PendingView, JoinsDescriptionAndSummary) {
    ActionRequestList pending;
    ActionRequest request = Request(1, "a"_utf8);
    request.SetDescription("{braces} stay"_utf8);
    request.shutdown = true;
    pending.push_back(request);
    EXPECT_EQ(MakePendingView(pending, SelectedRow(0, 1)).description,
              "{braces} stay\n\nThis action will require a system shutdown."_utf8);
}

TEST(PendingView, EndsTheDescriptionWithTwoLineEndsWhenThereIsNothingToAdd) {
    ActionRequestList pending;
    ActionRequest request = Request(1, "a"_utf8);
    request.SetDescription("as it is"_utf8);
    pending.push_back(request);
    EXPECT_EQ(MakePendingView(pending, SelectedRow(0, 1)).description, "as it is\n\n"_utf8);
}

TEST(PendingView, PutsAForcedDeadlineOffInTheTextAboutAllAndCountsDownInThatOfOne) {
    ActionRequestList pending;
    ActionRequest request = Request(1, "a"_utf8);
    request.deadline = TimeObject(Instant::Now() + TimeInterval::FromMicroseconds(60000000), TimeZone());
    request.forceRun = true;
    pending.push_back(request);
    ExpectEither(MakePendingView(pending, SelectedRow(-1, 0)).description,
                 "At least one of these actions will run automatically in 5 minutes, 0 seconds."_utf8,
                 "At least one of these actions will run automatically in 4 minutes, 59 seconds."_utf8);
    ExpectEither(MakePendingView(pending, SelectedRow(0, 1)).description,
                 "\n\nThis action will run automatically in 1 minute, 0 seconds."_utf8,
                 "\n\nThis action will run automatically in 59 seconds."_utf8);
}

TEST(PendingView, OfSeveralActionsOfOneIDShowsTheFirst) {
    ActionRequestList pending;
    pending.push_back(Request(1, "first"_utf8));
    pending.push_back(Request(1, "second"_utf8));
    EXPECT_EQ(MakePendingView(pending, SelectedRow(1, 1)).title, "first"_utf8);
}

TEST(PendingView, ThrowsForASelectionThatIsNotPending) {
    ActionRequestList pending;
    pending.push_back(Request(1, "a"_utf8));
    EXPECT_THROW(MakePendingView(pending, SelectedRow(0, 9)), NoSelectedAction);
}

TEST(PendingView, SnoozesWhenThatIsAvailable) {
    ActionRequestList pending;
    pending.push_back(Request(1, "a"_utf8));
    for (bool const available : {false, true}) {
        ActionRequestSelection selection = SelectedRow(-1, 0);
        selection.snoozeAvailable = available;
        ActionRequestView const view = MakePendingView(pending, selection);
        EXPECT_EQ(view.snoozeButtonEnabled, available);
        EXPECT_EQ(view.snoozeListEnabled, available);
    }
}

TEST(PendingView, CancelsOnlyWhatCanBeCancelledAndShowsDetailsOnlyOfWhatHasThem) {
    for (bool const cancellable : {false, true})
        for (bool const preview : {false, true}) {
            ActionRequestList pending;
            ActionRequest request = Request(1, "a"_utf8);
            request.cancellable = cancellable;
            if (preview) request.preview = SharedUString<UTF8>("script"_utf8);
            pending.push_back(request);
            ActionRequestView const view = MakePendingView(pending, SelectedRow(0, 1));
            EXPECT_EQ(view.cancelEnabled, cancellable);
            EXPECT_EQ(view.detailsEnabled, preview);
            EXPECT_EQ(view.detailsMapped, preview);
            EXPECT_TRUE(view.takeEnabled);
            EXPECT_STREQ(view.takeLabel, "Take Action");
            EXPECT_STREQ(view.cancelLabel, "Cancel Action");
        }
}

TEST(EmptyView, CanOnlyBeClosed) {
    ActionRequestView const view = MakeEmptyView(0);
    EXPECT_EQ(view.title, "There are no pending actions."_utf8);
    EXPECT_EQ(view.description, ""_utf8);
    EXPECT_STREQ(view.snoozeLabel, "Close");
    EXPECT_STREQ(view.takeLabel, "Take Action");
    EXPECT_STREQ(view.cancelLabel, "Cancel Action");
    EXPECT_TRUE(view.snoozeButtonEnabled);
    EXPECT_FALSE(view.snoozeListEnabled);
    EXPECT_FALSE(view.takeAllEnabled);
    EXPECT_FALSE(view.takeEnabled);
    EXPECT_FALSE(view.cancelEnabled);
    EXPECT_FALSE(view.detailsEnabled);
    EXPECT_FALSE(view.detailsMapped);
}
