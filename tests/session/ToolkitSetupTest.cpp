// First: X.h defines names that the test framework uses.
#include <gtest/gtest.h>

#include "app/DefaultFontSet.h"
#include "app/ProcessState.h"
#include "app/WidgetHelpers.h"
#include "tests/session/ClientSession.h"
#include "tests/session/InToolkit.h"
#include "tests/support/TestLocales.h"

#include <X11/Shell.h>
#include <X11/StringDefs.h>
#include <X11/Xatom.h>
#include <X11/Xaw/AsciiText.h>
#include <X11/Xaw/Label.h>
#include <X11/Xaw/List.h>
#include <X11/Xaw/Scrollbar.h>
#include <X11/Xaw/Viewport.h>
#include <cstdio>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <thread>
#include <unistd.h>

// The toolkit's set-up and the widget helpers against a real server.

namespace {

std::string Join(std::vector<std::string> const& entries) {
    std::string joined;
    for (std::string const& entry : entries) joined += (joined.empty() ? "" : "|") + entry;
    return joined;
}

// The default font set in the display's database; "none" when there is none.
std::string DefaultFontSetInDatabase() {
    XrmName names[] = {XrmStringToName("xtDefaultFontSet"), NULLQUARK};
    XrmClass classes[] = {XrmStringToClass("XtDefaultFontSet"), NULLQUARK};
    XrmRepresentation type = NULLQUARK;
    XrmValue value{};
    if (!XrmQGetResource(XtDatabase(display), names, classes, &type, &value)) return "none";
    return value.addr;
}

std::string DescribeFonts() {
    return DefaultFontSetInDatabase() + "; missing: " + Join(GetMissingCharSets());
}

std::vector<std::string> TakeSent() {
    FiFoQueue<UIMessage> messages;
    writeQ.ReadMessages(messages);
    std::vector<std::string> documents;
    while (!messages.IsEmpty()) documents.push_back(MakeString(messages.Take().text));
    return documents;
}

Widget MakeShell(int width = 100, int height = 50) {
    return XtVaAppCreateShell(nullptr, nullptr, applicationShellWidgetClass, display, XtNwidth, width,
                              XtNheight, height, nullptr);
}

// Handles everything that the server has sent so far.
void DispatchEvents() {
    XSync(display, False);
    while (XtAppPending(app_context) & XtIMXEvent) XtAppProcessEvent(app_context, XtIMXEvent);
}

constexpr char cBuiltInFont[] = "-misc-fixed-medium-r-semicondensed--13-120-75-75-c-60-*,*";
constexpr char cTallFont[] = "-misc-fixed-medium-r-normal--18-120-100-100-c-90-*,*";

} // namespace

// Names of locales, as the environment gives them.
constexpr char const* cLocales[] = {"C", "C.UTF-8", "de_DE.UTF-8", "de_DE.ISO-8859-1"};

class FontSituation : public InToolkit {
protected:
    explicit FontSituation(std::vector<std::string> const& serverArguments = {})
        : InToolkit({.arguments = serverArguments}) {}
    ~FontSituation() override { international = false; }

    void Use(std::string const& locale) {
        m_environment["LOCPATH"] = TestLocales::Folder();
        m_environment["LC_ALL"] = locale;
        international = locale != "C";
    }

    // DescribeFonts of a child in that locale.
    std::string FontsIn(std::string const& locale, std::vector<std::string> const& arguments = {}) {
        Use(locale);
        return Report(DescribeFonts, arguments);
    }

    static bool IsUTF8(std::string const& locale) { return locale.ends_with("UTF-8"); }
};

using AllFonts = FontSituation;

TEST_F(AllFonts, DefaultIsCompleteAndStaysAsItIs) {
    for (char const* locale : cLocales) EXPECT_EQ(FontsIn(locale), "none; missing: ") << locale;
}

TEST_F(AllFonts, CompleteConfiguredSetStaysInForce) {
    for (char const* locale : cLocales)
        EXPECT_EQ(FontsIn(locale, {"-xrm", std::string("xtDefaultFontSet: ") + cTallFont}),
                  std::string(cTallFont) + "; missing: ")
            << locale;
}

