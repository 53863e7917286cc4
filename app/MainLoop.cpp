#include "app/MainLoop.h"

#include "app/ClientMessages.h"
#include "app/DefaultFontSet.h"
#include "app/ExitCleanup.h"
#include "app/ForcedActions.h"
#include "app/HiddenWindow.h"
#include "app/LocaleNames.h"
#include "app/ProcessState.h"
#include "app/ToolkitCall.h"
#include "app/ToolkitWarnings.h"
#include "app/Translations.h"
#include "app/UserCommands.h"
#include "app/XHandlers.h"
#include "dialogs/ActionRequestDialog.h"
#include "dialogs/MessageDialogs.h"
#include "link/UnixPipe.h"

#include <clocale>
#include <string>

namespace {

constexpr unsigned long cTickInMilliseconds = 1000;

void ArmTimer() {
    XtAppAddTimeOut(app_context, cTickInMilliseconds, OnMainLoopTimer, nullptr);
}

// Asked on every tick: a dialog that is shown already stays as it is.
void RemindOfActions() {
    if (m_postponedTo < Instant::Now() && !actions.empty())
        UnixApp_ShowActionRequestDialog(false, m_remindInterval, m_snoozable);
}

void Tick() {
    if (clientPipe && clientPipe->Killed()) ExitCleanup(0, "CLOSED");
    ProcessMessagesFromClient();
    ProcessMessagesFromUI();
    if (!initialized) return;
    if (firstTick) {
        firstTick = false;
        CreateHiddenWindow();
    }
    RemindOfActions();
    RemoveTimedoutMessageDialogs();
    if (inQuietMode) return;
    if (TakeOverdueActions(Instant::Now())) UpdateActionRequestDialog();
}

void OpenDisplay(int argumentCount, char** arguments) {
    display =
        XtOpenDisplay(app_context, nullptr, nullptr, "XVRKClientUI", nullptr, 0, &argumentCount, arguments);
    if (!display) ExitCleanup(-1, "Error: failed XtOpenDisplay");
}

// The toolkit sets the locale in its own way when it opens the display; translations stay only if what is in
// force after that is a real locale.
void CheckLocaleOfToolkit() {
    if (!international || IsRealLocale(setlocale(LC_CTYPE, nullptr))) return;
    international = false;
    DropTranslations();
}

void AddActions() {
    // "Nothing" has no procedure: a translation bound to it does nothing.
    std::string systemMenuClose = "SystemMenuClose";
    std::string nothing = "Nothing";
    XtActionsRec actionTable[] = {{systemMenuClose.data(), SystemMenuClose}, {nothing.data(), nullptr}};
    XtAppAddActions(app_context, actionTable, XtNumber(actionTable));
}

} // namespace

void OpenToolkit(int argumentCount, char** arguments) {
    XSetErrorHandler(X_ErrorHandler);
    XSetIOErrorHandler(X_IOErrorHandler);
    if (international) XtSetLanguageProc(nullptr, nullptr, nullptr);
    XtToolkitInitialize();
    app_context = XtCreateApplicationContext();
    OverrideWarningMsgHandler(app_context);
    OpenDisplay(argumentCount, arguments);
    CheckLocaleOfToolkit();
    ConfigValidDefaultFontSet();
    XtAppSetErrorHandler(app_context, Xt_ErrorHandler);
    AddActions();
}

void InitXApp(int argumentCount, char** arguments) {
    OpenToolkit(argumentCount, arguments);
    ArmTimer();
    XtAppMainLoop(app_context);
}

void OnMainLoopTimer(XtPointer, XtIntervalId*) {
    ToolkitCall(Tick);
    ArmTimer();
}
