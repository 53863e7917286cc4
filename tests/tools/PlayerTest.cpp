#include "tools/client-simulator/Player.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sstream>

using namespace ClientSimulator;
using testing::HasSubstr;
using testing::Not;
using testing::StartsWith;

namespace {

struct Result {
    Outcome outcome;
    std::string transcript;
    std::string errors;
};

// Plays a scenario against a fake that does what `arguments` say.
Result Played(std::string_view scenario, std::vector<std::string> arguments, bool quiet = false) {
    PlayOptions options;
    options.start = {FAKE_PEER, std::move(arguments), {}};
    options.timeout = std::chrono::seconds(10);
    options.quiet = quiet;
    std::ostringstream transcript;
    std::ostringstream errors;
    Outcome const outcome = Play(ParseScenario(scenario, "my.scenario"), options, transcript, errors);
    return {outcome, transcript.str(), errors.str()};
}

void ExpectMet(std::string_view scenario, std::vector<std::string> arguments) {
    Result const result = Played(scenario, std::move(arguments));
    EXPECT_EQ(result.outcome, Outcome::Met) << result.transcript;
    EXPECT_EQ(result.errors, "");
}

void ExpectNotMet(std::string_view scenario, std::vector<std::string> arguments, std::string const& error) {
    Result const result = Played(scenario, std::move(arguments));
    EXPECT_EQ(result.outcome, Outcome::NotMet) << result.transcript;
    EXPECT_THAT(result.errors, StartsWith(error));
}

std::string const cTaken = "<R><ActionTaken><ID>7</ID></ActionTaken></R>";
std::string const cWarning = "<R><Warning><ID>7</ID></Warning></R>";

} // namespace

TEST(Player, PlaysAWholeConversation) {
    ExpectMet("say Hello\n"
              "expect ActionTaken within 5s\n  ID = 7\n"
              "send A\n  ID = {duration 1s}\n"
              "expect A within 5s\n  ID = PT1S\n"
              "close\n"
              "expect end within 5s\n"
              "expect exit 4 within 5s\n",
              {"frame", cTaken, "echo", "exit", "4"});
}

TEST(Player, PrintsBothDirectionsWithTimeStamps) {
    Result const result = Played("expect ActionTaken\nsend <Q><B><C>1</C></B></Q>\nsend bytes 00\n",
                                 {"frame", cTaken, "input-end"});
    EXPECT_EQ(result.outcome, Outcome::Met);
    EXPECT_THAT(result.transcript,
                testing::ContainsRegex("[0-9][0-9]:[0-9][0-9]:[0-9][0-9]\\.[0-9][0-9][0-9]  "
                                       "client <-- process  ActionTaken, 44 bytes\n"
                                       " +<R>\n +<ActionTaken>\n +<ID>7</ID>\n"));
    EXPECT_THAT(result.transcript, HasSubstr("client --> process  B, 22 bytes\n"));
    EXPECT_THAT(result.transcript, HasSubstr("client --> process  1 raw bytes \"\\x00\"\n"));
    EXPECT_THAT(result.transcript, HasSubstr("1 expectation met\n"));
}

TEST(Player, QuietPrintsOnlyWhatWentWrong) {
    EXPECT_EQ(Played("expect ActionTaken\n", {"frame", cTaken, "input-end"}, true).transcript, "");
    Result const wrong = Played("expect Other\n", {"frame", cTaken, "input-end"}, true);
    EXPECT_EQ(wrong.transcript, "");
    EXPECT_NE(wrong.errors, "");
}

TEST(Player, AnotherMessageIsNotMet) {
    ExpectNotMet("pause 1ms\nexpect RemindTime\n", {"frame", cTaken, "input-end"},
                 "my.scenario:2: ActionTaken arrived; expected RemindTime:\n    it is ActionTaken; expected "
                 "RemindTime\n");
}

TEST(Player, AnotherFieldIsNotMet) {
    ExpectNotMet(
        "expect ActionTaken\n  ID = 8\n", {"frame", cTaken, "input-end"},
        "my.scenario:1: ActionTaken arrived; expected ActionTaken:\n    ID is \"7\"; expected \"8\"\n");
}

