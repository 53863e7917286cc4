#include "tests/session/UserOfTheProgram.h"

#include "tests/session/Documents.h"
#include "tests/session/WindowManager.h"
#include "tests/support/ExpectedDocuments.h"

#include <thread>

// The window of pending actions, and the ways in which the program ends.

using std::chrono::milliseconds;

TEST_F(UserOfTheProgram, TakesTheSelectedAction) {
    StartWith(Action(1) + Action(2) + Action(3));
    Select(1);
    Click("form.takeActions");
    EXPECT_EQ(Heard(1), (Texts{TakenDocument(2)}));
    ExpectSilence();
}

TEST_F(UserOfTheProgram, CancelsTheSelectedAction) {
    StartWith(Action(1) + Action(2, Element("PreActionMessage", "Sure?")));
    Select(1);
    Click("form.cancelAction");
    EXPECT_EQ(Heard(1), (Texts{TakenDocument(2, true)})) << "cancelling asks nothing";
}

TEST_F(UserOfTheProgram, TakesAllActionsInTheirOrder) {
    StartWith(Action(3) + Action(1) + Action(2));
    Click("form.takeAllActions");
    EXPECT_EQ(Heard(3), (Texts{TakenDocument(3), TakenDocument(1), TakenDocument(2)}));
    ExpectSilence();
    // Nothing is pending now: the button closes the window.
    Click("form.snoozeButton");
    m_user.WaitUntilGone(cTitle);
    ExpectSilence();
    EXPECT_TRUE(m_session->IsRunning());
}

TEST_F(UserOfTheProgram, GoesOnWithTheNextActionInTheSameRow) {
    StartWith(Action(1) + Action(2));
    Select(0);
    Click("form.takeActions");
    EXPECT_EQ(Heard(1), (Texts{TakenDocument(1)}));
    Click("form.takeActions");
    EXPECT_EQ(Heard(1), (Texts{TakenDocument(2)}));
}

TEST_F(UserOfTheProgram, SnoozesForMinutes) {
    StartWith(Action(1));
    std::string const before = TimeFromNow(300);
    Click("form.snoozeButton");
    m_user.WaitUntilGone(cTitle);
    Texts const heard = Heard(2);
    std::string const after = TimeFromNow(300);
    // A reminder in five minutes, to the second; few seconds pass between the two looks at the clock.
    bool expected = false;
    for (long ago = 0; ago < 60 && !expected; ++ago)
        expected = heard[0] == RemindTimeDocument(TimeFromNow(300 - ago));
    EXPECT_TRUE(expected) << heard[0] << "\nis not from " << before << " to " << after;
    EXPECT_EQ(heard[1], RemindIntervalDocument("PT5M"));
}

TEST_F(UserOfTheProgram, SnoozesUntilBeforeTheDeadlineAndIsRemindedThen) {
    std::string const deadline = TimeFromNow(15 * 60 + 8);
    StartWith(Action(1, Element("Deadline", deadline)));
    m_user.ClickRow(Part("form.snoozeViewport."), 0);
    Click("form.snoozeButton");
    m_user.WaitUntilGone(cTitle);
    Texts const heard = Heard(2);
    EXPECT_EQ(heard[1], RemindIntervalDocument("-PT15M"));
    EXPECT_NE(heard[0], "nothing");
    Shell();
    EXPECT_EQ(m_session->ReadDocument(milliseconds(100)), std::nullopt) << "the reminder itself says nothing";
}

TEST_F(UserOfTheProgram, SnoozesByEachRow) {
    struct Row {
        char const* interval;
        long seconds; // from now; negative: from the deadline
    };
    constexpr Row rows[] = {{"-PT15M", -900}, {"-PT5M", -300},  {"PT1M", 60},    {"PT5M", 300},
                            {"PT10M", 600},   {"PT15M", 900},   {"PT30M", 1800}, {"PT45M", 2700},
                            {"PT1H", 3600},   {"PT2H", 7200},   {"PT4H", 14400}, {"PT6H", 21600},
                            {"PT8H", 28800},  {"PT16H", 57600}, {"P1D", 86400},  {"P2D", 172800},
                            {"P3D", 259200},  {"P4D", 345600},  {"P5D", 432000}};
    constexpr long deadline = 1000000;
    std::string deadlineText;
    std::string deadlineTexts[2];
    do {
        // All three of one second.
        deadlineText = TimeFromNow(deadline);
        deadlineTexts[0] = TimeFromNow(deadline - 900);
        deadlineTexts[1] = TimeFromNow(deadline - 300);
    } while (deadlineText != TimeFromNow(deadline));
    StartWith(Action(1, Element("Deadline", deadlineText)));
    for (std::size_t row = 0; row < std::size(rows); ++row) {
        m_user.ClickRow(Part("form.snoozeViewport."), row);
        Click("form.snoozeButton");
        m_user.WaitUntilGone(cTitle);
        Texts const heard = Heard(2);
        bool expected = row < 2 && heard[0] == RemindTimeDocument(deadlineTexts[row]);
        for (long ago = 0; row >= 2 && ago < 60 && !expected; ++ago)
            expected = heard[0] == RemindTimeDocument(TimeFromNow(rows[row].seconds - ago));
        EXPECT_TRUE(expected) << rows[row].interval << " from now is not " << heard[0];
        EXPECT_EQ(heard[1], RemindIntervalDocument(rows[row].interval));
        // A new action brings the dialog back.
        Send(Action(row + 2));
        Shell();
    }
}

