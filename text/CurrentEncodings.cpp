#include "text/CurrentEncodings.h"

#include <clocale>
#include <langinfo.h>
#include <utility>

namespace {

struct NamedEncoding {
    std::string name;
    IANANamedTextEncoding encoding;

    explicit NamedEncoding(std::string const& encodingName)
        : name(encodingName), encoding(MakeConstData(encodingName)) {}
};

// Objects of the process: made at first use and never destroyed, for the sake of whoever asks at its end.

// The default is not looked at when another name comes first: the locale's own may be too long to be held.
NamedEncoding* local = nullptr;

NamedEncoding const& LocalNamedEncoding() {
    if (!local) local = new NamedEncoding(GetDefaultCharacterSetName());
    return *local;
}

void SetLocalNamedEncoding(NamedEncoding&& wanted) {
    if (local)
        *local = std::move(wanted);
    else
        local = new NamedEncoding(std::move(wanted));
}

NamedEncoding const& UTF8NamedEncoding() {
    static auto const* const utf8 = new NamedEncoding("UTF-8");
    return *utf8;
}

} // namespace

void InitializeEncoding(std::string const& localName, bool preferUTF8) {
    NamedEncoding wanted(localName);
    if (preferUTF8 && std::setlocale(LC_ALL, "en_US.UTF-8")) wanted = NamedEncoding("utf-8");
    SetLocalNamedEncoding(std::move(wanted));
}

std::string const& GetLocalEncodingName() {
    return LocalNamedEncoding().name;
}

IANANamedTextEncoding const& GetLocalEncoding() {
    return LocalNamedEncoding().encoding;
}

std::string const& GetUTF8EncodingName() {
    return UTF8NamedEncoding().name;
}

IANANamedTextEncoding const& GetUTF8Encoding() {
    return UTF8NamedEncoding().encoding;
}

std::string const& GetVXFEncodingName() {
    return GetUTF8EncodingName();
}

IANANamedTextEncoding const& GetVXFNamedTextEncoding() {
    return GetUTF8Encoding();
}

std::string GetDefaultCharacterSetName() {
    return nl_langinfo(CODESET);
}
