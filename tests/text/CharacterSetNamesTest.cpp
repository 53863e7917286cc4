#include "text/CharacterSetNames.h"
#include "text/IANACharacterSets.h"
#include "text/ICU.h"
#include "text/UString.h"
#include "text/ValidEncodings.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

namespace {

bool AreEquivalent(std::string const& a, std::string const& b) {
    bool const result = EquivalentCharacterSets(MakeUTF8Ref(a), MakeUTF8Ref(b));
    EXPECT_EQ(EquivalentCharacterSets(MakeUTF8Ref(b), MakeUTF8Ref(a)), result) << a << " and " << b;
    return result;
}

// Every alias of every set.
std::vector<std::string> AllNamesOfTheService() {
    std::vector<std::string> names;
    UErrorCode code = U_ZERO_ERROR;
    for (std::int32_t i = 0; i < ucnv_countAvailable(); ++i) {
        char const* const set = ucnv_getAvailableName(i);
        std::uint16_t const count = ucnv_countAliases(set, &code);
        for (std::uint16_t alias = 0; alias < count; ++alias)
            names.emplace_back(ucnv_getAlias(set, alias, &code));
    }
    EXPECT_TRUE(U_SUCCESS(code));
    EXPECT_GT(names.size(), 1000u);
    return names;
}

} // namespace

TEST(StandardizedCharacterSetName, GivesTheRegisteredOrTheChosenName) {
    struct {
        std::string name;
        std::string standardized;
    } const cases[] = {
        // Korean, in front of what is registered
        {"windows-949-2000", "windows-949-2000"},
        {"windows-949", "windows-949-2000"},
        {"KS_C_5601-1987", "windows-949-2000"},
        {"KS_C_5601-1989", "windows-949-2000"},
        {"KSC_5601", "windows-949-2000"},
        {"csKSC56011987", "windows-949-2000"},
        {"korean", "windows-949-2000"},
        {"iso-ir-149", "windows-949-2000"},
        {"ms949", "windows-949-2000"},
        {"x-KSC5601", "windows-949-2000"},
        {"MS-949", "windows-949-2000"},
        {"Windows_0949", "windows-949-2000"},
        {"EUC-KR", "EUC-KR"},
        // registered
        {"utf8", "UTF-8"},
        {"us-ascii", "ANSI_X3.4-1968"},
        {"latin1", "ISO_8859-1:1987"},
        {"cp1252", "windows-1252"},
        {"windows-932", "Shift_JIS"},
        {"windows-936", "GBK"},
        {"windows-950", "Big5"},
        {"TIS-620", "TIS-620"},
        // Thai, behind what is registered
        {"windows-874-2000", "windows-874-2000"},
        {"windows-874", "windows-874-2000"},
        {"MS874", "windows-874-2000"},
        {"x-windows-874", "windows-874-2000"},
        {"X_WINDOWS 874", "windows-874-2000"},
        // unknown
        {"", ""},
        {"no such Set", "no such Set"},
        {std::string(1000, 'n'), std::string(1000, 'n')},
        {"\xFF\xFE", "\xFF\xFE"},
        {std::string("utf8\0", 5), std::string("utf8\0", 5)},
        {std::string("ms949\0x", 7), std::string("ms949\0x", 7)},
    };
    for (auto const& [name, standardized] : cases) {
        EXPECT_EQ(StandardizedCharacterSetName(name), standardized);
        EXPECT_EQ(StandardizedCharacterSetName(MakeUTF8Ref(name)), standardized);
    }
}

TEST(StandardizedCharacterSetName, TakesTheThaiRuleOnlyForNamesThatTheRegistryLacks) {
    UErrorCode code = U_ZERO_ERROR;
    ASSERT_EQ(ucnv_getStandardName("x-windows-874", "IANA", &code), nullptr);
    ASSERT_STREQ(ucnv_getStandardName("TIS-620", "IANA", &code), "TIS-620");
    EXPECT_EQ(StandardizedCharacterSetName(std::string("x-windows-874")), "windows-874-2000");
    EXPECT_EQ(StandardizedCharacterSetName(std::string("TIS-620")), "TIS-620");
}

