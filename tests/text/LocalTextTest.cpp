#include "text/LocalText.h"

#include "foundation/Exceptions.h"
#include "text/UString.h"

#include "tests/support/Allocations.h"
#include "tests/support/LocaleScope.h"
#include "tests/support/UStringPrinting.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

using UnixPlatform::FromNativeUnicode;
using UnixPlatform::IANAEncodingName;
using UnixPlatform::MultiByteToWideConvertError;
using UnixPlatform::ToLocal8Bit;
using UnixPlatform::ToNativeUnicode;
using UnixPlatform::ToUTF16;
using UnixPlatform::ToUTF32;
using UnixPlatform::ToUTF8;
using UnixPlatform::WideToMultiByteConvertError;

constexpr char const* cLatin1 = "de_DE.ISO-8859-1";
constexpr char const* cGermanUTF8 = "de_DE.UTF-8";
constexpr char const* cJapanese = "ja_JP.EUC-JP";

using Units16 = std::vector<UTF16::Unit>;
using Units32 = std::vector<UTF32::Unit>;

std::string Bytes(UStringRef<Local8Bit> const& text) {
    return std::string(text.begin(), text.end());
}
std::string Bytes(UStringRef<UTF8> const& text) {
    return std::string(text.begin(), text.end());
}
Units16 Units(UStringRef<UTF16> const& text) {
    return Units16(text.begin(), text.end());
}
Units32 Units(UStringRef<UTF32> const& text) {
    return Units32(text.begin(), text.end());
}

UStringRef<UTF16> Ref(Units16 const& units) {
    return UStringRef<UTF16>(UTF16(), units.data(), units.data() + units.size());
}
UStringRef<UTF32> Ref(Units32 const& units) {
    return UStringRef<UTF32>(UTF32(), units.data(), units.data() + units.size());
}
UStringRef<UTF8> U8(std::string const& text) {
    return MakeUTF8Ref(text);
}
UStringRef<Local8Bit> Local(std::string const& text) {
    return MakeLocalRef(text);
}

std::string EncodingName() {
    return MakeString(IANAEncodingName(Local8Bit()).Name());
}

// "Grün" in the encodings.
std::string const cInUTF8 = "Gr\xC3\xBCn";
std::string const cInLatin1 = "Gr\xFCn";
Units16 const cInUTF16 = {'G', 'r', 0xFC, 'n'};
Units32 const cInUTF32 = {'G', 'r', 0xFC, 'n'};

std::string const cEuro = "\xE2\x82\xAC";
std::string const cFace = "\xF0\x9F\x98\x80";

} // namespace

TEST(LocalEncoding, IsNamedAsTheLocaleNamesIt) {
    EXPECT_EQ(EncodingName(), "ANSI_X3.4-1968");
    {
        LocaleScope const locale("C.UTF-8");
        EXPECT_EQ(EncodingName(), "UTF-8");
    }
    {
        LocaleScope const locale(cLatin1);
        EXPECT_EQ(EncodingName(), "ISO-8859-1");
    }
    LocaleScope const locale(cJapanese);
    EXPECT_EQ(EncodingName(), "EUC-JP");
}

TEST(LocalEncoding, IsAskedForAnewAtEachCall) {
    EXPECT_THROW(ToLocal8Bit(U8(cInUTF8)), WideToMultiByteConvertError);
    {
        LocaleScope const locale(cLatin1);
        EXPECT_EQ(Bytes(ToLocal8Bit(U8(cInUTF8))), cInLatin1);
    }
    {
        LocaleScope const locale(cGermanUTF8);
        EXPECT_EQ(Bytes(ToLocal8Bit(U8(cInUTF8))), cInUTF8);
    }
    EXPECT_THROW(ToLocal8Bit(U8(cInUTF8)), WideToMultiByteConvertError);
}

