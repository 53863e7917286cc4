#pragma once

#include "text/Buffers.h"

// Transformation of bytes from one cursor to another, in chunks of any size. A call consumes what it can and
// writes what it can; it stops when the input is used up or the output is full. A filter that holds bytes
// back hands them out by Flush() at the end of the input; a stateless one overrides only the call.
//
// A filter makes progress: given input and the room of a chunk (a few kilobytes), a call consumes or writes
// at least one byte, and a Flush with such room writes at least one byte or leaves nothing held back. Who
// calls it in a loop relies on that.
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

    // The same on plain ranges. A class that overrides the call brings these back in by a using-declaration.

    // Returns what is left of `in`.
    ConstData operator()(ConstData in, Buffer& out);
    // Returns what has been written, a view of the front of `out`.
    ConstData operator()(ConstBuffer& in, Data out);
    // Returns what has been written. Input that finds no room is cut off without a word, so `out` must be
    // large enough for the result.
    ConstData operator()(ConstData in, Data out);

    // The filter that copies bytes as they are. It has no state and is never destroyed; any thread may use
    // it, also before main.
    static DataFilter& copy;
};
