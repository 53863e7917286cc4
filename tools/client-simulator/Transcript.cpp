#include "tools/client-simulator/Transcript.h"

#include "tools/client-simulator/Documents.h"
#include "tools/client-simulator/LineReader.h"
#include "tools/client-simulator/TimeText.h"

namespace ClientSimulator {

namespace {

constexpr std::string_view cIndentation = "              ";

} // namespace

void Transcript::Line(Time time, std::string_view text) {
    if (m_quiet) return;
    m_stream << ClockText(time) << "  " << text << std::endl;
}

void Transcript::Note(std::string_view text) {
    Line(std::chrono::system_clock::now(), text);
}

void Transcript::Heading(std::string_view text) {
    if (m_quiet) return;
    m_stream << '\n';
    Note("== " + std::string(text));
}

void Transcript::Document(Time time, std::string_view direction, std::string_view document) {
    if (m_quiet) return;
    Line(time,
         std::string(direction) + MessageNames(document) + ", " + std::to_string(document.size()) + " bytes");
    if (document.empty()) return;
    std::string const readable = ReadableDocument(document);
    for (std::string_view const line : SplitLines(readable)) m_stream << cIndentation << line << '\n';
    m_stream.flush();
}

void Transcript::Sent(std::string_view document) {
    Document(std::chrono::system_clock::now(), "client --> process  ", document);
}

void Transcript::SentBytes(std::string_view bytes) {
    if (m_quiet) return;
    Note("client --> process  " + std::to_string(bytes.size()) + " raw bytes " + Quoted(bytes));
}

void Transcript::Received(std::string_view document, Time arrival) {
    Document(arrival, "client <-- process  ", document);
}

} // namespace ClientSimulator
