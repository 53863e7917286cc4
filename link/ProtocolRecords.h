#pragma once

#include "text/CopiedUString.h"
#include "text/NullOr.h"
#include "text/SharedUString.h"
#include "time/TimeInterval.h"
#include "time/TimeObject.h"
#include "xml/XMLElement.h"
#include "xml/XMLWriter.h"

// The small messages of the protocol as records, and how each travels. A field is a child element. Writing is
// strict in order, by the order of the calls in the source; reading goes by name. What a record does not read
// is ignored, and what it does not find keeps the default given here.

// To the client

// The process's first word, sent once. No version is negotiated.
struct ReadyForData {
    unsigned int protocolVersionMin = 1;
    unsigned int protocolVersionMax = 1;
    unsigned int newProtocolVersionMin = 1;
    unsigned int newProtocolVersionMax = 1;
    // Always 0: the process does not report its ID.
    long clientUIPid = 0;
};

// Writes the children of the message, without its own element.
void XMLSerialize(XMLWriter& writer, ReadyForData const& message);

struct ClientUIErrorMessage {
    enum ErrorCode : unsigned int {
        ToolkitWarning = 1,    // the text is the warning's
        TextNotConvertible = 2 // the text is the dialog's name
    };

    ClientUIErrorMessage() = default;
    ClientUIErrorMessage(ErrorCode code, UStringRef<UTF8> const& text) : errorCode(code), debugString(text) {}

    ErrorCode errorCode = ToolkitWarning;
    CopiedUString<UTF8> debugString;
};

// Writes the element of that name with its children. The text goes first, although the record begins with the
// code.
void XMLSave(XMLWriter& writer, UStringRef<UTF8> const& name, ClientUIErrorMessage const& message);

// The user, or the clock, has taken or cancelled an action.
struct ActionTaken {
    unsigned long id = 0;
    bool isCancel = false;
    bool isOffer = false;
    NullOr<SharedUString<UTF8>> originator;
};

// Writes the children of the message, without its own element.
void XMLSerialize(XMLWriter& writer, ActionTaken const& message);

// The user has postponed the reminder to a time.
struct RemindTime {
    TimeObject time;
    NullOr<SharedUString<UTF8>> originator;
};

// Writes the element of that name with its children.
void XMLSave(XMLWriter& writer, UStringRef<UTF8> const& name, RemindTime const& message);

// The interval that the user has chosen; 0 for a fixed time.
struct RemindInterval {
    TimeInterval interval;
    NullOr<SharedUString<UTF8>> originator;
};

void XMLSave(XMLWriter& writer, UStringRef<UTF8> const& name, RemindInterval const& message);

// From the client

struct MessageRequest {
    SharedUString<UTF8> title;
    SharedUString<UTF8> message;
    SharedUString<UTF8> actionState;
    bool isCompletionMessage = false;
    NullOr<TimeInterval> timeout;
    unsigned long id = 0;
};

void XMLSerialize(XMLElement const& element, MessageRequest& message);

struct RemoveRequest {
    enum RemoveType : unsigned int { Action = 0, Offer = 1, Message = 2, All = 3 };

    unsigned long id = 0;
    // A text other than the four names leaves it as it is.
    RemoveType type = All;
    // Carried, not used.
    bool deleted = false;
};

void XMLLoad(XMLElement const& element, RemoveRequest& message);
// A type without a name writes no element for it.
void XMLSave(XMLWriter& writer, RemoveRequest const& message);

struct QuietModeStart {
    TimeObject startTime;
    TimeObject endTime;
};

void XMLSerialize(XMLElement const& element, QuietModeStart& message);
