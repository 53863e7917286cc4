#pragma once

#include "foundation/Exceptions.h"

#include <cstdint>
#include <string>

// Outcome of a call to the converter service: a status to be asked, and at the same time the failure that is
// thrown where there is nobody to ask. Codes above 0 are failures; 0 and the warnings below it are not.
//
// The text of what() and uwhat() is made anew at each call and is valid until the next; one object is not to
// be shared between threads.
class ICUResult : public DebuggableException {
public:
    // Success.
    ICUResult() = default;
    // `function` names the call that gave the code; it may be empty.
    explicit ICUResult(std::int32_t code, std::string const& function = std::string());
    ICUResult(ICUResult const&) = default;
    ICUResult& operator=(ICUResult const&) = default;
    ~ICUResult() override;

    // The message; the encoded class name when there is no memory for it.
    char const* what() const noexcept override;
    // The bytes of the virtual what(). They are UTF-8 as far as the names in them are.
    UStringRef<UTF8> uwhat() const noexcept override;

    virtual std::int32_t ErrorCode() const;
    // The service's own name of the code, such as "U_FILE_ACCESS_ERROR". Lives for ever.
    virtual char const* ErrorName() const;

    bool IsSuccess() const { return ErrorCode() <= 0; }
    // The call that gave the code.
    std::string const& Function() const { return m_function; }
    // "UErrorCode=4 [U_FILE_ACCESS_ERROR] in ucnv_open"; without a function it ends at the bracket.
    std::string MakeErrorMessage() const;

protected:
    // Keeps `message` as what the next what() hands out, and returns its characters.
    char const* KeepMessage(std::string message) const;

private:
    std::int32_t m_code = 0;
    std::string m_function;
    mutable std::string m_message;
};
