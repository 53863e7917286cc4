#include "tools/client-simulator/XmlTree.h"

#include <algorithm>

namespace ClientSimulator {

namespace {

constexpr unsigned cParseOptions = pugi::parse_cdata | pugi::parse_escapes | pugi::parse_ws_pcdata_single;

} // namespace

XmlTree::XmlTree(std::string_view document) {
    pugi::xml_parse_result const result =
        m_document.load_buffer(document.data(), document.size(), cParseOptions, pugi::encoding_utf8);
    if (!result) {
        m_error = result.description();
        m_offset = static_cast<std::size_t>(std::max<std::ptrdiff_t>(result.offset, 0));
        return;
    }
    if (!Root())
        m_error = "there is no element";
    else if (ChildElements(m_document).size() > 1)
        m_error = "there is more than one root element";
}

std::vector<pugi::xml_node> ChildElements(pugi::xml_node element) {
    std::vector<pugi::xml_node> elements;
    for (pugi::xml_node const& child : element.children())
        if (child.type() == pugi::node_element) elements.push_back(child);
    return elements;
}

std::string ElementText(pugi::xml_node element) {
    std::string text;
    for (pugi::xml_node const& child : element.children())
        if (child.type() == pugi::node_pcdata || child.type() == pugi::node_cdata) text += child.value();
    return text;
}

std::string TrimmedElementText(pugi::xml_node element) {
    std::string const text = ElementText(element);
    std::size_t const first = text.find_first_not_of(" \t\r\n");
    if (first == text.npos) return {};
    return text.substr(first, text.find_last_not_of(" \t\r\n") + 1 - first);
}

std::string ElementPath(pugi::xml_node element) {
    std::string path = element.name();
    for (pugi::xml_node parent = element.parent(); parent.type() == pugi::node_element;
         parent = parent.parent())
        path = std::string(parent.name()) + '/' + path;
    return path;
}

bool SameName(pugi::xml_node left, pugi::xml_node right) {
    return std::string_view(left.name()) == std::string_view(right.name());
}

} // namespace ClientSimulator
