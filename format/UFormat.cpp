#include "format/UFormat.h"

FormatPlusArguments<0> UFormat(char const* text) {
    UStringRef<UTF8> const view = MakeUTF8Ref(text);
    return UFormat(view, view);
}

FormatPlusArguments<0> UFormat(UStringRef<UTF8> const& key, UStringRef<UTF8> const& defaultText) {
    return FormatPlusArguments<0>(key, defaultText);
}
