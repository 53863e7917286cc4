#include "tests/windows/SmallDialogTest.h"

#include "app/WidgetHelpers.h"
#include "dialogs/MessageDialogs.h"
#include "link/ProtocolRecords.h"
#include "tests/support/WaitUntil.h"
#include "tests/windows/Onlooker.h"

#include <X11/Shell.h>
#include <X11/StringDefs.h>
#include <X11/Xaw/AsciiText.h>
#include <X11/Xutil.h>
#include <algorithm>
#include <limits>
#include <set>

namespace {

constexpr TimeInterval Seconds(long long seconds) {
    return TimeInterval::FromMicroseconds(seconds * cMicrosecondsPerSecond);
}

// A note as the client asks for it.
struct Note {
    unsigned long id = 1;
    std::string title = "Title";
    std::string message = "Message";
    bool isCompletionMessage = false;
    NullOr<TimeInterval> timeout = NullOr<TimeInterval>();
    bool persistent = false;
    bool topmost = false;
};

using Texts = std::vector<std::string>;

Texts closed;

} // namespace

class MessageDialogs : public SmallDialogTest {
protected:
    MessageDialogs() { closed.clear(); }
    ~MessageDialogs() override {
        for (unsigned long const id : m_shown) RemoveMessageDialog(id);
    }

    void Show(Note const& note) {
        m_shown.insert(note.id);
        MessageRequest request;
        request.id = note.id;
        request.title = SharedUString<UTF8>(MakeUTF8Ref(note.title));
        request.message = SharedUString<UTF8>(MakeUTF8Ref(note.message));
        request.isCompletionMessage = note.isCompletionMessage;
        request.timeout = note.timeout;
        ShowMessageDialog(request, note.persistent, note.topmost);
    }

    // The titles of all notes, sorted.
    static Texts Standing() {
        Texts titles;
        for (Widget const shell : Shells()) titles.push_back(Text(shell, XtNtitle));
        std::sort(titles.begin(), titles.end());
        return titles;
    }

    static Widget NoteTitled(std::string const& title) {
        for (Widget const shell : Shells())
            if (Text(shell, XtNtitle) == title) return shell;
        return nullptr;
    }

    static std::string Shown() { return Text(Find("form.actionmessage"), XtNstring); }

    // Whether the user sees the button of a note, or of the only one.
    static bool HasButton(Widget note = nullptr) {
        Settle();
        XWindowAttributes attributes{};
        Widget const button = XtNameToWidget(note ? note : Shell(), "form.dismiss");
        XGetWindowAttributes(display, XtWindow(button), &attributes);
        return attributes.map_state == IsViewable;
    }

    static void Dismiss(Widget note) {
        ASSERT_TRUE(note) << "the note is not there";
        XRaiseWindow(display, XtWindow(note));
        Click(XtNameToWidget(note, "form.dismiss"));
    }

    // From now on, `closed` tells the title of the note when it is closed.
    static void Watch(std::string const& title) {
        XtAddCallback(
            NoteTitled(title), XtNdestroyCallback,
            [](Widget shell, XtPointer, XtPointer) { closed.push_back(Text(shell, XtNtitle)); }, nullptr);
    }

    static std::string NameOfWindow(Widget shell) {
        char* name = nullptr;
        if (!XFetchName(display, XtWindow(shell), &name)) return "no name";
        std::string const copy = name;
        XFree(name);
        return copy;
    }

private:
    std::set<unsigned long> m_shown;
};

TEST_F(MessageDialogs, ShowTitleAndMessageOfTheRequest) {
    Show({.title = "Backup", .message = "It begins at eight.\nPlease wait."});
    EXPECT_EQ(Text(Shell(), XtNtitle), "Backup");
    EXPECT_EQ(NameOfWindow(Shell()), "Backup");
    EXPECT_EQ(Shown(), "It begins at eight.\nPlease wait.");
    EXPECT_EQ(Label("form.dismiss"), "OK");
}

