#include "link/UnixPipe.h"

#include "foundation/Exceptions.h"
#include "link/UIMessageQueue.h"

#include <cerrno>
#include <memory>
#include <unistd.h>
#include <utility>

// Threads: the main thread starts the pipe and asks Killed(); the reader and the writer run the two loops.
//
// The killed lock guards the killed flag, the write descriptor, the frames in flight and every change of the
// thread pointers. It is never held across a read or a write, so that Killed() answers at once even when the
// client has stopped reading. The reference lock guards the count; no thread holds both.
//
// The write descriptor: a frame takes it under the killed lock and counts itself in flight. Kill() stores 0
// at once, so that no further frame begins; it closes the descriptor itself when no frame is in flight and
// otherwise leaves that to the end of the last one. So a writer never writes to a closed descriptor, nor to
// one that has been opened anew under the same number.
//
// The read descriptor is set before the reader runs and left alone until the pipe goes.
//
// The thread pointers are tested for null by the loops and followed only under the killed lock, before the
// flag is set: Kill() abandons both threads, which may then be gone at any time. A thread that is entered
// when the flag is set already is abandoned on the spot, so that its object does not outlive its work.

namespace {

constexpr unsigned int cWriterPauseInMilliseconds = 100;

// A client that is gone, a failing read and the end of the input come to the same: no more frames.
void ReadWhole(int descriptor, void* target, std::size_t size) {
    auto* next = static_cast<unsigned char*>(target);
    while (size != 0) {
        ssize_t const count = read(descriptor, next, size);
        if (count < 0 && errno == EINTR) continue;
        if (count <= 0) throw UnixPipeReadMessageError();
        next += count;
        size -= static_cast<std::size_t>(count);
    }
}

// One write; what it did not take is not tried again.
void WriteWhole(int descriptor, void const* source, std::size_t size) {
    ssize_t const count = write(descriptor, source, size);
    if (count < 0 || static_cast<std::size_t>(count) != size) throw UnixPipeWriteMessageError();
}

// The thread owns the handle that it is started with.
void RunLoop(void* argument, void (UnixPipe::*loop)()) {
    std::unique_ptr<UnixPipeRef> const handle(static_cast<UnixPipeRef*>(argument));
    try {
        (handle->Get()->*loop)();
    } catch (...) {
        // The loops have killed the pipe by then, and there is nobody to tell.
    }
}

void RunReader(void* argument) {
    RunLoop(argument, &UnixPipe::ServiceReadLoop);
}

void RunWriter(void* argument) {
    RunLoop(argument, &UnixPipe::ServiceWriteLoop);
}

} // namespace

PipeCloser::~PipeCloser() {
    if (*m_descriptor != 0) close(std::exchange(*m_descriptor, 0));
}

UnixPipeRef::~UnixPipeRef() {
    try {
        if (m_pipe->RemoveReference() == 0) delete m_pipe;
    } catch (...) {
        // A handle often goes while another failure is on its way.
    }
}

// Scope of one frame: holds the write descriptor open.
class UnixPipe::Frame {
public:
    explicit Frame(UnixPipe& pipe) : m_pipe(pipe), m_descriptor(pipe.BeginFrame()) {}
    Frame(Frame const&) = delete;
    Frame& operator=(Frame const&) = delete;
    ~Frame() { m_pipe.EndFrame(); }

    void Write(void const* source, std::size_t size) const { WriteWhole(m_descriptor, source, size); }

private:
    UnixPipe& m_pipe;
    int m_descriptor;
};

UnixPipe::UnixPipe(UIMessageQueue& received, UIMessageQueue& toSend)
    : m_received(received), m_toSend(toSend) {
}

UnixPipe::~UnixPipe() = default;

bool UnixPipe::Start(int readDescriptor, int writeDescriptor) {
    // The threads may come and go while this runs; without a reference of its own the last of them would
    // take the pipe away.
    UnixPipeRef const self(this);
    {
        AccessLocker const locker(m_killedLock);
        m_readDescriptor = readDescriptor;
        m_writeDescriptor = writeDescriptor;
    }
    try {
        return StartThread(m_reader, &RunReader) && StartThread(m_writer, &RunWriter);
    } catch (std::bad_alloc const&) {
        return false;
    }
}

