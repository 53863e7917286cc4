#pragma once

#include "text/Encodings.h"

#include <string>

// The encodings that the process works with: the local one, UTF-8, and the one of the files and messages that
// are exchanged with other machines, which is UTF-8 too. They are set up once, by InitializeEncoding or, if a
// getter comes first, from the locale then in force. That has to happen before a second thread asks; what the
// getters of names return lives for ever and changes only with InitializeEncoding.

// Takes `localName` for the local encoding. With `preferUTF8` the process goes over to the locale
// "en_US.UTF-8" in all categories, and the local encoding is "utf-8"; if that locale is not installed,
// everything stays as without the flag. Throws ConstDataCapacityExceeded for a name of more than 48 bytes,
// and has changed nothing then.
void InitializeEncoding(std::string const& localName, bool preferUTF8);

std::string const& GetLocalEncodingName();
IANANamedTextEncoding const& GetLocalEncoding();

// "UTF-8"
std::string const& GetUTF8EncodingName();
IANANamedTextEncoding const& GetUTF8Encoding();

// "UTF-8": the same on every machine, whatever its locale.
std::string const& GetVXFEncodingName();
IANANamedTextEncoding const& GetVXFNamedTextEncoding();

// Name of the encoding of the locale now in force, such as "ISO-8859-1"; "ANSI_X3.4-1968" in the "C" locale.
std::string GetDefaultCharacterSetName();
