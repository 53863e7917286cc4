#pragma once

#include "text/Encodings.h"

#include <algorithm>
#include <concepts>
#include <cstring>
#include <type_traits>
#include <vector>

namespace UStringDetail {

// Where `pattern`, which must not be empty, first begins in `text`; text.end() when it does not. The search
// never steps back in the text: after a mismatch it goes on with the longest beginning of the pattern that
// ends here, so that it takes linear time whatever the texts are. A search over the bytes would stop at
// matches that begin within a unit, and looking on behind each of them would not be linear.
template <class Unit>
Unit const* FindUnits(ConstArrayOf<Unit> text, ConstArrayOf<Unit> pattern) {
    if (pattern.Size() > text.Size()) return text.end();
    // At each unit of the pattern: how many units up to it are the pattern's beginning once more.
    std::vector<std::size_t> repeated(pattern.Size());
    std::size_t matched = 0;
    auto const take = [&](Unit unit) {
        while (matched != 0 && unit != pattern[matched]) matched = repeated[matched - 1];
        if (unit == pattern[matched]) ++matched;
    };
    for (std::size_t i = 1; i < pattern.Size(); ++i) {
        take(pattern[i]);
        repeated[i] = matched;
    }
    matched = 0;
    for (Unit const* unit = text.begin(); unit != text.end(); ++unit) {
        take(*unit);
        if (matched == pattern.Size()) return unit + 1 - matched;
    }
    return text.end();
}

} // namespace UStringDetail

// Non-owning view of a text of encoding `E`: two pointers, and the tag where the tag holds data. It is valid
// as long as the text that it points into neither changes nor moves. A default-made view is null; it equals
// every other empty text.
template <class E>
class UStringRef {
public:
    using TextEncoding = E;
    using Unit = typename E::Unit;
    using iterator = Unit const*;
    using const_iterator = Unit const*;
    using value_type = Unit;
    // Byte encodings convert to ConstData, the wider ones to a range of their units.
    using Range = std::conditional_t<std::is_same_v<Unit, unsigned char>, ConstData, ConstArrayOf<Unit>>;

    constexpr UStringRef() = default;
    constexpr UStringRef(E encoding, Unit const* begin, Unit const* end)
        : m_begin(begin), m_end(end), m_encoding(encoding) {}
    constexpr UStringRef(E encoding, ConstArrayOf<Unit> units)
        : UStringRef(encoding, units.begin(), units.end()) {}

    constexpr Unit const* begin() const { return m_begin; }
    constexpr Unit const* end() const { return empty() ? m_begin : m_end; }
    constexpr bool empty() const { return m_end <= m_begin; }
    constexpr std::size_t SizeInUnits() const {
        return empty() ? 0 : static_cast<std::size_t>(m_end - m_begin);
    }
    constexpr std::size_t SizeInBytes() const { return SizeInUnits() * sizeof(Unit); }
    static constexpr std::size_t max_size() { return static_cast<std::size_t>(-1) / sizeof(Unit); }
    constexpr E Encoding() const { return m_encoding; }
    // Unchecked.
    constexpr Unit operator[](std::size_t index) const { return m_begin[index]; }

    bool Contains(Unit unit) const { return std::find(begin(), end(), unit) != end(); }
    // An empty pattern is contained in nothing.
    bool Contains(UStringRef pattern) const { return Position(pattern) != end(); }

    // First place where `pattern` begins; end() when there is none or when either text is empty. Takes linear
    // time whatever the texts are; with units wider than a byte also memory for each unit of the pattern, for
    // want of which it throws std::bad_alloc.
    Unit const* Position(UStringRef pattern) const {
        if (empty() || pattern.empty()) return end();
        if constexpr (sizeof(Unit) == 1) {
            void const* const found = memmem(begin(), SizeInUnits(), pattern.begin(), pattern.SizeInUnits());
            return found ? static_cast<Unit const*>(found) : end();
        } else {
            return UStringDetail::FindUnits(Range(*this), Range(pattern));
        }
    }

