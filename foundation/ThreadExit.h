#pragma once

// Routines that every thread of the program runs at its end.

// Registers a routine for the life of the process. Not guarded: call it before threads run.
void AtThreadExit(void (*routine)());

// Calls all registered routines in the order of their registration and keeps them.
void DoThreadExitRoutines();
