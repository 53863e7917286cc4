// First: X.h defines names that the test framework uses.
#include <gtest/gtest.h>

#include "tests/session/ClientSession.h"
#include "tests/session/Documents.h"
#include "tests/session/PrivateDisplay.h"
#include "tests/support/ExpectedDocuments.h"

#include <X11/Xlib.h>
#include <X11/Xutil.h>
#include <csignal>
#include <memory>
#include <sys/wait.h>

using std::chrono::milliseconds;

namespace {

// A second client of the display, which looks at what the program shows. A window may go while it is looked
// at: then it has no name.
class Onlooker {
public:
    explicit Onlooker(std::string const& name) : m_display(XOpenDisplay(name.c_str())) {
        XSetErrorHandler([](Display*, XErrorEvent*) { return 0; });
    }
    Onlooker(Onlooker const&) = delete;
    Onlooker& operator=(Onlooker const&) = delete;
    ~Onlooker() {
        if (m_display) XCloseDisplay(m_display);
    }

    Display* Connection() const { return m_display; }

    // The windows of that name directly below the root.
    std::vector<Window> FindWindows(std::string const& name) const {
        Window root = None;
        Window parent = None;
        Window* children = nullptr;
        unsigned int count = 0;
        std::vector<Window> found;
        XQueryTree(m_display, DefaultRootWindow(m_display), &root, &parent, &children, &count);
        for (unsigned int index = 0; index < count; ++index) {
            char* windowName = nullptr;
            if (XFetchName(m_display, children[index], &windowName) && windowName) {
                if (name == windowName) found.push_back(children[index]);
                XFree(windowName);
            }
        }
        if (children) XFree(children);
        return found;
    }

    // One of them; None when there is none.
    Window FindWindow(std::string const& name) const {
        std::vector<Window> const windows = FindWindows(name);
        return windows.empty() ? None : windows.front();
    }

private:
    Display* m_display;
};

} // namespace

class ProcessOnDisplay : public testing::Test {
protected:
    // A session that has been initialized and has come to its first tick.
    std::unique_ptr<ClientSession> Running(std::string const& settings = "") {
        auto session = Ready();
        session->SendDocument(Initialization(settings));
        EXPECT_TRUE(WaitForHiddenWindow());
        return session;
    }

    std::unique_ptr<ClientSession> Ready() {
        ClientSession::Options options;
        options.display = m_display.Name();
        auto session = std::make_unique<ClientSession>(options);
        EXPECT_EQ(session->ReadDocument(), cReadyForData);
        return session;
    }

    bool WaitForHiddenWindow() {
        Onlooker const onlooker(m_display.Name());
        return WaitFor([&] { return onlooker.FindWindow("VRKClientUIHiddenWindow") != None; });
    }

    PrivateDisplay m_display;
};

TEST_F(ProcessOnDisplay, CreatesItsHiddenWindowAndNeverMapsIt) {
    auto const session = Running();
    Onlooker const onlooker(m_display.Name());
    Window const hidden = onlooker.FindWindow("VRKClientUIHiddenWindow");
    XWindowAttributes attributes{};
    ASSERT_TRUE(XGetWindowAttributes(onlooker.Connection(), hidden, &attributes));
    EXPECT_EQ(attributes.map_state, IsUnmapped);
    EXPECT_EQ(attributes.width, 32);
    EXPECT_EQ(attributes.height, 32);
    session->CloseToProgram();
    EXPECT_EQ(session->WaitForExitStatus(), 0);
}

TEST_F(ProcessOnDisplay, CreatesOneHiddenWindowInAllItsTicks) {
    auto const session = Running();
    for (unsigned long id = 1; id <= 3; ++id) {
        // Each answer is a tick of its own.
        session->SendDocument(ForcedAction(id, TimeFromNow(-1)));
        ASSERT_EQ(session->ReadDocument(), TakenDocument(id));
    }
    EXPECT_EQ(Onlooker(m_display.Name()).FindWindows("VRKClientUIHiddenWindow").size(), 1u);
}

