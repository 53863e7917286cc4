#include "format/FormatOverrideSet.h"

#include "foundation/Exceptions.h"

#include <algorithm>
#include <cstring>

// Entries are views into the text, in one vector that is sorted once. A search finds the first entry whose
// key is not less than the one asked for, which among equal keys is the one with the smallest text.

namespace {

using Byte = unsigned char const*;

// Where the byte first stands in a range; the end when it does not.
Byte Find(char byte, Byte begin, Byte end) {
    void const* const found =
        begin == end ? nullptr : std::memchr(begin, byte, static_cast<std::size_t>(end - begin));
    return found ? static_cast<Byte>(found) : end;
}

// Gives the ends of the lines of a text in their order. The next one of each kind is kept, so that a text
// with only one kind is not searched to its end for the other again and again.
class LineEnds {
public:
    LineEnds(Byte begin, Byte end)
        : m_end(end), m_lineFeed(Find('\n', begin, end)), m_carriageReturn(Find('\r', begin, end)) {}

    // The first line end from `begin` on, which must not lie in front of the last one asked for.
    Byte Next(Byte begin) {
        if (m_lineFeed < begin) m_lineFeed = Find('\n', begin, m_end);
        if (m_carriageReturn < begin) m_carriageReturn = Find('\r', begin, m_end);
        return std::min(m_lineFeed, m_carriageReturn);
    }

private:
    Byte m_end;
    Byte m_lineFeed;
    Byte m_carriageReturn;
};

void AppendEntry(std::vector<FormatOverride>& entries, Byte begin, Byte end) {
    Byte const firstTab = Find('\t', begin, end);
    if (firstTab == begin || firstTab == end) return;
    auto const size = static_cast<std::size_t>(end - firstTab);
    auto const* const lastTab = static_cast<Byte>(memrchr(firstTab, '\t', size));
    entries.emplace_back(UStringRef<UTF8>(UTF8(), begin, firstTab),
                         UStringRef<UTF8>(UTF8(), lastTab + 1, end));
}

std::vector<FormatOverride> ReadEntries(Byte begin, Byte end) {
    std::vector<FormatOverride> entries;
    LineEnds lineEnds(begin, end);
    while (begin != end) {
        Byte const lineEnd = lineEnds.Next(begin);
        AppendEntry(entries, begin, lineEnd);
        begin = lineEnd == end ? end : lineEnd + 1;
    }
    return entries;
}

// Negative, 0 or positive, by the bytes, and the shorter first.
int Order(UStringRef<UTF8> const& a, UStringRef<UTF8> const& b) {
    std::size_t const sizeOfA = a.SizeInBytes();
    std::size_t const sizeOfB = b.SizeInBytes();
    std::size_t const common = std::min(sizeOfA, sizeOfB);
    int const order = common == 0 ? 0 : std::memcmp(a.begin(), b.begin(), common);
    if (order != 0 || sizeOfA == sizeOfB) return order;
    return sizeOfA < sizeOfB ? -1 : 1;
}

bool IsBefore(FormatOverride const& a, FormatOverride const& b) {
    int const order = Order(a.first, b.first);
    return order != 0 ? order < 0 : Order(a.second, b.second) < 0;
}

} // namespace

FormatOverrideSet::FormatOverrideSet(UStringRef<UTF8> const& text, UStringRef<UTF8> const& language)
    : m_overrides(ReadEntries(text.begin(), text.end())), m_language(language) {
    if (!std::is_sorted(m_overrides.begin(), m_overrides.end(), IsBefore))
        std::sort(m_overrides.begin(), m_overrides.end(), IsBefore);
    // A set stays as long as the process does.
    m_overrides.shrink_to_fit();
}

UStringRef<UTF8> FormatOverrideSet::GetOverride(UStringRef<UTF8> const& key) const {
    FormatOverride const* const found = Find(key);
    if (!found) throw FormatOverrideNotFound();
    return found->second;
}

FormatOverride const* FormatOverrideSet::Find(UStringRef<UTF8> const& key) const {
    auto const isBefore = [](FormatOverride const& entry, UStringRef<UTF8> const& wanted) {
        return entry.first < wanted;
    };
    auto const found = std::lower_bound(m_overrides.begin(), m_overrides.end(), key, isBefore);
    return found != m_overrides.end() && found->first == key ? &*found : nullptr;
}
