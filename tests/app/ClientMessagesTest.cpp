#include "app/ClientMessages.h"

#include "tests/app/ProcessStateFixture.h"
#include "tests/app/RecordingDialogs.h"
#include "tests/support/TemporaryFolder.h"

#include <cstdlib>

using IDs = std::vector<unsigned long>;
using Calls = std::vector<std::string>;

namespace {

constexpr char cQuietModeStart[] = "<QuietModeStart><StartTime>Sun, 02 Jan 2011 08:05:09 +0000</StartTime>"
                                   "<EndTime>Sun, 02 Jan 2011 09:05:09 +0000</EndTime></QuietModeStart>";
constexpr char cQuietModeEnd[] = "<QuietModeEnd></QuietModeEnd>";

} // namespace

class ClientMessages : public ProcessStateTest {
protected:
    std::string Initialization(std::string const& settings = "") const {
        return "<InitializationInfo><BaseDirectory>" + m_folder.Path() +
               "</BaseDirectory><InitialUISettings>" + settings + "</InitialUISettings></InitializationInfo>";
    }

    TemporaryFolder m_folder;
};

TEST_F(ClientMessages, NothingReceivedChangesNothing) {
    ProcessMessagesFromClient();
    EXPECT_TRUE(actions.empty());
    EXPECT_FALSE(initialized);
}

TEST_F(ClientMessages, DocumentWithAnyRootIsActedOn) {
    Receive("<Whatever>" + Action(3) + "</Whatever>");
    Receive("<UIToClient>" + Action(4) + "</UIToClient>");
    ProcessMessagesFromClient();
    EXPECT_EQ(PendingIDs(), (IDs{3, 4}));
}

TEST_F(ClientMessages, OneDocumentMayCarrySeveralMessages) {
    Receive(Document(Action(1) + "<Unknown></Unknown>" + Action(2)));
    ProcessMessagesFromClient();
    EXPECT_EQ(PendingIDs(), (IDs{1, 2}));
}

TEST_F(ClientMessages, MessageNamesCompareExactly) {
    Receive(Document("<actionRequest></actionRequest><ActionRequest ></ActionRequest>"
                     "<ActionRequestX></ActionRequestX>"));
    ProcessMessagesFromClient();
    // The space ends the name, so that one counts.
    EXPECT_EQ(actions.size(), 1u);
}

TEST_F(ClientMessages, OnlyChildrenOfTheRootAreMessages) {
    Receive(Document("<Envelope>" + Action(1) + "</Envelope>"));
    Receive("<ActionRequest><ID>2</ID></ActionRequest>");
    ProcessMessagesFromClient();
    EXPECT_TRUE(actions.empty());
}

TEST_F(ClientMessages, ActionsOfOneIDAllStayAndOneRemoveRequestRemovesTheFirst) {
    Receive(Document(Action(1, "<Title>a</Title>") + Action(1, "<Title>b</Title>")));
    ProcessMessagesFromClient();
    ASSERT_EQ(actions.size(), 2u);
    Receive(Document("<RemoveRequest><RemoveType>Action</RemoveType><ID>1</ID></RemoveRequest>"));
    ProcessMessagesFromClient();
    ASSERT_EQ(actions.size(), 1u);
    EXPECT_TRUE(actions.front().title == "b"_utf8);
}

TEST_F(ClientMessages, RemoveRequestActsByItsType) {
    struct Case {
        char const* type;
        IDs left;
    };
    for (Case const& test : {Case{"Action", {2}}, Case{"Offer", {1, 2}}, Case{"Message", {1, 2}},
                             Case{"All", {2}}, Case{"action", {2}}, Case{"", {2}}}) {
        actions.clear();
        Receive(Document(Action(1) + Action(2) + "<RemoveRequest><RemoveType>" + test.type +
                         "</RemoveType><ID>1</ID></RemoveRequest>"));
        ProcessMessagesFromClient();
        EXPECT_EQ(PendingIDs(), test.left) << test.type;
    }
}

TEST_F(ClientMessages, RemoveRequestWithoutTypeActsAsAll) {
    Receive(Document(Action(1) + Action(2) + "<RemoveRequest><ID>1</ID></RemoveRequest>"));
    ProcessMessagesFromClient();
    EXPECT_EQ(PendingIDs(), (IDs{2}));
}

