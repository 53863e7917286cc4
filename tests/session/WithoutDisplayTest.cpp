#include "tests/session/Documents.h"
#include "tests/session/WaitingProgram.h"

#include <gtest/gtest.h>
#include <memory>

using std::chrono::milliseconds;

namespace {

// An initialization of exactly `size` bytes.
std::string InitializationOfSize(std::size_t size) {
    return Padded(Initialization(), size);
}

} // namespace

TEST(ProcessWithoutDisplay, AnnouncesItselfInOneFrameOfExactBytes) {
    ClientSession session;
    std::string const expected = ClientSession::Frame(cReadyForData);
    EXPECT_EQ(session.ReadBytes(expected.size()), expected);
    EXPECT_EQ(session.ReadBytes(1, milliseconds(300)), "") << "and says nothing more";
}

TEST(ProcessWithoutDisplay, EndsOrderlyWhenTheClientClosesBeforeInitialization) {
    auto const session = StartedAndReady();
    session->CloseToProgram();
    EXPECT_EQ(session->WaitForExitStatus(), 0);
}

TEST(ProcessWithoutDisplay, WriteSideIsClosedWhenTheClientHasClosed) {
    auto const session = StartedAndReady();
    session->CloseToProgram();
    EXPECT_EQ(session->ReadBytes(1), "");
    EXPECT_EQ(session->WaitForExitStatus(), 0);
}

TEST(ProcessWithoutDisplay, EndsOrderlyAtEveryCutOfAFrame) {
    std::string const frame = ClientSession::Frame("<a><b></b></a>");
    std::vector<std::unique_ptr<ClientSession>> sessions;
    for (std::size_t size = 0; size <= frame.size(); ++size) {
        sessions.push_back(std::make_unique<ClientSession>(UnusableDisplay()));
        sessions.back()->SendBytes(frame.substr(0, size));
        sessions.back()->CloseToProgram();
    }
    for (std::size_t size = 0; size <= frame.size(); ++size)
        EXPECT_EQ(sessions[size]->WaitForExitStatus(), 0) << "cut behind byte " << size;
}

TEST(ProcessWithoutDisplay, FailsToOpenTheDisplayOnlyAfterInitialization) {
    auto const session = StartedAndReady();
    session->SendDocument(ForcedAction(1, TimeFromNow(-10)));
    // Two looks at the queue pass without an end: nothing has asked for a display yet.
    EXPECT_EQ(session->WaitForEnd(milliseconds(2500)), std::nullopt);
    session->SendDocument(Initialization());
    EXPECT_EQ(session->WaitForExitStatus(), 255);
}

TEST(ProcessWithoutDisplay, FailsWithoutDISPLAYAsWell) {
    ClientSession session;
    session.SendDocument(Initialization());
    EXPECT_EQ(session.WaitForExitStatus(), 255);
}

TEST(ProcessWithoutDisplay, FrameAtTheLimitIsTaken) {
    auto const session = StartedAndReady();
    ASSERT_TRUE(session->SendDocument(InitializationOfSize(cLargestFrame)));
    EXPECT_EQ(session->WaitForExitStatus(), 255) << "it went on to the display";
}

TEST(ProcessWithoutDisplay, FrameOverTheLimitEndsTheLink) {
    auto const session = StartedAndReady();
    session->SendDocument(InitializationOfSize(cLargestFrame + 1));
    EXPECT_EQ(session->WaitForExitStatus(), 0);
}

TEST(ProcessWithoutDisplay, AnnouncedLengthAloneEndsTheLink) {
    for (std::string const& length :
         {std::string("\x01\x00\x20\x00", 4), std::string("\xFF\xFF\xFF\xFF", 4)}) {
        auto const session = StartedAndReady();
        session->SendBytes(length);
        EXPECT_EQ(session->WaitForExitStatus(), 0);
    }
}

TEST(ProcessWithoutDisplay, InitializationArrivingByteByByteIsApplied) {
    auto const session = StartedAndReady();
    for (char const byte : ClientSession::Frame(Initialization())) session->SendBytes(std::string(1, byte));
    EXPECT_EQ(session->WaitForExitStatus(), 255);
}

TEST(ProcessWithoutDisplay, GarbageAndEmptyFramesDoNoHarm) {
    auto const session = StartedAndReady();
    session->SendDocument("");
    session->SendDocument(std::string("\x00\xFF<<<&&&>>>]]>\x01", 14));
    session->SendDocument("<a><InitializationInfo><InitialUISettings><TrayMode>x</TrayMode>");
    // What has failed once is not repeated; a later good one counts.
    ExpectInitialized(*session, Initialization());
}

TEST(ProcessWithoutDisplay, ClientThatReadsNoMoreDoesNotEndItBeforeThereIsSomethingToSay) {
    auto const session = StartedAndReady();
    session->CloseFromProgram();
    EXPECT_EQ(session->WaitForEnd(milliseconds(500)), std::nullopt) << "it has nothing to write";
    session->CloseToProgram();
    EXPECT_EQ(session->WaitForExitStatus(), 0);
}

// Shapes that a client can send: none may end the process or keep it from its work.
TEST(ProcessWithoutDisplay, SurvivesTheWorstFramesOnAStackOfUsualSize) {
    auto const repeated = [](std::string const& piece, std::size_t count) {
        std::string text;
        text.reserve(piece.size() * count);
        for (std::size_t index = 0; index < count; ++index) text += piece;
        return text;
    };
    std::size_t const levels = 170000;
    std::vector<std::string> const frames = {
        repeated("<>", 1048576),
        repeated("<a>", levels) + repeated("<b></></>", levels),
        "<a b='" + std::string(cLargestFrame - 10, 'x') + "'>",
        "<a>" + repeated("&lt;", 500000) + "</a>",
        "<a>&" + std::string(cLargestFrame - 100, 'x') + ";</a>",
        "<a" + repeated(" b=''", 400000) + "></a>",
        "<" + std::string(cLargestFrame - 100, 'n') + ">",
        "<![CDATA[" + std::string(cLargestFrame - 100, ']'),
        "<!--" + std::string(cLargestFrame - 100, '-'),
    };
    std::vector<std::unique_ptr<ClientSession>> sessions;
    for (std::string const& frame : frames) {
        ASSERT_LE(frame.size(), cLargestFrame);
        sessions.push_back(StartedAndReady());
        ASSERT_TRUE(sessions.back()->SendDocument(frame));
    }
    std::vector<InitializingDocument> documents;
    for (std::unique_ptr<ClientSession> const& session : sessions)
        documents.push_back({session.get(), Initialization()});
    ExpectInitialized(documents);
}
