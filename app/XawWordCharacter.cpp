#include <cctype>
#include <climits>
#include <cstdlib>

// A text widget asks this function what belongs to a word, when the user selects one by a double click. It
// takes the place of the widget library's own, so it has the library's name, C linkage, and default
// visibility: a hidden symbol would not be found.
extern "C" __attribute__((visibility("default"))) int _Xaw_iswalnum(wchar_t character);

// Judges by the first byte in the locale's encoding. A character that the locale cannot spell is no part of a
// word.
int _Xaw_iswalnum(wchar_t character) {
    char bytes[MB_LEN_MAX];
    return std::wctomb(bytes, character) > 0 && std::isalnum(static_cast<unsigned char>(bytes[0])) ? 1 : 0;
}
