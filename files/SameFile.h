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

// Whether the target is the very name that a copy of the source, which follows links, would read from.
// Another hard link of the same file is another name.
bool IsCopyToItself(FileWithInfo const& source, FileWithInfo const& target);

// The same for a move, which does not follow links.
bool IsMoveToItself(FileWithInfo const& source, FileWithInfo const& target);

// Whether the source is a link, and the target the very name that it leads to in the end: a link moved there
// would lead to itself.
bool IsMoveOfLinkToItsTarget(FileWithInfo const& source, FileWithInfo const& target);

// Whether the way to the source, and on from there if it is a link, goes by the target: with that deleted,
// the source is not found any more, or is a link that leads to itself. So it is of a link and what it leads
// to, and of the links in between.
bool IsMoveOntoItsWay(FileWithInfo const& source, FileWithInfo const& target);

// Whether the source is a directory and the target stands somewhere in it. A link may go into the directory
// that it leads to, but not to another file system, where the move becomes a copy of that directory.
bool IsMoveIntoItself(FileWithInfo const& source, FileWithInfo const& target);

// Whether a copy of the source, which follows links, is to stand in the directory that it is made of. Nothing
// has to be at the target yet.
bool IsCopyIntoItself(FileWithInfo const& source, FileLocation const& target);
