#include "format/FormatBindings.h"

#include "foundation/Exceptions.h"
#include "text/Ascii.h"

#include <algorithm>

namespace {

// In the order of bindings, so that both are searched in the same way.
ConstArrayOf<FormatBinding> ReservedVariables() {
    static FormatBinding const table[] = {
        {"_cbrace"_utf8, "}"_utf8}, {"_cr"_utf8, "\r"_utf8},    {"_crlf"_utf8, "\r\n"_utf8},
        {"_lf"_utf8, "\n"_utf8},    {"_obrace"_utf8, "{"_utf8}, {"_tab"_utf8, "\t"_utf8},
    };
    return ConstArrayOf<FormatBinding>(std::begin(table), std::end(table));
}

// The first binding that is not less than the name with the empty text: the smallest value of that name.
UStringRef<UTF8> Find(UStringRef<UTF8> const& name, ConstArrayOf<FormatBinding> bindings) {
    auto const isBefore = [](FormatBinding const& binding, UStringRef<UTF8> const& wanted) {
        return binding.first < wanted;
    };
    FormatBinding const* const found = std::lower_bound(bindings.begin(), bindings.end(), name, isBefore);
    if (found == bindings.end() || !(found->first == name)) throw UndefinedFormatVariable();
    return found->second;
}

} // namespace

bool IsFormatVariableNameReserved(UStringRef<UTF8> const& name) {
    if (name.empty()) throw ImproperFormatVariableName();
    return name[0] == '_';
}

void CheckFormatVariableName(UStringRef<UTF8> const& name) {
    if (IsFormatVariableNameReserved(name)) {
        Find(name, ReservedVariables());
        return;
    }
    Bits const& allowed = Ascii::Alphanumeric();
    if (!std::all_of(name.begin() + 1, name.end(), [&](unsigned char byte) { return allowed.Has(byte); }))
        throw ImproperFormatVariableName();
}

void MakeFormatParameterBindings(UStringRef<UTF8> const& format, ConstArrayOf<UStringRef<UTF8>> arguments,
                                 ArrayOf<FormatBinding> bindings) {
    UStringRef<UTF8> const* argument = arguments.begin();
    FormatBinding* binding = bindings.begin();
    UFormatIterator const end = UFormatIterator::EndOf(format);
    for (UFormatIterator segment(format); segment != end; ++segment) {
        if (!segment->isExpression) continue;
        CheckFormatVariableName(segment->text);
        if (IsFormatVariableNameReserved(segment->text)) continue;
        if (argument == arguments.end() || binding == bindings.end()) throw TooManyFormatArguments();
        *binding++ = FormatBinding(segment->text, *argument++);
    }
    if (argument != arguments.end() || binding != bindings.end()) throw TooFewFormatArguments();
    std::sort(bindings.begin(), bindings.end());
}

UStringRef<UTF8> FormatExpressionValue(UStringRef<UTF8> const& name, ConstArrayOf<FormatBinding> bindings) {
    return Find(name, IsFormatVariableNameReserved(name) ? ReservedVariables() : bindings);
}
