#pragma once

#include "text/Data.h"

#include <array>
#include <bit>
#include <cstring>

// Searches for the few bytes that end a run of ordinary ones. Each returns the end of the range when there is
// no match.

inline unsigned char const* FindByte(ConstData data, unsigned char byte) {
    if (data.empty()) return data.end();
    void const* const found = std::memchr(data.begin(), byte, data.Size());
    return found ? static_cast<unsigned char const*>(found) : data.end();
}

// First of either byte. One pass over eight bytes at a time: two passes with memchr would each run on to a
// match that may lie far behind the other's.
inline unsigned char const* FindEither(ConstData data, unsigned char a, unsigned char b) {
    constexpr std::uint64_t ones = 0x0101010101010101;
    constexpr std::uint64_t highBits = 0x8080808080808080;
    // Marks the zero bytes of `word` in their high bits; marks above the lowest may be false.
    auto const zeros = [](std::uint64_t word) { return (word - ones) & ~word & highBits; };
    unsigned char const* next = data.begin();
    if constexpr (std::endian::native == std::endian::little) {
        for (; data.end() - next >= 8; next += 8) {
            std::uint64_t word = 0;
            std::memcpy(&word, next, sizeof(word));
            std::uint64_t const found = zeros(word ^ (ones * a)) | zeros(word ^ (ones * b));
            if (found != 0) return next + std::countr_zero(found) / 8;
        }
    }
    while (next != data.end() && *next != a && *next != b) ++next;
    return next;
}

// A set of bytes made at compile time, for short runs.
class ByteSet {
public:
    constexpr explicit ByteSet(char const* bytes) {
        for (; *bytes; ++bytes) m_has[static_cast<unsigned char>(*bytes)] = true;
    }
    constexpr bool Has(unsigned char byte) const { return m_has[byte]; }
    unsigned char const* FindIn(ConstData data) const {
        unsigned char const* next = data.begin();
        while (next != data.end() && !m_has[*next]) ++next;
        return next;
    }

private:
    std::array<bool, 256> m_has{};
};
