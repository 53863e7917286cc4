#pragma once

// A hand on the calls that the files room makes to the system: the linker puts it in front of each of them,
// in the test program only. For tests of one thread; other threads' calls go through but are counted.

enum class SystemCall { Open, Close, Read, Write, Seek, Fcntl, Flush, Truncate, ChangeMode, ReadLink };
inline constexpr int cSystemCalls = 10;

// Calls of the test program so far, failed ones included.
unsigned long CallCount(SystemCall call);

// For its scope, lets so many calls through; of those behind them so many come back with `result` and, when
// that is -1, with `code` in errno, without having been made. Only a close is made all the same. One at a
// time for each kind of call.
class FailingCall {
public:
    FailingCall(SystemCall call, int code, unsigned int failures = 1, unsigned int successes = 0,
                int result = -1);
    FailingCall(FailingCall const&) = delete;
    FailingCall& operator=(FailingCall const&) = delete;
    ~FailingCall();

private:
    SystemCall m_call;
};

// For its scope, no read or write transfers more than so many bytes. One at a time.
class ShortTransfers {
public:
    explicit ShortTransfers(unsigned long limit);
    ShortTransfers(ShortTransfers const&) = delete;
    ShortTransfers& operator=(ShortTransfers const&) = delete;
    ~ShortTransfers();
};
