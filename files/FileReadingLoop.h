#pragma once

#include "files/FileReading.h"
#include "foundation/Range.h"

// A loop over the contents of a file, chunk by chunk, in room that the caller provides:
//
//   unsigned char room[4096];
//   FileReadingLoop loop(Data(room, room + sizeof room));
//   for (loop.Start(path, 0); loop.Unfinished(); ++loop) receiver.Receive(*loop);
//
// A loop never gives less than it was asked for without a word: a file that ends before the end of the range
// throws FileReadingLoopEndOfFileError, also one that has become shorter in the meantime. Failures of the
// system are thrown as the reader throws them. After a throw there is no chunk.
class FileReadingLoop {
public:
    // `room` must have room for a byte and outlive the loop. The loop is over until it is started.
    explicit FileReadingLoop(Data room) : m_room(room) {}
    // Started.
    FileReadingLoop(Data room, UnixPlatform::FileReadingPath const& path, Range<unsigned long> range);
    FileReadingLoop(FileReadingLoop const&) = delete;
    FileReadingLoop& operator=(FileReadingLoop const&) = delete;

    // These read the first chunk, if there is anything to read. `path` must outlive the loop or its next
    // start.

    // From `position` to the end of the file: to the length that it has now or, of a file without a
    // length, to where a read gives nothing. A position behind the end throws.
    void Start(UnixPlatform::FileReadingPath const& path, unsigned long position);
    // The bytes of a range. One that ends in front of its beginning asks for more than any file has.
    void Start(UnixPlatform::FileReadingPath const& path, Range<unsigned long> range);
    void Start(UnixPlatform::FileReadingPath const& path, unsigned long begin, unsigned long end);
    // The same with a copy of a reader, and so with the length that this has seen.
    void Start(UnixPlatform::FileReader const& reader, Range<unsigned long> range);

    // Whether there is a chunk.
    bool Unfinished() const { return !m_current.empty(); }
    bool Finished() const { return !Unfinished(); }
    // The chunk that was read last; empty when the loop is over. Valid until the next is read.
    ConstData operator*() const { return m_current; }

    // Reads the next chunk in the place of the current one, which counts as read. Throws
    // FileReadingLoopEndOfFileError at the end of the file and at that of the range.
    void Read();
    // Goes on to the next chunk or, behind the last byte, to the end of the loop.
    FileReadingLoop& operator++();

private:
    void Stop();
    void StartAt(unsigned long count, bool endKnown);
    void DropChunk();
    void ReadNext();
    void ReadChunk();

    Data m_room;
    UnixPlatform::FileReader m_reader;
    ConstData m_current;
    // From the current chunk on.
    unsigned long m_toRead = 0;
    bool m_endKnown = true;
};
