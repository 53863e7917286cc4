#include "tests/support/ExpectedDocuments.h"

namespace {

std::string const cDeclaration = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n";

} // namespace

std::string TakenDocument(unsigned long id, bool isCancel) {
    return cDeclaration +
           "<UIToClient>\n"
           "\t<ActionTaken>\n"
           "\t\t<IsCancel>" +
           (isCancel ? "true" : "false") +
           "</IsCancel>\n"
           "\t\t<IsOffer>false</IsOffer>\n"
           "\t\t<ID>" +
           std::to_string(id) +
           "</ID>\n"
           "\t\t<Originator>ClientUI</Originator>\n"
           "\t</ActionTaken>\n"
           "</UIToClient>";
}

std::string RemindTimeDocument(std::string const& time) {
    return cDeclaration +
           "<UIToClient>\n"
           "\t<RemindTime>\n"
           "\t\t<TimeObject>" +
           time +
           "</TimeObject>\n"
           "\t</RemindTime>\n"
           "</UIToClient>";
}

std::string RemindIntervalDocument(std::string const& duration) {
    return cDeclaration +
           "<UIToClient>\n"
           "\t<RemindInterval>\n"
           "\t\t<TimeInterval>" +
           duration +
           "</TimeInterval>\n"
           "\t</RemindInterval>\n"
           "</UIToClient>";
}

std::string TextNotConvertibleDocument(std::string const& dialog) {
    return cDeclaration +
           "<ClientToUI>\n"
           "\t<ClientUIErrorMessage>\n"
           "\t\t<DebugString>" +
           dialog +
           "</DebugString>\n"
           "\t\t<ErrorCode>2</ErrorCode>\n"
           "\t</ClientUIErrorMessage>\n"
           "</ClientToUI>";
}
