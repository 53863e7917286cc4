// What is sent:  serial (8 bits), command (8), length of the rest (32), the rest.
// What comes:    serial (8 bits), outcome (8), length of the rest (32), the rest.
// A widget is a list of 32-bit numbers, one for each ancestor and itself, the shell's first.
//
// Answers come from another process: every read is checked against what is left.

#include "tools/screen-user/EditresMessage.h"

#include "tools/screen-user/UserError.h"

#include <map>

namespace ScreenUser::Editres {

namespace {

enum class Command : std::uint8_t { SendWidgetTree = 0, GetResources = 2, GetValues = 5 };
enum class Outcome : std::uint8_t { Done = 0, Refused = 1, OtherVersion = 2 };

// In the place of a window: an object that never has one.
constexpr std::uint32_t cNoWindowKind = 2;
// How the program writes a resource that it does not have or cannot tell, and a text that is a null pointer.
constexpr std::string_view cNoValue = "NoValue";
constexpr std::string_view cNullText = "(null)";

class Writer {
public:
    void Number(std::uint32_t value, int bytes) {
        for (int shift = 8 * (bytes - 1); shift >= 0; shift -= 8)
            m_bytes += static_cast<char>(static_cast<unsigned char>(value >> shift));
    }
    void Count(std::size_t count) {
        if (count > 0xffff) throw UserError("A list or text is too long to ask about.");
        Number(static_cast<std::uint32_t>(count), 2);
    }
    void Text(std::string_view text) {
        Count(text.size());
        m_bytes += text;
    }
    void Widget(Identity const& widget) {
        Count(widget.size());
        for (std::uint32_t const number : widget) Number(number, 4);
    }

    std::string const& Bytes() const { return m_bytes; }

private:
    std::string m_bytes;
};

class Reader {
public:
    explicit Reader(std::string_view bytes) : m_rest(bytes) {}

    std::uint32_t Number(std::size_t bytes) {
        std::uint32_t value = 0;
        for (char const byte : Take(bytes)) value = value << 8 | static_cast<unsigned char>(byte);
        return value;
    }
    std::string Text() { return std::string(Take(Number(2))); }
    Identity Widget() {
        Identity widget;
        for (std::uint32_t left = Number(2); left > 0; --left) widget.push_back(Number(4));
        return widget;
    }
    std::string_view Rest() const { return m_rest; }

private:
    std::string_view Take(std::size_t size) {
        if (size > m_rest.size()) throw UserError("The program's answer about its widgets ends too early.");
        std::string_view const taken = m_rest.substr(0, size);
        m_rest.remove_prefix(size);
        return taken;
    }

    std::string_view m_rest;
};

std::string MakeRequest(std::uint8_t serial, Command command, Writer const& content) {
    Writer request;
    request.Number(serial, 1);
    request.Number(static_cast<std::uint8_t>(command), 1);
    request.Number(static_cast<std::uint32_t>(content.Bytes().size()), 4);
    return request.Bytes() + content.Bytes();
}

WindowID ReadWindow(Reader& reader) {
    std::uint32_t const window = reader.Number(4);
    return window == cNoWindowKind ? cNoWindow : window;
}

// Null for the shell, whose identity has no part in front of it.
std::optional<std::size_t> ParentOf(Identity identity, std::map<Identity, std::size_t> const& known) {
    identity.pop_back();
    auto const parent = known.find(identity);
    if (parent != known.end()) return parent->second;
    if (!identity.empty()) throw UserError("The program tells of a widget whose parent it has not told.");
    return std::nullopt;
}

[[noreturn]] void Refuse(std::string_view reason) {
    throw RefusedError("The program does not tell about its widgets: " + std::string(reason));
}

} // namespace

std::string MakeTreeRequest(std::uint8_t serial) {
    return MakeRequest(serial, Command::SendWidgetTree, Writer());
}

std::string MakeResourcesRequest(std::uint8_t serial, Identity const& widget) {
    Writer content;
    content.Count(1);
    content.Widget(widget);
    return MakeRequest(serial, Command::GetResources, content);
}

std::string MakeValueRequest(std::uint8_t serial, Identity const& widget, std::string_view resource) {
    Writer content;
    content.Text(resource);
    content.Count(1);
    content.Widget(widget);
    return MakeRequest(serial, Command::GetValues, content);
}

std::optional<std::string_view> OpenAnswer(std::string_view answer, std::uint8_t serial) {
    Reader reader(answer);
    if (reader.Number(1) != serial) return std::nullopt;
    auto const outcome = static_cast<Outcome>(reader.Number(1));
    if (reader.Number(4) > reader.Rest().size())
        throw UserError("The program's answer about its widgets ends too early.");
    if (outcome == Outcome::Refused) Refuse(reader.Text());
    if (outcome != Outcome::Done) Refuse("it speaks another version of the protocol.");
    return reader.Rest();
}

WidgetTree ReadTree(std::string_view content) {
    Reader reader(content);
    WidgetTree tree;
    std::map<Identity, std::size_t> known;
    for (std::uint32_t left = reader.Number(2); left > 0; --left) {
        Widget widget;
        widget.identity = reader.Widget();
        if (widget.identity.empty()) throw UserError("The program tells of a widget without an identity.");
        widget.name = reader.Text();
        widget.className = reader.Text();
        widget.window = ReadWindow(reader);
        widget.parent = ParentOf(widget.identity, known);
        // The numbers of two siblings may be the same, being halves of addresses. The later one's own widgets
        // follow it.
        known.insert_or_assign(widget.identity, tree.size());
        tree.push_back(std::move(widget));
    }
    return tree;
}

std::vector<ResourceName> ReadResources(std::string_view content) {
    Reader reader(content);
    if (reader.Number(2) != 1) Refuse("it answers about another number of widgets than one.");
    reader.Widget();
    if (reader.Number(1) != 0) Refuse(reader.Text());
    std::vector<ResourceName> resources;
    for (std::uint32_t left = reader.Number(2); left > 0; --left) {
        reader.Number(1); // whether the widget has it for itself or for its parent's sake
        ResourceName resource;
        resource.name = reader.Text();
        resource.className = reader.Text();
        resource.type = reader.Text();
        resources.push_back(std::move(resource));
    }
    return resources;
}

std::optional<std::string> ReadValue(std::string_view content) {
    Reader reader(content);
    if (reader.Number(2) != 1) Refuse("it answers with another number of values than one.");
    // The length in front is cut to 16 bits, but the value is all that follows.
    reader.Number(2);
    std::string_view const value = reader.Rest();
    if (value == cNoValue || value == cNullText) return std::nullopt;
    return std::string(value);
}

} // namespace ScreenUser::Editres
