#include "link/FileTransfer.h"

#include "files/FileDataSink.h"
#include "files/ReadFile.h"
#include "foundation/Base64DecodingDataMaker.h"
#include "foundation/Base64EncodingLineMaker.h"
#include "foundation/LineFlattener.h"
#include "foundation/LineMaker.h"
#include "link/FileXML.h"
#include "text/Buffers.h"
#include "text/UStringBuilder.h"
#include "xml/XMLSerialize.h"

#include <array>

namespace {

// Passes bytes on as text.
class TextOfData : public DataReceiver {
public:
    explicit TextOfData(UTextReceiver<UTF8>& text) : m_text(text) {}

    using DataReceiver::Receive;
    void Start() override { m_text.Start(UTF8()); }
    void Receive(ConstData data) override {
        m_text.Receive(ConstArrayOf<unsigned char>(data.begin(), data.end()));
    }
    void ReceiveEnd() override { m_text.ReceiveEnd(); }

private:
    UTextReceiver<UTF8>& m_text;
};

// Gathers bytes into larger pieces. A line of Base64 text makes some tens of bytes, and a file takes each
// piece by a call of the system.
class PieceGatherer : public DataReceiver {
public:
    explicit PieceGatherer(DataReceiver& receiver) : m_receiver(receiver) {}

    using DataReceiver::Receive;
    void Start() override { m_receiver.Start(); }
    void Receive(ConstData data) override {
        if (data.Size() > m_free.Room()) HandOn();
        if (data.Size() > m_free.Room())
            m_receiver.Receive(data);
        else
            m_free << data;
    }
    void ReceiveEnd() override {
        HandOn();
        m_receiver.ReceiveEnd();
    }

private:
    static constexpr std::size_t cPieceSize = 16384;

    Buffer Emptied() { return Buffer(Data(m_room.data(), m_room.data() + m_room.size())); }
    void HandOn() {
        if (!m_free.Written().empty()) m_receiver.Receive(m_free.Written());
        m_free = Emptied();
    }

    DataReceiver& m_receiver;
    std::array<unsigned char, cPieceSize> m_room;
    Buffer m_free = Emptied();
};

} // namespace

void FileTransfer::WriteToFile(FileLocation const& location) const {
    FileWritingPath path(location, OpenNewFileOrAsNewFile());
    FileDataSink sink;
    sink(path, 0);
    PieceGatherer gatherer(sink);
    Base64DecodingDataMaker decoder(gatherer);
    LineMaker lines(decoder);
    lines.Start();
    lines.Receive(ConstData(content));
    lines.ReceiveEnd();
    path.Close();
}

void FileTransfer::ReadFromFile(FileLocation const& location) {
    UStringReceiver<CopiedUString<UTF8>> text(content);
    TextOfData bytes(text);
    LineFlattener flattener(bytes, LineFlattener::lf);
    Base64EncodingLineMaker encoder(flattener);
    ReadFile(location, encoder, 0, nullptr);
}

void XMLLoad(XMLElement const& element, FileTransfer& file) {
    XMLSerialize(element, "FileName", file.fileName);
    XMLSerialize(element, "SubFolder", file.subFolder);
    XMLSerialize(element, "Content", file.content);
}
