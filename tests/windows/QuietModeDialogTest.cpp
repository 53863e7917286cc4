#include "tests/windows/SmallDialogTest.h"

#include "dialogs/ActionRequestDialog.h"
#include "dialogs/MessageDialogs.h"
#include "dialogs/QuietModeDialog.h"
#include "format/FormatOverrideScope.h"
#include "tests/support/LocalZone.h"

#include <X11/Shell.h>
#include <X11/StringDefs.h>
#include <limits>

namespace {

// 1970-01-01 with that hour and minute, in UTC.
constexpr Instant At(long long hour, long long minute) {
    return Instant::FromMicroseconds(hour * cMicrosecondsPerHour + minute * cMicrosecondsPerMinute);
}

} // namespace

class QuietModeDialog : public SmallDialogTest {
protected:
    LocalZone m_zone{"UTC0"};
};

TEST_F(QuietModeDialog, TellsTheTwoTimesOfDay) {
    ShowQuietModeDialog(At(8, 0), At(17, 30));
    EXPECT_EQ(Text(Shell(), XtNtitle), "Not Currently Available");
    EXPECT_EQ(Label("form.staticlabel"),
              "Your administrator has disabled this feature between 08:00:00 and 17:30:00.");
    EXPECT_EQ(Label("form.ok"), "OK");
}

TEST_F(QuietModeDialog, TellsTheTimesInTheZoneOfTheProcess) {
    LocalZone const east("AAA-5:30");
    ShowQuietModeDialog(At(8, 0), At(17, 30));
    EXPECT_EQ(Label("form.staticlabel"),
              "Your administrator has disabled this feature between 13:30:00 and 23:00:00.");
}

TEST_F(QuietModeDialog, TellsNoDatesOfAPeriodOverMidnight) {
    ShowQuietModeDialog(At(22, 15), At(24 + 6, 0));
    EXPECT_EQ(Label("form.staticlabel"),
              "Your administrator has disabled this feature between 22:15:00 and 06:00:00.");
}

TEST_F(QuietModeDialog, ShowsAMarkerForATranslationThatTheLocaleCannotSpell) {
    FormatOverrideSet const set("Your administrator has disabled this feature between {start} and {end}.\t"
                                "{start} \xe2\x80\x93 {end}"_utf8,
                                ""_utf8);
    FormatOverrideScope const inForce(set, GlobalFormatOverrideContext());
    ShowQuietModeDialog(At(8, 0), At(17, 30));
    EXPECT_EQ(Label("form.staticlabel"),
              international ? "08:00:00 \xe2\x80\x93 17:30:00" : "<Invalid String>");
    Click(Find("form.ok"));
    EXPECT_EQ(Shell(), nullptr);
}

TEST_F(QuietModeDialog, CanBeReadAndClosedWhateverTheTimesAre) {
    Instant const first = Instant::FromMicroseconds(std::numeric_limits<long long>::min());
    Instant const last = Instant::FromMicroseconds(std::numeric_limits<long long>::max());
    ShowQuietModeDialog(last, first);
    EXPECT_TRUE(Label("form.staticlabel").starts_with("Your administrator has disabled"));
    Click(Find("form.ok"));
    EXPECT_EQ(Shell(), nullptr);
}

TEST_F(QuietModeDialog, IsMadeOfNamedWidgets) {
    ShowQuietModeDialog(At(8, 0), At(9, 0));
    ExpectParts({{"staticlabel", "Label"}, {"ok", "Command"}});
    ExpectBelow({{"ok", "staticlabel"}});
    ExpectLine(Find("form.staticlabel"));
    ExpectPlaced();
}

TEST_F(QuietModeDialog, HasItsButtonInTheMiddleUnderTheText) {
    ShowQuietModeDialog(At(8, 0), At(9, 0));
    long const text = Number(Find("form.staticlabel"), XtNwidth);
    long const button = Number(Find("form.ok"), XtNwidth);
    ASSERT_GT(text, button);
    EXPECT_EQ(Number(Find("form.ok"), "horizDistance"), (text - button) / 2);
}

TEST_F(QuietModeDialog, HasAButtonWiderThanItsTextInTheMiddleAsWell) {
    for (char const* const wide : {"2000", "2001", "2002", "2003"}) {
        Resource const wider("*ok.width", wide, "0");
        ShowQuietModeDialog(At(8, 0), At(9, 0));
        ASSERT_EQ(Number(Find("form.ok"), XtNwidth), std::stol(wide));
        // Half of what is missing, rounded towards zero.
        long const missing = std::stol(wide) - Number(Find("form.staticlabel"), XtNwidth);
        ASSERT_GT(missing, 0);
        EXPECT_EQ(static_cast<int>(Number(Find("form.ok"), "horizDistance")), -(missing / 2));
        RemoveQuietModeDialog();
    }
}

TEST_F(QuietModeDialog, KeepsTheTimesOfTheFirstPeriodWhileItStands) {
    ShowQuietModeDialog(At(8, 0), At(9, 0));
    Widget const shell = Shell();
    ShowQuietModeDialog(At(10, 0), At(11, 0));
    EXPECT_EQ(Shell(), shell);
    EXPECT_EQ(Label("form.staticlabel"),
              "Your administrator has disabled this feature between 08:00:00 and 09:00:00.");
    RemoveQuietModeDialog();
    ShowQuietModeDialog(At(10, 0), At(11, 0));
    EXPECT_EQ(Label("form.staticlabel"),
              "Your administrator has disabled this feature between 10:00:00 and 11:00:00.");
}

TEST_F(QuietModeDialog, ItsButtonClosesItAndTells) {
    ShowQuietModeDialog(At(8, 0), At(9, 0));
    Click(Find("form.ok"));
    EXPECT_EQ(Shell(), nullptr);
    EXPECT_EQ(Commands(), (std::vector<std::string>{"8 0 0 0"}));
    EXPECT_TRUE(writeQ.IsEmpty());
    ShowQuietModeDialog(At(10, 0), At(11, 0));
    EXPECT_NE(Shell(), nullptr) << "a period that begins afterwards has its own notice";
}

TEST_F(QuietModeDialog, RemovingItTellsNobody) {
    RemoveQuietModeDialog();
    ShowQuietModeDialog(At(8, 0), At(9, 0));
    RemoveQuietModeDialog();
    EXPECT_EQ(Shell(), nullptr);
    RemoveQuietModeDialog();
    EXPECT_EQ(Commands(), std::vector<std::string>{});
    EXPECT_TRUE(writeQ.IsEmpty());
}

TEST_F(QuietModeDialog, StandsWhenThePeriodHasPassed) {
    ShowQuietModeDialog(At(8, 0), At(9, 0));
    RemoveTimedoutMessageDialogs();
    UpdateActionRequestDialog();
    EXPECT_NE(Shell(), nullptr);
}

TEST_F(QuietModeDialog, StandsInFrontOfTheActionRequestDialog) {
    Add({.id = 1});
    UnixApp_ShowActionRequestDialog(false, TimeInterval(), true);
    ShowQuietModeDialog(At(8, 0), At(9, 0));
    // The uppermost window comes last.
    ASSERT_EQ(Shells().size(), 2u);
    EXPECT_EQ(Text(Shells().back(), XtNtitle), "Not Currently Available");
    RemoveQuietModeDialog();
    EXPECT_TRUE(IsActionRequestDialogShown());
}

TEST_F(QuietModeDialog, IsNotShownWithoutADisplay) {
    Display* const opened = std::exchange(display, nullptr);
    ShowQuietModeDialog(At(8, 0), At(9, 0));
    display = opened;
    EXPECT_EQ(Shell(), nullptr);
}
