#pragma once

#include "foundation/DataFilter.h"

// Makes Base64 text of bytes, without line breaks. The input may come in any chunks and the output may have
// any room; the text is the same. Flush completes the last group of four with zero bits and "=".
class Base64Encoder : public DataFilter {
public:
    // The characters of the values 0 to 63.
    static constexpr char cAlphabet[] = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";

    using DataFilter::operator();
    void operator()(ConstBuffer& in, Buffer& out) override;
    bool Flushed() const override { return m_bitCount == 0; }
    // Needs room for up to four characters. Throws DataOverflow when there is less than it needs; nothing is
    // written then, and it can be called again with more room.
    void Flush(Buffer& out) override;

private:
    void EncodeGroups(ConstBuffer& in, Buffer& out);
    void PutTopBits(Buffer& out);
    void Pad();
    std::size_t FlushedSize() const;

    // The bits that have not been written yet are the lowest `m_bitCount` ones; those above are used up.
    std::uint32_t m_bits = 0;
    std::uint8_t m_bitCount = 0;
};
