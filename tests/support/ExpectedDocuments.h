#pragma once

#include <string>

// Whole documents that the client hears, byte by byte.

std::string TakenDocument(unsigned long id, bool isCancel = false);
// `time` such as "Sun, 02 Jan 2011 08:05:09 +0000".
std::string RemindTimeDocument(std::string const& time);
// `duration` such as "PT10M".
std::string RemindIntervalDocument(std::string const& duration);
// The message that a dialog cannot show its texts.
std::string TextNotConvertibleDocument(std::string const& dialog);
