#include "format/UFormat.h"

#include "format/FormatOverrideContext.h"

FormatPlusArguments<0> UFormat(char const* text) {
    UStringRef<UTF8> const view = MakeUTF8Ref(text);
    return UFormat(view, view);
}

FormatPlusArguments<0> UFormat(UStringRef<UTF8> const& key, UStringRef<UTF8> const& defaultText) {
    return UFormat(key, defaultText, GlobalFormatOverrideContext());
}

FormatPlusArguments<0> UFormat(UStringRef<UTF8> const& key, UStringRef<UTF8> const& defaultText,
                               FormatOverrideContext const& context) {
    return FormatPlusArguments<0>(key, context.Override(key, defaultText));
}
