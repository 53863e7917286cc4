#include "tests/windows/SmallDialogTest.h"

#include "app/WidgetHelpers.h"
#include "dialogs/ActionDetailsDialog.h"
#include "dialogs/ConfirmationDialog.h"
#include "dialogs/DialogParts.h"
#include "format/FormatOverrideScope.h"

#include <X11/Shell.h>
#include <X11/StringDefs.h>
#include <X11/Xaw/Label.h>

// The small dialogs in front of the action request dialog.

namespace {

void AddWithPreview(unsigned long id, char const* preview) {
    ActionRequest request;
    request.id = id;
    request.preview = SharedUString<UTF8>(MakeUTF8Ref(preview));
    actions.push_back(request);
}

} // namespace

class ActionDetailsDialog : public SmallDialogTest {
protected:
    static std::string Script() { return Text(Find("form.actiondetails"), XtNstring); }
};

TEST_F(ActionDetailsDialog, ShowsTheScriptOfTheAction) {
    AddWithPreview(1, "wait 5\nreboot");
    ShowActionDetailsDialog(1);
    EXPECT_EQ(Text(Shell(), XtNtitle), "Action Script Preview");
    EXPECT_EQ(Script(), "wait 5\nreboot");
    EXPECT_EQ(Label("form.ok"), "OK");
}

TEST_F(ActionDetailsDialog, ItsButtonEndsAtTheRightEdgeOfThePane) {
    AddWithPreview(1, "wait 5");
    for (char const* const border : {"1", "5"}) {
        Resource const thicker("*actiondetails.borderWidth", border, "1");
        ShowActionDetailsDialog(1);
        EXPECT_EQ(Number(Find("form.actiondetails"), XtNborderWidth), std::stol(border));
        EXPECT_EQ(Number(Find("form.ok"), "horizDistance"),
                  std::stol(border) + 500 - Number(Find("form.ok"), XtNwidth));
        HideActionDetailsDialog();
    }
}

TEST_F(ActionDetailsDialog, IsMadeOfNamedWidgets) {
    AddWithPreview(1, "1\n2\n3\n4\n5\n6\n7\n8\n9\n10\n11\n12\n13\n14\n15\n16\n17\n18\n19\n20\n");
    ShowActionDetailsDialog(1);
    ExpectParts({{"actiondetails", "Text"}, {"ok", "Command"}});
    ExpectBelow({{"ok", "actiondetails"}});
    ExpectPane(Find("form.actiondetails"), 500);
    ExpectPlaced();
    ExpectDragsThumb(TextScrollbar(Find("form.actiondetails")));
}

TEST_F(ActionDetailsDialog, OfSeveralActionsOfOneIDShowsTheOneThatHasDetails) {
    AddWithPreview(5, "other");
    ShowActionDetailsDialog(5);
    HideActionDetailsDialog();
    Add({.id = 1});
    ShowActionDetailsDialog(1);
    EXPECT_EQ(Script(), "") << "never the script of another action";
    HideActionDetailsDialog();
    Settle();
    AddWithPreview(1, "its own");
    ShowActionDetailsDialog(1);
    EXPECT_EQ(Script(), "its own");
}

TEST_F(ActionDetailsDialog, SecondOpeningChangesNothing) {
    AddWithPreview(1, "first");
    AddWithPreview(2, "second");
    ShowActionDetailsDialog(1);
    Widget const shell = Shell();
    ShowActionDetailsDialog(2);
    EXPECT_EQ(Shell(), shell);
    EXPECT_EQ(Script(), "first");
}

TEST_F(ActionDetailsDialog, ShowsTheFormerTextForAnActionThatIsGone) {
    AddWithPreview(1, "first");
    ShowActionDetailsDialog(1);
    HideActionDetailsDialog();
    ShowActionDetailsDialog(9);
    EXPECT_EQ(Script(), "first");
}

TEST_F(ActionDetailsDialog, ItsButtonClosesItAndTells) {
    AddWithPreview(1, "first");
    ShowActionDetailsDialog(1);
    Click(Find("form.ok"));
    EXPECT_EQ(Shell(), nullptr);
    EXPECT_EQ(Commands(), (std::vector<std::string>{"2 0 0 0"}));
    HideActionDetailsDialog();
}

