#pragma once

#include "text/Ascii.h"
#include "text/AutoUString.h"
#include "text/Buffers.h"

// Folding of ASCII case into new texts and between cursors. Bytes that are no ASCII letters stay as they are.
namespace Ascii {

// A new text with the folded bytes of `source`.
AutoUString<UTF8> LowerCase(ConstData source);
AutoUString<UTF8> RaiseCase(ConstData source);

// Consume as many bytes as `target` has room for and write them folded.
void LowerCase(ConstBuffer& source, Buffer& target);
void RaiseCase(ConstBuffer& source, Buffer& target);

} // namespace Ascii
