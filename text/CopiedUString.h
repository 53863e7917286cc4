#pragma once

#include "text/AutoUString.h"

// Owning string that deep-copies.
template <class E>
class CopiedUString : public EditableUString<E> {
public:
    using Unit = typename E::Unit;

    CopiedUString() = default;
    CopiedUString(UStringRef<E> const& view) : EditableUString<E>(view) {}
    // Takes the text of `text`, which is left empty.
    CopiedUString(AutoUString<E>& text) noexcept { this->Seize(text.Get()); }
    CopiedUString(AutoUString<E>&& text) noexcept { this->Seize(text.Get()); }
    CopiedUString(E encoding, Unit const* begin, Unit const* end)
        : EditableUString<E>(UStringRef<E>(encoding, begin, end)) {}

    CopiedUString(CopiedUString const& other) : EditableUString<E>(other.Ref()) {}
    CopiedUString(CopiedUString&& other) noexcept = default;
    // The copy is complete before the old text is given up.
    CopiedUString& operator=(CopiedUString const& other) {
        this->Assign(other.Ref());
        return *this;
    }
    CopiedUString& operator=(CopiedUString&& other) noexcept = default;
    CopiedUString& operator=(UStringRef<E> const& view) {
        this->Assign(view);
        return *this;
    }
    CopiedUString& operator=(AutoUString<E>&& text) noexcept {
        this->Seize(text.Get());
        return *this;
    }
    CopiedUString& operator=(AutoUString<E>& text) noexcept {
        this->Seize(text.Get());
        return *this;
    }
    ~CopiedUString() = default;

    void swap(CopiedUString& other) noexcept {
        CopiedUString kept(std::move(*this));
        this->Seize(other.Get());
        other.Seize(kept.Get());
    }

    // Unchecked.
    Unit& operator[](std::size_t index) { return this->begin()[index]; }
    Unit const& operator[](std::size_t index) const { return this->begin()[index]; }

    // The view may point into this text.
    CopiedUString& operator+=(UStringRef<E> const& view) {
        this->Append(view);
        return *this;
    }
    CopiedUString& operator+=(Unit unit) {
        this->AppendUnit(unit);
        return *this;
    }
};
