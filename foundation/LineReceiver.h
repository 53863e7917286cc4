#pragma once

#include "foundation/Range.h"
#include "text/Data.h"

// Sink of bytes that come as lines: Start, then pieces of text and line breaks in their order, ReceiveEnd.
// A line may come in several pieces or, when it is empty, in none. Positions count bytes of the stream that
// the lines were cut from. The base does nothing at the start and at the end.
class LineReceiver {
public:
    LineReceiver() = default;
    LineReceiver(LineReceiver const&) = default;
    LineReceiver& operator=(LineReceiver const&) = default;
    virtual ~LineReceiver() = default;

    // `position` is that of the first byte.
    virtual void Start([[maybe_unused]] unsigned long position) {}
    // Text of the line at hand, without any line break in it.
    virtual void Receive(ConstData text) = 0;
    // End of the line at hand; `lineBreak` is where the break stood in the stream.
    virtual void ReceiveLineBreak(Range<unsigned long> lineBreak) = 0;
    // `position` is that behind the last byte. A last line without a line break ends here.
    virtual void ReceiveEnd([[maybe_unused]] unsigned long position) {}
};
