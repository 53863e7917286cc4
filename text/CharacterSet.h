#pragma once

#include "text/AutoUString.h"
#include "text/CharacterSetResult.h"

#include <cstdint>
#include <memory>
#include <string>

struct UConverter;

// Converts texts between a named encoding and Unicode, or between two named encodings.
//
//     CharacterSet const western("windows-1252", CharacterSet::InvalidCharacterAction::Stop, false);
//     AutoUString<UTF8> text;
//     CharacterSetResult const result = western.ConvertToUTF8(bytes, text);
//     if (!result.IsSuccess()) ...
//
// Conversions never throw for bad input: they return what happened, and the caller tests it. (For want of
// memory they throw std::bad_alloc.) A conversion that succeeds returns code 0 and replaces the output; one
// that fails leaves the output empty and returns the code, the call that gave it and the bad input. Each
// conversion begins anew, whatever the one before ended with. The input may point into the output.
//
// What is bad: bytes that are none of the set's characters, a character cut short at the end, a surrogate
// without its partner, and a character that the set lacks; InvalidCharacterAction says what becomes of them.
// Of several bad places in an input one is returned, and not always the first. Characters that have no look
// of their own (U+200B, for instance) are left out without a word by a set that lacks them and stops or
// substitutes.
//
// An object has conversion state and belongs to one thread, const operations included.
class CharacterSet {
public:
    // What to do with a character that cannot be converted.
    enum class InvalidCharacterAction : std::uint32_t {
        // The conversion fails.
        Stop = 0,
        // It is spelled out: a character as %UHHHH (a surrogate pair as two of these), a byte as %XHH.
        Escape = 1,
        // A "?" takes its place on the way out of Unicode, and U+FFFD on the way into it. A set of double
        // bytes alone may have no "?"; it cannot be made with this action.
        Substitute = 2,
    };

    // The largest input, in units, of ConvertToUTF16 and ConvertFromUTF16: 4 Mi. The converter service counts
    // in 31 bits, and no text grows 512-fold. A larger input fails with U_ILLEGAL_ARGUMENT_ERROR. The other
    // conversions take inputs of any size.
    static constexpr std::size_t maxUnitsInOneCall = std::size_t(1) << 22;

    // The set of that name, or of an alias that the converter service knows, in any case and punctuation; a
    // null name opens the service's default. The flag is for callers that tell strict from lenient use; both
    // are the same here.
    //
    // Throws ICUResult: with the function "ucnv_open" and U_FILE_ACCESS_ERROR for a name that the service
    // does not know, or with a NUL inside; with that function and another code for an empty name, and for the
    // set "x11-compound-text" (U_UNSUPPORTED_ERROR), whose converter carries the state of one text into the
    // next; with "InvalidCharacterAction" for an action that is none of the three; and with the name of the
    // call for one that could not put the action in force.
    CharacterSet(std::string const& name, InvalidCharacterAction action, bool strict);
    CharacterSet(char const* name, InvalidCharacterAction action, bool strict);
    CharacterSet(ConstData const& name, InvalidCharacterAction action, bool strict);
    CharacterSet(CharacterSet const&) = delete;
    CharacterSet& operator=(CharacterSet const&) = delete;
    ~CharacterSet();

    // Change the action. A failure is returned, and the action before stays in force.
    ICUResult SetStopOnInvalidCharacter();
    // `style` chooses the way of spelling. For U+65E5, U+1F600 and the byte FF:
    //
    //     null   %U65E5 %UD83D%UDE00 %XFF    the one above
    //     "C"    \u65E5 \U0001F600 \xFF
    //     "D"    &#26085; &#128512; &#255;
    //     "X"    &#x65E5; &#x1F600; &#xFF;
    //     "J"    \u65E5 \uD83D\uDE00 %XFF
    //     "S"    \65E5 \1F600 %XFF           with a space behind each character, though not behind a byte
    //     "U"    {U+65E5} {U+1F600} %XFF
    //
    // The first letter decides, in capitals; a style with any other is taken for null without a word. The
    // text is read in conversions and must outlive the set.
    ICUResult SetEscapeInvalidCharacters(char const* style);
    // `substitute` ends with a NUL and is written on the way out of Unicode; it must be convertible and short
    // (up to 32 bytes in the set). It is copied. A null pointer is refused with U_ILLEGAL_ARGUMENT_ERROR.
    ICUResult SetSubstituteInvalidCharacters(unsigned short const* substitute, bool strict);

    InvalidCharacterAction Action() const { return m_action; }
    // The converter service's own name of the set, such as "ibm-5348_P100-1997" for "windows-1252".
    std::string const& Name() const { return m_name; }
    // Whether that name is exactly "UTF-8".
    bool IsUTF8() const { return m_isUTF8; }
    // The set's name by a standard ("IANA", "MIME", ...); null when the standard names no such set or when
    // the service knows no such standard. Lives for ever.
    char const* StandardName(char const* standard) const;

