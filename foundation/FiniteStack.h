#pragma once

#include "foundation/Exceptions.h"

#include <array>
#include <cstddef>

// What every finite stack has: a count that stays between 0 and a capacity.
class FiniteStackBase {
public:
    bool empty() const { return m_size == 0; }
    std::size_t Size() const { return m_size; }
    std::size_t Capacity() const { return m_capacity; }
    void Clear() { m_size = 0; }
    // Takes `count` entries off the top. Throws NoMoreData, changing nothing, when there are fewer.
    void Drop(std::size_t count) {
        if (count > m_size) throw NoMoreData();
        m_size -= count;
    }

protected:
    explicit FiniteStackBase(std::size_t capacity) : m_capacity(capacity) {}
    ~FiniteStackBase() = default;
    FiniteStackBase(FiniteStackBase const&) = default;
    FiniteStackBase& operator=(FiniteStackBase const&) = default;

    // Index of a new top entry. Throws StackFull, changing nothing.
    std::size_t Grow() {
        if (m_size == m_capacity) throw StackFull();
        return m_size++;
    }
    // Index of the top entry. Throws NoMoreData when the stack is empty.
    std::size_t TopIndex() const {
        if (empty()) throw NoMoreData();
        return m_size - 1;
    }

private:
    std::size_t m_size = 0;
    std::size_t m_capacity;
};

// Stack of at most `capacity` small values, held inline.
template <class T, std::size_t capacity>
class FiniteStack : public FiniteStackBase {
public:
    FiniteStack() : FiniteStackBase(capacity) {}

    // Throws StackFull.
    void Push(T const& value) { m_entries[Grow()] = value; }
    // Throw NoMoreData when the stack is empty.
    T& Top() { return m_entries[TopIndex()]; }
    T const& Top() const { return m_entries[TopIndex()]; }
    T Pop() {
        T const value = Top();
        Drop(1);
        return value;
    }

private:
    std::array<T, capacity> m_entries{};
};
