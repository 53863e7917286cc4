#include "text/CharacterSet.h"
#include "text/CodeUnits.h"
#include "text/ICU.h"
#include "text/UString.h"

#include "tests/support/UStringPrinting.h"

#include <gtest/gtest.h>

#include <iconv.h>

#include <unicode/uset.h>

#include <algorithm>
#include <memory>
#include <optional>
#include <random>
#include <string>
#include <vector>

namespace {

using Action = CharacterSet::InvalidCharacterAction;

constexpr Action cActions[] = {Action::Stop, Action::Escape, Action::Substitute};

std::string Repeat(std::string const& text, std::size_t count) {
    std::string repeated;
    repeated.reserve(text.size() * count);
    for (std::size_t i = 0; i < count; ++i) repeated += text;
    return repeated;
}

UStringRef<Local8Bit> MakeLocalRef(std::string const& bytes) {
    return UStringRef<Local8Bit>(Local8Bit(), bytes.data(), bytes.data() + bytes.size());
}

UStringRef<IANANamedTextEncoding> MakeNamedRef(std::string const& bytes) {
    return UStringRef<IANANamedTextEncoding>(IANANamedTextEncoding(), MakeConstData(bytes));
}

UStringRef<UTF16> MakeRef(std::u16string const& text, std::vector<std::uint16_t>& units) {
    units.assign(text.begin(), text.end());
    return UStringRef<UTF16>(UTF16(), units.data(), units.data() + units.size());
}

template <class Text>
std::string Bytes(Text const& text) {
    std::string bytes;
    for (auto const unit : text) bytes += static_cast<char>(unit);
    return bytes;
}

std::u16string Units(AutoUString<UTF16> const& text) {
    return std::u16string(text.begin(), text.end());
}

// What a conversion came to: its text or, if it failed, "!" with the code and the bad input.
std::string Outcome(CharacterSetResult const& result, std::string const& text) {
    if (result.IsSuccess()) return text;
    EXPECT_EQ(text, "") << "a failed conversion left a text";
    return "!" + std::to_string(result.ErrorCode()) + " " + result.InvalidText();
}

// The byte encodings of the argument's family come to the same.
std::string ToUTF8(CharacterSet const& set, std::string const& bytes) {
    AutoUString<UTF8> text("before"_utf8);
    CharacterSetResult const local = set.ConvertToUTF8(MakeLocalRef(bytes), text);
    std::string const outcome = Outcome(local, Bytes(text));
    AutoUString<UTF8> again("before"_utf8);
    CharacterSetResult const result = set.ConvertToUTF8(MakeNamedRef(bytes), again);
    EXPECT_EQ(Outcome(result, Bytes(again)), outcome);
    return outcome;
}

std::string FromUTF8(CharacterSet const& set, std::string const& utf8) {
    AutoUString<Local8Bit> text(MakeLocalRef("before"));
    CharacterSetResult const local = set.ConvertFromUTF8(MakeUTF8Ref(utf8), text);
    std::string const outcome = Outcome(local, Bytes(text));
    AutoUString<IANANamedTextEncoding> again(MakeNamedRef("before"));
    CharacterSetResult const result = set.ConvertFromUTF8(MakeUTF8Ref(utf8), again);
    EXPECT_EQ(Outcome(result, Bytes(again)), outcome);
    return outcome;
}

std::string FromUTF16(CharacterSet const& set, std::u16string const& units) {
    std::vector<std::uint16_t> storage;
    AutoUString<Local8Bit> text(MakeLocalRef("before"));
    CharacterSetResult const result = set.ConvertFromUTF16(MakeRef(units, storage), text);
    return Outcome(result, Bytes(text));
}

// A converter of the service's own, set up by hand.
class DirectConverter {
public:
    DirectConverter(std::string const& name, Action action) {
        UErrorCode code = U_ZERO_ERROR;
        m_converter = ucnv_open(name.c_str(), &code);
        UConverterFromUCallback const fromUnicode[] = {UCNV_FROM_U_CALLBACK_STOP, UCNV_FROM_U_CALLBACK_ESCAPE,
                                                       UCNV_FROM_U_CALLBACK_SUBSTITUTE};
        UConverterToUCallback const toUnicode[] = {UCNV_TO_U_CALLBACK_STOP, UCNV_TO_U_CALLBACK_ESCAPE,
                                                   UCNV_TO_U_CALLBACK_SUBSTITUTE};
        auto const index = static_cast<std::size_t>(action);
        ucnv_setFromUCallBack(m_converter, fromUnicode[index], nullptr, nullptr, nullptr, &code);
        ucnv_setToUCallBack(m_converter, toUnicode[index], nullptr, nullptr, nullptr, &code);
        UChar const questionMark[] = {'?', 0};
        if (action == Action::Substitute) ucnv_setSubstString(m_converter, questionMark, 1, &code);
        EXPECT_TRUE(U_SUCCESS(code)) << name;
    }
    DirectConverter(DirectConverter const&) = delete;
    DirectConverter& operator=(DirectConverter const&) = delete;
    ~DirectConverter() { ucnv_close(m_converter); }

    // The UTF-8 form, or "!" and the code.
    std::string ToUTF8(std::string const& bytes) const {
        UErrorCode code = U_ZERO_ERROR;
        std::vector<UChar> units(bytes.size() * 8 + 8);
        auto const size = ucnv_toUChars(m_converter, units.data(), static_cast<std::int32_t>(units.size()),
                                        bytes.data(), static_cast<std::int32_t>(bytes.size()), &code);
        if (U_FAILURE(code)) return "!" + std::to_string(code);
        std::vector<char> text(static_cast<std::size_t>(size) * 3 + 1);
        std::int32_t textSize = 0;
        u_strToUTF8(text.data(), static_cast<std::int32_t>(text.size()), &textSize, units.data(), size,
                    &code);
        EXPECT_TRUE(U_SUCCESS(code));
        return std::string(text.data(), static_cast<std::size_t>(textSize));
    }

