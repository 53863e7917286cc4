#pragma once

#include <cstddef>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

namespace TranslationChecker {

// A source text that cannot be read: `what` tells why.
class SourceError : public std::runtime_error {
public:
    SourceError(std::size_t line, std::string const& reason) : std::runtime_error(reason), m_line(line) {}

    std::size_t Line() const { return m_line; }

private:
    std::size_t m_line;
};

// One word of C++ source.
struct CppToken {
    enum class Kind {
        Identifier,
        // A string literal. `text` is what it means: without quotes, escapes resolved, in UTF-8.
        Literal,
        // A number or a character literal. `text` is its spelling, or empty for a character.
        Constant,
        // One character, or one of "::", "->", "==" and "&&".
        Punctuation,
    };

    bool Is(std::string_view punctuation) const { return kind == Kind::Punctuation && text == punctuation; }
    bool IsWord(std::string_view word) const { return kind == Kind::Identifier && text == word; }

    Kind kind = Kind::Punctuation;
    std::string text;
    // Counted from 1.
    std::size_t line = 0;
};

// The words of a source file, in their order. Comments are left out, and so are preprocessor lines, except
// the bodies of macros. Adjacent literals stay apart. Throws SourceError for a literal that does not end or
// has an escape that is not known.
std::vector<CppToken> ReadCppTokens(std::string_view source);

} // namespace TranslationChecker
