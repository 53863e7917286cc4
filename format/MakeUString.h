#pragma once

#include "format/FormatBindings.h"
#include "format/UFormat.h"
#include "text/UString.h"

// Walks the values of a format's segments. The text and the bindings, which must be sorted, must outlive it.
class FormattedStringIterator : public UFormatIterator {
public:
    // At the first segment, with its failures.
    FormattedStringIterator(UStringRef<UTF8> const& text, ConstArrayOf<FormatBinding> bindings)
        : UFormatIterator(text), m_bindings(bindings) {}
    // Behind the last one.
    static FormattedStringIterator EndOf(UStringRef<UTF8> const& text) {
        return FormattedStringIterator(UFormatIterator::EndOf(text));
    }

    // Throws what FormatSegmentValue throws.
    UStringRef<UTF8> operator*() const {
        return FormatSegmentValue(UFormatIterator::operator*(), m_bindings);
    }
    // The base's would give the name of a variable where `*` gives its value.
    UFormatSegment const* operator->() const = delete;
    FormattedStringIterator& operator++() {
        GetNextSegment();
        return *this;
    }

private:
    explicit FormattedStringIterator(UFormatIterator const& position) : UFormatIterator(position) {}

    ConstArrayOf<FormatBinding> m_bindings;
};

// The values of all segments of a range, one behind another, in a capacity of exactly their size, or the
// string's own 64 bytes. Allocates nothing but the result; for up to 32 segments in one piece. Throws what
// walking the range throws.
AutoUString<UTF8> MakeUString(FormattedStringIterator first, FormattedStringIterator last);

// Renders a format of up to two arguments, with the memory of the form above and no other. Throws what
// MakeFormatParameterBindings throws for the original, and for the text to render BadFormatStringError,
// ImproperFormatVariableName for "{}" and UndefinedFormatVariable for a name that the original does not have.
// A translation that fails is not replaced by the default.
template <std::size_t N>
requires(N <= 2) AutoUString<UTF8> MakeUString(FormatPlusArguments<N> const& format);

extern template AutoUString<UTF8> MakeUString(FormatPlusArguments<0> const&);
extern template AutoUString<UTF8> MakeUString(FormatPlusArguments<1> const&);
extern template AutoUString<UTF8> MakeUString(FormatPlusArguments<2> const&);
