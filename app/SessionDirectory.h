#pragma once

#include "files/FileLocation.h"
#include "link/FileTransfer.h"

#include <sys/stat.h>
#include <vector>

// The directory that the client names for the files of this session, held open while it is used: whatever
// somebody puts in its place meanwhile, nothing outside it is touched.
class SessionDirectory {
public:
    // Empties the directory, or makes it with every ancestor that is missing.
    //
    // Refuses, and does not touch, the root, by whatever name, and a directory that belongs neither to this
    // user nor to the superuser, or whose path names a link that does not (FilePermissionError; links further
    // up in the path, or behind that one, are not asked whose they are); a path with a NUL or one that is not
    // strict UTF-8 (IllegalFileName); and no path (EmptyFileLocationError). Throws the other errors of files,
    // too; what was removed or made by then stays so.
    explicit SessionDirectory(FileLocation const& path);

    // Where a file of that name stands in the directory; valid as long as this object. Throws IllegalFileName
    // for a name that does not stand directly in it: an empty one, ".", "..", one with a "/" or a NUL, and
    // one that is not strict UTF-8.
    FileLocation LocationOf(FileName const& name) const;

    // Writes each file directly into the directory, whatever its sub-folder, in order: the later of two files
    // of one name is the one that stays. Throws LocationOf's errors and those of files; the files before the
    // one that failed have been written then.
    void Write(std::vector<FileTransfer> const& files) const;

private:
    struct Descriptor {
        int number;

        explicit Descriptor(int opened) : number(opened) {}
        Descriptor(Descriptor const&) = delete;
        Descriptor& operator=(Descriptor const&) = delete;
        ~Descriptor();
    };

    void HoldLocation(struct stat const& opened);

    // The path at first, and then the way by the descriptor.
    FileLocation m_location;
    Descriptor const m_descriptor;
};
