// First: X.h defines names that the test framework uses.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "app/DefaultFontSet.h"
#include "app/ToolkitWarnings.h"
#include "tests/app/ProcessStateFixture.h"

#include <clocale>

using testing::ElementsAre;
using testing::IsEmpty;

namespace {

struct PassedOn {
    std::string name;
    std::string defaultText;
    Cardinal* parameterCount;
};
std::vector<PassedOn> passedOn;

void NotePassedOn(String name, String, String, String defaultText, String*, Cardinal* parameterCount) {
    passedOn.push_back({name ? name : "null", defaultText ? defaultText : "null", parameterCount});
}

std::string Warning(std::string const& text) {
    return "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
           "<ClientToUI>\n"
           "\t<ClientUIErrorMessage>\n"
           "\t\t<DebugString>" +
           text +
           "</DebugString>\n"
           "\t\t<ErrorCode>1</ErrorCode>\n"
           "\t</ClientUIErrorMessage>\n"
           "</ClientToUI>";
}

} // namespace

class ToolkitWarnings : public ProcessStateTest {
protected:
    ToolkitWarnings() {
        passedOn.clear();
        missingCharSets.clear();
        defaultWarningMsgHandler = NotePassedOn;
    }
    ~ToolkitWarnings() override {
        missingCharSets.clear();
        defaultWarningMsgHandler = nullptr;
        setlocale(LC_ALL, "C");
    }

    // A warning of that name and class as the toolkit gives it; null stands for itself.
    static void Warn(char const* name, char const* warningClass, Cardinal* parameterCount = nullptr) {
        // The toolkit's own type for a text is not const, and the handler changes nothing.
        auto const text = [](char const* constant) { return const_cast<String>(constant); };
        WarningMsgHandler(text(name), text("aType"), text(warningClass), text("the default text"), nullptr,
                          parameterCount);
    }
};

TEST_F(ToolkitWarnings, GoOnToTheFormerHandlerAndNotToTheClient) {
    Cardinal count = 0;
    Warn("aName", "aClass", &count);
    EXPECT_THAT(Sent(), IsEmpty());
    ASSERT_EQ(passedOn.size(), 1u);
    EXPECT_EQ(passedOn[0].name, "aName");
    EXPECT_EQ(passedOn[0].defaultText, "the default text");
    EXPECT_EQ(passedOn[0].parameterCount, &count);
}

TEST_F(ToolkitWarnings, EachOneTellsTheClientWhatIsMissing) {
    missingCharSets = {"Default Xt font type: x", "ISO8859-2", "KOI8-R"};
    Warn("aName", "aClass");
    Warn("other", "another");
    EXPECT_THAT(
        Sent(),
        ElementsAre(
            Warning("aName (aClass) ( missing charsets: Default Xt font type: x ISO8859-2 KOI8-R )"),
            Warning("other (another) ( missing charsets: Default Xt font type: x ISO8859-2 KOI8-R )")));
    EXPECT_EQ(passedOn.size(), 2u) << "the former handler hears of them as well";
}

TEST_F(ToolkitWarnings, WithoutAClassTheNameStandsAlone) {
    missingCharSets = {"ISO8859-2"};
    Warn("aName", nullptr);
    EXPECT_THAT(Sent(), ElementsAre(Warning("aName")));
}

TEST_F(ToolkitWarnings, WithoutANameAndClassAreHandled) {
    missingCharSets = {"ISO8859-2"};
    Warn(nullptr, nullptr);
    Warn(nullptr, "aClass");
    EXPECT_THAT(Sent(), ElementsAre(Warning(""), Warning(" (aClass) ( missing charsets: ISO8859-2 )")));
    EXPECT_EQ(passedOn.size(), 2u);
}

TEST_F(ToolkitWarnings, WithoutAFormerHandlerEndHere) {
    defaultWarningMsgHandler = nullptr;
    Warn("aName", "aClass");
    EXPECT_THAT(Sent(), IsEmpty());
}

TEST_F(ToolkitWarnings, NameThatOnlyBeginsLikeNoFontIsNotFatal) {
    Warn("noFonts", "aClass");
    Warn("noFon", "aClass");
    Warn("nofont", "aClass");
    EXPECT_THAT(Sent(), IsEmpty());
    EXPECT_EQ(passedOn.size(), 3u);
}

TEST_F(ToolkitWarnings, TextThatTheLocaleCannotReadKeepsItsAscii) {
    setlocale(LC_ALL, "C");
    missingCharSets = {"B"};
    Warn("a\xE4\xF6z", "c");
    EXPECT_THAT(Sent(), ElementsAre(Warning("a??z (c) ( missing charsets: B )")));
    EXPECT_EQ(passedOn.size(), 1u);
}

TEST_F(ToolkitWarnings, TextOfALocaleInUTF8IsSentAsItStands) {
    ASSERT_TRUE(setlocale(LC_ALL, "C.UTF-8"));
    missingCharSets = {"B"};
    Warn("\xC3\xA4", "c");
    EXPECT_THAT(Sent(), ElementsAre(Warning("\xC3\xA4 (c) ( missing charsets: B )")));
}
