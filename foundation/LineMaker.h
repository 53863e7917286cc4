#pragma once

#include "foundation/DataReceiver.h"
#include "foundation/LineReceiver.h"

// Cuts bytes into lines. A line ends with a line feed, with a carriage return, or with a carriage return and
// a line feed behind it; LF CR, CR CR and LF LF are two breaks each. The chunks may be cut anywhere, also
// between CR and LF. A break is reported when the byte behind it comes, or at the end.
//
// When the line receiver throws, the text or break that it was called with counts as reported and the chunk
// ends behind it: positions go on from there, and what else the chunk held is not seen.
class LineMaker : public DataReceiver {
public:
    // `lines` must outlive the maker or its next binding.
    explicit LineMaker(LineReceiver& lines) : m_lines(&lines) {}

    // Binds to another receiver; returns *this.
    LineMaker& operator()(LineReceiver& lines);

    using DataReceiver::Receive;
    // Positions count from 0 again.
    void Start() override;
    void Receive(ConstData data) override;
    void ReceiveEnd() override;

private:
    void ReportPending(bool withLineFeed);

    LineReceiver* m_lines;
    // Bytes of the stream that have been taken, a pending break included.
    unsigned long m_position = 0;
    // The break character that was taken and not reported yet; 0 for none.
    unsigned char m_pending = 0;
};
