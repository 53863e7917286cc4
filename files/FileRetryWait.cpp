#include "files/FileRetry.h"
#include "foundation/PortableThread.h"

void WaitForFileRetry(unsigned int milliseconds) {
    MilliSecondSleep(milliseconds);
}
