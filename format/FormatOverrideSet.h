#pragma once

#include "format/UFormat.h"
#include "text/CopiedUString.h"

#include <utility>
#include <vector>

// The key and the text that takes its place.
using FormatOverride = std::pair<UStringRef<UTF8>, UStringRef<UTF8>>;

// The translations that one text in the form of a translation file holds. The text is UTF-8, with one entry a
// line, and the lines end at a line feed, a carriage return or both:
//
//   {minutes} minutes<tab>{minutes} Minuten
//
// The key is what stands before the first tab of a line: an English format, exactly as the program has it.
// The text behind the last tab replaces it, and may be empty. What stands between two tabs is dropped. A line
// without a tab, and one that begins with a tab, says nothing. Nothing else has a meaning: there are no
// comments, no quotes and no escapes, and spaces belong to the texts. So no text is refused, and nothing is
// checked before a format is rendered.
//
// A set is fixed when it is made. It holds views: the text must outlive it and all its copies, and whatever
// was looked up in it.
class FormatOverrideSet {
public:
    // No overrides.
    FormatOverrideSet() = default;
    // Reads the text in linear time and sorts its entries. The language is kept and means nothing here.
    FormatOverrideSet(UStringRef<UTF8> const& text, UStringRef<UTF8> const& language);
    template <ExpiringUTF8Text Text>
    FormatOverrideSet(Text&& text, UStringRef<UTF8> const& language) = delete;

    // Takes time in the logarithm of the number of entries.
    bool HasOverride(UStringRef<UTF8> const& key) const { return Find(key) != nullptr; }
    // Of several entries for one key the smallest text counts, by its bytes, wherever it stands in the file.
    // Throws FormatOverrideNotFound when there is none.
    UStringRef<UTF8> GetOverride(UStringRef<UTF8> const& key) const;
    // The entry that GetOverride takes; null when there is none. Valid as long as the set.
    FormatOverride const* Find(UStringRef<UTF8> const& key) const;

    // By key, then by text, in the order of their bytes.
    ConstArrayOf<FormatOverride> Overrides() const {
        return ConstArrayOf<FormatOverride>(m_overrides.data(), m_overrides.data() + m_overrides.size());
    }
    UStringRef<UTF8> Language() const { return m_language.Ref(); }

private:
    std::vector<FormatOverride> m_overrides;
    CopiedUString<UTF8> m_language;
};
