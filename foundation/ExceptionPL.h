#pragma once

#include "foundation/Exceptions.h"
#include "text/CopiedUString.h"

#include <string>

// The failure that carries a free text. In narrow form, a text of seven-bit characters is given as it is, and
// any other as the encoded class name. The narrow text that what() returns is rebuilt at each call and is
// valid until the next; one object is not to be shared between threads.
class ExceptionPL : public DebuggableException {
public:
    // Copies a UTF-8 message.
    explicit ExceptionPL(UStringRef<UTF8> const& message);
    // Copies the message; the narrow text starts empty.
    ExceptionPL(ExceptionPL const& other);
    // Copies the message and leaves the narrow text alone.
    ExceptionPL& operator=(ExceptionPL const& other);
    ~ExceptionPL() override;

    char const* what() const noexcept override;
    // The message; the encoded class name when the message is empty.
    UStringRef<UTF8> uwhat() const noexcept override;

private:
    CopiedUString<UTF8> m_message;
    mutable std::string m_narrow;
};
