#include "text/LocalText.h"

#include "foundation/Exceptions.h"
#include "text/IANAEncoding.h"
#include "text/Transcoder.h"

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <langinfo.h>
#include <string>

// The C library's functions take zero-terminated texts and wchar_t, so texts are copied into C++ strings for
// them. wchar_t is a type of its own with the size of a UTF-32 unit: units are converted one by one, never by
// a cast of the pointer. Local text is made with room for one byte more, so that a terminator fits without a
// copy.

static_assert(sizeof(wchar_t) == sizeof(UTF32::Unit));

namespace {

// What the C library's conversions return for a failure.
constexpr std::size_t cConversionFailed = cAllOnes;

template <class E>
std::size_t Checked(std::size_t result) {
    if (result == cConversionFailed) throw E();
    return result;
}

// The locale is asked each time, since it can be changed at any moment; asking is cheap.
bool LocalEncodingIsUTF8() {
    IANANamedTextEncoding const local = NormalizeIANAEncoding(UnixPlatform::IANAEncodingName(Local8Bit()));
    return local.Name() == "utf-8"_data || local.Name() == "utf8"_data;
}

AutoUString<Local8Bit> LocalBytes(ConstData text) {
    std::size_t const size = text.Size();
    AutoUString<Local8Bit> local(Local8Bit(), size, size + 1);
    if (size != 0) std::memcpy(local.begin(), text.begin(), size);
    return local;
}

AutoUString<UTF8> UTF8Bytes(UStringRef<Local8Bit> const& text) {
    AutoUString<UTF8> bytes(UTF8(), text.SizeInUnits(), std::size_t{0});
    if (!text.empty()) std::memcpy(bytes.begin(), text.begin(), text.SizeInBytes());
    return bytes;
}

} // namespace

namespace UnixPlatform {

IANANamedTextEncoding IANAEncodingName(Local8Bit) {
    char const* const name = nl_langinfo(CODESET);
    return IANANamedTextEncoding(MakeUTF8Ref(name));
}

AutoUString<UTF8> ToUTF8(UStringRef<Local8Bit> const& text) {
    if (LocalEncodingIsUTF8()) return UTF8Bytes(text);
    return Transcode<UTF8, UTF32>(ToNativeUnicode(text));
}

AutoUString<UTF16> ToUTF16(UStringRef<Local8Bit> const& text) {
    return Transcode<UTF16, UTF32>(ToNativeUnicode(text));
}

AutoUString<UTF32> ToUTF32(UStringRef<Local8Bit> const& text) {
    return ToNativeUnicode(text);
}

AutoUString<Local8Bit> ToLocal8Bit(UStringRef<UTF8> const& text) {
    if (LocalEncodingIsUTF8()) return LocalBytes(text);
    return FromNativeUnicode(Transcode<UTF32, UTF8>(text));
}

AutoUString<Local8Bit> ToLocal8Bit(UStringRef<UTF16> const& text) {
    return FromNativeUnicode(Transcode<UTF32, UTF16>(text));
}

AutoUString<Local8Bit> ToLocal8Bit(UStringRef<UTF32> const& text) {
    return FromNativeUnicode(text);
}

AutoUString<UTF32> ToNativeUnicode(UStringRef<Local8Bit> const& text) {
    std::string const terminated(text.begin(), text.end());
    std::size_t const size =
        Checked<MultiByteToWideConvertError>(std::mbstowcs(nullptr, terminated.c_str(), 0));
    std::wstring wide(size, L'\0');
    std::size_t const written =
        Checked<MultiByteToWideConvertError>(std::mbstowcs(wide.data(), terminated.c_str(), size));
    AutoUString<UTF32> unicode(UTF32(), written, std::size_t{0});
    std::transform(wide.begin(), wide.begin() + static_cast<std::ptrdiff_t>(written), unicode.begin(),
                   [](wchar_t unit) { return static_cast<UTF32::Unit>(unit); });
    return unicode;
}

AutoUString<Local8Bit> FromNativeUnicode(UStringRef<UTF32> const& text) {
    std::wstring wide(text.SizeInUnits(), L'\0');
    std::transform(text.begin(), text.end(), wide.begin(),
                   [](UTF32::Unit unit) { return static_cast<wchar_t>(unit); });
    std::size_t const size = Checked<WideToMultiByteConvertError>(std::wcstombs(nullptr, wide.c_str(), 0));
    AutoUString<Local8Bit> local(Local8Bit(), size, size + 1);
    Checked<WideToMultiByteConvertError>(std::wcstombs(local.begin(), wide.c_str(), size));
    return local;
}

} // namespace UnixPlatform

UStringRef<Local8Bit> MakeLocalRef(char const* text) {
    return text ? UStringRef<Local8Bit>(Local8Bit(), text, text + std::strlen(text))
                : UStringRef<Local8Bit>();
}

UStringRef<Local8Bit> MakeLocalRef(std::string const& text) {
    return UStringRef<Local8Bit>(Local8Bit(), text.data(), text.data() + text.size());
}

AutoNullTerminated<Local8Bit> MakeBinaryLocalString(UStringRef<Binary8Bit> const& bytes) {
    return AutoNullTerminated<Local8Bit>(LocalBytes(bytes));
}
