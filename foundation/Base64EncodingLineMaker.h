#pragma once

#include "foundation/Base64Encoder.h"
#include "foundation/DataReceiver.h"
#include "foundation/LineReceiver.h"

// Makes lines of Base64 text of bytes: 64 characters each, the last one shorter or as long. Every line that
// gets full before the end has a line break behind it; what the end leaves comes as a last line without one,
// or not at all when nothing is left. Positions count the characters of the text, a break as one.
//
// When the line receiver throws, the text or break that it was called with counts as sent. The break behind
// such a text does not come, and what the chunk held behind that line is not seen.
class Base64EncodingLineMaker : public DataReceiver {
public:
    static constexpr std::size_t cLineSize = 64;

    // `lines` must outlive the maker or its next binding.
    explicit Base64EncodingLineMaker(LineReceiver& lines) : m_lines(&lines) {}
    Base64EncodingLineMaker(Base64EncodingLineMaker const&) = delete;
    Base64EncodingLineMaker& operator=(Base64EncodingLineMaker const&) = delete;

    // Binds to another receiver; returns *this.
    Base64EncodingLineMaker& operator()(LineReceiver& lines);

    using DataReceiver::Receive;
    void Start() override;
    void Receive(ConstData data) override;
    void ReceiveEnd() override;

private:
    Buffer EmptyLine() { return Buffer(Data(m_line, m_line + cLineSize)); }
    void SendText();
    void SendLineBreak();

    LineReceiver* m_lines;
    Base64Encoder m_encoder;
    unsigned long m_position = 0;
    unsigned char m_line[cLineSize];
    Buffer m_room = EmptyLine();
};
