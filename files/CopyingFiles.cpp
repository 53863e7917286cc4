#include "files/CopyingFiles.h"

#include "files/ChildLocation.h"
#include "files/CreatingFiles.h"
#include "files/DeletingFiles.h"
#include "files/DirectoryCheck.h"
#include "files/FileLoop.h"
#include "files/FileReadingLoop.h"
#include "files/FileRetry.h"
#include "files/FileWriting.h"
#include "files/NonEmptyLocation.h"
#include "files/SameFile.h"

#include <cerrno>
#include <cstdio>
#include <filesystem>
#include <string>
#include <utility>
#include <vector>

namespace {

using UnixPlatform::UnixFileInfo;

constexpr std::size_t cChunkInBytes = 65536;

// Throws for something whose status could not be learnt.
[[noreturn]] void ThrowNotFound(FileLocation const& location, int code) {
    if (!MeansNothingThere(code)) ThrowFileError(location, code);
    throw FileNotFoundError(location, code);
}

// The status of what has to be there, a dangling link included.
UnixFileInfo RequireSource(FileLocation const& source) {
    UnixFileInfo info;
    int const code = info.Set(source);
    if (!info.Exists()) ThrowNotFound(source, code);
    return info;
}

// The same for something that can be read.
UnixFileInfo RequireReadableSource(FileLocation const& source) {
    UnixFileInfo info;
    int const code = info.Set(source);
    if (code != 0) ThrowNotFound(source, code);
    return info;
}

bool IsAnythingAt(FileLocation const& location) {
    UnixFileInfo info;
    info.Set(location);
    return info.Exists();
}

void CopyBytes(FileReadingPath const& source, FileWritingPath const& target) {
    unsigned char room[cChunkInBytes];
    FileReadingLoop loop(Data(room, room + sizeof room));
    FileWriter writer(target);
    for (loop.Start(source, 0); loop.Unfinished(); ++loop) writer << *loop;
}

void CopyToNewFile(FileReadingPath& source, FileLocation const& target) {
    FileWritingPath targetPath(target, OpenNewFile());
    CopyBytes(source, targetPath);
    targetPath.Close();
    source.Close();
}

// A link at the target that leads to the same, as it is written.
void CopyLink(FileLocation const& source, FileLocation const& target) {
    std::error_code failure;
    std::filesystem::copy_symlink(source.LibPath().c_str(), target.LibPath().c_str(), failure);
    if (failure.value() == EEXIST) throw FileExistsError(target, EEXIST);
    ThrowFileError(target, failure.value());
}

// Copies the files of one directory after the other, those that are met being appended to the list of those
// to come.
class DirectoryCopier {
public:
    // The directories at both ends of the copy, which must be there.
    DirectoryCopier(FileLocation const& source, FileLocation const& target)
        : m_end(RequireDirectory(target)) {
        Add(source, RequireDirectory(source), target);
    }

    void Copy() {
        while (!m_pending.empty()) {
            Pair const next = std::move(m_pending.back());
            m_pending.pop_back();
            CopyItems(next);
        }
    }

private:
    struct Pair {
        FileLocation source;
        FileLocation target;
    };

    void Add(FileLocation const& source, UnixFileInfo const& info, FileLocation const& target) {
        // Else the copy would be copied into itself, on and on.
        if (IsSameFile(info.Stats().target, m_end.Stats().target)) throw FileItemError(source, EINVAL);
        m_pending.push_back(Pair{source, target});
    }

    void CopyItems(Pair const& directories) {
        CreateDirectoryTree(directories.target);
        FileLoop loop(directories.source, UStringRef<UTF8>(), true);
        // Silence here would make a moved directory lose what was not copied.
        if (!loop.IsStarted()) throw DirectoryNotFoundError(directories.source, ENOENT);
        ThrowFileError(directories.source, loop.ScanCode());
        for (; loop.Unfinished(); ++loop)
            CopyItem(*loop, ChildLocation(directories.target, loop->Location().Name()));
    }

    void CopyItem(FileItem const& item, FileLocation const& target) {
        if (item.Info().IsRegularFile()) {
            CopyFileWithRetry(item.Location(), target, FileRetryLog());
        } else if (item.Info().IsDirectory() && item.Info().IsLink()) {
            CopyLink(item.Location(), target);
        } else if (item.Info().IsDirectory()) {
            Add(item.Location(), item.Info(), target);
        } else {
            throw FileItemError(item.Location(), ENOTSUP);
        }
    }

    UnixFileInfo m_end;
    std::vector<Pair> m_pending;
};

// Throws for what cannot succeed, before the target is deleted for it.
void RefuseMoveIntoItself(FileWithInfo const& source, FileWithInfo const& target) {
    bool const isItsDirectory = IsMoveOfLinkToItsTarget(source, target) && target.info.IsDirectory();
    if (isItsDirectory || IsMoveIntoItself(source, target))
        throw FileMoveError(source.location, target.location, EINVAL);
}

// A move to another file system.
void CopyAndDelete(FileLocation const& source, UnixFileInfo const& info, FileLocation const& target) {
    if (info.IsDirectory()) {
        UnixPlatform::CopyDirectoryContents(source, target);
        UnixPlatform::DeleteRecursive(source);
    } else if (info.IsRegularFile()) {
        UnixPlatform::CopyFile(source, target);
        UnixPlatform::DeleteFile(source);
    } else {
        throw FileMoveError(source, target, EXDEV);
    }
}

} // namespace

