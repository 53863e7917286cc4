#include "text/CharacterSet.h"

#include "text/CharacterSetNames.h"
#include "text/ICU.h"

#include <algorithm>
#include <iterator>
#include <utility>

// A converter has two sides, into Unicode and out of it, each with its state, its callback for bad input, and
// a small buffer with the input that last called it. Every conversion resets the sides that it uses.
//
// Texts come about in a body of their own and are handed over when they are whole: the input may be a view of
// the output, and a failure leaves nothing half done.
//
// Sizes: the converter service counts in signed 32 bits, also the size that it reports for a text that did
// not fit. The worst that can become of a unit is a substitute of 32 units, each in a dozen bytes with its
// escape sequences, so that 4 Mi units in one call keep every count in range. The way by a pivot moves
// pointers instead, and is taken in slices of input and output far below the range.

namespace {

constexpr std::size_t cUnitsInSlice = std::size_t(1) << 16;
constexpr std::size_t cBytesInRoom = std::size_t(1) << 30;

// The converter service takes all bytes as char.
char* AsChars(void* bytes) {
    return static_cast<char*>(bytes);
}
char const* AsChars(void const* bytes) {
    return static_cast<char const*>(bytes);
}

ICUResult MakeResult(UErrorCode code, char const* function) {
    return U_FAILURE(code) ? ICUResult(code, function) : ICUResult();
}

bool IsAboutInput(ICUResult const& failure) {
    std::int32_t const code = failure.ErrorCode();
    return code == U_INVALID_CHAR_FOUND || code == U_TRUNCATED_CHAR_FOUND || code == U_ILLEGAL_CHAR_FOUND ||
           code == U_ILLEGAL_ESCAPE_SEQUENCE || code == U_UNSUPPORTED_ESCAPE_SEQUENCE;
}

ICUResult SetCallbacks(UConverter* converter, UConverterFromUCallback fromUnicode,
                       UConverterToUCallback toUnicode, char const* context) {
    UErrorCode code = U_ZERO_ERROR;
    ucnv_setFromUCallBack(converter, fromUnicode, context, nullptr, nullptr, &code);
    if (U_FAILURE(code)) return MakeResult(code, "ucnv_setFromUCallBack");
    ucnv_setToUCallBack(converter, toUnicode, context, nullptr, nullptr, &code);
    return MakeResult(code, "ucnv_setToUCallBack");
}

// Under this name the converter service keeps a converter that forgets nothing when it is reset, so that a
// text would begin in the alphabet that the one before ended with. Its copies, on which a substitute is
// tried, share their tables with it, and both free them.
bool IsUsable(std::string const& name) {
    return name != "x11-compound-text";
}

template <class E>
std::int32_t CapacityOf(UStringBody<E> const& text) {
    return static_cast<std::int32_t>(text.CapacityInUnits());
}

template <class E>
std::int32_t SizeOf(UStringRef<E> const& text) {
    return static_cast<std::int32_t>(text.SizeInUnits());
}

template <class E>
bool FitsInOneCall(UStringRef<E> const& text) {
    return text.SizeInUnits() <= CharacterSet::maxUnitsInOneCall;
}

// Lets `convert(room, capacity, &code)`, which returns the size of the whole text, write into `text`: with
// room for `estimate` units and, if that was too small, once more with room for what it reported.
template <class E, class Converting>
ICUResult Fill(UStringBody<E>& text, E encoding, std::size_t estimate, char const* function,
               Converting const& convert) {
    text.Reset(encoding, 0, estimate);
    UErrorCode code = U_ZERO_ERROR;
    std::int32_t size = convert(text.begin(), CapacityOf(text), &code);
    if (code == U_BUFFER_OVERFLOW_ERROR) {
        text.Reset(encoding, 0, static_cast<std::size_t>(size));
        code = U_ZERO_ERROR;
        size = convert(text.begin(), CapacityOf(text), &code);
    }
    if (U_SUCCESS(code)) text.SetEnd(text.begin() + size);
    return MakeResult(code, function);
}

// Twice the capacity, with the same text.
template <class E>
void Grow(UStringBody<E>& text) {
    UStringBody<E> grown;
    grown.Reset(text.Encoding(), 0, 2 * text.CapacityInUnits());
    grown.AppendInPlace(text.Ref());
    text.Seize(grown);
}

template <class To, class From>
CharacterSetResult CopyUnchecked(UStringRef<From> const& input, To encoding, AutoUString<To>& output) {
    static_assert(sizeof(typename To::Unit) == 1 && sizeof(typename From::Unit) == 1);
    void const* const bytes = input.begin();
    auto const* const first = static_cast<typename To::Unit const*>(bytes);
    UStringBody<To> copy(UStringRef<To>(encoding, first, first + input.SizeInUnits()));
    output.Seize(copy);
    return CharacterSetResult();
}

} // namespace

