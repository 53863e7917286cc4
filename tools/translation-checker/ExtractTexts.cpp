#include "tools/translation-checker/ReadFile.h"
#include "tools/translation-checker/TextExtraction.h"

#include <cstdio>
#include <iostream>

// Run while the project is built: writes the texts of the program's sources as a source file of its own.
//
//   extract-texts ROOT OUTPUT SOURCE...

using namespace TranslationChecker;

namespace {

// As a C++ literal, each unusual byte in three octal digits.
std::string Quoted(std::string_view text) {
    std::string literal = "\"";
    for (char const character : text) {
        auto const byte = static_cast<unsigned char>(character);
        bool const isPlain = byte >= 0x20 && byte < 0x7F && byte != '"' && byte != '\\' && byte != '?';
        char octal[8];
        std::snprintf(octal, sizeof octal, "\\%03o", static_cast<unsigned int>(byte));
        literal += isPlain ? std::string(1, character) : std::string(octal);
    }
    return literal + '"';
}

void WriteTable(std::ostream& out, std::vector<FoundText> const& texts) {
    out << "// Made from the sources of the program when it is built.\n"
           "#include \"tools/translation-checker/FormatTexts.h\"\n\n"
           "namespace TranslationChecker {\n\n"
           "std::span<FormatText const> FormatTexts() {\n"
           "    static constexpr FormatText cTexts[] = {\n";
    for (FoundText const& text : texts)
        out << "        {" << Quoted(text.text) << ", " << Quoted(text.file) << "},\n";
    out << "    };\n"
           "    return cTexts;\n"
           "}\n\n"
           "} // namespace TranslationChecker\n";
}

int Fail(std::string const& reason) {
    std::cerr << reason << std::endl;
    return 1;
}

} // namespace

int main(int argc, char** argv) {
    std::vector<std::string> const arguments(argv, argv + argc);
    if (arguments.size() < 4) return Fail("Usage: extract-texts ROOT OUTPUT SOURCE...");
    std::vector<SourceFile> sources;
    for (std::size_t index = 3; index < arguments.size(); ++index) {
        std::optional<std::string> contents = ReadFile(arguments[1] + "/" + arguments[index]);
        if (!contents) return Fail(arguments[index] + " cannot be read");
        sources.push_back({arguments[index], std::move(*contents)});
    }
    Extraction const extraction = ExtractTexts(sources, KnownArguments());
    for (std::string const& problem : extraction.problems) std::cerr << problem << '\n';
    if (!extraction.problems.empty()) return 1;
    std::ofstream output(arguments[2], std::ios::binary | std::ios::trunc);
    WriteTable(output, extraction.texts);
    output.flush();
    return output ? 0 : Fail(arguments[2] + " cannot be written");
}
