#pragma once

#include "files/FileWriting.h"
#include "foundation/DataReceiver.h"

#include <cstdint>

// Receiver that writes into a file, over what stands there, from a position on. It makes a file longer but
// never shorter.
class FileDataSink : public DataReceiver {
public:
    // 0 flushes at the end of the stream, so that the bytes are on the device when ReceiveEnd returns; any
    // other value does not.
    enum class FlushMode : std::int32_t { FlushAtEnd = 0, NoFlush = 1 };

    // Bound to no file.
    explicit FileDataSink(FlushMode mode = FlushMode::FlushAtEnd);
    // Bound.
    FileDataSink(UnixPlatform::FileWritingPath const& path, unsigned long position,
                 FlushMode mode = FlushMode::FlushAtEnd);

    // Binds to a file, which must outlive the sink or its next binding; returns *this.
    FileDataSink& operator()(UnixPlatform::FileWritingPath const& path, unsigned long position);

    using DataReceiver::Receive;
    // Back to the position that the sink is bound to.
    void Start() override;
    void Receive(ConstData data) override;
    void ReceiveEnd() override;

private:
    // It holds the path, too.
    FileWriter m_writer;
    unsigned long m_position = 0;
    FlushMode m_mode;
};
