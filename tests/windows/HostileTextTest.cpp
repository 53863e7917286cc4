#include "tests/windows/DialogTest.h"

#include "dialogs/ActionDetailsDialog.h"
#include "dialogs/ActionRequestDialog.h"
#include "dialogs/ConfirmationDialog.h"
#include "dialogs/MessageDialogs.h"
#include "link/ProtocolRecords.h"

#include <X11/Shell.h>
#include <X11/StringDefs.h>
#include <algorithm>

// Texts that a client may send and that no writer of texts would: the dialogs show what they can and stand.
// Under a UTF-8 locale bytes reach the widgets unchecked.

namespace {

std::string Repeated(std::string const& piece, std::size_t count) {
    std::string text;
    for (std::size_t index = 0; index < count; ++index) text += piece;
    return text;
}

bool HasHighByte(std::string const& text) {
    return std::any_of(text.begin(), text.end(), [](char byte) { return byte < 0; });
}

} // namespace

struct HostileCase {
    char const* name;
    std::string text;
};

void PrintTo(HostileCase const& test, std::ostream* target) {
    *target << test.name;
}

class HostileText : public DialogTest, public testing::WithParamInterface<HostileCase> {};

TEST_P(HostileText, IsShownByEveryDialog) {
    if (!international && HasHighByte(GetParam().text))
        GTEST_SKIP() << "a text that the locale cannot spell ends the process";
    Add({.id = 1,
         .title = "a" + GetParam().text,
         .description = GetParam().text,
         .preActionMessage = GetParam().text});
    ActionRequest withPreview = actions.front();
    withPreview.id = 2;
    withPreview.preview = SharedUString<UTF8>(MakeUTF8Ref(GetParam().text));
    actions.push_back(withPreview);
    UnixApp_ShowActionRequestDialog(false, TimeInterval(), true);
    ClickRow(ListIn("viewport"), 0);
    EXPECT_TRUE(IsSensitive("form.takeActions"));
    UpdateActionRequestDialog();
    Settle();
    HideActionRequestDialog();

    ShowActionDetailsDialog(2);
    Settle();
    EXPECT_EQ(Text(Shell(), XtNtitle), "Action Script Preview");
    HideActionDetailsDialog();

    ShowConfirmationRequestDialog(1);
    Settle();
    EXPECT_EQ(Text(Shell(), XtNtitle), "Confirmation Required");
    HideConfirmationRequestDialog();

    MessageRequest note;
    note.title = note.message = SharedUString<UTF8>(MakeUTF8Ref(GetParam().text));
    ShowMessageDialog(note, false, false);
    Settle();
    for (bool const completed : {true, false, true}) {
        note.isCompletionMessage = completed;
        ShowMessageDialog(note, false, false);
        Settle();
    }
    EXPECT_EQ(Text(Shell(), XtNtitle), "Varnik notification:");
    EXPECT_TRUE(Text(Find("form.actionmessage"), XtNstring).starts_with("Action \""))
        << "bytes that are no text do not take the rest with them";
    Click(Find("form.dismiss"));
    EXPECT_EQ(Shell(), nullptr);
}

INSTANTIATE_TEST_SUITE_P(
    Windows, HostileText,
    testing::Values(
        HostileCase{"Empty", ""}, HostileCase{"Plain", "plain"}, HostileCase{"NoLead", "\xff\xfe"},
        HostileCase{"LeadAlone", "\xc3"}, HostileCase{"CutCharacter", "ok \xe2\x82 cut"},
        HostileCase{"Surrogate", "\xed\xa0\x80"}, HostileCase{"FiveBytes", "\xf8\x88\x80\x80\x80"},
        HostileCase{"ContinuationsAlone", "\x80\x80\x80"},
        HostileCase{"ControlCharacters", "\x01\x02\x1b[31m\x7f"}, HostileCase{"LineEnds", "\r\n\r\n\t\v\f"},
        HostileCase{"Braces", "{brace} }{ {"}, HostileCase{"Percents", "%s%n%d"},
        HostileCase{"Backslashes", "\\n\\x"}, HostileCase{"NonCharacters", "\xef\xbf\xbe\xef\xbf\xbf"},
        HostileCase{"BeyondUnicode", "\xf4\x90\x80\x80"}, HostileCase{"Overlong", "\xc0\x80"},
        HostileCase{"RightToLeft", "\xe2\x80\xae right to left \xd7\xa9"},
        HostileCase{"Combining", "e\xcc\x81\xcc\x81\xcc\x81"}, HostileCase{"FourBytes", "\xf0\x9f\x98\x80"},
        HostileCase{"ManyLines", Repeated("\n", 5000)}, HostileCase{"OneLongWord", Repeated("x", 60000)},
        HostileCase{"ManyBadBytes", Repeated("\xff", 60000)},
        HostileCase{"ManyWords", Repeated("word ", 20000)},
        HostileCase{"ManyWideCharacters", Repeated("\xe4\xb8\xad", 30000)},
        HostileCase{"ManyTabs", Repeated("\t", 3000)}, HostileCase{"NulAlone", std::string(1, '\0')},
        HostileCase{"CutByNul", std::string("before\0after", 12)}));
