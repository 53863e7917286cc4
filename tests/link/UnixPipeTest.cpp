#include "link/UnixPipe.h"

#include "foundation/Exceptions.h"
#include "link/UIMessageQueue.h"
#include "tests/support/UStringPrinting.h"
#include "tests/support/WaitUntil.h"

#include <gtest/gtest.h>

#include <array>
#include <atomic>
#include <cerrno>
#include <csignal>
#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <filesystem>
#include <fstream>
#include <memory>
#include <poll.h>
#include <pthread.h>
#include <set>
#include <string>
#include <sys/ioctl.h>
#include <sys/resource.h>
#include <thread>
#include <unistd.h>
#include <utility>

// AddressSanitizer and ThreadSanitizer need more address space than the failing starts leave.
#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
constexpr bool cAddressSpaceMayBeLimited = false;
#else
constexpr bool cAddressSpaceMayBeLimited = true;
#endif

namespace {

bool IsOpen(int descriptor) {
    return fcntl(descriptor, F_GETFD) != -1;
}

// Two connected descriptors. Ends that are not handed on are closed at the end of the scope.
class Channel {
public:
    Channel() {
        std::array<int, 2> ends{};
        if (pipe2(ends.data(), O_CLOEXEC) == 0) {
            m_readEnd = ends[0];
            m_writeEnd = ends[1];
        }
    }
    Channel(Channel const&) = delete;
    Channel& operator=(Channel const&) = delete;
    ~Channel() {
        CloseReadEnd();
        CloseWriteEnd();
    }

    int ReadEnd() const { return m_readEnd; }
    int WriteEnd() const { return m_writeEnd; }
    int HandOnReadEnd() { return std::exchange(m_readEnd, -1); }
    int HandOnWriteEnd() { return std::exchange(m_writeEnd, -1); }
    void CloseReadEnd() {
        if (m_readEnd >= 0) close(HandOnReadEnd());
    }
    void CloseWriteEnd() {
        if (m_writeEnd >= 0) close(HandOnWriteEnd());
    }

    // False when nobody reads any more, be it that the other end is closed or that it rests for long.
    bool Send(std::string const& bytes) const {
        fcntl(m_writeEnd, F_SETFL, O_NONBLOCK);
        std::size_t sent = 0;
        while (sent < bytes.size()) {
            pollfd entry{m_writeEnd, POLLOUT, 0};
            if (poll(&entry, 1, 30000) != 1) return false;
            ssize_t const count = write(m_writeEnd, bytes.data() + sent, bytes.size() - sent);
            if (count < 0 && errno == EAGAIN) continue;
            if (count <= 0) return false;
            sent += static_cast<std::size_t>(count);
        }
        return true;
    }
    // Exactly `size` bytes, fewer only at the end of the input or when none come for a long time.
    std::string Receive(std::size_t size) const {
        std::string bytes;
        std::array<char, 4096> piece{};
        while (bytes.size() < size && HasBytesOrEnd()) {
            ssize_t const count = read(m_readEnd, piece.data(), std::min(piece.size(), size - bytes.size()));
            if (count <= 0) break;
            bytes.append(piece.data(), static_cast<std::size_t>(count));
        }
        return bytes;
    }
    // Whether no byte stands in the channel and none will ever come; waits for the other end to close.
    bool IsAtEnd() const { return HasBytesOrEnd() && Receive(1).empty(); }
    // Bytes that have been sent and not yet received.
    int Waiting() const {
        int count = 0;
        ioctl(m_writeEnd >= 0 ? m_writeEnd : m_readEnd, FIONREAD, &count);
        return count;
    }

private:
    bool HasBytesOrEnd() const {
        pollfd entry{m_readEnd, POLLIN, 0};
        return poll(&entry, 1, 30000) == 1;
    }

    int m_readEnd = -1;
    int m_writeEnd = -1;
};

std::string LengthBytes(std::uint32_t length) {
    std::string bytes(sizeof(length), '\0');
    std::memcpy(bytes.data(), &length, sizeof(length));
    return bytes;
}

std::string FrameOf(std::string const& text) {
    return LengthBytes(static_cast<std::uint32_t>(text.size())) + text;
}

// Bytes in which a shifted or doubled piece would show.
std::string Pattern(std::size_t size) {
    std::string bytes(size, '\0');
    for (std::size_t i = 0; i < size; ++i) bytes[i] = static_cast<char>('a' + (i ^ i / 251) % 23);
    return bytes;
}

UIMessage Message(std::string const& text) {
    return UIMessage(MakeUTF8Ref(text));
}

std::set<std::string> Threads() {
    std::set<std::string> threads;
    for (auto const& entry : std::filesystem::directory_iterator("/proc/self/task"))
        threads.insert(entry.path().filename().string());
    return threads;
}

// A pipe between two channels whose far ends the test holds as the client would. The end of the scope ends
// the link and waits until both threads have let go of the pipe.
class Link {
public:
    Link() : pipe(new UnixPipe(received, toSend)) { std::signal(SIGPIPE, SIG_IGN); }
    Link(Link const&) = delete;
    Link& operator=(Link const&) = delete;
    ~Link() {
        pipe->Kill();
        fromClient.CloseWriteEnd();
        toClient.CloseReadEnd();
        EXPECT_TRUE(ThreadsAreGone());
    }

