#include "dialogs/ActionSummary.h"

#include "dialogs/DeadlineText.h"
#include "dialogs/SummaryWording.h"
#include "format/MakeUString.h"
#include "format/UFormat.h"

#include <cstdint>
#include <limits>

// What is to be told is gathered as a sum of bits, the key, for which a table gives the row of the sentence.
// The tables of rows are worked out by the compiler; those of formats are filled on first use.

namespace {

enum KeyBit : unsigned int {
    cRequestSave = 1,
    cHasDeadline = 2,
    cRestart = 4,
    cShutdown = 8,
    cNear = 16,
    cForceRun = 32,
    cPending = 64,
};

// What is told of an action that both restarts and shuts down.
enum class Both { ToldAsRestart, ToldAsShutdown };

// Number of the deadline's block of rows: none, within, now, automatic.
constexpr std::size_t BlockOf(unsigned int key) {
    if ((key & cHasDeadline) == 0) return 0;
    if ((key & cForceRun) != 0) return 3;
    return (key & cNear) != 0 ? 2 : 1;
}

// Number of the effect within a block: none, restart, shutdown.
constexpr std::size_t EffectOf(unsigned int key, Both both) {
    bool const restart = (key & cRestart) != 0;
    bool const shutdown = (key & cShutdown) != 0;
    if (restart && shutdown) return both == Both::ToldAsRestart ? 1 : 2;
    return restart ? 1 : shutdown ? 2 : 0;
}

constexpr std::size_t RowOf(unsigned int key, Both both) {
    return cRowsOfBlock * BlockOf(key) + 2 * EffectOf(key, both) + (key & cRequestSave);
}

constexpr auto cActionRows = [] {
    std::array<std::uint8_t, 64> rows{};
    for (unsigned int key = 0; key < rows.size(); ++key)
        rows[key] = static_cast<std::uint8_t>(RowOf(key, Both::ToldAsRestart));
    return rows;
}();

// Both wordings share the empty row; the other rows of the selected wording follow those of the pending one.
constexpr auto cCombinedRows = [] {
    std::array<std::uint8_t, 128> rows{};
    for (unsigned int key = 0; key < rows.size(); ++key) {
        std::size_t const row = RowOf(key, Both::ToldAsShutdown);
        bool const pending = (key & cPending) != 0;
        rows[key] = static_cast<std::uint8_t>(row == 0 || pending ? row : row + cSelectedRowOffset);
    }
    return rows;
}();

struct SummaryRow {
    FormatPlusArguments<0> format = UFormat("");
    bool hasDeadlineText = false;
};

template <std::size_t size>
std::array<SummaryRow, size> FillRows(std::array<SummaryWording, size> const& wording) {
    std::array<SummaryRow, size> rows;
    for (std::size_t row = 0; row < size; ++row)
        rows[row] = {UFormat(wording[row].text), wording[row].hasDeadlineText};
    return rows;
}

SummaryRow const& ActionRow(unsigned int key) {
    static auto const rows = FillRows(cActionWording);
    return rows[cActionRows[key]];
}

SummaryRow const& CombinedRow(unsigned int key) {
    static auto const rows = FillRows(cCombinedWording);
    return rows[cCombinedRows[key]];
}

// What decides about the deadline in a sentence.
struct Due {
    Instant deadline = Instant::FromMicroseconds(std::numeric_limits<long long>::max());
    bool forceRun = false;
    bool exists = false;
};

unsigned int FlagsOf(ActionRequest const& action) {
    return (action.requestSave ? cRequestSave : 0u) | (action.restart ? cRestart : 0u) |
           (action.shutdown ? cShutdown : 0u);
}

unsigned int DeadlineBits(Due const& due, Instant now) {
    bool const near = due.exists && due.deadline < now + cDeadlineThreshold;
    return (due.exists ? cHasDeadline : 0u) | (near ? cNear : 0u) | (due.forceRun ? cForceRun : 0u);
}

AutoUString<UTF8> Sentence(SummaryRow const& row, Due const& due, Instant now) {
    if (!row.hasDeadlineText) return MakeUString(row.format);
    AutoUString<UTF8> const time = FormattedDeadline(due.deadline, now, due.forceRun, false);
    return MakeUString(row.format % time);
}

// Takes over the deadline of an action that is due earlier than all before it.
void KeepEarliest(Due& due, ActionRequest const& action) {
    NullOr<Instant> const deadline = action.Deadline();
    if (!deadline) return;
    due.exists = true;
    if (!(*deadline < due.deadline)) return;
    due.deadline = *deadline;
    due.forceRun = action.forceRun;
}

} // namespace

AutoUString<UTF8> ActionSummary(ActionRequest const& action) {
    return ActionSummary(action, Instant::Now());
}

AutoUString<UTF8> ActionSummary(ActionRequest const& action, Instant now) {
    Due due;
    due.forceRun = action.forceRun;
    if (NullOr<Instant> const deadline = action.Deadline(); deadline) {
        due.deadline = *deadline;
        due.exists = true;
    }
    return Sentence(ActionRow(FlagsOf(action) | DeadlineBits(due, now)), due, now);
}

AutoUString<UTF8> ActionSummary(std::set<unsigned long> const& ids, ActionRequestStore const& store,
                                bool pendingWording) {
    return ActionSummary(ids, store, pendingWording, Instant::Now());
}

AutoUString<UTF8> ActionSummary(std::set<unsigned long> const& ids, ActionRequestStore const& store,
                                bool pendingWording, Instant now) {
    Due due;
    unsigned int key = pendingWording ? cPending : 0u;
    for (unsigned long const id : ids) {
        ActionRequest const& action = store.GetAction(id);
        key |= FlagsOf(action);
        KeepEarliest(due, action);
    }
    return Sentence(CombinedRow(key | DeadlineBits(due, now)), due, now);
}
