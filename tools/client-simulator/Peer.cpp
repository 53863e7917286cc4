#include "tools/client-simulator/Peer.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <csignal>
#include <cstdint>
#include <cstring>
#include <fcntl.h>
#include <map>
#include <poll.h>
#include <spawn.h>
#include <sys/wait.h>
#include <system_error>
#include <unistd.h>
#include <utility>

// The two descriptors held here do not block; -1 stands for a closed one. m_buffer holds the output that is
// not yet a whole frame. m_status is set once, by the waitpid that reaps the process, and no signal is sent
// after it.

namespace ClientSimulator {

namespace {

constexpr std::chrono::milliseconds cLongestStep{10};
constexpr std::size_t cHeaderSize = sizeof(std::uint32_t);
constexpr std::uint32_t cLongestFrame = 256 * 1024 * 1024;

struct Pipe {
    int readEnd = -1;
    int writeEnd = -1;

    Pipe() {
        std::array<int, 2> ends{};
        if (pipe2(ends.data(), O_CLOEXEC) != 0)
            throw StartError("no pipe can be made: " + std::generic_category().message(errno));
        readEnd = ends[0];
        writeEnd = ends[1];
    }
    ~Pipe() {
        if (readEnd >= 0) close(readEnd);
        if (writeEnd >= 0) close(writeEnd);
    }
    Pipe(Pipe const&) = delete;
    Pipe& operator=(Pipe const&) = delete;
};

// What posix_spawn is told beside the program.
class SpawnSettings {
public:
    SpawnSettings(int input, int output) {
        posix_spawn_file_actions_init(&m_actions);
        posix_spawn_file_actions_adddup2(&m_actions, input, STDIN_FILENO);
        posix_spawn_file_actions_adddup2(&m_actions, output, STDOUT_FILENO);
        sigset_t defaults;
        sigemptyset(&defaults);
        sigaddset(&defaults, SIGPIPE);
        posix_spawnattr_init(&m_attributes);
        posix_spawnattr_setsigdefault(&m_attributes, &defaults);
        posix_spawnattr_setflags(&m_attributes, POSIX_SPAWN_SETSIGDEF);
    }
    ~SpawnSettings() {
        posix_spawn_file_actions_destroy(&m_actions);
        posix_spawnattr_destroy(&m_attributes);
    }
    SpawnSettings(SpawnSettings const&) = delete;
    SpawnSettings& operator=(SpawnSettings const&) = delete;

