#include "app/ClientMessages.h"

#include "app/LocaleNames.h"
#include "app/ProcessState.h"
#include "app/SessionDirectory.h"
#include "app/Translations.h"
#include "dialogs/ActionRequestDialog.h"
#include "dialogs/MessageDialogs.h"
#include "dialogs/QuietModeDialog.h"
#include "link/ActionRequestXML.h"
#include "link/InitializationInfo.h"
#include "link/ProtocolRecords.h"
#include "text/LocalText.h"
#include "xml/SimpleXML.h"
#include "xml/XMLSerialize.h"

#include <clocale>

// Each message name has one function that reads the element and changes the process state. A function tells
// whether the batch goes on.

namespace {

enum class Batch { GoesOn, EndsHere };

Batch HandleActionRequest(XMLElement const& element) {
    ActionRequest request;
    XMLSerialize(element, request);
    actions.push_back(std::move(request));
    UpdateActionRequestDialog();
    // A new action calls for the dialog whatever the reminder's time and the quiet period say.
    UnixApp_ShowActionRequestDialog(false, m_remindInterval, m_snoozable);
    return Batch::GoesOn;
}

Batch HandleInitializationInfo(XMLElement const& element) {
    if (initialized) return Batch::GoesOn;
    InitializationInfo info;
    XMLSerialize(element, info);
    ApplyInitializationInfo(info);
    return Batch::EndsHere;
}

// All means the one ID in the request, as an action and as a message, and not every action.
Batch HandleRemoveRequest(XMLElement const& element) {
    RemoveRequest request;
    XMLLoad(element, request);
    if (request.type == RemoveRequest::Action || request.type == RemoveRequest::All) {
        RemoveAction(request.id);
        UpdateActionRequestDialog();
    }
    if (request.type == RemoveRequest::Message || request.type == RemoveRequest::All)
        RemoveMessageDialog(request.id);
    return Batch::GoesOn;
}

// The settings are for notes about running actions: one about a completed action may always be dismissed and
// covered.
Batch HandleMessageRequest(XMLElement const& element) {
    MessageRequest request;
    XMLSerialize(element, request);
    ShowMessageDialog(request, m_enablePersistent && !request.isCompletionMessage,
                      m_enableTopmost && !request.isCompletionMessage);
    return Batch::GoesOn;
}

Batch HandleQuietModeStart(XMLElement const& element) {
    inQuietMode = true;
    QuietModeStart period;
    XMLSerialize(element, period);
    if (IsActionRequestDialogShown()) {
        ShowQuietModeDialog(Instant(period.startTime), Instant(period.endTime));
        DisableActionRequestDialog();
    }
    return Batch::GoesOn;
}

Batch HandleQuietModeEnd(XMLElement const&) {
    inQuietMode = false;
    RemoveQuietModeDialog();
    if (IsActionRequestDialogShown()) {
        UpdateActionRequestDialog();
        EnableActionRequestDialog();
    }
    return Batch::GoesOn;
}

Batch HandleActionRunningTopmost(XMLElement const& element) {
    XMLSerialize(element, "Enabled", m_enableTopmost);
    return Batch::GoesOn;
}

struct MessageKind {
    char const* name;
    Batch (*handle)(XMLElement const& element);
};

constexpr MessageKind cMessageKinds[] = {
    {"ActionRequest", HandleActionRequest},
    {"InitializationInfo", HandleInitializationInfo},
    {"RemoveRequest", HandleRemoveRequest},
    {"MessageRequest", HandleMessageRequest},
    {"QuietModeStart", HandleQuietModeStart},
    {"QuietModeEnd", HandleQuietModeEnd},
    {"ActionRunningTopmost", HandleActionRunningTopmost},
};

Batch HandleElement(XMLElement const& element) {
    for (MessageKind const& kind : cMessageKinds)
        if (element.name == MakeUTF8Ref(kind.name)) return kind.handle(element);
    return Batch::GoesOn;
}

Batch HandleDocument(UStringRef<UTF8> const& text) {
    std::unique_ptr<XMLElement> const root = SimpleXML::ParseXMLToTree(text);
    for (XMLElement const& child : root->children)
        if (HandleElement(child) == Batch::EndsHere) return Batch::EndsHere;
    return Batch::GoesOn;
}

// Handles messages until the batch is used up or ends early.
void HandleBatch(FiFoQueue<UIMessage>& batch) {
    while (!batch.IsEmpty())
        if (HandleDocument(batch.Take().text) == Batch::EndsHere) return;
}

// What was left when an InitializationInfo ended its batch.
FiFoQueue<UIMessage>& pendingMessages = *new FiFoQueue<UIMessage>;

void TakeBatch(FiFoQueue<UIMessage>& batch) {
    if (pendingMessages.IsEmpty())
        readQ.ReadMessages(batch);
    else
        batch.Swap(pendingMessages);
}

} // namespace

void ProcessMessagesFromClient() {
    ActionRequestDialogBatch const oneRefresh;
    try {
        FiFoQueue<UIMessage> batch;
        TakeBatch(batch);
        HandleBatch(batch);
        batch.Swap(pendingMessages);
    } catch (...) {
        // The rest of the batch is lost with the document that failed.
    }
}

namespace {

// The environment's locale counts when it is a real one; an uninstalled one has no name.
LocaleNames ChooseLocale(bool useLocale) {
    if (!useLocale) return {};
    char const* const name = setlocale(LC_CTYPE, "");
    if (!IsRealLocale(name)) return {};
    international = true;
    return NamesOfLocale(name);
}

void LoadIfPresent(SessionDirectory const& directory, NullOrConstRef<FileTransfer> const& file) {
    if (file) AddTranslationFile(directory.LocationOf(file->fileName));
}

// The general translation is loaded last and so comes first: branding fills in what it lacks.
void LoadTranslations(SessionDirectory const& directory, InitializationInfo const& info,
                      LocaleNames const& locale) {
    AutoUString<UTF8> const full = UnixPlatform::ToUTF8(MakeLocalRef(locale.full));
    AutoUString<UTF8> const language = UnixPlatform::ToUTF8(MakeLocalRef(locale.language));
    NullOrConstRef<FileTransfer> const brand = info.LocalizedBrandTranslation(full.Ref(), language.Ref());
    LoadIfPresent(directory, brand ? brand : info.BrandTranslation());
    LoadIfPresent(directory, info.GeneralLocalization(full.Ref(), language.Ref()));
}

} // namespace

void ApplyInitializationInfo(InitializationInfo const& info) {
    InitialUISettings const& settings = info.settings;
    // What an earlier message that failed has left counts no longer. Only the locale stays as it was found.
    international = false;
    DropTranslations();
    m_baseDirectory = info.baseDirectory;
    SessionDirectory const directory(m_baseDirectory);
    directory.Write(info.supportFiles);
    LoadTranslations(directory, info, ChooseLocale(settings.useLocale));
    if (settings.remindTime) m_postponedTo = Instant(*settings.remindTime);
    m_remindInterval = settings.remindInterval;
    m_snoozable = settings.allowSnooze;
    m_enablePersistent = settings.persistRunningMessage;
    m_enableTopmost = settings.topmostRunningMessage;
    initialized = true;
}

void RemoveAction(unsigned long id) {
    auto const found = actions.FindFirst(id);
    if (found != actions.end()) actions.erase(found);
}
