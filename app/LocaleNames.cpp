#include "app/LocaleNames.h"

#include <string_view>

bool IsRealLocale(char const* name) {
    std::string_view const locale(name ? name : "");
    return !locale.empty() && locale != "C" && locale != "POSIX";
}
