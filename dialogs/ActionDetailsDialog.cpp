#include "dialogs/ActionDetailsDialog.h"

#include "app/ProcessState.h"
#include "app/ToolkitCall.h"
#include "app/WidgetHelpers.h"
#include "dialogs/DialogParts.h"
#include "dialogs/WidgetText.h"

#include <algorithm>

namespace {

constexpr char cDialogName[] = "ActionDetailsDialog";

Widget detailsShell = nullptr;
std::string& detailsText = *new std::string;

void OnClose(Widget, XtPointer, XtPointer) {
    ToolkitCall([] {
        HideActionDetailsDialog();
        QueueCommand(DetailsClosed, 0, 0, 0);
    });
}

// IDs need not be unique: of several actions, the one that has details is meant.
void TakeTextOf(unsigned long id) {
    auto const found = std::find_if(actions.begin(), actions.end(), [=](ActionRequest const& action) {
        return action.id == id && !action.preview.IsNull();
    });
    if (found != actions.end())
        detailsText = WidgetText(found->preview->Ref());
    else if (actions.FindFirst(id) != actions.end())
        detailsText.clear();
}

void Build(unsigned long id) {
    TakeTextOf(id);
    Widget const shell = CreateDialogShell(*ControlLiteral("Action Script Preview"));
    Widget const form = CreateForm(shell);
    Widget const pane =
        CreateTextPane(form, "actiondetails", cDialogPaneWidth, cDialogPaneHeight, nullptr, detailsText);
    Widget const ok = CreateButton(form, "ok", *ControlLiteral("OK"), pane, OnClose);
    PlaceUnder(pane, {ok});
    ShowDialog(shell, pane);
    detailsShell = shell;
}

} // namespace

void ShowActionDetailsDialog(unsigned long id) {
    if (detailsShell || !display) return;
    InDialogHandler(cDialogName, [=] { Build(id); });
    UpdateActionDetailsDialog();
}

void HideActionDetailsDialog() {
    if (detailsShell) XtDestroyWidget(detailsShell);
    detailsShell = nullptr;
}

void UpdateActionDetailsDialog() {
}
