#pragma once

#include "text/Data.h"

class ConstDataRopeReference;

// Something that bytes can be written to.
class DataWriter {
public:
    DataWriter() = default;
    DataWriter(DataWriter const&) = default;
    DataWriter& operator=(DataWriter const&) = default;
    virtual DataWriter& operator<<(ConstData data) = 0;

protected:
    ~DataWriter() = default;
};

// Sink of bytes that come in chunks of any size: Start, any number of Receive, ReceiveEnd. The base does
// nothing at the start and at the end. A receiver does not catch what the receiver behind it throws.
class DataReceiver : public DataWriter {
public:
    DataReceiver() = default;
    DataReceiver(DataReceiver const&) = default;
    DataReceiver& operator=(DataReceiver const&) = default;
    virtual ~DataReceiver() = default;

    virtual void Start() {}
    virtual void Receive(ConstData data) = 0;
    virtual void ReceiveEnd() {}

    // One Receive for each piece of the chain.
    void Receive(ConstDataRopeReference rope);

    // Forwards to Receive.
    DataReceiver& operator<<(ConstData data) override {
        Receive(data);
        return *this;
    }

    // The one receiver that drops everything. It is never destroyed, and any thread may use it.
    static DataReceiver& Ignore();
};
