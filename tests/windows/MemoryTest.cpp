#include "tests/windows/DialogTest.h"

#include "dialogs/ActionDetailsDialog.h"
#include "dialogs/ActionRequestDialog.h"
#include "dialogs/ConfirmationDialog.h"
#include "dialogs/MessageDialogs.h"
#include "dialogs/QuietModeDialog.h"
#include "link/ProtocolRecords.h"

#include <malloc.h>

// The process stays for weeks: what a dialog takes, it gives back.

namespace {

// Bytes in use on the heap. Sanitizers have a heap of their own, which tells nothing.
std::size_t HeapInUse() {
    return mallinfo2().uordblks;
}

constexpr std::size_t cNoise = 64 * 1024;

void ShowNote(unsigned long id, char const* title, char const* message) {
    MessageRequest note;
    note.id = id;
    note.title = SharedUString<UTF8>(MakeUTF8Ref(title));
    note.message = SharedUString<UTF8>(MakeUTF8Ref(message));
    note.timeout = TimeInterval();
    ShowMessageDialog(note, false, true);
}

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

TEST_F(DialogMemory, StaysFlatOverMessages) {
    EXPECT_LE(Growth(1000,
                     [] {
                         ShowNote(1, "Title", "A note that comes and goes.");
                         Settle();
                         RemoveMessageDialog(1);
                         Settle();
                     }),
              cNoise);
}

TEST_F(DialogMemory, StaysFlatOverMessagesThatEndTogether) {
    auto const showAndEnd = [] {
        for (unsigned long id = 0; id < 20; ++id) ShowNote(id, "Title", "One of many.");
        Settle();
        RemoveTimedoutMessageDialogs();
        Settle();
    };
    // Caches take longer to fill when windows come in crowds.
    for (int round = 0; round < 25; ++round) showAndEnd();
    EXPECT_LE(Growth(25, showAndEnd), cNoise);
    EXPECT_TRUE(Shells().empty());
}

TEST_F(DialogMemory, StaysFlatOverMessagesThatAreDismissed) {
    EXPECT_LE(Growth(200,
                     [] {
                         ShowNote(1, "Title", "A note that is read.");
                         Click(Find("form.dismiss"));
                     }),
              cNoise);
    EXPECT_TRUE(Shells().empty());
}

TEST_F(DialogMemory, StaysFlatOverMessagesThatAreRewritten) {
    ShowNote(1, "Title", "");
    EXPECT_LE(Growth(1000,
                     [] {
                         ShowNote(1, "First", "first");
                         Settle();
                         ShowNote(1, "Second", "second, with a longer text than the first one has");
                         Settle();
                     }),
              cNoise);
    RemoveMessageDialog(1);
}

TEST_F(DialogMemory, StaysFlatOverQuietPeriods) {
    EXPECT_LE(Growth(1000,
                     [] {
                         ShowQuietModeDialog(Instant(), Instant::FromMicroseconds(cMicrosecondsPerHour));
                         Settle();
                         RemoveQuietModeDialog();
                         Settle();
                     }),
              cNoise);
}