TEST_F(ClientMessages, RemovingAnUnknownIDIsNoError) {
    Receive(Document(Action(1) + "<RemoveRequest><ID>9</ID></RemoveRequest>" + Action(2)));
    ProcessMessagesFromClient();
    EXPECT_EQ(PendingIDs(), (IDs{1, 2}));
}

TEST_F(ClientMessages, DocumentWithoutAnElementCostsTheRestOfItsBatch) {
    for (char const* const bad : {"", "no element at all", "<?xml version=\"1.0\"?>", "</a>"}) {
        actions.clear();
        Receive(Document(Action(1)));
        Receive(bad);
        Receive(Document(Action(3)));
        ProcessMessagesFromClient();
        EXPECT_EQ(PendingIDs(), (IDs{1})) << bad;
        ProcessMessagesFromClient();
        EXPECT_EQ(PendingIDs(), (IDs{1})) << bad;
        Receive(Document(Action(4)));
        ProcessMessagesFromClient();
        EXPECT_EQ(PendingIDs(), (IDs{1, 4})) << bad;
    }
}

TEST_F(ClientMessages, BadFieldKeepsWhatWasHandledBeforeItInTheSameDocument) {
    Receive(Document(Action(1) + "<ActionRequest><ID>x</ID></ActionRequest>" + Action(3)));
    Receive(Document(Action(4)));
    ProcessMessagesFromClient();
    EXPECT_EQ(PendingIDs(), (IDs{1}));
}

TEST_F(ClientMessages, EveryKindOfBadFieldCostsTheBatch) {
    for (char const* const bad :
         {"<ActionRequest><Deadline>tomorrow</Deadline></ActionRequest>",
          "<MessageRequest><Timeout>1</Timeout></MessageRequest>",
          "<MessageRequest><ID></ID></MessageRequest>", "<RemoveRequest><ID>-1</ID></RemoveRequest>",
          "<QuietModeStart><StartTime>x</StartTime></QuietModeStart>",
          "<InitializationInfo><InitialUISettings><HistoryMode>x</HistoryMode></InitialUISettings>"
          "</InitializationInfo>"}) {
        actions.clear();
        Receive(Document(std::string(bad) + Action(1)));
        Receive(Document(Action(2)));
        ProcessMessagesFromClient();
        EXPECT_TRUE(actions.empty()) << bad;
        EXPECT_FALSE(initialized) << bad;
    }
}

TEST_F(ClientMessages, NotClosedAndWronglyNestedDocumentsAreNoErrors) {
    Receive("<r>" + Action(1));
    Receive("<r><ActionRequest><ID>2</Whatever></ActionRequest></r>");
    Receive("<r><ActionRequest><ID>3");
    ProcessMessagesFromClient();
    // The third has an element whose text was never delivered: an empty numeral, which fails.
    EXPECT_EQ(PendingIDs(), (IDs{1, 2}));
}

TEST_F(ClientMessages, MessagesBehindInitializationWaitForTheNextCall) {
    Receive(Document(Action(1) + Initialization() + Action(2)));
    Receive(Document(Action(3)));
    Receive(Document(Action(4)));
    ProcessMessagesFromClient();
    EXPECT_TRUE(initialized);
    EXPECT_EQ(PendingIDs(), (IDs{1})) << "further children of the document are dropped";
    Receive(Document(Action(5)));
    ProcessMessagesFromClient();
    EXPECT_EQ(PendingIDs(), (IDs{1, 3, 4})) << "what was left goes first, alone";
    ProcessMessagesFromClient();
    EXPECT_EQ(PendingIDs(), (IDs{1, 3, 4, 5}));
}

TEST_F(ClientMessages, SecondInitializationIsIgnoredAndWhatStandsBehindItIsHandled) {
    Receive(Document(Initialization("<RemindInterval>PT10M</RemindInterval>")));
    ProcessMessagesFromClient();
    Receive(
        Document(Initialization("<RemindInterval>PT20M</RemindInterval><AllowSnooze>false</AllowSnooze>") +
                 Action(2)));
    ProcessMessagesFromClient();
    EXPECT_EQ(m_remindInterval, TimeInterval::FromMicroseconds(600000000));
    EXPECT_TRUE(m_snoozable);
    EXPECT_EQ(PendingIDs(), (IDs{2}));
}

TEST_F(ClientMessages, SecondInitializationIsNotEvenRead) {
    Receive(Document(Initialization()));
    ProcessMessagesFromClient();
    Receive(Document(Initialization("<TrayMode>x</TrayMode>") + Action(2)));
    ProcessMessagesFromClient();
    EXPECT_EQ(PendingIDs(), (IDs{2}));
}

