#include "dialogs/ConfirmationDialog.h"

#include "app/ProcessState.h"
#include "app/ToolkitCall.h"
#include "app/WidgetHelpers.h"
#include "dialogs/DialogParts.h"
#include "dialogs/WidgetText.h"

#include <algorithm>

namespace {

constexpr char cDialogName[] = "ConfirmationDialog";

Widget confirmationShell = nullptr;
unsigned long confirmationActionId = 0;
// Grows with the widest caption that has been shown, and never shrinks.
int confirmationWidth = cDialogPaneWidth;
std::string& actionTitle = *new std::string;
std::string& confirmationMessage = *new std::string;

void Answer(UICommandType answer) {
    HideConfirmationRequestDialog();
    QueueCommand(answer, confirmationActionId, 0, 0);
}

void OnAccept(Widget, XtPointer, XtPointer) {
    ToolkitCall([] { Answer(ConfirmAccepted); });
}

void OnRefuse(Widget, XtPointer, XtPointer) {
    ToolkitCall([] { Answer(ConfirmRefused); });
}

// IDs need not be unique: of several actions, the one that asks is meant.
ActionRequest const* ActionThatAsks(unsigned long id) {
    auto const found = std::find_if(actions.begin(), actions.end(), [=](ActionRequest const& action) {
        return action.id == id && !action.preActionMessage.IsNull();
    });
    return found == actions.end() ? nullptr : &*found;
}

void TakeTextsOf(unsigned long id) {
    if (ActionRequest const* const action = ActionThatAsks(id)) {
        confirmationMessage = WidgetText(action->preActionMessage->Ref());
        actionTitle = WidgetText(action->title.Ref());
        return;
    }
    auto const found = actions.FindFirst(id);
    if (found == actions.end()) return;
    confirmationMessage.clear();
    actionTitle = WidgetText(found->title.Ref());
}

// However long the title is, the buttons must stay on the screen.
void CutToWidth(Widget label, int width) {
    if (WidthOf(label) > width) SetWidth(label, width);
}

void Build(unsigned long id) {
    confirmationActionId = id;
    TakeTextsOf(id);
    Widget const shell = CreateDialogShell(*ControlLiteral("Confirmation Required"));
    Widget const form = CreateForm(shell);
    Widget const title = CreateLine(form, "actiontitle", FirstLine(actionTitle), nullptr);
    Widget const caption = CreateLine(
        form, "staticlabel",
        *ControlLiteral("This action requires you to acknowledge the following confirmation message:"),
        title);
    confirmationWidth = std::max(confirmationWidth, WidthOf(caption));
    CutToWidth(title, confirmationWidth);
    Widget const pane = CreateTextPane(form, "actionconfirmation", confirmationWidth, cDialogPaneHeight,
                                       caption, confirmationMessage);
    Widget const cancel = CreateButton(form, "cancel", *ControlLiteral("Cancel"), pane, OnRefuse);
    Widget const ok = CreateButton(form, "ok", *ControlLiteral("OK"), pane, OnAccept);
    PlaceUnder(pane, {cancel, ok});
    ShowDialog(shell, pane);
    confirmationShell = shell;
}

} // namespace

void ShowConfirmationRequestDialog(unsigned long id) {
    if (confirmationShell || !display) return;
    InDialogHandler(cDialogName, [=] { Build(id); });
    UpdateConfirmationRequestDialog();
}

void HideConfirmationRequestDialog() {
    if (confirmationShell) XtDestroyWidget(confirmationShell);
    confirmationShell = nullptr;
}

void UpdateConfirmationRequestDialog() {
}
