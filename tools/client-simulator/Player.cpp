#include "tools/client-simulator/Player.h"

#include "tools/client-simulator/Documents.h"
#include "tools/client-simulator/Matcher.h"
#include "tools/client-simulator/Transcript.h"

#include <algorithm>
#include <cerrno>
#include <cstdlib>
#include <functional>
#include <sys/wait.h>
#include <system_error>

// Each kind of step has one Run. A step that is not met throws NotMet, which carries what happened; the loop
// over the steps adds the place. Frames are printed when they arrive, whatever the step waits for, and wait
// in m_arrived until an expectation takes them.

namespace ClientSimulator {

namespace {

using std::chrono::steady_clock;

// How long a process that has closed its output may take to end, when only a better message hangs on it.
constexpr std::chrono::seconds cEndAfterOutput{5};
// How long the process may take to end by itself after a step that was not met.
constexpr std::chrono::seconds cEndAfterFailure{5};

struct NotMet {
    std::string what;
};

// A new directory under the system's temporary one, which goes with the object.
class TemporaryDirectory {
public:
    TemporaryDirectory() : m_path(std::filesystem::temp_directory_path() / "client-simulator-XXXXXX") {
        std::string name = m_path.string();
        if (mkdtemp(name.data()) == nullptr)
            throw StartError("no temporary directory can be made: " + std::generic_category().message(errno));
        m_path = name;
    }
    ~TemporaryDirectory() {
        std::error_code ignored;
        std::filesystem::remove_all(m_path, ignored);
    }
    TemporaryDirectory(TemporaryDirectory const&) = delete;
    TemporaryDirectory& operator=(TemporaryDirectory const&) = delete;

    std::string Path() const { return m_path.string(); }

private:
    std::filesystem::path m_path;
};

std::string Joined(std::vector<std::string> const& sentences) {
    std::string text;
    for (std::string const& sentence : sentences) text += (text.empty() ? "" : "\n    ") + sentence;
    return text;
}

class Player {
public:
    Player(Scenario const& scenario, PlayOptions const& options, std::ostream& transcript)
        : m_options(options), m_transcript(transcript, options.quiet), m_peer(WholeStart(scenario, options)) {
        m_context.temporaryDirectory = m_directory.Path();
        m_context.scenarioDirectory = scenario.file.parent_path();
        m_transcript.Note("started " + options.start.executable + " as process " +
                          std::to_string(m_peer.ProcessID()));
    }

    void Run(Step const& step) {
        std::visit([this](auto const& action) { Run(action); }, step.action);
    }

    // What holds after the last step: the process ends with its input, and nothing is left over.
    void Finish() {
        if (!m_peer.WaitStatus()) {
            CloseInput();
            ExpectStatus(std::nullopt);
        }
        if (!m_ended && WIFSIGNALED(*m_peer.WaitStatus()))
            throw NotMet{"the process ended with " + DescribeWaitStatus(*m_peer.WaitStatus()) +
                         "; expected it to exit"};
        Pump(steady_clock::now());
        CheckOutput();
        while (std::optional<std::string> const document = NextDocument())
            if (!Ignored(*document))
                throw NotMet{MessageNames(*document) +
                             " arrived and was not expected by any step ('ignore' lets "
                             "a message pass)"};
        m_transcript.Note(std::to_string(m_met) + (m_met == 1 ? " expectation" : " expectations") + " met");
    }

    // Ends the process after a failure.
    void GiveUp() {
        bool const ended = m_peer.WaitStatus().has_value();
        int const status = m_peer.End(steady_clock::now() + cEndAfterFailure);
        if (!ended) m_transcript.Note("the process was ended, with " + DescribeWaitStatus(status));
        Pump(steady_clock::now());
    }

private:
    static ProcessStart WholeStart(Scenario const& scenario, PlayOptions const& options) {
        ProcessStart start = options.start;
        start.environment.insert(start.environment.begin(), scenario.environment.begin(),
                                 scenario.environment.end());
        return start;
    }

    RenderContext const& Context() {
        m_context.now = std::chrono::floor<std::chrono::seconds>(std::chrono::system_clock::now());
        return m_context;
    }

    Microseconds Limit(std::optional<Microseconds> within) const {
        return within.value_or(m_options.timeout);
    }

