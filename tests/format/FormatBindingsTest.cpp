#include "format/FormatBindings.h"

#include "foundation/Exceptions.h"

#include "tests/support/UStringPrinting.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

using Texts = std::vector<UStringRef<UTF8>>;
using Bindings = std::vector<FormatBinding>;

void Bind(UStringRef<UTF8> const& format, Texts const& arguments, Bindings& bindings) {
    MakeFormatParameterBindings(
        format, ConstArrayOf<UStringRef<UTF8>>(arguments.data(), arguments.data() + arguments.size()),
        ArrayOf<FormatBinding>(bindings.data(), bindings.data() + bindings.size()));
}

Bindings Bound(UStringRef<UTF8> const& format, Texts const& arguments) {
    Bindings bindings(arguments.size());
    Bind(format, arguments, bindings);
    return bindings;
}

UStringRef<UTF8> ValueOf(UStringRef<UTF8> const& name, Bindings const& bindings) {
    return FormatExpressionValue(
        name, ConstArrayOf<FormatBinding>(bindings.data(), bindings.data() + bindings.size()));
}

} // namespace

TEST(FormatVariableName, IsReservedWhenItBeginsWithAnUnderscore) {
    EXPECT_TRUE(IsFormatVariableNameReserved("_tab"_utf8));
    EXPECT_TRUE(IsFormatVariableNameReserved("_"_utf8));
    EXPECT_TRUE(IsFormatVariableNameReserved("_unheard of"_utf8));
    EXPECT_FALSE(IsFormatVariableNameReserved("tab"_utf8));
    EXPECT_FALSE(IsFormatVariableNameReserved("a_"_utf8));
}

TEST(FormatVariableName, MustNotBeEmpty) {
    EXPECT_THROW(IsFormatVariableNameReserved(""_utf8), ImproperFormatVariableName);
    EXPECT_THROW(IsFormatVariableNameReserved(UStringRef<UTF8>()), ImproperFormatVariableName);
    EXPECT_THROW(CheckFormatVariableName(""_utf8), ImproperFormatVariableName);
}

TEST(FormatVariableName, MayBeginWithAnyByte) {
    for (unsigned int first = 0; first < 256; ++first) {
        unsigned char const name[] = {static_cast<unsigned char>(first), 'a', 'b'};
        UStringRef<UTF8> const view(UTF8(), name, name + 3);
        if (first == '_')
            EXPECT_THROW(CheckFormatVariableName(view), UndefinedFormatVariable);
        else
            EXPECT_NO_THROW(CheckFormatVariableName(view)) << first;
    }
}

TEST(FormatVariableName, HasOnlyLettersAndDigitsBehindItsFirstByte) {
    std::string const allowed = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789";
    for (unsigned int byte = 0; byte < 256; ++byte) {
        auto const unit = static_cast<unsigned char>(byte);
        unsigned char const second[] = {'a', unit};
        unsigned char const last[] = {'a', 'b', 'c', unit};
        UStringRef<UTF8> const names[] = {{UTF8(), second, second + 2}, {UTF8(), last, last + 4}};
        for (UStringRef<UTF8> const& name : names) {
            if (allowed.find(static_cast<char>(unit)) != std::string::npos)
                EXPECT_NO_THROW(CheckFormatVariableName(name)) << byte;
            else
                EXPECT_THROW(CheckFormatVariableName(name), ImproperFormatVariableName) << byte;
        }
    }
}

TEST(FormatVariableName, WithADashIsImproperButForTheFirstByte) {
    EXPECT_THROW(CheckFormatVariableName("a-b"_utf8), ImproperFormatVariableName);
    EXPECT_NO_THROW(CheckFormatVariableName("-ab"_utf8));
}

TEST(FormatVariableName, OfTheReservedKindMustMeanSomething) {
    for (UStringRef<UTF8> const name :
         {"_cbrace"_utf8, "_cr"_utf8, "_crlf"_utf8, "_lf"_utf8, "_obrace"_utf8, "_tab"_utf8})
        EXPECT_NO_THROW(CheckFormatVariableName(name)) << MakeString(name);
    for (UStringRef<UTF8> const name : {"_nope"_utf8, "_"_utf8, "_TAB"_utf8, "_tabs"_utf8, "_c"_utf8,
                                        "_crl"_utf8, "_a"_utf8, "_z"_utf8, "_ta b"_utf8})
        EXPECT_THROW(CheckFormatVariableName(name), UndefinedFormatVariable) << MakeString(name);
}

TEST(FormatExpressionValue, OfAReservedNameIsItsCharacters) {
    EXPECT_EQ(ValueOf("_cbrace"_utf8, {}), "}"_utf8);
    EXPECT_EQ(ValueOf("_cr"_utf8, {}), "\x0D"_utf8);
    EXPECT_EQ(ValueOf("_crlf"_utf8, {}), "\x0D\x0A"_utf8);
    EXPECT_EQ(ValueOf("_lf"_utf8, {}), "\x0A"_utf8);
    EXPECT_EQ(ValueOf("_obrace"_utf8, {}), "{"_utf8);
    EXPECT_EQ(ValueOf("_tab"_utf8, {}), "\x09"_utf8);
}

TEST(FormatExpressionValue, OfAReservedNameIsNotLookedUpAmongTheArguments) {
    EXPECT_EQ(ValueOf("_tab"_utf8, {{"_tab"_utf8, "mine"_utf8}}), "\t"_utf8);
    EXPECT_THROW(ValueOf("_nope"_utf8, {{"_nope"_utf8, "mine"_utf8}}), UndefinedFormatVariable);
}

