#pragma once

#include "foundation/DataReceiver.h"

#include <array>
#include <cstdint>

// Computes a CRC of 32 bits with the polynomial 0x04C11DB7, most significant bit first. It starts from all
// ones, so that zero bytes at the front count, and the result is complemented: 0xFC891918 for "123456789",
// 0 for no bytes at all.
class ChecksumReceiver : public DataReceiver {
public:
    using Table = std::array<std::uint32_t, 256>;

    using DataReceiver::Receive;
    // Begins anew.
    void Start() override { m_crc = cInitial; }
    void Receive(ConstData data) override;

    // The checksum of what came since the start.
    std::uint32_t Checksum() const { return ~m_crc; }

    // The remainder of each value of a byte.
    static Table MakeTable();

private:
    static constexpr std::uint32_t cInitial = 0xFFFFFFFF;

    std::uint32_t m_crc = cInitial;
};
