#include "format/FormatFile.h"

#include "files/FileReading.h"
#include "foundation/Exceptions.h"

#include <utility>

namespace {

constexpr unsigned long cMostBytes = 4294967295;

// The system gives no more than this with one read.
constexpr unsigned long cMostBytesAtOnce = 2147479552;

} // namespace

FormatFile::FormatFile(FileLocation const& file, UStringRef<UTF8> const& language)
    : FormatFile(Read(file), language) {
}

FormatFile::FormatFile(Contents contents, UStringRef<UTF8> const& language)
    : m_contents(std::move(contents.bytes)),
      m_size(contents.size),
      m_overrides(MakeUTF8Ref(FileContents()), language) {
}

FormatFile::FormatFile(FormatFile&& other) noexcept
    : m_contents(std::move(other.m_contents)),
      m_size(std::exchange(other.m_size, 0)),
      m_overrides(std::exchange(other.m_overrides, FormatOverrideSet())) {
}

FormatFile::Contents FormatFile::Read(FileLocation const& file) {
    FileReadingPath const path(file);
    unsigned long const length = path.Length();
    if (length > cMostBytes) throw RequiredValueWouldOverflow();
    // What the read would come to, but without two gibibytes in memory.
    if (length > cMostBytesAtOnce) throw EndOfFileError(file, cReadPastEnd);
    Contents contents{std::make_unique_for_overwrite<unsigned char[]>(length), length};
    FileReader reader(path, 0);
    reader >> Data(contents.bytes.get(), contents.bytes.get() + length);
    return contents;
}
