#include "tests/windows/DialogTest.h"

#include "app/WidgetHelpers.h"
#include "dialogs/ActionRequestDialog.h"

#include <X11/Shell.h>
#include <X11/StringDefs.h>
#include <X11/Xaw/AsciiText.h>
#include <X11/Xaw/Label.h>
#include <X11/Xaw/List.h>

// What the action request dialog is made of and how it behaves, in the process of the test.

namespace {

constexpr long long cFiveMinutes = 300000000;

void Open(long long rememberedInterval = cFiveMinutes, bool snoozable = true) {
    UnixApp_ShowActionRequestDialog(false, TimeInterval::FromMicroseconds(rememberedInterval), snoozable);
}

std::vector<std::string> const cRowsFromNow = {
    "in 1 minute", "in 5 minutes", "in 10 minutes", "in 15 minutes", "in 30 minutes", "in 45 minutes",
    "in 1 hour",   "in 2 hours",   "in 4 hours",    "in 6 hours",    "in 8 hours",    "in 16 hours",
    "in 1 day",    "in 2 days",    "in 3 days",     "in 4 days",     "in 5 days"};

std::vector<std::string> RowsWithDeadline() {
    std::vector<std::string> rows = {"15 minutes before deadline", "5 minutes before deadline"};
    rows.insert(rows.end(), cRowsFromNow.begin(), cRowsFromNow.end());
    return rows;
}

} // namespace

class ActionRequestDialog : public DialogTest {
protected:
    static Widget ActionList() { return ListIn("viewport"); }
    static Widget SnoozeList() { return ListIn("snoozeViewport"); }
    static std::string Title() { return Label("form.actiontitle"); }
    static std::string Description() { return Text(Find("form.actiondesc"), XtNstring); }
    static void Select(int row) { ClickRow(ActionList(), row); }
    // "Action 1" and so on.
    static void AddNumbered(unsigned long count) {
        for (unsigned long id = 1; id <= count; ++id)
            Add({.id = id, .title = "Action " + std::to_string(id)});
    }
    // As often as it takes a user to come through all slices of the list.
    static void DragBarAllTheWayTo(float top) {
        for (int drags = 0; drags < 20; ++drags) DragBarTo(top);
    }
    // As the thumb of the action list's bar does; 0 is the top, 1 the end.
    static void DragBarTo(float top) {
        XtCallCallbacks(Find("form.viewport.vertical"), XtNjumpProc, &top);
        Settle();
    }
    static int Distance(char const* button) {
        return static_cast<int>(Number(Find(std::string("form.") + button), "horizDistance") & 0xFFFF);
    }
    static int Width(std::string const& path) { return static_cast<int>(Number(Find(path), XtNwidth)); }
};

TEST_F(ActionRequestDialog, IsMadeOfNamedWidgets) {
    Add({});
    Open();
    struct Part {
        char const* path;
        char const* widgetClass;
    };
    for (Part const& part : {Part{"form", "Form"}, Part{"form.actiontitle", "Label"},
                             Part{"form.actiondesc", "Text"}, Part{"form.actionListLabel", "Label"},
                             Part{"form.viewport", "Viewport"}, Part{"form.takeAllActions", "Command"},
                             Part{"form.takeActions", "Command"}, Part{"form.cancelAction", "Command"},
                             Part{"form.actionDetails", "Command"}, Part{"form.snoozeLabel", "Label"},
                             Part{"form.snoozeViewport", "Viewport"}, Part{"form.snoozeButton", "Command"}}) {
        Widget const widget = Find(part.path);
        ASSERT_TRUE(widget) << part.path;
        EXPECT_EQ(ClassOf(widget), part.widgetClass) << part.path;
    }
    EXPECT_STREQ(XtName(ActionList()), "");
    EXPECT_STREQ(XtName(SnoozeList()), "");
    EXPECT_EQ(ClassOf(Shell()), "ApplicationShell");
    EXPECT_EQ(Text(Shell(), XtNtitle), "Varnik Action Requests");
}

TEST_F(ActionRequestDialog, CaptionsAreFixed) {
    Add({});
    Open();
    EXPECT_EQ(Label("form.actionListLabel"), "Title  --  Deadline");
    EXPECT_EQ(Label("form.snoozeLabel"), "Click Snooze to be reminded again:");
    EXPECT_EQ(Label("form.takeAllActions"), "Take All Actions");
    EXPECT_EQ(Label("form.actionDetails"), "Action Details");
}

