#pragma once

#include "text/Data.h"
#include "time/ReservedWordLexeme.h"
#include "time/TimeLanguage.h"

// What a reserved word is: its symbol and its number, which is a day of the week from 0, a month from 1, or a
// zone's seconds east.
struct TimeParsingAction {
    TimeLanguage::PartOfSpeech symbol;
    std::int32_t number;
};

// All reserved words in the order of Compare, in lower case. The table lives for the process.
ConstArrayOf<ReservedWord<TimeParsingAction>> TimeWords();
