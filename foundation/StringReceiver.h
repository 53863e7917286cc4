#pragma once

#include "foundation/DataReceiver.h"

#include <string>

// Collects into a string, which is emptied at the start. The data must not point into the string itself.
class StringReceiver : public DataReceiver {
public:
    // `target` must outlive the receiver.
    explicit StringReceiver(std::string& target) : m_target(target) {}

    using DataReceiver::Receive;
    void Start() override { m_target.clear(); }
    void Receive(ConstData data) override {
        if (!data.empty()) m_target.append(reinterpret_cast<char const*>(data.begin()), data.Size());
    }

private:
    std::string& m_target;
};
