#pragma once

#include "tools/client-simulator/Scenario.h"

#include <chrono>
#include <deque>
#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>
#include <sys/types.h>
#include <vector>

namespace ClientSimulator {

// What to start: the executable's path (without a slash it is looked for on the PATH), its arguments, and how
// its environment differs from the simulator's.
struct ProcessStart {
    std::string executable;
    std::vector<std::string> arguments;
    std::vector<EnvironmentChange> environment;
};

// The process could not be started; the text tells which and why.
class StartError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

// A frame's text: its length in four bytes of this machine's order, and the text.
std::string MakeFrame(std::string_view text);

// "exit status 3" or "signal 13 (Broken pipe)" for a status as waitpid gives it.
std::string DescribeWaitStatus(int status);

// A process with a pipe on its standard input and one on its standard output, and the frames that it writes.
// Nothing here blocks beyond the deadline that it is given; whoever waits calls Step until the thing waited
// for has happened. SIGPIPE is ignored in the simulator and has its default action in the process.
class Peer {
public:
    using Deadline = std::chrono::steady_clock::time_point;

    struct Frame {
        std::string text;
        std::chrono::system_clock::time_point arrival;
    };
    enum class WriteResult { Done, Late, Gone };

    // Starts the process. Throws StartError.
    explicit Peer(ProcessStart const& start);
    // Kills a process that still runs, and waits for its end.
    ~Peer();
    Peer(Peer const&) = delete;
    Peer& operator=(Peer const&) = delete;

    pid_t ProcessID() const { return m_process; }

    // Writes bytes as they are, and meanwhile reads what comes. Late: the deadline passed before all was
    // taken; Gone: nobody reads at the other end, or it has been closed here.
    WriteResult Write(std::string_view bytes, Deadline deadline);

    // Ends the process's input; a second call does nothing.
    void CloseInput();
    // Closes the reading end of its output; a second call does nothing.
    void CloseOutput();

    // Reads what there is, having waited for it until the deadline and no longer than a few milliseconds, and
    // looks whether the process has ended.
    void Step(Deadline deadline);

    // The oldest frame not yet taken.
    std::optional<Frame> TakeFrame();
    // Whether the output has ended, or was closed here. Frames may still wait to be taken.
    bool OutputEnded() const { return m_output < 0; }
    // What was wrong with the output when it stopped being frames; empty otherwise.
    std::string const& OutputProblem() const { return m_problem; }
    // How the process ended, as waitpid gives it; null while it runs.
    std::optional<int> WaitStatus() const { return m_status; }

    // Ends the input, waits for the process's end until the deadline, and kills it then. Gives its status.
    int End(Deadline deadline);

private:
    void ReadOutput();
    void TakeFrames();
    void Reap(bool wait);

    pid_t m_process = -1;
    int m_input = -1;
    int m_output = -1;
    std::optional<int> m_status;
    std::string m_buffer;
    std::string m_problem;
    std::deque<Frame> m_frames;
};

} // namespace ClientSimulator
