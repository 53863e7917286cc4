#pragma once

#include "dialogs/ActionRequest.h"
#include "xml/XMLElement.h"

// Reads an action from its element. A field that is missing keeps its default, an optional one becomes null.
void XMLSerialize(XMLElement const& element, ActionRequest& request);
