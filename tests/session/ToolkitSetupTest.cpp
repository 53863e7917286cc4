// First: X.h defines names that the test framework uses.
#include <gtest/gtest.h>

#include "app/DefaultFontSet.h"
#include "app/ProcessState.h"
#include "app/ToolkitWarnings.h"
#include "app/WidgetHelpers.h"
#include "tests/session/ClientSession.h"
#include "tests/session/InToolkit.h"
#include "tests/support/TemporaryFolder.h"
#include "tests/support/TestLocales.h"

#include <X11/Shell.h>
#include <X11/StringDefs.h>
#include <X11/Xatom.h>
#include <X11/Xaw/AsciiText.h>
#include <X11/Xaw/Label.h>
#include <X11/Xaw/List.h>
#include <X11/Xaw/Scrollbar.h>
#include <X11/Xaw/Viewport.h>
#include <algorithm>
#include <clocale>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <dlfcn.h>
#include <fstream>
#include <functional>
#include <netinet/in.h>
#include <stdexcept>
#include <sys/socket.h>
#include <sys/time.h>
#include <sys/un.h>
#include <thread>
#include <unistd.h>

// The toolkit's set-up and the widget helpers against a real server.

namespace {

// What happens first when a child lists the server's fonts, which it does in the middle of the search.
std::function<void(char const* pattern, int most)> atFontListing;

} // namespace

// Takes the place of the library's function for the whole program, and hands on to it.
char** XListFonts(Display* connection, char const* pattern, int most, int* count) {
    static auto const list = reinterpret_cast<decltype(&XListFonts)>(dlsym(RTLD_NEXT, "XListFonts"));
    if (atFontListing) atFontListing(pattern, most);
    return list(connection, pattern, most, count);
}

namespace {

std::string Join(std::vector<std::string> const& entries) {
    std::string joined;
    for (std::string const& entry : entries) joined += (joined.empty() ? "" : "|") + entry;
    return joined;
}

// The default font set in the display's database for a name of its class; "none" when there is none.
std::string DefaultFontSetInDatabase(char const* name = "xtDefaultFontSet") {
    XrmName names[] = {XrmStringToName(name), NULLQUARK};
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

constexpr char cBuiltInFont[] = "-misc-fixed-medium-r-semicondensed--13-120-75-75-c-60-*,*";
constexpr char cTallFont[] = "-misc-fixed-medium-r-normal--18-120-100-100-c-90-*,*";

} // namespace

// Names of locales, as the environment gives them.
constexpr char const* cLocales[] = {"C", "C.UTF-8", "de_DE.UTF-8", "de_DE.ISO-8859-1"};

class FontSituation : public InToolkit {
protected:
    explicit FontSituation(std::vector<std::string> const& serverArguments = {})
        : InToolkit({.arguments = serverArguments}) {}
    ~FontSituation() override {
        international = false;
        atFontListing = nullptr;
    }

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

TEST_F(BuiltInFontsOnly, FoundSetIsForTheClassAndLeavesAnIncompleteConfiguredOneToItsName) {
    Use("C.UTF-8");
    EXPECT_EQ(
        Report([] { return DescribeFonts() + "; others: " + DefaultFontSetInDatabase("anotherFontSet"); },
               {"-xrm", "xtDefaultFontSet: fixed"}),
        std::string("fixed; missing: ; others: ") + cBuiltInFont);
}

TEST_F(BuiltInFontsOnly, SearchListsAThousandFontsAtMost) {
    Use("C.UTF-8");
    std::string listings;
    atFontListing = [&](std::string const& pattern, int most) {
        if (pattern == "-*-*-*-r-*-*-*-120-*-*-*-*") listings += std::to_string(most) + " ";
    };
    EXPECT_EQ(Report([&] { return listings; }), "1000 ");
}

TEST_F(BuiltInFontsOnly, FatalToolkitErrorWithinTheSearchIsLeftToTheToolkit) {
    Use("C.UTF-8");
    atFontListing = [](char const*, int) {
        std::string message = "an error of the test";
        XtAppError(app_context, message.data());
    };
    EXPECT_EQ(Run([] {}), 1) << "the status of the toolkit's own handler";
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
                      XtVaCreateManagedWidget("label", labelWidgetClass, MakeAppShell(), XtNinternational,
                                              True, XtNlabel, "Schl\xC3\xBCssel", nullptr);
                  XFontSet fontSet = nullptr;
                  XtVaGetValues(label, XtNfontSet, &fontSet, nullptr);
                  return std::string(fontSet ? XBaseFontNameListOfFontSet(fontSet) : "none");
              }),
              cBuiltInFont);
}

