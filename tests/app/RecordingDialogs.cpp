#include "tests/app/RecordingDialogs.h"

#include "app/ProcessState.h"
#include "dialogs/ActionDetailsDialog.h"
#include "dialogs/ActionRequestDialog.h"
#include "dialogs/ConfirmationDialog.h"
#include "dialogs/MessageDialogs.h"
#include "dialogs/QuietModeDialog.h"

#include <stdexcept>
#include <utility>

RecordingDialogs& recordingDialogs = *new RecordingDialogs;

namespace {

void Record(std::string const& call, std::string const& details = "") {
    recordingDialogs.calls.push_back(details.empty() ? call : call + " " + details);
    if (call == recordingDialogs.failing) throw std::runtime_error(call);
}

std::string PendingIDs() {
    std::string ids;
    for (ActionRequest const& action : actions) ids += (ids.empty() ? "" : ",") + std::to_string(action.id);
    return ids;
}

} // namespace

std::vector<std::string> RecordingDialogs::TakeCalls() {
    return std::exchange(calls, {});
}

bool IsActionRequestDialogShown() {
    return recordingDialogs.shown;
}

bool IsActionRequestDialogEnabled() {
    return true;
}

void UnixApp_ShowActionRequestDialog(bool, TimeInterval const& remindInterval, bool snoozable) {
    recordingDialogs.shown = true;
    Record("Show", std::to_string(remindInterval.Microseconds()) + (snoozable ? " true" : " false"));
}

void HideActionRequestDialog() {
    Record("Hide");
}

void UpdateActionRequestDialog() {
    Record("Update", recordingDialogs.batches > 0 ? "folded " + PendingIDs() : PendingIDs());
}

void DisableActionRequestDialog() {
    Record("Disable");
}

void EnableActionRequestDialog() {
    Record("Enable");
}

ActionRequestDialogBatch::ActionRequestDialogBatch() {
    ++recordingDialogs.batches;
}

ActionRequestDialogBatch::~ActionRequestDialogBatch() {
    --recordingDialogs.batches;
}

void ShowActionDetailsDialog(unsigned long id) {
    Record("Details", std::to_string(id));
}

void HideActionDetailsDialog() {
    Record("HideDetails");
}

void UpdateActionDetailsDialog() {
}

void ShowConfirmationRequestDialog(unsigned long id) {
    Record("Confirm", std::to_string(id));
}

void HideConfirmationRequestDialog() {
    Record("HideConfirmation");
}

void UpdateConfirmationRequestDialog() {
}

void ShowMessageDialog(MessageRequest const& request, bool persistent, bool topmost) {
    recordingDialogs.lastMessage = request;
    Record("Message",
           std::to_string(request.id) + (persistent ? " persistent" : "") + (topmost ? " topmost" : ""));
}

void RemoveMessageDialog(unsigned long id) {
    Record("RemoveMessage", std::to_string(id));
}

void RemoveTimedoutMessageDialogs() {
    Record("RemoveTimedout");
}

void ShowQuietModeDialog(Instant const& start, Instant const& end) {
    Record("QuietMode", std::to_string(start.Microseconds()) + " " + std::to_string(end.Microseconds()));
}

void RemoveQuietModeDialog() {
    Record("RemoveQuietMode");
}
