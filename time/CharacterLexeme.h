#pragma once

#include "time/Lexeme.h"

class CharacterLexemeAcceptor {
public:
    virtual void AcceptCharacter(unsigned char character) = 0;

protected:
    ~CharacterLexemeAcceptor() = default;
};

// Exactly one byte.
class CharacterLexeme final : public Lexeme {
public:
    explicit CharacterLexeme(CharacterLexemeAcceptor& acceptor) : m_acceptor(acceptor) {}

    void Start() override { m_character = 0; }
    bool Lex(ConstBuffer& in) override {
        m_character = in.Take();
        return true;
    }
    void End() override { m_acceptor.AcceptCharacter(m_character); }

private:
    CharacterLexemeAcceptor& m_acceptor;
    unsigned char m_character = 0;
};