TEST_F(AllFonts, ConfiguredSetOfTheServersResourcesIsFound) {
    std::string const resources = std::string("*xtDefaultFontSet: ") + cTallFont + "\n";
    Display* const onlooker = XOpenDisplay(m_display.Name().c_str());
    ASSERT_TRUE(onlooker);
    XChangeProperty(onlooker, DefaultRootWindow(onlooker), XA_RESOURCE_MANAGER, XA_STRING, 8, PropModeReplace,
                    reinterpret_cast<unsigned char const*>(resources.data()),
                    static_cast<int>(resources.size()));
    XSync(onlooker, False);
    for (char const* locale : cLocales)
        EXPECT_EQ(FontsIn(locale), std::string(cTallFont) + "; missing: ") << locale;
    XCloseDisplay(onlooker);
}

TEST_F(AllFonts, CompleteDefaultIsReportedToBeEnoughBesideAnIncompleteConfiguredSet) {
    EXPECT_EQ(FontsIn("de_DE.UTF-8", {"-xrm", "xtDefaultFontSet: fixed"}), "fixed; missing: ");
}

class BuiltInFontsOnly : public FontSituation {
protected:
    BuiltInFontsOnly() : FontSituation({"-fp", "built-ins"}) {}
};

TEST_F(BuiltInFontsOnly, FoundSetIsPutInForceWhereTheDefaultMissesAnything) {
    for (char const* locale : cLocales)
        EXPECT_EQ(FontsIn(locale), (IsUTF8(locale) ? std::string(cBuiltInFont) : "none") + "; missing: ")
            << locale;
}

TEST_F(BuiltInFontsOnly, FoundSetReplacesAnIncompleteConfiguredOneOfTheClass) {
    EXPECT_EQ(FontsIn("C.UTF-8", {"-xrm", "XtDefaultFontSet: fixed"}),
              std::string(cBuiltInFont) + "; missing: ");
}

TEST_F(BuiltInFontsOnly, ConfiguredSetThatCannotBeMadeIsReplaced) {
    for (char const* locale : cLocales)
        EXPECT_EQ(FontsIn(locale, {"-xrm", "XtDefaultFontSet: no-such-font"}),
                  (IsUTF8(locale) ? std::string(cBuiltInFont) : "no-such-font") + "; missing: ")
            << locale;
}

TEST_F(BuiltInFontsOnly, WidgetsUseTheSetThatWasPutInForce) {
    Use("de_DE.UTF-8");
    EXPECT_EQ(Report([] {
                  Widget const label =
                      XtVaCreateManagedWidget("label", labelWidgetClass, MakeShell(), XtNinternational, True,
                                              XtNlabel, "Schl\xC3\xBCssel", nullptr);
                  XFontSet fontSet = nullptr;
                  XtVaGetValues(label, XtNfontSet, &fontSet, nullptr);
                  return std::string(fontSet ? XBaseFontNameListOfFontSet(fontSet) : "none");
              }),
              cBuiltInFont);
}

// A server whose fonts are all gone.
class NoUsableFont : public FontSituation {
protected:
    NoUsableFont() {
        char name[] = "/tmp/no-fonts-XXXXXX";
        if (!mkdtemp(name)) throw std::runtime_error("cannot make a folder");
        m_folder = name;
        std::ofstream(m_folder / "fonts.dir") << "0\n";
        Display* const onlooker = XOpenDisplay(m_display.Name().c_str());
        char* path[] = {name};
        XSetFontPath(onlooker, path, 1);
        XCloseDisplay(onlooker);
    }
    ~NoUsableFont() override { std::filesystem::remove_all(m_folder); }

    // A child that creates a label, and the end of the pipe to which it sends its documents, each with a NUL
    // behind.
    struct LabelMaker {
        pid_t process;
        int documents;
    };

    LabelMaker MakeLabel(bool ofManyScripts) {
        int ends[2];
        if (pipe(ends) != 0) throw std::runtime_error("cannot make a pipe");
        pid_t const child = Start([&] {
            std::thread([end = ends[1]] {
                for (;; usleep(10000))
                    for (std::string const& document : TakeSent()) {
                        std::string const line = document + '\0';
                        if (write(end, line.data(), line.size()) < 0) return;
                    }
            }).detach();
            XtVaCreateManagedWidget("label", labelWidgetClass, MakeShell(), XtNinternational,
                                    ofManyScripts ? True : False, nullptr);
        });
        close(ends[1]);
        return {child, ends[0]};
    }