TEST_F(ClientMessages, FailedInitializationMayBeFollowedByAGoodOne) {
    Receive(Document(Initialization("<RemindInterval>PT10M</RemindInterval><TrayMode>x</TrayMode>")));
    ProcessMessagesFromClient();
    EXPECT_FALSE(initialized);
    EXPECT_EQ(m_remindInterval, TimeInterval());
    Receive(Document(Initialization()));
    ProcessMessagesFromClient();
    EXPECT_TRUE(initialized);
}

TEST_F(ClientMessages, InitializationAppliesTheSettings) {
    Receive(Document(Initialization("<RemindInterval>PT10M</RemindInterval>"
                                    "<RemindTime>Sun, 02 Jan 2011 08:05:09 +0000</RemindTime>"
                                    "<AllowSnooze>false</AllowSnooze>"
                                    "<PersistRunningMessage>true</PersistRunningMessage>"
                                    "<TopmostRunningMessage>true</TopmostRunningMessage>")));
    ProcessMessagesFromClient();
    EXPECT_EQ(m_remindInterval, TimeInterval::FromMicroseconds(600000000));
    EXPECT_EQ(m_postponedTo, Instant::FromMicroseconds(1293955509000000));
    EXPECT_FALSE(m_snoozable);
    EXPECT_TRUE(m_enablePersistent);
    EXPECT_TRUE(m_enableTopmost);
}

TEST_F(ClientMessages, PersistentAndTopmostAreSetEachByItsOwnSetting) {
    Receive(Document(Initialization("<PersistRunningMessage>true</PersistRunningMessage>")));
    ProcessMessagesFromClient();
    EXPECT_TRUE(m_enablePersistent);
    EXPECT_FALSE(m_enableTopmost);
    initialized = false;
    Receive(Document(Initialization("<TopmostRunningMessage>true</TopmostRunningMessage>")));
    ProcessMessagesFromClient();
    EXPECT_FALSE(m_enablePersistent);
    EXPECT_TRUE(m_enableTopmost);
}

TEST_F(ClientMessages, InitializationWithoutRemindTimeLeavesThePostponement) {
    m_postponedTo = Instant::FromMicroseconds(5);
    m_snoozable = false;
    m_enablePersistent = m_enableTopmost = true;
    Receive(Document(Initialization()));
    ProcessMessagesFromClient();
    EXPECT_EQ(m_postponedTo, Instant::FromMicroseconds(5));
    EXPECT_TRUE(m_snoozable);
    EXPECT_FALSE(m_enablePersistent);
    EXPECT_FALSE(m_enableTopmost);
}

TEST_F(ClientMessages, QuietModeIsSetAndCleared) {
    Receive(Document("<QuietModeStart></QuietModeStart>"));
    ProcessMessagesFromClient();
    EXPECT_TRUE(inQuietMode);
    Receive(Document("<QuietModeEnd></QuietModeEnd>"));
    ProcessMessagesFromClient();
    EXPECT_FALSE(inQuietMode);
}

TEST_F(ClientMessages, QuietModeIsOnEvenIfItsTimesDoNotParse) {
    Receive(Document("<QuietModeStart><EndTime>never</EndTime></QuietModeStart>"));
    ProcessMessagesFromClient();
    EXPECT_TRUE(inQuietMode);
}

TEST_F(ClientMessages, ActionRunningTopmostStoresItsFlag) {
    Receive(Document("<ActionRunningTopmost><Enabled>true</Enabled></ActionRunningTopmost>"));
    ProcessMessagesFromClient();
    EXPECT_TRUE(m_enableTopmost);
    Receive(Document("<ActionRunningTopmost></ActionRunningTopmost>"));
    ProcessMessagesFromClient();
    EXPECT_TRUE(m_enableTopmost) << "without the field the flag stays as it was";
    Receive(Document("<ActionRunningTopmost><Enabled>0</Enabled></ActionRunningTopmost>"));
    ProcessMessagesFromClient();
    EXPECT_FALSE(m_enableTopmost);
}

TEST_F(ClientMessages, MessageRequestChangesNothingPending) {
    Receive(Document("<MessageRequest><ID>1</ID><Timeout>PT5S</Timeout></MessageRequest>" + Action(2)));
    ProcessMessagesFromClient();
    EXPECT_EQ(PendingIDs(), (IDs{2}));
}

