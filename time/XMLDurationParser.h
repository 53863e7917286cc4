#pragma once

#include "text/Ascii.h"
#include "text/NullOr.h"
#include "time/TimeInterval.h"

// Reads an XML duration of days and smaller units, one character at a time.
class XMLDurationParser {
public:
    XMLDurationParser();

    // Throws ExceptionPL for a character that cannot stand here, for a number above 4294967295 and for a
    // fraction of more than six digits; the parser is then of no further use.
    void HandleChar(char character);

    // The interval of all characters so far. Throws ExceptionPL when they are not a whole duration. A sum
    // beyond 64 bits of microseconds wraps around.
    TimeInterval Result() const;

    // Throws ExceptionPL: the text is no duration.
    [[noreturn]] static void Fail();

private:
    using Number = NullOr<unsigned int>;

    void HandleDigit(unsigned int digit);
    void HandleMinus();
    void HandlePeriod();
    void HandleDays();
    void HandleTime();
    void HandleHours();
    void HandleMinutes();
    void HandlePoint();
    void HandleSeconds();

    void RequireNumber() const;
    void ResetNumber();
    // Closes a field: its number is over, and so is the wait for a first field.
    void CloseField();

    Bits m_allowed; // what may come next, apart from digits
    bool m_digitsAllowed = false;
    bool m_digitsSeen = false; // a number has been begun that nothing has closed yet
    unsigned int m_accumulator = 0;
    bool m_designatorSeen = false;
    unsigned int m_wholeSeconds = 0; // the number before the point
    bool m_inFraction = false;
    unsigned int m_scale = 1; // power of ten of the current number's digits, to 10000000 at most
    bool m_negative = false;
    Number m_days;
    Number m_hours;
    Number m_minutes;
    Number m_seconds;
    Number m_microseconds;
};