    // All that it sends until it ends.
    static std::vector<std::string> DocumentsOf(LabelMaker const& maker) {
        std::vector<std::string> documents(1);
        for (char byte = 0; read(maker.documents, &byte, 1) == 1;)
            if (byte == '\0')
                documents.emplace_back();
            else
                documents.back() += byte;
        close(maker.documents);
        documents.pop_back();
        return documents;
    }

    std::filesystem::path m_folder;
};

TEST_F(NoUsableFont, LinesOfTheDefaultStay) {
    EXPECT_EQ(FontsIn("C"), "none; missing: Default Xt font type: -*-*-*-R-*-*-*-120-*-*-*-*,*|ISO8859-1");
    for (char const* locale : {"C.UTF-8", "de_DE.UTF-8", "de_DE.ISO-8859-1"}) {
        std::string const fonts = FontsIn(locale);
        EXPECT_TRUE(fonts.starts_with(
            "none; missing: Default Xt font type: -*-*-*-R-*-*-*-120-*-*-*-*,*|ISO8859-1|ISO8859-1"))
            << locale << ": " << fonts;
        EXPECT_EQ(fonts.find("ISO10646-1") != std::string::npos, IsUTF8(locale)) << fonts;
    }
}

TEST_F(NoUsableFont, LinesOfAnEquallyPoorConfiguredSetStayAsWell) {
    EXPECT_EQ(FontsIn("C", {"-xrm", "xtDefaultFontSet: fixed"}),
              "fixed; missing: Resource font type: fixed|ISO8859-1|"
              "Default Xt font type: -*-*-*-R-*-*-*-120-*-*-*-*,*|ISO8859-1");
}

TEST_F(NoUsableFont, WarningsThenReachTheClient) {
    Use("C");
    EXPECT_EQ(Report([] {
                  XtAppWarningMsg(app_context, "aName", "aType", "aClass", "a warning of the test", nullptr,
                                  nullptr);
                  return Join(TakeSent());
              }),
              "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
              "<ClientToUI>\n"
              "\t<ClientUIErrorMessage>\n"
              "\t\t<DebugString>aName (aClass) ( missing charsets: "
              "Default Xt font type: -*-*-*-R-*-*-*-120-*-*-*-*,* ISO8859-1 )</DebugString>\n"
              "\t\t<ErrorCode>1</ErrorCode>\n"
              "\t</ClientUIErrorMessage>\n"
              "</ClientToUI>");
}

TEST_F(NoUsableFont, FirstLabelEndsTheProcessOrderlyWithItsReportSentTwice) {
    std::vector<LabelMaker> makers;
    for (char const* locale : cLocales)
        for (bool const ofManyScripts : {false, true}) {
            Use(locale);
            makers.push_back(MakeLabel(ofManyScripts));
        }
    for (std::size_t index = 0; index < makers.size(); ++index) {
        SCOPED_TRACE(std::string(cLocales[index / 2]) + (index % 2 == 1 ? ", international" : ""));
        std::vector<std::string> const documents = DocumentsOf(makers[index]);
        EXPECT_EQ(StatusOf(makers[index].process), 0);
        ASSERT_GE(documents.size(), 3u);
        std::string const report = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
                                   "<ClientToUI>\n"
                                   "\t<ClientUIErrorMessage>\n"
                                   "\t\t<DebugString>noFont (XtToolkitError)</DebugString>\n"
                                   "\t\t<ErrorCode>1</ErrorCode>\n"
                                   "\t</ClientUIErrorMessage>\n"
                                   "</ClientToUI>";
        EXPECT_EQ(documents[documents.size() - 1], report);
        EXPECT_EQ(documents[documents.size() - 2], report);
        EXPECT_NE(documents[documents.size() - 3].find("noFont (XtToolkitError) ( missing charsets: "),
                  std::string::npos)
            << documents[documents.size() - 3];
    }
}

class DialogPosition : public InToolkit {
protected:
    DialogPosition() : InToolkit({.screen = "1024x768x24", .arguments = {}}) {}

    std::string PositionOf(int width, int height) {
        return Report([=] {
            Widget const shell = MakeShell(width, height);
            XtRealizeWidget(shell);
            CenterDialogOnDisplay(shell);
            Position x = 0;
            Position y = 0;
            XtVaGetValues(shell, XtNx, &x, XtNy, &y, nullptr);
            return std::to_string(x) + "," + std::to_string(y);
        });
    }
};

