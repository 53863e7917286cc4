#pragma once

// Carries out everything that the user has decided since the last tick, in order. A command that fails costs
// itself alone; nothing escapes, and the client is told nothing of it.
void ProcessMessagesFromUI();
