#include "files/CreatingFiles.h"

#include "files/DirectoryCheck.h"
#include "files/FileCalls.h"
#include "files/FileRetry.h"
#include "files/NonEmptyLocation.h"

#include <algorithm>
#include <cerrno>
#include <climits>
#include <fcntl.h>
#include <sys/stat.h>
#include <sys/statvfs.h>
#include <unistd.h>
#include <vector>

namespace {

constexpr DirectoryCreatingInfo cUserAppAccess{.mode = 0700};
constexpr mode_t cExecuteBits = 0111;
constexpr mode_t cWriteBits = 0222;
constexpr mode_t cModeBits = 07777;

[[noreturn]] void ThrowCreateFailure(FileLocation const& location, int code) {
    if (code == EEXIST) throw FileFoundError(location, code);
    throw FileCreateFailed(location, code);
}

int MakeDirectory(FileLocation const& location, DirectoryCreatingInfo const& info) {
    return mkdir(location.LibPath().c_str(), info.mode) == 0 ? 0 : errno;
}

// True for a directory and false for nothing; throws FileFoundError for anything else and by ThrowFileError
// for what the system cannot tell. A file in the place of a directory above counts as nothing.
bool IsDirectoryThere(FileLocation const& location) {
    UnixPlatform::UnixFileInfo info;
    int const code = info.Set(location);
    if (info.IsDirectory()) return true;
    if (info.Exists()) throw FileFoundError(location, EEXIST);
    if (!MeansNothingThere(code)) ThrowFileError(location, code);
    return false;
}

// Throws for a component of more than NAME_MAX bytes, which the usual file systems refuse, but only when all
// above it is there.
void RefuseLongComponents(FileLocation const& location) {
    AutoNullTerminated<Local8Bit> const path = location.LibPath();
    auto const* start = path.begin();
    while (true) {
        auto const* const slash = std::find(start, path.end(), '/');
        if (slash - start > NAME_MAX) ThrowFileError(location, ENAMETOOLONG);
        if (slash == path.end()) return;
        start = slash + 1;
    }
}

// The directories that are missing, the location itself first and the topmost last.
std::vector<FileLocation> MissingDirectories(FileLocation const& location) {
    std::vector<FileLocation> missing;
    FileLocation current(location);
    while (!IsDirectoryThere(current)) {
        FileLocation parent = current.Parent();
        missing.push_back(std::move(current));
        current = std::move(parent);
    }
    return missing;
}

// Takes its directories away again unless they are to stay. Those that are not empty any more stay anyway.
class MadeDirectories {
public:
    // Up to so many, so that none is made and then lost for want of memory.
    explicit MadeDirectories(std::size_t count) { m_paths.reserve(count); }
    MadeDirectories(MadeDirectories const&) = delete;
    MadeDirectories& operator=(MadeDirectories const&) = delete;
    ~MadeDirectories() {
        for (auto path = m_paths.rbegin(); path != m_paths.rend(); ++path) rmdir(path->c_str());
    }

    // One that another process has made meanwhile, or that was there under another name ("x/.."), is as good.
    void Make(FileLocation const& location) {
        AutoNullTerminated<Local8Bit> path = location.LibPath();
        int const code = MakeDirectory(location, DirectoryCreatingInfo());
        if (code == 0) {
            m_paths.push_back(std::move(path));
        } else if (code != EEXIST || !IsDirectoryThere(location)) {
            throw DirectoryCreateFailed(location, code);
        }
    }
    void Keep() { m_paths.clear(); }

private:
    std::vector<AutoNullTerminated<Local8Bit>> m_paths;
};

void ChangeMode(FileLocation const& location, mode_t bits, bool set) {
    AutoNullTerminated<Local8Bit> const path = location.LibPath();
    struct stat status = {};
    if (stat(path.c_str(), &status) != 0) ThrowFileError(location, errno);
    mode_t const mode = status.st_mode & cModeBits;
    if (chmod(path.c_str(), set ? mode | bits : mode & ~bits) != 0) ThrowFileError(location, errno);
}

} // namespace