TEST(StandardizedCharacterSetName, IsItsOwnButForOne) {
    EXPECT_EQ(StandardizedCharacterSetName(std::string("ibm-1363_P11B-1998")), "KS_C_5601-1987");
    EXPECT_EQ(StandardizedCharacterSetName(std::string("cp1363")), "KS_C_5601-1987");
    for (std::string const& name : AllNamesOfTheService()) {
        std::string const standardized = StandardizedCharacterSetName(name);
        std::string const again = StandardizedCharacterSetName(standardized);
        EXPECT_EQ(again, standardized == "KS_C_5601-1987" ? "windows-949-2000" : standardized) << name;
    }
}

TEST(StandardizedCharacterSetName, LeavesOutCharactersWithoutALook) {
    EXPECT_EQ(StandardizedCharacterSetName("utf\u200B8"_utf8), "UTF-8");
    EXPECT_EQ(StandardizedCharacterSetName("no\u200B such set"_utf8), "no such set");
    EXPECT_EQ(StandardizedCharacterSetName("\u200B"_utf8), "");
}

TEST(StandardizedCharacterSetName, LeavesANameThatIsNotAsciiAsItStands) {
    EXPECT_EQ(StandardizedCharacterSetName("ms949\xC3\xBC"_utf8), "ms949\xC3\xBC");
    EXPECT_EQ(StandardizedCharacterSetName("utf8\xC3"_utf8), "utf8\xC3");
    EXPECT_EQ(StandardizedCharacterSetName(UStringRef<UTF8>()), "");
}

TEST(EquivalentCharacterSets, ComparesStandardizedNames) {
    EXPECT_TRUE(AreEquivalent("utf-8", "UTF8"));
    EXPECT_TRUE(AreEquivalent("ms949", "korean"));
    EXPECT_TRUE(AreEquivalent("latin1", "ISO-8859-1"));
    EXPECT_TRUE(AreEquivalent("x-windows-874", "MS874"));
    EXPECT_TRUE(AreEquivalent("no-such-set", "NO SUCH SET"));
    EXPECT_FALSE(AreEquivalent("utf-8", "utf-16"));
    EXPECT_FALSE(AreEquivalent("windows-1252", "ISO-8859-1"));
    EXPECT_FALSE(AreEquivalent("no-such-set", "nor-such-set"));
}

TEST(EquivalentCharacterSets, TakesAnEmptyNameForItselfOnly) {
    EXPECT_TRUE(AreEquivalent("", ""));
    EXPECT_TRUE(EquivalentCharacterSets(UStringRef<UTF8>(), ""_utf8));
    EXPECT_FALSE(AreEquivalent("", "utf-8"));
    // Which would compare as empty, since punctuation does not count.
    EXPECT_FALSE(AreEquivalent("", "-"));
    EXPECT_FALSE(AreEquivalent("", "\u200B"));
}

TEST(EquivalentCharacterSets, LeavesOutPunctuationAndCharactersWithoutALook) {
    EXPECT_TRUE(AreEquivalent("utf\u200B8", "UTF-8"));
    EXPECT_TRUE(AreEquivalent("\u200B", "-"));
    EXPECT_TRUE(AreEquivalent("_", "-"));
    EXPECT_FALSE(AreEquivalent("\u200B", "utf-8"));
}

TEST(EquivalentCharacterSets, TakesNamesThatAreNotAsciiForNothing) {
    EXPECT_FALSE(AreEquivalent("\xC3\xBC", "\xC3\xBC"));
    EXPECT_FALSE(AreEquivalent("utf-8", "utf-8\xC3\xBC"));
    EXPECT_FALSE(AreEquivalent("\xFF", "\xFF"));
}

