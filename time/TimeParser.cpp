#include "time/TimeParser.h"

namespace {

TimeLanguage::PartOfSpeech SymbolOf(unsigned char character) {
    switch (character) {
    case ',': return TimeLanguage::Comma;
    case ':': return TimeLanguage::Colon;
    case '+': return TimeLanguage::Plus;
    case '-': return TimeLanguage::Minus;
    default: throw ParsingFailure();
    }
}

} // namespace

TimeParser::TimeParser(TimeLanguage::TimeGrammar const& grammar, TimeRPNSemantics& semantics)
    : m_semantics(semantics), m_parser(grammar, semantics) {
    Reset();
}

void TimeParser::Reset() {
    m_parser.Reset();
    m_semantics.Reset();
}

void TimeParser::Accept(TimeLanguage::PartOfSpeech symbol, int number) {
    // The number goes between the two steps: the actions of what the symbol ends still find their own
    // operands on top, those of what it completes find this one.
    m_parser.Append(symbol);
    m_semantics.PushNumber(number);
    m_parser.Shift();
}

void TimeParser::AcceptReservedWord(ConstData, TimeParsingAction const& action) {
    Accept(action.symbol, action.number);
}

void TimeParser::AcceptOrdinaryWord(ConstData) {
    throw ParsingFailure();
}

void TimeParser::AcceptWordOverflow() {
    throw ParsingFailure();
}

void TimeParser::AcceptOneDigit(int value) {
    Accept(TimeLanguage::OneDigit, value);
}

void TimeParser::AcceptTwoDigits(int value) {
    Accept(TimeLanguage::TwoDigits, value);
}

void TimeParser::AcceptThreeDigits(int value) {
    Accept(TimeLanguage::ThreeDigits, value);
}

void TimeParser::AcceptFourDigits(int value) {
    Accept(TimeLanguage::FourDigits, value);
}

void TimeParser::AcceptOtherNumeral() {
    throw ParsingFailure();
}

void TimeParser::AcceptCharacter(unsigned char character) {
    m_parser.Append(SymbolOf(character));
    m_parser.Shift();
}

void TimeParser::AcceptEnd() {
    m_parser.End();
}
