#include "files/FileLocation.h"

#include "files/FileErrors.h"
#include "files/FileStats.h"
#include "files/LocalPath.h"
#include "text/Hex.h"
#include "text/IsUTF8.h"
#include "text/UStringFunctions.h"

#include <algorithm>
#include <cerrno>
#include <limits>
#include <unistd.h>
#include <utility>

// All cutting is done on views of the path's bytes, which are the same for text and bytes, and a location is
// only made of the result: walking up a path costs time in proportion to its length, not to its square.

namespace {

constexpr unsigned char cSlash = '/';

template <class E>
UStringRef<E> Taken(ConstData path) {
    return UStringRef<E>(E(), path);
}

ConstData First(ConstData path, std::size_t size) {
    return ConstData(path.begin(), path.begin() + size);
}

ConstData From(ConstData path, std::size_t offset) {
    return ConstData(path.begin() + offset, path.end());
}

bool EndsInSlash(ConstData path) {
    return !path.empty() && path[path.Size() - 1] == cSlash;
}

bool IsRootPath(ConstData path) {
    return path.Size() == 1 && path[0] == cSlash;
}

// Offset behind the last "/"; 0 when there is none.
std::size_t LastComponent(ConstData path) {
    std::size_t offset = path.Size();
    while (offset != 0 && path[offset - 1] != cSlash) --offset;
    return offset;
}

// What stands in front of the last component, by the rules of FileLocation::Parent; an empty range when there
// is no "/". The path must be neither empty nor the root.
ConstData WithoutLastComponent(ConstData path) {
    std::size_t const offset = LastComponent(path);
    if (offset == 0) return ConstData();
    // Of "/" alone in front of the component the parent keeps that "/".
    return First(path, offset == 1 ? 1 : offset - 1);
}

ConstData WithoutOneTrailingSlash(ConstData path) {
    return path.Size() > 1 && EndsInSlash(path) ? First(path, path.Size() - 1) : path;
}

ConstData WithoutOuterSlashes(ConstData path) {
    unsigned char const* first = path.begin();
    unsigned char const* last = path.end();
    while (first != last && *first == cSlash) ++first;
    while (first != last && last[-1] == cSlash) --last;
    return ConstData(first, last);
}

// `child` has no outer slashes.
template <class E>
AutoUString<E> Joined(ConstData parent, ConstData child) {
    AutoUString<E> path(E(), std::size_t{0}, parent.Size() + 1 + child.Size());
    path += Taken<E>(parent);
    if (child.empty()) return path;
    if (!EndsInSlash(parent)) path += cSlash;
    path += Taken<E>(child);
    return path;
}

// How much of a path that Joined made is the parent. A "/" that joins them is the child's, so that the parent
// is told without it, but for the root, which is nothing else. A parent that is too long for the field counts
// as not recorded: what stands in front of the last component is looked up then.
std::int32_t ParentLength(ConstData parent, ConstData child) {
    bool const sharesSlash = !child.empty() && EndsInSlash(parent) && !IsRootPath(parent);
    std::size_t const length = sharesSlash ? parent.Size() - 1 : parent.Size();
    return length <= std::numeric_limits<std::int32_t>::max() ? static_cast<std::int32_t>(length) : 0;
}

// Offset of the child behind its parent of that length. A child has no "/" in front: the one that stands
// there joins, and where none stands the parent is the root.
std::size_t ChildOffset(ConstData path, std::size_t parentLength) {
    return path[parentLength] == cSlash ? parentLength + 1 : parentLength;
}

UnixPlatform::UnixFileInfo InfoOf(FileLocation const& location) {
    UnixPlatform::UnixFileInfo info;
    info.Set(location);
    return info;
}

bool IsWildcard(unsigned char byte) {
    return byte == '?' || byte == '*';
}

} // namespace

