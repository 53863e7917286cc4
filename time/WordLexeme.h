#pragma once

#include "foundation/DataFilter.h"
#include "text/Ascii.h"
#include "time/Lexeme.h"

class WordLexemeAcceptor {
public:
    // The filtered word, valid during the call.
    virtual void AcceptWord(ConstData word) = 0;
    // A word that is longer than WordLexeme::cCapacity.
    virtual void AcceptWordOverflow() = 0;

protected:
    ~WordLexemeAcceptor() = default;
};

// A run of bytes of one set, passed through a filter into a fixed buffer. The set and the filter must outlive
// the lexeme; the filter must hold nothing back.
class WordLexeme : public Lexeme {
public:
    static constexpr std::size_t cCapacity = 8;

    WordLexeme(Bits const& letters, DataFilter& filter, WordLexemeAcceptor& acceptor)
        : m_letters(letters), m_filter(filter), m_acceptor(acceptor) {}
    WordLexeme(WordLexeme const&) = delete;
    WordLexeme& operator=(WordLexeme const&) = delete;

    void Start() override;
    bool Lex(ConstBuffer& in) override;
    void End() override;

protected:
    ~WordLexeme() = default;

private:
    Bits const& m_letters;
    DataFilter& m_filter;
    WordLexemeAcceptor& m_acceptor;
    unsigned char m_room[cCapacity] = {};
    Buffer m_word{Data(m_room, m_room + cCapacity)};
    bool m_overflow = false;
};
