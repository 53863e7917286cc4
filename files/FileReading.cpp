#include "files/FileReading.h"

#include "files/FileCalls.h"
#include "files/NonEmptyLocation.h"

#include <algorithm>
#include <fcntl.h>
#include <poll.h>
#include <unistd.h>
#include <utility>

namespace {

constexpr mode_t cModeOfNewFiles = 0666;

// Its reader waits until the kernel has something to log.
bool BlocksForever(FileLocation const& location) {
    static auto const& kernelLog = *new FileLocation("/proc/kmsg"_utf8);
    return location.Compare(kernelLog) == 0;
}

// What cursors without a file stand on.
UnixPlatform::FileReadingPath const& ClosedPath() {
    static auto const& closed = *new UnixPlatform::FileReadingPath;
    return closed;
}

// Files that make up their contents when they are read refuse a seek to their end as invalid, and pipes have
// no offsets at all.
bool MeansUnseekable(int code) {
    return code == EINVAL || code == ESPIPE;
}

// Whether a read would not wait: there are bytes, or there is the end.
bool HasMoreNow(int descriptor) {
    pollfd waited{descriptor, POLLIN, 0};
    return poll(&waited, 1, 0) == 1;
}

} // namespace

namespace UnixPlatform {

FileReadingPath::~FileReadingPath() {
    if (m_descriptor != -1) close(m_descriptor);
}

void FileReadingPath::OpenExisting(FileLocation const& location, bool) {
    SetLocation(location);
    if (BlocksForever(m_location)) throw FileIOError(m_location, 0);
    OpenDescriptor(O_RDONLY);
}

void FileReadingPath::Open(FileLocation const& location, int flags) {
    SetLocation(location);
    OpenDescriptor(flags);
}

// The location may be the path's own.
void FileReadingPath::SetLocation(FileLocation const& location) {
    Close();
    m_location = location;
    m_unseekable = false;
}

void FileReadingPath::OpenDescriptor(int flags) {
    auto const path = m_location.LibPath();
    m_descriptor = CallUninterrupted([&] { return open(path.c_str(), flags, cModeOfNewFiles); });
    if (m_descriptor == -1) {
        ThrowError(m_location, errno);
    } else if (fcntl(m_descriptor, F_SETFD, FD_CLOEXEC) == -1) {
        int const code = errno;
        close(std::exchange(m_descriptor, -1));
        ThrowError(m_location, code);
    }
}

void FileReadingPath::Close() {
    if (m_descriptor == -1) return;
    if (close(std::exchange(m_descriptor, -1)) == -1) ThrowError(m_location, errno);
}

unsigned long FileReadingPath::Length() const {
    if (m_unseekable) return cNoFileLength;
    if (m_descriptor == -1) throw FileNotOpenError(m_location, 0);
    unsigned long const offset = Seek64(m_descriptor, 0, SEEK_CUR);
    if (offset == cNoFileLength) return UnknownLength(errno);
    unsigned long const length = Seek64(m_descriptor, 0, SEEK_END);
    if (length == cNoFileLength) return UnknownLength(errno);
    if (Seek64(m_descriptor, offset, SEEK_SET) == cNoFileLength) ThrowError(m_location, errno);
    return length;
}

unsigned long FileReadingPath::UnknownLength(int code) const {
    if (!MeansUnseekable(code)) ThrowError(m_location, code);
    m_unseekable = true;
    return cNoFileLength;
}

void FileReadingPath::ThrowError(FileLocation const& location, int code) const {
    ThrowFileError(location, code);
}

FileReader::FileReader() : m_path(&ClosedPath()) {
}

void FileReader::Start(FileReadingPath const& path, unsigned long position) {
    m_length = path.Length();
    m_path = &path;
    m_position = position;
    m_lookAheadTaken = false;
    m_ended = false;
    m_inStream = position == 0;
}

void FileReader::Reset() {
    SetPosition(0);
}

// A byte of a pipe that has been looked at stays the next one as long as the position does.
void FileReader::SetPosition(unsigned long position) {
    if (position != m_position) {
        m_inStream = false;
        m_lookAheadTaken = false;
    }
    m_position = position;
    m_ended = false;
}

bool FileReader::Unfinished() const {
    if (!m_path->Unseekable()) return m_position < m_length;
    if (m_ended) return false;
    Place const place = Seek();
    if (place == Place::InStream && m_lookAheadTaken) return true;
    if (place != Place::Unreachable &&
        CallUninterrupted([&] { return read(m_path->Descriptor(), &m_lookAhead, 1); }) == 1)
        m_lookAheadTaken = true;
    else
        m_ended = true;
    return place != Place::Unreachable && m_lookAheadTaken;
}

FileReader& FileReader::operator>>(Data target) {
    if (ReadOnce(target, HeldByte::WithMore) < target.Size()) ThrowError(m_path->Location(), cReadPastEnd);
    return *this;
}

FileReader& FileReader::operator>>(Buffer& target) {
    Data const room = WithinLength(Data(target.Next(), target.Next() + target.Room()));
    target.Advance(ReadOnce(room, HeldByte::Alone));
    return *this;
}

// The front of `target` that the file, as the start saw it, has bytes for: all of it without a length, which
// is all ones.
Data FileReader::WithinLength(Data target) const {
    unsigned long const left = m_position < m_length ? m_length - m_position : 0;
    return Data(target.begin(), target.begin() + std::min<unsigned long>(left, target.Size()));
}

// Leaves the reason in errno for a place that can't be reached.
FileReader::Place FileReader::Seek() const {
    if (Seek64(m_path->Descriptor(), m_position, SEEK_SET) != cNoFileLength) return Place::AtPosition;
    return errno == ESPIPE && m_inStream ? Place::InStream : Place::Unreachable;
}

// Reads at the position and moves it; returns how many bytes came. The byte that was looked at can't be read
// again from a pipe, where it stays held until the read for the rest has gone well; any other file gives it
// once more, and it is forgotten whatever comes of the read. Who can do with it alone does not wait for more:
// the writer may be waiting for an answer to it.
std::size_t FileReader::ReadOnce(Data target, HeldByte heldByte) {
    if (target.empty()) return 0;
    Place const place = Seek();
    if (place != Place::InStream) m_lookAheadTaken = false;
    if (place == Place::Unreachable) {
        ThrowError(m_path->Location(), errno);
        return 0;
    }
    bool const holds = m_lookAheadTaken;
    Data const rest(target.begin() + (holds ? 1 : 0), target.end());
    std::size_t count = 0;
    bool const mustNotWait = holds && heldByte == HeldByte::Alone;
    if (!rest.empty() && (!mustNotWait || HasMoreNow(m_path->Descriptor()))) count = Read(rest);
    if (holds) {
        target[0] = m_lookAhead;
        ++count;
    }
    m_lookAheadTaken = false;
    m_position += count;
    return count;
}

std::size_t FileReader::Read(Data target) const {
    ssize_t const count =
        CallUninterrupted([&] { return read(m_path->Descriptor(), target.begin(), target.Size()); });
    if (count == -1) ThrowError(m_path->Location(), errno);
    return count == -1 ? 0 : static_cast<std::size_t>(count);
}

void FileReader::ThrowError(FileLocation const& location, int code) const {
    switch (code) {
    case 0: return;
    case EPERM:
    case EACCES: throw FilePermissionError(location, code);
    case EINVAL: throw FileSeekError(location, code);
    case cReadPastEnd: throw EndOfFileError(location, code);
    default: throw FileIOError(location, code);
    }
}

} // namespace UnixPlatform

FileReadingPath::FileReadingPath(FileLocation const& location, bool shared) {
    OpenExisting(location, shared);
}

void FileReadingPath::OpenExisting(FileLocation const& location, bool shared) {
    UnixPlatform::FileReadingPath::OpenExisting(NonEmpty(location), shared);
}

FileReader::FileReader(UnixPlatform::FileReadingPath const& path, unsigned long position) {
    Start(path, position);
}