    // Bytes of the shortest and of the longest character.
    int MinCharSize() const;
    int MaxCharSize() const;
    bool IsMultiByte() const { return MaxCharSize() > 1; }
    bool IsSingleByte() const { return MaxCharSize() == 1; }

    // From this set into UTF-8 and back. A set that is UTF-8 itself copies the bytes without looking at them:
    // what claims to be UTF-8 is not checked here. The encoding tag of a named input is not looked at; the
    // one of a named output tells this set by its standardised name. For two sets that is a name under which
    // another one opens: "ibm-1363_P11B-1998" (then "windows-949-2000") and "ibm-874_P100-1995"
    // ("windows-874-2000").
    CharacterSetResult ConvertToUTF8(UStringRef<Local8Bit> const& input, AutoUString<UTF8>& output) const;
    CharacterSetResult ConvertToUTF8(UStringRef<IANANamedTextEncoding> const& input,
                                     AutoUString<UTF8>& output) const;
    CharacterSetResult ConvertFromUTF8(UStringRef<UTF8> const& input, AutoUString<Local8Bit>& output) const;
    CharacterSetResult ConvertFromUTF8(UStringRef<UTF8> const& input,
                                       AutoUString<IANANamedTextEncoding>& output) const;

    // From this set into UTF-16 and back.
    CharacterSetResult ConvertToUTF16(UStringRef<Local8Bit> const& input, AutoUString<UTF16>& output) const;
    CharacterSetResult ConvertFromUTF16(UStringRef<UTF16> const& input, AutoUString<Local8Bit>& output) const;

    // From this set into another. Bytes that this set does not know are dealt with by its action, characters
    // that `target` lacks by the target's. Between two UTF-8 sets the bytes are copied.
    CharacterSetResult Convert(UStringRef<IANANamedTextEncoding> const& input, CharacterSet const& target,
                               AutoUString<IANANamedTextEncoding>& output) const;

    // What a conversion in pieces carries from one call to the next: the UTF-16 text that is read and not yet
    // written. One object serves one conversion.
    class Pivot {
    public:
        Pivot() = default;
        Pivot(Pivot const&) = delete;
        Pivot& operator=(Pivot const&) = delete;

    private:
        friend class CharacterSet;

        std::uint16_t m_units[1024];
        std::uint16_t* m_readNext = m_units;
        std::uint16_t* m_writeNext = m_units;
        bool m_started = false;
    };

    // Reads a piece of text in this set and writes it in another, into room that the caller provides; moves
    // `source` and `room` behind what was read and written. `isLast` says that the text ends with this piece.
    // Success: the whole piece was read and, if it was the last, everything is written. The code
    // U_BUFFER_OVERFLOW_ERROR: the room is used up; call again with more of it. Any other failure ends the
    // conversion. Source and room are to be below 2 GiB at a time; null pointers for a range are refused with
    // U_ILLEGAL_ARGUMENT_ERROR.
    CharacterSetResult Convert(char const*& source, char const* sourceEnd, CharacterSet const& target,
                               char*& room, char* roomEnd, Pivot& pivot, bool isLast) const;

    // `failure` together with the input that this set's converter could not convert last: bytes on the way
    // into Unicode, UTF-16 units on the way out. Without any when the converter holds none.
    CharacterSetResult GetInvalidChars(ICUResult const& failure) const;
    CharacterSetResult GetInvalidUChars(ICUResult const& failure) const;

private:
    struct ConverterCloser {
        void operator()(UConverter* converter) const;
    };

    void Construct(char const* name, bool strict);
    ICUResult ApplyAction(bool strict);
    // Sets this one up as the UTF-8 end of a conversion into or out of `set`, whose action it has.
    void ServeAsOtherEndOf(CharacterSet const& set);

    template <class From>
    CharacterSetResult ToUTF8(UStringRef<From> const& input, AutoUString<UTF8>& output) const;
    template <class From>
    CharacterSetResult ConvertToUTF8Algorithmic(UStringRef<From> const& input,
                                                AutoUString<UTF8>& output) const;
    template <class From>
    CharacterSetResult ConvertToUTF8Pivot(UStringRef<From> const& input, AutoUString<UTF8>& output) const;

    template <class To>
    CharacterSetResult FromUTF8(UStringRef<UTF8> const& input, AutoUString<To>& output) const;
    template <class To>
    CharacterSetResult ConvertFromUTF8Algorithmic(UStringRef<UTF8> const& input,
                                                  AutoUString<To>& output) const;
    template <class To>
    CharacterSetResult ConvertFromUTF8Pivot(UStringRef<UTF8> const& input, AutoUString<To>& output) const;

    template <class To, class From>
    CharacterSetResult ConvertByPivot(UStringRef<From> const& input, CharacterSet const& target, To encoding,
                                      AutoUString<To>& output) const;
    CharacterSetResult MakePivotFailure(ICUResult const& failure, CharacterSet const& target) const;
    template <class E>
    E MakeEncoding() const;

    bool m_isUTF8 = false;
    std::string m_name;
    std::unique_ptr<UConverter, ConverterCloser> m_converter;
    InvalidCharacterAction m_action;
};
