#pragma once

#include <algorithm>
#include <chrono>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <sys/types.h>
#include <thread>
#include <vector>

// What /proc tells of a running process, for the programs that measure one from outside.

inline std::string ProcFile(pid_t process, char const* name) {
    return "/proc/" + std::to_string(process) + "/" + name;
}

// The value of a "Name:   123 kB" line of /proc/PID/status; 0 when the process is gone.
inline double StatusValue(pid_t process, std::string const& name) {
    std::ifstream status(ProcFile(process, "status"));
    for (std::string line; std::getline(status, line);)
        if (line.starts_with(name)) return std::atof(line.c_str() + name.size() + 1);
    return 0;
}

// Time on a processor that the process's main thread has had so far.
inline double CpuMilliseconds(pid_t process) {
    std::ifstream statistics(ProcFile(process, "schedstat"));
    double nanoseconds = 0;
    statistics >> nanoseconds;
    return nanoseconds / 1e6;
}

// Open descriptors.
inline long Descriptors(pid_t process) {
    std::filesystem::directory_iterator const descriptors(ProcFile(process, "fd"));
    return std::distance(begin(descriptors), end(descriptors));
}

// Returns when VRKClientUI has had nothing to do but its ticks for a while. What was sent before is done
// then: it is begun within a second.
inline void WaitUntilIdle(pid_t process) {
    constexpr std::chrono::milliseconds cTick(1200);
    constexpr double cMillisecondsOfTick = 1;
    double before = 0;
    std::this_thread::sleep_for(cTick);
    do {
        before = CpuMilliseconds(process);
        std::this_thread::sleep_for(cTick);
    } while (CpuMilliseconds(process) - before > cMillisecondsOfTick);
}

// Of an even number of values the upper one in the middle. There must be one.
inline double Median(std::vector<double> values) {
    std::sort(values.begin(), values.end());
    return values[values.size() / 2];
}