    bool Start() { return pipe->Start(fromClient.HandOnReadEnd(), toClient.HandOnWriteEnd()); }
    bool IsKilled() const {
        return WaitUntil([&] { return pipe->Killed(); });
    }
    bool ThreadsAreGone() const {
        return WaitUntil([&] { return pipe->GetRefCount() == 1; });
    }

    // The next message's text; "<none>" when none comes for a long time.
    std::string NextReceived() {
        WaitUntil([&] {
            if (m_batch.IsEmpty()) received.ReadMessages(m_batch);
            return !m_batch.IsEmpty();
        });
        return m_batch.IsEmpty() ? "<none>" : MakeString(m_batch.Take().text);
    }
    bool NothingReceived() { return m_batch.IsEmpty() && received.IsEmpty(); }

    UIMessageQueue received;
    UIMessageQueue toSend;
    Channel fromClient;
    Channel toClient;
    UnixPipeRef pipe;

private:
    FiFoQueue<UIMessage> m_batch;
};

// A pipe that was killed before its start: its threads end at once, and the test reads in their place.
class DirectLink : public Link {
public:
    DirectLink() {
        pipe->Kill();
        Start();
        ThreadsAreGone();
    }
};

// Puts another descriptor in the place of 0 for its scope.
class DescriptorZero {
public:
    explicit DescriptorZero(int descriptor) : m_kept(fcntl(0, F_DUPFD_CLOEXEC, 3)) { dup2(descriptor, 0); }
    DescriptorZero(DescriptorZero const&) = delete;
    DescriptorZero& operator=(DescriptorZero const&) = delete;
    ~DescriptorZero() {
        if (m_kept >= 0) {
            dup2(m_kept, 0);
            close(m_kept);
        } else {
            close(0);
        }
    }

private:
    int m_kept;
};

} // namespace

// Reading

TEST(UnixPipe, DeliversAFrameAsOneMessage) {
    Link link;
    ASSERT_TRUE(link.Start());
    ASSERT_TRUE(link.fromClient.Send(FrameOf("<Body>text</Body>")));
    EXPECT_EQ(link.NextReceived(), "<Body>text</Body>");
    EXPECT_FALSE(link.pipe->Killed());
}

TEST(UnixPipe, DeliversFramesThatArriveTogetherOneByOne) {
    Link link;
    ASSERT_TRUE(link.Start());
    ASSERT_TRUE(link.fromClient.Send(FrameOf("one") + FrameOf("two") + FrameOf(Pattern(500))));
    EXPECT_EQ(link.NextReceived(), "one");
    EXPECT_EQ(link.NextReceived(), "two");
    EXPECT_EQ(link.NextReceived(), Pattern(500));
}

TEST(UnixPipe, DeliversAFrameWithoutTextAsAnEmptyMessage) {
    Link link;
    ASSERT_TRUE(link.Start());
    ASSERT_TRUE(link.fromClient.Send(LengthBytes(0) + FrameOf("next")));
    EXPECT_EQ(link.NextReceived(), "");
    EXPECT_EQ(link.NextReceived(), "next");
    EXPECT_FALSE(link.pipe->Killed());
}

TEST(UnixPipe, DoesNotLookAtTheText) {
    std::string const bytes("\xFF\xC0\0<\x80", 5);
    Link link;
    ASSERT_TRUE(link.Start());
    ASSERT_TRUE(link.fromClient.Send(FrameOf(bytes)));
    EXPECT_EQ(link.NextReceived(), bytes);
}

TEST(UnixPipe, DeliversTheLongestFrameWhole) {
    Link link;
    ASSERT_TRUE(link.Start());
    std::string const text = Pattern(2097152);
    ASSERT_TRUE(link.fromClient.Send(FrameOf(text)));
    EXPECT_TRUE(link.NextReceived() == text);
    EXPECT_FALSE(link.pipe->Killed());
}

TEST(UnixPipe, IsKilledByALengthAboveTheLimit) {
    for (std::uint32_t const length : {2097153U, 0x7FFFFFFFU, 0x80000000U, 0xFFFFFFFFU}) {
        SCOPED_TRACE(length);
        Link link;
        ASSERT_TRUE(link.Start());
        ASSERT_TRUE(link.fromClient.Send(LengthBytes(length)));
        EXPECT_TRUE(link.IsKilled());
        EXPECT_TRUE(link.NothingReceived());
    }
}