TEST_F(ActionDetailsDialog, HidingAndUpdatingTellNobody) {
    HideActionDetailsDialog();
    UpdateActionDetailsDialog();
    AddWithPreview(1, "first");
    ShowActionDetailsDialog(1);
    actions.clear();
    AddWithPreview(1, "second");
    UpdateActionDetailsDialog();
    EXPECT_EQ(Script(), "first") << "there is nothing in it that changes";
    HideActionDetailsDialog();
    EXPECT_EQ(Shell(), nullptr);
    HideActionDetailsDialog();
    EXPECT_EQ(Commands(), std::vector<std::string>{});
}

TEST_F(ActionDetailsDialog, OpensAnewWithWhatIsPendingThen) {
    AddWithPreview(1, "first");
    ShowActionDetailsDialog(1);
    Click(Find("form.ok"));
    actions.clear();
    AddWithPreview(1, "second");
    ShowActionDetailsDialog(1);
    EXPECT_EQ(Script(), "second");
}

TEST_F(ActionDetailsDialog, StaysWithItsTextWhenTheActionGoes) {
    AddWithPreview(1, "first");
    ShowActionDetailsDialog(1);
    actions.clear();
    Settle();
    EXPECT_EQ(Script(), "first");
    Click(Find("form.ok"));
    EXPECT_EQ(Commands(), (std::vector<std::string>{"2 0 0 0"}));
}

TEST_F(ActionDetailsDialog, IsNotShownWithoutADisplay) {
    AddWithPreview(1, "first");
    Display* const opened = std::exchange(display, nullptr);
    ShowActionDetailsDialog(1);
    display = opened;
    EXPECT_EQ(Shell(), nullptr);
}

class ConfirmationDialog : public SmallDialogTest {};

TEST_F(ConfirmationDialog, ShowsTitleAndMessage) {
    Add({.id = 7, .title = "Restart", .preActionMessage = "Everything is closed."});
    ShowConfirmationRequestDialog(7);
    EXPECT_EQ(Text(Shell(), XtNtitle), "Confirmation Required");
    EXPECT_EQ(Label("form.actiontitle"), "Restart");
    EXPECT_EQ(Label("form.staticlabel"),
              "This action requires you to acknowledge the following confirmation message:");
    Widget const pane = Find("form.actionconfirmation");
    EXPECT_EQ(Text(pane, XtNstring), "Everything is closed.");
    EXPECT_EQ(Label("form.ok"), "OK");
    EXPECT_EQ(Label("form.cancel"), "Cancel");
}

TEST_F(ConfirmationDialog, IsMadeOfNamedWidgets) {
    std::string message;
    for (int line = 0; line < 40; ++line) message += "line\n";
    Add({.id = 7, .preActionMessage = message});
    ShowConfirmationRequestDialog(7);
    ExpectParts({{"actiontitle", "Label"},
                 {"staticlabel", "Label"},
                 {"actionconfirmation", "Text"},
                 {"cancel", "Command"},
                 {"ok", "Command"}});
    ExpectBelow({{"staticlabel", "actiontitle"},
                 {"actionconfirmation", "staticlabel"},
                 {"cancel", "actionconfirmation"},
                 {"ok", "actionconfirmation"}});
    for (char const* const line : {"form.actiontitle", "form.staticlabel"}) ExpectLine(Find(line));
    Widget const pane = Find("form.actionconfirmation");
    ExpectPane(pane, Number(pane, XtNwidth));
    ExpectPlaced();
    ExpectDragsThumb(TextScrollbar(pane));
}

TEST_F(ConfirmationDialog, OfSeveralActionsOfOneIDShowsTheOneThatAsks) {
    Add({.id = 5, .title = "Other", .preActionMessage = "Delete everything?"});
    ShowConfirmationRequestDialog(5);
    HideConfirmationRequestDialog();
    Add({.id = 1, .title = "Silent"});
    Add({.id = 1, .title = "Asking", .preActionMessage = "Really?"});
    ShowConfirmationRequestDialog(1);
    EXPECT_EQ(Label("form.actiontitle"), "Asking");
    EXPECT_EQ(Text(Find("form.actionconfirmation"), XtNstring), "Really?");
}

TEST_F(ConfirmationDialog, NeverShowsTheMessageOfAnotherAction) {
    Add({.id = 5, .title = "Other", .preActionMessage = "Delete everything?"});
    ShowConfirmationRequestDialog(5);
    HideConfirmationRequestDialog();
    Add({.id = 1, .title = "Silent"});
    ShowConfirmationRequestDialog(1);
    EXPECT_EQ(Label("form.actiontitle"), "Silent");
    EXPECT_EQ(Text(Find("form.actionconfirmation"), XtNstring), "");
}

