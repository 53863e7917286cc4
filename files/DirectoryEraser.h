#pragma once

#include "files/FileLocation.h"

#include <dirent.h>
#include <memory>
#include <string>
#include <sys/stat.h>
#include <vector>

// Deletes all that is in a directory, and nothing else: links in it are deleted and not followed, and what
// another process puts in the place of a directory meanwhile isn't entered. Holds two descriptors at the
// most, and in memory the names of one directory and of the directories that are still to be emptied.
class DirectoryEraser {
public:
    // For the directory at the location, or the one that it leads to if it is a link: only Erase(true) takes
    // one. The location is held by reference and must outlive the eraser.
    explicit DirectoryEraser(FileLocation const& directory) : m_location(directory) {}
    DirectoryEraser(DirectoryEraser const&) = delete;
    DirectoryEraser& operator=(DirectoryEraser const&) = delete;

    // To be called once. Throws by ThrowFileError, with the location of what could not be deleted; EPERM for
    // the root directory of the process.
    void Erase(bool followsLink);

private:
    struct Entry {
        std::string name;
        bool isDirectory;
    };
    // One directory on the way down from the location.
    struct Level {
        dev_t device;
        ino_t inode;
        // Directories in it that are not empty; the next level belongs to the last one.
        std::vector<std::string> directories;
    };
    struct Closer {
        void operator()(DIR* directory) const { closedir(directory); }
    };
    using OpenDirectory = std::unique_ptr<DIR, Closer>;

    OpenDirectory Open(int parent, char const* path, int flags, int& code) const;
    struct stat StatusOf(OpenDirectory const& directory) const;
    void Enter(OpenDirectory directory);
    std::vector<Entry> ReadEntries() const;
    void EraseEntries();
    bool EraseEntry(Entry const& entry) const;
    int TryToErase(Entry const& entry) const;
    void Descend();
    void Ascend();
    FileLocation CurrentLocation() const;
    FileLocation LocationOf(std::string const& name) const;
    std::string PathThrough(std::size_t levels) const;

    FileLocation const& m_location;
    struct stat m_root = {};
    // Opened at the last level, from which it is also read.
    OpenDirectory m_current;
    std::vector<Level> m_levels;
};
