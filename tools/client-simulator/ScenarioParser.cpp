#include "tools/client-simulator/Documents.h"
#include "tools/client-simulator/LineReader.h"
#include "tools/client-simulator/ReadFile.h"
#include "tools/client-simulator/Scenario.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cstdint>
#include <cstring>
#include <set>

// The parser walks over the scenario's lines once. A directive takes its own line and then those that belong
// to it: a block up to its closing word, or the lines that are indented deeper than itself. Every failure
// leaves by Fail or FailAt, so that each carries the line of its cause.

namespace ClientSimulator {

namespace {

constexpr std::string_view cLetters = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz";
constexpr std::string_view cNameCharacters =
    "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789_";

struct SignalName {
    std::string_view name;
    int number;
};
constexpr std::array<SignalName, 8> cSignals{{{"HUP", 1},
                                              {"INT", 2},
                                              {"ABRT", 6},
                                              {"KILL", 9},
                                              {"SEGV", 11},
                                              {"PIPE", 13},
                                              {"ALRM", 14},
                                              {"TERM", 15}}};

bool IsName(std::string_view text) {
    return !text.empty() && text.find_first_not_of(cNameCharacters) == text.npos &&
           cLetters.find(text.front()) != cLetters.npos;
}

bool IsMessageName(std::string_view text) {
    return IsName(text) && text.front() >= 'A' && text.front() <= 'Z';
}

std::vector<std::string> SplitPath(std::string_view path) {
    std::vector<std::string> names;
    for (;;) {
        std::size_t const slash = path.find('/');
        names.emplace_back(path.substr(0, slash));
        if (slash == path.npos) return names;
        path.remove_prefix(slash + 1);
    }
}

std::size_t Indentation(std::string_view line) {
    return std::min(line.find_first_not_of(" \t"), line.size());
}

bool IsBlankOrComment(std::string_view line) {
    std::string_view const text = line.substr(Indentation(line));
    return text.empty() || text.front() == '#';
}

template <typename Number>
std::optional<Number> ParseNumber(std::string_view text, int radix) {
    Number value = 0;
    auto const [end, error] = std::from_chars(text.data(), text.data() + text.size(), value, radix);
    if (error != std::errc() || end != text.data() + text.size() || text.empty()) return std::nullopt;
    return value;
}

int LineOf(int first, std::string_view text, std::size_t offset) {
    std::string_view const before = text.substr(0, std::min(offset, text.size()));
    return first + static_cast<int>(std::count(before.begin(), before.end(), '\n'));
}

// Builds the document of "send NAME" out of its fields.
class DocumentBuilder {
public:
    DocumentBuilder(std::string root, std::string message) : m_base{std::move(root), std::move(message)} {
        for (std::string const& name : m_base) Open(name);
    }

    // False when the field, or a group that it lies in, stood before and was left since.
    bool Add(std::string const& path, Template const& value) {
        std::vector<std::string> names = m_base;
        for (std::string& name : SplitPath(path)) names.push_back(std::move(name));
        std::size_t common = 0;
        while (common < m_open.size() && common + 1 < names.size() && m_open[common] == names[common])
            ++common;
        while (m_open.size() > common) Close();
        for (std::size_t i = common; i < names.size(); ++i)
            if (!Open(names[i])) return false;
        m_document.Append(value.AsXmlText());
        EndTag();
        return true;
    }

    Template Finish() {
        while (!m_open.empty()) Close();
        return m_document;
    }

private:
    bool Open(std::string const& name) {
        if (!m_open.empty()) NewLine();
        m_document.Append(Template::Literal('<' + name + '>'));
        m_open.push_back(name);
        std::string path;
        for (std::string const& part : m_open) path += part + '/';
        return m_seen.insert(path).second;
    }
    void Close() {
        std::string const name = m_open.back();
        m_open.pop_back();
        NewLine();
        m_document.Append(Template::Literal("</" + name + '>'));
    }
    void EndTag() {
        m_document.Append(Template::Literal("</" + m_open.back() + '>'));
        m_open.pop_back();
    }
    void NewLine() { m_document.Append(Template::Literal('\n' + std::string(m_open.size(), '\t'))); }

    std::vector<std::string> m_base;
    std::vector<std::string> m_open;
    std::set<std::string> m_seen;
    Template m_document;
};

class ScenarioParser {
public:
    ScenarioParser(std::string_view text, std::filesystem::path const& file) : m_lines(SplitLines(text)) {
        m_scenario.file = file;
    }

