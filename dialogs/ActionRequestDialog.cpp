#include "dialogs/ActionRequestDialog.h"

#include "app/ProcessState.h"
#include "app/ToolkitCall.h"
#include "app/WidgetHelpers.h"
#include "dialogs/ActionRequestView.h"
#include "dialogs/ActionRequestWidgets.h"
#include "dialogs/DialogParts.h"
#include "dialogs/ListRows.h"
#include "dialogs/SnoozeChoices.h"
#include "dialogs/WidgetText.h"

#include <X11/StringDefs.h>
#include <X11/Xaw/List.h>
#include <algorithm>
#include <limits>

// A refresh has two steps. The first looks at the pending actions as they are now and settles what depends on
// the order of events: the selected row, which is a row number and falls to -1 when the rows get fewer;
// whether there are deadlines and whether snoozing is open; and for which of these the snooze list is to be
// filled. It costs logarithmic time and is taken after each change. The second step converts texts and talks
// to the widgets; in a batch it is taken once, at the end.

namespace {

constexpr char cDialogName[] = "ActionRequestDialog";
constexpr int cMostRefreshesInBatch = 8;

struct DialogState {
    ActionRequestWidgets widgets;
    bool dialogEnabled = false;
    // Selected row of the action list; -1 for none.
    int selectedActionIndex = -1;
    // ID of each row of the action list.
    std::vector<unsigned long> actionListIds;
    // Some pending action has a deadline, and the earliest of them.
    bool anyDeadline = false;
    Instant earliestDeadline;
    // What the client allows, and that less the rule about near deadlines.
    bool snoozeRequested = true;
    bool snoozeAvailable = true;
    // The snooze choice nearest to it is preselected.
    TimeInterval rememberedInterval = cDeadlineThreshold;
    std::vector<SnoozeChoice> snoozeChoices;
    int selectedSnoozeIndex = -1;

    ListRows actionRows;
    ListRows snoozeRows;
    ShownText title{SetLabel};
    ShownText description{SetPaneText};
    ShownText takeLabel{SetLabel};
    ShownText cancelLabel{SetLabel};
    ShownText snoozeLabel{SetLabel};

