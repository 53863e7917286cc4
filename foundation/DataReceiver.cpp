#include "foundation/DataReceiver.h"

#include "foundation/ConstDataRope.h"
#include "foundation/IgnoreDataReceiver.h"

void DataReceiver::Receive(ConstDataRopeReference rope) {
    for (; !rope.empty(); rope = rope.Rest()) Receive(rope.Piece());
}

DataReceiver& DataReceiver::Ignore() {
    static auto& ignore = *new IgnoreDataReceiver;
    return ignore;
}