    Scenario Run() {
        while (NextLine()) {
            if (Indentation(Current()) != 0)
                Fail("an indented line belongs to no directive; expected fields only below 'send NAME', "
                     "'expect "
                     "NAME' and 'ignore NAME'");
            ReadDirective();
        }
        return std::move(m_scenario);
    }

private:
    struct Block {
        std::string text;
        int line;
    };

    [[noreturn]] void FailAt(int line, std::string const& what) const {
        throw ScenarioError(m_scenario.file, line, what);
    }
    [[noreturn]] void Fail(std::string const& what) const { FailAt(m_line, what); }

    std::string_view Current() const { return m_lines[static_cast<std::size_t>(m_line) - 1]; }

    // Goes on to the next line that says something.
    bool NextLine() {
        while (static_cast<std::size_t>(m_line) < m_lines.size()) {
            ++m_line;
            if (!IsBlankOrComment(Current())) return true;
        }
        return false;
    }

    // Goes on to the next line if it is indented deeper than a directive.
    bool NextLineBelow(std::size_t indentation) {
        int const before = m_line;
        if (NextLine() && Indentation(Current()) > indentation) return true;
        m_line = before;
        return false;
    }

    void ReadDirective() {
        struct Directive {
            std::string_view name;
            void (ScenarioParser::*read)(LineReader&);
        };
        static constexpr std::array<Directive, 9> directives{
            {{"send", &ScenarioParser::ReadSend},
             {"together", &ScenarioParser::ReadTogether},
             {"expect", &ScenarioParser::ReadExpect},
             {"ignore", &ScenarioParser::ReadIgnore},
             {"pause", &ScenarioParser::ReadPause},
             {"close", &ScenarioParser::ReadClose},
             {"say", &ScenarioParser::ReadSay},
             {"let", &ScenarioParser::ReadLet},
             {"environment", &ScenarioParser::ReadEnvironment}}};
        LineReader reader(Current());
        std::string_view const word = reader.TakeWord();
        for (Directive const& directive : directives)
            if (word == directive.name) return (this->*directive.read)(reader);
        Fail("'" + std::string(word) +
             "' is no directive; expected send, together, expect, ignore, pause, close, say, let or "
             "environment");
    }

    template <typename Action>
    void AddStep(int line, Action action) {
        m_scenario.steps.push_back({line, std::move(action)});
    }

    // Pieces of a line.

    void EndLine(LineReader const& reader) const {
        if (!reader.AtEnd())
            Fail("'" + std::string(reader.Rest()) + "' is too much; expected the end of the line");
    }

    Microseconds TakeDuration(LineReader& reader) const {
        std::string_view const word = reader.TakeWord();
        std::optional<Microseconds> const duration = ParseDuration(word);
        if (!duration)
            Fail((word.empty() ? std::string("a length of time is missing")
                               : "'" + std::string(word) + "' is no length of time") +
                 "; expected, for example, 10s, 250ms or 1h30m");
        return *duration;
    }

    std::optional<Microseconds> TakeWithin(LineReader& reader) const {
        if (!reader.Take("within")) return std::nullopt;
        return TakeDuration(reader);
    }

    Template ParseTemplate(std::string_view text, Template::Kind kind, int line) const {
        try {
            return Template::Parse(text, kind, m_variables);
        } catch (TemplateError const& error) {
            FailAt(LineOf(line, text, error.offset), error.what());
        }
    }

    // A value is the rest of the line, or a quoted text.
    Template TakeValue(LineReader& reader) const {
        if (!reader.Rest().starts_with('"'))
            return ParseTemplate(reader.TakeRest(), Template::Kind::Plain, m_line);
        std::optional<std::string> const text = reader.TakeQuoted();
        if (!text) Fail("the quoted text does not end; expected a '\"' on the same line");
        EndLine(reader);
        return ParseTemplate(*text, Template::Kind::Plain, m_line);
    }