TEST_F(ActionRequestDialog, ResourcesAreThoseOfTheDesign) {
    Add({});
    Open();
    Widget const pane = Find("form.actiondesc");
    EXPECT_EQ(Number(pane, XtNheight), 70);
    EXPECT_EQ(Number(pane, "scrollVertical"), 2);
    EXPECT_EQ(Number(pane, "wrap"), 2);
    EXPECT_FALSE(Flag(pane, "displayCaret"));
    EXPECT_EQ(Width("form.actiontitle"), 500);
    EXPECT_EQ(Width("form.actiondesc"), 500);
    EXPECT_EQ(Number(Find("form.actiontitle"), XtNborderWidth), 0);
    EXPECT_EQ(Number(Find("form.actionListLabel"), XtNborderWidth), 0);
    EXPECT_EQ(Number(Find("form.actionListLabel"), "vertDistance"), 10);
    EXPECT_EQ(Number(Find("form.viewport"), XtNheight), 100);
    EXPECT_EQ(Number(Find("form.snoozeViewport"), XtNheight), 40);
    for (Widget const list : {ActionList(), SnoozeList()}) {
        EXPECT_EQ(Number(list, "defaultColumns"), 1);
        EXPECT_TRUE(Flag(list, "forceColumns"));
        EXPECT_TRUE(Flag(list, "verticalList"));
    }
    for (char const* const viewport : {"form.viewport", "form.snoozeViewport"}) {
        EXPECT_TRUE(Flag(Find(viewport), "allowVert"));
        EXPECT_TRUE(Flag(Find(viewport), "forceBars"));
    }
    EXPECT_EQ(Number(Find("form.actiontitle"), "justify"), XtJustifyLeft);
}

TEST_F(ActionRequestDialog, SpeaksTheLanguageOfTheProcessInEveryPart) {
    Add({});
    Open();
    for (char const* const part :
         {"actiontitle", "actiondesc", "actionListLabel", "takeAllActions", "takeActions", "cancelAction",
          "actionDetails", "snoozeLabel", "snoozeButton"})
        EXPECT_EQ(Flag(Find(std::string("form.") + part), "international"), international) << part;
    EXPECT_EQ(Flag(ActionList(), "international"), international);
    EXPECT_EQ(Flag(SnoozeList(), "international"), international);
}

TEST_F(ActionRequestDialog, PartsStandBelowOneAnother) {
    Add({});
    Open();
    struct Order {
        char const* part;
        char const* above;
    };
    for (Order const& order : {Order{"actiondesc", "actiontitle"}, Order{"actionListLabel", "actiondesc"},
                               Order{"viewport", "actionListLabel"}, Order{"takeAllActions", "viewport"},
                               Order{"takeActions", "viewport"}, Order{"cancelAction", "viewport"},
                               Order{"actionDetails", "viewport"}, Order{"snoozeLabel", "takeAllActions"},
                               Order{"snoozeViewport", "snoozeLabel"}, Order{"snoozeButton", "snoozeLabel"}})
        EXPECT_EQ(Number(Find(std::string("form.") + order.part), "fromVert"),
                  reinterpret_cast<long>(Find(std::string("form.") + order.above)))
            << order.part;
}

TEST_F(ActionRequestDialog, ButtonsEndAtTheRightEdgeOfThePanes) {
    Add({});
    Open();
    int const border = static_cast<int>(Number(Find("form.actiondesc"), XtNborderWidth));
    int const take = Width("form.takeActions");
    int const cancel = Width("form.cancelAction");
    int const details = Width("form.actionDetails");
    EXPECT_EQ(Distance("takeActions"), 500 + border - take);
    EXPECT_EQ(Distance("cancelAction"), 500 + border - 6 * border - take - cancel);
    EXPECT_EQ(Distance("actionDetails"), 500 + border - 12 * border - take - cancel - details);
    EXPECT_EQ(Distance("snoozeButton"), 500 + border - Width("form.snoozeButton"));
}

TEST_F(ActionRequestDialog, WideButtonsWidenThePanes) {
    // As wide as a translation with long words makes them.
    Resource const wide("*Command.internalWidth", "60", "4");
    Add({});
    Open();
    int const border = static_cast<int>(Number(Find("form.actiondesc"), XtNborderWidth));
    int const take = Width("form.takeActions");
    int const cancel = Width("form.cancelAction");
    int const details = Width("form.actionDetails");
    int const width = take + cancel + details + Width("form.takeAllActions") + 20 * border;
    ASSERT_GT(width, 500);
    EXPECT_EQ(Width("form.actiontitle"), width - border);
    EXPECT_EQ(Width("form.actiondesc"), width - border);
    EXPECT_EQ(Width("form.viewport"), width - 15 - border + Width("form.viewport.vertical"));
    EXPECT_EQ(Distance("takeActions"), width + border - take);
    EXPECT_EQ(Distance("cancelAction"), width + border - 6 * border - take - cancel);
    EXPECT_EQ(Distance("actionDetails"), width + border - 12 * border - take - cancel - details);
    EXPECT_EQ(Distance("snoozeButton"), width + border - Width("form.snoozeButton"));
    EXPECT_EQ(Width("form.snoozeViewport"), 400 + Width("form.snoozeViewport.vertical"));
}

