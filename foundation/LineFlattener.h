#pragma once

#include "foundation/DataReceiver.h"
#include "foundation/LineReceiver.h"

// Passes lines on as a flat stream, with a separator in the place of each line break. A last line without a
// break gets no separator.
class LineFlattener : public LineReceiver {
    static constexpr unsigned char cLineFeed[] = {'\n'};
    static constexpr unsigned char cSpace[] = {' '};

public:
    // The usual separators.
    static constexpr ConstData lf{cLineFeed, cLineFeed + 1};
    static constexpr ConstData space{cSpace, cSpace + 1};

    // The receiver and the separator's bytes must outlive the flattener.
    LineFlattener(DataReceiver& receiver, ConstData separator)
        : m_receiver(&receiver), m_separator(separator) {}

    // Binds anew; returns *this.
    LineFlattener& operator()(DataReceiver& receiver, ConstData separator) {
        m_receiver = &receiver;
        m_separator = separator;
        return *this;
    }

    void Start(unsigned long) override { m_receiver->Start(); }
    void Receive(ConstData text) override { m_receiver->Receive(text); }
    void ReceiveLineBreak(Range<unsigned long>) override { m_receiver->Receive(m_separator); }
    void ReceiveEnd(unsigned long) override { m_receiver->ReceiveEnd(); }

private:
    DataReceiver* m_receiver;
    ConstData m_separator;
};
