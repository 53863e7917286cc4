#pragma once

#include <X11/Intrinsic.h>
#include <array>
#include <initializer_list>
#include <string>

// What every dialog is made of. A dialog is a shell with a form in it, built in one go and destroyed when it
// is closed; it is never kept unmapped. Everything here belongs to the main thread.

// The one way of the program out of a dialog that cannot show its text: tells the client the dialog's name,
// then ends the process.
[[noreturn]] void EndForDialogFailure(char const* dialogName);

// Stands around building, refreshing and updating a dialog. A dialog that cannot show its texts ends the
// process: a user must not decide on what cannot be read.
template <class Body>
void InDialogHandler(char const* dialogName, Body const& body) {
    try {
        body();
    } catch (...) {
        EndForDialogFailure(dialogName);
    }
}

// A number as the `width` of a widget: what does not fit a window is cut to what does.
Dimension WidgetWidth(int width);
int WidthOf(Widget widget);
void SetWidth(Widget widget, int width);
int BorderWidthOf(Widget widget);

// Arguments for a widget. The texts are copied by the widgets, but for those of a list.
class WidgetArguments {
public:
    WidgetArguments& Number(String name, long value) { return Add(name, value); }
    WidgetArguments& Text(String name, std::string const& value);
    WidgetArguments& Under(Widget widget);
    // The process-wide flag `international`, which counts only when a widget is created.
    WidgetArguments& International();

    Widget Create(Widget parent, char const* name, WidgetClass kind);
    // Through XtAppCreateShell, without a name.
    Widget CreateShell();
    void ApplyTo(Widget widget);
    // Here the values are the addresses to fill.
    void ReadFrom(Widget widget);

private:
    WidgetArguments& Add(String name, XtArgVal value);

    std::array<Arg, 16> m_arguments;
    Cardinal m_count = 0;
};

// A top-level shell with that title, cut to what a label can show, not yet realized. The toolkit keeps it
// until XtDestroyWidget.
Widget CreateDialogShell(std::string const& title);
// Realizes the shell, which shows it.
void RealizeDialog(Widget shell);
// For a realized shell: into the middle of the screen, and wired to its close box. Connects the scroll bar of
// its pane, if it has one.
void PlaceDialog(Widget shell, Widget pane = nullptr);
// Both.
void ShowDialog(Widget shell, Widget pane = nullptr);

Widget CreateForm(Widget shell);
// What a label of one line can show of a text: its first line that has something in it, without the blanks in
// front.
std::string FirstLine(std::string const& text);
// A line of text at the left.
Widget CreateLine(Widget form, char const* name, std::string const& text, Widget above);
// A button; `callback` is called when it is pressed, with `data` as its client data.
Widget CreateButton(Widget form, char const* name, std::string const& label, Widget above,
                    XtCallbackProc callback, XtPointer data = nullptr);
// One that is not seen until its window is mapped.
Widget CreateUnmappedButton(Widget form, char const* name, std::string const& label, Widget above,
                            XtCallbackProc callback, XtPointer data);
// A pane of running text with a scroll bar, `width` wide; `above` may be null.
Widget CreateTextPane(Widget form, char const* name, int width, int height, Widget above,
                      std::string const& text = std::string());

// The pane of a small dialog, in pixels.
inline constexpr int cDialogPaneWidth = 500;
inline constexpr int cDialogPaneHeight = 100;

// A form attaches nothing to its own right edge: all distances count from the left.
void SetLeftEdge(Widget button, int distance);
// Places buttons in a row whose right edge is that far from the left edge of the form, the first one
// rightmost, six borders of `border` apart.
void PlaceInRow(std::initializer_list<Widget> buttons, int rightEdge, int border);
// The same, up to the right edge of `pane`.
void PlaceUnder(Widget pane, std::initializer_list<Widget> buttons);

// Give a shell, a label or button, and a text pane, another text. All but a pane's is cut to what a label can
// show.
void SetTitle(Widget shell, std::string const& title);
void SetLabel(Widget widget, std::string const& text);
void SetPaneText(Widget pane, std::string const& text);

// A text of a widget that changes while the dialog stands. It is handed over only when it differs from what
// the widget has.
class ShownText {
public:
    // `set` is SetLabel or SetPaneText.
    explicit ShownText(void (*set)(Widget widget, std::string const& text)) : m_set(set) {}

    // Tells of a new widget, which shows nothing yet.
    void Attach(Widget widget);
    void Show(std::string const& text);

private:
    void (*m_set)(Widget widget, std::string const& text);
    Widget m_widget = nullptr;
    bool m_known = false;
    std::string m_text;
};
