#include "dialogs/MessageDialogs.h"

#include "app/ProcessState.h"
#include "app/ToolkitCall.h"
#include "app/WidgetHelpers.h"
#include "dialogs/DialogParts.h"
#include "dialogs/Topmost.h"
#include "dialogs/WidgetText.h"
#include "format/MakeUString.h"
#include "format/UFormat.h"
#include "link/ProtocolRecords.h"

#include <algorithm>
#include <limits>
#include <list>
#include <map>

// The notes stand in the order of their arrival, newest last, with an index by ID beside them, so that a
// client may show and withdraw any number of them. The index holds exactly one entry for each note.

namespace {

constexpr char cDialogName[] = "MessageDialog";

struct MessageDialog {
    // Texts in the encoding of the locale.
    std::string title;
    std::string message;
    std::string buttonLabel;
    unsigned long id = 0;
    bool isCompletionMessage = false;
    // The note has no button.
    bool persistent = false;
    bool topmost = false;
    // When to close it; 0 for never.
    Instant expiry;
    Widget shell = nullptr;
    Widget text = nullptr;
    Widget dismiss = nullptr;
};

using MessageDialogs = std::list<MessageDialog>;

MessageDialogs& messageDialogs = *new MessageDialogs;
std::map<unsigned long, MessageDialogs::iterator>& dialogsByID =
    *new std::map<unsigned long, MessageDialogs::iterator>;

// Closes a note and returns the position behind it.
MessageDialogs::iterator Close(MessageDialogs::iterator dialog) {
    XtDestroyWidget(dialog->shell);
    dialogsByID.erase(dialog->id);
    return messageDialogs.erase(dialog);
}

void OnDismiss(Widget, XtPointer shell, XtPointer) {
    ToolkitCall([shell] {
        auto const found =
            std::find_if(messageDialogs.begin(), messageDialogs.end(),
                         [shell](MessageDialog const& dialog) { return dialog.shell == shell; });
        if (found != messageDialogs.end()) Close(found);
    });
}

// A time-out that reaches beyond the end of time never comes.
Instant ExpiryOf(MessageRequest const& request) {
    if (!request.timeout) return Instant();
    Instant const now = Instant::Now();
    Instant const expiry = now + *request.timeout;
    bool const wrapped = *request.timeout > TimeInterval() && expiry < now;
    return wrapped ? Instant::FromMicroseconds(std::numeric_limits<long long>::max()) : expiry;
}

std::string TitleOf(MessageRequest const& request) {
    if (!request.isCompletionMessage) return WidgetText(request.title.Ref());
    return WidgetText(MakeUString(UFormat("Varnik notification:")).Ref());
}

std::string MessageOf(MessageRequest const& request) {
    if (!request.isCompletionMessage) return WidgetText(request.message.Ref());
    return WidgetText(
        MakeUString(UFormat("Action \"{actionTitle}\" has completed.") % request.title.Ref()).Ref());
}

// The button is mapped here and nowhere else: it is created so that its parent leaves it alone.
void ApplyFlags(MessageDialog const& dialog) {
    Window const button = XtWindow(dialog.dismiss);
    if (dialog.persistent)
        XUnmapWindow(display, button);
    else
        XMapWindow(display, button);
    MakeItTopmost(XtWindow(dialog.shell), dialog.topmost);
}

void Build(MessageDialog& dialog) {
    dialog.shell = CreateDialogShell(dialog.title);
    Widget const form = CreateForm(dialog.shell);
    dialog.text =
        CreateTextPane(form, "actionmessage", cDialogPaneWidth, cDialogPaneHeight, nullptr, dialog.message);
    dialog.dismiss =
        CreateUnmappedButton(form, "dismiss", dialog.buttonLabel, dialog.text, OnDismiss, dialog.shell);
    PlaceUnder(dialog.text, {dialog.dismiss});
    RealizeDialog(dialog.shell);
    ApplyFlags(dialog);
    PlaceDialog(dialog.shell, dialog.text);
}

void Append(MessageDialog&& dialog) {
    messageDialogs.push_back(std::move(dialog));
    dialogsByID[messageDialogs.back().id] = std::prev(messageDialogs.end());
}

void Open(MessageRequest const& request, bool persistent, bool topmost) {
    MessageDialog dialog{.title = TitleOf(request),
                         .message = MessageOf(request),
                         .buttonLabel = *ControlLiteral("OK"),
                         .id = request.id,
                         .isCompletionMessage = request.isCompletionMessage,
                         .persistent = persistent,
                         .topmost = topmost,
                         .expiry = ExpiryOf(request)};
    Build(dialog);
    Append(std::move(dialog));
}

// A text that stays the same is not set again: a title would be announced to the window manager, and a pane
// would lose the place that the user has scrolled to.
void Rewrite(MessageDialog& dialog, MessageRequest const& request, bool persistent, bool topmost) {
    dialog.isCompletionMessage = request.isCompletionMessage;
    dialog.expiry = ExpiryOf(request);
    if (std::string title = TitleOf(request); title != dialog.title) {
        dialog.title = std::move(title);
        SetTitle(dialog.shell, dialog.title);
    }
    if (std::string message = MessageOf(request); message != dialog.message) {
        dialog.message = std::move(message);
        SetPaneText(dialog.text, dialog.message);
    }
    dialog.persistent = persistent;
    dialog.topmost = topmost;
    ApplyFlags(dialog);
}

} // namespace

void ShowMessageDialog(MessageRequest const& request, bool persistent, bool topmost) {
    if (!display) return;
    InDialogHandler(cDialogName, [&] {
        auto const found = dialogsByID.find(request.id);
        if (found == dialogsByID.end())
            Open(request, persistent, topmost);
        else
            Rewrite(*found->second, request, persistent, topmost);
    });
}

void RemoveMessageDialog(unsigned long id) {
    auto const found = dialogsByID.find(id);
    if (found != dialogsByID.end()) Close(found->second);
}

void RemoveTimedoutMessageDialogs() {
    Instant const now = Instant::Now();
    for (auto dialog = messageDialogs.begin(); dialog != messageDialogs.end();) {
        bool const due = dialog->expiry != Instant() && dialog->expiry <= now;
        dialog = due ? Close(dialog) : std::next(dialog);
    }
}
