#include "foundation/Exceptions.h"
#include "foundation/ExceptionPL.h"
#include "text/UString.h"

#include "tests/support/Allocations.h"
#include "tests/support/LocaleScope.h"
#include "tests/support/UStringPrinting.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <type_traits>

namespace {

// How many of the classes `E` stands on, itself not counted.
template <class E, class... Classes>
constexpr int CountBases() {
    return (0 + ... + (std::is_base_of_v<Classes, E> && !std::is_same_v<Classes, E> ? 1 : 0));
}

// Of all classes that one could stand on by mistake.
template <class E>
constexpr int cBases = CountBases<
    E, ExceptionPL, InvalidMonth, InvalidDay, InvalidTime, NoSuchDate, NoSuchTimeOfDay, NoTimeZone,
    WrongDayOfWeek, InvalidDateTimeString, InvalidDateTimeNegativeYear, ParsingFailure, DataOverflow,
    NoMoreData, ConstDataCapacityExceeded, RequiredValueWouldOverflow, StackFull, InvalidTextEncoding,
    NamedNotIANAUTF8Encoding, UnrepresentableBinaryString, UnrepresentableBinaryStringU8,
    UnrepresentableBinaryStringU16, UnixPlatform::MultiByteToWideConvertError,
    UnixPlatform::WideToMultiByteConvertError, NotANumeral, NumeralTooLarge, NotAFloatingPoint,
    TooLargeForStandardNotation, IllegalFileName, FileLoopUninitialized, FileReadingLoopEndOfFileError,
    FormatError, BadFormatStringError, ImproperFormatVariableName, UndefinedFormatVariable,
    TooManyFormatArguments, TooFewFormatArguments, NoSuchAttribute, NoSuchChildElement, NoSuchActionRequestID,
    UnixPlatform::MutexError>();

// What a class without data must be: directly on that base, without fields, reporting its encoded name.
template <class E, class Base = DebuggableException>
void ExpectPlain(char const* name) {
    static_assert(std::is_base_of_v<Base, E>);
    static_assert(cBases<E> == (std::is_same_v<Base, DebuggableException> ? 0 : 1));
    static_assert(sizeof(E) == sizeof(DebuggableException));
    try {
        throw E();
    } catch (Base const& failure) {
        EXPECT_STREQ(failure.what(), name);
        EXPECT_EQ(failure.uwhat(), MakeUTF8Ref(name));
    }
}

template <class E>
void ExpectOutsideTheTree() {
    static_assert(std::is_empty_v<E>);
    static_assert(!std::is_base_of_v<std::exception, E>);
    static_assert(!std::is_polymorphic_v<E>);
    bool caughtAsItself = false;
    try {
        throw E();
    } catch (std::exception const&) {
        FAIL() << "caught as a standard exception";
    } catch (E const&) {
        caughtAsItself = true;
    }
    EXPECT_TRUE(caughtAsItself);
}

class Derived : public ExceptionPL {
public:
    using ExceptionPL::ExceptionPL;
};

class Reworded : public ExceptionPL {
public:
    using ExceptionPL::ExceptionPL;
    UStringRef<UTF8> uwhat() const noexcept override { return "Other words."_utf8; }
};

std::string const cLongMessage(1000, 'm');

// What a new failure with the long message reports when memory runs out after so many allocations.
std::string WhatWithAllocations(std::size_t allocations) {
    ExceptionPL const failure(MakeUTF8Ref(cLongMessage));
    char const* what = nullptr;
    {
        FailingAllocation const failing(allocations);
        what = failure.what();
    }
    return what;
}

} // namespace

TEST(DebuggableException, ReportsTheEncodedNameOfTheMostDerivedClass) {
    NoMoreData const failure;
    DebuggableException const& base = failure;
    EXPECT_STREQ(base.what(), "10NoMoreData");
    EXPECT_EQ(base.uwhat(), "10NoMoreData"_utf8);
}

TEST(DebuggableException, StandsOnTheStandardRootAndAnEmptySecondBase) {
    static_assert(std::is_base_of_v<std::exception, DebuggableException>);
    static_assert(std::is_base_of_v<UnixPlatform::ExceptionDebuggingInfo, DebuggableException>);
    static_assert(std::is_empty_v<UnixPlatform::ExceptionDebuggingInfo>);
    static_assert(sizeof(DebuggableException) == sizeof(std::exception));
    EXPECT_STREQ(DebuggableException().what(), "19DebuggableException");
}