TEST(Player, SilenceIsNotMet) {
    ExpectNotMet("expect ActionTaken within 100ms\n", {"input-end"},
                 "my.scenario:1: nothing arrived within 0.1s; expected ActionTaken\n");
}

TEST(Player, ALateAnswerIsWaitedFor) {
    ExpectMet("expect ActionTaken within 10s\n", {"sleep", "300", "frame", cTaken, "input-end"});
}

TEST(Player, AnEarlyEndIsTold) {
    ExpectNotMet("expect ActionTaken within 10s\n", {"exit", "3"},
                 "my.scenario:1: the process has ended with exit status 3; expected ActionTaken\n");
    ExpectNotMet("expect ActionTaken within 10s\n", {"kill", "15"},
                 "my.scenario:1: the process has ended with signal 15 (Terminated); expected ActionTaken\n");
    ExpectNotMet(
        "expect exit 3\nsend A\n", {"exit", "3"},
        "my.scenario:2: the process no longer reads: the process has ended with exit status 3; expected "
        "it to read\n");
}

TEST(Player, AnswersBeforeAnEarlyEndCount) {
    ExpectMet("pause 200ms\nexpect ActionTaken\nexpect exit 3\n", {"frame", cTaken, "exit", "3"});
}

TEST(Player, NothingIsNothing) {
    ExpectMet("expect nothing for 100ms\n", {"input-end"});
    ExpectNotMet("expect nothing for 5s\n", {"sleep", "50", "frame", cTaken, "input-end"},
                 "my.scenario:1: ActionTaken arrived; expected nothing for 5s\n");
    ExpectNotMet("expect nothing for 5s\n", {"sleep", "50", "exit", "0"},
                 "my.scenario:1: the process has ended with exit status 0; expected it to run on and to send "
                 "nothing for 5s\n");
    ExpectMet("close\nexpect nothing for 50ms\n", {"input-end"});
}

TEST(Player, IgnoredMessagesPass) {
    ExpectMet("ignore Warning\n  ID = 7\nexpect ActionTaken\nexpect nothing for 50ms\n",
              {"frame", cWarning, "frame", cTaken, "frame", cWarning, "input-end"});
    ExpectNotMet("ignore Warning\n  ID = 8\nexpect ActionTaken\n", {"frame", cWarning, "input-end"},
                 "my.scenario:3: Warning arrived; expected ActionTaken:");
    ExpectMet("ignore any\nexpect ActionTaken\n",
              {"frame", cWarning, "frame", cTaken, "frame", cWarning, "input-end"});
}

TEST(Player, ALeftOverMessageIsNotMet) {
    ExpectNotMet("expect ActionTaken\n", {"frame", cTaken, "frame", cWarning, "input-end"},
                 "my.scenario: Warning arrived and was not expected by any step");
}

TEST(Player, WholeDocumentsAreCompared) {
    std::string const document = "<R>\n\t<ActionTaken><ID><![CDATA[7]]></ID></ActionTaken></R>";
    ExpectMet("expect document <<E\n" + cTaken + "\nE\n", {"frame", document, "input-end"});
    ExpectMet("expect exact <<E\n" + document + "\nE\n", {"frame", document, "input-end"});
    ExpectNotMet(
        "expect exact <<E\n" + cTaken + "\nE\n", {"frame", document, "input-end"},
        "my.scenario:1: ActionTaken arrived; expected the document of ActionTaken:\n    it differs from "
        "byte 3 on:");
    ExpectNotMet("expect document <R><ActionTaken><ID>8</ID></ActionTaken></R>",
                 {"frame", cTaken, "input-end"},
                 "my.scenario:1: ActionTaken arrived; expected the document of ActionTaken:\n    "
                 "R/ActionTaken/ID is \"7\"; expected \"8\"");
}

