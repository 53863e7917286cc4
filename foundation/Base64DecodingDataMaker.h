#pragma once

#include "foundation/Base64Decoder.h"
#include "foundation/DataReceiver.h"
#include "foundation/LineReceiver.h"

// Decodes lines of Base64 text. The bytes of each piece go on at once; line breaks mean nothing, so a group
// of four may be cut by one. The receiver gets Start and ReceiveEnd, and never an empty chunk.
class Base64DecodingDataMaker : public LineReceiver {
public:
    // `receiver` must outlive the maker or its next binding.
    explicit Base64DecodingDataMaker(DataReceiver& receiver) : m_receiver(&receiver) {}

    // Binds to another receiver; returns *this.
    Base64DecodingDataMaker& operator()(DataReceiver& receiver);

    void Start(unsigned long position) override;
    void Receive(ConstData text) override;
    void ReceiveLineBreak(Range<unsigned long>) override {}
    void ReceiveEnd(unsigned long position) override;

private:
    DataReceiver* m_receiver;
    Base64Decoder m_decoder;
};
