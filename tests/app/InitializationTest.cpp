// First: X.h defines names that the test framework uses.
#include <gtest/gtest.h>

#include "app/ClientMessages.h"
#include "app/Translations.h"
#include "app/WidgetHelpers.h"
#include "files/FileErrors.h"
#include "format/FormatOverrideContext.h"
#include "foundation/Exceptions.h"
#include "tests/app/ProcessStateFixture.h"
#include "tests/files/ChildProcess.h"
#include "tests/support/LocaleScope.h"
#include "tests/support/SupportFiles.h"
#include "tests/support/TemporaryFolder.h"

#include <cstdlib>
#include <memory>
#include <sys/stat.h>

// An InitializationInfo applied whole: the session directory, the support files and the translations.

class Initialization : public ProcessStateTest {
protected:
    Initialization() { DropTranslations(); }
    ~Initialization() override {
        DropTranslations();
        std::setlocale(LC_ALL, "C");
        unsetenv("LC_ALL");
    }

    // The environment's locale, which nothing has looked at yet.
    static void Environment(char const* locale) {
        setenv("LOCPATH", TestLocales::Folder().c_str(), 1);
        setenv("LC_ALL", locale, 1);
        std::setlocale(LC_ALL, "C");
    }

    // Sends the message and handles it.
    void Initialize(std::string const& files, bool useLocale = true) {
        Receive(Document("<InitializationInfo><BaseDirectory>" + Base() + "</BaseDirectory>" + files +
                         "<InitialUISettings><UseLocale>" + (useLocale ? "true" : "false") +
                         "</UseLocale></InitialUISettings></InitializationInfo>"));
        ProcessMessagesFromClient();
    }

    std::string Base() const { return m_folder.Path("base"); }
    static std::string Shown(char const* text) { return *ControlLiteral(text); }

    TemporaryFolder m_folder;
};

TEST_F(Initialization, LaysDownTheFilesAndIsDone) {
    Initialize(SupportFile("a", "first") + SupportFile("b", "second"));
    EXPECT_TRUE(initialized);
    EXPECT_EQ(m_folder.Read("base/a"), "first");
    EXPECT_EQ(m_folder.Read("base/b"), "second");
    EXPECT_EQ(m_baseDirectory.Compare(m_folder.Location("base")), 0);
}

TEST_F(Initialization, RemovesWhatAFormerRunHasLeft) {
    m_folder.MakeFolder("base");
    m_folder.Write("base/old", "x");
    Initialize(SupportFile("new", "y"));
    EXPECT_FALSE(m_folder.Has("base/old"));
    EXPECT_TRUE(m_folder.Has("base/new"));
}

TEST_F(Initialization, ThatFailsIsNoInitializationAndTheNextBeginsAnew) {
    Initialize(SupportFile("a", "first") + SupportFile("..", "x"));
    EXPECT_FALSE(initialized);
    EXPECT_TRUE(m_folder.Has("base/a"));
    EXPECT_TRUE(Sent().empty());
    Initialize(SupportFile("b", "second"));
    EXPECT_TRUE(initialized);
    EXPECT_FALSE(m_folder.Has("base/a"));
    EXPECT_EQ(m_folder.Read("base/b"), "second");
}

TEST_F(Initialization, ThatComesSecondTouchesNothing) {
    Initialize(SupportFile("a", "first"));
    Initialize(SupportFile("b", "second"));
    EXPECT_TRUE(m_folder.Has("base/a"));
    EXPECT_FALSE(m_folder.Has("base/b"));
}

TEST_F(Initialization, TranslatesForTheLocale) {
    Environment("de_DE.UTF-8");
    Initialize(SupportFile("de.xlat", "OK\tGut\n") + SupportFile("de_DE.xlat", "OK\tIn Ordnung\n"));
    EXPECT_TRUE(international);
    EXPECT_EQ(Shown("OK"), "In Ordnung");
    EXPECT_EQ(Shown("Cancel"), "Cancel") << "only one of the two files is loaded";
}

