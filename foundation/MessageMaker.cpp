#include "foundation/MessageMaker.h"

void MessageMaker::Start(unsigned long position) {
    m_inBody = false;
    m_lineHasText = false;
    m_message.Start(position);
    m_header.Start(position);
}

void MessageMaker::Receive(ConstData text) {
    if (m_inBody) {
        m_message.Receive(text);
        return;
    }
    m_lineHasText = m_lineHasText || !text.empty();
    m_header.Receive(text);
}

void MessageMaker::ReceiveLineBreak(Range<unsigned long> lineBreak) {
    if (m_inBody) {
        m_message.ReceiveLineBreak(lineBreak);
    } else if (m_lineHasText) {
        m_lineHasText = false;
        m_header.ReceiveLineBreak(lineBreak);
    } else {
        EndHeader(lineBreak.end);
    }
}

void MessageMaker::ReceiveEnd(unsigned long position) {
    if (!m_inBody) EndHeader(position);
    m_message.ReceiveEnd(position);
}

void MessageMaker::EndHeader(unsigned long position) {
    m_inBody = true;
    m_header.ReceiveEnd(position);
    m_message.ReceiveHeaderEnd(position);
}
