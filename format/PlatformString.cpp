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

template <std::size_t N>
requires(N <= 2) AutoNullTerminated<Local8Bit> MakePlatformString(FormatPlusArguments<N> const& format) {
    return LocalOrMarker(MakeUString(format));
}

template AutoNullTerminated<Local8Bit> MakePlatformString(FormatPlusArguments<0> const&);
template AutoNullTerminated<Local8Bit> MakePlatformString(FormatPlusArguments<1> const&);
template AutoNullTerminated<Local8Bit> MakePlatformString(FormatPlusArguments<2> const&);