    // Takes "<<WORD" and the lines up to WORD, or, when the rest of the line begins like XML, that rest.
    Block TakeBlock(LineReader& reader) {
        if (!reader.Rest().starts_with("<<")) return {std::string(reader.TakeRest()), m_line};
        std::string const word(reader.TakeRest().substr(2));
        if (!IsName(word)) Fail("'<<" + word + "' opens no block; expected a word behind it, as in <<END");
        int const opened = m_line;
        Block block{"", m_line + 1};
        while (static_cast<std::size_t>(m_line) < m_lines.size()) {
            ++m_line;
            if (LineReader(Current()).Rest() == word) {
                if (!block.text.empty()) block.text.pop_back();
                return block;
            }
            block.text += Current();
            block.text += '\n';
        }
        FailAt(opened, "the block does not end; expected a line with the one word " + word);
    }

    Template CheckedDocument(Block const& block) const {
        Template document = ParseTemplate(block.text, Template::Kind::Xml, block.line);
        std::string const text = document.WithPlaceholders();
        if (std::optional<DocumentProblem> const problem = FindProblem(text))
            FailAt(LineOf(block.line, text, problem->offset),
                   "bad document: " + problem->what + " ('send unchecked' sends it all the same)");
        return document;
    }

    void TakeRoot(LineReader& reader, std::string& root) const {
        if (!reader.Take("in")) return;
        std::string_view const word = reader.TakeWord();
        if (!IsName(word)) Fail("'in' names no root element; expected, for example, in UIToClient");
        root = word;
    }

    std::string TakePath(LineReader& reader) const {
        std::string_view const path = reader.TakeWord();
        for (std::string const& name : SplitPath(path))
            if (!IsName(name))
                Fail("'" + std::string(path) + "' is no field; expected a name like ID, or a path like A/B");
        return std::string(path);
    }

    // send

    void ReadSend(LineReader& reader) {
        int const line = m_line;
        Send send;
        send.items.push_back(TakeItem(reader));
        AddStep(line, std::move(send));
    }

    void ReadTogether(LineReader& reader) {
        EndLine(reader);
        int const line = m_line;
        Send send;
        while (NextLine()) {
            LineReader inner(Current());
            if (inner.Take("end")) {
                EndLine(inner);
                if (send.items.empty()) FailAt(line, "'together' has nothing to send; expected 'send' lines");
                return AddStep(line, std::move(send));
            }
            if (!inner.Take("send"))
                Fail("'" + std::string(inner.Rest()) + "' cannot stand here; expected 'send' or 'end'");
            send.items.push_back(TakeItem(inner));
        }
        FailAt(line, "'together' does not end; expected a line with the one word end");
    }

    Send::Item TakeItem(LineReader& reader) {
        if (reader.Take("unchecked")) {
            if (!reader.Rest().starts_with("<"))
                Fail("'send unchecked' has no text; expected <<END, or a text that begins with '<'");
            Block const block = TakeBlock(reader);
            return {ParseTemplate(block.text, Template::Kind::Plain, block.line), true};
        }
        if (reader.Take("bytes")) return {TakeBytes(reader), false};
        if (reader.Rest().starts_with("<")) return {CheckedDocument(TakeBlock(reader)), true};
        return {TakeMessage(reader), true};
    }

    Template TakeMessage(LineReader& reader) {
        std::size_t const indentation = Indentation(Current());
        std::string const name(reader.TakeWord());
        if (!IsMessageName(name))
            Fail("'" + name +
                 "' cannot be sent; expected a message's name like ActionRequest, <<END, a document that "
                 "begins "
                 "with '<', 'unchecked' or 'bytes'");
        std::string root = "ClientToUI";
        TakeRoot(reader, root);
        EndLine(reader);
        DocumentBuilder builder(root, name);
        while (NextLineBelow(indentation)) {
            LineReader field(Current());
            std::string const path = TakePath(field);
            if (!field.Take("=")) Fail("the field " + path + " has no value; expected " + path + " = VALUE");
            if (!builder.Add(path, TakeValue(field)))
                Fail("the field " + path +
                     " stands twice, or its group was left before; expected each once (a <<END block can "
                     "hold any "
                     "document)");
        }
        return builder.Finish();
    }

    Template TakeBytes(LineReader& reader) const {
        if (reader.AtEnd()) Fail("'send bytes' has no bytes; expected, for example, u32:5 \"text\" 0d 0a");
        Template bytes;
        while (!reader.AtEnd()) bytes.Append(TakeBytePiece(reader));
        return bytes;
    }