TEST_F(MessageDialogs, AreMadeOfNamedWidgets) {
    std::string message;
    for (int line = 0; line < 40; ++line) message += "line\n";
    Show({.message = message});
    ExpectParts({{"actionmessage", "Text"}, {"dismiss", "Command"}});
    ExpectBelow({{"dismiss", "actionmessage"}});
    ExpectPlaced();
    Widget const pane = Find("form.actionmessage");
    ExpectPane(pane, 500);
    ExpectDragsThumb(TextScrollbar(pane));
    EXPECT_FALSE(Flag(Find("form.dismiss"), XtNmappedWhenManaged));
}

TEST_F(MessageDialogs, HaveTheirButtonUnderTheRightEdgeOfThePane) {
    for (char const* const border : {"1", "5"}) {
        Resource const thicker("*actionmessage.borderWidth", border, "1");
        Show({});
        Widget const pane = Find("form.actionmessage");
        EXPECT_EQ(Number(pane, XtNborderWidth), std::stol(border));
        EXPECT_EQ(Number(Find("form.dismiss"), "horizDistance"),
                  std::stol(border) + 500 - Number(Find("form.dismiss"), XtNwidth));
        RemoveMessageDialog(1);
    }
}

TEST_F(MessageDialogs, TellOfACompletedActionInTheirOwnWords) {
    struct Case {
        char const* title;
        char const* shown;
    };
    for (Case const& test :
         {Case{"Restart", "Action \"Restart\" has completed."}, Case{"", "Action \"\" has completed."},
          Case{"{actionTitle} {", "Action \"{actionTitle} {\" has completed."},
          Case{"Say \"hello\"", "Action \"Say \"hello\"\" has completed."}}) {
        Show({.title = test.title, .message = "not shown", .isCompletionMessage = true});
        EXPECT_EQ(Text(Shell(), XtNtitle), "Varnik notification:");
        EXPECT_EQ(Shown(), test.shown);
        RemoveMessageDialog(1);
    }
}

TEST_F(MessageDialogs, AreRewrittenByAnotherRequestOfTheirID) {
    Show({.id = 7, .title = "First", .message = "one"});
    Widget const shell = Shell();
    Show({.id = 7, .title = "Second", .message = "two"});
    EXPECT_EQ(Shell(), shell);
    EXPECT_EQ(Text(shell, XtNtitle), "Second");
    EXPECT_EQ(NameOfWindow(shell), "Second");
    EXPECT_EQ(Shown(), "two");
    Show({.id = 7, .title = "Second", .message = ""});
    EXPECT_EQ(Shown(), "");
    Show({.id = 7, .title = "", .message = "three"});
    EXPECT_EQ(Text(shell, XtNtitle), "");
    EXPECT_EQ(Shown(), "three");
}

TEST_F(MessageDialogs, BecomeNotesOfCompletionAndBack) {
    Show({.title = "Restart", .message = "It runs."});
    Show({.title = "Restart", .message = "It runs.", .isCompletionMessage = true});
    EXPECT_EQ(Text(Shell(), XtNtitle), "Varnik notification:");
    EXPECT_EQ(Shown(), "Action \"Restart\" has completed.");
    Show({.title = "Restart", .message = "It runs."});
    EXPECT_EQ(Text(Shell(), XtNtitle), "Restart");
    EXPECT_EQ(Shown(), "It runs.");
}

TEST_F(MessageDialogs, KeepThePlaceOfATextThatDoesNotChange) {
    std::string message;
    for (int line = 0; line < 200; ++line) message += "line " + std::to_string(line) + "\n";
    Show({.message = message});
    Widget const pane = Find("form.actionmessage");
    ExpectDragsThumb(TextScrollbar(pane));
    XawTextPosition const place = XawTextTopPosition(pane);
    ASSERT_GT(place, 0);
    Show({.message = message});
    Settle();
    EXPECT_EQ(XawTextTopPosition(pane), place);
    Show({.title = "Another", .message = message, .timeout = Seconds(3600), .persistent = true});
    Settle();
    EXPECT_EQ(XawTextTopPosition(pane), place);
    Show({.title = "Another", .message = message + "end"});
    Settle();
    EXPECT_EQ(XawTextTopPosition(pane), 0);
}

