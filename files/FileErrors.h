#pragma once

#include "files/FileLocation.h"
#include "foundation/ExceptionPL.h"

#include <memory>

// Failures of file operations. The class tells a caller what went wrong; the sentence is for logs and for the
// reports to the client:
//
//   File error "17FileNotFoundError" on "/var/x" : "Error 0x2%: No such file or directory"
//
// What has no location of its own (IllegalFileName and the like) stands with the classes without data.

// Root of the family. It keeps the display paths of its locations, not the locations. The sentence is made
// anew at each call of what() and uwhat(), and is valid until the next: one object belongs to one thread.
class FileIOError : public DebuggableException {
public:
    // `code` is an error number of the system, or 0 when there is none. Throw std::bad_alloc.
    explicit FileIOError(int code);
    FileIOError(FileLocation const& location, int code);
    FileIOError(FileLocation const& first, FileLocation const& second, int code);
    FileIOError(FileIOError const& other);
    FileIOError& operator=(FileIOError const& other);
    ~FileIOError() override;

    int GetCode() const;
    // Makes both forms of the sentence anew. Throws what formatting throws, and what
    // UnixPlatform::ToLocal8Bit throws for a sentence that the local encoding cannot spell.
    void MakeErrorMessage() const;

    // The sentence, in the local encoding and in UTF-8; the encoded class name when MakeErrorMessage throws.
    char const* what() const noexcept override;
    UStringRef<UTF8> uwhat() const noexcept override;

private:
    struct Block;

    // Never null. The exception itself is a pointer larger than its base, whatever it has to tell.
    std::unique_ptr<Block> m_block;
};

// A system call's failures by their numbers: see ThrowFileError.
class FilePermissionError : public FileIOError {
public:
    using FileIOError::FileIOError;
};
class FileNotFoundError : public FileIOError {
public:
    using FileIOError::FileIOError;
    // Without a path and with code 0.
    FileNotFoundError() : FileIOError(0) {}
};
class FileLockError : public FileIOError {
public:
    using FileIOError::FileIOError;
};
// Out of memory or descriptors.
class FileResourceError : public FileIOError {
public:
    using FileIOError::FileIOError;
};
// A directory was wanted, and there is none; a path that is too long counts as well.
class DirectoryNotFoundError : public FileIOError {
public:
    using FileIOError::FileIOError;
};
class FileExistsError : public FileIOError {
public:
    using FileIOError::FileIOError;
};
class FileDiskFullError : public FileIOError {
public:
    using FileIOError::FileIOError;
};
class FileSeekError : public FileIOError {
public:
    using FileIOError::FileIOError;
};
// A read past the end; the reader's own code for it is 90.
class EndOfFileError : public FileIOError {
public:
    using FileIOError::FileIOError;
};

// An empty location was given to a file operation.
class EmptyFileLocationError : public FileIOError {
public:
    using FileIOError::FileIOError;
};
// The root was asked for its parent.
class RootHasNoParent : public FileIOError {
public:
    using FileIOError::FileIOError;
};
// A relative path of one component was asked for its parent.
class InvalidFileLocation : public FileIOError {
public:
    using FileIOError::FileIOError;
};
// File information was asked of something that does not exist.
class InvalidStats : public FileIOError {
public:
    using FileIOError::FileIOError;
};
// The length of a path that is not open was asked for.
class FileNotOpenError : public FileIOError {
public:
    using FileIOError::FileIOError;
};
// A file stands where a create wanted to place something.
class FileFoundError : public FileIOError {
public:
    using FileIOError::FileIOError;
};
// A directory stands where a file was wanted.
class DirectoryFoundError : public FileIOError {
public:
    using FileIOError::FileIOError;
};
// A create failed for another reason than what stands there.
class FileCreateFailed : public FileIOError {
public:
    using FileIOError::FileIOError;
};
class DirectoryCreateFailed : public FileIOError {
public:
    using FileIOError::FileIOError;
};
// Carries both locations.
class FileMoveError : public FileIOError {
public:
    using FileIOError::FileIOError;
};
// An enumerated item could not be copied.
class FileItemError : public FileIOError {
public:
    using FileIOError::FileIOError;
};
// No unique name could be made.
class CreateUniqueFileLocationFailed : public FileIOError {
public:
    using FileIOError::FileIOError;
};

// A path in bytes was to be cut where nothing is known of its parts: "Operation not supported for Binary
// data.". No member of the family above.
class BinaryManipulationNotSupported : public ExceptionPL {
public:
    BinaryManipulationNotSupported();
};

// Returns for code 0; otherwise throws, with the location and the code:
//
//   EPERM, EACCES           FilePermissionError
//   ENOENT                  FileNotFoundError
//   EAGAIN                  FileLockError
//   ENOMEM, ENFILE, EMFILE  FileResourceError
//   ENOTDIR, ENAMETOOLONG   DirectoryNotFoundError
//   any other               FileIOError
void ThrowFileError(FileLocation const& location, int code);

// "Error 0x2%: No such file or directory" for code 2: the decimal number, whatever is written around it,
// since logs are compared by these sentences. A number without a text, or one whose text is not in the local
// encoding, is "Unknown".
AutoUString<UTF8> MakeErrorString(unsigned int code);
