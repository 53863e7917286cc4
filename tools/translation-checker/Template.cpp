#include "tools/translation-checker/Template.h"

#include "format/FormatBindings.h"
#include "tools/translation-checker/Texts.h"

#include <algorithm>
#include <ostream>

namespace TranslationChecker {

namespace {

constexpr std::string_view cIntroduction = "# A translation of the texts of VRKClientUI, in UTF-8. A line "
                                           "with a tab in it is an entry: the English text, the\n"
                                           "# tab, and the text to show instead. Write your own text behind "
                                           "each tab and leave alone what stands in front of it.\n"
                                           "# All other lines, like this one, count for nothing.\n";

// "{minutes}, {seconds}"
std::string Listed(std::vector<std::string_view> const& variables) {
    std::string list;
    for (std::string_view const variable : variables)
        list += (list.empty() ? "{" : ", {") + std::string(variable) + "}";
    return list;
}

void WriteEntry(std::ostream& out, std::string_view text) {
    if (!IsKey(text)) {
        out << "# cannot be translated: " << Quoted(text) << '\n';
        return;
    }
    std::vector<std::string_view> const variables = VariablesOf(text);
    if (!variables.empty()) out << "# with " << Listed(variables) << '\n';
    out << text << '\t' << text << '\n';
}

} // namespace

std::vector<std::string_view> VariablesOf(std::string_view format) {
    std::vector<std::string_view> variables;
    UStringRef<UTF8> const text = ViewOf(format);
    for (UFormatIterator segment(text); segment != UFormatIterator::EndOf(text); ++segment) {
        if (!segment->isExpression || IsFormatVariableNameReserved(segment->text)) continue;
        std::string_view const name = ViewOf(segment->text);
        if (std::find(variables.begin(), variables.end(), name) == variables.end()) variables.push_back(name);
    }
    return variables;
}

bool IsKey(std::string_view text) {
    return text.find_first_of("\t\n\r") == std::string_view::npos;
}

void WriteTemplate(std::ostream& out, std::span<FormatText const> texts) {
    out << cIntroduction;
    std::string_view file;
    for (FormatText const& text : texts) {
        if (text.file != file) out << "\n# " << text.file << '\n';
        file = text.file;
        WriteEntry(out, text.text);
    }
}

} // namespace TranslationChecker
