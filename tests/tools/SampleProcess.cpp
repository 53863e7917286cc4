#include "tests/tools/SampleProcess.h"

#include <csignal>
#include <cstdlib>
#include <fcntl.h>
#include <poll.h>
#include <stdexcept>
#include <sys/personality.h>
#include <sys/wait.h>
#include <unistd.h>

SampleProcess::SampleProcess(std::string const& display, std::vector<std::string> const& arguments,
                             bool fixedAddresses) {
    int ends[2];
    if (pipe2(ends, O_CLOEXEC) != 0) throw std::runtime_error("cannot make a pipe");
    std::vector<std::string> command{SAMPLE_WINDOW};
    command.insert(command.end(), arguments.begin(), arguments.end());
    std::vector<char*> pointers;
    for (std::string& argument : command) pointers.push_back(argument.data());
    pointers.push_back(nullptr);
    m_process = fork();
    if (m_process == 0) {
        if (fixedAddresses) personality(ADDR_NO_RANDOMIZE);
        dup2(ends[1], STDOUT_FILENO);
        setenv("DISPLAY", display.c_str(), 1);
        setenv("LC_ALL", "C.UTF-8", 1);
        execv(pointers[0], pointers.data());
        _exit(127);
    }
    close(ends[1]);
    m_output = ends[0];
}

SampleProcess::~SampleProcess() {
    kill(m_process, SIGKILL);
    waitpid(m_process, nullptr, 0);
    close(m_output);
}

std::optional<std::string> SampleProcess::ReadLine(std::chrono::milliseconds patience) {
    auto const end = std::chrono::steady_clock::now() + patience;
    std::string line;
    for (;;) {
        auto const left =
            std::chrono::ceil<std::chrono::milliseconds>(end - std::chrono::steady_clock::now()).count();
        pollfd ready{m_output, POLLIN, 0};
        if (left <= 0 || poll(&ready, 1, static_cast<int>(left)) <= 0) return std::nullopt;
        char character = 0;
        if (read(m_output, &character, 1) != 1) return std::nullopt;
        if (character == '\n') return line;
        line += character;
    }
}
