#include "dialogs/QuietModeDialog.h"

#include "app/ProcessState.h"
#include "app/ToolkitCall.h"
#include "app/WidgetHelpers.h"
#include "dialogs/DialogParts.h"
#include "dialogs/LocalizedStrings.h"

#include <algorithm>

namespace {

constexpr char cDialogName[] = "QuietModeDialog";

Widget quietModeShell = nullptr;
// The width of the widest explanation that has been shown.
int quietModeWidth = cDialogPaneWidth;

void OnClose(Widget, XtPointer, XtPointer) {
    ToolkitCall([] {
        RemoveQuietModeDialog();
        QueueCommand(QuietModeClosed, 0, 0, 0);
    });
}

void PlaceInTheMiddleUnder(Widget label, Widget button) {
    SetLeftEdge(button, (WidthOf(label) - WidthOf(button)) / 2 + BorderWidthOf(label));
}

void Build(Instant const& start, Instant const& end) {
    Widget const shell = CreateDialogShell(*ControlLiteral("Not Currently Available"));
    Widget const form = CreateForm(shell);
    Widget const label = CreateLine(
        form, "staticlabel", *ControlLiteral(LocalizedStrings::QuietModeExplanation(start, end)), nullptr);
    Widget const ok = CreateButton(form, "ok", *ControlLiteral("OK"), label, OnClose);
    quietModeWidth = std::max(quietModeWidth, WidthOf(label));
    PlaceInTheMiddleUnder(label, ok);
    ShowDialog(shell);
    quietModeShell = shell;
}

} // namespace

void ShowQuietModeDialog(Instant const& start, Instant const& end) {
    if (quietModeShell || !display) return;
    InDialogHandler(cDialogName, [&] { Build(start, end); });
}

void RemoveQuietModeDialog() {
    if (quietModeShell) XtDestroyWidget(quietModeShell);
    quietModeShell = nullptr;
}
