#pragma once

#include <utility>

// Optional value on the heap; null means absent. Copies are deep, so two never share a value.
template <class T>
class NullOr {
public:
    NullOr() = default;
    NullOr(T const& value) : m_value(new T(value)) {}
    NullOr(T&& value) : m_value(new T(std::move(value))) {}
    NullOr(NullOr const& other) : m_value(other.m_value ? new T(*other.m_value) : nullptr) {}
    NullOr(NullOr&& other) noexcept : m_value(std::exchange(other.m_value, nullptr)) {}
    // Allocates the new value before the old one goes; assigning itself changes nothing.
    NullOr& operator=(NullOr const& other) {
        if (this == &other) return *this;
        NullOr copy(other);
        swap(copy);
        return *this;
    }
    NullOr& operator=(NullOr&& other) noexcept {
        NullOr taken(std::move(other));
        swap(taken);
        return *this;
    }
    ~NullOr() { delete m_value; }

    static NullOr Null() { return NullOr(); }

    bool IsNull() const { return !m_value; }
    explicit operator bool() const { return m_value != nullptr; }
    // Must not be null.
    T& operator*() { return *m_value; }
    T const& operator*() const { return *m_value; }
    T* operator->() { return m_value; }
    T const* operator->() const { return m_value; }

    void swap(NullOr& other) noexcept { std::swap(m_value, other.m_value); }

private:
    T* m_value = nullptr;
};

// The non-owning form: a reference or null. What it refers to must outlive it.
template <class T>
class NullOrConstRef {
public:
    NullOrConstRef(T const& value) : m_value(&value) {}
    static NullOrConstRef Null() { return NullOrConstRef(); }

    bool IsNull() const { return !m_value; }
    explicit operator bool() const { return m_value != nullptr; }
    T const& operator*() const { return *m_value; }
    T const* operator->() const { return m_value; }

private:
    NullOrConstRef() = default;

    T const* m_value = nullptr;
};
