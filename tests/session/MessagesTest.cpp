#include "tests/session/UserOfTheProgram.h"

#include "tests/support/ExpectedDocuments.h"

#include <thread>

// Messages on the screen: what the user reads and dismisses, and what the client and the clock take away.
// They all stand in the middle of the screen, the newest in front.

namespace {

constexpr char cPane[] = "form.actionmessage";
constexpr char cButton[] = "form.dismiss";
constexpr char cUmlaut[] = "\xc3\xb6";

std::string Text(std::string const& text) {
    return Element("Message", text);
}

std::string Timeout(std::string const& duration) {
    return Element("Timeout", duration);
}

} // namespace

class UserWithMessages : public UserOfTheProgram {
protected:
    using Clock = std::chrono::steady_clock;

    // Starts, with the window of pending actions behind all messages to come.
    void StartWithoutActions(std::string const& settings = "") {
        Start("C", settings);
        LetATickPass();
    }

    bool HasButton(std::string const& title) { return Part(cButton, title).mapped; }

    void Dismiss(std::string const& title) { CloseBy(cButton, title); }

    // The titles that are on the screen, of those given.
    Texts Shown(Texts titles) {
        std::erase_if(titles, [this](std::string const& title) { return !IsShown(title); });
        return titles;
    }

    void ExpectEndWithoutText() {
        EXPECT_EQ(Heard(2), (Texts{TextNotConvertibleDocument("MessageDialog"),
                                   TextNotConvertibleDocument("MessageDialog")}));
        ExpectEnd(0);
    }
};

TEST_F(UserWithMessages, ReadsALaterMessageOfTheSameIDInTheSameWindow) {
    Start();
    Send(Message(1, "First", Text("one")) + Message(18446744073709551615u, "Other", Text("other")));
    ScreenUser::WindowID const window = Shell("First");
    ExpectPane("First", cPane, "one");
    Send(Message(1, "Second", Text("two")));
    EXPECT_EQ(Shell("Second"), window);
    EXPECT_FALSE(IsShown("First"));
    ExpectPane("Second", cPane, "two");
    Send(Message(18446744073709551615u, "Another", Text("another")));
    Shell("Another");
    EXPECT_EQ(Shown({"First", "Second", "Other"}), (Texts{"Second"}));
}

TEST_F(UserWithMessages, ReadsThatAnActionHasCompleted) {
    Start();
    // What else the client writes there is not shown, and so needs no spelling.
    Send(Message(1, "Disk check", Element("IsCompletionMessage", "true") + Text(cUmlaut)));
    ScreenUser::WindowID const window = Shell(cCompletionTitle);
    ExpectPane(cCompletionTitle, cPane, "Action \"Disk check\" has completed.");
    Send(Message(1, "Plain", Text("text")));
    EXPECT_EQ(Shell("Plain"), window);
    ExpectPane("Plain", cPane, "text");
    Send(CompletionMessage(1, "Backup"));
    EXPECT_EQ(Shell(cCompletionTitle), window);
    ExpectPane(cCompletionTitle, cPane, "Action \"Backup\" has completed.");
}

TEST_F(UserWithMessages, SeesMessagesGoWhenTheirTimeIsOver) {
    StartWithoutActions();
    // Half-way between two ticks, so that the message is handled well before a second has passed.
    std::this_thread::sleep_for(std::chrono::milliseconds(500));
    auto const sent = Clock::now();
    Send(Message(1, "Three seconds", Timeout("PT3S")) + Message(2, "For ever") +
         Message(3, "Three more", Timeout("PT3S")) + Message(4, "At once", Timeout("PT0S")) +
         Message(5, "Long ago", Timeout("-PT5S")) + Message(6, "First for three", Timeout("PT3S")) +
         Message(6, "Now for ever") + Message(7, "First for ever") +
         Message(7, "Now for three", Timeout("PT3S")));
    LetATickPass();
    auto const handled = Clock::now();
    Texts const all{"Three seconds", "For ever",     "Three more",   "At once",
                    "Long ago",      "Now for ever", "Now for three"};
    EXPECT_EQ(Shown(all),
              (Texts{"Three seconds", "For ever", "Three more", "Now for ever", "Now for three"}));

    m_user.WaitUntilGone("Three seconds");
    EXPECT_GE(Clock::now() - sent, std::chrono::seconds(3)) << "it went too early";
    // The first tick behind the end of the time.
    std::this_thread::sleep_until(handled + std::chrono::seconds(3));
    LetATickPass();
    EXPECT_EQ(Shown(all), (Texts{"For ever", "Now for ever"}));
}

