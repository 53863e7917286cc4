#include "tests/session/ClientSession.h"

#include <cerrno>
#include <csignal>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <filesystem>
#include <linux/capability.h>
#include <poll.h>
#include <stdexcept>
#include <sys/personality.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>
#include <utility>

namespace {

using Clock = std::chrono::steady_clock;

constexpr std::chrono::milliseconds cPollInterval{10};

struct Pipe {
    Pipe() {
        int ends[2];
        if (pipe2(ends, O_CLOEXEC) != 0) throw std::runtime_error("cannot make a pipe");
        read = ends[0];
        write = ends[1];
    }
    int read;
    int write;
};

std::vector<std::string> MakeEnvironment(ClientSession::Options const& options) {
    std::map<std::string, std::string> variables;
    for (char** entry = environ; *entry; ++entry) {
        std::string const text(*entry);
        std::size_t const equals = text.find('=');
        if (equals != std::string::npos) variables[text.substr(0, equals)] = text.substr(equals + 1);
    }
    variables.erase("DISPLAY");
    if (!options.display.empty()) variables["DISPLAY"] = options.display;
    for (auto const& [name, value] : options.environment) variables[name] = value;
    std::vector<std::string> environment;
    for (auto const& [name, value] : variables) environment.push_back(name + "=" + value);
    return environment;
}

int Remaining(Clock::time_point end) {
    auto const left = std::chrono::duration_cast<std::chrono::milliseconds>(end - Clock::now()).count();
    return left < 0 ? 0 : static_cast<int>(left);
}

} // namespace

bool WaitFor(std::function<bool()> const& condition, std::chrono::milliseconds patience) {
    auto const end = Clock::now() + patience;
    while (!condition()) {
        if (Clock::now() > end) return false;
        std::this_thread::sleep_for(cPollInterval);
    }
    return true;
}

void ObeyPermissions() {
    constexpr int cCapabilities[] = {CAP_DAC_OVERRIDE, CAP_DAC_READ_SEARCH};
    if (geteuid() != 0) return;
    for (int const capability : cCapabilities)
        if (prctl(PR_CAPBSET_DROP, capability, 0, 0, 0) != 0) _exit(1);
}

ClientSession::ClientSession() : ClientSession(Options()) {
}

ClientSession::ClientSession(Options const& options) {
    // A program that has gone must show as an error here, not end the test.
    std::signal(SIGPIPE, SIG_IGN);
    Pipe toProgram;
    Pipe fromProgram;
    std::vector<std::string> environment = MakeEnvironment(options);
    std::vector<char*> environmentPointers;
    for (std::string& variable : environment) environmentPointers.push_back(variable.data());
    environmentPointers.push_back(nullptr);
    std::string program = VRKCLIENTUI_EXECUTABLE;
    char* const arguments[] = {program.data(), nullptr};

    m_process = fork();
    if (m_process == 0) {
        if (options.fixedAddresses) personality(ADDR_NO_RANDOMIZE);
        std::signal(SIGPIPE, options.ignoreSigpipe ? SIG_IGN : SIG_DFL);
        dup2(toProgram.read, STDIN_FILENO);
        dup2(fromProgram.write, STDOUT_FILENO);
        if (options.prepare) options.prepare();
        execve(program.c_str(), arguments, environmentPointers.data());
        _exit(127);
    }
    close(toProgram.read);
    close(fromProgram.write);
    m_toProgram = toProgram.write;
    m_fromProgram = fromProgram.read;
    if (m_process < 0) throw std::runtime_error("cannot fork");
}

ClientSession::~ClientSession() {
    if (IsRunning()) {
        kill(m_process, SIGKILL);
        waitpid(m_process, nullptr, 0);
    }
    CloseToProgram();
    CloseFromProgram();
}

std::string ClientSession::Frame(std::string const& document) {
    auto const length = static_cast<std::uint32_t>(document.size());
    std::string frame(sizeof(length), '\0');
    std::memcpy(frame.data(), &length, sizeof(length));
    return frame + document;
}

bool ClientSession::SendBytes(std::string const& bytes) {
    std::size_t sent = 0;
    while (sent < bytes.size()) {
        ssize_t const count = write(m_toProgram, bytes.data() + sent, bytes.size() - sent);
        if (count < 0) return false;
        sent += static_cast<std::size_t>(count);
    }
    return true;
}

std::string ClientSession::ReadBytes(std::size_t size, std::chrono::milliseconds patience) {
    auto const end = Clock::now() + patience;
    std::string bytes;
    while (bytes.size() < size) {
        pollfd ready{m_fromProgram, POLLIN, 0};
        if (poll(&ready, 1, Remaining(end)) <= 0) break;
        std::string chunk(size - bytes.size(), '\0');
        ssize_t const count = read(m_fromProgram, chunk.data(), chunk.size());
        if (count <= 0) break;
        bytes.append(chunk, 0, static_cast<std::size_t>(count));
    }
    return bytes;
}

std::optional<std::string> ClientSession::ReadDocument(std::chrono::milliseconds patience) {
    std::uint32_t length = 0;
    std::string const header = ReadBytes(sizeof(length), patience);
    if (header.size() < sizeof(length)) return std::nullopt;
    std::memcpy(&length, header.data(), sizeof(length));
    std::string document = ReadBytes(length, patience);
    if (document.size() < length) return std::nullopt;
    return document;
}

void ClientSession::CloseToProgram() {
    if (m_toProgram >= 0) close(std::exchange(m_toProgram, -1));
}

void ClientSession::CloseFromProgram() {
    if (m_fromProgram >= 0) close(std::exchange(m_fromProgram, -1));
}

bool ClientSession::IsRunning() {
    if (m_status) return false;
    int status = 0;
    if (waitpid(m_process, &status, WNOHANG) != m_process) return true;
    m_status = status;
    return false;
}

std::size_t ClientSession::CountDescriptors() const {
    std::filesystem::directory_iterator const folder("/proc/" + std::to_string(m_process) + "/fd");
    return static_cast<std::size_t>(std::distance(begin(folder), end(folder)));
}

std::optional<int> ClientSession::WaitForEnd(std::chrono::milliseconds patience) {
    WaitFor([this] { return !IsRunning(); }, patience);
    return m_status;
}

std::optional<int> ClientSession::WaitForExitStatus(std::chrono::milliseconds patience) {
    std::optional<int> const status = WaitForEnd(patience);
    if (!status || !WIFEXITED(*status)) return std::nullopt;
    return WEXITSTATUS(*status);
}
