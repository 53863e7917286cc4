#pragma once

#include "files/FileLocation.h"

class FileRetryLog;

// Copying and moving.
//
// All throw EmptyFileLocationError when either location is empty, and what FileLocation::LibPath throws.
// Errors of reading and writing come as FileReadingPath, FileReader, FileWritingPath and FileWriter throw
// them. A copy is of the bytes alone: it gets the permissions of any new file. A copy that fails leaves the
// part that was written.
//
// The two locations may be names of one file, however they are spelled. A name given twice stays, and so does
// the file behind a link that is given as the source: nothing is lost. What is moved, or deleted for what
// comes in its place, is what stands under the last name itself, as in files/DeletingFiles.h: "link/." means
// the link.
//
// Copying goes by path, from directory to directory: whoever may write in the source meanwhile decides what
// is copied, and may put a link to elsewhere in the place of a file or directory.

// Copies a file to a location where nothing is. Throws FileNotFoundError if there is no source, a dangling
// link counting as none, and FileExistsError (EEXIST) if anything is at the target. A named pipe is read
// until its writers have closed it, after waiting for one to open it.
void CopyFile(FileLocation const& source, FileLocation const& target);

// The same, deleting first what is at the target, which must not be a directory with anything in it; a file
// copied to itself stays as it is, and of two hard links the target becomes a file of its own. Throws
// FileNotFoundError if the source is no regular file.
void ForceCopyFile(FileLocation const& source, FileLocation const& target);

// Moves a file, directory or link to a location where nothing is. To another file system it goes by copying
// and deleting, as CopyFile or CopyDirectoryContents copy. A failure behind the copy leaves it whole, and of
// the source what could not be deleted: all of a file, and of a directory what the deletion had not come to.
// A failure within the copy leaves the source and what has been copied. Throws FileNotFoundError if there is
// no source, FileIOError with the target and code 0 if anything is at the target, and FileMoveError with both
// locations and the error number otherwise. That is EXDEV also for what cannot be copied to another file
// system, such as a named pipe, and EINVAL for a target within the directory that would be moved or copied,
// before anything is made.
void MoveFile(FileLocation const& source, FileLocation const& target);

// The same, deleting first what is at the target; a directory there has to be empty. What is moved to itself
// stays; a link moved to the very name that it leads to is deleted, and the file of that name stays. Throws
// FileNotFoundError if there is no source, and DirectoryFoundError (EISDIR) if just one of the two is a
// regular file: with the source if that is a directory, otherwise with the target. Throws InvalidStats if one
// of the two disappears meanwhile, and FileMoveError (EINVAL), leaving both, for a target within the source,
// for a directory that the source is a link to, and for anything else that the way to the source leads
// through, such as a link that the source is a link to: without it the source would lead nowhere. A move
// that fails later has deleted the target.
void ForceMoveFile(FileLocation const& source, FileLocation const& target);

// Copies all files and directories in a directory to another one, which is made if it is missing. Each file
// is tried for as long as CopyFileWithRetry tries; one that is at the target already fails it. Links to files
// are copied as files. Links to directories are copied as links, just as they are written (copying through
// them might never end); what is at the target already fails them with FileExistsError. Throws
// DirectoryNotFoundError if there is no source, and FileItemError for an item that is neither file nor
// directory, such as a named pipe or a dangling link, and for the target itself within the source.
void CopyDirectoryContents(FileLocation const& source, FileLocation const& target);

// The same with further tries; see files/FileRetry.h. The words for the log are the names without
// "WithRetry". A copy that has begun to write fails at each further try, since the file is there now.
void CopyFileWithRetry(FileLocation const& source, FileLocation const& target, FileRetryLog const& log);
void ForceCopyFileWithRetry(FileLocation const& source, FileLocation const& target, FileRetryLog const& log);
void MoveFileWithRetry(FileLocation const& source, FileLocation const& target, FileRetryLog const& log);
void ForceMoveFileWithRetry(FileLocation const& source, FileLocation const& target, FileRetryLog const& log);

// The work of the functions above, which do no more than refuse empty locations.
namespace UnixPlatform {

void CopyFile(FileLocation const& source, FileLocation const& target);
void ForceCopyFile(FileLocation const& source, FileLocation const& target);
void MoveFile(FileLocation const& source, FileLocation const& target);
void ForceMoveFile(FileLocation const& source, FileLocation const& target);
void CopyDirectoryContents(FileLocation const& source, FileLocation const& target);

} // namespace UnixPlatform