namespace UnixPlatform {

// The source is opened first: a source that cannot be opened leaves no empty target behind, which would make
// every further try fail.
void CopyFile(FileLocation const& source, FileLocation const& target) {
    RequireReadableSource(source);
    if (IsAnythingAt(target)) throw FileExistsError(target, EEXIST);
    ::FileReadingPath sourcePath(source);
    CopyToNewFile(sourcePath, target);
}

// The open source outlives the deletion, should both be names of one file.
void ForceCopyFile(FileLocation const& source, FileLocation const& target) {
    UnixFileInfo const info = RequireReadableSource(source);
    if (!info.IsRegularFile()) throw FileNotFoundError(source, 0);
    UnixFileInfo targetInfo;
    targetInfo.Set(target);
    if (targetInfo.Exists() && IsCopyToItself({source, info}, {target, targetInfo})) return;
    ::FileReadingPath sourcePath(source);
    UnixPlatform::ForceNonexistence(target);
    CopyToNewFile(sourcePath, target);
}

void MoveFile(FileLocation const& source, FileLocation const& target) {
    UnixFileInfo const info = RequireSource(source);
    if (IsAnythingAt(target)) throw FileIOError(target, 0);
    if (std::rename(source.LibPath().c_str(), target.LibPath().c_str()) == 0) return;
    if (int const code = errno; code != EXDEV) throw FileMoveError(source, target, code);
    CopyAndDelete(source, info, target);
}

void ForceMoveFile(FileLocation const& source, FileLocation const& target) {
    RequireSource(source);
    if (!IsAnythingAt(target)) return UnixPlatform::MoveFile(source, target);
    UnixFileInfo const sourceInfo = source.GetValidInfo();
    UnixFileInfo const targetInfo = target.GetValidInfo();
    if (sourceInfo.IsRegularFile() != targetInfo.IsRegularFile())
        throw DirectoryFoundError(sourceInfo.IsDirectory() ? source : target, EISDIR);
    FileWithInfo const from{source, sourceInfo};
    FileWithInfo const to{target, targetInfo};
    if (IsMoveToItself(from, to)) return;
    RefuseMoveIntoItself(from, to);
    if (IsMoveOfLinkToItsTarget(from, to)) return UnixPlatform::DeleteFile(source);
    UnixPlatform::ForceNonexistence(target);
    UnixPlatform::MoveFile(source, target);
}

void CopyDirectoryContents(FileLocation const& source, FileLocation const& target) {
    RequireDirectory(source);
    UnixPlatform::CreateDirectoryTree(target);
    DirectoryCopier(source, target).Copy();
}

} // namespace UnixPlatform

void CopyFile(FileLocation const& source, FileLocation const& target) {
    UnixPlatform::CopyFile(NonEmpty(source), NonEmpty(target));
}

void ForceCopyFile(FileLocation const& source, FileLocation const& target) {
    UnixPlatform::ForceCopyFile(NonEmpty(source), NonEmpty(target));
}

void MoveFile(FileLocation const& source, FileLocation const& target) {
    UnixPlatform::MoveFile(NonEmpty(source), NonEmpty(target));
}

void ForceMoveFile(FileLocation const& source, FileLocation const& target) {
    UnixPlatform::ForceMoveFile(NonEmpty(source), NonEmpty(target));
}

void CopyDirectoryContents(FileLocation const& source, FileLocation const& target) {
    UnixPlatform::CopyDirectoryContents(NonEmpty(source), NonEmpty(target));
}

void CopyFileWithRetry(FileLocation const& source, FileLocation const& target, FileRetryLog const& log) {
    RetryFileOperation(cRetrySchedule, "CopyFile"_utf8, &source, &target, log,
                       [&] { CopyFile(source, target); });
}

void ForceCopyFileWithRetry(FileLocation const& source, FileLocation const& target, FileRetryLog const& log) {
    RetryFileOperation(cRetrySchedule, "ForceCopyFile"_utf8, &source, &target, log,
                       [&] { ForceCopyFile(source, target); });
}

void MoveFileWithRetry(FileLocation const& source, FileLocation const& target, FileRetryLog const& log) {
    RetryFileOperation(cRetrySchedule, "MoveFile"_utf8, &source, &target, log,
                       [&] { MoveFile(source, target); });
}

void ForceMoveFileWithRetry(FileLocation const& source, FileLocation const& target, FileRetryLog const& log) {
    RetryFileOperation(cRetrySchedule, "ForceMoveFile"_utf8, &source, &target, log,
                       [&] { ForceMoveFile(source, target); });
}
