#include "app/ClientSender.h"

#include "link/UnixPipe.h"

#include <unistd.h>

PipeWriter pipeWriter;

namespace {

constexpr int cMostSecondsOfWaiting = 300;

bool LinkIsDead() {
    return clientPipe && clientPipe->Killed();
}

} // namespace

void SendToClient(PipeWriter&, UStringRef<UTF8> const& text) {
    writeQ.WriteMessage(UIMessage(text));
}

void SendActionTaken(unsigned long id, bool isCancel) {
    ActionTaken message;
    message.id = id;
    message.isCancel = isCancel;
    message.originator = SharedUString<UTF8>("ClientUI"_utf8);
    SendToClient(pipeWriter, message);
}

void SendWarningToClient(ClientUIErrorMessage const& message) {
    WriteXMLToClient(message);
}

void SendErrorToClient(ClientUIErrorMessage const& message) {
    WriteXMLToClient(message);
    WriteXMLToClient(message);
    // A dead link drains nothing any more.
    for (int second = 0; second < cMostSecondsOfWaiting && !writeQ.IsEmpty() && !LinkIsDead(); ++second)
        sleep(1);
}
