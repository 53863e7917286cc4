#include "app/UICommand.h"

#include "app/ProcessState.h"

UICommand::~UICommand() = default;

void QueueCommand(UICommandType type, unsigned long actionID, int minutes, long long seconds) {
    auto const shortSeconds = static_cast<std::uint32_t>(seconds & 0xFFFFFFFF);
    uiCommandQ.WriteMessage(std::make_unique<UICommand>(type, actionID, minutes, shortSeconds));
}
