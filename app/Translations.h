#pragma once

#include "format/FormatFile.h"
#include "format/FormatOverrideScope.h"
#include "foundation/SharingLink.h"

#include <set>

// The translation files in force. Texts are views into them, so that they stay until the process ends, or
// until the next InitializationInfo after one that failed, or until the toolkit finds that there is no locale
// to translate for; all of that is before the first dialog. Never destroyed; main thread only.
extern std::set<SharingPtr<FormatFile>>& m_formatFiles;
// What keeps each of them in force. A scope goes before its file.
extern std::set<SharingPtr<FormatOverrideScope>>& m_formatOverrides;

// Loads a translation file and puts it into force, in front of those that are. Throws what FormatFile throws,
// and std::bad_alloc; then nothing has been added, and those in force stay as they are.
void AddTranslationFile(FileLocation const& location);

// Takes all translations out of force. No text that was made from them may be in use, and the sentences about
// pending actions keep theirs from their first use on: only before the first dialog.
void DropTranslations();
