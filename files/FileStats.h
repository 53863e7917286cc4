#pragma once

#include "files/FileLocation.h"
#include "time/Instant.h"

#include <cstdint>
#include <sys/stat.h>

enum FileStatsState : std::int32_t {
    // The path exists and is not a symbolic link.
    cFileExists = 0,
    // A symbolic link whose target exists.
    cLinkToFile = 1,
    // A symbolic link whose target does not exist, or cannot be reached.
    cDanglingLink = 2,
    // Nothing is there, or nothing can be learnt of it.
    cNoFile = 3,
};

// The status of one path.
struct FileStats {
    FileStatsState state = cNoFile;
    // Of what the path leads to; all zeros in cDanglingLink and cNoFile.
    struct stat target = {};
    // Of what stands under the path itself; all zeros in cNoFile.
    struct stat link = {};

    // Fills all three. Returns 0, or the error number of the system: in cNoFile that of the path, in
    // cDanglingLink that of the target.
    int get(char const* path) noexcept;
};

// Whether both are the status of one file, which may have several names.
bool IsSameFile(struct stat const& a, struct stat const& b) noexcept;

namespace UnixPlatform {

// Times of files and instants count alike on this platform: microseconds.
using FileTime = Instant;
constexpr Instant FileTimeToInstant(FileTime time) {
    return time;
}
constexpr FileTime InstantToFileTime(Instant time) {
    return time;
}

// The status of the file at a location. A value; it knows the file as it was when it was set. Unless said
// otherwise, links are followed.
class UnixFileInfo {
public:
    // Knows of no file.
    UnixFileInfo() = default;

    // Asks the system for the status. Returns 0 or the error number, as FileStats::get does, and throws only
    // what FileLocation::LibPath throws; the status is then as it was.
    int Set(FileLocation const& location);

    FileStats const& Stats() const { return m_stats; }
    FileStatsState State() const { return m_stats.state; }
    // Whether anything stands there, a dangling link included.
    bool Exists() const { return m_stats.state != cNoFile; }
    // Whether the path itself is a symbolic link, dangling or not.
    bool IsLink() const { return S_ISLNK(m_stats.link.st_mode); }
    // What the path leads to; both false for a dangling link and for nothing.
    bool IsDirectory() const { return S_ISDIR(m_stats.target.st_mode); }
    bool IsRegularFile() const { return S_ISREG(m_stats.target.st_mode); }

    // In whole seconds. Times beyond the range of Instant wrap around.
    Instant ModificationTime() const;
    Instant AccessTime() const;
    // Changes the value only, not the file; what is less than a second is cut off, towards 1970.
    void SetModificationTime(Instant const& time);

    // Same state and same status in all that the system tells, times of access included.
    friend bool operator==(UnixFileInfo const& a, UnixFileInfo const& b) noexcept;

private:
    FileStats m_stats;
};

} // namespace UnixPlatform
