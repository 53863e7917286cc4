// First: X.h defines names that the test framework uses.
#include <gtest/gtest.h>

#include "app/ExitCleanup.h"
#include "app/XHandlers.h"

#include "tests/app/ProcessStateFixture.h"

#include <chrono>
#include <functional>
#include <sys/wait.h>
#include <unistd.h>

class Exit : public ProcessStateTest {
protected:
    // The exit status of a child process that runs `body`, and how long it took.
    struct Outcome {
        int status;
        double seconds;
    };

    static Outcome RunInChild(std::function<void()> const& body) {
        auto const start = std::chrono::steady_clock::now();
        pid_t const child = fork();
        if (child == 0) {
            body();
            _exit(99);
        }
        int status = 0;
        EXPECT_EQ(waitpid(child, &status, 0), child);
        std::chrono::duration<double> const elapsed = std::chrono::steady_clock::now() - start;
        return {WIFEXITED(status) ? WEXITSTATUS(status) : -1, elapsed.count()};
    }
};

TEST_F(Exit, EndsWithItsStatusAfterTwoSecondsForTheLastMessages) {
    Outcome const outcome = RunInChild([] { ExitCleanup(0, "CLOSED"); });
    EXPECT_EQ(outcome.status, 0);
    EXPECT_GE(outcome.seconds, 1.99);
    EXPECT_LE(outcome.seconds, 6.0);
}

TEST_F(Exit, MinusOneShowsAs255) {
    EXPECT_EQ(RunInChild([] { ExitCleanup(-1, "Error: failed XtOpenDisplay"); }).status, 255);
}

TEST_F(Exit, FatalToolkitErrorEndsWithMinusOne) {
    std::string longMessage(5000, 'x');
    EXPECT_EQ(RunInChild([&] { Xt_ErrorHandler(longMessage.data()); }).status, 255);
    EXPECT_EQ(RunInChild([] { Xt_ErrorHandler(nullptr); }).status, 255);
}
