#pragma once

#include "text/Ascii.h"
#include "text/Buffers.h"

// Consumes the bytes of `set` at the front of `in`; returns them.
inline ConstData TakeRun(ConstBuffer& in, Bits const& set) {
    unsigned char const* const first = in.Next();
    while (!in.empty() && set.Has(*in.Next())) in.Skip(1);
    return ConstData(first, in.Next());
}
