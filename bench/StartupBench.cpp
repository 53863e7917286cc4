// Time from starting a program to its first byte on the pipe, and its resident size while it waits, for
// VRKClientUI and for an empty program with the same libraries, in turn.
//
// usage: bench_startup VRKCLIENTUI EMPTY_PROGRAM [RUNS]

#include "bench/ProcessFigures.h"

#include <algorithm>
#include <chrono>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>
#include <vector>

namespace {

constexpr std::chrono::milliseconds cSettlingTime{50};

struct Run {
    double microseconds;
    double residentKiB;
};

Run Measure(char const* program) {
    int toProgram[2];
    int fromProgram[2];
    if (pipe(toProgram) != 0 || pipe(fromProgram) != 0) std::exit(1);
    auto const start = std::chrono::steady_clock::now();
    pid_t const process = vfork();
    if (process == 0) {
        dup2(toProgram[0], STDIN_FILENO);
        dup2(fromProgram[1], STDOUT_FILENO);
        for (int const end : {toProgram[0], toProgram[1], fromProgram[0], fromProgram[1]}) close(end);
        execl(program, program, static_cast<char*>(nullptr));
        _exit(127);
    }
    close(toProgram[0]);
    close(fromProgram[1]);
    char byte = 0;
    bool const spoke = read(fromProgram[0], &byte, 1) == 1;
    std::chrono::duration<double, std::micro> const elapsed = std::chrono::steady_clock::now() - start;
    std::this_thread::sleep_for(cSettlingTime);
    Run const run{elapsed.count(), StatusValue(process, "VmRSS")};
    kill(process, SIGKILL);
    waitpid(process, nullptr, 0);
    close(toProgram[1]);
    close(fromProgram[0]);
    if (!spoke) {
        std::fprintf(stderr, "%s ended without a word\n", program);
        std::exit(1);
    }
    return run;
}

void Print(char const* name, std::vector<Run> const& runs) {
    std::vector<double> times;
    std::vector<double> sizes;
    for (Run const& run : runs) {
        times.push_back(run.microseconds);
        sizes.push_back(run.residentKiB);
    }
    std::printf("%-16s first byte after %7.0f us (median; least %.0f), resident %6.0f KiB\n", name,
                Median(times), *std::min_element(times.begin(), times.end()), Median(sizes));
}

} // namespace

int main(int argumentCount, char** arguments) {
    if (argumentCount < 3) {
        std::fprintf(stderr, "usage: %s VRKCLIENTUI EMPTY_PROGRAM [RUNS]\n", arguments[0]);
        return 2;
    }
    int const runs = argumentCount > 3 ? std::atoi(arguments[3]) : 50;
    Measure(arguments[1]);
    Measure(arguments[2]);
    std::vector<Run> ours;
    std::vector<Run> empty;
    for (int run = 0; run < runs; ++run) {
        ours.push_back(Measure(arguments[1]));
        empty.push_back(Measure(arguments[2]));
    }
    Print("VRKClientUI", ours);
    Print("empty program", empty);
}
