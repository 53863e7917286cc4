#include "tests/session/UserOfTheProgram.h"

#include "tests/support/ExpectedDocuments.h"

// What a user reads before deciding, and what is left of it when the client withdraws the action meanwhile.

namespace {

constexpr char cPane[] = "form.actiondetails";

std::string ActionWithScript(unsigned long id, std::string const& script) {
    return Action(id, Element("Preview", script));
}

} // namespace

class UserWhoReadsDetails : public UserOfTheProgram {
protected:
    void Open(std::size_t row) {
        Select(row);
        Click("form.actionDetails");
        Shell(cDetailsTitle);
    }
};

TEST_F(UserWhoReadsDetails, ReadsTheScriptWhileTheOtherWindowIsOutOfUse) {
    StartWith(ActionWithScript(1, "wait 5") + Action(2));
    Open(0);
    ExpectPane(cDetailsTitle, cPane, "wait 5");
    m_user.Raise(Shell());
    Click("form.takeActions");
    LetATickPassAfterClick();
    m_user.Raise(Shell(cDetailsTitle));
    CloseBy("form.ok", cDetailsTitle);
    LetATickPass();
    Click("form.takeActions");
    EXPECT_EQ(Heard(1), (Texts{TakenDocument(1)}));
}

TEST_F(UserWhoReadsDetails, KeepsReadingWhatTheClientWithdraws) {
    StartWith(ActionWithScript(1, "wait 5") + ActionWithScript(2, "wait 6"));
    Open(0);
    Send(Withdrawal("Action", 1));
    LetATickPass();
    ExpectPane(cDetailsTitle, cPane, "wait 5");
    CloseBy("form.ok", cDetailsTitle);
    LetATickPass();
    // The withdrawn row has gone.
    Open(0);
    ExpectPane(cDetailsTitle, cPane, "wait 6");
    CloseBy("form.ok", cDetailsTitle);
    LetATickPass();
    Click("form.takeActions");
    EXPECT_EQ(Heard(1), (Texts{TakenDocument(2)})) << "nothing is heard of the withdrawn one";
}

// The client's withdrawal and the user's wish meet in one tick, and the client comes first.
TEST_F(UserWhoReadsDetails, ReadsTheFormerScriptOfAnActionThatHasJustBeenWithdrawn) {
    StartWith(ActionWithScript(1, "wait 5") + ActionWithScript(2, "wait 6"));
    Open(0);
    CloseBy("form.ok", cDetailsTitle);
    LetATickPass();
    Select(1);
    ScreenUser::Widget const button = Part("form.actionDetails");
    // Behind a tick there is nearly a second for both.
    LetATickPass();
    m_user.Click(button);
    Send(Withdrawal("Action", 2));
    ExpectPane(cDetailsTitle, cPane, "wait 5");
    CloseBy("form.ok", cDetailsTitle);
    LetATickPass();
    Select(0);
    Click("form.takeActions");
    EXPECT_EQ(Heard(1), (Texts{TakenDocument(1)}));
}

TEST_F(UserWhoReadsDetails, ReadsNothingWhenNoScriptWasReadBefore) {
    StartWith(ActionWithScript(1, "wait 5"));
    Select(0);
    ScreenUser::Widget const button = Part("form.actionDetails");
    LetATickPass();
    m_user.Click(button);
    Send(Withdrawal("Action", 1));
    ExpectPane(cDetailsTitle, cPane, "");
}

// The end of a quiet period puts the window behind into use, whatever stands in front of it.
TEST_F(UserWhoReadsDetails, ReadsOneScriptAtATime) {
    StartWith(ActionWithScript(1, "wait 5") + ActionWithScript(2, "wait 6"));
    Open(0);
    ScreenUser::WindowID const details = Shell(cDetailsTitle);
    Send(QuietPeriodEnd());
    LetATickPass();
    m_user.Raise(Shell());
    Select(1);
    Click("form.actionDetails");
    LetATickPassAfterClick();
    EXPECT_EQ(m_user.FindWindows(cDetailsTitle), std::vector<ScreenUser::WindowID>{details});
    ExpectPane(cDetailsTitle, cPane, "wait 5");
}

TEST_F(UserWhoReadsDetails, LosesTheProgramWhenTheScriptCannotBeSpelled) {
    StartWith(ActionWithScript(1, "\xc3\xb6"));
    Select(0);
    Click("form.actionDetails");
    EXPECT_EQ(Heard(2), (Texts{TextNotConvertibleDocument("ActionDetailsDialog"),
                               TextNotConvertibleDocument("ActionDetailsDialog")}));
    ExpectEnd(0);
}
