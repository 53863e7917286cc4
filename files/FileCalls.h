#pragma once

#include <cerrno>

namespace UnixPlatform {

// Calls `call` again for as long as it comes back with -1 only because a signal came in between. Not for
// close(): after an interrupted one the descriptor is gone.
template <class Call>
auto CallUninterrupted(Call const& call) {
    auto result = call();
    while (result == -1 && errno == EINTR) result = call();
    return result;
}

// lseek64 over unsigned offsets. Returns the new offset, or all ones with the reason in errno. An offset
// above the signed range is a negative one to the system: with SEEK_SET a file refuses it with EINVAL.
unsigned long Seek64(int descriptor, unsigned long offset, int origin) noexcept;

} // namespace UnixPlatform
