#pragma once

struct MessageRequest;

// Notes from the client, any number at once, one for each message ID. The user's closing one tells the client
// nothing. Everything here belongs to the main thread.

// Shows a note, or rewrites the one of that ID that stands: its texts, its flags and its time-out, which
// counts from now, in place of the former ones. A completion message shows a sentence about the action of
// that title, any other one its own text.
//
// A persistent note has no button: the client or its time-out ends it; its close box, like that of every
// dialog, ends the process. A topmost one asks the window manager to be kept above others. A text that cannot
// be shown ends the process.
void ShowMessageDialog(MessageRequest const& request, bool persistent, bool topmost);

// Withdraws the note of that ID; an unknown ID is no error.
void RemoveMessageDialog(unsigned long id);

// Closes each note whose time has come: the very instant counts.
void RemoveTimedoutMessageDialogs();
