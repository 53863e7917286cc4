#include "dialogs/ActionRequestView.h"
#include "dialogs/ActionSummary.h"
#include "dialogs/DeadlineText.h"
#include "dialogs/FormattedValues.h"
#include "dialogs/LocalizedStrings.h"
#include "dialogs/SnoozeChoices.h"
#include "format/FormatOverrideContext.h"

#include "tests/dialogs/CatalogueCaptions.h"
#include "tests/dialogs/SummarySentences.h"
#include "tests/support/LocalZone.h"
#include "tests/support/UStringPrinting.h"

#include <gtest/gtest.h>

#include <map>
#include <memory>
#include <string>
#include <vector>

// Each way to a text for the user goes through the translations in force. The one in force here puts every
// format in brackets, so that "in [2 hours]" shows which part was made from which format. It is there before
// anything else in this program, since the tables of summaries choose their translations once.

namespace {

class Brackets : public FormatOverrideContext {
public:
    using FormatOverrideContext::Override;

    bool HasOverride(UStringRef<UTF8> const& key) const override { return !key.empty(); }
    UStringRef<UTF8> Override(UStringRef<UTF8> const& key,
                              UStringRef<UTF8> const& defaultText) const override {
        if (key.empty()) return defaultText;
        std::string& text = m_texts[MakeString(ConstData(key))];
        if (text.empty()) text = "[" + MakeString(ConstData(defaultText)) + "]";
        return MakeUTF8Ref(text);
    }
    bool isCustom() override { return true; }

private:
    // A map, since the texts given out must stay where they are.
    mutable std::map<std::string, std::string> m_texts;
};

class TranslatedWording : public testing::Test {
protected:
    TranslatedWording() {
        if (!GetCustomFormatOverrideContext()) SetCustomFormatOverrideContext(std::make_unique<Brackets>());
    }
};

constexpr long long cMinute = 60 * cMicrosecondsPerSecond;
constexpr long long cHour = 60 * cMinute;
// Midnight of the first of January 2100.
constexpr Instant cNow = Instant::FromMicroseconds(4102444800000000);

std::string Text(UStringRef<UTF8> const& text) {
    return MakeString(ConstData(text));
}

std::string Left(long long microseconds, bool exact = false, bool fromNow = false) {
    return Text(FormattedDeadline(TimeInterval::FromMicroseconds(microseconds), exact, fromNow).Ref());
}

bool StandsInBrackets(std::string const& text) {
    return text.size() > 2 && text.front() == '[' && text.back() == ']';
}

std::string WithoutBrackets(std::string const& text) {
    std::string plain;
    for (char const letter : text)
        if (letter != '[' && letter != ']') plain += letter;
    return plain;
}

ActionRequest OfKey(unsigned int key) {
    ActionRequest action;
    action.id = 1;
    action.requestSave = (key & 1u) != 0;
    action.restart = (key & 4u) != 0;
    action.shutdown = (key & 8u) != 0;
    action.forceRun = (key & 32u) != 0;
    if ((key & 2u) != 0) {
        long long const left = (key & 16u) != 0 ? 9 * cMinute / 2 : 2 * cHour;
        action.deadline = TimeObject(cNow + TimeInterval::FromMicroseconds(left), TimeZone());
    }
    return action;
}

} // namespace

TEST_F(TranslatedWording, SummariesOfOneActionAreTranslated) {
    for (unsigned int key = 0; key < 64; ++key) {
        std::string const sentence = Text(ActionSummary(OfKey(key), cNow).Ref());
        EXPECT_EQ(WithoutBrackets(sentence), cActionSentences[key]) << key;
        if (!sentence.empty()) {
            EXPECT_TRUE(StandsInBrackets(sentence)) << sentence;
        }
    }
    EXPECT_EQ(Text(ActionSummary(OfKey(2), cNow).Ref()), "[You must take this action within [2 hours].]");
}

TEST_F(TranslatedWording, SummariesOfSeveralActionsAreTranslated) {
    for (unsigned int key = 0; key < 128; ++key) {
        ActionRequestStore store;
        store.UpdateActions(std::vector<ActionRequest>{OfKey(key)});
        bool const pending = (key & 64u) != 0;
        std::string const sentence = Text(ActionSummary({1}, store, pending, cNow).Ref());
        EXPECT_EQ(WithoutBrackets(sentence), (pending ? cPendingSentences : cSelectedSentences)[key & 63u])
            << key;
        if (!sentence.empty()) {
            EXPECT_TRUE(StandsInBrackets(sentence)) << sentence;
        }
    }
}