// Making a set

CharacterSet::CharacterSet(std::string const& name, InvalidCharacterAction action, bool strict)
    : m_action(action) {
    // The service would take such a name for its beginning.
    if (name.find('\0') != std::string::npos) throw ICUResult(U_FILE_ACCESS_ERROR, "ucnv_open");
    Construct(name.c_str(), strict);
}

CharacterSet::CharacterSet(ConstData const& name, InvalidCharacterAction action, bool strict)
    : CharacterSet(MakeString(name), action, strict) {
}

CharacterSet::CharacterSet(char const* name, InvalidCharacterAction action, bool strict) : m_action(action) {
    Construct(name, strict);
}

CharacterSet::~CharacterSet() = default;

void CharacterSet::ConverterCloser::operator()(UConverter* converter) const {
    ucnv_close(converter);
}

void CharacterSet::Construct(char const* name, bool strict) {
    UErrorCode code = U_ZERO_ERROR;
    m_converter.reset(ucnv_open(name, &code));
    if (U_FAILURE(code)) throw ICUResult(code, "ucnv_open");
    m_name = ucnv_getName(m_converter.get(), &code);
    if (!IsUsable(m_name)) throw ICUResult(U_UNSUPPORTED_ERROR, "ucnv_open");
    ICUResult const applied = ApplyAction(strict);
    if (!applied.IsSuccess()) throw applied;
    m_isUTF8 = m_name == "UTF-8";
}

ICUResult CharacterSet::ApplyAction(bool strict) {
    switch (m_action) {
    case InvalidCharacterAction::Stop: return SetStopOnInvalidCharacter();
    case InvalidCharacterAction::Escape: return SetEscapeInvalidCharacters(nullptr);
    case InvalidCharacterAction::Substitute: {
        UChar substitute[2];
        u_charsToUChars("?", substitute, 2);
        return SetSubstituteInvalidCharacters(substitute, strict);
    }
    }
    return ICUResult(U_ILLEGAL_ARGUMENT_ERROR, "InvalidCharacterAction");
}

ICUResult CharacterSet::SetStopOnInvalidCharacter() {
    ICUResult const result =
        SetCallbacks(m_converter.get(), UCNV_FROM_U_CALLBACK_STOP, UCNV_TO_U_CALLBACK_STOP, nullptr);
    if (result.IsSuccess()) m_action = InvalidCharacterAction::Stop;
    return result;
}

ICUResult CharacterSet::SetEscapeInvalidCharacters(char const* style) {
    ICUResult const result =
        SetCallbacks(m_converter.get(), UCNV_FROM_U_CALLBACK_ESCAPE, UCNV_TO_U_CALLBACK_ESCAPE, style);
    if (result.IsSuccess()) m_action = InvalidCharacterAction::Escape;
    return result;
}

// The substitute comes first, because it alone can fail: the callbacks then still are those of the action
// before.
ICUResult CharacterSet::SetSubstituteInvalidCharacters(unsigned short const* substitute, bool) {
    if (!substitute) return ICUResult(U_ILLEGAL_ARGUMENT_ERROR, "ucnv_setSubstString");
    UErrorCode code = U_ZERO_ERROR;
    ucnv_setSubstString(m_converter.get(), substitute, u_strlen(substitute), &code);
    if (U_FAILURE(code)) return MakeResult(code, "ucnv_setSubstString");
    ICUResult const result = SetCallbacks(m_converter.get(), UCNV_FROM_U_CALLBACK_SUBSTITUTE,
                                          UCNV_TO_U_CALLBACK_SUBSTITUTE, nullptr);
    if (result.IsSuccess()) m_action = InvalidCharacterAction::Substitute;
    return result;
}

