#pragma once

#include "text/UStringRef.h"

#include <algorithm>
#include <cstring>
#include <functional>
#include <stdexcept>
#include <utility>

// Storage of every owning string: the text with its capacity, 64 units of it inside the object. A body whose
// capacity is 64 uses the inline units, a larger one a heap buffer of exactly that many units. The text has
// no terminator. Moving a short text moves its units, so views into it end; a long one keeps its buffer.
//
// A buffer marked as shared may be pointed at by other bodies: Dispose() then forgets it instead of freeing
// it. Only SharedUString sets the mark.
template <class E>
class UStringBody {
public:
    using Unit = typename E::Unit;
    static constexpr std::size_t inlineCapacity = 64;

    UStringBody() noexcept : UStringBody(E()) {}
    explicit UStringBody(E encoding) noexcept : m_encoding(encoding) {}
    // A copy of the view, in a capacity of the greater of 64 and its size.
    explicit UStringBody(UStringRef<E> const& view) : UStringBody(view.Encoding()) {
        Reset(view.Encoding(), 0, view.SizeInUnits());
        AppendInPlace(view);
    }
    UStringBody(UStringBody&& other) noexcept { Seize(other); }
    UStringBody& operator=(UStringBody&& other) noexcept {
        Seize(other);
        return *this;
    }
    UStringBody(UStringBody const&) = delete;
    UStringBody& operator=(UStringBody const&) = delete;
    ~UStringBody() { FreeBuffer(); }

    Unit* begin() { return m_begin; }
    Unit const* begin() const { return m_begin; }
    Unit* end() { return m_end; }
    Unit const* end() const { return m_end; }
    bool empty() const { return m_begin == m_end; }
    std::size_t SizeInUnits() const { return static_cast<std::size_t>(m_end - m_begin); }
    std::size_t CapacityInUnits() const { return m_capacity; }
    bool IsInline() const { return m_begin == m_inlineUnits; }
    E Encoding() const { return m_encoding; }
    UStringRef<E> Ref() const { return UStringRef<E>(m_encoding, m_begin, m_end); }

    // Back to the empty inline state; frees a buffer that is not shared.
    void Dispose() noexcept;

    // Disposes, then holds `size` units that are not initialised, in a capacity of the greatest of 64,
    // `capacity` and `size`. When memory runs out the body is left empty.
    void Reset(E encoding, std::size_t size, std::size_t capacity);

    // Takes the text of `other`, which is left empty and inline; a no-op for itself. The buffer counts as
    // not shared afterwards.
    void Seize(UStringBody& other) noexcept;

    // Moves the end of the text. Throws std::out_of_range ("SetEnd out of range") for a pointer below the
    // beginning or beyond the capacity.
    void SetEnd(Unit* end);

    // Writes a copy of `units` behind the end; they must fit.
    void AppendInPlace(UStringRef<E> units);

    // The same for one unit.
    void AppendUnitInPlace(Unit unit) { *m_end++ = unit; }

    // A new body with the text followed by `units`, by the rule of growth: room for twice the old size, the
    // new size or 64 units, whichever is most.
    UStringBody Grown(UStringRef<E> units) const;

    bool IsShared() const { return m_sharedBuffer; }
    void SetShared(bool shared) const { m_sharedBuffer = shared; }
    // Points at the buffer of `other`, which must be on the heap, and marks it shared on both sides. This
    // body must be empty and inline.
    void ShareBufferOf(UStringBody const& other) noexcept;
    // Back to the empty inline state without freeing anything.
    void Forget() noexcept;

private:
    void FreeBuffer() noexcept {
        if (!IsInline() && !m_sharedBuffer) delete[] m_begin;
    }

    Unit* m_begin = m_inlineUnits;
    Unit* m_end = m_inlineUnits;
    std::uint64_t m_capacity = inlineCapacity;
    mutable bool m_sharedBuffer = false;
    [[no_unique_address]] E m_encoding{};
    Unit m_inlineUnits[inlineCapacity];
};

template <class E>
inline void UStringBody<E>::Forget() noexcept {
    m_begin = m_end = m_inlineUnits;
    m_capacity = inlineCapacity;
    m_sharedBuffer = false;
}

template <class E>
inline void UStringBody<E>::Dispose() noexcept {
    FreeBuffer();
    Forget();
}

template <class E>
inline void UStringBody<E>::Reset(E encoding, std::size_t size, std::size_t capacity) {
    Dispose();
    m_encoding = encoding;
    std::size_t const wanted = std::max({inlineCapacity, capacity, size});
    if (wanted != inlineCapacity) {
        m_begin = new Unit[wanted];
        m_capacity = wanted;
    }
    m_end = m_begin + size;
}

// Copying all inline units is quicker than asking how many there are; those behind the end may be without a
// value, which does a copy of plain units no harm.
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wuninitialized"
#pragma GCC diagnostic ignored "-Wmaybe-uninitialized"
template <class E>
inline void UStringBody<E>::Seize(UStringBody& other) noexcept {
    if (this == &other) return;
    Dispose();
    m_encoding = other.m_encoding;
    if (other.IsInline()) {
        std::memcpy(m_inlineUnits, other.m_inlineUnits, sizeof(m_inlineUnits));
        m_end = m_inlineUnits + other.SizeInUnits();
    } else {
        m_begin = other.m_begin;
        m_end = other.m_end;
        m_capacity = other.m_capacity;
    }
    other.Forget();
}
#pragma GCC diagnostic pop

template <class E>
void UStringBody<E>::SetEnd(Unit* end) {
    if (std::less<Unit*>()(end, m_begin) || std::less<Unit*>()(m_begin + m_capacity, end))
        throw std::out_of_range("SetEnd out of range");
    m_end = end;
}

template <class E>
inline void UStringBody<E>::AppendInPlace(UStringRef<E> units) {
    if (units.empty()) return;
    std::memcpy(m_end, units.begin(), units.SizeInBytes());
    m_end += units.SizeInUnits();
}

template <class E>
UStringBody<E> UStringBody<E>::Grown(UStringRef<E> units) const {
    std::size_t const oldSize = SizeInUnits();
    std::size_t const newSize = oldSize + units.SizeInUnits();
    UStringBody grown;
    grown.Reset(m_encoding, 0, std::max(2 * oldSize, newSize));
    grown.AppendInPlace(Ref());
    grown.AppendInPlace(units);
    return grown;
}

template <class E>
void UStringBody<E>::ShareBufferOf(UStringBody const& other) noexcept {
    m_encoding = other.m_encoding;
    m_begin = other.m_begin;
    m_end = other.m_end;
    m_capacity = other.m_capacity;
    m_sharedBuffer = true;
    other.m_sharedBuffer = true;
}

extern template class UStringBody<UTF8>;
extern template class UStringBody<UTF16>;
extern template class UStringBody<UTF32>;
extern template class UStringBody<Local8Bit>;
extern template class UStringBody<Binary8Bit>;
extern template class UStringBody<IANANamedTextEncoding>;
