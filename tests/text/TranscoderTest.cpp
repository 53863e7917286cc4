#include "text/Transcoder.h"

#include "tests/support/Allocations.h"
#include "tests/text/TranscodingSupport.h"

#include <gtest/gtest.h>
#include <unicode/ucnv.h>
#include <unicode/ustring.h>

#include <algorithm>
#include <array>
#include <iconv.h>
#include <numeric>
#include <random>
#include <stdexcept>
#include <type_traits>

namespace {

using Bytes = Units<UTF8>;
using Pairs = Units<UTF16>;
using Values = Units<UTF32>;

struct Character {
    std::uint32_t value;
    Bytes utf8;
    Pairs utf16;
};

// Each kind of character, at the bounds of its kind.
Character const cCharacters[] = {
    {0x0, {0x00}, {0x0}},
    {0x41, {0x41}, {0x41}},
    {0x7F, {0x7F}, {0x7F}},
    {0x80, {0xC2, 0x80}, {0x80}},
    {0xFC, {0xC3, 0xBC}, {0xFC}},
    {0x7FF, {0xDF, 0xBF}, {0x7FF}},
    {0x800, {0xE0, 0xA0, 0x80}, {0x800}},
    {0x20AC, {0xE2, 0x82, 0xAC}, {0x20AC}},
    {0xD7FF, {0xED, 0x9F, 0xBF}, {0xD7FF}},
    {0xE000, {0xEE, 0x80, 0x80}, {0xE000}},
    {0xFFFD, {0xEF, 0xBF, 0xBD}, {0xFFFD}},
    {0xFFFF, {0xEF, 0xBF, 0xBF}, {0xFFFF}},
    {0x10000, {0xF0, 0x90, 0x80, 0x80}, {0xD800, 0xDC00}},
    {0x1F600, {0xF0, 0x9F, 0x98, 0x80}, {0xD83D, 0xDE00}},
    {0x103FF, {0xF0, 0x90, 0x8F, 0xBF}, {0xD800, 0xDFFF}},
    {0x10400, {0xF0, 0x90, 0x90, 0x80}, {0xD801, 0xDC00}},
    {0x10FFFF, {0xF4, 0x8F, 0xBF, 0xBF}, {0xDBFF, 0xDFFF}},
};

// All values that are characters: every one but the surrogates.
Values AllValues() {
    Values values(0x110000 - 0x800);
    std::iota(values.begin(), values.begin() + 0xD800, 0U);
    std::iota(values.begin() + 0xD800, values.end(), 0xE000U);
    return values;
}

template <class E>
char const* NameOf() {
    if (std::is_same_v<E, UTF8>) return "UTF-8";
    return std::is_same_v<E, UTF16> ? "UTF-16LE" : "UTF-32LE";
}

template <class E>
Units<E> UnitsOfBytes(std::vector<char> const& bytes, std::size_t size) {
    Units<E> units(size / sizeof(typename E::Unit));
    std::memcpy(units.data(), bytes.data(), size);
    return units;
}

// The same conversion by other hands: ICU with a converter that stops at what is no text, and iconv.
template <class To, class From>
Outcome<To> ByICU(Units<From> const& units) {
    UErrorCode error = U_ZERO_ERROR;
    UConverter* const to = ucnv_open(NameOf<To>(), &error);
    UConverter* const from = ucnv_open(NameOf<From>(), &error);
    ucnv_setToUCallBack(from, UCNV_TO_U_CALLBACK_STOP, nullptr, nullptr, nullptr, &error);
    ucnv_setFromUCallBack(to, UCNV_FROM_U_CALLBACK_STOP, nullptr, nullptr, nullptr, &error);
    std::vector<char> room(units.size() * 4 + 16);
    char* target = room.data();
    char const* source = reinterpret_cast<char const*>(units.data());
    ucnv_convertEx(to, from, &target, room.data() + room.size(), &source,
                   source + units.size() * sizeof(typename From::Unit), nullptr, nullptr, nullptr, nullptr,
                   true, true, &error);
    ucnv_close(from);
    ucnv_close(to);
    if (U_FAILURE(error)) return std::nullopt;
    return UnitsOfBytes<To>(room, static_cast<std::size_t>(target - room.data()));
}

template <class To, class From>
Outcome<To> ByIconv(Units<From> units) {
    iconv_t const converter = iconv_open(NameOf<To>(), NameOf<From>());
    std::vector<char> room(units.size() * 4 + 16);
    char* source = reinterpret_cast<char*>(units.data());
    std::size_t left = units.size() * sizeof(typename From::Unit);
    char* target = room.data();
    std::size_t free = room.size();
    std::size_t const result = iconv(converter, &source, &left, &target, &free);
    iconv_close(converter);
    if (result != 0) return std::nullopt;
    return UnitsOfBytes<To>(room, room.size() - free);
}

template <class To, class From>
void ExpectSameByOthers(Units<From> const& units) {
    Outcome<To> const ours = Transcoded<To, From>(units);
    EXPECT_TRUE(ours.has_value());
    // EXPECT_TRUE, since the texts are too long to be printed.
    EXPECT_TRUE(ours == (ByICU<To, From>(units))) << "ICU makes " << NameOf<To>() << " differently";
    EXPECT_TRUE(ours == (ByIconv<To, From>(units))) << "iconv makes " << NameOf<To>() << " differently";
}

template <class To, class From>
void ExpectSameInAllPieces(Units<From> const& units) {
    Outcome<To> const whole = Transcoded<To, From>(units);
    for (std::size_t cut = 0; cut <= units.size(); ++cut) {
        EXPECT_EQ((TranscodedInPieces<To, From>(units, {cut})), whole) << "cut at " << cut;
        EXPECT_EQ((TranscodedInPieces<To, From>(units, {cut, cut})), whole)
            << "cut with an empty piece at " << cut;
    }
    std::vector<std::size_t> everywhere(units.size());
    std::iota(everywhere.begin(), everywhere.end(), std::size_t{0});
    EXPECT_EQ((TranscodedInPieces<To, From>(units, everywhere)), whole) << "unit by unit";
}

// For texts that are too long to be cut at every place.
template <class To, class From>
void ExpectSameInPiecesOfAnySizes(Units<From> const& units) {
    Outcome<To> const whole = Transcoded<To, From>(units);
    ASSERT_TRUE(whole);
    std::mt19937 numbers(9);
    for (int round = 0; round < 20; ++round) {
        std::vector<std::size_t> cuts;
        for (std::size_t at = 0; at < units.size(); at += 1 + numbers() % (1U << (round % 14)))
            cuts.push_back(at);
        EXPECT_TRUE((TranscodedInPieces<To, From>(units, cuts) == whole)) << round;
    }
}

// Counts what it receives and keeps nothing.
template <class E>
class CountingTarget : public UTextReceiver<E> {
public:
    void Receive(ConstArrayOf<typename E::Unit> piece) override { size += piece.Size(); }

