#pragma once

#include "foundation/Exceptions.h"
#include "text/UStringRef.h"

#include <cstring>

// Short text held inside the object: its size, up to `capacityInBytes` bytes and two zero bytes behind them,
// so that it can go to C interfaces of either width.
template <std::size_t capacityInBytes>
class FixedText {
public:
    static constexpr std::size_t capacity = capacityInBytes;

    constexpr FixedText() = default;
    // Throws ConstDataCapacityExceeded when `data` is longer than the capacity.
    explicit FixedText(ConstData data) { Assign(data); }

    ConstData Bytes() const { return ConstData(m_bytes, m_bytes + m_size); }
    UStringRef<UTF8> Ref() const { return UStringRef<UTF8>(UTF8(), m_bytes, m_bytes + m_size); }
    operator ConstData() const { return Bytes(); }
    operator UStringRef<UTF8>() const { return Ref(); }
    char const* NullTerminated() const { return reinterpret_cast<char const*>(m_bytes); }
    std::size_t SizeInBytes() const { return m_size; }
    bool empty() const { return m_size == 0; }

    friend bool operator==(FixedText const& a, FixedText const& b) { return a.Bytes() == b.Bytes(); }

private:
    void Assign(ConstData data) {
        if (data.Size() > capacity) throw ConstDataCapacityExceeded();
        if (!data.empty()) std::memcpy(m_bytes, data.begin(), data.Size());
        m_size = data.Size();
    }

    std::uint64_t m_size = 0;
    unsigned char m_bytes[capacity + 2] = {};
};
