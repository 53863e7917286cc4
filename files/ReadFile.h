#pragma once

#include "files/FileReading.h"
#include "foundation/DataReceiver.h"
#include "foundation/LineReceiver.h"
#include "foundation/MessageReceiver.h"
#include "foundation/Range.h"

// Told of each chunk of a file as it is read, so that it can slow the reading down.
class CpuBudget {
public:
    // Called once for each chunk, after the receiver. What it throws ends the reading.
    virtual void Spend() = 0;
    virtual ~CpuBudget() = default;

protected:
    CpuBudget() = default;
    CpuBudget(CpuBudget const&) = default;
    CpuBudget& operator=(CpuBudget const&) = default;
};

// Reads a file into a receiver: Start, a Receive for each chunk of at most 4096 bytes, ReceiveEnd when the
// file is closed again. It is read from `start` on, to its end or up to, but not including, `end`. A file
// without a length, such as a pipe and many below /proc, is read until it gives nothing more. `budget` may be
// null.
//
// A length that the system tells counts, also where it makes the contents up and tells a wrong one: such a
// file below /proc with the length 0 is read as empty, and one below /sys, whose length is that of a page,
// throws FileReadingLoopEndOfFileError behind what there is.
//
// The receiver's Start comes before the file is opened; when anything throws, it gets no ReceiveEnd. Throws
// EmptyFileLocationError, what opening and reading throw, FileReadingLoopEndOfFileError for a file that ends
// before `end` or before `start`, and what the receiver throws.
void ReadFile(FileLocation const& location, DataReceiver& receiver, unsigned long start = 0,
              CpuBudget* budget = nullptr);
void ReadFile(FileLocation const& location, DataReceiver& receiver, unsigned long start, unsigned long end,
              CpuBudget* budget = nullptr);

// The same cut into lines, or into the fields and the body of a message. They count positions from
// 0 at `start`.
void ReadFile(FileLocation const& location, LineReceiver& lines, unsigned long start = 0,
              CpuBudget* budget = nullptr);
void ReadFile(FileLocation const& location, LineReceiver& lines, unsigned long start, unsigned long end,
              CpuBudget* budget = nullptr);
void ReadFile(FileLocation const& location, MessageReceiver& message, unsigned long start = 0,
              CpuBudget* budget = nullptr);
void ReadFile(FileLocation const& location, MessageReceiver& message, unsigned long start, unsigned long end,
              CpuBudget* budget = nullptr);

// The same for a range of a file that is open. The reader gives the file and its length; it does not move.
// That of a pipe has lost what was read all the same.
void ReadFileRange(UnixPlatform::FileReader const& reader, Range<unsigned long> const& range,
                   DataReceiver& receiver);
