#include "files/FileLoop.h"

#include "files/ChildLocation.h"
#include "files/FileErrors.h"
#include "files/WildcardMatch.h"
#include "text/CharacterSet.h"
#include "text/CurrentEncodings.h"
#include "text/UString.h"

#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <utility>

// The loop owns the list of scandir from the moment it is there, and gives it up as soon as the last name has
// been used or a failure ends the loop. A list without names is given up at once, so that "there is a list"
// means "there is an item".
//
// A name becomes text only if that leads back to the same bytes: the location is what the file is opened by
// later, and a text that the locale spells in another way would name another file. Where the reading of the
// locale does not lead back, that of the converter service may: the locale of windows-1258 reads a letter and
// its accent as one character and spells that as one byte, while the converter leaves them two.

namespace {

int IsEntry(dirent const* entry) {
    return std::strcmp(entry->d_name, ".") != 0 && std::strcmp(entry->d_name, "..") != 0;
}

// The converter of the encoding that the process works with, which need not be that of the locale any more;
// null for an encoding that the converter service does not know.
std::unique_ptr<CharacterSet const> OpenLocalEncoding() {
    try {
        return std::make_unique<CharacterSet const>(GetLocalEncoding().Name(),
                                                    CharacterSet::InvalidCharacterAction::Stop, true);
    } catch (ICUResult const&) {
        return nullptr;
    }
}

bool NameMatches(UStringRef<Local8Bit> const& name, UStringRef<UTF8> const& pattern) {
    AutoUString<UTF8> const text = ReadByLocale(name);
    return MatchesWildcard(text.empty() ? ConstData(BytesOf(name)) : ConstData(text), pattern);
}

} // namespace

namespace UnixPlatform {

// Names as the encoding reads them that the process works with.
class FileLoop::EncodingReader {
public:
    EncodingReader() : m_encoding(OpenLocalEncoding()) {}

    // The empty text for a name that is none.
    AutoUString<UTF8> Read(UStringRef<Local8Bit> const& name) const {
        AutoUString<UTF8> text;
        if (m_encoding) m_encoding->ConvertToUTF8(name, text);
        return text;
    }

private:
    std::unique_ptr<CharacterSet const> m_encoding;
};

FileLoop::FileLoop() = default;

FileLoop::~FileLoop() {
    init();
}

void FileLoop::Start(FileLocation const& directory, UStringRef<UTF8> const& pattern,
                     bool danglingLinkIsTolerated, bool firstInspectorFlag, bool secondInspectorFlag) {
    init();
    m_directory = directory;
    m_namesAreBytes = directory.IsBinary();
    m_danglingLinkIsTolerated = danglingLinkIsTolerated;
    m_firstInspectorFlag = firstInspectorFlag;
    m_secondInspectorFlag = secondInspectorFlag;
    m_scanCode = 0;
    DoScanDirectory(IsEntry, pattern, danglingLinkIsTolerated);
}

void FileLoop::init() noexcept {
    EmptyScandirList(m_names, m_count);
    m_names = nullptr;
    m_count = 0;
    m_index = 0;
    m_encodingReader.reset();
}

void FileLoop::Forget() noexcept {
    init();
    m_directory = FileLocation();
    m_scanCode = 0;
    m_firstInspectorFlag = false;
    m_secondInspectorFlag = false;
}

void FileLoop::DoScanDirectory(EntryFilter filter, UStringRef<UTF8> const& pattern,
                               bool danglingLinkIsTolerated) {
    try {
        BuildNameList(filter, pattern);
        SetLoopItem(danglingLinkIsTolerated);
    } catch (...) {
        init();
        throw;
    }
}

void FileLoop::BuildNameList(EntryFilter filter, UStringRef<UTF8> const& pattern) {
    init();
    dirent** names = nullptr;
    auto const path = m_directory.LibPath();
    int const count = scandir(path.c_str(), &names, filter, alphasort);
    m_scanCode = count == -1 ? errno : 0;
    if (count == -1 || !names) return;
    m_names = names;
    m_count = count;
    if (!pattern.empty()) KeepMatchingNames(pattern);
}

void FileLoop::KeepMatchingNames(UStringRef<UTF8> const& pattern) {
    int kept = 0;
    for (int index = 0; index < m_count; ++index) {
        dirent* const entry = std::exchange(m_names[index], nullptr);
        m_names[kept] = entry;
        if (NameMatches(MakeLocalRef(entry->d_name), pattern)) {
            ++kept;
        } else {
            std::free(std::exchange(m_names[kept], nullptr));
        }
    }
    m_count = kept;
}

void FileLoop::SetLoopItem(bool danglingLinkIsTolerated) {
    while (m_index < m_count && !TrySetLoopItem(m_names[m_index]->d_name, danglingLinkIsTolerated)) ++m_index;
    if (m_index >= m_count) init();
}

// False for an entry that has gone.
bool FileLoop::TrySetLoopItem(char const* name, bool danglingLinkIsTolerated) {
    int const code = m_item.Set(LocationOf(name));
    if (code == ENOENT && !m_item.Info().Exists()) return false;
    m_item.HandleGetError(code, danglingLinkIsTolerated);
    return true;
}

// The empty text for a name that cannot be told as text.
AutoUString<UTF8> FileLoop::TextOf(UStringRef<Local8Bit> const& name) {
    AutoUString<UTF8> text = FaithfulTextOf(name);
    if (!text.empty()) return text;
    if (!m_encodingReader) m_encodingReader = std::make_unique<EncodingReader>();
    text = m_encodingReader->Read(name);
    if (!LeadsBackTo(name, text)) text.clear();
    return text;
}

FileLocation FileLoop::LocationOf(char const* name) {
    UStringRef<Local8Bit> const local = MakeLocalRef(name);
    AutoUString<UTF8> const text = m_namesAreBytes ? AutoUString<UTF8>() : TextOf(local);
    return ChildLocation(m_directory, text.empty() ? FileName(BytesOf(local)) : FileName(text.Ref()));
}

void FileLoop::EmptyScandirList(dirent** names, int count) noexcept {
    for (int index = 0; index < count; ++index) std::free(names[index]);
    std::free(names);
}

FileItem const& FileLoop::operator*() const {
    if (Finished()) throw InvalidIteratorPosition();
    return m_item;
}

FileLoop& FileLoop::operator++() {
    if (Finished()) return *this;
    try {
        ++m_index;
        SetLoopItem(m_danglingLinkIsTolerated);
    } catch (...) {
        init();
        throw;
    }
    return *this;
}

} // namespace UnixPlatform

