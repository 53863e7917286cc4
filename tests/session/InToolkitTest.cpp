// First: X.h defines names that the test framework uses.
#include <gtest/gtest.h>

#include "app/ClientMessages.h"
#include "app/ExitCleanup.h"
#include "app/HiddenWindow.h"
#include "app/MainLoop.h"
#include "app/ProcessState.h"
#include "app/Translations.h"
#include "dialogs/ActionRequestDialog.h"
#include "dialogs/MessageDialogs.h"
#include "link/ProtocolRecords.h"
#include "tests/session/ClientSession.h"
#include "tests/session/InToolkit.h"
#include "tests/support/TemporaryFolder.h"

#include <X11/Shell.h>
#include <X11/StringDefs.h>
#include <cstring>
#include <sys/wait.h>
#include <unistd.h>

// What the program does inside the toolkit, each in a child process that has opened the display as the
// program does. A child says by its exit status how it went.

namespace {

// A shell that can take events.
Widget MakeShell() {
    Widget const shell = MakeAppShell(10, 10);
    XtRealizeWidget(shell);
    return shell;
}

// Windows directly below the root.
unsigned int CountWindows(Display* onlooker) {
    Window root = None;
    Window parent = None;
    Window* children = nullptr;
    unsigned int count = 0;
    XQueryTree(onlooker, DefaultRootWindow(onlooker), &root, &parent, &children, &count);
    if (children) XFree(children);
    return count;
}

} // namespace

TEST_F(InToolkit, ProtocolErrorNoticedInARoundTripEndsWithMinusOne) {
    EXPECT_EQ(Run([] {
                  XMapWindow(display, 0x7FFFFFFF);
                  XSync(display, False);
              }),
              255);
}

TEST_F(InToolkit, ProtocolErrorOfARequestWithAReplyEndsWithMinusOne) {
    EXPECT_EQ(Run([] {
                  XWindowAttributes attributes;
                  XGetWindowAttributes(display, 0x7FFFFFFF, &attributes);
              }),
              255);
}

TEST_F(InToolkit, WindowsVanishWithTheErrorAndNotWithTheProcess) {
    int seen[2];
    ASSERT_EQ(pipe(seen), 0);
    pid_t const child = Start([&] {
        MakeShell();
        XSync(display, False);
        // The error comes when the window has been seen.
        char byte = 0;
        if (read(seen[0], &byte, 1) != 1) _exit(cNotAsExpected);
        XMapWindow(display, 0x7FFFFFFF);
        XSync(display, False);
    });
    Display* const onlooker = XOpenDisplay(m_display.Name().c_str());
    ASSERT_TRUE(onlooker);
    EXPECT_TRUE(WaitFor([&] { return CountWindows(onlooker) != 0; }));
    EXPECT_EQ(write(seen[1], "!", 1), 1);
    EXPECT_TRUE(WaitFor([&] { return CountWindows(onlooker) == 0; }));
    EXPECT_EQ(waitpid(child, nullptr, WNOHANG), 0) << "the process is still there";
    XCloseDisplay(onlooker);
    EXPECT_EQ(StatusOf(child), 255);
    close(seen[0]);
    close(seen[1]);
}

TEST_F(InToolkit, ProtocolErrorNoticedWhileTheContextIsDestroyedKeepsTheFirstStatus) {
    EXPECT_EQ(Run([] {
                  XMapWindow(display, 0x7FFFFFFF);
                  ExitCleanup(7, "first");
              }),
              7);
}

TEST_F(InToolkit, FatalToolkitErrorEndsWithMinusOne) {
    EXPECT_EQ(Run([] {
                  std::string message = "no such thing";
                  XtAppError(app_context, message.data());
              }),
              255);
}

TEST_F(InToolkit, LostConnectionEndsOrderly) {
    EXPECT_EQ(Run([this] {
                  m_display.Kill();
                  XSync(display, False);
              }),
              0);
}

TEST_F(InToolkit, LostConnectionOnTheWayOutKeepsTheFirstStatus) {
    EXPECT_EQ(Run([this] {
                  m_display.Kill();
                  ExitCleanup(7, "first");
              }),
              7);
}

TEST_F(InToolkit, CloseRequestReachesTheRegisteredAction) {
    EXPECT_EQ(Run([] {
                  XEvent event = MakeProtocolMessage("WM_DELETE_WINDOW");
                  XtCallActionProc(MakeShell(), "SystemMenuClose", &event, nullptr, 0);
              }),
              0);
}

