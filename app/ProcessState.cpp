#include "app/ProcessState.h"

namespace {

template <class T>
T& NeverDestroyed() {
    return *new T;
}

} // namespace

UIMessageQueue& readQ = NeverDestroyed<UIMessageQueue>();
UIMessageQueue& writeQ = NeverDestroyed<UIMessageQueue>();
UICommandQueue& uiCommandQ = NeverDestroyed<UICommandQueue>();
ActionRequestList& actions = NeverDestroyed<ActionRequestList>();
FileLocation& m_baseDirectory = NeverDestroyed<FileLocation>();

Instant m_postponedTo;
TimeInterval m_remindInterval;
bool m_snoozable = true;
bool m_enablePersistent = false;
bool m_enableTopmost = false;
bool initialized = false;
bool inQuietMode = false;
bool international = false;

_XtAppStruct* app_context = nullptr;
_XDisplay* display = nullptr;
_WidgetRec* vrkHidden = nullptr;
bool firstTick = true;

UnixPipe* clientPipe = nullptr;
