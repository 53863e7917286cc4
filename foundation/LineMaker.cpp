#include "foundation/LineMaker.h"

#include <algorithm>

namespace {

bool IsBreak(unsigned char byte) {
    return byte == '\n' || byte == '\r';
}

// Finds one byte value at or behind positions that only grow. Each byte is looked at once: the last match
// is kept until it is passed.
class ForwardFinder {
public:
    ForwardFinder(ConstData data, unsigned char byte) : m_data(data), m_byte(byte), m_found(data.begin()) {}

    // First match from `position` on, or the end of the data.
    unsigned char const* From(unsigned char const* position) {
        if (!m_searched || m_found < position) {
            std::size_t const offset = ConstData(position, m_data.end()).PositionOf(m_byte);
            m_found = offset == cAllOnes ? m_data.end() : position + offset;
            m_searched = true;
        }
        return m_found;
    }

private:
    ConstData m_data;
    unsigned char m_byte;
    bool m_searched = false;
    unsigned char const* m_found;
};

} // namespace

LineMaker& LineMaker::operator()(LineReceiver& lines) {
    m_lines = &lines;
    return *this;
}

void LineMaker::Start() {
    m_position = 0;
    m_pending = 0;
    m_lines->Start(m_position);
}

void LineMaker::Receive(ConstData data) {
    ForwardFinder lineFeeds(data, '\n');
    ForwardFinder carriageReturns(data, '\r');
    unsigned char const* next = data.begin();
    while (next != data.end()) {
        if (m_pending != 0) {
            bool const pair = m_pending == '\r' && *next == '\n';
            if (pair) ++next;
            ReportPending(pair);
        } else if (IsBreak(*next)) {
            m_pending = *next++;
            ++m_position;
        } else {
            ConstData const text(next, std::min(lineFeeds.From(next), carriageReturns.From(next)));
            next = text.end();
            m_position += text.Size();
            m_lines->Receive(text);
        }
    }
}

void LineMaker::ReceiveEnd() {
    if (m_pending != 0) ReportPending(false);
    m_lines->ReceiveEnd(m_position);
}

void LineMaker::ReportPending(bool withLineFeed) {
    unsigned long const begin = m_position - 1;
    if (withLineFeed) ++m_position;
    m_pending = 0;
    m_lines->ReceiveLineBreak({begin, m_position});
}
