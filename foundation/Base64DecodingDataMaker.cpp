#include "foundation/Base64DecodingDataMaker.h"

#include "foundation/DataFilterer.h"

Base64DecodingDataMaker& Base64DecodingDataMaker::operator()(DataReceiver& receiver) {
    m_receiver = &receiver;
    return *this;
}

void Base64DecodingDataMaker::Start(unsigned long) {
    m_decoder = Base64Decoder();
    m_receiver->Start();
}

void Base64DecodingDataMaker::Receive(ConstData text) {
    DataFilterer(*m_receiver, m_decoder).Receive(text);
}

void Base64DecodingDataMaker::ReceiveEnd(unsigned long) {
    m_receiver->ReceiveEnd();
}
