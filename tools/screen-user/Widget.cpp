#include "tools/screen-user/Widget.h"

#include "tools/screen-user/UserError.h"

#include <algorithm>
#include <iomanip>
#include <sstream>

namespace ScreenUser {

namespace {

// The names of a path; the empty path has none.
std::vector<std::string_view> NamesOf(std::string_view path) {
    std::vector<std::string_view> names;
    if (path.empty()) return names;
    for (;;) {
        std::size_t const dot = path.find('.');
        names.push_back(path.substr(0, dot));
        if (dot == std::string_view::npos) return names;
        path.remove_prefix(dot + 1);
    }
}

// How many widgets lie between each widget and the shell.
std::vector<std::size_t> DepthsOf(WidgetTree const& tree) {
    std::vector<std::size_t> depths;
    for (Widget const& widget : tree) depths.push_back(widget.parent ? depths[*widget.parent] + 1 : 0);
    return depths;
}

} // namespace

bool Area::Contains(Point point) const {
    return point.x >= x && point.y >= y && point.x < x + width && point.y < y + height;
}

Area Area::Intersection(Area const& other) const {
    int const left = std::max(x, other.x);
    int const top = std::max(y, other.y);
    int const right = std::min(x + width, other.x + other.width);
    int const bottom = std::min(y + height, other.y + other.height);
    return {left, top, std::max(right - left, 0), std::max(bottom - top, 0)};
}

Widget const* FindByPath(WidgetTree const& tree, std::string_view path) {
    std::vector<std::string_view> const names = NamesOf(path);
    std::vector<std::size_t> const depths = DepthsOf(tree);
    // Whether the widget lies on the path, that is, all names down to it are the path's.
    std::vector<bool> onPath;
    for (std::size_t index = 0; index < tree.size(); ++index) {
        Widget const& widget = tree[index];
        std::size_t const depth = depths[index];
        onPath.push_back(depth == 0 || (depth <= names.size() && onPath[*widget.parent] &&
                                        names[depth - 1] == widget.name));
        if (onPath.back() && depth == names.size()) return &widget;
    }
    return nullptr;
}

std::vector<Widget> FindByClass(WidgetTree const& tree, std::string_view className) {
    std::vector<Widget> found;
    std::copy_if(tree.begin(), tree.end(), std::back_inserter(found),
                 [&](Widget const& widget) { return widget.className == className; });
    return found;
}

// Identities are no addresses: siblings may share one, but not a window.
Widget const& Current(WidgetTree const& tree, Widget const& widget) {
    auto const hasIdentity = [&](Widget const& other) { return other.identity == widget.identity; };
    auto current = std::find_if(tree.begin(), tree.end(), [&](Widget const& other) {
        return hasIdentity(other) && other.window == widget.window;
    });
    if (current == tree.end()) current = std::find_if(tree.begin(), tree.end(), hasIdentity);
    if (current == tree.end())
        throw UserError("The widget \"" + widget.name + "\" of class " + widget.className + " has gone.");
    return *current;
}

bool LiesIn(WidgetTree const& tree, Widget const& widget, Widget const& ancestor) {
    std::optional<std::size_t> index = Current(tree, widget).parent;
    while (index && &tree[*index] != &ancestor) index = tree[*index].parent;
    return index.has_value();
}

std::string PathOf(WidgetTree const& tree, std::size_t index) {
    std::vector<std::string_view> names;
    for (; tree[index].parent; index = *tree[index].parent) names.push_back(tree[index].name);
    std::string path;
    for (auto name = names.rbegin(); name != names.rend(); ++name) {
        if (name != names.rbegin()) path += '.';
        path += *name;
    }
    return path;
}

std::string Describe(WidgetTree const& tree) {
    std::ostringstream text;
    std::vector<std::size_t> const depths = DepthsOf(tree);
    for (std::size_t index = 0; index < tree.size(); ++index) {
        Widget const& widget = tree[index];
        text << std::string(2 * depths[index], ' ') << widget.className << " \"" << PathOf(tree, index)
             << '"';
        if (widget.window != cNoWindow)
            text << " 0x" << std::hex << widget.window << std::dec << ' ' << widget.area.width << 'x'
                 << widget.area.height << " at " << widget.area.x << ',' << widget.area.y
                 << (widget.mapped ? "" : " not mapped");
        text << '\n';
    }
    return text.str();
}

} // namespace ScreenUser
