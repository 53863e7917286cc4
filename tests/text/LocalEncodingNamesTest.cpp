#include "text/LocalText.h"

#include "format/PlatformString.h"
#include "foundation/Exceptions.h"
#include "text/UString.h"

#include "tests/support/UStringPrinting.h"

#include <gtest/gtest.h>
#include <langinfo.h>

#include <string>

// The local encoding under names that no installed locale bears. Only the name is changed: the C library
// converts as in the "C" locale, which knows no byte above 0x7F.

namespace {

std::string encodingName;

void SetEncodingName(std::string const& name) {
    encodingName = name;
}

std::string const cInUTF8 = "Gr\xC3\xBCn";
std::string const cLongestName(48, 'x');
std::string const cTooLongName(49, 'x');

std::string Bytes(UStringRef<Local8Bit> const& text) {
    return std::string(text.begin(), text.end());
}

} // namespace

// Stands in for the C library's.
extern "C" char* nl_langinfo(nl_item) noexcept {
    return encodingName.data();
}

TEST(LocalEncoding, CountsAsUTF8UnderEachSpellingOfItsName) {
    for (char const* const name : {"UTF-8", "utf-8", "Utf-8", "UTF8", "utf8", "uTf8"}) {
        SetEncodingName(name);
        EXPECT_EQ(UnixPlatform::ToUTF8(MakeLocalRef(cInUTF8)), MakeUTF8Ref(cInUTF8)) << name;
        EXPECT_EQ(Bytes(UnixPlatform::ToLocal8Bit(MakeUTF8Ref(cInUTF8))), cInUTF8) << name;
    }
}

TEST(LocalEncoding, DoesNotCountAsUTF8UnderAnyOtherName) {
    for (char const* const name :
         {"", "UTF", "UTF-", "UTF-7", "UTF-16", "UTF_8", "UTF-88", "UTF88", "XUTF-8", "UTF-8 ", "ASCII"}) {
        SetEncodingName(name);
        EXPECT_THROW(UnixPlatform::ToUTF8(MakeLocalRef(cInUTF8)), UnixPlatform::MultiByteToWideConvertError)
            << name;
        EXPECT_THROW(UnixPlatform::ToLocal8Bit(MakeUTF8Ref(cInUTF8)),
                     UnixPlatform::WideToMultiByteConvertError)
            << name;
    }
}

TEST(LocalEncoding, MayHaveANameOf48Bytes) {
    SetEncodingName(cLongestName);
    EXPECT_EQ(MakeString(UnixPlatform::IANAEncodingName(Local8Bit()).Name()), cLongestName);
    EXPECT_EQ(UnixPlatform::ToUTF8(MakeLocalRef("plain")), "plain"_utf8);
    EXPECT_EQ(Bytes(UnixPlatform::ToLocal8Bit("plain"_utf8)), "plain");
    EXPECT_STREQ(MakePlatformString(UFormat("plain")).c_str(), "plain");
    EXPECT_STREQ(MakePlatformString(UFormat("Gr\xC3\xBCn")).c_str(), "<Invalid String>");
}

TEST(LocalEncoding, CannotHaveALongerName) {
    SetEncodingName(cTooLongName);
    EXPECT_THROW(UnixPlatform::IANAEncodingName(Local8Bit()), ConstDataCapacityExceeded);
    EXPECT_THROW(UnixPlatform::ToUTF8(MakeLocalRef("plain")), ConstDataCapacityExceeded);
    EXPECT_THROW(UnixPlatform::ToLocal8Bit("plain"_utf8), ConstDataCapacityExceeded);
    EXPECT_THROW(MakeLocalString("plain"_utf8), ConstDataCapacityExceeded);
}

TEST(LocalEncoding, IsNotAskedForItsNameByTheWiderForms) {
    SetEncodingName(cTooLongName);
    AutoUString<UTF16> const utf16 = UnixPlatform::ToUTF16(MakeLocalRef("plain"));
    AutoUString<UTF32> const utf32 = UnixPlatform::ToUTF32(MakeLocalRef("plain"));
    EXPECT_EQ(Bytes(UnixPlatform::ToLocal8Bit(utf16)), "plain");
    EXPECT_EQ(Bytes(UnixPlatform::ToLocal8Bit(utf32)), "plain");
}

// Its marker for texts without a local form needs the encoding's name as well.
TEST(MakePlatformString, FailsWhenItsMarkerHasNoLocalFormEither) {
    SetEncodingName(cTooLongName);
    EXPECT_THROW(MakePlatformString(UFormat("plain")), ConstDataCapacityExceeded);
    EXPECT_THROW(MakePlatformString(UFormat("{a}") % "plain"_utf8), ConstDataCapacityExceeded);
}
