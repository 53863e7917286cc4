#pragma once

#include "foundation/Exceptions.h"
#include "text/CopiedUString.h"

#include <string>

// The failure that carries a free text. The narrow text that what() returns is rebuilt at each call and is
// valid until the next; one object is not to be shared between threads.
class ExceptionPL : public DebuggableException {
public:
    // Converts a message in the local encoding; a null pointer stands for an empty one. Throw
    // UnixPlatform::MultiByteToWideConvertError when the bytes are no local text.
    explicit ExceptionPL(char const* message);
    explicit ExceptionPL(std::string const& message);
    // Copies a UTF-8 message.
    explicit ExceptionPL(UStringRef<UTF8> const& message);
    // Copies the message; the narrow text starts empty.
    ExceptionPL(ExceptionPL const& other);
    // Copies the message and leaves the narrow text alone.
    ExceptionPL& operator=(ExceptionPL const& other);
    ~ExceptionPL() override;

    // What uwhat() gives, in the local encoding; the encoded class name when it cannot be converted.
    char const* what() const noexcept override;
    // The message; the encoded class name when the message is empty.
    UStringRef<UTF8> uwhat() const noexcept override;

private:
    CopiedUString<UTF8> m_message;
    mutable std::string m_narrow;
};
