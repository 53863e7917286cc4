#pragma once

#include "files/FileName.h"
#include "text/AutoNullTerminated.h"
#include "text/CopiedUString.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <utility>

namespace UnixPlatform {

class UnixFileInfo;

} // namespace UnixPlatform

// Room for what a platform layer may remember about a file beside its location. A location owns and copies
// it and never looks into it.
struct CachedFileInformation {
    std::byte bytes[64];
};

// The name by which every file operation names a file. A path of the system is a string of bytes, while the
// program works in UTF-8: a location holds its path as text or, when it cannot be told as text, as raw bytes
// (a binary location), so that no path is lost. Bytes take precedence over text.
//
// A value: copies are deep. Paths are not normalised, and "." and ".." have no meaning here: "a/../b" stays
// as it is. A location with neither text nor bytes is the empty location, which most operations refuse with
// EmptyFileLocationError.
//
// The platform layer and the portable one have one type with one name in each namespace. It lives in the
// global one, so that `DeleteFile(location)` means the portable operation; the platform's operations are
// called by their qualified names, `UnixPlatform::DeleteFile(location)`, also from within the namespace.
class FileLocation {
public:
    // The empty location.
    FileLocation() noexcept = default;
    // A path as text. If it is longer than one byte and ends in "/", exactly one "/" is dropped: "/a/" gives
    // "/a", and "/a//" gives "/a/".
    explicit FileLocation(UStringRef<UTF8> const& path);
    // The same; take over the text, which is left empty.
    explicit FileLocation(AutoUString<UTF8>& path);
    explicit FileLocation(AutoUString<UTF8>&& path);
    // A path as the system gave it, in the local encoding, with every "/" it has. It becomes text only if
    // that is UTF-8 and leads back to the same bytes, so that the location names the same file; any other is
    // kept as bytes, "/a\xFF" also in a UTF-8 locale. A null pointer gives the empty location.
    explicit FileLocation(char const* path);
    // A path as bytes, unchanged.
    explicit FileLocation(UStringRef<Binary8Bit> const& bytes);
    // A child: the path of `parent`, "/" and `child`, which first loses every "/" at both its ends. A child
    // of which nothing remains gives the parent's path. "x" in "/" is "/x", and "/x/" in "/a" is "/a/x". The
    // parent's cached information is copied, too. A binary parent has binary children.
    // Throw EmptyFileLocationError for an empty parent.
    FileLocation(FileLocation const& parent, UStringRef<UTF8> const& child);
    FileLocation(FileLocation const& parent, UStringRef<Binary8Bit> const& child);

    FileLocation(FileLocation const& other);
    FileLocation(FileLocation&& other) noexcept;
    FileLocation& operator=(FileLocation const& other);
    FileLocation& operator=(FileLocation&& other) noexcept;
    ~FileLocation() = default;

    // Whether there is neither text nor bytes.
    bool empty() const { return m_text.empty() && m_bytes.empty(); }
    // Whether the path is held as bytes.
    bool IsBinary() const { return !m_bytes.empty(); }
    // Views of what is held, one of them empty; valid until the location is changed or moved.
    UStringRef<UTF8> Text() const { return m_text.Ref(); }
    UStringRef<Binary8Bit> Bytes() const { return m_bytes.Ref(); }
    // The one that is in use; valid as they are.
    ConstData Raw() const { return m_bytes.empty() ? ConstData(m_text) : ConstData(m_bytes); }