TEST_F(ActionRequestDialog, ButtonsThatJustFitLeaveThePanesAlone) {
    Add({});
    Open();
    long const border = Number(Find("form.actiondesc"), XtNborderWidth);
    long const rest = 500 - 20 * border - Width("form.takeActions") - Width("form.cancelAction") -
                      Width("form.actionDetails");
    for (long const beyond : {0l, 1l}) {
        HideActionRequestDialog();
        Settle();
        Resource const width("*takeAllActions.width", std::to_string(rest + beyond), "0");
        Open();
        ASSERT_EQ(Width("form.takeAllActions"), rest + beyond);
        EXPECT_EQ(Width("form.actiondesc"), beyond == 0 ? 500 : 501 - border) << beyond;
        EXPECT_EQ(Width("form.actiontitle"), beyond == 0 ? 500 : 501 - border) << beyond;
    }
}

TEST_F(ActionRequestDialog, IsWiredToTheWindowManagersCloseBox) {
    Add({});
    Open();
    EXPECT_EQ(Protocols(Shell()), (std::vector<std::string>{"WM_DELETE_WINDOW"}));
}

TEST_F(ActionRequestDialog, BarsAreDraggedByButtonThree) {
    std::string description;
    for (int line = 0; line < 40; ++line) description += "line\n";
    for (unsigned long id = 1; id <= 40; ++id) Add({.id = id, .description = description});
    Open(60000000);
    ExpectDragsThumb(Find("form.viewport.vertical"));
    ExpectDragsThumb(Find("form.snoozeViewport.vertical"));
    HideActionRequestDialog();
    Settle();
    Open();
    Select(0);
    ExpectDragsThumb(TextScrollbar(Find("form.actiondesc")));
}

TEST_F(ActionRequestDialog, ViewportsHaveRoomForTheirBars) {
    Add({});
    Open();
    EXPECT_EQ(Width("form.viewport"), 485 + Width("form.viewport.vertical"));
    EXPECT_EQ(Width("form.snoozeViewport"), 400 + Width("form.snoozeViewport.vertical"));
}

TEST_F(ActionRequestDialog, StandsInTheMiddleOfTheScreen) {
    Add({});
    Open();
    Settle();
    Widget const shell = Shell();
    long const x = Number(shell, XtNx);
    long const y = Number(shell, XtNy);
    EXPECT_EQ(x, (1024 - Number(shell, XtNwidth)) / 2);
    EXPECT_EQ(y, (768 - Number(shell, XtNheight)) / 2);
}

TEST_F(ActionRequestDialog, WithNothingPendingItCanOnlyBeClosed) {
    Open();
    EXPECT_EQ(Title(), "There are no pending actions.");
    EXPECT_EQ(Description(), "");
    EXPECT_EQ(Label("form.snoozeButton"), "Close");
    EXPECT_TRUE(IsSensitive("form.snoozeButton"));
    EXPECT_FALSE(XtIsSensitive(SnoozeList()));
    EXPECT_EQ(Label("form.cancelAction"), "Cancel Action");
    EXPECT_EQ(Label("form.takeActions"), "Take Action");
    for (char const* const button :
         {"form.takeAllActions", "form.takeActions", "form.cancelAction", "form.actionDetails"})
        EXPECT_FALSE(IsSensitive(button)) << button;
    EXPECT_FALSE(Flag(Find("form.actionDetails"), XtNmappedWhenManaged));

    Click(Find("form.snoozeButton"));
    EXPECT_FALSE(IsActionRequestDialogShown());
    EXPECT_EQ(Shell(), nullptr);
}

TEST_F(ActionRequestDialog, CountsRowsAndNotActions) {
    Add({.id = 1, .title = "First", .requestSave = true});
    Open();
    EXPECT_EQ(Title(), "There is 1 pending action.");
    Add({.id = 2, .title = ""});
    Add({.id = 3, .title = "Third"});
    UpdateActionRequestDialog();
    EXPECT_EQ(Title(), "There are 2 pending actions.");
    EXPECT_EQ(Rows(ActionList()), (std::vector<std::string>{"First", "Third"}));
    actions.erase(actions.FindFirst(1));
    actions.erase(actions.FindFirst(3));
    UpdateActionRequestDialog();
    EXPECT_EQ(Title(), "There are no pending actions.");
    EXPECT_TRUE(IsSensitive("form.takeAllActions")) << "an action without a title is pending all the same";
}

TEST_F(ActionRequestDialog, SummaryWithoutSelectionSpeaksOfAllActions) {
    Add({.id = 1, .title = "First"});
    Add({.id = 2, .title = "", .restart = true});
    Open();
    EXPECT_EQ(Description(), "The pending actions will require a system restart when they are complete.");
    EXPECT_FALSE(IsSensitive("form.takeActions"));
    EXPECT_FALSE(IsSensitive("form.cancelAction"));
    EXPECT_FALSE(IsSensitive("form.actionDetails"));
    EXPECT_TRUE(IsSensitive("form.takeAllActions"));
    EXPECT_EQ(Label("form.takeActions"), "Take Actions");
    EXPECT_EQ(Label("form.cancelAction"), "Cancel Actions");
    EXPECT_EQ(Label("form.snoozeButton"), "Snooze");
}

