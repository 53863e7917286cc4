#include "files/FileWriting.h"

#include "files/FileCalls.h"
#include "files/FileRetry.h"
#include "files/NonEmptyLocation.h"

#include <fcntl.h>
#include <limits>
#include <unistd.h>

namespace {

// What cursors without a file stand on.
UnixPlatform::FileWritingPath const& ClosedPath() {
    static auto const& closed = *new UnixPlatform::FileWritingPath;
    return closed;
}

void ThrowFileWritingError(FileLocation const& location, int code) {
    switch (code) {
    case EEXIST: throw FileExistsError(location, code);
    case ENOSPC: throw FileDiskFullError(location, code);
    default: ThrowFileError(location, code);
    }
}

// Writes some of `data` where the descriptor stands; returns the number of bytes, or 0 with the reason in
// errno. A device that takes nothing and tells no reason would keep its writer in a loop: its reason is EIO.
std::size_t WriteSome(int descriptor, ConstData data) {
    ssize_t const count =
        UnixPlatform::CallUninterrupted([&] { return write(descriptor, data.begin(), data.Size()); });
    if (count > 0) return static_cast<std::size_t>(count);
    if (count == 0) errno = EIO;
    return 0;
}

} // namespace

namespace UnixPlatform {

void FileWritingPath::OpenNew(FileLocation const& location) {
    Open(location, O_RDWR | O_CREAT | O_EXCL);
}

void FileWritingPath::OpenNewOrAsNew(FileLocation const& location) {
    Open(location, O_RDWR | O_CREAT | O_TRUNC);
}

void FileWritingPath::OpenExistingOrNew(FileLocation const& location) {
    Open(location, O_RDWR | O_CREAT);
}

void FileWritingPath::OpenExisting(FileLocation const& location) {
    Open(location, O_RDWR);
}

void FileWritingPath::Flush() const {
    if (CallUninterrupted([&] { return fsync(Descriptor()); }) == -1) ThrowError(Location(), errno);
}

void FileWritingPath::FlushOnBrokenFilesystems() const {
    Flush();
}

void FileWritingPath::FlushOnBrokenFilesystemsWithRetry(FileLocation const& location,
                                                        FileRetryLog const& log) const {
    RetryFileOperation(cShortRetrySchedule, "FlushOnBrokenFilesystems"_utf8, &location, nullptr, log,
                       [&] { FlushOnBrokenFilesystems(); });
}

void FileWritingPath::SetLength(unsigned long length) {
    unsigned long const present = Length();
    if (present >= length) {
        if (CallUninterrupted([&] { return ftruncate64(Descriptor(), static_cast<off64_t>(present)); }) == -1)
            ThrowError(Location(), errno);
        return;
    }
    // The length takes the place of the origin. One that is no int must not come out as another origin.
    unsigned long const origin = length - 1;
    if (origin > static_cast<unsigned long>(std::numeric_limits<int>::max())) {
        ThrowError(Location(), EINVAL);
        return;
    }
    if (Seek64(Descriptor(), 0, static_cast<int>(origin)) == cNoFileLength) {
        ThrowError(Location(), errno);
        return;
    }
    if (WriteSome(Descriptor(), "\0"_data) == 0) ThrowError(Location(), errno);
}

void FileWritingPath::ThrowError(FileLocation const& location, int code) const {
    ThrowFileWritingError(location, code);
}

FileWriter::FileWriter() : m_path(&ClosedPath()) {
}

FileWriter::FileWriter(FileWritingPath const& path, unsigned long position)
    : m_path(&path), m_position(position) {
}

void FileWriter::Start(FileWritingPath const& path, unsigned long position) {
    m_path = &path;
    m_position = position;
}

FileWriter& FileWriter::operator<<(ConstData data) {
    while (!data.empty()) {
        std::size_t const count = WriteOnce(data);
        if (count == 0) break;
        m_position += count;
        data = ConstData(data.begin() + count, data.end());
    }
    return *this;
}

// At least one byte, unless an override of ThrowError returns.
std::size_t FileWriter::WriteOnce(ConstData data) const {
    if (Seek64(m_path->Descriptor(), m_position, SEEK_SET) == cNoFileLength) {
        ThrowError(m_path->Location(), errno);
        return 0;
    }
    std::size_t const count = WriteSome(m_path->Descriptor(), data);
    if (count == 0) ThrowError(m_path->Location(), errno);
    return count;
}

void FileWriter::ThrowError(FileLocation const& location, int code) const {
    if (code == EINVAL) throw FileSeekError(location, code);
    ThrowFileWritingError(location, code);
}

} // namespace UnixPlatform

FileWritingPath::FileWritingPath(FileLocation const& location, OpenNewFile) {
    OpenNew(location);
}

FileWritingPath::FileWritingPath(FileLocation const& location, OpenNewFileOrAsNewFile) {
    OpenNewOrAsNew(location);
}

FileWritingPath::FileWritingPath(FileLocation const& location, OpenExistingFileOrNewFile) {
    OpenExistingOrNew(location);
}

FileWritingPath::FileWritingPath(FileLocation const& location, OpenExistingFile) {
    OpenExisting(location);
}

FileWritingPath::FileWritingPath(FileLocation const& location) {
    OpenExisting(location);
}

void FileWritingPath::OpenNew(FileLocation const& location) {
    UnixPlatform::FileWritingPath::OpenNew(NonEmpty(location));
}

void FileWritingPath::OpenNewOrAsNew(FileLocation const& location) {
    UnixPlatform::FileWritingPath::OpenNewOrAsNew(NonEmpty(location));
}

void FileWritingPath::OpenExistingOrNew(FileLocation const& location) {
    UnixPlatform::FileWritingPath::OpenExistingOrNew(NonEmpty(location));
}

void FileWritingPath::OpenExisting(FileLocation const& location) {
    UnixPlatform::FileWritingPath::OpenExisting(NonEmpty(location));
}

FileWriter::FileWriter(UnixPlatform::FileWritingPath const& path, unsigned long position)
    : UnixPlatform::FileWriter(path, position) {
}

FileWriter::FileWriter(UnixPlatform::FileWritingPath const& path, WritePositionEndOfFile)
    : UnixPlatform::FileWriter(path, path.Length()) {
}

FileWriter& FileWriter::operator<<(ConstData data) {
    UnixPlatform::FileWriter::operator<<(data);
    return *this;
}

FileWriter& FileWriter::operator<<(UStringRef<UTF8> const& text) {
    return *this << ConstData(text);
}
