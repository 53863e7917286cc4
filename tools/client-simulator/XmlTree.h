#pragma once

#include <cstddef>
#include <pugixml.hpp>
#include <string>
#include <string_view>
#include <vector>

namespace ClientSimulator {

// A parsed document with exactly one root element, or the reason why there is none. Texts keep their white
// space where an element holds nothing else.
class XmlTree {
public:
    explicit XmlTree(std::string_view document);

    // Empty for a good document.
    std::string const& Error() const { return m_error; }
    std::size_t ErrorOffset() const { return m_offset; }

    pugi::xml_node Root() const { return m_document.document_element(); }
    pugi::xml_document& Document() { return m_document; }

private:
    pugi::xml_document m_document;
    std::string m_error;
    std::size_t m_offset = 0;
};

// The functions below take nodes by value: a node is a handle that lives as long as its tree.

std::vector<pugi::xml_node> ChildElements(pugi::xml_node element);
// The texts and CDATA sections directly in the element, joined.
std::string ElementText(pugi::xml_node element);
// The same without white space at the ends.
std::string TrimmedElementText(pugi::xml_node element);
// "ClientToUI/ActionRequest/ID".
std::string ElementPath(pugi::xml_node element);
bool SameName(pugi::xml_node left, pugi::xml_node right);

} // namespace ClientSimulator
