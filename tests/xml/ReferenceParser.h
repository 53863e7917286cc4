#pragma once

#include "tests/xml/Recording.h"

#include <cstdlib>
#include <map>
#include <string>
#include <utility>
#include <vector>

// The parser's rules written down as plainly as possible: one byte at a time, no shortcut, no reuse. It tells
// what the calls have to be for any input.
class ReferenceParser {
public:
    void Parse(std::string const& input) {
        for (char const byte : input) {
            m_byte = byte;
            Step();
        }
    }

    Calls calls;

private:
    void Step() {
        switch (m_state) {
        case 0: m_byte == '<' ? Go(2) : m_byte == '&' ? Go(1) : Append(m_text); return;
        case 1: m_byte == ';' ? Go(0) : Append(m_escape); return;
        case 2: StepTagName(); return;
        case 3: m_byte == '>' ? Go(0) : Append(m_name); return;
        case 4:
            if (m_byte != ' ' && m_byte != '?') Go(m_byte == '>' ? 0 : 5);
            return;
        case 5: m_byte == '=' ? Go(6) : Append(m_attributes.back().first); return;
        case 6:
            if (m_byte != '\'' && m_byte != '"') return;
            m_quote = m_byte;
            Go(7);
            return;
        case 7:
            m_byte == m_quote ? Go(4) : m_byte == '&' ? Go(8) : Append(m_attributes.back().second);
            return;
        case 8: m_byte == ';' ? Go(7) : Append(m_escape); return;
        case 9: StepComment(); return;
        default: StepCData(); return;
        }
    }

    void StepTagName() {
        if (m_byte == ' ') {
            if (!m_name.empty()) Go(4);
        } else if (m_byte == '/') {
            Go(3);
        } else if (m_byte == '>') {
            Go(0);
        } else if (m_byte == '-') {
            if (++m_dashes > 1) Go(9);
        } else {
            Append(m_name);
            if (m_name != "![CDATA[") return;
            m_name.clear();
            m_previous = m_previous2 = 0;
            Go(10);
        }
    }

    void StepComment() {
        if (m_byte == '-')
            ++m_dashes;
        else if (m_byte == '>' && m_dashes > 1)
            Go(0);
        else
            m_dashes = 0;
    }

    void StepCData() {
        if (m_byte == '>' && m_previous == ']' && m_previous2 == ']') {
            Go(0);
            return;
        }
        if (m_previous2 != 0) m_text += m_previous2;
        m_previous2 = m_previous;
        m_previous = m_byte;
    }

    void Append(std::string& text) { text += m_byte; }

    void Go(int next) {
        Leave(next);
        Enter(next);
        m_state = next;
    }

    void Leave(int next) {
        if (m_state == 0 || m_state == 10) {
            if (!m_text.empty()) calls.push_back('"' + m_text);
            m_text.clear();
        }
        if (m_state == 1) calls.push_back('"' + Decoded(m_escape + ';'));
        if ((m_state == 2 || m_state == 4) && next == 0) {
            std::string call = (m_name.substr(0, 1) == "?" ? '?' : '<') + m_name;
            for (std::size_t index = 0; index < m_complete; ++index)
                call += '|' + m_attributes[index].first + '=' + m_attributes[index].second;
            calls.push_back(call);
        }
        if (m_state == 3 && next == 0) calls.push_back('>' + m_name);
        if (m_state == 7 && next != 8) ++m_complete;
        if (m_state == 8) m_attributes.back().second += Decoded(m_escape + ';');
    }

    void Enter(int next) {
        if (next == 1 || next == 8) m_escape = "&";
        if (next == 2) {
            m_dashes = 0;
            m_name.clear();
            m_complete = 0;
        }
        if (next == 4) {
            m_attributes.resize(m_complete);
            m_attributes.emplace_back();
        }
        if (next == 5) Append(m_attributes.back().first);
        if (next == 9) m_dashes = 0;
    }

    static std::string Decoded(std::string const& escape) {
        static std::map<std::string, std::string> const known = {
            {"&lt;", "<"}, {"&gt;", ">"}, {"&amp;", "&"}, {"&quot;", "\""}};
        if (known.contains(escape)) return known.at(escape);
        if (escape.substr(1, 2) != "#x") return escape;
        auto const value = static_cast<int>(std::strtol(escape.c_str() + 3, nullptr, 16));
        return value > 255 ? escape : std::string(1, static_cast<char>(value & 255));
    }

    int m_state = 0;
    char m_byte = 0;
    char m_previous = 0;
    char m_previous2 = 0;
    char m_quote = 0;
    std::string m_text;
    std::string m_escape;
    std::string m_name;
    std::vector<std::pair<std::string, std::string>> m_attributes;
    std::size_t m_complete = 0;
    int m_dashes = 0;
};

inline Calls ReferenceCallsFor(std::string const& document) {
    ReferenceParser parser;
    parser.Parse(document);
    return parser.calls;
}
