#include "dialogs/LocalizedStrings.h"

#include "tests/support/LocalZone.h"
#include "tests/support/UStringPrinting.h"

#include <gtest/gtest.h>

#include <limits>

namespace {

struct TextMember {
    char const* name;
    AutoUString<UTF8> (*function)();
    char const* text;
};

struct PlatformMember {
    char const* name;
    AutoNullTerminated<Local8Bit> (*function)();
    char const* text;
};

// clang-format off

constexpr TextMember cTextMembers[] = {
    {"ShutdownNowDescription", LocalizedStrings::ShutdownNowDescription, "Your system administrator is requesting that you shutdown your computer.  Please save any unsaved work and then take this action to shutdown your computer."},
    {"RestartNowDescription", LocalizedStrings::RestartNowDescription, "Your system administrator is requesting that you restart your computer.  Please save any unsaved work and then take this action to restart your computer."},
    {"ShutdownNow", LocalizedStrings::ShutdownNow, "Shutdown Now"},
    {"RestartNow", LocalizedStrings::RestartNow, "Restart Now"},
    {"Progress", LocalizedStrings::Progress, "Progress"},
    {"TechnicianTab", LocalizedStrings::TechnicianTab, "Technician"},
    {"SupportDashboard", LocalizedStrings::SupportDashboard, "Dashboard"},
    {"Offers", LocalizedStrings::Offers, "Offers"},
};

constexpr PlatformMember cPlatformMembers[] = {
    {"Dismiss", LocalizedStrings::Dismiss, "Dismiss"},
    {"EnteringQuietModeTitle", LocalizedStrings::EnteringQuietModeTitle, "Entering Restricted Mode"},
    {"PreviewDialogTitle", LocalizedStrings::PreviewDialogTitle, "Action Script Preview"},
    {"QuietModeTitle", LocalizedStrings::QuietModeTitle, "Not Currently Available"},
    {"AboutMenu", LocalizedStrings::AboutMenu, "&About Varnik Support Center..."},
    {"Cancel", LocalizedStrings::Cancel, "Cancel"},
    {"OK", LocalizedStrings::OK, "OK"},
    {"AcceptOffersButton", LocalizedStrings::AcceptOffersButton, "Accept"},
    {"HideOffersButton", LocalizedStrings::HideOffersButton, "Hide"},
    {"ToggleHiddenOffersCheck", LocalizedStrings::ToggleHiddenOffersCheck, "Show Hidden Offers"},
    {"SearchCaption", LocalizedStrings::SearchCaption, "Search:"},
    {"ProgressCaption", LocalizedStrings::ProgressCaption, "The following actions are currently running on this computer:"},
    {"ViewPostponed", LocalizedStrings::ViewPostponed, "View Postponed Actions"},
    {"AboutTitle", LocalizedStrings::AboutTitle, "About Varnik Support Center"},
    {"MainDialogTitle", LocalizedStrings::MainDialogTitle, "Varnik Support Center"},
    {"LastChangeCap", LocalizedStrings::LastChangeCap, "Last Status Change:"},
    {"IssueTimeCap", LocalizedStrings::IssueTimeCap, "Issued Time:"},
    {"CategoryCap", LocalizedStrings::CategoryCap, "Category:"},
    {"IssuerCap", LocalizedStrings::IssuerCap, "Action Issuer:"},
    {"LineCap", LocalizedStrings::LineCap, "Last Complete Line Number:"},
    {"TypeCap", LocalizedStrings::TypeCap, "Script Type:"},
    {"ScriptBoxCap", LocalizedStrings::ScriptBoxCap, "Action Script"},
    {"RetryCap", LocalizedStrings::RetryCap, "Retry Count:"},
    {"TryCap", LocalizedStrings::TryCap, "Application Count:"},
    {"IDCap", LocalizedStrings::IDCap, "Action ID:"},
    {"NameCap", LocalizedStrings::NameCap, "Action Name:"},
    {"ActionHistoryTitle", LocalizedStrings::ActionHistoryTitle, "Action Details"},
    {"Loading", LocalizedStrings::Loading, "Loading..."},
    {"MenuViewPostponed", LocalizedStrings::MenuViewPostponed, "&View Postponed Actions..."},
    {"MenuPaste", LocalizedStrings::MenuPaste, "&Paste\tCtrl-V"},
    {"MenuCopy", LocalizedStrings::MenuCopy, "&Copy\tCtrl-C"},
    {"MenuCut", LocalizedStrings::MenuCut, "Cu&t\tCtrl-X"},
    {"MenuEdit", LocalizedStrings::MenuEdit, "&Edit"},
    {"MenuOpen", LocalizedStrings::MenuOpen, "&Open Varnik Support Center"},
    {"MenuViewActionDialog", LocalizedStrings::MenuViewActionDialog, "Open Varnik &Action Requests"},
    {"MenuHelpAbout", LocalizedStrings::MenuHelpAbout, "&About Support Center"},
    {"MenuHelpContents", LocalizedStrings::MenuHelpContents, "Varnik Support Center &Help Topics"},
    {"MenuHelp", LocalizedStrings::MenuHelp, "&Help"},
    {"MenuExit", LocalizedStrings::MenuExit, "E&xit Support Center"},
    {"MenuFile", LocalizedStrings::MenuFile, "&File"},
    {"PreviewAction", LocalizedStrings::PreviewAction, "Preview Action..."},
    {"ConfirmationCaption", LocalizedStrings::ConfirmationCaption, "This action requires you to acknowledge the following confirmation message:"},
    {"PreActionTitle", LocalizedStrings::PreActionTitle, "Confirmation Required"},
    {"SnoozeCaption", LocalizedStrings::SnoozeCaption, "Click Snooze to be reminded again:"},
    {"TakeAllActions", LocalizedStrings::TakeAllActions, "Take All Actions"},
    {"ActionRequestTitle", LocalizedStrings::ActionRequestTitle, "Varnik Action Requests"},
};

// clang-format on

// A moment of the second of January 2011, UTC.
Instant At(int hour, int minute, int second) {
    return Instant::FromMicroseconds((1293926400LL + hour * 3600 + minute * 60 + second) *
                                     cMicrosecondsPerSecond);
}

} // namespace

