#include "app/MainLoop.h"

#include "app/ClientMessages.h"
#include "app/ExitCleanup.h"
#include "app/ForcedActions.h"
#include "app/HiddenWindow.h"
#include "app/LocaleNames.h"
#include "app/ProcessState.h"
#include "app/ToolkitCall.h"
#include "app/XHandlers.h"
#include "link/UnixPipe.h"

#include <clocale>
#include <string>

namespace {

constexpr unsigned long cTickInMilliseconds = 1000;

void ArmTimer() {
    XtAppAddTimeOut(app_context, cTickInMilliseconds, OnMainLoopTimer, nullptr);
}

// There is no dialog yet that a command could be about.
void DropCommands() {
    FiFoQueue<std::unique_ptr<UICommand>> commands;
    uiCommandQ.ReadMessages(commands);
}

void Tick() {
    if (clientPipe && clientPipe->Killed()) ExitCleanup(0, "CLOSED");
    ProcessMessagesFromClient();
    DropCommands();
    if (!initialized) return;
    if (firstTick) {
        firstTick = false;
        CreateHiddenWindow();
    }
    if (inQuietMode) return;
    TakeOverdueActions(Instant::Now());
}

void OpenDisplay(int argumentCount, char** arguments) {
    display =
        XtOpenDisplay(app_context, nullptr, nullptr, "XVRKClientUI", nullptr, 0, &argumentCount, arguments);
    if (!display) ExitCleanup(-1, "Error: failed XtOpenDisplay");
}

// The toolkit sets the locale in its own way when it opens the display; translations stay only if what is in
// force after that is a real locale.
void CheckLocaleOfToolkit() {
    if (international && !IsRealLocale(setlocale(LC_CTYPE, nullptr))) international = false;
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
    OpenDisplay(argumentCount, arguments);
    CheckLocaleOfToolkit();
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