class ClientMessagesInLocale : public ClientMessages {
protected:
    void InitializeIn(char const* locale, bool useLocale) {
        setenv("LC_ALL", locale, 1);
        Receive(Document(Initialization(useLocale ? "<UseLocale>true</UseLocale>" : "")));
        ProcessMessagesFromClient();
        unsetenv("LC_ALL");
    }
};

TEST_F(ClientMessagesInLocale, TheCLocaleIsNoReason) {
    InitializeIn("C", true);
    EXPECT_FALSE(international);
    EXPECT_TRUE(initialized);
}

TEST_F(ClientMessagesInLocale, ARealLocaleTurnsTranslationOn) {
    InitializeIn("C.UTF-8", true);
    EXPECT_TRUE(international);
}

TEST_F(ClientMessagesInLocale, ARealLocaleIsNotLookedAtUnlessTheClientWantsIt) {
    InitializeIn("C.UTF-8", false);
    EXPECT_FALSE(international);
}

TEST_F(ClientMessagesInLocale, AnUninstalledLocaleCountsAsNone) {
    InitializeIn("xx_YY.UTF-8", true);
    EXPECT_FALSE(international);
    EXPECT_TRUE(initialized);
}

TEST_F(ClientMessages, EachActionUpdatesTheDialogAndCallsForIt) {
    m_remindInterval = TimeInterval::FromMicroseconds(60000000);
    m_postponedTo = Instant::FromMicroseconds(9000000000000000000);
    inQuietMode = true;
    Receive(Document(Action(1) + Action(2)));
    ProcessMessagesFromClient();
    EXPECT_EQ(recordingDialogs.TakeCalls(),
              (Calls{"Update folded 1", "Show 60000000 true", "Update folded 1,2", "Show 60000000 true"}))
        << "neither a postponed reminder nor a quiet period holds back a new action";
    EXPECT_EQ(recordingDialogs.batches, 0);
}

TEST_F(ClientMessages, WithdrawingTellsTheDialogsThatTheTypeMeans) {
    struct Case {
        char const* type;
        Calls calls;
    };
    for (Case const& test : {Case{"<RemoveType>Action</RemoveType>", {"Update folded 2"}},
                             Case{"<RemoveType>Offer</RemoveType>", {}},
                             Case{"<RemoveType>Message</RemoveType>", {"RemoveMessage 1"}},
                             Case{"<RemoveType>All</RemoveType>", {"Update folded 2", "RemoveMessage 1"}},
                             Case{"<RemoveType>Other</RemoveType>", {"Update folded 2", "RemoveMessage 1"}},
                             Case{"", {"Update folded 2", "RemoveMessage 1"}}}) {
        actions.clear();
        Receive(Document(Action(1) + Action(2)));
        ProcessMessagesFromClient();
        recordingDialogs.TakeCalls();
        Receive(Document(std::string("<RemoveRequest>") + test.type +
                         "<ID>1</ID><Deleted>true</Deleted></RemoveRequest>"));
        ProcessMessagesFromClient();
        EXPECT_EQ(recordingDialogs.TakeCalls(), test.calls) << test.type;
    }
}

TEST_F(ClientMessages, WithdrawingAMessageTellsItsWholeID) {
    Receive(Document("<RemoveRequest><RemoveType>Message</RemoveType><ID>18446744073709551615</ID>"
                     "</RemoveRequest><RemoveRequest><RemoveType>Message</RemoveType></RemoveRequest>"));
    ProcessMessagesFromClient();
    EXPECT_EQ(recordingDialogs.TakeCalls(), (Calls{"RemoveMessage 18446744073709551615", "RemoveMessage 0"}));
}

TEST_F(ClientMessages, BatchOfDialogRefreshesEndsAlsoWhenADocumentFails) {
    Receive(Document(Action(1)));
    Receive("");
    ProcessMessagesFromClient();
    EXPECT_EQ(recordingDialogs.batches, 0);
    EXPECT_EQ(recordingDialogs.TakeCalls(), (Calls{"Update folded 1", "Show 0 true"}));
}

