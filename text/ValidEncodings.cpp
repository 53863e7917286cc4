#include "text/ValidEncodings.h"

#include <algorithm>

namespace {

constexpr std::string_view cValidEncodings[] = {
    "UTF-8",        "US-ASCII",     "windows-874",  "windows-932",  "windows-936",  "windows-949",
    "windows-950",  "windows-1250", "windows-1251", "windows-1252", "windows-1253", "windows-1254",
    "windows-1255", "windows-1256", "windows-1257", "windows-1258",
};

bool IsOneOfThem(std::string_view name) {
    return std::find(std::begin(cValidEncodings), std::end(cValidEncodings), name) !=
           std::end(cValidEncodings);
}

} // namespace

ConstArrayOf<std::string_view> GetValidEncodings() {
    return {std::begin(cValidEncodings), std::end(cValidEncodings)};
}

bool IsValidEncoding(std::string const& name) {
    return IsOneOfThem(name);
}

bool IsValidEncoding(UStringRef<UTF8> const& name) {
    return IsValidEncoding(MakeString(name));
}
