#pragma once

#include "files/AdviceFileTypes.h"
#include "files/FileItem.h"
#include "foundation/Exceptions.h"

#include <dirent.h>
#include <memory>

// Loop over the entries of one directory, in the order of the locale:
//
//     for (FileLoop loop(directory, "*.log"_utf8, true); loop.Unfinished(); ++loop)
//         Look(loop->Location(), loop->Info());
//
// "." and ".." never come, and hidden names do. The names are read once, at the start: what is added later is
// not seen, and what has gone when its turn comes is passed over. A loop belongs to one thread.
//
// A name that cannot be told as text, because it is none in the local encoding or would not lead back to the
// file, comes with a binary location; in a binary directory all do. Starting throws what
// FileLocation::LibPath throws, too.
//
// A pattern is a wildcard pattern (files/WildcardMatch.h) for the whole name as UTF-8 text or, if it is no
// text, as bytes. The empty pattern lets every name pass.

namespace UnixPlatform {

// The work of the loop. Each start gives up what an earlier one has left.
class FileLoop {
public:
    class Error : public DebuggableException {};
    // The loop was asked for its item behind the last one.
    class InvalidIteratorPosition : public Error {};

    // Finished.
    FileLoop();
    FileLoop(FileLoop const&) = delete;
    FileLoop& operator=(FileLoop const&) = delete;
    ~FileLoop();

    // Goes to the first entry. A directory that cannot be read gives a finished loop; only ScanCode() tells
    // it from an empty one. The last two flags are kept for who inspects directories and have no effect.
    // Throws as the steps of the loop do, and the loop is finished then. The location may be the loop's own,
    // its directory or that of its item.
    void Start(FileLocation const& directory, UStringRef<UTF8> const& pattern, bool danglingLinkIsTolerated,
               bool firstInspectorFlag, bool secondInspectorFlag);

    bool Finished() const { return m_names == nullptr; }
    bool Unfinished() const { return !Finished(); }
    // The current item, valid until the next step. Throw InvalidIteratorPosition when there is none.
    FileItem const& operator*() const;
    FileItem const* operator->() const { return &**this; }
    // Goes to the next entry, if there is any. Throws by ThrowFileError, and ends the loop, for an entry
    // whose status cannot be learnt, except for one that has gone. A dangling link that is not tolerated is
    // such an entry; one that is tolerated comes as an item in the state cDanglingLink.
    FileLoop& operator++();

    // What the last start was given, also once the loop has come to its end. Before the first one there are
    // the empty location and no flags.
    //
    // 0, or the error number for which the directory could not be read at the start.
    int ScanCode() const { return m_scanCode; }
    FileLocation const& Directory() const { return m_directory; }
    bool FirstInspectorFlag() const { return m_firstInspectorFlag; }
    bool SecondInspectorFlag() const { return m_secondInspectorFlag; }

protected:
    // Gives up the list of names: the loop is finished.
    void init() noexcept;
    // Gives up what any start has left: the loop is as it was before the first one.
    void Forget() noexcept;

private:
    class EncodingReader;
    using EntryFilter = int (*)(dirent const*);

    void DoScanDirectory(EntryFilter filter, UStringRef<UTF8> const& pattern, bool danglingLinkIsTolerated);
    void BuildNameList(EntryFilter filter, UStringRef<UTF8> const& pattern);
    void KeepMatchingNames(UStringRef<UTF8> const& pattern);
    void SetLoopItem(bool danglingLinkIsTolerated);
    bool TrySetLoopItem(char const* name, bool danglingLinkIsTolerated);
    AutoUString<UTF8> TextOf(UStringRef<Local8Bit> const& name);
    FileLocation LocationOf(char const* name);
    // Frees the entries and the list.
    static void EmptyScandirList(dirent** names, int count) noexcept;

    FileItem m_item;
    FileLocation m_directory;
    // From scandir; null when the loop is finished. Entries that have been taken away from it are null.
    dirent** m_names = nullptr;
    int m_count = 0;
    int m_index = 0;
    int m_scanCode = 0;
    // Made for the first name that needs it, and kept for the rest: a converter costs more to open than to
    // use.
    std::unique_ptr<EncodingReader> m_encodingReader;
    bool m_danglingLinkIsTolerated = false;
    bool m_namesAreBytes = false;
    bool m_firstInspectorFlag = false;
    bool m_secondInspectorFlag = false;
};

} // namespace UnixPlatform

// The portable loop, which tells a loop that has nothing to loop over from one that has come to its end: with
// a location that is no directory, or the empty one, it is not started. It is finished then, keeps nothing of
// an earlier start, and asking for its item throws FileLoopUninitialized.
//
// A start that throws leaves a finished loop, but for one that lacks the memory to take its arguments, which
// leaves all as it was. The loop is not started if the location itself could not be looked at, because the
// local encoding cannot spell it. It is started if the walk of the directory failed, be it at the first
// entry: asking for its item throws InvalidIteratorPosition then, as behind the last one.
//
// Location and pattern of a start may be the loop's own: the directory that it walks, or its item's.
class FileLoop : public UnixPlatform::FileLoop {
public:
    // Not started.
    FileLoop() = default;
    // Started.
    FileLoop(FileLocation const& directory, UStringRef<UTF8> const& pattern, bool danglingLinkIsTolerated);
    FileLoop(FileLocation const& directory, VarnikFileType type);

    // Loops over the names that match.
    void Start(FileLocation const& directory, UStringRef<UTF8> const& pattern, bool danglingLinkIsTolerated);
    // Loops over the names that end in the extension of the type, as it is written in
    // AdviceFileTypes::ExtensionOfType; with Miscellany over all. No dangling link is tolerated.
    void Start(FileLocation const& directory, VarnikFileType type);
    // Loops over the names that match; no dangling link is tolerated. With what MakeFileLocationWithWildcard
    // makes of a path.
    void WildcardStart(FileLocation const& directory, UStringRef<UTF8> const& pattern);
    // Loops over the names that match, for an inspection: dangling links are tolerated, and the flags kept.
    void InspectorStart(FileLocation const& directory, UStringRef<UTF8> const& pattern, bool firstFlag,
                        bool secondFlag);

    bool IsStarted() const { return m_started; }
    // These throw FileLoopUninitialized when the loop is not started; see UnixPlatform::FileLoop for the
    // rest.
    FileItem const& operator*() const;
    FileItem const* operator->() const { return &**this; }
    FileLoop& operator++();

private:
    void StartIn(FileLocation const& directory, UStringRef<UTF8> const& pattern, bool danglingLinkIsTolerated,
                 bool firstFlag, bool secondFlag);
    void RequireStart() const;

    bool m_started = false;
};
