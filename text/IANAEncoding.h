#pragma once

#include "text/Encodings.h"

// The encoding with its name in lower case and, where the name is a known alias, under its canonical name:
// "Latin1" and "ISO_8859-1" become "iso-8859-1", "ASCII" becomes "us-ascii", "KOI8-R" becomes "koi8-r".
//
// Two encodings are equal (operator==) when their normalized names are the same.
IANANamedTextEncoding NormalizeIANAEncoding(IANANamedTextEncoding encoding);
