#pragma once

#include <stdexcept>

namespace ScreenUser {

// Something that a user at the screen cannot do, see or wait for; a sentence that tells what and why.
class UserError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

// A program does not tell what it was asked about its widgets.
class RefusedError : public UserError {
public:
    using UserError::UserError;
};

} // namespace ScreenUser
