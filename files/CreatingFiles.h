#pragma once

#include "files/FileLocation.h"

#include <sys/types.h>

class FileRetryLog;

// Making files and directories, and changing who may do what with them.
//
// All throw EmptyFileLocationError for an empty location and what FileLocation::LibPath throws. A failure
// leaves nothing behind that was not there before.

// How a new file is made.
struct FileCreatingInfo {
    // The permission bits.
    mode_t mode = 0644;
};

// How a new directory is made.
struct DirectoryCreatingInfo {
    // The permission bits, of which the process's umask takes its own away.
    mode_t mode = 0755;
};

// Makes an empty file with exactly the mode: the umask has no say. Throws FileFoundError (EEXIST) if anything
// is there, a dangling link included, and FileCreateFailed with the error number otherwise.
void CreateFile(FileLocation const& location, FileCreatingInfo const& info = {});

// Makes a named pipe; the umask takes its bits away. Throws as CreateFile does.
void CreateFifo(FileLocation const& location, FileCreatingInfo const& info = {});

// Makes one directory. Throws DirectoryFoundError (EEXIST) if anything is there, and DirectoryCreateFailed
// with the error number otherwise.
void CreateDirectory(FileLocation const& location, DirectoryCreatingInfo const& info = {});

// The same for what the applications of the user who owns the process share: nobody else gets in (mode 0700).
void CreateDirectoryForUserAppAccess(FileLocation const& location);

// Makes the directory unless it is there; a link to a directory counts as one. Throws FileFoundError (EEXIST)
// if something else is there, and by ThrowFileError otherwise.
void ForceDirectoryExistence(FileLocation const& location, DirectoryCreatingInfo const& info = {});

// Makes the directory and all that is missing above it, each with the default mode. Throws FileFoundError,
// with the location of what stands on the way, if that is no directory; by ThrowFileError for what the system
// cannot even look for, such as DirectoryNotFoundError for a path or a component of it that is too long,
// before anything is made; DirectoryCreateFailed for a directory that cannot be made, after taking away those
// that were made here; InvalidFileLocation for a relative path whose first component is missing.
void CreateDirectoryTree(FileLocation const& location);

// Give and take the three bits of execution, or of writing, leaving the other bits. Links are followed. Throw
// by ThrowFileError.
void SetFileExecutable(FileLocation const& location, bool executable);
void SetFileReadOnly(FileLocation const& location, bool readOnly);

// The system calls of those names; they follow links. Throw by ThrowFileError.
void Chown(FileLocation const& location, uid_t owner, gid_t group);
void Chmod(FileLocation const& location, mode_t mode);

// Bytes that are free for ordinary users on the file system of the location; all ones when it cannot be asked
// or when the number would not fit into 63 bits.
std::uint64_t CalculateFreeSpace(FileLocation const& location);

// Does nothing here: no name is invalid on this platform.
void ForceRemoveInvalidFiles(FileLocation const& location, unsigned int);

// The same with further tries; see files/FileRetry.h. The words for the log are the names without
// "WithRetry".
void CreateFileWithRetry(FileLocation const& location, FileCreatingInfo const& info, FileRetryLog const& log);
void CreateDirectoryWithRetry(FileLocation const& location, DirectoryCreatingInfo const& info,
                              FileRetryLog const& log);
void ForceDirectoryExistenceWithRetry(FileLocation const& location, FileRetryLog const& log);
void ForceDirectoryExistenceWithInfoWithRetry(FileLocation const& location, DirectoryCreatingInfo const& info,
                                              FileRetryLog const& log);

// The work of the functions above, which do no more than refuse the empty location.
namespace UnixPlatform {

void CreateFile(FileLocation const& location, FileCreatingInfo const& info = {});
void CreateFifo(FileLocation const& location, FileCreatingInfo const& info = {});
void CreateDirectory(FileLocation const& location, DirectoryCreatingInfo const& info = {});
void CreateDirectoryForUserAppAccess(FileLocation const& location);
void ForceDirectoryExistence(FileLocation const& location, DirectoryCreatingInfo const& info = {});
void CreateDirectoryTree(FileLocation const& location);
void SetFileExecutable(FileLocation const& location, bool executable);
void SetFileReadOnly(FileLocation const& location, bool readOnly);
void Chown(FileLocation const& location, uid_t owner, gid_t group);
void Chmod(FileLocation const& location, mode_t mode);
std::uint64_t CalculateFreeSpace(FileLocation const& location);
void ForceRemoveInvalidFiles(FileLocation const& location, unsigned int);

// Blocks times their size in bytes; all ones when that would be negative as a signed number.
constexpr std::uint64_t BytesInBlocks(std::uint64_t blocks, std::uint64_t blockSize) {
    std::uint64_t const most = static_cast<std::uint64_t>(-1) / 2;
    return blockSize != 0 && blocks > most / blockSize ? static_cast<std::uint64_t>(-1) : blocks * blockSize;
}

} // namespace UnixPlatform
