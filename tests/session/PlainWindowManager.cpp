#include "tests/session/PlainWindowManager.h"

#include <algorithm>
#include <stdexcept>
#include <utility>

namespace {

constexpr std::chrono::milliseconds cLongestWait{20};

constexpr std::uint8_t cSentByAProgram = 0x80;

} // namespace

PlainWindowManager::PlainWindowManager(std::string const& display) : m_connection(display) {
    std::uint32_t const events = XCB_EVENT_MASK_SUBSTRUCTURE_REDIRECT | XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY;
    auto const cookie = xcb_change_window_attributes_checked(m_connection.Get(), m_connection.Root(),
                                                             XCB_CW_EVENT_MASK, &events);
    if (ScreenUser::Allocated<xcb_generic_error_t>{xcb_request_check(m_connection.Get(), cookie)})
        throw std::runtime_error("another window manager has the display");
    m_thread = std::jthread([this](std::stop_token const& stop) { Serve(stop); });
}

std::vector<PlainWindowManager::Request> PlainWindowManager::TakeRequests() {
    std::lock_guard const lock(m_lock);
    return std::exchange(m_requests, {});
}

void PlainWindowManager::Serve(std::stop_token const& stop) {
    while (!stop.stop_requested())
        if (auto const event = m_connection.WaitForEvent(std::chrono::steady_clock::now() + cLongestWait))
            Handle(*event);
}

// An event's structure is told by its type.
void PlainWindowManager::Handle(xcb_generic_event_t const& event) {
    switch (event.response_type & ~cSentByAProgram) {
    case XCB_MAP_REQUEST: Show(reinterpret_cast<xcb_map_request_event_t const&>(event).window); break;
    case XCB_CONFIGURE_REQUEST: Place(reinterpret_cast<xcb_configure_request_event_t const&>(event)); break;
    case XCB_CLIENT_MESSAGE: Keep(reinterpret_cast<xcb_client_message_event_t const&>(event)); break;
    default: break;
    }
}

void PlainWindowManager::Show(ScreenUser::WindowID window) {
    m_shown.push_back(window);
    xcb_map_window(m_connection.Get(), window);
    xcb_flush(m_connection.Get());
}

void PlainWindowManager::Place(xcb_configure_request_event_t const& wish) {
    std::pair<std::uint16_t, std::uint32_t> const wishes[] = {
        {XCB_CONFIG_WINDOW_X, static_cast<std::uint32_t>(wish.x)},
        {XCB_CONFIG_WINDOW_Y, static_cast<std::uint32_t>(wish.y)},
        {XCB_CONFIG_WINDOW_WIDTH, wish.width},
        {XCB_CONFIG_WINDOW_HEIGHT, wish.height},
        {XCB_CONFIG_WINDOW_STACK_MODE, wish.stack_mode},
    };
    std::uint16_t wanted = 0;
    std::vector<std::uint32_t> values;
    for (auto const& [bit, value] : wishes) {
        if ((wish.value_mask & bit) == 0) continue;
        wanted = static_cast<std::uint16_t>(wanted | bit);
        values.push_back(value);
    }
    xcb_configure_window(m_connection.Get(), wish.window, wanted, values.data());
    xcb_flush(m_connection.Get());
}

void PlainWindowManager::Keep(xcb_client_message_event_t const& message) {
    bool const isShown = std::find(m_shown.begin(), m_shown.end(), message.window) != m_shown.end();
    std::lock_guard const lock(m_lock);
    m_requests.push_back({message.window,
                          message.type,
                          message.format,
                          {std::begin(message.data.data32), std::end(message.data.data32)},
                          isShown});
}