TEST_F(ActionRequestDialog, RowsTellTheDeadlineInLocalTime) {
    setenv("TZ", "UTC0", 1);
    ActionRequest request;
    request.id = 1;
    request.SetTitle("Update"_utf8);
    request.deadline = TimeObject(Instant::FromMicroseconds(4102531199000000), TimeZone::FromSeconds(7200));
    actions.push_back(request);
    Open();
    EXPECT_EQ(Rows(ActionList()), (std::vector<std::string>{"Update  --  Fri, 01 Jan 2100 23:59:59"}));
}

TEST_F(ActionRequestDialog, SelectedActionIsShown) {
    Add({.id = 1, .title = "First", .description = "About the first", .requestSave = true});
    Add({.id = 2,
         .title = "Second",
         .description = "About the second",
         .cancellable = false,
         .hasPreview = true});
    Open();
    Select(0);
    EXPECT_EQ(Highlight(ActionList()), 0);
    EXPECT_EQ(Title(), "First");
    EXPECT_EQ(Description(), "About the first\n\nYou should save your work before taking this action.");
    EXPECT_EQ(Label("form.takeActions"), "Take Action");
    EXPECT_EQ(Label("form.cancelAction"), "Cancel Action");
    EXPECT_TRUE(IsSensitive("form.takeActions"));
    EXPECT_TRUE(IsSensitive("form.cancelAction"));
    EXPECT_TRUE(Flag(Find("form.actionDetails"), XtNmappedWhenManaged)) << "another action has details";
    EXPECT_FALSE(IsSensitive("form.actionDetails"));

    Select(1);
    EXPECT_EQ(Title(), "Second");
    EXPECT_EQ(Description(), "About the second\n\n");
    EXPECT_EQ(Label("form.cancelAction"), "Cancel Action");
    EXPECT_FALSE(IsSensitive("form.cancelAction")) << "it cannot be cancelled";
    EXPECT_TRUE(IsSensitive("form.takeActions"));
    EXPECT_TRUE(IsSensitive("form.actionDetails"));
}

TEST_F(ActionRequestDialog, DetailsAreNotMappedWhenNoActionHasThem) {
    Add({});
    Open();
    EXPECT_FALSE(Flag(Find("form.actionDetails"), XtNmappedWhenManaged));
    Add({.id = 2, .hasPreview = true});
    UpdateActionRequestDialog();
    EXPECT_TRUE(Flag(Find("form.actionDetails"), XtNmappedWhenManaged));
    actions.erase(actions.FindFirst(2));
    UpdateActionRequestDialog();
    EXPECT_FALSE(Flag(Find("form.actionDetails"), XtNmappedWhenManaged));
}

TEST_F(ActionRequestDialog, SelectionIsARowAndNotAnAction) {
    for (unsigned long const id : {1ul, 2ul, 3ul}) Add({.id = id, .title = "Action " + std::to_string(id)});
    Open();
    Select(1);
    EXPECT_EQ(Title(), "Action 2");
    actions.erase(actions.FindFirst(1));
    UpdateActionRequestDialog();
    EXPECT_EQ(Title(), "Action 3") << "the same row means the next action";
    EXPECT_EQ(Highlight(ActionList()), 1);
    actions.erase(actions.FindFirst(3));
    UpdateActionRequestDialog();
    EXPECT_EQ(Title(), "There is 1 pending action.") << "the row is gone";
    EXPECT_EQ(Highlight(ActionList()), -1);
}

TEST_F(ActionRequestDialog, SelectionOutlivesTheDialog) {
    for (unsigned long const id : {1ul, 2ul}) Add({.id = id, .title = "Action " + std::to_string(id)});
    Open();
    Select(1);
    HideActionRequestDialog();
    Open();
    EXPECT_EQ(Title(), "Action 2");
    EXPECT_EQ(Highlight(ActionList()), 1);
}

TEST_F(ActionRequestDialog, WithdrawnAndSentAgainIsNotSelected) {
    Add({.id = 1, .title = "A"});
    Add({.id = 2, .title = "B"});
    Open();
    Select(1);
    {
        ActionRequestDialogBatch const batch;
        actions.erase(actions.FindFirst(2));
        UpdateActionRequestDialog();
        Add({.id = 2, .title = "B"});
        UpdateActionRequestDialog();
    }
    EXPECT_EQ(Title(), "There are 2 pending actions.");
    EXPECT_EQ(Highlight(ActionList()), -1) << "the rows are the same, and none is selected";
}

