#pragma once

#include "foundation/DataReceiver.h"
#include "foundation/Range.h"

// Sink of a message in the manner of mail: header fields, an empty line, the lines of the body. The calls
// come in the order Start, ReceiveField for each field, ReceiveHeaderEnd, the body's Receive and
// ReceiveLineBreak, ReceiveEnd. Positions count bytes of the stream. The base drops everything.
class MessageReceiver {
public:
    MessageReceiver() = default;
    MessageReceiver(MessageReceiver const&) = default;
    MessageReceiver& operator=(MessageReceiver const&) = default;
    virtual ~MessageReceiver() = default;

    virtual void Start([[maybe_unused]] unsigned long position) {}

    // A field begins. `name` is in lower case, without the colon, and valid during the call only. The
    // receiver that comes back gets Start, the value and ReceiveEnd; it must live until then. The value comes
    // without the white space in front of it, and with one space in the place of each folded line break.
    virtual DataReceiver& ReceiveField([[maybe_unused]] ConstData name) { return DataReceiver::Ignore(); }

    // The header is over; `position` is that of the first byte of the body. Called exactly once, at the end
    // of the stream when no empty line came.
    virtual void ReceiveHeaderEnd([[maybe_unused]] unsigned long position) {}

    // Text and line breaks of the body, as in LineReceiver.
    virtual void Receive([[maybe_unused]] ConstData text) {}
    virtual void ReceiveLineBreak([[maybe_unused]] Range<unsigned long> lineBreak) {}

    virtual void ReceiveEnd([[maybe_unused]] unsigned long position) {}
};
