#pragma once

#include <functional>
#include <string>

// Something that another process does just before the library asks for the status of a file, for programs
// that have BeforeStatus.cpp among their sources and are linked with LINKER:--wrap=lstat.

// For its scope, called with the path in front of each lstat of the program's own. One at a time.
class BeforeStatus {
public:
    explicit BeforeStatus(std::function<void(std::string const& path)> act);
    BeforeStatus(BeforeStatus const&) = delete;
    BeforeStatus& operator=(BeforeStatus const&) = delete;
    ~BeforeStatus();
};
