#include "tools/screen-user/User.h"
#include "tests/session/ClientSession.h"
#include "tests/session/Documents.h"
#include "tests/session/PrivateDisplay.h"
#include "tests/session/WindowManager.h"
#include "tests/support/ExpectedDocuments.h"

#include <gtest/gtest.h>
#include <memory>
#include <thread>

// The whole program between its client and its user: what the user does at the screen, and what the client
// hears of it, byte by byte.

using std::chrono::milliseconds;
using Texts = std::vector<std::string>;

namespace {

constexpr char cTitle[] = "Varnik Action Requests";
constexpr char cDetailsTitle[] = "Action Script Preview";
constexpr char cConfirmationTitle[] = "Confirmation Required";

std::string Element(std::string const& name, std::string const& text) {
    return "<" + name + ">" + text + "</" + name + ">";
}

std::string Action(unsigned long id, std::string const& fields = "") {
    return Element("ActionRequest", Element("ID", std::to_string(id)) +
                                        Element("Title", "Action " + std::to_string(id)) +
                                        Element("Cancellable", "true") + fields);
}

std::string Document(std::string const& children) {
    return Element("ClientToUI", children);
}

} // namespace

class UserOfTheProgram : public testing::Test {
protected:
    UserOfTheProgram() : m_user(m_server.Name()) {}

    // Starts the program in a locale and brings it to the display.
    void Start(std::string const& locale = "C", std::string const& settings = "") {
        ClientSession::Options options;
        options.display = m_server.Name();
        options.environment["LC_ALL"] = locale;
        m_session = std::make_unique<ClientSession>(options);
        EXPECT_EQ(m_session->ReadDocument(), cReadyForData);
        m_session->SendDocument(Initialization(Element("RemindInterval", "PT5M") + settings));
    }

    void Send(std::string const& children) { m_session->SendDocument(Document(children)); }

    // Starts, with these actions pending and the dialog on the screen.
    void StartWith(std::string const& children) {
        Start();
        Send(children);
        Shell();
    }

    ScreenUser::WindowID Shell(std::string const& title = cTitle) { return m_user.WaitForWindow(title); }

    ScreenUser::Widget Part(std::string const& path, std::string const& title = cTitle) {
        return m_user.Find(Shell(title), path);
    }

    void Click(std::string const& path, std::string const& title = cTitle) {
        m_user.Click(Part(path, title));
    }

    void Select(std::size_t row) { m_user.ClickRow(Part("form.viewport."), row); }

    // The next documents that the client hears.
    Texts Heard(std::size_t count) {
        Texts documents;
        for (std::size_t index = 0; index < count; ++index)
            documents.push_back(m_session->ReadDocument().value_or("nothing"));
        return documents;
    }

    // What the client hears after a button has been pressed as often as it takes: one that is not in use does
    // nothing.
    std::string HeardAfterClicks(std::string const& path) {
        for (int click = 0; click < 20; ++click) {
            Click(path);
            if (std::optional<std::string> const document = m_session->ReadDocument(milliseconds(1500)))
                return *document;
        }
        return "nothing";
    }

    // Two ticks go by without a word.
    void ExpectSilence() { EXPECT_EQ(m_session->ReadDocument(milliseconds(2500)), std::nullopt); }

    void ExpectEnd(int status) { EXPECT_EQ(m_session->WaitForExitStatus(), status); }

    PrivateDisplay m_server;
    ScreenUser::User m_user;
    std::unique_ptr<ClientSession> m_session;
};

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

TEST_F(UserOfTheProgram, ReadsTheDetails) {
    StartWith(Action(1, Element("Preview", "wait 5")));
    Select(0);
    Click("form.actionDetails");
    Click("form.ok", cDetailsTitle);
    m_user.WaitUntilGone(cDetailsTitle);
    // The window behind is in use again at the next tick.
    EXPECT_EQ(HeardAfterClicks("form.takeActions"), TakenDocument(1));
}

TEST_F(UserOfTheProgram, ConfirmsBeforeAnActionIsTaken) {
    StartWith(Action(1, Element("PreActionMessage", "Sure?")) + Action(2));
    Select(0);
    Click("form.takeActions");
    Shell(cConfirmationTitle);
    ExpectSilence();
    Click("form.cancel", cConfirmationTitle);
    m_user.WaitUntilGone(cConfirmationTitle);
    ExpectSilence();
    Click("form.takeActions");
    Click("form.ok", cConfirmationTitle);
    EXPECT_EQ(Heard(1), (Texts{TakenDocument(1)}));
}

TEST_F(UserOfTheProgram, ConfirmsEachOfAllBeforeAnyIsTaken) {
    std::string const asks = Element("PreActionMessage", "Sure?");
    StartWith(Action(1, asks) + Action(2) + Action(3, asks));
    Click("form.takeAllActions");
    Click("form.ok", cConfirmationTitle);
    Click("form.cancel", cConfirmationTitle);
    m_user.WaitUntilGone(cConfirmationTitle);
    ExpectSilence();
    Click("form.takeAllActions");
    Click("form.ok", cConfirmationTitle);
    Click("form.ok", cConfirmationTitle);
    EXPECT_EQ(Heard(3), (Texts{TakenDocument(1), TakenDocument(2), TakenDocument(3)}));
}

TEST_F(UserOfTheProgram, ClosesTheProgramByTheCloseBox) {
    StartWith(Action(1));
    m_user.CloseWindow(cTitle);
    ExpectEnd(0);
    EXPECT_EQ(m_session->ReadDocument(), std::nullopt) << "closing decides nothing";
}

TEST_F(UserOfTheProgram, ClosesTheProgramByTheCloseBoxOfASmallDialog) {
    StartWith(Action(1, Element("Preview", "wait 5") + Element("PreActionMessage", "Sure?")));
    Select(0);
    Click("form.takeActions");
    Shell(cConfirmationTitle);
    m_user.CloseWindow(cConfirmationTitle);
    ExpectEnd(0);
    EXPECT_EQ(m_session->ReadDocument(), std::nullopt);
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

TEST_F(UserOfTheProgram, IsTakenBackThroughAQuietPeriod) {
    StartWith(Action(1));
    Select(0);
    Send("<QuietModeStart><StartTime>" + TimeFromNow(0) + "</StartTime><EndTime>" + TimeFromNow(60) +
         "</EndTime></QuietModeStart>");
    std::this_thread::sleep_for(milliseconds(2500));
    Click("form.takeActions");
    ExpectSilence();
    Send("<QuietModeEnd></QuietModeEnd>");
    EXPECT_EQ(HeardAfterClicks("form.takeActions"), TakenDocument(1));
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

TEST_F(UserOfTheProgram, LosesItWhenDetailsCannotBeSpelled) {
    StartWith(Action(1, Element("Preview", "\xc3\xb6")));
    Select(0);
    Click("form.actionDetails");
    EXPECT_EQ(Heard(2), (Texts{TextNotConvertibleDocument("ActionDetailsDialog"),
                               TextNotConvertibleDocument("ActionDetailsDialog")}));
    ExpectEnd(0);
}

TEST_F(UserOfTheProgram, LosesItWhenAConfirmationCannotBeSpelled) {
    StartWith(Action(1, Element("PreActionMessage", "\xc3\xb6")));
    Click("form.takeAllActions");
    EXPECT_EQ(Heard(2), (Texts{TextNotConvertibleDocument("ConfirmationDialog"),
                               TextNotConvertibleDocument("ConfirmationDialog")}));
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
