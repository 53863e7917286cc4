#pragma once

#include <array>
#include <cstddef>

// The sentences of the summaries. Each is written out whole, in English, which is also the key of its
// translation; none is put together from parts, so that a translator sees what the user will.
struct SummaryWording {
    char const* text;
    // The text has the variable {DeadlineText}, and no other.
    bool hasDeadlineText;
};

// Rows come in blocks by what is known of the deadline: there is none, it is some time ahead, it is now, the
// action runs by itself. A block has six rows: nothing else to tell, save work, restart, restart and save
// work, shutdown, shutdown and save work. Row 0 is the empty text.
inline constexpr std::size_t cRowsOfBlock = 6;

// About one action.
inline constexpr std::size_t cActionWordingRows = 4 * cRowsOfBlock;
extern std::array<SummaryWording, cActionWordingRows> const cActionWording;

// About several: the rows that speak of pending actions, then those that speak of selected ones. The empty
// row is common to both, so that a row of the selected wording comes this many rows behind its counterpart.
inline constexpr std::size_t cSelectedRowOffset = 4 * cRowsOfBlock - 1;
inline constexpr std::size_t cCombinedWordingRows = 1 + 2 * cSelectedRowOffset;
extern std::array<SummaryWording, cCombinedWordingRows> const cCombinedWording;
