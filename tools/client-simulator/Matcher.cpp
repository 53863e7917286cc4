#include "tools/client-simulator/Matcher.h"

#include "tools/client-simulator/Documents.h"
#include "tools/client-simulator/TimeText.h"
#include "tools/client-simulator/XmlTree.h"

#include <chrono>

namespace ClientSimulator {

namespace {

// The elements that a path leads to.
std::vector<pugi::xml_node> Find(pugi::xml_node message, std::string_view path) {
    std::vector<pugi::xml_node> found{message};
    for (;;) {
        std::size_t const slash = path.find('/');
        std::vector<pugi::xml_node> next;
        for (pugi::xml_node const& node : found)
            for (pugi::xml_node const& child : ChildElements(node))
                if (path.substr(0, slash) == child.name()) next.push_back(child);
        found = std::move(next);
        if (slash == path.npos) return found;
        path.remove_prefix(slash + 1);
    }
}

// What is wrong with a time; empty when it is near enough.
std::string NearDifference(FieldCheck const& check, std::string const& text, std::string const& wanted) {
    auto const expected = ParseTimeText(wanted);
    if (!expected) return check.path + " is compared with " + Quoted(wanted) + ", which is no time";
    auto const actual = ParseTimeText(text);
    if (!actual) return check.path + " is " + Quoted(text) + ", which is no time; expected about " + wanted;
    if (std::chrono::abs(*actual - *expected) <= check.tolerance) return {};
    return check.path + " is " + text + "; expected " + wanted + ", " + DurationText(check.tolerance) +
           " more or less";
}

// What is wrong with a field that is there; empty when nothing is.
std::string ValueDifference(FieldCheck const& check, std::string const& text, RenderContext const& context) {
    if (check.kind == FieldCheck::Kind::Present) return {};
    std::string const wanted = check.value.Render(context);
    std::string const is = check.path + " is " + Quoted(text);
    switch (check.kind) {
    case FieldCheck::Kind::Equal: return text == wanted ? "" : is + "; expected " + Quoted(wanted);
    case FieldCheck::Kind::NotEqual: return text != wanted ? "" : is + "; expected anything else";
    case FieldCheck::Kind::Contains:
        return text.find(wanted) != text.npos ? "" : is + "; expected " + Quoted(wanted) + " in it";
    case FieldCheck::Kind::Near: return NearDifference(check, text, wanted);
    case FieldCheck::Kind::Present:
    case FieldCheck::Kind::Absent: break;
    }
    return {};
}

std::string FieldDifference(FieldCheck const& check, pugi::xml_node message, RenderContext const& context) {
    std::vector<pugi::xml_node> const found = Find(message, check.path);
    if (check.kind == FieldCheck::Kind::Absent)
        return found.empty()
                   ? ""
                   : check.path + " is " + Quoted(ElementText(found.front())) + "; expected no such field";
    if (found.empty()) return check.path + " is missing";
    if (found.size() > 1)
        return check.path + " stands " + std::to_string(found.size()) + " times; expected it once";
    return ValueDifference(check, ElementText(found.front()), context);
}

} // namespace

std::vector<std::string> Differences(MessagePattern const& pattern, std::string_view document,
                                     RenderContext const& context) {
    XmlTree const tree(document);
    if (!tree.Error().empty()) return {"it is no XML: " + tree.Error()};
    std::vector<pugi::xml_node> const messages = ChildElements(tree.Root());
    if (messages.size() != 1)
        return {"it holds " + std::to_string(messages.size()) + " messages; expected one"};
    if (!pattern.name.empty() && pattern.name != messages.front().name())
        return {std::string("it is ") + messages.front().name() + "; expected " + pattern.name};
    std::vector<std::string> differences;
    if (!pattern.root.empty() && pattern.root != tree.Root().name())
        differences.push_back(std::string("its root is ") + tree.Root().name() + "; expected " +
                              pattern.root);
    for (FieldCheck const& check : pattern.fields) {
        std::string difference = FieldDifference(check, messages.front(), context);
        if (!difference.empty()) differences.push_back(std::move(difference));
    }
    return differences;
}

} // namespace ClientSimulator