TEST_F(UserWithMessages, SeesATimeThatIsOverBeginAnewWithALaterMessage) {
    StartWithoutActions();
    Send(Message(1, "Short", Timeout("PT2S")));
    LetATickPass();
    auto const sent = Clock::now();
    Send(Message(1, "Short again", Timeout("PT2S")));
    m_user.WaitForWindow("Short again");
    m_user.WaitUntilGone("Short again");
    EXPECT_GE(Clock::now() - sent, std::chrono::seconds(2));
}

TEST_F(UserWithMessages, DismissesNoPersistentMessage) {
    Start("C", Element("PersistRunningMessage", "true"));
    Send(Message(1, "Running") + CompletionMessage(2, "Backup"));
    Shell("Running");
    Shell(cCompletionTitle);
    LetATickPass();
    EXPECT_FALSE(HasButton("Running"));
    EXPECT_TRUE(HasButton(cCompletionTitle));
    // Both changes by a later message of the ID.
    Send(CompletionMessage(1, "Running") + Message(2, "Running again"));
    LetATickPass();
    EXPECT_TRUE(HasButton(cCompletionTitle));
    EXPECT_FALSE(HasButton("Running again"));
    Send(Message(2, "Short of time", Timeout("PT0S")));
    LetATickPass();
    EXPECT_EQ(Shown({"Running again", "Short of time"}), Texts());
    m_user.Raise(Shell(cCompletionTitle));
    Dismiss(cCompletionTitle);
    LetATickPass();
}

TEST_F(UserWithMessages, DismissesOneOfSeveralAndTheClientHearsNothing) {
    StartWithoutActions();
    Send(Message(1, "One") + Message(2, "Two") + Message(3, "Three"));
    for (char const* const title : {"One", "Two", "Three"}) EXPECT_TRUE(HasButton(title));
    m_user.Raise(Shell("Two"));
    Dismiss("Two");
    EXPECT_EQ(Shown({"One", "Two", "Three"}), (Texts{"One", "Three"}));
    LetATickPass();
    // The ID is free again, and its withdrawal finds the new one.
    Send(Message(2, "Two again"));
    Shell("Two again");
    Send(Withdrawal("Message", 2));
    LetATickPass();
    EXPECT_EQ(Shown({"One", "Two", "Two again", "Three"}), (Texts{"One", "Three"}));
    Dismiss("Three");
    Dismiss("One");
    LetATickPass();
}

TEST_F(UserWithMessages, SeesThoseGoThatTheClientWithdraws) {
    StartWith(Action(1) + Action(2) + Action(3));
    Texts const all{"One", "Two", "Three", "Four"};
    Send(Message(1, "One") + Message(2, "Two") + Message(3, "Three") + Message(4, "Four"));
    Shell("Four");
    // The action of that ID, nothing, the message of that ID, and nothing again.
    Send(Withdrawal("Action", 1) + Withdrawal("Offer", 2) + Withdrawal("Message", 3) +
         Withdrawal("Message", 99));
    LetATickPass();
    EXPECT_EQ(Shown(all), (Texts{"One", "Two", "Four"}));
    // An action and a message of one ID, and a message without an action.
    Send(Withdrawal("All", 2) + "<RemoveRequest><ID>4</ID></RemoveRequest>");
    LetATickPass();
    EXPECT_EQ(Shown(all), (Texts{"One"}));
    m_user.Raise(Shell());
    Click("form.takeAllActions");
    EXPECT_EQ(Heard(1), (Texts{TakenDocument(3)}));
}

TEST_F(UserWithMessages, SeesAHundredComeInOneDocumentAndGoInAnother) {
    StartWithoutActions();
    std::string messages;
    std::string withdrawals;
    for (unsigned long id = 1; id <= 100; ++id) {
        messages += Message(id, "One of many", Text("Text " + std::to_string(id)));
        withdrawals += Withdrawal("Message", id);
    }
    std::size_t const descriptors = m_session->CountDescriptors();
    Send(messages);
    LetATickPass();
    EXPECT_EQ(m_user.FindWindows("One of many").size(), 100u);
    Send(withdrawals);
    LetATickPass();
    EXPECT_FALSE(IsShown("One of many"));
    EXPECT_EQ(m_session->CountDescriptors(), descriptors);
    LetATickPass();
}

// A text that the locale cannot spell ends the program, and the client hears why.

TEST_F(UserWithMessages, LosesTheProgramWhenATitleCannotBeSpelled) {
    Start();
    Send(Message(1, cUmlaut, Text("text")));
    ExpectEndWithoutText();
}

TEST_F(UserWithMessages, LosesTheProgramWhenATextCannotBeSpelled) {
    Start();
    Send(Message(1, "Title", Text(cUmlaut)));
    ExpectEndWithoutText();
}

TEST_F(UserWithMessages, LosesTheProgramWhenALaterTextCannotBeSpelled) {
    Start();
    Send(Message(1, "Title", Text("text")) + CompletionMessage(1, cUmlaut));
    ExpectEndWithoutText();
}
