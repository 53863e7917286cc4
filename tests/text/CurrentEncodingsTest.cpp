#include "text/CurrentEncodings.h"
#include "foundation/Exceptions.h"
#include "text/CharacterSet.h"

#include <gtest/gtest.h>

#include <clocale>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iomanip>
#include <string>

#include <sys/wait.h>

namespace {

std::string const cLocaleName = "en_US.UTF-8";

// Each test leaves the encodings and the locale as a fresh process has them.
class CurrentEncodings : public testing::Test {
protected:
    void TearDown() override {
        std::setlocale(LC_ALL, "C");
        unsetenv("LOCPATH");
        InitializeEncoding("ANSI_X3.4-1968", false);
        std::filesystem::remove_all(m_folder);
    }

    // Makes the C library look for locales in a folder of the test's own.
    std::string UseLocaleFolder() {
        std::string folder = std::filesystem::temp_directory_path() / "locales-XXXXXX";
        EXPECT_NE(mkdtemp(folder.data()), nullptr);
        setenv("LOCPATH", folder.c_str(), 1);
        return m_folder = folder;
    }

    // Compiles a locale whose encoding is ASCII by a name of its own.
    void MakeLocaleOfAscii(std::string const& locale, std::string const& encoding) {
        std::string const folder = UseLocaleFolder();
        std::ofstream charmap(folder + "/charmap");
        charmap << "<code_set_name> " << encoding << "\n<mb_cur_min> 1\n<mb_cur_max> 1\nCHARMAP\n"
                << std::hex;
        charmap << std::setfill('0') << std::uppercase;
        for (int c = 0; c < 128; ++c)
            charmap << "<U" << std::setw(4) << c << "> /x" << std::setw(2) << c << " c\n";
        charmap << "END CHARMAP\n";
        charmap.close();
        std::string const command = "localedef --no-archive -c -i POSIX -f " + folder + "/charmap " + folder +
                                    "/" + locale + " >/dev/null 2>&1";
        // Status 1: compiled, with warnings.
        int const status = std::system(command.c_str());
        ASSERT_TRUE(WIFEXITED(status) && WEXITSTATUS(status) <= 1);
    }

    std::string m_folder;
};

std::string Current() {
    return std::setlocale(LC_ALL, nullptr);
}

std::string NameOf(IANANamedTextEncoding const& encoding) {
    return encoding.NullTerminatedName();
}

// In a process where nobody has asked for the encodings yet.
bool TakesANameIn(std::string const& locale) {
    if (!std::setlocale(LC_ALL, locale.c_str())) return false;
    if (GetDefaultCharacterSetName().size() <= IANANamedTextEncoding::capacity) return false;
    InitializeEncoding("KOI8-R", false);
    return GetLocalEncodingName() == "KOI8-R" && NameOf(GetLocalEncoding()) == "KOI8-R";
}

} // namespace

TEST_F(CurrentEncodings, KeepTheLocalNameThatIsGiven) {
    InitializeEncoding("ISO-8859-15", false);
    EXPECT_EQ(GetLocalEncodingName(), "ISO-8859-15");
    EXPECT_EQ(NameOf(GetLocalEncoding()), "ISO-8859-15");
    InitializeEncoding("", false);
    EXPECT_EQ(GetLocalEncodingName(), "");
    EXPECT_EQ(NameOf(GetLocalEncoding()), "");
    EXPECT_EQ(Current(), "C");
}

TEST_F(CurrentEncodings, NameUTF8WhateverTheLocalOneIs) {
    InitializeEncoding("ISO-8859-15", false);
    EXPECT_EQ(GetUTF8EncodingName(), "UTF-8");
    EXPECT_EQ(NameOf(GetUTF8Encoding()), "UTF-8");
    EXPECT_EQ(GetVXFEncodingName(), "UTF-8");
    EXPECT_EQ(NameOf(GetVXFNamedTextEncoding()), "UTF-8");
}

TEST_F(CurrentEncodings, StayTheSameObjects) {
    auto const* const name = &GetLocalEncodingName();
    auto const* const encoding = &GetLocalEncoding();
    InitializeEncoding("KOI8-R", false);
    EXPECT_EQ(&GetLocalEncodingName(), name);
    EXPECT_EQ(&GetLocalEncoding(), encoding);
    EXPECT_EQ(&GetUTF8EncodingName(), &GetUTF8EncodingName());
    EXPECT_EQ(&GetVXFNamedTextEncoding(), &GetVXFNamedTextEncoding());
}

