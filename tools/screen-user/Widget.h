#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace ScreenUser {

// A window of the display, or cNoWindow.
using WindowID = std::uint32_t;
inline constexpr WindowID cNoWindow = 0;

// The program's own numbers for a widget and its ancestors, the shell first.
using Identity = std::vector<std::uint32_t>;

struct Point {
    int x = 0;
    int y = 0;
};

// A window's place on the screen, in pixels of the root window and without its border.
struct Area {
    int x = 0;
    int y = 0;
    int width = 0;
    int height = 0;

    bool IsEmpty() const { return width <= 0 || height <= 0; }
    bool Contains(Point point) const;
    Area Intersection(Area const& other) const;

    friend bool operator==(Area const&, Area const&) = default;
};

// One widget of a program as it was at the time of asking: the program goes on meanwhile, so ask again after
// everything that may have moved it.
struct Widget {
    std::string name; // empty for a widget without one
    std::string className;
    // The window that shows it; cNoWindow for an object without one and for a widget that is not realized.
    WindowID window = cNoWindow;
    // The shell's window, through which the program is asked.
    WindowID shell = cNoWindow;
    // Index of the parent in the tree; null for the shell.
    std::optional<std::size_t> parent;
    // What is below has meaning only with a window.
    Area area;
    int borderWidth = 0;
    // Shown as far as its window and all windows around it are mapped; it may still be scrolled out of sight.
    bool mapped = false;
    Identity identity;
};

// A shell and all that is below it; a parent stands before its children, siblings in order of creation.
using WidgetTree = std::vector<Widget>;

struct ResourceName {
    std::string name;
    std::string className;
    std::string type;
};

// The widget at the end of a path of names from the shell, which has no place in the path:
// "form.viewport.vertical", or "form.viewport." for a child without a name. The empty path is the shell, so a
// child of the shell itself has to have a name. Null when there is none; the first one when there are
// several.
Widget const* FindByPath(WidgetTree const& tree, std::string_view path);

// All widgets of a class such as "List", in the order of the tree.
std::vector<Widget> FindByClass(WidgetTree const& tree, std::string_view className);

// The same widget in a later tree. Throws UserError when it has gone.
Widget const& Current(WidgetTree const& tree, Widget const& widget);
// Whether the widget lies in another one of the tree, at whatever depth.
bool LiesIn(WidgetTree const& tree, Widget const& widget, Widget const& ancestor);

// The path of one widget of the tree, as FindByPath reads it.
std::string PathOf(WidgetTree const& tree, std::size_t index);

// The tree as a person reads it, one line a widget: path, class, window and place.
std::string Describe(WidgetTree const& tree);

} // namespace ScreenUser
