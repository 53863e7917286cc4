#pragma once

#include "tests/support/BeforeStatus.h"

#include <filesystem>
#include <string>

// For its scope, another process that deletes a file, or an empty directory, just before it is asked for its
// status so many times. One at a time.
class DisappearingFile {
public:
    DisappearingFile(std::string const& path, int time)
        : m_before([path, time, asked = 0](std::string const& askedPath) mutable {
              if (askedPath == path && ++asked == time) std::filesystem::remove(path);
          }) {}

private:
    BeforeStatus m_before;
};