    std::string FromUTF16(std::u16string const& text) const {
        UErrorCode code = U_ZERO_ERROR;
        std::vector<UChar> const units(text.begin(), text.end());
        std::vector<char> bytes(text.size() * 16 + 16);
        auto const size = ucnv_fromUChars(m_converter, bytes.data(), static_cast<std::int32_t>(bytes.size()),
                                          units.data(), static_cast<std::int32_t>(units.size()), &code);
        if (U_FAILURE(code)) return "!" + std::to_string(code);
        return std::string(bytes.data(), static_cast<std::size_t>(size));
    }

private:
    UConverter* m_converter;
};

// By the C library's converter; nothing when it refuses.
std::optional<std::string> ByIconv(char const* to, char const* from, std::string const& text) {
    iconv_t const converter = iconv_open(to, from);
    EXPECT_NE(converter, reinterpret_cast<iconv_t>(-1)) << to << " from " << from;
    std::string source = text;
    std::string target(text.size() * 8 + 8, '\0');
    char* next = source.data();
    std::size_t left = source.size();
    char* room = target.data();
    std::size_t roomLeft = target.size();
    std::size_t const result = iconv(converter, &next, &left, &room, &roomLeft);
    // Writes what waited for an accent that might have followed.
    iconv(converter, nullptr, nullptr, &room, &roomLeft);
    iconv_close(converter);
    if (result == static_cast<std::size_t>(-1)) return std::nullopt;
    return target.substr(0, target.size() - roomLeft);
}

struct Sample {
    std::string set;
    char const* iconvName;
    std::string utf8;
    std::string bytes;
};

std::vector<Sample> const cSamples = {
    {"US-ASCII", "US-ASCII", "~plain~", "~plain~"},
    {"iso-8859-1", "ISO-8859-1", "Gr\u00FC\u00DFe", "Gr\xFC\xDF\x65"},
    {"windows-874", "CP874", "\u0E44\u0E17\u0E22", "\xE4\xB7\xC2"},
    {"windows-932", "CP932", "\u65E5\u672C\u8A9E\uFF71", "\x93\xFA\x96\x7B\x8C\xEA\xB1"},
    {"windows-936", "CP936", "\u4E2D\u6587", "\xD6\xD0\xCE\xC4"},
    {"windows-949", "CP949", "\uD55C\uAD6D\uC5B4 \uB620", "\xC7\xD1\xB1\xB9\xBE\xEE \x8C\x63"},
    {"windows-950", "CP950", "\u4E2D\u6587", "\xA4\xA4\xA4\xE5"},
    {"windows-1250", "CP1250", "\u017Dlu\u0165ou\u010Dk\u00FD", "\x8Elu\x9Dou\xE8k\xFD"},
    {"windows-1251", "CP1251", "\u041F\u0440\u0438\u0432\u0435\u0442", "\xCF\xF0\xE8\xE2\xE5\xF2"},
    {"windows-1252", "CP1252", "Gr\u00FC\u00DFe \u20AC", "Gr\xFC\xDF\x65 \x80"},
    {"windows-1253", "CP1253", "\u0393\u03B5\u03B9\u03AC", "\xC3\xE5\xE9\xDC"},
    {"windows-1254", "CP1254", "\u0130\u0131\u015F", "\xDD\xFD\xFE"},
    {"windows-1255", "CP1255", "\u05E9\u05DC\u05D5\u05DD", "\xF9\xEC\xE5\xED"},
    {"windows-1256", "CP1256", "\u0633\u0644\u0627\u0645", "\xD3\xE1\xC7\xE3"},
    {"windows-1257", "CP1257", "\u0104\u017Euolas", "\xC0\xFEuolas"},
    {"windows-1258", "CP1258", "\u0111\u20AB", "\xF0\xFE"},
};

// Every byte and, for a set of more, every pair of bytes that begins with one above 127.
std::vector<std::string> AllShortInputs(bool withPairs) {
    std::vector<std::string> inputs;
    for (unsigned int first = 0; first < 256; ++first) {
        inputs.push_back(std::string(1, static_cast<char>(first)));
        for (unsigned int second = 0; withPairs && first > 127 && second < 256; ++second)
            inputs.push_back({static_cast<char>(first), static_cast<char>(second)});
    }
    return inputs;
}

std::u16string AllCharacters() {
    std::u16string text;
    for (char32_t c = 0; c < 0x10000; ++c)
        if (c < 0xD800 || c > 0xDFFF) text += static_cast<char16_t>(c);
    return text + u"\U00010000\U0001F600\U00020000\U0010FFFF";
}

std::string MakeUTF8(std::u16string const& text) {
    return DirectConverter("UTF-8", Action::Stop).FromUTF16(text);
}

// Null for a set that cannot be made.
std::unique_ptr<CharacterSet> MakeUnlessRefused(std::string const& name, Action action) {
    try {
        return std::make_unique<CharacterSet>(name, action, false);
    } catch (ICUResult const&) {
        return nullptr;
    }
}

// By calls that are given at most `pieceSize` bytes of the text and `roomSize` bytes of room.
std::string InPieces(CharacterSet const& from, CharacterSet const& to, std::string const& text,
                     std::size_t pieceSize, std::size_t roomSize) {
    CharacterSet::Pivot pivot;
    std::string converted;
    char const* source = text.data();
    char const* const end = source + text.size();
    while (true) {
        std::string room(roomSize, '\0');
        char* next = room.data();
        char const* const pieceEnd = source + std::min(pieceSize, static_cast<std::size_t>(end - source));
        CharacterSetResult const result =
            from.Convert(source, pieceEnd, to, next, room.data() + room.size(), pivot, pieceEnd == end);
        converted.append(room.data(), next);
        if (result.ErrorCode() == U_BUFFER_OVERFLOW_ERROR) continue;
        if (!result.IsSuccess()) return "!" + std::to_string(result.ErrorCode());
        if (pieceEnd == end) return converted;
    }
}

std::string MakeUTF8(char32_t character) {
    UTF8::Unit bytes[CodeUnits::Form<UTF8>::longest];
    UTF8::Unit* end = bytes;
    CodeUnits::Form<UTF8>::Put(character, end);
    return std::string(bytes, end);
}

// The characters that the service has in the set's table.
std::u32string CharactersOf(CharacterSet const& set) {
    UErrorCode code = U_ZERO_ERROR;
    UConverter* const converter = ucnv_open(set.Name().c_str(), &code);
    USet* const table = uset_openEmpty();
    ucnv_getUnicodeSet(converter, table, UCNV_ROUNDTRIP_SET, &code);
    EXPECT_TRUE(U_SUCCESS(code)) << set.Name();
    std::u32string characters;
    UChar32 first = 0;
    UChar32 last = 0;
    // Behind the ranges stand pairs of characters, which have another size than 0.
    for (std::int32_t i = 0; uset_getItem(table, i, &first, &last, nullptr, 0, &code) == 0; ++i)
        for (auto c = static_cast<char32_t>(first); c <= static_cast<char32_t>(last); ++c)
            if (!CodeUnits::IsSurrogate(c)) characters += c;
    uset_close(table);
    ucnv_close(converter);
    return characters;
}

bool ReadsBackAlone(CharacterSet const& set, std::string const& character) {
    AutoUString<Local8Bit> bytes;
    AutoUString<UTF8> text;
    return set.ConvertFromUTF8(MakeUTF8Ref(character), bytes).IsSuccess() &&
           set.ConvertToUTF8(bytes, text).IsSuccess() && Bytes(text) == character;
}

// Some of the characters that the set itself writes and reads without loss: of the first 100 of its table,
// and of 400 others.
std::vector<std::string> SomeCharactersOf(CharacterSet const& set, std::mt19937& random) {
    std::u32string table = CharactersOf(set);
    std::size_t const front = std::min<std::size_t>(table.size(), 100);
    std::shuffle(table.begin() + static_cast<std::ptrdiff_t>(front), table.end(), random);
    std::vector<std::string> characters;
    for (char32_t const c : table.substr(0, 500)) {
        std::string const character = MakeUTF8(c);
        // At the front of a text U+FEFF is a sign of the byte order.
        if (c != 0xFEFF && ReadsBackAlone(set, character)) characters.push_back(character);
    }
    EXPECT_GT(characters.size(), 50u) << set.Name();
    return characters;
}

// Half of it from the first characters, so that alphabets take turns.
std::string RandomText(std::vector<std::string> const& characters, std::size_t count, std::mt19937& random) {
    std::string text;
    for (std::size_t i = 0; i < count; ++i) {
        std::size_t const range = random() % 2 == 0 ? characters.size() : 50;
        text += characters[random() % range];
    }
    return text;
}

// Of the views that hold no pointer.
void ExpectNothingOfNullViews(CharacterSet const& set) {
    AutoUString<UTF8> text("before"_utf8);
    EXPECT_EQ(set.ConvertToUTF8(UStringRef<Local8Bit>(), text).ErrorCode(), 0) << set.Name();
    EXPECT_TRUE(text.empty());
    text = AutoUString<UTF8>("before"_utf8);
    EXPECT_EQ(set.ConvertToUTF8(UStringRef<IANANamedTextEncoding>(), text).ErrorCode(), 0) << set.Name();
    EXPECT_TRUE(text.empty());
    AutoUString<Local8Bit> local(MakeLocalRef("before"));
    EXPECT_EQ(set.ConvertFromUTF8(UStringRef<UTF8>(), local).ErrorCode(), 0) << set.Name();
    EXPECT_TRUE(local.empty());
    local = AutoUString<Local8Bit>(MakeLocalRef("before"));
    EXPECT_EQ(set.ConvertFromUTF16(UStringRef<UTF16>(), local).ErrorCode(), 0) << set.Name();
    EXPECT_TRUE(local.empty());
    std::vector<std::uint16_t> storage;
    AutoUString<UTF16> units(MakeRef(u"before", storage));
    EXPECT_EQ(set.ConvertToUTF16(UStringRef<Local8Bit>(), units).ErrorCode(), 0) << set.Name();
    EXPECT_TRUE(units.empty());
    AutoUString<IANANamedTextEncoding> named(MakeNamedRef("before"));
    EXPECT_EQ(set.ConvertFromUTF8(UStringRef<UTF8>(), named).ErrorCode(), 0) << set.Name();
    EXPECT_TRUE(named.empty());
    named = AutoUString<IANANamedTextEncoding>(MakeNamedRef("before"));
    EXPECT_EQ(set.Convert(UStringRef<IANANamedTextEncoding>(), set, named).ErrorCode(), 0) << set.Name();
    EXPECT_TRUE(named.empty());
}

} // namespace

