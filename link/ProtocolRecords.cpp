#include "link/ProtocolRecords.h"

#include "xml/XMLSerialize.h"
#include "xml/XMLSerializeTime.h"

#include <array>

namespace {

using Ref = UStringRef<UTF8>;

// By the value of RemoveRequest::RemoveType. Never destroyed.
std::array<std::string, 4> const& RemoveTypeNames() {
    static auto const& names = *new std::array<std::string, 4>{"Action", "Offer", "Message", "All"};
    return names;
}

void LoadRemoveType(XMLElement const& element, RemoveRequest::RemoveType& type) {
    CopiedUString<UTF8> name;
    XMLSerialize(element, "RemoveType", name);
    for (unsigned int value = 0; value < RemoveTypeNames().size(); ++value)
        if (name == MakeUTF8Ref(RemoveTypeNames()[value]))
            type = static_cast<RemoveRequest::RemoveType>(value);
}

} // namespace

void XMLSerialize(XMLWriter& writer, ReadyForData const& message) {
    XMLSerialize(writer, "ProtocolVersionMin", message.protocolVersionMin);
    XMLSerialize(writer, "ProtocolVersionMax", message.protocolVersionMax);
    XMLSerialize(writer, "NewProtocolVersionMin", message.newProtocolVersionMin);
    XMLSerialize(writer, "NewProtocolVersionMax", message.newProtocolVersionMax);
    XMLSerialize(writer, "ClientUIPid", message.clientUIPid);
}

void XMLSave(XMLWriter& writer, Ref const& name, ClientUIErrorMessage const& message) {
    writer.BeginElement(name);
    XMLSerialize(writer, "DebugString", message.debugString);
    XMLSerialize(writer, "ErrorCode", static_cast<unsigned int>(message.errorCode));
    writer.EndElement();
}

void XMLSerialize(XMLWriter& writer, ActionTaken const& message) {
    XMLSerialize(writer, "IsCancel", message.isCancel);
    XMLSerialize(writer, "IsOffer", message.isOffer);
    XMLSerialize(writer, "ID", message.id);
    XMLSerialize(writer, "Originator", message.originator);
}

void XMLSave(XMLWriter& writer, Ref const& name, RemindTime const& message) {
    writer.BeginElement(name);
    XMLSerialize(writer, "TimeObject", message.time);
    XMLSerialize(writer, "Originator", message.originator);
    writer.EndElement();
}

void XMLSave(XMLWriter& writer, Ref const& name, RemindInterval const& message) {
    writer.BeginElement(name);
    XMLSerialize(writer, "TimeInterval", message.interval);
    XMLSerialize(writer, "Originator", message.originator);
    writer.EndElement();
}

void XMLSerialize(XMLElement const& element, MessageRequest& message) {
    XMLSerialize(element, "IsCompletionMessage", message.isCompletionMessage);
    XMLSerialize(element, "Timeout", message.timeout);
    XMLSerialize(element, "Title", message.title);
    XMLSerialize(element, "Message", message.message);
    XMLSerialize(element, "ID", message.id);
    XMLSerialize(element, "ActionState", message.actionState);
}

void XMLLoad(XMLElement const& element, RemoveRequest& message) {
    LoadRemoveType(element, message.type);
    XMLSerialize(element, "ID", message.id);
    XMLSerialize(element, "Deleted", message.deleted);
}

void XMLSave(XMLWriter& writer, RemoveRequest const& message) {
    if (message.type < RemoveTypeNames().size())
        XMLSerialize(writer, "RemoveType", RemoveTypeNames()[message.type]);
    XMLSerialize(writer, "ID", message.id);
    XMLSerialize(writer, "Deleted", message.deleted);
}

void XMLSerialize(XMLElement const& element, QuietModeStart& message) {
    XMLSerialize(element, "StartTime", message.startTime);
    XMLSerialize(element, "EndTime", message.endTime);
}
