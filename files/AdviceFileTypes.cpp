#include "files/AdviceFileTypes.h"

#include "files/ReservedNames.h"
#include "text/Ascii.h"

namespace {

struct TypeWithExtension {
    VarnikFileType type;
    UStringRef<UTF8> extension;
};

// One extension for each kind but Miscellany.
constexpr TypeWithExtension cTypes[] = {
    {VarnikFileType::Masthead, cRESERVED_EXTENSION_LONG},
    {VarnikFileType::Pool, cRESERVED_FILE_EXTENSION_ADVICE_POOL},
    {VarnikFileType::Advice, cRESERVED_FILE_EXTENSION_ADVICE_FILE},
    {VarnikFileType::HTML, ReservedNamesDetail::cText<".html">},
    {VarnikFileType::Text, cRESERVED_FILE_EXTENSION_TEXT},
    {VarnikFileType::Log, cRESERVED_FILE_EXTENSION_SITE_LOG_FILE},
    {VarnikFileType::BackLog, cRESERVED_FILE_EXTENSION_SITE_BACKUP_LOG_FILE},
    {VarnikFileType::Inspector, ReservedNamesDetail::cText<".inspector">},
    {VarnikFileType::Notation, cRESERVED_FILE_EXTENSION_NOTATION},
    {VarnikFileType::Site, cRESERVED_FILE_EXTENSION_SITE_DEFINITION},
    {VarnikFileType::Preferences, cRESERVED_FILE_EXTENSION_PREFERENCES},
    {VarnikFileType::Profile, cRESERVED_FILE_EXTENSION_PROFILE},
};

} // namespace

UStringRef<UTF8> AdviceFileTypes::ExtensionOfType(VarnikFileType type) {
    for (TypeWithExtension const& entry : cTypes)
        if (entry.type == type) return entry.extension;
    return UStringRef<UTF8>();
}

VarnikFileType AdviceFileTypes::TypeOfExtension(UStringRef<UTF8> const& extension) {
    for (TypeWithExtension const& entry : cTypes)
        if (Ascii::EqualIgnoringCase(entry.extension, extension)) return entry.type;
    return VarnikFileType::Miscellany;
}