TEST_F(ConfirmationDialog, NamesTheActionByTheFirstLineOfItsTitle) {
    for (std::string const title : {"Update", "\n  Update\n", " \t\r\nUpdate\r\nand more"}) {
        actions.clear();
        Add({.id = 1, .title = title, .preActionMessage = "Sure?"});
        ShowConfirmationRequestDialog(1);
        EXPECT_EQ(Label("form.actiontitle"), "Update");
        HideConfirmationRequestDialog();
        Settle();
    }
}

TEST_F(ConfirmationDialog, CanBeAnsweredWhateverTheTitleIs) {
    std::string lines;
    for (int line = 0; line < 2000; ++line) lines += "line\n";
    for (std::string const& title : {std::string(400, 'W'), std::string(60000, 'W'), lines}) {
        actions.clear();
        Add({.id = 1, .title = title, .preActionMessage = "Sure?"});
        ShowConfirmationRequestDialog(1);
        Click(Find("form.ok"));
        EXPECT_EQ(Commands(), (std::vector<std::string>{"6 1 0 0"})) << title.size();
        HideConfirmationRequestDialog();
        Settle();
    }
}

TEST_F(ConfirmationDialog, ItsButtonsEndAtTheRightEdgeOfThePane) {
    Add({.id = 7, .preActionMessage = "Sure?"});
    for (char const* const thickness : {"1", "5"}) {
        Resource const thicker("*actionconfirmation.borderWidth", thickness, "1");
        ShowConfirmationRequestDialog(7);
        long const border = std::stol(thickness);
        EXPECT_EQ(Number(Find("form.actionconfirmation"), XtNborderWidth), border);
        long const width = Number(Find("form.actionconfirmation"), XtNwidth);
        long const cancel = Number(Find("form.cancel"), XtNwidth);
        long const ok = Number(Find("form.ok"), XtNwidth);
        EXPECT_EQ(Number(Find("form.cancel"), "horizDistance"), width + border - cancel);
        EXPECT_EQ(Number(Find("form.ok"), "horizDistance"), width + border - 6 * border - cancel - ok);
        HideConfirmationRequestDialog();
        Settle();
    }
}

TEST_F(ConfirmationDialog, PaneIsAsWideAsTheWidestCaptionSoFar) {
    Add({.id = 7, .preActionMessage = "Sure?"});
    ShowConfirmationRequestDialog(7);
    long const width = Number(Find("form.actionconfirmation"), XtNwidth);
    EXPECT_GE(width, std::max(500l, Number(Find("form.staticlabel"), XtNwidth)));
    HideConfirmationRequestDialog();
    Settle();

    long wide = 0;
    {
        Resource const wider("*staticlabel.internalWidth", "200", "4");
        ShowConfirmationRequestDialog(7);
        wide = Number(Find("form.actionconfirmation"), XtNwidth);
        EXPECT_EQ(wide, Number(Find("form.staticlabel"), XtNwidth));
        EXPECT_GE(wide, width);
        HideConfirmationRequestDialog();
        Settle();
    }
    ShowConfirmationRequestDialog(7);
    EXPECT_LT(Number(Find("form.staticlabel"), XtNwidth), wide);
    EXPECT_EQ(Number(Find("form.actionconfirmation"), XtNwidth), wide) << "it never shrinks";
}

TEST_F(ConfirmationDialog, ALongTranslatedCaptionWidensThePaneForGood) {
    std::string const entry =
        "This action requires you to acknowledge the following confirmation message:\t" +
        std::string(150, 'm');
    FormatOverrideSet const set(MakeUTF8Ref(entry), UStringRef<UTF8>());
    Add({.id = 7, .preActionMessage = "Sure?"});
    long wide = 0;
    {
        FormatOverrideScope const inForce(set, GlobalFormatOverrideContext());
        ShowConfirmationRequestDialog(7);
        wide = Number(Find("form.staticlabel"), XtNwidth);
        EXPECT_GE(wide, 150);
        EXPECT_GE(Number(Find("form.actionconfirmation"), XtNwidth), wide);
        HideConfirmationRequestDialog();
        Settle();
    }
    ShowConfirmationRequestDialog(7);
    EXPECT_LT(Number(Find("form.staticlabel"), XtNwidth), wide);
    EXPECT_GE(Number(Find("form.actionconfirmation"), XtNwidth), wide);
}

