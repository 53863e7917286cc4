#pragma once

#include "app/UICommand.h"
#include "dialogs/ActionRequestList.h"
#include "files/FileLocation.h"
#include "link/UIMessageQueue.h"
#include "time/Instant.h"
#include "time/TimeInterval.h"

class UnixPipe;
struct _XtAppStruct;
struct _XDisplay;
struct _WidgetRec;

// The state of the process: objects made before main and never destroyed, since detached threads may still
// run while the process exits. All but the three queues and the pipe belong to the main thread and have no
// lock.

// Messages received from the client.
extern UIMessageQueue& readQ;
// Messages waiting to go to the client.
extern UIMessageQueue& writeQ;
// Commands from widget callbacks to the next tick.
extern UICommandQueue& uiCommandQ;

// The pending actions, in order of arrival.
extern ActionRequestList& actions;

// The session directory, which the client names and this process empties and fills.
extern FileLocation& m_baseDirectory;

// No reminder before this instant.
extern Instant m_postponedTo;
// The last snooze interval.
extern TimeInterval m_remindInterval;
// Whether snoozing is offered.
extern bool m_snoozable;
// Whether messages about running actions are persistent: the user can't dismiss them.
extern bool m_enablePersistent;
// Whether messages about running actions stay on top.
extern bool m_enableTopmost;

// An InitializationInfo has been applied.
extern bool initialized;
// Between QuietModeStart and QuietModeEnd: forced deadlines are held back.
extern bool inQuietMode;
// The user's locale is a real one, so that translations are in use.
extern bool international;

// The toolkit's context: null until it is made, just before the display is opened, and again once the process
// is ending.
extern _XtAppStruct* app_context;
// Null until it is opened.
extern _XDisplay* display;
// The hidden window by which other programs reach this one. Null until the first tick.
extern _WidgetRec* vrkHidden;
// The hidden window is still to be created.
extern bool firstTick;

// The link to the client; shares main's reference.
extern UnixPipe* clientPipe;
