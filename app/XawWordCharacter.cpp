#include <cctype>
#include <climits>
#include <cstdlib>

// What belongs to a word when the user selects one by a double click, for a widget library that looks for
// this name in the program; one that asks the C library instead goes by that, and this function changes
// nothing. It is found only with C linkage and default visibility: a hidden symbol is not exported.
extern "C" __attribute__((visibility("default"))) int _Xaw_iswalnum(wchar_t character);

// Judges by the first byte in the locale's encoding. A character that the locale cannot spell is no part of a
// word.
int _Xaw_iswalnum(wchar_t character) {
    char bytes[MB_LEN_MAX];
    return std::wctomb(bytes, character) > 0 && std::isalnum(static_cast<unsigned char>(bytes[0])) ? 1 : 0;
}