    Template TakeBytePiece(LineReader& reader) const {
        if (reader.Rest().starts_with('"')) {
            std::optional<std::string> const text = reader.TakeQuoted();
            if (!text) Fail("the quoted text does not end; expected a '\"' on the same line");
            return ParseTemplate(*text, Template::Kind::Plain, m_line);
        }
        std::string_view const word = reader.TakeWord();
        if (word.starts_with("u32:"))
            if (std::optional<std::uint32_t> const number = ParseNumber<std::uint32_t>(word.substr(4), 10)) {
                std::string bytes(sizeof *number, '\0');
                std::memcpy(bytes.data(), &*number, sizeof *number);
                return Template::Literal(bytes);
            }
        if (word.size() == 2)
            if (std::optional<unsigned> const number = ParseNumber<unsigned>(word, 16))
                return Template::Literal(std::string(1, static_cast<char>(*number)));
        Fail("'" + std::string(word) +
             "' are no bytes; expected two hexadecimal digits, u32:NUMBER or a text in double quotes");
    }

    // expect and ignore

    void ReadExpect(LineReader& reader) {
        if (reader.Take("nothing")) return ReadExpectNothing(reader);
        if (reader.Take("end")) return ReadExpectEnd(reader);
        if (reader.Take("exit")) return ReadExpectExit(reader, false);
        if (reader.Take("signal")) return ReadExpectExit(reader, true);
        if (reader.Take("document")) return ReadExpectDocument(reader, false);
        if (reader.Take("exact")) return ReadExpectDocument(reader, true);
        int const line = m_line;
        std::size_t const indentation = Indentation(Current());
        ExpectMessage expect;
        TakePatternName(reader, expect.pattern);
        expect.within = TakeWithin(reader);
        EndLine(reader);
        ReadChecks(expect.pattern, indentation);
        AddStep(line, std::move(expect));
    }

    void ReadExpectNothing(LineReader& reader) {
        if (!reader.Take("for"))
            Fail("'expect nothing' has no time; expected, for example, expect nothing for 3s");
        Microseconds const duration = TakeDuration(reader);
        EndLine(reader);
        AddStep(m_line, ExpectNothing{duration});
    }

    void ReadExpectEnd(LineReader& reader) {
        std::optional<Microseconds> const within = TakeWithin(reader);
        EndLine(reader);
        AddStep(m_line, ExpectEnd{within});
    }

    void ReadExpectExit(LineReader& reader, bool signal) {
        std::string_view const word = reader.TakeWord();
        std::optional<int> number = ParseNumber<int>(word, 10);
        if (signal)
            for (SignalName const& known : cSignals)
                if (known.name == word) number = known.number;
        if (!number || *number < 0 || *number > 255)
            Fail("'" + std::string(word) +
                 (signal ? "' is no signal; expected a number, or a name such as PIPE, TERM or SEGV"
                         : "' is no exit status; expected a number from 0 to 255"));
        ExpectExit expect{*number, signal, TakeWithin(reader)};
        EndLine(reader);
        AddStep(m_line, expect);
    }

    void ReadExpectDocument(LineReader& reader, bool exact) {
        int const line = m_line;
        ExpectDocument expect{{}, exact, TakeWithin(reader)};
        if (!reader.Rest().starts_with("<"))
            Fail("the expected document is missing; expected <<END, or a document that begins with '<'");
        Block const block = TakeBlock(reader);
        if (exact)
            expect.document = ParseTemplate(block.text, Template::Kind::Plain, block.line);
        else
            expect.document = CheckedDocument(block);
        AddStep(line, std::move(expect));
    }

    void ReadIgnore(LineReader& reader) {
        int const line = m_line;
        std::size_t const indentation = Indentation(Current());
        Ignore ignore;
        TakePatternName(reader, ignore.pattern);
        EndLine(reader);
        ReadChecks(ignore.pattern, indentation);
        AddStep(line, std::move(ignore));
    }

    void TakePatternName(LineReader& reader, MessagePattern& pattern) const {
        std::string_view const word = reader.TakeWord();
        if (!IsMessageName(word) && word != "any")
            Fail("'" + std::string(word) +
                 "' cannot be waited for; expected a message's name like ActionTaken, or one of any, "
                 "document, "
                 "exact, nothing, end, exit and signal");
        if (word != "any") pattern.name = word;
        TakeRoot(reader, pattern.root);
    }

    void ReadChecks(MessagePattern& pattern, std::size_t indentation) {
        while (NextLineBelow(indentation)) {
            LineReader reader(Current());
            FieldCheck check;
            check.path = TakePath(reader);
            TakeCondition(reader, check);
            EndLine(reader);
            pattern.fields.push_back(std::move(check));
        }
    }

