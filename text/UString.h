#pragma once

// The string family: texts typed by their encoding.
//
//   UStringRef<E>     view that owns nothing
//   AutoUString<E>    owner that moves on copy; what functions return
//   CopiedUString<E>  owner that deep-copies
//   SharedUString<E>  owner whose copies share one heap buffer
//
// All owners keep up to 64 units inline. Text objects belong to one thread at a time; copies of one
// SharedUString may live on different threads.

#include "text/AutoUString.h"
#include "text/CopiedUString.h"
#include "text/NullOr.h"
#include "text/SharedUString.h"
#include "text/UStringBuilder.h"
#include "text/UStringFunctions.h"
#include "text/UStringRef.h"
#include "text/UTF8StringBuilder.h"
#include "text/UTextReceiver.h"
