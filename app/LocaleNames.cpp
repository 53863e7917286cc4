#include "app/LocaleNames.h"

#include <string_view>

bool IsRealLocale(char const* name) {
    std::string_view const locale(name ? name : "");
    return !locale.empty() && locale != "C" && locale != "POSIX";
}

LocaleNames NamesOfLocale(char const* name) {
    std::string_view const locale(name);
    std::string_view const full = locale.substr(0, locale.find('.'));
    std::size_t const territory = full.find('_');
    bool const hasTerritory = territory != std::string_view::npos;
    return {std::string(full), std::string(hasTerritory ? full.substr(0, territory) : std::string_view())};
}
