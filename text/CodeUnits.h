#pragma once

#include "foundation/Exceptions.h"
#include "text/Encodings.h"

// How single characters are read from and written to the code units of the Unicode encodings. For each
// encoding:
//
//   longest             the most units that a character takes
//   Size(first)         how many units a character takes that begins with `first`, as far as that can
//                       tell; only where it can be several
//   CheckFollowing(u)   refuses a unit that cannot stand behind the first of a character; likewise
//   Take(next)          the value of the whole character at `next`, which moves behind it
//   Put(value, out)     writes a value at `out`, which moves behind it; it takes up to `longest` units
//
// Refusing is to throw InvalidTextEncoding. Take refuses what is no character, in UTF-8 by its form alone;
// Size of UTF-8 refuses a byte that begins none; Put of UTF-16 refuses a value that UTF-16 cannot hold. The
// other forms of Put do not look at the value, which must come from Take. Taking and putting are always made
// inline: the loops of the transcoders keep their places in registers only then.
namespace CodeUnits {

using Value = std::uint32_t;

constexpr Value cHighestValue = 0x10FFFF;

[[noreturn]] [[gnu::cold]] [[gnu::noinline]] inline void Refuse() {
    throw InvalidTextEncoding();
}

// The 10 upper bits of the 21 of a value are those of D800 to DFFF.
constexpr bool IsSurrogate(Value value) {
    return (value & 0x1FF800) == 0xD800;
}

template <class E>
struct Form;

template <>
struct Form<UTF8> {
    using Unit = UTF8::Unit;
    static constexpr std::size_t longest = 4;

    static std::size_t Size(Unit first) {
        if (first < 0x80) return 1;
        if (first < 0xC0 || first > 0xF7) Refuse();
        if (first < 0xE0) return 2;
        return first < 0xF0 ? 3 : 4;
    }
    static void CheckFollowing(Unit unit) {
        if ((unit & 0xC0) != 0x80) Refuse();
    }
    [[gnu::always_inline]] static Value Take(Unit const*& next) {
        std::size_t const size = Size(*next);
        if (size == 1) return *next++;
        if (size == 2) return TakeTwo(next);
        return size == 3 ? TakeThree(next) : TakeFour(next);
    }
    [[gnu::always_inline]] static void Put(Value value, Unit*& out) {
        if (value < 0x800) {
            PutOneOrTwo(value, out);
        } else if (value < 0x10000) {
            out[0] = static_cast<Unit>(0xE0 | (value >> 12));
            out[1] = Following(value >> 6);
            out[2] = Following(value);
            out += 3;
        } else {
            out[0] = static_cast<Unit>(0xF0 | (value >> 18));
            out[1] = Following(value >> 12);
            out[2] = Following(value >> 6);
            out[3] = Following(value);
            out += 4;
        }
    }

private:
    static Value SixBits(Unit unit) { return unit & 0x3FU; }
    // The two bits by which a byte differs from one that may follow; 0 when it does not.
    static unsigned int Fault(Unit unit) { return (unit ^ 0x80U) & 0xC0U; }

    [[gnu::always_inline]] static Value TakeTwo(Unit const*& next) {
        if (Fault(next[1]) != 0) Refuse();
        Value const value = (next[0] & 0x1FU) << 6 | SixBits(next[1]);
        next += 2;
        return value;
    }
    [[gnu::always_inline]] static Value TakeThree(Unit const*& next) {
        if ((Fault(next[1]) | Fault(next[2])) != 0) Refuse();
        Value const value = (next[0] & 0x0FU) << 12 | SixBits(next[1]) << 6 | SixBits(next[2]);
        next += 3;
        return value;
    }
    [[gnu::always_inline]] static Value TakeFour(Unit const*& next) {
        if ((Fault(next[1]) | Fault(next[2]) | Fault(next[3])) != 0) Refuse();
        Value const value =
            (next[0] & 0x07U) << 18 | SixBits(next[1]) << 12 | SixBits(next[2]) << 6 | SixBits(next[3]);
        next += 4;
        return value;
    }
    [[gnu::always_inline]] static void PutOneOrTwo(Value value, Unit*& out) {
        if (value < 0x80) {
            *out++ = static_cast<Unit>(value);
        } else {
            out[0] = static_cast<Unit>(0xC0 | (value >> 6));
            out[1] = Following(value);
            out += 2;
        }
    }
    static Unit Following(Value value) { return static_cast<Unit>(0x80 | (value & 0x3F)); }
};

template <>
struct Form<UTF16> {
    using Unit = UTF16::Unit;
    static constexpr std::size_t longest = 2;

    static std::size_t Size(Unit first) { return IsHigh(first) ? 2 : 1; }
    static void CheckFollowing(Unit unit) {
        if (!IsLow(unit)) Refuse();
    }
    [[gnu::always_inline]] static Value Take(Unit const*& next) {
        Value const first = *next++;
        if (IsSurrogate(first)) [[unlikely]]
            return TakePair(first, next);
        return first;
    }
    // A surrogate alone and a value above the highest have no form.
    [[gnu::always_inline]] static void Put(Value value, Unit*& out) {
        if (value < 0x10000) {
            if (IsSurrogate(value)) Refuse();
            *out++ = static_cast<Unit>(value);
        } else {
            if (value > cHighestValue) Refuse();
            *out++ = static_cast<Unit>(0xD7C0 + (value >> 10));
            *out++ = static_cast<Unit>(0xDC00 | (value & 0x3FF));
        }
    }

private:
    [[gnu::always_inline]] static Value TakePair(Value first, Unit const*& next) {
        if (!IsHigh(first) || !IsLow(*next)) Refuse();
        return 0x10000 + ((first & 0x3FF) << 10 | (*next++ & 0x3FFU));
    }
    static bool IsHigh(Value unit) { return (unit & 0xFC00) == 0xD800; }
    static bool IsLow(Value unit) { return (unit & 0xFC00) == 0xDC00; }
};

template <>
struct Form<UTF32> {
    using Unit = UTF32::Unit;
    static constexpr std::size_t longest = 1;

    [[gnu::always_inline]] static Value Take(Unit const*& next) {
        if (IsSurrogate(*next) || *next > cHighestValue) Refuse();
        return *next++;
    }
    [[gnu::always_inline]] static void Put(Value value, Unit*& out) { *out++ = value; }
};

template <>
struct Form<USAscii> {
    using Unit = USAscii::Unit;
    static constexpr std::size_t longest = 1;

    [[gnu::always_inline]] static Value Take(Unit const*& next) {
        if (*next > 0x7F) Refuse();
        return *next++;
    }
};

} // namespace CodeUnits
