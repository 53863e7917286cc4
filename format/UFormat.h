#pragma once

#include "text/UStringRef.h"

#include <array>
#include <concepts>
#include <type_traits>

// The call by which every text that a user reads is made:
//
//   MakeUString(UFormat("{minutes} minutes, {seconds} seconds") % minutes % seconds)
//
// The English text is the key of its translation as well. It has variables in braces and nothing else (see
// format/UFormatIterator.h for the grammar and format/FormatBindings.h for the variables): whoever calls
// makes numbers and dates into texts first, and chooses among wordings. Arguments go by position in the
// English text and by name in the translation, which may use them in any order, repeat them and leave them
// out.

// An owner of UTF-8 text that ends with its expression: a view of it would dangle.
template <class T>
concept ExpiringUTF8Text = !std::is_reference_v<T> && !std::same_as<std::remove_cv_t<T>, UStringRef<UTF8>> &&
                           std::convertible_to<T&, UStringRef<UTF8>>;

// A format with its first `N` arguments. Only views: all texts must outlive the value. Nothing is checked
// before it is rendered.
template <std::size_t N>
struct FormatPlusArguments {
    FormatPlusArguments(UStringRef<UTF8> const& key, UStringRef<UTF8> const& textToRender) requires(N == 0)
        : format(key), overrideFormat(textToRender) {}
    template <class Key, class Text>
    requires(N == 0 && (ExpiringUTF8Text<Key> || ExpiringUTF8Text<Text>))
        FormatPlusArguments(Key&& key, Text&& textToRender)
    = delete;
    // The same with one argument more, which goes to the end.
    template <std::size_t shorter>
    requires(shorter + 1 == N)
        FormatPlusArguments(FormatPlusArguments<shorter> const& start, UStringRef<UTF8> const& argument)
        : format(start.format), overrideFormat(start.overrideFormat) {
        for (std::size_t index = 0; index < shorter; ++index) arguments[index] = start.arguments[index];
        arguments[shorter] = argument;
    }
    template <std::size_t shorter, ExpiringUTF8Text T>
    FormatPlusArguments(FormatPlusArguments<shorter> const& start, T&& argument) = delete;

    // The original: it defines the variables and their order.
    UStringRef<UTF8> format;
    // What is rendered: the translation; the default where there is none.
    UStringRef<UTF8> overrideFormat;
    // In the order of the original's variables.
    std::array<UStringRef<UTF8>, N> arguments;
};

// Appends the argument for the next variable. The text must outlive the result, so that one made on the spot
// is refused; give it a name.
template <std::size_t N>
FormatPlusArguments<N + 1> operator%(FormatPlusArguments<N> const& format, UStringRef<UTF8> const& argument) {
    return FormatPlusArguments<N + 1>(format, argument);
}
template <std::size_t N, ExpiringUTF8Text T>
FormatPlusArguments<N + 1> operator%(FormatPlusArguments<N> const& format, T&& argument) = delete;

class FormatOverrideContext;

// The translation is chosen here, not when the text is rendered: it is a view into the file that it comes
// from, and lives as long as that file does.

// The text as both the key and the default, in the context of the process.
FormatPlusArguments<0> UFormat(char const* text);
// A key and a default of its own, in the context of the process.
FormatPlusArguments<0> UFormat(UStringRef<UTF8> const& key, UStringRef<UTF8> const& defaultText);
// The same in a context of the caller's.
FormatPlusArguments<0> UFormat(UStringRef<UTF8> const& key, UStringRef<UTF8> const& defaultText,
                               FormatOverrideContext const& context);
template <class Key, class Text>
requires(ExpiringUTF8Text<Key> || ExpiringUTF8Text<Text>) FormatPlusArguments<0> UFormat(Key&& key,
                                                                                         Text&& defaultText)
= delete;
template <class Key, class Text>
requires(ExpiringUTF8Text<Key> ||
         ExpiringUTF8Text<Text>) FormatPlusArguments<0> UFormat(Key&& key, Text&& defaultText,
                                                                FormatOverrideContext const& context)
= delete;
