#pragma once

struct InitializationInfo;

// Takes everything that has arrived from the client and carries it out, message by message. A document may
// carry several messages; its root's name is not looked at, and elements of unknown names are passed over.
//
// Anything that throws costs the rest of the batch, and nothing else: what was handled stays handled, and the
// client is told nothing. The messages behind an InitializationInfo wait for the next call, when there is a
// display; further children of its own document are dropped.
void ProcessMessagesFromClient();

// Lays the client's files down in the session directory, puts the translations among them and the client's
// settings into force, and sets `initialized`, last of all. Throws what the file operations throw; what was
// done by then stays done, and the next InitializationInfo begins anew.
void ApplyInitializationInfo(InitializationInfo const& info);

// Removes the first pending action of that ID; an unknown ID is no error.
void RemoveAction(unsigned long id);
