#include "tests/windows/DialogTest.h"

#include "app/MainLoop.h"
#include "app/UserCommands.h"
#include "dialogs/ActionDetailsDialog.h"
#include "dialogs/ActionRequestDialog.h"
#include "dialogs/ConfirmationDialog.h"
#include "dialogs/QuietModeDialog.h"
#include "tests/session/PrivateDisplay.h"
#include "tests/windows/ChooseLocale.h"

// First: the private headers stand on it.
#include <X11/IntrinsicP.h>

#include <X11/CoreP.h>
#include <X11/StringDefs.h>
#include <X11/Xaw/ListP.h>
#include <X11/extensions/XTest.h>
#include <chrono>
#include <cstdlib>
#include <thread>

namespace {

void OpenToolkitOnce() {
    static bool const opened = [] {
        static PrivateDisplay server;
        setenv("DISPLAY", server.Name().c_str(), 1);
        ChooseLocale();
        std::string name = "VRKClientUI";
        char* arguments[] = {name.data(), nullptr};
        OpenToolkit(1, arguments);
        return true;
    }();
    static_cast<void>(opened);
}

// Serves what is there without waiting for more.
bool ServeSome() {
    bool served = false;
    while (XtAppPending(app_context) & XtIMXEvent) {
        XtAppProcessEvent(app_context, XtIMXEvent);
        served = true;
    }
    return served;
}

void CloseDialogs() {
    HideActionRequestDialog();
    HideActionDetailsDialog();
    HideConfirmationRequestDialog();
    RemoveQuietModeDialog();
}

void SetSnoozeStateOfAFreshProcess() {
    m_postponedTo = Instant();
    m_remindInterval = TimeInterval();
    m_snoozable = true;
}

std::vector<Window> TopLevelWindows() {
    Window root = None;
    Window parent = None;
    Window* children = nullptr;
    unsigned int count = 0;
    XQueryTree(display, DefaultRootWindow(display), &root, &parent, &children, &count);
    std::vector<Window> windows(children, children + count);
    if (children) XFree(children);
    return windows;
}

template <class T>
T Value(Widget widget, char const* resource) {
    T value{};
    Arg argument{const_cast<char*>(resource), reinterpret_cast<XtArgVal>(&value)};
    XtGetValues(widget, &argument, 1);
    return value;
}

} // namespace

DialogTest::DialogTest() {
    OpenToolkitOnce();
    CloseDialogs();
    Settle();
    actions.clear();
    inQuietMode = false;
    SetSnoozeStateOfAFreshProcess();
    // With nothing pending no row stays selected from a test before this one.
    UnixApp_ShowActionRequestDialog(false, TimeInterval(), true);
    CloseDialogs();
    Settle();
    Commands();
}

DialogTest::~DialogTest() {
    CloseDialogs();
    Settle();
}

bool DialogTest::ServeUntil(std::function<bool()> const& condition) {
    auto const end = std::chrono::steady_clock::now() + std::chrono::seconds(20);
    while (!condition()) {
        if (std::chrono::steady_clock::now() > end) return false;
        if (!ServeSome()) std::this_thread::sleep_for(std::chrono::milliseconds(1));
    }
    return true;
}

void DialogTest::Settle() {
    do XSync(display, False);
    while (ServeSome());
}

std::vector<Widget> DialogTest::Shells() {
    Settle();
    std::vector<Widget> shells;
    for (Window const window : TopLevelWindows())
        if (Widget const shell = XtWindowToWidget(display, window); shell && shell != vrkHidden)
            shells.push_back(shell);
    return shells;
}

Widget DialogTest::Shell() {
    std::vector<Widget> const shells = Shells();
    EXPECT_LE(shells.size(), 1u);
    return shells.empty() ? nullptr : shells.front();
}

Widget DialogTest::Find(std::string const& path) {
    Widget const shell = Shell();
    return shell ? XtNameToWidget(shell, path.c_str()) : nullptr;
}

Widget DialogTest::ListIn(std::string const& viewport) {
    Widget const parent = Find("form." + viewport);
    if (!parent) return nullptr;
    auto const children = Value<WidgetList>(parent, XtNchildren);
    auto const count = Value<Cardinal>(parent, XtNnumChildren);
    for (Cardinal index = 0; index < count; ++index)
        if (ClassOf(children[index]) == "List") return children[index];
    return nullptr;
}

std::string DialogTest::ClassOf(Widget widget) {
    return XtClass(widget)->core_class.class_name;
}

long DialogTest::Number(Widget widget, char const* resource) {
    // Read into more than any number takes; what is not written stays zero.
    return Value<long>(widget, resource);
}

bool DialogTest::Flag(Widget widget, char const* resource) {
    return Value<Boolean>(widget, resource) != 0;
}

