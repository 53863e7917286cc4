#include "tests/session/UserOfTheProgram.h"

#include "tests/session/Documents.h"
#include "tests/support/ExpectedDocuments.h"

// A quiet period as the user meets it, with and without the window of pending actions on the screen.

namespace {

constexpr char cNoticeText[] = "form.staticlabel";

std::string QuietPeriod() {
    return QuietPeriodStart(TimeFromNow(0), TimeFromNow(60));
}

} // namespace

class UserInAQuietPeriod : public UserOfTheProgram {
protected:
    void TakeFirst() {
        Select(0);
        Click("form.takeActions");
    }
};

TEST_F(UserInAQuietPeriod, ReadsTheTimesOfTheFirstStartInFrontOfAWindowOutOfUse) {
    // Five and a half hours east of Greenwich, over midnight.
    Start("C", "", {{"TZ", "AAA-5:30"}});
    Send(Action(1));
    Shell();
    Select(0);
    Send(QuietPeriodStart("Sat, 01 Jan 2011 16:30:00 +0000", "Sun, 02 Jan 2011 00:30:09 +0000"));
    ScreenUser::WindowID const notice = Shell(cNoticeTitle);
    std::string const text = "Your administrator has disabled this feature between 22:00:00 and 06:00:09.";
    ExpectLabel(cNoticeTitle, cNoticeText, text);
    EXPECT_TRUE(IsInFront(notice));
    Click("form.takeActions");
    Send(QuietPeriodStart("Sat, 01 Jan 2011 01:00:00 +0000", "Sat, 01 Jan 2011 02:00:00 +0000"));
    ExpectSilence();
    EXPECT_EQ(m_user.FindWindows(cNoticeTitle), std::vector<ScreenUser::WindowID>{notice});
    ExpectLabel(cNoticeTitle, cNoticeText, text);
    // The end takes the notice away and puts the window into use.
    Send(QuietPeriodEnd());
    LetATickPass();
    EXPECT_FALSE(IsShown(cNoticeTitle));
    Click("form.takeActions");
    EXPECT_EQ(Heard(1), (Texts{TakenDocument(1)}));
}

TEST_F(UserInAQuietPeriod, PutsTheWindowIntoUseByClosingTheNoticeWhileForcedActionsWait) {
    StartWith(Action(1) + Action(2));
    Send(QuietPeriod());
    CloseBy("form.ok", cNoticeTitle);
    EXPECT_EQ(HeardAfterClicks("form.takeAllActions"), TakenDocument(1));
    EXPECT_EQ(Heard(1), (Texts{TakenDocument(2)}));
    // The period goes on: what forces itself has to wait, while messages come and go. Another start brings
    // another notice.
    Send(QuietPeriod() + Action(4) + OverdueAction(3) + Message(1, "Passing", Element("Timeout", "PT1S")) +
         Message(2, "Staying"));
    Shell("Passing");
    m_user.WaitUntilGone("Passing");
    EXPECT_TRUE(IsShown("Staying"));
    EXPECT_TRUE(IsShown(cNoticeTitle));
    EXPECT_EQ(m_session->ReadDocument(std::chrono::milliseconds(300)), std::nullopt);
    // Taken in the very tick of the end, before what the user presses behind it.
    Send(QuietPeriodEnd());
    m_user.WaitUntilGone(cNoticeTitle);
    m_user.Raise(Shell());
    Click("form.takeAllActions");
    EXPECT_EQ(Heard(2), (Texts{TakenDocument(3), TakenDocument(4)}));
}

TEST_F(UserInAQuietPeriod, MeetsNoNoticeWhenTheWindowComesOnlyLater) {
    Start();
    Send(QuietPeriod());
    // A new action calls for the window whatever the period.
    Send(Action(1));
    Shell();
    TakeFirst();
    EXPECT_EQ(Heard(1), (Texts{TakenDocument(1)}));
    EXPECT_FALSE(IsShown(cNoticeTitle));
}

TEST_F(UserInAQuietPeriod, IsRemindedByAWindowInUse) {
    Start();
    LetATickPass();
    // Snoozing until a quarter of an hour before the deadline is over in a few seconds.
    Send(Action(1, Element("Deadline", TimeFromNow(15 * 60 + 6))));
    LetATickPass();
    m_user.ClickRow(Part("form.snoozeViewport."), 0);
    Click("form.snoozeButton");
    m_user.WaitUntilGone(cTitle);
    Send(QuietPeriod());
    EXPECT_EQ(Heard(2).back(), RemindIntervalDocument("-PT15M"));
    TakeFirst();
    EXPECT_EQ(Heard(1), (Texts{TakenDocument(1)}));
    EXPECT_FALSE(IsShown(cNoticeTitle));
}
