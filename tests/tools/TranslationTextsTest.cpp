#include "tools/translation-checker/FormatTexts.h"

// First: the headers of X define words that it uses.
#include <gmock/gmock.h>

#include "app/WidgetHelpers.h"
#include "dialogs/ActionRequestView.h"
#include "dialogs/ActionSummary.h"
#include "dialogs/DeadlineText.h"
#include "dialogs/FormattedValues.h"
#include "dialogs/LocalizedStrings.h"
#include "dialogs/SnoozeChoices.h"
#include "files/FileErrors.h"
#include "format/FormatBindings.h"
#include "format/FormatOverrideContext.h"
#include "format/PlatformString.h"
#include "tests/dialogs/CatalogueCaptions.h"
#include "tools/translation-checker/Texts.h"

#include <cerrno>
#include <set>

using namespace TranslationChecker;
using testing::IsSubsetOf;

// The program's functions are called with a context that writes down for what they ask. What stands in the
// list must be neither less nor more.

namespace {

using Keys = std::set<std::string>;

class RecordingContext : public FormatOverrideContext {
public:
    explicit RecordingContext(Keys& keys) : m_keys(keys) {}

    UStringRef<UTF8> Override(UStringRef<UTF8> const& key,
                              UStringRef<UTF8> const& defaultText) const override {
        if (!key.empty()) m_keys.insert(std::string(ViewOf(key)));
        return defaultText;
    }
    UStringRef<UTF8> Override(UStringRef<UTF8> const& key) const override { return Override(key, key); }
    bool isCustom() override { return true; }

private:
    Keys& m_keys;
};

void CallTheTextsOfTheCatalogue() {
    using namespace LocalizedStrings;
    for (auto* const text : {ShutdownNowDescription, RestartNowDescription, ShutdownNow, RestartNow, Progress,
                             TechnicianTab, SupportDashboard, Offers})
        text();
    for (unsigned int count = 0; count < 3; ++count) {
        AnnounceOffers(count);
        TrayTip(count);
    }
    EnteringQuietModeExplanation(Instant(), Instant());
    QuietModeExplanation(Instant(), Instant());
}

void CallTheCaptionsOfTheCatalogue() {
    for (CatalogueCaption const text : cCatalogueCaptions) text();
}

// Every second of two hours, and every hour of three days.
void CallTheDeadlines() {
    constexpr long long cSecond = 1000000;
    for (bool const exact : {false, true})
        for (bool const fromNow : {false, true}) {
            for (long long second = -1; second < 7200; ++second)
                FormattedDeadline(TimeInterval::FromMicroseconds(second * cSecond), exact, fromNow);
            for (long long hour = 2; hour < 72; ++hour)
                FormattedDeadline(TimeInterval::FromMicroseconds(hour * 3600 * cSecond), exact, fromNow);
        }
}

void CallTheDaysAndTimes() {
    UnixPlatform::FormattedLocalTime(Instant());
    for (unsigned int day = 0; day < 8; ++day) {
        UnixPlatform::FormattedLongDayOfWeek(static_cast<DayOfWeek>(day));
        UnixPlatform::FormattedShortDayOfWeek(static_cast<DayOfWeek>(day));
    }
}

ActionRequest Action() {
    ActionRequest action;
    action.id = 1;
    action.title = "Title"_utf8;
    action.deadline = TimeObject(Instant::Now(), TimeZone());
    return action;
}

void CallTheLabels(ActionRequestView const& view) {
    for (char const* const label : {view.takeLabel, view.cancelLabel, view.snoozeLabel})
        ControlLiteral(label);
}

// The sentences of all summaries are asked for at once.
void CallTheViews() {
    ActionRequestList pending;
    pending.push_back(Action());
    MakeActionRows(pending);
    CallTheLabels(MakeEmptyView(0));
    CallTheLabels(MakePendingView(pending, {}));
    ActionRequestSelection selection;
    selection.row = 0;
    selection.id = 1;
    CallTheLabels(MakePendingView(pending, selection));
    for (int rows = 0; rows < 3; ++rows) CountText(-1, rows);
    CountText(0, 1);
    MakeSnoozeChoices(true);
}

void CallTheFailures() {
    FileLocation const location("/a"_utf8);
    FileNotFoundError(location, location, ENOENT).uwhat();
    UStringRef<UTF8> const unknown = "\xC3\xA4"_utf8;
    MakePlatformString(UFormat("{time} from now") % unknown);
}

Keys RecordKeys() {
    Keys keys;
    SetCustomFormatOverrideContext(std::make_unique<RecordingContext>(keys));
    CallTheTextsOfTheCatalogue();
    CallTheCaptionsOfTheCatalogue();
    CallTheDeadlines();
    CallTheDaysAndTimes();
    CallTheViews();
    CallTheFailures();
    SetCustomFormatOverrideContext(nullptr);
    return keys;
}

// The tables of the summaries ask but once in a process.
Keys const& RecordedKeys() {
    static Keys const& keys = *new Keys(RecordKeys());
    return keys;
}

Keys TextsOf(std::set<std::string_view> const& files) {
    Keys texts;
    for (FormatText const& text : FormatTexts())
        if (files.empty() || files.contains(text.file)) texts.insert(std::string(text.text));
    return texts;
}

} // namespace

TEST(FormatTexts, HoldEverythingThatTheProgramAsksFor) {
    EXPECT_GT(RecordedKeys().size(), 150u);
    EXPECT_THAT(RecordedKeys(), IsSubsetOf(TextsOf({})));
}

TEST(FormatTexts, HoldNothingForWhichTheWordingDoesNotAsk) {
    Keys const texts =
        TextsOf({"dialogs/ActionRequestView.cpp", "dialogs/ActionRequestView.h", "dialogs/DeadlineText.cpp",
                 "dialogs/FormattedValues.cpp", "dialogs/LocalizedStrings.cpp", "dialogs/SnoozeChoices.cpp",
                 "dialogs/SummaryWording.cpp", "format/PlatformString.cpp", "time/DayOfWeek.cpp"});
    EXPECT_GT(texts.size(), 150u);
    EXPECT_THAT(texts, IsSubsetOf(RecordedKeys()));
}

TEST(FormatTexts, HoldWhatOnlyWidgetsShow) {
    Keys const texts = TextsOf({});
    for (char const* const text :
         {"Title", "Deadline", "Varnik notification:", "Action \"{actionTitle}\" has completed.",
          "Confirmation Required", "Action Script Preview", "Not Currently Available", "Take All Actions",
          "Cancel Action", "Close"})
        EXPECT_TRUE(texts.contains(text)) << text;
}

TEST(FormatTexts, HoldEachTextOnceAndNoEmptyOne) {
    EXPECT_EQ(TextsOf({}).size(), FormatTexts().size());
    EXPECT_FALSE(TextsOf({}).contains(""));
}

TEST(FormatTexts, AreFormatsThatCanBeShown) {
    for (FormatText const& text : FormatTexts()) {
        UStringRef<UTF8> const format = ViewOf(text.text);
        for (UFormatIterator segment(format); segment != UFormatIterator::EndOf(format); ++segment) {
            if (segment->isExpression) {
                EXPECT_NO_THROW(CheckFormatVariableName(segment->text)) << text.text;
            }
        }
    }
}