// A server that has the fonts of one folder only, which are written into it by the test.
class OwnFonts : public FontSituation {
protected:
    // Writes a font of that family whose lines are `lineHeight` pixels high and whose only letter has an
    // image of `inkHeight` pixels.
    void AddFont(std::string const& family, int lineHeight, int inkHeight) {
        std::string const name = "-own-" + family + "-medium-r-normal--12-120-75-75-c-60-iso8859-1";
        std::ofstream font(m_folder.Path(family + ".bdf"));
        font << "STARTFONT 2.1\nFONT " << name << "\nSIZE 12 75 75\nFONTBOUNDINGBOX 6 " << inkHeight
             << " 0 0\nSTARTPROPERTIES 3\nFONT_ASCENT " << lineHeight - 1
             << "\nFONT_DESCENT 1\nDEFAULT_CHAR 65\nENDPROPERTIES\nCHARS 1\n"
             << "STARTCHAR A\nENCODING 65\nSWIDTH 500 0\nDWIDTH 6 0\nBBX 6 " << inkHeight << " 0 0\nBITMAP\n";
        for (int row = 0; row < inkHeight; ++row) font << "FC\n";
        font << "ENDCHAR\nENDFONT\n";
        m_index += family + ".bdf " + name + "\n";
        ++m_fonts;
    }

    // Makes the server use the fonts added so far.
    void PutInForce() {
        m_folder.Write("fonts.dir", std::to_string(m_fonts) + "\n" + m_index);
        Display* const onlooker = XOpenDisplay(m_display.Name().c_str());
        std::string folder = m_folder.Path();
        char* path[] = {folder.data()};
        XSetFontPath(onlooker, path, 1);
        XCloseDisplay(onlooker);
    }

private:
    TemporaryFolder m_folder;
    int m_fonts = 0;
    std::string m_index;
};

TEST_F(OwnFonts, LineHeightDecidesAndNotTheHeightOfTheLetters) {
    AddFont("airy", 30, 5);
    AddFont("dense", 12, 11);
    AddFont("loose", 20, 3);
    PutInForce();
    EXPECT_EQ(FontsIn("de_DE.UTF-8"), "-own-dense-medium-r-normal--12-120-75-75-c-60-*,*; missing: ");
}

// A server whose fonts are all gone.
class NoUsableFont : public OwnFonts {
protected:
    NoUsableFont() { PutInForce(); }

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
            XtVaCreateManagedWidget("label", labelWidgetClass, MakeAppShell(), XtNinternational,
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

TEST_F(NoUsableFont, ConfiguredValueThatIsNoTextIsNotTaken) {
    Use("C");
    EXPECT_EQ(Report([] {
                  XrmDatabase database = XtDatabase(display);
                  XrmBinding bindings[] = {XrmBindTightly};
                  XrmQuark names[] = {XrmStringToQuark("xtDefaultFontSet"), NULLQUARK};
                  std::string bytes = "fixed";
                  XrmValue value{static_cast<unsigned int>(bytes.size() + 1), bytes.data()};
                  XrmQPutResource(&database, bindings, names, XrmStringToQuark("AnotherType"), &value);
                  ConfigValidDefaultFontSet();
                  return DescribeFonts();
              }),
              "fixed; missing: Default Xt font type: -*-*-*-R-*-*-*-120-*-*-*-*,*|ISO8859-1");
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
            Widget const shell = MakeAppShell(width, height);
            XtRealizeWidget(shell);
            CenterDialogOnDisplay(shell);
            // The toolkit hears from the server where the window stands.
            DispatchPendingEvents();
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

TEST_F(DialogPosition, IsAskedForWithoutWaitingForAnAnswer) {
    // A window manager that takes the windows over and never does anything with them.
    Display* const manager = XOpenDisplay(m_display.Name().c_str());
    ASSERT_TRUE(manager);
    XSelectInput(manager, DefaultRootWindow(manager), SubstructureRedirectMask);
    XSync(manager, False);
    EXPECT_EQ(Report([] {
                  Widget const shell = MakeAppShell();
                  // A minute, which is twice the patience of the test.
                  XtVaSetValues(shell, XtNwmTimeout, 60000, nullptr);
                  XtRealizeWidget(shell);
                  CenterDialogOnDisplay(shell);
                  Boolean waits = False;
                  XtVaGetValues(shell, XtNwaitForWm, &waits, nullptr);
                  return std::string(waits ? "later moves wait" : "later moves do not wait");
              }),
              "later moves wait");
    XCloseDisplay(manager);
}

// A list in a viewport five rows high.
struct ListInViewport {
    ListInViewport(int rows, bool withBar) {
        // The widget keeps the array.
        static std::vector<std::string> texts(static_cast<std::size_t>(rows), "row");
        static std::vector<char*> pointers;
        for (std::string& text : texts) pointers.push_back(text.data());
        Widget const shell = MakeAppShell(200, 75);
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
    Widget const shell = MakeAppShell(20, 100);
    Widget const bar = XtVaCreateManagedWidget("bar", scrollbarWidgetClass, shell, XtNlength, 100,
                                               XtNthickness, 20, XtNborderWidth, 0, nullptr);
    XtAddCallback(bar, XtNjumpProc, NoteJump, nullptr);
    XtRealizeWidget(shell);
    DispatchPendingEvents();
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
                      XtVaCreateManagedWidget("text", asciiTextWidgetClass, MakeAppShell(), XtNscrollVertical,
                                              XawtextScrollAlways, nullptr);
                  Widget const bar = TextScrollbar(text);
                  if (!bar) return std::string("none");
                  return std::string(XtName(bar)) + (XtClass(bar) == scrollbarWidgetClass ? "" : ", no bar") +
                         (XtParent(bar) == text ? "" : ", another's");
              }),
              "vScrollbar");
}

TEST_F(ScrollbarOfText, IsNullWhereThereIsNone) {
    EXPECT_EQ(Report([] {
                  Widget const plain =
                      XtVaCreateManagedWidget("text", asciiTextWidgetClass, MakeAppShell(), nullptr);
                  Widget const label =
                      XtVaCreateManagedWidget("label", labelWidgetClass, MakeAppShell(), nullptr);
                  return std::string(TextScrollbar(plain) || TextScrollbar(label) || TextScrollbar(nullptr)
                                         ? "a bar"
                                         : "none");
              }),
              "none");
}

class CloseBox : public InToolkit {
protected:
    // Sends a message of that protocol to a realized shell, as a window manager does.
    static void SendProtocolMessage(Widget shell, char const* protocol) {
        XEvent event = MakeProtocolMessage(protocol);
        event.xclient.window = XtWindow(shell);
        XSendEvent(display, XtWindow(shell), False, NoEventMask, &event);
        DispatchPendingEvents();
    }

