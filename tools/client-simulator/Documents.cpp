#include "tools/client-simulator/Documents.h"

#include "tools/client-simulator/XmlTree.h"

#include <algorithm>
#include <sstream>
#include <utility>

namespace ClientSimulator {

namespace {

constexpr std::size_t cLongestShownText = 400;
constexpr int cDeepestShownTree = 64;
constexpr std::size_t cMostDifferences = 5;

// The first `length` bytes or fewer, without a torn character at the end.
std::string_view Beginning(std::string_view text, std::size_t length) {
    if (text.size() <= length) return text;
    while (length > 0 && (static_cast<unsigned char>(text[length]) & 0xC0) == 0x80) --length;
    return text.substr(0, length);
}

std::string CutShort(std::string_view text) {
    if (text.size() <= cLongestShownText) return std::string(text);
    return std::string(Beginning(text, cLongestShownText / 4)) + "... (" + std::to_string(text.size()) +
           " bytes)";
}

std::string Printable(std::string_view text) {
    constexpr std::string_view digits = "0123456789abcdef";
    std::string result;
    for (char const c : text) {
        auto const byte = static_cast<unsigned char>(c);
        if (c == '\n')
            result += "\\n";
        else if (c == '\t')
            result += "\\t";
        else if (byte >= 32 && byte != 127)
            result += c;
        else
            result += {'\\', 'x', digits[byte >> 4], digits[byte & 15]};
    }
    return result;
}

// Looks for forms that are good XML and that the process reads as something else.
class FormCheck {
public:
    explicit FormCheck(std::string_view document) : m_document(document) {}

    std::optional<DocumentProblem> Run() {
        while (!m_problem && m_at < m_document.size()) Step();
        return m_problem;
    }

private:
    void Step() {
        std::string_view const rest = m_document.substr(m_at);
        if (rest.starts_with("<!--"))
            SkipPast("-->");
        else if (rest.starts_with("<![CDATA["))
            SkipPast("]]>");
        else if (rest.starts_with("<?"))
            SkipPast("?>");
        else if (rest.starts_with("<!"))
            Report("the process knows no document types; expected none");
        else if (rest.front() == '<')
            Tag();
        else if (rest.front() == '&')
            Entity();
        else
            ++m_at;
    }

    void SkipPast(std::string_view end) {
        m_at = std::min(m_document.find(end, m_at), m_document.size() - end.size()) + end.size();
    }

    void Tag() {
        std::size_t const end = TagEnd();
        std::string_view const tag = m_document.substr(m_at, end - m_at);
        if (tag.ends_with('/'))
            Report("the process knows no self-closing elements; expected <Name></Name>");
        else if (tag.find_first_of("\t\r\n") != tag.npos)
            Report("the process takes only spaces between the words of a tag; expected the tag on one line");
        else if (!tag.starts_with("</") && tag.substr(0, tag.find(' ')).find('-') != tag.npos)
            Report("the process drops '-' from an element's name; expected a name without it");
        m_at = end + 1;
    }

    std::size_t TagEnd() const {
        char quote = 0;
        std::size_t at = m_at;
        for (; at < m_document.size(); ++at) {
            char const c = m_document[at];
            if (quote != 0)
                quote = c == quote ? '\0' : quote;
            else if (c == '"' || c == '\'')
                quote = c;
            else if (c == '>')
                break;
        }
        return at;
    }

    void Entity() {
        std::size_t const end = m_document.find(';', m_at);
        std::string_view const entity = m_document.substr(m_at, end - m_at);
        bool const known = entity == "&lt" || entity == "&gt" || entity == "&amp" || entity == "&quot";
        bool const small = entity.starts_with("&#x") && (entity.size() == 4 || entity.size() == 5) &&
                           (entity.size() == 4 || entity[3] < '8');
        if (!known && !small)
            Report(
                "the process does not know " + std::string(entity) +
                ";; expected &lt; &gt; &amp; &quot;, a hexadecimal reference below &#x80;, or the character "
                "itself");
        m_at = std::min(end, m_document.size() - 1) + 1;
    }

    void Report(std::string what) { m_problem = DocumentProblem{m_at, std::move(what)}; }

    std::string_view m_document;
    std::size_t m_at = 0;
    std::optional<DocumentProblem> m_problem;
};

// Cuts long texts and learns the depth.
class Abridger : public pugi::xml_tree_walker {
public:
    bool for_each(pugi::xml_node& node) override {
        deepest = std::max(deepest, depth());
        std::string_view const value = node.value();
        if (value.size() > cLongestShownText) node.set_value(CutShort(value).c_str());
        return deepest <= cDeepestShownTree;
    }