TEST_F(DialogPosition, IsTheMiddleOfTheScreen) {
    EXPECT_EQ(PositionOf(100, 50), "462,359");
    EXPECT_EQ(PositionOf(101, 51), "461,358");
    EXPECT_EQ(PositionOf(1024, 768), "0,0");
}

TEST_F(DialogPosition, IsNegativeForADialogLargerThanTheScreen) {
    EXPECT_EQ(PositionOf(2000, 1000), "-488,-116");
    EXPECT_EQ(PositionOf(32767, 20000), "-15871,-9616");
}

TEST_F(DialogPosition, IsRoundedTowardsZero) {
    EXPECT_EQ(PositionOf(1023, 767), "0,0");
    EXPECT_EQ(PositionOf(1025, 769), "0,0");
    EXPECT_EQ(PositionOf(1027, 771), "-1,-1");
}

// A list in a viewport five rows high.
struct ListInViewport {
    ListInViewport(int rows, bool withBar) {
        // The widget keeps the array.
        static std::vector<std::string> texts(static_cast<std::size_t>(rows), "row");
        static std::vector<char*> pointers;
        for (std::string& text : texts) pointers.push_back(text.data());
        Widget const shell = MakeShell(200, 75);
        Boolean const bar = withBar ? True : False;
        viewport = XtVaCreateManagedWidget("viewport", viewportWidgetClass, shell, XtNallowVert, bar,
                                           XtNforceBars, bar, nullptr);
        list = XtVaCreateManagedWidget("", listWidgetClass, viewport, XtNlist, pointers.data(),
                                       XtNnumberStrings, rows, XtNdefaultColumns, 1, XtNforceColumns, True,
                                       XtNverticalList, True, nullptr);
        XtRealizeWidget(shell);
    }

    // How far the list's beginning is above the viewport.
    std::string Top() const {
        Position top = 0;
        Dimension height = 0;
        XtVaGetValues(list, XtNy, &top, XtNheight, &height, nullptr);
        return std::to_string(-top * 1000 / int{height}) + " thousandths";
    }

    Widget viewport;
    Widget list;
};

class SelectedRow : public InToolkit {
protected:
    // The position of a list of `rows` rows after one of them has been selected and scrolled into view.
    std::string TopAfterScrolling(int rows, int selected, bool withBar = true) {
        return Report([=] {
            ListInViewport const made(rows, withBar);
            XawListHighlight(made.list, selected);
            ScrollSelectedItemIntoView(made.viewport, made.list);
            return made.Top();
        });
    }
};

TEST_F(SelectedRow, IsScrolledToTheTop) {
    EXPECT_EQ(TopAfterScrolling(100, 50), "500 thousandths");
    EXPECT_EQ(TopAfterScrolling(100, 0), "0 thousandths");
}

TEST_F(SelectedRow, IsScrolledNoFurtherThanTheEndOfTheList) {
    // 75 pixels of 1500 are seen.
    EXPECT_EQ(TopAfterScrolling(100, 99), TopAfterScrolling(100, 98));
}

TEST_F(SelectedRow, IsNotLookedForWithoutASelection) {
    EXPECT_EQ(Report([] {
                  ListInViewport const made(100, true);
                  ScrollSelectedItemIntoView(made.viewport, made.list);
                  std::string const atFirst = made.Top();
                  XawListHighlight(made.list, 50);
                  ScrollSelectedItemIntoView(made.viewport, made.list);
                  XawListUnhighlight(made.list);
                  ScrollSelectedItemIntoView(made.viewport, made.list);
                  return atFirst + ", " + made.Top();
              }),
              "0 thousandths, 500 thousandths");
}

TEST_F(SelectedRow, StaysWhereItIsWithoutAScrollBar) {
    EXPECT_EQ(TopAfterScrolling(100, 50, false), "0 thousandths");
}

