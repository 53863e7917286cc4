#pragma once

#include <chrono>
#include <optional>
#include <string>
#include <string_view>

namespace ClientSimulator {

// The form in which a time travels in a document, in UTC: "Sun, 02 Jan 2011 08:05:09 +0000".
std::string TimeText(std::chrono::sys_seconds time);

// Reads that form, with any zone: "Sun, 02 Jan 2011 10:05:09 +0200" is the same time as above. Null for any
// other text. The day of the week has to be the date's own.
std::optional<std::chrono::sys_seconds> ParseTimeText(std::string_view text);

// The wall clock in UTC with milliseconds, as it stands at the head of the transcript's lines:
// "08:05:09.250".
std::string ClockText(std::chrono::system_clock::time_point time);

} // namespace ClientSimulator
