#pragma once

#include "text/UStringRef.h"

#include <vector>

// Plain growable array of UTF-8 bytes: the accumulator for texts of unknown length that are read a piece at
// a time. Emptying it keeps its memory.
class UTF8StringBuilder {
public:
    UTF8StringBuilder() = default;
    explicit UTF8StringBuilder(UStringRef<UTF8> const& view) : m_bytes(view.begin(), view.end()) {}
    // The view must not point into this text.
    UTF8StringBuilder& operator=(UStringRef<UTF8> const& view) {
        m_bytes.assign(view.begin(), view.end());
        return *this;
    }

    UTF8StringBuilder& operator+=(UStringRef<UTF8> const& view) {
        m_bytes.insert(m_bytes.end(), view.begin(), view.end());
        return *this;
    }
    UTF8StringBuilder& operator+=(unsigned char byte) {
        m_bytes.push_back(byte);
        return *this;
    }

    bool empty() const { return m_bytes.empty(); }
    std::size_t SizeInBytes() const { return m_bytes.size(); }
    void clear() { m_bytes.clear(); }
    // The current text, valid until the next change; the null view when it is empty.
    UStringRef<UTF8> Ref() const {
        if (m_bytes.empty()) return UStringRef<UTF8>();
        return UStringRef<UTF8>(UTF8(), m_bytes.data(), m_bytes.data() + m_bytes.size());
    }

private:
    std::vector<unsigned char> m_bytes;
};
