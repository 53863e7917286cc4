#pragma once

#include "foundation/LockedQueue.h"
#include "link/UIMessage.h"

// Messages on their way between the main thread and a thread of the pipe.
class UIMessageQueue : public LockedQueue<UIMessage> {};
