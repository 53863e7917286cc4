#pragma once

#include "text/UStringRef.h"

// Names that the agent's store keeps for itself: its directories, files, parts of sites and extensions. This
// process reads none of them; they stand here so that nothing that it makes takes such a name by accident.
// Extensions include their dot. The texts are constants of the program: tables of them need no order of
// initialisation.

namespace ReservedNamesDetail {

// A literal as bytes.
template <std::size_t size>
struct Literal {
    consteval Literal(char const (&text)[size]) {
        for (std::size_t index = 0; index < size; ++index)
            bytes[index] = static_cast<unsigned char>(text[index]);
    }
    unsigned char bytes[size] = {};
};

// View of a literal without its terminator.
template <Literal text>
inline constexpr UStringRef<UTF8> cText(UTF8(), text.bytes, text.bytes + sizeof text.bytes - 1);

} // namespace ReservedNamesDetail

inline constexpr UStringRef<UTF8> cRESERVED_FILENAME_UIAPP = ReservedNamesDetail::cText<"VRKClientUI">;
inline constexpr UStringRef<UTF8> cRESERVED_FILENAME_UITRIGGERAPP =
    ReservedNamesDetail::cText<"VRKTriggerClientUI">;
inline constexpr UStringRef<UTF8> cRESERVED_DIRECTORY_UIREFERENCE = ReservedNamesDetail::cText<"UIReference">;
inline constexpr UStringRef<UTF8> cRESERVED_FILENAME_DEPLOY_MASTHEAD =
    ReservedNamesDetail::cText<"masthead.avxm">;
inline constexpr UStringRef<UTF8> cRESERVED_DIRECTORY_LIB = ReservedNamesDetail::cText<"VRKLib">;
inline constexpr UStringRef<UTF8> cRESERVED_DIRECTORY_VDELIB = ReservedNamesDetail::cText<"VDELib">;
inline constexpr UStringRef<UTF8> cRESERVED_CLIENT_KEYSTORAGE_DIR = ReservedNamesDetail::cText<"KeyStorage">;
inline constexpr UStringRef<UTF8> cRESERVED_CLIENT_KEYSTORAGE_KEY = ReservedNamesDetail::cText<"client.key">;
inline constexpr UStringRef<UTF8> cRESERVED_CLIENT_KEYSTORAGE_CERT_REQUEST =
    ReservedNamesDetail::cText<"client.csr">;
inline constexpr UStringRef<UTF8> cRESERVED_CLIENT_KEYSTORAGE_CLIENT_CERTIFICATE =
    ReservedNamesDetail::cText<"client.crt">;
inline constexpr UStringRef<UTF8> cRESERVED_CLIENT_KEYSTORAGE_CLIENTCA_CERTIFICATE =
    ReservedNamesDetail::cText<"clientca.crt">;
inline constexpr UStringRef<UTF8> cRESERVED_CLIENT_KEYSTORAGE_CLIENT_CERTIFICATE_LEGACY =
    ReservedNamesDetail::cText<"client-legacy.crt">;
inline constexpr UStringRef<UTF8> cRESERVED_CLIENT_KEYSTORAGE_CLIENTCA_CERTIFICATE_LEGACY =
    ReservedNamesDetail::cText<"clientca-legacy.crt">;
inline constexpr UStringRef<UTF8> cRESERVED_CLIENT_KEYSTORAGE_CLIENT_CERTIFICATE_CHAIN =
    ReservedNamesDetail::cText<"client-chain.crt">;
inline constexpr UStringRef<UTF8> cRESERVED_DIRECTORY_DATA = ReservedNamesDetail::cText<"__VRKData">;
inline constexpr UStringRef<UTF8> cRESERVED_FILENAME_REPORT = ReservedNamesDetail::cText<"report">;
inline constexpr UStringRef<UTF8> cRESERVED_FAST_EVAL_FILENAME_REPORT =
    ReservedNamesDetail::cText<"fast-report">;
inline constexpr UStringRef<UTF8> cRESERVED_FILENAME_ENCRYPTED_REPORT =
    ReservedNamesDetail::cText<"report.encrypted">;
inline constexpr UStringRef<UTF8> cRESERVED_DIRECTORY_UISUPPORT = ReservedNamesDetail::cText<"UISupport">;
inline constexpr UStringRef<UTF8> cRESERVED_DIRECTORY_UICACHE = ReservedNamesDetail::cText<"UICache">;
inline constexpr UStringRef<UTF8> cRESERVED_DIRECTORY_UISESSION = ReservedNamesDetail::cText<"UISession">;
inline constexpr UStringRef<UTF8> cRESERVED_DIRECTORY_GLOBAL = ReservedNamesDetail::cText<"Global">;
inline constexpr UStringRef<UTF8> cRESERVED_FILENAME_GLOBAL_OPTIONS = ReservedNamesDetail::cText<"options">;
inline constexpr UStringRef<UTF8> cRESERVED_FILENAME_TEMPORARY_BITMAP =
    ReservedNamesDetail::cText<"temporary.bmp">;
