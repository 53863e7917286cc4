#include "files/FileReadingLoop.h"

#include "foundation/Exceptions.h"

#include <algorithm>

FileReadingLoop::FileReadingLoop(Data room, UnixPlatform::FileReadingPath const& path,
                                 Range<unsigned long> range)
    : m_room(room) {
    Start(path, range);
}

void FileReadingLoop::Start(UnixPlatform::FileReadingPath const& path, unsigned long position) {
    Stop();
    m_reader.Start(path, position);
    StartAt(m_reader.Length() - position, !path.Unseekable());
}

void FileReadingLoop::Start(UnixPlatform::FileReadingPath const& path, Range<unsigned long> range) {
    Start(path, range.begin, range.end);
}

void FileReadingLoop::Start(UnixPlatform::FileReadingPath const& path, unsigned long begin,
                            unsigned long end) {
    Stop();
    m_reader.Start(path, begin);
    StartAt(end - begin, true);
}

void FileReadingLoop::Start(UnixPlatform::FileReader const& reader, Range<unsigned long> range) {
    Stop();
    m_reader = reader;
    m_reader.SetPosition(range.begin);
    StartAt(range.end - range.begin, true);
}

void FileReadingLoop::StartAt(unsigned long count, bool endKnown) {
    m_toRead = count;
    m_endKnown = endKnown;
    ReadNext();
}

void FileReadingLoop::Stop() {
    m_current = ConstData();
    m_toRead = 0;
}

void FileReadingLoop::DropChunk() {
    m_toRead -= m_current.Size();
    m_current = ConstData();
}

// The range is looked at first: the question whether a pipe has more may wait for its writer.
void FileReadingLoop::Read() {
    DropChunk();
    if (m_toRead == 0 || !m_reader.Unfinished()) throw FileReadingLoopEndOfFileError();
    ReadChunk();
    // A file that has become shorter still counts as unfinished, and would do so forever.
    if (m_current.empty()) throw FileReadingLoopEndOfFileError();
}

FileReadingLoop& FileReadingLoop::operator++() {
    DropChunk();
    ReadNext();
    return *this;
}

// The end of a file without a length is no surprise when it comes. It shows in the read itself, so that
// nothing is read twice and a failure is not taken for the end.
void FileReadingLoop::ReadNext() {
    if (m_toRead == 0) return;
    if (m_endKnown) return Read();
    ReadChunk();
    if (m_current.empty()) m_toRead = 0;
}

void FileReadingLoop::ReadChunk() {
    std::size_t const size = std::min<unsigned long>(m_room.Size(), m_toRead);
    Buffer chunk(Data(m_room.begin(), m_room.begin() + size));
    m_reader >> chunk;
    m_current = chunk.Written();
}