TEST_F(ClientMessages, QuietPeriodDisablesADialogThatIsShownBehindItsNotice) {
    recordingDialogs.shown = true;
    Receive(Document(cQuietModeStart));
    ProcessMessagesFromClient();
    EXPECT_TRUE(inQuietMode);
    EXPECT_EQ(recordingDialogs.TakeCalls(),
              (Calls{"QuietMode 1293955509000000 1293959109000000", "Disable"}));
    Receive(Document(cQuietModeEnd));
    ProcessMessagesFromClient();
    EXPECT_FALSE(inQuietMode);
    EXPECT_EQ(recordingDialogs.TakeCalls(), (Calls{"RemoveQuietMode", "Update folded ", "Enable"}));
}

TEST_F(ClientMessages, QuietPeriodWithoutADialogSetsItsFlagAlone) {
    Receive(Document(cQuietModeStart));
    ProcessMessagesFromClient();
    EXPECT_TRUE(inQuietMode);
    EXPECT_EQ(recordingDialogs.TakeCalls(), Calls{});
    // A dialog that is shown later brings no notice.
    Receive(Document(Action(1)));
    ProcessMessagesFromClient();
    EXPECT_EQ(recordingDialogs.TakeCalls(), (Calls{"Update folded 1", "Show 0 true"}));
    recordingDialogs.shown = false;
    Receive(Document(cQuietModeEnd));
    ProcessMessagesFromClient();
    EXPECT_FALSE(inQuietMode);
    EXPECT_EQ(recordingDialogs.TakeCalls(), (Calls{"RemoveQuietMode"}))
        << "there may be a notice all the same";
}

TEST_F(ClientMessages, QuietPeriodMayBeStartedAndEndedTwice) {
    recordingDialogs.shown = true;
    Receive(Document(std::string(cQuietModeStart) + cQuietModeStart + cQuietModeEnd + cQuietModeEnd));
    ProcessMessagesFromClient();
    EXPECT_FALSE(inQuietMode);
    EXPECT_EQ(recordingDialogs.TakeCalls(),
              (Calls{"QuietMode 1293955509000000 1293959109000000", "Disable",
                     "QuietMode 1293955509000000 1293959109000000", "Disable", "RemoveQuietMode",
                     "Update folded ", "Enable", "RemoveQuietMode", "Update folded ", "Enable"}));
}

TEST_F(ClientMessages, QuietPeriodTakesTheZonesOfItsTimes) {
    recordingDialogs.shown = true;
    Receive(Document("<QuietModeStart><StartTime>Sun, 02 Jan 2011 10:05:09 +0200</StartTime>"
                     "<EndTime>Sun, 02 Jan 2011 04:05:09 -0500</EndTime></QuietModeStart>"));
    ProcessMessagesFromClient();
    EXPECT_EQ(recordingDialogs.TakeCalls(),
              (Calls{"QuietMode 1293955509000000 1293959109000000", "Disable"}));
}

TEST_F(ClientMessages, QuietPeriodWithBadTimesShowsAndDisablesNothing) {
    for (char const* const times :
         {"<StartTime>x</StartTime>", "<EndTime>x</EndTime>",
          "<StartTime>Sun, 02 Jan 2011 08:05:09 +0000</StartTime><EndTime>x</EndTime>"}) {
        recordingDialogs.shown = true;
        inQuietMode = false;
        Receive(Document(std::string("<QuietModeStart>") + times + "</QuietModeStart>" + Action(1)));
        ProcessMessagesFromClient();
        EXPECT_TRUE(inQuietMode) << times;
        EXPECT_EQ(recordingDialogs.TakeCalls(), Calls{}) << times;
    }
}

TEST_F(ClientMessages, QuietPeriodWhoseNoticeFailsIsOnAllTheSame) {
    recordingDialogs.shown = true;
    recordingDialogs.failing = "QuietMode";
    Receive(Document(cQuietModeStart));
    ProcessMessagesFromClient();
    EXPECT_TRUE(inQuietMode);
}

// A note about a running action is as persistent and as much on top as the settings tell; one about a
// completed action never is.
TEST_F(ClientMessages, MessageIsShownAsTheSettingsTell) {
    struct Case {
        bool persistent;
        bool topmost;
        char const* fields;
        char const* call;
    };
    char const* const completed = "<IsCompletionMessage>true</IsCompletionMessage>";
    char const* const running = "<IsCompletionMessage>false</IsCompletionMessage>";
    for (Case const& test :
         {Case{false, false, "", "Message 7"}, Case{true, false, "", "Message 7 persistent"},
          Case{false, true, "", "Message 7 topmost"}, Case{true, true, "", "Message 7 persistent topmost"},
          Case{false, false, running, "Message 7"}, Case{true, false, running, "Message 7 persistent"},
          Case{false, true, running, "Message 7 topmost"},
          Case{true, true, running, "Message 7 persistent topmost"},
          Case{false, false, completed, "Message 7"}, Case{true, false, completed, "Message 7"},
          Case{false, true, completed, "Message 7"}, Case{true, true, completed, "Message 7"}}) {
        m_enablePersistent = test.persistent;
        m_enableTopmost = test.topmost;
        Receive(Document(std::string("<MessageRequest><ID>7</ID>") + test.fields + "</MessageRequest>"));
        ProcessMessagesFromClient();
        EXPECT_EQ(recordingDialogs.TakeCalls(), (Calls{test.call}))
            << test.persistent << test.topmost << test.fields;
    }
}