    std::size_t size = 0;
};

// Pieces of seven units cut many of the characters.
template <class To, class From>
void ExpectNoAllocation(Units<From> const& units) {
    constexpr std::size_t pieceSize = 7;
    CountingTarget<To> target;
    unsigned long const before = AllocationCount();
    GenericTranscoder<To, From> transcoder(target);
    transcoder.Start(From());
    ConstArrayOf<typename From::Unit> const all = Range<From>(units);
    for (auto next = all.begin(); next != all.end();) {
        auto const end = next + std::min(pieceSize, static_cast<std::size_t>(all.end() - next));
        transcoder.Receive(ConstArrayOf<typename From::Unit>(next, end));
        next = end;
    }
    transcoder.ReceiveEnd();
    EXPECT_EQ(AllocationCount(), before);
    EXPECT_EQ(target.size, (Transcoded<To, From>(units)->size()));
    EXPECT_GT(AllocationCount(), before) << "the count does not count";
}

// The text comes whole, in pieces that keep to their bound.
template <class To, class From>
void ExpectInBlocks(Units<From> const& from, Units<To> const& to) {
    RecordingTarget<To> target;
    GenericTranscoder<To, From> transcoder(target);
    transcoder.Start(From());
    transcoder.Receive(Range<From>(from));
    transcoder.ReceiveEnd();
    EXPECT_TRUE(target.text == to);
    for (std::size_t const size : target.pieces) EXPECT_LE(size * sizeof(typename To::Unit), 4096U);
}

// Characters of all kinds in a row, in the encoding.
template <class E>
Units<E> MixedText(std::uint32_t seed, std::size_t characters) {
    std::mt19937 numbers(seed);
    Values values;
    while (values.size() < characters) {
        // Runs of one kind, as texts have them, of lengths around those of a step.
        Character const& character = cCharacters[numbers() % std::size(cCharacters)];
        values.insert(values.end(), 1 + numbers() % 12, numbers() % 2 == 0 ? 'a' : character.value);
    }
    if constexpr (std::is_same_v<E, UTF32>) {
        return values;
    } else {
        return *ByICU<E, UTF32>(values);
    }
}

// Letters before and behind a text that put it at every place of a step of the quick way, and at the end.
template <class E>
Units<E> Framed(std::size_t before, Units<E> const& text, std::size_t behind) {
    Units<E> framed(before, 'a');
    framed.insert(framed.end(), text.begin(), text.end());
    framed.insert(framed.end(), behind, 'z');
    return framed;
}

template <class To, class From>
void ExpectRefusedEverywhere(Units<From> const& text) {
    for (std::size_t before = 0; before < 20; ++before) {
        for (std::size_t const behind : {0U, 1U, 3U, 9U, 40U}) {
            EXPECT_EQ((Transcoded<To, From>(Framed<From>(before, text, behind))), std::nullopt)
                << before << " letters before, " << behind << " behind";
        }
    }
}

} // namespace