    // Batches under way, and whether one of them owes a refresh.
    int batches = 0;
    bool refreshIsDue = false;
    int refreshesInBatch = 0;
    // The first step has found snoozing open, so that the snooze list is to be filled, with or without the
    // choices that count from a deadline.
    bool snoozeFillIsDue = false;
    bool fillWithDeadlineChoices = false;
};

DialogState& state = *new DialogState;

bool HasSelection() {
    return state.selectedActionIndex != -1;
}

unsigned long SelectedID() {
    return state.actionListIds.at(static_cast<std::size_t>(state.selectedActionIndex));
}

// The first step

void DropSelectionBehind(std::size_t rows) {
    if (HasSelection() && static_cast<std::size_t>(state.selectedActionIndex) >= rows)
        state.selectedActionIndex = -1;
}

void NoteDeadlines() {
    NullOr<Instant> const earliest = actions.EarliestDeadline();
    state.anyDeadline = !earliest.IsNull();
    state.earliestDeadline =
        earliest ? *earliest : Instant::FromMicroseconds(std::numeric_limits<long long>::max());
    bool const near = earliest && *earliest < Instant::Now() + cDeadlineThreshold;
    state.snoozeAvailable = state.snoozeRequested && !near;
}

// The snooze list keeps its rows while nothing is pending and while snoozing is closed.
void NoteControls() {
    if (actions.empty()) return;
    NoteDeadlines();
    if (!state.snoozeAvailable) return;
    state.snoozeFillIsDue = true;
    state.fillWithDeadlineChoices = state.anyDeadline;
}

void NoteChange() {
    DropSelectionBehind(actions.CountRows());
    NoteControls();
    state.refreshIsDue = true;
}

// The second step

void RebuildActionList() {
    std::vector<ActionRow> rows = MakeActionRows(actions);
    std::vector<std::string> texts;
    std::vector<unsigned long> ids;
    for (ActionRow& row : rows) {
        texts.push_back(std::move(row.text));
        ids.push_back(row.id);
    }
    state.actionRows.Show(std::move(texts));
    state.actionListIds.swap(ids);
}

void RestoreSelection() {
    DropSelectionBehind(state.actionListIds.size());
    if (HasSelection())
        state.actionRows.Highlight(state.selectedActionIndex);
    else
        state.actionRows.Unhighlight();
}

// The list is filled as of when snoozing was last open, when it was sensitive: an insensitive one takes no
// highlight.
void FillSnoozeList() {
    state.snoozeFillIsDue = false;
    XtSetSensitive(state.widgets.snoozeList, True);
    state.snoozeChoices = MakeSnoozeChoices(state.fillWithDeadlineChoices);
    state.selectedSnoozeIndex = NearestSnoozeChoice(state.snoozeChoices, state.rememberedInterval);
    std::vector<std::string> texts;
    for (SnoozeChoice const& choice : state.snoozeChoices) texts.push_back(WidgetText(choice.first.Ref()));
    state.snoozeRows.Show(std::move(texts));
    state.snoozeRows.Highlight(state.selectedSnoozeIndex);
}

ActionRequestView MakeView() {
    ActionRequestSelection selection;
    selection.row = state.selectedActionIndex;
    if (HasSelection()) selection.id = SelectedID();
    selection.rows = static_cast<int>(state.actionListIds.size());
    selection.snoozeAvailable = state.snoozeAvailable;
    return actions.empty() ? MakeEmptyView(selection.rows) : MakePendingView(actions, selection);
}

void ShowTexts(ActionRequestView const& view) {
    state.title.Show(FirstLine(WidgetText(view.title.Ref())));
    state.description.Show(WidgetText(view.description.Ref()));
    state.takeLabel.Show(*ControlLiteral(view.takeLabel));
    state.cancelLabel.Show(*ControlLiteral(view.cancelLabel));
    state.snoozeLabel.Show(*ControlLiteral(view.snoozeLabel));
}

void SetSensitivities(ActionRequestView const& view) {
    ActionRequestWidgets const& widgets = state.widgets;
    XtSetSensitive(widgets.takeAllActions, view.takeAllEnabled);
    XtSetSensitive(widgets.takeActions, view.takeEnabled);
    XtSetSensitive(widgets.cancelAction, view.cancelEnabled);
    XtSetSensitive(widgets.actionDetails, view.detailsEnabled);
    XtSetMappedWhenManaged(widgets.actionDetails, view.detailsMapped);
    XtSetSensitive(widgets.snoozeButton, view.snoozeButtonEnabled);
    XtSetSensitive(widgets.snoozeList, view.snoozeListEnabled);
}

void RefreshControls() {
    ActionRequestView const view = MakeView();
    ShowTexts(view);
    if (state.snoozeFillIsDue) FillSnoozeList();
    SetSensitivities(view);
}

void Refresh() {
    state.refreshIsDue = false;
    RebuildActionList();
    RestoreSelection();
    RefreshControls();
}

void RefreshIfDue() {
    if (state.refreshIsDue) InDialogHandler(cDialogName, Refresh);
}

// What a dialog shows while it is disabled is the state of that moment. A client can disable and enable the
// dialog any number of times in a batch: after a few refreshes for that, it is left behind, as a disabled
// dialog may be.
void RefreshBeforeDisabling() {
    if (!state.refreshIsDue) return;
    if (state.refreshesInBatch < cMostRefreshesInBatch) RefreshIfDue();
    if (state.batches > 0) ++state.refreshesInBatch;
    state.refreshIsDue = false;
}

// Callbacks

void SetAllSensitive(bool sensitive) {
    ActionRequestWidgets const& widgets = state.widgets;
    if (!widgets.shell) return;
    for (Widget const control :
         {widgets.takeAllActions, widgets.actionDetails, widgets.cancelAction, widgets.takeActions,
          widgets.snoozeButton, widgets.snoozeList, widgets.actionList})
        XtSetSensitive(control, sensitive);
}

void QueueForSelection(UICommandType type) {
    if (!HasSelection()) return;
    unsigned long const id = SelectedID();
    DisableActionRequestDialog();
    QueueCommand(type, id, 0, 0);
}

void OnTakeAll(Widget, XtPointer, XtPointer) {
    ToolkitCall([] {
        DisableActionRequestDialog();
        QueueCommand(TakeAll, 0, 0, 0);
    });
}

void OnTake(Widget, XtPointer, XtPointer) {
    ToolkitCall([] { QueueForSelection(TakeAction); });
}

void OnCancel(Widget, XtPointer, XtPointer) {
    ToolkitCall([] { QueueForSelection(CancelAction); });
}

void OnDetails(Widget, XtPointer, XtPointer) {
    ToolkitCall([] { QueueForSelection(ShowDetails); });
}

// With nothing pending the button reads "Close": the command finds nothing to postpone then.
void SnoozeOrClose() {
    auto const row = static_cast<std::size_t>(state.selectedSnoozeIndex);
    if (row < state.snoozeChoices.size()) {
        HideActionRequestDialog();
        QueueCommand(Snooze, 0, state.snoozeChoices[row].second,
                     state.earliestDeadline.Microseconds() / cMicrosecondsPerSecond);
    }
    if (actions.empty()) HideActionRequestDialog();
}

void OnSnooze(Widget, XtPointer, XtPointer) {
    ToolkitCall(SnoozeOrClose);
}

void OnSnoozeChosen(Widget, XtPointer, XtPointer selected) {
    ToolkitCall([=] {
        state.selectedSnoozeIndex =
            state.snoozeRows.RowOf(static_cast<XawListReturnStruct*>(selected)->list_index);
    });
}

void SelectRow() {
    if (!state.widgets.shell || !state.dialogEnabled) return;
    state.selectedActionIndex = state.actionRows.Highlighted();
    InDialogHandler(cDialogName, [] {
        RestoreSelection();
        NoteControls();
        RefreshControls();
    });
}

void PostponeListSelect(Widget, XEvent*, String*, Cardinal*) {
    ToolkitCall(SelectRow);
}

// Building

void AttachTo(ActionRequestWidgets const& widgets) {
    state.widgets = widgets;
    state.actionRows.Attach(widgets.viewport, widgets.actionList);
    state.snoozeRows.Attach(widgets.snoozeViewport, widgets.snoozeList);
    state.title.Attach(widgets.actionTitle);
    state.description.Attach(widgets.actionDescription);
    state.takeLabel.Attach(widgets.takeActions);
    state.cancelLabel.Attach(widgets.cancelAction);
    state.snoozeLabel.Attach(widgets.snoozeButton);
}

void Build() {
    ActionRequestCallbacks callbacks{};
    callbacks.takeAll = OnTakeAll;
    callbacks.take = OnTake;
    callbacks.cancel = OnCancel;
    callbacks.details = OnDetails;
    callbacks.snooze = OnSnooze;
    callbacks.snoozeChosen = OnSnoozeChosen;
    callbacks.actionChosen = PostponeListSelect;
    AttachTo(CreateActionRequestWidgets(callbacks));
    state.dialogEnabled = true;
}

} // namespace