    // The view between two offsets (not an offset and a length) when first <= last <= size; otherwise the
    // null view. Middle(1, 3) of "abcd" is "bc".
    constexpr UStringRef Middle(std::size_t first, std::size_t last) const {
        if (first > last || last > SizeInUnits()) return UStringRef();
        return UStringRef(m_encoding, m_begin + first, m_begin + last);
    }

    constexpr operator Range() const { return Range(begin(), end()); }

private:
    Unit const* m_begin = nullptr;
    Unit const* m_end = nullptr;
    [[no_unique_address]] E m_encoding{};
};

// Every member of the string family: something that can be viewed as a text of its encoding.
template <class T>
concept UText = requires {
    typename T::TextEncoding;
}
&&std::convertible_to<T const&, UStringRef<typename T::TextEncoding>>;

// Two texts of one encoding.
template <class A, class B>
concept SameEncodingUTexts =
    UText<A> && UText<B> && std::same_as<typename A::TextEncoding, typename B::TextEncoding>;

namespace UStringDetail {

template <class E>
bool Equal(UStringRef<E> a, UStringRef<E> b) {
    if (a.empty() || b.empty()) return a.empty() && b.empty();
    return a.SizeInUnits() == b.SizeInUnits() && std::memcmp(a.begin(), b.begin(), a.SizeInBytes()) == 0;
}

template <class E>
bool Less(UStringRef<E> a, UStringRef<E> b) {
    if constexpr (sizeof(typename E::Unit) == 1) {
        std::size_t const common = std::min(a.SizeInUnits(), b.SizeInUnits());
        int const order = common == 0 ? 0 : std::memcmp(a.begin(), b.begin(), common);
        return order != 0 ? order < 0 : a.SizeInUnits() < b.SizeInUnits();
    } else {
        return std::lexicographical_compare(a.begin(), a.end(), b.begin(), b.end());
    }
}

} // namespace UStringDetail

// Same size and same units; the null view equals every other empty text.
template <class A, class B>
requires SameEncodingUTexts<A, B>
bool operator==(A const& a, B const& b) {
    using Ref = UStringRef<typename A::TextEncoding>;
    return UStringDetail::Equal(Ref(a), Ref(b));
}

// Byte order, the shorter first on a common prefix: the order of std::less over the family.
template <class A, class B>
requires SameEncodingUTexts<A, B>
bool operator<(A const& a, B const& b) {
    using Ref = UStringRef<typename A::TextEncoding>;
    return UStringDetail::Less(Ref(a), Ref(b));
}

// Two texts of different encodings.
template <class A, class B>
concept OtherEncodingUTexts =
    UText<A> && UText<B> && !std::same_as<typename A::TextEncoding, typename B::TextEncoding>;

// The same bytes mean different texts in different encodings, so such texts cannot be compared, neither as
// texts nor as the plain bytes that some of them convert to.
template <class A, class B>
requires OtherEncodingUTexts<A, B>
bool operator==(A const& a, B const& b) = delete;
template <class A, class B>
requires OtherEncodingUTexts<A, B>
bool operator<(A const& a, B const& b) = delete;

// View of bytes taken as UTF-8, without any check.
inline UStringRef<UTF8> MakeUTF8Ref(ConstArrayOf<unsigned char> bytes) {
    return UStringRef<UTF8>(UTF8(), bytes);
}

// View of a zero-terminated text taken as UTF-8; a null pointer gives the null view.
inline UStringRef<UTF8> MakeUTF8Ref(char const* text) {
    if (!text) return UStringRef<UTF8>();
    auto const* first = reinterpret_cast<unsigned char const*>(text);
    return UStringRef<UTF8>(UTF8(), first, first + std::strlen(text));
}

// View of a C++ text taken as UTF-8.
inline UStringRef<UTF8> MakeUTF8Ref(std::string const& text) {
    return UStringRef<UTF8>(UTF8(), MakeConstData(text));
}

// "text"_utf8: view of a literal.
inline UStringRef<UTF8> operator""_utf8(char const* text, std::size_t size) {
    auto const* first = reinterpret_cast<unsigned char const*>(text);
    return UStringRef<UTF8>(UTF8(), first, first + size);
}
