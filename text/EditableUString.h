#pragma once

#include "text/UStringBody.h"

#include <algorithm>
#include <concepts>
#include <cstring>

// What AutoUString and CopiedUString have in common: exactly one body, and the editing of its text. Views and
// pointers into the text end with every change. An operation that runs out of memory leaves the text as it
// was.
template <class E>
class EditableUString {
public:
    using TextEncoding = E;
    using Unit = typename E::Unit;
    using iterator = Unit*;
    using const_iterator = Unit const*;
    using value_type = Unit;

    Unit* begin() { return m_body.begin(); }
    Unit const* begin() const { return m_body.begin(); }
    Unit* end() { return m_body.end(); }
    Unit const* end() const { return m_body.end(); }
    bool empty() const { return m_body.empty(); }
    std::size_t SizeInUnits() const { return m_body.SizeInUnits(); }
    std::size_t SizeInBytes() const { return SizeInUnits() * sizeof(Unit); }
    std::size_t CapacityInUnits() const { return m_body.CapacityInUnits(); }
    E Encoding() const { return m_body.Encoding(); }
    UStringRef<E> Ref() const { return m_body.Ref(); }
    operator UStringRef<E>() const { return Ref(); }
    operator ConstData() const requires std::same_as<Unit, unsigned char> { return Ref(); }

    UStringBody<E>& Get() { return m_body; }
    UStringBody<E> const& Get() const { return m_body; }
    // Hands the body out and leaves the string empty.
    UStringBody<E> Release() { return std::move(m_body); }
    // Takes the text of `body`, which is left empty.
    void Seize(UStringBody<E>& body) noexcept { m_body.Seize(body); }

    // Empty again, giving back a heap buffer.
    void clear() noexcept { m_body.Dispose(); }

    // Appends from `offset` to `offset + count`, limited to the view's end; cAllOnes means to the end. An
    // offset behind the view's end appends nothing.
    void append(UStringRef<E> const& view, std::size_t offset, std::size_t count) {
        std::size_t const size = view.SizeInUnits();
        std::size_t const first = std::min(offset, size);
        Append(view.Middle(first, count > size - first ? size : first + count));
    }

    // Removes the units between two pointers into the text and returns `first`. On an empty text nothing is
    // looked at. Throws std::out_of_range for a pointer outside the text or for first > last. Numbers, a
    // literal 0 too, choose the form below.
    template <std::convertible_to<Unit*> First, std::convertible_to<Unit*> Last>
    Unit* erase(First first, Last last) {
        return EraseBetween(first, last);
    }

    // Removes `count` units from `offset` on, limited to the end; cAllOnes means to the end. On an empty
    // text nothing is looked at. Throws std::out_of_range for an offset behind the size; the size itself is
    // allowed.
    void erase(std::size_t offset, std::size_t count);

    // Puts `view` in the place of `count` units at `offset`. Without a word nothing happens when `count` is
    // 0 or `offset + count` exceeds the size. `view` must not point into this text.
    void replace(std::size_t offset, std::size_t count, UStringRef<E> const& view);

protected:
    EditableUString() = default;
    explicit EditableUString(UStringRef<E> const& view) : m_body(view) {}
    EditableUString(E encoding, std::size_t size, std::size_t capacity) {
        m_body.Reset(encoding, size, capacity);
    }
    EditableUString(EditableUString&&) noexcept = default;
    EditableUString& operator=(EditableUString&&) noexcept = default;
    ~EditableUString() = default;

    void Append(UStringRef<E> const& view);
    void AppendUnit(Unit unit) {
        if (m_body.SizeInUnits() < m_body.CapacityInUnits()) {
            m_body.AppendUnitInPlace(unit);
        } else {
            Append(UStringRef<E>(Encoding(), &unit, &unit + 1));
        }
    }
    // A copy of `view` replaces the text; `view` may point into it.
    void Assign(UStringRef<E> const& view);

private:
    Unit* EraseBetween(Unit* first, Unit* last);

    UStringBody<E> m_body;
};

template <class E>
void EditableUString<E>::Append(UStringRef<E> const& view) {
    std::size_t const room = m_body.CapacityInUnits() - m_body.SizeInUnits();
    if (view.SizeInUnits() <= room) {
        m_body.AppendInPlace(view);
    } else {
        UStringBody<E> grown = m_body.Grown(view);
        m_body.Seize(grown);
    }
}

template <class E>
void EditableUString<E>::Assign(UStringRef<E> const& view) {
    UStringBody<E> copy(view);
    m_body.Seize(copy);
}

template <class E>
typename E::Unit* EditableUString<E>::EraseBetween(Unit* first, Unit* last) {
    if (empty()) return first;
    std::less<Unit const*> const before;
    if (before(first, begin()) || before(end(), first)) throw std::out_of_range("erase start pointer error");
    if (before(last, begin()) || before(end(), last)) throw std::out_of_range("erase end pointer error");
    if (before(last, first)) throw std::out_of_range("erase pointer overlap error");
    if (last == end()) {
        m_body.SetEnd(first);
    } else if (first != last) {
        std::size_t const tail = static_cast<std::size_t>(end() - last);
        std::memmove(first, last, tail * sizeof(Unit));
        m_body.SetEnd(first + tail);
    }
    return first;
}

template <class E>
void EditableUString<E>::erase(std::size_t offset, std::size_t count) {
    if (empty()) return;
    std::size_t const size = SizeInUnits();
    if (offset > size) throw std::out_of_range("erase first range error");
    EraseBetween(begin() + offset, begin() + offset + std::min(count, size - offset));
}

template <class E>
void EditableUString<E>::replace(std::size_t offset, std::size_t count, UStringRef<E> const& view) {
    std::size_t const size = SizeInUnits();
    if (count == 0 || offset > size || count > size - offset) return;
    std::size_t const newSize = size - count + view.SizeInUnits();
    if (newSize > CapacityInUnits()) {
        UStringBody<E> grown;
        grown.Reset(Encoding(), 0, std::max(2 * size, newSize));
        grown.AppendInPlace(Ref().Middle(0, offset));
        grown.AppendInPlace(view);
        grown.AppendInPlace(Ref().Middle(offset + count, size));
        m_body.Seize(grown);
        return;
    }
    Unit* const place = begin() + offset;
    std::memmove(place + view.SizeInUnits(), place + count, (size - offset - count) * sizeof(Unit));
    if (!view.empty()) std::memcpy(place, view.begin(), view.SizeInBytes());
    m_body.SetEnd(begin() + newSize);
}

extern template class EditableUString<UTF8>;
extern template class EditableUString<UTF16>;
extern template class EditableUString<UTF32>;
extern template class EditableUString<Local8Bit>;
extern template class EditableUString<Binary8Bit>;
extern template class EditableUString<IANANamedTextEncoding>;