TEST(EquivalentCharacterSets, LooksBehindANUL) {
    EXPECT_FALSE(AreEquivalent(std::string("utf-8\0a", 7), "utf-8"));
    EXPECT_FALSE(AreEquivalent(std::string("a\0b", 3), std::string("a\0c", 3)));
    EXPECT_TRUE(AreEquivalent(std::string("a\0b", 3), std::string("a\0b", 3)));
}

TEST(ValidEncodings, AreTheseSixteenInTheirSpelling) {
    std::vector<std::string> const expected = {
        "UTF-8",        "US-ASCII",     "windows-874",  "windows-932",  "windows-936",  "windows-949",
        "windows-950",  "windows-1250", "windows-1251", "windows-1252", "windows-1253", "windows-1254",
        "windows-1255", "windows-1256", "windows-1257", "windows-1258"};
    std::vector<std::string> valid;
    for (std::string_view const name : GetValidEncodings()) valid.emplace_back(name);
    EXPECT_EQ(valid, expected);
    for (std::string const& name : expected) {
        EXPECT_TRUE(IsValidEncoding(name)) << name;
        EXPECT_TRUE(IsValidEncoding(MakeUTF8Ref(name))) << name;
    }
}

TEST(ValidEncodings, IncludeNoOtherSpelling) {
    for (std::string const& name :
         {std::string("utf-8"), std::string("UTF8"), std::string("us-ascii"), std::string("ASCII"),
          std::string("Windows-1252"), std::string("windows-1259"), std::string("windows-125"),
          std::string("windows-12522"), std::string("ISO-8859-1"), std::string(""), std::string("UTF-8\0", 6),
          std::string("windows-949-2000")}) {
        EXPECT_FALSE(IsValidEncoding(name)) << name;
        EXPECT_FALSE(IsValidEncoding(MakeUTF8Ref(name))) << name;
    }
    EXPECT_FALSE(IsValidEncoding(UStringRef<UTF8>()));
}

TEST(IANACharacterSets, AreSortedAndDescribedEachInALine) {
    auto const names = GetIANACharacterSets();
    ASSERT_EQ(names.Size(), 52u);
    EXPECT_TRUE(std::is_sorted(names.begin(), names.end()));
    EXPECT_EQ(std::adjacent_find(names.begin(), names.end()), names.end());
    for (std::string_view const name : names) {
        std::string_view const description = GetIANACharacterSetDescription(MakeUTF8Ref(std::string(name)));
        EXPECT_FALSE(description.empty()) << name;
        EXPECT_EQ(description.find('\n'), std::string_view::npos) << name;
    }
}

TEST(IANACharacterSets, BearTheNamesThatTheRegistryGivesThem) {
    for (std::string_view const name : GetIANACharacterSets()) {
        UErrorCode code = U_ZERO_ERROR;
        char const* const registered = ucnv_getStandardName(std::string(name).c_str(), "IANA", &code);
        ASSERT_NE(registered, nullptr) << name;
        EXPECT_EQ(registered, name);
        EXPECT_EQ(StandardizedCharacterSetName(std::string(name)), name);
    }
}

TEST(IANACharacterSets, AreDescribedByNameWithoutRegardToCase) {
    EXPECT_EQ(GetIANACharacterSetDescription("windows-1251"_utf8), "Cyrillic code page of desktop systems");
    EXPECT_EQ(GetIANACharacterSetDescription("iso_8859-1:1987"_utf8), "Western European, Latin 1");
    EXPECT_EQ(GetIANACharacterSetDescription("ISO_8859-1:1987"_utf8), "Western European, Latin 1");
}

TEST(IANACharacterSets, HaveNoDescriptionForOtherNames) {
    EXPECT_EQ(GetIANACharacterSetDescription("latin1"_utf8), "");
    EXPECT_EQ(GetIANACharacterSetDescription("UTF-8\xC3\xBC"_utf8), "");
    EXPECT_EQ(GetIANACharacterSetDescription(""_utf8), "");
    EXPECT_EQ(GetIANACharacterSetDescription(UStringRef<UTF8>()), "");
}
