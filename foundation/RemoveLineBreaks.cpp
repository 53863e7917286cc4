#include "foundation/RemoveLineBreaks.h"

#include "foundation/LineFlattener.h"
#include "foundation/LineMaker.h"
#include "foundation/StartReceiveAndEnd.h"
#include "foundation/TextDataReceiver.h"
#include "text/Transcoder.h"
#include "text/UStringBuilder.h"

namespace {

template <class E>
AutoUString<E> RemovedThroughUTF8(UStringRef<E> const& text) {
    return Transcode<E, UTF8>(RemoveLineBreaks(Transcode<UTF8, E>(text)));
}

} // namespace

AutoUString<UTF8> RemoveLineBreaks(UStringRef<UTF8> const& text) {
    UStringBuilder<UTF8> builder(text.SizeInUnits());
    TextDataReceiver receiver(builder);
    LineFlattener flattener(receiver, LineFlattener::space);
    LineMaker maker(flattener);
    StartReceiveAndEnd(maker, ConstData(text));
    return builder.Take();
}

AutoUString<UTF16> RemoveLineBreaks(UStringRef<UTF16> const& text) {
    return RemovedThroughUTF8(text);
}

AutoUString<UTF32> RemoveLineBreaks(UStringRef<UTF32> const& text) {
    return RemovedThroughUTF8(text);
}
