#include "dialogs/ActionRequestStore.h"

ActionRequest const& ActionRequestStore::GetAction(unsigned long const& id) const {
    auto const found = m_actions.find(id);
    if (found == m_actions.end()) throw NoSuchActionRequestID();
    return found->second;
}

void ActionRequestStore::RemoveAction(unsigned long const& id) {
    if (m_actions.erase(id) == 0) throw NoSuchActionRequestID();
}

Instant ActionRequestStore::EarliestForcedDeadline() {
    return Instant::Now() + cDeadlineThreshold;
}

void ActionRequestStore::Update(ActionRequest const& request, Instant floor) {
    ActionRequest& stored = m_actions[request.id];
    stored = request;
    if (!stored.forceRun) return;
    NullOr<Instant> const deadline = stored.Deadline();
    if (deadline && *deadline < floor) stored.deadline = TimeObject(floor, TimeZone());
}
