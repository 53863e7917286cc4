#include "text/ICUResult.h"
#include "text/CharacterSetResult.h"
#include "text/ICU.h"

#include "tests/support/UStringPrinting.h"

#include <gtest/gtest.h>

#include <limits>
#include <new>
#include <string>
#include <type_traits>
#include <typeinfo>

namespace {

ICUResult const cNoFile(U_FILE_ACCESS_ERROR, "ucnv_open");

// Answers for the service, so that the reports show whom they ask.
class Renamed : public ICUResult {
public:
    using ICUResult::ICUResult;
    char const* ErrorName() const override { return "RENAMED"; }
};

class Recoded : public ICUResult {
public:
    using ICUResult::ICUResult;
    std::int32_t ErrorCode() const override { return U_ILLEGAL_ARGUMENT_ERROR; }
};

// Building a text fails.
template <class Result>
class Wordless : public Result {
public:
    Wordless() : Result(cNoFile) {}
    char const* ErrorName() const override { throw std::bad_alloc(); }
};

class Reworded : public ICUResult {
public:
    char const* what() const noexcept override { return "other words"; }
};

} // namespace

TEST(ICUResult, FailsForCodesAboveZeroOnly) {
    EXPECT_TRUE(ICUResult().IsSuccess());
    EXPECT_TRUE(ICUResult(0).IsSuccess());
    EXPECT_TRUE(ICUResult(U_AMBIGUOUS_ALIAS_WARNING).IsSuccess());
    EXPECT_FALSE(ICUResult(1).IsSuccess());
    EXPECT_FALSE(cNoFile.IsSuccess());
}

TEST(ICUResult, TellsItsCodeAndTheNameOfIt) {
    EXPECT_EQ(cNoFile.ErrorCode(), 4);
    EXPECT_STREQ(cNoFile.ErrorName(), "U_FILE_ACCESS_ERROR");
    EXPECT_EQ(cNoFile.Function(), "ucnv_open");
    EXPECT_STREQ(ICUResult(-122).ErrorName(), "U_AMBIGUOUS_ALIAS_WARNING");
    EXPECT_STREQ(ICUResult().ErrorName(), "U_ZERO_ERROR");
}

TEST(ICUResult, WordsCodeNameAndFunction) {
    EXPECT_EQ(cNoFile.MakeErrorMessage(), "UErrorCode=4 [U_FILE_ACCESS_ERROR] in ucnv_open");
    EXPECT_EQ(ICUResult(10).MakeErrorMessage(), "UErrorCode=10 [U_INVALID_CHAR_FOUND]");
    EXPECT_EQ(ICUResult().MakeErrorMessage(), "UErrorCode=0 [U_ZERO_ERROR]");
    EXPECT_EQ(ICUResult(-122, "f").MakeErrorMessage(), "UErrorCode=-122 [U_AMBIGUOUS_ALIAS_WARNING] in f");
}

TEST(ICUResult, NamesCodesThatTheServiceDoesNotKnow) {
    for (std::int32_t const code :
         {std::numeric_limits<std::int32_t>::max(), 1000000, -129, std::numeric_limits<std::int32_t>::min()})
        EXPECT_STREQ(ICUResult(code).ErrorName(), "[BOGUS UErrorCode]") << code;
    EXPECT_EQ(ICUResult(2147483647).MakeErrorMessage(), "UErrorCode=2147483647 [[BOGUS UErrorCode]]");
}

TEST(ICUResult, ReportsItsMessage) {
    EXPECT_STREQ(cNoFile.what(), "UErrorCode=4 [U_FILE_ACCESS_ERROR] in ucnv_open");
    EXPECT_EQ(cNoFile.uwhat(), "UErrorCode=4 [U_FILE_ACCESS_ERROR] in ucnv_open"_utf8);
    static_assert(noexcept(cNoFile.what()));
    static_assert(noexcept(cNoFile.uwhat()));
}

TEST(ICUResult, AsksTheMostDerivedClassForItsReports) {
    EXPECT_STREQ(Renamed(4, "f").what(), "UErrorCode=4 [RENAMED] in f");
    EXPECT_STREQ(Recoded(0, "f").what(), "UErrorCode=1 [U_ILLEGAL_ARGUMENT_ERROR] in f");
    EXPECT_FALSE(Recoded(0).IsSuccess());
    EXPECT_EQ(Reworded().uwhat(), "other words"_utf8);
}

TEST(ICUResult, ReportsItsTypeWhereItsMessageCannotBeBuilt) {
    Wordless<ICUResult> const plain;
    EXPECT_STREQ(plain.what(), typeid(plain).name());
    EXPECT_EQ(plain.uwhat(), MakeUTF8Ref(typeid(plain).name()));
    Wordless<CharacterSetResult> const withInput;
    EXPECT_STREQ(withInput.what(), typeid(withInput).name());
    EXPECT_EQ(withInput.uwhat(), MakeUTF8Ref(typeid(withInput).name()));
}