TEST_F(ClientMessages, MessageReachesItsDialogWithAllThatItSays) {
    Receive(Document("<MessageRequest><Title>A title</Title><Message>A message</Message>"
                     "<ActionState>Running</ActionState><Timeout>PT5S</Timeout><ID>18446744073709551615</ID>"
                     "</MessageRequest>"));
    ProcessMessagesFromClient();
    MessageRequest const& shown = recordingDialogs.lastMessage;
    EXPECT_TRUE(shown.title == "A title"_utf8);
    EXPECT_TRUE(shown.message == "A message"_utf8);
    EXPECT_FALSE(shown.isCompletionMessage);
    ASSERT_FALSE(shown.timeout.IsNull());
    EXPECT_EQ(*shown.timeout, TimeInterval::FromMicroseconds(5000000));
    EXPECT_EQ(shown.id, 18446744073709551615ul);
}

TEST_F(ClientMessages, ActionRunningTopmostIsForTheMessagesBehindIt) {
    std::string const message = "<MessageRequest><ID>1</ID></MessageRequest>";
    Receive(Document(message + "<ActionRunningTopmost><Enabled>true</Enabled></ActionRunningTopmost>" +
                     message + "<ActionRunningTopmost><Enabled>false</Enabled></ActionRunningTopmost>" +
                     message));
    ProcessMessagesFromClient();
    EXPECT_EQ(recordingDialogs.TakeCalls(), (Calls{"Message 1", "Message 1 topmost", "Message 1"}));
}

TEST_F(ClientMessages, ActionRunningTopmostLeavesThePersistence) {
    m_enablePersistent = true;
    Receive(Document("<ActionRunningTopmost><Enabled>true</Enabled></ActionRunningTopmost>"
                     "<MessageRequest><ID>1</ID></MessageRequest>"));
    ProcessMessagesFromClient();
    EXPECT_EQ(recordingDialogs.TakeCalls(), (Calls{"Message 1 persistent topmost"}));
}

TEST_F(ClientMessages, MessageIsShownAndWithdrawnInAQuietPeriod) {
    inQuietMode = true;
    Receive(Document("<MessageRequest><ID>1</ID></MessageRequest>"
                     "<RemoveRequest><RemoveType>Message</RemoveType><ID>1</ID></RemoveRequest>"));
    ProcessMessagesFromClient();
    EXPECT_EQ(recordingDialogs.TakeCalls(), (Calls{"Message 1", "RemoveMessage 1"}));
}

TEST_F(ClientMessages, MessageWhoseDialogFailsCostsTheRestOfItsBatch) {
    recordingDialogs.failing = "Message";
    Receive(Document("<MessageRequest><ID>1</ID></MessageRequest>" + Action(2)));
    Receive(Document(Action(3)));
    ProcessMessagesFromClient();
    EXPECT_EQ(recordingDialogs.TakeCalls(), (Calls{"Message 1"}));
    EXPECT_TRUE(actions.empty());
}

TEST_F(ClientMessages, WithdrawingAnUnknownActionUpdatesTheDialogAllTheSame) {
    Receive(Document("<RemoveRequest><RemoveType>Action</RemoveType><ID>9</ID></RemoveRequest>"));
    ProcessMessagesFromClient();
    EXPECT_EQ(recordingDialogs.TakeCalls(), (Calls{"Update folded "}));
}

TEST_F(ClientMessages, ActionTellsTheDialogWhetherSnoozingIsAllowed) {
    m_snoozable = false;
    Receive(Document(Action(1)));
    ProcessMessagesFromClient();
    EXPECT_EQ(recordingDialogs.TakeCalls(), (Calls{"Update folded 1", "Show 0 false"}));
}
