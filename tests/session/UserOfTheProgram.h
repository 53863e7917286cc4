#pragma once

#include "tests/session/ClientSession.h"
#include "tests/session/PrivateDisplay.h"
#include "tools/screen-user/User.h"

#include <gtest/gtest.h>
#include <map>
#include <memory>
#include <string>
#include <vector>

// The whole program between its client and its user: what the user does at the screen, and what the client
// hears of it, byte by byte.

using Texts = std::vector<std::string>;

// The titles of the windows.
inline constexpr char cTitle[] = "Varnik Action Requests";
inline constexpr char cDetailsTitle[] = "Action Script Preview";
inline constexpr char cConfirmationTitle[] = "Confirmation Required";
inline constexpr char cNoticeTitle[] = "Not Currently Available";
inline constexpr char cCompletionTitle[] = "Varnik notification:";

// What a client sends, to be put into one document.
std::string Element(std::string const& name, std::string const& text);
// A cancellable action of the title "Action ID".
std::string Action(unsigned long id, std::string const& fields = "");
// One that asks before it is taken.
std::string AskingAction(unsigned long id);
// One that takes itself on the next tick.
std::string OverdueAction(unsigned long id);
std::string Message(unsigned long id, std::string const& title, std::string const& fields = "");
std::string CompletionMessage(unsigned long id, std::string const& actionTitle);
// `type` is "Action", "Offer", "Message" or "All".
std::string Withdrawal(std::string const& type, unsigned long id);
// The times are of the form of TimeFromNow.
std::string QuietPeriodStart(std::string const& start, std::string const& end);
std::string QuietPeriodEnd();

class UserOfTheProgram : public testing::Test {
protected:
    UserOfTheProgram() : m_user(m_server.Name()) {}

    // A program in a locale, for the display, that waits for its initialization.
    std::unique_ptr<ClientSession> Launched(std::string const& locale,
                                            std::map<std::string, std::string> const& environment = {},
                                            std::function<void()> prepare = {});
    // Starts the program in a locale and brings it to the display.
    void Start(std::string const& locale = "C", std::string const& settings = "",
               std::map<std::string, std::string> const& environment = {});
    void Send(std::string const& children);
    // Starts, with these actions pending and the dialog on the screen.
    void StartWith(std::string const& children);

    ScreenUser::WindowID Shell(std::string const& title = cTitle) { return m_user.WaitForWindow(title); }
    bool IsShown(std::string const& title) { return m_user.FindWindow(title).has_value(); }
    // Whether no other window lies over the middle of this one.
    bool IsInFront(ScreenUser::WindowID window);
    // Waits until the window has gone, while others may have its title.
    void WaitUntilClosed(ScreenUser::WindowID window);
    ScreenUser::Widget Part(std::string const& path, std::string const& title = cTitle);
    void Click(std::string const& path, std::string const& title = cTitle);
    void Select(std::size_t row) { m_user.ClickRow(Part("form.viewport."), row); }
    // Clicks a button that closes its window, and waits until it has.
    void CloseBy(std::string const& path, std::string const& title);

    // What the user reads in a widget. Widgets that tell no values, as under the address sanitizer, are
    // passed over.
    void ExpectText(std::string const& title, std::string const& path, std::string const& resource,
                    std::string const& expected);
    void ExpectLabel(std::string const& title, std::string const& path, std::string const& expected) {
        ExpectText(title, path, "label", expected);
    }
    void ExpectPane(std::string const& title, std::string const& path, std::string const& expected) {
        ExpectText(title, path + ".textSource", "string", expected);
    }

    // The next documents that the client hears.
    Texts Heard(std::size_t count);
    // What the client hears after a button has been pressed as often as it takes: one that is not in use does
    // nothing.
    std::string HeardAfterClicks(std::string const& path);
    // Two ticks go by without a word.
    void ExpectSilence();
    // Returns behind a tick that has handled all that was sent and has been answered by the user before; the
    // client must not have heard of anything that it has not read. Not for a quiet period. The mark of the
    // tick is an action that takes itself, so the action request dialog is on the screen then.
    void LetATickPass();
    // The same for a press that leaves no trace on the screen.
    void LetATickPassAfterClick();

    void ExpectEnd(int status) { EXPECT_EQ(m_session->WaitForExitStatus(), status); }

    PrivateDisplay m_server;
    ScreenUser::User m_user;
    std::unique_ptr<ClientSession> m_session;

private:
    unsigned long m_nextMark = 900001;
};
