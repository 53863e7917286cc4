#include "app/Translations.h"

std::set<SharingPtr<FormatFile>>& m_formatFiles = *new std::set<SharingPtr<FormatFile>>;
std::set<SharingPtr<FormatOverrideScope>>& m_formatOverrides = *new std::set<SharingPtr<FormatOverrideScope>>;

// Each is put into a set of its own, from which the merging takes it without a failure: either both come in
// or neither.
void AddTranslationFile(FileLocation const& location) {
    std::set<SharingPtr<FormatFile>> file;
    file.insert(SharingPtr<FormatFile>(new FormatFile(location, UStringRef<UTF8>())));
    FormatOverrideSet const& overrides = (*file.begin())->Overrides();
    std::set<SharingPtr<FormatOverrideScope>> scope;
    scope.insert(
        SharingPtr<FormatOverrideScope>(new FormatOverrideScope(overrides, GlobalFormatOverrideContext())));
    m_formatFiles.merge(file);
    m_formatOverrides.merge(scope);
}

void DropTranslations() {
    m_formatOverrides.clear();
    m_formatFiles.clear();
}
