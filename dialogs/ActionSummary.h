#pragma once

#include "dialogs/ActionRequestStore.h"
#include "text/AutoUString.h"

#include <set>

// What the user should know before taking an action: to save work first, that the machine will restart or
// shut down, and until when. For the main thread.
//
// The deadline counts as near when it is less than five minutes ahead, or has passed: the action must then be
// taken "now". At exactly five minutes the sentence is still the one with the time left, which
// FormattedDeadline gives as "Now". Actions that run by themselves tell the time left, near or not; one
// without a deadline never runs by itself and says nothing of it.
//
// There is a table of sentences for one action and another for several. The translations of a table are all
// chosen at its first use, and kept; the time left is translated at each call.

// One action; the empty text when there is nothing to know. Of an action that both restarts and shuts down,
// the restart is told. Throws InvalidMonth for a deadline whose month does not exist. The second form is for
// those who have the time at hand.
AutoUString<UTF8> ActionSummary(ActionRequest const& action);
AutoUString<UTF8> ActionSummary(ActionRequest const& action, Instant now);

// The actions of these IDs together, by the earliest deadline among them; whether they run by themselves is
// decided by the action of that deadline alone, of equal ones by that of the smallest ID. When some restart
// and some shut down, the shutdown is told. The sentences speak of pending actions or of selected ones.
// Throws NoSuchActionRequestID for an ID that the store does not have, and InvalidMonth for a deadline whose
// month does not exist.
AutoUString<UTF8> ActionSummary(std::set<unsigned long> const& ids, ActionRequestStore const& store,
                                bool pendingWording);
AutoUString<UTF8> ActionSummary(std::set<unsigned long> const& ids, ActionRequestStore const& store,
                                bool pendingWording, Instant now);