namespace UnixPlatform {

void CreateFile(FileLocation const& location, FileCreatingInfo const& info) {
    AutoNullTerminated<Local8Bit> const path = location.LibPath();
    int const descriptor = CallUninterrupted(
        [&] { return open(path.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, info.mode); });
    if (descriptor == -1) ThrowCreateFailure(location, errno);
    int const code = fchmod(descriptor, info.mode) == 0 ? 0 : errno;
    close(descriptor);
    if (code == 0) return;
    unlink(path.c_str());
    ThrowCreateFailure(location, code);
}

void CreateFifo(FileLocation const& location, FileCreatingInfo const& info) {
    auto const path = location.LibPath();
    if (mkfifo(path.c_str(), info.mode) != 0) ThrowCreateFailure(location, errno);
}

void CreateDirectory(FileLocation const& location, DirectoryCreatingInfo const& info) {
    int const code = MakeDirectory(location, info);
    if (code == EEXIST) throw DirectoryFoundError(location, code);
    if (code != 0) throw DirectoryCreateFailed(location, code);
}

void CreateDirectoryForUserAppAccess(FileLocation const& location) {
    UnixPlatform::CreateDirectory(location, cUserAppAccess);
}

void ForceDirectoryExistence(FileLocation const& location, DirectoryCreatingInfo const& info) {
    if (IsDirectoryThere(location)) return;
    int const code = MakeDirectory(location, info);
    // Another process may have been quicker.
    if (code == EEXIST && IsDirectoryThere(location)) return;
    ThrowFileError(location, code);
}

void CreateDirectoryTree(FileLocation const& location) {
    if (IsDirectoryThere(location)) return;
    RefuseLongComponents(location);
    std::vector<FileLocation> missing = MissingDirectories(location);
    MadeDirectories made(missing.size());
    for (; !missing.empty(); missing.pop_back()) made.Make(missing.back());
    made.Keep();
}

void SetFileExecutable(FileLocation const& location, bool executable) {
    ChangeMode(location, cExecuteBits, executable);
}

void SetFileReadOnly(FileLocation const& location, bool readOnly) {
    ChangeMode(location, cWriteBits, !readOnly);
}

void Chown(FileLocation const& location, uid_t owner, gid_t group) {
    auto const path = location.LibPath();
    if (chown(path.c_str(), owner, group) != 0) ThrowFileError(location, errno);
}

void Chmod(FileLocation const& location, mode_t mode) {
    auto const path = location.LibPath();
    if (chmod(path.c_str(), mode) != 0) ThrowFileError(location, errno);
}

std::uint64_t CalculateFreeSpace(FileLocation const& location) {
    struct statvfs status = {};
    int const result = CallUninterrupted([&] { return statvfs(location.LibPath().c_str(), &status); });
    if (result != 0) return static_cast<std::uint64_t>(-1);
    return BytesInBlocks(status.f_bavail, status.f_frsize);
}

void ForceRemoveInvalidFiles(FileLocation const&, unsigned int) {
}

} // namespace UnixPlatform

void CreateFile(FileLocation const& location, FileCreatingInfo const& info) {
    UnixPlatform::CreateFile(NonEmpty(location), info);
}

void CreateFifo(FileLocation const& location, FileCreatingInfo const& info) {
    UnixPlatform::CreateFifo(NonEmpty(location), info);
}

void CreateDirectory(FileLocation const& location, DirectoryCreatingInfo const& info) {
    UnixPlatform::CreateDirectory(NonEmpty(location), info);
}

void CreateDirectoryForUserAppAccess(FileLocation const& location) {
    UnixPlatform::CreateDirectoryForUserAppAccess(NonEmpty(location));
}

void ForceDirectoryExistence(FileLocation const& location, DirectoryCreatingInfo const& info) {
    UnixPlatform::ForceDirectoryExistence(NonEmpty(location), info);
}

void CreateDirectoryTree(FileLocation const& location) {
    UnixPlatform::CreateDirectoryTree(NonEmpty(location));
}

void SetFileExecutable(FileLocation const& location, bool executable) {
    UnixPlatform::SetFileExecutable(NonEmpty(location), executable);
}

void SetFileReadOnly(FileLocation const& location, bool readOnly) {
    UnixPlatform::SetFileReadOnly(NonEmpty(location), readOnly);
}

void Chown(FileLocation const& location, uid_t owner, gid_t group) {
    UnixPlatform::Chown(NonEmpty(location), owner, group);
}

void Chmod(FileLocation const& location, mode_t mode) {
    UnixPlatform::Chmod(NonEmpty(location), mode);
}

std::uint64_t CalculateFreeSpace(FileLocation const& location) {
    return UnixPlatform::CalculateFreeSpace(NonEmpty(location));
}

void ForceRemoveInvalidFiles(FileLocation const& location, unsigned int argument) {
    UnixPlatform::ForceRemoveInvalidFiles(NonEmpty(location), argument);
}

void CreateFileWithRetry(FileLocation const& location, FileCreatingInfo const& info,
                         FileRetryLog const& log) {
    RetryFileOperation(cRetrySchedule, "CreateFile"_utf8, &location, nullptr, log,
                       [&] { CreateFile(location, info); });
}

void CreateDirectoryWithRetry(FileLocation const& location, DirectoryCreatingInfo const& info,
                              FileRetryLog const& log) {
    RetryFileOperation(cRetrySchedule, "CreateDirectory"_utf8, &location, nullptr, log,
                       [&] { CreateDirectory(location, info); });
}

void ForceDirectoryExistenceWithRetry(FileLocation const& location, FileRetryLog const& log) {
    RetryFileOperation(cRetrySchedule, "ForceDirectoryExistence"_utf8, &location, nullptr, log,
                       [&] { ForceDirectoryExistence(location); });
}

void ForceDirectoryExistenceWithInfoWithRetry(FileLocation const& location, DirectoryCreatingInfo const& info,
                                              FileRetryLog const& log) {
    RetryFileOperation(cRetrySchedule, "ForceDirectoryExistenceWithInfo"_utf8, &location, nullptr, log,
                       [&] { ForceDirectoryExistence(location, info); });
}
