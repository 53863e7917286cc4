#include "files/CopyingFiles.h"

#include "files/ChildLocation.h"
#include "files/CreatingFiles.h"
#include "files/DeletingFiles.h"
#include "files/DirectoryCheck.h"
#include "files/FileLoop.h"
#include "files/FileReadingLoop.h"
#include "files/FileRetry.h"
#include "files/FileWriting.h"
#include "files/LinkWalk.h"
#include "files/NonEmptyLocation.h"
#include "files/OwnLocation.h"
#include "files/SameFile.h"

#include <cerrno>
#include <cstdio>
#include <fcntl.h>
#include <string>
#include <unistd.h>
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
    auto const sourcePath = source.LibPath();
    auto const targetPath = target.LibPath();
    std::string text;
    ThrowFileError(source, ReadLink(AT_FDCWD, sourcePath.c_str(), text));
    if (symlink(text.c_str(), targetPath.c_str()) == 0) return;
    int const code = errno;
    if (code == EEXIST) throw FileExistsError(target, code);
    ThrowFileError(target, code);
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

// What is moved, and what stands where it goes.
struct Move {
    FileWithInfo from;
    FileWithInfo to;
};

// Throws for two things of different kinds.
void RequireOneKind(Move const& move) {
    if (move.from.info.IsRegularFile() == move.to.info.IsRegularFile()) return;
    FileWithInfo const& odd = move.from.info.IsDirectory() ? move.from : move.to;
    throw DirectoryFoundError(odd.location, EISDIR);
}

// Throws for what cannot succeed, before the target is deleted for it.
void RequirePossibleMove(Move const& move) {
    if (IsMoveOntoItsWay(move.from, move.to) || IsMoveOfLinkToItsTarget(move.from, move.to) ||
        IsMoveIntoItself(move.from, move.to))
        throw FileMoveError(move.from.location, move.to.location, EINVAL);
}

// Deletes the target for the source, unless both are one.
void Replace(Move const& move) {
    RequireOneKind(move);
    if (IsMoveToItself(move.from, move.to)) return;
    if (!move.to.info.IsDirectory() && IsMoveOfLinkToItsTarget(move.from, move.to))
        return UnixPlatform::DeleteFile(move.from.location);
    RequirePossibleMove(move);
    UnixPlatform::ForceNonexistence(move.to.location);
    UnixPlatform::MoveFile(move.from.location, move.to.location);
}

// A move to another file system.
void CopyAndDelete(FileLocation const& source, UnixFileInfo const& info, FileLocation const& target) {
    if (IsCopyIntoItself({source, info}, target)) throw FileMoveError(source, target, EINVAL);
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
    FileLocation const own = OwnLocation(target);
    UnixFileInfo targetInfo;
    targetInfo.Set(own);
    if (targetInfo.Exists() && IsCopyToItself({source, info}, {own, targetInfo})) return;
    ::FileReadingPath sourcePath(source);
    UnixPlatform::ForceNonexistence(own);
    CopyToNewFile(sourcePath, own);
}

void MoveFile(FileLocation const& source, FileLocation const& target) {
    FileLocation const from = OwnLocation(source);
    FileLocation const to = OwnLocation(target);
    UnixFileInfo const info = RequireSource(from);
    if (IsAnythingAt(to)) throw FileIOError(to, 0);
    auto const fromPath = from.LibPath();
    auto const toPath = to.LibPath();
    if (std::rename(fromPath.c_str(), toPath.c_str()) == 0) return;
    if (int const code = errno; code != EXDEV) throw FileMoveError(from, to, code);
    CopyAndDelete(from, info, to);
}

void ForceMoveFile(FileLocation const& source, FileLocation const& target) {
    FileLocation const from = OwnLocation(source);
    FileLocation const to = OwnLocation(target);
    RequireSource(from);
    if (!IsAnythingAt(to)) return UnixPlatform::MoveFile(from, to);
    UnixFileInfo const fromInfo = from.GetValidInfo();
    UnixFileInfo const toInfo = to.GetValidInfo();
    Replace({{from, fromInfo}, {to, toInfo}});
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
