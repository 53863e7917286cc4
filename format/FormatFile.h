#pragma once

#include "files/FileLocation.h"
#include "format/FormatOverrideSet.h"

#include <memory>

// A translation file in memory, with the set of what it says (see format/FormatOverrideSet.h for the form of
// such a file). It must outlive the scope that puts its set into force, and all texts that are rendered from
// formats which it has translated.
class FormatFile {
public:
    // Reads the whole file. Its bytes are taken as they are: a byte order mark becomes part of the first key,
    // and nothing is checked to be UTF-8.
    //
    // Throws EmptyFileLocationError for the empty location, FileNotFoundError and the other errors of files
    // (see files/FileErrors.h), EndOfFileError for a file that has become shorter meanwhile or gives less
    // than its length at once, as every file longer than 2147479552 bytes does, and
    // RequiredValueWouldOverflow for one longer than 4294967295 bytes and for one without a length, such as a
    // pipe. These two lengths are refused before any memory is taken.
    FormatFile(FileLocation const& file, UStringRef<UTF8> const& language);
    // Takes the contents over; the views into them stay valid. What is left has no contents and no overrides.
    FormatFile(FormatFile&& other) noexcept;
    FormatFile& operator=(FormatFile const&) = delete;
    ~FormatFile() = default;

    // Valid as long as this object and whatever takes its contents over.
    ConstData FileContents() const { return ConstData(m_contents.get(), m_contents.get() + m_size); }
    FormatOverrideSet const& Overrides() const { return m_overrides; }

private:
    struct Contents {
        std::unique_ptr<unsigned char[]> bytes;
        std::size_t size;
    };

    static Contents Read(FileLocation const& file);
    FormatFile(Contents contents, UStringRef<UTF8> const& language);

    std::unique_ptr<unsigned char[]> m_contents;
    std::size_t m_size;
    // Points into the contents.
    FormatOverrideSet m_overrides;
};
