#include "files/FileDataSink.h"

FileDataSink::FileDataSink(FlushMode mode) : m_mode(mode) {
}

FileDataSink::FileDataSink(UnixPlatform::FileWritingPath const& path, unsigned long position, FlushMode mode)
    : m_writer(path, position), m_position(position), m_mode(mode) {
}

FileDataSink& FileDataSink::operator()(UnixPlatform::FileWritingPath const& path, unsigned long position) {
    m_writer.Start(path, position);
    m_position = position;
    return *this;
}

void FileDataSink::Start() {
    m_writer.SetPosition(m_position);
}

void FileDataSink::Receive(ConstData data) {
    m_writer << data;
}

void FileDataSink::ReceiveEnd() {
    if (m_mode == FlushMode::FlushAtEnd) m_writer.Path().Flush();
}