inline constexpr UStringRef<UTF8> cRESERVED_FILENAME_RELAYLIST = ReservedNamesDetail::cText<"relays">;
inline constexpr UStringRef<UTF8> cRESERVED_FILENAME_REVOCATIONSTORE =
    ReservedNamesDetail::cText<"revocation.store">;
inline constexpr UStringRef<UTF8> cRESERVED_FILENAME_REVOCATIONLIST =
    ReservedNamesDetail::cText<"revocation.list">;
inline constexpr UStringRef<UTF8> cRESERVED_FILENAME_REVOCATIONDAT =
    ReservedNamesDetail::cText<"revocation.dat">;
inline constexpr UStringRef<UTF8> cRESERVED_DIRECTORY_LOGGING = ReservedNamesDetail::cText<"Logs">;
inline constexpr UStringRef<UTF8> cRESERVED_DIRECTORY_ACTIONHISTORY =
    ReservedNamesDetail::cText<"ActionHistory">;
inline constexpr UStringRef<UTF8> cRESERVED_DIRECTORY_POWERHISTORY =
    ReservedNamesDetail::cText<"PowerHistory">;
inline constexpr UStringRef<UTF8> cRESERVED_DIRECTORY_USERSETTINGS =
    ReservedNamesDetail::cText<"UserSettings">;
inline constexpr UStringRef<UTF8> cRESERVED_FILENAME_FULL_REPORT_NEEDED =
    ReservedNamesDetail::cText<"full-report-needed">;
inline constexpr UStringRef<UTF8> cRESERVED_FILENAME_REPORT_SEQUENCE_DATA =
    ReservedNamesDetail::cText<"report-sequence">;
inline constexpr UStringRef<UTF8> cRESERVED_USAGE_DIRECTORY_STATISTICS = ReservedNamesDetail::cText<"Usage">;
inline constexpr UStringRef<UTF8> cRESERVED_DIRECTORY_RELAYCHAIN = ReservedNamesDetail::cText<"RelayChain">;
inline constexpr UStringRef<UTF8> cRESERVED_TECH_SUPPRT_SITE_NAME = ReservedNamesDetail::cText<"Support">;
inline constexpr UStringRef<UTF8> cRESERVED_SITE_ICONFILENAME = ReservedNamesDetail::cText<"icon.bmp">;
inline constexpr UStringRef<UTF8> cRESERVED_SITE_ICONFILENAME_SMALL =
    ReservedNamesDetail::cText<"icon-small.bmp">;
inline constexpr UStringRef<UTF8> cRESERVED_SITE_ICONFILENAME_LARGE =
    ReservedNamesDetail::cText<"icon-large.bmp">;
inline constexpr UStringRef<UTF8> cRESERVED_PROFILE_FILENAME = ReservedNamesDetail::cText<"profile">;
inline constexpr UStringRef<UTF8> cRESERVED_PROFILE_TEMPNAME = ReservedNamesDetail::cText<"profile.new">;
inline constexpr UStringRef<UTF8> cRESERVED_APPEND_FILENAME = ReservedNamesDetail::cText<"append">;
inline constexpr UStringRef<UTF8> cRESERVED_CREATE_FILENAME = ReservedNamesDetail::cText<"create">;
inline constexpr UStringRef<UTF8> cRESERVED_UIIMAGE_FILENAME = ReservedNamesDetail::cText<"image">;
inline constexpr UStringRef<UTF8> cRESERVED_CERTIFICATES_FILENAME =
    ReservedNamesDetail::cText<"certificates">;
inline constexpr UStringRef<UTF8> cRESERVED_DIRECTORY_DOWNLOAD = ReservedNamesDetail::cText<"Download">;
inline constexpr UStringRef<UTF8> cRESERVED_DIRECTORY_DEBUGDOWNLOAD =
    ReservedNamesDetail::cText<"DebugDownload">;
inline constexpr UStringRef<UTF8> cRESERVED_DIRECTORY_CACHE = ReservedNamesDetail::cText<"Cache">;
inline constexpr UStringRef<UTF8> cRESERVED_DIRECTORY_PEERCACHE = ReservedNamesDetail::cText<"PeerCache">;
inline constexpr UStringRef<UTF8> cRESERVED_DIRECTORY_PLUGINS = ReservedNamesDetail::cText<"Plugins">;
inline constexpr UStringRef<UTF8> cRESERVED_DIRECTORY_COMPLIANCE_DOCS =
    ReservedNamesDetail::cText<"ComplianceDocuments">;
