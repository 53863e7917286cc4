// How a question travels: this side takes the ownership of a selection and sends the shell a message that
// names it. The program asks for the selection's value as an "EditresCommand" and gets the request. When it
// has the answer, it takes the ownership over, which this side sees as the loss of it, and then asks in its
// turn for the value as an "EditresClientVal".
//
// The selection bears the number of this side's window, so that several askers on one display do not meet.

#include "tools/screen-user/EditresClient.h"

#include "tools/screen-user/UserError.h"

#include <algorithm>

namespace ScreenUser::Editres {

namespace {

constexpr std::uint32_t cProtocolVersion = 5;

constexpr std::string_view cMessage = "Editres";
constexpr std::string_view cCommandTarget = "EditresCommand";
constexpr std::string_view cAnswerTarget = "EditresClientVal";
constexpr std::string_view cValueType = "EditresProtocol";
// The property in which an answer arrives.
constexpr std::string_view cAnswerProperty = "SCREEN_USER_ANSWER";

template <class Event>
Event const& As(xcb_generic_event_t const& event) {
    return reinterpret_cast<Event const&>(event);
}

unsigned TypeOf(xcb_generic_event_t const& event) {
    constexpr unsigned cSentByAnotherClient = 0x80;
    return event.response_type & ~cSentByAnotherClient;
}

// The part of the tree from the widget with that window down, with its parents counted anew: a program gives
// all its widgets from the topmost shell on, also when a window popped up by it is asked.
WidgetTree SubtreeAt(WidgetTree const& tree, WindowID window) {
    WidgetTree subtree;
    std::vector<std::optional<std::size_t>> places(tree.size());
    for (std::size_t index = 0; index < tree.size(); ++index) {
        std::optional<std::size_t> const parent = tree[index].parent;
        bool const below = parent && places[*parent];
        if (!below && tree[index].window != window) continue;
        places[index] = subtree.size();
        subtree.push_back(tree[index]);
        subtree.back().parent = below ? places[*parent] : std::nullopt;
    }
    return subtree;
}

} // namespace

xcb_atom_t Client::Selection() {
    return m_connection.Atom("ScreenUser" + std::to_string(m_connection.OwnWindow()));
}

WidgetTree Client::Tree(WindowID shell, Deadline deadline) {
    std::string const answer = Ask(shell, MakeTreeRequest(++m_serial), deadline);
    WidgetTree tree = SubtreeAt(ReadTree(answer), shell);
    for (Widget& widget : tree) widget.shell = shell;
    return tree;
}

std::vector<ResourceName> Client::Resources(WindowID shell, Identity const& widget, Deadline deadline) {
    return ReadResources(Ask(shell, MakeResourcesRequest(++m_serial, widget), deadline));
}

std::optional<std::string> Client::Value(WindowID shell, Identity const& widget, std::string_view resource,
                                         Deadline deadline) {
    return ReadValue(Ask(shell, MakeValueRequest(++m_serial, widget, resource), deadline));
}

std::string Client::Ask(WindowID shell, std::string const& request, Deadline deadline) {
    m_connection.DropEvents();
    xcb_atom_t const selection = Selection();
    xcb_set_selection_owner(m_connection.Get(), m_connection.OwnWindow(), selection, XCB_CURRENT_TIME);
    m_connection.SendMessage(shell, m_connection.Atom(cMessage),
                             {XCB_CURRENT_TIME, selection, m_serial, cProtocolVersion});
    while (auto const event = m_connection.WaitForEvent(deadline)) {
        switch (TypeOf(*event)) {
        case XCB_SELECTION_REQUEST:
            HandRequestOver(As<xcb_selection_request_event_t>(*event), request);
            break;
        case XCB_SELECTION_CLEAR:
            xcb_convert_selection(m_connection.Get(), m_connection.OwnWindow(), selection,
                                  m_connection.Atom(cAnswerTarget), m_connection.Atom(cAnswerProperty),
                                  XCB_CURRENT_TIME);
            break;
        case XCB_SELECTION_NOTIFY:
            if (auto const answer = TakeAnswer(As<xcb_selection_notify_event_t>(*event))) return *answer;
            break;
        default: break;
        }
    }
    throw UserError(
        "The program does not answer about its widgets: it hangs, is busy, or is none with Athena widgets.");
}

void Client::HandRequestOver(xcb_selection_request_event_t const& asker, std::string const& request) {
    xcb_selection_notify_event_t notice{};
    notice.response_type = XCB_SELECTION_NOTIFY;
    notice.time = asker.time;
    notice.requestor = asker.requestor;
    notice.selection = asker.selection;
    notice.target = asker.target;
    if (asker.target == m_connection.Atom(cCommandTarget)) {
        notice.property = asker.property;
        xcb_change_property(m_connection.Get(), XCB_PROP_MODE_REPLACE, asker.requestor, asker.property,
                            m_connection.Atom(cValueType), 8, static_cast<std::uint32_t>(request.size()),
                            request.data());
    }
    // The library reads 32 bytes; the structure has fewer.
    char bytes[32] = {};
    static_assert(sizeof(notice) <= sizeof(bytes));
    std::copy_n(reinterpret_cast<char const*>(&notice), sizeof(notice), bytes);
    xcb_send_event(m_connection.Get(), 0, asker.requestor, XCB_EVENT_MASK_NO_EVENT, bytes);
}

std::optional<std::string> Client::TakeAnswer(xcb_selection_notify_event_t const& notice) {
    if (notice.target != m_connection.Atom(cAnswerTarget)) return std::nullopt;
    if (notice.property == XCB_ATOM_NONE)
        throw UserError("The program has taken its answer about its widgets back.");
    auto const value = m_connection.Property(m_connection.OwnWindow(), notice.property);
    xcb_delete_property(m_connection.Get(), m_connection.OwnWindow(), notice.property);
    // The toolkit over there ties this side's window to the shell until it hears of that, and breaks down
    // when the shell goes before.
    m_connection.Sync();
    if (!value) return std::nullopt;
    if (value->type != m_connection.Atom(cValueType))
        throw UserError("The program's answer about its widgets is too long to be read.");
    auto const content = OpenAnswer(value->bytes, m_serial);
    if (!content) return std::nullopt;
    return std::string(*content);
}

} // namespace ScreenUser::Editres
