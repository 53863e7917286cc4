#pragma once

#include "files/FileLocation.h"

// Places for temporary files, and unique names.
//
// A unique name is the hint with six characters of the system's choice behind it. A hint is the program's
// own: it is taken as it is written, so that one with a "/" leads into another directory, be it by "..". The
// system reads it up to a NUL, which must have six times "X" in front of it then (EINVAL). Making a name
// throws CreateUniqueFileLocationFailed with the error number, with ENAMETOOLONG also for a path of 4096
// bytes or more, and EmptyFileLocationError for an empty directory.

// "/tmp", which is made if it is missing. One location for the process, which lives for ever.
FileLocation const& TemporaryFileDirLocation();
// Settles TemporaryFileDirLocation() at start-up.
void InitializeTemporaryFileDirLocation();

// Where the session's files go unless the client says otherwise: "/tmp/VRK/ClientUI" for an empty name, and
// "/tmp/VRK/ClientUI/.name" for "name". Nothing is made. Throws IllegalFileName for a name that would not
// stand there as one component: "." (it would give ".."), one with a "/" or a NUL, and one that is no UTF-8.
FileLocation UISessionDefaultDirectory(UStringRef<UTF8> const& name);

// Make an empty file (mode 0600) or directory (mode 0700) of a unique name in a directory, which has to be
// there.
FileLocation CreateUniqueFileLocation(FileLocation const& directory, UStringRef<UTF8> const& hint);
FileLocation CreateUniqueDirLocation(FileLocation const& directory, UStringRef<UTF8> const& hint);
// The same for a named pipe. Its name is free for a moment before the pipe is made: a file that comes first
// makes it throw FileFoundError. Throws FileCreateFailed as CreateFifo does.
FileLocation CreateUniquePipeLocation(FileLocation const& directory, UStringRef<UTF8> const& hint);

// The same in the temporary directory, which is made anew if it has gone.
FileLocation CreateUniqueFileLocation(UStringRef<UTF8> const& hint);
FileLocation CreateUniquePipeLocation(UStringRef<UTF8> const& hint);

// A new file in the location, if that is a directory, otherwise beside it; the directory is made if it is
// missing. Throws what CreateDirectoryTree and FileLocation::Parent throw, too.
FileLocation CreateUniqueFileLocationWithHint(FileLocation const& location, UStringRef<UTF8> const& hint);

// A name that begins with "temp" and is free, though not reserved: in the temporary directory, or in or
// beside a location as above, the directory having to be there.
FileLocation LocationForTemporaryFile();
FileLocation LocationForTemporaryFile(FileLocation const& location);

// Makes a new file in the temporary directory and sets `location` to it. An empty hint stands for "varnik".
void MakeTemporaryFileLocation(FileLocation& location, UStringRef<UTF8> const& hint);

// The numbers of a name that begins with a date as "20240229" does. Throws IllegalFileName, changing none of
// them, when the name does not begin with eight digits; any digits do. Throws what FileLocation::Name throws.
void GetDateFromNameInFileLocation(FileLocation const& location, unsigned int& year, unsigned int& month,
                                   unsigned int& day);

// The work of the functions above on one directory, which do no more than refuse the empty location.
namespace UnixPlatform {

FileLocation CreateUniqueFileLocation(FileLocation const& directory, UStringRef<UTF8> const& hint);
FileLocation CreateUniqueDirLocation(FileLocation const& directory, UStringRef<UTF8> const& hint);
FileLocation CreateUniquePipeLocation(FileLocation const& directory, UStringRef<UTF8> const& hint);

} // namespace UnixPlatform
