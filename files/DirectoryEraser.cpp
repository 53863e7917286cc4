#include "files/DirectoryEraser.h"

#include "files/FileErrors.h"

#include <cerrno>
#include <fcntl.h>
#include <unistd.h>

// The eraser stands in one directory at a time, by a descriptor, so that neither the length of a path nor the
// number of descriptors limits the depth. On the way down it remembers which directory it left; on the way up
// it goes to ".." and makes sure that it is that one: a directory that was moved away meanwhile leads
// somewhere else, where nothing may be deleted.
//
// The entries of a directory are read before the first of them is deleted, since deleting while reading makes
// some file systems pass over entries.

namespace {

constexpr int cOpenFlags = O_RDONLY | O_DIRECTORY | O_CLOEXEC;

bool IsDotOrDots(char const* name) {
    return name[0] == '.' && (name[1] == '\0' || (name[1] == '.' && name[2] == '\0'));
}

// A directory cannot be removed as it is not empty.
bool MeansNotEmpty(int code) {
    return code == ENOTEMPTY || code == EEXIST;
}

} // namespace

void DirectoryEraser::Erase(bool followsLink) {
    if (stat("/", &m_root) != 0) ThrowFileError(FileLocation("/"), errno);
    int code = 0;
    OpenDirectory top = Open(AT_FDCWD, m_location.LibPath().c_str(), followsLink ? 0 : O_NOFOLLOW, code);
    if (!top) ThrowFileError(m_location, code);
    Enter(std::move(top));
    while (true) {
        if (!m_levels.back().directories.empty()) {
            Descend();
        } else if (m_levels.size() > 1) {
            Ascend();
        } else {
            return;
        }
    }
}

// Null with the error number in `code` when it cannot be opened.
DirectoryEraser::OpenDirectory DirectoryEraser::Open(int parent, char const* path, int flags,
                                                     int& code) const {
    int const descriptor = openat(parent, path, cOpenFlags | flags);
    OpenDirectory directory(descriptor == -1 ? nullptr : fdopendir(descriptor));
    if (!directory) {
        code = errno;
        if (descriptor != -1) close(descriptor);
    }
    return directory;
}

struct stat DirectoryEraser::StatusOf(OpenDirectory const& directory) const {
    struct stat status = {};
    if (fstat(dirfd(directory.get()), &status) != 0) ThrowFileError(CurrentLocation(), errno);
    return status;
}

void DirectoryEraser::Enter(OpenDirectory directory) {
    struct stat const status = StatusOf(directory);
    if (status.st_dev == m_root.st_dev && status.st_ino == m_root.st_ino)
        ThrowFileError(CurrentLocation(), EPERM);
    m_current = std::move(directory);
    m_levels.push_back(Level{status.st_dev, status.st_ino, {}});
    EraseEntries();
}

std::vector<DirectoryEraser::Entry> DirectoryEraser::ReadEntries() const {
    std::vector<Entry> entries;
    while (true) {
        errno = 0;
        dirent const* const entry = readdir(m_current.get());
        if (!entry) break;
        if (!IsDotOrDots(entry->d_name)) entries.push_back(Entry{entry->d_name, entry->d_type == DT_DIR});
    }
    if (errno != 0) ThrowFileError(CurrentLocation(), errno);
    return entries;
}

void DirectoryEraser::EraseEntries() {
    std::vector<std::string> left;
    for (Entry& entry : ReadEntries())
        if (!EraseEntry(entry)) left.push_back(std::move(entry.name));
    m_levels.back().directories = std::move(left);
}

// False for a directory that is not empty.
bool DirectoryEraser::EraseEntry(Entry const& entry) const {
    int const code = TryToErase(entry);
    if (code == 0 || code == ENOENT) return true;
    if (!MeansNotEmpty(code)) ThrowFileError(LocationOf(entry.name), code);
    return false;
}

// Not all file systems tell what an entry is, and it may have become something else.
int DirectoryEraser::TryToErase(Entry const& entry) const {
    int const directory = dirfd(m_current.get());
    char const* const name = entry.name.c_str();
    if (!entry.isDirectory) {
        if (unlinkat(directory, name, 0) == 0) return 0;
        if (errno != EISDIR) return errno;
    }
    if (unlinkat(directory, name, AT_REMOVEDIR) == 0) return 0;
    if (errno != ENOTDIR || !entry.isDirectory) return errno;
    return unlinkat(directory, name, 0) == 0 ? 0 : errno;
}

void DirectoryEraser::Descend() {
    std::string const& name = m_levels.back().directories.back();
    int code = 0;
    OpenDirectory child = Open(dirfd(m_current.get()), name.c_str(), O_NOFOLLOW, code);
    if (child) {
        Enter(std::move(child));
    } else if (code == ENOENT) {
        m_levels.back().directories.pop_back();
    } else {
        ThrowFileError(LocationOf(name), code);
    }
}

// The directory that is left has been emptied.
void DirectoryEraser::Ascend() {
    int code = 0;
    OpenDirectory parent = Open(dirfd(m_current.get()), "..", 0, code);
    if (!parent) ThrowFileError(CurrentLocation(), code);
    struct stat const status = StatusOf(parent);
    Level const& level = m_levels[m_levels.size() - 2];
    if (status.st_dev != level.device || status.st_ino != level.inode)
        ThrowFileError(CurrentLocation(), ESTALE);
    m_current = std::move(parent);
    m_levels.pop_back();
    std::vector<std::string>& directories = m_levels.back().directories;
    Entry const emptied{directories.back(), true};
    if (int const left = TryToErase(emptied); left != 0 && left != ENOENT)
        ThrowFileError(LocationOf(emptied.name), left);
    directories.pop_back();
}

// The directory that the eraser is in, or about to enter.
FileLocation DirectoryEraser::CurrentLocation() const {
    if (m_levels.empty()) return m_location;
    bool const isAboutToEnter = !m_levels.back().directories.empty();
    return FileLocation(PathThrough(m_levels.size() - (isAboutToEnter ? 0 : 1)).c_str());
}

// Of an entry of that directory.
FileLocation DirectoryEraser::LocationOf(std::string const& name) const {
    return FileLocation((PathThrough(m_levels.size() - 1) + '/' + name).c_str());
}

// The path down through so many levels.
std::string DirectoryEraser::PathThrough(std::size_t levels) const {
    std::string path = m_location.LibPath().c_str();
    for (std::size_t index = 0; index < levels; ++index) {
        path += '/';
        path += m_levels[index].directories.back();
    }
    return path;
}
