#include "foundation/ReadReader.h"

#include "foundation/Exceptions.h"
#include "foundation/LineMaker.h"
#include "foundation/MessageMaker.h"
#include "foundation/TextDataReceiver.h"
#include "foundation/VectorAppender.h"
#include "text/UStringBuilder.h"

namespace {

constexpr std::size_t cChunkSize = 4096;

} // namespace

void ReadReader(DataReader& reader, DataReceiver& receiver) {
    unsigned char room[cChunkSize];
    receiver.Start();
    while (reader.Unfinished()) {
        Buffer chunk(Data(room, room + cChunkSize));
        reader >> chunk;
        if (chunk.Written().empty()) throw NoMoreData();
        receiver.Receive(chunk.Written());
    }
    receiver.ReceiveEnd();
}

void ReadReader(DataReader& reader, LineReceiver& lines) {
    LineMaker maker(lines);
    ReadReader(reader, maker);
}

void ReadReader(DataReader& reader, MessageReceiver& message) {
    MessageMaker maker(message);
    ReadReader(reader, maker);
}

std::vector<unsigned char> ReadReader(DataReader& reader) {
    std::vector<unsigned char> bytes;
    VectorAppender appender(bytes);
    ReadReader(reader, appender);
    return bytes;
}

AutoUString<UTF8> ReadUReader(DataReader& reader) {
    UStringBuilder<UTF8> builder;
    TextDataReceiver receiver(builder);
    ReadReader(reader, receiver);
    return builder.Take();
}
