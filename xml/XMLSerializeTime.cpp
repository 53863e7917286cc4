#include "xml/XMLSerializeTime.h"

#include "time/TimeText.h"
#include "time/TimeTextParsing.h"
#include "time/XMLDuration.h"

void XMLSave(XMLWriter& writer, TimeObject const& time) {
    writer.WriteString(TimeToText(time));
}

void XMLSave(XMLWriter& writer, TimeInterval const& interval) {
    writer.WriteString(TimeIntervalToXMLDuration(interval));
}

void XMLLoad(XMLElement const& element, TimeObject& time) {
    time = TextToTime(element.GetValue());
}

void XMLLoad(XMLElement const& element, TimeInterval& interval) {
    interval = XMLDurationToTimeInterval(element.GetValue());
}