TEST(UnixPipe, AssemblesAFrameThatArrivesByteByByte) {
    Link link;
    ASSERT_TRUE(link.Start());
    for (char const byte : FrameOf(Pattern(300))) {
        ASSERT_TRUE(link.fromClient.Send(std::string(1, byte)));
        ASSERT_TRUE(WaitUntil([&] { return link.fromClient.Waiting() == 0; }));
    }
    EXPECT_EQ(link.NextReceived(), Pattern(300));
}

TEST(UnixPipe, IsKilledByTheEndOfInputAtEveryByteOfAFrame) {
    std::string const frame = FrameOf("<a>b</a>");
    for (std::size_t cut = 0; cut < frame.size(); ++cut) {
        SCOPED_TRACE(cut);
        Link link;
        ASSERT_TRUE(link.Start());
        ASSERT_TRUE(link.fromClient.Send(frame.substr(0, cut)));
        link.fromClient.CloseWriteEnd();
        EXPECT_TRUE(link.IsKilled());
        EXPECT_TRUE(link.NothingReceived());
    }
}

TEST(UnixPipe, IsKilledByTheEndOfInputBetweenFramesAndKeepsWhatCameBefore) {
    Link link;
    ASSERT_TRUE(link.Start());
    ASSERT_TRUE(link.fromClient.Send(FrameOf("one") + FrameOf("two") + FrameOf("three").substr(0, 6)));
    link.fromClient.CloseWriteEnd();
    EXPECT_TRUE(link.IsKilled());
    EXPECT_EQ(link.NextReceived(), "one");
    EXPECT_EQ(link.NextReceived(), "two");
    EXPECT_TRUE(link.NothingReceived());
}