TEST(LocalText, IsUTF8InAUTF8Locale) {
    for (char const* const name : {"C.UTF-8", cGermanUTF8}) {
        LocaleScope const locale(name);
        std::string const text = cInUTF8 + cEuro + cFace;
        EXPECT_EQ(Bytes(ToUTF8(Local(text))), text);
        EXPECT_EQ(Bytes(ToLocal8Bit(U8(text))), text);
        EXPECT_EQ(Units(ToUTF32(Local(cFace))), Units32({0x1F600}));
        EXPECT_EQ(Units(ToUTF16(Local(cFace))), Units16({0xD83D, 0xDE00}));
        EXPECT_EQ(Bytes(ToLocal8Bit(Ref(Units32{0x1F600}))), cFace);
        EXPECT_EQ(Bytes(ToLocal8Bit(Ref(Units16{0xD83D, 0xDE00}))), cFace);
    }
}

TEST(LocalText, PassesUTF8UncheckedInAUTF8Locale) {
    LocaleScope const locale(cGermanUTF8);
    for (std::string const text : {"\xFF\xFE", "\xC3", "\x80", "\xED\xA0\x80", "ab\xC0\x80"}) {
        EXPECT_EQ(Bytes(ToUTF8(Local(text))), text);
        EXPECT_EQ(Bytes(ToLocal8Bit(U8(text))), text);
    }
}

TEST(LocalText, KeepsNulsInTheCopyOfAUTF8Locale) {
    LocaleScope const locale("C.UTF-8");
    std::string const text("a\0b", 3);
    EXPECT_EQ(Bytes(ToUTF8(Local(text))), text);
    EXPECT_EQ(Bytes(ToLocal8Bit(U8(text))), text);
}

TEST(LocalText, IsCheckedOnTheWayToWiderFormsInAUTF8Locale) {
    LocaleScope const locale("C.UTF-8");
    EXPECT_THROW(ToUTF16(Local("\xFF")), MultiByteToWideConvertError);
    EXPECT_THROW(ToUTF32(Local("\xC3")), MultiByteToWideConvertError);
    EXPECT_THROW(ToLocal8Bit(Ref(Units32{0xD800})), WideToMultiByteConvertError);
    EXPECT_THROW(ToLocal8Bit(Ref(Units32{0xFFFFFFFF})), WideToMultiByteConvertError);
    EXPECT_THROW(ToLocal8Bit(Ref(Units16{0xD800})), InvalidTextEncoding);
}

TEST(LocalText, IsLatin1InALatin1Locale) {
    LocaleScope const locale(cLatin1);
    EXPECT_EQ(Bytes(ToUTF8(Local(cInLatin1))), cInUTF8);
    EXPECT_EQ(Units(ToUTF16(Local(cInLatin1))), cInUTF16);
    EXPECT_EQ(Units(ToUTF32(Local(cInLatin1))), cInUTF32);
    EXPECT_EQ(Bytes(ToLocal8Bit(U8(cInUTF8))), cInLatin1);
    EXPECT_EQ(Bytes(ToLocal8Bit(Ref(cInUTF16))), cInLatin1);
    EXPECT_EQ(Bytes(ToLocal8Bit(Ref(cInUTF32))), cInLatin1);
}

TEST(LocalText, ConvertsEveryByteOfLatin1) {
    LocaleScope const locale(cLatin1);
    for (unsigned int byte = 1; byte < 256; ++byte) {
        std::string const local(1, static_cast<char>(byte));
        EXPECT_EQ(Units(ToUTF32(Local(local))), Units32({byte}));
        EXPECT_EQ(Bytes(ToLocal8Bit(Ref(Units32{byte}))), local);
    }
}

TEST(LocalText, RefusesACharacterThatTheLocaleDoesNotHave) {
    LocaleScope const locale(cLatin1);
    EXPECT_THROW(ToLocal8Bit(U8(cEuro)), WideToMultiByteConvertError);
    EXPECT_THROW(ToLocal8Bit(U8("abc" + cFace + "abc")), WideToMultiByteConvertError);
    EXPECT_THROW(ToLocal8Bit(Ref(Units16{0x100})), WideToMultiByteConvertError);
    EXPECT_THROW(ToLocal8Bit(Ref(Units32{0x100})), WideToMultiByteConvertError);
}

TEST(LocalText, RefusesUTF8ThatIsNoText) {
    LocaleScope const locale(cLatin1);
    EXPECT_THROW(ToLocal8Bit(U8("\xFF")), InvalidTextEncoding);
    EXPECT_THROW(ToLocal8Bit(U8("abc\xC3")), InvalidTextEncoding);
}