TEST_F(MessageDialogs, StandSideBySideOnePerID) {
    Show({.id = 0, .title = "zero"});
    Show({.id = 1, .title = "one"});
    Show({.id = std::numeric_limits<unsigned long>::max(), .title = "last"});
    Show({.id = 1ul << 32, .title = "beyond 32 bits"});
    EXPECT_EQ(Standing(), (Texts{"beyond 32 bits", "last", "one", "zero"}));
    Show({.id = 0, .title = "zero again"});
    EXPECT_EQ(Standing(), (Texts{"beyond 32 bits", "last", "one", "zero again"}));
}

TEST_F(MessageDialogs, ChangeNothingPendingAndTellNobody) {
    Add({.id = 1});
    Show({.id = 1});
    RemoveMessageDialog(1);
    EXPECT_EQ(actions.size(), 1u);
    EXPECT_EQ(Commands(), Texts{});
    EXPECT_TRUE(writeQ.IsEmpty());
}

TEST_F(MessageDialogs, AreNotShownWithoutADisplay) {
    Display* const opened = std::exchange(display, nullptr);
    Show({});
    display = opened;
    EXPECT_EQ(Standing(), Texts{});
}

// Withdrawing

TEST_F(MessageDialogs, AreWithdrawnByTheirID) {
    for (unsigned long const id : {1ul, 2ul, 3ul}) Show({.id = id, .title = std::to_string(id)});
    RemoveMessageDialog(2);
    EXPECT_EQ(Standing(), (Texts{"1", "3"}));
    RemoveMessageDialog(2);
    EXPECT_EQ(Standing(), (Texts{"1", "3"})) << "twice is no error";
    RemoveMessageDialog(4);
    EXPECT_EQ(Standing(), (Texts{"1", "3"})) << "an unknown ID is no error";
    RemoveMessageDialog(1);
    RemoveMessageDialog(3);
    EXPECT_EQ(Standing(), Texts{});
    RemoveMessageDialog(3);
}

TEST_F(MessageDialogs, OpenAnewAfterTheyHaveBeenWithdrawn) {
    Show({.title = "First", .persistent = true});
    RemoveMessageDialog(1);
    Show({.title = "Second"});
    EXPECT_EQ(Standing(), (Texts{"Second"}));
    EXPECT_TRUE(HasButton());
}

TEST_F(MessageDialogs, AreDismissedEachByItsOwnButton) {
    for (unsigned long const id : {1ul, 2ul, 3ul, 4ul}) Show({.id = id, .title = std::to_string(id)});
    Dismiss(NoteTitled("3"));
    EXPECT_EQ(Standing(), (Texts{"1", "2", "4"}));
    Dismiss(NoteTitled("1"));
    EXPECT_EQ(Standing(), (Texts{"2", "4"}));
    Dismiss(NoteTitled("4"));
    Dismiss(NoteTitled("2"));
    EXPECT_EQ(Standing(), Texts{});
    EXPECT_EQ(Commands(), Texts{});
    EXPECT_TRUE(writeQ.IsEmpty()) << "dismissing is the user's own business";
}

TEST_F(MessageDialogs, ThatWereDismissedAreForgotten) {
    Show({.title = "First", .timeout = Seconds(0)});
    Dismiss(Shell());
    RemoveTimedoutMessageDialogs();
    RemoveMessageDialog(1);
    Show({.title = "Second"});
    EXPECT_EQ(Standing(), (Texts{"Second"}));
}

// Time-outs

TEST_F(MessageDialogs, WithoutATimeoutStand) {
    Show({});
    RemoveTimedoutMessageDialogs();
    EXPECT_EQ(Standing(), (Texts{"Title"}));
}

TEST_F(MessageDialogs, EndWhenTheirTimeHasCome) {
    struct Case {
        char const* what;
        TimeInterval timeout;
        bool stands;
    };
    long long const most = std::numeric_limits<long long>::max();
    long long const least = std::numeric_limits<long long>::min();
    long long const year = 365 * cMicrosecondsPerDay;
    long long const now = Instant::Now().Microseconds();
    for (Case const& test :
         {Case{"zero", TimeInterval(), false}, Case{"a second ago", Seconds(-1), false},
          Case{"a century ago", TimeInterval::FromMicroseconds(-100 * year), false},
          Case{"the beginning of time", TimeInterval::FromMicroseconds(least), false},
          Case{"an hour", Seconds(3600), true},
          Case{"3,000 centuries", TimeInterval::FromMicroseconds(most), true},
          Case{"the end of time", TimeInterval::FromMicroseconds(most - now), true},
          Case{"just beyond the end of time", TimeInterval::FromMicroseconds(most - now + 1), true}}) {
        Show({.timeout = test.timeout});
        RemoveTimedoutMessageDialogs();
        EXPECT_EQ(!Standing().empty(), test.stands) << test.what;
        RemoveMessageDialog(1);

        Show({});
        Show({.timeout = test.timeout});
        RemoveTimedoutMessageDialogs();
        EXPECT_EQ(!Standing().empty(), test.stands) << test.what << ", by another request";
        RemoveMessageDialog(1);
    }
}

