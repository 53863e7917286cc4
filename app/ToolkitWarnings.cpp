#include "app/ToolkitWarnings.h"

#include "app/ClientSender.h"
#include "app/DefaultFontSet.h"
#include "app/ExitCleanup.h"
#include "app/ToolkitCall.h"
#include "text/LocalText.h"

#include <algorithm>
#include <string>
#include <string_view>

XtErrorMsgHandler defaultWarningMsgHandler = nullptr;

namespace {

// The toolkit's texts are in the encoding of the locale, or should be: one that is not still reaches the
// client, with its ASCII.
AutoUString<UTF8> ToUTF8(std::string text) {
    try {
        return UnixPlatform::ToUTF8(
            UStringRef<Local8Bit>(Local8Bit(), text.data(), text.data() + text.size()));
    } catch (DebuggableException const&) {
        std::ranges::replace_if(
            text, [](char unit) { return static_cast<unsigned char>(unit) > 0x7F; }, '?');
        return AutoUString<UTF8>(MakeUTF8Ref(text));
    }
}

ClientUIErrorMessage MakeMessage(std::string const& text) {
    return {ClientUIErrorMessage::ToolkitWarning, ToUTF8(text).Ref()};
}

void ReportMissingCharSets(std::string text, char const* warningClass) {
    if (warningClass) {
        text.append(" (").append(warningClass).append(") ( missing charsets:");
        for (std::string const& entry : missingCharSets) text.append(" ").append(entry);
        text.append(" )");
    }
    SendWarningToClient(MakeMessage(text));
}

[[noreturn]] void GiveUpWithoutFont(std::string const& name, char const* warningClass) {
    ToolkitCall([&] {
        std::string text = name;
        if (warningClass) text.append(" (").append(warningClass).append(")");
        SendErrorToClient(MakeMessage(text));
        ExitCleanup(0, text.c_str());
    });
    ExitCleanup(0, "noFont");
}

} // namespace

void OverrideWarningMsgHandler(XtAppContext context) {
    XtErrorMsgHandler const previous = XtAppSetWarningMsgHandler(context, WarningMsgHandler);
    if (previous != WarningMsgHandler) defaultWarningMsgHandler = previous;
}

void WarningMsgHandler(String name, String type, String warningClass, String defaultText, String* parameters,
                       Cardinal* parameterCount) {
    std::string_view const warning(name ? name : "");
    if (!missingCharSets.empty())
        ToolkitCall([&] { ReportMissingCharSets(std::string(warning), warningClass); });
    if (warning == "noFont") GiveUpWithoutFont(std::string(warning), warningClass);
    if (defaultWarningMsgHandler)
        defaultWarningMsgHandler(name, type, warningClass, defaultText, parameters, parameterCount);
}
