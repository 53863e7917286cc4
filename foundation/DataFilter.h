#pragma once

#include "text/Buffers.h"

// Transformation of bytes from one cursor to another, in chunks of any size. A call consumes what it can and
// writes what it can; it stops when the input is used up or the output is full. A filter that holds bytes
// back hands them out by Flush() at the end of the input; a stateless one overrides only the call.
class DataFilter {
public:
    DataFilter() = default;
    DataFilter(DataFilter const&) = default;
    DataFilter& operator=(DataFilter const&) = default;
    virtual ~DataFilter() = default;

    virtual void operator()(ConstBuffer& in, Buffer& out) = 0;
    // True when nothing is held back.
    virtual bool Flushed() const { return true; }
    virtual void Flush(Buffer&) {}
};
