#pragma once

#include "text/Data.h"

// Whether the bytes are well-formed UTF-8: every character complete, in its shortest form, none of them a
// surrogate or above 10FFFF. No bytes at all are. Stricter than the transcoders, which only ask whether a
// text can be read: this is for bytes of unknown meaning.
bool IsUTF8(ConstData bytes);