TEST(Player, TheExitStatusIsCompared) {
    ExpectMet("expect exit 255\n", {"exit", "-1"});
    ExpectNotMet("expect exit 0\n", {"exit", "3"},
                 "my.scenario:1: the process ended with exit status 3; expected exit status 0\n");
    ExpectMet("expect signal TERM\n", {"kill", "15"});
    ExpectNotMet("expect signal 9\n", {"exit", "9"},
                 "my.scenario:1: the process ended with exit status 9; expected signal 9\n");
    ExpectNotMet("expect exit 0 within 100ms\n", {"sleep", "200", "input-end"},
                 "my.scenario:1: the process still runs after 0.1s; expected its end\n");
}

TEST(Player, ASignalAtTheEndIsNotMet) {
    ExpectNotMet("pause 1ms\n", {"input-end", "kill", "15"},
                 "my.scenario: the process ended with signal 15 (Terminated); expected it to exit\n");
}

TEST(Player, TornFramesAreTold) {
    ExpectNotMet(
        "expect ActionTaken\n", {"length", "9", "raw", "abc"},
        "my.scenario:1: the process writes no frames: its output ended inside a frame, 7 bytes behind the "
        "frame's beginning\n");
}

TEST(Player, NothingIsSentAfterClose) {
    ExpectNotMet("close\nsend A\n", {"input-end"},
                 "my.scenario:2: nothing can be sent after 'close'; expected 'send' before it\n");
}

TEST(Player, TogetherIsOneStream) {
    ExpectMet("together\n send bytes u32:16\n send unchecked <<E\n{repeat 12 y}\nE\nend\nexpect Size\n"
              " Bytes = 16\n",
              {"echo-size", "input-end"});
}

TEST(Player, CloseOutputLeavesAWriterWithoutReader) {
    ExpectMet("close output\nsend A\nexpect signal PIPE\n", {"read", "frame", cTaken});
}

TEST(Player, TheEnvironmentIsSetAndTakenOut) {
    setenv("PLAYER_TEST_VARIABLE", "simulator", 1);
    ExpectMet("environment PLAYER_TEST_VARIABLE=a=b\nexpect Env\n Value = a=b\n",
              {"env", "PLAYER_TEST_VARIABLE", "input-end"});
    ExpectMet("environment PLAYER_TEST_VARIABLE\nexpect Env\n Value = unset\n",
              {"env", "PLAYER_TEST_VARIABLE", "input-end"});
    ExpectMet("expect Env\n Value = simulator\n", {"env", "PLAYER_TEST_VARIABLE", "input-end"});
}

TEST(Player, VariablesKeepTheirMoment) {
    ExpectMet("let then = {now}\npause 1100ms\nsend A\n  T = {then}\nexpect A\n  T = {then}\n  T != {now}\n  "
              "T near "
              "{now} within 5s\n",
              {"echo"});
}

TEST(Player, TheTemporaryDirectoryGoesWithTheRun) {
    Result const result =
        Played("send A\n  D = {tempdir}\nexpect A\n  D contains client-simulator-\n", {"echo"});
    EXPECT_EQ(result.outcome, Outcome::Met) << result.errors;
    std::size_t const begin = result.transcript.find("<D>") + 3;
    std::string const directory = result.transcript.substr(begin, result.transcript.find("</D>") - begin);
    EXPECT_THAT(directory, Not(testing::IsEmpty()));
    EXPECT_FALSE(std::filesystem::exists(directory)) << directory;
}

TEST(Player, AValueThatIsMissingIsTold) {
    ExpectNotMet("pause 1ms\nsend <A><B>{env PLAYER_TEST_NO_SUCH}</B></A>\n", {"input-end"},
                 "my.scenario:2: the environment has no variable PLAYER_TEST_NO_SUCH\n");
    ExpectNotMet("send <A><B>{base64-file no-such-file}</B></A>\n", {"input-end"},
                 "my.scenario:1: the file no-such-file cannot be read\n");
}

TEST(Player, AProgramThatCannotBeStartedIsTold) {
    PlayOptions options;
    options.start.executable = "/no/such/program";
    std::ostringstream transcript;
    std::ostringstream errors;
    EXPECT_EQ(Play(ParseScenario("pause 1s", "my.scenario"), options, transcript, errors),
              Outcome::CannotStart);
    EXPECT_EQ(errors.str(), "/no/such/program cannot be started: No such file or directory\n");
}
