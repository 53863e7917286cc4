#include "files/SameFile.h"

#include "files/FileErrors.h"
#include "files/LinkWalk.h"

#include <cerrno>
#include <cstdlib>
#include <memory>
#include <string>

// The device and the number of a file tell whether two paths lead to one file, but not whether they are one
// name of it: a file with two hard links loses one of its names when that one is deleted. So of a file with
// several names the last component is looked at too, and the directory that it stands in, again by device and
// number.

namespace {

// A path of the system, cut in front of its last component.
struct Entry {
    explicit Entry(std::string const& path) {
        std::size_t const slash = path.rfind('/');
        directory = slash == std::string::npos ? "." : path.substr(0, slash + 1);
        name = path.substr(slash == std::string::npos ? 0 : slash + 1);
    }

    std::string directory;
    std::string name;
};

// What stands under a path, with the location for failures.
struct Named {
    std::string path;
    FileLocation const& location;
    struct stat const& status;
};

struct stat StatusOf(std::string const& directory, FileLocation const& location) {
    struct stat status = {};
    if (stat(directory.c_str(), &status) != 0) ThrowFileError(location, errno);
    return status;
}

bool IsOneName(Named const& a, Named const& b) {
    if (!IsSameFile(a.status, b.status)) return false;
    if (S_ISDIR(a.status.st_mode) || a.status.st_nlink == 1) return true;
    Entry const first(a.path);
    Entry const second(b.path);
    return first.name == second.name &&
           IsSameFile(StatusOf(first.directory, a.location), StatusOf(second.directory, b.location));
}

std::string PathOf(FileLocation const& location) {
    return location.LibPath().c_str();
}

// The path without links and dots.
std::string RealPath(std::string const& path, FileLocation const& location) {
    std::unique_ptr<char, void (*)(void*)> const real(realpath(path.c_str(), nullptr), std::free);
    if (!real) ThrowFileError(location, errno);
    return real.get();
}

std::string WithSlash(std::string path) {
    if (!path.ends_with('/')) path += '/';
    return path;
}

} // namespace

bool IsCopyToItself(FileWithInfo const& source, FileWithInfo const& target) {
    std::string const path = PathOf(source.location);
    Named const read{source.info.IsLink() ? RealPath(path, source.location) : path, source.location,
                     source.info.Stats().target};
    return IsOneName(read, {PathOf(target.location), target.location, target.info.Stats().link});
}

bool IsMoveToItself(FileWithInfo const& source, FileWithInfo const& target) {
    return IsOneName({PathOf(source.location), source.location, source.info.Stats().link},
                     {PathOf(target.location), target.location, target.info.Stats().link});
}

bool IsMoveOfLinkToItsTarget(FileWithInfo const& source, FileWithInfo const& target) {
    return source.info.State() == cLinkToFile && IsCopyToItself(source, target);
}

bool IsMoveOntoItsWay(FileWithInfo const& source, FileWithInfo const& target) {
    Entry const entry(PathOf(target.location));
    struct stat const directory = StatusOf(entry.directory, target.location);
    int code = 0;
    bool const leads = LeadsBy(PathOf(source.location), {directory, entry.name}, code);
    ThrowFileError(source.location, code);
    return leads;
}

bool IsMoveIntoItself(FileWithInfo const& source, FileWithInfo const& target) {
    if (!source.info.IsLink()) return IsCopyIntoItself(source, target.location);
    struct stat const directory = StatusOf(Entry(PathOf(target.location)).directory, target.location);
    return directory.st_dev != source.info.Stats().link.st_dev && IsCopyIntoItself(source, target.location);
}

// The target itself may be a link to somewhere: what counts is the directory that it stands in.
bool IsCopyIntoItself(FileWithInfo const& source, FileLocation const& target) {
    if (!source.info.IsDirectory()) return false;
    std::string const top = WithSlash(RealPath(PathOf(source.location), source.location));
    return WithSlash(RealPath(Entry(PathOf(target)).directory, target)).starts_with(top);
}
