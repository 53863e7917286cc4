#include "tests/session/WindowManager.h"

#include "tests/support/WaitUntil.h"
#include "tools/screen-user/Connection.h"

#include <csignal>
#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <filesystem>
#include <stdexcept>
#include <sys/wait.h>
#include <unistd.h>

namespace {

constexpr char const* cProgram = "openbox";

std::string MakeHome() {
    std::string folder = (std::filesystem::temp_directory_path() / "window-manager-XXXXXX").string();
    if (!mkdtemp(folder.data()))
        throw std::runtime_error("cannot make a folder for " + std::string(cProgram));
    return folder;
}

// The window by which a window manager says that it is there names itself by the same property.
bool HasTakenOver(ScreenUser::Connection& connection) {
    xcb_atom_t const property = connection.Atom("_NET_SUPPORTING_WM_CHECK");
    auto const onRoot = connection.Property(connection.Root(), property);
    if (!onRoot || onRoot->bytes.size() != sizeof(xcb_window_t)) return false;
    xcb_window_t window = XCB_WINDOW_NONE;
    std::memcpy(&window, onRoot->bytes.data(), sizeof(window));
    auto const onWindow = connection.Property(window, property);
    return onWindow && onWindow->bytes == onRoot->bytes;
}

// Whether it takes a window of ours into its care. While it starts, it misses those that are mapped then.
bool CaresForANewWindow(ScreenUser::Connection& connection) {
    xcb_window_t const window = xcb_generate_id(connection.Get());
    xcb_create_window(connection.Get(), XCB_COPY_FROM_PARENT, window, connection.Root(), 0, 0, 10, 10, 0,
                      XCB_WINDOW_CLASS_INPUT_OUTPUT, XCB_COPY_FROM_PARENT, 0, nullptr);
    xcb_map_window(connection.Get(), window);
    connection.Sync();
    bool const cares =
        WaitUntil([&] { return connection.Property(window, connection.Atom("WM_STATE")).has_value(); },
                  std::chrono::milliseconds(200));
    xcb_destroy_window(connection.Get(), window);
    connection.Sync();
    return cares;
}

} // namespace

WindowManager::WindowManager(std::string const& display) : m_home(MakeHome()) {
    std::string const config = m_home + "/config";
    m_process = fork();
    if (m_process == 0) {
        int const nowhere = open("/dev/null", O_RDWR);
        dup2(nowhere, STDOUT_FILENO);
        dup2(nowhere, STDERR_FILENO);
        setenv("DISPLAY", display.c_str(), 1);
        setenv("HOME", m_home.c_str(), 1);
        setenv("XDG_CONFIG_HOME", config.c_str(), 1);
        setenv("XDG_CACHE_HOME", m_home.c_str(), 1);
        execlp(cProgram, cProgram, "--sm-disable", static_cast<char*>(nullptr));
        _exit(127);
    }
    ScreenUser::Connection connection(display);
    if (WaitUntil([&] { return HasTakenOver(connection) && CaresForANewWindow(connection); })) return;
    End();
    throw std::runtime_error(std::string(cProgram) + " did not take over the display; is it installed?");
}

WindowManager::~WindowManager() {
    End();
}

void WindowManager::End() {
    if (m_process > 0) {
        // It loses a request to end that comes before its main loop runs.
        kill(m_process, SIGKILL);
        waitpid(m_process, nullptr, 0);
    }
    m_process = -1;
    std::error_code ignored;
    std::filesystem::remove_all(m_home, ignored);
}
