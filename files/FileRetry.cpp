#include "files/FileRetry.h"

#include "files/FileErrors.h"

// A failure is left behind before the thread sleeps: what it holds is not kept over the wait, and the log is
// called outside of all handlers but for the last failure, which has to go on.

FileRetryLog::~FileRetryLog() = default;

void FileRetryLog::LogRetrySuccess(UStringRef<UTF8> const&, FileLocation const*, FileLocation const*,
                                   unsigned int) const {
}

void FileRetryLog::LogRetryFailure(UStringRef<UTF8> const&, FileLocation const*, FileLocation const*,
                                   unsigned int) const {
}

void FileRetryDetail::Retry(RetrySchedule const& schedule, UStringRef<UTF8> const& word,
                            FileLocation const* first, FileLocation const* second, FileRetryLog const& log,
                            void (*call)(void const*), void const* operation) {
    // Called while a failure is handled: returns when there is another attempt.
    auto const passOnIfLast = [&](unsigned int attempt) {
        if (attempt < schedule.attempts) return;
        log.LogRetryFailure(word, first, second, attempt);
        throw;
    };
    auto const succeeds = [&](unsigned int attempt) {
        try {
            call(operation);
            return true;
        } catch (EmptyFileLocationError const&) {
            if (schedule.emptyLocationIsFinal) throw;
            passOnIfLast(attempt);
        } catch (...) {
            passOnIfLast(attempt);
        }
        return false;
    };
    unsigned int attempt = 1;
    unsigned int wait = schedule.firstWaitInMilliseconds;
    for (; !succeeds(attempt); ++attempt, wait *= 2) WaitForFileRetry(wait);
    if (attempt > 1) log.LogRetrySuccess(word, first, second, attempt);
}