TEST(CharacterSet, KnowsItsNameAndSizes) {
    struct {
        char const* given;
        char const* name;
        bool isUTF8;
        int minCharSize;
        int maxCharSize;
        char const* registered;
    } const cases[] = {
        {"utf8", "UTF-8", true, 1, 3, "UTF-8"},
        {"UTF-8", "UTF-8", true, 1, 3, "UTF-8"},
        {"CESU-8", "CESU-8", false, 1, 3, "CESU-8"},
        {"UTF-16LE", "UTF-16LE", false, 2, 2, "UTF-16LE"},
        {"UTF-32BE", "UTF-32BE", false, 4, 4, "UTF-32BE"},
        {"ascii", "US-ASCII", false, 1, 1, "ANSI_X3.4-1968"},
        {"windows-1252", "ibm-5348_P100-1997", false, 1, 1, "windows-1252"},
        {"windows-932", "ibm-943_P15A-2003", false, 1, 2, "Shift_JIS"},
        {"windows-949", "windows-949-2000", false, 1, 2, nullptr},
    };
    for (auto const& expected : cases) {
        CharacterSet const set(expected.given, Action::Stop, false);
        EXPECT_EQ(set.Name(), expected.name);
        EXPECT_EQ(set.IsUTF8(), expected.isUTF8);
        EXPECT_EQ(set.MinCharSize(), expected.minCharSize) << expected.given;
        EXPECT_EQ(set.MaxCharSize(), expected.maxCharSize) << expected.given;
        EXPECT_EQ(set.IsSingleByte(), expected.maxCharSize == 1) << expected.given;
        EXPECT_EQ(set.IsMultiByte(), expected.maxCharSize > 1) << expected.given;
        EXPECT_STREQ(set.StandardName("IANA"), expected.registered);
    }
}

TEST(CharacterSet, HasNoNameByAnUnknownStandard) {
    CharacterSet const set("latin1", Action::Stop, false);
    EXPECT_STREQ(set.StandardName("MIME"), "ISO-8859-1");
    EXPECT_EQ(set.StandardName("no such standard"), nullptr);
}

TEST(CharacterSet, TakesItsNameInThreeForms) {
    EXPECT_EQ(CharacterSet(std::string("KOI8-R"), Action::Stop, true).Name(), "ibm-878_P100-1996");
    EXPECT_EQ(CharacterSet("KOI8-R", Action::Stop, true).Name(), "ibm-878_P100-1996");
    EXPECT_EQ(CharacterSet("KOI8-R"_data, Action::Stop, true).Name(), "ibm-878_P100-1996");
    // Of a range only what lies within it.
    EXPECT_EQ(
        CharacterSet(ConstData("utf-8x"_data.begin(), "utf-8x"_data.begin() + 5), Action::Stop, false).Name(),
        "UTF-8");
}

TEST(CharacterSet, OpensTheDefaultForANullNameOnly) {
    UErrorCode code = U_ZERO_ERROR;
    UConverter* const standard = ucnv_open(nullptr, &code);
    std::string const name = ucnv_getName(standard, &code);
    ucnv_close(standard);
    EXPECT_EQ(CharacterSet(static_cast<char const*>(nullptr), Action::Stop, false).Name(), name);
    EXPECT_THROW(CharacterSet("", Action::Stop, false), ICUResult);
    EXPECT_THROW(CharacterSet(std::string(), Action::Stop, false), ICUResult);
    EXPECT_THROW(CharacterSet(ConstData(), Action::Stop, false), ICUResult);
}

TEST(CharacterSet, ThrowsForAnUnknownName) {
    try {
        CharacterSet const set("no such set", Action::Stop, false);
        FAIL() << "an unknown name opened " << set.Name();
    } catch (ICUResult const& failure) {
        EXPECT_STREQ(failure.what(), "UErrorCode=4 [U_FILE_ACCESS_ERROR] in ucnv_open");
    }
    EXPECT_THROW(CharacterSet(std::string(100000, 'n'), Action::Stop, false), ICUResult);
}

TEST(CharacterSet, ThrowsForANameWithANULAsForAnUnknownOne) {
    for (auto const name : {"UTF-8\0"_data, "UTF-8\0x"_data, "\0UTF-8"_data, "\0"_data}) {
        for (bool const asString : {false, true}) {
            try {
                if (asString)
                    CharacterSet(MakeString(name), Action::Stop, false);
                else
                    CharacterSet(name, Action::Stop, false);
                FAIL() << "a name was taken for its beginning";
            } catch (ICUResult const& failure) {
                EXPECT_STREQ(failure.what(), "UErrorCode=4 [U_FILE_ACCESS_ERROR] in ucnv_open");
            }
        }
    }
}

TEST(CharacterSet, ThrowsForTheSetWhoseConverterCannotBeginAnew) {
    for (char const* const name :
         {"x11-compound-text", "COMPOUND_TEXT", "x-compound-text", "X11-Compound-Text,version=1"}) {
        try {
            CharacterSet const set(name, Action::Stop, false);
            FAIL() << name << " opened " << set.Name();
        } catch (ICUResult const& failure) {
            EXPECT_STREQ(failure.what(), "UErrorCode=16 [U_UNSUPPORTED_ERROR] in ucnv_open") << name;
        }
    }
}

TEST(CharacterSet, ThrowsForAnUnknownAction) {
    for (std::uint32_t const number : {3u, 4u, 0xFFFFFFFFu}) {
        try {
            CharacterSet const set("UTF-8", static_cast<Action>(number), false);
            FAIL() << "an unknown action was taken: " << number;
        } catch (ICUResult const& failure) {
            EXPECT_STREQ(failure.what(), "UErrorCode=1 [U_ILLEGAL_ARGUMENT_ERROR] in InvalidCharacterAction");
        }
    }
}

TEST(CharacterSet, ConvertsTheEmptyTextInAnySet) {
    for (std::int32_t i = 0; i < ucnv_countAvailable(); ++i) {
        for (Action const action : cActions) {
            auto const set = MakeUnlessRefused(ucnv_getAvailableName(i), action);
            if (!set) continue;
            EXPECT_EQ(ToUTF8(*set, ""), "") << set->Name();
            EXPECT_EQ(FromUTF8(*set, ""), "") << set->Name();
            EXPECT_EQ(FromUTF16(*set, u""), "") << set->Name();
            ExpectNothingOfNullViews(*set);
        }
    }
}

