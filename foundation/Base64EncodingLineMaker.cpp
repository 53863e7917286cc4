#include "foundation/Base64EncodingLineMaker.h"

// The line buffer is never full between calls, and it holds whole groups of four characters when it gets
// full. So the flush at the end, which completes a group, always fits.

Base64EncodingLineMaker& Base64EncodingLineMaker::operator()(LineReceiver& lines) {
    m_lines = &lines;
    return *this;
}

void Base64EncodingLineMaker::Start() {
    m_encoder = Base64Encoder();
    m_position = 0;
    m_room = EmptyLine();
    m_lines->Start(m_position);
}

void Base64EncodingLineMaker::Receive(ConstData data) {
    ConstBuffer in(data);
    m_encoder(in, m_room);
    while (m_room.Full()) {
        SendText();
        SendLineBreak();
        m_encoder(in, m_room);
    }
}

void Base64EncodingLineMaker::ReceiveEnd() {
    m_encoder.Flush(m_room);
    if (!m_room.Written().empty()) SendText();
    m_lines->ReceiveEnd(m_position);
}

void Base64EncodingLineMaker::SendText() {
    ConstData const text = m_room.Written();
    m_room = EmptyLine();
    m_position += text.Size();
    m_lines->Receive(text);
}

void Base64EncodingLineMaker::SendLineBreak() {
    unsigned long const begin = m_position++;
    m_lines->ReceiveLineBreak({begin, m_position});
}