    // Moves what has come out of the peer, waiting for it until the deadline and no longer than one step.
    void Pump(Peer::Deadline deadline) {
        m_peer.Step(deadline);
        while (std::optional<Peer::Frame> frame = m_peer.TakeFrame()) {
            m_transcript.Received(frame->text, frame->arrival);
            m_arrived.push_back(std::move(frame->text));
        }
    }

    // Pumps until `done`; false when the deadline passed before.
    bool PumpUntil(Peer::Deadline deadline, std::function<bool()> const& done) {
        for (;;) {
            bool const last = steady_clock::now() >= deadline;
            Pump(deadline);
            if (done()) return true;
            if (last) return false;
        }
    }

    std::optional<std::string> NextDocument() {
        if (m_arrived.empty()) return std::nullopt;
        std::string document = std::move(m_arrived.front());
        m_arrived.pop_front();
        return document;
    }

    bool Ignored(std::string const& document) {
        return std::any_of(m_ignored.begin(), m_ignored.end(), [&](MessagePattern const& pattern) {
            return Differences(pattern, document, Context()).empty();
        });
    }

    void CheckOutput() const {
        if (!m_peer.OutputProblem().empty())
            throw NotMet{"the process writes no frames: " + m_peer.OutputProblem()};
    }

    // Tells how the process went, when it did so before its time.
    std::string EndedEarly() {
        PumpUntil(steady_clock::now() + cEndAfterOutput, [this] { return m_peer.WaitStatus().has_value(); });
        if (!m_peer.WaitStatus()) return "the process has closed its output";
        return "the process has ended with " + DescribeWaitStatus(*m_peer.WaitStatus());
    }

    void Met(std::string const& what) {
        ++m_met;
        m_transcript.Note("met: " + what);
    }

    // Waits for the next document that `differences` finds nothing wrong with, passing over ignored ones.
    void ExpectNext(std::string const& name, std::optional<Microseconds> within,
                    std::function<std::vector<std::string>(std::string const&)> const& differences) {
        auto const deadline = steady_clock::now() + Limit(within);
        for (;;) {
            bool const came =
                PumpUntil(deadline, [this] { return !m_arrived.empty() || m_peer.OutputEnded(); });
            std::optional<std::string> const document = NextDocument();
            if (document) {
                std::vector<std::string> const wrong = differences(*document);
                if (wrong.empty()) return Met(name);
                if (Ignored(*document)) continue;
                throw NotMet{MessageNames(*document) + " arrived; expected " + name + ":\n    " +
                             Joined(wrong)};
            }
            CheckOutput();
            if (came) throw NotMet{EndedEarly() + "; expected " + name};
            throw NotMet{"nothing arrived within " + DurationText(Limit(within)) + "; expected " + name};
        }
    }

    // Waits for the process's end.
    int ExpectStatus(std::optional<Microseconds> within) {
        if (!PumpUntil(steady_clock::now() + Limit(within),
                       [this] { return m_peer.WaitStatus().has_value(); }))
            throw NotMet{"the process still runs after " + DurationText(Limit(within)) +
                         "; expected its end"};
        m_transcript.Note("the process ended with " + DescribeWaitStatus(*m_peer.WaitStatus()));
        return *m_peer.WaitStatus();
    }

    void CloseInput() {
        m_peer.CloseInput();
        m_inputClosed = true;
        m_transcript.Note("the client closed its end of the process's input");
    }

    void Run(Send const& send) {
        std::string bytes;
        for (Send::Item const& item : send.items) {
            std::string const text = item.bytes.Render(Context());
            if (item.framed)
                m_transcript.Sent(text);
            else
                m_transcript.SentBytes(text);
            bytes += item.framed ? MakeFrame(text) : text;
        }
        switch (m_peer.Write(bytes, steady_clock::now() + m_options.timeout)) {
        case Peer::WriteResult::Done: return;
        case Peer::WriteResult::Late:
            throw NotMet{"the process has not read the bytes within " + DurationText(m_options.timeout) +
                         "; expected it to read"};
        case Peer::WriteResult::Gone:
            if (m_inputClosed) throw NotMet{"nothing can be sent after 'close'; expected 'send' before it"};
            throw NotMet{"the process no longer reads: " + EndedEarly() + "; expected it to read"};
        }
    }