bool IsActionRequestDialogShown() {
    return state.widgets.shell != nullptr;
}

bool IsActionRequestDialogEnabled() {
    return state.dialogEnabled;
}

void UnixApp_ShowActionRequestDialog(bool, TimeInterval const& remindInterval, bool snoozable) {
    if (IsActionRequestDialogShown() || !display) return;
    state.snoozeRequested = state.snoozeAvailable = snoozable;
    state.rememberedInterval = remindInterval;
    InDialogHandler(cDialogName, Build);
    UpdateActionRequestDialog();
}

void HideActionRequestDialog() {
    if (!IsActionRequestDialogShown()) return;
    XtDestroyWidget(state.widgets.shell);
    state.widgets = ActionRequestWidgets();
    state.refreshIsDue = state.snoozeFillIsDue = false;
}

void UpdateActionRequestDialog() {
    if (!IsActionRequestDialogShown() || !state.dialogEnabled) return;
    NoteChange();
    if (state.batches == 0) RefreshIfDue();
}

void DisableActionRequestDialog() {
    RefreshBeforeDisabling();
    SetAllSensitive(false);
    state.dialogEnabled = false;
}

void EnableActionRequestDialog() {
    SetAllSensitive(true);
    state.dialogEnabled = true;
    UpdateActionRequestDialog();
}

ActionRequestDialogBatch::ActionRequestDialogBatch() {
    ++state.batches;
}

ActionRequestDialogBatch::~ActionRequestDialogBatch() {
    if (--state.batches > 0) return;
    state.refreshesInBatch = 0;
    RefreshIfDue();
}