FileLocation::FileLocation(UStringRef<UTF8> const& path)
    : m_text(Taken<UTF8>(WithoutOneTrailingSlash(path))) {
}

FileLocation::FileLocation(AutoUString<UTF8>& path) : m_text(path) {
    if (m_text.SizeInUnits() > 1 && EndsInSlash(m_text)) m_text.erase(m_text.SizeInUnits() - 1, 1);
}

FileLocation::FileLocation(AutoUString<UTF8>&& path) : FileLocation(path) {
}

FileLocation::FileLocation(char const* path) {
    UStringRef<Local8Bit> const local = MakeLocalRef(path);
    try {
        m_text = FaithfulTextOf(local);
    } catch (...) {
        m_text.clear(); // Whatever fails, the path is not lost.
    }
    if (m_text.empty()) m_bytes = BytesOf(local);
}

FileLocation::FileLocation(UStringRef<Binary8Bit> const& bytes) : m_bytes(bytes) {
}

FileLocation::FileLocation(FileLocation const& parent, UStringRef<UTF8> const& child) {
    if (parent.IsBinary()) {
        *this = CreateBinaryLocation(parent, Taken<Binary8Bit>(child));
        return;
    }
    if (parent.m_text.empty()) throw EmptyFileLocationError(parent, 0);
    m_text = Joined<UTF8>(parent.m_text, WithoutOuterSlashes(child));
    CopyCachedInformation(parent);
}

FileLocation::FileLocation(FileLocation const& parent, UStringRef<Binary8Bit> const& child)
    : FileLocation(CreateBinaryLocation(parent, child)) {
}

FileLocation::FileLocation(FileLocation const& other)
    : m_text(other.m_text), m_bytes(other.m_bytes), m_parentLength(other.m_parentLength) {
    CopyCachedInformation(other);
}

FileLocation::FileLocation(FileLocation&& other) noexcept
    : m_text(std::move(other.m_text)),
      m_bytes(std::move(other.m_bytes)),
      m_parentLength(std::exchange(other.m_parentLength, 0)),
      m_cachedInformation(std::move(other.m_cachedInformation)) {
}

FileLocation& FileLocation::operator=(FileLocation const& other) {
    return *this = FileLocation(other);
}

FileLocation& FileLocation::operator=(FileLocation&& other) noexcept {
    m_text = std::move(other.m_text);
    m_bytes = std::move(other.m_bytes);
    m_parentLength = std::exchange(other.m_parentLength, 0);
    m_cachedInformation = std::move(other.m_cachedInformation);
    return *this;
}

void FileLocation::CopyCachedInformation(FileLocation const& other) {
    if (other.m_cachedInformation)
        m_cachedInformation = std::make_unique<CachedFileInformation>(*other.m_cachedInformation);
}

FileLocation FileLocation::WithPath(ConstData path) const {
    FileLocation location;
    if (IsBinary())
        location.m_bytes = Taken<Binary8Bit>(path);
    else
        location.m_text = Taken<UTF8>(path);
    return location;
}

ConstData FileLocation::ParentPath() const {
    if (IsRoot()) throw RootHasNoParent(*this, 0);
    if (KnowsParent()) {
        auto const length = static_cast<std::size_t>(m_parentLength);
        if (length >= m_bytes.SizeInUnits()) throw BinaryManipulationNotSupported();
        return First(m_bytes, length);
    }
    ConstData const parent = WithoutLastComponent(Raw());
    if (parent.empty()) throw InvalidFileLocation(*this, 0);
    return parent;
}

FileLocation FileLocation::Parent() const {
    return WithPath(ParentPath());
}

FileName FileLocation::Name() const {
    std::size_t offset = 0;
    if (KnowsParent()) {
        auto const length = static_cast<std::size_t>(m_parentLength);
        if (length >= m_bytes.SizeInUnits()) throw BinaryManipulationNotSupported();
        offset = ChildOffset(m_bytes, length);
    } else {
        offset = LastComponent(Raw());
    }
    ConstData const name = From(Raw(), offset);
    return IsBinary() ? FileName(Taken<Binary8Bit>(name)) : FileName(Taken<UTF8>(name));
}

