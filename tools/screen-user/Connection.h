#pragma once

#include "tools/screen-user/Widget.h"

#include <chrono>
#include <cstdlib>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <xcb/xcb.h>

namespace ScreenUser {

struct FreeMemory {
    void operator()(void* memory) const { std::free(memory); }
};
// What the library allocates and its caller frees: replies and events.
template <class T>
using Allocated = std::unique_ptr<T, FreeMemory>;

using Deadline = std::chrono::steady_clock::time_point;

// A connection to a display, with a window of its own that is never shown. Functions that wait for the
// display throw UserError when it goes away.
class Connection {
public:
    struct PropertyValue {
        xcb_atom_t type = XCB_ATOM_NONE;
        std::string bytes;
    };

    // The environment's DISPLAY if `display` is empty.
    explicit Connection(std::string const& display);
    Connection(Connection const&) = delete;
    Connection& operator=(Connection const&) = delete;
    ~Connection();

    xcb_connection_t* Get() const { return m_connection; }
    xcb_setup_t const* Setup() const { return xcb_get_setup(m_connection); }
    xcb_window_t Root() const { return m_root; }
    xcb_window_t OwnWindow() const { return m_window; }

    xcb_atom_t Atom(std::string_view name);
    // A property of format 8 whole, those of other formats by the bytes of their first 64 KiB. Null when the
    // window or the property is not there.
    std::optional<PropertyValue> Property(xcb_window_t window, xcb_atom_t name);
    // An answer of a *_reply function, or null for one that is an error, such as for a window that has gone.
    template <class Reply>
    Allocated<Reply> Checked(Reply* reply) const {
        if (!reply) RequireAlive();
        return Allocated<Reply>(reply);
    }

    // Returns when the display has carried out everything that was sent to it.
    void Sync();
    // The next event, or null at the deadline. Errors of requests without an answer are passed over.
    Allocated<xcb_generic_event_t> WaitForEvent(Deadline deadline);
    void DropEvents();
    // Sends a client message of five 32-bit values to the window itself.
    void SendMessage(xcb_window_t window, xcb_atom_t type, std::uint32_t const (&values)[5]);

private:
    void RequireAlive() const;

    xcb_connection_t* m_connection;
    xcb_window_t m_root = XCB_WINDOW_NONE;
    xcb_window_t m_window = XCB_WINDOW_NONE;
    std::map<std::string, xcb_atom_t, std::less<>> m_atoms;
};

} // namespace ScreenUser
