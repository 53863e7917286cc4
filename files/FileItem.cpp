#include "files/FileItem.h"

#include "files/FileErrors.h"
#include "files/FileRetry.h"
#include "files/NonEmptyLocation.h"
#include "files/ReadFile.h"
#include "foundation/ChecksumReceiver.h"

#include <cerrno>
#include <fcntl.h>

namespace UnixPlatform {

int FileItem::Set(FileLocation&& location) {
    // Whatever throws from here on, the location and the status belong together.
    m_info = UnixFileInfo();
    m_location = std::move(location);
    return m_info.Set(m_location);
}

void FileItem::Get(FileLocation const& location, bool danglingLinkIsTolerated) {
    int const code = Set(FileLocation(NonEmpty(location)));
    HandleGetError(code, danglingLinkIsTolerated);
}

void FileItem::HandleGetError(int code, bool danglingLinkIsTolerated) const {
    if (MustReportError(danglingLinkIsTolerated)) ThrowFileError(m_location, code);
}

void FileItem::SetModificationTime(Instant time) {
    timespec const accessed{.tv_sec = 0, .tv_nsec = UTIME_OMIT};
    timespec const modified{.tv_sec = InstantToFileTime(time).Microseconds() / cMicrosecondsPerSecond,
                            .tv_nsec = 0};
    timespec const times[] = {accessed, modified};
    auto const path = NonEmpty(m_location).LibPath();
    if (utimensat(AT_FDCWD, path.c_str(), times, 0) != 0) ThrowFileError(m_location, errno);
    m_info.SetModificationTime(time);
}

void FileItem::SetModificationTimeWithRetry(Instant time, FileRetryLog const& log) {
    RetryFileOperation(cShortRetrySchedule, "SetModificationTime"_utf8, &m_location, nullptr, log,
                       [&] { SetModificationTime(time); });
}

Instant FileItem::RoundToFileSystem(Instant time) {
    return Instant::FromMicroseconds(time.Microseconds() / cMicrosecondsPerSecond * cMicrosecondsPerSecond);
}

std::uint32_t FileItem::Checksum() const {
    ChecksumReceiver receiver;
    ReadFile(m_location, receiver);
    return receiver.Checksum();
}

} // namespace UnixPlatform
