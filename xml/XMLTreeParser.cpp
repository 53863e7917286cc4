#include "xml/XMLTreeParser.h"

void XMLTreeParser::StartElement(UStringRef<UTF8> const& name, XMLAttributeMap const& attributes) {
    if (m_openElements.empty()) {
        m_root = std::make_unique<XMLElement>(name, attributes);
        m_openElements.push_back(m_root.get());
    } else {
        ReserveLikeSibling();
        m_openElements.push_back(m_openElements.back()->AddChildElement(name, attributes));
    }
}

void XMLTreeParser::ReserveLikeSibling() {
    if (m_openElements.size() < 2) return;
    std::vector<XMLElement>& children = m_openElements.back()->children;
    std::vector<XMLElement> const& siblings = m_openElements.end()[-2]->children;
    if (children.empty() && siblings.size() >= 2) children.reserve(siblings.end()[-2].children.size());
}

void XMLTreeParser::EndElement() {
    if (!m_openElements.empty()) m_openElements.pop_back();
}

void XMLTreeParser::Characters(UStringRef<UTF8> const& text) {
    if (!m_openElements.empty()) m_openElements.back()->AppendCharacters(text);
}

std::unique_ptr<XMLElement> XMLTreeParser::TakeRoot() {
    m_openElements.clear();
    return std::move(m_root);
}
