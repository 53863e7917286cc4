#include "text/CharacterSetResult.h"

#include "text/CodeUnits.h"

namespace {

void AppendUTF8(CodeUnits::Value character, std::string& text) {
    using Form = CodeUnits::Form<UTF8>;
    Form::Unit bytes[Form::longest];
    Form::Unit* end = bytes;
    Form::Put(character, end);
    text.append(bytes, end);
}

// The character at `next`, which moves behind it; U+FFFD for a surrogate without its partner.
CodeUnits::Value TakeOrReplace(std::uint16_t const*& next, std::uint16_t const* end) {
    bool const startsPair = (next[0] & 0xFC00) == 0xD800;
    if (startsPair && end - next > 1 && (next[1] & 0xFC00) == 0xDC00)
        return CodeUnits::Form<UTF16>::Take(next);
    CodeUnits::Value const unit = *next++;
    return CodeUnits::IsSurrogate(unit) ? 0xFFFD : unit;
}

std::string MakeUTF8(std::uint16_t const* units, std::size_t count) {
    std::string text;
    for (std::uint16_t const* const end = units + count; units != end;)
        AppendUTF8(TakeOrReplace(units, end), text);
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
