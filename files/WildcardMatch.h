#pragma once

#include "text/Data.h"

// Whether `pattern` matches the whole of `name`: "?" matches any one byte, "*" any run of bytes, also none,
// and every other byte itself; case counts. There is no way to ask for a "?" or "*" as such. "*.log" matches
// ".log" and "a.log", and "a?" neither "a" nor "abc". An empty pattern matches the empty name alone.
//
// Takes no memory; at the worst as many steps as the two sizes multiplied.
bool MatchesWildcard(ConstData name, ConstData pattern);
