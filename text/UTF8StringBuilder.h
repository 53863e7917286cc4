#pragma once

#include "text/UStringRef.h"

#include <algorithm>
#include <functional>
#include <vector>

// Plain growable array of UTF-8 bytes: the accumulator for texts of unknown length that are read a piece at
// a time. It grows as the strings do, to twice the old size, the new size or 64 bytes, whichever is most.
// Emptying it keeps its memory. A view that is assigned or appended may point into the text.
class UTF8StringBuilder {
public:
    UTF8StringBuilder() = default;
    explicit UTF8StringBuilder(UStringRef<UTF8> const& view) : m_bytes(view.begin(), view.end()) {}
    UTF8StringBuilder& operator=(UStringRef<UTF8> const& view) {
        if (PointsIntoText(view)) {
            m_bytes = std::vector<unsigned char>(view.begin(), view.end());
        } else {
            m_bytes.assign(view.begin(), view.end());
        }
        return *this;
    }

    UTF8StringBuilder& operator+=(UStringRef<UTF8> const& view) {
        if (PointsIntoText(view)) return *this += UTF8StringBuilder(view).Ref();
        MakeRoom(view.SizeInUnits());
        m_bytes.insert(m_bytes.end(), view.begin(), view.end());
        return *this;
    }
    UTF8StringBuilder& operator+=(unsigned char byte) {
        MakeRoom(1);
        m_bytes.push_back(byte);
        return *this;
    }

    bool empty() const { return m_bytes.empty(); }
    std::size_t SizeInBytes() const { return m_bytes.size(); }
    std::size_t CapacityInBytes() const { return m_bytes.capacity(); }
    void clear() { m_bytes.clear(); }
    // The current text, valid until the next change; the null view when it is empty.
    UStringRef<UTF8> Ref() const {
        if (m_bytes.empty()) return UStringRef<UTF8>();
        return UStringRef<UTF8>(UTF8(), m_bytes.data(), m_bytes.data() + m_bytes.size());
    }

private:
    static constexpr std::size_t minimumCapacity = 64;

    bool PointsIntoText(UStringRef<UTF8> const& view) const {
        std::less<unsigned char const*> const before;
        return !m_bytes.empty() && !before(view.begin(), m_bytes.data()) &&
               before(view.begin(), m_bytes.data() + m_bytes.size());
    }
    void MakeRoom(std::size_t count) {
        std::size_t const size = m_bytes.size();
        if (count > m_bytes.capacity() - size)
            m_bytes.reserve(std::max({2 * size, size + count, minimumCapacity}));
    }

    std::vector<unsigned char> m_bytes;
};
