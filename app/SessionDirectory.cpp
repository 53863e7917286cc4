#include "app/SessionDirectory.h"

#include "files/ChildLocation.h"
#include "files/FileErrors.h"
#include "files/FileOperations.h"
#include "files/FileStats.h"
#include "files/OwnLocation.h"
#include "foundation/Exceptions.h"
#include "text/IsUTF8.h"

#include <algorithm>
#include <cerrno>
#include <fcntl.h>
#include <string>
#include <unistd.h>

namespace {

bool Holds(ConstData path, unsigned char byte) {
    return std::find(path.begin(), path.end(), byte) != path.end();
}

// Conversion to the encoding of the locale reads a "/", a "." and a NUL out of overlong forms too, so that
// only strict UTF-8 is what it seems to be.
bool IsPlainText(ConstData path) {
    return IsUTF8(path) && !Holds(path, 0);
}

bool IsTrusted(uid_t owner) {
    return owner == geteuid() || owner == 0;
}

UnixPlatform::UnixFileInfo InfoOf(FileLocation const& directory) {
    UnixPlatform::UnixFileInfo info;
    int const error = info.Set(directory);
    // A path that is too long, or leads through something else than directories, is not gone into.
    if (error != ENOENT || info.State() != cNoFile) ThrowFileError(directory, error);
    return info;
}

int OpenDirectory(FileLocation const& path) {
    AutoNullTerminated<Local8Bit> const name = path.LibPath();
    int const descriptor = open(name.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (descriptor == -1) ThrowFileError(path, errno);
    return descriptor;
}

// Makes what is missing; the path without what makes the system follow a link at its end.
FileLocation MadeDirectory(FileLocation const& path) {
    if (path.empty()) throw EmptyFileLocationError(path, 0);
    if (!IsPlainText(path.Raw())) throw IllegalFileName();
    FileLocation const directory = OwnLocation(path);
    if (!InfoOf(directory).Exists()) CreateDirectoryTree(directory);
    return directory;
}

// Somebody else's directory is left alone: whoever can name it, or link to it, must not have the files in it
// removed in the user's name.
void RequireTrust(FileLocation const& path, struct stat const& opened) {
    UnixPlatform::UnixFileInfo const info = InfoOf(path);
    bool const isTrusted = IsTrusted(opened.st_uid) && IsTrusted(info.Stats().link.st_uid);
    if (!isTrusted || !IsSameFile(opened, info.Stats().target)) throw FilePermissionError(path, EPERM);
}

} // namespace

SessionDirectory::Descriptor::~Descriptor() {
    close(number);
}

// The path is looked at after the directory has been opened, so that the one that is used is the one that was
// found to be trusted. A path with ".." may lead through what is not there yet to what is: what has been made
// is looked at as well.
SessionDirectory::SessionDirectory(FileLocation const& path)
    : m_location(MadeDirectory(path)), m_descriptor{OpenDirectory(m_location)} {
    struct stat opened = {};
    if (fstat(m_descriptor.number, &opened) != 0) ThrowFileError(m_location, errno);
    RequireTrust(m_location, opened);
    HoldLocation(opened);
    DeleteContents(m_location);
}

// From here on the system goes by the descriptor. Where it doesn't show them as files, the path has to do.
void SessionDirectory::HoldLocation(struct stat const& opened) {
    std::string const held = "/proc/self/fd/" + std::to_string(m_descriptor.number);
    struct stat status = {};
    if (stat(held.c_str(), &status) == 0 && IsSameFile(status, opened))
        m_location = FileLocation(held.c_str());
}

FileLocation SessionDirectory::LocationOf(FileName const& name) const {
    ConstData const bytes = name.Raw();
    bool const isLegal =
        !bytes.empty() && bytes != "."_data && bytes != ".."_data && !Holds(bytes, '/') && IsPlainText(bytes);
    if (!isLegal) throw IllegalFileName();
    return ChildLocation(m_location, name);
}

void SessionDirectory::Write(std::vector<FileTransfer> const& files) const {
    for (FileTransfer const& file : files) file.WriteToFile(LocationOf(file.fileName));
}
