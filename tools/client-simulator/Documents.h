#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace ClientSimulator {

struct DocumentProblem {
    std::size_t offset;
    std::string what;
};

// What keeps the process from reading a document as its author means it: XML that is not well-formed, or one
// of the forms that the process's reader does not know, such as a self-closing element. Null for a good
// document.
std::optional<DocumentProblem> FindProblem(std::string_view document);

// The document indented for a reader, with texts of more than 400 bytes cut short. What is no XML comes back
// on one line, unprintable bytes as \xNN.
std::string ReadableDocument(std::string_view document);

// The names of the messages in a document, "ActionTaken" or "RemindTime, RemindInterval"; for a text that
// holds none, a few words in parentheses that say so.
std::string MessageNames(std::string_view document);

// How `actual` differs from `expected` in element names, their order, attributes and texts; white space
// between elements counts for nothing, nor does the form of an escape. One sentence a difference, at most
// five; empty when there is none.
std::vector<std::string> DocumentDifferences(std::string_view expected, std::string_view actual);

// Where two texts differ as bytes; empty when they do not.
std::vector<std::string> TextDifferences(std::string_view expected, std::string_view actual);

// Quotes a text for an error message: line feeds as \n, other unprintable bytes as \xNN; a long one is cut
// short.
std::string Quoted(std::string_view text);

} // namespace ClientSimulator
