#include "text/IANAEncoding.h"

#include "foundation/Exceptions.h"

#include <gtest/gtest.h>

#include <string>
#include <utility>

namespace {

IANANamedTextEncoding Named(std::string const& name) {
    return IANANamedTextEncoding(MakeConstData(name));
}

std::string Normalized(std::string const& name) {
    return MakeString(NormalizeIANAEncoding(Named(name)).Name());
}

// Every alias and what it stands for.
constexpr std::pair<char const*, char const*> cAliases[] = {
    {"ansi_x3.4-1968", "us-ascii"},
    {"ansi_x3.4-1986", "us-ascii"},
    {"ascii", "us-ascii"},
    {"cp367", "us-ascii"},
    {"csascii", "us-ascii"},
    {"ibm637", "us-ascii"},
    {"iso-ir-6", "us-ascii"},
    {"iso646-us", "us-ascii"},
    {"iso_646.irv:1991", "us-ascii"},
    {"us", "us-ascii"},
    {"cp819", "iso-8859-1"},
    {"csisolatin1", "iso-8859-1"},
    {"ibm819", "iso-8859-1"},
    {"iso-ir-100", "iso-8859-1"},
    {"iso_8859-1", "iso-8859-1"},
    {"iso_8859-1:1987", "iso-8859-1"},
    {"l1", "iso-8859-1"},
    {"latin1", "iso-8859-1"},
};

std::string UpperCase(std::string text) {
    for (char& letter : text) {
        if (letter >= 'a' && letter <= 'z') letter = static_cast<char>(letter - 'a' + 'A');
    }
    return text;
}

} // namespace

TEST(NormalizeIANAEncoding, GivesEachAliasItsCanonicalName) {
    static_assert(std::size(cAliases) == 18);
    for (auto const& [alias, canonical] : cAliases) {
        EXPECT_EQ(Normalized(alias), canonical) << alias;
        EXPECT_EQ(Normalized(UpperCase(alias)), canonical) << alias;
    }
}

TEST(NormalizeIANAEncoding, LeavesCanonicalNamesAsTheyAre) {
    EXPECT_EQ(Normalized("us-ascii"), "us-ascii");
    EXPECT_EQ(Normalized("iso-8859-1"), "iso-8859-1");
}

TEST(NormalizeIANAEncoding, PutsOtherNamesInLowerCaseOnly) {
    EXPECT_EQ(Normalized("UTF-8"), "utf-8");
    EXPECT_EQ(Normalized("UTF8"), "utf8");
    EXPECT_EQ(Normalized("KOI8-R"), "koi8-r");
    EXPECT_EQ(Normalized("Latin2"), "latin2");
    EXPECT_EQ(Normalized("IBM367"), "ibm367");
    EXPECT_EQ(Normalized("latin"), "latin");
    EXPECT_EQ(Normalized("latin11"), "latin11");
    EXPECT_EQ(Normalized("a"), "a");
    EXPECT_EQ(Normalized("zzz"), "zzz");
    EXPECT_EQ(Normalized(""), "");
    EXPECT_EQ(Normalized("\xC4"), "\xC4");
}

TEST(NormalizeIANAEncoding, TakesTheLongestName) {
    EXPECT_EQ(Normalized(std::string(48, 'X')), std::string(48, 'x'));
}

TEST(IANANamedTextEncoding, EqualsItsAliasesInAnyCase) {
    EXPECT_EQ(Named("Latin1"), Named("ISO_8859-1:1987"));
    EXPECT_EQ(Named("ANSI_X3.4-1968"), Named("US-ASCII"));
    EXPECT_EQ(Named("utf-8"), Named("UTF-8"));
    EXPECT_EQ(Named(""), Named(""));
}

TEST(IANANamedTextEncoding, DiffersFromOtherNames) {
    EXPECT_NE(Named("UTF-8"), Named("UTF8"));
    EXPECT_NE(Named("ISO-8859-1"), Named("ISO-8859-15"));
    EXPECT_NE(Named("us-ascii"), Named("iso-8859-1"));
    EXPECT_NE(Named(""), Named("us"));
}
