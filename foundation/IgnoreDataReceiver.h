#pragma once

#include "foundation/DataReceiver.h"

// Receiver that drops everything.
class IgnoreDataReceiver : public DataReceiver {
public:
    using DataReceiver::Receive;
    void Receive(ConstData) override {}
};
