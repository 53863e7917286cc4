#pragma once

#include "foundation/ExceptionPL.h"
#include "text/AutoUString.h"

// A text that is no sequence of hexadecimal digit pairs: "Input is not valid hexadecimal.".
class NotValidHEX : public ExceptionPL {
public:
    explicit NotValidHEX(bool mark = false);

    // A mark for whoever makes one; false in all that are thrown here.
    bool Mark() const { return m_mark; }

private:
    bool m_mark;
};

// Two lower-case digits for each byte.
AutoUString<UTF8> MakeHexFromBinary8Bit(UStringRef<Binary8Bit> const& bytes);

// One byte for each pair of digits of either case. Throws NotValidHEX for an odd number of digits and for
// any other character.
AutoUString<Binary8Bit> MakeBinary8BitFromHex(UStringRef<UTF8> const& text);
