#pragma once

#include "foundation/Exceptions.h"

#include <memory>
#include <utility>

// First-in, first-out queue of one thread: no lock. Values are kept in heap nodes, appended behind the tail
// and taken from the head; nothing is moved when it grows.
template <class T>
class FiFoQueue {
public:
    FiFoQueue() = default;
    FiFoQueue(FiFoQueue const&) = delete;
    FiFoQueue& operator=(FiFoQueue const&) = delete;
    ~FiFoQueue() { Clear(); }

    bool IsEmpty() const { return !m_head; }

    // Appends `value`. The queue is unchanged when this throws.
    void Append(T value) {
        Node* node = new Node{nullptr, m_tail, std::move(value)};
        (m_tail ? m_tail->next : m_head) = node;
        m_tail = node;
    }

    // Takes the value at the head out of the queue; throws FiFoQueueIsEmpty when there is none.
    T Take() {
        if (!m_head) throw FiFoQueueIsEmpty();
        std::unique_ptr<Node> const node(m_head);
        m_head = node->next;
        (m_head ? m_head->previous : m_tail) = nullptr;
        return std::move(node->value);
    }

    // Exchanges the whole contents in constant time.
    void Swap(FiFoQueue& other) noexcept {
        std::swap(m_head, other.m_head);
        std::swap(m_tail, other.m_tail);
    }

    // Destroys all values.
    void Clear() noexcept {
        while (m_head) delete std::exchange(m_head, m_head->next);
        m_tail = nullptr;
    }

private:
    struct Node {
        Node* next;
        Node* previous;
        T value;
    };

    Node* m_head = nullptr;
    Node* m_tail = nullptr;
};