// What there is to know about a set

char const* CharacterSet::StandardName(char const* standard) const {
    UErrorCode code = U_ZERO_ERROR;
    return ucnv_getStandardName(m_name.c_str(), standard, &code);
}

int CharacterSet::MinCharSize() const {
    return ucnv_getMinCharSize(m_converter.get());
}

int CharacterSet::MaxCharSize() const {
    return ucnv_getMaxCharSize(m_converter.get());
}

template <class E>
E CharacterSet::MakeEncoding() const {
    if constexpr (std::is_same_v<E, IANANamedTextEncoding>) {
        // A text that is UTF-8 already costs a copy alone: the service is not asked for the name.
        return m_isUTF8 ? E("UTF-8"_data) : E(MakeConstData(StandardizedCharacterSetName(m_name)));
    } else {
        return E();
    }
}

// Bad input

CharacterSetResult CharacterSet::GetInvalidChars(ICUResult const& failure) const {
    if (!IsAboutInput(failure)) return CharacterSetResult(failure);
    char bytes[32];
    std::int8_t count = sizeof(bytes);
    UErrorCode code = U_ZERO_ERROR;
    ucnv_getInvalidChars(m_converter.get(), bytes, &count, &code);
    if (U_FAILURE(code)) return CharacterSetResult(failure);
    return CharacterSetResult(failure, bytes, static_cast<std::size_t>(count));
}

CharacterSetResult CharacterSet::GetInvalidUChars(ICUResult const& failure) const {
    if (!IsAboutInput(failure)) return CharacterSetResult(failure);
    UChar units[32];
    std::int8_t count = std::size(units);
    UErrorCode code = U_ZERO_ERROR;
    ucnv_getInvalidUChars(m_converter.get(), units, &count, &code);
    if (U_FAILURE(code)) return CharacterSetResult(failure);
    return CharacterSetResult(failure, units, static_cast<std::size_t>(count));
}

// A source that stops holds bytes only if it is the one that failed. Of a target the same can't be said: it
// keeps the characters that it left out without a word.
CharacterSetResult CharacterSet::MakePivotFailure(ICUResult const& failure,
                                                  CharacterSet const& target) const {
    if (m_action == InvalidCharacterAction::Stop) {
        CharacterSetResult const bySource = GetInvalidChars(failure);
        if (!bySource.InvalidText().empty()) return bySource;
    }
    return target.GetInvalidUChars(failure);
}

// UTF-8

template <class From>
CharacterSetResult CharacterSet::ToUTF8(UStringRef<From> const& input, AutoUString<UTF8>& output) const {
    if (input.empty() || m_isUTF8) return CopyUnchecked(input, UTF8(), output);
    if (m_action == InvalidCharacterAction::Substitute && FitsInOneCall(input))
        return ConvertToUTF8Algorithmic(input, output);
    return ConvertToUTF8Pivot(input, output);
}

// The estimate has a byte more a character than the set: most letters outside ASCII take two in UTF-8.
template <class From>
CharacterSetResult CharacterSet::ConvertToUTF8Algorithmic(UStringRef<From> const& input,
                                                          AutoUString<UTF8>& output) const {
    UStringBody<UTF8> text;
    std::size_t const estimate = input.SizeInUnits() * static_cast<std::size_t>(MaxCharSize() + 1);
    ICUResult const result =
        Fill(text, UTF8(), estimate, "ucnv_toAlgorithmic",
             [&](unsigned char* room, std::int32_t capacity, UErrorCode* code) {
                 return ucnv_toAlgorithmic(UCNV_UTF8, m_converter.get(), AsChars(room), capacity,
                                           AsChars(input.begin()), SizeOf(input), code);
             });
    output.Seize(text);
    return result.IsSuccess() ? CharacterSetResult() : GetInvalidChars(result);
}

