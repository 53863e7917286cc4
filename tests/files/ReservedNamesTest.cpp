#include "files/ReservedNames.h"

#include "files/AdviceFileTypes.h"

#include "tests/support/UStringPrinting.h"

#include <gtest/gtest.h>
#include <set>

namespace {

UStringRef<UTF8> const cNames[] = {
    cRESERVED_FILENAME_UIAPP,
    cRESERVED_FILENAME_UITRIGGERAPP,
    cRESERVED_DIRECTORY_UIREFERENCE,
    cRESERVED_FILENAME_DEPLOY_MASTHEAD,
    cRESERVED_DIRECTORY_LIB,
    cRESERVED_DIRECTORY_VDELIB,
    cRESERVED_CLIENT_KEYSTORAGE_DIR,
    cRESERVED_CLIENT_KEYSTORAGE_KEY,
    cRESERVED_CLIENT_KEYSTORAGE_CERT_REQUEST,
    cRESERVED_CLIENT_KEYSTORAGE_CLIENT_CERTIFICATE,
    cRESERVED_CLIENT_KEYSTORAGE_CLIENTCA_CERTIFICATE,
    cRESERVED_CLIENT_KEYSTORAGE_CLIENT_CERTIFICATE_LEGACY,
    cRESERVED_CLIENT_KEYSTORAGE_CLIENTCA_CERTIFICATE_LEGACY,
    cRESERVED_CLIENT_KEYSTORAGE_CLIENT_CERTIFICATE_CHAIN,
    cRESERVED_DIRECTORY_DATA,
    cRESERVED_FILENAME_REPORT,
    cRESERVED_FAST_EVAL_FILENAME_REPORT,
    cRESERVED_FILENAME_ENCRYPTED_REPORT,
    cRESERVED_DIRECTORY_UISUPPORT,
    cRESERVED_DIRECTORY_UICACHE,
    cRESERVED_DIRECTORY_UISESSION,
    cRESERVED_DIRECTORY_GLOBAL,
    cRESERVED_FILENAME_GLOBAL_OPTIONS,
    cRESERVED_FILENAME_TEMPORARY_BITMAP,
    cRESERVED_FILENAME_RELAYLIST,
    cRESERVED_FILENAME_REVOCATIONSTORE,
    cRESERVED_FILENAME_REVOCATIONLIST,
    cRESERVED_FILENAME_REVOCATIONDAT,
    cRESERVED_DIRECTORY_LOGGING,
    cRESERVED_DIRECTORY_ACTIONHISTORY,
    cRESERVED_DIRECTORY_POWERHISTORY,
    cRESERVED_DIRECTORY_USERSETTINGS,
    cRESERVED_FILENAME_FULL_REPORT_NEEDED,
    cRESERVED_FILENAME_REPORT_SEQUENCE_DATA,
    cRESERVED_USAGE_DIRECTORY_STATISTICS,
    cRESERVED_DIRECTORY_RELAYCHAIN,
    cRESERVED_TECH_SUPPRT_SITE_NAME,
    cRESERVED_SITE_ICONFILENAME,
    cRESERVED_SITE_ICONFILENAME_SMALL,
    cRESERVED_SITE_ICONFILENAME_LARGE,
    cRESERVED_PROFILE_FILENAME,
    cRESERVED_PROFILE_TEMPNAME,
    cRESERVED_APPEND_FILENAME,
    cRESERVED_CREATE_FILENAME,
    cRESERVED_UIIMAGE_FILENAME,
    cRESERVED_CERTIFICATES_FILENAME,
    cRESERVED_DIRECTORY_DOWNLOAD,
    cRESERVED_DIRECTORY_DEBUGDOWNLOAD,
    cRESERVED_DIRECTORY_CACHE,
    cRESERVED_DIRECTORY_PEERCACHE,
    cRESERVED_DIRECTORY_PLUGINS,
    cRESERVED_DIRECTORY_COMPLIANCE_DOCS,
    cRESERVED_DIRECTORY_LOCAL,
    cRESERVED_DIRECTORY_NOTATIONS,
    cRESERVED_DIRECTORY_GATHERING,
    cRESERVED_SITE_FILELIST,
    cRESERVED_SITE_FILELIST_NEW,
    cRESERVED_SITE_MASTHEAD,
    cRESERVED_SITE_ALTERNATE_MASTHEAD,
    cRESERVED_SITE_DELETED_STORE,
    cRESERVED_SITE_SITEDATA,
    cRESERVED_SITE_SITEDATATEMP,
    cRESERVED_SITE_SITEDATA_DB,
    cRESERVED_SITE_PROFILE,
    cRESERVED_FILENAME_COMPUTERS_REVOCATIONSLIST,
    cRESERVED_MARKER,
    cRESERVED_EXCEPTION_PREFIX,
    cRESERVED_EXTENSION,
    cRESERVED_EXTENSION_LONG,
    cRESERVED_FILE_EXTENSION_TEXT,
    cRESERVED_DELETE_PREFIX,
    cRESERVED_FILE_EXTENSION_ADVICE_FILE,
    cRESERVED_FILE_EXTENSION_ADVICE_POOL,
    cRESERVED_FILE_EXTENSION_SITE_DEFINITION,
    cRESERVED_FILE_EXTENSION_QNA_FILE,
    cRESERVED_FILE_EXTENSION_SITE_LOG_FILE,
    cRESERVED_FILE_EXTENSION_SITE_BACKUP_LOG_FILE,
    cRESERVED_FILE_EXTENSION_NOTATION_TEMP,
    cRESERVED_FILE_EXTENSION_NOTATION,
    cRESERVED_FILE_EXTENSION_DLL,
    cRESERVED_FILE_EXTENSION_SITE_DATA,
    cRESERVED_FILE_EXTENSION_PREFERENCES,
    cRESERVED_FILE_EXTENSION_PROFILE,
    cRESERVED_COMPANY_NAME,
};

struct TypeCase {
    VarnikFileType type;
    char const* extension;
};

TypeCase const cTypes[] = {
    {AdviceFileTypes::Masthead(), ".avxm"},
    {AdviceFileTypes::Pool(), ".vxg"},
    {AdviceFileTypes::Advice(), ".vxf"},
    {AdviceFileTypes::HTML(), ".html"},
    {AdviceFileTypes::Text(), ".txt"},
    {AdviceFileTypes::Log(), ".log"},
    {AdviceFileTypes::BackLog(), ".backlog"},
    {AdviceFileTypes::Inspector(), ".inspector"},
    {AdviceFileTypes::Notation(), ".notation"},
    {AdviceFileTypes::Site(), ".site"},
    {AdviceFileTypes::Preferences(), ".preferences"},
    {AdviceFileTypes::Profile(), ".profile"},
};

} // namespace

