#pragma once

#include "text/CopiedUString.h"
#include "text/NullOr.h"
#include "time/TimeInterval.h"
#include "time/TimeObject.h"
#include "xml/XMLElement.h"

// The settings of the client's first message. Most are only carried; a value that does not parse fails the
// message all the same.
struct InitialUISettings {
    TimeInterval remindInterval;
    NullOr<TimeObject> remindTime;
    unsigned int historyMode = 0;
    NullOr<TimeInterval> maxHistoryAge;
    unsigned int techHistoryMode = 0;
    NullOr<TimeInterval> maxTechHistoryAge;
    unsigned int balloonMode = 1;
    unsigned int trayMode = 2;
    bool hasMainDialog = true;
    bool allowSnooze = true;
    bool alwaysTopmost = false;
    bool displaySingleActionSummary = true;
    bool useLocale = false;
    bool persistRunningMessage = false;
    bool topmostRunningMessage = false;
    TimeInterval idleThreshold;
    bool useActivityTracking = false;
    bool actionRunningTray = false;
    NullOr<CopiedUString<UTF8>> initialTabID;
    bool hideProgressTab = false;
    unsigned int mainDialogMinWidth = 0;
    unsigned int mainDialogMinHeight = 0;
    NullOr<CopiedUString<UTF8>> selfServiceApp;
    unsigned int ssaV2Mode = 0;
    bool ssaV3Enable = false;
};

void XMLSerialize(XMLElement const& element, InitialUISettings& settings);
// For the named form: the settings are the content of one child.
void XMLLoad(XMLElement const& element, InitialUISettings& settings);

// The message that ends the waiting for initialization.
struct InitializationInfo {
    InitialUISettings settings;
};

void XMLSerialize(XMLElement const& element, InitializationInfo& info);
