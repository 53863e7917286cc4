#pragma once

#include "time/Lexeme.h"

// Numerals are told apart by their number of digits, leading zeros included: "08" has two.
class TimeNumeralLexemeAcceptor {
public:
    virtual void AcceptOneDigit(int value) = 0;
    virtual void AcceptTwoDigits(int value) = 0;
    virtual void AcceptThreeDigits(int value) = 0;
    virtual void AcceptFourDigits(int value) = 0;
    // More than four digits.
    virtual void AcceptOtherNumeral() = 0;

protected:
    ~TimeNumeralLexemeAcceptor() = default;
};

// A run of digits of any length.
class TimeNumeralLexeme final : public Lexeme {
public:
    explicit TimeNumeralLexeme(TimeNumeralLexemeAcceptor& acceptor) : m_acceptor(acceptor) {}

    void Start() override;
    bool Lex(ConstBuffer& in) override;
    void End() override;

private:
    static constexpr unsigned int cMostDigits = 4;

    void Digit(unsigned char digit);

    TimeNumeralLexemeAcceptor& m_acceptor;
    unsigned int m_digits = 0; // stops at cMostDigits + 1
    int m_value = 0;           // of the first cMostDigits digits
};
