#include "tests/session/PrivateDisplay.h"

#include <csignal>
#include <fcntl.h>
#include <stdexcept>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>
#include <utility>

PrivateDisplay::PrivateDisplay(Options const& options) {
    int ends[2];
    if (pipe(ends) != 0) throw std::runtime_error("cannot make a pipe");
    fcntl(ends[0], F_SETFD, FD_CLOEXEC);
    std::vector<std::string> command{"Xvfb",      "-displayfd", std::to_string(ends[1]),
                                     "-screen",   "0",          options.screen,
                                     "-nolisten", "tcp",        "-noreset"};
    command.insert(command.end(), options.arguments.begin(), options.arguments.end());
    std::vector<char*> arguments;
    for (std::string& argument : command) arguments.push_back(argument.data());
    arguments.push_back(nullptr);
    m_server = fork();
    if (m_server == 0) {
        // A test that is cut short leaves no server behind, which would keep its output open.
        prctl(PR_SET_PDEATHSIG, SIGKILL);
        int const nowhere = open("/dev/null", O_RDWR);
        dup2(nowhere, STDERR_FILENO);
        execvp("Xvfb", arguments.data());
        _exit(127);
    }
    close(ends[1]);
    // The server writes its number and a line feed when it is ready.
    char digit = 0;
    while (read(ends[0], &digit, 1) == 1 && digit != '\n') m_name += digit;
    close(ends[0]);
    if (m_name.empty()) {
        Kill();
        throw std::runtime_error("Xvfb did not start; is the package xvfb installed?");
    }
    m_name = ":" + m_name;
}

PrivateDisplay::~PrivateDisplay() {
    Kill();
}

void PrivateDisplay::Kill() {
    if (m_server <= 0) return;
    pid_t const server = std::exchange(m_server, -1);
    kill(server, SIGKILL);
    waitpid(server, nullptr, 0);
    // A killed server leaves its socket and its lock behind.
    std::string const number = m_name.substr(m_name.empty() ? 0 : 1);
    unlink(("/tmp/.X" + number + "-lock").c_str());
    unlink(("/tmp/.X11-unix/X" + number).c_str());
}