inline constexpr UStringRef<UTF8> cRESERVED_DIRECTORY_LOCAL = ReservedNamesDetail::cText<"Local">;
inline constexpr UStringRef<UTF8> cRESERVED_DIRECTORY_NOTATIONS = ReservedNamesDetail::cText<"Notations">;
inline constexpr UStringRef<UTF8> cRESERVED_DIRECTORY_GATHERING = ReservedNamesDetail::cText<"Gathering">;
inline constexpr UStringRef<UTF8> cRESERVED_SITE_FILELIST = ReservedNamesDetail::cText<"site-files">;
inline constexpr UStringRef<UTF8> cRESERVED_SITE_FILELIST_NEW = ReservedNamesDetail::cText<"site-files.new">;
inline constexpr UStringRef<UTF8> cRESERVED_SITE_MASTHEAD = ReservedNamesDetail::cText<"site-masthead.avxm">;
inline constexpr UStringRef<UTF8> cRESERVED_SITE_ALTERNATE_MASTHEAD =
    ReservedNamesDetail::cText<"site-alternate-masthead.avxm">;
inline constexpr UStringRef<UTF8> cRESERVED_SITE_DELETED_STORE = ReservedNamesDetail::cText<"site-deleted">;
inline constexpr UStringRef<UTF8> cRESERVED_SITE_SITEDATA = ReservedNamesDetail::cText<"site">;
inline constexpr UStringRef<UTF8> cRESERVED_SITE_SITEDATATEMP = ReservedNamesDetail::cText<"site.new">;
inline constexpr UStringRef<UTF8> cRESERVED_SITE_SITEDATA_DB = ReservedNamesDetail::cText<"site.db">;
inline constexpr UStringRef<UTF8> cRESERVED_SITE_PROFILE = ReservedNamesDetail::cText<"site-profile">;
inline constexpr UStringRef<UTF8> cRESERVED_FILENAME_COMPUTERS_REVOCATIONSLIST =
    ReservedNamesDetail::cText<"computer-revocation.list">;
inline constexpr UStringRef<UTF8> cRESERVED_MARKER = ReservedNamesDetail::cText<"__">;
inline constexpr UStringRef<UTF8> cRESERVED_EXCEPTION_PREFIX = ReservedNamesDetail::cText<"__exception-">;
inline constexpr UStringRef<UTF8> cRESERVED_EXTENSION = ReservedNamesDetail::cText<".vxm">;
inline constexpr UStringRef<UTF8> cRESERVED_EXTENSION_LONG = ReservedNamesDetail::cText<".avxm">;
inline constexpr UStringRef<UTF8> cRESERVED_FILE_EXTENSION_TEXT = ReservedNamesDetail::cText<".txt">;
inline constexpr UStringRef<UTF8> cRESERVED_DELETE_PREFIX = ReservedNamesDetail::cText<"__delete-">;
inline constexpr UStringRef<UTF8> cRESERVED_FILE_EXTENSION_ADVICE_FILE = ReservedNamesDetail::cText<".vxf">;
inline constexpr UStringRef<UTF8> cRESERVED_FILE_EXTENSION_ADVICE_POOL = ReservedNamesDetail::cText<".vxg">;
inline constexpr UStringRef<UTF8> cRESERVED_FILE_EXTENSION_SITE_DEFINITION =
    ReservedNamesDetail::cText<".site">;
inline constexpr UStringRef<UTF8> cRESERVED_FILE_EXTENSION_QNA_FILE = ReservedNamesDetail::cText<".qna">;
inline constexpr UStringRef<UTF8> cRESERVED_FILE_EXTENSION_SITE_LOG_FILE = ReservedNamesDetail::cText<".log">;
inline constexpr UStringRef<UTF8> cRESERVED_FILE_EXTENSION_SITE_BACKUP_LOG_FILE =
    ReservedNamesDetail::cText<".backlog">;
inline constexpr UStringRef<UTF8> cRESERVED_FILE_EXTENSION_NOTATION_TEMP =
    ReservedNamesDetail::cText<".notation-new">;
inline constexpr UStringRef<UTF8> cRESERVED_FILE_EXTENSION_NOTATION = ReservedNamesDetail::cText<".notation">;
inline constexpr UStringRef<UTF8> cRESERVED_FILE_EXTENSION_DLL = ReservedNamesDetail::cText<".so">;
inline constexpr UStringRef<UTF8> cRESERVED_FILE_EXTENSION_SITE_DATA = ReservedNamesDetail::cText<".data">;
inline constexpr UStringRef<UTF8> cRESERVED_FILE_EXTENSION_PREFERENCES =
    ReservedNamesDetail::cText<".preferences">;
inline constexpr UStringRef<UTF8> cRESERVED_FILE_EXTENSION_PROFILE = ReservedNamesDetail::cText<".profile">;
inline constexpr UStringRef<UTF8> cRESERVED_COMPANY_NAME = ReservedNamesDetail::cText<"Varnik">;
