#include "files/FileCalls.h"

#include <unistd.h>

namespace UnixPlatform {

unsigned long Seek64(int descriptor, unsigned long offset, int origin) noexcept {
    return static_cast<unsigned long>(lseek64(descriptor, static_cast<off64_t>(offset), origin));
}

} // namespace UnixPlatform
