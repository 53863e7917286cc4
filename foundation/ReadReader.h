#pragma once

#include "foundation/DataReader.h"
#include "foundation/DataReceiver.h"
#include "foundation/LineReceiver.h"
#include "foundation/MessageReceiver.h"
#include "text/AutoUString.h"

#include <vector>

// Reads all that the reader still has into a receiver: Start, Receive for each chunk, ReceiveEnd. Throws
// NoMoreData when an unfinished reader gives nothing, so that a source cut short is not taken for a whole
// one. When either side throws, the receiver gets no ReceiveEnd.
void ReadReader(DataReader& reader, DataReceiver& receiver);
// The same cut into lines, or into the fields and the body of a message.
void ReadReader(DataReader& reader, LineReceiver& lines);
void ReadReader(DataReader& reader, MessageReceiver& message);

// All that the reader still has, as bytes or as text in UTF-8, which is not checked.
std::vector<unsigned char> ReadReader(DataReader& reader);
AutoUString<UTF8> ReadUReader(DataReader& reader);
