#pragma once

#include <chrono>
#include <ostream>
#include <string>
#include <string_view>

namespace ClientSimulator {

// The conversation as a person reads it: a line with the wall clock in UTC for each thing that happens, and
// under it the document. A quiet one writes nothing.
class Transcript {
public:
    using Time = std::chrono::system_clock::time_point;

    Transcript(std::ostream& stream, bool quiet) : m_stream(stream), m_quiet(quiet) {}

    void Note(std::string_view text);
    void Heading(std::string_view text);
    void Sent(std::string_view document);
    void SentBytes(std::string_view bytes);
    void Received(std::string_view document, Time arrival);

private:
    void Line(Time time, std::string_view text);
    void Document(Time time, std::string_view direction, std::string_view document);

    std::ostream& m_stream;
    bool m_quiet;
};

} // namespace ClientSimulator
