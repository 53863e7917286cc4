#pragma once

#include "files/FileStats.h"

class FileRetryLog;

namespace UnixPlatform {

// One file with its status: what a loop over a directory gives. A value; it knows the file as it was when it
// was asked.
//
// A dangling link is a failure of its own kind: its status is known, the file that it leads to is not. Where
// an operation takes `danglingLinkIsTolerated`, the caller says whether that may pass without a failure.
class FileItem {
public:
    // Knows of no file.
    FileItem() = default;

    FileLocation const& Location() const { return m_location; }
    UnixFileInfo const& Info() const { return m_info; }
    // The status of what is there. Throws by ThrowFileError for what the system cannot tell of; the item
    // then has the location all the same.
    void Get(FileLocation const& location, bool danglingLinkIsTolerated);

    // Sets the time of the file, in whole seconds (what is less is cut off, towards 1970), and in this item.
    // The time of its last access stays as it is. Follows links. Throws EmptyFileLocationError for an item
    // without location, and by ThrowFileError.
    void SetModificationTime(Instant time);
    // The same with further tries on the short schedule; see files/FileRetry.h. The word for the log is
    // "SetModificationTime".
    void SetModificationTimeWithRetry(Instant time, FileRetryLog const& log);
    // The time that a file shows which was given `time`: in whole seconds.
    static Instant RoundToFileSystem(Instant time);
    // The difference between the clock of the file system and that of the process: none.
    static TimeInterval GetTimeBias() { return TimeInterval(); }

    // The checksum of the file's contents, as ChecksumReceiver computes it. Throws what ReadFile throws.
    std::uint32_t Checksum() const;

    // Whether a failure to learn the status is to be thrown: always but for a dangling link that is
    // tolerated.
    bool MustReportError(bool danglingLinkIsTolerated) const {
        return m_info.State() != cDanglingLink || !danglingLinkIsTolerated;
    }
    // The opposite: whether the failure may be passed over.
    bool HandleTryToGetError(bool danglingLinkIsTolerated) const {
        return !MustReportError(danglingLinkIsTolerated);
    }
    // Throws by ThrowFileError with the location and the code, unless the failure may be passed over.
    void HandleGetError(int code, bool danglingLinkIsTolerated) const;

private:
    friend class FileLoop;

    // Asks for the status; returns 0 or the error number.
    int Set(FileLocation&& location);

    UnixFileInfo m_info;
    FileLocation m_location;
};

} // namespace UnixPlatform

using FileItem = UnixPlatform::FileItem;
