#include "foundation/Base64Encoder.h"

#include "foundation/Exceptions.h"

#include <algorithm>

// A byte is taken in only when fewer than six bits are held, so there are never more than 13. Whenever none
// are held, whole groups of three bytes go the short way, past the accumulator.

namespace {

constexpr unsigned char Character(std::uint32_t value) {
    return static_cast<unsigned char>(Base64Encoder::cAlphabet[value & 63]);
}

} // namespace

void Base64Encoder::operator()(ConstBuffer& in, Buffer& out) {
    while (!out.Full()) {
        if (m_bitCount >= 6) {
            PutTopBits(out);
        } else if (m_bitCount == 0 && in.Size() >= 3 && out.Room() >= 4) {
            EncodeGroups(in, out);
        } else if (!in.empty()) {
            m_bits = m_bits << 8 | in.Take();
            m_bitCount = static_cast<std::uint8_t>(m_bitCount + 8);
        } else {
            return;
        }
    }
}

void Base64Encoder::EncodeGroups(ConstBuffer& in, Buffer& out) {
    std::size_t const groups = std::min(in.Size() / 3, out.Room() / 4);
    unsigned char const* from = in.Next();
    unsigned char* to = out.Next();
    for (std::size_t group = 0; group < groups; ++group, from += 3, to += 4) {
        std::uint32_t const bits = std::uint32_t{from[0]} << 16 | std::uint32_t{from[1]} << 8 | from[2];
        to[0] = Character(bits >> 18);
        to[1] = Character(bits >> 12);
        to[2] = Character(bits >> 6);
        to[3] = Character(bits);
    }
    in.Skip(groups * 3);
    out.Advance(groups * 4);
}

void Base64Encoder::PutTopBits(Buffer& out) {
    m_bitCount = static_cast<std::uint8_t>(m_bitCount - 6);
    out << Character(m_bits >> m_bitCount);
}

// Zero bits on the right, up to a whole character.
void Base64Encoder::Pad() {
    unsigned int const missing = 6u - m_bitCount % 6u;
    m_bits <<= missing;
    m_bitCount = static_cast<std::uint8_t>(m_bitCount + missing);
}

void Base64Encoder::Flush(Buffer& out) {
    if (out.Room() < FlushedSize()) throw DataOverflow();
    std::size_t const odd = m_bitCount % 6u;
    if (odd != 0) Pad();
    while (m_bitCount != 0) PutTopBits(out);
    // Two bits were left of one byte of a group, four of two bytes.
    for (std::size_t bits = odd; bits != 0 && bits < 6; bits += 2) out << '=';
}

std::size_t Base64Encoder::FlushedSize() const {
    std::size_t const whole = m_bitCount / 6u;
    std::size_t const odd = m_bitCount % 6u;
    return odd == 0 ? whole : whole + 1 + (6 - odd) / 2;
}
