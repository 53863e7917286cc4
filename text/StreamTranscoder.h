#pragma once

#include "foundation/DataReceiver.h"
#include "foundation/Exceptions.h"
#include "text/Transcoder.h"

#include <algorithm>
#include <cstring>
#include <memory>
#include <utility>

// The end of a chain of byte receivers where the bytes become text: takes them as text of `From`, transcodes
// it, and hands it to a target that it owns. The bytes of a wider `From` are in the machine's byte order.
// Pieces may be cut anywhere, within a unit as well. Throws as GenericTranscoder does, and
// InvalidTextEncoding for bytes that end within a unit; after that it is not to be used again.
template <class To, class From>
class StreamTranscoder : public DataReceiver {
public:
    using Unit = typename From::Unit;

    // `target` must not be null.
    explicit StreamTranscoder(std::unique_ptr<UTextReceiver<To>> target)
        : m_target(std::move(target)), m_transcoder(*m_target) {}

    UTextReceiver<To>& Target() { return *m_target; }

    using DataReceiver::Receive;
    void Start() override {
        m_partSize = 0;
        m_transcoder.Start(From());
    }
    void Receive(ConstData data) override;
    void ReceiveEnd() override {
        if (m_partSize != 0) throw InvalidTextEncoding();
        m_transcoder.ReceiveEnd();
    }

private:
    // Units that go to the transcoder at once; they are copied, because bytes need not lie where units may.
    static constexpr std::size_t pieceInUnits = 512;

    ConstData CompletePart(ConstData data);
    ConstData PassUnits(ConstData data);
    void KeepPart(ConstData data);

    std::unique_ptr<UTextReceiver<To>> m_target;
    GenericTranscoder<To, From> m_transcoder;
    // The first bytes of a unit whose rest is still to come.
    std::size_t m_partSize = 0;
    unsigned char m_part[sizeof(Unit)] = {};
};

template <class To, class From>
void StreamTranscoder<To, From>::Receive(ConstData data) {
    if constexpr (sizeof(Unit) == 1) {
        m_transcoder.Receive(data);
    } else {
        data = CompletePart(data);
        while (data.Size() >= sizeof(Unit)) data = PassUnits(data);
        KeepPart(data);
    }
}

// Fills up the unit that was begun, and passes it on when it is whole. Returns what is left of the bytes.
template <class To, class From>
ConstData StreamTranscoder<To, From>::CompletePart(ConstData data) {
    if (m_partSize == 0) return data;
    std::size_t const taken = std::min(sizeof(Unit) - m_partSize, data.Size());
    KeepPart(ConstData(data.begin(), data.begin() + taken));
    if (m_partSize == sizeof(Unit)) {
        m_partSize = 0;
        PassUnits(ConstData(m_part, m_part + sizeof(Unit)));
    }
    return ConstData(data.begin() + taken, data.end());
}

// Passes on the whole units at the front, as many as a piece holds. Returns what is left of the bytes.
template <class To, class From>
ConstData StreamTranscoder<To, From>::PassUnits(ConstData data) {
    Unit units[pieceInUnits];
    std::size_t const count = std::min(pieceInUnits, data.Size() / sizeof(Unit));
    std::memcpy(units, data.begin(), count * sizeof(Unit));
    m_transcoder.Receive(ConstArrayOf<Unit>(units, units + count));
    return ConstData(data.begin() + count * sizeof(Unit), data.end());
}

template <class To, class From>
void StreamTranscoder<To, From>::KeepPart(ConstData data) {
    if (data.empty()) return;
    std::memcpy(m_part + m_partSize, data.begin(), data.Size());
    m_partSize += data.Size();
}
