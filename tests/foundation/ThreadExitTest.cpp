#include "foundation/ThreadExit.h"

#include "foundation/PortableThread.h"
#include "tests/support/WaitUntil.h"

#include <gtest/gtest.h>

#include <atomic>
#include <mutex>
#include <string>

namespace {

// What the routines did on the threads that take part.
class Record {
public:
    void Add(char letter) {
        std::scoped_lock const lock(m_guard);
        m_letters += letter;
    }
    std::string Letters() const {
        std::scoped_lock const lock(m_guard);
        return m_letters;
    }

private:
    mutable std::mutex m_guard;
    std::string m_letters;
};

// The threads of other tests end at any time; they have none.
thread_local Record* recordOfThread = nullptr;

template <char letter>
void Note() {
    if (recordOfThread) recordOfThread->Add(letter);
}

// Routines are registered before threads run, and for the life of the process.
bool const registered = [] {
    AtThreadExit(&Note<'b'>);
    AtThreadExit(&Note<'a'>);
    AtThreadExit(&Note<'b'>);
    return true;
}();

void TakePart(void* record) {
    recordOfThread = static_cast<Record*>(record);
    recordOfThread->Add('f');
}

} // namespace

TEST(ThreadExit, RunsTheRoutinesInTheOrderOfTheirRegistration) {
    ASSERT_TRUE(registered);
    Record record;
    recordOfThread = &record;
    DoThreadExitRoutines();
    recordOfThread = nullptr;
    EXPECT_EQ(record.Letters(), "bab");
}

TEST(ThreadExit, KeepsTheRoutines) {
    Record record;
    recordOfThread = &record;
    DoThreadExitRoutines();
    DoThreadExitRoutines();
    recordOfThread = nullptr;
    EXPECT_EQ(record.Letters(), "babbab");
}

TEST(ThreadExit, RunsAtTheEndOfAThreadThatNobodyHolds) {
    // Never destroyed: a thread of a failed test may still write to it.
    static auto& record = *new Record;
    ASSERT_TRUE(RunPortableThread(&TakePart, &record));
    EXPECT_TRUE(WaitUntil([] { return record.Letters() == "fbab"; })) << record.Letters();
}

TEST(ThreadExit, RunsOnlyAfterTheThreadHasBeenAbandoned) {
    static auto& record = *new Record;
    PortableThread* const thread = CreatePortableThread(&TakePart, &record);
    ASSERT_NE(thread, nullptr);
    ASSERT_TRUE(WaitUntil([] { return record.Letters() == "f"; })) << record.Letters();
    // Longer than the thread's poll, so that one that does not wait is seen to end.
    MilliSecondSleep(250);
    EXPECT_EQ(record.Letters(), "f");
    thread->Abandon();
    EXPECT_TRUE(WaitUntil([] { return record.Letters() == "fbab"; })) << record.Letters();
}
