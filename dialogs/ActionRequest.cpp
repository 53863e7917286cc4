#include "dialogs/ActionRequest.h"

#include "text/AutoUString.h"

ActionRequest::ActionRequest(unsigned long const& requestID, NullOr<TimeObject> const& requestDeadline,
                             UStringRef<UTF8> requestTitle, UStringRef<UTF8> requestDescription,
                             bool isCancellable, bool isShutdown, bool isRestart, bool hasIncludedCommand,
                             NullOr<SharedUString<UTF8>> requestPreview, bool isForceRun, bool isRequestSave,
                             NullOr<SharedUString<UTF8>> requestPreActionMessage, bool usesCannedStrings,
                             NullOr<SharedUString<UTF8>> requestSourceActionTitle,
                             NullOr<SharedUString<UTF8>> requestMetaData)
    : id(requestID),
      deadline(requestDeadline),
      preview(std::move(requestPreview)),
      preActionMessage(std::move(requestPreActionMessage)),
      sourceActionTitle(std::move(requestSourceActionTitle)),
      metaData(std::move(requestMetaData)),
      cancellable(isCancellable),
      shutdown(isShutdown),
      restart(isRestart),
      includedCommand(hasIncludedCommand),
      forceRun(isForceRun),
      requestSave(isRequestSave),
      useCannedStrings(usesCannedStrings) {
    SetTitle(requestTitle);
    SetDescription(requestDescription);
}

NullOr<Instant> ActionRequest::Deadline() const {
    if (deadline.IsNull()) return NullOr<Instant>();
    return Instant(*deadline);
}

// The copy is complete before the field lets go of its storage, which other requests may go on using.
void ActionRequest::SetTitle(UStringRef<UTF8> const& text) {
    title = AutoUString<UTF8>(text);
}

void ActionRequest::SetDescription(UStringRef<UTF8> const& text) {
    description = AutoUString<UTF8>(text);
}
