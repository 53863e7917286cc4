#pragma once

#include "files/FileLocation.h"
#include "text/CopiedUString.h"
#include "xml/XMLElement.h"

// A file that travels inside a message: two names, and its bytes as Base64 text. The text stays as it came
// and is decoded only on the way to the disk.
struct FileTransfer {
    // Writes the bytes to a new file, or to an old one in place of what it holds. Text in any number of lines
    // is welcome, and what is no Base64 is skipped; no text makes an empty file. Throws the errors of files;
    // what has been written by then stays.
    void WriteToFile(FileLocation const& location) const;
    // Makes the content of a file's bytes, in lines of 64 characters. Throws the errors of files; the content
    // is unchanged then.
    void ReadFromFile(FileLocation const& location);

    FileName fileName;
    FileName subFolder;
    CopiedUString<UTF8> content;
};

void XMLLoad(XMLElement const& element, FileTransfer& file);
