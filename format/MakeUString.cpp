#include "format/MakeUString.h"

#include <array>

// The text is walked once. The values of its segments are gathered before anything is allocated, so that the
// result takes one piece of memory of its own size, or none when it fits into the string object, whatever a
// translation repeats or leaves out. What comes behind the gathered segments, in a text longer than any
// sentence, is appended by the string's rule of growth, and the result copied to its own size at the end.

namespace {

constexpr std::size_t cGatheredSegments = 32;

// Without a value until a segment is gathered, so that a short text does not pay for clearing all pieces.
struct Piece {
    unsigned char const* begin;
    std::size_t size;
};

void AppendRest(AutoUString<UTF8>& result, FormattedStringIterator& segment,
                FormattedStringIterator const& end) {
    for (; segment != end; ++segment) result += *segment;
    result = AutoUString<UTF8>(result.Ref());
}

AutoUString<UTF8> Joined(FormattedStringIterator& segment, FormattedStringIterator const& end) {
    Piece pieces[cGatheredSegments];
    std::size_t count = 0;
    std::size_t size = 0;
    for (; segment != end && count < cGatheredSegments; ++segment) {
        UStringRef<UTF8> const value = *segment;
        pieces[count++] = {value.begin(), value.SizeInBytes()};
        size += value.SizeInBytes();
    }
    AutoUString<UTF8> result(UTF8(), 0, size);
    for (Piece const* piece = pieces; piece != pieces + count; ++piece)
        result += UStringRef<UTF8>(UTF8(), piece->begin, piece->begin + piece->size);
    if (segment != end) AppendRest(result, segment, end);
    return result;
}

} // namespace

AutoUString<UTF8> MakeUString(FormattedStringIterator first, FormattedStringIterator last) {
    return Joined(first, last);
}

template <std::size_t N>
requires(N <= 2) AutoUString<UTF8> MakeUString(FormatPlusArguments<N> const& format) {
    std::array<FormatBinding, N> bindings;
    MakeFormatParameterBindings(
        format.format, ConstArrayOf<UStringRef<UTF8>>(format.arguments.data(), format.arguments.data() + N),
        ArrayOf<FormatBinding>(bindings.data(), bindings.data() + N));
    FormattedStringIterator first(format.overrideFormat,
                                  ConstArrayOf<FormatBinding>(bindings.data(), bindings.data() + N));
    return Joined(first, FormattedStringIterator::EndOf(format.overrideFormat));
}

template AutoUString<UTF8> MakeUString(FormatPlusArguments<0> const&);
template AutoUString<UTF8> MakeUString(FormatPlusArguments<1> const&);
template AutoUString<UTF8> MakeUString(FormatPlusArguments<2> const&);