TEST_F(InToolkit, OtherEventsDoNotClose) {
    EXPECT_EQ(Run([] {
                  Widget const shell = MakeShell();
                  XEvent event = MakeProtocolMessage("WM_TAKE_FOCUS");
                  XtCallActionProc(shell, "SystemMenuClose", &event, nullptr, 0);
                  event = MakeProtocolMessage("WM_DELETE_WINDOW");
                  event.xclient.message_type = XInternAtom(display, "OTHER", False);
                  XtCallActionProc(shell, "SystemMenuClose", &event, nullptr, 0);
                  event.type = KeyPress;
                  XtCallActionProc(shell, "SystemMenuClose", &event, nullptr, 0);
                  XtCallActionProc(shell, "SystemMenuClose", nullptr, nullptr, 0);
                  Finish(true);
              }),
              cAsExpected);
}

TEST_F(InToolkit, ApplicationClassIsTheProgramsOwn) {
    EXPECT_EQ(Run([] {
                  String name = nullptr;
                  String applicationClass = nullptr;
                  XtGetApplicationNameAndClass(display, &name, &applicationClass);
                  Finish(applicationClass && std::strcmp(applicationClass, "XVRKClientUI") == 0);
              }),
              cAsExpected);
}

TEST_F(InToolkit, OpenMessageToTheHiddenWindowIsQueued) {
    EXPECT_EQ(Run([] {
                  CreateHiddenWindow();
                  XEvent event{};
                  event.xclient.type = ClientMessage;
                  event.xclient.window = XtWindow(vrkHidden);
                  event.xclient.message_type = XInternAtom(display, "ANY", False);
                  event.xclient.format = 8;
                  std::copy_n("openly", 6, event.xclient.data.b);
                  XSendEvent(display, XtWindow(vrkHidden), False, NoEventMask, &event);
                  DispatchPendingEvents();
                  FiFoQueue<std::unique_ptr<UICommand>> commands;
                  uiCommandQ.ReadMessages(commands);
                  Finish(!commands.IsEmpty() && commands.Take()->type == OpenRequested && commands.IsEmpty());
              }),
              cAsExpected);
}

TEST_F(InToolkit, TickThatThrowsIsFollowedByTheNext) {
    EXPECT_EQ(Run([] {
                  initialized = true;
                  // No reminder: this is about the clock alone.
                  m_postponedTo = Instant::Now() + TimeInterval::FromMicroseconds(cMicrosecondsPerHour);
                  ActionRequest forced;
                  forced.forceRun = true;
                  actions.push_back(forced);
                  // A month that does not exist makes the deadline throw when it is asked for. The list would
                  // not take such an action.
                  const_cast<ActionRequest&>(actions.front()).deadline =
                      TimeObject(DateRecord(1, static_cast<Month>(13), 2011), TimeOfDay(), TimeZone());
                  OnMainLoopTimer(nullptr, nullptr);
                  ActionRequest due;
                  due.forceRun = true;
                  due.deadline = TimeObject();
                  actions.clear();
                  actions.push_back(due);
                  XtAppProcessEvent(app_context, XtIMTimer);
                  Finish(actions.empty() && !writeQ.IsEmpty());
              }),
              cAsExpected);
}

namespace {

ActionRequest Titled(unsigned long id) {
    ActionRequest request;
    request.id = id;
    request.SetTitle("Title"_utf8);
    return request;
}

ActionRequest ForcedIn(unsigned long id, long seconds) {
    ActionRequest request = Titled(id);
    request.forceRun = true;
    request.deadline = TimeObject(
        Instant::Now() + TimeInterval::FromMicroseconds(seconds * cMicrosecondsPerSecond), TimeZone());
    return request;
}

// The shells of all dialogs on the display, the uppermost last.
std::vector<Widget> ShownShells() {
    Window root = None;
    Window parent = None;
    Window* windows = nullptr;
    unsigned int count = 0;
    XQueryTree(display, DefaultRootWindow(display), &root, &parent, &windows, &count);
    std::vector<Widget> shells;
    for (unsigned int index = 0; index < count; ++index)
        if (Widget const shell = XtWindowToWidget(display, windows[index]); shell && shell != vrkHidden)
            shells.push_back(shell);
    if (windows) XFree(windows);
    return shells;
}

std::string TextOf(Widget widget, char const* resource) {
    String text = nullptr;
    Arg argument{const_cast<char*>(resource), reinterpret_cast<XtArgVal>(&text)};
    XtGetValues(widget, &argument, 1);
    return text;
}

// The line above the description in the action request dialog.
std::string ShownTitle() {
    for (Widget const shell : ShownShells())
        if (Widget const title = XtNameToWidget(shell, "form.actiontitle")) return TextOf(title, XtNlabel);
    return "no dialog";
}

std::size_t CountSent() {
    FiFoQueue<UIMessage> messages;
    writeQ.ReadMessages(messages);
    std::size_t count = 0;
    for (; !messages.IsEmpty(); messages.Take()) ++count;
    return count;
}

void Tick() {
    OnMainLoopTimer(nullptr, nullptr);
}

} // namespace

