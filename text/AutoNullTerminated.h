#pragma once

#include "text/AutoUString.h"

#include <utility>

// Owning text with one NUL unit behind its last, for C interfaces:
//
//   puts(AutoNullTerminated<Local8Bit>(std::move(text)).c_str());
//
// The NUL does not count as a part of the text. The text itself may hold others: a C interface then sees it
// only up to the first. Moved from, it is an empty text with its NUL.
template <class E>
class AutoNullTerminated {
public:
    using TextEncoding = E;
    using Unit = typename E::Unit;
    using const_iterator = Unit const*;
    using value_type = Unit;

    // The empty text.
    AutoNullTerminated() noexcept { Terminate(); }
    // Takes over the storage of `text` when it has room for one unit more; otherwise copies the text to
    // storage one unit larger. When memory runs out it throws std::bad_alloc.
    explicit AutoNullTerminated(AutoUString<E> text) : m_text(WithRoom(text)) { Terminate(); }

    AutoNullTerminated(AutoNullTerminated&& other) noexcept : m_text(std::move(other.m_text)) {
        Terminate();
        other.Terminate();
    }
    AutoNullTerminated& operator=(AutoNullTerminated&& other) noexcept {
        m_text = std::move(other.m_text);
        Terminate();
        other.Terminate();
        return *this;
    }
    ~AutoNullTerminated() = default;

    // The text with its NUL behind it, valid until the object is moved or assigned to.
    Unit const* c_str() const { return m_text.begin(); }

    Unit const* begin() const { return m_text.begin(); }
    Unit const* end() const { return m_text.end(); }
    bool empty() const { return m_text.empty(); }
    std::size_t SizeInUnits() const { return m_text.SizeInUnits(); }
    std::size_t SizeInBytes() const { return m_text.SizeInBytes(); }
    E Encoding() const { return m_text.Encoding(); }
    UStringRef<E> Ref() const { return m_text.Ref(); }
    operator UStringRef<E>() const { return Ref(); }

private:
    static AutoUString<E> WithRoom(AutoUString<E>& text) {
        if (text.SizeInUnits() < text.CapacityInUnits()) return AutoUString<E>(text);
        AutoUString<E> larger(text.Encoding(), 0, text.SizeInUnits() + 1);
        larger += text;
        return larger;
    }

    void Terminate() noexcept { *m_text.end() = Unit(); }

    AutoUString<E> m_text;
};