TEST_F(Initialization, FallsBackOnTheLanguage) {
    Environment("de_DE.UTF-8");
    Initialize(SupportFile("de.xlat", "OK\tGut\n"));
    EXPECT_EQ(Shown("OK"), "Gut");
}

TEST_F(Initialization, GeneralTranslationComesBeforeTheBrands) {
    Environment("de_DE.UTF-8");
    Initialize(SupportFile("de.xlat", "OK\tGut\n") +
               SupportFile("_brand.xlat", "OK\tplain\nCancel\tplain\nSnooze\tplain\n") +
               SupportFile("_brandde.xlat", "OK\tbrand\nCancel\tbrand\n"));
    EXPECT_EQ(Shown("OK"), "Gut");
    EXPECT_EQ(Shown("Cancel"), "brand");
    EXPECT_EQ(Shown("Snooze"), "Snooze") << "the plain brand stands back for that of the locale";
}

TEST_F(Initialization, PlainBrandCountsWithoutALocale) {
    Environment("de_DE.UTF-8");
    Initialize(SupportFile("de.xlat", "OK\tGut\n") + SupportFile("_brand.xlat", "OK\tplain\n"), false);
    EXPECT_FALSE(international);
    EXPECT_EQ(Shown("OK"), "plain");
    EXPECT_STREQ(std::setlocale(LC_ALL, nullptr), "C") << "nobody has looked at the locale";
}

TEST_F(Initialization, PlainBrandCountsWhereTheLocaleHasNone) {
    Environment("de_DE.UTF-8");
    Initialize(SupportFile("_brand.xlat", "OK\tplain\n") + SupportFile("_brandfr.xlat", "OK\twrong\n"));
    EXPECT_EQ(Shown("OK"), "plain");
}

TEST_F(Initialization, LooksAtTheCharactersOfTheLocaleAlone) {
    Environment("de_DE.UTF-8");
    Initialize("");
    EXPECT_STREQ(std::setlocale(LC_CTYPE, nullptr), "de_DE.UTF-8");
    EXPECT_STREQ(std::setlocale(LC_TIME, nullptr), "C");
    EXPECT_STREQ(std::setlocale(LC_NUMERIC, nullptr), "C");
}

namespace {

// Takes one set, and no second.
class NarrowContext : public FormatOverrideContext {
public:
    void AddLanguage(ListLink<FormatOverrideSet const>& link) override {
        if (m_full) throw RequiredValueWouldOverflow();
        m_full = true;
        FormatOverrideContext::AddLanguage(link);
    }

private:
    bool m_full = false;
};

} // namespace

// The user sees nothing of it, as there is no dialog yet, and the client hears nothing.
TEST_F(Initialization, NothingOfOneThatFailedAmongItsTranslationsStaysInForce) {
    Environment("de_DE.UTF-8");
    SetCustomFormatOverrideContext(std::make_unique<NarrowContext>());
    Initialize(SupportFile("_brand.xlat", "OK\tbrand\n") + SupportFile("de_DE.xlat", "OK\tGut\n"));
    EXPECT_FALSE(initialized);
    EXPECT_TRUE(Sent().empty());
    EXPECT_TRUE(m_folder.Has("base/de_DE.xlat"));
    EXPECT_EQ(m_formatOverrides.size(), 1u) << "it has failed between the two";
    Initialize("", false);
    EXPECT_TRUE(initialized);
    EXPECT_FALSE(international);
    EXPECT_STREQ(std::setlocale(LC_CTYPE, nullptr), "de_DE.UTF-8") << "nobody asks for another";
    EXPECT_TRUE(m_formatOverrides.empty());
    EXPECT_TRUE(m_formatFiles.empty());
    EXPECT_EQ(Shown("OK"), "OK");
    DropTranslations();
    SetCustomFormatOverrideContext(nullptr);
}

