#include "tests/windows/DialogTest.h"

#include "dialogs/ActionDetailsDialog.h"
#include "dialogs/ActionRequestDialog.h"
#include "dialogs/ConfirmationDialog.h"

#include <malloc.h>

// The process stays for weeks: what a dialog takes, it gives back.

namespace {

// Bytes in use on the heap. Sanitizers have a heap of their own, which tells nothing.
std::size_t HeapInUse() {
    return mallinfo2().uordblks;
}

constexpr std::size_t cNoise = 64 * 1024;

} // namespace

class DialogMemory : public DialogTest {
protected:
    // Heap that `repetitions` of `step` leave in use, once it has run often enough for caches to be filled.
    template <class Step>
    static std::size_t Growth(int repetitions, Step const& step) {
        for (int round = 0; round < repetitions / 10; ++round) step();
        std::size_t const before = HeapInUse();
        for (int round = 0; round < repetitions; ++round) step();
        std::size_t const after = HeapInUse();
        return after > before ? after - before : 0;
    }

    void SetUp() override {
        if (HeapInUse() == 0) GTEST_SKIP() << "the sanitizer's heap does not tell what is in use";
    }
};

TEST_F(DialogMemory, StaysFlatOverRefreshesOfUnchangedTexts) {
    for (unsigned long const id : {1ul, 2ul, 3ul}) Add({.id = id, .deadline = 86400l * 30});
    UnixApp_ShowActionRequestDialog(false, TimeInterval(), true);
    ClickRow(ListIn("viewport"), 1);
    EXPECT_LE(Growth(10000,
                     [] {
                         UpdateActionRequestDialog();
                         Settle();
                     }),
              cNoise);
}

TEST_F(DialogMemory, StaysFlatOverTextsThatChange) {
    Add({.id = 1, .description = "first"});
    Add({.id = 2, .description = "second, with a longer text than the first one has"});
    UnixApp_ShowActionRequestDialog(false, TimeInterval(), true);
    EXPECT_LE(Growth(300,
                     [] {
                         ClickRow(ListIn("viewport"), 0);
                         ClickRow(ListIn("viewport"), 1);
                     }),
              cNoise);
}

TEST_F(DialogMemory, StaysFlatOverOpeningAndClosing) {
    for (unsigned long const id : {1ul, 2ul, 3ul}) Add({.id = id, .deadline = 86400l * 30});
    EXPECT_LE(Growth(1000,
                     [] {
                         UnixApp_ShowActionRequestDialog(false, TimeInterval(), true);
                         Settle();
                         HideActionRequestDialog();
                         Settle();
                     }),
              cNoise);
}

TEST_F(DialogMemory, StaysFlatOverDisablingAndEnabling) {
    Add({});
    UnixApp_ShowActionRequestDialog(false, TimeInterval(), true);
    EXPECT_LE(Growth(1000,
                     [] {
                         DisableActionRequestDialog();
                         EnableActionRequestDialog();
                         Settle();
                     }),
              cNoise);
}

TEST_F(DialogMemory, StaysFlatOverSmallDialogs) {
    Add({.id = 1, .hasPreview = true, .preActionMessage = "Sure?"});
    EXPECT_LE(Growth(500,
                     [] {
                         ShowActionDetailsDialog(1);
                         Settle();
                         HideActionDetailsDialog();
                         ShowConfirmationRequestDialog(1);
                         Settle();
                         HideConfirmationRequestDialog();
                         Settle();
                     }),
              cNoise);
}
