#pragma once

#include "app/ProcessState.h"
#include "link/ClientDocuments.h"

// Sending to the client: documents are queued here, and the pipe's writer thread does the rest.

// Has no state: a PipeWriter argument tells that a text is meant for the client.
class PipeWriter {};
extern PipeWriter pipeWriter;

// Queues a copy of a whole document.
void SendToClient(PipeWriter& writer, UStringRef<UTF8> const& text);

// Queues the document of an ActionTaken, RemindTime or RemindInterval.
template <class T>
void SendToClient(PipeWriter& writer, T const& message) requires(!UText<T>) {
    SendToClient(writer, ConvertToXML(message).Ref());
}

// Queues the document of a ReadyForData or ClientUIErrorMessage.
template <class T>
void WriteXMLToClient(T const& message) {
    writeQ.WriteMessage(UIMessage(ConvertToXML(message)));
}

// Tells the client that an action has been taken, or cancelled, here.
void SendActionTaken(unsigned long id, bool isCancel);

// Sends once and returns at once.
void SendWarningToClient(ClientUIErrorMessage const& message);

// For the way out of the process: sends twice, one behind the other, then waits until the queue is empty, the
// link is dead, or 300 seconds have passed.
void SendErrorToClient(ClientUIErrorMessage const& message);
