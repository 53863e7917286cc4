#pragma once

#include "text/UStringRef.h"

#include <cstdint>
#include <exception>

// Failures of the program are classes thrown by value. Most carry no data: the class is the meaning, and the
// report is the class's name as the run-time type information records it ("12InvalidMonth").

namespace UnixPlatform {

// Second base of every failure: the place where this platform could hang debugging data. It holds nothing.
class ExceptionDebuggingInfo {};

} // namespace UnixPlatform

// Root of the failures.
class DebuggableException : public std::exception, public UnixPlatform::ExceptionDebuggingInfo {
public:
    DebuggableException() = default;
    DebuggableException(DebuggableException const&) = default;
    DebuggableException& operator=(DebuggableException const&) = default;
    ~DebuggableException() override;

    // Encoded name of the most derived class. Allocates nothing and cannot fail.
    char const* what() const noexcept override;
    // The same bytes as a view.
    virtual UStringRef<UTF8> uwhat() const noexcept;
};

// Time
class InvalidMonth : public DebuggableException {};
class InvalidDay : public DebuggableException {};
class InvalidTime : public DebuggableException {};
class NoSuchDate : public InvalidTime {};
class NoSuchTimeOfDay : public InvalidTime {};
class NoTimeZone : public InvalidTime {};
class WrongDayOfWeek : public InvalidTime {};
class InvalidDateTimeString : public DebuggableException {};
class InvalidDateTimeNegativeYear : public DebuggableException {};
class ParsingFailure : public DebuggableException {};

// Data and containers
class DataOverflow : public DebuggableException {};
class NoMoreData : public DebuggableException {};
class ConstDataCapacityExceeded : public DebuggableException {};
class RequiredValueWouldOverflow : public DebuggableException {};
class StackFull : public DebuggableException {};

// Text
class InvalidTextEncoding : public DebuggableException {};
class NamedNotIANAUTF8Encoding : public DebuggableException {};
class UnrepresentableBinaryString : public DebuggableException {};
class UnrepresentableBinaryStringU8 : public UnrepresentableBinaryString {};
class UnrepresentableBinaryStringU16 : public UnrepresentableBinaryString {};

namespace UnixPlatform {

class MultiByteToWideConvertError : public DebuggableException {};
class WideToMultiByteConvertError : public DebuggableException {};

} // namespace UnixPlatform

// Numerals
class NotANumeral : public DebuggableException {};
class NumeralTooLarge : public DebuggableException {};
class NotAFloatingPoint : public DebuggableException {};
class TooLargeForStandardNotation : public DebuggableException {};

// Files
class IllegalFileName : public DebuggableException {};
class FileLoopUninitialized : public DebuggableException {};
class FileReadingLoopEndOfFileError : public DebuggableException {};

// Format strings and documents without an element
class FormatError : public DebuggableException {};
class FormatOverrideNotFound : public DebuggableException {};
class BadFormatStringError : public DebuggableException {};
class ImproperFormatVariableName : public DebuggableException {};
class UndefinedFormatVariable : public DebuggableException {};
// Named from the format's side: it asks for more arguments than there are, or for fewer.
class TooManyFormatArguments : public DebuggableException {};
class TooFewFormatArguments : public DebuggableException {};

// XML
class NoSuchAttribute : public DebuggableException {};
class NoSuchChildElement : public DebuggableException {};

// Actions
class NoSuchActionRequestID : public DebuggableException {};

namespace UnixPlatform {

// A threading call that failed, with its result code.
class MutexError : public DebuggableException {
public:
    explicit MutexError(int code) : m_code(code) {}
    std::int32_t Code() const { return m_code; }

private:
    std::int32_t m_code;
};
class EventError : public DebuggableException {
public:
    explicit EventError(int code) : m_code(code) {}
    std::int32_t Code() const { return m_code; }

private:
    std::int32_t m_code;
};

class Event;

// An event that was already signaled when a waiter came to watch it.
class AlreadySignaled : public DebuggableException {
public:
    explicit AlreadySignaled(Event const& event) : m_event(&event) {}
    // As long as the event stands.
    Event const* SignaledEvent() const { return m_event; }

private:
    Event const* m_event;
};

// Returns for 0; otherwise throws `E` made with the code.
template <class E>
void ThrowError(int code) {
    if (code != 0) throw E(code);
}

} // namespace UnixPlatform

// Four failures stand outside the tree on purpose: a handler for DebuggableException or std::exception must
// not catch them.
class UnixPipeReadMessageError {};
class UnixPipeWriteMessageError {};
class FiFoQueueIsEmpty {};
class NoSelectedAction {};
