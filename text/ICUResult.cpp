#include "text/ICUResult.h"

#include "text/ICU.h"

#include <utility>

ICUResult::ICUResult(std::int32_t code, std::string const& function) : m_code(code), m_function(function) {
}

ICUResult::~ICUResult() = default;

char const* ICUResult::what() const noexcept {
    try {
        return KeepMessage(MakeErrorMessage());
    } catch (...) {
        return DebuggableException::what();
    }
}

UStringRef<UTF8> ICUResult::uwhat() const noexcept {
    return MakeUTF8Ref(what());
}

std::int32_t ICUResult::ErrorCode() const {
    return m_code;
}

// The service answers for any code, but its enumeration cannot hold every number.
char const* ICUResult::ErrorName() const {
    std::int32_t const code = ErrorCode();
    bool const representable = code >= U_ERROR_WARNING_START && code < U_ERROR_LIMIT;
    return u_errorName(representable ? static_cast<UErrorCode>(code) : U_ERROR_LIMIT);
}

std::string ICUResult::MakeErrorMessage() const {
    std::string message = "UErrorCode=" + std::to_string(ErrorCode()) + " [" + ErrorName() + "]";
    if (!m_function.empty()) message += " in " + m_function;
    return message;
}

char const* ICUResult::KeepMessage(std::string message) const {
    m_message = std::move(message);
    return m_message.c_str();
}
