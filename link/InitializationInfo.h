#pragma once

#include "link/FileTransfer.h"
#include "text/CopiedUString.h"
#include "text/NullOr.h"
#include "time/TimeInterval.h"
#include "time/TimeObject.h"
#include "xml/XMLElement.h"

#include <vector>

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
    NullOr<CopiedUString<UTF8>> const& InitialTabID() const { return settings.initialTabID; }
    // Takes over everything but the support files.
    void CopyPersistentData(InitializationInfo const& other);

    // Support files by their names, whose case does not count. Of several, the first one is meant; a file in
    // a sub-folder is never found.
    NullOrConstRef<FileTransfer> TechnicianPage() const;
    NullOrConstRef<FileTransfer> Dashboard() const;
    NullOrConstRef<FileTransfer> BrandTranslation() const;
    NullOrConstRef<FileTransfer> NoSelectionPage() const;
    NullOrConstRef<FileTransfer> BrandIcon() const;

    // The translation for a locale: the file of the full name ("de_DE.xlat"), or else that of the language
    // ("de.xlat"). Nothing stands between the prefix and the name: "_brandde.xlat". An empty name is not
    // looked for.
    NullOrConstRef<FileTransfer> GetLocalization(UStringRef<UTF8> const& prefix,
                                                 UStringRef<UTF8> const& fullName,
                                                 UStringRef<UTF8> const& languageName) const;
    NullOrConstRef<FileTransfer> GeneralLocalization(UStringRef<UTF8> const& fullName,
                                                     UStringRef<UTF8> const& languageName) const;
    NullOrConstRef<FileTransfer> LocalizedBrandTranslation(UStringRef<UTF8> const& fullName,
                                                           UStringRef<UTF8> const& languageName) const;

    // In the order of the document.
    std::vector<FileTransfer> supportFiles;
    // The session directory.
    FileLocation baseDirectory;
    InitialUISettings settings;

private:
    NullOrConstRef<FileTransfer> Find(UStringRef<UTF8> const& name) const;
};

void XMLSerialize(XMLElement const& element, InitializationInfo& info);
