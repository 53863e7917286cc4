#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <utility>
#include <vector>

// The position that stands for "nowhere" and the count that stands for "to the end".
inline constexpr std::size_t cAllOnes = static_cast<std::size_t>(-1);

// Read-only range of `T`, passed by value. It owns nothing and is valid as long as what it points into.
// A range whose end does not lie behind its begin has size 0, whatever its pointers are.
template <class T>
class ConstArrayOf {
public:
    using value_type = T;

    constexpr ConstArrayOf() = default;
    constexpr ConstArrayOf(T const* begin, T const* end) : m_begin(begin), m_end(end) {}

    constexpr T const* begin() const { return m_begin; }
    constexpr T const* end() const { return empty() ? m_begin : m_end; }
    constexpr bool empty() const { return m_end <= m_begin; }
    // Number of elements, not of bytes.
    constexpr std::size_t Size() const { return empty() ? 0 : static_cast<std::size_t>(m_end - m_begin); }
    // Unchecked.
    constexpr T const& operator[](std::size_t index) const { return m_begin[index]; }

private:
    T const* m_begin = nullptr;
    T const* m_end = nullptr;
};

// The mutable form of ConstArrayOf.
template <class T>
class ArrayOf {
public:
    using value_type = T;

    constexpr ArrayOf() = default;
    constexpr ArrayOf(T* begin, T* end) : m_begin(begin), m_end(end) {}

    constexpr T* begin() const { return m_begin; }
    constexpr T* end() const { return empty() ? m_begin : m_end; }
    constexpr bool empty() const { return m_end <= m_begin; }
    constexpr std::size_t Size() const { return empty() ? 0 : static_cast<std::size_t>(m_end - m_begin); }
    constexpr T& operator[](std::size_t index) const { return m_begin[index]; }

private:
    T* m_begin = nullptr;
    T* m_end = nullptr;
};

// A mutable range of bytes.
class Data : public ArrayOf<unsigned char> {
public:
    using ArrayOf::ArrayOf;
    constexpr Data() = default;
    constexpr Data(ArrayOf<unsigned char> bytes) : ArrayOf(bytes) {}
};

// A read-only range of bytes with the searches that work on raw bytes.
class ConstData : public ConstArrayOf<unsigned char> {
public:
    using ConstArrayOf::ConstArrayOf;
    constexpr ConstData() = default;
    constexpr ConstData(ConstArrayOf<unsigned char> bytes) : ConstArrayOf(bytes) {}
    constexpr ConstData(Data bytes) : ConstArrayOf(bytes.begin(), bytes.end()) {}

    // An empty prefix or suffix is always there.
    bool StartsWith(ConstData prefix) const;
    bool EndsWith(ConstData suffix) const;

    bool Contains(unsigned char byte) const { return PositionOf(byte) != cAllOnes; }
    // An empty pattern is contained in nothing.
    bool Contains(ConstData pattern) const { return PositionOf(pattern) != cAllOnes; }

    // Offset of the first match; cAllOnes when there is none or when the pattern is empty.
    std::size_t PositionOf(unsigned char byte) const;
    std::size_t PositionOf(ConstData pattern) const;

    // Offsets of all matches from left to right; matches do not overlap.
    std::vector<std::size_t> PositionsOf(ConstData pattern) const;

    // Pieces between the separators, the one behind the last separator included. With `trim` each piece
    // loses ASCII white space at both ends; a piece that is then empty is kept only with `keepEmpty`.
    // An empty separator gives everything as one piece. The pieces point into this range.
    std::vector<ConstData> Split(ConstData separator, bool trim, bool keepEmpty) const;

    // Copies as many bytes as both hold to the front of `target`; returns what is left of this range. The two
    // must not overlap.
    ConstData operator>>(Data target) const;
};

// Compares bytes as unsigned over the shorter length: the difference of the first two that differ; else
// -1 when `a` is shorter, 1 when it is longer, 0 when both are the same.
int Compare(ConstData a, ConstData b);
// The same from the last byte backwards.
int CompareReversed(ConstData a, ConstData b);
bool operator==(ConstData a, ConstData b);
bool operator<(ConstData a, ConstData b);

// Views without ASCII white space at the front, or at both ends. Scanning stops at a byte above 127 too.
ConstData TrimLeadingAsciiWhitespace(ConstData data);
ConstData TrimAsciiWhitespace(ConstData data);

std::string MakeString(ConstData data);

// View of the bytes of a C++ text, which must outlive it.
inline ConstData MakeConstData(std::string const& text) {
    auto const* first = reinterpret_cast<unsigned char const*>(text.data());
    return ConstData(first, first + text.size());
}

// "text"_data: view of a literal's bytes without its terminator.
inline ConstData operator""_data(char const* text, std::size_t size) {
    auto const* first = reinterpret_cast<unsigned char const*>(text);
    return ConstData(first, first + size);
}
