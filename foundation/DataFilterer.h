#pragma once

#include "foundation/DataFilter.h"
#include "foundation/DataReceiver.h"

// Receiver that passes bytes on through a filter. Start and ReceiveEnd are passed on as well; before
// ReceiveEnd comes what the filter held back. The receiver is never called with an empty chunk. When the
// filter makes no progress, Receive and ReceiveEnd throw DataOverflow.
class DataFilterer : public DataReceiver {
public:
    // Bound to the receiver that drops everything.
    DataFilterer() = default;
    // Both must outlive the filterer or its next binding.
    DataFilterer(DataReceiver& receiver, DataFilter& filter) : m_receiver(&receiver), m_filter(&filter) {}

    // Binds anew; returns *this.
    DataFilterer& operator()(DataReceiver& receiver, DataFilter& filter);

    using DataReceiver::Receive;
    void Start() override;
    void Receive(ConstData data) override;
    void ReceiveEnd() override;

private:
    DataReceiver* m_receiver = &DataReceiver::Ignore();
    DataFilter* m_filter = &DataFilter::copy;
};
