#pragma once

#include "files/FileErrors.h"
#include "files/FileStats.h"

#include <cerrno>

// Whether a status could not be learnt because nothing is there.
inline bool MeansNothingThere(int code) {
    return code == ENOENT || code == ENOTDIR;
}

// The status of a directory or of a link to one. Throws DirectoryNotFoundError for anything else and for
// nothing (ENOTDIR, ENOENT), and by ThrowFileError when it cannot be learnt.
inline UnixPlatform::UnixFileInfo RequireDirectory(FileLocation const& location) {
    UnixPlatform::UnixFileInfo info;
    int const code = info.Set(location);
    if (info.IsDirectory()) return info;
    if (info.Exists()) throw DirectoryNotFoundError(location, ENOTDIR);
    if (!MeansNothingThere(code)) ThrowFileError(location, code);
    throw DirectoryNotFoundError(location, code);
}
