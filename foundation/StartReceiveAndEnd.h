#pragma once

#include "foundation/ConstDataRope.h"
#include "foundation/DataFilter.h"
#include "foundation/DataReceiver.h"

// A whole stream in one call: Start, one Receive for the data or for each piece of the chain, ReceiveEnd.
void StartReceiveAndEnd(DataReceiver& receiver, ConstData data);
void StartReceiveAndEnd(DataReceiver& receiver, ConstDataRopeReference rope);
// The same with the filter on the way to the receiver, as in DataFilterer.
void StartReceiveAndEnd(DataReceiver& receiver, ConstData data, DataFilter& filter);
void StartReceiveAndEnd(DataReceiver& receiver, ConstDataRopeReference rope, DataFilter& filter);
