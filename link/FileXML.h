#pragma once

#include "files/FileLocation.h"
#include "xml/XMLElement.h"
#include "xml/XMLWriter.h"

// Names and paths of files in documents, as text.

void XMLLoad(XMLElement const& element, FileName& name);
void XMLLoad(XMLElement const& element, FileLocation& location);
// What is held as bytes has no text, and nothing is written for it.
void XMLSave(XMLWriter& writer, FileName const& name);
void XMLSave(XMLWriter& writer, FileLocation const& location);
