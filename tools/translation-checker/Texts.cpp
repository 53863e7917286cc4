#include "tools/translation-checker/Texts.h"

#include "text/IsUTF8.h"

#include <cstdio>

namespace TranslationChecker {

namespace {

constexpr std::size_t cShort = 60;

bool IsInsideCharacter(char character) {
    return (static_cast<unsigned char>(character) & 0xC0) == 0x80;
}

std::string Hexadecimal(unsigned char byte) {
    char text[8];
    std::snprintf(text, sizeof text, "\\x%02X", static_cast<unsigned int>(byte));
    return text;
}

} // namespace

UStringRef<UTF8> ViewOf(std::string_view text) {
    auto const* const begin = reinterpret_cast<unsigned char const*>(text.data());
    return UStringRef<UTF8>(UTF8(), begin, begin + text.size());
}

std::string_view ViewOf(UStringRef<UTF8> const& text) {
    return std::string_view(reinterpret_cast<char const*>(text.begin()), text.SizeInBytes());
}

std::string Quoted(std::string_view text) {
    bool const isUTF8 = IsUTF8(ViewOf(text));
    std::string quoted = "\"";
    for (char const character : text) {
        auto const byte = static_cast<unsigned char>(character);
        bool const isPlain = byte >= 0x20 && byte != 0x7F && (byte < 0x7F || isUTF8);
        quoted += isPlain ? std::string(1, character) : Hexadecimal(byte);
    }
    return quoted + '"';
}

std::string QuotedShort(std::string_view text) {
    if (text.size() <= cShort) return Quoted(text);
    std::size_t size = cShort;
    while (size > 0 && IsInsideCharacter(text[size])) --size;
    return Quoted(text.substr(0, size)) + "...";
}

} // namespace TranslationChecker
