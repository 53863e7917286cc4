#pragma once

#include "files/FileStats.h"

#include <sys/stat.h>

// Whether the two ends of a copy or a move are one file, however their paths are spelled: what is at the
// target is deleted for what comes from the source, which must not be lost by that.
//
// They ask the system. All throw by ThrowFileError when it cannot tell, and what FileLocation::LibPath
// throws.

// A location with the status of what stands there.
struct FileWithInfo {
    FileLocation const& location;
    UnixPlatform::UnixFileInfo const& info;
};

// Whether both are the status of one file, which may have several names.
bool IsSameFile(struct stat const& a, struct stat const& b);

// Whether the target is the very name that a copy of the source, which follows links, would read from.
// Another hard link of the same file is another name.
bool IsCopyToItself(FileWithInfo const& source, FileWithInfo const& target);

// The same for a move, which does not follow links.
bool IsMoveToItself(FileWithInfo const& source, FileWithInfo const& target);

// Whether the source is a link, and the target what it leads to: a link moved there would lead to itself.
bool IsMoveOfLinkToItsTarget(FileWithInfo const& source, FileWithInfo const& target);

// Whether the source is a directory and the target stands somewhere in it.
bool IsMoveIntoItself(FileWithInfo const& source, FileWithInfo const& target);
