#pragma once

#include "text/UStringRef.h"

#include <string>

// How names of character sets are standardised and compared, with the alias table of the converter service.
// Names are compared as that service does: case, punctuation and leading zeros of numbers do not count
// ("ms949" is "MS-949"). A name with a NUL inside is known to nobody.

// The name that stands for the aliases of a set: "windows-949-2000" for the Korean ones, else the name of the
// IANA registry, else "windows-874-2000" for the Thai ones. A name that is none of these comes back as it
// stands.
//
// One standardised name changes when it is standardised again: "ibm-1363_P11B-1998" and its alias "cp1363"
// give "KS_C_5601-1987", which is itself one of the Korean names.
std::string StandardizedCharacterSetName(std::string const& name);

// The same for a name in UTF-8. Characters without a look of their own (U+200B, for instance) count for
// nothing: "utf", U+200B, "8" gives "UTF-8". A name with any other character outside ASCII, or with bytes
// that are not UTF-8, comes back as it stands.
std::string StandardizedCharacterSetName(UStringRef<UTF8> const& name);

// Whether two names mean the same set. Two empty names do; an empty one and another do not, and neither does
// a name that the function above leaves alone for its characters. A name of nothing but punctuation and
// characters without a look is not empty, and equals every other one of that kind.
bool EquivalentCharacterSets(UStringRef<UTF8> const& a, UStringRef<UTF8> const& b);
