#include "format/UFormatIterator.h"

#include "foundation/Exceptions.h"

#include "tests/support/UStringPrinting.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

// Literals as they stand, expressions as "<name>".
std::vector<std::string> SegmentsOf(UStringRef<UTF8> const& text) {
    std::vector<std::string> segments;
    UFormatIterator const end = UFormatIterator::EndOf(text);
    for (UFormatIterator segment(text); segment != end; ++segment) {
        std::string const content = MakeString(segment->text);
        segments.push_back(segment->isExpression ? "<" + content + ">" : content);
    }
    return segments;
}

using Segments = std::vector<std::string>;

} // namespace

TEST(UFormatIterator, TellsLiteralsFromExpressions) {
    struct {
        char const* text;
        Segments segments;
    } const cases[] = {
        {"", {}},
        {"plain", {"plain"}},
        {"{a}", {"<a>"}},
        {"{a}{b}", {"<a>", "<b>"}},
        {"x{a}y", {"x", "<a>", "y"}},
        {"{a}y{b}", {"<a>", "y", "<b>"}},
        {"{}", {"<>"}},
        {"{}{}", {"<>", "<>"}},
        {"{ a\tb }", {"< a\tb >"}},
        {"\xC3\xA4{\xC3\xB6}\xC3\xBC", {"\xC3\xA4", "<\xC3\xB6>", "\xC3\xBC"}},
    };
    for (auto const& [text, segments] : cases) EXPECT_EQ(SegmentsOf(MakeUTF8Ref(text)), segments) << text;
}

TEST(UFormatIterator, TakesAClosingBraceOfItsOwnAsLiteral) {
    EXPECT_EQ(SegmentsOf("a}b"_utf8), Segments({"a}b"}));
    EXPECT_EQ(SegmentsOf("}"_utf8), Segments({"}"}));
    EXPECT_EQ(SegmentsOf("{a}}"_utf8), Segments({"<a>", "}"}));
}

TEST(UFormatIterator, KnowsNoNestingAndNoEscape) {
    EXPECT_EQ(SegmentsOf("{a{b}"_utf8), Segments({"<a{b>"}));
    EXPECT_EQ(SegmentsOf("{{a}}"_utf8), Segments({"<{a>", "}"}));
    EXPECT_EQ(SegmentsOf("\\{a}"_utf8), Segments({"\\", "<a>"}));
}

TEST(UFormatIterator, GoesByBytesAndNotByTerminators) {
    EXPECT_EQ(SegmentsOf("a\0b{c\0d}"_utf8),
              Segments({std::string("a\0b", 3), "<" + std::string("c\0d", 3) + ">"}));
}

TEST(UFormatIterator, RefusesAnExpressionThatDoesNotEnd) {
    EXPECT_THROW(UFormatIterator("{"_utf8), BadFormatStringError);
    EXPECT_THROW(UFormatIterator("{a"_utf8), BadFormatStringError);
    EXPECT_THROW(SegmentsOf("a{"_utf8), BadFormatStringError);
    EXPECT_THROW(SegmentsOf("{a}{b"_utf8), BadFormatStringError);
}

TEST(UFormatIterator, StaysWhereItIsWhenTheNextExpressionDoesNotEnd) {
    UFormatIterator segment("abc{d"_utf8);
    EXPECT_THROW(segment.GetNextSegment(), BadFormatStringError);
    EXPECT_EQ(segment->text, "abc"_utf8);
    EXPECT_THROW(segment.GetNextSegment(), BadFormatStringError);
}

TEST(UFormatIterator, StandsAtAnEmptyLiteralBehindTheLastSegment) {
    UStringRef<UTF8> const text = "{a}"_utf8;
    UFormatIterator segment(text);
    EXPECT_TRUE(segment->isExpression);
    for (int step = 0; step < 3; ++step) {
        segment.GetNextSegment();
        EXPECT_FALSE(segment->isExpression);
        EXPECT_TRUE(segment->text.empty());
        EXPECT_EQ(segment, UFormatIterator::EndOf(text));
    }
}

TEST(UFormatIterator, IsAtTheEndOfAnEmptyTextAtOnce) {
    UStringRef<UTF8> const null;
    EXPECT_EQ(UFormatIterator(null), UFormatIterator::EndOf(null));
    UStringRef<UTF8> const empty = ""_utf8;
    EXPECT_EQ(UFormatIterator(empty), UFormatIterator::EndOf(empty));
}

TEST(UFormatIterator, IsNotAtTheEndWhileItStandsAtTheLastSegment) {
    for (UStringRef<UTF8> const text : {"a"_utf8, "{a}"_utf8})
        EXPECT_FALSE(UFormatIterator(text) == UFormatIterator::EndOf(text));
}

TEST(UFormatIterator, TakesMillionsOfSegmentsWithoutRecursion) {
    std::string text;
    for (int count = 0; count < 1000000; ++count) text += "{a}b";
    UFormatIterator segment(MakeUTF8Ref(text));
    UFormatIterator const end = UFormatIterator::EndOf(MakeUTF8Ref(text));
    std::size_t segments = 0;
    for (; segment != end; ++segment) ++segments;
    EXPECT_EQ(segments, 2000000u);
}
