#pragma once

#include "tools/screen-user/Connection.h"

#include <mutex>
#include <thread>
#include <vector>

// A window manager of the test's own, within the test's process, that knows no states of windows: it shows
// and places windows as their programs ask for it, and does nothing about their messages to it but keep them.
// It makes no names known to the display.
class PlainWindowManager {
public:
    // A message of a program to the window manager.
    struct Request {
        ScreenUser::WindowID window;
        // What X calls its atoms; 0 stands for none.
        std::uint32_t type;
        unsigned format;
        std::vector<std::uint32_t> values;
        // The window had been shown before.
        bool isOfShownWindow;

        friend bool operator==(Request const&, Request const&) = default;
    };

    // Throws std::runtime_error when another window manager has the display.
    explicit PlainWindowManager(std::string const& display);
    PlainWindowManager(PlainWindowManager const&) = delete;
    PlainWindowManager& operator=(PlainWindowManager const&) = delete;

    // Those since the last call, in their order.
    std::vector<Request> TakeRequests();

private:
    void Serve(std::stop_token const& stop);
    void Handle(xcb_generic_event_t const& event);
    void Show(ScreenUser::WindowID window);
    void Place(xcb_configure_request_event_t const& wish);
    void Keep(xcb_client_message_event_t const& message);

    ScreenUser::Connection m_connection;
    // Of the serving thread.
    std::vector<ScreenUser::WindowID> m_shown;
    std::mutex m_lock;
    // Guarded by m_lock.
    std::vector<Request> m_requests;
    std::jthread m_thread;
};
