#pragma once

#include <chrono>
#include <optional>
#include <string>
#include <string_view>

namespace ClientSimulator {

using Microseconds = std::chrono::microseconds;

// Reads a length of time as people write it: numbers with a unit each, without spaces, such as "10s",
// "1h30m", "250ms" or "1.5s". Units are d, h, m, s, ms and us, in any order. Null for any other text, for a
// number of more than nine digits before or six behind the point, and for more than 36500 days in all.
std::optional<Microseconds> ParseDuration(std::string_view text);

// The same form, as short as it gets: "1m30s" for 90 seconds, "1.5s", "0s".
std::string DurationText(Microseconds duration);

// The form in which a length of time travels in a document: "PT1M30S" for 90 seconds, "-PT5M", "PT0S",
// "PT1.500000S", "P1D".
std::string XmlDuration(Microseconds duration);

} // namespace ClientSimulator
