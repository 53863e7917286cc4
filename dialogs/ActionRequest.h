#pragma once

#include "text/NullOr.h"
#include "text/SharedUString.h"
#include "time/Instant.h"
#include "time/TimeObject.h"

// One action that the client wants the user to take. A copy owns what it holds: optional fields are deep
// copies, and changing a text of one request never shows in another, even when both shared its storage.
// Moving is cheap.
class ActionRequest {
public:
    ActionRequest() = default;
    // The order of the arguments is not that of the fields.
    ActionRequest(unsigned long const& id, NullOr<TimeObject> const& deadline, UStringRef<UTF8> title,
                  UStringRef<UTF8> description, bool cancellable, bool shutdown, bool restart,
                  bool includedCommand, NullOr<SharedUString<UTF8>> preview, bool forceRun, bool requestSave,
                  NullOr<SharedUString<UTF8>> preActionMessage, bool useCannedStrings,
                  NullOr<SharedUString<UTF8>> sourceActionTitle, NullOr<SharedUString<UTF8>> metaData);

    // The deadline as a point in time, which is how deadlines are compared; null for none.
    NullOr<Instant> Deadline() const;

    // Give the request a copy of the text of its own. The view may point into the field itself.
    void SetTitle(UStringRef<UTF8> const& text);
    void SetDescription(UStringRef<UTF8> const& text);

    // The client's identifier. Not unique: the client may send a second request of one ID.
    unsigned long id = 0;
    // When the action must be taken; null for no deadline.
    NullOr<TimeObject> deadline;
    // Script text for the details; null when there are no details to show.
    NullOr<SharedUString<UTF8>> preview;
    // Text to acknowledge before the action is taken; null for no confirmation.
    NullOr<SharedUString<UTF8>> preActionMessage;
    // Carried, not shown.
    NullOr<SharedUString<UTF8>> sourceActionTitle;
    // Carried, not shown.
    NullOr<SharedUString<UTF8>> metaData;
    // One line. A request with an empty title counts for everything but gets no row.
    SharedUString<UTF8> title;
    // Shown above the summary of the selected action.
    SharedUString<UTF8> description;
    bool cancellable = false;
    // Taking the action shuts the machine down.
    bool shutdown = false;
    // Taking the action restarts the machine.
    bool restart = false;
    // Carried, not read.
    bool includedCommand = false;
    // The action runs by itself once its deadline has passed.
    bool forceRun = false;
    // The wording tells the user to save work first.
    bool requestSave = false;
    // Carried, not read.
    bool useCannedStrings = false;
};