TEST(UnixPipe, IsKilledByAFailingRead) {
    Link link;
    int const directory = open("/", O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    ASSERT_TRUE(link.pipe->Start(directory, link.toClient.HandOnWriteEnd()));
    EXPECT_TRUE(link.IsKilled());
}

TEST(UnixPipe, ReadMessageSetsKindAndTextOfWhatItIsGiven) {
    DirectLink link;
    ASSERT_TRUE(link.fromClient.Send(FrameOf("first") + LengthBytes(0) + FrameOf(Pattern(70))));
    UIMessage message("before"_utf8);
    message.kind = 7;
    link.pipe->ReadMessageFromPipe(message);
    EXPECT_EQ(message.kind, 0U);
    EXPECT_EQ(message.text, "first"_utf8);
    link.pipe->ReadMessageFromPipe(message);
    EXPECT_TRUE(message.text.empty());
    link.pipe->ReadMessageFromPipe(message);
    EXPECT_EQ(MakeString(message.text), Pattern(70));
    EXPECT_EQ(message.text.CapacityInUnits(), 70U);
}

TEST(UnixPipe, ReadMessageThrowsItsOwnErrorAndLeavesTheMessageAlone) {
    for (std::string const& bytes : {std::string(), std::string("\x05"), LengthBytes(5) + "four",
                                     LengthBytes(2097153) + "abc", LengthBytes(2097152)}) {
        DirectLink link;
        ASSERT_TRUE(link.fromClient.Send(bytes));
        link.fromClient.CloseWriteEnd();
        UIMessage message("before"_utf8);
        message.kind = 7;
        EXPECT_THROW(link.pipe->ReadMessageFromPipe(message), UnixPipeReadMessageError);
        EXPECT_EQ(message.text, "before"_utf8);
        EXPECT_EQ(message.kind, 7U);
    }
}

// Writing

TEST(UnixPipe, WritesLengthAndTextAndNothingElse) {
    Link link;
    link.toSend.WriteMessage(Message("<Body/>"));
    ASSERT_TRUE(link.Start());
    EXPECT_EQ(link.toClient.Receive(11), LengthBytes(7) + "<Body/>");
    EXPECT_EQ(link.toClient.Waiting(), 0);
    EXPECT_TRUE(WaitUntil([&] { return link.toSend.IsEmpty(); }));
}

TEST(UnixPipe, WritesTheLengthInTheByteOrderOfTheMachine) {
    Link link;
    link.toSend.WriteMessage(Message(Pattern(0x0102)));
    ASSERT_TRUE(link.Start());
    std::string const bytes = link.toClient.Receive(4);
    std::uint32_t length = 0;
    ASSERT_EQ(bytes.size(), sizeof(length));
    std::memcpy(&length, bytes.data(), sizeof(length));
    EXPECT_EQ(length, 0x0102U);
}

TEST(UnixPipe, WritesMessagesInTheOrderOfTheQueue) {
    Link link;
    link.toSend.WriteMessage(Message("one"));
    link.toSend.WriteMessage(Message("two"));
    ASSERT_TRUE(link.Start());
    EXPECT_EQ(link.toClient.Receive(14), FrameOf("one") + FrameOf("two"));
    link.toSend.WriteMessage(Message("later"));
    EXPECT_EQ(link.toClient.Receive(9), FrameOf("later"));
    EXPECT_FALSE(link.pipe->Killed());
}

TEST(UnixPipe, WritesWithoutALimit) {
    Link link;
    std::string const text = Pattern(2097153);
    link.toSend.WriteMessage(Message(text));
    ASSERT_TRUE(link.Start());
    EXPECT_TRUE(link.toClient.Receive(2097157) == FrameOf(text));
    EXPECT_FALSE(link.pipe->Killed());
}

TEST(UnixPipe, IsClosedByAnEmptyMessageThatIsNeverWritten) {
    Link link;
    ASSERT_TRUE(link.Start());
    link.toSend.WriteMessage(UIMessage());
    EXPECT_TRUE(link.toClient.IsAtEnd());
    EXPECT_TRUE(link.IsKilled());
}

TEST(UnixPipe, SendsWhatStandsBeforeAnEmptyMessageAndDropsWhatStandsBehind) {
    Link link;
    link.toSend.WriteMessage(Message("before"));
    link.toSend.WriteMessage(UIMessage());
    link.toSend.WriteMessage(Message("behind"));
    ASSERT_TRUE(link.Start());
    EXPECT_EQ(link.toClient.Receive(10), FrameOf("before"));
    EXPECT_TRUE(link.toClient.IsAtEnd());
    EXPECT_TRUE(link.IsKilled());
    EXPECT_TRUE(link.toSend.IsEmpty());
}

TEST(UnixPipe, IsKilledWhenTheClientIsGoneAtAWrite) {
    Link link;
    link.toClient.CloseReadEnd();
    link.toSend.WriteMessage(Message("nobody reads this"));
    ASSERT_TRUE(link.Start());
    EXPECT_TRUE(link.IsKilled());
}

TEST(UnixPipe, IsKilledByAWriteThatIsCutShort) {
    Link link;
    int const writeEnd = link.toClient.HandOnWriteEnd();
    // A pipe that does not wait takes what fits and reports a part.
    ASSERT_EQ(fcntl(writeEnd, F_SETFL, O_NONBLOCK), 0);
    std::string const text = Pattern(1000000);
    link.toSend.WriteMessage(Message(text));
    ASSERT_TRUE(link.pipe->Start(link.fromClient.HandOnReadEnd(), writeEnd));
    EXPECT_TRUE(link.IsKilled());
    std::string const written = link.toClient.Receive(1000004);
    EXPECT_GT(written.size(), 4U);
    EXPECT_LT(written.size(), 1000004U);
    EXPECT_TRUE(FrameOf(text).compare(0, written.size(), written) == 0);
    EXPECT_TRUE(link.toClient.IsAtEnd());
}

TEST(UnixPipe, WriteMessageThrowsItsOwnErrorOnceKilled) {
    DirectLink link;
    EXPECT_THROW(link.pipe->WriteMessageToPipe(Message("text")), UnixPipeWriteMessageError);
    EXPECT_EQ(link.toClient.Waiting(), 0);
}

TEST(UnixPipe, WriteMessageWithoutTextDoesNothing) {
    DirectLink link;
    EXPECT_NO_THROW(link.pipe->WriteMessageToPipe(UIMessage()));
}

// Killing

TEST(UnixPipe, IsNotKilledAtFirst) {
    Link link;
    EXPECT_FALSE(link.pipe->Killed());
}

TEST(UnixPipe, KillClosesTheWriteSideAndLeavesTheReadSide) {
    Link link;
    int const readEnd = link.fromClient.ReadEnd();
    int const writeEnd = link.toClient.WriteEnd();
    ASSERT_TRUE(link.Start());
    link.pipe->Kill();
    EXPECT_TRUE(link.pipe->Killed());
    EXPECT_FALSE(IsOpen(writeEnd));
    EXPECT_TRUE(link.toClient.IsAtEnd());
    EXPECT_TRUE(IsOpen(readEnd));
}

TEST(UnixPipe, SecondKillLeavesAReusedDescriptorAlone) {
    Channel other;
    {
        Link link;
        int const writeEnd = link.toClient.WriteEnd();
        ASSERT_TRUE(link.Start());
        link.pipe->Kill();
        ASSERT_FALSE(IsOpen(writeEnd));
        ASSERT_EQ(dup2(other.WriteEnd(), writeEnd), writeEnd);
        link.pipe->Kill();
        EXPECT_TRUE(IsOpen(writeEnd));
        link.toSend.WriteMessage(Message("too late"));
        link.fromClient.CloseWriteEnd();
        EXPECT_TRUE(link.ThreadsAreGone());
        EXPECT_TRUE(IsOpen(writeEnd));
        close(writeEnd);
    }
    EXPECT_EQ(other.Waiting(), 0);
}

TEST(UnixPipe, SendsNothingOnceKilled) {
    Link link;
    link.toSend.WriteMessage(Message("too late"));
    link.pipe->Kill();
    ASSERT_TRUE(link.Start());
    EXPECT_TRUE(link.ThreadsAreGone());
    EXPECT_EQ(link.toClient.Waiting(), 0);
}

TEST(UnixPipe, ClientThatNeverReadsHoldsUpNeitherKilledNorKill) {
    Link link;
    int const writeEnd = link.toClient.WriteEnd();
    std::string const text = Pattern(1000000);
    link.toSend.WriteMessage(Message(text));
    ASSERT_TRUE(link.Start());
    int before = -1;
    // Full: the writer is blocked inside the text.
    ASSERT_TRUE(WaitUntil([&] {
        return std::exchange(before, link.toClient.Waiting()) > 4096 && before == link.toClient.Waiting();
    }));
    std::atomic<bool> answered{false};
    std::thread mainThread([&] {
        EXPECT_FALSE(link.pipe->Killed());
        link.pipe->Kill();
        EXPECT_TRUE(link.pipe->Killed());
        answered = true;
    });
    EXPECT_TRUE(WaitUntil([&] { return answered.load(); }));
    // The frame in flight keeps its descriptor and comes to its end, which closes it.
    EXPECT_TRUE(IsOpen(writeEnd));
    EXPECT_TRUE(link.toClient.Receive(1000004) == FrameOf(text));
    EXPECT_TRUE(link.toClient.IsAtEnd());
    EXPECT_FALSE(IsOpen(writeEnd));
    mainThread.join();
}

TEST(UnixPipe, EndsItsThreadsWhenAllThreadsAreToldTo) {
    Link link;
    ASSERT_TRUE(link.Start());
    ThreadKiller::m_kill = true;
    EXPECT_TRUE(link.IsKilled());
    ThreadKiller::m_kill = false;
}

// Descriptor 0

TEST(UnixPipe, ReadsFromDescriptorZeroAndNeverClosesIt) {
    Channel fromClient;
    DescriptorZero const zero(fromClient.ReadEnd());
    {
        Link link;
        ASSERT_TRUE(link.pipe->Start(0, link.toClient.HandOnWriteEnd()));
        ASSERT_TRUE(fromClient.Send(FrameOf("through 0")));
        EXPECT_EQ(link.NextReceived(), "through 0");
        link.pipe->Kill();
        EXPECT_TRUE(IsOpen(0));
        fromClient.CloseWriteEnd();
    }
    EXPECT_TRUE(IsOpen(0));
}

TEST(UnixPipe, NeitherWritesToDescriptorZeroNorClosesIt) {
    Channel toClient;
    DescriptorZero const zero(toClient.WriteEnd());
    {
        Link link;
        link.toSend.WriteMessage(Message("text"));
        ASSERT_TRUE(link.pipe->Start(link.fromClient.HandOnReadEnd(), 0));
        EXPECT_TRUE(link.IsKilled());
        EXPECT_TRUE(IsOpen(0));
    }
    EXPECT_TRUE(IsOpen(0));
    EXPECT_EQ(toClient.Waiting(), 0);
}

TEST(UnixPipe, ThatWasNeverStartedClosesNothing) {
    Channel other;
    DescriptorZero const zero(other.ReadEnd());
    {
        Link link;
        link.pipe->Kill();
    }
    EXPECT_TRUE(IsOpen(0));
}

TEST(PipeCloser, ClosesItsDescriptorAndStoresZero) {
    Channel channel;
    int descriptor = channel.HandOnReadEnd();
    int const number = descriptor;
    { PipeCloser const closer(&descriptor); }
    EXPECT_EQ(descriptor, 0);
    EXPECT_FALSE(IsOpen(number));
}

TEST(PipeCloser, LooksAtTheDescriptorAtItsEnd) {
    Channel channel;
    int descriptor = 0;
    {
        PipeCloser const closer(&descriptor);
        descriptor = channel.ReadEnd();
    }
    EXPECT_EQ(descriptor, 0);
    EXPECT_FALSE(IsOpen(channel.HandOnReadEnd()));
}

TEST(PipeCloser, NeverClosesDescriptorZero) {
    Channel channel;
    DescriptorZero const zero(channel.ReadEnd());
    int descriptor = 0;
    { PipeCloser const closer(&descriptor); }
    EXPECT_TRUE(IsOpen(0));
}

// References

TEST(UnixPipe, CountsReferencesAndStaysAtZero) {
    UIMessageQueue received;
    UIMessageQueue toSend;
    UnixPipe pipe(received, toSend);
    EXPECT_EQ(pipe.GetRefCount(), 0U);
    EXPECT_EQ(pipe.RemoveReference(), 0U);
    EXPECT_EQ(pipe.AddReference(), 1U);
    EXPECT_EQ(pipe.AddReference(), 2U);
    EXPECT_EQ(pipe.GetRefCount(), 2U);
    EXPECT_EQ(pipe.RemoveReference(), 1U);
    EXPECT_EQ(pipe.RemoveReference(), 0U);
    EXPECT_EQ(pipe.RemoveReference(), 0U);
    EXPECT_EQ(pipe.GetRefCount(), 0U);
}

TEST(UnixPipe, IsHeldByItsRunningThreads) {
    Link link;
    EXPECT_EQ(link.pipe->GetRefCount(), 1U);
    ASSERT_TRUE(link.Start());
    EXPECT_EQ(link.pipe->GetRefCount(), 3U);
    link.pipe->Kill();
    link.fromClient.CloseWriteEnd();
    EXPECT_TRUE(link.ThreadsAreGone());
}

TEST(UnixPipeRef, CopiesCountAndLeadToThePipe) {
    Link link;
    {
        UnixPipeRef const copy(link.pipe);
        EXPECT_EQ(link.pipe->GetRefCount(), 2U);
        EXPECT_EQ(copy.Get(), link.pipe.Get());
        EXPECT_FALSE(copy->Killed());
        EXPECT_FALSE((*copy).Killed());
    }
    EXPECT_EQ(link.pipe->GetRefCount(), 1U);
}

TEST(UnixPipeRef, LastOneDeletesThePipeAndClosesBothDescriptors) {
    Channel fromClient;
    Channel toClient;
    UIMessageQueue received;
    UIMessageQueue toSend;
    int const readEnd = fromClient.HandOnReadEnd();
    int const writeEnd = toClient.HandOnWriteEnd();
    {
        UnixPipeRef const pipe(new UnixPipe(received, toSend));
        pipe->Kill();
        ASSERT_TRUE(pipe->Start(readEnd, writeEnd));
        ASSERT_TRUE(WaitUntil([&] { return pipe->GetRefCount() == 1; }));
        EXPECT_TRUE(IsOpen(readEnd));
        EXPECT_TRUE(IsOpen(writeEnd));
    }
    EXPECT_FALSE(IsOpen(readEnd));
    EXPECT_FALSE(IsOpen(writeEnd));
}

TEST(UnixPipe, IsDeletedByTheLastOfItsThreadsWhenNobodyElseHoldsIt) {
    std::signal(SIGPIPE, SIG_IGN);
    // Threads that nobody waits for: the queues must stay.
    static auto& received = *new UIMessageQueue;
    static auto& toSend = *new UIMessageQueue;
    Channel fromClient;
    Channel toClient;
    {
        UnixPipeRef const pipe(new UnixPipe(received, toSend));
        ASSERT_TRUE(pipe->Start(fromClient.HandOnReadEnd(), toClient.HandOnWriteEnd()));
    }
    ASSERT_TRUE(fromClient.Send(FrameOf("still served")));
    EXPECT_TRUE(WaitUntil([] { return !received.IsEmpty(); }));
    // An announcement that the reader refuses: the link ends while the client's end is open.
    ASSERT_TRUE(fromClient.Send(LengthBytes(0xFFFFFFFF)));
    EXPECT_TRUE(toClient.IsAtEnd());
    EXPECT_TRUE(WaitUntil([&] { return !fromClient.Send("x"); }));
}

// Starting

TEST(UnixPipe, MayBeKilledByItsReaderWhileItStillStarts) {
    for (int round = 0; round < 150; ++round) {
        Link link;
        link.fromClient.CloseWriteEnd();
        ASSERT_TRUE(link.Start());
        ASSERT_TRUE(link.IsKilled());
        ASSERT_TRUE(link.ThreadsAreGone());
        ASSERT_TRUE(link.toClient.IsAtEnd());
    }
}

TEST(UnixPipe, MayBeKilledFromOutsideWhileItStarts) {
    for (int round = 0; round < 300; ++round) {
        Link link;
        std::atomic<bool> starting{false};
        std::thread killer([&] {
            while (!starting) std::this_thread::yield();
            link.pipe->Kill();
        });
        starting = true;
        EXPECT_TRUE(link.Start());
        killer.join();
        EXPECT_TRUE(link.pipe->Killed());
    }
}

TEST(UnixPipe, IsKilledByBothSidesAtOnceWithoutHarm) {
    for (int round = 0; round < 100; ++round) {
        Link link;
        link.toSend.WriteMessage(UIMessage());
        ASSERT_TRUE(link.Start());
        link.fromClient.CloseWriteEnd();
        ASSERT_TRUE(link.ThreadsAreGone());
        ASSERT_TRUE(link.pipe->Killed());
        ASSERT_TRUE(link.toClient.IsAtEnd());
    }
}

namespace {

std::atomic<int> interruptions{0};

// Interrupts system calls, which are then not restarted.
void InstallInterruption() {
    struct sigaction action {};
    action.sa_handler = [](int) { ++interruptions; };
    sigaction(SIGUSR1, &action, nullptr);
}

} // namespace

TEST(UnixPipe, WriteThatIsInterruptedIsNotContinued) {
    InstallInterruption();
    Link link;
    std::set<std::string> const before = Threads();
    ASSERT_TRUE(link.Start());
    // More than the channel holds: the writer stays inside the write of the text.
    std::string const text = Pattern(200000);
    link.toSend.WriteMessage(Message(text));
    int held = 0;
    ASSERT_TRUE(WaitUntil([&] {
        int const waiting = link.toClient.Waiting();
        return waiting != 0 && waiting == std::exchange(held, waiting);
    }));
    ASSERT_TRUE(WaitUntil([&] {
        for (std::string const& thread : Threads())
            if (!before.contains(thread)) tgkill(getpid(), std::stoi(thread), SIGUSR1);
        return link.pipe->Killed();
    }));
    EXPECT_EQ(link.toClient.Receive(text.size() + 4),
              FrameOf(text).substr(0, static_cast<std::size_t>(held)));
    EXPECT_TRUE(link.toClient.IsAtEnd());
}

TEST(UnixPipe, GoesOnAfterAnInterruptedRead) {
    InstallInterruption();
    std::set<std::string> const before = Threads();
    Link link;
    ASSERT_TRUE(link.Start());
    ASSERT_TRUE(link.fromClient.Send(LengthBytes(5) + "he"));
    ASSERT_TRUE(WaitUntil([&] { return link.fromClient.Waiting() == 0; }));
    interruptions = 0;
    for (int round = 1; round <= 20; ++round) {
        for (std::string const& thread : Threads())
            if (!before.contains(thread)) tgkill(getpid(), std::stoi(thread), SIGUSR1);
        // The reader and the writer; a sanitizer may have a further thread, which takes no signals.
        ASSERT_TRUE(WaitUntil([&] { return interruptions >= 2 * round; }));
    }
    ASSERT_TRUE(link.fromClient.Send("llo"));
    EXPECT_EQ(link.NextReceived(), "hello");
    EXPECT_FALSE(link.pipe->Killed());
}

namespace {

std::size_t AddressSpaceInUse() {
    std::size_t pages = 0;
    std::ifstream("/proc/self/statm") >> pages;
    return pages * static_cast<std::size_t>(getpagesize());
}

// Leaves room for so many more threads.
void LimitThreads(std::size_t threads) {
    constexpr std::size_t stack = 64 * 1024 * 1024;
    pthread_attr_t attributes;
    pthread_getattr_default_np(&attributes);
    pthread_attr_setstacksize(&attributes, stack);
    pthread_setattr_default_np(&attributes);
    pthread_attr_destroy(&attributes);
    rlim_t const bytes = AddressSpaceInUse() + threads * stack + stack / 2;
    rlimit const limit{bytes, bytes};
    setrlimit(RLIMIT_AS, &limit);
}

int FailToStartAnyThread() {
    Link link;
    LimitThreads(0);
    bool const failed = !link.Start() && link.pipe->GetRefCount() == 1 && !link.pipe->Killed();
    return failed ? 3 : 4;
}

int FailToStartTheWriter() {
    Link link;
    LimitThreads(1);
    bool const failed = !link.Start() && link.pipe->GetRefCount() == 2 && !link.pipe->Killed();
    bool const served = link.fromClient.Send(FrameOf("read")) && link.NextReceived() == "read";
    return failed && served ? 3 : 4;
}

int FailToStartWithoutAnyReference() {
    Channel fromClient;
    Channel toClient;
    UIMessageQueue received;
    UIMessageQueue toSend;
    int const readEnd = fromClient.HandOnReadEnd();
    int const writeEnd = toClient.HandOnWriteEnd();
    auto* const pipe = new UnixPipe(received, toSend);
    LimitThreads(0);
    return !pipe->Start(readEnd, writeEnd) && !IsOpen(readEnd) && !IsOpen(writeEnd) ? 3 : 4;
}

class UnixPipeThatCannotStart : public ::testing::Test {
protected:
    void SetUp() override {
        if (!cAddressSpaceMayBeLimited) GTEST_SKIP() << "a sanitizer holds the address space";
        ::testing::FLAGS_gtest_death_test_style = "threadsafe";
    }
};

} // namespace

TEST_F(UnixPipeThatCannotStart, ReturnsFalseAndKeepsItsCallersReference) {
    EXPECT_EXIT(std::_Exit(FailToStartAnyThread()), ::testing::ExitedWithCode(3),
                "Unable to pthread_create \\(11\\)");
}

TEST_F(UnixPipeThatCannotStart, LeavesARunningReaderBehind) {
    EXPECT_EXIT(std::_Exit(FailToStartTheWriter()), ::testing::ExitedWithCode(3),
                "Unable to pthread_create \\(11\\)");
}

TEST_F(UnixPipeThatCannotStart, IsDeletedWhenNobodyHoldsIt) {
    EXPECT_EXIT(std::_Exit(FailToStartWithoutAnyReference()), ::testing::ExitedWithCode(3),
                "Unable to pthread_create \\(11\\)");
}

namespace {

// The reader runs out of memory between the second and the third byte of a length.
int RunOutOfMemoryWhileReading() {
    Link link;
    if (!link.Start() || !link.fromClient.Send(LengthBytes(2097152).substr(0, 2))) return 4;
    if (!WaitUntil([&] { return link.fromClient.Waiting() == 0; })) return 5;
    rlim_t const bytes = AddressSpaceInUse() + 500000;
    rlimit const limit{bytes, bytes};
    setrlimit(RLIMIT_AS, &limit);
    link.fromClient.Send(LengthBytes(2097152).substr(2));
    return link.IsKilled() ? 3 : 6;
}

} // namespace

TEST_F(UnixPipeThatCannotStart, IsKilledWhenMemoryRunsOut) {
    EXPECT_EXIT(std::_Exit(RunOutOfMemoryWhileReading()), ::testing::ExitedWithCode(3), "");
}

// Ends of the threads

TEST(UnixPipe, ItsThreadsAreGoneOnceItIsKilled) {
    std::set<std::string> before;
    {
        // A sanitizer's own thread comes with the first of ours.
        Link first;
        ASSERT_TRUE(first.Start());
    }
    ASSERT_TRUE(WaitUntil([&] {
        before = Threads();
        return before.size() <= 2;
    }));
    for (bool const killedBefore : {false, true}) {
        Link link;
        if (killedBefore) link.pipe->Kill();
        ASSERT_TRUE(link.Start());
        link.pipe->Kill();
        link.fromClient.CloseWriteEnd();
        EXPECT_TRUE(WaitUntil([&] { return Threads() == before; })) << killedBefore;
    }
}

TEST(UnixPipe, LoopsEndAtOnceWithoutTheirThread) {
    Link forReading;
    forReading.pipe->ServiceReadLoop();
    EXPECT_TRUE(forReading.pipe->Killed());
    Link forWriting;
    forWriting.pipe->ServiceWriteLoop();
    EXPECT_TRUE(forWriting.pipe->Killed());
}

TEST(UnixPipe, OutlivesItsOwnStartWhenItsThreadsEndFirst) {
    std::signal(SIGPIPE, SIG_IGN);
    UIMessageQueue received;
    UIMessageQueue toSend;
    for (int round = 0; round < 200; ++round) {
        Channel fromClient;
        Channel toClient;
        fromClient.CloseWriteEnd();
        toSend.WriteMessage(UIMessage());
        auto* const pipe = new UnixPipe(received, toSend);
        pipe->Start(fromClient.HandOnReadEnd(), toClient.HandOnWriteEnd());
        ASSERT_TRUE(toClient.IsAtEnd());
    }
    // The queues must outlive the threads.
    std::size_t const own = 2;
    EXPECT_TRUE(WaitUntil([&] { return Threads().size() <= own; }));
}

TEST(UnixPipe, RestsWhileThereIsNothingToSend) {
    Link link;
    ASSERT_TRUE(link.Start());
    rusage before{};
    getrusage(RUSAGE_SELF, &before);
    std::this_thread::sleep_for(std::chrono::milliseconds(500));
    rusage after{};
    getrusage(RUSAGE_SELF, &after);
    auto const microseconds = [](rusage const& usage) {
        return (usage.ru_utime.tv_sec + usage.ru_stime.tv_sec) * 1000000 + usage.ru_utime.tv_usec +
               usage.ru_stime.tv_usec;
    };
    EXPECT_LT(microseconds(after) - microseconds(before), 250000) << "an idle pipe must not spin";
}

// Messages

TEST(UIMessage, IsOfKindZeroHoweverItIsMade) {
    EXPECT_EQ(UIMessage().kind, 0U);
    EXPECT_EQ(UIMessage("text"_utf8).kind, 0U);
    EXPECT_EQ(UIMessage("text"_utf8).text, "text"_utf8);
    EXPECT_TRUE(UIMessage().text.empty());
}

TEST(UIMessage, KindIsCopiedAlong) {
    UIMessage message("text"_utf8);
    message.kind = 3;
    UIMessageQueue queue;
    queue.WriteMessage(message);
    FiFoQueue<UIMessage> batch;
    queue.ReadMessages(batch);
    UIMessage const taken = batch.Take();
    EXPECT_EQ(taken.kind, 3U);
    EXPECT_EQ(taken.text, "text"_utf8);
    EXPECT_EQ(message.text, "text"_utf8);
}
