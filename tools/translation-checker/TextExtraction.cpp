#include "tools/translation-checker/TextExtraction.h"

#include "tools/translation-checker/CppTokens.h"

#include <algorithm>
#include <map>
#include <optional>
#include <set>
#include <tuple>

// Functions that take a text are on a list, which grows while it is worked off: a parameter that is handed on
// puts its function there. For each of them the files are searched for its name. An argument is a range of
// tokens; for every token the bracket around it is known, so that what stands on one level is quickly seen.

namespace TranslationChecker {

namespace {

constexpr std::size_t cNone = static_cast<std::size_t>(-1);

// A file's tokens with its brackets: for each token the innermost opening bracket around it (for a bracket,
// the one around the pair), and for each bracket its counterpart.
struct TokenFile {
    std::string const* name;
    std::vector<CppToken> tokens;
    std::vector<std::size_t> outer;
    std::vector<std::size_t> partner;

    bool Is(std::size_t index, std::string_view punctuation) const {
        return index < tokens.size() && tokens[index].Is(punctuation);
    }
    bool IsWord(std::size_t index, std::string_view word) const {
        return index < tokens.size() && tokens[index].IsWord(word);
    }
    bool IsKind(std::size_t index, CppToken::Kind kind) const {
        return index < tokens.size() && tokens[index].kind == kind;
    }
};

struct Range {
    std::size_t begin;
    std::size_t end;
};

// A function and which of its arguments, counted from 0, is a text.
struct Taker {
    std::string name;
    std::size_t position;
    // Only calls in this file; null for all.
    TokenFile const* file;