TEST_F(ConfirmationDialog, AnswersCloseItAndTellTheID) {
    Add({.id = 18446744073709551615ul, .preActionMessage = "Sure?"});
    ShowConfirmationRequestDialog(18446744073709551615ul);
    Click(Find("form.ok"));
    EXPECT_EQ(Shell(), nullptr);
    EXPECT_EQ(Commands(), (std::vector<std::string>{"6 18446744073709551615 0 0"}));
    ShowConfirmationRequestDialog(18446744073709551615ul);
    Click(Find("form.cancel"));
    EXPECT_EQ(Shell(), nullptr);
    EXPECT_EQ(Commands(), (std::vector<std::string>{"7 18446744073709551615 0 0"}));
}

TEST_F(ConfirmationDialog, SecondOpeningChangesNothing) {
    Add({.id = 1, .title = "First", .preActionMessage = "Sure?"});
    Add({.id = 2, .title = "Second", .preActionMessage = "Really?"});
    ShowConfirmationRequestDialog(1);
    ShowConfirmationRequestDialog(2);
    EXPECT_EQ(Label("form.actiontitle"), "First");
    Click(Find("form.ok"));
    EXPECT_EQ(Commands(), (std::vector<std::string>{"6 1 0 0"}));
}

TEST_F(ConfirmationDialog, ShowsTheFormerTextsForAnActionThatIsGone) {
    Add({.id = 1, .title = "First", .preActionMessage = "Sure?"});
    ShowConfirmationRequestDialog(1);
    HideConfirmationRequestDialog();
    ShowConfirmationRequestDialog(9);
    EXPECT_EQ(Label("form.actiontitle"), "First");
    EXPECT_EQ(Text(Find("form.actionconfirmation"), XtNstring), "Sure?");
    Click(Find("form.cancel"));
    EXPECT_EQ(Commands(), (std::vector<std::string>{"7 9 0 0"}));
}

TEST_F(ConfirmationDialog, HidingAndUpdatingTellNobody) {
    HideConfirmationRequestDialog();
    UpdateConfirmationRequestDialog();
    Add({.id = 1, .title = "First", .preActionMessage = "Sure?"});
    ShowConfirmationRequestDialog(1);
    actions.clear();
    Add({.id = 1, .title = "Second", .preActionMessage = "Really?"});
    UpdateConfirmationRequestDialog();
    EXPECT_EQ(Label("form.actiontitle"), "First") << "there is nothing in it that changes";
    HideConfirmationRequestDialog();
    EXPECT_EQ(Shell(), nullptr);
    HideConfirmationRequestDialog();
    EXPECT_EQ(Commands(), std::vector<std::string>{});
}

TEST_F(ConfirmationDialog, TellsTheIDOfAnActionThatHasGoneMeanwhile) {
    Add({.id = 3, .preActionMessage = "Sure?"});
    ShowConfirmationRequestDialog(3);
    actions.clear();
    Click(Find("form.ok"));
    EXPECT_EQ(Commands(), (std::vector<std::string>{"6 3 0 0"}));
}

TEST_F(ConfirmationDialog, IsNotShownWithoutADisplay) {
    Add({.id = 1, .preActionMessage = "Sure?"});
    Display* const opened = std::exchange(display, nullptr);
    ShowConfirmationRequestDialog(1);
    display = opened;
    EXPECT_EQ(Shell(), nullptr);
}

TEST_F(SmallDialogTest, StandTogether) {
    Add({.id = 1, .hasPreview = true, .preActionMessage = "Sure?"});
    ShowActionDetailsDialog(1);
    ShowConfirmationRequestDialog(1);
    EXPECT_EQ(Shells().size(), 2u);
    HideActionDetailsDialog();
    EXPECT_EQ(Text(Shell(), XtNtitle), "Confirmation Required");
}

TEST_F(SmallDialogTest, ButtonsSideBySideFitAWindowWhateverTheirLabels) {
    Widget const shell = CreateDialogShell("Title");
    Widget const form = CreateForm(shell);
    int sum = 0;
    for (char const* const name : {"a", "b", "c", "d"})
        sum += WidthOf(CreateButton(form, name, std::string(100000, 'W'), nullptr, nullptr));
    EXPECT_GT(sum, 4 * 500);
    EXPECT_LT(sum, 32767);
    XtDestroyWidget(shell);
}
