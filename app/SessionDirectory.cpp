#include "app/SessionDirectory.h"

#include "files/DirectoryEraser.h"
#include "files/FileErrors.h"
#include "files/FileOperations.h"
#include "files/OwnLocation.h"
#include "files/SameFile.h"
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

// Empties what stands there. Somebody else's directory is left alone: whoever can name it, or link to it,
// must not have the files in it removed in the user's name. The path is looked at after the directory has
// been opened, so that the one that is emptied is the one that was found to be trusted, even if somebody puts
// another in its place meanwhile.
void EmptyIfTrusted(FileLocation const& directory) {
    DirectoryEraser eraser(directory);
    struct stat const opened = eraser.Open(true);
    UnixPlatform::UnixFileInfo const info = InfoOf(directory);
    bool const isTrusted = IsTrusted(opened.st_uid) && IsTrusted(info.Stats().link.st_uid);
    if (!isTrusted || !IsSameFile(opened, info.Stats().target)) throw FilePermissionError(directory, EPERM);
    eraser.Erase();
}

} // namespace

// A path with ".." may lead through what is not there yet to what is: what has been made is emptied as well.
void PrepareSessionDirectory(FileLocation const& location) {
    if (location.empty()) throw EmptyFileLocationError(location, 0);
    if (!IsPlainText(location.Raw())) throw IllegalFileName();
    FileLocation const directory = OwnLocation(location);
    if (!InfoOf(directory).Exists()) CreateDirectoryTree(directory);
    EmptyIfTrusted(directory);
}

FileLocation LocationInDirectory(FileLocation const& directory, FileName const& name) {
    ConstData const bytes = name.Raw();
    bool const isLegal =
        !bytes.empty() && bytes != "."_data && bytes != ".."_data && !Holds(bytes, '/') && IsPlainText(bytes);
    if (!isLegal) throw IllegalFileName();
    return name.IsBinary() ? FileLocation(directory, name.Bytes()) : FileLocation(directory, name.Text());
}

void WriteSupportFiles(FileLocation const& directory, std::vector<FileTransfer> const& files) {
    for (FileTransfer const& file : files) file.WriteToFile(LocationInDirectory(directory, file.fileName));
}
