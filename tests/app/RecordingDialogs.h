#pragma once

#include "link/ProtocolRecords.h"

#include <string>
#include <vector>

// Stand-ins for the dialogs: they show nothing and write down how they were called, so that what calls them
// can be tested without a display. They are linked in place of the real ones.
struct RecordingDialogs {
    // "Update 1,2" with the pending IDs ("Update folded 1,2" inside a batch), "Enable", "Disable",
    // "Show 300000000 true", "Details 7", "Confirm 7", "Message 7 persistent topmost", "RemoveMessage 7",
    // "RemoveTimedout", "QuietMode 1000000 2000000" with the two times in microseconds, "RemoveQuietMode",
    // "Hide", "HideDetails", "HideConfirmation".
    std::vector<std::string> calls;
    // What IsActionRequestDialogShown answers; showing sets it.
    bool shown = false;
    // The call that throws, by its first word.
    std::string failing;
    int batches = 0;
    MessageRequest lastMessage;

    // Empties the record.
    std::vector<std::string> TakeCalls();
    void Reset() { *this = RecordingDialogs(); }
};

extern RecordingDialogs& recordingDialogs;