TEST(CharacterSet, RefusesNoSetButThose) {
    std::vector<std::string> withoutSubstitute;
    for (std::int32_t i = 0; i < ucnv_countAvailable(); ++i) {
        std::string const name = ucnv_getAvailableName(i);
        bool const canBeginAnew = name != "x11-compound-text";
        EXPECT_EQ(MakeUnlessRefused(name, Action::Stop) != nullptr, canBeginAnew) << name;
        EXPECT_EQ(MakeUnlessRefused(name, Action::Escape) != nullptr, canBeginAnew) << name;
        if (auto const set = MakeUnlessRefused(name, Action::Substitute))
            EXPECT_NE(FromUTF16(*set, u"?"), "") << name;
        else if (canBeginAnew)
            withoutSubstitute.push_back(name);
    }
    // The sets of double bytes alone.
    std::vector<std::string> const expected = {"ibm-16684_P110-2003", "ibm-5478_P100-1995",
                                               "ibm-971_P100-1995"};
    std::sort(withoutSubstitute.begin(), withoutSubstitute.end());
    EXPECT_EQ(withoutSubstitute, expected);
}

TEST(CharacterSet, ReadsBackRandomTextsInEverySet) {
    std::mt19937 random(20240229);
    CharacterSet const utf8("UTF-8", Action::Stop, false);
    for (std::int32_t i = 0; i < ucnv_countAvailable(); ++i) {
        std::string const name = ucnv_getAvailableName(i);
        // In the Indian sets a character and a sign behind it may be another character.
        if (name.starts_with("ISCII")) continue;
        auto const set = MakeUnlessRefused(name, Action::Stop);
        if (!set) continue;
        std::vector<std::string> const characters = SomeCharactersOf(*set, random);
        for (std::size_t const count : {1u, 10u, 100u, 400u, 10u, 1u}) {
            std::string const text = RandomText(characters, count, random);
            std::string const bytes = FromUTF8(*set, text);
            ASSERT_TRUE(ToUTF8(*set, bytes) == text) << name << " " << count;
            for (std::size_t const size : {1u, 7u, 100u}) {
                std::string const pieces = InPieces(utf8, *set, text, cAllOnes, size);
                ASSERT_TRUE(ToUTF8(*set, pieces) == text) << name << " " << count << " into " << size;
                ASSERT_TRUE(InPieces(*set, utf8, bytes, size, size) == text)
                    << name << " " << count << " by " << size;
            }
        }
    }
}

TEST(CharacterSet, TakesNoOtherFormOfUTF8ForUTF8) {
    for (Action const action : cActions) {
        CharacterSet const set("CESU-8", action, false);
        EXPECT_EQ(FromUTF8(set, "\U0001F600"), "\xED\xA0\xBD\xED\xB8\x80");
        EXPECT_EQ(ToUTF8(set, "\xED\xA0\xBD\xED\xB8\x80"), "\U0001F600");
    }
}

TEST(CharacterSet, BeginsATextWithTheDesignatorOfItsSet) {
    for (Action const action : cActions) {
        CharacterSet const korean("ISO-2022-KR", action, false);
        CharacterSet const utf8("UTF-8", action, false);
        for (int time = 0; time < 2; ++time) {
            EXPECT_EQ(FromUTF8(korean, "x"), "\x1B$)Cx");
            EXPECT_EQ(FromUTF8(korean, "\uD55C"), "\x1B$)C\x0EGQ\x0F");
            EXPECT_EQ(FromUTF16(korean, u"x"), "\x1B$)Cx");
            AutoUString<IANANamedTextEncoding> bytes;
            EXPECT_TRUE(utf8.Convert(MakeNamedRef("x"), korean, bytes).IsSuccess());
            EXPECT_EQ(Bytes(bytes), "\x1B$)Cx");
            EXPECT_EQ(InPieces(utf8, korean, "xyz", 1, 1), "\x1B$)Cxyz");
        }
        EXPECT_EQ(ToUTF8(korean, "\x1B$)C\x0EGQ\x0F"), "\uD55C");
    }
}

TEST(CharacterSet, ConvertsSamplesOfEachSetBothWays) {
    for (Sample const& sample : cSamples) {
        for (Action const action : cActions) {
            CharacterSet const set(sample.set, action, false);
            EXPECT_EQ(ToUTF8(set, sample.bytes), sample.utf8) << sample.set;
            EXPECT_EQ(FromUTF8(set, sample.utf8), sample.bytes) << sample.set;
        }
        EXPECT_EQ(ByIconv("UTF-8", sample.iconvName, sample.bytes), sample.utf8) << sample.set;
        EXPECT_EQ(ByIconv(sample.iconvName, "UTF-8", sample.utf8), sample.bytes) << sample.set;
    }
}

TEST(CharacterSet, ReadsSingleBytesAsTheCLibraryDoes) {
    for (Sample const& sample : cSamples) {
        CharacterSet const set(sample.set, Action::Stop, false);
        int compared = 0;
        for (unsigned int byte = 0; set.IsSingleByte() && byte < 256; ++byte) {
            std::string const bytes(1, static_cast<char>(byte));
            std::optional<std::string> const expected = ByIconv("UTF-8", sample.iconvName, bytes);
            if (!expected) continue;
            EXPECT_EQ(ToUTF8(set, bytes), *expected) << sample.set << " " << byte;
            ++compared;
        }
        EXPECT_TRUE(set.IsMultiByte() || compared >= 128) << sample.set << " " << compared;
    }
}

TEST(CharacterSet, ReadsAllShortInputsAsTheServiceDoes) {
    for (Sample const& sample : cSamples) {
        for (Action const action : cActions) {
            CharacterSet const set(sample.set, action, false);
            DirectConverter const direct(sample.set, action);
            for (std::string const& bytes : AllShortInputs(set.IsMultiByte())) {
                AutoUString<UTF8> text;
                CharacterSetResult const result = set.ConvertToUTF8(MakeLocalRef(bytes), text);
                std::string const outcome =
                    result.IsSuccess() ? Bytes(text) : "!" + std::to_string(result.ErrorCode());
                ASSERT_EQ(outcome, direct.ToUTF8(bytes))
                    << sample.set << " " << testing::PrintToString(bytes);
                ASSERT_EQ(result.IsSuccess(), result.InvalidText().empty());
            }
        }
    }
}

TEST(CharacterSet, WritesAllCharactersAsTheServiceDoes) {
    std::u16string const units = AllCharacters();
    std::string const utf8 = MakeUTF8(units);
    for (Sample const& sample : cSamples) {
        for (Action const action : {Action::Escape, Action::Substitute}) {
            CharacterSet const set(sample.set, action, false);
            std::string const expected = DirectConverter(sample.set, action).FromUTF16(units);
            ASSERT_GT(expected.size(), 60000u);
            EXPECT_TRUE(FromUTF8(set, utf8) == expected) << sample.set;
            EXPECT_TRUE(FromUTF16(set, units) == expected) << sample.set;
        }
    }
}

TEST(CharacterSet, StopsAtTheCharactersThatTheServiceStopsAt) {
    std::u16string const units = AllCharacters().substr(0, 0x3000);
    for (char const* const name : {"US-ASCII", "windows-1252", "windows-932"}) {
        CharacterSet const set(name, Action::Stop, false);
        DirectConverter const direct(name, Action::Stop);
        for (char16_t const unit : units) {
            std::u16string const text(1, unit);
            std::string const expected = direct.FromUTF16(text);
            bool const fails = expected.starts_with("!") && unit != '!';
            std::string const outcome = fails ? expected + " " + MakeUTF8(text) : expected;
            ASSERT_EQ(FromUTF16(set, text), outcome) << name << " " << static_cast<unsigned int>(unit);
            ASSERT_EQ(FromUTF8(set, MakeUTF8(text)), outcome)
                << name << " " << static_cast<unsigned int>(unit);
        }
    }
}