TEST_F(InToolkit, FirstTickRemindsOfWhatIsPendingWhenNothingIsPostponed) {
    EXPECT_EQ(Run([] {
                  initialized = true;
                  actions.push_back(Titled(1));
                  Tick();
                  Finish(IsActionRequestDialogShown());
              }),
              cAsExpected);
}

TEST_F(InToolkit, TickRemindsOnlyWhenSomethingIsPendingAndDue) {
    EXPECT_EQ(Run([] {
                  initialized = true;
                  Tick();
                  bool const withoutActions = IsActionRequestDialogShown();
                  actions.push_back(Titled(1));
                  m_postponedTo = Instant::Now() + TimeInterval::FromMicroseconds(cMicrosecondsPerHour);
                  Tick();
                  bool const tooEarly = IsActionRequestDialogShown();
                  m_postponedTo = Instant::Now() - TimeInterval::FromMicroseconds(cMicrosecondsPerSecond);
                  Tick();
                  Finish(!withoutActions && !tooEarly && IsActionRequestDialogShown());
              }),
              cAsExpected);
}

TEST_F(InToolkit, TickRemindsDuringAQuietPeriodToo) {
    EXPECT_EQ(Run([] {
                  initialized = inQuietMode = true;
                  actions.push_back(Titled(1));
                  actions.push_back(ForcedIn(2, -10));
                  Tick();
                  Finish(IsActionRequestDialogShown() && actions.size() == 2 && CountSent() == 0);
              }),
              cAsExpected);
}

TEST_F(InToolkit, TickTakesAnOverdueActionOutOfTheDialog) {
    EXPECT_EQ(Run([] {
                  initialized = inQuietMode = true;
                  actions.push_back(Titled(1));
                  actions.push_back(ForcedIn(2, -10));
                  Tick();
                  std::string const before = ShownTitle();
                  inQuietMode = false;
                  Tick();
                  Finish(before == "There are 2 pending actions." && CountSent() == 1 &&
                         ShownTitle() == "There is 1 pending action.");
              }),
              cAsExpected);
}

TEST_F(InToolkit, TickRefreshesTheCountdownOfANearForcedDeadline) {
    EXPECT_EQ(Run([] {
                  initialized = true;
                  actions.push_back(ForcedIn(1, 100));
                  Tick();
                  // The dialog hears of this one by the refresh alone.
                  actions.push_back(Titled(2));
                  Tick();
                  Finish(ShownTitle() == "There are 2 pending actions.");
              }),
              cAsExpected);
}

TEST_F(InToolkit, TickLeavesAFarForcedDeadlineAlone) {
    EXPECT_EQ(Run([] {
                  initialized = true;
                  actions.push_back(ForcedIn(1, 1000));
                  Tick();
                  actions.push_back(Titled(2));
                  Tick();
                  Finish(ShownTitle() == "There is 1 pending action.");
              }),
              cAsExpected);
}

TEST_F(InToolkit, TickHearsTheClientBeforeTheUser) {
    EXPECT_EQ(
        Run([] {
            initialized = true;
            actions.push_back(Titled(1));
            QueueCommand(TakeAction, 1, 0, 0);
            readQ.WriteMessage(UIMessage(
                "<r><RemoveRequest><RemoveType>Action</RemoveType><ID>1</ID></RemoveRequest></r>"_utf8));
            Tick();
            Finish(actions.empty() && CountSent() == 0);
        }),
        cAsExpected);
}

TEST_F(InToolkit, TickOpensTheDialogForAnOpenMessage) {
    EXPECT_EQ(Run([] {
                  initialized = true;
                  QueueCommand(OpenRequested, 0, 0, 0);
                  Tick();
                  Finish(IsActionRequestDialogShown());
              }),
              cAsExpected);
}

TEST_F(InToolkit, TickWithoutInitializationOnlyArmsItselfAgain) {
    EXPECT_EQ(Run([] {
                  ActionRequest due;
                  due.forceRun = true;
                  due.deadline = TimeObject();
                  actions.push_back(due);
                  OnMainLoopTimer(nullptr, nullptr);
                  bool const untouched = actions.size() == 1 && firstTick && !vrkHidden;
                  initialized = true;
                  XtAppProcessEvent(app_context, XtIMTimer);
                  Finish(untouched && actions.empty() && !firstTick && vrkHidden);
              }),
              cAsExpected);
}

