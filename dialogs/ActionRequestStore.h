#pragma once

#include "dialogs/ActionRequest.h"
#include "foundation/Exceptions.h"

#include <map>

// Pending actions by ID, in ascending order. It lives for one refresh of what depends on all actions
// together, and is the only place where a forced deadline is kept at least five minutes ahead: a text about
// all actions tells of about five minutes at the least for one that runs by itself (a second less when the
// clock has stepped since the update), while that of a single action counts down to zero.
class ActionRequestStore {
public:
    bool HasAction(unsigned long const& id) const { return m_actions.contains(id); }
    // Throw NoSuchActionRequestID for an unknown ID.
    ActionRequest const& GetAction(unsigned long const& id) const;
    void RemoveAction(unsigned long const& id);

    // Adds all requests of a range in order; a later one replaces an earlier one of its ID. Nothing is ever
    // removed. The deadline of a forced action that lies before now plus five minutes becomes that instant,
    // in the time zone of offset 0. Throws InvalidMonth for a forced deadline whose month does not exist; the
    // requests up to that one have then been added.
    template <class Requests>
    void UpdateActions(Requests const& requests) {
        Instant const floor = EarliestForcedDeadline();
        for (ActionRequest const& request : requests) Update(request, floor);
    }

    std::map<unsigned long, ActionRequest> const& Actions() const { return m_actions; }

private:
    static Instant EarliestForcedDeadline();
    void Update(ActionRequest const& request, Instant floor);

    std::map<unsigned long, ActionRequest> m_actions;
};
