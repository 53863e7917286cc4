#pragma once

#include <chrono>
#include <functional>
#include <map>
#include <optional>
#include <string>
#include <sys/types.h>
#include <vector>

// How long a test waits for something that must happen. Far more than it takes, for slow and busy machines.
inline constexpr std::chrono::seconds cPatience{30};

// Polls until `condition` holds; false when it still does not after `patience`.
bool WaitFor(std::function<bool()> const& condition, std::chrono::milliseconds patience = cPatience);

// For the process of a program that is about to start: permissions count for the program even if it is the
// superuser's.
void ObeyPermissions();

// One run of the real program as its client meets it: a pipe on its standard input, one on its standard
// output. A program that is still running at the end of the test is killed.
class ClientSession {
public:
    struct Options {
        // Value of DISPLAY; unset when empty.
        std::string display;
        // Further variables of the program's environment.
        std::map<std::string, std::string> environment;
        // The program starts with SIGPIPE ignored, as its parent may have arranged.
        bool ignoreSigpipe = false;
        // The program's memory lies at the same addresses in every run, where the machine allows it, so that
        // a user at the screen can ask its widgets for values.
        bool fixedAddresses = false;
        // What the program's process does before it becomes the program, such as to limit itself.
        std::function<void()> prepare;
    };

    ClientSession();
    explicit ClientSession(Options const& options);
    ClientSession(ClientSession const&) = delete;
    ClientSession& operator=(ClientSession const&) = delete;
    ~ClientSession();

    pid_t ProcessID() const { return m_process; }

    // A frame around `document`.
    static std::string Frame(std::string const& document);
    // Both tell whether the program took all bytes.
    bool SendDocument(std::string const& document) { return SendBytes(Frame(document)); }
    bool SendBytes(std::string const& bytes);

    // The next frame's text; nothing when the program closes its end or no frame comes in time.
    std::optional<std::string> ReadDocument(std::chrono::milliseconds patience = cPatience);
    // The next `size` bytes, or fewer at the end.
    std::string ReadBytes(std::size_t size, std::chrono::milliseconds patience = cPatience);

    // The client closes its end of one pipe.
    void CloseToProgram();
    void CloseFromProgram();

    bool IsRunning();
    // How many descriptors the program has open.
    std::size_t CountDescriptors() const;
    // The status as waitpid tells it; nothing when the program does not end in time.
    std::optional<int> WaitForEnd(std::chrono::milliseconds patience = cPatience);
    // The exit status; nothing when the program does not end in time or was ended by a signal.
    std::optional<int> WaitForExitStatus(std::chrono::milliseconds patience = cPatience);

private:
    pid_t m_process = -1;
    int m_toProgram = -1;
    int m_fromProgram = -1;
    std::optional<int> m_status;
};