TEST(CharacterSet, ConvertsToUTF16) {
    struct {
        char const* set;
        Action action;
        std::string bytes;
        std::u16string units;
    } const cases[] = {
        {"windows-1252", Action::Stop, "Gr\xFC\xDF\x65 \x80", u"Gr\u00FC\u00DFe \u20AC"},
        {"windows-932", Action::Stop, "\x93\xFA\xB1", u"\u65E5\uFF71"},
        {"UTF-8", Action::Stop, "\xF0\x9F\x98\x80", u"\U0001F600"},
        {"UTF-8", Action::Substitute, "a\xFFz", u"a\uFFFDz"},
        {"UTF-8", Action::Escape, "a\xFFz", u"a%XFFz"},
        {"windows-1252", Action::Stop, std::string("a\0z", 3), std::u16string(u"a\0z", 3)},
    };
    for (auto const& [name, action, bytes, units] : cases) {
        AutoUString<UTF16> text;
        CharacterSetResult const result =
            CharacterSet(name, action, false).ConvertToUTF16(MakeLocalRef(bytes), text);
        EXPECT_EQ(result.ErrorCode(), 0) << result.what();
        EXPECT_EQ(Units(text), units);
    }
}

TEST(CharacterSet, ConvertsFromUTF16) {
    CharacterSet const western("windows-1252", Action::Stop, false);
    EXPECT_EQ(FromUTF16(western, u"Gr\u00FC\u00DFe \u20AC"), "Gr\xFC\xDF\x65 \x80");
    EXPECT_EQ(FromUTF16(CharacterSet("UTF-8", Action::Stop, false), u"\U0001F600"), "\xF0\x9F\x98\x80");
    EXPECT_EQ(FromUTF16(CharacterSet("UTF-16BE", Action::Stop, false), u"a\u20AC"),
              std::string("\0a\x20\xAC", 4));
    EXPECT_EQ(FromUTF16(western, std::u16string(u"a\0z", 3)), std::string("a\0z", 3));
}

TEST(CharacterSet, SubstitutesAQuestionMarkOnTheWayOutOfUnicode) {
    for (char const* const name : {"US-ASCII", "iso-8859-1", "windows-1252", "windows-1251"}) {
        CharacterSet const set(name, Action::Substitute, false);
        EXPECT_EQ(FromUTF8(set, "a\u65E5z"), "a?z") << name;
        EXPECT_EQ(FromUTF8(set, "\U0001F600"), "?") << name;
        EXPECT_EQ(FromUTF16(set, u"a\u65E5\U0001F600z"), "a??z") << name;
    }
    for (char const* const name : {"windows-932", "windows-936", "windows-949", "windows-950"})
        EXPECT_EQ(FromUTF8(CharacterSet(name, Action::Substitute, false), "a\U0001F600z"), "a?z") << name;
}

TEST(CharacterSet, SubstitutesTheReplacementCharacterOnTheWayIntoUnicode) {
    EXPECT_EQ(ToUTF8(CharacterSet("US-ASCII", Action::Substitute, false), "a\x80z"), "a\uFFFDz");
    CharacterSet const japanese("windows-932", Action::Substitute, false);
    EXPECT_EQ(ToUTF8(japanese, "a\x81\xADz"), "a\uFFFDz");
    EXPECT_EQ(ToUTF8(japanese, "a\x93"), "a\uFFFD");
    EXPECT_EQ(ToUTF8(japanese, "a\xFFz"), "a\uFFFDz");
    // Bad UTF-8 becomes U+FFFD first and then what the set makes of that.
    EXPECT_EQ(FromUTF8(CharacterSet("US-ASCII", Action::Substitute, false), "a\xFFz"), "a?z");
    EXPECT_EQ(FromUTF8(CharacterSet("UTF-16BE", Action::Substitute, false), "\xFF"), "\xFF\xFD");
}

TEST(CharacterSet, SpellsOutWhatItEscapes) {
    CharacterSet const ascii("US-ASCII", Action::Escape, false);
    EXPECT_EQ(FromUTF8(ascii, "a\u65E5z"), "a%U65E5z");
    EXPECT_EQ(FromUTF8(ascii, "\U0001F600"), "%UD83D%UDE00");
    EXPECT_EQ(FromUTF16(ascii, u"a\u00FCz"), "a%U00FCz");
    EXPECT_EQ(FromUTF8(ascii, "a\xFFz"), "a%XFFz");
    EXPECT_EQ(ToUTF8(ascii, "a\x80z"), "a%X80z");
    EXPECT_EQ(ToUTF8(CharacterSet("windows-932", Action::Escape, false), "a\xFFz"), "a%XFFz");
}

TEST(CharacterSet, SpellsInTheStyleThatIsSet) {
    CharacterSet ascii("US-ASCII", Action::Stop, false);
    EXPECT_TRUE(ascii.SetEscapeInvalidCharacters("X").IsSuccess());
    EXPECT_EQ(ascii.Action(), Action::Escape);
    EXPECT_EQ(FromUTF8(ascii, "a\u65E5z"), "a&#x65E5;z");
    // The UTF-8 side of the conversion spells as the set does.
    EXPECT_EQ(FromUTF8(ascii, "a\xFFz"), "a&#xFF;z");
    EXPECT_EQ(ToUTF8(ascii, "a\x80z"), "a&#x80;z");
    EXPECT_TRUE(ascii.SetEscapeInvalidCharacters("J").IsSuccess());
    EXPECT_EQ(FromUTF8(ascii, "\u65E5"), "\\u65E5");
    EXPECT_TRUE(ascii.SetEscapeInvalidCharacters(nullptr).IsSuccess());
    EXPECT_EQ(FromUTF8(ascii, "\u65E5"), "%U65E5");
}

TEST(CharacterSet, KnowsTheseStylesAndTakesAnyOtherForTheFirst) {
    std::pair<char const*, std::string> const cases[] = {
        {nullptr, "%U65E5|%UD83D%UDE00|%XFF|"}, {"C", "\\u65E5|\\U0001F600|\\xFF|"},
        {"D", "&#26085;|&#128512;|&#255;|"},    {"X", "&#x65E5;|&#x1F600;|&#xFF;|"},
        {"J", "\\u65E5|\\uD83D\\uDE00|%XFF|"},  {"S", "\\65E5 |\\1F600 |%XFF|"},
        {"U", "{U+65E5}|{U+1F600}|%XFF|"},      {"Xyz", "&#x65E5;|&#x1F600;|&#xFF;|"},
        {"x", "%U65E5|%UD83D%UDE00|%XFF|"},     {"Q", "%U65E5|%UD83D%UDE00|%XFF|"},
        {"", "%U65E5|%UD83D%UDE00|%XFF|"},
    };
    CharacterSet ascii("US-ASCII", Action::Stop, false);
    for (auto const& [style, text] : cases) {
        EXPECT_EQ(ascii.SetEscapeInvalidCharacters(style).ErrorCode(), 0);
        EXPECT_EQ(FromUTF8(ascii, "\u65E5|\U0001F600|\xFF|"), text);
    }
}

TEST(CharacterSet, DealsWithASurrogateThatTheBytesSpellAlone) {
    std::string const bytes = "a+2AA-z";
    CharacterSet mail("UTF-7", Action::Stop, false);
    EXPECT_EQ(ToUTF8(mail, bytes), "!12 \uFFFD");
    EXPECT_TRUE(mail.SetEscapeInvalidCharacters(nullptr).IsSuccess());
    EXPECT_EQ(ToUTF8(mail, bytes), "a%UD800z");
    EXPECT_TRUE(mail.SetEscapeInvalidCharacters("X").IsSuccess());
    EXPECT_EQ(ToUTF8(mail, bytes), "a&#xD800;z");
    EXPECT_EQ(ToUTF8(CharacterSet("UTF-7", Action::Substitute, false), bytes), "a\uFFFDz");
}

