#include "foundation/ExceptionPL.h"

#include <algorithm>

ExceptionPL::ExceptionPL(UStringRef<UTF8> const& message) : m_message(message) {
}

ExceptionPL::ExceptionPL(ExceptionPL const& other) : DebuggableException(other), m_message(other.m_message) {
}

ExceptionPL& ExceptionPL::operator=(ExceptionPL const& other) {
    if (this != &other) m_message = other.m_message;
    return *this;
}

ExceptionPL::~ExceptionPL() = default;

// Seven-bit text reads the same in every local encoding; for any other the class name has to do.
char const* ExceptionPL::what() const noexcept {
    try {
        UStringRef<UTF8> const text = uwhat();
        if (std::any_of(text.begin(), text.end(), [](unsigned char byte) { return byte > 127; }))
            return DebuggableException::what();
        m_narrow = MakeString(text);
        return m_narrow.c_str();
    } catch (...) {
        return DebuggableException::what();
    }
}

UStringRef<UTF8> ExceptionPL::uwhat() const noexcept {
    return m_message.empty() ? DebuggableException::uwhat() : m_message.Ref();
}
