#pragma once

#include "foundation/DataFilter.h"

// Makes bytes of Base64 text. No input is refused: bytes outside the alphabet, such as white space, line
// breaks and "=", are skipped, and bits that do not fill a byte at the end are dropped. The input may come
// in any chunks. n characters give at most n bytes, whatever came before.
class Base64Decoder : public DataFilter {
public:
    using DataFilter::operator();
    // Throws DataOverflow when a byte is complete and the output is full. The character that completes it is
    // not consumed then, so that nothing is lost when the call is repeated with more room.
    void operator()(ConstBuffer& in, Buffer& out) override;

    // Checks the tables of values against the alphabet.
    static bool TableIsCorrect();

private:
    static void DecodeGroups(ConstBuffer& in, Buffer& out);
    void DecodeOne(ConstBuffer& in, Buffer& out);

    // The bits that have not been written yet are the lowest `m_bitCount` ones; those above are used up.
    std::uint32_t m_bits = 0;
    std::uint8_t m_bitCount = 0;
};
