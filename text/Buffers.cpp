#include "text/Buffers.h"

#include "foundation/Exceptions.h"

#include <algorithm>
#include <cstring>

namespace {

std::size_t CopyWhatFits(Buffer& target, ConstData source) {
    std::size_t const count = std::min(target.Room(), source.Size());
    if (count != 0) std::memcpy(target.Next(), source.begin(), count);
    target.Advance(count);
    return count;
}

} // namespace

Buffer& operator<<(Buffer& target, ConstBuffer& source) {
    source.Skip(CopyWhatFits(target, source.Rest()));
    return target;
}

Buffer& operator<<(Buffer& target, ConstData source) {
    CopyWhatFits(target, source);
    return target;
}

Buffer& operator<<(Buffer& target, unsigned char byte) {
    if (target.Full()) throw DataOverflow();
    *target.Next() = byte;
    target.Advance(1);
    return target;
}