TEST_F(ProcessOnDisplay, OverdueForcedActionIsTakenAtOnce) {
    auto const session = Running();
    session->SendDocument(ForcedAction(7, TimeFromNow(-3600)));
    EXPECT_EQ(session->ReadDocument(), TakenDocument(7));
}

TEST_F(ProcessOnDisplay, ForcedActionIsTakenAfterItsDeadlineAndNotBefore) {
    auto const session = Running();
    auto const deadline = std::time(nullptr) + 4;
    session->SendDocument(ForcedAction(18446744073709551615ul, TimeFromNow(deadline - std::time(nullptr))));
    EXPECT_EQ(session->ReadDocument(), TakenDocument(18446744073709551615ul));
    EXPECT_GT(std::time(nullptr), deadline);
}

TEST_F(ProcessOnDisplay, ActionThatIsNotForcedIsNeverTakenByTheClock) {
    auto const session = Running();
    session->SendDocument("<a><ActionRequest><ID>1</ID><Deadline>" + TimeFromNow(-3600) +
                          "</Deadline></ActionRequest></a>");
    session->SendDocument(ForcedAction(2, TimeFromNow(-3600)));
    EXPECT_EQ(session->ReadDocument(), TakenDocument(2));
    EXPECT_EQ(session->ReadDocument(milliseconds(1500)), std::nullopt);
}

TEST_F(ProcessOnDisplay, WithdrawnActionIsNotTaken) {
    auto const session = Running();
    session->SendDocument(ForcedAction(1, TimeFromNow(3)));
    session->SendDocument(ForcedAction(2, TimeFromNow(3)));
    session->SendDocument("<a><RemoveRequest><RemoveType>Action</RemoveType><ID>1</ID></RemoveRequest></a>");
    EXPECT_EQ(session->ReadDocument(), TakenDocument(2));
    EXPECT_EQ(session->ReadDocument(milliseconds(1500)), std::nullopt);
}

TEST_F(ProcessOnDisplay, QuietPeriodHoldsAForcedActionBackUntilItsEnd) {
    auto const session = Running();
    session->SendDocument("<a><QuietModeStart></QuietModeStart></a>");
    session->SendDocument(ForcedAction(1, TimeFromNow(2)));
    EXPECT_EQ(session->ReadDocument(milliseconds(5000)), std::nullopt) << "its deadline has passed meanwhile";
    session->SendDocument("<a><QuietModeEnd></QuietModeEnd></a>");
    EXPECT_EQ(session->ReadDocument(), TakenDocument(1));
}

TEST_F(ProcessOnDisplay, InitializationAndAnActionInOneWriteAreBothHandled) {
    auto const session = Ready();
    session->SendBytes(ClientSession::Frame(Initialization()) +
                       ClientSession::Frame(ForcedAction(5, TimeFromNow(-1))));
    EXPECT_EQ(session->ReadDocument(), TakenDocument(5));
}

TEST_F(ProcessOnDisplay, ActionsThatCameBeforeInitializationAreKept) {
    auto const session = Ready();
    session->SendDocument(ForcedAction(5, TimeFromNow(-1)));
    session->SendDocument(Initialization());
    EXPECT_EQ(session->ReadDocument(), TakenDocument(5));
}

TEST_F(ProcessOnDisplay, BadDocumentInTheMiddleCostsTheRestOfItsBatchOnly) {
    auto const session = Running();
    // One write is one batch, unless the tick falls between its frames; then the round shows all three.
    for (unsigned long round = 1; round <= 5; ++round) {
        unsigned long const first = round * 10;
        session->SendBytes(ClientSession::Frame(ForcedAction(first, TimeFromNow(-1))) +
                           ClientSession::Frame("no element") +
                           ClientSession::Frame(ForcedAction(first + 1, TimeFromNow(-1))));
        EXPECT_EQ(session->ReadDocument(), TakenDocument(first));
        session->SendDocument(ForcedAction(first + 2, TimeFromNow(-1)));
        std::optional<std::string> const next = session->ReadDocument();
        if (next == TakenDocument(first + 2)) return;
        EXPECT_EQ(next, TakenDocument(first + 1));
        EXPECT_EQ(session->ReadDocument(), TakenDocument(first + 2));
    }
    FAIL() << "the frames of one write never met in one batch";
}

