#include "link/ActionRequestXML.h"

#include "xml/XMLSerialize.h"
#include "xml/XMLSerializeTime.h"

void XMLSerialize(XMLElement const& element, ActionRequest& request) {
    XMLSerialize(element, "PreActionMessage", request.preActionMessage);
    XMLSerialize(element, "Deadline", request.deadline);
    XMLSerialize(element, "ShortDescription", request.description);
    XMLSerialize(element, "Preview", request.preview);
    XMLSerialize(element, "ID", request.id);
    XMLSerialize(element, "Title", request.title);
    XMLSerialize(element, "Cancellable", request.cancellable);
    XMLSerialize(element, "Restart", request.restart);
    XMLSerialize(element, "Shutdown", request.shutdown);
    XMLSerialize(element, "IncludedCommand", request.includedCommand);
    XMLSerialize(element, "ForceRun", request.forceRun);
    XMLSerialize(element, "RequestSave", request.requestSave);
    XMLSerialize(element, "UseCannedStrings", request.useCannedStrings);
    XMLSerialize(element, "SourceActionTitle", request.sourceActionTitle);
    XMLSerialize(element, "MetaData", request.metaData);
}
