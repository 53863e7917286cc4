#include "tests/session/UserOfTheProgram.h"

#include "tests/session/Documents.h"
#include "tests/support/ExpectedDocuments.h"
#include "tests/support/SupportFiles.h"
#include "tests/support/TemporaryFolder.h"
#include "tests/support/TestLocales.h"

#include <sys/stat.h>

// The user's own language, on the screen: which files speak in which locale, what a later initialization
// makes of it, and what happens where a translation cannot be shown. A title is read in every build, other
// texts where widgets tell their values.

namespace {

constexpr char cUseLocale[] = "<UseLocale>true</UseLocale>";

std::string Entry(std::string const& key, std::string const& text) {
    return key + "\t" + text + "\n";
}

// A translation of the title of the window of pending actions.
std::string Title(std::string const& text) {
    return Entry(cTitle, text);
}

} // namespace

class UserOfATranslatedProgram : public UserOfTheProgram {
protected:
    // Locales under the names that a system has for them: a plain one is that of the older encoding. Two of
    // them are unknown to the library of the display.
    UserOfATranslatedProgram() {
        for (char const* const name : {"de_DE.UTF-8", "de.UTF-8", "xx_YY.UTF-8"})
            m_locales.MakeLink(TestLocales::Folder() + "/de_DE.UTF-8", name);
        for (char const* const name : {"de_DE", "de"})
            m_locales.MakeLink(TestLocales::Folder() + "/de_DE.ISO-8859-1", name);
    }

    std::unique_ptr<ClientSession> LaunchedIn(std::string const& locale, std::function<void()> prepare = {}) {
        return Launched(locale, {{"LOCPATH", m_locales.Path()}}, std::move(prepare));
    }
    void Launch(std::string const& locale, std::function<void()> prepare = {}) {
        m_session = LaunchedIn(locale, std::move(prepare));
    }
    void Initialize(std::string const& files, std::string const& settings = cUseLocale) {
        m_session->SendDocument(InitializationOf(Base(), files, settings));
    }

    std::string Base() const { return m_folder.Path("base"); }
    void ExpectEndOf(ClientSession& session, std::string const& dialog) {
        for (int time = 0; time < 2; ++time)
            EXPECT_EQ(session.ReadDocument(), TextNotConvertibleDocument(dialog));
        EXPECT_EQ(session.WaitForExitStatus(), 0);
    }

    TemporaryFolder m_folder;

private:
    TemporaryFolder m_locales;
};

TEST_F(UserOfATranslatedProgram, ReadsTheFileOfTheLocale) {
    struct Case {
        char const* locale;
        bool useLocale;
        char const* file; // whose title shows
        char const* takeAll;
    };
    // Capital A umlaut in both encodings.
    constexpr char inUTF8[] = "\xc3\x84";
    constexpr char inLatin1[] = "\xc4";
    Case const cases[] = {
        {"C", true, "_brand", "All"},
        {"POSIX", true, "_brand", "All"},
        {"C.UTF-8", true, "C", inUTF8},
        {"de", true, "de", inLatin1},
        {"de_DE", true, "de_DE", inLatin1},
        {"de_DE.UTF-8", true, "de_DE", inUTF8},
        // There are files for it, but no such locale on the system.
        {"fr_FR.UTF-8", true, "_brand", "All"},
        {"de_DE.UTF-8", false, "_brand", "All"},
        {"de_DE", false, "_brand", "All"},
    };
    std::vector<std::unique_ptr<ClientSession>> sessions;
    // All at once on one display: each is known by its title.
    auto const titleOf = [&](std::size_t index) { return std::to_string(index) + ": " + cases[index].file; };
    for (Case const& each : cases) {
        std::string const number = std::to_string(sessions.size());
        std::string files =
            SupportFile("_brand.xlat", Title(number + ": _brand") + Entry("Take All Actions", "All"));
        for (std::string const name : {"C", "POSIX", "de", "de_DE", "fr", "fr_FR", ""})
            files +=
                SupportFile(name + ".xlat", Title(number + ": " + name) + Entry("Take All Actions", inUTF8));
        sessions.push_back(LaunchedIn(each.locale));
        sessions.back()->SendDocument(
            InitializationOf(m_folder.Path(number), files, each.useLocale ? cUseLocale : ""));
        sessions.back()->SendDocument(Element("ClientToUI", Action(1)));
    }
    for (std::size_t index = 0; index < sessions.size(); ++index) {
        SCOPED_TRACE(titleOf(index));
        Shell(titleOf(index));
        ExpectLabel(titleOf(index), "form.takeAllActions", cases[index].takeAll);
    }
}

