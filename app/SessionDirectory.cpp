#include "app/SessionDirectory.h"

#include "files/FileErrors.h"
#include "files/FileOperations.h"
#include "files/FileStats.h"
#include "foundation/Exceptions.h"
#include "text/IsUTF8.h"

#include <algorithm>
#include <cerrno>
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

ConstData PathOf(FileLocation const& location) {
    return location.IsBinary() ? ConstData(location.Bytes()) : ConstData(location.Text());
}

// The path without what makes the system follow a link at its end: "a//" and "a/./" give "a".
UStringRef<UTF8> WithoutEnd(UStringRef<UTF8> const& path) {
    auto const begin = path.begin();
    auto end = path.end();
    while ((end - begin > 1 && end[-1] == '/') || (end - begin > 2 && end[-1] == '.' && end[-2] == '/'))
        --end;
    return UStringRef<UTF8>(UTF8(), begin, end);
}

ConstData BytesOf(FileName const& name) {
    return name.IsBinary() ? ConstData(name.Bytes()) : ConstData(name.Text());
}

bool IsTrusted(uid_t owner) {
    return owner == geteuid() || owner == 0;
}

// The root has many names: "/..", "/tmp/..", links.
bool IsRootOfTheSystem(struct stat const& status) {
    struct stat root {};
    return stat("/", &root) != 0 || (status.st_dev == root.st_dev && status.st_ino == root.st_ino);
}

// What stands there is about to be emptied. Somebody else's directory is left alone: whoever can name it, or
// link to it, must not have the files in it removed in the user's name.
void CheckMayBeEmptied(FileLocation const& directory, FileStats const& stats) {
    bool const mayBeEmptied =
        !IsRootOfTheSystem(stats.target) && IsTrusted(stats.link.st_uid) && IsTrusted(stats.target.st_uid);
    if (!mayBeEmptied) throw FilePermissionError(directory, EPERM);
}

UnixPlatform::UnixFileInfo InfoOf(FileLocation const& directory) {
    UnixPlatform::UnixFileInfo info;
    int const error = info.Set(directory);
    // A path that is too long, or leads through something else than directories, is not gone into.
    if (error != ENOENT || info.State() != cNoFile) ThrowFileError(directory, error);
    return info;
}

} // namespace

// A path with ".." may lead through what is not there yet to what is: what has been made is looked at as
// well.
void PrepareSessionDirectory(FileLocation const& location) {
    if (location.empty()) throw EmptyFileLocationError(location, 0);
    if (!IsPlainText(PathOf(location))) throw IllegalFileName();
    FileLocation const directory(WithoutEnd(location.Text()));
    if (!InfoOf(directory).Exists()) CreateDirectoryTree(directory);
    CheckMayBeEmptied(directory, InfoOf(directory).Stats());
    DeleteContents(directory);
}

FileLocation LocationInDirectory(FileLocation const& directory, FileName const& name) {
    ConstData const bytes = BytesOf(name);
    bool const isLegal =
        !bytes.empty() && bytes != "."_data && bytes != ".."_data && !Holds(bytes, '/') && IsPlainText(bytes);
    if (!isLegal) throw IllegalFileName();
    return name.IsBinary() ? FileLocation(directory, name.Bytes()) : FileLocation(directory, name.Text());
}

void WriteSupportFiles(FileLocation const& directory, std::vector<FileTransfer> const& files) {
    for (FileTransfer const& file : files) file.WriteToFile(LocationInDirectory(directory, file.fileName));
}
