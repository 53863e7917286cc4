#pragma once

#include "text/CodeUnits.h"
#include "text/UStringRef.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cstring>
#include <type_traits>

// The quick way of the transcoders, and the counting of what a text will make. Both look at the text in words
// of 64 bits, in which the units of a run of 7-bit characters are found and converted together.
//
// A word is widened or narrowed as a whole, although characters of other kinds may stand in it: what is
// written for those lies behind the output's new end, where the next characters are written over it; behind
// the last ones of a run it is left and counts for nothing.
namespace TranscodingRuns {

using CodeUnits::Form;
using Word = std::uint64_t;

// `bits` in each unit of a word.
template <class Unit>
constexpr Word Repeated(Unit bits) {
    return ~Word{0} / static_cast<Unit>(~Unit{0}) * bits;
}

template <class Unit>
constexpr std::size_t cUnitsInWord = sizeof(Word) / sizeof(Unit);

template <class Unit>
Word Load(Unit const* units) {
    Word word;
    std::memcpy(&word, units, sizeof(word));
    return word;
}

// The bits of a word's units that a 7-bit character does not have.
template <class Unit>
Word Beyond7Bits(Word word) {
    return word & Repeated<Unit>(static_cast<Unit>(~Unit{0x7F}));
}

// How many units of a word, from the first on, have none of the bits that are left in `bits`.
template <class Unit>
std::size_t UnitsBefore(Word bits) {
    if (bits == 0) return cUnitsInWord<Unit>;
    int const zeros =
        std::endian::native == std::endian::little ? std::countr_zero(bits) : std::countl_zero(bits);
    return static_cast<std::size_t>(zeros) / (8 * sizeof(Unit));
}

// Writes `count` units with the values of those at `units`.
template <std::size_t count, class Unit, class OutUnit>
void ConvertUnits(Unit const* units, OutUnit* out) {
    // The copy shows the compiler that input and output do not overlap.
    std::array<Unit, count> source;
    std::memcpy(source.data(), units, sizeof(source));
    for (std::size_t i = 0; i < count; ++i) out[i] = static_cast<OutUnit>(source[i]);
}

// Takes single characters up to a place where two 7-bit ones stand, or to the last places: a lone one, such
// as a space in another script, is not worth the way over a word. Always inline, for the sake of the
// registers.
template <class To, class From>
[[gnu::always_inline]] inline void TakeSingly(typename From::Unit const*& next,
                                              typename From::Unit const* lastIn, typename To::Unit*& out,
                                              typename To::Unit* lastOut) {
    while (next <= lastIn && out <= lastOut) {
        if (*next > 0x7F) [[likely]]
            Form<To>::Put(Form<From>::Take(next), out);
        else if (next[1] > 0x7F)
            *out++ = static_cast<typename To::Unit>(*next++);
        else
            return;
    }
}

// How far a run has come in the input and in the output.
template <class To, class From>
struct Places {
    typename From::Unit const* next;
    typename To::Unit* out;
};

// Takes characters from `next` to `end` and writes them from `out` to `outEnd`, as far as it can without
// looking at single bounds. It may stop anywhere between two characters.
template <class To, class From>
Places<To, From> Run(typename From::Unit const* next, typename From::Unit const* end, typename To::Unit* out,
                     typename To::Unit* outEnd) {
    using Unit = typename From::Unit;
    constexpr std::ptrdiff_t step = cUnitsInWord<Unit>;
    constexpr std::ptrdiff_t inNeed = std::max<std::ptrdiff_t>(step, Form<From>::longest);
    constexpr std::ptrdiff_t outNeed = std::max<std::ptrdiff_t>(step, Form<To>::longest);
    if (end - next < inNeed || outEnd - out < outNeed) return {next, out};
    // Behind these places, less than a step fits.
    Unit const* const lastIn = end - inNeed;
    typename To::Unit* const lastOut = outEnd - outNeed;
    while (next <= lastIn && out <= lastOut) {
        ConvertUnits<step>(next, out);
        std::size_t const plain = UnitsBefore<Unit>(Beyond7Bits<Unit>(Load(next)));
        next += plain;
        out += plain;
        if (plain == step) continue;
        TakeSingly<To, From>(next, lastIn, out, lastOut);
    }
    return {next, out};
}

// How many units of `To` a unit of `From` adds to the text that is made, when both are well formed: each
// character is counted at its first unit, but a surrogate pair in UTF-8 half at each of its units.
template <class To, class From>
constexpr unsigned int UnitsMade(typename From::Unit unit) {
    if constexpr (std::is_same_v<From, UTF8>) {
        unsigned int const begins = (unit & 0xC0) != 0x80;
        return std::is_same_v<To, UTF16> ? begins + (unit >= 0xF0) : begins;
    } else if constexpr (std::is_same_v<From, USAscii>) {
        return 1;
    } else if constexpr (std::is_same_v<To, UTF32>) {
        return (unit & 0xFC00) != 0xDC00;
    } else if constexpr (std::is_same_v<To, UTF16>) {
        return 1U + (unit > 0xFFFF);
    } else if constexpr (std::is_same_v<From, UTF16>) {
        return 1U + (unit > 0x7F) + (unit > 0x7FF && (unit & 0xF800) != 0xD800);
    } else {
        return 1U + (unit > 0x7F) + (unit > 0x7FF) + (unit > 0xFFFF);
    }
}

// What all units of a text make. The sum of a block fits in one unit of the text, so that the compiler can
// keep many sums side by side.
template <class To, class From>
std::size_t SizeMade(UStringRef<From> text) {
    using Unit = typename From::Unit;
    constexpr std::size_t blockSize = 32;
    std::size_t size = 0;
    Unit const* next = text.begin();
    for (; static_cast<std::size_t>(text.end() - next) >= blockSize; next += blockSize) {
        Unit made = 0;
        for (std::size_t i = 0; i < blockSize; ++i)
            made = static_cast<Unit>(made + UnitsMade<To, From>(next[i]));
        size += made;
    }
    for (; next != text.end(); ++next) size += UnitsMade<To, From>(*next);
    return size;
}

} // namespace TranscodingRuns
