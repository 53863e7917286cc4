#include "dialogs/DialogParts.h"

#include "app/ClientSender.h"
#include "app/ExitCleanup.h"
#include "app/ProcessState.h"
#include "app/ToolkitCall.h"
#include "app/WidgetHelpers.h"

#include <X11/Shell.h>
#include <X11/StringDefs.h>
#include <X11/Xaw/AsciiText.h>
#include <X11/Xaw/Command.h>
#include <X11/Xaw/Form.h>
#include <X11/Xaw/Label.h>
#include <X11/Xaw/MultiSrc.h>
#include <algorithm>
#include <cstdio>
#include <cwchar>

namespace {

// Up to four buttons stand in a row, which is what a widget may be wide.
constexpr std::size_t cMostCharactersOfButton = cMostCharactersOfWidget / 4;
// Windows are measured in 16 bits, positions in 15.
constexpr int cWidestWindow = 32767;
// A resource that only the toolkit's private headers name.
char cOpenInputMethod[] = "openIm";
// Spelled by every encoding and drawn by every font.
constexpr wchar_t cReplacementCharacter = L'?';

} // namespace

void EndForDialogFailure(char const* dialogName) {
    try {
        SendErrorToClient(
            ClientUIErrorMessage(ClientUIErrorMessage::TextNotConvertible, MakeUTF8Ref(dialogName)));
    } catch (...) {
        // Without memory for the word there is still the end.
    }
    ExitCleanup(0, "TranscodeError");
}

Dimension WidgetWidth(int width) {
    return static_cast<Dimension>(std::clamp(width, 1, cWidestWindow));
}

int WidthOf(Widget widget) {
    Dimension width = 0;
    WidgetArguments().Number(XtNwidth, reinterpret_cast<XtArgVal>(&width)).ReadFrom(widget);
    return width;
}

void SetWidth(Widget widget, int width) {
    WidgetArguments().Number(XtNwidth, WidgetWidth(width)).ApplyTo(widget);
}

int BorderWidthOf(Widget widget) {
    Dimension width = 0;
    WidgetArguments().Number(XtNborderWidth, reinterpret_cast<XtArgVal>(&width)).ReadFrom(widget);
    return width;
}

WidgetArguments& WidgetArguments::Add(String name, XtArgVal value) {
    m_arguments.at(m_count++) = Arg{name, value};
    return *this;
}

WidgetArguments& WidgetArguments::Text(String name, std::string const& value) {
    return Add(name, reinterpret_cast<XtArgVal>(value.c_str()));
}

WidgetArguments& WidgetArguments::Under(Widget widget) {
    return widget ? Add(XtNfromVert, reinterpret_cast<XtArgVal>(widget)) : *this;
}

WidgetArguments& WidgetArguments::International() {
    return Add(XtNinternational, international ? True : False);
}

Widget WidgetArguments::Create(Widget parent, char const* name, WidgetClass kind) {
    return XtCreateManagedWidget(name, kind, parent, m_arguments.data(), m_count);
}

Widget WidgetArguments::CreateShell() {
    return XtAppCreateShell(nullptr, nullptr, applicationShellWidgetClass, display, m_arguments.data(),
                            m_count);
}

void WidgetArguments::ApplyTo(Widget widget) {
    XtSetValues(widget, m_arguments.data(), m_count);
}

void WidgetArguments::ReadFrom(Widget widget) {
    XtGetValues(widget, m_arguments.data(), m_count);
}

Widget CreateDialogShell(std::string const& title) {
    // Nothing is typed into a dialog. Under a locale the toolkit would give each shell an input method of its
    // own, which costs more time and memory than all the rest of it.
    return WidgetArguments()
        .Text(XtNtitle, CutForWidget(title))
        .Number(cOpenInputMethod, False)
        .International()
        .CreateShell();
}

void RealizeDialog(Widget shell) {
    XtRealizeWidget(shell);
}

void PlaceDialog(Widget shell, Widget pane) {
    CenterDialogOnDisplay(shell);
    ListenForClose(shell);
    OverrideScrollbarTranslations(TextScrollbar(pane));
}

void ShowDialog(Widget shell, Widget pane) {
    RealizeDialog(shell);
    PlaceDialog(shell, pane);
}

Widget CreateForm(Widget shell) {
    return WidgetArguments().Create(shell, "form", formWidgetClass);
}

std::string FirstLine(std::string const& text) {
    std::size_t const begin = text.find_first_not_of(" \t\r\n");
    if (begin == std::string::npos) return std::string();
    return text.substr(begin, text.find_first_of("\r\n", begin) - begin);
}

Widget CreateLine(Widget form, char const* name, std::string const& text, Widget above) {
    return WidgetArguments()
        .Number(XtNborderWidth, 0)
        .Number(XtNjustify, XtJustifyLeft)
        .Text(XtNlabel, CutForWidget(text))
        .Under(above)
        .International()
        .Create(form, name, labelWidgetClass);
}