TEST(CharacterSet, ChangesItsAction) {
    CharacterSet ascii("US-ASCII", Action::Escape, false);
    EXPECT_TRUE(ascii.SetStopOnInvalidCharacter().IsSuccess());
    EXPECT_EQ(ascii.Action(), Action::Stop);
    EXPECT_EQ(FromUTF8(ascii, "\u65E5"), "!10 \u65E5");
    unsigned short const hashes[] = {'#', '#', 0};
    EXPECT_TRUE(ascii.SetSubstituteInvalidCharacters(hashes, true).IsSuccess());
    EXPECT_EQ(ascii.Action(), Action::Substitute);
    EXPECT_EQ(FromUTF8(ascii, "a\u65E5z"), "a##z");
    EXPECT_EQ(FromUTF16(ascii, u"\u65E5"), "##");
}

TEST(CharacterSet, KeepsItsActionWhenASubstituteIsRefused) {
    CharacterSet ascii("US-ASCII", Action::Stop, false);
    unsigned short const unmappable[] = {0x65E5, 0};
    ICUResult const refused = ascii.SetSubstituteInvalidCharacters(unmappable, false);
    EXPECT_STREQ(refused.what(), "UErrorCode=10 [U_INVALID_CHAR_FOUND] in ucnv_setSubstString");
    std::vector<unsigned short> tooLong(100, 'x');
    tooLong.push_back(0);
    EXPECT_FALSE(ascii.SetSubstituteInvalidCharacters(tooLong.data(), false).IsSuccess());
    EXPECT_STREQ(ascii.SetSubstituteInvalidCharacters(nullptr, false).what(),
                 "UErrorCode=1 [U_ILLEGAL_ARGUMENT_ERROR] in ucnv_setSubstString");
    EXPECT_EQ(ascii.Action(), Action::Stop);
    EXPECT_EQ(FromUTF8(ascii, "a\u65E5"), "!10 \u65E5");
    EXPECT_EQ(ToUTF8(ascii, "a\x80"), "!12 \x80");
}

TEST(CharacterSet, ReturnsTheBadInput) {
    CharacterSet const ascii("US-ASCII", Action::Stop, false);
    EXPECT_EQ(FromUTF8(ascii, "gr\u00FCn"), "!10 \u00FC");
    EXPECT_EQ(FromUTF8(ascii, "a\U0001F600"), "!10 \U0001F600");
    EXPECT_EQ(FromUTF16(ascii, u"a\u65E5z"), "!10 \u65E5");
    EXPECT_EQ(FromUTF16(ascii, u"a\U0001F600z"), "!10 \U0001F600");
    EXPECT_EQ(FromUTF16(ascii, std::u16string(u"a\xD83Dz", 3)), "!12 \uFFFD");
    EXPECT_EQ(FromUTF16(ascii, std::u16string(u"a\xDE00", 2)), "!12 \uFFFD");
    EXPECT_EQ(FromUTF16(ascii, std::u16string(u"a\xD83D", 2)), "!11 \uFFFD");
    EXPECT_EQ(FromUTF8(ascii, "a\xC3(z"), "!12 \xC3");
    EXPECT_EQ(FromUTF8(ascii, "a\xE2\x82"), "!11 \xE2\x82");
    EXPECT_EQ(FromUTF8(ascii, "\xED\xA0\x80"), "!12 \xED");
    EXPECT_EQ(ToUTF8(ascii, "a\x80"), "!12 \x80");
    CharacterSet const japanese("windows-932", Action::Stop, false);
    EXPECT_EQ(ToUTF8(japanese, "a\x93"), "!11 \x93");
    EXPECT_EQ(ToUTF8(japanese, "a\xFFz"), "!10 \xFF");
    EXPECT_EQ(ToUTF8(japanese, "a\x81\xAD"), "!10 \x81\xAD");
    CharacterSet const switched("ISO-2022-JP", Action::Stop, false);
    EXPECT_EQ(ToUTF8(switched, "a\x1B$Z"), "!18 \x1B");
    EXPECT_EQ(ToUTF8(switched, "a\x1B$A"), "!19 \x1B$A");
}

TEST(CharacterSet, ReturnsTheBadInputOfTheSideThatFailed) {
    CharacterSet const ascii("US-ASCII", Action::Stop, false);
    // The character without a look is left out by the other side before the bad byte comes.
    EXPECT_EQ(FromUTF8(ascii, "a\u200Bz"), "az");
    EXPECT_EQ(FromUTF8(ascii, "a\u200Bz\xFF"), "!12 \xFF");
    EXPECT_EQ(FromUTF8(ascii, "a\xFFz\u00FC"), "!12 \xFF");
}

TEST(CharacterSet, WordsAFailedConversion) {
    AutoUString<Local8Bit> bytes;
    CharacterSet const ascii("US-ASCII", Action::Stop, false);
    CharacterSetResult const byPivot = ascii.ConvertFromUTF8("\u00FC"_utf8, bytes);
    EXPECT_STREQ(byPivot.what(), "CharacterSetResult: UErrorCode=10 [U_INVALID_CHAR_FOUND] in ucnv_convertEx "
                                 "[\"\u00FC\"]");
    EXPECT_EQ(byPivot.Context(), "");
    std::vector<std::uint16_t> units;
    EXPECT_STREQ(ascii.ConvertFromUTF16(MakeRef(u"\u00FC", units), bytes).what(),
                 "CharacterSetResult: UErrorCode=10 [U_INVALID_CHAR_FOUND] in ucnv_fromUChars [\"\u00FC\"]");
    AutoUString<UTF16> text;
    EXPECT_STREQ(ascii.ConvertToUTF16(MakeLocalRef("\x80"), text).what(),
                 "CharacterSetResult: UErrorCode=12 [U_ILLEGAL_CHAR_FOUND] in ucnv_toUChars [\"\x80\"]");
    EXPECT_TRUE(text.empty());
}

TEST(CharacterSet, ReadsBadInputFromItsConverterOnlyForFailuresOverInput) {
    CharacterSet const ascii("US-ASCII", Action::Stop, false);
    AutoUString<UTF16> text;
    EXPECT_FALSE(ascii.ConvertToUTF16(MakeLocalRef("\x80"), text).IsSuccess());
    EXPECT_EQ(ascii.GetInvalidChars(ICUResult(12)).InvalidText(), "\x80");
    EXPECT_EQ(ascii.GetInvalidChars(ICUResult(12)).ErrorCode(), 12);
    EXPECT_EQ(ascii.GetInvalidChars(ICUResult(7)).InvalidText(), "");
    EXPECT_EQ(ascii.GetInvalidUChars(ICUResult(12)).InvalidText(), "");
    AutoUString<Local8Bit> bytes;
    std::vector<std::uint16_t> units;
    EXPECT_FALSE(ascii.ConvertFromUTF16(MakeRef(u"\u00FC", units), bytes).IsSuccess());
    EXPECT_EQ(ascii.GetInvalidUChars(ICUResult(10)).InvalidText(), "\u00FC");
    EXPECT_EQ(ascii.GetInvalidUChars(ICUResult(7)).InvalidText(), "");
}

TEST(CharacterSet, BeginsEachConversionAnew) {
    CharacterSet const japanese("windows-932", Action::Stop, false);
    EXPECT_EQ(ToUTF8(japanese, "a\x93"), "!11 \x93");
    EXPECT_EQ(ToUTF8(japanese, "\xFA"), ToUTF8(CharacterSet("windows-932", Action::Stop, false), "\xFA"));
    EXPECT_EQ(ToUTF8(japanese, "\x93\xFA"), "\u65E5");
    CharacterSet const switched("ISO-2022-JP", Action::Stop, false);
    EXPECT_EQ(FromUTF8(switched, "\u65E5"), "\x1B$BF|\x1B(B");
    EXPECT_EQ(FromUTF8(switched, "\u65E5\u00FC"), "!10 \u00FC");
    EXPECT_EQ(FromUTF8(switched, "F"), "F");
    EXPECT_EQ(ToUTF8(switched, "\x1B$BF|"), "\u65E5");
    EXPECT_EQ(ToUTF8(switched, "F|"), "F|");
}

