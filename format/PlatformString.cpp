#include "format/PlatformString.h"

#include "format/MakeUString.h"
#include "text/LocalText.h"

namespace {

AutoNullTerminated<Local8Bit> LocalOrMarker(UStringRef<UTF8> const& text) {
    try {
        return MakeLocalString(text);
    } catch (...) {
    }
    return MakeLocalString(MakeUString(UFormat("<Invalid String>")).Ref());
}

} // namespace

AutoNullTerminated<Local8Bit> MakePlatformString(FormatPlusArguments<0> const& format) {
    return LocalOrMarker(MakeUString(format));
}

AutoNullTerminated<Local8Bit> MakePlatformString(FormatPlusArguments<1> const& format) {
    return LocalOrMarker(MakeUString(format));
}

AutoNullTerminated<Local8Bit> MakePlatformString(FormatPlusArguments<2> const& format) {
    return LocalOrMarker(MakeUString(format));
}
