#include "tests/windows/DialogTest.h"

#include "app/WidgetHelpers.h"
#include "dialogs/ActionDetailsDialog.h"
#include "dialogs/ConfirmationDialog.h"
#include "dialogs/DialogParts.h"

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

class SmallDialog : public DialogTest {
protected:
    static void ExpectClasses(std::vector<std::pair<std::string, std::string>> const& parts) {
        for (auto const& [path, className] : parts) {
            ASSERT_TRUE(Find(path)) << path;
            EXPECT_EQ(ClassOf(Find(path)), className) << path;
            if (path == "form") continue;
            EXPECT_EQ(Flag(Find(path), "international"), international) << path;
        }
        EXPECT_EQ(ClassOf(Shell()), "ApplicationShell");
    }

    static void ExpectBelow(std::vector<std::pair<std::string, std::string>> const& parts) {
        for (auto const& [part, above] : parts)
            EXPECT_EQ(Number(Find("form." + part), "fromVert"), reinterpret_cast<long>(Find("form." + above)))
                << part;
    }

    // In the middle of the screen, closed by its close box, and with a bar that both buttons drag.
    static void ExpectPlaced(Widget pane) {
        Widget const shell = Shell();
        EXPECT_EQ(Number(shell, XtNx), (1024 - Number(shell, XtNwidth)) / 2);
        EXPECT_EQ(Number(shell, XtNy), (768 - Number(shell, XtNheight)) / 2);
        EXPECT_EQ(Protocols(shell), (std::vector<std::string>{"WM_DELETE_WINDOW"}));
        ExpectDragsThumb(TextScrollbar(pane));
    }
};

class ActionDetailsDialog : public SmallDialog {
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

TEST_F(ActionDetailsDialog, IsMadeOfNamedWidgets) {
    AddWithPreview(1, "1\n2\n3\n4\n5\n6\n7\n8\n9\n10\n11\n12\n13\n14\n15\n16\n17\n18\n19\n20\n");
    ShowActionDetailsDialog(1);
    ExpectClasses({{"form", "Form"}, {"form.actiondetails", "Text"}, {"form.ok", "Command"}});
    ExpectBelow({{"ok", "actiondetails"}});
    ExpectPlaced(Find("form.actiondetails"));
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

class ConfirmationDialog : public SmallDialog {};

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

TEST_F(ConfirmationDialog, IsMadeOfNamedWidgets) {
    std::string message;
    for (int line = 0; line < 40; ++line) message += "line\n";
    Add({.id = 7, .preActionMessage = message});
    ShowConfirmationRequestDialog(7);
    ExpectClasses({{"form", "Form"},
                   {"form.actiontitle", "Label"},
                   {"form.staticlabel", "Label"},
                   {"form.actionconfirmation", "Text"},
                   {"form.cancel", "Command"},
                   {"form.ok", "Command"}});
    ExpectBelow({{"staticlabel", "actiontitle"},
                 {"actionconfirmation", "staticlabel"},
                 {"cancel", "actionconfirmation"},
                 {"ok", "actionconfirmation"}});
    Widget const pane = Find("form.actionconfirmation");
    EXPECT_EQ(Number(pane, "scrollVertical"), 2);
    EXPECT_EQ(Number(pane, "wrap"), 2);
    EXPECT_EQ(Number(Find("form.actiontitle"), "justify"), Number(Find("form.staticlabel"), "justify"));
    EXPECT_EQ(Number(Find("form.actiontitle"), "justify"), XtJustifyLeft);
    ExpectPlaced(pane);
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

TEST_F(SmallDialog, ButtonsSideBySideFitAWindowWhateverTheirLabels) {
    Widget const shell = CreateDialogShell("Title");
    Widget const form = CreateForm(shell);
    int sum = 0;
    for (char const* const name : {"a", "b", "c", "d"})
        sum += WidthOf(CreateButton(form, name, std::string(100000, 'W'), nullptr, nullptr));
    EXPECT_GT(sum, 4 * 500);
    EXPECT_LT(sum, 32767);
    XtDestroyWidget(shell);
}