TEST(CharacterSet, CopiesUTF8WithoutACheck) {
    for (Action const action : cActions) {
        CharacterSet const utf8("UTF-8", action, false);
        std::string const bad("a\xFF\xC3(\0\xED\xA0\x80", 8);
        EXPECT_EQ(ToUTF8(utf8, bad), bad);
        EXPECT_EQ(FromUTF8(utf8, bad), bad);
        AutoUString<IANANamedTextEncoding> copy;
        EXPECT_TRUE(utf8.Convert(MakeNamedRef(bad), CharacterSet("utf8", action, false), copy).IsSuccess());
        EXPECT_EQ(Bytes(copy), bad);
    }
}

TEST(CharacterSet, LeavesOutTheNameOfTheInput) {
    IANANamedTextEncoding const other("KOI8-R"_data);
    AutoUString<UTF8> text;
    CharacterSet const western("windows-1252", Action::Stop, false);
    UStringRef<IANANamedTextEncoding> const bytes(other, "\xFC"_data);
    EXPECT_TRUE(western.ConvertToUTF8(bytes, text).IsSuccess());
    EXPECT_EQ(text.Ref(), "\u00FC"_utf8);
}

TEST(CharacterSet, TellsANamedOutputItsStandardizedName) {
    struct {
        char const* set;
        char const* name;
    } const cases[] = {
        {"windows-1252", "windows-1252"}, {"utf8", "UTF-8"},
        {"latin1", "ISO_8859-1:1987"},    {"ms949", "windows-949-2000"},
        {"windows-932", "Shift_JIS"},
    };
    for (auto const& [setName, name] : cases) {
        for (Action const action : cActions) {
            CharacterSet const set(setName, action, false);
            for (auto const text : {""_utf8, "abc"_utf8}) {
                AutoUString<IANANamedTextEncoding> bytes;
                EXPECT_TRUE(set.ConvertFromUTF8(text, bytes).IsSuccess());
                EXPECT_STREQ(bytes.Encoding().NullTerminatedName(), name);
                AutoUString<IANANamedTextEncoding> converted;
                EXPECT_TRUE(CharacterSet("UTF-16", action, false)
                                .Convert(MakeNamedRef(""), set, converted)
                                .IsSuccess());
                EXPECT_STREQ(converted.Encoding().NullTerminatedName(), name);
            }
        }
    }
}

TEST(CharacterSet, ConvertsFromSetToSet) {
    CharacterSet const western("windows-1252", Action::Stop, false);
    CharacterSet const central("windows-1250", Action::Stop, false);
    CharacterSet const utf8("UTF-8", Action::Stop, false);
    AutoUString<IANANamedTextEncoding> bytes;
    EXPECT_TRUE(western.Convert(MakeNamedRef("\x8A\x80"), central, bytes).IsSuccess());
    EXPECT_EQ(Bytes(bytes), "\x8A\x80");
    EXPECT_TRUE(western.Convert(MakeNamedRef("\xFC\x80"), utf8, bytes).IsSuccess());
    EXPECT_EQ(Bytes(bytes), "\u00FC\u20AC");
    EXPECT_TRUE(utf8.Convert(MakeNamedRef("\u017E"), central, bytes).IsSuccess());
    EXPECT_EQ(Bytes(bytes), "\x9E");
    EXPECT_TRUE(central.Convert(MakeNamedRef("\x9E"), central, bytes).IsSuccess());
    EXPECT_EQ(Bytes(bytes), "\x9E");
    EXPECT_EQ(utf8.Convert(MakeNamedRef("\u65E5"), western, bytes).InvalidText(), "\u65E5");
    EXPECT_TRUE(bytes.empty());
    EXPECT_EQ(utf8.Convert(MakeNamedRef("a\xFF"), western, bytes).InvalidText(), "\xFF");
    EXPECT_TRUE(bytes.empty());
}

TEST(CharacterSet, DealsWithBadBytesByItselfAndWithMissingCharactersByTheTarget) {
    CharacterSet const stopping("UTF-8", Action::Stop, false);
    CharacterSet const escaping("UTF-8", Action::Escape, false);
    CharacterSet const asciiStopping("US-ASCII", Action::Stop, false);
    CharacterSet const asciiSubstituting("US-ASCII", Action::Substitute, false);
    auto const convert = [](CharacterSet const& from, CharacterSet const& to, std::string const& text) {
        AutoUString<IANANamedTextEncoding> bytes;
        CharacterSetResult const result = from.Convert(MakeNamedRef(text), to, bytes);
        return Outcome(result, Bytes(bytes));
    };
    EXPECT_EQ(convert(escaping, asciiSubstituting, "a\xFF\u65E5"), "a%XFF?");
    EXPECT_EQ(convert(stopping, asciiSubstituting, "a\u65E5"), "a?");
    EXPECT_EQ(convert(stopping, asciiSubstituting, "a\u65E5\xFF"), "!12 \xFF");
    EXPECT_EQ(convert(escaping, asciiStopping, "a\xFF"), "a%XFF");
    EXPECT_EQ(convert(escaping, asciiStopping, "a\xFF\u65E5"), "!10 \u65E5");
    // The bad byte that the source put something in the place of is not what failed, however long ago it was.
    CharacterSet const japanese("windows-932", Action::Substitute, false);
    CharacterSet const western("iso-8859-1", Action::Stop, false);
    EXPECT_EQ(convert(japanese, western, "\xFF" + std::string(3000, 'x') + "\x93\xFA"), "!10 \uFFFD");
}

TEST(CharacterSet, TakesAViewOfItsOwnOutput) {
    CharacterSet const western("windows-1252", Action::Stop, false);
    CharacterSet const utf8("UTF-8", Action::Stop, false);
    for (std::size_t const count : {3u, 100u}) {
        AutoUString<IANANamedTextEncoding> text(MakeNamedRef(Repeat("\x80", count)));
        EXPECT_TRUE(western.Convert(text.Ref(), utf8, text).IsSuccess());
        EXPECT_EQ(Bytes(text), Repeat("\u20AC", count));
        EXPECT_TRUE(utf8.Convert(text.Ref(), utf8, text).IsSuccess());
        EXPECT_EQ(Bytes(text), Repeat("\u20AC", count));
    }
}

TEST(CharacterSet, MakesRoomForATextThatGrows) {
    for (std::size_t const count : {1u, 21u, 22u, 32u, 63u, 64u, 65u, 1000u}) {
        std::string const bytes = Repeat("\x80", count);
        for (Action const action : cActions)
            EXPECT_EQ(ToUTF8(CharacterSet("windows-1252", action, false), bytes), Repeat("\u20AC", count));
        CharacterSet const ascii("US-ASCII", Action::Escape, false);
        EXPECT_EQ(FromUTF8(ascii, Repeat("\u65E5", count)), Repeat("%U65E5", count));
        EXPECT_EQ(FromUTF16(ascii, std::u16string(count, u'\u65E5')), Repeat("%U65E5", count));
        EXPECT_EQ(ToUTF8(ascii, bytes), Repeat("%X80", count));
        AutoUString<UTF16> units;
        EXPECT_TRUE(ascii.ConvertToUTF16(MakeLocalRef(bytes), units).IsSuccess());
        std::string const escaped = Repeat("%X80", count);
        EXPECT_EQ(Units(units), std::u16string(escaped.begin(), escaped.end()));
        CharacterSet substituting("US-ASCII", Action::Substitute, false);
        unsigned short const missing[] = {'<', 'm', 'i', 's', 's', 'i', 'n', 'g', '>', 0};
        ASSERT_TRUE(substituting.SetSubstituteInvalidCharacters(missing, false).IsSuccess());
        EXPECT_EQ(FromUTF8(substituting, Repeat("\u65E5", count)), Repeat("<missing>", count));
    }
}

