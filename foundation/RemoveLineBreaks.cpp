#include "foundation/RemoveLineBreaks.h"

#include "foundation/LineFlattener.h"
#include "foundation/LineMaker.h"
#include "foundation/StartReceiveAndEnd.h"
#include "foundation/TextDataReceiver.h"
#include "text/UStringBuilder.h"

AutoUString<UTF8> RemoveLineBreaks(UStringRef<UTF8> const& text) {
    UStringBuilder<UTF8> builder(text.SizeInUnits());
    TextDataReceiver receiver(builder);
    LineFlattener flattener(receiver, LineFlattener::space);
    LineMaker maker(flattener);
    StartReceiveAndEnd(maker, ConstData(text));
    return builder.Take();
}