TEST(Transcode, ConvertsEachKindOfCharacterBetweenAllEncodings) {
    for (Character const& character : cCharacters) {
        Values const value{character.value};
        EXPECT_EQ((Transcoded<UTF8, UTF32>(value)), character.utf8) << character.value;
        EXPECT_EQ((Transcoded<UTF8, UTF16>(character.utf16)), character.utf8) << character.value;
        EXPECT_EQ((Transcoded<UTF16, UTF8>(character.utf8)), character.utf16) << character.value;
        EXPECT_EQ((Transcoded<UTF16, UTF32>(value)), character.utf16) << character.value;
        EXPECT_EQ((Transcoded<UTF32, UTF8>(character.utf8)), value) << character.value;
        EXPECT_EQ((Transcoded<UTF32, UTF16>(character.utf16)), value) << character.value;
    }
}

TEST(Transcode, ConvertsEachKindOfCharacterAtEveryPlace) {
    for (Character const& character : cCharacters) {
        Values const value{character.value};
        for (std::size_t before = 0; before < 20; ++before) {
            for (std::size_t const behind : {0U, 1U, 7U, 40U}) {
                Bytes const utf8 = Framed<UTF8>(before, character.utf8, behind);
                Pairs const utf16 = Framed<UTF16>(before, character.utf16, behind);
                Values const utf32 = Framed<UTF32>(before, value, behind);
                EXPECT_EQ((Transcoded<UTF8, UTF32>(utf32)), utf8);
                EXPECT_EQ((Transcoded<UTF8, UTF16>(utf16)), utf8);
                EXPECT_EQ((Transcoded<UTF16, UTF8>(utf8)), utf16);
                EXPECT_EQ((Transcoded<UTF16, UTF32>(utf32)), utf16);
                EXPECT_EQ((Transcoded<UTF32, UTF8>(utf8)), utf32);
                EXPECT_EQ((Transcoded<UTF32, UTF16>(utf16)), utf32);
            }
        }
    }
}

TEST(Transcode, MakesOfAllCharactersWhatOthersMake) {
    Values const utf32 = AllValues();
    Bytes const utf8 = *ByICU<UTF8, UTF32>(utf32);
    Pairs const utf16 = *ByICU<UTF16, UTF32>(utf32);
    ExpectSameByOthers<UTF8, UTF32>(utf32);
    ExpectSameByOthers<UTF16, UTF32>(utf32);
    ExpectSameByOthers<UTF8, UTF16>(utf16);
    ExpectSameByOthers<UTF32, UTF16>(utf16);
    ExpectSameByOthers<UTF16, UTF8>(utf8);
    ExpectSameByOthers<UTF32, UTF8>(utf8);
}

TEST(Transcode, MakesOfMixedTextsWhatOthersMake) {
    for (std::uint32_t seed = 0; seed < 100; ++seed) {
        std::size_t const size = 1 + seed * 7;
        ExpectSameByOthers<UTF8, UTF32>(MixedText<UTF32>(seed, size));
        ExpectSameByOthers<UTF16, UTF32>(MixedText<UTF32>(seed, size));
        ExpectSameByOthers<UTF8, UTF16>(MixedText<UTF16>(seed, size));
        ExpectSameByOthers<UTF32, UTF16>(MixedText<UTF16>(seed, size));
        ExpectSameByOthers<UTF16, UTF8>(MixedText<UTF8>(seed, size));
        ExpectSameByOthers<UTF32, UTF8>(MixedText<UTF8>(seed, size));
    }
}

TEST(Transcode, OfNothingIsNothing) {
    EXPECT_EQ((Transcoded<UTF8, UTF16>({})), Bytes());
    EXPECT_EQ((Transcoded<UTF32, UTF8>({})), Values());
    EXPECT_TRUE((Transcode<UTF16, UTF8>(UStringRef<UTF8>())).empty());
    EXPECT_TRUE((Transcode<UTF8, USAscii>(UStringRef<USAscii>())).empty());
}

