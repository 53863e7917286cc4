#include "foundation/DataFilterer.h"

#include "foundation/Exceptions.h"

#include <algorithm>

// A filter that is fed no more bytes than its output has room for never runs out of room half-way, unless it
// makes more of them; and one that does stops at the full output and goes on with the next call. So the input
// goes in slices of the size of the stack buffer, which serves filters that stop and filters that throw
// DataOverflow alike. A filter that neither takes nor writes a byte would keep the loops going for ever, so
// that counts as an output too small for it.

namespace {

constexpr std::size_t cChunkSize = 8192;

void HandOn(DataReceiver& receiver, Buffer const& buffer) {
    if (!buffer.Written().empty()) receiver.Receive(buffer.Written());
}

} // namespace

DataFilterer& DataFilterer::operator()(DataReceiver& receiver, DataFilter& filter) {
    m_receiver = &receiver;
    m_filter = &filter;
    return *this;
}

void DataFilterer::Start() {
    m_receiver->Start();
}

void DataFilterer::Receive(ConstData data) {
    unsigned char room[cChunkSize];
    while (!data.empty()) {
        std::size_t const size = std::min(data.Size(), cChunkSize);
        Buffer out(Data(room, room + cChunkSize));
        ConstData const left = (*m_filter)(ConstData(data.begin(), data.begin() + size), out);
        if (left.Size() == size && out.Written().empty()) throw DataOverflow();
        data = ConstData(data.begin() + (size - left.Size()), data.end());
        HandOn(*m_receiver, out);
    }
}

void DataFilterer::ReceiveEnd() {
    unsigned char room[cChunkSize];
    while (!m_filter->Flushed()) {
        Buffer out(Data(room, room + cChunkSize));
        m_filter->Flush(out);
        if (out.Written().empty() && !m_filter->Flushed()) throw DataOverflow();
        HandOn(*m_receiver, out);
    }
    m_receiver->ReceiveEnd();
}
