#include "tests/files/RecordedWaits.h"

#include "files/FileRetry.h"
#include "foundation/PortableThread.h"

namespace {

RecordedWaits* currentWaits = nullptr;

} // namespace

// In the place of the library's own.
void WaitForFileRetry(unsigned int milliseconds) {
    if (currentWaits)
        currentWaits->Wait(milliseconds);
    else
        MilliSecondSleep(milliseconds);
}

RecordedWaits::RecordedWaits(std::function<void()> during) : m_during(std::move(during)) {
    currentWaits = this;
}

RecordedWaits::~RecordedWaits() {
    currentWaits = nullptr;
}

void RecordedWaits::Wait(unsigned int milliseconds) {
    m_waits.push_back(milliseconds);
    if (m_during) m_during();
}