TEST(Transcode, TakesAllOfItsMemoryAtOnce) {
    Bytes const text = MixedText<UTF8>(1, 10000);
    AutoUString<UTF16> const utf16 = Transcode<UTF16, UTF8>(TextOf<UTF8>(text));
    EXPECT_EQ(utf16.CapacityInUnits(), utf16.SizeInUnits());
    AutoUString<UTF32> const utf32 = Transcode<UTF32, UTF8>(TextOf<UTF8>(text));
    EXPECT_EQ(utf32.CapacityInUnits(), utf32.SizeInUnits());
    EXPECT_EQ((Transcode<UTF8, UTF16>(utf16)).CapacityInUnits(), text.size());
    EXPECT_EQ((Transcode<UTF8, UTF32>(utf32)).CapacityInUnits(), text.size());
    EXPECT_EQ((Transcode<UTF32, UTF16>(utf16)).CapacityInUnits(), utf32.SizeInUnits());
    EXPECT_EQ((Transcode<UTF16, UTF32>(utf32)).CapacityInUnits(), utf16.SizeInUnits());
    Units<USAscii> const plain(1000, 'a');
    EXPECT_EQ((Transcode<UTF8, USAscii>(TextOf<USAscii>(plain))).CapacityInUnits(), 1000U);
}

TEST(TranscodedSize, IsAtMostFourTimesTheTextWhateverItHolds) {
    std::mt19937 numbers(7);
    for (int round = 0; round < 200; ++round) {
        Pairs noise(numbers() % 100);
        for (auto& unit : noise) unit = static_cast<UTF16::Unit>(numbers());
        EXPECT_LE((TranscodedSize<UTF8, UTF16>(TextOf<UTF16>(noise))), 3 * noise.size());
        EXPECT_LE((TranscodedSize<UTF32, UTF16>(TextOf<UTF16>(noise))), noise.size());
    }
    Bytes const leads(100, 0xFF);
    EXPECT_LE((TranscodedSize<UTF16, UTF8>(TextOf<UTF8>(leads))), 200U);
    EXPECT_LE((TranscodedSize<UTF32, UTF8>(TextOf<UTF8>(leads))), 100U);
    Values const high(100, 0xFFFFFFFF);
    EXPECT_LE((TranscodedSize<UTF16, UTF32>(TextOf<UTF32>(high))), 200U);
    EXPECT_LE((TranscodedSize<UTF8, UTF32>(TextOf<UTF32>(high))), 400U);
}

TEST(GenericTranscoder, MakesTheSameTextHoweverItIsCut) {
    ExpectSameInAllPieces<UTF8, UTF32>(MixedText<UTF32>(2, 60));
    ExpectSameInAllPieces<UTF16, UTF32>(MixedText<UTF32>(3, 60));
    ExpectSameInAllPieces<UTF8, UTF16>(MixedText<UTF16>(4, 60));
    ExpectSameInAllPieces<UTF32, UTF16>(MixedText<UTF16>(5, 60));
    ExpectSameInAllPieces<UTF16, UTF8>(MixedText<UTF8>(6, 60));
    ExpectSameInAllPieces<UTF32, UTF8>(MixedText<UTF8>(7, 60));
    ExpectSameInAllPieces<UTF8, USAscii>(Units<USAscii>(60, 'x'));
}

TEST(GenericTranscoder, MakesTheSameTextFromPiecesOfAnySizes) {
    Bytes const utf8 = MixedText<UTF8>(8, 20000);
    ExpectSameInPiecesOfAnySizes<UTF32, UTF8>(utf8);
    ExpectSameInPiecesOfAnySizes<UTF16, UTF8>(utf8);
    Pairs const utf16 = MixedText<UTF16>(8, 20000);
    ExpectSameInPiecesOfAnySizes<UTF8, UTF16>(utf16);
    ExpectSameInPiecesOfAnySizes<UTF32, UTF16>(utf16);
    Values const utf32 = MixedText<UTF32>(8, 20000);
    ExpectSameInPiecesOfAnySizes<UTF8, UTF32>(utf32);
    ExpectSameInPiecesOfAnySizes<UTF16, UTF32>(utf32);
}

