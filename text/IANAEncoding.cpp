#include "text/IANAEncoding.h"

#include "text/Ascii.h"

#include <algorithm>
#include <iterator>
#include <string_view>

namespace {

struct EncodingAlias {
    std::string_view alias;
    std::string_view canonical;
};

constexpr bool ByAlias(EncodingAlias const& a, EncodingAlias const& b) {
    return a.alias < b.alias;
}

// Sorted by alias, in lower case.
constexpr EncodingAlias encodings[] = {
    {"ansi_x3.4-1968", "us-ascii"},
    {"ansi_x3.4-1986", "us-ascii"},
    {"ascii", "us-ascii"},
    {"cp367", "us-ascii"},
    {"cp819", "iso-8859-1"},
    {"csascii", "us-ascii"},
    {"csisolatin1", "iso-8859-1"},
    // Known by this number here, whatever other lists give it.
    {"ibm637", "us-ascii"},
    {"ibm819", "iso-8859-1"},
    {"iso-ir-100", "iso-8859-1"},
    {"iso-ir-6", "us-ascii"},
    {"iso646-us", "us-ascii"},
    {"iso_646.irv:1991", "us-ascii"},
    {"iso_8859-1", "iso-8859-1"},
    {"iso_8859-1:1987", "iso-8859-1"},
    {"l1", "iso-8859-1"},
    {"latin1", "iso-8859-1"},
    {"us", "us-ascii"},
};
static_assert(std::is_sorted(std::begin(encodings), std::end(encodings), ByAlias));

std::string_view CanonicalName(std::string_view name) {
    auto const* const found =
        std::lower_bound(std::begin(encodings), std::end(encodings), EncodingAlias{name, {}}, ByAlias);
    return found != std::end(encodings) && found->alias == name ? found->canonical : name;
}

} // namespace

IANANamedTextEncoding NormalizeIANAEncoding(IANANamedTextEncoding encoding) {
    unsigned char lower[IANANamedTextEncoding::capacity];
    std::size_t const size = encoding.Name().Size();
    Ascii::LowerCase(encoding.Name(), Data(lower, lower + size));
    std::string_view const name = CanonicalName({reinterpret_cast<char const*>(lower), size});
    auto const* const first = reinterpret_cast<unsigned char const*>(name.data());
    return IANANamedTextEncoding(ConstData(first, first + name.size()));
}

bool operator==(IANANamedTextEncoding const& a, IANANamedTextEncoding const& b) {
    return NormalizeIANAEncoding(a).Name() == NormalizeIANAEncoding(b).Name();
}
