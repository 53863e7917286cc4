#include "link/InitializationInfo.h"

#include "link/FileXML.h"
#include "text/Ascii.h"
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

namespace {

AutoUString<UTF8> NameOfTranslation(UStringRef<UTF8> const& prefix, UStringRef<UTF8> const& locale) {
    AutoUString<UTF8> name(prefix);
    name += locale;
    name += ".xlat"_utf8;
    return name;
}

// A name held as bytes counts as UTF-8.
bool IsNamed(FileTransfer const& file, UStringRef<UTF8> const& name) {
    return Ascii::EqualIgnoringCase(file.fileName.Raw(), ConstData(name));
}

} // namespace

void InitializationInfo::CopyPersistentData(InitializationInfo const& other) {
    baseDirectory = other.baseDirectory;
    settings = other.settings;
}

NullOrConstRef<FileTransfer> InitializationInfo::Find(UStringRef<UTF8> const& name) const {
    for (FileTransfer const& file : supportFiles)
        if (file.subFolder.empty() && IsNamed(file, name)) return file;
    return NullOrConstRef<FileTransfer>::Null();
}

NullOrConstRef<FileTransfer> InitializationInfo::TechnicianPage() const {
    return Find("_currentTechnician.html"_utf8);
}

NullOrConstRef<FileTransfer> InitializationInfo::Dashboard() const {
    return Find("_currentDashboard.html"_utf8);
}

NullOrConstRef<FileTransfer> InitializationInfo::BrandTranslation() const {
    return Find("_brand.xlat"_utf8);
}

NullOrConstRef<FileTransfer> InitializationInfo::NoSelectionPage() const {
    return Find("_noselection.html"_utf8);
}

NullOrConstRef<FileTransfer> InitializationInfo::BrandIcon() const {
    return Find("_clientui.ico"_utf8);
}

NullOrConstRef<FileTransfer> InitializationInfo::GetLocalization(UStringRef<UTF8> const& prefix,
                                                                 UStringRef<UTF8> const& fullName,
                                                                 UStringRef<UTF8> const& languageName) const {
    for (UStringRef<UTF8> const& locale : {fullName, languageName}) {
        if (locale.empty()) continue;
        if (NullOrConstRef<FileTransfer> const file = Find(NameOfTranslation(prefix, locale).Ref()))
            return file;
    }
    return NullOrConstRef<FileTransfer>::Null();
}

NullOrConstRef<FileTransfer>
InitializationInfo::GeneralLocalization(UStringRef<UTF8> const& fullName,
                                        UStringRef<UTF8> const& languageName) const {
    return GetLocalization(UStringRef<UTF8>(), fullName, languageName);
}

NullOrConstRef<FileTransfer>
InitializationInfo::LocalizedBrandTranslation(UStringRef<UTF8> const& fullName,
                                              UStringRef<UTF8> const& languageName) const {
    return GetLocalization("_brand"_utf8, fullName, languageName);
}

void XMLSerialize(XMLElement const& element, InitializationInfo& info) {
    XMLSerialize(element, "BaseDirectory", info.baseDirectory);
    XMLLoad(element, "SupportFiles"_utf8, info.supportFiles);
    XMLSerialize(element, "InitialUISettings", info.settings);
}
