#pragma once

#include "text/UStringRef.h"

#include <string_view>

// Names of the IANA character set registry for the Unicode forms and the sets in common use on desktops, in
// byte order; each stands for itself in StandardizedCharacterSetName. The texts live for ever.
ConstArrayOf<std::string_view> GetIANACharacterSets();

// One line about a set of that list, such as "Western European, Latin 1"; empty for any other name. ASCII
// case of the name does not count.
std::string_view GetIANACharacterSetDescription(UStringRef<UTF8> const& name);
