#include "time/TimeAutomaton.h"

void TimeAutomaton::Reset() {
    m_numbers.Clear();
    m_hasZone = false;
    m_zoneIsMilitary = false;
    m_dayOfWeekAgrees = true;
}

void TimeAutomaton::Add1900() {
    std::int32_t& year = m_numbers.Top();
    year = static_cast<std::int32_t>(static_cast<std::uint32_t>(year) + 1900);
}

void TimeAutomaton::BuildDate() {
    m_date.year = static_cast<std::uint32_t>(m_numbers.Pop());
    m_date.month = static_cast<Month>(m_numbers.Pop());
    m_date.day = static_cast<std::uint8_t>(m_numbers.Pop());
}

void TimeAutomaton::CheckDay() {
    auto const day = static_cast<DayOfWeek>(m_numbers.Pop());
    m_dayOfWeekAgrees = day == m_date.DayOfWeek();
}

void TimeAutomaton::BuildTimeWithSeconds() {
    auto const second = static_cast<std::uint8_t>(m_numbers.Pop());
    BuildTimeWithNoSeconds();
    m_time.second = second;
}

void TimeAutomaton::BuildTimeWithNoSeconds() {
    m_time.second = 0;
    m_time.minute = static_cast<std::uint8_t>(m_numbers.Pop());
    m_time.hour = static_cast<std::uint8_t>(m_numbers.Pop());
}

void TimeAutomaton::MakeNamedZone() {
    SetZone(m_numbers.Pop());
}

void TimeAutomaton::MakePositiveZone() {
    SetZone(PopOffset());
}

void TimeAutomaton::MakeNegativeZone() {
    SetZone(-PopOffset());
}

void TimeAutomaton::MakeMilitaryZone() {
    MakeNamedZone();
    m_zoneIsMilitary = true;
}

void TimeAutomaton::SetZone(long long secondsEast) {
    m_zone = TimeZone::FromSeconds(static_cast<std::int32_t>(secondsEast));
    m_hasZone = true;
}

long long TimeAutomaton::PopOffset() {
    long long const numeral = m_numbers.Pop();
    return (numeral / 100 * 60 + numeral % 100) * 60;
}
