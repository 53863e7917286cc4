#pragma once

#include "link/ProtocolRecords.h"
#include "text/AutoUString.h"

// Whole documents for the client: a header, a root element and one message, each element on a line of its own
// and indented by tabs, with no line feed at the end. The root is not the same for all messages: the first
// word and error messages stand under "ClientToUI", the others under "UIToClient".

template <class T>
AutoUString<UTF8> ConvertToXML(T const& message) = delete;

template <>
AutoUString<UTF8> ConvertToXML(ReadyForData const& message);
template <>
AutoUString<UTF8> ConvertToXML(ClientUIErrorMessage const& message);
template <>
AutoUString<UTF8> ConvertToXML(ActionTaken const& message);
template <>
AutoUString<UTF8> ConvertToXML(RemindTime const& message);
template <>
AutoUString<UTF8> ConvertToXML(RemindInterval const& message);