TEST(GenericTranscoder, MakesTheSameTextFromPiecesThatEndWithinPairs) {
    Pairs pairs;
    for (int i = 0; i < 5000; ++i) pairs.insert(pairs.end(), {0xD83D, 0xDE00});
    Bytes utf8;
    for (int i = 0; i < 5000; ++i) utf8.insert(utf8.end(), {0xF0, 0x9F, 0x98, 0x80});
    Values const utf32(5000, 0x1F600);
    for (std::size_t const distance : {1U, 3U, 7U, 1023U, 1025U, 2047U, 4095U}) {
        // Every second cut, the first among them, falls within a pair.
        std::vector<std::size_t> cuts;
        for (std::size_t at = distance; at < pairs.size(); at += distance) cuts.push_back(at);
        EXPECT_TRUE((TranscodedInPieces<UTF8, UTF16>(pairs, cuts)) == utf8) << distance;
        EXPECT_TRUE((TranscodedInPieces<UTF32, UTF16>(pairs, cuts)) == utf32) << distance;
    }
}

TEST(GenericTranscoder, AllocatesNothing) {
    for (std::uint32_t seed = 10; seed < 20; ++seed) {
        ExpectNoAllocation<UTF8, UTF16>(MixedText<UTF16>(seed, 10000));
        ExpectNoAllocation<UTF8, UTF32>(MixedText<UTF32>(seed, 10000));
        ExpectNoAllocation<UTF16, UTF8>(MixedText<UTF8>(seed, 10000));
        ExpectNoAllocation<UTF16, UTF32>(MixedText<UTF32>(seed, 10000));
        ExpectNoAllocation<UTF32, UTF8>(MixedText<UTF8>(seed, 10000));
        ExpectNoAllocation<UTF32, UTF16>(MixedText<UTF16>(seed, 10000));
    }
    ExpectNoAllocation<UTF8, USAscii>(Units<USAscii>(10000, 'x'));
}

TEST(GenericTranscoder, RefusesTheSameTextsHoweverTheyAreCut) {
    for (Bytes const& bad :
         {Bytes{0x80}, Bytes{0xC3, 0x28}, Bytes{0xE2, 0x82, 0x28}, Bytes{0xF0, 0x9F, 0x98, 0x41},
          Bytes{0xF8, 0x88, 0x80, 0x80}, Bytes{0xFF}, Bytes{0xE2, 0x82}, Bytes{0xC3}}) {
        Bytes const text = Framed<UTF8>(3, bad, 0);
        Bytes const longer = Framed<UTF8>(3, bad, 20);
        for (Bytes const& each : {text, longer}) {
            ASSERT_EQ((Transcoded<UTF32, UTF8>(each)), std::nullopt);
            ASSERT_EQ((Transcoded<UTF16, UTF8>(each)), std::nullopt);
            ExpectSameInAllPieces<UTF32, UTF8>(each);
            ExpectSameInAllPieces<UTF16, UTF8>(each);
        }
    }
    for (Pairs const& bad :
         {Pairs{0xD800}, Pairs{0xDC00}, Pairs{0xD800, 0x41}, Pairs{0xD800, 0xD800, 0xDC00}}) {
        Pairs const text = Framed<UTF16>(3, bad, 2);
        ASSERT_EQ((Transcoded<UTF8, UTF16>(text)), std::nullopt);
        ExpectSameInAllPieces<UTF8, UTF16>(text);
        ExpectSameInAllPieces<UTF32, UTF16>(text);
    }
}

TEST(GenericTranscoder, RaisesAFaultInThePieceThatHoldsIt) {
    RecordingTarget<UTF32> target;
    GenericTranscoder<UTF32, UTF8> transcoder(target);
    transcoder.Start(UTF8());
    transcoder.Receive(Range<UTF8>({0xE2}));
    EXPECT_THROW(transcoder.Receive(Range<UTF8>({0x28})), InvalidTextEncoding);
}

template <class To, class From>
void ExpectRefusedAtTheEnd(Units<From> const& text) {
    RecordingTarget<To> target;
    GenericTranscoder<To, From> transcoder(target);
    transcoder.Start(From());
    EXPECT_NO_THROW(transcoder.Receive(Range<From>(text)));
    EXPECT_THROW(transcoder.ReceiveEnd(), InvalidTextEncoding);
    EXPECT_EQ(target.ends, 0);
}

TEST(GenericTranscoder, RefusesATextThatEndsWithinACharacterAtItsEnd) {
    for (Bytes const& cut : {Bytes{0xC3}, Bytes{0xE2}, Bytes{0xE2, 0x82}, Bytes{0xF0}, Bytes{0xF0, 0x9F},
                             Bytes{0xF0, 0x9F, 0x98}}) {
        for (std::size_t before = 0; before < 20; ++before) {
            ExpectRefusedAtTheEnd<UTF32, UTF8>(Framed<UTF8>(before, cut, 0));
            ExpectRefusedAtTheEnd<UTF16, UTF8>(Framed<UTF8>(before, cut, 0));
        }
    }
    ExpectRefusedAtTheEnd<UTF8, UTF16>({'a', 0xD83D});
    ExpectRefusedAtTheEnd<UTF32, UTF16>({0xDBFF});
}