TEST(LocalizedStrings, GivesTheEnglishTextOfEachMember) {
    for (TextMember const& member : cTextMembers)
        EXPECT_EQ(member.function(), MakeUTF8Ref(member.text)) << member.name;
    for (PlatformMember const& member : cPlatformMembers)
        EXPECT_STREQ(member.function().c_str(), member.text) << member.name;
}

TEST(LocalizedStrings, AnnouncesOneOfferInTheSingularOnly) {
    EXPECT_EQ(LocalizedStrings::AnnounceOffers(1), "You Have 1 New Offer"_utf8);
    EXPECT_EQ(LocalizedStrings::AnnounceOffers(0), "You Have 0 New Offers"_utf8);
    EXPECT_EQ(LocalizedStrings::AnnounceOffers(2), "You Have 2 New Offers"_utf8);
    EXPECT_EQ(LocalizedStrings::AnnounceOffers(4294967295u), "You Have 4294967295 New Offers"_utf8);
}

TEST(LocalizedStrings, TellsWhatAClickDoesWhenNothingIsPending) {
    EXPECT_STREQ(LocalizedStrings::TrayTip(0).c_str(), "Click to open Varnik Support Center");
    EXPECT_STREQ(LocalizedStrings::TrayTip(1).c_str(), "You have 1 pending action.");
    EXPECT_STREQ(LocalizedStrings::TrayTip(2).c_str(), "You have 2 pending actions.");
    EXPECT_STREQ(LocalizedStrings::TrayTip(4294967295u).c_str(), "You have 4294967295 pending actions.");
}

TEST(LocalizedStrings, TellsTheVersionAndTheCopyright) {
    EXPECT_STREQ(LocalizedStrings::AboutVersion().c_str(), "Varnik Support Center version " VRK_VERSION);
    EXPECT_STREQ(LocalizedStrings::AboutCopyright().c_str(), "Copyright Varnik");
}

TEST(LocalizedStrings, NamesTheQuietTimesInTheLocalZone) {
    LocalZone const zone("AAA-5:30");
    EXPECT_STREQ(
        LocalizedStrings::EnteringQuietModeExplanation(At(8, 5, 9), At(16, 0, 0)).c_str(),
        "Your administrator has disabled the Varnik Support Center between 13:35:09 and 21:30:00.  The "
        "application will now close.");
    EXPECT_STREQ(LocalizedStrings::QuietModeExplanation(At(8, 5, 9), At(16, 0, 0)).c_str(),
                 "Your administrator has disabled this feature between 13:35:09 and 21:30:00.");
}

TEST(LocalizedStrings, DropsTheDatesOfAQuietPeriodOverMidnight) {
    LocalZone const zone("UTC0");
    EXPECT_STREQ(LocalizedStrings::QuietModeExplanation(At(22, 0, 0), At(24 + 6, 0, 0)).c_str(),
                 "Your administrator has disabled this feature between 22:00:00 and 06:00:00.");
}

TEST(LocalizedStrings, TakesInstantsAtTheEndsOfTheirRange) {
    Instant const first = Instant::FromMicroseconds(std::numeric_limits<long long>::min());
    Instant const last = Instant::FromMicroseconds(std::numeric_limits<long long>::max());
    LocalZone const zone("UTC0");
    EXPECT_STREQ(LocalizedStrings::QuietModeExplanation(Instant(), last).c_str(),
                 "Your administrator has disabled this feature between 00:00:00 and 04:00:54.");
    EXPECT_NO_THROW(LocalizedStrings::QuietModeExplanation(first, last));
}