    // The location without its last component: "/" for "/a", "a" for "a/b". A path that ends in "/" has as
    // its parent the same path without that one "/". A binary location that was made as a child gives what
    // stands in front of the child.
    // Throws RootHasNoParent for the root, InvalidFileLocation for a path without any "/",
    // EmptyFileLocationError for the empty location, and BinaryManipulationNotSupported for a binary child of
    // which nothing remained.
    FileLocation Parent() const;
    // What stands behind the last "/": the whole path when it has none, and the empty name when it ends in
    // one. A binary location gives a name in bytes, "b/c" when it was made as that child; throws
    // BinaryManipulationNotSupported for a binary child of which nothing remained, the root included.
    FileName Name() const;
    // The path for people: the text; of a binary location the hexadecimal form, "2f74e4", and when the bytes
    // are valid UTF-8 these as well: "2f61 (UTF8: /a)".
    AutoUString<UTF8> GetDisplayPath() const;
    // The path for system calls: a binary location's bytes as they are, a text in the local encoding. Throws
    // UnixPlatform::WideToMultiByteConvertError for a text that the local encoding cannot spell, and what
    // UnixPlatform::ToLocal8Bit throws besides. A NUL within the path ends it for the system.
    AutoNullTerminated<Local8Bit> LibPath() const;
    // Whether this is "/". Throws EmptyFileLocationError for the empty location.
    bool IsRoot() const;
    // Order of the paths' bytes, be they held as text or as bytes: below, equal to or above 0. The empty
    // location comes first. Case counts.
    std::int32_t Compare(FileLocation const& other) const;

    // These ask the system, and throw what LibPath throws.

    // Whether anything stands under this name, a link that leads nowhere included.
    bool Exists() const;
    // Whether it is a directory or a link that leads to one; false for what does not exist.
    bool IsDirectory() const;
    // Whether the process may not write to it, because of its permissions or on a read-only file system.
    // Throws by ThrowFileError when the system cannot tell, such as FileNotFoundError.
    bool IsReadOnly() const;
    // What is known of the file. Throws InvalidStats for a path that does not exist.
    UnixPlatform::UnixFileInfo GetValidInfo() const;

    // Null when there is none. Valid until the location is changed or moved.
    CachedFileInformation const* CachedInformation() const { return m_cachedInformation.get(); }
    // Takes ownership; null takes the information away.
    void SetCachedInformation(std::unique_ptr<CachedFileInformation> information) noexcept {
        m_cachedInformation = std::move(information);
    }

private:
    friend FileLocation CreateBinaryLocation(FileLocation const& parent, UStringRef<Binary8Bit> const& child);
    friend bool EqualOrDescendant(FileLocation const& ancestor, FileLocation const& location);

    // The part of Raw() that Parent() gives, with its failures.
    ConstData ParentPath() const;
    // A location that holds `path`, a part of this location's path, as this one holds its own.
    FileLocation WithPath(ConstData path) const;
    bool KnowsParent() const { return IsBinary() && m_parentLength > 0; }
    void CopyCachedInformation(FileLocation const& other);

    CopiedUString<UTF8> m_text;
    CopiedUString<Binary8Bit> m_bytes;
    // Of a binary location: how many of its bytes are its parent, of which the "/" in front of the child is
    // none unless the parent is the root; 0 when not recorded.
    std::int32_t m_parentLength = 0;
    std::unique_ptr<CachedFileInformation> m_cachedInformation;
};

// A child as bytes, of a parent as bytes or text: as the child's constructor does it, the result always being
// a binary location, which knows its parent. Throws EmptyFileLocationError for an empty parent.
FileLocation CreateBinaryLocation(FileLocation const& parent, UStringRef<Binary8Bit> const& child);

// Whether `location` is `ancestor` or lies below it. Both are taken as they are written: neither links nor
// dots are followed. Throws EmptyFileLocationError when either is empty, and InvalidFileLocation when a
// relative location runs out of parents.
bool EqualOrDescendant(FileLocation const& ancestor, FileLocation const& location);
// The same, and false when both are equal.
bool IsDescendant(FileLocation const& ancestor, FileLocation const& location);

// Splits a path whose last component may hold the wildcards "?" and "*": "/tmp/*.log" sets `location` to
// "/tmp" and returns "*.log"; "*.log" sets it to the empty location. A path without wildcards in its last
// component goes to `location` whole, and the empty text is returned.
// Throws EmptyFileLocationError for an empty text; `location` is then unchanged.
AutoUString<UTF8> MakeFileLocationWithWildcard(UStringRef<UTF8> const& text, FileLocation& location);

namespace UnixPlatform {

using FileLocation = ::FileLocation;

} // namespace UnixPlatform