TEST(ICUResult, IsThrownAndCaughtAsAFailure) {
    EXPECT_THROW(throw cNoFile, ICUResult);
    EXPECT_THROW(throw cNoFile, DebuggableException);
    EXPECT_THROW(throw CharacterSetResult(cNoFile), ICUResult);
    static_assert(std::has_virtual_destructor_v<ICUResult>);
    static_assert(std::is_same_v<decltype(&ICUResult::IsSuccess), bool (ICUResult::*)() const>);
}

TEST(ICUResult, CopiesHaveTextsOfTheirOwn) {
    ICUResult original(4, "ucnv_open");
    ICUResult const copy(original);
    std::string const before = copy.what();
    original = ICUResult(7, "another_function_with_a_long_name");
    EXPECT_STREQ(original.what(),
                 "UErrorCode=7 [U_MEMORY_ALLOCATION_ERROR] in another_function_with_a_long_name");
    EXPECT_EQ(copy.what(), before);
}

TEST(CharacterSetResult, LeavesOutWhatItDoesNotHave) {
    EXPECT_EQ(CharacterSetResult().MakeErrorMessage(), "CharacterSetResult: UErrorCode=0 [U_ZERO_ERROR]");
    EXPECT_EQ(CharacterSetResult(cNoFile).MakeErrorMessage(),
              "CharacterSetResult: UErrorCode=4 [U_FILE_ACCESS_ERROR] in ucnv_open");
}

TEST(CharacterSetResult, WordsContextAndBadInput) {
    CharacterSetResult result(ICUResult(10, "ucnv_fromUChars"), "bad", 3);
    EXPECT_EQ(result.MakeErrorMessage(),
              "CharacterSetResult: UErrorCode=10 [U_INVALID_CHAR_FOUND] in ucnv_fromUChars [\"bad\"]");
    result.SetContext("file name");
    EXPECT_EQ(result.Context(), "file name");
    EXPECT_EQ(
        result.MakeErrorMessage(),
        "CharacterSetResult: file name: UErrorCode=10 [U_INVALID_CHAR_FOUND] in ucnv_fromUChars [\"bad\"]");
    CharacterSetResult withoutInput(ICUResult(10));
    withoutInput.SetContext("c");
    EXPECT_EQ(withoutInput.MakeErrorMessage(), "CharacterSetResult: c: UErrorCode=10 [U_INVALID_CHAR_FOUND]");
}

TEST(CharacterSetResult, ReportsItsOwnMessage) {
    CharacterSetResult const result(ICUResult(12, "f"), "x", 1);
    ICUResult const& base = result;
    EXPECT_STREQ(base.what(), "CharacterSetResult: UErrorCode=12 [U_ILLEGAL_CHAR_FOUND] in f [\"x\"]");
    EXPECT_EQ(base.uwhat(), "CharacterSetResult: UErrorCode=12 [U_ILLEGAL_CHAR_FOUND] in f [\"x\"]"_utf8);
    EXPECT_EQ(base.MakeErrorMessage(), "UErrorCode=12 [U_ILLEGAL_CHAR_FOUND] in f");
}

TEST(CharacterSetResult, KeepsBadBytesAsTheyStand) {
    char const bytes[] = {'\x81', '\0', '\xFF'};
    EXPECT_EQ(CharacterSetResult(cNoFile, bytes, 3).InvalidText(), std::string("\x81\0\xFF", 3));
    EXPECT_EQ(CharacterSetResult(cNoFile, static_cast<char const*>(nullptr), 0).InvalidText(), "");
}

TEST(CharacterSetResult, KeepsBadUnitsAsUTF8) {
    struct {
        std::vector<std::uint16_t> units;
        std::string text;
    } const cases[] = {
        {{}, ""},
        {{0x78}, "x"},
        {{0x7F, 0x80, 0x7FF}, "\x7F\xC2\x80\xDF\xBF"},
        {{0x800, 0xFFFF}, "\xE0\xA0\x80\xEF\xBF\xBF"},
        {{0xD7FF, 0xE000}, "\xED\x9F\xBF\xEE\x80\x80"},
        {{0xD83D, 0xDE00}, "\xF0\x9F\x98\x80"},
        {{0xD800, 0xDC00, 0xDBFF, 0xDFFF}, "\xF0\x90\x80\x80\xF4\x8F\xBF\xBF"},
        {{0xD83D}, "\xEF\xBF\xBD"},
        {{0xDE00, 0xD83D}, "\xEF\xBF\xBD\xEF\xBF\xBD"},
        {{0xD83D, 0x78}, "\xEF\xBF\xBDx"},
    };
    for (auto const& [units, text] : cases)
        EXPECT_EQ(CharacterSetResult(cNoFile, units.data(), units.size()).InvalidText(), text);
    // What stands behind the last unit is no partner.
    std::uint16_t const cut[] = {0x78, 0xD83D, 0xDE00};
    EXPECT_EQ(CharacterSetResult(cNoFile, cut, 2).InvalidText(), "x\xEF\xBF\xBD");
}
