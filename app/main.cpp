#include "app/ClientMessages.h"
#include "app/ClientSender.h"
#include "app/ExitCleanup.h"
#include "app/MainLoop.h"
#include "app/ProcessState.h"
#include "link/UnixPipe.h"

#include <malloc.h>
#include <unistd.h>

namespace {

constexpr unsigned int cSecondsBetweenLooks = 1;

// Without a display yet: looks for the client's first message, and at the link, once a second.
void WaitForInitialization() {
    while (!initialized) {
        if (clientPipe && clientPipe->Killed()) ExitCleanup(0, "CLOSED");
        sleep(cSecondsBetweenLooks);
        ProcessMessagesFromClient();
    }
    // The support files went through many small pieces of memory, which the heap would keep all day.
    malloc_trim(0);
}

} // namespace

int main(int argumentCount, char** arguments) {
    clientPipe = new UnixPipe(readQ, writeQ);
    UnixPipeRef const reference(clientPipe);
    // Queued before the threads run, so that the writer finds it at its first look and not at the next.
    WriteXMLToClient(ReadyForData());
    clientPipe->Start(STDIN_FILENO, STDOUT_FILENO);
    WaitForInitialization();
    InitXApp(argumentCount, arguments);
    return 0;
}
