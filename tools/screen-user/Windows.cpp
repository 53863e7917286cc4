#include "tools/screen-user/Windows.h"

#include <algorithm>
#include <cstring>

namespace ScreenUser {

namespace {

// A window manager puts at most this many windows around one of a program.
constexpr int cDeepestFrame = 3;

std::string FromLatin1(std::string_view text) {
    std::string utf8;
    for (char const character : text) {
        auto const code = static_cast<unsigned char>(character);
        if (code < 0x80) {
            utf8 += character;
        } else {
            utf8 += static_cast<char>(0xc0 | code >> 6);
            utf8 += static_cast<char>(0x80 | (code & 0x3f));
        }
    }
    return utf8;
}

std::optional<WindowID> ParentOf(Connection& connection, WindowID window) {
    auto const reply = connection.Checked(
        xcb_query_tree_reply(connection.Get(), xcb_query_tree(connection.Get(), window), nullptr));
    if (!reply) return std::nullopt;
    return reply->parent;
}

// A window manager marks the windows that it cares for by this property.
bool IsManaged(Connection& connection, WindowID window) {
    return connection.Property(window, connection.Atom("WM_STATE")).has_value();
}

// The program's window in a frame; `top` itself when there is no frame.
WindowID WindowInFrame(Connection& connection, WindowID top) {
    std::vector<WindowID> level{top};
    for (int depth = 0; depth <= cDeepestFrame; ++depth) {
        std::vector<WindowID> next;
        for (WindowID const window : level) {
            if (IsManaged(connection, window)) return window;
            std::vector<WindowID> const children = WindowsIn(connection, window);
            next.insert(next.end(), children.begin(), children.end());
        }
        level = std::move(next);
    }
    return top;
}

// The window directly in `parent` that is topmost at a point of the screen; cNoWindow when there is none.
WindowID ChildAt(Connection& connection, WindowID parent, Point point) {
    auto const reply = connection.Checked(xcb_translate_coordinates_reply(
        connection.Get(),
        xcb_translate_coordinates(connection.Get(), connection.Root(), parent,
                                  static_cast<std::int16_t>(point.x), static_cast<std::int16_t>(point.y)),
        nullptr));
    return reply ? reply->child : cNoWindow;
}

} // namespace

std::vector<WindowID> WindowsIn(Connection& connection, WindowID window) {
    auto const reply = connection.Checked(
        xcb_query_tree_reply(connection.Get(), xcb_query_tree(connection.Get(), window), nullptr));
    if (!reply) return {};
    xcb_window_t const* const children = xcb_query_tree_children(reply.get());
    return {children, children + xcb_query_tree_children_length(reply.get())};
}

std::string TitleOf(Connection& connection, WindowID window) {
    if (auto const title = connection.Property(window, connection.Atom("_NET_WM_NAME"))) return title->bytes;
    auto const title = connection.Property(window, XCB_ATOM_WM_NAME);
    if (!title) return "";
    return title->type == XCB_ATOM_STRING ? FromLatin1(title->bytes) : title->bytes;
}

std::vector<WindowID> ShownTopLevelWindows(Connection& connection) {
    std::vector<WindowID> windows;
    for (WindowID const top : WindowsIn(connection, connection.Root())) {
        if (VisibleAreaOf(connection, top).IsEmpty()) continue;
        WindowID const window = WindowInFrame(connection, top);
        if (IsViewable(connection, window)) windows.push_back(window);
    }
    return windows;
}

std::optional<Placement> PlacementOf(Connection& connection, WindowID window) {
    auto const geometryCookie = xcb_get_geometry(connection.Get(), window);
    auto const originCookie = xcb_translate_coordinates(connection.Get(), window, connection.Root(), 0, 0);
    auto const geometry =
        connection.Checked(xcb_get_geometry_reply(connection.Get(), geometryCookie, nullptr));
    auto const origin =
        connection.Checked(xcb_translate_coordinates_reply(connection.Get(), originCookie, nullptr));
    if (!geometry || !origin) return std::nullopt;
    return Placement{{origin->dst_x, origin->dst_y, geometry->width, geometry->height},
                     geometry->border_width};
}

bool IsViewable(Connection& connection, WindowID window) {
    auto const attributes = connection.Checked(xcb_get_window_attributes_reply(
        connection.Get(), xcb_get_window_attributes(connection.Get(), window), nullptr));
    return attributes && attributes->map_state == XCB_MAP_STATE_VIEWABLE;
}

Area VisibleAreaOf(Connection& connection, WindowID window) {
    if (!IsViewable(connection, window)) return {};
    auto const placement = PlacementOf(connection, window);
    if (!placement) return {};
    Area visible = placement->area;
    for (WindowID current = window; current != connection.Root();) {
        auto const parent = ParentOf(connection, current);
        if (!parent || *parent == cNoWindow) return {};
        auto const around = PlacementOf(connection, *parent);
        if (!around) return {};
        visible = visible.Intersection(around->area);
        current = *parent;
    }
    return visible;
}

bool IsOnTopAt(Connection& connection, WindowID window, Point point) {
    WindowID current = connection.Root();
    while (current != cNoWindow) {
        if (current == window) return true;
        current = ChildAt(connection, current, point);
    }
    return false;
}

void RaiseWindow(Connection& connection, WindowID window) {
    std::uint32_t const mode = XCB_STACK_MODE_ABOVE;
    xcb_configure_window(connection.Get(), window, XCB_CONFIG_WINDOW_STACK_MODE, &mode);
    connection.Sync();
}

bool AskToClose(Connection& connection, WindowID window) {
    xcb_atom_t const protocols = connection.Atom("WM_PROTOCOLS");
    xcb_atom_t const close = connection.Atom("WM_DELETE_WINDOW");
    auto const supported = connection.Property(window, protocols);
    if (!supported) return false;
    std::vector<xcb_atom_t> atoms(supported->bytes.size() / sizeof(xcb_atom_t));
    if (!atoms.empty()) std::memcpy(atoms.data(), supported->bytes.data(), atoms.size() * sizeof(xcb_atom_t));
    if (std::find(atoms.begin(), atoms.end(), close) == atoms.end()) return false;
    connection.SendMessage(window, protocols, {close, XCB_CURRENT_TIME, 0, 0, 0});
    connection.Sync();
    return true;
}

} // namespace ScreenUser
