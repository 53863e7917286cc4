#pragma once

#include "foundation/DataReceiver.h"
#include "text/UTextReceiver.h"

// Hands bytes on to a receiver of UTF-8 text, as they come and without any check.
class TextDataReceiver : public DataReceiver {
public:
    // `text` must outlive this receiver.
    explicit TextDataReceiver(UTextReceiver<UTF8>& text) : m_text(text) {}

    using DataReceiver::Receive;
    void Start() override { m_text.Start(UTF8()); }
    void Receive(ConstData data) override { m_text.Receive(data); }
    void ReceiveEnd() override { m_text.ReceiveEnd(); }

private:
    UTextReceiver<UTF8>& m_text;
};
