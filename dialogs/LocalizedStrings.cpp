#include "dialogs/LocalizedStrings.h"

#include "dialogs/FormattedValues.h"
#include "format/MakeUString.h"
#include "format/PlatformString.h"
#include "format/UFormat.h"
#include "time/TimeObject.h"

namespace LocalizedStrings {

namespace {

AutoUString<UTF8> Text(char const* text) {
    return MakeUString(UFormat(text));
}

AutoNullTerminated<Local8Bit> Platform(char const* text) {
    return MakePlatformString(UFormat(text));
}

AutoUString<UTF8> LocalTimeOfDay(Instant instant) {
    return UnixPlatform::FormattedTimeOfDay(TimeObject(instant, TimeZone::Local()).Time());
}

AutoNullTerminated<Local8Bit> BetweenTimes(char const* format, Instant start, Instant end) {
    AutoUString<UTF8> const startTime = LocalTimeOfDay(start);
    AutoUString<UTF8> const endTime = LocalTimeOfDay(end);
    return MakePlatformString(UFormat(format) % startTime % endTime);
}

} // namespace

// One text a line, so that the catalogue can be read and searched as the list that it is.
// clang-format off

AutoUString<UTF8> ShutdownNowDescription() { return Text("Your system administrator is requesting that you shutdown your computer.  Please save any unsaved work and then take this action to shutdown your computer."); }
AutoUString<UTF8> RestartNowDescription() { return Text("Your system administrator is requesting that you restart your computer.  Please save any unsaved work and then take this action to restart your computer."); }
AutoUString<UTF8> ShutdownNow() { return Text("Shutdown Now"); }
AutoUString<UTF8> RestartNow() { return Text("Restart Now"); }
AutoUString<UTF8> Progress() { return Text("Progress"); }
AutoUString<UTF8> TechnicianTab() { return Text("Technician"); }
AutoUString<UTF8> SupportDashboard() { return Text("Dashboard"); }
AutoUString<UTF8> Offers() { return Text("Offers"); }

// clang-format on

AutoUString<UTF8> AnnounceOffers(unsigned int count) {
    if (count == 1) return Text("You Have 1 New Offer");
    AutoUString<UTF8> const number = UnixPlatform::FormattedNumber(count);
    return MakeUString(UFormat("You Have {number} New Offers") % number);
}

AutoNullTerminated<Local8Bit> Dismiss() {
    return Platform("Dismiss");
}

AutoNullTerminated<Local8Bit> TrayTip(unsigned int pendingActions) {
    if (pendingActions == 0) return Platform("Click to open Varnik Support Center");
    if (pendingActions == 1) return Platform("You have 1 pending action.");
    AutoUString<UTF8> const number = UnixPlatform::FormattedNumber(pendingActions);
    return MakePlatformString(UFormat("You have {number} pending actions.") % number);
}

AutoNullTerminated<Local8Bit> AboutVersion() {
    return MakePlatformString(UFormat("Varnik Support Center version {version}") % MakeUTF8Ref(VRK_VERSION));
}

AutoNullTerminated<Local8Bit> AboutCopyright() {
    return Platform("Copyright Varnik");
}

AutoNullTerminated<Local8Bit> EnteringQuietModeExplanation(Instant const& start, Instant const& end) {
    return BetweenTimes(
        "Your administrator has disabled the Varnik Support Center between {start} and {end}.  "
        "The application will now close.",
        start, end);
}

AutoNullTerminated<Local8Bit> QuietModeExplanation(Instant const& start, Instant const& end) {
    return BetweenTimes("Your administrator has disabled this feature between {start} and {end}.", start,
                        end);
}

// clang-format off

AutoNullTerminated<Local8Bit> EnteringQuietModeTitle() { return Platform("Entering Restricted Mode"); }
AutoNullTerminated<Local8Bit> PreviewDialogTitle() { return Platform("Action Script Preview"); }
AutoNullTerminated<Local8Bit> QuietModeTitle() { return Platform("Not Currently Available"); }
AutoNullTerminated<Local8Bit> AboutMenu() { return Platform("&About Varnik Support Center..."); }
AutoNullTerminated<Local8Bit> Cancel() { return Platform("Cancel"); }
AutoNullTerminated<Local8Bit> OK() { return Platform("OK"); }
AutoNullTerminated<Local8Bit> AcceptOffersButton() { return Platform("Accept"); }
AutoNullTerminated<Local8Bit> HideOffersButton() { return Platform("Hide"); }
AutoNullTerminated<Local8Bit> ToggleHiddenOffersCheck() { return Platform("Show Hidden Offers"); }
AutoNullTerminated<Local8Bit> SearchCaption() { return Platform("Search:"); }
AutoNullTerminated<Local8Bit> ProgressCaption() { return Platform("The following actions are currently running on this computer:"); }
AutoNullTerminated<Local8Bit> ViewPostponed() { return Platform("View Postponed Actions"); }
AutoNullTerminated<Local8Bit> AboutTitle() { return Platform("About Varnik Support Center"); }
AutoNullTerminated<Local8Bit> MainDialogTitle() { return Platform("Varnik Support Center"); }
AutoNullTerminated<Local8Bit> LastChangeCap() { return Platform("Last Status Change:"); }
AutoNullTerminated<Local8Bit> IssueTimeCap() { return Platform("Issued Time:"); }
AutoNullTerminated<Local8Bit> CategoryCap() { return Platform("Category:"); }
AutoNullTerminated<Local8Bit> IssuerCap() { return Platform("Action Issuer:"); }
AutoNullTerminated<Local8Bit> LineCap() { return Platform("Last Complete Line Number:"); }
AutoNullTerminated<Local8Bit> TypeCap() { return Platform("Script Type:"); }
AutoNullTerminated<Local8Bit> ScriptBoxCap() { return Platform("Action Script"); }
AutoNullTerminated<Local8Bit> RetryCap() { return Platform("Retry Count:"); }
AutoNullTerminated<Local8Bit> TryCap() { return Platform("Application Count:"); }
AutoNullTerminated<Local8Bit> IDCap() { return Platform("Action ID:"); }
AutoNullTerminated<Local8Bit> NameCap() { return Platform("Action Name:"); }
AutoNullTerminated<Local8Bit> ActionHistoryTitle() { return Platform("Action Details"); }
AutoNullTerminated<Local8Bit> Loading() { return Platform("Loading..."); }
AutoNullTerminated<Local8Bit> MenuViewPostponed() { return Platform("&View Postponed Actions..."); }
AutoNullTerminated<Local8Bit> MenuPaste() { return Platform("&Paste{_tab}Ctrl-V"); }
AutoNullTerminated<Local8Bit> MenuCopy() { return Platform("&Copy{_tab}Ctrl-C"); }
AutoNullTerminated<Local8Bit> MenuCut() { return Platform("Cu&t{_tab}Ctrl-X"); }
AutoNullTerminated<Local8Bit> MenuEdit() { return Platform("&Edit"); }
AutoNullTerminated<Local8Bit> MenuOpen() { return Platform("&Open Varnik Support Center"); }
AutoNullTerminated<Local8Bit> MenuViewActionDialog() { return Platform("Open Varnik &Action Requests"); }
AutoNullTerminated<Local8Bit> MenuHelpAbout() { return Platform("&About Support Center"); }
AutoNullTerminated<Local8Bit> MenuHelpContents() { return Platform("Varnik Support Center &Help Topics"); }
AutoNullTerminated<Local8Bit> MenuHelp() { return Platform("&Help"); }
AutoNullTerminated<Local8Bit> MenuExit() { return Platform("E&xit Support Center"); }
AutoNullTerminated<Local8Bit> MenuFile() { return Platform("&File"); }
AutoNullTerminated<Local8Bit> PreviewAction() { return Platform("Preview Action..."); }
AutoNullTerminated<Local8Bit> ConfirmationCaption() { return Platform("This action requires you to acknowledge the following confirmation message:"); }
AutoNullTerminated<Local8Bit> PreActionTitle() { return Platform("Confirmation Required"); }
AutoNullTerminated<Local8Bit> SnoozeCaption() { return Platform("Click Snooze to be reminded again:"); }
AutoNullTerminated<Local8Bit> TakeAllActions() { return Platform("Take All Actions"); }
AutoNullTerminated<Local8Bit> ActionRequestTitle() { return Platform("Varnik Action Requests"); }

// clang-format on

} // namespace LocalizedStrings
