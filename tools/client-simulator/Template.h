#pragma once

#include "tools/client-simulator/Duration.h"

#include <chrono>
#include <cstddef>
#include <filesystem>
#include <map>
#include <set>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

namespace ClientSimulator {

// What substitutions take their values from.
struct RenderContext {
    std::chrono::sys_seconds now;
    std::string temporaryDirectory;
    std::filesystem::path scenarioDirectory;
    std::map<std::string, std::string> variables;
};

// A text with a substitution that nobody can carry out; `offset` is where in the text its brace stands.
class TemplateError : public std::runtime_error {
public:
    TemplateError(std::size_t where, std::string const& what) : std::runtime_error(what), offset(where) {}

    std::size_t offset;
};

// A substitution that has no value just now: an unset environment variable, a file that cannot be read.
class RenderError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

// A text with substitutions in braces:
//   {now} {now+10s} {now-90m}   a time, counted from the moment of rendering, as documents carry it
//   {duration 90s}              a length of time, as documents carry it: PT1M30S
//   {tempdir}                   the directory of this run
//   {env NAME}                  a variable of the simulator's own environment
//   {base64 TEXT}               the Base64 form of the text
//   {base64-file PATH}          that of a file's bytes; the path counts from the scenario's directory
//   {repeat N TEXT}             the text N times
//   {newline}                   a line feed
//   {NAME}                      a variable
// Two opening braces stand for one; a closing brace outside a substitution for itself.
class Template {
public:
    // In an XML text, values that are known at rendering only are escaped, unless they stand in a CDATA
    // section.
    enum class Kind { Plain, Xml };

    Template() = default;

    // Throws TemplateError. `variables` are the names that may stand for themselves.
    static Template Parse(std::string_view text, Kind kind, std::set<std::string> const& variables);
    // Bytes that stand for themselves, braces and all.
    static Template Literal(std::string_view bytes);

    void Append(Template const& other);
    // This plain text as the content of an XML element: all of it escaped.
    Template AsXmlText() const;

    // Throws RenderError.
    std::string Render(RenderContext const& context) const;
    // The text with an "x" for each value that only rendering knows; as many lines as the source has.
    std::string WithPlaceholders() const;

private:
    enum class Source { Text, LineFeed, Now, TemporaryDirectory, Environment, Base64File, Variable };

    struct Piece {
        Source source = Source::Text;
        std::string text = {};
        Microseconds offset{};
        bool escape = false;
    };

    static Piece ParseSubstitution(std::string_view body, std::set<std::string> const& variables);
    static std::string Value(Piece const& piece, RenderContext const& context);
    void AppendText(std::string_view text);

    std::vector<Piece> m_pieces;
};

// `text` with the three characters escaped that would be markup.
std::string EscapeXml(std::string_view text);

} // namespace ClientSimulator