    static Widget MakeListeningShell() {
        Widget const shell = MakeAppShell();
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
                  Widget const shell = MakeAppShell();
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
                  Widget const shell = MakeAppShell();
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
                      XtVaCreateWidget("probe", labelWidgetClass, MakeAppShell(), XtNlabel, "i", nullptr);
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

using Toolkit = InToolkit;

namespace {

// What a child writes to its standard error while `body` runs.
std::string ErrorOutputOf(std::function<void()> const& body) {
    int ends[2];
    if (pipe(ends) != 0) return "there is no pipe";
    dup2(ends[1], STDERR_FILENO);
    close(ends[1]);
    body();
    std::fflush(stderr);
    close(STDERR_FILENO);
    std::string output;
    for (char byte = 0; read(ends[0], &byte, 1) == 1;) output += byte;
    return output;
}

void GiveWarning() {
    XtAppWarningMsg(app_context, "aName", "aType", "aClass", "a warning of the test", nullptr, nullptr);
}

// Lets a child that has sent anything end with that status, whatever its own was to be.
constexpr int cHasSent = 77;

void WatchWhatIsSent() {
    std::atexit([] {
        if (!writeQ.IsEmpty()) _exit(cHasSent);
    });
}

} // namespace

TEST_F(Toolkit, WarningReachesTheToolkitsOwnHandlerAndNotTheClient) {
    EXPECT_EQ(Report([] {
                  if (!defaultWarningMsgHandler) return std::string("there is no former handler");
                  return ErrorOutputOf(GiveWarning) + Join(TakeSent());
              }),
              "Warning: a warning of the test\n");
}

TEST_F(Toolkit, WarningHandlerIsNotItsOwnPredecessorWhenItIsInstalledAgain) {
    EXPECT_EQ(Report([] {
                  XtErrorMsgHandler const former = defaultWarningMsgHandler;
                  OverrideWarningMsgHandler(app_context);
                  if (defaultWarningMsgHandler != former) return std::string("another predecessor");
                  return ErrorOutputOf(GiveWarning);
              }),
              "Warning: a warning of the test\n");
}

TEST_F(Toolkit, LocaleStaysAsItIsWithoutARealOne) {
    m_environment["LOCPATH"] = TestLocales::Folder();
    m_environment["LC_ALL"] = "de_DE.UTF-8";
    auto const locale = [] { return std::string(std::setlocale(LC_CTYPE, nullptr)); };
    EXPECT_EQ(Report(locale), "C");
    international = true;
    EXPECT_EQ(Report(locale), "de_DE.UTF-8");
    international = false;
}

TEST_F(Toolkit, FailuresAreNotToldToTheClient) {
    EXPECT_EQ(Run([] {
                  WatchWhatIsSent();
                  XMapWindow(display, 0x7FFFFFFF);
                  XSync(display, False);
              }),
              255)
        << "a protocol error";
    EXPECT_EQ(Run([] {
                  WatchWhatIsSent();
                  std::string message = "no such thing";
                  XtAppError(app_context, message.data());
              }),
              255)
        << "a fatal error of the toolkit";
    EXPECT_EQ(Run([this] {
                  WatchWhatIsSent();
                  m_display.Kill();
                  XSync(display, False);
              }),
              0)
        << "a lost connection";
}

// A server that takes one connection, greets it as the real one does, and answers each of its next requests
// from a prepared list; then it hangs up.
class FailingServer : public InToolkit {
protected:
    FailingServer() {
        timeval const patience{.tv_sec = cPatience.count(), .tv_usec = 0};
        setsockopt(m_listener, SOL_SOCKET, SO_RCVTIMEO, &patience, sizeof(patience));
        m_environment["DISPLAY"] = "127.0.0.1:" + std::to_string(ListenAsDisplay());
    }
    ~FailingServer() override { close(m_listener); }

    // The exit status of a child that opens the toolkit on this server.
    std::optional<int> StatusAfter(std::vector<std::string> const& answers) {
        std::vector<std::string> all{Greeting()};
        all.insert(all.end(), answers.begin(), answers.end());
        pid_t const child = Start([] {});
        int const connection = accept(m_listener, nullptr, nullptr);
        for (std::string const& answer : all) {
            char request[4096];
            EXPECT_GT(read(connection, request, sizeof(request)), 0);
            EXPECT_GT(send(connection, answer.data(), answer.size(), MSG_NOSIGNAL), 0);
        }
        // Not closed yet: requests that nobody reads would take the last answer with them.
        shutdown(connection, SHUT_WR);
        std::optional<int> const status = StatusOf(child);
        close(connection);
        return status;
    }

    // 32 bytes, with the kind, the code and the number of the request that is answered; the rest is 0.
    static std::string Answer(char kind, char code, char request) {
        std::string answer(32, '\0');
        answer[0] = kind;
        answer[1] = code;
        answer[2] = request;
        return answer;
    }

private:
    // The number of the display that it has become: its port is 6000 higher.
    int ListenAsDisplay() {
        constexpr int cPortOfDisplayZero = 6000;
        for (int number = 100; number < 1000; ++number) {
            sockaddr_in address{};
            address.sin_family = AF_INET;
            address.sin_port = htons(static_cast<std::uint16_t>(cPortOfDisplayZero + number));
            address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
            if (bind(m_listener, reinterpret_cast<sockaddr const*>(&address), sizeof(address)) == 0 &&
                listen(m_listener, 1) == 0)
                return number;
        }
        throw std::runtime_error("no port is free");
    }

    // What the real server says to a new connection.
    std::string Greeting() {
        sockaddr_un address{};
        address.sun_family = AF_UNIX;
        std::ranges::copy("/tmp/.X11-unix/X" + m_display.Name().substr(1), address.sun_path);
        int const connection = socket(AF_UNIX, SOCK_STREAM, 0);
        EXPECT_EQ(connect(connection, reinterpret_cast<sockaddr const*>(&address), sizeof(address)), 0);
        // The least significant byte first, protocol 11.0, no authorization.
        char const hello[12] = {'l', 0, 11};
        EXPECT_EQ(send(connection, hello, sizeof(hello), MSG_NOSIGNAL), 12);
        std::string greeting = Read(connection, 8);
        std::uint16_t words = 0;
        std::memcpy(&words, greeting.data() + 6, sizeof(words));
        greeting += Read(connection, std::size_t{4} * words);
        close(connection);
        return greeting;
    }

    static std::string Read(int connection, std::size_t size) {
        std::string bytes(size, '\0');
        EXPECT_EQ(recv(connection, bytes.data(), size, MSG_WAITALL), static_cast<ssize_t>(size));
        return bytes;
    }

    int m_listener = socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0);
};

TEST_F(FailingServer, ThatHangsUpWhileTheDisplayIsOpenedIsAnOrderlyEnd) {
    EXPECT_EQ(StatusAfter({}), 0);
}

TEST_F(FailingServer, ThatReportsAnErrorWhileTheDisplayIsOpenedEndsTheProcessWithMinusOne) {
    constexpr char cError = 0;
    constexpr char cReply = 1;
    constexpr char cBadAlloc = 11;
    // The first request asks for an extension, which is not there. The second has no answer but an error,
    // which is noticed with the answer to the third, about a property that is not there either.
    EXPECT_EQ(StatusAfter({Answer(cReply, 0, 1), Answer(cError, cBadAlloc, 2) + Answer(cReply, 0, 3)}), 255);
}
