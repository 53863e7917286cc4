#include "tools/translation-checker/ReadFile.h"
#include "tools/translation-checker/Template.h"
#include "tools/translation-checker/TranslationCheck.h"

#include <CLI/CLI.hpp>
#include <clocale>
#include <iostream>

namespace {

using namespace TranslationChecker;

enum class Outcome { Usable = 0, HasErrors = 1, BadUsage = 2 };

struct CommandLine {
    std::string file;
    std::string locale;
};

Outcome Fail(std::string const& reason) {
    std::cerr << reason << std::endl;
    return Outcome::BadUsage;
}

// The program looks for files of such a name for the words of a brand: these replace some texts and leave the
// others to another file.
bool IsBrandFile(std::filesystem::path const& file) {
    return file.filename().string().starts_with("_brand");
}

void Print(std::string const& file, Finding const& finding) {
    std::cout << file;
    if (finding.line != 0) std::cout << ':' << finding.line;
    std::cout << (finding.isError ? ": error: " : ": warning: ") << finding.sentence << '\n';
}

Outcome Check(CommandLine const& line) {
    if (!line.locale.empty() && !std::setlocale(LC_CTYPE, line.locale.c_str()))
        return Fail("The locale " + line.locale + " is not installed.");
    std::optional<std::string> const contents = ReadFile(line.file);
    if (!contents) return Fail(line.file + " cannot be read.");
    CheckOptions options;
    options.tellMissing = !IsBrandFile(line.file);
    options.checkLocale = !line.locale.empty();
    CheckResult const result = CheckTranslation(*contents, FormatTexts(), options);
    for (Finding const& finding : result.findings) Print(line.file, finding);
    std::size_t const errors = result.CountErrors();
    std::cout << line.file << ": " << result.translated << " of " << result.texts
              << " texts, errors: " << errors << ", warnings: " << result.findings.size() - errors
              << std::endl;
    return errors == 0 ? Outcome::Usable : Outcome::HasErrors;
}

Outcome List() {
    WriteTemplate(std::cout, FormatTexts());
    std::cout.flush();
    return std::cout ? Outcome::Usable : Fail("The list cannot be written.");
}

} // namespace

int main(int argc, char** argv) {
    CLI::App app("Helps to write translation files for VRKClientUI.", "translation-checker");
    CommandLine line;
    app.require_subcommand(1);
    CLI::App const* const list =
        app.add_subcommand("list", "Print every text of the program, as a file to be filled in");
    CLI::App* const check = app.add_subcommand("check", "Tell what is wrong with a translation file");
    check->add_option("file", line.file, "The translation file")->required();
    check->add_option("--locale", line.locale,
                      "Also tell of characters that the encoding of this locale does not have");
    app.footer("Exit status: 0 nothing wrong, or only warnings; 1 errors; 2 a bad command line, a file that "
               "cannot be\nread or a locale that is not installed. More is told in docs/translating.md.");
    try {
        app.parse(argc, argv);
    } catch (CLI::ParseError const& error) {
        return app.exit(error) == 0 ? 0 : static_cast<int>(Outcome::BadUsage);
    }
    return static_cast<int>(list->parsed() ? List() : Check(line));
}
