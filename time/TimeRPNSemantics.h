#pragma once

// What the productions of the time grammars do, as the operations of a stack machine: numbers are pushed in
// the order of the text, and each operation takes its operands off the top, the last number first.
class TimeRPNSemantics {
public:
    virtual ~TimeRPNSemantics() = default;

    virtual void Reset() = 0;
    virtual void PushNumber(int number) = 0;
    // Adds 1900 to the top, the year of two digits.
    virtual void Add1900() = 0;
    // Year, month, day.
    virtual void BuildDate() = 0;
    // Day of the week, to be compared with the date.
    virtual void CheckDay() = 0;
    // Second, minute, hour.
    virtual void BuildTimeWithSeconds() = 0;
    // Minute, hour.
    virtual void BuildTimeWithNoSeconds() = 0;
    // Seconds east.
    virtual void MakeNamedZone() = 0;
    // A numeral of hours and minutes: 530 is five and a half hours.
    virtual void MakePositiveZone() = 0;
    virtual void MakeNegativeZone() = 0;
    // Seconds east.
    virtual void MakeMilitaryZone() = 0;

protected:
    TimeRPNSemantics() = default;
    TimeRPNSemantics(TimeRPNSemantics const&) = default;
    TimeRPNSemantics& operator=(TimeRPNSemantics const&) = default;
};
