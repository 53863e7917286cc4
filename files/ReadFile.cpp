#include "files/ReadFile.h"

#include "files/FileReadingLoop.h"
#include "foundation/LineMaker.h"
#include "foundation/MessageMaker.h"

namespace {

constexpr std::size_t cChunkSize = 4096;

// A loop with the room for its chunks.
class ChunkLoop {
public:
    template <class... Arguments>
    void Read(DataReceiver& receiver, CpuBudget* budget, Arguments const&... arguments) {
        for (m_loop.Start(arguments...); m_loop.Unfinished(); ++m_loop) {
            receiver.Receive(*m_loop);
            if (budget) budget->Spend();
        }
    }

private:
    unsigned char m_room[cChunkSize];
    FileReadingLoop m_loop{Data(m_room, m_room + cChunkSize)};
};

// `range` is a start, or a start and an end.
template <class... Positions>
void ReadOpenedFile(FileLocation const& location, DataReceiver& receiver, CpuBudget* budget,
                    Positions... range) {
    receiver.Start();
    FileReadingPath path(location, false);
    ChunkLoop().Read(receiver, budget, path, range...);
    path.Close();
    receiver.ReceiveEnd();
}

} // namespace

void ReadFile(FileLocation const& location, DataReceiver& receiver, unsigned long start, CpuBudget* budget) {
    ReadOpenedFile(location, receiver, budget, start);
}

void ReadFile(FileLocation const& location, DataReceiver& receiver, unsigned long start, unsigned long end,
              CpuBudget* budget) {
    ReadOpenedFile(location, receiver, budget, start, end);
}

void ReadFile(FileLocation const& location, LineReceiver& lines, unsigned long start, CpuBudget* budget) {
    LineMaker maker(lines);
    ReadFile(location, maker, start, budget);
}

void ReadFile(FileLocation const& location, LineReceiver& lines, unsigned long start, unsigned long end,
              CpuBudget* budget) {
    LineMaker maker(lines);
    ReadFile(location, maker, start, end, budget);
}

void ReadFile(FileLocation const& location, MessageReceiver& message, unsigned long start,
              CpuBudget* budget) {
    MessageMaker maker(message);
    ReadFile(location, maker, start, budget);
}

void ReadFile(FileLocation const& location, MessageReceiver& message, unsigned long start, unsigned long end,
              CpuBudget* budget) {
    MessageMaker maker(message);
    ReadFile(location, maker, start, end, budget);
}

void ReadFileRange(UnixPlatform::FileReader const& reader, Range<unsigned long> const& range,
                   DataReceiver& receiver) {
    receiver.Start();
    ChunkLoop().Read(receiver, nullptr, reader, range);
    receiver.ReceiveEnd();
}
