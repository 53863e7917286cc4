#include "tools/client-simulator/Template.h"

#include "tools/client-simulator/ReadFile.h"
#include "tools/client-simulator/TimeText.h"

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <utility>

// A template is a list of pieces. Substitutions with a value that never changes are carried out by the parser
// and become plain text, so that they take part in the check of the document's form.

namespace ClientSimulator {

namespace {

constexpr std::size_t cLongestRepeat = std::size_t{64} << 20;

std::string Base64(std::string_view bytes) {
    constexpr std::string_view alphabet = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
    std::string text;
    text.reserve((bytes.size() + 2) / 3 * 4);
    for (std::size_t i = 0; i < bytes.size(); i += 3) {
        std::uint32_t group = 0;
        for (std::size_t j = 0; j < 3; ++j)
            group = group << 8 | (i + j < bytes.size() ? static_cast<unsigned char>(bytes[i + j]) : 0u);
        for (std::size_t j = 0; j < 4; ++j)
            text += i + j <= bytes.size() ? alphabet[group >> (18 - 6 * j) & 63] : '=';
    }
    return text;
}

std::string ReadWholeFile(std::filesystem::path const& path) {
    std::optional<std::string> text = ReadFile(path);
    if (!text) throw RenderError("the file " + path.string() + " cannot be read");
    return std::move(*text);
}

std::string Repeated(std::string_view arguments) {
    std::size_t count = 0;
    std::size_t digits = 0;
    while (digits < arguments.size() && digits < 9 && arguments[digits] >= '0' && arguments[digits] <= '9')
        count = count * 10 + static_cast<std::size_t>(arguments[digits++] - '0');
    if (digits == 0 || digits + 1 >= arguments.size() || arguments[digits] != ' ')
        throw TemplateError(0, "{repeat} needs a number and a text; expected, for example, {repeat 1000 x}");
    std::string_view const text = arguments.substr(digits + 1);
    if (count > cLongestRepeat / text.size())
        throw TemplateError(0, "{repeat} makes a text of more than 64 MiB; expected less");
    std::string result;
    result.reserve(count * text.size());
    for (std::size_t i = 0; i < count; ++i) result += text;
    return result;
}

// The argument of a substitution named `name` and a space, or null.
bool TakeArgument(std::string_view body, std::string_view name, std::string_view& argument) {
    if (!body.starts_with(name) || body.size() <= name.size() + 1 || body[name.size()] != ' ') return false;
    argument = body.substr(name.size() + 1);
    return true;
}

Microseconds OffsetFromNow(std::string_view text) {
    if (text.empty()) return Microseconds(0);
    std::optional<Microseconds> const amount = ParseDuration(text.substr(1));
    if (!amount)
        throw TemplateError(0, "'" + std::string(text.substr(1)) +
                                   "' is no length of time; expected, for example, {now+10s} or {now-1h30m}");
    return text.front() == '-' ? -*amount : *amount;
}

std::string UnknownSubstitution(std::string_view body) {
    return "{" + std::string(body) +
           "} is no substitution; expected {now}, {now+10s}, {duration 90s}, {tempdir}, {env NAME}, "
           "{base64 TEXT}, {base64-file PATH}, {repeat N TEXT}, {newline} or a name that an earlier 'let' "
           "gave a value (write {{ for a plain brace)";
}

// Follows whether a place of an XML text lies in a CDATA section.
class CDataWatch {
public:
    void Pass(std::string_view text) {
        for (;;) {
            std::string_view const mark = m_inside ? "]]>" : "<![CDATA[";
            std::size_t const place = text.find(mark);
            if (place == text.npos) return;
            text.remove_prefix(place + mark.size());
            m_inside = !m_inside;
        }
    }
    bool Inside() const { return m_inside; }

private:
    bool m_inside = false;
};

} // namespace

std::string EscapeXml(std::string_view text) {
    std::string result;
    for (char const c : text) {
        if (c == '&')
            result += "&amp;";
        else if (c == '<')
            result += "&lt;";
        else if (c == '>')
            result += "&gt;";
        else
            result += c;
    }
    return result;
}

Template Template::Literal(std::string_view bytes) {
    Template result;
    result.AppendText(bytes);
    return result;
}

void Template::AppendText(std::string_view text) {
    if (m_pieces.empty() || m_pieces.back().source != Source::Text) m_pieces.push_back({});
    m_pieces.back().text += text;
}

void Template::Append(Template const& other) {
    for (Piece const& piece : other.m_pieces) {
        if (piece.source == Source::Text)
            AppendText(piece.text);
        else
            m_pieces.push_back(piece);
    }
}

Template Template::AsXmlText() const {
    Template result = *this;
    for (Piece& piece : result.m_pieces) {
        if (piece.source == Source::Text)
            piece.text = EscapeXml(piece.text);
        else
            piece.escape = true;
    }
    return result;
}

Template::Piece Template::ParseSubstitution(std::string_view body, std::set<std::string> const& variables) {
    std::string_view argument;
    if (body.starts_with("now") && (body.size() == 3 || body[3] == '+' || body[3] == '-'))
        return {Source::Now, {}, OffsetFromNow(body.substr(3))};
    if (body == "tempdir") return {Source::TemporaryDirectory};
    if (body == "newline") return {Source::LineFeed};
    if (TakeArgument(body, "duration", argument)) {
        bool const negative = argument.starts_with('-');
        std::optional<Microseconds> const amount = ParseDuration(argument.substr(negative ? 1 : 0));
        if (!amount)
            throw TemplateError(0, "'" + std::string(argument) +
                                       "' is no length of time; expected, for example, {duration 1h30m}");
        return {Source::Text, XmlDuration(negative ? -*amount : *amount)};
    }
    if (TakeArgument(body, "base64", argument)) return {Source::Text, Base64(argument)};
    if (TakeArgument(body, "repeat", argument)) return {Source::Text, Repeated(argument)};
    if (TakeArgument(body, "env", argument)) return {Source::Environment, std::string(argument)};
    if (TakeArgument(body, "base64-file", argument)) return {Source::Base64File, std::string(argument)};
    if (variables.contains(std::string(body))) return {Source::Variable, std::string(body)};
    throw TemplateError(0, UnknownSubstitution(body));
}

Template Template::Parse(std::string_view text, Kind kind, std::set<std::string> const& variables) {
    Template result;
    CDataWatch cdata;
    std::size_t at = 0;
    while (at < text.size()) {
        std::size_t const brace = std::min(text.find('{', at), text.size());
        result.AppendText(text.substr(at, brace - at));
        cdata.Pass(text.substr(at, brace - at));
        if (brace == text.size()) break;
        if (text.substr(brace).starts_with("{{")) {
            result.AppendText("{");
            at = brace + 2;
            continue;
        }
        std::size_t const end = text.find_first_of("}\n", brace);
        if (end == text.npos || text[end] != '}')
            throw TemplateError(brace, "a substitution does not end; expected '}' on the same line (write {{ "
                                       "for a plain brace)");
        try {
            Piece piece = ParseSubstitution(text.substr(brace + 1, end - brace - 1), variables);
            piece.escape = kind == Kind::Xml && !cdata.Inside();
            if (piece.source == Source::Text)
                result.AppendText(piece.text);
            else
                result.m_pieces.push_back(std::move(piece));
        } catch (TemplateError const& error) {
            throw TemplateError(brace, error.what());
        }
        at = end + 1;
    }
    return result;
}

std::string Template::Value(Piece const& piece, RenderContext const& context) {
    switch (piece.source) {
    case Source::Text: break;
    case Source::Now: return TimeText(std::chrono::floor<std::chrono::seconds>(context.now + piece.offset));
    case Source::LineFeed: return "\n";
    case Source::TemporaryDirectory: return context.temporaryDirectory;
    case Source::Base64File: return Base64(ReadWholeFile(context.scenarioDirectory / piece.text));
    case Source::Environment:
        if (char const* const value = std::getenv(piece.text.c_str())) return value;
        throw RenderError("the environment has no variable " + piece.text);
    case Source::Variable:
        if (auto const found = context.variables.find(piece.text); found != context.variables.end())
            return found->second;
        throw RenderError("the variable " + piece.text + " has no value yet");
    }
    return piece.text;
}

std::string Template::Render(RenderContext const& context) const {
    std::string result;
    for (Piece const& piece : m_pieces) {
        if (piece.source == Source::Text)
            result += piece.text;
        else
            result += piece.escape ? EscapeXml(Value(piece, context)) : Value(piece, context);
    }
    return result;
}

std::string Template::WithPlaceholders() const {
    std::string result;
    for (Piece const& piece : m_pieces) result += piece.source == Source::Text ? piece.text : "x";
    return result;
}

} // namespace ClientSimulator
