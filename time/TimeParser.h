#pragma once

#include "time/Parser.h"
#include "time/TimeLexer.h"

// Turns tokens into the symbols of a time grammar and runs the semantic operations. Everything that the
// grammar does not allow throws ParsingFailure; the parser and the semantics must then be reset.
class TimeParser final : public TimeLexemeAcceptor {
public:
    // Both must outlive the parser. Resets the semantics.
    TimeParser(TimeLanguage::TimeGrammar const& grammar, TimeRPNSemantics& semantics);

    // Forgets the text read so far, in the semantics too.
    void Reset();

    void AcceptReservedWord(ConstData word, TimeParsingAction const& action) override;
    void AcceptOrdinaryWord(ConstData word) override;
    void AcceptWordOverflow() override;
    void AcceptOneDigit(int value) override;
    void AcceptTwoDigits(int value) override;
    void AcceptThreeDigits(int value) override;
    void AcceptFourDigits(int value) override;
    void AcceptOtherNumeral() override;
    void AcceptCharacter(unsigned char character) override;
    void AcceptEnd() override;

private:
    void Accept(TimeLanguage::PartOfSpeech symbol, int number);

    TimeRPNSemantics& m_semantics;
    Parser<TimeLanguage, TimeRPNSemantics> m_parser;
};