TEST_F(UserOfATranslatedProgram, ReadsATitleWithUmlautsInEachEncoding) {
    for (std::string const locale : {"de_DE", "de_DE.UTF-8"}) {
        Launch(locale);
        Initialize(SupportFile("de_DE.xlat", Title("\xc3\x84ndern: " + locale)));
        Send(Action(1));
        Shell("\xc3\x84ndern: " + locale);
    }
}

TEST_F(UserOfATranslatedProgram, ReadsTheGeneralFileBeforeTheBrandsAndTheFullNamesBeforeTheLanguages) {
    std::string const all = Entry("Snooze", "wrong") + Entry("Action Details", "wrong") +
                            Entry("Take All Actions", "wrong") + Entry("Take Actions", "wrong") +
                            Entry("Cancel Actions", "wrong") + Title("wrong");
    std::string const brand = Entry("Take All Actions", "brand") + Entry("Take Actions", "brand");
    Launch("de_DE.UTF-8");
    Initialize(SupportFile("de.xlat", all) + SupportFile("_brand.xlat", all) +
               SupportFile("_brandde.xlat", all) +
               SupportFile("de_DE.xlat", Title("General") + Entry("Take All Actions", "general")) +
               SupportFile("_brandde_DE.xlat", brand + Title("wrong")));
    Send(Action(1));
    Shell("General");
    ExpectLabel("General", "form.takeAllActions", "general");
    ExpectLabel("General", "form.takeActions", "brand");
    ExpectLabel("General", "form.cancelAction", "Cancel Actions");

    // Without files for the full name, those of the language, and of the brands the one of the language.
    Launch("de_DE.UTF-8");
    Initialize(SupportFile("_brand.xlat", all) + SupportFile("de.xlat", Title("Language")) +
               SupportFile("_brandde.xlat", brand));
    Send(Action(1));
    Shell("Language");
    ExpectLabel("Language", "form.takeAllActions", "brand");
    ExpectLabel("Language", "form.cancelAction", "Cancel Actions");

    // The plain brand where the locale has none, as a title that the general file lacks.
    Launch("de_DE.UTF-8");
    Initialize(SupportFile("de.xlat", Entry("Take All Actions", "general")) +
               SupportFile("_brand.xlat", Title("Brand") + brand));
    Send(Action(1));
    Shell("Brand");
    ExpectLabel("Brand", "form.takeAllActions", "general");
    ExpectLabel("Brand", "form.takeActions", "brand");
}

TEST_F(UserOfATranslatedProgram, FindsFilesByNamesInCapitalsButNotInSubFolders) {
    Launch("de_DE.UTF-8");
    Initialize(SupportFileWith("de_DE.xlat", Base64(Title("In a folder")), "<SubFolder>a</SubFolder>") +
               SupportFile("DE_DE.XLAT", Title("Capitals")) + SupportFile("De_De.xlat", Title("Second")));
    Send(Action(1));
    Shell("Capitals");
    EXPECT_EQ(m_folder.Read("base/de_DE.xlat"), Title("In a folder"));
}

TEST_F(UserOfATranslatedProgram, ReadsTheLaterOfTwoFilesOfOneName) {
    Launch("de_DE.UTF-8");
    Initialize(SupportFile("de.xlat", Title("First, and longer")) + SupportFile("de.xlat", Title("Second")));
    Send(Action(1));
    Shell("Second");
}

// All translations go, a brand's as well: the toolkit has fallen back to the plain locale.
TEST_F(UserOfATranslatedProgram, ReadsEnglishWhereTheDisplayKnowsNoSuchLocale) {
    for (std::string const language : {"xx_YY", "de"}) {
        Launch(language + ".UTF-8");
        Initialize(SupportFile(language + ".xlat", Title("Wrong")) +
                   SupportFile("_brand.xlat", Title("Brand")));
        Send(Action(1));
        Shell();
    }
}