TEST(GenericTranscoder, StartsAndEndsItsTargetOnce) {
    RecordingTarget<UTF16> target;
    GenericTranscoder<UTF16, UTF8> transcoder(target);
    transcoder.Start(UTF8());
    EXPECT_EQ(target.starts, 1);
    transcoder.Receive(Range<UTF8>(InUTF8("ab")));
    transcoder.Receive(Range<UTF8>({}));
    EXPECT_EQ(target.ends, 0);
    transcoder.ReceiveEnd();
    EXPECT_EQ(target.starts, 1);
    EXPECT_EQ(target.ends, 1);
    EXPECT_EQ(target.text, (Pairs{'a', 'b'}));
    EXPECT_EQ(target.pieces, (std::vector<std::size_t>{2}));
}

TEST(GenericTranscoder, ForgetsATextThatWasGivenUpWhenItStartsAnother) {
    RecordingTarget<UTF16> target;
    GenericTranscoder<UTF16, UTF8> transcoder(target);
    transcoder.Start(UTF8());
    transcoder.Receive(Range<UTF8>({0xC3}));
    transcoder.Start(UTF8());
    transcoder.Receive(Range<UTF8>(InUTF8("b")));
    transcoder.ReceiveEnd();
    EXPECT_EQ(target.text, (Pairs{'b'}));
}

TEST(GenericTranscoder, HandsOnPiecesOfAtMost4096Bytes) {
    RecordingTarget<UTF32> wide;
    GenericTranscoder<UTF32, UTF8> widening(wide);
    widening.Start(UTF8());
    widening.Receive(Range<UTF8>(Bytes(10000, 'a')));
    EXPECT_EQ(wide.pieces,
              (std::vector<std::size_t>{1024, 1024, 1024, 1024, 1024, 1024, 1024, 1024, 1024, 784}));
    RecordingTarget<UTF8> narrow;
    GenericTranscoder<UTF8, UTF32> narrowing(narrow);
    narrowing.Start(UTF32());
    narrowing.Receive(Range<UTF32>(Values(3000, 0x20AC)));
    EXPECT_EQ(narrow.text.size(), 9000U);
    // A block that has no room for four bytes is full.
    EXPECT_EQ(narrow.pieces, (std::vector<std::size_t>{4095, 4095, 810}));
}

TEST(GenericTranscoder, WritesEachKindOfCharacterAtTheEndOfABlock) {
    for (Character const& character : cCharacters) {
        auto const utf8 = [&](std::size_t before) { return Framed<UTF8>(before, character.utf8, 9); };
        auto const utf16 = [&](std::size_t before) { return Framed<UTF16>(before, character.utf16, 9); };
        auto const utf32 = [&](std::size_t before) { return Framed<UTF32>(before, {character.value}, 9); };
        for (std::size_t before = 1010; before < 1030; ++before) {
            ExpectInBlocks<UTF32, UTF8>(utf8(before), utf32(before));
            ExpectInBlocks<UTF32, UTF16>(utf16(before), utf32(before));
        }
        for (std::size_t before = 2035; before < 2055; ++before) {
            ExpectInBlocks<UTF16, UTF8>(utf8(before), utf16(before));
            ExpectInBlocks<UTF16, UTF32>(utf32(before), utf16(before));
        }
        for (std::size_t before = 4085; before < 4105; ++before) {
            ExpectInBlocks<UTF8, UTF16>(utf16(before), utf8(before));
            ExpectInBlocks<UTF8, UTF32>(utf32(before), utf8(before));
        }
    }
    for (std::size_t before = 4085; before < 4105; ++before) {
        Units<USAscii> const text = Framed<USAscii>(before, {0x7F}, 9);
        ExpectInBlocks<UTF8, USAscii>(text, text);
    }
}

TEST(GenericTranscoder, LetsWhatItsTargetThrowsPass) {
    class Refusing : public UTextReceiver<UTF16> {
    public:
        void Receive(ConstArrayOf<Unit>) override { throw std::length_error("full"); }
    };
    Refusing target;
    GenericTranscoder<UTF16, UTF8> transcoder(target);
    transcoder.Start(UTF8());
    EXPECT_THROW(transcoder.Receive(Range<UTF8>(InUTF8("ab"))), std::length_error);
}

