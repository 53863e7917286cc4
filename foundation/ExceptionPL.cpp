#include "foundation/ExceptionPL.h"

#include "text/LocalText.h"

ExceptionPL::ExceptionPL(char const* message) : m_message(UnixPlatform::ToUTF8(MakeLocalRef(message))) {
}

ExceptionPL::ExceptionPL(std::string const& message)
    : m_message(UnixPlatform::ToUTF8(MakeLocalRef(message))) {
}

ExceptionPL::ExceptionPL(UStringRef<UTF8> const& message) : m_message(message) {
}

ExceptionPL::ExceptionPL(ExceptionPL const& other) : DebuggableException(other), m_message(other.m_message) {
}

ExceptionPL& ExceptionPL::operator=(ExceptionPL const& other) {
    if (this != &other) m_message = other.m_message;
    return *this;
}

ExceptionPL::~ExceptionPL() = default;

char const* ExceptionPL::what() const noexcept {
    try {
        AutoUString<Local8Bit> const narrow = UnixPlatform::ToLocal8Bit(uwhat());
        m_narrow.assign(narrow.begin(), narrow.end());
        return m_narrow.c_str();
    } catch (...) {
        return DebuggableException::what();
    }
}

UStringRef<UTF8> ExceptionPL::uwhat() const noexcept {
    return m_message.empty() ? DebuggableException::uwhat() : m_message.Ref();
}
