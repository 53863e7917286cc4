#include "tools/translation-checker/CppTokens.h"

#include "text/CodeUnits.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cstdint>
#include <utility>

// The reader stands in front of what is not taken yet. Whatever the compiler accepts is read as the compiler
// reads it; of other sources only so much is asked that nothing is read beyond the end.

namespace TranslationChecker {

namespace {

bool IsDigit(char character) {
    return character >= '0' && character <= '9';
}

// Bytes above 7F are parts of letters.
bool IsLetter(char character) {
    return (character >= 'a' && character <= 'z') || (character >= 'A' && character <= 'Z') ||
           character == '_' || static_cast<unsigned char>(character) > 0x7F;
}

bool IsWordCharacter(char character) {
    return IsLetter(character) || IsDigit(character);
}

std::string UTF8Of(std::uint32_t code) {
    UTF8::Unit units[CodeUnits::Form<UTF8>::longest];
    UTF8::Unit* end = units;
    CodeUnits::Form<UTF8>::Put(code, end);
    return std::string(units, end);
}

class Reader {
public:
    explicit Reader(std::string_view source) : m_rest(source) {}

    std::vector<CppToken> Read();

private:
    bool At(std::string_view text) const { return m_rest.starts_with(text); }
    std::string_view Take(std::size_t size);
    // Up to the character, which is not taken; up to the end when it does not come.
    std::string_view TakeUpTo(std::string_view end) {
        return Take(std::min(m_rest.find(end), m_rest.size()));
    }
    std::string_view TakeWord();
    void Add(CppToken::Kind kind, std::string_view text) {
        m_tokens.push_back({kind, std::string(text), m_line});
    }

    void ReadNext();
    void SkipComment();
    void SkipDirective();
    void ReadNumber();
    void ReadWord();
    void ReadLiteral(char quote);
    void ReadRawLiteral();
    void ReadPunctuation();
    std::string ReadEscape();
    std::string ReadCode(std::size_t mostDigits, int base, bool isByte);