    int deepest = 0;
};

using ElementPair = std::pair<pugi::xml_node, pugi::xml_node>;

std::string Attributes(pugi::xml_node element) {
    std::string text;
    for (pugi::xml_attribute const& attribute : element.attributes())
        text += std::string(attribute.name()) + '=' + Quoted(attribute.value()) + ' ';
    return text;
}

std::string ChildNames(std::vector<pugi::xml_node> const& elements) {
    std::string text;
    for (pugi::xml_node const& element : elements) {
        if (!text.empty()) text += ", ";
        text += element.name();
    }
    return text.empty() ? "no elements" : CutShort(text);
}

// Compares two elements but for their children, which it gives back as further pairs.
std::vector<ElementPair> CompareElements(ElementPair const& pair, std::vector<std::string>& differences) {
    auto const [expected, actual] = pair;
    std::string const path = ElementPath(expected);
    if (Attributes(expected) != Attributes(actual))
        differences.push_back(path + " has the attributes " + Attributes(actual) + "where expected are " +
                              Attributes(expected));
    std::vector<pugi::xml_node> const wanted = ChildElements(expected);
    std::vector<pugi::xml_node> const found = ChildElements(actual);
    bool const plain = wanted.empty() && found.empty();
    std::string const wantedText = plain ? ElementText(expected) : TrimmedElementText(expected);
    std::string const foundText = plain ? ElementText(actual) : TrimmedElementText(actual);
    if (wantedText != foundText)
        differences.push_back(path + " is " + Quoted(foundText) + "; expected " + Quoted(wantedText));
    if (!std::equal(wanted.begin(), wanted.end(), found.begin(), found.end(),
                    [](pugi::xml_node const& a, pugi::xml_node const& b) { return SameName(a, b); })) {
        differences.push_back(path + " holds " + ChildNames(found) + "; expected " + ChildNames(wanted));
        return {};
    }
    std::vector<ElementPair> children;
    for (std::size_t i = 0; i < wanted.size(); ++i) children.emplace_back(wanted[i], found[i]);
    return children;
}

} // namespace

std::string Quoted(std::string_view text) {
    return '"' + Printable(CutShort(text)) + '"';
}

std::optional<DocumentProblem> FindProblem(std::string_view document) {
    XmlTree const tree(document);
    if (!tree.Error().empty()) return DocumentProblem{tree.ErrorOffset(), tree.Error()};
    return FormCheck(document).Run();
}

std::string ReadableDocument(std::string_view document) {
    XmlTree tree(document);
    Abridger abridger;
    if (!tree.Error().empty() || !tree.Document().traverse(abridger)) return Printable(CutShort(document));
    std::ostringstream text;
    tree.Document().save(
        text, "  ", pugi::format_indent | pugi::format_no_empty_element_tags | pugi::format_no_declaration,
        pugi::encoding_utf8);
    std::string result = text.str();
    if (result.ends_with('\n')) result.pop_back();
    return result;
}

std::string MessageNames(std::string_view document) {
    if (document.empty()) return "(an empty frame)";
    XmlTree const tree(document);
    if (!tree.Error().empty()) return "(no XML: " + tree.Error() + ")";
    std::vector<pugi::xml_node> const messages = ChildElements(tree.Root());
    return messages.empty() ? "(no message)" : ChildNames(messages);
}

std::vector<std::string> DocumentDifferences(std::string_view expected, std::string_view actual) {
    XmlTree const wanted(expected);
    XmlTree const found(actual);
    if (!found.Error().empty()) return {"it is no XML: " + found.Error()};
    if (!SameName(wanted.Root(), found.Root()))
        return {std::string("its root is ") + found.Root().name() + "; expected " + wanted.Root().name()};
    std::vector<std::string> differences;
    std::vector<ElementPair> pending{{wanted.Root(), found.Root()}};
    while (!pending.empty() && differences.size() < cMostDifferences) {
        ElementPair const pair = pending.back();
        pending.pop_back();
        std::vector<ElementPair> const children = CompareElements(pair, differences);
        pending.insert(pending.end(), children.rbegin(), children.rend());
    }
    return differences;
}

std::vector<std::string> TextDifferences(std::string_view expected, std::string_view actual) {
    if (expected == actual) return {};
    auto const place = std::mismatch(expected.begin(), expected.end(), actual.begin(), actual.end());
    auto const offset = static_cast<std::size_t>(place.first - expected.begin());
    std::size_t const from = offset - std::min<std::size_t>(offset, 20);
    return {"it differs from byte " + std::to_string(offset) + " on: it has " +
            Quoted(actual.substr(from, 60)) + "; expected " + Quoted(expected.substr(from, 60))};
}

} // namespace ClientSimulator