TEST(DebuggableException, NeverLetsAnExceptionOutOfItsReports) {
    static_assert(noexcept(std::declval<DebuggableException const&>().what()));
    static_assert(noexcept(std::declval<DebuggableException const&>().uwhat()));
    static_assert(noexcept(std::declval<ExceptionPL const&>().what()));
    static_assert(noexcept(std::declval<ExceptionPL const&>().uwhat()));
}

TEST(ExceptionTree, HasPlainClassesForTime) {
    ExpectPlain<InvalidMonth>("12InvalidMonth");
    ExpectPlain<InvalidDay>("10InvalidDay");
    ExpectPlain<InvalidTime>("11InvalidTime");
    ExpectPlain<NoSuchDate, InvalidTime>("10NoSuchDate");
    ExpectPlain<NoSuchTimeOfDay, InvalidTime>("15NoSuchTimeOfDay");
    ExpectPlain<NoTimeZone, InvalidTime>("10NoTimeZone");
    ExpectPlain<WrongDayOfWeek, InvalidTime>("14WrongDayOfWeek");
    ExpectPlain<InvalidDateTimeString>("21InvalidDateTimeString");
    ExpectPlain<InvalidDateTimeNegativeYear>("27InvalidDateTimeNegativeYear");
    ExpectPlain<ParsingFailure>("14ParsingFailure");
}

TEST(ExceptionTree, HasPlainClassesForDataAndContainers) {
    ExpectPlain<DataOverflow>("12DataOverflow");
    ExpectPlain<NoMoreData>("10NoMoreData");
    ExpectPlain<ConstDataCapacityExceeded>("25ConstDataCapacityExceeded");
    ExpectPlain<RequiredValueWouldOverflow>("26RequiredValueWouldOverflow");
    ExpectPlain<StackFull>("9StackFull");
}

TEST(ExceptionTree, HasPlainClassesForTextAndNumerals) {
    ExpectPlain<InvalidTextEncoding>("19InvalidTextEncoding");
    ExpectPlain<NamedNotIANAUTF8Encoding>("24NamedNotIANAUTF8Encoding");
    ExpectPlain<UnrepresentableBinaryString>("27UnrepresentableBinaryString");
    ExpectPlain<UnrepresentableBinaryStringU8, UnrepresentableBinaryString>(
        "29UnrepresentableBinaryStringU8");
    ExpectPlain<UnrepresentableBinaryStringU16, UnrepresentableBinaryString>(
        "30UnrepresentableBinaryStringU16");
    ExpectPlain<UnixPlatform::MultiByteToWideConvertError>("N12UnixPlatform27MultiByteToWideConvertErrorE");
    ExpectPlain<UnixPlatform::WideToMultiByteConvertError>("N12UnixPlatform27WideToMultiByteConvertErrorE");
    ExpectPlain<NotANumeral>("11NotANumeral");
    ExpectPlain<NumeralTooLarge>("15NumeralTooLarge");
    ExpectPlain<NotAFloatingPoint>("17NotAFloatingPoint");
    ExpectPlain<TooLargeForStandardNotation>("27TooLargeForStandardNotation");
    ExpectPlain<IllegalFileName>("15IllegalFileName");
    ExpectPlain<FileLoopUninitialized>("21FileLoopUninitialized");
    ExpectPlain<FileReadingLoopEndOfFileError>("29FileReadingLoopEndOfFileError");
}

TEST(ExceptionTree, HasPlainClassesForTheUpperRooms) {
    ExpectPlain<FormatError>("11FormatError");
    ExpectPlain<BadFormatStringError>("20BadFormatStringError");
    ExpectPlain<ImproperFormatVariableName>("26ImproperFormatVariableName");
    ExpectPlain<UndefinedFormatVariable>("23UndefinedFormatVariable");
    ExpectPlain<TooManyFormatArguments>("22TooManyFormatArguments");
    ExpectPlain<TooFewFormatArguments>("21TooFewFormatArguments");
    ExpectPlain<NoSuchAttribute>("15NoSuchAttribute");
    ExpectPlain<NoSuchChildElement>("18NoSuchChildElement");
    ExpectPlain<NoSuchActionRequestID>("21NoSuchActionRequestID");
}

TEST(ExceptionTree, LeavesFourClassesOutside) {
    ExpectOutsideTheTree<UnixPipeReadMessageError>();
    ExpectOutsideTheTree<UnixPipeWriteMessageError>();
    ExpectOutsideTheTree<FiFoQueueIsEmpty>();
    ExpectOutsideTheTree<NoSelectedAction>();
}

