#pragma once

#include "foundation/FiniteStack.h"
#include "time/DateRecord.h"
#include "time/TimeOfDay.h"
#include "time/TimeRPNSemantics.h"
#include "time/TimeZone.h"

// Computes a date, a time of day and a zone. Nothing is checked but what CheckDay records; the fields mean
// something only after the operations that build them. PushNumber throws StackFull when more numbers wait
// than a text of the time language can bring; the other operations throw NoMoreData when their operands are
// missing. CheckDay throws InvalidMonth for a date whose month does not exist; the month words bring none.
class TimeAutomaton final : public TimeRPNSemantics {
public:
    void Reset() override;
    void PushNumber(int number) override { m_numbers.Push(number); }
    void Add1900() override;
    void BuildDate() override;
    void CheckDay() override;
    void BuildTimeWithSeconds() override;
    void BuildTimeWithNoSeconds() override;
    void MakeNamedZone() override;
    void MakePositiveZone() override;
    void MakeNegativeZone() override;
    void MakeMilitaryZone() override;

    DateRecord const& Date() const { return m_date; }
    TimeOfDay const& Time() const { return m_time; }
    TimeZone Zone() const { return m_zone; }
    bool HasZone() const { return m_hasZone; }
    bool ZoneIsMilitary() const { return m_zoneIsMilitary; }
    // False when a day of the week has been read that is not the date's.
    bool DayOfWeekAgrees() const { return m_dayOfWeekAgrees; }

private:
    // A day of the week, day, month and year can wait at once.
    static constexpr std::size_t cMostNumbers = 8;

    void SetZone(long long secondsEast);
    // Seconds of the offset that the numeral on top names, read as hours times 100 plus minutes.
    long long PopOffset();

    FiniteStack<std::int32_t, cMostNumbers> m_numbers;
    DateRecord m_date;
    TimeOfDay m_time;
    TimeZone m_zone;
    bool m_hasZone = false;
    bool m_zoneIsMilitary = false;
    bool m_dayOfWeekAgrees = true;
};