namespace {

std::string jumps;

void NoteJump(Widget, XtPointer, XtPointer position) {
    jumps += std::to_string(static_cast<int>(*static_cast<float*>(position) * 100 + 0.5F)) + "%";
}

// An upright bar of 100 pixels that notes where its thumb is dragged to.
Widget MakeScrollbar() {
    Widget const shell = MakeShell(20, 100);
    Widget const bar = XtVaCreateManagedWidget("bar", scrollbarWidgetClass, shell, XtNlength, 100,
                                               XtNthickness, 20, XtNborderWidth, 0, nullptr);
    XtAddCallback(bar, XtNjumpProc, NoteJump, nullptr);
    XtRealizeWidget(shell);
    DispatchEvents();
    return bar;
}

XEvent MakeButtonEvent(Widget bar, int type, unsigned int button, int y) {
    XEvent event{};
    event.xbutton.type = type;
    event.xbutton.display = display;
    event.xbutton.window = XtWindow(bar);
    event.xbutton.root = DefaultRootWindow(display);
    event.xbutton.x = 5;
    event.xbutton.y = y;
    event.xbutton.button = button;
    event.xbutton.same_screen = True;
    return event;
}

// Presses `button` at a quarter of the bar, drags it to three quarters and lets it go there.
void Drag(Widget bar, unsigned int button) {
    XEvent press = MakeButtonEvent(bar, ButtonPress, button, 25);
    XtDispatchEvent(&press);
    XEvent motion{};
    motion.xmotion.type = MotionNotify;
    motion.xmotion.display = display;
    motion.xmotion.window = XtWindow(bar);
    motion.xmotion.root = DefaultRootWindow(display);
    motion.xmotion.x = 5;
    motion.xmotion.y = 75;
    motion.xmotion.state = button == Button1 ? Button1Mask : Button3Mask;
    motion.xmotion.same_screen = True;
    XtDispatchEvent(&motion);
    XEvent release = MakeButtonEvent(bar, ButtonRelease, button, 75);
    release.xbutton.state = motion.xmotion.state;
    XtDispatchEvent(&release);
}

} // namespace

using ScrollbarTranslations = InToolkit;

TEST_F(ScrollbarTranslations, LetButtonsOneAndThreeDragTheThumb) {
    for (unsigned int const button : {1u, 3u})
        EXPECT_EQ(Report([=] {
                      Widget const bar = MakeScrollbar();
                      OverrideScrollbarTranslations(bar);
                      Drag(bar, button);
                      return jumps;
                  }),
                  "25%75%")
            << button;
}

TEST_F(ScrollbarTranslations, OfTheToolkitDoNotDragWithButtonsOneAndThree) {
    for (unsigned int const button : {1u, 3u})
        EXPECT_EQ(Report([=] {
                      Drag(MakeScrollbar(), button);
                      return jumps;
                  }),
                  "")
            << button;
}

TEST_F(ScrollbarTranslations, OfNoScrollbarAreNotTouched) {
    EXPECT_EQ(Report([] {
                  OverrideScrollbarTranslations(nullptr);
                  return std::string("alive");
              }),
              "alive");
}

using ScrollbarOfText = InToolkit;

TEST_F(ScrollbarOfText, IsFoundWhereThereIsOne) {
    EXPECT_EQ(Report([] {
                  Widget const text =
                      XtVaCreateManagedWidget("text", asciiTextWidgetClass, MakeShell(), XtNscrollVertical,
                                              XawtextScrollAlways, nullptr);
                  Widget const bar = TextScrollbar(text);
                  if (!bar) return std::string("none");
                  return std::string(XtName(bar)) + (XtClass(bar) == scrollbarWidgetClass ? "" : ", no bar") +
                         (XtParent(bar) == text ? "" : ", another's");
              }),
              "vScrollbar");
}

TEST_F(ScrollbarOfText, IsNullWhereThereIsNone) {
    EXPECT_EQ(
        Report([] {
            Widget const plain = XtVaCreateManagedWidget("text", asciiTextWidgetClass, MakeShell(), nullptr);
            Widget const label = XtVaCreateManagedWidget("label", labelWidgetClass, MakeShell(), nullptr);
            return std::string(
                TextScrollbar(plain) || TextScrollbar(label) || TextScrollbar(nullptr) ? "a bar" : "none");
        }),
        "none");
}

class CloseBox : public InToolkit {
protected:
    // Sends a message of that protocol to a realized shell, as a window manager does.
    static void SendProtocolMessage(Widget shell, char const* protocol) {
        XEvent event{};
        event.xclient.type = ClientMessage;
        event.xclient.window = XtWindow(shell);
        event.xclient.message_type = XInternAtom(display, "WM_PROTOCOLS", False);
        event.xclient.format = 32;
        event.xclient.data.l[0] = static_cast<long>(XInternAtom(display, protocol, False));
        XSendEvent(display, XtWindow(shell), False, NoEventMask, &event);
        DispatchEvents();
    }