AutoUString<UTF8> FileLocation::GetDisplayPath() const {
    if (!IsBinary()) return MakeUString(m_text.Ref());
    AutoUString<UTF8> display = MakeHexFromBinary8Bit(m_bytes);
    if (!IsUTF8(m_bytes)) return display;
    display += " (UTF8: "_utf8;
    display += MakeUTF8Ref(ConstData(m_bytes));
    display += ")"_utf8;
    return display;
}

AutoNullTerminated<Local8Bit> FileLocation::LibPath() const {
    return IsBinary() ? MakeBinaryLocalString(m_bytes) : MakeLocalString(m_text.Ref());
}

bool FileLocation::IsRoot() const {
    if (empty()) throw EmptyFileLocationError(*this, 0);
    return IsRootPath(Raw());
}

std::int32_t FileLocation::Compare(FileLocation const& other) const {
    return ::Compare(Raw(), other.Raw());
}

bool FileLocation::Exists() const {
    return InfoOf(*this).Exists();
}

bool FileLocation::IsDirectory() const {
    return InfoOf(*this).IsDirectory();
}

bool FileLocation::IsReadOnly() const {
    auto const path = LibPath();
    if (access(path.c_str(), W_OK) == 0) return false;
    int const code = errno;
    if (code != EROFS && code != EACCES) ThrowFileError(*this, code);
    return true;
}

UnixPlatform::UnixFileInfo FileLocation::GetValidInfo() const {
    UnixPlatform::UnixFileInfo info = InfoOf(*this);
    if (!info.Exists()) throw InvalidStats(*this, 0);
    return info;
}

FileLocation CreateBinaryLocation(FileLocation const& parent, UStringRef<Binary8Bit> const& child) {
    if (parent.empty()) throw EmptyFileLocationError(parent, 0);
    ConstData const name = WithoutOuterSlashes(child);
    FileLocation location;
    location.m_bytes = Joined<Binary8Bit>(parent.Raw(), name);
    location.m_parentLength = ParentLength(parent.Raw(), name);
    location.CopyCachedInformation(parent);
    return location;
}

bool EqualOrDescendant(FileLocation const& ancestor, FileLocation const& location) {
    if (ancestor.empty()) throw EmptyFileLocationError(ancestor, 0);
    if (location.Compare(ancestor) == 0) return true;
    if (location.IsRoot()) return false;
    ConstData path = location.ParentPath();
    // At most one of these paths has the ancestor's size, so that bytes are compared but once.
    while (!(path == ancestor.Raw())) {
        if (IsRootPath(path)) return false;
        ConstData const parent = WithoutLastComponent(path);
        if (parent.empty()) throw InvalidFileLocation(location.WithPath(path), 0);
        path = parent;
    }
    return true;
}

bool IsDescendant(FileLocation const& ancestor, FileLocation const& location) {
    if (!ancestor.empty() && ancestor.Compare(location) == 0) return false;
    return EqualOrDescendant(ancestor, location);
}

AutoUString<UTF8> MakeFileLocationWithWildcard(UStringRef<UTF8> const& text, FileLocation& location) {
    if (text.empty()) throw EmptyFileLocationError(FileLocation(), 0);
    ConstData const path(text);
    std::size_t const offset = LastComponent(path);
    ConstData const component = From(path, offset);
    if (std::find_if(component.begin(), component.end(), IsWildcard) == component.end()) {
        location = FileLocation(text);
        return AutoUString<UTF8>();
    }
    // Made before the location changes, since the text may be the location's own.
    AutoUString<UTF8> pattern(Taken<UTF8>(component));
    location = FileLocation(Taken<UTF8>(First(path, offset)));
    return pattern;
}
