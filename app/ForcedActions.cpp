#include "app/ForcedActions.h"

#include "app/ClientSender.h"

bool TakeOverdueActions(Instant now) {
    Instant const horizon = now + cDeadlineThreshold;
    bool changed = false;
    for (auto action = actions.begin(); action != actions.end();) {
        NullOr<Instant> const deadline = action->forceRun ? action->Deadline() : NullOr<Instant>();
        if (deadline && *deadline < now) {
            SendActionTaken(action->id, false);
            action = actions.erase(action);
            changed = true;
            continue;
        }
        if (deadline && *deadline < horizon) changed = true;
        ++action;
    }
    return changed;
}