    auto Key() const { return std::tie(name, position, file); }
};

void PairBrackets(TokenFile& file) {
    std::vector<std::size_t> open;
    file.outer.assign(file.tokens.size(), cNone);
    file.partner.assign(file.tokens.size(), cNone);
    for (std::size_t index = 0; index < file.tokens.size(); ++index) {
        CppToken const& token = file.tokens[index];
        bool const closes = token.Is(")") || token.Is("]") || token.Is("}");
        if (closes) {
            if (open.empty()) throw SourceError(token.line, "a bracket closes nothing");
            file.partner[open.back()] = index;
            file.partner[index] = open.back();
            open.pop_back();
        }
        if (!open.empty()) file.outer[index] = open.back();
        if (token.Is("(") || token.Is("[") || token.Is("{")) open.push_back(index);
    }
    if (!open.empty()) throw SourceError(file.tokens[open.back()].line, "a bracket is not closed");
}

// The token on the level of the range's beginning; the range's end when there is none.
std::size_t FindOnLevel(TokenFile const& file, Range range, std::string_view punctuation) {
    std::size_t index = range.begin;
    while (index < range.end && !file.Is(index, punctuation)) {
        bool const opens = file.partner[index] != cNone && file.partner[index] > index;
        index = opens ? file.partner[index] + 1 : index + 1;
    }
    return std::min(index, range.end);
}

// The argument at a position of a call whose bracket opens at `open`.
std::optional<Range> ArgumentAt(TokenFile const& file, std::size_t open, std::size_t position) {
    std::size_t const close = file.partner[open];
    Range argument{open + 1, FindOnLevel(file, {open + 1, close}, ",")};
    for (; position > 0; --position) {
        if (argument.end == close) return std::nullopt;
        argument.begin = argument.end + 1;
        argument.end = FindOnLevel(file, {argument.begin, close}, ",");
    }
    if (argument.begin == argument.end) return std::nullopt;
    return argument;
}

// Without blanks, except between words.
std::string SpellingOf(TokenFile const& file, Range range) {
    std::string spelling;
    bool afterWord = false;
    for (std::size_t index = range.begin; index < range.end; ++index) {
        CppToken const& token = file.tokens[index];
        bool const isWord = token.kind == CppToken::Kind::Identifier;
        if (isWord && afterWord) spelling += ' ';
        bool const isLiteral = token.kind == CppToken::Kind::Literal;
        spelling += isLiteral ? '"' + token.text + '"' : token.text;
        afterWord = isWord;
    }
    return spelling;
}

// "char const* text", "Key&& key", "char const*": no expression for a text ends like this, or has two words
// side by side.
bool IsParameter(TokenFile const& file, Range range) {
    auto const isOfType = [&](std::size_t index) {
        return file.Is(index, "*") || file.Is(index, "&") || file.Is(index, "&&") || file.Is(index, ">");
    };
    std::size_t const last = range.end - 1;
    if (isOfType(last)) return true;
    if (last == range.begin || !file.IsKind(last, CppToken::Kind::Identifier)) return false;
    return file.IsKind(last - 1, CppToken::Kind::Identifier) ||
           (isOfType(last - 1) && last - 1 != range.begin);
}

// A text that was made elsewhere, where it is found.
bool IsMadeAlready(TokenFile const& file, Range range) {
    if (file.IsWord(range.begin, "LocalizedStrings")) return file.Is(range.begin + 1, "::");
    if (file.IsWord(range.begin, "MakeLocalString")) return true;
    return file.IsWord(range.begin, "std") && file.Is(range.begin + 1, "::") &&
           file.IsWord(range.begin + 2, "move");
}

// Whether the bracket opens a namespace; an unnamed one when `unnamed`.
bool OpensNamespace(TokenFile const& file, std::size_t open, bool unnamed) {
    if (!file.Is(open, "{") || open == 0) return false;
    std::size_t word = open - 1;
    if (unnamed) return file.IsWord(word, "namespace");
    while (word > 0 && (file.IsKind(word, CppToken::Kind::Identifier) || file.Is(word, "::")) &&
           !file.IsWord(word, "namespace"))
        --word;
    return file.IsWord(word, "namespace");
}

// The function of a parameter `char const* name`, whose name stands at `parameter`, when `use` lies in its
// body. Members are left out: their calls cannot be told by the name.
std::optional<Taker> FunctionAround(TokenFile const& file, std::size_t parameter, std::size_t use) {
    std::size_t const open = file.outer[parameter];
    if (open == cNone || open < 2 || !file.Is(open, "(")) return std::nullopt;
    std::size_t body = file.partner[open] + 1;
    while (file.IsWord(body, "noexcept")) ++body;
    if (!file.Is(body, "{") || use < body || use > file.partner[body]) return std::nullopt;
    std::size_t const name = open - 1;
    if (!file.IsKind(name, CppToken::Kind::Identifier) || file.Is(name - 1, "::")) return std::nullopt;
    bool isLocal = false;
    for (std::size_t outer = file.outer[open]; outer != cNone; outer = file.outer[outer]) {
        if (!OpensNamespace(file, outer, false)) return std::nullopt;
        isLocal = isLocal || OpensNamespace(file, outer, true);
    }
    std::size_t position = 0;
    for (std::size_t index = open + 1; index < parameter; ++index)
        if (file.Is(index, ",") && file.outer[index] == open) ++position;
    return Taker{file.tokens[name].text, position, isLocal ? &file : nullptr};
}

bool IsTextParameter(TokenFile const& file, std::size_t name) {
    return name >= 3 && file.Is(name - 1, "*") && file.IsWord(name - 2, "const") &&
           file.IsWord(name - 3, "char") && (file.Is(name + 1, ",") || file.Is(name + 1, ")"));
}

// The function that got the argument as a parameter of its own.
std::optional<Taker> FunctionOfParameter(TokenFile const& file, Range argument) {
    if (argument.end - argument.begin != 1 || !file.IsKind(argument.begin, CppToken::Kind::Identifier))
        return std::nullopt;
    std::string const& name = file.tokens[argument.begin].text;
    for (std::size_t index = argument.begin; index-- > 0;) {
        if (!file.IsWord(index, name) || !IsTextParameter(file, index)) continue;
        if (std::optional<Taker> function = FunctionAround(file, index, argument.begin)) return function;
    }
    return std::nullopt;
}

class Extractor {
public:
    Extractor(std::vector<SourceFile> const& sources, std::span<KnownArgument const> known);