    std::string_view m_rest;
    std::size_t m_line = 1;
    bool m_atLineStart = true;
    std::vector<CppToken> m_tokens;
};

std::vector<CppToken> Reader::Read() {
    while (!m_rest.empty()) ReadNext();
    return std::move(m_tokens);
}

std::string_view Reader::Take(std::size_t size) {
    std::string_view const taken = m_rest.substr(0, size);
    m_rest.remove_prefix(taken.size());
    m_line += static_cast<std::size_t>(std::count(taken.begin(), taken.end(), '\n'));
    return taken;
}

std::string_view Reader::TakeWord() {
    auto const end = std::find_if_not(m_rest.begin(), m_rest.end(), IsWordCharacter);
    return Take(static_cast<std::size_t>(end - m_rest.begin()));
}

void Reader::ReadNext() {
    char const next = m_rest.front();
    if (std::string_view(" \t\r\n\v\f\\").find(next) != std::string_view::npos) {
        m_atLineStart = m_atLineStart || next == '\n';
        Take(1);
        return;
    }
    if (At("//") || At("/*")) return SkipComment();
    bool const atLineStart = std::exchange(m_atLineStart, false);
    if (next == '#' && atLineStart) return SkipDirective();
    if (IsDigit(next)) return ReadNumber();
    if (IsLetter(next)) return ReadWord();
    if (next == '"' || next == '\'') return ReadLiteral(next);
    ReadPunctuation();
}

void Reader::SkipComment() {
    if (At("//")) {
        TakeUpTo("\n");
        return;
    }
    TakeUpTo("*/");
    Take(2);
}

// The body of a macro is code; the rest of a directive is not.
void Reader::SkipDirective() {
    Take(1);
    Take(std::min(m_rest.find_first_not_of(" \t"), m_rest.size()));
    if (!At("define")) TakeUpTo("\n");
}

void Reader::ReadNumber() {
    std::size_t size = 1;
    while (size < m_rest.size() &&
           (IsWordCharacter(m_rest[size]) || m_rest[size] == '.' ||
            (m_rest[size] == '\'' && size + 1 < m_rest.size() && IsWordCharacter(m_rest[size + 1]))))
        ++size;
    Add(CppToken::Kind::Constant, m_rest.substr(0, size));
    Take(size);
}

void Reader::ReadWord() {
    std::string_view const word = TakeWord();
    static constexpr std::array<std::string_view, 9> cPrefixes = {"u8",  "u",  "U",  "L", "R",
                                                                  "u8R", "uR", "UR", "LR"};
    bool const isPrefix = std::find(cPrefixes.begin(), cPrefixes.end(), word) != cPrefixes.end();
    if (isPrefix && At("\"")) return word.back() == 'R' ? ReadRawLiteral() : ReadLiteral('"');
    if (isPrefix && At("'")) return ReadLiteral('\'');
    Add(CppToken::Kind::Identifier, word);
}

void Reader::ReadLiteral(char quote) {
    std::size_t const line = m_line;
    Take(1);
    std::string text;
    while (!m_rest.empty() && m_rest.front() != quote && m_rest.front() != '\n')
        text += m_rest.front() == '\\' ? ReadEscape() : std::string(Take(1));
    if (m_rest.empty() || m_rest.front() != quote) throw SourceError(line, "a literal does not end");
    Take(1);
    TakeWord();
    if (quote == '"')
        Add(CppToken::Kind::Literal, text);
    else
        Add(CppToken::Kind::Constant, "");
}

// At R"mark(text)mark", in front of the quote.
void Reader::ReadRawLiteral() {
    std::size_t const line = m_line;
    Take(1);
    std::string const end = ")" + std::string(TakeUpTo("(")) + "\"";
    Take(1);
    std::string_view const text = TakeUpTo(end);
    if (m_rest.empty()) throw SourceError(line, "a literal does not end");
    m_tokens.push_back({CppToken::Kind::Literal, std::string(text), line});
    Take(end.size());
    TakeWord();
}

void Reader::ReadPunctuation() {
    std::size_t const size = At("::") || At("->") || At("==") || At("&&") ? 2 : 1;
    Add(CppToken::Kind::Punctuation, m_rest.substr(0, size));
    Take(size);
}

std::string Reader::ReadEscape() {
    static constexpr std::string_view cNames = "ntrabfv\\'\"?\n";
    static constexpr std::array<std::string_view, cNames.size()> cMeanings = {
        "\n", "\t", "\r", "\a", "\b", "\f", "\v", "\\", "'", "\"", "?", ""};
    Take(1);
    if (m_rest.empty()) throw SourceError(m_line, "a literal does not end");
    if (IsDigit(m_rest.front())) return ReadCode(3, 8, true);
    char const name = Take(1).front();
    if (name == 'x') return ReadCode(m_rest.size(), 16, true);
    if (name == 'u') return ReadCode(4, 16, false);
    if (name == 'U') return ReadCode(8, 16, false);
    std::size_t const index = cNames.find(name);
    if (index == std::string_view::npos)
        throw SourceError(m_line, "a literal has the unknown escape \\" + std::string(1, name));
    return std::string(cMeanings[index]);
}

std::string Reader::ReadCode(std::size_t mostDigits, int base, bool isByte) {
    char const* const begin = m_rest.data();
    char const* const end = begin + std::min(mostDigits, m_rest.size());
    std::uint32_t code = 0;
    auto const result = std::from_chars(begin, end, code, base);
    if (result.ec != std::errc() || (isByte && code > 0xFF))
        throw SourceError(m_line, "a literal has an escape that is no character");
    Take(static_cast<std::size_t>(result.ptr - begin));
    return isByte ? std::string(1, static_cast<char>(code)) : UTF8Of(code);
}

} // namespace

std::vector<CppToken> ReadCppTokens(std::string_view source) {
    return Reader(source).Read();
}

} // namespace TranslationChecker
