#include "app/ExitCleanup.h"

#include "app/ProcessState.h"

#include <X11/Intrinsic.h>
#include <cstdlib>
#include <sys/socket.h>
#include <unistd.h>
#include <utility>

namespace {

constexpr unsigned int cSecondsForLastMessages = 2;

bool ending = false;
int endingStatus = 0;
Display* failedConnection = nullptr;

} // namespace

void NoteXFailure(_XDisplay* connection) {
    failedConnection = connection;
}

void ExitCleanup(int status, char const*) {
    if (!std::exchange(ending, true)) endingStatus = status;
    // Cleared first, so that a second entry does not destroy it again.
    XtAppContext const context = std::exchange(app_context, nullptr);
    if (failedConnection)
        shutdown(ConnectionNumber(failedConnection), SHUT_RDWR);
    else if (context)
        XtDestroyApplicationContext(context);
    sleep(cSecondsForLastMessages);
    std::exit(endingStatus);
}
