#pragma once

#include "files/FileLocation.h"
#include "link/FileTransfer.h"

#include <vector>

// The directory that the client names for the files of this session. Nothing outside it is touched.

// Empties the directory, or makes it with every ancestor that is missing.
//
// Throws the errors of files, among them FilePermissionError for the root, by whatever name, and for a
// directory that belongs neither to this user nor to the superuser, or whose path names a link that does not
// (links further up in the path, or behind that one, are not asked whose they are); IllegalFileName for a
// path with a NUL or one that is not strict UTF-8; EmptyFileLocationError for no path. In all of these cases
// nothing has been removed.
void PrepareSessionDirectory(FileLocation const& directory);

// Where a file of that name stands in the directory. Throws IllegalFileName for a name that does not stand
// directly in it: an empty one, ".", "..", one with a "/" or a NUL, and one that is not strict UTF-8.
FileLocation LocationInDirectory(FileLocation const& directory, FileName const& name);

// Writes each file directly into the directory, whatever its sub-folder, in order: the later of two files of
// one name is the one that stays. Throws LocationInDirectory's errors and those of files; the files before
// the one that failed have been written then.
void WriteSupportFiles(FileLocation const& directory, std::vector<FileTransfer> const& files);
