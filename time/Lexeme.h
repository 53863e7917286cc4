#pragma once

#include "text/Buffers.h"

// One kind of token while it is being read: Start, then Lex until the token has ended, then End. The bytes of
// one token may come in any number of chunks.
class Lexeme {
public:
    virtual void Start() = 0;
    // Consumes what belongs to the token. True when the token has ended, so that the next byte begins
    // another; false when it may go on in the next chunk.
    virtual bool Lex(ConstBuffer& in) = 0;
    // Hands the token to whoever is to take it.
    virtual void End() = 0;

protected:
    Lexeme() = default;
    ~Lexeme() = default;
    Lexeme(Lexeme const&) = default;
    Lexeme& operator=(Lexeme const&) = default;
};
