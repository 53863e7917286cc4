#pragma once

// The converter service's C interface, for the sources that call it and for nobody else: other headers do
// with a forward declaration, so that what never converts through it does not depend on it. Its UTF-16 unit
// is set to the one of UTF16, so that texts go in and come out without a cast.

#include <cstdint>

#define UCHAR_TYPE std::uint16_t
#define U_SHOW_CPLUSPLUS_API 0

#include <unicode/ucnv.h>
#include <unicode/ucnv_err.h>
#include <unicode/ustring.h>
