#include "tests/windows/DialogTest.h"

#include "dialogs/ActionDetailsDialog.h"
#include "dialogs/ConfirmationDialog.h"

#include <X11/Shell.h>
#include <X11/StringDefs.h>

// The small dialogs in front of the action request dialog.

namespace {

void AddWithPreview(unsigned long id, char const* preview) {
    ActionRequest request;
    request.id = id;
    request.preview = SharedUString<UTF8>(MakeUTF8Ref(preview));
    actions.push_back(request);
}

} // namespace

class ActionDetailsDialog : public DialogTest {
protected:
    static std::string Script() { return Text(Find("form.actiondetails"), XtNstring); }
};

TEST_F(ActionDetailsDialog, ShowsTheScriptOfTheAction) {
    AddWithPreview(1, "wait 5\nreboot");
    ShowActionDetailsDialog(1);
    EXPECT_EQ(Text(Shell(), XtNtitle), "Action Script Preview");
    EXPECT_EQ(Script(), "wait 5\nreboot");
    EXPECT_EQ(Label("form.ok"), "OK");
    Widget const pane = Find("form.actiondetails");
    EXPECT_EQ(Number(pane, XtNwidth), 500);
    EXPECT_EQ(Number(pane, XtNheight), 100);
    EXPECT_EQ(Number(pane, "scrollVertical"), 2);
    EXPECT_EQ(Number(pane, "wrap"), 2);
    EXPECT_FALSE(Flag(pane, "displayCaret"));
    EXPECT_EQ(Number(Find("form.ok"), "fromVert"), reinterpret_cast<long>(pane));
    EXPECT_EQ(Number(Find("form.ok"), "horizDistance"),
              500 + Number(pane, XtNborderWidth) - Number(Find("form.ok"), XtNwidth));
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

class ConfirmationDialog : public DialogTest {};

TEST_F(ConfirmationDialog, ShowsTitleAndMessage) {
    Add({.id = 7, .title = "Restart", .preActionMessage = "Everything is closed."});
    ShowConfirmationRequestDialog(7);
    EXPECT_EQ(Text(Shell(), XtNtitle), "Confirmation Required");
    EXPECT_EQ(Label("form.actiontitle"), "Restart");
    EXPECT_EQ(Label("form.staticlabel"),
              "This action requires you to acknowledge the following confirmation message:");
    Widget const pane = Find("form.actionconfirmation");
    EXPECT_EQ(Text(pane, XtNstring), "Everything is closed.");
    EXPECT_EQ(Number(pane, XtNheight), 100);
    EXPECT_FALSE(Flag(pane, "displayCaret"));
    EXPECT_EQ(Label("form.ok"), "OK");
    EXPECT_EQ(Label("form.cancel"), "Cancel");
    EXPECT_EQ(Number(Find("form.actiontitle"), XtNborderWidth), 0);
    EXPECT_EQ(Number(Find("form.staticlabel"), XtNborderWidth), 0);
}

TEST_F(ConfirmationDialog, ItsButtonsEndAtTheRightEdgeOfThePane) {
    Add({.id = 7, .preActionMessage = "Sure?"});
    ShowConfirmationRequestDialog(7);
    Widget const pane = Find("form.actionconfirmation");
    long const border = Number(pane, XtNborderWidth);
    long const width = Number(pane, XtNwidth);
    long const cancel = Number(Find("form.cancel"), XtNwidth);
    long const ok = Number(Find("form.ok"), XtNwidth);
    EXPECT_EQ(Number(Find("form.cancel"), "horizDistance"), width + border - cancel);
    EXPECT_EQ(Number(Find("form.ok"), "horizDistance"), width + border - 6 * border - cancel - ok);
}

TEST_F(ConfirmationDialog, PaneIsAsWideAsTheWidestCaptionSoFar) {
    Add({.id = 7, .preActionMessage = "Sure?"});
    ShowConfirmationRequestDialog(7);
    long const width = Number(Find("form.actionconfirmation"), XtNwidth);
    EXPECT_EQ(width, std::max(500l, Number(Find("form.staticlabel"), XtNwidth)));
    HideConfirmationRequestDialog();
    Settle();

    XrmDatabase database = XtDatabase(display);
    XrmPutStringResource(&database, "*staticlabel.internalWidth", "200");
    ShowConfirmationRequestDialog(7);
    long const wide = Number(Find("form.actionconfirmation"), XtNwidth);
    EXPECT_EQ(wide, Number(Find("form.staticlabel"), XtNwidth));
    EXPECT_GT(wide, width);
    HideConfirmationRequestDialog();
    Settle();

    XrmPutStringResource(&database, "*staticlabel.internalWidth", "4");
    ShowConfirmationRequestDialog(7);
    EXPECT_EQ(Number(Find("form.actionconfirmation"), XtNwidth), wide) << "it never shrinks";
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
