#pragma once

#include "text/UStringRef.h"

#include <string>

// How names of character sets are standardised and compared, with the alias table of the converter service.
// Names are compared as that service does: case, punctuation and leading zeros of numbers do not count
// ("ms949" is "MS-949"). A name with a NUL inside is known to nobody.

// The one name that stands for all aliases of a set: "windows-949-2000" for the Korean ones, else the name of
// the IANA registry, else "windows-874-2000" for the Thai ones. A name that is none of these comes back as it
// stands.
std::string StandardizedCharacterSetName(std::string const& name);

// The same for a name in UTF-8; one that is not ASCII comes back as it stands.
std::string StandardizedCharacterSetName(UStringRef<UTF8> const& name);

// Whether two names mean the same set. Two empty names do; an empty one and another do not, and neither does
// a name that is not ASCII.
bool EquivalentCharacterSets(UStringRef<UTF8> const& a, UStringRef<UTF8> const& b);
