#pragma once

#include "foundation/LockedQueue.h"

#include <cstdint>
#include <memory>

// What a user has decided, from the widget callback that hears of it to the tick that carries it out.
enum UICommandType : std::int32_t {
    TakeAll = 0,
    ShowDetails = 1,
    DetailsClosed = 2,
    CancelAction = 3,
    TakeAction = 4,
    Snooze = 5,
    ConfirmAccepted = 6,
    ConfirmRefused = 7,
    QuietModeClosed = 8,
    OpenRequested = 9
};

class UICommand {
public:
    UICommand(UICommandType commandType, unsigned long commandActionID, int commandMinutes,
              unsigned int commandSeconds)
        : type(commandType), actionID(commandActionID), minutes(commandMinutes), seconds(commandSeconds) {}
    UICommand(UICommand const&) = delete;
    UICommand& operator=(UICommand const&) = delete;
    virtual ~UICommand();

    UICommandType type;
    // 0 where the command has none.
    unsigned long actionID;
    // For Snooze: minutes from now when positive; otherwise they are added to the time that `seconds` tells.
    std::int32_t minutes;
    // For Snooze: a time in whole seconds since 1970, cut to 32 bits.
    std::uint32_t seconds;
};

class UICommandQueue : public LockedQueue<std::unique_ptr<UICommand>> {};

// Puts a command on the queue for the next tick. The fourth argument is stored in 32 bits.
void QueueCommand(UICommandType type, unsigned long actionID, int minutes, long long seconds);
