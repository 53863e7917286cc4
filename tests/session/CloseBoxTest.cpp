#include "tests/session/UserOfTheProgram.h"

#include "tests/session/Documents.h"

// The close box of any window ends the program orderly, and decides nothing.

class UserAtACloseBox : public UserOfTheProgram {
protected:
    void StartWithOneAction() {
        StartWith(Action(1, Element("Preview", "wait 5") + Element("PreActionMessage", "Sure?")));
    }

    void ExpectEndBy(std::string const& title) {
        m_user.CloseWindow(title);
        ExpectEnd(0);
        EXPECT_EQ(m_session->ReadDocument(), std::nullopt) << "closing decides nothing";
    }
};

TEST_F(UserAtACloseBox, EndsTheProgramByTheWindowOfPendingActions) {
    StartWithOneAction();
    ExpectEndBy(cTitle);
}

TEST_F(UserAtACloseBox, EndsTheProgramByTheDetails) {
    StartWithOneAction();
    Select(0);
    Click("form.actionDetails");
    ExpectEndBy(cDetailsTitle);
}

TEST_F(UserAtACloseBox, EndsTheProgramByAQuestion) {
    StartWithOneAction();
    Select(0);
    Click("form.takeActions");
    ExpectEndBy(cConfirmationTitle);
}

TEST_F(UserAtACloseBox, EndsTheProgramByAMessage) {
    StartWith(Action(1) + Message(1, "A message"));
    ExpectEndBy("A message");
}

TEST_F(UserAtACloseBox, EndsTheProgramByTheNoticeOfAQuietPeriod) {
    StartWith(Action(1) + QuietPeriodStart(TimeFromNow(0), TimeFromNow(60)));
    ExpectEndBy(cNoticeTitle);
}
