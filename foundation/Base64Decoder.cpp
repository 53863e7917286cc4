#include "foundation/Base64Decoder.h"

#include "foundation/Base64Encoder.h"
#include "foundation/Exceptions.h"
#include "text/UStringRef.h"

#include <array>

// Fewer than eight bits are held between characters. Whenever none are held, runs of clean characters are
// decoded eight and four at a time, past the accumulator; the first byte outside the alphabet, the last few
// characters and an output that gets tight go through it one by one.
//
// There is one table for each place in a group of four, with the values shifted to their place, so that a
// group is four looks and no arithmetic between them. A byte outside the alphabet sets a bit above them all.

namespace {

using Table = std::array<std::uint32_t, 256>;

constexpr std::uint32_t cOutside = 0x80000000;
constexpr unsigned int cBitsOfGroup = 24;

constexpr unsigned int ShiftOfPlace(std::size_t place) {
    return 18 - 6 * static_cast<unsigned int>(place);
}

constexpr std::array<Table, 4> MakeTables() {
    std::array<Table, 4> tables{};
    for (std::size_t place = 0; place < tables.size(); ++place) {
        tables[place].fill(cOutside);
        for (std::uint32_t value = 0; value < 64; ++value)
            tables[place][static_cast<unsigned char>(Base64Encoder::cAlphabet[value])] =
                value << ShiftOfPlace(place);
    }
    return tables;
}

constexpr std::array<Table, 4> tables = MakeTables();
constexpr Table const& values = tables[3];

// The bits of four characters, or a number with cOutside set when one of them is no part of the alphabet.
std::uint32_t GroupAt(unsigned char const* from) {
    return tables[0][from[0]] | tables[1][from[1]] | tables[2][from[2]] | tables[3][from[3]];
}

// Writes all eight bytes, the highest first.
void WriteBytes(unsigned char* to, std::uint64_t bytes) {
    to[0] = static_cast<unsigned char>(bytes >> 56);
    to[1] = static_cast<unsigned char>(bytes >> 48);
    to[2] = static_cast<unsigned char>(bytes >> 40);
    to[3] = static_cast<unsigned char>(bytes >> 32);
    to[4] = static_cast<unsigned char>(bytes >> 24);
    to[5] = static_cast<unsigned char>(bytes >> 16);
    to[6] = static_cast<unsigned char>(bytes >> 8);
    to[7] = static_cast<unsigned char>(bytes);
}

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
    // Two groups make six bytes, written with two of no meaning behind them: one store in place of six.
    while (end - from >= 8 && full - to >= 8) {
        std::uint32_t const first = GroupAt(from);
        std::uint32_t const second = GroupAt(from + 4);
        if (((first | second) & cOutside) != 0) break;
        WriteBytes(to, (std::uint64_t{first} << cBitsOfGroup | second) << 16);
        from += 8;
        to += 6;
    }
    while (end - from >= 4 && full - to >= 3) {
        std::uint32_t const group = GroupAt(from);
        if ((group & cOutside) != 0) break;
        to[0] = static_cast<unsigned char>(group >> 16);
        to[1] = static_cast<unsigned char>(group >> 8);
        to[2] = static_cast<unsigned char>(group);
        from += 4;
        to += 3;
    }
    in.Skip(static_cast<std::size_t>(from - in.Next()));
    out.Advance(static_cast<std::size_t>(to - out.Next()));
}

void Base64Decoder::DecodeOne(ConstBuffer& in, Buffer& out) {
    std::uint32_t const value = values[*in.Next()];
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

namespace {

bool IsCorrect(unsigned char byte, std::size_t place) {
    std::size_t const position = ConstData(MakeUTF8Ref(Base64Encoder::cAlphabet)).PositionOf(byte);
    std::uint32_t const expected =
        position == cAllOnes ? cOutside : static_cast<std::uint32_t>(position) << ShiftOfPlace(place);
    return tables[place][byte] == expected;
}

} // namespace

bool Base64Decoder::TableIsCorrect() {
    for (std::size_t place = 0; place < tables.size(); ++place)
        for (unsigned int byte = 0; byte < 256; ++byte)
            if (!IsCorrect(static_cast<unsigned char>(byte), place)) return false;
    return true;
}