TEST(GenericTranscoder, IsAReceiverOfTheEncodingThatItReads) {
    static_assert(std::is_base_of_v<UTextReceiver<UTF8>, GenericTranscoder<UTF16, UTF8>>);
    static_assert(std::is_base_of_v<UTextReceiver<USAscii>, GenericTranscoder<UTF8, USAscii>>);
    // Small enough to stand on a stack beside the block.
    static_assert(sizeof(GenericTranscoder<UTF8, UTF32>) <= 64);
}

TEST(ReadingUTF32, RefusesSurrogates) {
    for (std::uint32_t value = 0xD800; value < 0xE000; ++value) {
        ASSERT_EQ((Transcoded<UTF8, UTF32>({value})), std::nullopt) << value;
        ASSERT_EQ((Transcoded<UTF16, UTF32>({value})), std::nullopt) << value;
    }
    ExpectRefusedEverywhere<UTF8, UTF32>({0xD800});
    ExpectRefusedEverywhere<UTF16, UTF32>({0xDFFF});
}

TEST(ReadingUTF32, TakesTheHighestValueAndRefusesTheNext) {
    EXPECT_EQ((Transcoded<UTF8, UTF32>({0x10FFFF})), (Bytes{0xF4, 0x8F, 0xBF, 0xBF}));
    for (std::uint32_t const value :
         {0x110000U, 0x1FFFFFU, 0x200041U, 0x7FFFFFFFU, 0x80000041U, 0xFFFFFFFFU}) {
        ExpectRefusedEverywhere<UTF8, UTF32>({value});
        ExpectRefusedEverywhere<UTF16, UTF32>({value});
    }
}

TEST(ReadingUTF16, RefusesSurrogatesWithoutTheirOtherHalf) {
    for (Pairs const& bad :
         {Pairs{0xDC00}, Pairs{0xDFFF}, Pairs{0xD800}, Pairs{0xD800, 0x41}, Pairs{0xDBFF, 0xE000},
          Pairs{0xDC00, 0xD800}, Pairs{0xDC00, 0xDC00}, Pairs{0xD800, 0xD800}, Pairs{0xD800, 0xDBFF}}) {
        ExpectRefusedEverywhere<UTF8, UTF16>(bad);
        ExpectRefusedEverywhere<UTF32, UTF16>(bad);
    }
}

TEST(ReadingUTF16, TakesEveryPairOfItsBounds) {
    for (std::uint32_t high = 0xD800; high < 0xDC00; ++high) {
        Pairs const pair{static_cast<UTF16::Unit>(high), 0xDC00};
        ASSERT_EQ((Transcoded<UTF32, UTF16>(pair)), Values{0x10000 + (high - 0xD800) * 0x400});
    }
}

TEST(ReadingUTF8, RefusesEveryByteThatCannotBeginACharacter) {
    for (unsigned int lead = 0x80; lead < 0x100; ++lead) {
        bool const begins = lead >= 0xC0 && lead < 0xF8;
        Bytes text{static_cast<unsigned char>(lead), 0x80, 0x80, 0x80, 0x80, 0x80};
        text.resize(lead < 0xE0 ? 2 : lead < 0xF0 ? 3 : 4);
        EXPECT_EQ((Transcoded<UTF32, UTF8>(text)).has_value(), begins) << lead;
        if (!begins) ExpectRefusedEverywhere<UTF16, UTF8>(text);
    }
}

TEST(ReadingUTF8, RefusesEveryByteThatCannotFollow) {
    for (unsigned int byte = 0; byte < 0x100; ++byte) {
        auto const unit = static_cast<unsigned char>(byte);
        bool const follows = byte >= 0x80 && byte < 0xC0;
        for (Bytes const& text :
             {Bytes{0xC3, unit}, Bytes{0xE1, unit, 0x80}, Bytes{0xE1, 0x80, unit},
              Bytes{0xF1, unit, 0x80, 0x80}, Bytes{0xF1, 0x80, unit, 0x80}, Bytes{0xF1, 0x80, 0x80, unit}}) {
            for (std::size_t const behind : {0U, 20U}) {
                EXPECT_EQ((Transcoded<UTF32, UTF8>(Framed<UTF8>(0, text, behind))).has_value(), follows)
                    << byte;
                EXPECT_EQ((Transcoded<UTF16, UTF8>(Framed<UTF8>(0, text, behind))).has_value(), follows)
                    << byte;
            }
        }
    }
}

