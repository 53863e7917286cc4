#pragma once

#include <chrono>
#include <string>

// Documents as a client writes them, and those that it expects back.

// "Sun, 02 Jan 2011 08:05:09 +0000" for a time so many seconds from now.
std::string TimeFromNow(long seconds);

// The session directory of the programs of this test process, gone at its end.
std::string const& SessionFolder();
std::string Initialization(std::string const& settings = "");
// The same for another session directory, with support files.
std::string InitializationOf(std::string const& directory, std::string const& supportFiles,
                             std::string const& settings = "");

// An action that takes itself at its deadline.
std::string ForcedAction(unsigned long id, std::string const& deadline);

// The program's first document.
extern char const* const cReadyForData;