TEST_F(ActionRequestDialog, SelectingLooksAtTheDeadlinesAnew) {
    Add({.id = 1});
    Open();
    // Nobody has told the dialog of this one.
    Add({.id = 2, .deadline = 200l});
    Select(0);
    EXPECT_FALSE(IsSensitive("form.snoozeButton"));
    actions.erase(actions.FindFirst(2));
    Add({.id = 3, .deadline = 7200l});
    Select(0);
    EXPECT_TRUE(IsSensitive("form.snoozeButton"));
    EXPECT_EQ(Rows(SnoozeList()), RowsWithDeadline());
}

TEST_F(ActionRequestDialog, SelectingADisabledListDoesNothing) {
    Add({.id = 1, .title = "First"});
    Open();
    XawListHighlight(ActionList(), 0);
    DisableActionRequestDialog();
    XEvent event{};
    XtCallActionProc(ActionList(), "PostponeListSelect", &event, nullptr, 0);
    EXPECT_EQ(Title(), "There is 1 pending action.");
}

TEST_F(ActionRequestDialog, PaneIsReadOnlyAndStartsAtItsTop) {
    std::string description;
    for (int line = 0; line < 40; ++line) description += "line\n";
    Add({.id = 1, .description = description});
    Add({.id = 2, .description = "other\n" + description});
    Open();
    Widget const pane = Find("form.actiondesc");
    Select(0);
    ExpectDragsThumb(TextScrollbar(pane));
    Select(1);
    EXPECT_EQ(XawTextTopPosition(pane), 0);
    EXPECT_EQ(XawTextGetInsertionPoint(pane), 0);
    EXPECT_EQ(Number(pane, "editType"), XawtextRead);
}

TEST_F(ActionRequestDialog, PhantomRowOfAnEmptyListSelectsNothing) {
    Add({.id = 1, .title = ""});
    Open();
    ClickAt(ActionList(), 2, 2);
    EXPECT_EQ(Title(), "There are no pending actions.");
    Click(Find("form.takeActions"));
    EXPECT_TRUE(Commands().empty());
}

TEST_F(ActionRequestDialog, ButtonsDisableTheDialogAndQueueTheirCommand) {
    struct Case {
        char const* button;
        std::string command;
    };
    for (Case const& test :
         {Case{"form.takeAllActions", "0 0 0 0"}, Case{"form.actionDetails", "1 18446744073709551615 0 0"},
          Case{"form.cancelAction", "3 18446744073709551615 0 0"},
          Case{"form.takeActions", "4 18446744073709551615 0 0"}}) {
        actions.clear();
        Add({.id = 18446744073709551615ul, .hasPreview = true});
        Open();
        Select(0);
        Click(Find(test.button));
        EXPECT_EQ(Commands(), (std::vector<std::string>{test.command})) << test.button;
        EXPECT_TRUE(IsActionRequestDialogShown());
        EXPECT_FALSE(IsActionRequestDialogEnabled());
        for (char const* const control : {"form.takeAllActions", "form.actionDetails", "form.cancelAction",
                                          "form.takeActions", "form.snoozeButton"})
            EXPECT_FALSE(IsSensitive(control)) << control;
        EXPECT_FALSE(XtIsSensitive(ActionList()));
        EXPECT_FALSE(XtIsSensitive(SnoozeList()));
        Click(Find(test.button));
        EXPECT_TRUE(Commands().empty()) << "a disabled dialog takes no second press";
        HideActionRequestDialog();
    }
}

TEST_F(ActionRequestDialog, ButtonsForTheSelectionDoNothingWithoutOne) {
    Add({.hasPreview = true});
    Open();
    for (char const* const button : {"form.actionDetails", "form.cancelAction", "form.takeActions"}) {
        // Past the sensitivity, straight to the callback.
        XtCallCallbacks(Find(button), XtNcallback, nullptr);
        EXPECT_TRUE(Commands().empty()) << button;
        EXPECT_TRUE(IsActionRequestDialogEnabled()) << button;
    }
}

TEST_F(ActionRequestDialog, DisabledDialogFallsBehindUntilItIsEnabled) {
    Add({.id = 1, .title = "First"});
    Open();
    DisableActionRequestDialog();
    Add({.id = 2, .title = "Second"});
    UpdateActionRequestDialog();
    EXPECT_EQ(Rows(ActionList()), (std::vector<std::string>{"First"}));
    EnableActionRequestDialog();
    EXPECT_EQ(Rows(ActionList()), (std::vector<std::string>{"First", "Second"}));
    EXPECT_TRUE(IsSensitive("form.takeAllActions"));
    EXPECT_TRUE(XtIsSensitive(ActionList()));
}

