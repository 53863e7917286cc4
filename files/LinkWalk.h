#pragma once

#include <string>
#include <sys/stat.h>

// Reading symbolic links, and the way that they lead.

// What a link says, just as it is written. The path is taken from an open directory, or from AT_FDCWD; the
// empty path means a link that has itself been opened, by O_PATH. Returns 0 or the error number, EINVAL for
// what is no link.
int ReadLink(int directory, char const* path, std::string& text);

// A name in a directory, which is told by its status.
struct DirectoryEntry {
    struct stat directory;
    std::string name;
};

// Whether the system looks up that name in that directory when it goes to the end of the path, following
// every link, the one at the end as well. What the process cannot pass, or is not there, or lies behind more
// links than the system follows, ends the way.
//
// Sets `code` to 0, or to the error number when the system cannot tell; false is returned then.
bool LeadsBy(std::string const& path, DirectoryEntry const& entry, int& code);