    posix_spawn_file_actions_t const* Actions() const { return &m_actions; }
    posix_spawnattr_t const* Attributes() const { return &m_attributes; }

private:
    posix_spawn_file_actions_t m_actions;
    posix_spawnattr_t m_attributes;
};

std::vector<std::string> ChangedEnvironment(std::vector<EnvironmentChange> const& changes) {
    std::map<std::string, std::string> variables;
    for (char** entry = environ; *entry != nullptr; ++entry) {
        std::string const text = *entry;
        std::size_t const equal = text.find('=');
        if (equal != text.npos) variables[text.substr(0, equal)] = text.substr(equal + 1);
    }
    for (EnvironmentChange const& change : changes) {
        if (change.value)
            variables[change.name] = *change.value;
        else
            variables.erase(change.name);
    }
    std::vector<std::string> result;
    for (auto const& [name, value] : variables) result.push_back(name + '=' + value);
    return result;
}

// The pointers that exec wants; they live as long as the texts.
std::vector<char*> Pointers(std::vector<std::string>& texts) {
    std::vector<char*> pointers;
    for (std::string& text : texts) pointers.push_back(text.data());
    pointers.push_back(nullptr);
    return pointers;
}

pid_t Spawn(ProcessStart const& start, int input, int output) {
    std::vector<std::string> arguments{start.executable};
    arguments.insert(arguments.end(), start.arguments.begin(), start.arguments.end());
    std::vector<std::string> environment = ChangedEnvironment(start.environment);
    SpawnSettings const settings(input, output);
    pid_t process = -1;
    int const error =
        posix_spawnp(&process, start.executable.c_str(), settings.Actions(), settings.Attributes(),
                     Pointers(arguments).data(), Pointers(environment).data());
    if (error != 0)
        throw StartError(start.executable + " cannot be started: " + std::generic_category().message(error));
    return process;
}

int TakeEnd(int& end) {
    int const descriptor = std::exchange(end, -1);
    fcntl(descriptor, F_SETFL, fcntl(descriptor, F_GETFL) | O_NONBLOCK);
    return descriptor;
}

void CloseDescriptor(int& descriptor) {
    if (descriptor >= 0) close(descriptor);
    descriptor = -1;
}

int MillisecondsUntil(Peer::Deadline deadline) {
    auto const rest =
        std::chrono::ceil<std::chrono::milliseconds>(deadline - std::chrono::steady_clock::now());
    return static_cast<int>(std::clamp(rest, std::chrono::milliseconds(0), cLongestStep).count());
}

} // namespace

std::string MakeFrame(std::string_view text) {
    auto const length = static_cast<std::uint32_t>(text.size());
    std::string frame(cHeaderSize, '\0');
    std::memcpy(frame.data(), &length, cHeaderSize);
    return frame.append(text);
}

std::string DescribeWaitStatus(int status) {
    if (WIFEXITED(status)) return "exit status " + std::to_string(WEXITSTATUS(status));
    int const signal = WTERMSIG(status);
    char const* const description = sigdescr_np(signal);
    return "signal " + std::to_string(signal) + " (" + (description != nullptr ? description : "unknown") +
           ")";
}

Peer::Peer(ProcessStart const& start) {
    std::signal(SIGPIPE, SIG_IGN);
    Pipe input;
    Pipe output;
    m_process = Spawn(start, input.readEnd, output.writeEnd);
    m_input = TakeEnd(input.writeEnd);
    m_output = TakeEnd(output.readEnd);
}

Peer::~Peer() {
    CloseDescriptor(m_input);
    CloseDescriptor(m_output);
    if (m_status) return;
    kill(m_process, SIGKILL);
    Reap(true);
}

void Peer::CloseInput() {
    CloseDescriptor(m_input);
}

void Peer::CloseOutput() {
    CloseDescriptor(m_output);
}

Peer::WriteResult Peer::Write(std::string_view bytes, Deadline deadline) {
    while (!bytes.empty()) {
        if (m_input < 0) return WriteResult::Gone;
        ssize_t const written = write(m_input, bytes.data(), bytes.size());
        if (written >= 0) {
            bytes.remove_prefix(static_cast<std::size_t>(written));
            continue;
        }
        if (errno != EAGAIN && errno != EINTR) return WriteResult::Gone;
        if (std::chrono::steady_clock::now() >= deadline) return WriteResult::Late;
        std::array<pollfd, 2> ends{{{m_input, POLLOUT, 0}, {m_output, POLLIN, 0}}};
        poll(ends.data(), ends.size(), MillisecondsUntil(deadline));
        ReadOutput();
    }
    return WriteResult::Done;
}

void Peer::Step(Deadline deadline) {
    pollfd output{m_output, POLLIN, 0};
    poll(&output, 1, MillisecondsUntil(deadline));
    ReadOutput();
    if (!m_status) Reap(false);
}

void Peer::ReadOutput() {
    std::array<char, 65536> bytes;
    while (m_output >= 0) {
        ssize_t const count = read(m_output, bytes.data(), bytes.size());
        if (count < 0 && errno == EINTR) continue;
        if (count < 0 && errno == EAGAIN) return;
        if (count <= 0) {
            if (!m_buffer.empty())
                m_problem = "its output ended inside a frame, " + std::to_string(m_buffer.size()) +
                            " bytes behind the frame's beginning";
            return CloseDescriptor(m_output);
        }
        m_buffer.append(bytes.data(), static_cast<std::size_t>(count));
        TakeFrames();
    }
}

void Peer::TakeFrames() {
    std::size_t at = 0;
    while (m_buffer.size() - at >= cHeaderSize) {
        std::uint32_t length = 0;
        std::memcpy(&length, m_buffer.data() + at, cHeaderSize);
        if (length > cLongestFrame) {
            m_problem = "its output has a frame of " + std::to_string(length) + " bytes; expected at most " +
                        std::to_string(cLongestFrame);
            m_buffer.clear();
            return CloseDescriptor(m_output);
        }
        if (m_buffer.size() - at - cHeaderSize < length) break;
        m_frames.push_back({m_buffer.substr(at + cHeaderSize, length), std::chrono::system_clock::now()});
        at += cHeaderSize + length;
    }
    m_buffer.erase(0, at);
}

std::optional<Peer::Frame> Peer::TakeFrame() {
    if (m_frames.empty()) return std::nullopt;
    Frame frame = std::move(m_frames.front());
    m_frames.pop_front();
    return frame;
}

void Peer::Reap(bool wait) {
    int status = 0;
    pid_t result = 0;
    do result = waitpid(m_process, &status, wait ? 0 : WNOHANG);
    while (result < 0 && errno == EINTR);
    if (result == m_process) m_status = status;
}

int Peer::End(Deadline deadline) {
    CloseInput();
    while (!m_status && std::chrono::steady_clock::now() < deadline) Step(deadline);
    if (!m_status) {
        kill(m_process, SIGKILL);
        Reap(true);
    }
    ReadOutput();
    return m_status.value_or(0);
}

} // namespace ClientSimulator