template <class From>
CharacterSetResult CharacterSet::ConvertToUTF8Pivot(UStringRef<From> const& input,
                                                    AutoUString<UTF8>& output) const {
    CharacterSet utf8("UTF-8", m_action, false);
    utf8.ServeAsOtherEndOf(*this);
    return ConvertByPivot(input, utf8, UTF8(), output);
}

template <class To>
CharacterSetResult CharacterSet::FromUTF8(UStringRef<UTF8> const& input, AutoUString<To>& output) const {
    if (input.empty() || m_isUTF8) return CopyUnchecked(input, MakeEncoding<To>(), output);
    if (m_action == InvalidCharacterAction::Substitute && FitsInOneCall(input))
        return ConvertFromUTF8Algorithmic(input, output);
    return ConvertFromUTF8Pivot(input, output);
}

template <class To>
CharacterSetResult CharacterSet::ConvertFromUTF8Algorithmic(UStringRef<UTF8> const& input,
                                                            AutoUString<To>& output) const {
    UStringBody<To> text;
    std::size_t const estimate = input.SizeInUnits() * static_cast<std::size_t>(MaxCharSize());
    ICUResult const result =
        Fill(text, MakeEncoding<To>(), estimate, "ucnv_fromAlgorithmic",
             [&](typename To::Unit* room, std::int32_t capacity, UErrorCode* code) {
                 return ucnv_fromAlgorithmic(m_converter.get(), UCNV_UTF8, AsChars(room), capacity,
                                             AsChars(input.begin()), SizeOf(input), code);
             });
    output.Seize(text);
    return result.IsSuccess() ? CharacterSetResult() : GetInvalidUChars(result);
}

template <class To>
CharacterSetResult CharacterSet::ConvertFromUTF8Pivot(UStringRef<UTF8> const& input,
                                                      AutoUString<To>& output) const {
    CharacterSet utf8("UTF-8", m_action, false);
    utf8.ServeAsOtherEndOf(*this);
    return utf8.ConvertByPivot(input, *this, MakeEncoding<To>(), output);
}

// As far as this end escapes, it spells as the set does. A surrogate that the set's bytes spell alone comes
// to light only here, and is bad input on the way into Unicode none the less.
void CharacterSet::ServeAsOtherEndOf(CharacterSet const& set) {
    if (m_action == InvalidCharacterAction::Escape) {
        UConverterFromUCallback callback = nullptr;
        void const* style = nullptr;
        ucnv_getFromUCallBack(set.m_converter.get(), &callback, &style);
        SetEscapeInvalidCharacters(AsChars(style));
    } else if (m_action == InvalidCharacterAction::Substitute) {
        UChar const replacement[] = {0xFFFD, 0};
        SetSubstituteInvalidCharacters(replacement, false);
    }
}

CharacterSetResult CharacterSet::ConvertToUTF8(UStringRef<Local8Bit> const& input,
                                               AutoUString<UTF8>& output) const {
    return ToUTF8(input, output);
}

CharacterSetResult CharacterSet::ConvertToUTF8(UStringRef<IANANamedTextEncoding> const& input,
                                               AutoUString<UTF8>& output) const {
    return ToUTF8(input, output);
}

CharacterSetResult CharacterSet::ConvertFromUTF8(UStringRef<UTF8> const& input,
                                                 AutoUString<Local8Bit>& output) const {
    return FromUTF8(input, output);
}

CharacterSetResult CharacterSet::ConvertFromUTF8(UStringRef<UTF8> const& input,
                                                 AutoUString<IANANamedTextEncoding>& output) const {
    return FromUTF8(input, output);
}

// UTF-16

CharacterSetResult CharacterSet::ConvertToUTF16(UStringRef<Local8Bit> const& input,
                                                AutoUString<UTF16>& output) const {
    UStringBody<UTF16> text;
    ICUResult result(U_ILLEGAL_ARGUMENT_ERROR, "ucnv_toUChars");
    if (FitsInOneCall(input)) {
        std::size_t const estimate = input.SizeInUnits() * static_cast<std::size_t>(MaxCharSize());
        result = Fill(text, UTF16(), estimate, "ucnv_toUChars",
                      [&](UChar* room, std::int32_t capacity, UErrorCode* code) {
                          return ucnv_toUChars(m_converter.get(), room, capacity, input.begin(),
                                               SizeOf(input), code);
                      });
    }
    output.Seize(text);
    return result.IsSuccess() ? CharacterSetResult() : GetInvalidChars(result);
}

