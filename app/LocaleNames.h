#pragma once

// Whether a locale's name, as setlocale gives it, is that of a real locale: not null, empty, "C" or "POSIX".
// "C.UTF-8" counts as real.
bool IsRealLocale(char const* name);
