#include "tests/support/BeforeStatus.h"

#include <sys/stat.h>

namespace {

std::function<void(std::string const& path)> beforeStatus;

} // namespace

BeforeStatus::BeforeStatus(std::function<void(std::string const& path)> act) {
    beforeStatus = std::move(act);
}

BeforeStatus::~BeforeStatus() {
    beforeStatus = nullptr;
}

// The linker puts the first of these in the place of the second.
extern "C" int __wrap_lstat(char const* path, struct stat* status);
extern "C" int __real_lstat(char const* path, struct stat* status);

int __wrap_lstat(char const* path, struct stat* status) {
    if (beforeStatus) beforeStatus(path);
    return __real_lstat(path, status);
}
