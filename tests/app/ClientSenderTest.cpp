#include "app/ClientSender.h"

#include "link/UnixPipe.h"
#include "tests/app/ProcessStateFixture.h"

#include <chrono>
#include <thread>

class ClientSender : public ProcessStateTest {
protected:
    ~ClientSender() override { clientPipe = nullptr; }

    static ClientUIErrorMessage Message() {
        return ClientUIErrorMessage(ClientUIErrorMessage::ToolkitWarning, "noFont"_utf8);
    }

    template <class Body>
    static double SecondsOf(Body const& body) {
        auto const start = std::chrono::steady_clock::now();
        body();
        return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
    }
};

TEST_F(ClientSender, WarningIsQueuedOnceWithoutWaiting) {
    EXPECT_LT(SecondsOf([] { SendWarningToClient(Message()); }), 0.9);
    std::vector<std::string> const sent = Sent();
    ASSERT_EQ(sent.size(), 1u);
    EXPECT_EQ(sent[0], MakeString(ConvertToXML(Message())));
}

TEST_F(ClientSender, ErrorIsQueuedTwiceAndWaitsUntilTheQueueIsDrained) {
    std::vector<std::string> drained;
    std::thread writer([&] {
        while (drained.size() < 2) {
            std::this_thread::sleep_for(std::chrono::milliseconds(200));
            for (std::string const& document : Sent()) drained.push_back(document);
        }
    });
    double const seconds = SecondsOf([] { SendErrorToClient(Message()); });
    writer.join();
    ASSERT_EQ(drained.size(), 2u);
    EXPECT_EQ(drained[0], MakeString(ConvertToXML(Message())));
    EXPECT_EQ(drained[0], drained[1]);
    EXPECT_GE(seconds, 0.99) << "it looks once a second";
}

TEST_F(ClientSender, ErrorDoesNotWaitForADeadLink) {
    UnixPipe pipe(readQ, writeQ);
    pipe.Kill();
    clientPipe = &pipe;
    EXPECT_LT(SecondsOf([] { SendErrorToClient(Message()); }), 0.9);
    EXPECT_EQ(Sent().size(), 2u);
}

TEST_F(ClientSender, TextIsQueuedAsItStands) {
    SendToClient(pipeWriter, "any text\n"_utf8);
    SendToClient(pipeWriter, UStringRef<UTF8>());
    EXPECT_EQ(Sent(), (std::vector<std::string>{"any text\n", ""}));
}
