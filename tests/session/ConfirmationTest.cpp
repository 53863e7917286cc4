#include "tests/session/UserOfTheProgram.h"

#include "tests/support/ExpectedDocuments.h"

// What a user is asked before an action is taken, and before all are; and what becomes of the answers when
// the client changes the pending actions between two of them.

class UserWhoConfirms : public UserOfTheProgram {
protected:
    void TakeAll() { Click("form.takeAllActions"); }

    void TakeRow(std::size_t row) {
        Select(row);
        Click("form.takeActions");
    }

    // Waits for the question about that action and answers it.
    void Accept(unsigned long id) { Answer(id, "form.ok"); }
    void Refuse(unsigned long id) { Answer(id, "form.cancel"); }

    void ExpectQuestion(unsigned long id) {
        std::string const number = std::to_string(id);
        ExpectLabel(cConfirmationTitle, "form.actiontitle", "Action " + number);
        ExpectPane(cConfirmationTitle, "form.actionconfirmation", "Take " + number + "?");
    }

    void ExpectTaken(std::vector<unsigned long> const& ids) {
        Texts expected;
        for (unsigned long const id : ids) expected.push_back(TakenDocument(id));
        EXPECT_EQ(Heard(ids.size()), expected);
    }

    // While the first question stands.
    void Change(std::string const& children) {
        ExpectQuestionIsUp();
        Send(children);
        LetATickPass();
    }

    void ExpectQuestionIsUp() { Shell(cConfirmationTitle); }

private:
    void Answer(unsigned long id, char const* button) {
        ExpectQuestion(id);
        CloseBy(button, cConfirmationTitle);
    }
};

TEST_F(UserWhoConfirms, TakesAnActionOnlyAfterAccepting) {
    StartWith(AskingAction(1) + Action(2));
    TakeRow(0);
    Refuse(1);
    LetATickPass();
    TakeRow(0);
    Accept(1);
    ExpectTaken({1});
    LetATickPass();
    EXPECT_FALSE(IsShown(cConfirmationTitle));
    TakeRow(0);
    ExpectTaken({2});
}

TEST_F(UserWhoConfirms, IsAskedAboutOneTwoOrAllOfSeveralBeforeAnyIsTaken) {
    StartWith(Action(1) + AskingAction(2) + Action(3));
    TakeAll();
    Accept(2);
    ExpectTaken({1, 2, 3});
    Send(AskingAction(4) + Action(5) + AskingAction(6));
    LetATickPass();
    TakeAll();
    Accept(4);
    Accept(6);
    ExpectTaken({4, 5, 6});
    Send(AskingAction(7) + AskingAction(8) + AskingAction(9));
    LetATickPass();
    TakeAll();
    Accept(7);
    Accept(8);
    LetATickPass();
    Accept(9);
    ExpectTaken({7, 8, 9});
    LetATickPass();
}

TEST_F(UserWhoConfirms, TakesNothingWhenTheFirstOrTheLastQuestionIsRefused) {
    StartWith(AskingAction(1) + Action(2) + AskingAction(3));
    TakeAll();
    Refuse(1);
    LetATickPass();
    TakeAll();
    Accept(1);
    Refuse(3);
    LetATickPass();
    EXPECT_FALSE(IsShown(cConfirmationTitle));
    // All three are still there, and the next answer is one about a single action.
    TakeRow(2);
    Accept(3);
    ExpectTaken({3});
    LetATickPass();
    TakeAll();
    Accept(1);
    ExpectTaken({1, 2});
}

TEST_F(UserWhoConfirms, AcceptsInVainWhatTheClientHasWithdrawn) {
    StartWith(AskingAction(1) + Action(2));
    TakeRow(0);
    Change(Withdrawal("Action", 1));
    ExpectQuestion(1);
    Accept(1);
    LetATickPass();
    TakeRow(0);
    ExpectTaken({2});
}

TEST_F(UserWhoConfirms, IsNotAskedWhenTheActionGoesInTheTickOfTheWish) {
    StartWith(AskingAction(1) + Action(2));
    Select(0);
    ScreenUser::Widget const button = Part("form.takeActions");
    // Behind a tick there is nearly a second for both.
    LetATickPass();
    m_user.Click(button);
    Send(Withdrawal("All", 1));
    LetATickPassAfterClick();
    EXPECT_FALSE(IsShown(cConfirmationTitle));
    TakeRow(0);
    ExpectTaken({2});
}

TEST_F(UserWhoConfirms, GoesOnWithAllWhenTheClientWithdrawsSomeMeanwhile) {
    StartWith(AskingAction(1) + AskingAction(2) + AskingAction(3) + AskingAction(4));
    TakeAll();
    // The one that is asked about; the next one moves up into its place and passes for asked.
    Change(Withdrawal("Action", 1));
    Accept(1);
    Accept(3);
    Accept(4);
    ExpectTaken({2, 3, 4});

    Send(AskingAction(11) + AskingAction(12) + AskingAction(13));
    LetATickPass();
    TakeAll();
    // The one that would be next.
    Change(Withdrawal("Action", 12));
    Accept(11);
    Accept(13);
    ExpectTaken({11, 13});

    Send(AskingAction(21) + AskingAction(22) + AskingAction(23));
    LetATickPass();
    TakeAll();
    // One that is still far.
    Change(Withdrawal("All", 23));
    Accept(21);
    Accept(22);
    ExpectTaken({21, 22});
    LetATickPass();
}

TEST_F(UserWhoConfirms, GoesOnWithAllWhenTheRestOfThemGoes) {
    StartWith(AskingAction(1) + AskingAction(2));
    TakeAll();
    Accept(1);
    ExpectQuestion(2);
    // Fewer are left than have been asked about.
    Change(Withdrawal("Action", 1));
    Accept(2);
    ExpectTaken({2});

    Send(AskingAction(11) + AskingAction(12));
    LetATickPass();
    TakeAll();
    Change(Withdrawal("Action", 12) + Withdrawal("Action", 11));
    Accept(11);
    LetATickPass();
    // The window is in use again.
    Send(Action(21));
    LetATickPass();
    TakeRow(0);
    ExpectTaken({21});
}

TEST_F(UserWhoConfirms, IsAskedAboutActionsThatComeMeanwhileAndTakesThemWithTheOthers) {
    StartWith(AskingAction(1));
    TakeAll();
    Change(Action(2) + AskingAction(3));
    Accept(1);
    Accept(3);
    ExpectTaken({1, 2, 3});
    LetATickPass();
}

TEST_F(UserWhoConfirms, LosesTheProgramWhenTheQuestionCannotBeSpelled) {
    StartWith(Action(1, Element("PreActionMessage", "\xc3\xb6")));
    TakeAll();
    EXPECT_EQ(Heard(2), (Texts{TextNotConvertibleDocument("ConfirmationDialog"),
                               TextNotConvertibleDocument("ConfirmationDialog")}));
    ExpectEnd(0);
}
