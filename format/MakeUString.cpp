#include "format/MakeUString.h"

namespace {

void AppendSegments(AutoUString<UTF8>& result, FormattedStringIterator segment, FormattedStringIterator end) {
    for (; segment != end; ++segment) result += *segment;
}

// Enough for every text that repeats no argument, so that most results take one piece of memory at the most.
template <std::size_t N>
std::size_t ExpectedSize(FormatPlusArguments<N> const& format) {
    std::size_t size = format.overrideFormat.SizeInBytes();
    for (UStringRef<UTF8> const& argument : format.arguments) size += argument.SizeInBytes();
    return size;
}

} // namespace

AutoUString<UTF8> MakeUString(FormattedStringIterator first, FormattedStringIterator last) {
    AutoUString<UTF8> result;
    AppendSegments(result, first, last);
    return result;
}

template <std::size_t N>
requires(N <= 2) AutoUString<UTF8> MakeUString(FormatPlusArguments<N> const& format) {
    std::array<FormatBinding, N> bindings;
    MakeFormatParameterBindings(
        format.format, ConstArrayOf<UStringRef<UTF8>>(format.arguments.data(), format.arguments.data() + N),
        ArrayOf<FormatBinding>(bindings.data(), bindings.data() + N));
    AutoUString<UTF8> result(UTF8(), 0, ExpectedSize(format));
    AppendSegments(result,
                   FormattedStringIterator(format.overrideFormat,
                                           ConstArrayOf<FormatBinding>(bindings.data(), bindings.data() + N)),
                   FormattedStringIterator::EndOf(format.overrideFormat));
    return result;
}

template AutoUString<UTF8> MakeUString(FormatPlusArguments<0> const&);
template AutoUString<UTF8> MakeUString(FormatPlusArguments<1> const&);
template AutoUString<UTF8> MakeUString(FormatPlusArguments<2> const&);