TEST(MutexError, CarriesTheCodeOfTheCall) {
    static_assert(std::is_base_of_v<DebuggableException, UnixPlatform::MutexError>);
    EXPECT_EQ(UnixPlatform::MutexError(35).Code(), 35);
    EXPECT_STREQ(UnixPlatform::MutexError(-1).what(), "N12UnixPlatform10MutexErrorE");
}

TEST(ThrowError, ThrowsForEveryCodeButZero) {
    EXPECT_NO_THROW(UnixPlatform::ThrowError<UnixPlatform::MutexError>(0));
    try {
        UnixPlatform::ThrowError<UnixPlatform::MutexError>(22);
        FAIL() << "a failed call went unnoticed";
    } catch (UnixPlatform::MutexError const& failure) {
        EXPECT_EQ(failure.Code(), 22);
    }
}

TEST(ExceptionPL, ReportsItsMessage) {
    ExceptionPL const failure("Something went wrong."_utf8);
    EXPECT_EQ(failure.uwhat(), "Something went wrong."_utf8);
    EXPECT_STREQ(failure.what(), "Something went wrong.");
    DebuggableException const& base = failure;
    EXPECT_STREQ(base.what(), "Something went wrong.");
    EXPECT_EQ(base.uwhat(), "Something went wrong."_utf8);
}

TEST(ExceptionPL, KeepsItsOwnCopyOfTheMessage) {
    CopiedUString<UTF8> message(MakeUTF8Ref(cLongMessage));
    ExceptionPL const failure(message);
    message.clear();
    EXPECT_EQ(failure.uwhat(), MakeUTF8Ref(cLongMessage));
    EXPECT_EQ(failure.what(), cLongMessage);
}

TEST(ExceptionPL, ReportsItsTypeNameWithoutAMessage) {
    EXPECT_STREQ(ExceptionPL(""_utf8).what(), "11ExceptionPL");
    EXPECT_EQ(ExceptionPL(""_utf8).uwhat(), "11ExceptionPL"_utf8);
    EXPECT_STREQ(ExceptionPL(UStringRef<UTF8>()).what(), "11ExceptionPL");
    Derived const derived(""_utf8);
    ExceptionPL const& base = derived;
    std::string const what = base.what();
    EXPECT_NE(what.find("Derived"), std::string::npos) << what;
    EXPECT_EQ(base.uwhat(), MakeUTF8Ref(what));
}

TEST(ExceptionPL, ReportsTheWordsOfADerivedClass) {
    Reworded const failure("Something went wrong."_utf8);
    EXPECT_STREQ(failure.what(), "Other words.");
    EXPECT_STREQ(Reworded(""_utf8).what(), "Other words.");
}

TEST(ExceptionPL, ReportsItsTypeNameWhenMemoryRunsOut) {
    // In the "C" locale: the wide text, its copy for the C library, the local text and the copy that is kept.
    for (std::size_t allocations = 0; allocations < 4; ++allocations)
        EXPECT_EQ(WhatWithAllocations(allocations), "11ExceptionPL") << allocations;
    EXPECT_EQ(WhatWithAllocations(4), cLongMessage);
}

TEST(ExceptionPL, ReportsItsTypeNameWhenTheMessageHasNoNarrowForm) {
    // The tests run in the "C" locale, which has no such letter.
    ExceptionPL const failure("gr\xc3\xbcn"_utf8);
    EXPECT_STREQ(failure.what(), "11ExceptionPL");
    EXPECT_EQ(failure.uwhat(), "gr\xc3\xbcn"_utf8);
}

TEST(ExceptionPL, ReportsItsTypeNameWhenBuiltFromNoText) {
    ExceptionPL const fromNull(static_cast<char const*>(nullptr));
    EXPECT_STREQ(fromNull.what(), "11ExceptionPL");
    EXPECT_EQ(fromNull.uwhat(), "11ExceptionPL"_utf8);
    ExceptionPL const fromEmpty("");
    EXPECT_STREQ(fromEmpty.what(), "11ExceptionPL");
    EXPECT_EQ(fromEmpty.uwhat(), "11ExceptionPL"_utf8);
    ExceptionPL const fromEmptyString(std::string{});
    EXPECT_STREQ(fromEmptyString.what(), "11ExceptionPL");
    EXPECT_EQ(fromEmptyString.uwhat(), "11ExceptionPL"_utf8);
}

