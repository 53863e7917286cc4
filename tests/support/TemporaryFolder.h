#pragma once

#include "files/FileLocation.h"

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>

// An empty folder of the test's own below the system's folder for temporary files, gone at the end with all
// that is in it. Ends the process when it cannot be made, so that no test passes for want of it.
//
//   TemporaryFolder const folder;
//   folder.Write("notes", "text");
//   FileLocation const notes = folder.Location("notes");
class TemporaryFolder {
public:
    TemporaryFolder() : TemporaryFolder(std::filesystem::temp_directory_path()) {}
    // Below another folder.
    explicit TemporaryFolder(std::filesystem::path const& place)
        : m_path((place / "vrk-test-XXXXXX").string()) {
        if (mkdtemp(m_path.data())) return;
        std::perror(m_path.c_str());
        std::abort();
    }
    TemporaryFolder(TemporaryFolder const&) = delete;
    TemporaryFolder& operator=(TemporaryFolder const&) = delete;
    ~TemporaryFolder() {
        std::error_code ignored;
        std::filesystem::remove_all(m_path, ignored);
    }

    std::string const& Path() const { return m_path; }
    // Path of what has this name in the folder, or below it: "a/b". Nothing is made.
    std::string Path(std::string const& name) const { return m_path + "/" + name; }
    FileLocation Location() const { return FileLocation(MakeUTF8Ref(m_path)); }
    FileLocation Location(std::string const& name) const { return FileLocation(MakeUTF8Ref(Path(name))); }

    // Makes a file, or replaces its contents.
    void Write(std::string const& name, std::string const& contents) const {
        std::ofstream file(Path(name), std::ios::binary | std::ios::trunc);
        file.write(contents.data(), static_cast<std::streamsize>(contents.size()));
    }
    // The contents of a file; the empty text for one that cannot be read.
    std::string Read(std::string const& name) const {
        std::ifstream file(Path(name), std::ios::binary);
        std::ostringstream contents;
        contents << file.rdbuf();
        return contents.str();
    }
    void MakeFolder(std::string const& name) const { std::filesystem::create_directory(Path(name)); }
    // A symbolic link to `target`, which is taken as it is written.
    void MakeLink(std::string const& target, std::string const& name) const {
        std::filesystem::create_symlink(target, Path(name));
    }
    // Whether anything has this name, a link that leads nowhere included.
    bool Has(std::string const& name) const {
        return std::filesystem::symlink_status(Path(name)).type() != std::filesystem::file_type::not_found;
    }

private:
    std::string m_path;
};
