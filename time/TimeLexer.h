#pragma once

#include "text/AsciiFilters.h"
#include "time/CharacterLexeme.h"
#include "time/IgnoredTextLexeme.h"
#include "time/Lexer.h"
#include "time/ReservedWordLexeme.h"
#include "time/TimeNumeralLexeme.h"
#include "time/TimeParsingAction.h"

// What takes the tokens of the time language.
class TimeLexemeAcceptor : public ReservedWordAcceptor<TimeParsingAction>,
                           public TimeNumeralLexemeAcceptor,
                           public CharacterLexemeAcceptor,
                           public EndLexemeAcceptor {
protected:
    ~TimeLexemeAcceptor() = default;
};

// The lexer of the time language: words of ASCII letters in any case, numerals, single other bytes, and white
// space, which only separates. Allocates nothing.
class TimeLexer final : public Lexer {
public:
    // The acceptor must outlive the lexer.
    explicit TimeLexer(TimeLexemeAcceptor& acceptor);

protected:
    Lexeme& ChooseLexeme(unsigned char first) override;

private:
    Ascii::CaseLoweringFilter m_lowerCase;
    IgnoredTextLexeme m_ignoredText;
    ReservedWordLexeme<TimeParsingAction> m_word;
    TimeNumeralLexeme m_numeral;
    CharacterLexeme m_character;
};