    Extraction Extract();

private:
    void Add(Taker const& taker);
    void LookForCalls(Taker const& taker, TokenFile const& file);
    void TakeCall(Taker const& taker, TokenFile const& file, std::size_t name);
    void TakeArgument(Taker const& taker, TokenFile const& file, Range argument);
    bool TakeText(TokenFile const& file, Range text);
    bool TakeKnown(TokenFile const& file, Range argument);
    bool TakeLiterals(TokenFile const& file, Range range);
    void TakeVariable(TextVariable const& variable, KnownArgument const& known);
    bool TakeAssignment(TokenFile const& file, std::size_t name);
    void FindUnused();
    void Report(TokenFile const& file, std::size_t token, std::string const& sentence);

    std::vector<TokenFile> m_files;
    std::span<KnownArgument const> m_known;
    std::vector<bool> m_knownIsMet;
    std::vector<Taker> m_takers;
    // By file and token, so that they come in the order of the sources.
    std::map<std::pair<std::size_t, std::size_t>, std::string> m_texts;
    std::vector<std::string> m_problems;
};

Extractor::Extractor(std::vector<SourceFile> const& sources, std::span<KnownArgument const> known)
    : m_known(known), m_knownIsMet(known.size()) {
    m_files.reserve(sources.size());
    for (SourceFile const& source : sources) {
        try {
            m_files.push_back({&source.name, ReadCppTokens(source.contents), {}, {}});
            PairBrackets(m_files.back());
        } catch (SourceError const& error) {
            m_problems.push_back(source.name + ":" + std::to_string(error.Line()) + ": " + error.what());
        }
    }
}

Extraction Extractor::Extract() {
    if (!m_problems.empty()) return {{}, m_problems};
    Add({"UFormat", 0, nullptr});
    Add({"ControlLiteral", 0, nullptr});
    for (std::size_t index = 0; index < m_takers.size(); ++index) {
        Taker const taker = m_takers[index];
        for (TokenFile const& file : m_files)
            if (!taker.file || taker.file == &file) LookForCalls(taker, file);
    }
    FindUnused();
    Extraction result{{}, m_problems};
    std::set<std::string> seen;
    for (auto const& [place, text] : m_texts) {
        if (!text.empty() && seen.insert(text).second)
            result.texts.push_back({text, *m_files[place.first].name});
    }
    return result;
}

void Extractor::Add(Taker const& taker) {
    auto const isSame = [&](Taker const& other) { return other.Key() == taker.Key(); };
    if (std::none_of(m_takers.begin(), m_takers.end(), isSame)) m_takers.push_back(taker);
}

// A member of that name is another function.
void Extractor::LookForCalls(Taker const& taker, TokenFile const& file) {
    for (std::size_t index = 0; index < file.tokens.size(); ++index) {
        if (!file.tokens[index].IsWord(taker.name)) continue;
        if (index > 0 && (file.Is(index - 1, ".") || file.Is(index - 1, "->"))) continue;
        TakeCall(taker, file, index);
    }
}

void Extractor::TakeCall(Taker const& taker, TokenFile const& file, std::size_t name) {
    std::size_t const open = name + 1;
    if (!file.Is(open, "(")) return Report(file, name, taker.name + " is named here and not called");
    std::optional<Range> const argument = ArgumentAt(file, open, taker.position);
    if (argument)
        TakeArgument(taker, file, *argument);
    else
        Report(file, name, "a call of " + taker.name + " lacks its text");
}

void Extractor::TakeArgument(Taker const& taker, TokenFile const& file, Range argument) {
    if (TakeText(file, argument) || IsParameter(file, argument) || IsMadeAlready(file, argument)) return;
    if (TakeKnown(file, argument)) return;
    if (std::optional<Taker> const function = FunctionOfParameter(file, argument)) return Add(*function);
    Report(file, argument.begin,
           "the text of " + taker.name + " is no literal: " + SpellingOf(file, argument) +
               "; write it as one, or tell in KnownArguments.cpp where its texts come from");
}

// A choice is taken from the left: the text behind the "?", then what is behind its ":".
bool Extractor::TakeText(TokenFile const& file, Range text) {
    std::vector<Range> literals;
    for (;;) {
        std::size_t const question = FindOnLevel(file, text, "?");
        if (question == text.end) break;
        std::size_t const colon = FindOnLevel(file, {question + 1, text.end}, ":");
        literals.push_back({question + 1, colon});
        text.begin = std::min(colon + 1, text.end);
    }
    literals.push_back(text);
    for (Range const& range : literals) {
        if (range.begin >= range.end) return false;
        for (std::size_t index = range.begin; index < range.end; ++index)
            if (!file.IsKind(index, CppToken::Kind::Literal)) return false;
    }
    for (Range const& range : literals) TakeLiterals(file, range);
    return true;
}

// All literals of a range; those in a row are one text. Returns whether there are any.
bool Extractor::TakeLiterals(TokenFile const& file, Range range) {
    bool found = false;
    auto const fileIndex = static_cast<std::size_t>(&file - m_files.data());
    for (std::size_t index = range.begin; index < range.end; ++index) {
        if (!file.IsKind(index, CppToken::Kind::Literal)) continue;
        std::string& text = m_texts[{fileIndex, index}];
        text = file.tokens[index].text;
        while (index + 1 < range.end && file.IsKind(index + 1, CppToken::Kind::Literal))
            text += file.tokens[++index].text;
        found = true;
    }
    return found;
}

bool Extractor::TakeKnown(TokenFile const& file, Range argument) {
    std::string const spelling = SpellingOf(file, argument);
    for (std::size_t index = 0; index < m_known.size(); ++index) {
        KnownArgument const& known = m_known[index];
        if (known.file != *file.name || known.expression != spelling) continue;
        if (!m_knownIsMet[index])
            for (TextVariable const& variable : known.variables) TakeVariable(variable, known);
        m_knownIsMet[index] = true;
        return true;
    }
    return false;
}

void Extractor::TakeVariable(TextVariable const& variable, KnownArgument const& known) {
    bool found = false;
    for (TokenFile const& file : m_files) {
        if (!variable.file.empty() && variable.file != *file.name) continue;
        for (std::size_t index = 0; index < file.tokens.size(); ++index)
            if (file.tokens[index].IsWord(variable.name) && TakeAssignment(file, index)) found = true;
    }
    if (!found)
        m_problems.push_back("no text is assigned to " + std::string(variable.name) + ", from which " +
                             std::string(known.file) + " takes its texts");
}

// Returns whether anything is assigned to the variable at `name`.
bool Extractor::TakeAssignment(TokenFile const& file, std::size_t name) {
    std::size_t index = name + 1;
    if (file.Is(index, "[")) index = file.partner[index] + 1;
    if (!file.Is(index, "=")) return false;
    std::size_t const outer = file.outer[name];
    Range value{index + 1, outer == cNone ? file.tokens.size() : file.partner[outer]};
    value.end = std::min(FindOnLevel(file, value, ";"), FindOnLevel(file, value, ","));
    bool const taken = file.Is(value.begin, "{") ? TakeLiterals(file, value) : TakeText(file, value);
    if (!taken)
        Report(file, name,
               file.tokens[name].text + " is assigned what is no literal: " + SpellingOf(file, value));
    return true;
}

void Extractor::FindUnused() {
    for (std::size_t index = 0; index < m_known.size(); ++index)
        if (!m_knownIsMet[index])
            m_problems.push_back("nothing in " + std::string(m_known[index].file) + " takes its text from " +
                                 std::string(m_known[index].expression) +
                                 " any more; take that line out of KnownArguments.cpp");
}

void Extractor::Report(TokenFile const& file, std::size_t token, std::string const& sentence) {
    m_problems.push_back(*file.name + ":" + std::to_string(file.tokens[token].line) + ": " + sentence);
}

} // namespace

Extraction ExtractTexts(std::vector<SourceFile> const& sources, std::span<KnownArgument const> known) {
    return Extractor(sources, known).Extract();
}

} // namespace TranslationChecker