TEST_F(UserOfTheProgram, SeesANewActionWhileSnoozing) {
    StartWith(Action(1));
    Click("form.snoozeButton");
    m_user.WaitUntilGone(cTitle);
    Heard(2);
    Send(Action(2));
    Shell();
    Select(1);
    Click("form.takeActions");
    EXPECT_EQ(Heard(1), (Texts{TakenDocument(2)}));
}

TEST_F(UserOfTheProgram, SeesNoDialogBeforeTheReminderIsDue) {
    Start("C", Element("RemindTime", TimeFromNow(7)));
    Send(Action(1));
    Shell();
    Click("form.snoozeButton");
    m_user.WaitUntilGone(cTitle);
    Heard(2);
    std::this_thread::sleep_for(milliseconds(2500));
    EXPECT_EQ(m_user.FindWindow(cTitle), std::nullopt);
}

TEST_F(UserOfTheProgram, FindsTheWindowInTheMiddleUnderAWindowManager) {
    WindowManager const manager(m_server.Name());
    StartWith(Action(1));
    ScreenUser::Area area;
    EXPECT_TRUE(WaitFor([&] {
        area = m_user.AreaOf(Shell()).value_or(ScreenUser::Area());
        return std::abs(2 * area.x + area.width - 1024) < 40 && std::abs(2 * area.y + area.height - 768) < 60;
    })) << area.x
        << " " << area.y << " " << area.width << " " << area.height;
    m_user.CloseWindow(cTitle);
    ExpectEnd(0);
}

TEST_F(UserOfTheProgram, SeesTheDialogGoOnWhenTheClientWithdrawsAnAction) {
    StartWith(Action(1) + Action(2));
    Select(1);
    Send("<RemoveRequest><RemoveType>Action</RemoveType><ID>1</ID></RemoveRequest>");
    std::this_thread::sleep_for(milliseconds(2500));
    // The selected row is gone: nothing is selected, and the button takes nothing.
    m_user.Click(Part("form.takeActions"));
    ExpectSilence();
    Select(0);
    Click("form.takeActions");
    EXPECT_EQ(Heard(1), (Texts{TakenDocument(2)}));
}

// A text that the locale cannot spell ends the program, and the client hears why.

TEST_F(UserOfTheProgram, LosesItWhenATitleCannotBeSpelled) {
    Start("C");
    Send(Element("ActionRequest", Element("ID", "1") + Element("Title", "Gr\xc3\xb6\xc3\x9f"
                                                                        "er")));
    EXPECT_EQ(Heard(2), (Texts{TextNotConvertibleDocument("ActionRequestDialog"),
                               TextNotConvertibleDocument("ActionRequestDialog")}));
    ExpectEnd(0);
}

TEST_F(UserOfTheProgram, LosesItWhenASelectedDescriptionCannotBeSpelled) {
    Start("C");
    Send(Action(1, Element("ShortDescription", "gr\xc3\xb6\xc3\x9f"
                                               "er")));
    Select(0);
    EXPECT_EQ(Heard(2), (Texts{TextNotConvertibleDocument("ActionRequestDialog"),
                               TextNotConvertibleDocument("ActionRequestDialog")}));
    ExpectEnd(0);
}

TEST_F(UserOfTheProgram, ReadsForeignLettersWhereTheLocaleHasThem) {
    Start("C.UTF-8", Element("UseLocale", "true"));
    Send(Action(1, Element("ShortDescription", "gr\xc3\xb6\xc3\x9f"
                                               "er")));
    Select(0);
    Click("form.takeActions");
    Texts heard = Heard(1);
    // Fonts that lack character sets are reported by the way.
    while (heard[0].find("<ErrorCode>1</ErrorCode>") != std::string::npos) heard = Heard(1);
    EXPECT_EQ(heard, (Texts{TakenDocument(1)}));
}