namespace {

// Whether a dialog of that title is shown.
bool IsShown(std::string const& title) {
    for (Widget const shell : ShownShells())
        if (TextOf(shell, XtNtitle) == title) return true;
    return false;
}

// What is seen in the moment in which a note is closed.
std::function<void()> atClosing;

void OnClosing(Widget, XtPointer, XtPointer) {
    if (atClosing) atClosing();
}

// Shows a note that the next tick closes.
void ShowNoteThatIsOver() {
    MessageRequest note;
    note.title = SharedUString<UTF8>("A note"_utf8);
    note.timeout = TimeInterval();
    ShowMessageDialog(note, false, false);
    XtAddCallback(ShownShells().back(), XtNdestroyCallback, OnClosing, nullptr);
}

} // namespace

TEST_F(InToolkit, TickClosesANoteWhoseTimeHasCome) {
    EXPECT_EQ(Run([] {
                  initialized = true;
                  ShowNoteThatIsOver();
                  bool const shown = IsShown("A note");
                  Tick();
                  Finish(shown && !IsShown("A note"));
              }),
              cAsExpected);
}

TEST_F(InToolkit, TickClosesNotesDuringAQuietPeriodToo) {
    EXPECT_EQ(Run([] {
                  initialized = inQuietMode = true;
                  ShowNoteThatIsOver();
                  Tick();
                  Finish(!IsShown("A note"));
              }),
              cAsExpected);
}

TEST_F(InToolkit, TickClosesNoNoteBeforeInitialization) {
    EXPECT_EQ(Run([] {
                  ShowNoteThatIsOver();
                  Tick();
                  bool const stayed = IsShown("A note");
                  initialized = true;
                  Tick();
                  Finish(stayed && !IsShown("A note"));
              }),
              cAsExpected);
}

TEST_F(InToolkit, TickClosesNotesBehindTheReminderAndBeforeItTakesForcedActions) {
    EXPECT_EQ(Report([] {
                  static std::string seen;
                  atClosing = [] {
                      seen += IsActionRequestDialogShown() ? "reminded, " : "not reminded, ";
                      seen += actions.size() == 2 && writeQ.IsEmpty() ? "nothing taken" : "taken";
                  };
                  initialized = true;
                  actions.push_back(Titled(1));
                  actions.push_back(ForcedIn(2, -10));
                  ShowNoteThatIsOver();
                  Tick();
                  return seen + (actions.size() == 1 ? ", then taken" : ", then not taken");
              }),
              "reminded, nothing taken, then taken");
}

TEST_F(InToolkit, TickClosesANoteOfTheSameTickWhoseTimeHasCome) {
    EXPECT_EQ(Run([] {
                  initialized = true;
                  readQ.WriteMessage(UIMessage("<r><MessageRequest><ID>1</ID><Title>A note</Title>"
                                               "<Timeout>PT0S</Timeout></MessageRequest>"
                                               "<MessageRequest><ID>2</ID><Title>Another</Title>"
                                               "</MessageRequest></r>"_utf8));
                  Tick();
                  Finish(!IsShown("A note") && IsShown("Another"));
              }),
              cAsExpected);
}

TEST_F(InToolkit, TranslationEndsWhenTheToolkitFindsNoRealLocale) {
    setenv("LC_ALL", "C.UTF-8", 1);
    international = true;
    EXPECT_EQ(Run([] { Finish(!international); }, {"-xnllanguage", "C"}), cAsExpected);
    EXPECT_EQ(Run([] { Finish(international); }), cAsExpected);
    international = false;
    EXPECT_EQ(Run([] { Finish(!international); }), cAsExpected);
    unsetenv("LC_ALL");
}

TEST_F(InToolkit, TranslationsAreDroppedWithTheLocaleAndOnlyThen) {
    TemporaryFolder const folder;
    folder.Write("brand", "OK\tbrand\n");
    AddTranslationFile(folder.Location("brand"));
    setenv("LC_ALL", "C.UTF-8", 1);
    auto const dropped = [] { Finish(m_formatFiles.empty() && m_formatOverrides.empty()); };
    auto const kept = [] { Finish(m_formatFiles.size() == 1 && m_formatOverrides.size() == 1); };
    international = true;
    EXPECT_EQ(Run(dropped, {"-xnllanguage", "C"}), cAsExpected);
    EXPECT_EQ(Run(kept), cAsExpected);
    international = false;
    EXPECT_EQ(Run(kept, {"-xnllanguage", "C"}), cAsExpected) << "branding needs no locale";
    unsetenv("LC_ALL");
    DropTranslations();
}
