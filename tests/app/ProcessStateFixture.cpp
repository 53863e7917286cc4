#include "tests/app/ProcessStateFixture.h"

#include "app/ClientMessages.h"
#include "app/UserCommands.h"
#include "tests/app/RecordingDialogs.h"

ProcessStateTest::ProcessStateTest() {
    // Whatever a batch left for its next call goes first.
    initialized = true;
    ProcessMessagesFromClient();
    ProcessMessagesFromClient();
    Sent();
    actions.clear();
    m_postponedTo = Instant();
    m_remindInterval = TimeInterval();
    m_snoozable = true;
    m_enablePersistent = m_enableTopmost = false;
    initialized = inQuietMode = international = false;
    FiFoQueue<std::unique_ptr<UICommand>> commands;
    uiCommandQ.ReadMessages(commands);
    // Ends a walk over all actions.
    QueueCommand(ConfirmRefused, 0, 0, 0);
    ProcessMessagesFromUI();
    recordingDialogs.Reset();
}

void ProcessStateTest::Receive(std::string const& document) {
    readQ.WriteMessage(UIMessage(MakeUTF8Ref(document)));
}

std::string ProcessStateTest::Document(std::string const& children) {
    return "<ClientToUI>" + children + "</ClientToUI>";
}

std::string ProcessStateTest::Action(unsigned long id, std::string const& fields) {
    return "<ActionRequest><ID>" + std::to_string(id) + "</ID>" + fields + "</ActionRequest>";
}

std::vector<std::string> ProcessStateTest::Sent() {
    FiFoQueue<UIMessage> messages;
    writeQ.ReadMessages(messages);
    std::vector<std::string> documents;
    while (!messages.IsEmpty()) documents.push_back(MakeString(messages.Take().text));
    return documents;
}

std::vector<unsigned long> ProcessStateTest::PendingIDs() {
    std::vector<unsigned long> ids;
    for (ActionRequest const& action : actions) ids.push_back(action.id);
    return ids;
}