TEST(CharacterSet, FitsATextExactly) {
    // No warning of a missing terminator comes through when the text fills its room.
    CharacterSet const western("windows-1252", Action::Substitute, false);
    for (std::size_t const size : {63u, 64u, 65u, 200u}) {
        std::vector<std::uint16_t> storage;
        AutoUString<Local8Bit> bytes;
        EXPECT_EQ(western.ConvertFromUTF16(MakeRef(std::u16string(size, u'x'), storage), bytes).ErrorCode(),
                  0);
        EXPECT_EQ(Bytes(bytes), std::string(size, 'x'));
        EXPECT_EQ(western.ConvertFromUTF8(MakeUTF8Ref(std::string(size, 'x')), bytes).ErrorCode(), 0);
        AutoUString<UTF8> text;
        EXPECT_EQ(western.ConvertToUTF8(MakeLocalRef(std::string(size, 'x')), text).ErrorCode(), 0);
    }
}

TEST(CharacterSet, ConvertsLongTextsWithCharactersAcrossEverySeam) {
    // An odd number of bytes in front, so that the characters of two bytes lie across even places.
    for (char const* const front : {"", "a"}) {
        std::string const bytes = front + Repeat("\x93\xFA", 200001);
        std::string const utf8 = front + Repeat("\u65E5", 200001);
        for (Action const action : cActions) {
            CharacterSet const japanese("windows-932", action, false);
            EXPECT_TRUE(ToUTF8(japanese, bytes) == utf8);
            EXPECT_TRUE(FromUTF8(japanese, utf8) == bytes);
        }
        CharacterSet const stopping("windows-932", Action::Stop, false);
        EXPECT_EQ(ToUTF8(stopping, bytes + "\x93"), "!11 \x93");
        EXPECT_EQ(FromUTF8(stopping, utf8 + "\xE6\x97"), "!11 \xE6\x97");
        EXPECT_EQ(FromUTF8(stopping, utf8 + "\U0001F600"), "!10 \U0001F600");
    }
}

TEST(CharacterSet, RefusesMoreInOneCallThanTheServiceCanCount) {
    CharacterSet const ascii("US-ASCII", Action::Substitute, false);
    std::string const bytes(CharacterSet::maxUnitsInOneCall + 1, 'x');
    AutoUString<UTF16> units;
    CharacterSetResult const refused = ascii.ConvertToUTF16(MakeLocalRef(bytes), units);
    EXPECT_STREQ(refused.what(),
                 "CharacterSetResult: UErrorCode=1 [U_ILLEGAL_ARGUMENT_ERROR] in ucnv_toUChars");
    EXPECT_TRUE(units.empty());
    AutoUString<Local8Bit> local;
    std::vector<std::uint16_t> const tooMany(CharacterSet::maxUnitsInOneCall + 1, 'x');
    UStringRef<UTF16> const view(UTF16(), tooMany.data(), tooMany.data() + tooMany.size());
    EXPECT_STREQ(ascii.ConvertFromUTF16(view, local).what(),
                 "CharacterSetResult: UErrorCode=1 [U_ILLEGAL_ARGUMENT_ERROR] in ucnv_fromUChars");
    EXPECT_TRUE(local.empty());
    EXPECT_TRUE(ascii.ConvertFromUTF16(view.Middle(0, CharacterSet::maxUnitsInOneCall), local).IsSuccess());
    EXPECT_EQ(local.SizeInUnits(), CharacterSet::maxUnitsInOneCall);
}

TEST(CharacterSet, SubstitutesInTextsOfAnySize) {
    CharacterSet const ascii("US-ASCII", Action::Substitute, false);
    std::string const front(CharacterSet::maxUnitsInOneCall, 'x');
    std::string const bytes = front + "\x80";
    AutoUString<UTF8> text;
    ASSERT_TRUE(ascii.ConvertToUTF8(MakeLocalRef(bytes), text).IsSuccess());
    EXPECT_TRUE(text.Ref() == MakeUTF8Ref(front + "\uFFFD"));
    AutoUString<Local8Bit> local;
    ASSERT_TRUE(ascii.ConvertFromUTF8(MakeUTF8Ref(front + "\u00FC\xFF"), local).IsSuccess());
    EXPECT_TRUE(local.Ref() == MakeLocalRef(front + "??"));
    CharacterSet const mail("UTF-7", Action::Substitute, false);
    EXPECT_TRUE(ToUTF8(mail, front + "+2AA-z") == front + "\uFFFDz");
}

TEST(CharacterSet, MakesRoomByTheSizeOfTheLongestCharacterWhereItSubstitutes) {
    CharacterSet const japanese("windows-932", Action::Substitute, false);
    ASSERT_EQ(japanese.MaxCharSize(), 2);
    std::string const letters(100, 'x');
    std::vector<std::uint16_t> storage;
    AutoUString<Local8Bit> bytes;
    EXPECT_TRUE(japanese.ConvertFromUTF8(MakeUTF8Ref(letters), bytes).IsSuccess());
    EXPECT_EQ(bytes.CapacityInUnits(), 200u);
    EXPECT_TRUE(japanese.ConvertFromUTF16(MakeRef(std::u16string(100, 'x'), storage), bytes).IsSuccess());
    EXPECT_EQ(bytes.CapacityInUnits(), 200u);
    AutoUString<UTF8> text;
    EXPECT_TRUE(japanese.ConvertToUTF8(MakeLocalRef(letters), text).IsSuccess());
    EXPECT_EQ(text.CapacityInUnits(), 300u);
    AutoUString<UTF16> units;
    EXPECT_TRUE(japanese.ConvertToUTF16(MakeLocalRef(letters), units).IsSuccess());
    EXPECT_EQ(units.CapacityInUnits(), 200u);
}

TEST(CharacterSet, ConvertsInPiecesOfAnySizeIntoRoomOfAnySize) {
    CharacterSet const utf8("UTF-8", Action::Escape, false);
    CharacterSet const switched("ISO-2022-JP", Action::Escape, false);
    std::string const text = "a\u65E5\u672C\xFFz\U0001F600\u8A9E!";
    AutoUString<IANANamedTextEncoding> whole;
    ASSERT_TRUE(utf8.Convert(MakeNamedRef(text), switched, whole).IsSuccess());
    for (std::size_t pieceSize = 1; pieceSize <= text.size(); ++pieceSize) {
        for (std::size_t roomSize = 1; roomSize < 20; ++roomSize) {
            ASSERT_EQ(InPieces(utf8, switched, text, pieceSize, roomSize), Bytes(whole))
                << pieceSize << " into " << roomSize;
        }
    }
}

TEST(CharacterSet, StopsAtBadInputInPieces) {
    CharacterSet const utf8("UTF-8", Action::Stop, false);
    CharacterSet const ascii("US-ASCII", Action::Stop, false);
    std::string const text = "ab\u00FCz";
    char room[10];
    char* next = room;
    char const* source = text.data();
    CharacterSet::Pivot pivot;
    EXPECT_TRUE(utf8.Convert(source, text.data() + 3, ascii, next, room + 10, pivot, false).IsSuccess());
    EXPECT_EQ(std::string(room, next), "ab");
    CharacterSetResult const result =
        utf8.Convert(source, text.data() + text.size(), ascii, next, room + 10, pivot, true);
    EXPECT_STREQ(result.what(), "CharacterSetResult: UErrorCode=10 [U_INVALID_CHAR_FOUND] in ucnv_convertEx "
                                "[\"\u00FC\"]");
}

TEST(CharacterSet, RefusesNullPointersInPieces) {
    CharacterSet const ascii("US-ASCII", Action::Stop, false);
    char room[10];
    char* next = room;
    char const* source = nullptr;
    CharacterSet::Pivot pivot;
    EXPECT_EQ(ascii.Convert(source, nullptr, ascii, next, room + 10, pivot, true).ErrorCode(), 1);
}
