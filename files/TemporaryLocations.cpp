#include "files/TemporaryLocations.h"

#include "files/ChildLocation.h"
#include "files/CreatingFiles.h"
#include "files/DeletingFiles.h"
#include "files/FileStats.h"
#include "files/NonEmptyLocation.h"
#include "text/Ascii.h"
#include "text/IsUTF8.h"
#include "text/Numerals.h"
#include "text/UString.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstdlib>
#include <fcntl.h>
#include <memory>
#include <unistd.h>

namespace {

constexpr std::size_t cPathCapacity = 4096;
constexpr std::size_t cDateSize = 8;

// The path of a unique name, of which the system fills in the end.
class UniquePath {
public:
    UniquePath(FileLocation const& directory, UStringRef<UTF8> const& hint) : m_directory(directory) {
        FileLocation const location = ChildLocation(directory, FileName((hint + "XXXXXX"_utf8).Ref()));
        AutoNullTerminated<Local8Bit> const path = location.LibPath();
        if (path.SizeInUnits() >= m_path.size()) Fail(ENAMETOOLONG);
        std::copy(path.begin(), path.end(), m_path.begin());
    }

    void MakeFile() {
        int const descriptor = mkostemp(m_path.data(), O_CLOEXEC);
        if (descriptor == -1) Fail(errno);
        close(descriptor);
    }
    void MakeDirectory() {
        if (!mkdtemp(m_path.data())) Fail(errno);
    }

    FileLocation Location() const { return FileLocation(m_path.data()); }

private:
    [[noreturn]] void Fail(int code) const { throw CreateUniqueFileLocationFailed(m_directory, code); }

    FileLocation const& m_directory;
    std::array<char, cPathCapacity> m_path{};
};

// The temporary directory, which others may have deleted.
FileLocation const& TemporaryDirectoryMadeAnew() {
    FileLocation const& directory = TemporaryFileDirLocation();
    CreateDirectoryTree(directory);
    return directory;
}

// Whether the name makes one component behind a ".". Only strict UTF-8 is what it seems to be in every
// locale.
bool IsEndOfComponent(UStringRef<UTF8> const& name) {
    auto const isForbidden = [](unsigned char byte) { return byte == '/' || byte == 0; };
    return name != "."_utf8 && IsUTF8(name) && std::none_of(name.begin(), name.end(), isForbidden);
}

// The location itself, if it is a directory; otherwise the directory that it is in.
FileLocation DirectoryAt(FileLocation const& location) {
    return NonEmpty(location).IsDirectory() ? location : location.Parent();
}

// A name that was free a moment ago.
FileLocation FreeLocationIn(FileLocation const& directory) {
    FileLocation location = CreateUniqueFileLocation(directory, "temp"_utf8);
    ForceNonexistence(location);
    return location;
}

} // namespace

FileLocation const& TemporaryFileDirLocation() {
    static FileLocation const& directory = []() -> FileLocation const& {
        auto location = std::make_unique<FileLocation>("/tmp"_utf8);
        CreateDirectoryTree(*location);
        return *location.release();
    }();
    return directory;
}

void InitializeTemporaryFileDirLocation() {
    TemporaryFileDirLocation();
}

FileLocation UISessionDefaultDirectory(UStringRef<UTF8> const& name) {
    AutoUString<UTF8> path("VRK/ClientUI"_utf8);
    if (!name.empty()) {
        if (!IsEndOfComponent(name)) throw IllegalFileName();
        path += "/."_utf8;
        path += name;
    }
    return FileLocation(TemporaryFileDirLocation(), path);
}

namespace UnixPlatform {

FileLocation CreateUniqueFileLocation(FileLocation const& directory, UStringRef<UTF8> const& hint) {
    UniquePath path(directory, hint);
    path.MakeFile();
    return path.Location();
}

FileLocation CreateUniqueDirLocation(FileLocation const& directory, UStringRef<UTF8> const& hint) {
    UniquePath path(directory, hint);
    path.MakeDirectory();
    return path.Location();
}

FileLocation CreateUniquePipeLocation(FileLocation const& directory, UStringRef<UTF8> const& hint) {
    FileLocation location = UnixPlatform::CreateUniqueFileLocation(directory, hint);
    UnixPlatform::ForceNonexistence(location);
    UnixPlatform::CreateFifo(location, FileCreatingInfo{.mode = 0600});
    return location;
}

} // namespace UnixPlatform

FileLocation CreateUniqueFileLocation(FileLocation const& directory, UStringRef<UTF8> const& hint) {
    return UnixPlatform::CreateUniqueFileLocation(NonEmpty(directory), hint);
}

FileLocation CreateUniqueDirLocation(FileLocation const& directory, UStringRef<UTF8> const& hint) {
    return UnixPlatform::CreateUniqueDirLocation(NonEmpty(directory), hint);
}

FileLocation CreateUniquePipeLocation(FileLocation const& directory, UStringRef<UTF8> const& hint) {
    return UnixPlatform::CreateUniquePipeLocation(NonEmpty(directory), hint);
}

FileLocation CreateUniqueFileLocation(UStringRef<UTF8> const& hint) {
    return CreateUniqueFileLocation(TemporaryDirectoryMadeAnew(), hint);
}

FileLocation CreateUniquePipeLocation(UStringRef<UTF8> const& hint) {
    return CreateUniquePipeLocation(TemporaryDirectoryMadeAnew(), hint);
}

FileLocation CreateUniqueFileLocationWithHint(FileLocation const& location, UStringRef<UTF8> const& hint) {
    FileLocation const directory = DirectoryAt(location);
    CreateDirectoryTree(directory);
    return CreateUniqueFileLocation(directory, hint);
}

FileLocation LocationForTemporaryFile() {
    return FreeLocationIn(TemporaryFileDirLocation());
}

FileLocation LocationForTemporaryFile(FileLocation const& location) {
    return FreeLocationIn(DirectoryAt(location));
}

void MakeTemporaryFileLocation(FileLocation& location, UStringRef<UTF8> const& hint) {
    location = CreateUniqueFileLocation(hint.empty() ? "varnik"_utf8 : hint);
}

void GetDateFromNameInFileLocation(FileLocation const& location, unsigned int& year, unsigned int& month,
                                   unsigned int& day) {
    FileName const name = location.Name();
    ConstData const bytes = name.Raw();
    if (bytes.Size() < cDateSize) throw IllegalFileName();
    auto const* const first = bytes.begin();
    if (!std::all_of(first, first + cDateSize, [](unsigned char c) { return Ascii::Numeric().Has(c); }))
        throw IllegalFileName();
    year = ReadAsciiDecimalNumeral(ConstData(first, first + 4));
    month = ReadAsciiDecimalNumeral(ConstData(first + 4, first + 6));
    day = ReadAsciiDecimalNumeral(ConstData(first + 6, first + cDateSize));
}