TEST_F(TranslatedWording, TimesLeftAreTranslated) {
    constexpr long long cDay = 24 * cHour;
    EXPECT_EQ(Left(cDay + 1), "[1 day]");
    EXPECT_EQ(Left(3 * cDay), "[3 days]");
    EXPECT_EQ(Left(cHour + 1), "[1 hour]");
    EXPECT_EQ(Left(3 * cHour), "[3 hours]");
    EXPECT_EQ(Left(45 * cMinute), "[45 minutes]");
    EXPECT_EQ(Left(cMinute), "[Now]");
    EXPECT_EQ(Left(-1), "[Overdue]");
    EXPECT_EQ(Left(-1, true), "[0 seconds]");
    EXPECT_EQ(Left(-1, true, true), "[Running...]");
    EXPECT_EQ(Left(cMicrosecondsPerSecond, true), "[1 second]");
    EXPECT_EQ(Left(2 * cMicrosecondsPerSecond, true), "[2 seconds]");
    EXPECT_EQ(Left(cMinute + cMicrosecondsPerSecond, true), "[1 minute, 1 second]");
    EXPECT_EQ(Left(cMinute + 2 * cMicrosecondsPerSecond, true), "[1 minute, 2 seconds]");
    EXPECT_EQ(Left(2 * cMinute + cMicrosecondsPerSecond, true), "[2 minutes, 1 second]");
    EXPECT_EQ(Left(2 * cMinute + 2 * cMicrosecondsPerSecond, true), "[2 minutes, 2 seconds]");
    EXPECT_EQ(Left(3 * cDay, true, true), "[[3 days] from now]");
}

TEST_F(TranslatedWording, DaysAndTimesAreTranslated) {
    EXPECT_EQ(UnixPlatform::FormattedLongDayOfWeek(DayOfWeek::Sunday), "[Sunday]"_utf8);
    EXPECT_EQ(UnixPlatform::FormattedShortDayOfWeek(DayOfWeek::Sunday), "[Sun]"_utf8);
    EXPECT_EQ(UnixPlatform::FormattedLongDayOfWeek(static_cast<DayOfWeek>(7)), "[???]"_utf8);
    LocalZone const zone("UTC0");
    EXPECT_EQ(UnixPlatform::FormattedLocalTime(cNow), "[Fri, 01 Jan 2100 00:00:00]"_utf8);
}

TEST_F(TranslatedWording, SnoozeChoicesAreTranslated) {
    std::vector<SnoozeChoice> const choices = MakeSnoozeChoices(true);
    EXPECT_EQ(choices.front().first, "[15 minutes before deadline]"_utf8);
    EXPECT_EQ(choices.back().first, "[in 5 days]"_utf8);
    for (SnoozeChoice const& choice : choices)
        EXPECT_TRUE(StandsInBrackets(Text(choice.first.Ref()))) << Text(choice.first.Ref());
}

TEST_F(TranslatedWording, TheViewOfTheActionsIsTranslated) {
    EXPECT_EQ(CountText(0, 1), "[1 action selected]"_utf8);
    EXPECT_EQ(CountText(-1, 0), "[There are no pending actions.]"_utf8);
    EXPECT_EQ(CountText(-1, 1), "[There is 1 pending action.]"_utf8);
    EXPECT_EQ(CountText(-1, 7), "[There are 7 pending actions.]"_utf8);
    EXPECT_EQ(MakeEmptyView(0).title, "[There are no pending actions.]"_utf8);

    LocalZone const zone("UTC0");
    ActionRequest action = OfKey(2);
    action.SetTitle("Title"_utf8);
    action.SetDescription("Description"_utf8);
    ActionRequestList pending;
    pending.push_back(action);
    EXPECT_EQ(MakeActionRows(pending).front().text, "Title[  --  ][Fri, 01 Jan 2100 02:00:00]");
    ActionRequestSelection selection;
    selection.row = 0;
    selection.id = 1;
    selection.rows = 1;
    std::string const description = Text(MakePendingView(pending, selection).description.Ref());
    EXPECT_EQ(description.substr(0, description.find("[You")), "[Description\n\n");
    EXPECT_TRUE(StandsInBrackets(description)) << description;
    selection.row = -1;
    EXPECT_TRUE(StandsInBrackets(Text(MakePendingView(pending, selection).description.Ref())));
}

TEST_F(TranslatedWording, TheCatalogueIsTranslated) {
    using namespace LocalizedStrings;
    for (auto const member : {ShutdownNowDescription, RestartNowDescription, ShutdownNow, RestartNow,
                              Progress, TechnicianTab, SupportDashboard, Offers})
        EXPECT_TRUE(StandsInBrackets(Text(member().Ref()))) << Text(member().Ref());
    for (CatalogueCaption const member : cCatalogueCaptions)
        EXPECT_TRUE(StandsInBrackets(member().c_str())) << member().c_str();
    for (unsigned int count : {0u, 1u, 2u}) {
        EXPECT_TRUE(StandsInBrackets(Text(AnnounceOffers(count).Ref()))) << count;
        EXPECT_TRUE(StandsInBrackets(TrayTip(count).c_str())) << count;
    }
    EXPECT_TRUE(StandsInBrackets(EnteringQuietModeExplanation(cNow, cNow).c_str()));
    EXPECT_TRUE(StandsInBrackets(QuietModeExplanation(cNow, cNow).c_str()));
    EXPECT_EQ(AnnounceOffers(3), "[You Have 3 New Offers]"_utf8);
    EXPECT_STREQ(MenuPaste().c_str(), "[&Paste\tCtrl-V]");
}