TEST(FormatExpressionValue, IsFoundByItsWholeName) {
    Bindings const bindings = {{"b"_utf8, "1"_utf8}, {"bb"_utf8, "2"_utf8}, {"d"_utf8, ""_utf8}};
    EXPECT_EQ(ValueOf("b"_utf8, bindings), "1"_utf8);
    EXPECT_EQ(ValueOf("bb"_utf8, bindings), "2"_utf8);
    EXPECT_EQ(ValueOf("d"_utf8, bindings), ""_utf8);
    for (UStringRef<UTF8> const name : {"a"_utf8, "ba"_utf8, "bbb"_utf8, "c"_utf8, "e"_utf8, "B"_utf8})
        EXPECT_THROW(ValueOf(name, bindings), UndefinedFormatVariable) << MakeString(name);
    EXPECT_THROW(ValueOf("b"_utf8, {}), UndefinedFormatVariable);
}

TEST(FormatExpressionValue, OfAnEmptyNameIsRefusedAsImproper) {
    EXPECT_THROW(ValueOf(""_utf8, {{""_utf8, "x"_utf8}}), ImproperFormatVariableName);
}

TEST(FormatSegmentValue, IsTheLiteralOrTheValueOfTheVariable) {
    FormatBinding const binding("a"_utf8, "1"_utf8);
    ConstArrayOf<FormatBinding> const bindings(&binding, &binding + 1);
    EXPECT_EQ(FormatSegmentValue({false, "a"_utf8}, bindings), "a"_utf8);
    EXPECT_EQ(FormatSegmentValue({true, "a"_utf8}, bindings), "1"_utf8);
    EXPECT_THROW(FormatSegmentValue({true, "b"_utf8}, bindings), UndefinedFormatVariable);
}

TEST(MakeFormatParameterBindings, BindsByPositionAndSortsByName) {
    EXPECT_EQ(Bound("{b} of {a}"_utf8, {"first"_utf8, "second"_utf8}),
              Bindings({{"a"_utf8, "second"_utf8}, {"b"_utf8, "first"_utf8}}));
    EXPECT_EQ(Bound("{c}{a}{b}"_utf8, {"3"_utf8, "1"_utf8, "2"_utf8}),
              Bindings({{"a"_utf8, "1"_utf8}, {"b"_utf8, "2"_utf8}, {"c"_utf8, "3"_utf8}}));
}

TEST(MakeFormatParameterBindings, GivesEachOccurrenceAnArgumentOfItsOwn) {
    Bindings const bindings = Bound("{a}{a}"_utf8, {"z"_utf8, "b"_utf8});
    EXPECT_EQ(bindings, Bindings({{"a"_utf8, "b"_utf8}, {"a"_utf8, "z"_utf8}}));
    EXPECT_EQ(ValueOf("a"_utf8, bindings), "b"_utf8);
    EXPECT_THROW(Bound("{a}{a}"_utf8, {"z"_utf8}), TooManyFormatArguments);
}

TEST(MakeFormatParameterBindings, OrdersValuesAsUnsignedBytes) {
    EXPECT_EQ(ValueOf("a"_utf8, Bound("{a}{a}"_utf8, {"\xC3\xA4"_utf8, "z"_utf8})), "z"_utf8);
    EXPECT_EQ(ValueOf("a"_utf8, Bound("{a}{a}"_utf8, {"10"_utf8, "1"_utf8})), "1"_utf8);
}

TEST(MakeFormatParameterBindings, GivesReservedVariablesNoArgument) {
    EXPECT_EQ(Bound("{_tab}{a}{_lf}"_utf8, {"1"_utf8}), Bindings({{"a"_utf8, "1"_utf8}}));
    EXPECT_THROW(Bound("{_tab}"_utf8, {"1"_utf8}), TooFewFormatArguments);
}

TEST(MakeFormatParameterBindings, NamesItsFailuresFromTheSideOfTheFormat) {
    EXPECT_THROW(Bound("{a}"_utf8, {}), TooManyFormatArguments);
    EXPECT_THROW(Bound("{a}{b}"_utf8, {"1"_utf8}), TooManyFormatArguments);
    EXPECT_THROW(Bound("plain"_utf8, {"1"_utf8}), TooFewFormatArguments);
    EXPECT_THROW(Bound("{a}"_utf8, {"1"_utf8, "2"_utf8}), TooFewFormatArguments);
}

TEST(MakeFormatParameterBindings, RefusesPlacesThatDoNotMatchTheArguments) {
    Bindings none;
    EXPECT_THROW(Bind("{a}"_utf8, {"1"_utf8}, none), TooManyFormatArguments);
    Bindings two(2);
    EXPECT_THROW(Bind("{a}"_utf8, {"1"_utf8}, two), TooFewFormatArguments);
    Bindings one(1);
    EXPECT_THROW(Bind("{a}"_utf8, {"1"_utf8, "2"_utf8}, one), TooFewFormatArguments);
}

TEST(MakeFormatParameterBindings, ChecksEveryName) {
    EXPECT_THROW(Bound("{}"_utf8, {}), ImproperFormatVariableName);
    EXPECT_THROW(Bound("{a-b}"_utf8, {"1"_utf8}), ImproperFormatVariableName);
    EXPECT_THROW(Bound("{_nope}"_utf8, {}), UndefinedFormatVariable);
    EXPECT_EQ(Bound("{-ab}"_utf8, {"1"_utf8}), Bindings({{"-ab"_utf8, "1"_utf8}}));
}

TEST(MakeFormatParameterBindings, ChecksANameBeforeItCountsArguments) {
    EXPECT_THROW(Bound("{a-b}"_utf8, {}), ImproperFormatVariableName);
    EXPECT_THROW(Bound("{a}{b"_utf8, {}), TooManyFormatArguments);
    EXPECT_THROW(Bound("{a}{b"_utf8, {"1"_utf8}), BadFormatStringError);
}
