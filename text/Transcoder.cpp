#include "text/Transcoder.h"

#include "text/CodeUnits.h"
#include "text/TranscodingRuns.h"

#include <algorithm>

// A transcoder has two ways through its input. The quick one (TranscodingRuns.h) takes whole characters as
// long as several units of input and room for as many of output are there; it looks at the bounds once for
// each of its steps. The careful one takes single units: into the carry until they make a whole character,
// then out of it. It serves the ends of the pieces, the end of the block, and characters that were cut.
//
// Invariants: the carry holds the first units of a character that is not yet whole, each of them checked, so
// that a fault is raised in the piece that holds it. The quick way runs only with an empty carry.

using CodeUnits::Form;

// Output on the stack, handed to the target whenever it has no room for one more character.
template <class To, class From>
class GenericTranscoder<To, From>::Block {
public:
    using OutUnit = typename To::Unit;

    explicit Block(UTextReceiver<To>& target) : m_target(target) {}

    // Writes characters from `next` on by the quick way; returns where that has stopped.
    Unit const* WriteRun(Unit const* next, Unit const* end) {
        auto const places = TranscodingRuns::Run<To, From>(next, end, m_next, m_units + size);
        m_next = places.out;
        return places.next;
    }
    // Writes the whole character that begins at `character`.
    void WriteFrom(Unit const* character) {
        if (static_cast<std::size_t>(m_units + size - m_next) < Form<To>::longest) HandOver();
        Form<To>::Put(Form<From>::Take(character), m_next);
    }
    void HandOver() {
        if (m_next == m_units) return;
        m_target.Receive(ConstArrayOf<OutUnit>(m_units, m_next));
        m_next = m_units;
    }

private:
    static constexpr std::size_t sizeInBytes = 4096;
    static constexpr std::size_t size = sizeInBytes / sizeof(OutUnit);

    UTextReceiver<To>& m_target;
    OutUnit* m_next = m_units;
    OutUnit m_units[size];
};

template <class To, class From>
void GenericTranscoder<To, From>::Start(From) {
    m_carried = 0;
    m_target.Start(To());
}

template <class To, class From>
void GenericTranscoder<To, From>::Receive(ConstArrayOf<Unit> units) {
    Block block(m_target);
    Unit const* next = units.begin();
    Unit const* const end = units.end();
    while (next != end) {
        if (m_carried == 0) next = block.WriteRun(next, end);
        if (next != end) TakeUnit(*next++, block);
    }
    block.HandOver();
}

template <class To, class From>
void GenericTranscoder<To, From>::TakeUnit(Unit unit, Block& block) {
    if constexpr (Form<From>::longest == 1) {
        block.WriteFrom(&unit);
    } else {
        Unit character[Form<From>::longest];
        std::copy(m_carry, m_carry + m_carried, character);
        character[m_carried] = unit;
        if (m_carried != 0) Form<From>::CheckFollowing(unit);
        if (m_carried + 1 < Form<From>::Size(character[0])) {
            m_carry[m_carried++] = unit;
        } else {
            m_carried = 0;
            block.WriteFrom(character);
        }
    }
}

template <class To, class From>
void GenericTranscoder<To, From>::ReceiveEnd() {
    if (m_carried != 0) throw InvalidTextEncoding();
    m_target.ReceiveEnd();
}

template <class To, class From>
std::size_t TranscodedSize(UStringRef<From> text) {
    return TranscodingRuns::SizeMade<To, From>(text);
}

template class GenericTranscoder<UTF8, UTF16>;
template class GenericTranscoder<UTF8, UTF32>;
template class GenericTranscoder<UTF16, UTF8>;
template class GenericTranscoder<UTF16, UTF32>;
template class GenericTranscoder<UTF32, UTF8>;
template class GenericTranscoder<UTF32, UTF16>;
template class GenericTranscoder<UTF8, USAscii>;

template std::size_t TranscodedSize<UTF8, UTF16>(UStringRef<UTF16>);
template std::size_t TranscodedSize<UTF8, UTF32>(UStringRef<UTF32>);
template std::size_t TranscodedSize<UTF16, UTF8>(UStringRef<UTF8>);
template std::size_t TranscodedSize<UTF16, UTF32>(UStringRef<UTF32>);
template std::size_t TranscodedSize<UTF32, UTF8>(UStringRef<UTF8>);
template std::size_t TranscodedSize<UTF32, UTF16>(UStringRef<UTF16>);
template std::size_t TranscodedSize<UTF8, USAscii>(UStringRef<USAscii>);
