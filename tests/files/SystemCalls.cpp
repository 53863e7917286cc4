#include "tests/files/SystemCalls.h"

#include <algorithm>
#include <array>
#include <atomic>
#include <cerrno>
#include <cstdarg>
#include <cstddef>
#include <fcntl.h>
#include <limits>
#include <sys/types.h>

namespace {

struct Plan {
    std::atomic<unsigned long> calls{0};
    std::atomic<unsigned int> successes{0};
    std::atomic<unsigned int> failures{0};
    int code = 0;
    int result = -1;
};

constexpr auto cNoLimit = std::numeric_limits<std::size_t>::max();

std::array<Plan, cSystemCalls> plans;
std::atomic<std::size_t> transferLimit{cNoLimit};

Plan& PlanOf(SystemCall call) {
    return plans[static_cast<std::size_t>(call)];
}

// Counts the call; returns whether it fails.
bool Fails(SystemCall call) {
    Plan& plan = PlanOf(call);
    ++plan.calls;
    if (plan.failures == 0) return false;
    if (plan.successes != 0) {
        --plan.successes;
        return false;
    }
    --plan.failures;
    return true;
}

int Failure(SystemCall call) {
    errno = PlanOf(call).code;
    return PlanOf(call).result;
}

} // namespace

unsigned long CallCount(SystemCall call) {
    return PlanOf(call).calls;
}

FailingCall::FailingCall(SystemCall call, int code, unsigned int failures, unsigned int successes, int result)
    : m_call(call) {
    Plan& plan = PlanOf(call);
    plan.code = code;
    plan.result = result;
    plan.successes = successes;
    plan.failures = failures;
}

FailingCall::~FailingCall() {
    PlanOf(m_call).failures = 0;
}

ShortTransfers::ShortTransfers(unsigned long limit) {
    transferLimit = limit;
}

ShortTransfers::~ShortTransfers() {
    transferLimit = cNoLimit;
}

// The linker turns a call of `read` into one of `__wrap_read`, and `__real_read` into the system's.
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wpedantic"

extern "C" {

int __real_open(char const* path, int flags, ...);
int __real_close(int descriptor);
ssize_t __real_read(int descriptor, void* target, std::size_t size);
ssize_t __real_write(int descriptor, void const* source, std::size_t size);
off64_t __real_lseek64(int descriptor, off64_t offset, int origin);
int __real_fcntl(int descriptor, int command, ...);
int __real_fsync(int descriptor);
int __real_ftruncate64(int descriptor, off64_t length);
int __real_fchmod(int descriptor, mode_t mode);
ssize_t __real_readlinkat(int directory, char const* path, char* target, std::size_t size);

int __wrap_open(char const* path, int flags, ...);
int __wrap_close(int descriptor);
ssize_t __wrap_read(int descriptor, void* target, std::size_t size);
ssize_t __wrap_write(int descriptor, void const* source, std::size_t size);
off64_t __wrap_lseek64(int descriptor, off64_t offset, int origin);
int __wrap_fcntl(int descriptor, int command, ...);
int __wrap_fsync(int descriptor);
int __wrap_ftruncate64(int descriptor, off64_t length);
int __wrap_fchmod(int descriptor, mode_t mode);
ssize_t __wrap_readlinkat(int directory, char const* path, char* target, std::size_t size);

int __wrap_open(char const* path, int flags, ...) {
    mode_t mode = 0;
    if ((flags & (O_CREAT | O_TMPFILE)) != 0) {
        va_list arguments;
        va_start(arguments, flags);
        mode = va_arg(arguments, mode_t);
        va_end(arguments);
    }
    return Fails(SystemCall::Open) ? Failure(SystemCall::Open) : __real_open(path, flags, mode);
}

int __wrap_close(int descriptor) {
    int const result = __real_close(descriptor);
    return Fails(SystemCall::Close) ? Failure(SystemCall::Close) : result;
}

ssize_t __wrap_read(int descriptor, void* target, std::size_t size) {
    return Fails(SystemCall::Read)
               ? Failure(SystemCall::Read)
               : __real_read(descriptor, target, std::min<std::size_t>(size, transferLimit));
}

ssize_t __wrap_write(int descriptor, void const* source, std::size_t size) {
    return Fails(SystemCall::Write)
               ? Failure(SystemCall::Write)
               : __real_write(descriptor, source, std::min<std::size_t>(size, transferLimit));
}

off64_t __wrap_lseek64(int descriptor, off64_t offset, int origin) {
    return Fails(SystemCall::Seek) ? Failure(SystemCall::Seek) : __real_lseek64(descriptor, offset, origin);
}

// Every call in this program passes a number.
int __wrap_fcntl(int descriptor, int command, ...) {
    va_list arguments;
    va_start(arguments, command);
    int const number = va_arg(arguments, int);
    va_end(arguments);
    return Fails(SystemCall::Fcntl) ? Failure(SystemCall::Fcntl) : __real_fcntl(descriptor, command, number);
}

int __wrap_fsync(int descriptor) {
    return Fails(SystemCall::Flush) ? Failure(SystemCall::Flush) : __real_fsync(descriptor);
}

int __wrap_ftruncate64(int descriptor, off64_t length) {
    return Fails(SystemCall::Truncate) ? Failure(SystemCall::Truncate)
                                       : __real_ftruncate64(descriptor, length);
}

int __wrap_fchmod(int descriptor, mode_t mode) {
    return Fails(SystemCall::ChangeMode) ? Failure(SystemCall::ChangeMode) : __real_fchmod(descriptor, mode);
}

ssize_t __wrap_readlinkat(int directory, char const* path, char* target, std::size_t size) {
    return Fails(SystemCall::ReadLink) ? Failure(SystemCall::ReadLink)
                                       : __real_readlinkat(directory, path, target, size);
}

} // extern "C"

#pragma GCC diagnostic pop
