#include "time/TimeNumeralLexeme.h"

#include "time/ByteRun.h"

void TimeNumeralLexeme::Start() {
    m_digits = 0;
    m_value = 0;
}

bool TimeNumeralLexeme::Lex(ConstBuffer& in) {
    for (unsigned char const digit : TakeRun(in, Ascii::Numeric())) Digit(digit);
    return !in.empty();
}

void TimeNumeralLexeme::Digit(unsigned char digit) {
    if (m_digits > cMostDigits) return;
    ++m_digits;
    if (m_digits <= cMostDigits) m_value = m_value * 10 + (digit - '0');
}

void TimeNumeralLexeme::End() {
    switch (m_digits) {
    case 1: return m_acceptor.AcceptOneDigit(m_value);
    case 2: return m_acceptor.AcceptTwoDigits(m_value);
    case 3: return m_acceptor.AcceptThreeDigits(m_value);
    case 4: return m_acceptor.AcceptFourDigits(m_value);
    default: return m_acceptor.AcceptOtherNumeral();
    }
}
