#pragma once

#include "text/Data.h"

// Cursor over bytes that are consumed from the front as they are read.
class ConstBuffer {
public:
    constexpr ConstBuffer() = default;
    constexpr explicit ConstBuffer(ConstData data) : m_next(data.begin()), m_end(data.end()) {}

    constexpr bool empty() const { return m_next == m_end; }
    constexpr std::size_t Size() const { return static_cast<std::size_t>(m_end - m_next); }
    // What has not been consumed yet.
    constexpr ConstData Rest() const { return ConstData(m_next, m_end); }
    constexpr unsigned char const* Next() const { return m_next; }
    // `count` must not exceed Size().
    constexpr void Skip(std::size_t count) { m_next += count; }
    // The next byte, consumed. The cursor must not be empty.
    constexpr unsigned char Take() { return *m_next++; }

private:
    unsigned char const* m_next = nullptr;
    unsigned char const* m_end = nullptr;
};

// Cursor over room that is used up from the front as it is written.
class Buffer {
public:
    constexpr Buffer() = default;
    constexpr explicit Buffer(Data room) : m_begin(room.begin()), m_next(room.begin()), m_end(room.end()) {}

    constexpr bool Full() const { return m_next == m_end; }
    // Bytes that still fit.
    constexpr std::size_t Room() const { return static_cast<std::size_t>(m_end - m_next); }
    constexpr unsigned char* Next() const { return m_next; }
    // What has been written since the cursor was made.
    constexpr ConstData Written() const { return ConstData(m_begin, m_next); }
    // Counts `count` bytes as written; they must fit.
    constexpr void Advance(std::size_t count) { m_next += count; }

private:
    unsigned char* m_begin = nullptr;
    unsigned char* m_next = nullptr;
    unsigned char* m_end = nullptr;
};

// Copies what fits and consumes it from `source`. The source must not overlap the room.
Buffer& operator<<(Buffer& target, ConstBuffer& source);
// Copies what fits; the rest is cut off without a word. The source must not overlap the room.
Buffer& operator<<(Buffer& target, ConstData source);
// Writes one byte; throws DataOverflow when the buffer is full.
Buffer& operator<<(Buffer& target, unsigned char byte);
inline Buffer& operator<<(Buffer& target, char byte) {
    return target << static_cast<unsigned char>(byte);
}
