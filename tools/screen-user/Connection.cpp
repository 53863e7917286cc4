#include "tools/screen-user/Connection.h"

#include "tools/screen-user/UserError.h"

#include <algorithm>
#include <poll.h>

namespace ScreenUser {

namespace {

// A property is read in pieces of this many 32-bit units.
constexpr std::uint32_t cPropertyPiece = 16384;

xcb_screen_t const* ScreenOf(xcb_setup_t const* setup, int number) {
    xcb_screen_iterator_t screens = xcb_setup_roots_iterator(setup);
    for (; number > 0 && screens.rem > 1; --number) xcb_screen_next(&screens);
    return screens.data;
}

std::string DisplayText(std::string const& display) {
    if (!display.empty()) return "the display " + display;
    char const* const variable = std::getenv("DISPLAY");
    return variable && *variable ? "the display " + std::string(variable)
                                 : "a display: DISPLAY is not set and none was named";
}

} // namespace

Connection::Connection(std::string const& display) : m_connection(nullptr) {
    int screenNumber = 0;
    m_connection = xcb_connect(display.empty() ? nullptr : display.c_str(), &screenNumber);
    if (xcb_connection_has_error(m_connection)) {
        xcb_disconnect(m_connection);
        throw UserError("Cannot reach " + DisplayText(display) + ".");
    }
    m_root = ScreenOf(Setup(), screenNumber)->root;
    m_window = xcb_generate_id(m_connection);
    std::uint32_t const events = XCB_EVENT_MASK_PROPERTY_CHANGE;
    xcb_create_window(m_connection, XCB_COPY_FROM_PARENT, m_window, m_root, -1, -1, 1, 1, 0,
                      XCB_WINDOW_CLASS_INPUT_ONLY, XCB_COPY_FROM_PARENT, XCB_CW_EVENT_MASK, &events);
}

Connection::~Connection() {
    xcb_disconnect(m_connection);
}

void Connection::RequireAlive() const {
    if (xcb_connection_has_error(m_connection)) throw UserError("The display has gone away.");
}

xcb_atom_t Connection::Atom(std::string_view name) {
    if (auto const known = m_atoms.find(name); known != m_atoms.end()) return known->second;
    auto const reply = Checked(xcb_intern_atom_reply(
        m_connection, xcb_intern_atom(m_connection, 0, static_cast<std::uint16_t>(name.size()), name.data()),
        nullptr));
    xcb_atom_t const atom = reply ? reply->atom : xcb_atom_t{XCB_ATOM_NONE};
    m_atoms.emplace(name, atom);
    return atom;
}

std::optional<Connection::PropertyValue> Connection::Property(xcb_window_t window, xcb_atom_t name) {
    PropertyValue value;
    std::uint32_t offset = 0;
    for (;;) {
        auto const reply = Checked(
            xcb_get_property_reply(m_connection,
                                   xcb_get_property(m_connection, 0, window, name, XCB_GET_PROPERTY_TYPE_ANY,
                                                    offset, cPropertyPiece),
                                   nullptr));
        if (!reply || reply->type == XCB_ATOM_NONE) return std::nullopt;
        auto const size = static_cast<std::size_t>(xcb_get_property_value_length(reply.get()));
        value.type = reply->type;
        value.bytes.append(static_cast<char const*>(xcb_get_property_value(reply.get())), size);
        if (reply->bytes_after == 0 || reply->format != 8) return value;
        offset += cPropertyPiece;
    }
}

void Connection::Sync() {
    Checked(xcb_get_input_focus_reply(m_connection, xcb_get_input_focus(m_connection), nullptr));
}

Allocated<xcb_generic_event_t> Connection::WaitForEvent(Deadline deadline) {
    xcb_flush(m_connection);
    for (;;) {
        while (Allocated<xcb_generic_event_t> event{xcb_poll_for_event(m_connection)})
            if (event->response_type != 0) return event;
        RequireAlive();
        auto const left =
            std::chrono::ceil<std::chrono::milliseconds>(deadline - std::chrono::steady_clock::now());
        if (left.count() <= 0) return nullptr;
        pollfd ready{xcb_get_file_descriptor(m_connection), POLLIN, 0};
        poll(&ready, 1, static_cast<int>(std::min<std::int64_t>(left.count(), 60000)));
    }
}

void Connection::DropEvents() {
    while (Allocated<xcb_generic_event_t>(xcb_poll_for_event(m_connection))) {
    }
}

void Connection::SendMessage(xcb_window_t window, xcb_atom_t type, std::uint32_t const (&values)[5]) {
    xcb_client_message_event_t event{};
    event.response_type = XCB_CLIENT_MESSAGE;
    event.format = 32;
    event.window = window;
    event.type = type;
    std::copy(std::begin(values), std::end(values), event.data.data32);
    // Events travel as 32 bytes, which is what the structure has.
    xcb_send_event(m_connection, 0, window, XCB_EVENT_MASK_NO_EVENT, reinterpret_cast<char const*>(&event));
    xcb_flush(m_connection);
}

} // namespace ScreenUser
