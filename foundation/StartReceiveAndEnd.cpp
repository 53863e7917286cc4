#include "foundation/StartReceiveAndEnd.h"

#include "foundation/DataFilterer.h"

void StartReceiveAndEnd(DataReceiver& receiver, ConstData data) {
    receiver.Start();
    receiver.Receive(data);
    receiver.ReceiveEnd();
}

void StartReceiveAndEnd(DataReceiver& receiver, ConstDataRopeReference rope) {
    receiver.Start();
    receiver.Receive(rope);
    receiver.ReceiveEnd();
}

void StartReceiveAndEnd(DataReceiver& receiver, ConstData data, DataFilter& filter) {
    DataFilterer filterer(receiver, filter);
    StartReceiveAndEnd(filterer, data);
}

void StartReceiveAndEnd(DataReceiver& receiver, ConstDataRopeReference rope, DataFilter& filter) {
    DataFilterer filterer(receiver, filter);
    StartReceiveAndEnd(filterer, rope);
}