TEST_F(MessageDialogs, EndInTheVerySecondOfTheirTimeout) {
    // From the beginning of a second, which leaves time to look at what has not come yet.
    Instant const before = Instant::Now();
    ASSERT_TRUE(WaitUntil([=] { return Instant::Now() > before; }));
    Show({.timeout = Seconds(1)});
    Instant const shown = Instant::Now();
    RemoveTimedoutMessageDialogs();
    EXPECT_EQ(Standing(), (Texts{"Title"}));
    EXPECT_EQ(Instant::Now(), shown) << "the machine was too slow for this test";
    ASSERT_TRUE(WaitUntil([=] { return Instant::Now() >= shown + Seconds(1); }));
    RemoveTimedoutMessageDialogs();
    EXPECT_EQ(Standing(), Texts{});
}

TEST_F(MessageDialogs, TakeTheTimeoutOfTheLastRequestAlone) {
    Show({.timeout = Seconds(0)});
    Show({});
    RemoveTimedoutMessageDialogs();
    EXPECT_EQ(Standing(), (Texts{"Title"})) << "none in the second one";
    Show({.timeout = Seconds(0)});
    Show({.timeout = Seconds(3600)});
    RemoveTimedoutMessageDialogs();
    EXPECT_EQ(Standing(), (Texts{"Title"})) << "a longer one";
    Show({.timeout = Seconds(0)});
    RemoveTimedoutMessageDialogs();
    EXPECT_EQ(Standing(), Texts{}) << "a shorter one";
}

TEST_F(MessageDialogs, ThatEndTogetherAreClosedOnceEachAndLeaveTheOthersInTheirOrder) {
    for (unsigned long const id : {5ul, 3ul, 9ul, 1ul, 7ul, 2ul}) {
        bool const due = id == 5 || id == 9 || id == 7;
        Show({.id = id,
              .title = std::to_string(id),
              .timeout = due ? NullOr<TimeInterval>(Seconds(0)) : NullOr<TimeInterval>()});
        Watch(std::to_string(id));
    }
    RemoveTimedoutMessageDialogs();
    EXPECT_EQ(closed, (Texts{"5", "9", "7"}));
    EXPECT_EQ(Standing(), (Texts{"1", "2", "3"}));
    // Another request leaves a note in its place.
    for (unsigned long const id : {1ul, 2ul, 3ul})
        Show({.id = id, .title = std::to_string(id), .timeout = Seconds(0)});
    RemoveTimedoutMessageDialogs();
    EXPECT_EQ(closed, (Texts{"5", "9", "7", "3", "1", "2"}));
    RemoveTimedoutMessageDialogs();
    EXPECT_EQ(closed.size(), 6u);
}

TEST_F(MessageDialogs, EndByTheirTimeoutAlsoWhenTheyHaveNoButton) {
    Show({.timeout = Seconds(0), .persistent = true});
    RemoveTimedoutMessageDialogs();
    EXPECT_EQ(Standing(), Texts{});
}

// Persistence

TEST_F(MessageDialogs, HaveNoButtonWhenTheyArePersistent) {
    Show({.id = 1, .title = "plain"});
    Show({.id = 2, .title = "persistent", .persistent = true});
    XRaiseWindow(display, XtWindow(NoteTitled("plain")));
    EXPECT_TRUE(HasButton(NoteTitled("plain")));
    EXPECT_FALSE(HasButton(NoteTitled("persistent")));
}

