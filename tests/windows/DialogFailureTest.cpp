#include "tests/windows/DialogTest.h"

#include "dialogs/MessageDialogs.h"
#include "dialogs/QuietModeDialog.h"
#include "link/ProtocolRecords.h"
#include "tests/support/Allocations.h"
#include "tests/support/ExpectedDocuments.h"

#include <cstdio>
#include <thread>
#include <unistd.h>

// A dialog that cannot show its texts ends the process, each in a process of its own that writes what its
// client hears to its standard error.

namespace {

// Takes the place of the pipe's writer.
void WriteToStandardError() {
    std::thread([] {
        for (;; usleep(1000)) {
            FiFoQueue<UIMessage> messages;
            writeQ.ReadMessages(messages);
            while (!messages.IsEmpty()) {
                std::string const document = MakeString(messages.Take().text);
                std::fwrite(document.data(), 1, document.size(), stderr);
            }
        }
    }).detach();
}

void ShowNote(char const* title, char const* message, bool isCompletionMessage = false) {
    MessageRequest note;
    note.title = SharedUString<UTF8>(MakeUTF8Ref(title));
    note.message = SharedUString<UTF8>(MakeUTF8Ref(message));
    note.isCompletionMessage = isCompletionMessage;
    ShowMessageDialog(note, false, false);
}

constexpr char cEuro[] = "\xE2\x82\xAC";

} // namespace

class DialogFailureDeathTest : public DialogTest {
protected:
    // A child that is only forked would share the connection to the display.
    DialogFailureDeathTest() { GTEST_FLAG_SET(death_test_style, "threadsafe"); }

    static testing::Matcher<std::string const&> Told(std::string const& dialog) {
        return testing::Eq(TextNotConvertibleDocument(dialog) + TextNotConvertibleDocument(dialog));
    }
};

class UnspeakableNoteDeathTest : public DialogFailureDeathTest, public testing::WithParamInterface<int> {
protected:
    static void Fail(int how) {
        WriteToStandardError();
        switch (how) {
        case 0: ShowNote(cEuro, "message"); break;
        case 1: ShowNote("title", cEuro); break;
        case 2: ShowNote(cEuro, "message", true); break;
        case 3:
            ShowNote("title", "message");
            ShowNote(cEuro, "message");
            break;
        default: ShowNote("title", "message"); ShowNote("title", cEuro);
        }
    }
};

TEST_P(UnspeakableNoteDeathTest, EndsTheProcessInAnOrderlyWayAndTellsTheClientTwice) {
    if (international) GTEST_SKIP() << "the locale can spell every text";
    EXPECT_EXIT(Fail(GetParam()), testing::ExitedWithCode(0), Told("MessageDialog"));
}

INSTANTIATE_TEST_SUITE_P(Windows, UnspeakableNoteDeathTest, testing::Range(0, 5));

TEST_F(DialogFailureDeathTest, OfTheNoticeOfAQuietPeriodTellsItsName) {
    EXPECT_EXIT(
        {
            WriteToStandardError();
            // The process is short of memory for one moment.
            FailingAllocation const failing(0, 1);
            ShowQuietModeDialog(Instant(), Instant());
        },
        testing::ExitedWithCode(0), Told("QuietModeDialog"));
}

TEST_F(DialogFailureDeathTest, DoesNotComeFromTheMessageThatACompletionDoesNotShow) {
    ShowNote("title", cEuro, true);
    EXPECT_EQ(Text(Find("form.actionmessage"), "string"), "Action \"title\" has completed.");
    RemoveMessageDialog(0);
}