// All sequences of two bytes, and of three behind leads of every kind: what others take is taken as they take
// it. Beyond that only longer forms than needed and, to UTF-32, surrogates and values too high are taken.
TEST(ReadingUTF8, TakesAllShortSequencesThatOthersTake) {
    auto const check = [](Bytes const& text) {
        Outcome<UTF32> const others = ByIconv<UTF32, UTF8>(text);
        if (!others) return;
        ASSERT_EQ((Transcoded<UTF32, UTF8>(text)), others);
        ASSERT_EQ((Transcoded<UTF16, UTF8>(text)), (ByIconv<UTF16, UTF8>(text)));
    };
    for (unsigned int two = 0; two < 0x10000; ++two)
        check({static_cast<unsigned char>(two >> 8), static_cast<unsigned char>(two)});
    for (unsigned int const lead : {0x41U, 0xC3U, 0xE0U, 0xE1U, 0xEDU, 0xEFU}) {
        for (unsigned int two = 0; two < 0x10000; two += 3) {
            check({static_cast<unsigned char>(lead), static_cast<unsigned char>(two >> 8),
                   static_cast<unsigned char>(two)});
        }
    }
}

TEST(ReadingUTF8, TakesLongerFormsThanNeededAtTheirValue) {
    struct {
        Bytes form;
        std::uint32_t value;
    } const forms[] = {
        {{0xC0, 0x80}, 0x0},
        {{0xC1, 0xBF}, 0x7F},
        {{0xE0, 0x80, 0x80}, 0x0},
        {{0xE0, 0x81, 0x81}, 0x41},
        {{0xE0, 0x9F, 0xBF}, 0x7FF},
        {{0xF0, 0x80, 0x80, 0x80}, 0x0},
        {{0xF0, 0x80, 0x81, 0x81}, 0x41},
        {{0xF0, 0x8F, 0xBF, 0xBF}, 0xFFFF},
    };
    for (auto const& [form, value] : forms) {
        for (std::size_t const behind : {0U, 20U}) {
            EXPECT_EQ((Transcoded<UTF32, UTF8>(Framed<UTF8>(1, form, behind))),
                      (Framed<UTF32>(1, {value}, behind)));
            EXPECT_EQ((Transcoded<UTF16, UTF8>(Framed<UTF8>(1, form, behind))),
                      (Framed<UTF16>(1, {static_cast<UTF16::Unit>(value)}, behind)));
        }
    }
}

TEST(ReadingUTF8, PassesSurrogatesToUTF32Only) {
    EXPECT_EQ((Transcoded<UTF32, UTF8>({0xED, 0xA0, 0x80})), Values{0xD800});
    EXPECT_EQ((Transcoded<UTF32, UTF8>({0xED, 0xBF, 0xBF})), Values{0xDFFF});
    EXPECT_EQ((Transcoded<UTF32, UTF8>({0xED, 0xA0, 0xBD, 0xED, 0xB8, 0x80})), (Values{0xD83D, 0xDE00}));
    for (unsigned int second = 0x80; second < 0xC0; ++second) {
        Bytes const text{0xED, static_cast<unsigned char>(second), 0x80};
        EXPECT_EQ((Transcoded<UTF16, UTF8>(text)).has_value(), second <= 0x9F) << second;
        if (second > 0x9F) ExpectRefusedEverywhere<UTF16, UTF8>(text);
    }
    // The same value in a longer form.
    EXPECT_EQ((Transcoded<UTF32, UTF8>({0xF0, 0x8D, 0xA0, 0x80})), Values{0xD800});
    ExpectRefusedEverywhere<UTF16, UTF8>({0xF0, 0x8D, 0xA0, 0x80});
}

TEST(ReadingUTF8, PassesValuesAboveTheHighestToUTF32Only) {
    EXPECT_EQ((Transcoded<UTF32, UTF8>({0xF4, 0x90, 0x80, 0x80})), Values{0x110000});
    EXPECT_EQ((Transcoded<UTF32, UTF8>({0xF7, 0xBF, 0xBF, 0xBF})), Values{0x1FFFFF});
    ExpectRefusedEverywhere<UTF16, UTF8>({0xF4, 0x90, 0x80, 0x80});
    ExpectRefusedEverywhere<UTF16, UTF8>({0xF7, 0xBF, 0xBF, 0xBF});
}

TEST(ReadingUSAscii, CopiesBytesUpTo7F) {
    Units<USAscii> all(128);
    std::iota(all.begin(), all.end(), static_cast<unsigned char>(0));
    EXPECT_EQ((Transcoded<UTF8, USAscii>(all)), all);
    Units<USAscii> const large(10000, 'a');
    EXPECT_TRUE((Transcoded<UTF8, USAscii>(large)) == large);
}

TEST(ReadingUSAscii, RefusesEveryByteAbove7F) {
    for (unsigned int byte = 0x80; byte < 0x100; ++byte)
        ExpectRefusedEverywhere<UTF8, USAscii>({static_cast<unsigned char>(byte)});
}
