#include "tools/client-simulator/LineReader.h"

#include <algorithm>

namespace ClientSimulator {

namespace {

constexpr std::string_view cSpace = " \t\r";

} // namespace

void LineReader::SkipSpace() {
    m_rest.remove_prefix(std::min(m_rest.find_first_not_of(cSpace), m_rest.size()));
}

std::string_view LineReader::Rest() const {
    return m_rest.substr(0, m_rest.find_last_not_of(cSpace) + 1);
}

std::string_view LineReader::TakeWord() {
    std::string_view const word = m_rest.substr(0, m_rest.find_first_of(cSpace));
    m_rest.remove_prefix(word.size());
    SkipSpace();
    return word;
}

bool LineReader::Take(std::string_view word) {
    LineReader ahead = *this;
    if (ahead.TakeWord() != word) return false;
    *this = ahead;
    return true;
}

std::string_view LineReader::TakeRest() {
    std::string_view const rest = Rest();
    m_rest = {};
    return rest;
}

std::optional<std::string> LineReader::TakeQuoted() {
    if (!m_rest.starts_with('"')) return std::nullopt;
    std::string text;
    for (std::size_t i = 1; i < m_rest.size(); ++i) {
        if (m_rest[i] == '"') {
            m_rest.remove_prefix(i + 1);
            SkipSpace();
            return text;
        }
        bool const escaped =
            m_rest[i] == '\\' && i + 1 < m_rest.size() && (m_rest[i + 1] == '"' || m_rest[i + 1] == '\\');
        text += m_rest[escaped ? ++i : i];
    }
    return std::nullopt;
}

std::vector<std::string_view> SplitLines(std::string_view text) {
    std::vector<std::string_view> lines;
    while (!text.empty()) {
        std::size_t const end = std::min(text.find('\n'), text.size());
        std::string_view line = text.substr(0, end);
        if (line.ends_with('\r')) line.remove_suffix(1);
        lines.push_back(line);
        text.remove_prefix(std::min(end + 1, text.size()));
    }
    return lines;
}

} // namespace ClientSimulator
