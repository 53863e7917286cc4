#pragma once

#include "foundation/DataReceiver.h"
#include "time/Lexeme.h"

class EndLexemeAcceptor {
public:
    // The text is complete.
    virtual void AcceptEnd() = 0;

protected:
    ~EndLexemeAcceptor() = default;
};

// Receiver that cuts a text into tokens. What an acceptor throws passes through; the lexer must then be
// started anew.
class Lexer : public DataReceiver {
public:
    explicit Lexer(EndLexemeAcceptor& endAcceptor) : m_endAcceptor(endAcceptor) {}

    void Start() override;
    using DataReceiver::Receive;
    void Receive(ConstData data) override;
    // Ends the token under way and then the text.
    void ReceiveEnd() override;

protected:
    // The kind of token that a byte begins. It must consume that byte.
    virtual Lexeme& ChooseLexeme(unsigned char first) = 0;

private:
    void EndLexeme();

    EndLexemeAcceptor& m_endAcceptor;
    Lexeme* m_current = nullptr; // null between tokens
};
