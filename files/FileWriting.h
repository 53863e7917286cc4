#pragma once

#include "files/FileReading.h"
#include "foundation/DataReceiver.h"
#include "text/UStringRef.h"

#include <concepts>

class FileRetryLog;

// Writing of files, in the manner of files/FileReading.h: a path that owns an open descriptor and cursors
// over it.

namespace UnixPlatform {

// A file that is open for reading and writing. Each of the operations that open closes first what was open
// before; after a throw nothing is open. A file that is made gets the mode 0666 less the umask.
class FileWritingPath : public FileReadingPath {
public:
    // A file that must not exist yet: throws FileExistsError when anything stands there, a link included.
    void OpenNew(FileLocation const& location);
    // A new file, or one that exists, emptied.
    void OpenNewOrAsNew(FileLocation const& location);
    // A file that exists, as it is, or a new one.
    void OpenExistingOrNew(FileLocation const& location);
    // A file that must exist.
    void OpenExisting(FileLocation const& location);

    // Waits until the contents are on the device (fsync). A pipe and the like have no device: FileIOError.
    void Flush() const;
    // For file systems that lose what is written last; on this platform the same as Flush.
    void FlushOnBrokenFilesystems() const;
    // The same, tried up to eight times in about two seconds; `location` is the one that the log is told.
    // After the last failure its exception is thrown.
    void FlushOnBrokenFilesystemsWithRetry(FileLocation const& location, FileRetryLog const& log) const;

    // Not what its name says, and to be known before it is used. A file that is at least `length` bytes long
    // keeps its length: it is never cut; one without a length that can be sought is refused with FileIOError
    // and code 22, whatever `length` is. A shorter one gets one zero byte written where a seek by 0 bytes
    // from the origin `length` - 1 leads: for 1 the front, for 2 the present offset, for 3 the end, and
    // for 4 and 5, on file systems that know them, the first byte that is stored and the first that is not.
    // Any greater `length` is refused with FileIOError and code 22.
    void SetLength(unsigned long length);

    // As ThrowFileError, and FileExistsError for EEXIST, FileDiskFullError for ENOSPC.
    void ThrowError(FileLocation const& location, int code) const override;
};

// A cursor that writes. It is a value, like the reader.
class FileWriter : public DataWriter {
public:
    // A writer to no file: a write throws FileIOError.
    FileWriter();
    // Started.
    FileWriter(FileWritingPath const& path, unsigned long position);
    FileWriter(FileWriter const&) = default;
    FileWriter& operator=(FileWriter const&) = default;
    virtual ~FileWriter() = default;

    // `path` must outlive the writer or its next start.
    void Start(FileWritingPath const& path, unsigned long position);

    // The offset that the next byte goes to. It may lie behind the end of the file: the gap reads as zeros.
    unsigned long Position() const { return m_position; }
    void SetPosition(unsigned long position) { m_position = position; }
    FileWritingPath const& Path() const { return *m_path; }

    // Writes all of `data` at the position, which moves behind what was written, also when this throws. A
    // system that takes no byte and tells no error is taken for a failing device: FileIOError with EIO.
    FileWriter& operator<<(ConstData data) override;

    // As the path's, and FileSeekError for EINVAL.
    virtual void ThrowError(FileLocation const& location, int code) const;

private:
    std::size_t WriteOnce(ConstData data) const;

    FileWritingPath const* m_path;
    unsigned long m_position = 0;
};

} // namespace UnixPlatform

// How a FileWritingPath opens its file.
struct OpenNewFile {};
struct OpenNewFileOrAsNewFile {};
struct OpenExistingFileOrNewFile {};
struct OpenExistingFile {};

// A writer that starts at the end of the file.
struct WritePositionEndOfFile {};

// The portable forms refuse the empty location with EmptyFileLocationError; what was open before stays open.

//   FileWritingPath path(location, OpenNewFile());
//   FileWriter writer(path);
//   writer << "text"_utf8 << data;
class FileWritingPath : public UnixPlatform::FileWritingPath {
public:
    // Not open.
    FileWritingPath() = default;
    FileWritingPath(FileLocation const& location, OpenNewFile);
    FileWritingPath(FileLocation const& location, OpenNewFileOrAsNewFile);
    FileWritingPath(FileLocation const& location, OpenExistingFileOrNewFile);
    FileWritingPath(FileLocation const& location, OpenExistingFile);
    // Opened by OpenExisting.
    explicit FileWritingPath(FileLocation const& location);

    void OpenNew(FileLocation const& location);
    void OpenNewOrAsNew(FileLocation const& location);
    void OpenExistingOrNew(FileLocation const& location);
    void OpenExisting(FileLocation const& location);
};

class FileWriter : public UnixPlatform::FileWriter {
public:
    // A writer to no file.
    FileWriter() = default;
    explicit FileWriter(UnixPlatform::FileWritingPath const& path, unsigned long position = 0);
    // Started at the length that the file has now. Throws what Length() throws.
    FileWriter(UnixPlatform::FileWritingPath const& path, WritePositionEndOfFile);

    FileWriter& operator<<(ConstData data) override;
    // Write the bytes of the text.
    FileWriter& operator<<(UStringRef<UTF8> const& text);
    template <UText Text>
    requires std::same_as<typename Text::TextEncoding, UTF8> FileWriter& operator<<(Text const& text) {
        return *this << UStringRef<UTF8>(text);
    }
};
