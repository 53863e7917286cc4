#include "app/WidgetHelpers.h"

#include "format/MakeUString.h"
#include "format/UFormat.h"
#include "text/LocalText.h"

// First: the widgets' private headers need it.
#include <X11/IntrinsicP.h>
#include <X11/Shell.h>
#include <X11/StringDefs.h>
#include <X11/Xaw/List.h>
#include <X11/Xaw/Scrollbar.h>
#include <X11/Xaw/TextP.h>
#include <cwchar>

namespace {

constexpr char cScrollbarTranslations[] =
    "#override\n"
    "\t\t<Btn1Down>: StartScroll(Continuous) MoveThumb() NotifyThumb()\n"
    "\t\t<Btn3Down>: StartScroll(Continuous) MoveThumb() NotifyThumb()\n"
    "\t\t<Btn1Motion>: MoveThumb() NotifyThumb()\n"
    "\t\t<Btn3Motion>: MoveThumb() NotifyThumb()\n";
constexpr char cCloseTranslations[] = "<Message>WM_PROTOCOLS: SystemMenuClose()";

// Half of the room that is left, negative when there is none; the coordinates of X have 16 bits.
XtArgVal CenteredPosition(int screenSize, Dimension size) {
    return static_cast<Position>((screenSize - int{size}) / 2);
}

// The row that is selected; XAW_LIST_NONE when there is none.
int SelectedRow(Widget list) {
    XawListReturnStruct* const selection = XawListShowCurrent(list);
    if (!selection) return XAW_LIST_NONE;
    int const row = selection->list_index;
    XtFree(reinterpret_cast<char*>(selection));
    return row;
}

int CountRows(Widget list) {
    int rows = 0;
    XtVaGetValues(list, XtNnumberStrings, &rows, nullptr);
    return rows;
}

// Bytes of the character at the beginning of a text that is not empty. A byte that begins no character stands
// for itself, as a widget shows it.
std::size_t SizeOfCharacter(char const* begin, char const* end, std::mbstate_t& state) {
    std::size_t const available = static_cast<std::size_t>(end - begin);
    std::size_t const size = std::mbrlen(begin, available, &state);
    if (size != 0 && size <= available) return size;
    state = {};
    return 1;
}

} // namespace

void CenterDialogOnDisplay(Widget shell) {
    Dimension width = 0;
    Dimension height = 0;
    Boolean waits = True;
    XtVaGetValues(shell, XtNwidth, &width, XtNheight, &height, XtNwaitForWm, &waits, nullptr);
    Display* const connection = XtDisplay(shell);
    int const screen = DefaultScreen(connection);
    // The toolkit would search all events that wait for the answer to the move, and would wait for a window
    // manager that hangs.
    XtVaSetValues(shell, XtNwaitForWm, False, XtNx, CenteredPosition(DisplayWidth(connection, screen), width),
                  XtNy, CenteredPosition(DisplayHeight(connection, screen), height), nullptr);
    XtVaSetValues(shell, XtNwaitForWm, waits, nullptr);
}

void ScrollSelectedItemIntoView(Widget viewport, Widget list) {
    int const row = SelectedRow(list);
    int const rows = CountRows(list);
    if (row == XAW_LIST_NONE || rows <= 0) return;
    Widget const bar = XtNameToWidget(viewport, "vertical");
    if (!bar) return;
    float top = static_cast<float>(row) / static_cast<float>(rows);
    XtCallCallbacks(bar, XtNjumpProc, &top);
}

void OverrideScrollbarTranslations(Widget scrollbar) {
    // Parsed once: the toolkit keeps a parsed table for good.
    static XtTranslations const translations = XtParseTranslationTable(cScrollbarTranslations);
    if (scrollbar) XtOverrideTranslations(scrollbar, translations);
}

Widget TextScrollbar(Widget textPane) {
    if (!textPane || !XtIsSubclass(textPane, textWidgetClass)) return nullptr;
    return reinterpret_cast<TextRec*>(textPane)->text.vbar;
}

void ListenForClose(Widget shell) {
    static XtTranslations const translations = XtParseTranslationTable(cCloseTranslations);
    XtOverrideTranslations(shell, translations);
    Atom deleteWindow = XInternAtom(XtDisplay(shell), "WM_DELETE_WINDOW", False);
    XSetWMProtocols(XtDisplay(shell), XtWindow(shell), &deleteWindow, 1);
}

std::unique_ptr<std::string> ControlLiteral(char const* literal) {
    UStringRef<UTF8> const text = MakeUTF8Ref(literal);
    return ControlLiteral(MakeLocalString<UTF8>(MakeUString(UFormat(text, text)).Ref()));
}

std::unique_ptr<std::string> ControlLiteral(AutoNullTerminated<Local8Bit> text) {
    return std::make_unique<std::string>(text.begin(), text.end());
}

std::unique_ptr<std::string> FunkyControlLiteral(char const* literal) {
    return std::make_unique<std::string>(literal);
}

std::string CutForWidget(std::string text, std::size_t mostCharacters) {
    std::size_t size = 0;
    std::mbstate_t state{};
    for (std::size_t characters = 0; characters < mostCharacters && size < text.size(); ++characters) {
        std::size_t const next = size + SizeOfCharacter(text.data() + size, text.data() + text.size(), state);
        if (next > 2 * mostCharacters) break;
        size = next;
    }
    text.resize(size);
    return text;
}
