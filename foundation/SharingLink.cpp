#include "foundation/SharingLink.h"

#include "foundation/Mutex.h"

// Invariant: a block's count is the number of links that point at it, at least 1; only its links change it,
// under its mutex. The last link destroys the block after it has let go of the mutex, when nobody else can
// reach it.

struct SharingLink::Block {
    std::uint64_t count = 1;
    UnixPlatform::Mutex mutex;
};

namespace {

class Hold {
public:
    explicit Hold(UnixPlatform::Mutex& mutex) : m_mutex(UnixPlatform::WaitForMutex(mutex)) {}
    Hold(Hold const&) = delete;
    Hold& operator=(Hold const&) = delete;
    ~Hold() { UnixPlatform::ReleaseMutex(m_mutex); }

private:
    UnixPlatform::Mutex* m_mutex;
};

} // namespace

SharingLink::SharingLink(SharingLink const& other) {
    if (!other.m_block) other.m_block = new Block;
    Hold const hold(other.m_block->mutex);
    ++other.m_block->count;
    m_block = other.m_block;
}

SharingLink& SharingLink::operator=(SharingLink const& other) {
    SharingLink copy(other);
    swap(copy);
    return *this;
}

SharingLink& SharingLink::operator=(SharingLink&& other) noexcept {
    SharingLink taken(std::move(other));
    swap(taken);
    return *this;
}

bool SharingLink::Alone() const {
    if (!m_block) return true;
    Hold const hold(m_block->mutex);
    return m_block->count == 1;
}

bool SharingLink::LeaveBlock() noexcept {
    Block* const block = std::exchange(m_block, nullptr);
    bool last = false;
    {
        Hold const hold(block->mutex);
        last = --block->count == 0;
    }
    if (last) delete block;
    return last;
}
