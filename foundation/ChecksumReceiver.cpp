#include "foundation/ChecksumReceiver.h"

namespace {

constexpr std::uint32_t cPolynomial = 0x04C11DB7;
constexpr std::uint32_t cTopBit = 0x80000000;

std::uint32_t Remainder(std::uint32_t index) {
    std::uint32_t remainder = index << 24;
    for (int round = 0; round < 8; ++round) {
        bool const top = (remainder & cTopBit) != 0;
        remainder = (remainder << 1) ^ (top ? cPolynomial : 0);
    }
    return remainder;
}

} // namespace

ChecksumReceiver::Table ChecksumReceiver::MakeTable() {
    Table table;
    for (std::uint32_t index = 0; index < table.size(); ++index) table[index] = Remainder(index);
    return table;
}

void ChecksumReceiver::Receive(ConstData data) {
    static Table const table = MakeTable();
    std::uint32_t crc = m_crc;
    for (unsigned char const byte : data) crc = (crc << 8) ^ table[(crc >> 24) ^ byte];
    m_crc = crc;
}
