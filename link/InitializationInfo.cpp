#include "link/InitializationInfo.h"

#include "xml/XMLSerialize.h"
#include "xml/XMLSerializeTime.h"

void XMLSerialize(XMLElement const& element, InitialUISettings& settings) {
    XMLSerialize(element, "RemindInterval", settings.remindInterval);
    XMLSerialize(element, "RemindTime", settings.remindTime);
    XMLSerialize(element, "HistoryMode", settings.historyMode);
    XMLSerialize(element, "TechHistoryMode", settings.techHistoryMode);
    XMLSerialize(element, "MaxHistoryAge", settings.maxHistoryAge);
    XMLSerialize(element, "MaxTechHistoryAge", settings.maxTechHistoryAge);
    XMLSerialize(element, "BalloonMode", settings.balloonMode);
    XMLSerialize(element, "TrayMode", settings.trayMode);
    XMLSerialize(element, "HasMainDialog", settings.hasMainDialog);
    XMLSerialize(element, "AllowSnooze", settings.allowSnooze);
    XMLSerialize(element, "AlwaysTopmost", settings.alwaysTopmost);
    XMLSerialize(element, "DisplaySingleActionSummary", settings.displaySingleActionSummary);
    XMLSerialize(element, "UseLocale", settings.useLocale);
    XMLSerialize(element, "IdleThreshold", settings.idleThreshold);
    XMLSerialize(element, "UseActivityTracking", settings.useActivityTracking);
    XMLSerialize(element, "ActionRunningTray", settings.actionRunningTray);
    XMLSerialize(element, "InitialTabID", settings.initialTabID);
    XMLSerialize(element, "HideProgressTab", settings.hideProgressTab);
    XMLSerialize(element, "MainDialogMinWidth", settings.mainDialogMinWidth);
    XMLSerialize(element, "MainDialogMinHeight", settings.mainDialogMinHeight);
    XMLSerialize(element, "SelfServiceApp", settings.selfServiceApp);
    XMLSerialize(element, "PersistRunningMessage", settings.persistRunningMessage);
    XMLSerialize(element, "TopmostRunningMessage", settings.topmostRunningMessage);
    XMLSerialize(element, "SSAv2Mode", settings.ssaV2Mode);
    XMLSerialize(element, "SSAv3Enable", settings.ssaV3Enable);
}

void XMLLoad(XMLElement const& element, InitialUISettings& settings) {
    XMLSerialize(element, settings);
}

void XMLSerialize(XMLElement const& element, InitializationInfo& info) {
    XMLSerialize(element, "InitialUISettings", info.settings);
}
