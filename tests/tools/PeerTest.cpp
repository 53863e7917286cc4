#include "tools/client-simulator/Peer.h"

#include <gtest/gtest.h>

using namespace ClientSimulator;
using std::chrono::milliseconds;
using std::chrono::seconds;
using std::chrono::steady_clock;

namespace {

ProcessStart Fake(std::vector<std::string> arguments) {
    return {FAKE_PEER, std::move(arguments), {}};
}

Peer::Deadline In(milliseconds time) {
    return steady_clock::now() + time;
}

std::optional<std::string> NextFrame(Peer& peer) {
    Peer::Deadline const deadline = In(seconds(10));
    while (steady_clock::now() < deadline) {
        if (std::optional<Peer::Frame> frame = peer.TakeFrame()) return std::move(frame->text);
        peer.Step(deadline);
    }
    return std::nullopt;
}

void StepUntilOutputEnds(Peer& peer) {
    for (Peer::Deadline const deadline = In(seconds(10));
         !peer.OutputEnded() && steady_clock::now() < deadline;)
        peer.Step(deadline);
}

} // namespace

TEST(Peer, ExchangesFrames) {
    Peer peer(Fake({"echo"}));
    EXPECT_EQ(peer.Write(MakeFrame("one") + MakeFrame(""), In(seconds(5))), Peer::WriteResult::Done);
    EXPECT_EQ(NextFrame(peer), "one");
    EXPECT_EQ(NextFrame(peer), "");
    EXPECT_EQ(DescribeWaitStatus(peer.End(In(seconds(5)))), "exit status 0");
}

TEST(Peer, ReadsWhileItWrites) {
    Peer peer(Fake({"echo"}));
    std::string const big(3000000, 'x');
    for (int i = 0; i < 3; ++i)
        ASSERT_EQ(peer.Write(MakeFrame(big), In(seconds(10))), Peer::WriteResult::Done);
    for (int i = 0; i < 3; ++i) EXPECT_EQ(NextFrame(peer), big);
}

TEST(Peer, AWriterThatNobodyReadsIsLate) {
    Peer peer(Fake({"sleep", "60000"}));
    EXPECT_EQ(peer.Write(std::string(1000000, 'x'), In(milliseconds(50))), Peer::WriteResult::Late);
}

TEST(Peer, AWriterToAnEndedProcessIsGone) {
    Peer peer(Fake({"exit", "3"}));
    for (Peer::Deadline const deadline = In(seconds(10));
         !peer.WaitStatus() && steady_clock::now() < deadline;)
        peer.Step(deadline);
    EXPECT_EQ(peer.Write("x", In(seconds(5))), Peer::WriteResult::Gone);
    EXPECT_EQ(DescribeWaitStatus(peer.End(In(seconds(5)))), "exit status 3");
}

TEST(Peer, TellsOfATornFrame) {
    Peer peer(Fake({"length", "10", "raw", "abc"}));
    StepUntilOutputEnds(peer);
    EXPECT_EQ(peer.OutputProblem(), "its output ended inside a frame, 7 bytes behind the frame's beginning");
}

TEST(Peer, TellsOfAnImpossibleLength) {
    Peer peer(Fake({"length", "4000000000", "sleep", "60000"}));
    StepUntilOutputEnds(peer);
    EXPECT_EQ(peer.OutputProblem(), "its output has a frame of 4000000000 bytes; expected at most 268435456");
}

TEST(Peer, TheProcessHasTheDefaultActionOfSigpipe) {
    Peer peer(Fake({"read", "frame", "x"}));
    peer.CloseOutput();
    ASSERT_EQ(peer.Write(MakeFrame("go"), In(seconds(5))), Peer::WriteResult::Done);
    EXPECT_EQ(DescribeWaitStatus(peer.End(In(seconds(5)))), "signal 13 (Broken pipe)");
}

TEST(Peer, KillsAProcessThatDoesNotEnd) {
    Peer peer(Fake({"sleep", "60000"}));
    EXPECT_EQ(DescribeWaitStatus(peer.End(In(milliseconds(50)))), "signal 9 (Killed)");
}

TEST(Peer, TellsWhatCannotBeStarted) {
    try {
        Peer const peer({"/no/such/program", {}, {}});
        FAIL() << "expected an error";
    } catch (StartError const& error) {
        EXPECT_STREQ(error.what(), "/no/such/program cannot be started: No such file or directory");
    }
}
