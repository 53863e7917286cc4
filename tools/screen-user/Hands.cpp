// A window manager may hold the pointer for a moment after each press, to look at it before the program gets
// it. What the hands do meanwhile is kept back by the display and carried out later. So each movement is
// followed until the display tells of the pointer as it should be; then the programs have been told of it,
// too.

#include "tools/screen-user/Hands.h"

#include "tools/screen-user/UserError.h"
#include "tools/screen-user/Windows.h"

#include <algorithm>
#include <sstream>
#include <thread>
#include <xcb/xtest.h>

namespace ScreenUser {

namespace {

// How long another program may hold the pointer.
constexpr std::chrono::seconds cPatience{10};
constexpr std::chrono::milliseconds cPollInterval{2};

constexpr KeySymbol cShiftKey = 0xffe1;

struct Key {
    xcb_keycode_t code;
    bool shifted;
};

void Fake(Connection& connection, std::uint8_t type, unsigned detail, Point point = {}) {
    xcb_query_extension_reply_t const* const extension =
        xcb_get_extension_data(connection.Get(), &xcb_test_id);
    if (!extension || !extension->present)
        throw UserError("The display has no XTEST extension, so nobody can click or type on it from here.");
    xcb_test_fake_input(connection.Get(), type, static_cast<std::uint8_t>(detail), XCB_CURRENT_TIME,
                        connection.Root(), static_cast<std::int16_t>(point.x),
                        static_cast<std::int16_t>(point.y), 0);
    connection.Sync();
}

// Waits until the pointer is as it should be.
template <class Condition>
void FollowPointer(Connection& connection, Condition isThere) {
    Deadline const end = std::chrono::steady_clock::now() + cPatience;
    for (;;) {
        auto const pointer = connection.Checked(xcb_query_pointer_reply(
            connection.Get(), xcb_query_pointer(connection.Get(), connection.Root()), nullptr));
        if (pointer && isThere(*pointer)) return;
        if (std::chrono::steady_clock::now() > end)
            throw UserError("The pointer does not follow; another program holds it.");
        std::this_thread::sleep_for(cPollInterval);
    }
}

bool IsPressed(xcb_query_pointer_reply_t const& pointer, unsigned button) {
    return (pointer.mask & (XCB_BUTTON_MASK_1 << (button - 1))) != 0;
}

void RequireButton(unsigned button) {
    if (button < 1 || button > 5) throw UserError("A pointer has the buttons 1 to 5.");
}

std::optional<Key> FindKey(Connection& connection, KeySymbol symbol) {
    xcb_keycode_t const first = connection.Setup()->min_keycode;
    auto const count = static_cast<std::uint8_t>(connection.Setup()->max_keycode - first + 1);
    auto const mapping = connection.Checked(xcb_get_keyboard_mapping_reply(
        connection.Get(), xcb_get_keyboard_mapping(connection.Get(), first, count), nullptr));
    if (!mapping) return std::nullopt;
    xcb_keysym_t const* const symbols = xcb_get_keyboard_mapping_keysyms(mapping.get());
    unsigned const columns = mapping->keysyms_per_keycode;
    for (unsigned column = 0; column < std::min(columns, 2u); ++column)
        for (unsigned row = 0; row < count; ++row)
            if (symbols[row * columns + column] == symbol)
                return Key{static_cast<xcb_keycode_t>(first + row), column == 1};
    return std::nullopt;
}

Key RequireKey(Connection& connection, KeySymbol symbol) {
    if (auto const key = FindKey(connection, symbol)) return *key;
    std::ostringstream text;
    text << "No key of this keyboard bears the symbol 0x" << std::hex << symbol << '.';
    throw UserError(text.str());
}

} // namespace

void MovePointer(Connection& connection, Point point) {
    auto const screen = PlacementOf(connection, connection.Root());
    if (!screen || !screen->area.Contains(point))
        throw UserError("The point " + std::to_string(point.x) + "," + std::to_string(point.y) +
                        " is not on the screen.");
    Fake(connection, XCB_MOTION_NOTIFY, 0, point);
    FollowPointer(connection, [&](xcb_query_pointer_reply_t const& pointer) {
        return pointer.root_x == point.x && pointer.root_y == point.y;
    });
}

void PressButton(Connection& connection, unsigned button) {
    RequireButton(button);
    Fake(connection, XCB_BUTTON_PRESS, button);
    FollowPointer(connection, [&](auto const& pointer) { return IsPressed(pointer, button); });
}

void ReleaseButton(Connection& connection, unsigned button) {
    RequireButton(button);
    Fake(connection, XCB_BUTTON_RELEASE, button);
    FollowPointer(connection, [&](auto const& pointer) { return !IsPressed(pointer, button); });
}

void StrikeKey(Connection& connection, KeySymbol symbol) {
    Key const key = RequireKey(connection, symbol);
    std::optional<Key> shift;
    if (key.shifted) shift = RequireKey(connection, cShiftKey);
    if (shift) Fake(connection, XCB_KEY_PRESS, shift->code);
    Fake(connection, XCB_KEY_PRESS, key.code);
    Fake(connection, XCB_KEY_RELEASE, key.code);
    if (shift) Fake(connection, XCB_KEY_RELEASE, shift->code);
}

} // namespace ScreenUser
