#include "text/CharacterSetResult.h"

namespace {

void AppendUTF8(std::uint32_t character, std::string& text) {
    auto const append = [&text](std::uint32_t byte) { text += static_cast<char>(byte); };
    if (character < 0x80) {
        append(character);
        return;
    }
    if (character < 0x800) {
        append(0xC0 | character >> 6);
    } else if (character < 0x10000) {
        append(0xE0 | character >> 12);
        append(0x80 | (character >> 6 & 0x3F));
    } else {
        append(0xF0 | character >> 18);
        append(0x80 | (character >> 12 & 0x3F));
        append(0x80 | (character >> 6 & 0x3F));
    }
    append(0x80 | (character & 0x3F));
}

bool IsSurrogate(std::uint16_t unit) {
    return (unit & 0xF800) == 0xD800;
}

// `count` is not 0.
bool StartsWithPair(std::uint16_t const* units, std::size_t count) {
    return count > 1 && (units[0] & 0xFC00) == 0xD800 && (units[1] & 0xFC00) == 0xDC00;
}

std::string MakeUTF8(std::uint16_t const* units, std::size_t count) {
    std::string text;
    while (count != 0) {
        std::size_t const size = StartsWithPair(units, count) ? 2 : 1;
        if (size == 2)
            AppendUTF8(0x10000u + ((units[0] & 0x3FFu) << 10) + (units[1] & 0x3FFu), text);
        else
            AppendUTF8(IsSurrogate(*units) ? 0xFFFD : *units, text);
        units += size;
        count -= size;
    }
    return text;
}

} // namespace

CharacterSetResult::CharacterSetResult(ICUResult const& result) : ICUResult(result) {
}

CharacterSetResult::CharacterSetResult(ICUResult const& result, char const* invalidBytes, std::size_t count)
    : ICUResult(result), m_invalidText(invalidBytes, invalidBytes + count) {
}

CharacterSetResult::CharacterSetResult(ICUResult const& result, std::uint16_t const* invalidUnits,
                                       std::size_t count)
    : ICUResult(result), m_invalidText(MakeUTF8(invalidUnits, count)) {
}

CharacterSetResult::~CharacterSetResult() = default;

char const* CharacterSetResult::what() const noexcept {
    try {
        return KeepMessage(MakeErrorMessage());
    } catch (...) {
        return DebuggableException::what();
    }
}

std::string CharacterSetResult::MakeErrorMessage() const {
    std::string message = "CharacterSetResult:";
    if (!m_context.empty()) message += " " + m_context + ":";
    message += " " + ICUResult::MakeErrorMessage();
    if (!m_invalidText.empty()) message += " [\"" + m_invalidText + "\"]";
    return message;
}
