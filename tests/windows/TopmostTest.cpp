#include "tests/windows/Onlooker.h"

#include "app/ProcessState.h"
#include "dialogs/Topmost.h"
#include "tests/session/PrivateDisplay.h"

#include <memory>
#include <string>
#include <utility>

// On a display of its own for each test: an atom that has been made stays as long as the server.
class Topmost : public testing::Test {
protected:
    static constexpr Window cWindow = 0x123456;

    Topmost() : m_former(std::exchange(display, XOpenDisplay(m_server.Name().c_str()))) {
        m_onlooker = Listen(SubstructureRedirectMask);
    }
    ~Topmost() override { XCloseDisplay(std::exchange(display, m_former)); }

    std::unique_ptr<Onlooker> Listen(long mask) {
        return std::make_unique<Onlooker>(m_server.Name().c_str(), mask);
    }

    // How many messages a window manager hears when the window is to be on top.
    std::size_t CountHeard() {
        MakeItTopmost(cWindow, true);
        return m_onlooker->Events().size();
    }

    PrivateDisplay m_server;
    Display* m_former;
    std::unique_ptr<Onlooker> m_onlooker;
};

TEST_F(Topmost, IsAskedForInTheWordsOfWindowManagers) {
    Atom const state = m_onlooker->MakeAtom("_NET_WM_STATE");
    Atom const above = m_onlooker->MakeAtom("_NET_WM_STATE_ABOVE");
    for (bool const topmost : {true, false}) {
        MakeItTopmost(cWindow, topmost);
        std::vector<XEvent> const events = m_onlooker->Events();
        ASSERT_EQ(events.size(), 1u);
        ASSERT_EQ(events[0].type, ClientMessage);
        XClientMessageEvent const& message = events[0].xclient;
        EXPECT_EQ(message.window, cWindow);
        EXPECT_EQ(message.message_type, state);
        EXPECT_EQ(message.format, 32);
        EXPECT_EQ(message.data.l[0], topmost ? 1 : 0);
        EXPECT_EQ(message.data.l[1], static_cast<long>(above));
        EXPECT_EQ(message.data.l[2], 0);
        EXPECT_EQ(message.data.l[3], 0);
        EXPECT_EQ(message.data.l[4], 0);
    }
}

TEST_F(Topmost, IsHeardByEverybodyWhoListensForWindows) {
    m_onlooker->MakeAtom("_NET_WM_STATE");
    m_onlooker->MakeAtom("_NET_WM_STATE_ABOVE");
    std::unique_ptr<Onlooker> const pager = Listen(SubstructureNotifyMask);
    std::unique_ptr<Onlooker> const stranger = Listen(PropertyChangeMask | StructureNotifyMask);
    EXPECT_EQ(CountHeard(), 1u);
    EXPECT_EQ(pager->Events().size(), 1u);
    EXPECT_EQ(stranger->Events().size(), 0u);
}

TEST_F(Topmost, IsNotAskedForBeforeAWindowManagerKnowsThatState) {
    EXPECT_EQ(CountHeard(), 0u);
    m_onlooker->MakeAtom("_NET_WM_STATE");
    EXPECT_EQ(CountHeard(), 0u);
    m_onlooker->MakeAtom("_NET_WM_STATE_ABOVE");
    EXPECT_EQ(CountHeard(), 1u);
}

TEST_F(Topmost, IsNotAskedForBeforeAWindowManagerKnowsOfStates) {
    m_onlooker->MakeAtom("_NET_WM_STATE_ABOVE");
    EXPECT_EQ(CountHeard(), 0u);
    m_onlooker->MakeAtom("_NET_WM_STATE");
    EXPECT_EQ(CountHeard(), 1u);
}

TEST_F(Topmost, MakesNoAtomItself) {
    MakeItTopmost(cWindow, true);
    MakeItTopmost(cWindow, false);
    EXPECT_EQ(XInternAtom(display, "_NET_WM_STATE", True), None);
    EXPECT_EQ(XInternAtom(display, "_NET_WM_STATE_ABOVE", True), None);
}
