// First: X.h defines names that the test framework uses.
#include <gtest/gtest.h>

#include "app/HiddenWindow.h"

#include "tests/app/ProcessStateFixture.h"

#include <algorithm>
#include <cstring>

class HiddenWindow : public ProcessStateTest {
protected:
    static XEvent Message(char const* data) {
        XEvent event{};
        event.type = ClientMessage;
        std::memcpy(event.xclient.data.b, data, std::min(std::strlen(data), sizeof(event.xclient.data.b)));
        return event;
    }

    // What the handler queues for an event; null for nothing.
    static std::unique_ptr<UICommand> QueuedFor(XEvent* event) {
        HiddenWindowEventHandler(nullptr, nullptr, event, nullptr);
        FiFoQueue<std::unique_ptr<UICommand>> commands;
        uiCommandQ.ReadMessages(commands);
        if (commands.IsEmpty()) return nullptr;
        std::unique_ptr<UICommand> command = commands.Take();
        EXPECT_TRUE(commands.IsEmpty());
        return command;
    }
};

TEST_F(HiddenWindow, OpenAsksForTheActions) {
    XEvent event = Message("open");
    std::unique_ptr<UICommand> const command = QueuedFor(&event);
    ASSERT_TRUE(command);
    EXPECT_EQ(command->type, OpenRequested);
    EXPECT_EQ(command->actionID, 0u);
    EXPECT_EQ(command->minutes, 0);
    EXPECT_EQ(command->seconds, 0u);
}

TEST_F(HiddenWindow, MoreTextBehindOpenStillCounts) {
    XEvent event = Message("open the window please");
    EXPECT_TRUE(QueuedFor(&event));
}

TEST_F(HiddenWindow, AnythingElseIsIgnored) {
    for (char const* const data : {"", "ope", "Open", "opem", " open"}) {
        XEvent event = Message(data);
        EXPECT_FALSE(QueuedFor(&event)) << data;
    }
    XEvent otherType = Message("open");
    otherType.type = KeyPress;
    EXPECT_FALSE(QueuedFor(&otherType));
    EXPECT_FALSE(QueuedFor(nullptr));
}

TEST_F(HiddenWindow, CommandKeepsItsFourFields) {
    QueueCommand(Snooze, 7, -3, 0x1234567890);
    FiFoQueue<std::unique_ptr<UICommand>> commands;
    uiCommandQ.ReadMessages(commands);
    std::unique_ptr<UICommand> const command = commands.Take();
    EXPECT_EQ(command->type, Snooze);
    EXPECT_EQ(command->actionID, 7u);
    EXPECT_EQ(command->minutes, -3);
    EXPECT_EQ(command->seconds, 0x34567890u);
}
