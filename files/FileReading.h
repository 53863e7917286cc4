#pragma once

#include "files/FileErrors.h"
#include "files/FileLocation.h"
#include "foundation/DataReader.h"

#include <cstdint>

// Reading of files: a path owns an open descriptor, a reader is a cursor over a path with a position of its
// own. Each transfer of a cursor first seeks to its position, so that any number of cursors can work on one
// path; as the offset of the descriptor is shared, all of them belong to one thread.
//
// Failures of the system go through the virtual ThrowError of the path or the cursor at hand, with the
// location of the open file. Calls that a signal interrupts are made again.

// What Length() gives for a file that has no length to seek to.
inline constexpr unsigned long cNoFileLength = static_cast<unsigned long>(-1);

// The code of a read past the end: the reader's own marker, whatever the system means by the number.
inline constexpr int cReadPastEnd = 90;

namespace UnixPlatform {

// A file that is open for reading, or no file. It closes its file when it goes, without a word about a
// failure then. Cursors point to it: it is not copied and not moved, and outlives them.
class FileReadingPath {
public:
    // Not open.
    FileReadingPath() = default;
    FileReadingPath(FileReadingPath const&) = delete;
    FileReadingPath& operator=(FileReadingPath const&) = delete;
    virtual ~FileReadingPath();

    // Opens a file that exists, and closes the one that was open before. The file does not stay open in a
    // program that this process may start. "/proc/kmsg" is refused with FileIOError and code 0 before
    // anything is opened, since a read of it waits forever. The boolean has no effect on this platform.
    // After a throw nothing is open.
    void OpenExisting(FileLocation const& location, bool);
    // Closes the file; without an open file it does nothing. Also when this throws, the path is closed.
    void Close();

    // The length of the file in bytes. A pipe and other files without an end that can be sought, such as
    // many below /proc, give cNoFileLength, and from then on without a look at the file: also once it is
    // closed, until the next one is opened. Otherwise FileNotOpenError with code 0 is thrown when nothing is
    // open. The offset of the descriptor stays as it was.
    unsigned long Length() const;

    // Whether Length() has found the file to have no end that can be sought.
    bool Unseekable() const { return m_unseekable; }
    bool IsOpen() const { return m_descriptor != -1; }
    // The descriptor, which stays the path's own; -1 when nothing is open.
    std::int32_t Descriptor() const { return m_descriptor; }
    // Of the last file that was to be opened, whether that went well or not, and also once it is closed. A
    // file that could not be closed to make room for the next one is still the last. Empty before the first.
    FileLocation const& Location() const { return m_location; }

    // Throws by ThrowFileError. Returns for code 0.
    virtual void ThrowError(FileLocation const& location, int code) const;

protected:
    // Opens with the flags of open(); a file that is made gets the mode 0666 less the umask.
    void Open(FileLocation const& location, int flags);

private:
    void SetLocation(FileLocation const& location);
    void OpenDescriptor(int flags);
    // The length behind a seek that failed.
    unsigned long UnknownLength(int code) const;

    FileLocation m_location;
    std::int32_t m_descriptor = -1;
    mutable bool m_unseekable = false;
};

// A cursor that reads. It is a value: a copy reads on from the same position by itself.
//
// A file without a length, such as many below /proc, is finished when a read of one byte gives none. A pipe
// has no offsets either: a reader that starts at position 0 takes what the pipe holds, byte after byte, and
// a reader that starts elsewhere or is reset after reading finds that it can't seek there. Copies of a reader
// of a pipe take the bytes from one another, but each gives the one that had been looked at before the copy:
// only one of them should read on.
class FileReader : public DataReader {
public:
    // A reader of no file: finished, and a read of a range throws FileIOError.
    FileReader();
    FileReader(FileReader const&) = default;
    FileReader& operator=(FileReader const&) = default;
    ~FileReader() override = default;

    // Takes `path` and reads its length, once for all reads: a file that grows later is read up to the
    // length that it has now. `path` must outlive the reader or its next start. Throws what Length() throws.
    void Start(FileReadingPath const& path, unsigned long position);
    // Back to position 0.
    void Reset() override;

    // Whether the position lies below the length that the start saw. Of a file without a length: whether
    // there is a byte to read; it is looked at and, from a pipe, kept for the next read. There a failure of
    // the system counts as the end.
    bool Unfinished() const override;
    bool Finished() const override { return !Unfinished(); }

    // Fills `target` with a single read, from the position on, whatever the length was. Throws
    // EndOfFileError, with code 90, when fewer bytes came; they stand at the front of `target` and count as
    // read. An empty target is no read.
    FileReader& operator>>(Data target) override;
    // Fills as much of `target` as a single read gives, but never goes beyond the length that the start saw;
    // gives nothing there and at the end of the file.
    FileReader& operator>>(Buffer& target) override;

    // The offset of the next byte to read.
    unsigned long Position() const { return m_position; }
    // Takes back the end that was found, too, so that the next question looks again.
    void SetPosition(unsigned long position);
    // The length that the start saw.
    unsigned long Length() const { return m_length; }
    FileReadingPath const& Path() const { return *m_path; }

    // Throws FilePermissionError for EPERM and EACCES, FileSeekError for EINVAL, EndOfFileError for 90, and
    // FileIOError for any other code. Returns for code 0.
    virtual void ThrowError(FileLocation const& location, int code) const;

private:
    enum class Place { AtPosition, InStream, Unreachable };

    // What a read does with a byte that has been looked at.
    enum class HeldByte { Alone, WithMore };

    Place Seek() const;
    Data WithinLength(Data target) const;
    std::size_t ReadOnce(Data target, HeldByte heldByte);
    std::size_t Read(Data target) const;

    FileReadingPath const* m_path;
    unsigned long m_position = 0;
    unsigned long m_length = 0;
    mutable unsigned char m_lookAhead = 0;
    mutable bool m_lookAheadTaken = false;
    mutable bool m_ended = false;
    // Whether the position is the place that a file without offsets stands at.
    bool m_inStream = false;
};

} // namespace UnixPlatform

// The portable forms refuse the empty location with EmptyFileLocationError; what was open before stays open.

class FileReadingPath : public UnixPlatform::FileReadingPath {
public:
    // Not open.
    FileReadingPath() = default;
    // Opened by OpenExisting.
    explicit FileReadingPath(FileLocation const& location, bool shared = false);

    void OpenExisting(FileLocation const& location, bool shared);
};

class FileReader : public UnixPlatform::FileReader {
public:
    // A reader of no file.
    FileReader() = default;
    // Started on a path for reading or for writing.
    explicit FileReader(UnixPlatform::FileReadingPath const& path, unsigned long position = 0);
};
