#include "tests/session/UserOfTheProgram.h"

#include "tests/session/PlainWindowManager.h"
#include "tests/session/WindowManager.h"
#include "tools/screen-user/Connection.h"

#include <algorithm>
#include <cstring>

// Messages that ask to be kept above other windows, under a window manager that does so, under one that knows
// nothing of it, and without any.

namespace {

constexpr char cKeepAbove[] = "<TopmostRunningMessage>true</TopmostRunningMessage>";

std::string KeepAbove(bool enabled) {
    return Element("ActionRunningTopmost", Element("Enabled", enabled ? "true" : "false"));
}

} // namespace

class UserWithTopmostMessages : public UserOfTheProgram {
protected:
    // As the window manager tells. The names are known to the display behind the first call.
    bool IsKeptAbove(ScreenUser::WindowID window) {
        auto const states = m_onlooker.Property(window, m_onlooker.Atom("_NET_WM_STATE"));
        if (!states) return false;
        std::vector<xcb_atom_t> atoms(states->bytes.size() / sizeof(xcb_atom_t));
        if (!atoms.empty()) std::memcpy(atoms.data(), states->bytes.data(), states->bytes.size());
        return std::find(atoms.begin(), atoms.end(), m_onlooker.Atom("_NET_WM_STATE_ABOVE")) != atoms.end();
    }

    void ExpectKeptAbove(ScreenUser::WindowID window, bool expected) {
        EXPECT_TRUE(WaitFor([&] { return IsKeptAbove(window) == expected; }));
    }

    PlainWindowManager::Request Asked(ScreenUser::WindowID window, bool above) {
        return {window,
                m_onlooker.Atom("_NET_WM_STATE"),
                32,
                {above ? 1u : 0u, m_onlooker.Atom("_NET_WM_STATE_ABOVE"), 0, 0, 0},
                true};
    }

    // Whether anybody on the display has made the name known.
    bool IsKnown(std::string_view name) {
        auto const atom = m_onlooker.Checked(xcb_intern_atom_reply(
            m_onlooker.Get(),
            xcb_intern_atom(m_onlooker.Get(), 1, static_cast<std::uint16_t>(name.size()), name.data()),
            nullptr));
        return atom && atom->atom != XCB_ATOM_NONE;
    }

    ScreenUser::Connection m_onlooker{m_server.Name()};
};

TEST_F(UserWithTopmostMessages, SeesThemAboveOthersAsLongAsTheyAsk) {
    WindowManager const manager(m_server.Name());
    Start("C", cKeepAbove);
    Send(Message(1, "Running") + CompletionMessage(2, "Backup"));
    ScreenUser::WindowID const running = Shell("Running");
    ScreenUser::WindowID const completed = Shell(cCompletionTitle);
    ExpectKeptAbove(running, true);
    // What comes later is no longer kept above; what stands stays as it is.
    Send(KeepAbove(false) + Message(3, "Later"));
    ScreenUser::WindowID const later = Shell("Later");
    LetATickPass();
    EXPECT_TRUE(IsKeptAbove(running));
    EXPECT_FALSE(IsKeptAbove(completed));
    EXPECT_FALSE(IsKeptAbove(later));
    EXPECT_TRUE(IsInFront(running));
    // A later message of the ID asks anew.
    Send(Message(1, "Running on") + KeepAbove(true) + Message(3, "Later still"));
    ExpectKeptAbove(running, false);
    ExpectKeptAbove(later, true);
    EXPECT_TRUE(WaitFor([&] { return IsInFront(later); }));
    Send(CompletionMessage(3, "All"));
    ExpectKeptAbove(later, false);
    m_user.Raise(running);
    LetATickPass();
}

TEST_F(UserWithTopmostMessages, SeesThemUnderAWindowManagerWithoutStates) {
    PlainWindowManager manager(m_server.Name());
    Start("C", cKeepAbove);
    Send(Message(1, "Running"));
    ScreenUser::WindowID const running = Shell("Running");
    LetATickPass();
    EXPECT_TRUE(manager.TakeRequests().empty());
    EXPECT_FALSE(IsKnown("_NET_WM_STATE"));
    EXPECT_FALSE(IsKnown("_NET_WM_STATE_ABOVE"));

    // Now the names are known, and yet nobody listens.
    Asked(running, true);
    Send(Message(1, "Running on") + Message(2, "Another") + CompletionMessage(3, "Backup") +
         KeepAbove(false) + Message(4, "Later"));
    ScreenUser::WindowID const another = Shell("Another");
    ScreenUser::WindowID const completed = Shell(cCompletionTitle);
    ScreenUser::WindowID const later = Shell("Later");
    LetATickPass();
    using Requests = std::vector<PlainWindowManager::Request>;
    // What the client hears of a tick may be quicker than what the display does.
    auto const take = [&](std::size_t count) {
        Requests all;
        WaitFor([&] {
            Requests const more = manager.TakeRequests();
            all.insert(all.end(), more.begin(), more.end());
            return all.size() >= count;
        });
        return all;
    };
    EXPECT_EQ(take(4), (Requests{Asked(running, true), Asked(another, true), Asked(completed, false),
                                 Asked(later, false)}));
    CloseBy("form.dismiss", "Later");

    Send(Message(2, "Another time") + KeepAbove(true) + CompletionMessage(1, "Backup"));
    EXPECT_EQ(take(2), (Requests{Asked(another, false), Asked(running, false)}));
    LetATickPass();
    EXPECT_TRUE(manager.TakeRequests().empty());
}

TEST_F(UserWithTopmostMessages, SeesThemWithoutAWindowManager) {
    // Known names, and nobody who would carry them out.
    Asked(ScreenUser::cNoWindow, true);
    Start("C", cKeepAbove);
    Send(Message(1, "Running") + CompletionMessage(2, "Backup"));
    Shell("Running");
    Shell(cCompletionTitle);
    EXPECT_FALSE(IsKeptAbove(Shell("Running")));
    LetATickPass();
}
