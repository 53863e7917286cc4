#include "link/FileXML.h"

void XMLLoad(XMLElement const& element, FileName& name) {
    name = FileName(element.GetValue());
}

void XMLLoad(XMLElement const& element, FileLocation& location) {
    location = FileLocation(element.GetValue());
}

void XMLSave(XMLWriter& writer, FileName const& name) {
    XMLSave(writer, name.Text());
}

void XMLSave(XMLWriter& writer, FileLocation const& location) {
    XMLSave(writer, location.Text());
}
