#pragma once

#include "tools/screen-user/Connection.h"
#include "tools/screen-user/EditresMessage.h"

namespace ScreenUser::Editres {

// Asks the program behind a shell's window for its widgets, one question at a time. The functions wait for
// the answer until the deadline, and throw UserError when it has not come then, when the program refuses and
// when the display goes away. A program that is busy answers late; one without Athena widgets never answers.
class Client {
public:
    explicit Client(Connection& connection) : m_connection(connection) {}

    // The widgets from `shell` down, without places.
    WidgetTree Tree(WindowID shell, Deadline deadline);
    std::vector<ResourceName> Resources(WindowID shell, Identity const& widget, Deadline deadline);
    // Only for resources that the widget has and that the program can write as a text: it warns about others.
    std::optional<std::string> Value(WindowID shell, Identity const& widget, std::string_view resource,
                                     Deadline deadline);

private:
    std::string Ask(WindowID shell, std::string const& request, Deadline deadline);
    void HandRequestOver(xcb_selection_request_event_t const& asker, std::string const& request);
    std::optional<std::string> TakeAnswer(xcb_selection_notify_event_t const& notice);
    xcb_atom_t Selection();

    Connection& m_connection;
    std::uint8_t m_serial = 0;
};

} // namespace ScreenUser::Editres