TEST(LocalText, DoesNotHaveSurrogatesAndValuesAboveTheHighest) {
    for (char const* const name : {"C", cLatin1, cJapanese}) {
        LocaleScope const locale(name);
        EXPECT_THROW(ToLocal8Bit(U8("\xED\xA0\x80")), WideToMultiByteConvertError);
        EXPECT_THROW(ToLocal8Bit(U8("\xF4\x90\x80\x80")), WideToMultiByteConvertError);
        EXPECT_THROW(ToLocal8Bit(Ref(Units32{0xD800})), WideToMultiByteConvertError);
        EXPECT_THROW(ToLocal8Bit(Ref(Units32{0x110000})), WideToMultiByteConvertError);
        EXPECT_THROW(ToLocal8Bit(Ref(Units16{0xD800})), InvalidTextEncoding);
    }
}

TEST(LocalText, ConvertsASCIIInTheCLocale) {
    EXPECT_EQ(Bytes(ToUTF8(Local("plain ~"))), "plain ~");
    EXPECT_EQ(Bytes(ToLocal8Bit(U8("plain ~"))), "plain ~");
    EXPECT_THROW(ToLocal8Bit(U8(cInUTF8)), WideToMultiByteConvertError);
}

TEST(LocalText, IsNotMadeOfBytesAboveASCIIInTheCLocale) {
    for (unsigned int byte = 0x80; byte < 256; ++byte) {
        std::string const local{'a', static_cast<char>(byte)};
        EXPECT_THROW(ToUTF8(Local(local)), MultiByteToWideConvertError) << byte;
        EXPECT_THROW(ToUTF16(Local(local)), MultiByteToWideConvertError) << byte;
        EXPECT_THROW(ToUTF32(Local(local)), MultiByteToWideConvertError) << byte;
    }
}

TEST(LocalText, LeavesRoomForANul) {
    for (char const* const name : {"C.UTF-8", cLatin1}) {
        LocaleScope const locale(name);
        for (std::size_t const size : {64U, 1000U}) {
            std::string const text(size, 'x');
            EXPECT_EQ(ToLocal8Bit(U8(text)).CapacityInUnits(), size + 1);
            EXPECT_EQ(FromNativeUnicode(Ref(Units32(size, 'x'))).CapacityInUnits(), size + 1);
        }
    }
}

TEST(LocalText, ConvertsAMultiByteEncoding) {
    LocaleScope const locale(cJapanese);
    std::string const kanjiInUTF8 = "\xE6\xBC\xA2";
    std::string const kanjiLocal = "\xB4\xC1";
    EXPECT_EQ(Bytes(ToLocal8Bit(U8("a" + kanjiInUTF8))), "a" + kanjiLocal);
    EXPECT_EQ(Bytes(ToUTF8(Local(kanjiLocal + "a"))), kanjiInUTF8 + "a");
    EXPECT_THROW(ToUTF8(Local("a\xB4")), MultiByteToWideConvertError);
    EXPECT_THROW(ToUTF8(Local("\xFF")), MultiByteToWideConvertError);
}

TEST(LocalText, EndsAtANulWhereTheCLibraryConverts) {
    LocaleScope const locale(cLatin1);
    EXPECT_EQ(Bytes(ToUTF8(Local(std::string("a\0\xFC", 3)))), "a");
    EXPECT_EQ(Bytes(ToLocal8Bit(U8(std::string("a\0b", 3)))), "a");
    EXPECT_EQ(Bytes(FromNativeUnicode(Ref(Units32{'a', 0, 0x20AC}))), "a");
    EXPECT_EQ(Units(ToNativeUnicode(Local(std::string("a\0b", 3)))), Units32({'a'}));
    EXPECT_TRUE(ToNativeUnicode(Local(std::string("\0b", 2))).empty());
}

TEST(LocalText, OfNothingIsNothing) {
    for (char const* const name : {"C", "C.UTF-8", cLatin1}) {
        LocaleScope const locale(name);
        EXPECT_TRUE(ToUTF8(UStringRef<Local8Bit>()).empty());
        EXPECT_TRUE(ToUTF16(UStringRef<Local8Bit>()).empty());
        EXPECT_TRUE(ToUTF32(UStringRef<Local8Bit>()).empty());
        EXPECT_TRUE(ToLocal8Bit(UStringRef<UTF8>()).empty());
        EXPECT_TRUE(ToLocal8Bit(UStringRef<UTF16>()).empty());
        EXPECT_TRUE(ToLocal8Bit(UStringRef<UTF32>()).empty());
    }
}