namespace {

Widget CreateButtonWith(WidgetArguments arguments, Widget form, char const* name, std::string const& label,
                        Widget above, XtCallbackProc callback, XtPointer data) {
    Widget const button = arguments.Text(XtNlabel, CutForWidget(label, cMostCharactersOfButton))
                              .Under(above)
                              .International()
                              .Create(form, name, commandWidgetClass);
    XtAddCallback(button, XtNcallback, callback, data);
    return button;
}

} // namespace

Widget CreateButton(Widget form, char const* name, std::string const& label, Widget above,
                    XtCallbackProc callback, XtPointer data) {
    return CreateButtonWith(WidgetArguments(), form, name, label, above, callback, data);
}

Widget CreateUnmappedButton(Widget form, char const* name, std::string const& label, Widget above,
                            XtCallbackProc callback, XtPointer data) {
    return CreateButtonWith(WidgetArguments().Number(XtNmappedWhenManaged, False), form, name, label, above,
                            callback, data);
}

namespace {

// What no text in the locale's encoding has shows as a question mark, byte by byte: one stray byte
// must not take the rest of the text from the user.
std::wstring WideText(std::string const& text) {
    std::wstring wide;
    wide.reserve(text.size());
    std::mbstate_t state{};
    char const* const end = text.data() + text.size();
    for (char const* next = text.data(); next != end;) {
        wchar_t character = 0;
        std::size_t const available = static_cast<std::size_t>(end - next);
        std::size_t const size = std::mbrtowc(&character, next, available, &state);
        bool const isCharacter = size != 0 && size <= available;
        wide.push_back(isCharacter ? character : cReplacementCharacter);
        next += isCharacter ? size : 1;
        if (!isCharacter) state = {};
    }
    return wide;
}

void ReplaceAll(Widget pane, std::wstring& text) {
    XawTextPosition const end = XawTextSourceScan(XawTextGetSource(pane), 0, XawstAll, XawsdRight, 1, True);
    XawTextBlock block{0, static_cast<int>(text.size()), reinterpret_cast<char*>(text.data()), XawFmtWide};
    XawTextReplace(pane, 0, end, &block);
}

// A pane finds each line by a walk over the pieces of its text, so that a long text must not lie in many. A
// change of the size makes the pieces anew, which loses memory for what is in them.
void SetPieceSizeOfEmpty(Widget pane, std::size_t characters) {
    WidgetArguments()
        .Number(XtNpieceSize, static_cast<long>(std::max<std::size_t>(characters + 1, BUFSIZ)))
        .ApplyTo(XawTextGetSource(pane));
}

void ReplacePaneText(Widget pane, std::wstring text) {
    std::wstring nothing;
    WidgetArguments().Number(XtNeditType, XawtextEdit).ApplyTo(pane);
    ReplaceAll(pane, nothing);
    SetPieceSizeOfEmpty(pane, text.size());
    ReplaceAll(pane, text);
    WidgetArguments().Number(XtNeditType, XawtextRead).ApplyTo(pane);
    XawTextSetInsertionPoint(pane, 0);
}

} // namespace

// An international pane converts what it is given as `string` and frees no part of the conversion; it takes a
// wide text as it stands.
void SetPaneText(Widget pane, std::string const& text) {
    if (international)
        ReplacePaneText(pane, WideText(text));
    else
        WidgetArguments().Text(XtNstring, text).ApplyTo(pane);
}

Widget CreateTextPane(Widget form, char const* name, int width, int height, Widget above,
                      std::string const& text) {
    Widget const pane = WidgetArguments()
                            .Number(XtNtype, XawAsciiString)
                            .Number(XtNwidth, WidgetWidth(width))
                            .Number(XtNheight, height)
                            .Number(XtNscrollVertical, XawtextScrollAlways)
                            .Number(XtNwrap, XawtextWrapWord)
                            .Number(XtNdisplayCaret, False)
                            .Under(above)
                            .International()
                            .Create(form, name, asciiTextWidgetClass);
    if (!text.empty()) SetPaneText(pane, text);
    return pane;
}

void SetLeftEdge(Widget button, int distance) {
    WidgetArguments().Number(XtNhorizDistance, distance).ApplyTo(button);
}

void PlaceInRow(std::initializer_list<Widget> buttons, int rightEdge, int border) {
    for (Widget const button : buttons) {
        rightEdge -= WidthOf(button);
        SetLeftEdge(button, rightEdge);
        rightEdge -= 6 * border;
    }
}

void PlaceUnder(Widget pane, std::initializer_list<Widget> buttons) {
    int const border = BorderWidthOf(pane);
    PlaceInRow(buttons, WidthOf(pane) + border, border);
}

void SetTitle(Widget shell, std::string const& title) {
    WidgetArguments().Text(XtNtitle, CutForWidget(title)).ApplyTo(shell);
}

void SetLabel(Widget widget, std::string const& text) {
    WidgetArguments().Text(XtNlabel, CutForWidget(text)).ApplyTo(widget);
}

void ShownText::Attach(Widget widget) {
    m_widget = widget;
    m_known = false;
}

void ShownText::Show(std::string const& text) {
    if (m_known && text == m_text) return;
    m_set(m_widget, text);
    m_text = text;
    m_known = true;
}
