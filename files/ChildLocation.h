#pragma once

#include "files/FileLocation.h"
#include "files/LocalPath.h"

// What has this name in the directory, for the system too: where one of the two is held as bytes and the
// other as text, the text is taken in the local encoding, as the system takes it. Throws what the child's
// constructor and FileLocation::LibPath throw.
inline FileLocation ChildLocation(FileLocation const& directory, FileName const& name) {
    if (!directory.IsBinary() && !name.IsBinary()) return FileLocation(directory, name.Text());
    FileLocation const parent(BytesOf(directory.LibPath()));
    if (name.IsBinary()) return CreateBinaryLocation(parent, name.Bytes());
    AutoNullTerminated<Local8Bit> const local = FileLocation(name.Text()).LibPath();
    return CreateBinaryLocation(parent, BytesOf(local));
}