TEST_F(CurrentEncodings, RefuseANameAbove48BytesAndStayAsTheyAre) {
    std::string const longest(48, 'n');
    InitializeEncoding(longest, false);
    EXPECT_EQ(GetLocalEncodingName(), longest);
    EXPECT_EQ(NameOf(GetLocalEncoding()), longest);
    EXPECT_THROW(InitializeEncoding(longest + "n", false), ConstDataCapacityExceeded);
    EXPECT_EQ(GetLocalEncodingName(), longest);
}

TEST_F(CurrentEncodings, GoOverToUTF8WhereItIsPreferredAndInstalled) {
    std::string const command = "localedef --no-archive -i en_US -f UTF-8 " + UseLocaleFolder() + "/" +
                                cLocaleName + " >/dev/null 2>&1";
    ASSERT_EQ(std::system(command.c_str()), 0);
    EXPECT_THROW(InitializeEncoding(std::string(49, 'n'), true), ConstDataCapacityExceeded);
    EXPECT_EQ(Current(), "C");
    InitializeEncoding("ISO-8859-15", false);
    EXPECT_EQ(Current(), "C");
    InitializeEncoding("ISO-8859-15", true);
    EXPECT_EQ(Current(), cLocaleName);
    EXPECT_EQ(GetLocalEncodingName(), "utf-8");
    EXPECT_EQ(NameOf(GetLocalEncoding()), "utf-8");
    EXPECT_EQ(GetUTF8EncodingName(), "UTF-8");
    EXPECT_EQ(GetDefaultCharacterSetName(), "UTF-8");
}

TEST_F(CurrentEncodings, KeepTheLocalNameWhereUTF8IsPreferredButNotInstalled) {
    UseLocaleFolder();
    InitializeEncoding("ISO-8859-15", true);
    EXPECT_EQ(Current(), "C");
    EXPECT_EQ(GetLocalEncodingName(), "ISO-8859-15");
    EXPECT_EQ(NameOf(GetLocalEncoding()), "ISO-8859-15");
}

TEST_F(CurrentEncodings, AreNamesThatACharacterSetOpens) {
    InitializeEncoding(GetDefaultCharacterSetName(), false);
    for (std::string const& name : {GetLocalEncodingName(), GetUTF8EncodingName(), GetVXFEncodingName()})
        EXPECT_NO_THROW(CharacterSet(name, CharacterSet::InvalidCharacterAction::Stop, false)) << name;
}

TEST_F(CurrentEncodings, FollowTheLocaleUntilTheyAreInitialized) {
    testing::FLAGS_gtest_death_test_style = "threadsafe";
    EXPECT_EXIT(std::exit(std::setlocale(LC_ALL, "C.UTF-8") && GetLocalEncodingName() == "UTF-8" ? 0 : 1),
                testing::ExitedWithCode(0), "");
    EXPECT_EXIT(std::exit(GetLocalEncodingName() == "ANSI_X3.4-1968" ? 0 : 1), testing::ExitedWithCode(0),
                "");
}

TEST_F(CurrentEncodings, TakeAGoodNameWhereTheLocalesOwnIsTooLong) {
    std::string const locale = "longname";
    MakeLocaleOfAscii(locale, std::string(49, 'N'));
    testing::FLAGS_gtest_death_test_style = "threadsafe";
    // The process that is started has made a folder of its own.
    auto const takeAndCleanUp = [&] {
        bool const taken = TakesANameIn(locale);
        std::filesystem::remove_all(m_folder);
        std::exit(taken ? 0 : 1);
    };
    EXPECT_EXIT(takeAndCleanUp(), testing::ExitedWithCode(0), "");
}

TEST_F(CurrentEncodings, NameTheEncodingOfTheLocaleInForce) {
    EXPECT_EQ(GetDefaultCharacterSetName(), "ANSI_X3.4-1968");
    ASSERT_NE(std::setlocale(LC_ALL, "C.UTF-8"), nullptr);
    EXPECT_EQ(GetDefaultCharacterSetName(), "UTF-8");
}
