#pragma once

#include "text/AutoUString.h"
#include "text/UTextReceiver.h"

// Receiver that collects a text. Start gives it room for the size hint (in units) at once.
template <class E>
class UStringBuilder : public UTextReceiver<E> {
public:
    using Unit = typename E::Unit;

    explicit UStringBuilder(std::size_t sizeHintInUnits = 0) : m_sizeHint(sizeHintInUnits) {}

    void Start(E encoding) override { m_text = AutoUString<E>(encoding, 0, m_sizeHint); }
    void Receive(ConstArrayOf<Unit> data) override { m_text += UStringRef<E>(m_text.Encoding(), data); }
    // The size of `data` counts in 32 bits.
    std::size_t SizeOfReceivedBytes(ConstArrayOf<Unit> data) override {
        return m_text.SizeInBytes() + static_cast<std::uint32_t>(data.Size() * sizeof(Unit));
    }

    UStringRef<E> Ref() const { return m_text.Ref(); }
    // The collected text; the builder is left empty.
    AutoUString<E> Take() { return AutoUString<E>(m_text); }

private:
    std::size_t m_sizeHint;
    AutoUString<E> m_text;
};

// Receiver that hands the whole text to a target string at its end; until then the target is not touched.
// The target must outlive the receiver. `S` is AutoUString<UTF8> or CopiedUString<UTF8>.
template <class S>
class UStringReceiver : public UTextReceiver<UTF8> {
public:
    explicit UStringReceiver(S& target) : m_target(target) {}

    void Start(UTF8 encoding) override { m_builder.Start(encoding); }
    void Receive(ConstArrayOf<unsigned char> data) override { m_builder.Receive(data); }
    void ReceiveEnd() override {
        m_builder.ReceiveEnd();
        m_target = m_builder.Take();
    }

private:
    S& m_target;
    UStringBuilder<UTF8> m_builder;
};
