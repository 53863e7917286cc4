#pragma once

#include <string>
#include <sys/types.h>

// A window manager of the test's own on a private display, ended with the object: it puts frames with a title
// and a close box around windows. It has taken over the display when the constructor returns. Throws
// std::runtime_error, with a sentence that helps, when it does not.
class WindowManager {
public:
    explicit WindowManager(std::string const& display);
    WindowManager(WindowManager const&) = delete;
    WindowManager& operator=(WindowManager const&) = delete;
    ~WindowManager();

private:
    void End();

    pid_t m_process = -1;
    // A home directory without anybody's settings.
    std::string m_home;
};