bool UnixPipe::StartThread(ThreadPointer& pointer, PortableThread::Function entry) {
    auto handle = std::make_unique<UnixPipeRef>(this);
    std::unique_ptr<PortableThread> thread(CreatePortableThreadSuspended(entry, handle.get()));
    SetThread(pointer, thread.get());
    if (!thread->Start()) {
        SetThread(pointer, nullptr);
        return false;
    }
    // The thread has both from now on, and may have freed them already.
    static_cast<void>(thread.release());
    static_cast<void>(handle.release());
    return true;
}

void UnixPipe::SetThread(ThreadPointer& pointer, PortableThread* thread) {
    AccessLocker const locker(m_killedLock);
    pointer = thread;
    if (thread && m_killed) thread->Abandon();
}

void UnixPipe::Kill() {
    AccessLocker const locker(m_killedLock);
    if (m_killed) return;
    CloseWriteDescriptor();
    if (PortableThread* const writer = m_writer) writer->Abandon();
    if (PortableThread* const reader = m_reader) reader->Abandon();
    m_killed = true;
}

void UnixPipe::CloseWriteDescriptor() {
    int const descriptor = std::exchange(m_writeDescriptor, 0);
    if (m_framesInFlight != 0) {
        m_closedByLastFrame = descriptor;
    } else if (descriptor != 0) {
        close(descriptor);
    }
}

bool UnixPipe::Killed() const {
    AccessLocker const locker(m_killedLock);
    return m_killed;
}

std::uint32_t UnixPipe::AddReference() {
    AccessLocker const locker(m_referenceLock);
    return ++m_references;
}

std::uint32_t UnixPipe::RemoveReference() {
    AccessLocker const locker(m_referenceLock);
    if (m_references != 0) --m_references;
    return m_references;
}

std::uint32_t UnixPipe::GetRefCount() const {
    AccessLocker const locker(m_referenceLock);
    return m_references;
}

void UnixPipe::Sleep(unsigned int milliseconds) const {
    MilliSecondSleep(milliseconds);
}

bool UnixPipe::IsOver(ThreadPointer const& thread) const {
    return Killed() || thread.load() == nullptr || ThreadKiller::m_kill;
}

void UnixPipe::ServiceReadLoop() {
    try {
        while (!IsOver(m_reader)) {
            UIMessage message;
            ReadMessageFromPipe(message);
            m_received.WriteMessage(std::move(message));
        }
    } catch (...) {
        // Whatever it was, the link is over; the main thread sees it by the killed flag.
    }
    Kill();
}

void UnixPipe::ServiceWriteLoop() {
    try {
        while (!IsOver(m_writer) && SendQueuedMessages()) Sleep(cWriterPauseInMilliseconds);
    } catch (...) {
        // As for the reader.
    }
    Kill();
}

// False when an empty message asked for the end of the link; what stands behind it is dropped.
bool UnixPipe::SendQueuedMessages() {
    FiFoQueue<UIMessage> batch;
    m_toSend.ReadMessages(batch);
    while (!batch.IsEmpty()) {
        UIMessage const message = batch.Take();
        if (message.text.empty()) return false;
        WriteMessageToPipe(message);
    }
    return true;
}

void UnixPipe::ReadMessageFromPipe(UIMessage& message) {
    std::uint32_t length = 0;
    ReadWhole(m_readDescriptor, &length, sizeof(length));
    if (length > maximumReadLengthInBytes) throw UnixPipeReadMessageError();
    // Read straight into the storage of the text: its pages are touched only as bytes arrive, so a client
    // that announces much and sends little costs little.
    AutoUString<UTF8> text(UTF8(), std::size_t{length}, std::size_t{length});
    ReadWhole(m_readDescriptor, text.begin(), length);
    message.kind = 0;
    message.text = std::move(text);
}

void UnixPipe::WriteMessageToPipe(UIMessage const& message) {
    auto const length = static_cast<std::uint32_t>(message.text.SizeInBytes());
    if (length == 0) return;
    Frame const frame(*this);
    frame.Write(&length, sizeof(length));
    frame.Write(message.text.begin(), length);
}

// A write descriptor of 0 means that there is none.
int UnixPipe::BeginFrame() {
    AccessLocker const locker(m_killedLock);
    if (m_killed || m_writeDescriptor == 0) throw UnixPipeWriteMessageError();
    ++m_framesInFlight;
    return m_writeDescriptor;
}

void UnixPipe::EndFrame() noexcept {
    AccessLocker const locker(m_killedLock);
    if (--m_framesInFlight == 0 && m_closedByLastFrame != 0) close(std::exchange(m_closedByLastFrame, 0));
}