// Files that nobody may read, such as this umask makes of all that are laid down.
TEST_F(Initialization, FailsForATranslationThatCannotBeRead) {
    m_folder.MakeFolder("base");
    chmod(m_folder.Path().c_str(), 0777);
    chmod(Base().c_str(), 0777);
    EXPECT_EQ(InChild([&] {
                  if (!BecomeOrdinaryUser()) return std::string(cNotAllowed);
                  umask(0777);
                  Initialize(SupportFile("other", "x"));
                  std::string const withoutTranslation = initialized ? "done, " : "failed, ";
                  initialized = false;
                  Initialize(SupportFile("_brand.xlat", "OK\tbrand\n"));
                  std::string const withTranslation = initialized ? "done, " : "failed, ";
                  umask(0077);
                  Initialize(SupportFile("_brand.xlat", "OK\tbrand\n"));
                  return withoutTranslation + withTranslation + Shown("OK");
              }),
              "done, failed, brand");
}

// The locale is looked at only after the files have been written.
TEST_F(Initialization, FailsForADirectoryThatThePlainLocaleCannotSpell) {
    Environment("de_DE.UTF-8");
    Receive(Document("<InitializationInfo><BaseDirectory>" + Base() +
                     "\xc3\xa4</BaseDirectory></InitializationInfo>"));
    ProcessMessagesFromClient();
    EXPECT_FALSE(initialized);
}

TEST_F(Initialization, UnknownAndPlainLocalesHaveNoTranslation) {
    for (char const* const locale : {"C", "POSIX", "xx_XX.UTF-8"}) {
        Environment(locale);
        initialized = false;
        Initialize(SupportFile("xx.xlat", "OK\twrong\n") + SupportFile("C.xlat", "OK\twrong\n") +
                   SupportFile(".xlat", "OK\twrong\n"));
        EXPECT_TRUE(initialized) << locale;
        EXPECT_FALSE(international) << locale;
        EXPECT_EQ(Shown("OK"), "OK") << locale;
    }
}

TEST_F(Initialization, CUTF8IsALocaleWithoutALanguage) {
    Environment("C.UTF-8");
    Initialize(SupportFile("C.xlat", "OK\tc\n"));
    EXPECT_TRUE(international);
    EXPECT_EQ(Shown("OK"), "c");
}

TEST_F(Initialization, WritesTextsInTheEncodingOfTheLocale) {
    Environment("de_DE.ISO-8859-1");
    Initialize(SupportFile("de_DE.xlat", "OK\tSchlie\xc3\x9f"
                                         "en\n"));
    EXPECT_EQ(Shown("OK"), "Schlie\xdf"
                           "en");
}

TEST_F(Initialization, LoadsTheLaterOfTwoFilesOfOneName) {
    Environment("de_DE.UTF-8");
    Initialize(SupportFile("de.xlat", "OK\tfirst\n") + SupportFile("de.xlat", "OK\tsecond\n"));
    EXPECT_EQ(Shown("OK"), "second");
}

// The first one is what is looked for, and the other one is what stands under its name.
TEST_F(Initialization, LoadsWhatAFileOfASubFolderHasPutInThePlaceOfOneWithoutAny) {
    Environment("de_DE.UTF-8");
    Initialize(SupportFile("de.xlat", "OK\tfirst\n") +
               SupportFileWith("de.xlat", Base64("OK\tsecond\n"), "<SubFolder>a</SubFolder>"));
    EXPECT_EQ(Shown("OK"), "second");
}

TEST_F(Initialization, FindsATranslationByANameInCapitals) {
    Environment("de_DE.UTF-8");
    Initialize(SupportFile("DE_DE.XLAT", "OK\tGut\n"));
    EXPECT_EQ(Shown("OK"), "Gut");
}

TEST_F(Initialization, TranslationsGoWhenTheyAreDropped) {
    Environment("de_DE.UTF-8");
    Initialize(SupportFile("de.xlat", "OK\tGut\n") + SupportFile("_brand.xlat", "Cancel\tbrand\n"));
    EXPECT_EQ(m_formatFiles.size(), 2u);
    EXPECT_EQ(m_formatOverrides.size(), 2u);
    DropTranslations();
    EXPECT_TRUE(m_formatFiles.empty());
    EXPECT_TRUE(m_formatOverrides.empty());
    EXPECT_EQ(Shown("OK"), "OK");
    EXPECT_EQ(Shown("Cancel"), "Cancel");
}
