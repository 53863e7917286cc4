#pragma once

#include "foundation/AccessLock.h"
#include "foundation/PortableThread.h"

#include <atomic>
#include <cstddef>
#include <cstdint>

class UIMessageQueue;
struct UIMessage;

// Closes a descriptor at the end of its scope, and stores 0 in its place. A value of 0 means that there is no
// descriptor, so descriptor 0 is never closed.
class PipeCloser {
public:
    // `descriptor` must outlive this object and is looked at only in its destructor.
    explicit PipeCloser(int* descriptor) : m_descriptor(descriptor) {}
    PipeCloser(PipeCloser const&) = delete;
    PipeCloser& operator=(PipeCloser const&) = delete;
    ~PipeCloser();

private:
    int* m_descriptor;
};

// The link to the client: what arrives on one descriptor is put into a queue of whole messages by a reader
// thread, and a writer thread sends the messages of another queue to a second descriptor. The main thread
// touches the queues only, and asks Killed() whether the link is over.
//
// A frame is a length of 4 bytes in the machine's byte order, unsigned, and that many bytes of text. The
// reader accepts up to 2097152 bytes of text, also none; the writer has no limit and sends no empty text: an
// empty message in the sending queue closes the link instead.
//
// A pipe lives on the heap, counted by UnixPipeRef; each running thread holds one reference, and the last
// reference out deletes the pipe. The end of the input, a frame that is too long, a write that fails or is
// cut short, and want of memory all kill the link, for good and without a report. Messages received before
// that stay in their queue; those not yet sent are lost.
class UnixPipe {
public:
    static constexpr std::uint32_t maximumReadLengthInBytes = 2097152;

    // Both queues must outlive the pipe and its threads.
    UnixPipe(UIMessageQueue& received, UIMessageQueue& toSend);
    UnixPipe(UnixPipe const&) = delete;
    UnixPipe& operator=(UnixPipe const&) = delete;
    // Closes the write descriptor, then the read descriptor, those that are not 0.
    ~UnixPipe();

    // Takes over both descriptors and starts the two threads; true when both run. Call it once. After a
    // failure a reader that did start is left running. A pipe that nobody else holds may be gone afterwards:
    // it is deleted when no thread was started and when the threads have ended already.
    bool Start(int readDescriptor, int writeDescriptor);

    // Ends the link: the write descriptor is closed, unless it is 0, and the threads end. A writer in the
    // middle of a frame finishes it and closes the descriptor then, so this never waits for the client. The
    // read descriptor stays open, and a reader blocked in it stays there until the client closes its end.
    // Safe from every thread and any number of times.
    void Kill();
    bool Killed() const;

    // Each returns the new count. A count of 0 stays 0.
    std::uint32_t AddReference();
    std::uint32_t RemoveReference();
    std::uint32_t GetRefCount() const;

    void Sleep(unsigned int milliseconds) const;

    // The threads' bodies. Each returns when the link is over, and has killed it by then; nothing escapes.
    void ServiceReadLoop();
    void ServiceWriteLoop();

    // Reads one frame, waiting for all of it. Throws UnixPipeReadMessageError at the end of the input, for a
    // failing read and for a length above the limit; `message` is unchanged then.
    void ReadMessageFromPipe(UIMessage& message);

    // Writes one frame, in one write for the length and one for the text; nothing for an empty text. Throws
    // UnixPipeWriteMessageError when either write takes less than all, when the link has been killed, and
    // when there is no write descriptor.
    void WriteMessageToPipe(UIMessage const& message);

private:
    class Frame;
    using ThreadPointer = std::atomic<PortableThread*>;

    bool StartThread(ThreadPointer& pointer, PortableThread::Function entry);
    void SetThread(ThreadPointer& pointer, PortableThread* thread);
    bool IsOver(ThreadPointer const& thread) const;
    bool SendQueuedMessages();
    int BeginFrame();
    void EndFrame() noexcept;
    void CloseWriteDescriptor();

    bool m_killed = false;
    ThreadPointer m_reader{nullptr};
    ThreadPointer m_writer{nullptr};
    int m_readDescriptor = 0;
    int m_writeDescriptor = 0;
    PipeCloser m_readCloser{&m_readDescriptor};
    PipeCloser m_writeCloser{&m_writeDescriptor};
    UIMessageQueue& m_received;
    UIMessageQueue& m_toSend;
    std::size_t m_framesInFlight = 0;
    int m_closedByLastFrame = 0;
    mutable AccessLock m_killedLock;
    std::uint32_t m_references = 0;
    mutable AccessLock m_referenceLock;
};

// Counted handle to a UnixPipe; the last one to go deletes the pipe.
class UnixPipeRef {
public:
    explicit UnixPipeRef(UnixPipe* pipe) : m_pipe(pipe) { m_pipe->AddReference(); }
    UnixPipeRef(UnixPipeRef const& other) : UnixPipeRef(other.m_pipe) {}
    UnixPipeRef& operator=(UnixPipeRef const&) = delete;
    ~UnixPipeRef();

    UnixPipe* Get() const { return m_pipe; }
    UnixPipe& operator*() const { return *m_pipe; }
    UnixPipe* operator->() const { return m_pipe; }

private:
    UnixPipe* m_pipe;
};
