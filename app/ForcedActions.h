#pragma once

#include "time/Instant.h"

// Sends ActionTaken for every forced action whose deadline lies strictly before `now`, in order, and removes
// it from `actions`. Actions that are not forced or have no deadline are passed over, overdue or not.
// Returns whether anything to be shown has changed: an action was taken, or a forced deadline lies less than
// five minutes ahead, so that its countdown moves.
bool TakeOverdueActions(Instant now);
