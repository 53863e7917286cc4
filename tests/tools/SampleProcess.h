#pragma once

#include <chrono>
#include <optional>
#include <string>
#include <sys/types.h>
#include <vector>

// A running sample window, killed with the object.
class SampleProcess {
public:
    // The arguments are the window's title and the words that the program knows. The program runs with the
    // addresses of its memory as they come by chance, or always the same ones where the machine allows it.
    SampleProcess(std::string const& display, std::vector<std::string> const& arguments,
                  bool fixedAddresses = true);
    SampleProcess(SampleProcess const&) = delete;
    SampleProcess& operator=(SampleProcess const&) = delete;
    ~SampleProcess();

    pid_t ProcessID() const { return m_process; }
    // The next line that it prints; null when none comes in time or it has ended.
    std::optional<std::string> ReadLine(std::chrono::milliseconds patience = std::chrono::seconds(30));

private:
    pid_t m_process = -1;
    int m_output = -1;
};
