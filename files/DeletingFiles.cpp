#include "files/DeletingFiles.h"

#include "files/DirectoryCheck.h"
#include "files/DirectoryEraser.h"
#include "files/FileRetry.h"
#include "files/NonEmptyLocation.h"
#include "files/OwnLocation.h"

#include <cerrno>
#include <unistd.h>

namespace {

// The status of what there may be to delete; throws when it cannot be learnt.
UnixPlatform::UnixFileInfo WhatIsThere(FileLocation const& location) {
    UnixPlatform::UnixFileInfo info;
    int const code = info.Set(location);
    if (!info.Exists() && !MeansNothingThere(code)) ThrowFileError(location, code);
    return info;
}

// What is to be deleted may have gone by itself meanwhile.
template <class Delete>
void DeleteUnlessGone(Delete const& deleteIt) {
    try {
        deleteIt();
    } catch (FileIOError const& failure) {
        if (failure.GetCode() != ENOENT) throw;
    }
}

} // namespace

namespace UnixPlatform {

void DeleteFile(FileLocation const& location) {
    auto const path = location.LibPath();
    if (unlink(path.c_str()) != 0) ThrowFileError(location, errno);
}

void DeleteDirectory(FileLocation const& location) {
    FileLocation const own = OwnLocation(location);
    if (RequireDirectory(own).IsLink()) return UnixPlatform::DeleteFile(own);
    auto const path = own.LibPath();
    if (rmdir(path.c_str()) != 0) ThrowFileError(own, errno);
}

void ForceNonexistence(FileLocation const& location) {
    UnixFileInfo const info = WhatIsThere(location);
    if (!info.Exists()) return;
    auto const deleteIt = info.IsDirectory() ? UnixPlatform::DeleteDirectory : UnixPlatform::DeleteFile;
    DeleteUnlessGone([&] { deleteIt(location); });
}

void DeleteContents(FileLocation const& location) {
    RequireDirectory(location);
    DirectoryEraser(location).Erase(true);
}

// An empty directory goes as it is, since looking into it takes a permission that deleting it does not.
void DeleteRecursive(FileLocation const& location) {
    FileLocation const own = OwnLocation(location);
    if (!RequireDirectory(own).IsLink()) {
        if (rmdir(own.LibPath().c_str()) == 0) return;
        DirectoryEraser(own).Erase(false);
    }
    UnixPlatform::DeleteDirectory(own);
}

void ForceDeleteContents(FileLocation const& location) {
    if (!WhatIsThere(location).Exists()) return;
    DeleteUnlessGone([&] { UnixPlatform::DeleteContents(location); });
}

void ForceDeleteRecursive(FileLocation const& location) {
    if (!WhatIsThere(location).Exists()) return;
    DeleteUnlessGone([&] { UnixPlatform::DeleteRecursive(location); });
}

} // namespace UnixPlatform

void DeleteFile(FileLocation const& location) {
    UnixPlatform::DeleteFile(NonEmpty(location));
}

void DeleteDirectory(FileLocation const& location) {
    UnixPlatform::DeleteDirectory(NonEmpty(location));
}

void ForceNonexistence(FileLocation const& location) {
    UnixPlatform::ForceNonexistence(NonEmpty(location));
}

void DeleteContents(FileLocation const& location) {
    UnixPlatform::DeleteContents(NonEmpty(location));
}

void DeleteRecursive(FileLocation const& location) {
    UnixPlatform::DeleteRecursive(NonEmpty(location));
}

void ForceDeleteContents(FileLocation const& location) {
    UnixPlatform::ForceDeleteContents(NonEmpty(location));
}

void ForceDeleteRecursive(FileLocation const& location) {
    UnixPlatform::ForceDeleteRecursive(NonEmpty(location));
}

namespace {

template <class Operation>
void Retry(UStringRef<UTF8> const& word, FileLocation const& location, FileRetryLog const& log,
           Operation const& operation) {
    RetryFileOperation(cRetrySchedule, word, &location, nullptr, log, operation);
}

} // namespace

void DeleteFileWithRetry(FileLocation const& location, FileRetryLog const& log) {
    Retry("DeleteFile"_utf8, location, log, [&] { DeleteFile(location); });
}

void DeleteDirectoryWithRetry(FileLocation const& location, FileRetryLog const& log) {
    Retry("DeleteDirectory"_utf8, location, log, [&] { DeleteDirectory(location); });
}

void ForceNonexistenceWithRetry(FileLocation const& location, FileRetryLog const& log) {
    Retry("ForceNonexistence"_utf8, location, log, [&] { ForceNonexistence(location); });
}

void ForceDeleteRecursiveWithRetry(FileLocation const& location, FileRetryLog const& log) {
    Retry("DeleteRecursive"_utf8, location, log, [&] { ForceDeleteRecursive(location); });
}

void ForceDeleteContents(FileLocation const& location, FileRetryLog const& log) {
    Retry("DeleteContents"_utf8, location, log, [&] { ForceDeleteContents(location); });
}
