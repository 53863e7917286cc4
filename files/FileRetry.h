#pragma once

#include "text/UStringRef.h"

class FileLocation;

// File operations that are tried again while they fail: another process may hold a file for a moment.

// Told how the tries of an operation ended, unless the first one succeeded. `word` names the operation, and
// `second` is null for an operation on one location. The pointers are valid during the call. Does nothing by
// default.
class FileRetryLog {
public:
    FileRetryLog() = default;
    FileRetryLog(FileRetryLog const&) = default;
    FileRetryLog& operator=(FileRetryLog const&) = default;
    virtual ~FileRetryLog();

    // The operation succeeded at last; `attempts`, at least 2, counts the successful one as well.
    virtual void LogRetrySuccess(UStringRef<UTF8> const& word, FileLocation const* first,
                                 FileLocation const* second, unsigned int attempts) const;
    // The last attempt has failed, and its failure goes on to the caller.
    virtual void LogRetryFailure(UStringRef<UTF8> const& word, FileLocation const* first,
                                 FileLocation const* second, unsigned int attempts) const;
};

// When to try again: `attempts` tries in all, with waits that begin with the first and double each time.
struct RetrySchedule {
    // At least 1.
    unsigned int attempts;
    unsigned int firstWaitInMilliseconds;
    // Whether EmptyFileLocationError ends the tries at once, unlogged: trying again cannot cure it.
    bool emptyLocationIsFinal;
};

// Waits of 40 to 5120 ms, 10200 ms in all.
inline constexpr RetrySchedule cRetrySchedule{9, 40, true};
// Waits of 16 to 1024 ms, 2032 ms in all. Any failure is tried again.
inline constexpr RetrySchedule cShortRetrySchedule{8, 16, false};

namespace FileRetryDetail {

void Retry(RetrySchedule const& schedule, UStringRef<UTF8> const& word, FileLocation const* first,
           FileLocation const* second, FileRetryLog const& log, void (*call)(void const*),
           void const* operation);

} // namespace FileRetryDetail

// Calls `operation()` until it returns, or has thrown at the last attempt of the schedule: then the last
// failure, of whatever type, is logged and goes on to the caller. The calling thread sleeps between the
// attempts. The log is called as FileRetryLog says; what it throws reaches the caller. Either location may be
// null and neither is looked at here.
//
//     RetryFileOperation(cRetrySchedule, "DeleteFile"_utf8, &location, nullptr, log,
//                        [&] { DeleteFile(location); });
template <class Operation>
void RetryFileOperation(RetrySchedule const& schedule, UStringRef<UTF8> const& word,
                        FileLocation const* first, FileLocation const* second, FileRetryLog const& log,
                        Operation const& operation) {
    FileRetryDetail::Retry(
        schedule, word, first, second, log,
        [](void const* callee) { (*static_cast<Operation const*>(callee))(); }, &operation);
}

// The wait between two attempts. It is alone in its source file, so that a program of tests can have a
// function of that name of its own in its place.
void WaitForFileRetry(unsigned int milliseconds);
