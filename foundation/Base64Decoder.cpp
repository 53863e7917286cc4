#include "foundation/Base64Decoder.h"

#include "foundation/Base64Encoder.h"
#include "foundation/Exceptions.h"
#include "text/UStringRef.h"

#include <array>

// Fewer than eight bits are held between characters. Whenever none are held, runs of clean characters are
// decoded four at a time, past the accumulator; the first byte outside the alphabet, the last few characters
// and an output that gets tight go through it one by one.

namespace {

constexpr std::uint8_t cOutside = 0x80;

constexpr std::array<std::uint8_t, 256> MakeTable() {
    std::array<std::uint8_t, 256> table{};
    table.fill(cOutside);
    for (std::uint8_t value = 0; value < 64; ++value)
        table[static_cast<unsigned char>(Base64Encoder::cAlphabet[value])] = value;
    return table;
}

constexpr std::array<std::uint8_t, 256> table = MakeTable();

} // namespace

void Base64Decoder::operator()(ConstBuffer& in, Buffer& out) {
    while (!in.empty()) {
        if (m_bitCount == 0) DecodeGroups(in, out);
        if (!in.empty()) DecodeOne(in, out);
    }
}

void Base64Decoder::DecodeGroups(ConstBuffer& in, Buffer& out) {
    unsigned char const* from = in.Next();
    unsigned char const* const end = from + in.Size();
    unsigned char* to = out.Next();
    unsigned char const* const full = to + out.Room();
    while (end - from >= 4 && full - to >= 3) {
        std::uint32_t const a = table[from[0]];
        std::uint32_t const b = table[from[1]];
        std::uint32_t const c = table[from[2]];
        std::uint32_t const d = table[from[3]];
        if (((a | b | c | d) & cOutside) != 0) break;
        to[0] = static_cast<unsigned char>(a << 2 | b >> 4);
        to[1] = static_cast<unsigned char>(b << 4 | c >> 2);
        to[2] = static_cast<unsigned char>(c << 6 | d);
        from += 4;
        to += 3;
    }
    in.Skip(static_cast<std::size_t>(from - in.Next()));
    out.Advance(static_cast<std::size_t>(to - out.Next()));
}

void Base64Decoder::DecodeOne(ConstBuffer& in, Buffer& out) {
    std::uint8_t const value = table[*in.Next()];
    if (value == cOutside) {
        in.Skip(1);
        return;
    }
    bool const completes = m_bitCount >= 2;
    if (completes && out.Full()) throw DataOverflow();
    in.Skip(1);
    m_bits = m_bits << 6 | value;
    m_bitCount = static_cast<std::uint8_t>(completes ? m_bitCount - 2 : m_bitCount + 6);
    if (completes) out << static_cast<unsigned char>(m_bits >> m_bitCount);
}

bool Base64Decoder::TableIsCorrect() {
    ConstData const alphabet = MakeUTF8Ref(Base64Encoder::cAlphabet);
    for (unsigned int byte = 0; byte < table.size(); ++byte) {
        std::size_t const position = alphabet.PositionOf(static_cast<unsigned char>(byte));
        bool const outside = (table[byte] & cOutside) != 0;
        if (outside != (position == cAllOnes)) return false;
        if (!outside && table[byte] != position) return false;
    }
    return true;
}
