#pragma once

#include "time/TimeInterval.h"
#include "time/TimeObject.h"
#include "xml/XMLElement.h"
#include "xml/XMLWriter.h"

// Times travel in the form of TimeToText and TextToTime, intervals as XML durations. Reading throws what
// those readers throw; a present but empty field is handed to them like any other.
void XMLSave(XMLWriter& writer, TimeObject const& time);
void XMLSave(XMLWriter& writer, TimeInterval const& interval);
void XMLLoad(XMLElement const& element, TimeObject& time);
void XMLLoad(XMLElement const& element, TimeInterval& interval);
