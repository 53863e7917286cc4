#pragma once

#include <functional>
#include <vector>

// For its scope, the waits between the attempts of file operations are recorded and take no time. `during` is
// called in each, to change what the next attempt finds. Without a scope they wait. One at a time.
class RecordedWaits {
public:
    explicit RecordedWaits(std::function<void()> during = nullptr);
    RecordedWaits(RecordedWaits const&) = delete;
    RecordedWaits& operator=(RecordedWaits const&) = delete;
    ~RecordedWaits();

    // In milliseconds.
    std::vector<unsigned int> const& Waits() const { return m_waits; }
    void Wait(unsigned int milliseconds);

private:
    std::function<void()> m_during;
    std::vector<unsigned int> m_waits;
};
