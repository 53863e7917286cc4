#pragma once

#include "foundation/DataReceiver.h"

#include <vector>

// Appends to a vector behind what it already holds. An unbound appender drops what it receives. The data must
// not point into the vector itself.
class VectorAppender : public DataReceiver {
public:
    VectorAppender() = default;
    // `target` must outlive the appender or its next binding.
    explicit VectorAppender(std::vector<unsigned char>& target) : m_target(&target) {}

    // Binds to `target`; returns *this.
    VectorAppender& operator()(std::vector<unsigned char>& target) {
        m_target = &target;
        return *this;
    }

    using DataReceiver::Receive;
    void Receive(ConstData data) override {
        if (m_target) m_target->insert(m_target->end(), data.begin(), data.end());
    }

private:
    std::vector<unsigned char>* m_target = nullptr;
};
