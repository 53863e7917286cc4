#pragma once

#include "files/FileLocation.h"

class FileRetryLog;

// Deleting files and directories.
//
// A symbolic link is deleted and never followed, neither one that is named nor one that is met in a tree; the
// one exception is DeleteContents. To delete a directory, a "/" or "/." at the end of its name does not
// count, by which the system would follow a link: "link/." means the link. A ".." counts: "link/.." is the
// directory above the one that the link leads to. Trees may be of any depth, beyond the longest path of the
// system too: they are walked with a handful of descriptors and without recursion. A file system that is
// mounted within a tree is not entered but fails the operation (EBUSY). What disappears meanwhile by itself
// is no failure. The first failure ends the operation and names the very file; what has been deleted stays
// so.
//
// All throw EmptyFileLocationError for an empty location and what FileLocation::LibPath throws; otherwise by
// ThrowFileError.

// Deletes what is no directory.
void DeleteFile(FileLocation const& location);

// Deletes an empty directory, or a link to a directory. Throws DirectoryNotFoundError for anything else and
// for nothing (ENOTDIR, ENOENT).
void DeleteDirectory(FileLocation const& location);

// Deletes whatever is there; a directory has to be empty. Nothing there is no failure.
void ForceNonexistence(FileLocation const& location);

// Deletes all that is in the directory; it stays. The location may be a link to a directory: that one is
// meant then. Throws DirectoryNotFoundError when there is no directory, and FilePermissionError (EPERM) for
// the root directory, however its name is written.
void DeleteContents(FileLocation const& location);

// Deletes the directory with all that is in it. Of a link to a directory only the link. Throws as
// DeleteContents does. A directory that is empty need not be readable.
void DeleteRecursive(FileLocation const& location);

// The same, and nothing there is no failure.
void ForceDeleteContents(FileLocation const& location);
void ForceDeleteRecursive(FileLocation const& location);

// The same with further tries; see files/FileRetry.h. The words for the log are the names without
// "WithRetry", except for the two that force a deletion: "DeleteRecursive" and "DeleteContents".
void DeleteFileWithRetry(FileLocation const& location, FileRetryLog const& log);
void DeleteDirectoryWithRetry(FileLocation const& location, FileRetryLog const& log);
void ForceNonexistenceWithRetry(FileLocation const& location, FileRetryLog const& log);
void ForceDeleteRecursiveWithRetry(FileLocation const& location, FileRetryLog const& log);
void ForceDeleteContents(FileLocation const& location, FileRetryLog const& log);

// The work of the functions above, which do no more than refuse the empty location.
namespace UnixPlatform {

void DeleteFile(FileLocation const& location);
void DeleteDirectory(FileLocation const& location);
void ForceNonexistence(FileLocation const& location);
void DeleteContents(FileLocation const& location);
void DeleteRecursive(FileLocation const& location);
void ForceDeleteContents(FileLocation const& location);
void ForceDeleteRecursive(FileLocation const& location);

} // namespace UnixPlatform
