// A window on the Athena widgets for the tests of the user at the screen. Its title is the first argument. It
// prints a line for everything that a user does to it: the name of a command, "row N", "closed". Words behind
// the title: "international" shows all texts by font sets, "no-close-box" leaves the close box's protocol
// out.

#include <X11/Intrinsic.h>
#include <X11/Shell.h>
#include <X11/StringDefs.h>
#include <X11/Xaw/AsciiText.h>
#include <X11/Xaw/Command.h>
#include <X11/Xaw/Form.h>
#include <X11/Xaw/Label.h>
#include <X11/Xaw/List.h>
#include <X11/Xaw/Viewport.h>
#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <vector>

namespace {

constexpr int cManyRows = 30;
constexpr int cFewRows = 3;

Widget popupShell = nullptr;
Widget removable = nullptr;

void Say(char const* line) {
    std::puts(line);
    std::fflush(stdout);
}

void OnCommand(Widget widget, XtPointer, XtPointer) {
    Say(XtName(widget));
}

void OnRow(Widget, XtPointer, XtPointer data) {
    Say(("row " + std::to_string(static_cast<XawListReturnStruct*>(data)->list_index)).c_str());
}

void OnPopup(Widget, XtPointer, XtPointer) {
    XtPopup(popupShell, XtGrabNone);
}

void OnRemove(Widget, XtPointer, XtPointer) {
    XtDestroyWidget(removable);
    Say("removed");
}

void OnClose(Widget, XEvent*, String*, Cardinal*) {
    Say("closed");
    std::exit(0);
}

Widget AddCommand(Widget form, char const* name, Widget above, XtCallbackProc callback) {
    Widget const command =
        XtVaCreateManagedWidget(name, commandWidgetClass, form, XtNfromVert, above, nullptr);
    XtAddCallback(command, XtNcallback, callback, nullptr);
    return command;
}

// The list keeps the array and the texts, so they are never freed.
String* MakeRows(int count) {
    if (count == 0) return nullptr;
    auto* const texts = new std::vector<std::string>;
    for (int row = 0; row < count; ++row) texts->push_back("This is row " + std::to_string(row));
    auto* const rows = new std::vector<String>;
    for (std::string& text : *texts) rows->push_back(text.data());
    return rows->data();
}

Widget AddList(Widget form, char const* name, Widget above, int rows) {
    Widget const viewport =
        XtVaCreateManagedWidget(name, viewportWidgetClass, form, XtNfromVert, above, XtNheight, 100, XtNwidth,
                                300, XtNallowVert, True, XtNforceBars, True, nullptr);
    Widget const list = XtVaCreateManagedWidget("", listWidgetClass, viewport, XtNdefaultColumns, 1,
                                                XtNforceColumns, True, XtNverticalList, True, XtNlist,
                                                MakeRows(rows), XtNnumberStrings, rows, nullptr);
    XtAddCallback(list, XtNcallback, OnRow, nullptr);
    return viewport;
}

Widget AddTexts(Widget form, Widget above) {
    Widget const pane = XtVaCreateManagedWidget(
        "pane", asciiTextWidgetClass, form, XtNfromVert, above, XtNwidth, 300, XtNheight, 50, XtNstring,
        "What the pane shows\nin two lines", XtNscrollVertical, XawtextScrollAlways, nullptr);
    return XtVaCreateManagedWidget("field", asciiTextWidgetClass, form, XtNfromVert, pane, XtNwidth, 300,
                                   XtNeditType, XawtextEdit, nullptr);
}

void AddPopup(Widget shell) {
    popupShell =
        XtVaCreatePopupShell("popup", transientShellWidgetClass, shell, XtNtitle, "Popped up", nullptr);
    Widget const form = XtVaCreateManagedWidget("inner", formWidgetClass, popupShell, nullptr);
    AddCommand(form, "innermost", nullptr, OnCommand);
}

// As dialogs do it whose bars are dragged by the first button.
void OverrideBar(Widget viewport) {
    Widget const bar = XtNameToWidget(viewport, "vertical");
    XtOverrideTranslations(
        bar, XtParseTranslationTable("<Btn1Down>: StartScroll(Continuous) MoveThumb() NotifyThumb()\n"
                                     "<Btn1Motion>: MoveThumb() NotifyThumb()\n"));
}

Widget AddWidgets(Widget shell) {
    Widget const form = XtVaCreateManagedWidget("form", formWidgetClass, shell, nullptr);
    Widget const label = XtVaCreateManagedWidget("greeting", labelWidgetClass, form, XtNlabel, "Hello",
                                                 XtNwidth, 300, XtNborderWidth, 0, nullptr);
    Widget const first = AddCommand(form, "first", label, OnCommand);
    Widget const second = AddCommand(form, "second", first, OnCommand);
    XtSetSensitive(AddCommand(form, "insensitive", second, OnCommand), False);
    Widget const hidden = AddCommand(form, "hidden", second, OnCommand);
    XtSetMappedWhenManaged(hidden, False);
    removable = AddCommand(form, "remove", hidden, OnRemove);
    Widget const popup = AddCommand(form, "popupButton", removable, OnPopup);
    Widget const many = AddList(form, "many", popup, cManyRows);
    Widget const few = AddList(form, "few", many, cFewRows);
    Widget const overridden = AddList(form, "overridden", few, cManyRows);
    Widget const none = AddList(form, "none", overridden, 0);
    AddTexts(form, none);
    return overridden;
}

} // namespace

int main(int argc, char** argv) {
    std::vector<std::string> const words(argv + std::min(argc, 2), argv + argc);
    auto const wanted = [&](char const* word) {
        return std::find(words.begin(), words.end(), word) != words.end();
    };
    if (wanted("international")) XtSetLanguageProc(nullptr, nullptr, nullptr);
    XtToolkitInitialize();
    XtAppContext const context = XtCreateApplicationContext();
    Display* const display =
        XtOpenDisplay(context, nullptr, nullptr, "XSampleWindow", nullptr, 0, &argc, argv);
    if (!display || argc < 2) return 1;
    if (wanted("international")) {
        XrmDatabase resources = XtDatabase(display);
        XrmPutStringResource(&resources, "*international", "true");
    }
    Widget const shell = XtVaAppCreateShell(nullptr, nullptr, applicationShellWidgetClass, display, XtNtitle,
                                            argv[1], nullptr);
    XtActionsRec actions[] = {{const_cast<String>("Close"), OnClose}};
    XtAppAddActions(context, actions, 1);
    Widget const overridden = AddWidgets(shell);
    AddPopup(shell);
    XtRealizeWidget(shell);
    OverrideBar(overridden);
    XtOverrideTranslations(shell, XtParseTranslationTable("<Message>WM_PROTOCOLS: Close()\n"));
    Atom protocol = XInternAtom(display, "WM_DELETE_WINDOW", False);
    if (!wanted("no-close-box")) XSetWMProtocols(display, XtWindow(shell), &protocol, 1);
    XtAppMainLoop(context);
}
