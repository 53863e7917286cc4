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
    std::vector<std::string> files;
    std::string locale;
};

struct File {
    std::string name;
    std::string contents;
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

// The files are used together: what a general file leaves to a brand is not missing.
std::vector<std::string_view> CompanionsOf(File const& file, std::vector<File> const& files) {
    std::vector<std::string_view> companions;
    for (File const& other : files)
        if (IsBrandFile(other.name) != IsBrandFile(file.name)) companions.push_back(other.contents);
    return companions;
}

bool CheckFile(File const& file, std::vector<File> const& files, bool checkLocale) {
    bool const isBrand = IsBrandFile(file.name);
    CheckOptions const options{!isBrand, checkLocale, CompanionsOf(file, files), isBrand};
    CheckResult const result = CheckTranslation(file.contents, FormatTexts(), options);
    for (Finding const& finding : result.findings) Print(file.name, finding);
    std::size_t const errors = result.CountErrors();
    std::cout << file.name << ": " << result.translated << " of " << result.texts
              << " texts, errors: " << errors << ", warnings: " << result.findings.size() - errors
              << std::endl;
    return errors == 0;
}

Outcome Check(CommandLine const& line) {
    if (!line.locale.empty() && !std::setlocale(LC_CTYPE, line.locale.c_str()))
        return Fail("The locale " + line.locale + " is not installed.");
    std::vector<File> files;
    for (std::string const& name : line.files) {
        std::optional<std::string> contents = ReadFile(name);
        if (!contents) return Fail(name + " cannot be read.");
        files.push_back({name, std::move(*contents)});
    }
    bool areGood = true;
    for (File const& file : files)
        if (!CheckFile(file, files, !line.locale.empty())) areGood = false;
    return areGood ? Outcome::Usable : Outcome::HasErrors;
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
    CLI::App* const check = app.add_subcommand("check", "Tell what is wrong with translation files");
    check->add_option("file", line.files, "The translation files, which are used together")->required();
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
