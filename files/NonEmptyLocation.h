#pragma once

#include "files/FileErrors.h"

// The location itself, for the operations of the portable layer, which take no empty one: it throws
// EmptyFileLocationError with code 0.
inline FileLocation const& NonEmpty(FileLocation const& location) {
    if (location.empty()) throw EmptyFileLocationError(0);
    return location;
}