TEST_F(ActionRequestDialog, EnablingAndDisablingWithoutADialogIsHarmless) {
    DisableActionRequestDialog();
    EXPECT_FALSE(IsActionRequestDialogEnabled());
    EnableActionRequestDialog();
    EXPECT_TRUE(IsActionRequestDialogEnabled());
    HideActionRequestDialog();
    UpdateActionRequestDialog();
    EXPECT_FALSE(IsActionRequestDialogShown());
}

TEST_F(ActionRequestDialog, SecondOpeningChangesNothing) {
    Add({});
    Open(cFiveMinutes, true);
    Widget const shell = Shell();
    Open(60000000, false);
    EXPECT_EQ(Shell(), shell);
    EXPECT_TRUE(IsSensitive("form.snoozeButton"));
    EXPECT_EQ(Highlight(SnoozeList()), 1);
}

TEST_F(ActionRequestDialog, SnoozeChoicesDependOnThereBeingADeadline) {
    Add({});
    Open();
    EXPECT_EQ(Rows(SnoozeList()), cRowsFromNow);
    Add({.id = 2, .deadline = 7200l});
    UpdateActionRequestDialog();
    EXPECT_EQ(Rows(SnoozeList()), RowsWithDeadline()) << "also those that fall behind the deadline";
}

TEST_F(ActionRequestDialog, NearestSnoozeChoiceIsPreselected) {
    struct Case {
        long long interval;
        bool deadline;
        int row;
    };
    for (Case const& test : {Case{300000000, false, 1}, Case{-300000000, true, 1}, Case{-300000000, false, 0},
                             Case{180000000, false, 0}, Case{180000001, false, 1}, Case{-900000000, true, 0},
                             Case{-600000000, true, 0}, Case{0, false, 0}, Case{432000000000, true, 18},
                             Case{std::numeric_limits<long long>::max(), false, 16},
                             Case{std::numeric_limits<long long>::min(), true, 0}}) {
        actions.clear();
        if (test.deadline)
            Add({.deadline = 7200l});
        else
            Add({});
        Open(test.interval);
        EXPECT_EQ(Highlight(SnoozeList()), test.row) << test.interval;
        HideActionRequestDialog();
        Settle();
    }
}

TEST_F(ActionRequestDialog, NearDeadlineClosesSnoozingForAll) {
    Add({.id = 1, .title = "Soon", .deadline = 240l});
    Add({.id = 2, .title = "Later", .deadline = 86400l});
    Open();
    EXPECT_FALSE(IsSensitive("form.snoozeButton"));
    EXPECT_FALSE(XtIsSensitive(SnoozeList()));
    Select(1);
    EXPECT_EQ(Title(), "Later");
    EXPECT_FALSE(IsSensitive("form.snoozeButton"));
    actions.erase(actions.FindFirst(1));
    UpdateActionRequestDialog();
    EXPECT_TRUE(IsSensitive("form.snoozeButton"));
    EXPECT_EQ(Rows(SnoozeList()), RowsWithDeadline());
}

TEST_F(ActionRequestDialog, ClosedSnoozingKeepsTheRowsOfItsList) {
    Add({.id = 1});
    Open();
    Add({.id = 2, .deadline = 240l});
    UpdateActionRequestDialog();
    EXPECT_EQ(Rows(SnoozeList()), cRowsFromNow);
}

TEST_F(ActionRequestDialog, ClientCanForbidSnoozing) {
    Add({});
    Open(cFiveMinutes, false);
    EXPECT_FALSE(IsSensitive("form.snoozeButton"));
    EXPECT_FALSE(XtIsSensitive(SnoozeList()));
}

TEST_F(ActionRequestDialog, SnoozeTellsTheChosenMinutesAndTheEarliestDeadline) {
    ActionRequest request;
    request.id = 1;
    request.SetTitle("Update"_utf8);
    request.deadline = TimeObject(Instant::FromMicroseconds(4102531199999999), TimeZone());
    actions.push_back(request);
    Add({.id = 2});
    Open(-300000000);
    Click(Find("form.snoozeButton"));
    EXPECT_FALSE(IsActionRequestDialogShown());
    EXPECT_EQ(Commands(), (std::vector<std::string>{"5 0 -5 4102531199"}));
    EXPECT_EQ(Shell(), nullptr);
}

TEST_F(ActionRequestDialog, SnoozeWithoutAnyDeadlineTellsTheLastTimeThereIs) {
    Add({});
    Open(600000000);
    Click(Find("form.snoozeButton"));
    // 9,223,372,036,854 seconds, cut to 32 bits.
    EXPECT_EQ(Commands(), (std::vector<std::string>{"5 0 10 2077252342"}));
}