CharacterSetResult CharacterSet::ConvertFromUTF16(UStringRef<UTF16> const& input,
                                                  AutoUString<Local8Bit>& output) const {
    UStringBody<Local8Bit> text;
    ICUResult result(U_ILLEGAL_ARGUMENT_ERROR, "ucnv_fromUChars");
    if (FitsInOneCall(input)) {
        std::size_t const estimate = input.SizeInUnits() * static_cast<std::size_t>(MaxCharSize());
        result = Fill(text, Local8Bit(), estimate, "ucnv_fromUChars",
                      [&](char* room, std::int32_t capacity, UErrorCode* code) {
                          return ucnv_fromUChars(m_converter.get(), room, capacity, input.begin(),
                                                 SizeOf(input), code);
                      });
    }
    output.Seize(text);
    return result.IsSuccess() ? CharacterSetResult() : GetInvalidUChars(result);
}

// From set to set

CharacterSetResult CharacterSet::Convert(UStringRef<IANANamedTextEncoding> const& input,
                                         CharacterSet const& target,
                                         AutoUString<IANANamedTextEncoding>& output) const {
    auto const encoding = target.MakeEncoding<IANANamedTextEncoding>();
    if (input.empty() || (m_isUTF8 && target.m_isUTF8)) return CopyUnchecked(input, encoding, output);
    return ConvertByPivot(input, target, encoding, output);
}

template <class To, class From>
CharacterSetResult CharacterSet::ConvertByPivot(UStringRef<From> const& input, CharacterSet const& target,
                                                To encoding, AutoUString<To>& output) const {
    UStringBody<To> text;
    text.Reset(encoding, 0, input.SizeInUnits());
    Pivot pivot;
    char const* source = AsChars(input.begin());
    char const* const sourceEnd = AsChars(input.end());
    CharacterSetResult result;
    for (bool isDone = false; !isDone;) {
        char const* sliceEnd = source + std::min(cUnitsInSlice, static_cast<std::size_t>(sourceEnd - source));
        std::size_t const free = text.CapacityInUnits() - text.SizeInUnits();
        char* room = AsChars(text.end());
        char* const roomBegin = room;
        result = Convert(source, sliceEnd, target, room, room + std::min(free, cBytesInRoom), pivot,
                         sliceEnd == sourceEnd);
        text.SetEnd(text.end() + (room - roomBegin));
        if (result.ErrorCode() == U_BUFFER_OVERFLOW_ERROR)
            Grow(text);
        else
            isDone = !result.IsSuccess() || sliceEnd == sourceEnd;
    }
    if (!result.IsSuccess()) text.Dispose();
    output.Seize(text);
    return result;
}

CharacterSetResult CharacterSet::Convert(char const*& source, char const* sourceEnd,
                                         CharacterSet const& target, char*& room, char* roomEnd, Pivot& pivot,
                                         bool isLast) const {
    if (!pivot.m_started) {
        ucnv_resetToUnicode(m_converter.get());
        ucnv_resetFromUnicode(target.m_converter.get());
        pivot.m_started = true;
    }
    // A reset by this call would drop what a set begins each text with, such as the designator of
    // ISO-2022-KR.
    constexpr UBool cReset = false;
    UErrorCode code = U_ZERO_ERROR;
    ucnv_convertEx(target.m_converter.get(), m_converter.get(), &room, roomEnd, &source, sourceEnd,
                   pivot.m_units, &pivot.m_readNext, &pivot.m_writeNext, std::end(pivot.m_units), cReset,
                   isLast, &code);
    if (U_SUCCESS(code)) return CharacterSetResult();
    return MakePivotFailure(ICUResult(code, "ucnv_convertEx"), target);
}
