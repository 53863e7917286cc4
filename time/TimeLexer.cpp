#include "time/TimeLexer.h"

TimeLexer::TimeLexer(TimeLexemeAcceptor& acceptor)
    : Lexer(acceptor),
      m_word(Ascii::Alphabetic(), m_lowerCase, TimeWords(), acceptor),
      m_numeral(acceptor),
      m_character(acceptor) {
}

Lexeme& TimeLexer::ChooseLexeme(unsigned char first) {
    if (Ascii::WhiteSpace().Has(first)) return m_ignoredText;
    if (Ascii::Alphabetic().Has(first)) return m_word;
    if (Ascii::Numeric().Has(first)) return m_numeral;
    return m_character;
}
