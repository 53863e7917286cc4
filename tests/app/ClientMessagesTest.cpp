#include "app/ClientMessages.h"

#include "tests/app/ProcessStateFixture.h"
#include "tests/app/RecordingDialogs.h"

#include <cstdlib>

using IDs = std::vector<unsigned long>;

class ClientMessages : public ProcessStateTest {
protected:
    static std::string Initialization(std::string const& settings = "") {
        return "<InitializationInfo><BaseDirectory>/nowhere</BaseDirectory><InitialUISettings>" + settings +
               "</InitialUISettings></InitializationInfo>";
    }
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
              (std::vector<std::string>{"Update folded 1", "Show 60000000 true", "Update folded 1,2",
                                        "Show 60000000 true"}))
        << "neither a postponed reminder nor a quiet period holds back a new action";
    EXPECT_EQ(recordingDialogs.batches, 0);
}

TEST_F(ClientMessages, WithdrawingAnActionUpdatesTheDialog) {
    struct Case {
        char const* type;
        std::vector<std::string> calls;
    };
    for (Case const& test : {Case{"Action", {"Update folded 2"}}, Case{"All", {"Update folded 2"}},
                             Case{"Offer", {}}, Case{"Message", {}}}) {
        actions.clear();
        Receive(Document(Action(1) + Action(2)));
        ProcessMessagesFromClient();
        recordingDialogs.TakeCalls();
        Receive(Document(std::string("<RemoveRequest><RemoveType>") + test.type +
                         "</RemoveType><ID>1</ID></RemoveRequest>"));
        ProcessMessagesFromClient();
        EXPECT_EQ(recordingDialogs.TakeCalls(), test.calls) << test.type;
    }
}

TEST_F(ClientMessages, BatchOfDialogRefreshesEndsAlsoWhenADocumentFails) {
    Receive(Document(Action(1)));
    Receive("");
    ProcessMessagesFromClient();
    EXPECT_EQ(recordingDialogs.batches, 0);
    EXPECT_EQ(recordingDialogs.TakeCalls(), (std::vector<std::string>{"Update folded 1", "Show 0 true"}));
}

TEST_F(ClientMessages, QuietPeriodDisablesADialogThatIsShown) {
    std::string const start = "<QuietModeStart><StartTime>Sun, 02 Jan 2011 08:05:09 +0000</StartTime>"
                              "<EndTime>Sun, 02 Jan 2011 09:05:09 +0000</EndTime></QuietModeStart>";
    Receive(Document(start + "<QuietModeEnd></QuietModeEnd>"));
    ProcessMessagesFromClient();
    EXPECT_TRUE(recordingDialogs.TakeCalls().empty()) << "nothing is shown";

    recordingDialogs.shown = true;
    Receive(Document(start));
    ProcessMessagesFromClient();
    EXPECT_TRUE(inQuietMode);
    EXPECT_EQ(recordingDialogs.TakeCalls(), (std::vector<std::string>{"Disable"}));
    Receive(Document("<QuietModeEnd></QuietModeEnd>"));
    ProcessMessagesFromClient();
    EXPECT_FALSE(inQuietMode);
    EXPECT_EQ(recordingDialogs.TakeCalls(), (std::vector<std::string>{"Update folded ", "Enable"}));
}

TEST_F(ClientMessages, QuietPeriodWithBadTimesDisablesNothing) {
    recordingDialogs.shown = true;
    Receive(Document("<QuietModeStart><StartTime>x</StartTime></QuietModeStart>"));
    ProcessMessagesFromClient();
    EXPECT_TRUE(inQuietMode);
    EXPECT_TRUE(recordingDialogs.TakeCalls().empty());
}

TEST_F(ClientMessages, WithdrawingAnUnknownActionUpdatesTheDialogAllTheSame) {
    Receive(Document("<RemoveRequest><RemoveType>Action</RemoveType><ID>9</ID></RemoveRequest>"));
    ProcessMessagesFromClient();
    EXPECT_EQ(recordingDialogs.TakeCalls(), (std::vector<std::string>{"Update folded "}));
}

TEST_F(ClientMessages, ActionTellsTheDialogWhetherSnoozingIsAllowed) {
    m_snoozable = false;
    Receive(Document(Action(1)));
    ProcessMessagesFromClient();
    EXPECT_EQ(recordingDialogs.TakeCalls(), (std::vector<std::string>{"Update folded 1", "Show 0 false"}));
}
