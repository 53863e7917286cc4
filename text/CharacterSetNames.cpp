#include "text/CharacterSetNames.h"

#include "text/CharacterSet.h"
#include "text/ICU.h"

#include <algorithm>
#include <optional>

namespace {

constexpr char const* cKoreanNames[] = {
    "windows-949-2000", "windows-949", "KS_C_5601-1987", "KS_C_5601-1989", "KSC_5601",
    "csKSC56011987",    "korean",      "iso-ir-149",     "ms949",          "x-KSC5601",
};

constexpr char const* cThaiNames[] = {"windows-874-2000", "TIS-620", "windows-874", "MS874", "x-windows-874"};

// The converter service reads a name up to its first NUL, and would take a longer one for its beginning.
bool HasNUL(std::string const& name) {
    return name.find('\0') != std::string::npos;
}

bool IsSameName(std::string const& a, std::string const& b) {
    if (HasNUL(a) || HasNUL(b)) return a == b;
    return ucnv_compareNames(a.c_str(), b.c_str()) == 0;
}

template <std::size_t count>
bool IsOneOf(std::string const& name, char const* const (&names)[count]) {
    return std::any_of(std::begin(names), std::end(names),
                       [&](char const* other) { return IsSameName(name, other); });
}

// Null when the registry has no name for it.
char const* IANAName(std::string const& name) {
    if (HasNUL(name)) return nullptr;
    UErrorCode code = U_ZERO_ERROR;
    return ucnv_getStandardName(name.c_str(), "IANA", &code);
}

// Empty for a name that is not ASCII.
std::optional<std::string> MakeAscii(UStringRef<UTF8> const& name) {
    CharacterSet const ascii("US-ASCII", CharacterSet::InvalidCharacterAction::Stop, false);
    AutoUString<Local8Bit> converted;
    if (!ascii.ConvertFromUTF8(name, converted).IsSuccess()) return std::nullopt;
    return std::string(converted.begin(), converted.end());
}

} // namespace

// The Korean names come before the registry: its name for some of them belongs to a table that lacks the
// syllables of the code page. The Thai ones come after it, since the registry's name serves for both.
std::string StandardizedCharacterSetName(std::string const& name) {
    if (IsOneOf(name, cKoreanNames)) return "windows-949-2000";
    if (char const* const registered = IANAName(name)) return registered;
    if (IsOneOf(name, cThaiNames)) return "windows-874-2000";
    return name;
}

std::string StandardizedCharacterSetName(UStringRef<UTF8> const& name) {
    std::optional<std::string> const ascii = MakeAscii(name);
    return ascii ? StandardizedCharacterSetName(*ascii) : MakeString(name);
}

bool EquivalentCharacterSets(UStringRef<UTF8> const& a, UStringRef<UTF8> const& b) {
    if (a.empty() || b.empty()) return a.empty() && b.empty();
    std::optional<std::string> const first = MakeAscii(a);
    std::optional<std::string> const second = MakeAscii(b);
    if (!first || !second) return false;
    return IsSameName(StandardizedCharacterSetName(*first), StandardizedCharacterSetName(*second));
}