    static Widget MakeListeningShell() {
        Widget const shell = MakeShell();
        XtRealizeWidget(shell);
        ListenForClose(shell);
        return shell;
    }
};

TEST_F(CloseBox, EndsTheProcessOrderly) {
    EXPECT_EQ(Run([] { SendProtocolMessage(MakeListeningShell(), "WM_DELETE_WINDOW"); }), 0);
}

TEST_F(CloseBox, EndsTheProcessThroughTheSecondShellAsWell) {
    EXPECT_EQ(Run([] {
                  XtDestroyWidget(MakeListeningShell());
                  SendProtocolMessage(MakeListeningShell(), "WM_DELETE_WINDOW");
              }),
              0);
}

TEST_F(CloseBox, IsAskedForInTheWindowsProtocols) {
    EXPECT_EQ(Report([] {
                  Atom* protocols = nullptr;
                  int count = 0;
                  XGetWMProtocols(display, XtWindow(MakeListeningShell()), &protocols, &count);
                  std::string names;
                  for (int index = 0; index < count; ++index)
                      names += XGetAtomName(display, protocols[index]);
                  return names;
              }),
              "WM_DELETE_WINDOW");
}

TEST_F(CloseBox, DoesNothingToAShellThatDoesNotListen) {
    EXPECT_EQ(Run([] {
                  Widget const shell = MakeShell();
                  XtRealizeWidget(shell);
                  SendProtocolMessage(shell, "WM_DELETE_WINDOW");
                  Finish(true);
              }),
              cAsExpected);
}

TEST_F(CloseBox, IsNotMeantByOtherMessages) {
    EXPECT_EQ(Run([] {
                  SendProtocolMessage(MakeListeningShell(), "WM_TAKE_FOCUS");
                  Finish(true);
              }),
              cAsExpected);
}

using ActionTable = InToolkit;

TEST_F(ActionTable, HasAnEntryThatDoesNothing) {
    EXPECT_EQ(Run([] {
                  Widget const shell = MakeShell();
                  XtOverrideTranslations(shell, XtParseTranslationTable("<Btn1Down>: Nothing()"));
                  XtRealizeWidget(shell);
                  XEvent press = MakeButtonEvent(shell, ButtonPress, Button1, 5);
                  XtDispatchEvent(&press);
                  Finish(true);
              }),
              cAsExpected);
}

using LongLabel = InToolkit;

TEST_F(LongLabel, IsFatalUncutAndHarmlessCut) {
    auto const show = [](std::string const& text) {
        Widget const shell =
            XtVaAppCreateShell(nullptr, nullptr, applicationShellWidgetClass, display, nullptr);
        XtVaCreateManagedWidget("label", labelWidgetClass, shell, XtNlabel, text.c_str(), nullptr);
        XtRealizeWidget(shell);
        Finish(true);
    };
    // As many letters as make the sum of their widths and of the label's margins wrap around to 0.
    EXPECT_EQ(Run([&] {
                  Widget const probe =
                      XtVaCreateWidget("probe", labelWidgetClass, MakeShell(), XtNlabel, "i", nullptr);
                  XFontStruct* font = nullptr;
                  Dimension margin = 0;
                  XtVaGetValues(probe, XtNfont, &font, XtNinternalWidth, &margin, nullptr);
                  int const letter = XTextWidth(font, "i", 1);
                  int letters = 1;
                  while (((letters * letter + 2 * margin) & 0xFFFF) != 0 && letters < 1000000) ++letters;
                  show(std::string(static_cast<std::size_t>(letters), 'i'));
              }),
              255);
    EXPECT_EQ(Run([&] { show(CutForWidget(std::string(1000000, 'W'))); }), cAsExpected);
}

TEST(ShippedProgram, ExportsItsTestForWordCharactersAndNothingElseOfItsOwn) {
    std::string const command =
        std::string("nm --dynamic --defined-only --format=posix ") + VRKCLIENTUI_EXECUTABLE;
    FILE* const listing = popen(command.c_str(), "r");
    ASSERT_TRUE(listing);
    bool found = false;
    char line[1024];
    while (fgets(line, sizeof(line), listing)) {
        if (std::strncmp(line, "_Xaw_iswalnum T ", 16) == 0) found = true;
        EXPECT_EQ(std::string(line).find("ExitCleanup"), std::string::npos) << line;
    }
    EXPECT_EQ(pclose(listing), 0);
    EXPECT_TRUE(found);
}
