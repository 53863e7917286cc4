#pragma once

#include "format/UFormatIterator.h"

#include <utility>

// How the variables of a format text get their values.
//
// Names that begin with an underscore are reserved for characters that cannot always be written as they are:
// a "{" begins a variable in every text, and a line of a translation file holds no tab, carriage return or
// line feed. A "}" on its own may stand as it is.
//
//   {_obrace} {     {_tab} tab            {_crlf} carriage return and line feed
//   {_cbrace} }     {_lf}  line feed      {_cr}   carriage return
//
// All others are bound to the arguments of the call. Names and values are views: what they point into must
// outlive the bindings. Nothing here allocates.

// Name and value. A set of bindings is sorted by name, then value.
using FormatBinding = std::pair<UStringRef<UTF8>, UStringRef<UTF8>>;

// Whether the name begins with an underscore. Throws ImproperFormatVariableName for an empty name.
bool IsFormatVariableNameReserved(UStringRef<UTF8> const& name);

// Returns for a name that a format may use. Throws ImproperFormatVariableName for an empty name and for one
// with anything but ASCII letters and digits behind its first byte, which may be anything ("-ab" is a name);
// UndefinedFormatVariable for a reserved name that means nothing.
void CheckFormatVariableName(UStringRef<UTF8> const& name);

// Binds the variables of `format`, in their order, to the arguments, and sorts the bindings. Reserved
// variables take no argument. Each occurrence of another variable takes one of its own: a name that occurs
// twice is bound twice, and looking it up finds the smaller value.
//
// `bindings` must have as many places as there are arguments. Failures are named from the format's side:
// TooManyFormatArguments when it asks for more than there are, TooFewFormatArguments when it asks for fewer.
// Also throws what walking the text and CheckFormatVariableName throw. After a failure the bindings are of no
// use.
void MakeFormatParameterBindings(UStringRef<UTF8> const& format, ConstArrayOf<UStringRef<UTF8>> arguments,
                                 ArrayOf<FormatBinding> bindings);

// The value of a variable, reserved or bound. Throws UndefinedFormatVariable when there is none of that name,
// and ImproperFormatVariableName for an empty name.
UStringRef<UTF8> FormatExpressionValue(UStringRef<UTF8> const& name, ConstArrayOf<FormatBinding> bindings);

// The literal, or the value of the expression's variable.
inline UStringRef<UTF8> FormatSegmentValue(UFormatSegment const& segment,
                                           ConstArrayOf<FormatBinding> bindings) {
    return segment.isExpression ? FormatExpressionValue(segment.text, bindings) : segment.text;
}