TEST_F(ProcessOnDisplay, ManyActionsAreTakenInTheOrderOfArrival) {
    auto const session = Running();
    std::string document = "<a>";
    for (unsigned long id = 1; id <= 500; ++id)
        document += "<ActionRequest><ID>" + std::to_string(id) + "</ID><ForceRun>true</ForceRun><Deadline>" +
                    TimeFromNow(-1) + "</Deadline></ActionRequest>";
    session->SendDocument(document + "</a>");
    for (unsigned long id = 1; id <= 500; ++id) ASSERT_EQ(session->ReadDocument(), TakenDocument(id));
}

TEST_F(ProcessOnDisplay, EndsOrderlyWhenTheClientCloses) {
    auto const session = Running();
    Onlooker const onlooker(m_display.Name());
    session->CloseToProgram();
    EXPECT_TRUE(WaitFor([&] { return onlooker.FindWindow("VRKClientUIHiddenWindow") == None; }));
    EXPECT_TRUE(session->IsRunning()) << "it leaves the last messages two seconds";
    EXPECT_EQ(session->WaitForExitStatus(), 0);
}

TEST_F(ProcessOnDisplay, BrokenPipeEndsItByItsSignal) {
    auto const session = Running();
    session->CloseFromProgram();
    session->SendDocument(ForcedAction(1, TimeFromNow(-1)));
    std::optional<int> const status = session->WaitForEnd();
    ASSERT_TRUE(status);
    ASSERT_TRUE(WIFSIGNALED(*status));
    EXPECT_EQ(WTERMSIG(*status), SIGPIPE);
}

TEST_F(ProcessOnDisplay, BrokenPipeEndsItOrderlyWhenItsParentIgnoresTheSignal) {
    ClientSession::Options options;
    options.display = m_display.Name();
    options.ignoreSigpipe = true;
    ClientSession session(options);
    EXPECT_EQ(session.ReadDocument(), cReadyForData);
    session.SendDocument(Initialization());
    session.CloseFromProgram();
    session.SendDocument(ForcedAction(1, TimeFromNow(-1)));
    EXPECT_EQ(session.WaitForExitStatus(), 0);
}

TEST_F(ProcessOnDisplay, EndsOrderlyWhenTheXServerDies) {
    auto const session = Running();
    m_display.Kill();
    EXPECT_EQ(session->WaitForExitStatus(), 0);
}

TEST_F(ProcessOnDisplay, EndsOrderlyWhenItsXClientIsKilled) {
    auto const session = Running();
    Onlooker const onlooker(m_display.Name());
    XKillClient(onlooker.Connection(), onlooker.FindWindow("VRKClientUIHiddenWindow"));
    XSync(onlooker.Connection(), False);
    EXPECT_EQ(session->WaitForExitStatus(), 0);
}

TEST_F(ProcessOnDisplay, GoesOnAfterAnOpenMessage) {
    auto const session = Running();
    Onlooker const onlooker(m_display.Name());
    Window const hidden = onlooker.FindWindow("VRKClientUIHiddenWindow");
    XEvent event{};
    event.xclient.type = ClientMessage;
    event.xclient.window = hidden;
    event.xclient.message_type = XInternAtom(onlooker.Connection(), "STRING", False);
    event.xclient.format = 8;
    std::copy_n("open", 4, event.xclient.data.b);
    XSendEvent(onlooker.Connection(), hidden, False, NoEventMask, &event);
    XSync(onlooker.Connection(), False);
    session->SendDocument(ForcedAction(9, TimeFromNow(-1)));
    EXPECT_EQ(session->ReadDocument(), TakenDocument(9));
}
