#pragma once

#include "text/SharedUString.h"
#include "time/TimeInterval.h"

#include <utility>
#include <vector>

// One choice of the snooze list: its text and its minutes. Positive minutes count from now; negative ones
// count back from the earliest deadline. The sign alone tells the two kinds apart.
using SnoozeChoice = std::pair<SharedUString<UTF8>, int>;

// The choices on offer, in the order of the list. Those that count from a deadline come first and are there
// only with `anyDeadline`. No choice is left out for falling behind a deadline.
std::vector<SnoozeChoice> MakeSnoozeChoices(bool anyDeadline);

// The row whose minutes come nearest to `interval`; of two that are equally near, the first. -1 when there
// are no choices.
int NearestSnoozeChoice(std::vector<SnoozeChoice> const& choices, TimeInterval interval);
