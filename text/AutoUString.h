#pragma once

#include "text/EditableUString.h"

// Chooses the constructor that takes over a body.
struct Seizing {};

// Owning string that moves on copy: the return type of everything that makes a text. Constructing and
// assigning from a non-const AutoUString take its text and leave it empty.
template <class E>
class AutoUString : public EditableUString<E> {
public:
    using Unit = typename E::Unit;

    AutoUString() = default;
    explicit AutoUString(UStringRef<E> const& view) : EditableUString<E>(view) {}
    // A copy of what lies between two pointers. Numbers, a literal 0 too, choose the constructor below.
    template <std::convertible_to<Unit const*> Begin, std::convertible_to<Unit const*> End>
    AutoUString(E encoding, Begin begin, End end) : EditableUString<E>(UStringRef<E>(encoding, begin, end)) {}
    // Storage for `size` units that are not initialised.
    AutoUString(E encoding, std::size_t size, std::size_t capacity)
        : EditableUString<E>(encoding, size, capacity) {}
    AutoUString(UStringBody<E>& body, Seizing) noexcept { this->Seize(body); }

    AutoUString(AutoUString& other) noexcept : EditableUString<E>(std::move(other)) {}
    AutoUString(AutoUString&& other) noexcept = default;
    AutoUString& operator=(AutoUString& other) noexcept {
        this->Seize(other.Get());
        return *this;
    }
    AutoUString& operator=(AutoUString&& other) noexcept = default;
    ~AutoUString() = default;

    void swap(AutoUString& other) noexcept {
        AutoUString kept(*this);
        this->Seize(other.Get());
        other.Seize(kept.Get());
    }

    // Throws std::out_of_range ("operator[] range error") for an index not below the size.
    Unit& operator[](std::size_t index) {
        CheckIndex(index);
        return this->begin()[index];
    }
    Unit const& operator[](std::size_t index) const {
        CheckIndex(index);
        return this->begin()[index];
    }

    // The view may point into this text.
    AutoUString& operator+=(UStringRef<E> const& view) {
        this->Append(view);
        return *this;
    }
    AutoUString& operator+=(Unit unit) {
        this->AppendUnit(unit);
        return *this;
    }

private:
    void CheckIndex(std::size_t index) const {
        if (index >= this->SizeInUnits()) throw std::out_of_range("operator[] range error");
    }
};