TEST(ExceptionPL, ConvertsALocalMessage) {
    LocaleScope const locale("de_DE.ISO-8859-1");
    ExceptionPL const fromPointer("gr\xfcn");
    EXPECT_EQ(fromPointer.uwhat(), "gr\xc3\xbcn"_utf8);
    EXPECT_STREQ(fromPointer.what(), "gr\xfcn");
    ExceptionPL const fromString(std::string("gr\xfcn"));
    EXPECT_EQ(fromString.uwhat(), "gr\xc3\xbcn"_utf8);
    EXPECT_STREQ(fromString.what(), "gr\xfcn");
}

TEST(ExceptionPL, ReportsInTheLocaleOfTheMoment) {
    ExceptionPL const failure("gr\xc3\xbcn"_utf8);
    {
        LocaleScope const locale("de_DE.ISO-8859-1");
        EXPECT_STREQ(failure.what(), "gr\xfcn");
    }
    {
        LocaleScope const locale("de_DE.UTF-8");
        EXPECT_STREQ(failure.what(), "gr\xc3\xbcn");
    }
    EXPECT_STREQ(failure.what(), "11ExceptionPL");
}

TEST(ExceptionPL, ReportsItsTypeNameForACharacterThatTheLocaleDoesNotHave) {
    LocaleScope const locale("de_DE.ISO-8859-1");
    ExceptionPL const failure("\xe2\x82\xac 5"_utf8);
    EXPECT_STREQ(failure.what(), "11ExceptionPL");
    EXPECT_EQ(failure.uwhat(), "\xe2\x82\xac 5"_utf8);
}

TEST(ExceptionPL, ReportsItsTypeNameForAMessageThatIsNoText) {
    LocaleScope const locale("de_DE.ISO-8859-1");
    ExceptionPL const failure("a\xff"_utf8);
    EXPECT_STREQ(failure.what(), "11ExceptionPL");
    EXPECT_EQ(failure.uwhat(), "a\xff"_utf8);
}

TEST(ExceptionPL, IsNotMadeOfBytesThatAreNoLocalText) {
    LocaleScope const locale("ja_JP.EUC-JP");
    EXPECT_THROW(ExceptionPL("\xff"), UnixPlatform::MultiByteToWideConvertError);
    EXPECT_THROW(ExceptionPL(std::string("a\xb4")), UnixPlatform::MultiByteToWideConvertError);
}

TEST(ExceptionPL, CopyHasTextsOfItsOwn) {
    ExceptionPL const original("first"_utf8);
    char const* const narrow = original.what();
    ExceptionPL const copy(original);
    EXPECT_EQ(copy.uwhat(), "first"_utf8);
    EXPECT_STREQ(copy.what(), "first");
    EXPECT_NE(copy.what(), narrow);
    EXPECT_NE(copy.uwhat().begin(), original.uwhat().begin());
}

TEST(ExceptionPL, OutlivesWhatItWasCopiedFrom) {
    auto original = std::make_unique<ExceptionPL>(MakeUTF8Ref(cLongMessage));
    EXPECT_EQ(original->what(), cLongMessage);
    ExceptionPL const copy(*original);
    original.reset();
    EXPECT_EQ(copy.what(), cLongMessage);
    EXPECT_EQ(copy.uwhat(), MakeUTF8Ref(cLongMessage));
}

TEST(ExceptionPL, AssignsTheMessageAndLeavesTheNarrowTextAlone) {
    ExceptionPL target("first"_utf8);
    ExceptionPL const source("other"_utf8);
    char const* const narrow = target.what();
    target = source;
    EXPECT_STREQ(narrow, "first");
    EXPECT_EQ(target.uwhat(), "other"_utf8);
    EXPECT_STREQ(target.what(), "other");
}

TEST(ExceptionPL, KeepsItsMessageWhenAssignedToItself) {
    ExceptionPL failure(MakeUTF8Ref(cLongMessage));
    ExceptionPL const& alias = failure;
    failure = alias;
    EXPECT_EQ(failure.uwhat(), MakeUTF8Ref(cLongMessage));
}

TEST(ExceptionPL, RebuildsTheNarrowTextAtEachCall) {
    ExceptionPL failure("first"_utf8);
    EXPECT_STREQ(failure.what(), "first");
    failure = ExceptionPL("a second one"_utf8);
    EXPECT_STREQ(failure.what(), "a second one");
    failure = ExceptionPL(""_utf8);
    EXPECT_STREQ(failure.what(), "11ExceptionPL");
}

TEST(ExceptionPL, IsCaughtAtEveryLevelOfTheTree) {
    EXPECT_THROW(throw ExceptionPL("x"_utf8), ExceptionPL);
    EXPECT_THROW(throw ExceptionPL("x"_utf8), DebuggableException);
    EXPECT_THROW(throw ExceptionPL("x"_utf8), std::exception);
}