TEST_F(ActionRequestDialog, EachSnoozeRowCanBeChosen) {
    int const minutes[] = {-15, -5,  1,   5,   10,   15,   30,   45,   60,  120,
                           240, 360, 480, 960, 1440, 2880, 4320, 5760, 7200};
    for (int row = 0; row < 19; ++row) {
        actions.clear();
        Add({.deadline = 1000000l});
        // What is preselected is scrolled to the top, so that the row below it can be seen and clicked.
        Open(60000000ll * minutes[row > 0 ? row - 1 : 0]);
        ClickRow(SnoozeList(), row);
        Click(Find("form.snoozeButton"));
        std::vector<std::string> const commands = Commands();
        ASSERT_EQ(commands.size(), 1u) << row;
        EXPECT_EQ(commands[0].substr(0, commands[0].rfind(' ')), "5 0 " + std::to_string(minutes[row]))
            << row;
    }
}

TEST_F(ActionRequestDialog, ChoiceIsLostWithTheNextRefresh) {
    Add({});
    Open(60000000);
    ClickRow(SnoozeList(), 1);
    EXPECT_EQ(Highlight(SnoozeList()), 1);
    UpdateActionRequestDialog();
    EXPECT_EQ(Highlight(SnoozeList()), 0) << "the remembered interval is preselected at each refresh";
}

TEST_F(ActionRequestDialog, ForcedActionCountsDown) {
    Add({.id = 1, .title = "Forced", .description = "d", .deadline = 250l, .forceRun = true});
    Open();
    EXPECT_EQ(Description(), "At least one of these actions will run automatically in 5 minutes, 0 seconds.");
    Select(0);
    EXPECT_EQ(Description().substr(0, 52), "d\n\nThis action will run automatically in 4 minutes, ");
}

TEST_F(ActionRequestDialog, OverdueActionThatIsNotForcedReadsNow) {
    Add({.id = 1, .title = "Late", .description = "d", .deadline = -100l});
    Open();
    Select(0);
    EXPECT_EQ(Description(), "d\n\nYou must take this action now.");
}

TEST_F(ActionRequestDialog, LongTitlesAreCutAndHarmless) {
    Add({.id = 1, .title = std::string(100000, 'W'), .description = std::string(200000, 'x')});
    Open();
    Select(0);
    EXPECT_EQ(Title().substr(0, 10), "WWWWWWWWWW");
    EXPECT_LT(Title().size(), 5000u);
    EXPECT_EQ(Description().size(), 200002u);
    EXPECT_EQ(Width("form.actiontitle"), 500);
    EXPECT_LT(Rows(ActionList())[0].size(), 5000u);
}

TEST_F(ActionRequestDialog, TitleShowsItsFirstLineWithSomethingInIt) {
    Add({.id = 1, .title = "\n  Update\nand more"});
    Open();
    Select(0);
    EXPECT_EQ(Title(), "Update");
}

TEST_F(ActionRequestDialog, TextsEndAtANul) {
    Add({.id = 1, .title = std::string("Vis\0ible", 8), .description = std::string("d\0e", 3)});
    Add({.id = 2, .title = std::string("\0hidden", 7)});
    Open();
    EXPECT_EQ(Rows(ActionList()), (std::vector<std::string>{"Vis"}));
    EXPECT_EQ(Title(), "There is 1 pending action.");
}

// A window of the server cannot be higher, nor be scrolled further, than 16 bits tell.

TEST_F(ActionRequestDialog, ShowsMoreRowsThanAWindowCanHold) {
    // 13,107 rows of 20 pixels and 4 more make a multiple of 65,536.
    AddNumbered(13107);
    Open();
    EXPECT_EQ(Title(), "There are 13107 pending actions.");
    EXPECT_LE(Number(ActionList(), XtNheight), 32767);
    EXPECT_EQ(Rows(ActionList()).front(), "Action 1");
}

TEST_F(ActionRequestDialog, LastOfManyRowsCanBeReachedAndTaken) {
    AddNumbered(5000);
    Open();
    for (int drags = 0; drags < 20 && Rows(ActionList()).back() != "Action 5000"; ++drags) DragBarTo(1.0f);
    DragBarTo(1.0f);
    ASSERT_EQ(Rows(ActionList()).back(), "Action 5000");
    Select(static_cast<int>(Rows(ActionList()).size()) - 1);
    EXPECT_EQ(Title(), "Action 5000");
    Click(Find("form.takeActions"));
    EXPECT_EQ(Commands(), (std::vector<std::string>{"4 5000 0 0"}));
}

TEST_F(ActionRequestDialog, FirstOfManyRowsCanBeReachedAgain) {
    AddNumbered(5000);
    Open();
    DragBarAllTheWayTo(1.0f);
    DragBarAllTheWayTo(0.0f);
    Select(0);
    EXPECT_EQ(Title(), "Action 1");
}

TEST_F(ActionRequestDialog, SelectionKeepsItsHighlightWhileManyRowsAreScrolled) {
    AddNumbered(5000);
    Open();
    Select(1);
    DragBarAllTheWayTo(1.0f);
    EXPECT_EQ(Highlight(ActionList()), -1);
    EXPECT_EQ(Title(), "Action 2");
    DragBarAllTheWayTo(0.0f);
    EXPECT_EQ(Highlight(ActionList()), 1);
}

