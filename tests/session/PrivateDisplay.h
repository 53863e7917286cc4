#pragma once

#include <string>
#include <sys/types.h>
#include <vector>

// A virtual X server of the test's own, ended with the object. Throws std::runtime_error, with a sentence
// that helps, when it cannot be started.
class PrivateDisplay {
public:
    struct Options {
        // Width, height and depth of its one screen.
        std::string screen = "1024x768x24";
        // Further arguments of the server, such as {"-fp", "built-ins"}.
        std::vector<std::string> arguments;
    };

    PrivateDisplay() : PrivateDisplay(Options()) {}
    explicit PrivateDisplay(Options const& options);
    PrivateDisplay(PrivateDisplay const&) = delete;
    PrivateDisplay& operator=(PrivateDisplay const&) = delete;
    ~PrivateDisplay();

    // For the environment variable DISPLAY, such as ":3".
    std::string const& Name() const { return m_name; }
    // The server dies at once, without a goodbye to its clients.
    void Kill();

private:
    pid_t m_server = -1;
    std::string m_name;
};
