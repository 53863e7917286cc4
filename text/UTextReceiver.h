#pragma once

#include "text/UStringRef.h"

// Sink of a text that comes in pieces: Start, any number of Receive, ReceiveEnd. The base drops everything.
template <class E>
class UTextReceiver {
public:
    using Unit = typename E::Unit;

    UTextReceiver() = default;
    UTextReceiver(UTextReceiver const&) = default;
    UTextReceiver& operator=(UTextReceiver const&) = default;
    virtual ~UTextReceiver() = default;

    virtual void Start(E) {}
    virtual void Receive(ConstArrayOf<Unit>) {}
    virtual void ReceiveEnd() {}
    // Bytes that the receiver would hold after receiving `data` as well; 0 in the base.
    virtual std::size_t SizeOfReceivedBytes(ConstArrayOf<Unit>) { return 0; }
};
