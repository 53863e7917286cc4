#include "foundation/ApplyFilter.h"

#include "foundation/StartReceiveAndEnd.h"
#include "foundation/TextDataReceiver.h"
#include "foundation/VectorAppender.h"
#include "text/UStringBuilder.h"

std::vector<unsigned char> ApplyFilter(ConstData data, DataFilter& filter) {
    std::vector<unsigned char> result;
    VectorAppender appender(result);
    StartReceiveAndEnd(appender, data, filter);
    return result;
}

AutoUString<UTF8> ApplyFilter(UStringRef<UTF8> const& text, DataFilter& filter) {
    UStringBuilder<UTF8> builder(text.SizeInUnits());
    TextDataReceiver receiver(builder);
    StartReceiveAndEnd(receiver, ConstData(text), filter);
    return builder.Take();
}