TEST_F(UserOfATranslatedProgram, ReadsTheTranslationOfTheFirstMessageThatSucceeds) {
    Launch("de_DE.UTF-8");
    Initialize(SupportFile("de_DE.xlat", Title("Failed")) + SupportFile("_brand.xlat", Title("Failed")) +
                   SupportFile("..", ""),
               "");
    ASSERT_TRUE(WaitFor([&] { return m_folder.Has("base/_brand.xlat"); }));
    Initialize(SupportFile("de.xlat", Title("Succeeded")));
    Send(Action(1));
    Shell("Succeeded");
    EXPECT_FALSE(m_folder.Has("base/de_DE.xlat"));
    EXPECT_FALSE(m_folder.Has("base/_brand.xlat"));

    // One that comes later is passed over, and what stands behind it in the document is not.
    std::string const later =
        InitializationOf(Base(), SupportFile("de_DE.xlat", Title("Later")), "<AllowSnooze>x</AllowSnooze>");
    std::string const root = "<ClientToUI>";
    std::string const element = later.substr(later.find(root) + root.size());
    m_session->SendDocument(root + CompletionMessage(1, "before") + element.substr(0, element.find("</Cl")) +
                            Message(2, "behind") + "</ClientToUI>");
    Shell(cCompletionTitle);
    Shell("behind");
    LetATickPass();
    EXPECT_TRUE(IsShown("Succeeded"));
    EXPECT_TRUE(m_folder.Has("base/de.xlat"));
    EXPECT_FALSE(m_folder.Has("base/de_DE.xlat"));
}

TEST_F(UserOfATranslatedProgram, ReadsEnglishWhenOnlyAMessageThatFailedAskedForTheLocale) {
    // The program may not read what it has written; that it reads only behind the look at the locale.
    Launch("de_DE.UTF-8", [] {
        ObeyPermissions();
        umask(0777);
    });
    m_folder.MakeFolder("base");
    Initialize(SupportFile("de_DE.xlat", Title("Failed")));
    ASSERT_TRUE(WaitFor([&] { return m_folder.Has("base/de_DE.xlat"); }));
    Initialize(SupportFile("de.xlat", Title("Not asked for")), "");
    Send(Action(1));
    Shell();
    ExpectText(cTitle, "form.actiondesc", "international", "false");
}

TEST_F(UserOfATranslatedProgram, ReadsEnglishWithoutAnyFile) {
    Launch("de_DE.UTF-8");
    Initialize("");
    Send(Action(1));
    Shell();
    ExpectLabel(cTitle, "form.takeAllActions", "Take All Actions");
    EXPECT_TRUE(std::filesystem::is_empty(Base()));
}

TEST_F(UserOfATranslatedProgram, LosesTheProgramWithAWindowWhoseTranslationCannotBeShown) {
    std::string const entries[] = {
        Title("{"),
        Title("Aktionen {"),
        Title("{nope}"),
        Title("{_nope}"),
        Title("{}"),
        Entry("Take All Actions", "{count}"),
        Entry("There is 1 pending action.", "{x} Aktion"),
        // What the encoding of the locale cannot spell, and no text.
        Entry("Take Actions", "\xe2\x82\xac"),
        Entry("Take Actions", "\xff"),
    };
    std::vector<std::unique_ptr<ClientSession>> sessions;
    for (std::string const& entry : entries) {
        sessions.push_back(LaunchedIn("de_DE"));
        std::string const folder = m_folder.Path(std::to_string(sessions.size()));
        sessions.back()->SendDocument(InitializationOf(folder, SupportFile("de.xlat", entry), cUseLocale));
        sessions.back()->SendDocument(Element("ClientToUI", Action(1)));
    }
    for (std::size_t index = 0; index < sessions.size(); ++index) {
        SCOPED_TRACE(entries[index]);
        ExpectEndOf(*sessions[index], "ActionRequestDialog");
    }
}

// The title is one of the texts that have something to fall back on.
TEST_F(UserOfATranslatedProgram, ReadsThatATitleCannotBeSpelled) {
    for (char const* const title : {"\xe2\x82\xac", "\xff"}) {
        Launch("de_DE");
        Initialize(SupportFile("de.xlat", Title(title)));
        Send(Action(1));
        Shell("<Invalid String>");
    }
}

TEST_F(UserOfATranslatedProgram, ReadsATranslationWithBracesThatMeanNothing) {
    Launch("de_DE.UTF-8");
    Initialize(
        SupportFile("de.xlat", Title("a}b {_obrace}c{_cbrace}") + Entry("unknown {", "{") + Entry("{", "}")));
    Send(Action(1));
    Shell("a}b {c}");
}

