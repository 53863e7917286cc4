#include "text/UStringFunctions.h"

#include "text/Ascii.h"

#include <algorithm>

namespace {

using Ref = UStringRef<UTF8>;

constexpr std::size_t cReplaceSizeHint = 256;

Ref Between(unsigned char const* first, unsigned char const* last) {
    return Ref(UTF8(), first, last);
}

std::size_t CharacterSize(unsigned char lead) {
    if (lead < 0x80) return 1;
    if (lead < 0xE0) return 2;
    return lead < 0xF0 ? 3 : 4;
}

template <class Container>
AutoUString<UTF8> JoinAll(Container const& texts, Ref const& separator) {
    if (texts.empty()) return AutoUString<UTF8>();
    std::size_t size = (texts.size() - 1) * separator.SizeInUnits();
    for (auto const& text : texts) size += text.SizeInUnits();
    AutoUString<UTF8> joined(UTF8(), 0, size);
    bool first = true;
    for (auto const& text : texts) {
        if (!first) joined += separator;
        first = false;
        joined += Ref(text);
    }
    return joined;
}

unsigned char const* EndWithout(Ref const& text, Bits const& dropped) {
    unsigned char const* last = text.end();
    while (last != text.begin() && dropped.Has(last[-1])) --last;
    return last;
}

} // namespace

bool EqualIgnoringCase(Ref const& a, Ref const& b) {
    return Ascii::EqualIgnoringCase(a, b);
}

AutoUString<UTF8> Replace(Ref const& text, Ref const& from, Ref const& to) {
    UStringBuilder<UTF8> builder(cReplaceSizeHint);
    builder.Start(UTF8());
    Ref rest = text;
    for (auto const* found = Find(rest, from); found != rest.end(); found = Find(rest, from)) {
        builder.Receive(Between(rest.begin(), found));
        builder.Receive(to);
        rest = Between(found + from.SizeInUnits(), rest.end());
    }
    builder.Receive(rest);
    builder.ReceiveEnd();
    return builder.Take();
}

std::vector<Ref> Split(Ref const& text, Ref const& separator, bool trim, bool keepEmpty) {
    std::vector<Ref> pieces;
    for (ConstData const piece : ConstData(text).Split(separator, trim, keepEmpty))
        pieces.push_back(MakeUTF8Ref(piece));
    return pieces;
}

std::pair<Ref, Ref> SplitPair(Ref const& text, Ref const& separator) {
    auto const* const found = Find(text, separator);
    if (found == text.end()) return {};
    return {Between(text.begin(), found), Between(found + separator.SizeInUnits(), text.end())};
}

AutoUString<UTF8> Join(std::vector<Ref> const& texts, Ref const& separator) {
    return JoinAll(texts, separator);
}

AutoUString<UTF8> Join(std::vector<CopiedUString<UTF8>> const& texts, Ref const& separator) {
    return JoinAll(texts, separator);
}

AutoUString<UTF8> Join(std::set<Ref> const& texts, Ref const& separator) {
    return JoinAll(texts, separator);
}

AutoUString<UTF8> Join(std::set<CopiedUString<UTF8>> const& texts, Ref const& separator) {
    return JoinAll(texts, separator);
}

Ref TrimLeadingAsciiWhitespace(Ref const& text) {
    return MakeUTF8Ref(TrimLeadingAsciiWhitespace(ConstData(text)));
}

Ref TrimTrailingAsciiWhitespace(Ref const& text) {
    if (text.empty()) return Ref();
    return Between(text.begin(), EndWithout(text, Ascii::WhiteSpace()));
}

Ref TrimAsciiWhitespace(Ref const& text) {
    return TrimTrailingAsciiWhitespace(TrimLeadingAsciiWhitespace(text));
}

Ref TrimToLeadingAsciiWhitespace(Ref const& text) {
    auto const* const first = std::find_if(text.begin(), text.end(), [](unsigned char byte) {
        return byte > 127 || Ascii::WhiteSpace().Has(byte);
    });
    return Between(first, text.end());
}

Ref TrimTrailingAsciiNewline(Ref const& text) {
    if (text.empty()) return Ref();
    return Between(text.begin(), EndWithout(text, Ascii::Newline()));
}

std::size_t CharBytePosition(Ref const& text, std::size_t count) {
    std::size_t position = 0;
    for (; count != 0 && position < text.SizeInUnits(); --count) position += CharacterSize(text[position]);
    return position;
}

std::size_t CharPosFromOffset(Ref const& text, std::size_t offset) {
    if (text.empty()) return 0;
    std::size_t characters = 0;
    for (std::size_t position = 0; position < offset; ++characters) position += CharacterSize(text[position]);
    return characters;
}
