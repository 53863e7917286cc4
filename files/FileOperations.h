#pragma once

// The operations on whole files.
//
// Each stands in two layers: the portable function refuses an empty location with EmptyFileLocationError and
// calls the function of the same name in UnixPlatform, which does the work. The operations that another
// process may hinder for a moment, by holding a file, have a second form that tries again.

#include "files/CopyingFiles.h"
#include "files/CreatingFiles.h"
#include "files/DeletingFiles.h"
#include "files/FileRetry.h"
#include "files/TemporaryLocations.h"
