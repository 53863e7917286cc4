#pragma once

#include "text/AutoNullTerminated.h"
#include "time/Instant.h"

// The catalogue of interface texts: menus, captions, titles. Each call makes its text anew, so that the
// translations in force apply. An ampersand marks the mnemonic of a menu item, and a tab stands between an
// item and its shortcut.
//
// Failures are those of rendering a format. Texts for widgets come in the encoding of the locale; one that
// cannot be converted comes as the marker "<Invalid String>", and making that marker can fail too (see
// format/PlatformString.h).
namespace LocalizedStrings {

// Texts
AutoUString<UTF8> ShutdownNowDescription();
AutoUString<UTF8> RestartNowDescription();
AutoUString<UTF8> ShutdownNow();
AutoUString<UTF8> RestartNow();
AutoUString<UTF8> Progress();
AutoUString<UTF8> TechnicianTab();
AutoUString<UTF8> SupportDashboard();
AutoUString<UTF8> Offers();
// "You Have 3 New Offers"; the plural for 0 as well.
AutoUString<UTF8> AnnounceOffers(unsigned int count);

// Texts for widgets
AutoNullTerminated<Local8Bit> Dismiss();
// "You have 3 pending actions."; what a click does when there are none.
AutoNullTerminated<Local8Bit> TrayTip(unsigned int pendingActions);
// With the version of this program.
AutoNullTerminated<Local8Bit> AboutVersion();
AutoNullTerminated<Local8Bit> AboutCopyright();
// Name the two times of day in the process's zone. The dates are left out, so that a period over midnight
// reads with a start later than its end.
AutoNullTerminated<Local8Bit> EnteringQuietModeExplanation(Instant const& start, Instant const& end);
AutoNullTerminated<Local8Bit> QuietModeExplanation(Instant const& start, Instant const& end);
AutoNullTerminated<Local8Bit> EnteringQuietModeTitle();
AutoNullTerminated<Local8Bit> PreviewDialogTitle();
AutoNullTerminated<Local8Bit> QuietModeTitle();
AutoNullTerminated<Local8Bit> AboutMenu();
AutoNullTerminated<Local8Bit> Cancel();
AutoNullTerminated<Local8Bit> OK();
AutoNullTerminated<Local8Bit> AcceptOffersButton();
AutoNullTerminated<Local8Bit> HideOffersButton();
AutoNullTerminated<Local8Bit> ToggleHiddenOffersCheck();
AutoNullTerminated<Local8Bit> SearchCaption();
AutoNullTerminated<Local8Bit> ProgressCaption();
AutoNullTerminated<Local8Bit> ViewPostponed();
AutoNullTerminated<Local8Bit> AboutTitle();
AutoNullTerminated<Local8Bit> MainDialogTitle();
AutoNullTerminated<Local8Bit> LastChangeCap();
AutoNullTerminated<Local8Bit> IssueTimeCap();
AutoNullTerminated<Local8Bit> CategoryCap();
AutoNullTerminated<Local8Bit> IssuerCap();
AutoNullTerminated<Local8Bit> LineCap();
AutoNullTerminated<Local8Bit> TypeCap();
AutoNullTerminated<Local8Bit> ScriptBoxCap();
AutoNullTerminated<Local8Bit> RetryCap();
AutoNullTerminated<Local8Bit> TryCap();
AutoNullTerminated<Local8Bit> IDCap();
AutoNullTerminated<Local8Bit> NameCap();
AutoNullTerminated<Local8Bit> ActionHistoryTitle();
AutoNullTerminated<Local8Bit> Loading();
AutoNullTerminated<Local8Bit> MenuViewPostponed();
AutoNullTerminated<Local8Bit> MenuPaste();
AutoNullTerminated<Local8Bit> MenuCopy();
AutoNullTerminated<Local8Bit> MenuCut();
AutoNullTerminated<Local8Bit> MenuEdit();
AutoNullTerminated<Local8Bit> MenuOpen();
AutoNullTerminated<Local8Bit> MenuViewActionDialog();
AutoNullTerminated<Local8Bit> MenuHelpAbout();
AutoNullTerminated<Local8Bit> MenuHelpContents();
AutoNullTerminated<Local8Bit> MenuHelp();
AutoNullTerminated<Local8Bit> MenuExit();
AutoNullTerminated<Local8Bit> MenuFile();
AutoNullTerminated<Local8Bit> PreviewAction();
AutoNullTerminated<Local8Bit> ConfirmationCaption();
AutoNullTerminated<Local8Bit> PreActionTitle();
AutoNullTerminated<Local8Bit> SnoozeCaption();
AutoNullTerminated<Local8Bit> TakeAllActions();
AutoNullTerminated<Local8Bit> ActionRequestTitle();

} // namespace LocalizedStrings
