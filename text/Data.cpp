#include "text/Data.h"

#include "text/Ascii.h"

#include <algorithm>
#include <cstring>

bool ConstData::StartsWith(ConstData prefix) const {
    return prefix.Size() <= Size() && ConstData(begin(), begin() + prefix.Size()) == prefix;
}

bool ConstData::EndsWith(ConstData suffix) const {
    return suffix.Size() <= Size() && ConstData(end() - suffix.Size(), end()) == suffix;
}

std::size_t ConstData::PositionOf(unsigned char byte) const {
    if (empty()) return cAllOnes;
    void const* const found = std::memchr(begin(), byte, Size());
    return found ? static_cast<std::size_t>(static_cast<unsigned char const*>(found) - begin()) : cAllOnes;
}

std::size_t ConstData::PositionOf(ConstData pattern) const {
    if (empty() || pattern.empty()) return cAllOnes;
    void const* const found = memmem(begin(), Size(), pattern.begin(), pattern.Size());
    return found ? static_cast<std::size_t>(static_cast<unsigned char const*>(found) - begin()) : cAllOnes;
}

std::vector<std::size_t> ConstData::PositionsOf(ConstData pattern) const {
    std::vector<std::size_t> positions;
    std::size_t offset = 0;
    while (true) {
        std::size_t const found = ConstData(begin() + offset, end()).PositionOf(pattern);
        if (found == cAllOnes) return positions;
        positions.push_back(offset + found);
        offset += found + pattern.Size();
    }
}

std::vector<ConstData> ConstData::Split(ConstData separator, bool trim, bool keepEmpty) const {
    std::vector<ConstData> pieces;
    ConstData rest = *this;
    auto const keep = [&](ConstData piece) {
        if (trim) piece = TrimAsciiWhitespace(piece);
        if (keepEmpty || !piece.empty()) pieces.push_back(piece);
    };
    while (true) {
        std::size_t const found = rest.PositionOf(separator);
        if (found == cAllOnes) break;
        keep(ConstData(rest.begin(), rest.begin() + found));
        rest = ConstData(rest.begin() + found + separator.Size(), rest.end());
    }
    keep(rest);
    return pieces;
}

ConstData ConstData::operator>>(Data target) const {
    std::size_t const count = std::min(Size(), target.Size());
    if (count != 0) std::memcpy(target.begin(), begin(), count);
    return ConstData(begin() + count, end());
}

namespace {

int OrderOfSizes(ConstData a, ConstData b) {
    if (a.Size() == b.Size()) return 0;
    return a.Size() < b.Size() ? -1 : 1;
}

} // namespace

int Compare(ConstData a, ConstData b) {
    std::size_t const common = std::min(a.Size(), b.Size());
    auto const [inA, inB] = std::mismatch(a.begin(), a.begin() + common, b.begin());
    if (inA != a.begin() + common) return *inA - *inB;
    return OrderOfSizes(a, b);
}

int CompareReversed(ConstData a, ConstData b) {
    std::size_t const common = std::min(a.Size(), b.Size());
    for (std::size_t fromEnd = 1; fromEnd <= common; ++fromEnd) {
        int const difference = *(a.end() - fromEnd) - *(b.end() - fromEnd);
        if (difference != 0) return difference;
    }
    return OrderOfSizes(a, b);
}

bool operator==(ConstData a, ConstData b) {
    if (a.Size() != b.Size()) return false;
    return a.empty() || std::memcmp(a.begin(), b.begin(), a.Size()) == 0;
}

bool operator<(ConstData a, ConstData b) {
    return Compare(a, b) < 0;
}

ConstData TrimLeadingAsciiWhitespace(ConstData data) {
    Bits const& white = Ascii::WhiteSpace();
    unsigned char const* first =
        std::find_if_not(data.begin(), data.end(), [&](unsigned char byte) { return white.Has(byte); });
    return ConstData(first, data.end());
}

ConstData TrimAsciiWhitespace(ConstData data) {
    Bits const& white = Ascii::WhiteSpace();
    ConstData const rest = TrimLeadingAsciiWhitespace(data);
    unsigned char const* last = rest.end();
    while (last != rest.begin() && white.Has(last[-1])) --last;
    return ConstData(rest.begin(), last);
}

std::string MakeString(ConstData data) {
    return data.empty() ? std::string()
                        : std::string(reinterpret_cast<char const*>(data.begin()), data.Size());
}
