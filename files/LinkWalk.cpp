#include "files/LinkWalk.h"

#include "files/FileStats.h"

#include <algorithm>
#include <cerrno>
#include <climits>
#include <fcntl.h>
#include <unistd.h>
#include <utility>

// The walk stands in one directory, by a descriptor, and holds the names that are still to be taken from
// there. A link puts its text in front of them. Descriptors are opened for the path alone, which takes no
// permission to read, and neither waits nor has an effect on what is there.
//
// A path has less than PATH_MAX bytes and so has a link, of which at most 40 are followed: what the walk
// holds and does has a bound.

namespace {

// As many as the system follows on one way.
constexpr int cMostLinks = 40;

class PathDescriptor {
public:
    explicit PathDescriptor(int number = -1) : m_number(number) {}
    PathDescriptor(PathDescriptor&& other) noexcept : m_number(std::exchange(other.m_number, -1)) {}
    PathDescriptor& operator=(PathDescriptor&& other) noexcept {
        std::swap(m_number, other.m_number);
        return *this;
    }
    ~PathDescriptor() {
        if (m_number != -1) close(m_number);
    }

    int Number() const { return m_number; }

private:
    int m_number;
};

class Walk {
public:
    explicit Walk(std::string path) : m_rest(std::move(path)) {
        if (!m_rest.starts_with('/')) m_code = Open(AT_FDCWD, ".", m_place);
    }

    // 0, or the error number that ended the walk.
    int Code() const { return m_code; }
    // Takes the next name; false at the end.
    bool Take();
    bool IsAt(DirectoryEntry const& entry);
    // Goes to where the name leads.
    void Go();

private:
    static int Open(int directory, char const* name, PathDescriptor& opened);
    struct stat StatusOf(PathDescriptor const& opened);
    void Follow(PathDescriptor const& link);

    int m_code = 0;
    int m_links = 0;
    // Where the name stands.
    PathDescriptor m_place;
    std::string m_name;
    std::string m_rest;
};

// Leaves `opened` as it is when it fails.
int Walk::Open(int directory, char const* name, PathDescriptor& opened) {
    PathDescriptor descriptor(openat(directory, name, O_PATH | O_NOFOLLOW | O_CLOEXEC));
    if (descriptor.Number() == -1) return errno;
    opened = std::move(descriptor);
    return 0;
}

struct stat Walk::StatusOf(PathDescriptor const& opened) {
    struct stat status = {};
    if (fstat(opened.Number(), &status) != 0) m_code = errno;
    return status;
}

// Only a whole path can begin with "/", or what is left behind a link that says one.
bool Walk::Take() {
    if (m_code == 0 && m_rest.starts_with('/')) m_code = Open(AT_FDCWD, "/", m_place);
    std::size_t const start = std::min(m_rest.find_first_not_of('/'), m_rest.size());
    std::size_t const end = std::min(m_rest.find('/', start), m_rest.size());
    m_name = m_rest.substr(start, end - start);
    m_rest.erase(0, std::min(m_rest.find_first_not_of('/', end), m_rest.size()));
    return m_code == 0 && !m_name.empty();
}

bool Walk::IsAt(DirectoryEntry const& entry) {
    return m_name == entry.name && IsSameFile(StatusOf(m_place), entry.directory) && m_code == 0;
}

void Walk::Go() {
    PathDescriptor next;
    m_code = Open(m_place.Number(), m_name.c_str(), next);
    if (m_code != 0) return;
    if (S_ISLNK(StatusOf(next).st_mode)) return Follow(next);
    m_place = std::move(next);
}

void Walk::Follow(PathDescriptor const& link) {
    std::string text;
    m_code = ++m_links > cMostLinks ? ELOOP : ReadLink(link.Number(), "", text);
    m_rest.insert(0, text + '/');
}

// Whether the process has no way on, which is an end as good as any other.
bool MeansNoWayOn(int code) {
    return code == ENOENT || code == ENOTDIR || code == EACCES || code == ELOOP || code == ENAMETOOLONG;
}

} // namespace

int ReadLink(int directory, char const* path, std::string& text) {
    char room[PATH_MAX];
    ssize_t const size = readlinkat(directory, path, room, sizeof room);
    if (size == -1) return errno;
    if (size == sizeof room) return ENAMETOOLONG;
    text.assign(room, static_cast<std::size_t>(size));
    return 0;
}

bool LeadsBy(std::string const& path, DirectoryEntry const& entry, int& code) {
    Walk walk(path);
    bool isThere = false;
    while (!isThere && walk.Take()) {
        isThere = walk.IsAt(entry);
        if (!isThere) walk.Go();
    }
    code = MeansNoWayOn(walk.Code()) ? 0 : walk.Code();
    return isThere;
}
