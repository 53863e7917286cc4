#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace ClientSimulator {

// One line of a scenario, taken word by word. Views point into the scenario's text.
class LineReader {
public:
    explicit LineReader(std::string_view line) : m_rest(line) { SkipSpace(); }

    bool AtEnd() const { return m_rest.empty(); }
    // What has not been taken yet, without white space at its ends.
    std::string_view Rest() const;
    // The next word, up to white space; empty at the end.
    std::string_view TakeWord();
    // Takes the next word if it is `word`.
    bool Take(std::string_view word);
    // Takes the rest.
    std::string_view TakeRest();
    // Takes a text in double quotes; a quote in it is written \" and a backslash \\. Null when the line does
    // not go on with a complete one.
    std::optional<std::string> TakeQuoted();

private:
    void SkipSpace();

    std::string_view m_rest;
};

// The lines of a text without their ends, "\n" or "\r\n".
std::vector<std::string_view> SplitLines(std::string_view text);

} // namespace ClientSimulator
