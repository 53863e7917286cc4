#include "link/FileTransfer.h"

#include "files/FileDataSink.h"
#include "files/ReadFile.h"
#include "foundation/Base64DecodingDataMaker.h"
#include "foundation/Base64EncodingLineMaker.h"
#include "foundation/LineFlattener.h"
#include "foundation/LineMaker.h"
#include "link/FileXML.h"
#include "text/UStringBuilder.h"
#include "xml/XMLSerialize.h"

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

} // namespace

void FileTransfer::WriteToFile(FileLocation const& location) const {
    FileWritingPath path(location, OpenNewFileOrAsNewFile());
    FileDataSink sink;
    sink(path, 0);
    Base64DecodingDataMaker decoder(sink);
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
