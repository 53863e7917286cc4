#include "app/ForcedActions.h"

#include "app/ClientSender.h"

namespace {

void SendTaken(unsigned long id) {
    ActionTaken message;
    message.id = id;
    message.originator = SharedUString<UTF8>("ClientUI"_utf8);
    SendToClient(pipeWriter, message);
}

} // namespace

bool TakeOverdueActions(Instant now) {
    Instant const horizon = now + cDeadlineThreshold;
    bool changed = false;
    for (auto action = actions.begin(); action != actions.end();) {
        NullOr<Instant> const deadline = action->forceRun ? action->Deadline() : NullOr<Instant>();
        if (deadline && *deadline < now) {
            SendTaken(action->id);
            action = actions.erase(action);
            changed = true;
            continue;
        }
        if (deadline && *deadline < horizon) changed = true;
        ++action;
    }
    return changed;
}