TEST(LocalText, ConvertsTextsOfEverySize) {
    for (char const* const name : {"C.UTF-8", cLatin1}) {
        LocaleScope const locale(name);
        std::string local;
        for (std::size_t size = 0; size < 300; ++size) {
            EXPECT_EQ(Bytes(ToLocal8Bit(ToUTF8(Local(local)))), local);
            EXPECT_EQ(Bytes(FromNativeUnicode(ToNativeUnicode(Local(local)))), local);
            local += static_cast<char>('a' + size % 26);
        }
    }
}

TEST(MakeLocalString, EndsWithANul) {
    LocaleScope const locale(cLatin1);
    EXPECT_STREQ(MakeLocalString<UTF8>(U8(cInUTF8)).c_str(), cInLatin1.c_str());
    EXPECT_STREQ(MakeLocalString<UTF16>(Ref(cInUTF16)).c_str(), cInLatin1.c_str());
    EXPECT_STREQ(MakeLocalString<UTF32>(Ref(cInUTF32)).c_str(), cInLatin1.c_str());
    EXPECT_STREQ(MakeLocalString<UTF8>(U8("")).c_str(), "");
    EXPECT_THROW(MakeLocalString<UTF8>(U8(cEuro)), WideToMultiByteConvertError);
}

TEST(MakeLocalString, EndsTextsOfEverySizeWithANul) {
    for (char const* const name : {"C.UTF-8", cLatin1}) {
        LocaleScope const locale(name);
        for (std::size_t size = 0; size < 200; ++size) {
            std::string const text(size, 'x');
            AutoNullTerminated<Local8Bit> const local = MakeLocalString<UTF8>(U8(text));
            EXPECT_EQ(local.SizeInUnits(), size);
            EXPECT_STREQ(local.c_str(), text.c_str());
        }
    }
}

TEST(MakeLocalString, AllocatesOnceInAUTF8Locale) {
    LocaleScope const locale("C.UTF-8");
    std::string const text(1000, 'x');
    unsigned long const before = AllocationCount();
    AutoNullTerminated<Local8Bit> const local = MakeLocalString<UTF8>(U8(text));
    EXPECT_EQ(AllocationCount() - before, 1U);
    EXPECT_STREQ(local.c_str(), text.c_str());
}

TEST(MakeLocalString, AllocatesOnceMoreForEachFormBetweenInOtherLocales) {
    LocaleScope const locale(cLatin1);
    std::string const text(1000, 'x');
    unsigned long const before = AllocationCount();
    AutoNullTerminated<Local8Bit> const local = MakeLocalString<UTF8>(U8(text));
    // The wide text and its copy for the C library stand between.
    EXPECT_EQ(AllocationCount() - before, 3U);
    EXPECT_STREQ(local.c_str(), text.c_str());
}

TEST(MakeLocalRef, ViewsTheBytesOfAText) {
    EXPECT_EQ(Bytes(MakeLocalRef("abc")), "abc");
    EXPECT_EQ(Bytes(MakeLocalRef(std::string("a\0b", 3))), std::string("a\0b", 3));
    EXPECT_TRUE(MakeLocalRef("").empty());
    EXPECT_EQ(MakeLocalRef(nullptr).begin(), nullptr);
    EXPECT_TRUE(MakeLocalRef(nullptr).empty());
}

TEST(MakeBinaryLocalString, KeepsTheBytesInEveryLocale) {
    UStringRef<Binary8Bit> const bytes(Binary8Bit(), "a\xFF\xC3\xBC"_data);
    for (char const* const name : {"C", cLatin1, cGermanUTF8, cJapanese}) {
        LocaleScope const locale(name);
        EXPECT_STREQ(MakeBinaryLocalString(bytes).c_str(), "a\xFF\xC3\xBC") << name;
    }
    EXPECT_STREQ(MakeBinaryLocalString(UStringRef<Binary8Bit>()).c_str(), "");
}
