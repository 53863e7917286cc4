#pragma once

#include "text/Buffers.h"

// Source of bytes that are asked for. An unfinished reader gives at least one byte for a buffer with room;
// one that gives nothing, because its source ends before the end that it knows of, counts as ended early.
class DataReader {
public:
    DataReader() = default;
    DataReader(DataReader const&) = default;
    DataReader& operator=(DataReader const&) = default;
    virtual ~DataReader() = default;

    // Back to the first byte.
    virtual void Reset() = 0;
    // Whether all bytes have been read. The base answers with the opposite of Unfinished().
    virtual bool Finished() const { return !Unfinished(); }
    virtual bool Unfinished() const = 0;
    // Writes some of the next bytes to `target`, as many as come at once.
    virtual DataReader& operator>>(Buffer& target) = 0;
    // Fills the whole of `target`; throws NoMoreData when the bytes end before, also when the reader
    // does not know it and gives nothing. What was read until then stands at the front of `target`. A reader
    // is not asked for a byte when `target` is empty.
    virtual DataReader& operator>>(Data target);
};
