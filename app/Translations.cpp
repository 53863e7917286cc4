#include "app/Translations.h"

std::set<SharingPtr<FormatFile>>& m_formatFiles = *new std::set<SharingPtr<FormatFile>>;
std::set<SharingPtr<FormatOverrideScope>>& m_formatOverrides = *new std::set<SharingPtr<FormatOverrideScope>>;

void AddTranslationFile(FileLocation const& location) {
    SharingPtr<FormatFile> const file(new FormatFile(location, UStringRef<UTF8>()));
    SharingPtr<FormatOverrideScope> const scope(
        new FormatOverrideScope(file->Overrides(), GlobalFormatOverrideContext()));
    m_formatFiles.insert(file);
    m_formatOverrides.insert(scope);
}

void DropTranslations() {
    m_formatOverrides.clear();
    m_formatFiles.clear();
}
