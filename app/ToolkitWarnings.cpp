#include "app/ToolkitWarnings.h"

#include "app/ClientSender.h"
#include "app/DefaultFontSet.h"
#include "app/ExitCleanup.h"
#include "app/ToolkitCall.h"
#include "text/Ascii.h"
#include "text/LocalText.h"
#include "text/Transcoder.h"

#include <algorithm>
#include <string>
#include <string_view>

XtErrorMsgHandler defaultWarningMsgHandler = nullptr;

namespace {

void ReplaceByQuestionMarks(std::string& text, Bits const& bytes) {
    std::ranges::replace_if(
        text, [&](char byte) { return bytes.Has(static_cast<unsigned char>(byte)); }, '?');
}

// Control characters have no place in a document.
Bits NotForDocuments() {
    Bits set = Ascii::Control();
    return set.Clear('\t').Clear('\n').Clear('\r');
}

// Text that is fit for a document. The toolkit's texts are in the encoding of the locale, or should be: one
// that is not still reaches the client, with its ASCII. The way by UTF-32 checks the text in every locale,
// one of UTF-8 included.
AutoUString<UTF8> ToUTF8(std::string text) {
    ReplaceByQuestionMarks(text, NotForDocuments());
    try {
        return Transcode<UTF8, UTF32>(UnixPlatform::ToUTF32(MakeLocalRef(text)));
    } catch (DebuggableException const&) {
        ReplaceByQuestionMarks(text, Ascii::High());
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