// The window of pending actions is of use until another opens that cannot be shown.
TEST_F(UserOfATranslatedProgram, UsesTheProgramUntilABrokenTranslationIsNeeded) {
    struct Case {
        char const* title;
        char const* dialog;
        std::string document;
        char const* button; // instead of a document
    };
    Case const cases[] = {
        {cNoticeTitle, "QuietModeDialog", QuietPeriodStart(TimeFromNow(0), TimeFromNow(60)), ""},
        {cCompletionTitle, "MessageDialog", CompletionMessage(2, "title"), ""},
        {cDetailsTitle, "ActionDetailsDialog", "", "form.actionDetails"},
        {cConfirmationTitle, "ConfirmationDialog", "", "form.takeActions"},
    };
    std::vector<std::unique_ptr<ClientSession>> sessions;
    for (Case const& each : cases) {
        sessions.push_back(LaunchedIn("de_DE.UTF-8"));
        std::string const entries = Title(each.dialog) + Entry(each.title, "{broken");
        sessions.back()->SendDocument(
            InitializationOf(m_folder.Path(each.dialog), SupportFile("de.xlat", entries), cUseLocale));
        sessions.back()->SendDocument(Element(
            "ClientToUI", Action(1, Element("Preview", "text") + Element("PreActionMessage", "Sure?"))));
    }
    // No window comes up over another any more.
    for (Case const& each : cases) Shell(each.dialog);
    for (std::size_t index = 0; index < sessions.size(); ++index) {
        Case const& each = cases[index];
        m_user.Raise(Shell(each.dialog));
        m_user.ClickRow(Part("form.viewport.", each.dialog), 0);
        if (each.document.empty())
            Click(each.button, each.dialog);
        else
            sessions[index]->SendDocument(Element("ClientToUI", each.document));
    }
    for (std::size_t index = 0; index < sessions.size(); ++index) {
        SCOPED_TRACE(cases[index].dialog);
        ExpectEndOf(*sessions[index], cases[index].dialog);
    }
}

// The number of open descriptors tells whether something was left open.
TEST_F(UserOfATranslatedProgram, MeetsNoDescriptorLeftOpenByAnyMessage) {
    Launch("de_DE.UTF-8");
    std::size_t const waiting = m_session->CountDescriptors();
    std::string const files = SupportFile("de.xlat", Title("Aktionen")) + SupportFile("_brand.xlat", "") +
                              SupportFileWith("broken", "Q?U!J") + SupportFile("a", "b");
    auto const expectOpen = [&](std::size_t count) {
        // Something may be under way.
        EXPECT_TRUE(WaitFor([&] { return m_session->CountDescriptors() == count; }))
            << m_session->CountDescriptors() << " instead of " << count;
    };
    Initialize(files + SupportFile("..", ""));
    ASSERT_TRUE(WaitFor([&] { return m_folder.Has("base/a"); }));
    expectOpen(waiting);
    m_session->SendDocument("no element");
    m_session->SendDocument(InitializationOf(Base() + "/a", files));
    m_session->SendDocument(InitializationOf("/", files));
    Initialize(files + SupportFile(std::string(256, 'n'), "") + SupportFile("b", ""));
    Initialize(files, "<TrayMode>x</TrayMode>");
    // Until it is taken: it may meet the batch of one that fails.
    EXPECT_TRUE(WaitFor([&] {
        Initialize(files + SupportFile("c", ""));
        return WaitFor([&] { return m_folder.Has("base/c"); }, std::chrono::milliseconds(1500));
    }));
    LetATickPass();
    // The connection to the display is all that has come.
    expectOpen(waiting + 1);

    std::string const actions =
        Action(1, Element("Preview", "text") + Element("Deadline", TimeFromNow(3600))) + AskingAction(2);
    struct Step {
        std::string document;
        std::string title;  // of the window that it opens
        std::string button; // that closes it
    };
    Step const steps[] = {
        {actions, "Aktionen", ""},
        {Withdrawal("Action", 1) + Withdrawal("Offer", 2) + Withdrawal("All", 9), "", ""},
        {Message(1, "Note", Element("Timeout", "PT1H")), "Note", "form.dismiss"},
        {CompletionMessage(2, "Backup"), cCompletionTitle, ""},
        {Withdrawal("Message", 2), "", ""},
        {Element("ActionRunningTopmost", Element("Enabled", "true")) + Message(3, "Above"), "Above", ""},
        {QuietPeriodStart(TimeFromNow(0), TimeFromNow(60)), cNoticeTitle, "form.ok"},
        {QuietPeriodEnd(), "", ""},
        {Element("InitializationInfo", Element("BaseDirectory", Base()) + files), "", ""},
        // The rest of a batch goes with what fails, so that what is sent next must not meet it.
        {Message(4, "Handled") + Element("ActionRequest", Element("ID", "x")), "Handled", ""},
        {Element("Unknown", files), "", ""},
    };
    for (Step const& step : steps) {
        SCOPED_TRACE(step.document);
        Send(step.document);
        if (!step.title.empty()) Shell(step.title);
        if (!step.button.empty()) CloseBy(step.button, step.title);
        // Behind the quiet period's start nothing is taken.
        if (step.title == cNoticeTitle) continue;
        LetATickPass();
        expectOpen(waiting + 1);
    }
}
