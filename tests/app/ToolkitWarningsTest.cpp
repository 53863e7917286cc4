// First: X.h defines names that the test framework uses.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "app/DefaultFontSet.h"
#include "app/ToolkitWarnings.h"
#include "link/UnixPipe.h"
#include "tests/app/ProcessStateFixture.h"
#include "tests/support/LocaleScope.h"

#include <cstdlib>
#include <sys/wait.h>
#include <unistd.h>
#include <utility>

using testing::ElementsAre;
using testing::IsEmpty;

namespace {

// The arguments of a handler, as they stand.
struct PassedOn {
    String name;
    String type;
    String warningClass;
    String defaultText;
    String* parameters;
    Cardinal* parameterCount;

    friend bool operator==(PassedOn const&, PassedOn const&) = default;
};
std::vector<PassedOn> passedOn;

void NotePassedOn(String name, String type, String warningClass, String defaultText, String* parameters,
                  Cardinal* parameterCount) {
    passedOn.push_back({name, type, warningClass, defaultText, parameters, parameterCount});
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
    }

    // A warning of that name and class as the toolkit gives it; null stands for itself.
    static void Warn(char const* name, char const* warningClass) {
        // The toolkit's own type for a text is not const, and the handler changes nothing.
        auto const text = [](char const* constant) { return const_cast<String>(constant); };
        WarningMsgHandler(text(name), text("aType"), text(warningClass), text("the default text"), nullptr,
                          nullptr);
    }

    // What a process sends that ends with that warning; "ended with 7" is the last entry.
    static std::vector<std::string> SentUntilTheEnd(char const* name, char const* warningClass);
};

TEST_F(ToolkitWarnings, GoOnToTheFormerHandlerAndNotToTheClient) {
    Warn("aName", "aClass");
    EXPECT_THAT(Sent(), IsEmpty());
    EXPECT_EQ(passedOn.size(), 1u);
}

TEST_F(ToolkitWarnings, ReachTheFormerHandlerWithAllTheirArgumentsAsTheyStand) {
    char name[] = "aName";
    char type[] = "aType";
    char warningClass[] = "aClass";
    char defaultText[] = "the default text";
    String parameters[] = {name, type};
    Cardinal count = 2;
    WarningMsgHandler(name, type, warningClass, defaultText, parameters, &count);
    missingCharSets = {"ISO8859-2"};
    WarningMsgHandler(name, type, warningClass, defaultText, parameters, &count);
    WarningMsgHandler(nullptr, nullptr, nullptr, nullptr, nullptr, nullptr);
    PassedOn const given{name, type, warningClass, defaultText, parameters, &count};
    EXPECT_EQ(passedOn, (std::vector<PassedOn>{given, given, PassedOn{}}));
    EXPECT_EQ(count, 2u);
    EXPECT_EQ(parameters[1], type);
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
    LocaleScope const locale("C");
    missingCharSets = {"B"};
    Warn("a\xE4\xF6z", "c");
    EXPECT_THAT(Sent(), ElementsAre(Warning("a??z (c) ( missing charsets: B )")));
    EXPECT_EQ(passedOn.size(), 1u);
}

TEST_F(ToolkitWarnings, TextOfALocaleInUTF8IsSentAsItStands) {
    LocaleScope const locale("C.UTF-8");
    missingCharSets = {"B"};
    Warn("\xC3\xA4", "c");
    EXPECT_THAT(Sent(), ElementsAre(Warning("\xC3\xA4 (c) ( missing charsets: B )")));
}

TEST_F(ToolkitWarnings, TextOfAnotherLocaleIsConverted) {
    LocaleScope const locale("de_DE.ISO-8859-1");
    missingCharSets = {"B"};
    Warn("\xE4", "c");
    EXPECT_THAT(Sent(), ElementsAre(Warning("\xC3\xA4 (c) ( missing charsets: B )")));
}

TEST_F(ToolkitWarnings, TextThatIsNoUTF8KeepsItsAsciiInALocaleInUTF8) {
    LocaleScope const locale("C.UTF-8");
    missingCharSets = {"B"};
    std::pair<char const*, char const*> const cases[] = {
        {"a\xFFz", "a?z"},
        {"a\x80z", "a?z"},
        {"a\xC3", "a?"},
        {"\xC3\xA4\xE4", "???"},
        {"a\xC1\xBC", "a??"},           // "|" in a longer form than it needs
        {"a\xE0\x80\xBC", "a???"},      // "<" as well
        {"a\xED\xA0\x80", "a???"},      // a surrogate
        {"a\xF4\x90\x80\x80", "a????"}, // the value behind the last character
        {"a\xF8\x88\x80\x80\x80", "a?????"},
    };
    for (auto const& [name, sent] : cases) {
        Warn(name, "c");
        EXPECT_THAT(Sent(), ElementsAre(Warning(std::string(sent) + " (c) ( missing charsets: B )")));
    }
}

TEST_F(ToolkitWarnings, ControlCharactersAreNotSent) {
    for (char const* name : {"C", "C.UTF-8"}) {
        LocaleScope const locale(name);
        missingCharSets = {"B"};
        Warn("\x01\x04\x07\x0E\x1F\x7F"
             "a\tb\nc\rd",
             nullptr);
        Warn("<\x01>", nullptr);
        EXPECT_THAT(Sent(), ElementsAre(Warning("??????a\tb\nc\rd"), Warning("<![CDATA[<?>]]>")));
    }
}

namespace {

int reportOnExit = -1;

// At the end of a process: writes what it has sent, each document with a NUL behind.
void ReportSent() {
    FiFoQueue<UIMessage> messages;
    writeQ.ReadMessages(messages);
    while (!messages.IsEmpty()) {
        std::string const document = MakeString(messages.Take().text) + '\0';
        if (write(reportOnExit, document.data(), document.size()) < 0) return;
    }
}

} // namespace

std::vector<std::string> ToolkitWarnings::SentUntilTheEnd(char const* name, char const* warningClass) {
    int ends[2];
    if (pipe(ends) != 0) return {"there is no pipe"};
    pid_t const child = fork();
    if (child == 0) {
        // Over a dead link nothing is waited for.
        static UnixPipe deadLink(readQ, writeQ);
        deadLink.Kill();
        clientPipe = &deadLink;
        reportOnExit = ends[1];
        std::atexit(ReportSent);
        Warn(name, warningClass);
        _exit(99);
    }
    close(ends[1]);
    std::vector<std::string> sent(1);
    for (char byte = 0; read(ends[0], &byte, 1) == 1;)
        if (byte == '\0')
            sent.emplace_back();
        else
            sent.back() += byte;
    close(ends[0]);
    int status = 0;
    waitpid(child, &status, 0);
    sent.back() += "ended with " + std::to_string(WIFEXITED(status) ? WEXITSTATUS(status) : -1);
    return sent;
}

TEST_F(ToolkitWarnings, NoFontEndsTheProcessAlsoWhenNothingIsKnownToBeMissing) {
    EXPECT_THAT(SentUntilTheEnd("noFont", "aClass"),
                ElementsAre(Warning("noFont (aClass)"), Warning("noFont (aClass)"), "ended with 0"));
}

TEST_F(ToolkitWarnings, NoFontWithoutAClassIsToldByItsNameAlone) {
    EXPECT_THAT(SentUntilTheEnd("noFont", nullptr),
                ElementsAre(Warning("noFont"), Warning("noFont"), "ended with 0"));
}