TEST(ReservedNames, AreEightyFourDifferentNamesOfOneComponent) {
    EXPECT_EQ(std::size(cNames), 84U);
    std::set<std::string> seen;
    for (UStringRef<UTF8> const& name : cNames) {
        EXPECT_FALSE(name.empty());
        EXPECT_FALSE(name.Contains('/')) << MakeString(name);
        EXPECT_TRUE(seen.insert(MakeString(name)).second) << MakeString(name);
    }
}

TEST(ReservedNames, HaveTheValuesThatTheStoreIsKnownBy) {
    EXPECT_EQ(cRESERVED_DIRECTORY_DATA, "__VRKData"_utf8);
    EXPECT_EQ(cRESERVED_DIRECTORY_LIB, "VRKLib"_utf8);
    EXPECT_EQ(cRESERVED_DIRECTORY_VDELIB, "VDELib"_utf8);
    EXPECT_EQ(cRESERVED_FILE_EXTENSION_ADVICE_FILE, ".vxf"_utf8);
    EXPECT_EQ(cRESERVED_FILE_EXTENSION_ADVICE_POOL, ".vxg"_utf8);
    EXPECT_EQ(cRESERVED_EXTENSION_LONG, ".avxm"_utf8);
    EXPECT_EQ(cRESERVED_EXTENSION, ".vxm"_utf8);
}

TEST(AdviceFileTypes, HasAnExtensionForEachKindAndFindsItBack) {
    for (auto const& [type, extension] : cTypes) {
        EXPECT_EQ(AdviceFileTypes::ExtensionOfType(type), MakeUTF8Ref(extension));
        EXPECT_EQ(AdviceFileTypes::TypeOfExtension(MakeUTF8Ref(extension)), type) << extension;
    }
}

TEST(AdviceFileTypes, TakesExtensionsInAnyCase) {
    EXPECT_EQ(AdviceFileTypes::TypeOfExtension(".LOG"_utf8), AdviceFileTypes::Log());
    EXPECT_EQ(AdviceFileTypes::TypeOfExtension(".Html"_utf8), AdviceFileTypes::HTML());
    EXPECT_EQ(AdviceFileTypes::TypeOfExtension(".aVXm"_utf8), AdviceFileTypes::Masthead());
}

TEST(AdviceFileTypes, CountsEverythingElseAsMiscellany) {
    for (char const* const extension : {"", ".", "log", ".lo", ".logs", ".log ", ".vx", "a.log"})
        EXPECT_EQ(AdviceFileTypes::TypeOfExtension(MakeUTF8Ref(extension)), AdviceFileTypes::Miscellany())
            << extension;
    EXPECT_TRUE(AdviceFileTypes::ExtensionOfType(AdviceFileTypes::Miscellany()).empty());
    EXPECT_TRUE(AdviceFileTypes::ExtensionOfType(static_cast<VarnikFileType>(1000)).empty());
}