TEST_F(ActionRequestDialog, FewRowsAreLeftOfMany) {
    AddNumbered(5000);
    Open();
    DragBarAllTheWayTo(1.0f);
    for (unsigned long id = 11; id <= 5000; ++id) actions.erase(actions.FindFirst(id));
    UpdateActionRequestDialog();
    EXPECT_EQ(Rows(ActionList()).size(), 10u);
    EXPECT_EQ(Rows(ActionList()).front(), "Action 1");
}

TEST_F(ActionRequestDialog, SelectionFarDownIsScrolledTo) {
    AddNumbered(5000);
    Open();
    DragBarAllTheWayTo(1.0f);
    Select(static_cast<int>(Rows(ActionList()).size()) - 1);
    HideActionRequestDialog();
    Open();
    EXPECT_EQ(Title(), "Action 5000");
    EXPECT_EQ(Rows(ActionList()).back(), "Action 5000");
    EXPECT_EQ(Highlight(ActionList()), static_cast<int>(Rows(ActionList()).size()) - 1);
}

TEST_F(ActionRequestDialog, BatchMayEnableAndDisableAnyNumberOfTimes) {
    Add({.id = 1, .title = "First"});
    Open();
    {
        ActionRequestDialogBatch const batch;
        for (unsigned long id = 2; id <= 20; ++id) {
            Add({.id = id, .title = "Action " + std::to_string(id)});
            UpdateActionRequestDialog();
            DisableActionRequestDialog();
            if (id < 20) EnableActionRequestDialog();
        }
    }
    EXPECT_FALSE(IsSensitive("form.takeAllActions"));
    EXPECT_FALSE(XtIsSensitive(ActionList()));
    EnableActionRequestDialog();
    EXPECT_EQ(Rows(ActionList()).size(), 20u);
    EXPECT_TRUE(IsSensitive("form.takeAllActions"));
}

// One refresh for a batch must leave what a refresh after each change would have left.

TEST_F(ActionRequestDialog, BatchShowsWhatItsLastStateIs) {
    Add({.id = 1, .title = "First"});
    Open();
    {
        ActionRequestDialogBatch const batch;
        Add({.id = 2, .title = "Second"});
        UpdateActionRequestDialog();
        EXPECT_EQ(Rows(ActionList()).size(), 1u);
    }
    EXPECT_EQ(Rows(ActionList()), (std::vector<std::string>{"First", "Second"}));
}

TEST_F(ActionRequestDialog, BatchDropsASelectionWhoseRowWasGoneInBetween) {
    for (unsigned long const id : {1ul, 2ul}) Add({.id = id, .title = "Action " + std::to_string(id)});
    Open();
    Select(1);
    {
        ActionRequestDialogBatch const batch;
        actions.erase(actions.FindFirst(2));
        UpdateActionRequestDialog();
        Add({.id = 3, .title = "Action 3"});
        UpdateActionRequestDialog();
    }
    EXPECT_EQ(Title(), "There are 2 pending actions.");
    EXPECT_EQ(Highlight(ActionList()), -1);
}

TEST_F(ActionRequestDialog, BatchFillsTheSnoozeListAsOfWhenSnoozingWasLastOpen) {
    Add({.id = 1});
    Open();
    {
        ActionRequestDialogBatch const batch;
        Add({.id = 2, .deadline = 7200l});
        UpdateActionRequestDialog();
        Add({.id = 3, .deadline = 200l});
        UpdateActionRequestDialog();
    }
    EXPECT_EQ(Rows(SnoozeList()), RowsWithDeadline());
    EXPECT_FALSE(IsSensitive("form.snoozeButton"));
}

TEST_F(ActionRequestDialog, BatchThatDisablesTheDialogShowsWhatCameBefore) {
    Add({.id = 1, .title = "First"});
    Open();
    {
        ActionRequestDialogBatch const batch;
        Add({.id = 2, .title = "Second"});
        UpdateActionRequestDialog();
        DisableActionRequestDialog();
        Add({.id = 3, .title = "Third"});
        UpdateActionRequestDialog();
    }
    EXPECT_EQ(Rows(ActionList()), (std::vector<std::string>{"First", "Second"}));
    EXPECT_FALSE(IsSensitive("form.takeAllActions"));
}

TEST_F(ActionRequestDialog, BatchThatEmptiesTheListKeepsTheSnoozeRows) {
    Add({.id = 1});
    Open();
    {
        ActionRequestDialogBatch const batch;
        Add({.id = 2, .deadline = 7200l});
        UpdateActionRequestDialog();
        actions.clear();
        UpdateActionRequestDialog();
    }
    EXPECT_EQ(Rows(SnoozeList()), RowsWithDeadline());
    EXPECT_EQ(Label("form.snoozeButton"), "Close");
}
