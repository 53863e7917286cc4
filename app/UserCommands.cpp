#include "app/UserCommands.h"

#include "app/ClientSender.h"
#include "app/ProcessState.h"
#include "dialogs/ActionDetailsDialog.h"
#include "dialogs/ActionRequestDialog.h"
#include "dialogs/ConfirmationDialog.h"
#include "link/ProtocolRecords.h"

#include <algorithm>
#include <iterator>

// Each type of command has one function. The dialog that raised a command is out of use until the command, or
// the last one of a chain of dialogs, enables the action request dialog again; a snooze has closed it.
//
// The walk of take-all: confirmationCursor is the position in `actions` up to which the user has been asked,
// as an index, because the client may withdraw any action between two commands. It is clamped to the list
// before each step; an action that slips over the cursor when one before it goes is not asked about.

namespace {

using Position = ActionRequestList::const_iterator;

bool takingAll = false;
std::size_t confirmationCursor = 0;

void FinishAction(Position position, bool cancel) {
    SendActionTaken(position->id, cancel);
    actions.erase(position);
    UpdateActionRequestDialog();
}

bool ShowConfirmationIfRequired(ActionRequest const& action) {
    if (action.preActionMessage.IsNull()) return false;
    ShowConfirmationRequestDialog(action.id);
    return true;
}

void TakeAllActions() {
    for (ActionRequest const& action : actions) SendActionTaken(action.id, false);
    actions.clear();
    UpdateActionRequestDialog();
    EnableActionRequestDialog();
}

// Nothing is sent before the walk has ended: one refusal cancels the whole of it. Tells whether it has ended.
bool WalkOn() {
    confirmationCursor = std::min(confirmationCursor, actions.size());
    Position action = std::next(actions.begin(), static_cast<std::ptrdiff_t>(confirmationCursor));
    for (; action != actions.end(); ++action) {
        ++confirmationCursor;
        if (!ShowConfirmationIfRequired(*action)) continue;
        takingAll = true;
        return false;
    }
    takingAll = false;
    TakeAllActions();
    return true;
}

void HandleTakeAll(UICommand const&) {
    confirmationCursor = 0;
    WalkOn();
}

void HandleShowDetails(UICommand const& command) {
    ShowActionDetailsDialog(command.actionID);
}

void HandleCancelAction(UICommand const& command) {
    Position const found = actions.FindFirst(command.actionID);
    if (found != actions.end()) FinishAction(found, true);
    EnableActionRequestDialog();
}

void HandleTakeAction(UICommand const& command) {
    Position const found = actions.FindFirst(command.actionID);
    if (found != actions.end()) {
        if (ShowConfirmationIfRequired(*found)) return;
        FinishAction(found, false);
    }
    EnableActionRequestDialog();
}

void SetRemindTime(Instant target) {
    m_postponedTo = target;
    RemindTime message;
    message.time = TimeObject(target, TimeZone());
    SendToClient(pipeWriter, message);
}

void SetRemindInterval(TimeInterval interval) {
    m_remindInterval = interval;
    RemindInterval message;
    message.interval = interval;
    SendToClient(pipeWriter, message);
}

// Minutes that are not positive count back from the point in time that the seconds tell. That point may be
// past already: the reminder is due at once then.
Instant SnoozeTarget(UICommand const& command, TimeInterval interval) {
    if (command.minutes > 0) return Instant::Now() + interval;
    return Instant::FromMicroseconds(command.seconds * cMicrosecondsPerSecond) + interval;
}

// The dialog stays as the callback has left it: the tick shows it when the reminder is due.
void HandleSnooze(UICommand const& command) {
    if (actions.empty()) return;
    TimeInterval const interval = TimeInterval::FromMicroseconds(command.minutes * cMicrosecondsPerMinute);
    SetRemindTime(SnoozeTarget(command, interval));
    SetRemindInterval(interval);
}

void HandleConfirmAccepted(UICommand const& command) {
    if (takingAll) {
        if (WalkOn()) EnableActionRequestDialog();
        return;
    }
    Position const found = actions.FindFirst(command.actionID);
    if (found != actions.end()) FinishAction(found, false);
    EnableActionRequestDialog();
}

void HandleConfirmRefused(UICommand const&) {
    takingAll = false;
    EnableActionRequestDialog();
}

void HandleClosed(UICommand const&) {
    EnableActionRequestDialog();
}

void HandleOpenRequested(UICommand const&) {
    UnixApp_ShowActionRequestDialog(false, m_remindInterval, m_snoozable);
}

// By the value of the type.
constexpr void (*cHandlers[])(UICommand const&) = {
    HandleTakeAll, HandleShowDetails,     HandleClosed,         HandleCancelAction, HandleTakeAction,
    HandleSnooze,  HandleConfirmAccepted, HandleConfirmRefused, HandleClosed,       HandleOpenRequested,
};
static_assert(std::size(cHandlers) == OpenRequested + 1);

void CarryOut(UICommand const& command) noexcept {
    auto const type = static_cast<std::uint32_t>(command.type);
    if (type >= std::size(cHandlers)) return;
    try {
        cHandlers[type](command);
    } catch (...) {
        // Only this command is lost.
    }
}

} // namespace

void ProcessMessagesFromUI() {
    FiFoQueue<std::unique_ptr<UICommand>> commands;
    uiCommandQ.ReadMessages(commands);
    while (!commands.IsEmpty()) CarryOut(*commands.Take());
}
