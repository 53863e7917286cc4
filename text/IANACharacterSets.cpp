#include "text/IANACharacterSets.h"

#include "text/UStringFunctions.h"

#include <algorithm>
#include <array>

namespace {

struct CharacterSetEntry {
    std::string_view name;
    std::string_view description;
};

// Sorted by name, byte by byte.
constexpr CharacterSetEntry cEntries[] = {
    {"ANSI_X3.4-1968", "US-ASCII: seven bits, the letters of English"},
    {"BOCU-1", "Unicode in a compact form that keeps the order of the characters"},
    {"Big5", "Traditional Chinese"},
    {"Big5-HKSCS", "Traditional Chinese with the supplement of Hong Kong"},
    {"CESU-8", "Unicode in bytes, each half of a surrogate pair by itself"},
    {"EUC-KR", "Korean in one or two bytes"},
    {"Extended_UNIX_Code_Packed_Format_for_Japanese", "Japanese in one to three bytes, known as EUC-JP"},
    {"GB2312", "Simplified Chinese of 1980 in one or two bytes"},
    {"GBK", "Simplified and traditional Chinese in one or two bytes"},
    {"HZ-GB-2312", "Simplified Chinese in seven bits, switched by a tilde"},
    {"ISO-2022-CN", "Chinese in seven bits, switched by escape sequences"},
    {"ISO-2022-CN-EXT", "Chinese in seven bits, with further planes"},
    {"ISO-2022-JP", "Japanese in seven bits, switched by escape sequences"},
    {"ISO-2022-JP-2", "Japanese and other languages in seven bits"},
    {"ISO-2022-KR", "Korean in seven bits, switched by shift characters"},
    {"ISO-8859-10", "Nordic and Baltic languages, Latin 6"},
    {"ISO-8859-13", "Baltic languages, Latin 7"},
    {"ISO-8859-14", "Celtic languages, Latin 8"},
    {"ISO-8859-15", "Western European with the euro sign, Latin 9"},
    {"ISO_8859-1:1987", "Western European, Latin 1"},
    {"ISO_8859-2:1987", "Central European, Latin 2"},
    {"ISO_8859-3:1988", "Southern European, Latin 3"},
    {"ISO_8859-4:1988", "Northern European, Latin 4"},
    {"ISO_8859-5:1988", "Latin and Cyrillic"},
    {"ISO_8859-6:1987", "Latin and Arabic"},
    {"ISO_8859-7:1987", "Latin and Greek"},
    {"ISO_8859-8:1988", "Latin and Hebrew"},
    {"ISO_8859-9:1989", "Western European and Turkish, Latin 5"},
    {"KOI8-R", "Russian, eight bits"},
    {"KOI8-U", "Ukrainian and Russian"},
    {"SCSU", "Unicode in a compressed form"},
    {"Shift_JIS", "Japanese in one or two bytes, used on personal computers"},
    {"TIS-620", "Thai, the national standard"},
    {"UTF-16", "Unicode in 16-bit units, a byte order mark in front"},
    {"UTF-16BE", "Unicode in 16-bit units, the high byte first"},
    {"UTF-16LE", "Unicode in 16-bit units, the low byte first"},
    {"UTF-32", "Unicode in 32-bit units, a byte order mark in front"},
    {"UTF-32BE", "Unicode in 32-bit units, the high byte first"},
    {"UTF-32LE", "Unicode in 32-bit units, the low byte first"},
    {"UTF-7", "Unicode in seven bits, for mail"},
    {"UTF-8", "Unicode in one to four bytes, ASCII as it is"},
    {"gb18030", "Chinese national standard, covers all of Unicode"},
    {"macintosh", "Western European of older desktop systems"},
    {"windows-1250", "Central European code page of desktop systems"},
    {"windows-1251", "Cyrillic code page of desktop systems"},
    {"windows-1252", "Western European code page of desktop systems"},
    {"windows-1253", "Greek code page of desktop systems"},
    {"windows-1254", "Turkish code page of desktop systems"},
    {"windows-1255", "Hebrew code page of desktop systems"},
    {"windows-1256", "Arabic code page of desktop systems"},
    {"windows-1257", "Baltic code page of desktop systems"},
    {"windows-1258", "Vietnamese code page of desktop systems"},
};

constexpr auto cNames = [] {
    std::array<std::string_view, std::size(cEntries)> names;
    std::transform(std::begin(cEntries), std::end(cEntries), names.begin(),
                   [](CharacterSetEntry const& entry) { return entry.name; });
    return names;
}();

UStringRef<UTF8> MakeRef(std::string_view text) {
    auto const* first = reinterpret_cast<unsigned char const*>(text.data());
    return UStringRef<UTF8>(UTF8(), first, first + text.size());
}

} // namespace

ConstArrayOf<std::string_view> GetIANACharacterSets() {
    return {cNames.data(), cNames.data() + cNames.size()};
}

std::string_view GetIANACharacterSetDescription(UStringRef<UTF8> const& name) {
    auto const found =
        std::find_if(std::begin(cEntries), std::end(cEntries), [&](CharacterSetEntry const& entry) {
            return EqualIgnoringCase(MakeRef(entry.name), name);
        });
    return found == std::end(cEntries) ? std::string_view() : found->description;
}
