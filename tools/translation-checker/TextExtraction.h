#pragma once

#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace TranslationChecker {

// Finds the texts of a program in its sources: the literals that reach UFormat or ControlLiteral.
//
// A text is a literal, several in a row, or a choice of such by ?:. A function that hands a parameter
// `char const* name` on as the text, as "Text(char const* text)" may do, is found out, and its own calls are
// looked at in the same way: those of its file when it stands in an unnamed namespace, otherwise all. What
// was made by LocalizedStrings or MakeLocalString, or is moved, is no text of the call any more. Any other
// argument has to be known.

struct SourceFile {
    // From the root of the sources, such as "dialogs/ListRows.cpp".
    std::string name;
    std::string contents;
};

// A variable or member that texts are assigned to: all literals in braces, or one text.
struct TextVariable {
    std::string_view name;
    // Where it is assigned; empty for anywhere.
    std::string_view file = {};
};

// An argument that is no literal, and where its texts come from. There are none when they have been found
// before it, in the calls of another function.
struct KnownArgument {
    std::string_view file;
    // Without blanks, such as "row.text".
    std::string_view expression;
    std::vector<TextVariable> variables = {};
};

struct FoundText {
    std::string text;
    std::string file;

    friend bool operator==(FoundText const&, FoundText const&) = default;
};

struct Extraction {
    // In the order of the files and lines where they stand, the empty one left out; of equal texts the first.
    std::vector<FoundText> texts;
    // One sentence each, "file:line: " in front where there is a line. The texts are complete when there are
    // none.
    std::vector<std::string> problems;
};

// A known argument that is never met and a variable that no text is assigned to are problems as well.
Extraction ExtractTexts(std::vector<SourceFile> const& sources, std::span<KnownArgument const> known);

// Those of the program.
std::span<KnownArgument const> KnownArguments();

} // namespace TranslationChecker
