#pragma once

#include "tools/screen-user/UserError.h"
#include "tools/screen-user/Widget.h"

#include <chrono>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace ScreenUser {

class Connection;
class ListRows;

// A number of a key's symbol, as X11/keysymdef.h has them: 0x20 to 0x7e are those of ASCII.
using KeySymbol = std::uint32_t;
inline constexpr KeySymbol cReturnKey = 0xff0d;
inline constexpr KeySymbol cTabKey = 0xff09;
inline constexpr KeySymbol cEscapeKey = 0xff1b;

// A user at the screen: sees the windows of other programs, asks them for their widgets (by the Editres
// protocol, which every program on the Athena widgets answers), and moves, clicks and types with the
// display's own pointer and keyboard (by the XTEST extension). A connection of its own to the display and no
// process-wide state, so there may be several in one process.
//
// A user waits: whatever is not there yet gets `patience` to appear. All functions throw UserError, with a
// sentence, when it does not, and when the display goes away.
class User {
public:
    // `display` such as ":3"; the environment's DISPLAY if empty.
    explicit User(std::string const& display = "",
                  std::chrono::milliseconds patience = std::chrono::seconds(30));
    User(User&&) noexcept;
    User& operator=(User&&) noexcept;
    ~User();

    // The shell with this title, once it is on the screen; inside a window manager's frame or not. With
    // several, one of them. Titles are compared in UTF-8.
    WindowID WaitForWindow(std::string_view title);
    // The same without waiting; null when there is none.
    std::optional<WindowID> FindWindow(std::string_view title);
    // All windows with this title that are on the screen.
    std::vector<WindowID> FindWindows(std::string_view title);
    // Waits until no window of this title is on the screen.
    void WaitUntilGone(std::string_view title);
    // The title of a window; empty when it has none.
    std::string Title(WindowID window);

    // The widgets of a shell, as they are just now. Waits for the program to answer.
    WidgetTree Widgets(WindowID shell);
    // The widget at a path (see FindByPath) or of a class, the `index`th of several counted from 0. Waits
    // until there is one.
    Widget Find(WindowID shell, std::string_view path);
    Widget FindClass(WindowID shell, std::string_view className, std::size_t index = 0);
    // The same widget as it is now. Throws when the program has destroyed it.
    Widget Again(Widget const& widget);

    // Whether the functions below can ask about this widget; they throw RefusedError where it is not so. The
    // toolkit's numbers for widgets are the lower 32 bits of their addresses, and a program knows only those
    // again whose highest bit is 0 and whose upper halves are that of its shell: by chance every second
    // program, always one without address randomization, and never one with the address sanitizer.
    bool TellsValues(Widget const& widget);
    // A resource as a text: "Take Action" for a "label", "true" for "sensitive", "500" for a "width". The
    // `string` of a text pane is asked of its child "textSource". A text comes in the program's own encoding.
    // Null when the widget has no such resource, holds a null text in it, or when its type is one that a
    // program cannot write as a text, such as a callback.
    std::optional<std::string> Value(Widget const& widget, std::string_view resource);
    // Every resource of the widget, those that its parent asks of it included.
    std::vector<ResourceName> Resources(Widget const& widget);
    // Whether the widget and all widgets around it can be used.
    bool IsSensitive(Widget const& widget);
    // The part of a widget's window that is in sight, within all windows around it; other programs' windows
    // over it do not count. Empty when it is not mapped or scrolled away.
    Area VisibleArea(Widget const& widget);
    // Any window's place, and whether it is on the screen; null when there is no such window.
    std::optional<Area> AreaOf(WindowID window);
    bool IsViewable(WindowID window);
    // The windows directly in a window, from bottom to top. The scroll bar of a text pane is found so, since
    // it is no child of the pane as the widgets count.
    std::vector<WindowID> WindowsIn(WindowID window);

    // Moves the pointer to the middle of the widget's visible part, or to a point counted from its upper left
    // corner, and clicks. Waits until the widget is in sight; throws when the point is not, or when another
    // window lies over it.
    void Click(Widget const& widget, unsigned button = 1);
    void Click(Widget const& widget, Point inside, unsigned button = 1);
    // Clicks the row `row`, counted from 0, of a list widget of one column. A row that is scrolled away is
    // first brought into sight by the scroll bar of the viewport around the list, as ScrollToRow does alone.
    // The list has to have the font of the window's labels and buttons. A row that the list does not have is
    // refused; where values are not told, a click below the last row of a list with room to spare may go
    // unnoticed.
    void ClickRow(Widget const& list, std::size_t row);
    void ScrollToRow(Widget const& list, std::size_t row);
    // How many rows the list has, as far as values are told. A list that was given no texts has one, which
    // shows the list's own name.
    std::size_t RowsOf(Widget const& list);

    // Brings a window in front of the others, as far as a window manager lets it, and waits until the middle
    // of it is in sight.
    void Raise(WindowID window);

    // All points below are of the screen.
    void MoveTo(Point point);
    void ClickAt(Point point, unsigned button = 1);
    // Presses the button at one point, moves to the other in small steps, and releases it there.
    void Drag(Point from, Point to, unsigned button = 1);
    // Presses and releases a key, with the shift key if the symbol needs it.
    void Press(KeySymbol key);
    // Types ASCII characters, key by key.
    void Type(std::string_view text);

    // Asks the window with this title to close, as the close box of a window manager does. Throws when the
    // window does not take part in that protocol.
    void CloseWindow(std::string_view title);

    // The name of the display, for other programs' DISPLAY.
    std::string const& DisplayName() const { return m_displayName; }

private:
    Widget ScrollBarFor(Widget const& list);
    void DragThumb(Widget const& bar, ListRows const& rows, std::size_t row);
    Area WaitUntilInSight(Widget const& widget);
    void ClickInside(Widget const& widget, Point point, unsigned button);
    std::chrono::steady_clock::time_point PatienceEnd() const;

    std::string m_displayName;
    std::chrono::milliseconds m_patience;
    std::unique_ptr<Connection> m_connection;
};

} // namespace ScreenUser