    void TakeCondition(LineReader& reader, FieldCheck& check) const {
        std::string_view const word = reader.TakeWord();
        if (word == "present")
            check.kind = FieldCheck::Kind::Present;
        else if (word == "absent")
            check.kind = FieldCheck::Kind::Absent;
        else if (word == "near")
            TakeNear(reader, check);
        else if (word == "=" || word == "!=" || word == "contains") {
            check.kind = word == "="    ? FieldCheck::Kind::Equal
                         : word == "!=" ? FieldCheck::Kind::NotEqual
                                        : FieldCheck::Kind::Contains;
            check.value = TakeValue(reader);
        } else
            Fail("'" + std::string(word) +
                 "' is no condition; expected =, !=, contains, near, present or absent behind " + check.path);
    }

    // "near TIME within DURATION"
    void TakeNear(LineReader& reader, FieldCheck& check) const {
        std::string_view const rest = reader.TakeRest();
        std::size_t const within = rest.rfind(" within ");
        if (within == rest.npos)
            Fail("'near' has no tolerance; expected, for example, " + check.path +
                 " near {now+1h} within 5s");
        LineReader tolerance(rest.substr(within + 8));
        check.kind = FieldCheck::Kind::Near;
        check.value = ParseTemplate(rest.substr(0, within), Template::Kind::Plain, m_line);
        check.tolerance = TakeDuration(tolerance);
        EndLine(tolerance);
    }

    // The small ones

    void ReadPause(LineReader& reader) {
        Microseconds const duration = TakeDuration(reader);
        EndLine(reader);
        AddStep(m_line, Pause{duration});
    }

    void ReadClose(LineReader& reader) {
        bool const output = reader.Take("output");
        EndLine(reader);
        AddStep(m_line, Close{output});
    }

    void ReadSay(LineReader& reader) { AddStep(m_line, Say{TakeValue(reader)}); }

    void ReadLet(LineReader& reader) {
        static constexpr std::array<std::string_view, 7> taken{"now",    "tempdir",     "newline", "duration",
                                                               "base64", "base64-file", "env"};
        std::string const name(reader.TakeWord());
        if (!IsName(name) || std::find(taken.begin(), taken.end(), name) != taken.end() || name == "repeat")
            Fail("'" + name +
                 "' cannot be given a value; expected a name of your own, as in let deadline = {now+10s}");
        if (!reader.Take("=")) Fail("'let' gives no value; expected let " + name + " = VALUE");
        AddStep(m_line, Let{name, TakeValue(reader)});
        m_variables.insert(name);
    }

    void ReadEnvironment(LineReader& reader) {
        if (!m_scenario.steps.empty())
            Fail("'environment' comes too late, the process has been started; expected it before every step");
        std::optional<EnvironmentChange> const change = ParseEnvironmentChange(reader.TakeRest());
        if (!change) Fail("'environment' names no variable; expected NAME=VALUE, or NAME to take it out");
        m_scenario.environment.push_back(*change);
    }

    std::vector<std::string_view> m_lines;
    int m_line = 0;
    std::set<std::string> m_variables;
    Scenario m_scenario;
};

std::string Located(std::filesystem::path const& file, int line, std::string const& what) {
    return file.string() + (line > 0 ? ":" + std::to_string(line) : "") + ": " + what;
}

} // namespace

ScenarioError::ScenarioError(std::filesystem::path const& file, int line, std::string const& what)
    : std::runtime_error(Located(file, line, what)) {
}

std::optional<EnvironmentChange> ParseEnvironmentChange(std::string_view text) {
    std::size_t const equal = text.find('=');
    EnvironmentChange change{std::string(text.substr(0, equal)), std::nullopt};
    if (change.name.empty() || change.name.find_first_of(" \t") != std::string::npos) return std::nullopt;
    if (equal != text.npos) change.value = text.substr(equal + 1);
    return change;
}

Scenario ParseScenario(std::string_view text, std::filesystem::path const& file) {
    return ScenarioParser(text, file).Run();
}

Scenario LoadScenario(std::filesystem::path const& file) {
    std::optional<std::string> const text = ReadFile(file);
    if (!text) throw ScenarioError(file, 0, "the scenario cannot be read; expected a readable file");
    return ParseScenario(*text, file);
}

} // namespace ClientSimulator