std::string DialogTest::Text(Widget widget, char const* resource) {
    char const* const text = Value<char const*>(widget, resource);
    return text ? text : "";
}

std::string DialogTest::Label(std::string const& path) {
    return Text(Find(path), XtNlabel);
}

bool DialogTest::IsSensitive(std::string const& path) {
    return XtIsSensitive(Find(path));
}

std::vector<std::string> DialogTest::Rows(Widget list) {
    auto const rows = Value<String*>(list, XtNlist);
    auto const count = Value<int>(list, XtNnumberStrings);
    return std::vector<std::string>(rows, rows + count);
}

int DialogTest::Highlight(Widget list) {
    XawListReturnStruct* const current = XawListShowCurrent(list);
    int const row = current->list_index;
    XtFree(reinterpret_cast<char*>(current));
    return row;
}

void DialogTest::Click(Widget widget) {
    ClickAt(widget, static_cast<int>(Number(widget, XtNwidth) / 2),
            static_cast<int>(Number(widget, XtNheight) / 2));
}

void DialogTest::ClickAt(Widget widget, int x, int y) {
    PressAndRelease(widget, 1, x, y);
}

void DialogTest::PressAndRelease(Widget widget, unsigned int button, int x, int y) {
    Settle();
    Window child = None;
    int rootX = 0;
    int rootY = 0;
    XTranslateCoordinates(display, XtWindow(widget), DefaultRootWindow(display), x, y, &rootX, &rootY,
                          &child);
    XTestFakeMotionEvent(display, -1, 0, 0, CurrentTime);
    Settle();
    XTestFakeMotionEvent(display, -1, rootX, rootY, CurrentTime);
    Settle();
    XTestFakeButtonEvent(display, button, True, CurrentTime);
    Settle();
    XTestFakeButtonEvent(display, button, False, CurrentTime);
    Settle();
}

void DialogTest::ClickRow(Widget list, int row) {
    ListPart const& part = reinterpret_cast<ListRec*>(list)->list;
    ClickAt(list, part.internal_width + 5,
            part.internal_height + part.row_height * row + part.row_height / 2);
}

void DialogTest::ExpectDragsThumb(Widget bar) {
    float const before = Value<float>(bar, "topOfThumb");
    PressAndRelease(bar, 3, static_cast<int>(Number(bar, XtNwidth) / 2),
                    static_cast<int>(Number(bar, XtNheight) * 3 / 4));
    EXPECT_GT(Value<float>(bar, "topOfThumb"), before);
}

std::vector<std::string> DialogTest::Protocols(Widget shell) {
    Atom* protocols = nullptr;
    int count = 0;
    if (!XGetWMProtocols(display, XtWindow(shell), &protocols, &count)) return {};
    std::vector<std::string> names;
    for (int index = 0; index < count; ++index) {
        char* const name = XGetAtomName(display, protocols[index]);
        names.push_back(name);
        XFree(name);
    }
    XFree(protocols);
    return names;
}

std::vector<std::string> DialogTest::Commands() {
    FiFoQueue<std::unique_ptr<UICommand>> queue;
    uiCommandQ.ReadMessages(queue);
    std::vector<std::string> commands;
    while (!queue.IsEmpty()) {
        std::unique_ptr<UICommand> const command = queue.Take();
        commands.push_back(std::to_string(command->type) + " " + std::to_string(command->actionID) + " " +
                           std::to_string(command->minutes) + " " + std::to_string(command->seconds));
    }
    return commands;
}

Resource::Resource(std::string const& name, std::string const& value, std::string const& valueAfter)
    : m_name(name), m_valueAfter(valueAfter) {
    Put(value);
}

Resource::~Resource() {
    Put(m_valueAfter);
}

void Resource::Put(std::string const& value) {
    XrmDatabase database = XtDatabase(display);
    XrmPutStringResource(&database, m_name.c_str(), value.c_str());
}

void Add(Pending const& pending) {
    ActionRequest request;
    request.id = pending.id;
    request.SetTitle(MakeUTF8Ref(pending.title));
    request.SetDescription(MakeUTF8Ref(pending.description));
    if (pending.deadline)
        request.deadline =
            TimeObject(pending.now + TimeInterval::FromMicroseconds(*pending.deadline * 1000000), TimeZone());
    request.cancellable = pending.cancellable;
    request.restart = pending.restart;
    request.forceRun = pending.forceRun;
    request.requestSave = pending.requestSave;
    if (pending.hasPreview) request.preview = SharedUString<UTF8>("script"_utf8);
    if (!pending.preActionMessage.empty())
        request.preActionMessage = SharedUString<UTF8>(MakeUTF8Ref(pending.preActionMessage));
    actions.push_back(std::move(request));
}