TEST_F(MessageDialogs, GetTheirButtonBackAndLoseItWithTheRequests) {
    Show({.persistent = true});
    Show({.persistent = false});
    EXPECT_TRUE(HasButton());
    Show({.persistent = true});
    EXPECT_FALSE(HasButton());
    Show({.persistent = true});
    EXPECT_FALSE(HasButton());
    Show({.persistent = false});
    Show({.persistent = false});
    EXPECT_TRUE(HasButton());
    Dismiss(Shell());
    EXPECT_EQ(Standing(), Texts{});
}

// Above others

class TopmostMessageDialogs : public MessageDialogs {
protected:
    // What happened to the one note, as its window manager hears it: "mapped", "above", "not above".
    Texts Heard() {
        Window const window = XtWindow(Shell());
        Texts heard;
        for (XEvent const& event : m_onlooker.Events()) {
            if (event.type == MapNotify && event.xmap.window == window) heard.push_back("mapped");
            if (event.type == ClientMessage && event.xclient.window == window)
                heard.push_back(event.xclient.data.l[0] == 1 ? "above" : "not above");
        }
        return heard;
    }

    Onlooker m_onlooker{DisplayString(display), SubstructureNotifyMask};
    // With these a window manager announces what it knows.
    Atom m_state = m_onlooker.MakeAtom("_NET_WM_STATE");
    Atom m_above = m_onlooker.MakeAtom("_NET_WM_STATE_ABOVE");
};

TEST_F(TopmostMessageDialogs, AskWhenTheyAreMapped) {
    Show({.topmost = true});
    EXPECT_EQ(Heard(), (Texts{"mapped", "above"}));
    RemoveMessageDialog(1);
    Show({.topmost = false});
    EXPECT_EQ(Heard(), (Texts{"mapped", "not above"}));
}

TEST_F(TopmostMessageDialogs, AskAnewWithEachRequest) {
    Show({.topmost = false});
    Heard();
    Show({.topmost = true});
    EXPECT_EQ(Heard(), (Texts{"above"}));
    Show({.topmost = true});
    EXPECT_EQ(Heard(), (Texts{"above"}));
    Show({.topmost = false});
    EXPECT_EQ(Heard(), (Texts{"not above"}));
}

// Texts of any length and kind

TEST_F(MessageDialogs, ShowTheBeginningOfAVeryLongTitle) {
    Show({.title = std::string(100000, 't'), .message = "short"});
    EXPECT_EQ(Text(Shell(), XtNtitle), std::string(2000, 't'));
    Show({.title = std::string(100000, 'u'), .message = "short"});
    EXPECT_EQ(Text(Shell(), XtNtitle), std::string(2000, 'u'));
    EXPECT_TRUE(HasButton());
}

TEST_F(MessageDialogs, ShowTheWholeOfAVeryLongMessage) {
    std::string message;
    while (message.size() < 1024 * 1024) message += "a word and ";
    Show({.message = message});
    EXPECT_EQ(Shown(), message);
    message.replace(0, 1, "A");
    Show({.message = message});
    EXPECT_EQ(Shown(), message);
    Dismiss(Shell());
    EXPECT_EQ(Standing(), Texts{});
}

TEST_F(MessageDialogs, ShowWhatComesBeforeANul) {
    using namespace std::string_literals;
    Show({.title = "before\0after"s, .message = "first\0second"s});
    EXPECT_EQ(Text(Shell(), XtNtitle), "before");
    EXPECT_EQ(Shown(), "first");
    Show({.title = "before\0after"s, .isCompletionMessage = true});
    EXPECT_EQ(Shown(), "Action \"before");
}

TEST_F(MessageDialogs, ShowTheLettersOfTheLocale) {
    if (!international) GTEST_SKIP() << "a text that the locale cannot spell ends the process";
    Show({.title = "Schl\xC3\xBCssel", .message = "f\xC3\xBCr 5 \xE2\x82\xAC"});
    EXPECT_EQ(Text(Shell(), XtNtitle), "Schl\xC3\xBCssel");
    EXPECT_EQ(Shown(), "f\xC3\xBCr 5 \xE2\x82\xAC");
    Show({.title = "Schl\xC3\xBCssel", .isCompletionMessage = true});
    EXPECT_EQ(Shown(), "Action \"Schl\xC3\xBCssel\" has completed.");
}
