#include "text/Ascii.h"

#include <algorithm>
#include <cstring>

// The classes and tables are constants of the compiler: nothing is made at run time, so that they can be used
// by any thread and by the constructors of process-wide objects.

namespace Ascii {

namespace {

constexpr Bits MakeRange(unsigned char first, unsigned char last) {
    return Bits().SetRange(first, last);
}

constexpr Bits MakeSet(char const* values) {
    Bits set;
    for (; *values; ++values) set.Set(static_cast<unsigned char>(*values));
    return set;
}

constexpr Bits Without(Bits from, Bits const& taken) {
    for (unsigned int value = 0; value < 256; ++value)
        if (taken.Has(static_cast<unsigned char>(value))) from.Clear(static_cast<unsigned char>(value));
    return from;
}

constexpr Bits cNumeric = MakeRange('0', '9');
constexpr Bits cUppercase = MakeRange('A', 'Z');
constexpr Bits cLowercase = MakeRange('a', 'z');
constexpr Bits cAlphabetic = cUppercase | cLowercase;
constexpr Bits cAlphanumeric = cAlphabetic | cNumeric;
constexpr Bits cUnderscore = MakeSet("_");
constexpr Bits cPrintable = MakeRange(32, 126);

constexpr std::array<unsigned char, 256> MakeCaseTable(unsigned char first, unsigned char last, int shift) {
    std::array<unsigned char, 256> table{};
    for (unsigned int value = 0; value < 256; ++value) {
        bool const moves = value >= first && value <= last;
        table[value] = static_cast<unsigned char>(static_cast<int>(value) + (moves ? shift : 0));
    }
    return table;
}

int CompareThrough(std::array<unsigned char, 256> const& table, ConstData a, ConstData b) {
    std::size_t const common = std::min(a.Size(), b.Size());
    for (std::size_t index = 0; index < common; ++index) {
        int const difference = table[a[index]] - table[b[index]];
        if (difference != 0) return difference;
    }
    if (a.Size() == b.Size()) return 0;
    return a.Size() < b.Size() ? -1 : 1;
}

void MapThrough(std::array<unsigned char, 256> const& table, ConstData source, Data target) {
    std::size_t const common = std::min(source.Size(), target.Size());
    for (std::size_t index = 0; index < common; ++index) target[index] = table[source[index]];
}

bool HoldsNone(ConstData data, Bits const& set) {
    return std::none_of(data.begin(), data.end(), [&](unsigned char byte) { return set.Has(byte); });
}

ConstData MakeData(char const* text) {
    auto const* first = reinterpret_cast<unsigned char const*>(text);
    return ConstData(first, first + std::strlen(text));
}

} // namespace

constexpr std::array<unsigned char, 256> lowercaseTable = MakeCaseTable('A', 'Z', 'a' - 'A');
constexpr std::array<unsigned char, 256> uppercaseTable = MakeCaseTable('a', 'z', 'A' - 'a');

Bits const& Control() {
    static constexpr Bits set = MakeRange(0, 31) | MakeRange(127, 127);
    return set;
}

Bits const& WhiteSpace() {
    static constexpr Bits set = MakeSet(" \t\n\v\f\r");
    return set;
}

Bits const& LinearWhiteSpace() {
    static constexpr Bits set = MakeSet(" \t");
    return set;
}

Bits const& Newline() {
    static constexpr Bits set = MakeSet("\n\r");
    return set;
}

Bits const& Numeric() {
    return cNumeric;
}

Bits const& Alphabetic() {
    return cAlphabetic;
}

Bits const& Alphabetic_() {
    static constexpr Bits set = cAlphabetic | cUnderscore;
    return set;
}

Bits const& Alphanumeric() {
    return cAlphanumeric;
}

Bits const& Alphanumeric_() {
    static constexpr Bits set = cAlphanumeric | cUnderscore;
    return set;
}

Bits const& UppercaseAlphabet() {
    return cUppercase;
}

Bits const& LowercaseAlphabet() {
    return cLowercase;
}

Bits const& HexDigits() {
    static constexpr Bits set = cNumeric | MakeRange('a', 'f') | MakeRange('A', 'F');
    return set;
}

Bits const& Punctuation() {
    static constexpr Bits set = Without(MakeRange(33, 126), cAlphanumeric);
    return set;
}

Bits const& Low() {
    static constexpr Bits set = MakeRange(0, 127);
    return set;
}

Bits const& High() {
    static constexpr Bits set = MakeRange(128, 255);
    return set;
}

Bits const& PlainText() {
    static constexpr Bits set = cPrintable | MakeSet("\t\n\r");
    return set;
}

Bits const& Printable() {
    return cPrintable;
}

Bits const& Unprintable() {
    static constexpr Bits set = Without(MakeRange(0, 255), cPrintable);
    return set;
}

bool CaseTablesAreCorrect() {
    for (unsigned int value = 0; value < 256; ++value) {
        auto const byte = static_cast<unsigned char>(value);
        bool const upper = byte >= 'A' && byte <= 'Z';
        bool const lower = byte >= 'a' && byte <= 'z';
        if (lowercaseTable[value] != (upper ? value + 32 : value)) return false;
        if (uppercaseTable[value] != (lower ? value - 32 : value)) return false;
    }
    return true;
}

bool IsLowercase(ConstData data) {
    return HoldsNone(data, UppercaseAlphabet());
}

bool IsUppercase(ConstData data) {
    return HoldsNone(data, LowercaseAlphabet());
}

bool EqualIgnoringCase(ConstData a, ConstData b) {
    return a.Size() == b.Size() && CompareLowercase(a, b) == 0;
}

int CompareLowercase(char const* a, char const* b) {
    return CompareLowercase(MakeData(a), MakeData(b));
}

int CompareLowercase(ConstData a, ConstData b) {
    return CompareThrough(lowercaseTable, a, b);
}

int CompareUppercase(ConstData a, ConstData b) {
    return CompareThrough(uppercaseTable, a, b);
}

void LowerCase(ConstData source, Data target) {
    MapThrough(lowercaseTable, source, target);
}

void RaiseCase(ConstData source, Data target) {
    MapThrough(uppercaseTable, source, target);
}

} // namespace Ascii
