#include "files/FileStats.h"

#include "files/FileErrors.h"

#include <cerrno>
#include <tuple>

namespace {

Instant InstantOfSeconds(time_t seconds) {
    return UnixPlatform::FileTimeToInstant(
        Instant::FromMicroseconds(WrappingProduct(seconds, cMicrosecondsPerSecond)));
}

auto Fields(timespec const& time) {
    return std::tie(time.tv_sec, time.tv_nsec);
}

auto Fields(struct stat const& status) {
    return std::tuple_cat(std::tie(status.st_dev, status.st_ino, status.st_mode, status.st_nlink,
                                   status.st_uid, status.st_gid, status.st_rdev, status.st_size,
                                   status.st_blksize, status.st_blocks),
                          Fields(status.st_atim), Fields(status.st_mtim), Fields(status.st_ctim));
}

} // namespace

// A call that fails leaves its record as it is, and the records are cleared first.
int FileStats::get(char const* path) noexcept {
    *this = FileStats();
    if (lstat(path, &link) != 0) return errno;
    if (!S_ISLNK(link.st_mode)) {
        target = link;
        state = cFileExists;
        return 0;
    }
    if (stat(path, &target) != 0) {
        state = cDanglingLink;
        return errno;
    }
    state = cLinkToFile;
    return 0;
}

bool IsSameFile(struct stat const& a, struct stat const& b) noexcept {
    return a.st_dev == b.st_dev && a.st_ino == b.st_ino;
}

namespace UnixPlatform {

int UnixFileInfo::Set(FileLocation const& location) {
    return m_stats.get(location.LibPath().c_str());
}

Instant UnixFileInfo::ModificationTime() const {
    return InstantOfSeconds(m_stats.target.st_mtim.tv_sec);
}

Instant UnixFileInfo::AccessTime() const {
    return InstantOfSeconds(m_stats.target.st_atim.tv_sec);
}

void UnixFileInfo::SetModificationTime(Instant const& time) {
    m_stats.target.st_mtim.tv_sec = InstantToFileTime(time).Microseconds() / cMicrosecondsPerSecond;
    m_stats.target.st_mtim.tv_nsec = 0;
}

bool operator==(UnixFileInfo const& a, UnixFileInfo const& b) noexcept {
    return a.m_stats.state == b.m_stats.state && Fields(a.m_stats.target) == Fields(b.m_stats.target) &&
           Fields(a.m_stats.link) == Fields(b.m_stats.link);
}

} // namespace UnixPlatform
