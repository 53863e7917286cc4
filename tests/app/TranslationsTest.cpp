#include "app/Translations.h"

#include "files/FileErrors.h"
#include "format/MakeUString.h"
#include "format/UFormat.h"
#include "foundation/Exceptions.h"
#include "tests/support/Allocations.h"
#include "tests/support/TemporaryFolder.h"
#include "tests/support/UStringPrinting.h"

#include <algorithm>
#include <fcntl.h>
#include <gtest/gtest.h>
#include <memory>
#include <new>
#include <string>
#include <sys/stat.h>
#include <unistd.h>
#include <vector>

namespace {

class Translations : public testing::Test {
protected:
    Translations() {
        DropTranslations();
        m_folder.Write("brand", "OK\tbrand\nCancel\tbrand\n");
        m_folder.Write("general", "OK\tGut\n");
    }
    ~Translations() override {
        DropTranslations();
        SetCustomFormatOverrideContext(nullptr);
    }

    // What two texts have become, "brand, Gut".
    static std::string Shown() {
        return MakeString(MakeUString(UFormat("Cancel"))) + ", " + MakeString(MakeUString(UFormat("OK")));
    }

    TemporaryFolder m_folder;
};

// Takes so many sets, and refuses those behind.
class LimitedContext : public FormatOverrideContext {
public:
    explicit LimitedContext(int most) : m_left(most) {}
    void AddLanguage(ListLink<FormatOverrideSet const>& link) override {
        if (m_left-- <= 0) throw RequiredValueWouldOverflow();
        FormatOverrideContext::AddLanguage(link);
    }

private:
    int m_left;
};

bool IsOfAFile(FormatOverrideSet const& set) {
    return std::any_of(m_formatFiles.begin(), m_formatFiles.end(),
                       [&](SharingPtr<FormatFile> const& file) { return &file->Overrides() == &set; });
}

// Writes down what each set that goes still says.
class LastWordsContext : public FormatOverrideContext {
public:
    explicit LastWordsContext(std::vector<std::string>& words) : m_words(words) {}
    void RemoveLanguage(ListLink<FormatOverrideSet const>& link) override {
        if (IsOfAFile(link.Object()))
            WriteDown(link.Object());
        else
            m_words.push_back("of a file that is gone");
        FormatOverrideContext::RemoveLanguage(link);
    }

private:
    void WriteDown(FormatOverrideSet const& set) {
        for (FormatOverride const& entry : set.Overrides())
            m_words.push_back(MakeString(entry.first) + "=" + MakeString(entry.second));
    }

    std::vector<std::string>& m_words;
};

} // namespace

TEST_F(Translations, StandInFrontOfThoseAddedBefore) {
    EXPECT_EQ(Shown(), "Cancel, OK");
    AddTranslationFile(m_folder.Location("brand"));
    EXPECT_EQ(Shown(), "brand, brand");
    AddTranslationFile(m_folder.Location("general"));
    EXPECT_EQ(Shown(), "brand, Gut");
    EXPECT_EQ(m_formatFiles.size(), 2u);
    EXPECT_EQ(m_formatOverrides.size(), 2u);
}

TEST_F(Translations, OfOneFileMayBeAddedTwice) {
    AddTranslationFile(m_folder.Location("general"));
    m_folder.Write("general", "OK\tBesser\n");
    AddTranslationFile(m_folder.Location("general"));
    EXPECT_EQ(Shown(), "Cancel, Besser");
    EXPECT_EQ(m_formatFiles.size(), 2u);
}

TEST_F(Translations, HaveNoLanguage) {
    AddTranslationFile(m_folder.Location("general"));
    EXPECT_TRUE((*m_formatFiles.begin())->Overrides().Language().empty());
}

TEST_F(Translations, GoBeforeTheirFilesWhenTheyAreDropped) {
    std::vector<std::string> words;
    SetCustomFormatOverrideContext(std::make_unique<LastWordsContext>(words));
    AddTranslationFile(m_folder.Location("brand"));
    AddTranslationFile(m_folder.Location("general"));
    DropTranslations();
    std::sort(words.begin(), words.end());
    EXPECT_EQ(words, (std::vector<std::string>{"Cancel=brand", "OK=Gut", "OK=brand"}));
    EXPECT_TRUE(m_formatFiles.empty());
    EXPECT_TRUE(m_formatOverrides.empty());
    DropTranslations();
    EXPECT_EQ(words.size(), 3u);
}

TEST_F(Translations, OfAFileThatCannotBeReadLeaveThoseInForceAsTheyAre) {
    AddTranslationFile(m_folder.Location("brand"));
    m_folder.MakeFolder("folder");
    ASSERT_EQ(mkfifo(m_folder.Path("pipe").c_str(), 0600), 0);
    int const writer = open(m_folder.Path("pipe").c_str(), O_RDWR | O_CLOEXEC);
    EXPECT_THROW(AddTranslationFile(m_folder.Location("none")), FileNotFoundError);
    // What length a folder has, and so what of it fails, is up to its file system.
    EXPECT_THROW(AddTranslationFile(m_folder.Location("folder")), DebuggableException);
    EXPECT_THROW(AddTranslationFile(m_folder.Location("pipe")), RequiredValueWouldOverflow);
    EXPECT_THROW(AddTranslationFile(FileLocation()), EmptyFileLocationError);
    close(writer);
    EXPECT_EQ(Shown(), "brand, brand");
    EXPECT_EQ(m_formatFiles.size(), 1u);
    EXPECT_EQ(m_formatOverrides.size(), 1u);
}

TEST_F(Translations, ThatTheContextRefusesLeaveThoseInForceAsTheyAre) {
    SetCustomFormatOverrideContext(std::make_unique<LimitedContext>(1));
    AddTranslationFile(m_folder.Location("brand"));
    EXPECT_THROW(AddTranslationFile(m_folder.Location("general")), RequiredValueWouldOverflow);
    EXPECT_EQ(Shown(), "brand, brand");
    EXPECT_EQ(m_formatFiles.size(), 1u);
    EXPECT_EQ(m_formatOverrides.size(), 1u);
}

TEST_F(Translations, ComeWholeOrNotAtAllWhenMemoryRunsOut) {
    AddTranslationFile(m_folder.Location("brand"));
    FileLocation const general = m_folder.Location("general");
    bool added = false;
    std::size_t failures = 0;
    for (std::size_t successes = 0; !added; ++successes) {
        try {
            FailingAllocation const failing(successes);
            AddTranslationFile(general);
            added = true;
        } catch (std::bad_alloc const&) {
            ++failures;
        }
        std::size_t const files = added ? 2 : 1;
        ASSERT_EQ(m_formatFiles.size(), files) << "after " << successes << " allocations";
        ASSERT_EQ(m_formatOverrides.size(), files) << "after " << successes << " allocations";
        ASSERT_EQ(Shown(), added ? "brand, Gut" : "brand, brand") << "after " << successes << " allocations";
    }
    EXPECT_GE(failures, 5u) << "the contents, the entries, the file, its scope and their places";
}
