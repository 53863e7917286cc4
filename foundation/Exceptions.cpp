#include "foundation/Exceptions.h"

#include <typeinfo>

DebuggableException::~DebuggableException() = default;

char const* DebuggableException::what() const noexcept {
    return typeid(*this).name();
}

UStringRef<UTF8> DebuggableException::uwhat() const noexcept {
    return MakeUTF8Ref(typeid(*this).name());
}
