#pragma once

// Calls of operator new in the test program so far, on all threads.
unsigned long AllocationCount();
