#include "text/IsUTF8.h"

namespace {

// How many bytes follow a lead byte, and between what limits the first of them lies: these limits keep out
// longer forms than needed, surrogates and values above 10FFFF.
struct Continuation {
    std::size_t count;
    unsigned char lowest = 0x80;
    unsigned char highest = 0xBF;
};

constexpr Continuation cNoLead{cAllOnes};

constexpr Continuation After(unsigned char lead) {
    if (lead < 0x80) return {0};
    if (lead < 0xC2) return cNoLead;
    if (lead < 0xE0) return {1};
    if (lead == 0xE0) return {2, 0xA0, 0xBF};
    if (lead == 0xED) return {2, 0x80, 0x9F};
    if (lead < 0xF0) return {2};
    if (lead == 0xF0) return {3, 0x90, 0xBF};
    if (lead < 0xF4) return {3};
    if (lead == 0xF4) return {3, 0x80, 0x8F};
    return cNoLead;
}

// Number of bytes of the well-formed character at the front; 0 when there is none. There is at least one
// byte.
std::size_t CharacterSize(ConstData bytes) {
    Continuation const rest = After(bytes[0]);
    if (rest.count == 0) return 1;
    if (rest.count >= bytes.Size()) return 0;
    if (bytes[1] < rest.lowest || bytes[1] > rest.highest) return 0;
    for (std::size_t i = 2; i <= rest.count; ++i)
        if (bytes[i] < 0x80 || bytes[i] > 0xBF) return 0;
    return rest.count + 1;
}

} // namespace

bool IsUTF8(ConstData bytes) {
    while (!bytes.empty()) {
        std::size_t const size = CharacterSize(bytes);
        if (size == 0) return false;
        bytes = ConstData(bytes.begin() + size, bytes.end());
    }
    return true;
}
