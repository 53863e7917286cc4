#include "files/LocalPath.h"

#include "foundation/Exceptions.h"
#include "text/IsUTF8.h"
#include "text/UString.h"

AutoUString<UTF8> ReadByLocale(UStringRef<Local8Bit> const& name) {
    try {
        return UnixPlatform::ToUTF8(name);
    } catch (UnixPlatform::MultiByteToWideConvertError const&) {
        return AutoUString<UTF8>();
    }
}

bool LeadsBackTo(UStringRef<Local8Bit> const& name, UStringRef<UTF8> const& text) {
    if (text.empty() || !IsUTF8(text)) return false;
    try {
        return UnixPlatform::ToLocal8Bit(text) == name;
    } catch (UnixPlatform::WideToMultiByteConvertError const&) {
        return false;
    }
}

AutoUString<UTF8> FaithfulTextOf(UStringRef<Local8Bit> const& name) {
    AutoUString<UTF8> text = ReadByLocale(name);
    if (!LeadsBackTo(name, text)) text.clear();
    return text;
}