    void Run(ExpectMessage const& expect) {
        ExpectNext(
            expect.pattern.name.empty() ? "a message" : expect.pattern.name, expect.within,
            [&](std::string const& document) { return Differences(expect.pattern, document, Context()); });
    }

    void Run(ExpectDocument const& expect) {
        std::string const wanted = expect.document.Render(Context());
        ExpectNext("the document of " + MessageNames(wanted), expect.within,
                   [&](std::string const& document) {
                       return expect.exact ? TextDifferences(wanted, document)
                                           : DocumentDifferences(wanted, document);
                   });
    }

    void Run(ExpectNothing const& expect) {
        std::string const name = "nothing for " + DurationText(expect.duration);
        auto const deadline = steady_clock::now() + expect.duration;
        bool open = true;
        while (open) {
            open = PumpUntil(deadline, [this] { return !m_arrived.empty() || GoneEarly(); });
            while (std::optional<std::string> const document = NextDocument())
                if (!Ignored(*document)) throw NotMet{MessageNames(*document) + " arrived; expected " + name};
            CheckOutput();
            if (GoneEarly()) throw NotMet{EndedEarly() + "; expected it to run on and to send " + name};
        }
        Met(name);
    }

    bool GoneEarly() const { return m_peer.OutputEnded() && !m_inputClosed && !m_outputClosed; }

    void Run(ExpectEnd const& expect) {
        if (!PumpUntil(steady_clock::now() + Limit(expect.within), [this] { return m_peer.OutputEnded(); }))
            throw NotMet{"the output is still open after " + DurationText(Limit(expect.within)) +
                         "; expected its end"};
        CheckOutput();
        Met("the end of the output");
    }

    void Run(ExpectExit const& expect) {
        int const status = ExpectStatus(expect.within);
        bool const right = expect.signal ? WIFSIGNALED(status) && WTERMSIG(status) == expect.number
                                         : WIFEXITED(status) && WEXITSTATUS(status) == expect.number;
        std::string const wanted =
            (expect.signal ? "signal " : "exit status ") + std::to_string(expect.number);
        if (!right)
            throw NotMet{"the process ended with " + DescribeWaitStatus(status) + "; expected " + wanted};
        m_ended = true;
        Met(wanted);
    }

    void Run(Ignore const& ignore) { m_ignored.push_back(ignore.pattern); }

    void Run(Pause const& pause) {
        PumpUntil(steady_clock::now() + pause.duration, [] { return false; });
    }

    void Run(Close const& close) {
        if (!close.output) return CloseInput();
        m_peer.CloseOutput();
        m_outputClosed = true;
        m_transcript.Note("the client closed its end of the process's output");
    }

    void Run(Say const& say) { m_transcript.Heading(say.text.Render(Context())); }

    void Run(Let const& let) { m_context.variables[let.name] = let.value.Render(Context()); }

    PlayOptions const& m_options;
    Transcript m_transcript;
    TemporaryDirectory m_directory;
    Peer m_peer;
    RenderContext m_context;
    std::deque<std::string> m_arrived;
    std::vector<MessagePattern> m_ignored;
    int m_met = 0;
    bool m_inputClosed = false;
    bool m_outputClosed = false;
    bool m_ended = false; // its status has been judged
};

// Plays all steps; false, with the reason on `errors`, at the first that is not met.
bool PlaySteps(Player& player, Scenario const& scenario, std::ostream& errors) {
    int line = 0;
    auto const complain = [&](std::string const& what) {
        player.GiveUp();
        errors << ScenarioError(scenario.file, line, what).what() << std::endl;
        return false;
    };
    try {
        for (Step const& step : scenario.steps) {
            line = step.line;
            player.Run(step);
        }
        line = 0;
        player.Finish();
    } catch (NotMet const& failure) {
        return complain(failure.what);
    } catch (RenderError const& error) {
        return complain(error.what());
    }
    return true;
}

} // namespace

Outcome Play(Scenario const& scenario, PlayOptions const& options, std::ostream& transcript,
             std::ostream& errors) {
    try {
        Player player(scenario, options, transcript);
        return PlaySteps(player, scenario, errors) ? Outcome::Met : Outcome::NotMet;
    } catch (StartError const& error) {
        errors << error.what() << std::endl;
        return Outcome::CannotStart;
    }
}

} // namespace ClientSimulator
