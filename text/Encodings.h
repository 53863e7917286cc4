#pragma once

#include "text/Data.h"

// Encoding tags. A text of one tag is a type of its own and becomes a text of another tag only by
// transcoding. `Unit` is the tag's code unit.

struct UTF8 {
    using Unit = unsigned char;
    friend constexpr bool operator==(UTF8, UTF8) = default;
};

struct UTF16 {
    using Unit = std::uint16_t;
    friend constexpr bool operator==(UTF16, UTF16) = default;
};

struct UTF32 {
    using Unit = std::uint32_t;
    friend constexpr bool operator==(UTF32, UTF32) = default;
};

// 7-bit text.
struct USAscii {
    using Unit = unsigned char;
    friend constexpr bool operator==(USAscii, USAscii) = default;
};

// The encoding of the process's locale.
struct Local8Bit {
    using Unit = char;
    friend constexpr bool operator==(Local8Bit, Local8Bit) = default;
};

// Bytes of unknown meaning.
struct Binary8Bit {
    using Unit = unsigned char;
    friend constexpr bool operator==(Binary8Bit, Binary8Bit) = default;
};

// Bytes in the encoding whose IANA charset name the tag holds.
class IANANamedTextEncoding {
public:
    using Unit = unsigned char;
    static constexpr std::size_t capacity = 48;

    // The empty name.
    constexpr IANANamedTextEncoding() = default;
    // Throws ConstDataCapacityExceeded for a name of more than 48 bytes.
    explicit IANANamedTextEncoding(ConstData name);

    ConstData Name() const { return ConstData(m_name, m_name + m_size); }
    char const* NullTerminatedName() const { return reinterpret_cast<char const*>(m_name); }

    // Whether both name the same encoding: case makes no difference, and of the aliases that
    // NormalizeIANAEncoding knows each equals its canonical name.
    friend bool operator==(IANANamedTextEncoding const& a, IANANamedTextEncoding const& b);

private:
    std::uint64_t m_size = 0;
    unsigned char m_name[capacity + 2] = {};
};
