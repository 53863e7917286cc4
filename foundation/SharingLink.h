#pragma once

#include <utility>

// Counts the holders of something shared. All links copied from one another point at one heap block with the
// count and its lock; links of different threads may be made, dropped and asked at the same time, as long as
// no single link is used by two threads at once.
//
// A link that was never copied has no block yet: it stands for a count of 1. So making and moving links
// neither allocates nor throws.
class SharingLink {
public:
    SharingLink() = default;
    // Joins the holders of `other`, whose block is made now if it has none.
    SharingLink(SharingLink const& other);
    SharingLink(SharingLink&& other) noexcept : m_block(std::exchange(other.m_block, nullptr)) {}
    SharingLink& operator=(SharingLink const& other);
    SharingLink& operator=(SharingLink&& other) noexcept;
    ~SharingLink() { Leave(); }

    // True when no other link shares this one's block.
    bool Alone() const;

    // Leaves the other holders for a fresh, lone link; true when there was no other holder left. Asking and
    // leaving are one step, so of two holders that leave at the same time exactly one sees true.
    bool Leave() noexcept { return !m_block || LeaveBlock(); }

    void swap(SharingLink& other) noexcept { std::swap(m_block, other.m_block); }

private:
    struct Block;

    bool LeaveBlock() noexcept;

    mutable Block* m_block = nullptr;
};

// Shared pointer on a SharingLink: the last holder deletes the object. Null when made without one.
template <class T>
class SharingPtr {
public:
    SharingPtr() = default;
    // Takes ownership.
    explicit SharingPtr(T* object) : m_object(object) {}
    SharingPtr(SharingPtr const&) = default;
    SharingPtr(SharingPtr&& other) noexcept
        : m_object(std::exchange(other.m_object, nullptr)), m_link(std::move(other.m_link)) {}
    SharingPtr& operator=(SharingPtr other) noexcept {
        swap(other);
        return *this;
    }
    ~SharingPtr() {
        if (m_link.Leave()) delete m_object;
    }

    T* get() const { return m_object; }
    T& operator*() const { return *m_object; }
    T* operator->() const { return m_object; }
    explicit operator bool() const { return m_object != nullptr; }

    void swap(SharingPtr& other) noexcept {
        std::swap(m_object, other.m_object);
        m_link.swap(other.m_link);
    }

    // By the address of the object.
    friend bool operator<(SharingPtr const& a, SharingPtr const& b) { return a.m_object < b.m_object; }
    friend bool operator==(SharingPtr const& a, SharingPtr const& b) { return a.m_object == b.m_object; }

private:
    T* m_object = nullptr;
    SharingLink m_link;
};