FileLoop::FileLoop(FileLocation const& directory, UStringRef<UTF8> const& pattern,
                   bool danglingLinkIsTolerated) {
    Start(directory, pattern, danglingLinkIsTolerated);
}

FileLoop::FileLoop(FileLocation const& directory, VarnikFileType type) {
    Start(directory, type);
}

void FileLoop::Start(FileLocation const& directory, UStringRef<UTF8> const& pattern,
                     bool danglingLinkIsTolerated) {
    StartIn(directory, pattern, danglingLinkIsTolerated, false, false);
}

void FileLoop::Start(FileLocation const& directory, VarnikFileType type) {
    WildcardStart(directory, "*"_utf8 + AdviceFileTypes::ExtensionOfType(type));
}

void FileLoop::WildcardStart(FileLocation const& directory, UStringRef<UTF8> const& pattern) {
    StartIn(directory, pattern, false, false, false);
}

void FileLoop::InspectorStart(FileLocation const& directory, UStringRef<UTF8> const& pattern, bool firstFlag,
                              bool secondFlag) {
    StartIn(directory, pattern, true, firstFlag, secondFlag);
}

void FileLoop::StartIn(FileLocation const& directory, UStringRef<UTF8> const& pattern,
                       bool danglingLinkIsTolerated, bool firstFlag, bool secondFlag) {
    // Copies, since the arguments may be the loop's own.
    FileLocation const place = directory;
    CopiedUString<UTF8> const names(pattern);
    m_started = false;
    Forget();
    if (place.empty() || !place.IsDirectory()) return;
    m_started = true;
    UnixPlatform::FileLoop::Start(place, names, danglingLinkIsTolerated, firstFlag, secondFlag);
}

void FileLoop::RequireStart() const {
    if (!m_started) throw FileLoopUninitialized();
}

FileItem const& FileLoop::operator*() const {
    RequireStart();
    return UnixPlatform::FileLoop::operator*();
}

FileLoop& FileLoop::operator++() {
    RequireStart();
    UnixPlatform::FileLoop::operator++();
    return *this;
}
