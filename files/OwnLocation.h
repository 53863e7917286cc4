#pragma once

#include "files/FileLocation.h"

#include <string>
#include <string_view>

// The path without what makes the system follow a link at its end: "a//" and "a/./" give "a". "/", "." and
// "/." stay.
inline std::string_view WithoutEnd(std::string_view path) {
    while ((path.size() > 1 && path.ends_with('/')) || (path.size() > 2 && path.ends_with("/.")))
        path.remove_suffix(1);
    return path;
}

// What stands under the name itself, rather than what it leads to. The system's form of the path is looked
// at, as that is what it will follow. Throws what FileLocation::LibPath throws.
inline FileLocation OwnLocation(FileLocation const& location) {
    AutoNullTerminated<Local8Bit> const path = location.LibPath();
    std::string_view const whole(path.c_str());
    std::string_view const own = WithoutEnd(whole);
    return own.size() == whole.size() ? location : FileLocation(std::string(own).c_str());
}
